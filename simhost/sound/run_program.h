// A program that the simulator starts and waits for.
#pragma once

#include <string>
#include <vector>

namespace simhost {

// Runs the program to its end with a file as its input, and without the voice's host in its environment.
// False when it fails.
bool RunProgram(const std::vector<std::string> &words, const std::string &input);

} // namespace simhost
