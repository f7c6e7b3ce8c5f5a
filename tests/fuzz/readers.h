// All readers of files and messages from outside behind one function, for inputs that nobody wrote: those of
// the plug-in, and those of the simulator itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct Reader {
    const char *name;
    const char *seedFolder; // of the sources: files there whose name ends in seedEnding are sound; null: none
    const char *seedEnding;
    void (*read)(const std::string &bytes); // in the plug-in's folder, where the reader expects it
};
extern const std::vector<Reader> Readers;

// Has the reader of this name read the bytes, and what the program does with what was read done: a model runs
// a few frames, a pose is taken up, and so on. One reader for a process. What must not happen is a report of
// a sanitizer, an exception, or no return; false, which cannot be, for a name that is not listed.
bool ReadBytes(std::string_view reader, const std::string &bytes);

// The inputs to begin with: those in "tests/fuzz/corpus/<reader>/", then the shipped ones, the smallest
// first.
std::vector<std::string> SeedsOf(const Reader &reader);
