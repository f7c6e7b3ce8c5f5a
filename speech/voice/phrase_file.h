// Files of phrases, as the first officer writes "data/context.txt": one a line.
#pragma once

#include <string>
#include <vector>

namespace fennic_voice {

// False when the file cannot be read. The word "any" stands for any phrase and is none.
bool ReadPhraseFile(const std::string &path, std::vector<std::string> &phrases);

} // namespace fennic_voice
