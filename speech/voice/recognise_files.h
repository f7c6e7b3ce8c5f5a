// Recordings instead of a microphone: what is understood in each.
#pragma once

#include <string>
#include <vector>

#include "speech/voice/settings.h"

namespace fennic_voice {

// Prints one line for each recording, empty for nothing understood. context and expected are files of
// phrases, one a line; no name: nothing is expected. With scores: what was nearest, what English was heard,
// and how sure it is, separated by tabs. The program's status: 1 when model, context or a recording cannot
// be read.
int RecogniseFiles(const Settings &settings, const std::string &context, const std::string &expected,
                   const std::vector<std::string> &recordings, bool withScores);

} // namespace fennic_voice
