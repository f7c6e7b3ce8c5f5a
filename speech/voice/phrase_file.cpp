#include "speech/voice/phrase_file.h"

#include <fstream>

namespace fennic_voice {

bool ReadPhraseFile(const std::string &path, std::vector<std::string> &phrases) {
    std::ifstream file(path);
    if (!file) return false;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty() && line != "any") phrases.push_back(line);
    }
    return true;
}

} // namespace fennic_voice
