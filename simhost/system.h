// What the simulator asks of the system it runs on. The bodies are in system_posix.cpp and
// system_windows.cpp; what is more than a few calls has files of its own: the watch over a flight, the
// voice's process, OpenGL's context, the window.
#pragma once

#include <string>

namespace simhost {

// A plug-in's library in its folder's "64", and its folder in older ones.
extern const char *const LibraryName, *const LibraryFolder;

extern const char *const ProgramEnding; // of the file of a program

extern const char NativeSeparator; // in the paths that plug-ins are given

// ---- Libraries ----

// Null with the reason in error.
void *OpenLibrary(const std::string &path, std::string &error);
void ReleaseLibrary(void *library);
bool isInMemory(const std::string &libraryPath);
void *FindInLibrary(void *library, const char *name);

// A call of the simulator's interface; null when there is none of that name.
void *FindOwnCall(const char *name);

// ---- Other programs ----

// Starts a program with the words of the command and gives it the text to read; what it prints goes where
// this program's output goes. False when it cannot be started or fails.
bool FeedProgram(const std::string &command, const std::string &text);

// ---- Files and the terminal ----

// The folder of the running program, with "/" at its end; empty when it cannot be told.
std::string ProgramFolder();

// A new folder among the system's temporary ones, with "/" at its end. Empty with the reason in error.
std::string MakeTemporaryFolder(const std::string &prefix, std::string &error);

bool isTerminalOutput();

// What the C library calls the locale that is named as "de_DE.UTF-8" is; the same when it has no other name.
std::string LocaleName(const std::string &name);

} // namespace simhost
