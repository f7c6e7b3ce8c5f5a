// What the pilot can choose, from a text file of lines "key=value".
#pragma once

#include <map>
#include <string>
#include <vector>

namespace fennic_voice {

struct Settings {
    std::string microphone, loudspeaker; // names of devices or parts of them; empty: the system's choice
    std::map<std::string, std::string>
        voices;                    // programs that speak, by a voice's name in lower case, or w or m
    bool hearsAbortAlways = false; // also while the button is not held
    std::string modelFolder;       // of the recognition
    std::vector<std::string> pronunciations; // files
};

// Reads the file into the settings. A file that is not there changes nothing; a line that is not understood
// is told to the log and dropped.
void ReadSettings(const std::string &path, Settings &settings);

// Letters of ASCII in lower case.
std::string Lower(std::string text);

} // namespace fennic_voice
