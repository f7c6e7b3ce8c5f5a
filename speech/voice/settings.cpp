#include "speech/voice/settings.h"

#include <fstream>

#include "speech/voice/lines.h"

namespace fennic_voice {

void ReadSettings(const std::string &path, Settings &settings) {
    std::ifstream file(path);
    const std::pair<const char *, std::string *> texts[] = {
        {"microphone", &settings.microphone},
        {"loudspeaker", &settings.loudspeaker},
        {"voice-w", &settings.womansCommand},
        {"voice-m", &settings.mansCommand},
    };
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        number++;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || line[0] == '#') continue;
        const size_t equals = line.find('=');
        const std::string key = line.substr(0, equals),
                          value = equals == std::string::npos ? "" : line.substr(equals + 1);
        bool isKnown = false;
        for (const auto &[name, text] : texts)
            if (key == name) {
                *text = value;
                isKnown = true;
            }
        if (!isKnown)
            TellLog(path + " line " + std::to_string(number)
                    + ": no setting of the voice - line dropped: " + line);
    }
}

} // namespace fennic_voice
