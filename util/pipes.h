// Text through another program's pipe, for the clipboard tools of both platforms.
#pragma once

#include <string>

// What the command writes to its output; empty when it cannot be started.
std::string ReadFromCommand(const char *command);

// Gives the command the text as its input.
void WriteToCommand(const char *command, const std::string &text);
