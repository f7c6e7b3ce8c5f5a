// Checklists of other authors, made into systems files.
#pragma once

#include <string>

namespace simhost {

struct ImportOptions {
    std::string clist;        // the file to read
    std::string folder;       // an aircraft's with the plug-in, or the plug-in's; made where it is not there
    std::string xplaneFolder; // of a simulator with its lists of datarefs; empty: none
};

// Writes the systems files and prints what could not be taken over, one line each. Returns the exit status: 0
// when all was written, 1 when nothing was, 2 when folder or lists cannot be used.
int ImportChecklists(const ImportOptions &options);

} // namespace simhost
