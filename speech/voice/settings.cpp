#include "speech/voice/settings.h"

#include <algorithm>
#include <cctype>
#include <fstream>

#include "speech/voice/lines.h"

namespace fennic_voice {

namespace {

std::string Trimmed(const std::string &text) {
    const size_t first = text.find_first_not_of(" \t\r"), last = text.find_last_not_of(" \t\r");
    return first == std::string::npos ? "" : text.substr(first, last + 1 - first);
}

// False when there is no such setting, or not this value of it.
bool Set(const std::string &key, const std::string &value, Settings &settings) {
    const std::string voice = "voice-";
    if (key == "microphone") {
        settings.microphone = value;
    } else if (key == "loudspeaker") {
        settings.loudspeaker = value;
    } else if (key == "abort-always" && (value == "yes" || value == "no")) {
        settings.hearsAbortAlways = value == "yes";
    } else if (key.starts_with(voice) && key.size() > voice.size()) {
        if (value.empty())
            settings.voices.erase(key.substr(voice.size()));
        else
            settings.voices[key.substr(voice.size())] = value;
    } else {
        return false;
    }
    return true;
}

} // namespace

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

void ReadSettings(const std::string &path, Settings &settings) {
    std::ifstream file(path);
    PassMark(file);
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        number++;
        line = Trimmed(line);
        if (line.empty() || line[0] == '#') continue;
        const size_t equals = line.find('=');
        if (equals == std::string::npos
            || !Set(Lower(Trimmed(line.substr(0, equals))), Trimmed(line.substr(equals + 1)), settings))
            TellLog(path + " line " + std::to_string(number)
                    + ": no setting of the voice - line dropped: " + line);
    }
}

} // namespace fennic_voice
