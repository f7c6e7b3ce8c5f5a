// The checker: what is wrong with the files of an aircraft, found without flying.
#pragma once

#include <string>

namespace simhost {

struct CheckOptions {
    std::string folder;         // an aircraft's, or the plug-in's inside it
    std::string xplaneFolder;   // of a simulator with its lists of datarefs and commands; empty: none
    std::string speechFolder{}; // of the installed speech companion, with its dictionary; empty: none
};

// Reads the folder with the plug-in's own readers, writes nothing into it, and prints what it finds.
// Returns the exit status: 0 nothing but notes, 1 errors or warnings, 2 no such folder or lists.
int CheckFolder(const CheckOptions &options);

} // namespace simhost
