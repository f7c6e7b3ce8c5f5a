// A program of the system with a text for its input, and its output.
#pragma once

#include <string>

namespace fennic_voice {

// Runs a line of the shell and waits for its end, at most 10 s. False, with the reason in error, when it
// cannot be run, ends with another status than 0, or takes longer, when it is ended with all that it started.
bool RunCommand(const std::string &line, const std::string &input, std::string &output, std::string &error);

} // namespace fennic_voice
