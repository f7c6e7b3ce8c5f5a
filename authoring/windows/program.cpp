// fennic-sim.exe: all of it is in XPLM_64.dll, where plug-ins look for the simulator; the words of the
// command line are made UTF-8.
#include <filesystem>
#include <string>
#include <vector>

extern "C" int FennicSim(int count, char **words);

int wmain(int count, wchar_t **words) {
    std::vector<std::string> texts;
    for (int place = 0; place < count; ++place) {
        const std::u8string text = std::filesystem::path(words[place]).u8string();
        texts.emplace_back(text.begin(), text.end());
    }
    std::vector<char *> pointers;
    for (std::string &text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return FennicSim(count, pointers.data());
}
