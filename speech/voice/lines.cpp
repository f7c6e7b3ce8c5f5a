#include "speech/voice/lines.h"

#include <cstdio>
#include <utility>

namespace fennic_voice {

namespace {

const size_t LongestLine = 100000;

} // namespace

void LineInput::Cut(const char *bytes, size_t count, std::vector<std::string> &lines) {
    for (size_t i = 0; i < count; i++) {
        if (bytes[i] == '\n')
            lines.push_back(std::exchange(rest, {}));
        else if (bytes[i] != '\r' && rest.size() < LongestLine)
            rest += bytes[i];
    }
}

void LineInput::CutEnd(std::vector<std::string> &lines) {
    hasEnded = true;
    if (!rest.empty()) lines.push_back(std::exchange(rest, {}));
}

void PassMark(std::istream &file) {
    std::string mark(3, '\0');
    if (file.read(mark.data(), 3) && mark == "\xEF\xBB\xBF") return;
    file.clear();
    file.seekg(0);
}

bool WriteLine(const std::string &line) {
    return std::printf("%s\n", line.c_str()) >= 0 && std::fflush(stdout) == 0;
}

void TellLog(const std::string &line) {
    std::fprintf(stderr, "%s\n", line.c_str());
}

} // namespace fennic_voice
