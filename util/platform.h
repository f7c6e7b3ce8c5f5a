// The few things that differ between the platforms. platform_mac.cpp, platform_linux.cpp and
// platform_windows.cpp each implement all of it.
#pragma once

#include <cstddef>
#include <string>

// Turns an absolute path as the simulator has it on this system, with colons as old macOS programs or with
// backslashes, into one with slashes, of at most size bytes with its zero byte. 0, or -1 when it cannot be
// converted, as on Linux; what out then holds means nothing.
int ConvertNativePath(const char *in, char *out, size_t size);

// The system clipboard's text; empty when there is none. Starts a program: for clicks, never in a frame.
std::string ReadClipboard();
void WrightClipboard(const std::string &text);

// Opens the file at an absolute path with the program that the user has for it; nothing happens when there is
// none. For clicks, never in a frame.
void openURL(const std::string &path);
