// The lists of all datarefs and commands that the simulator ships in its folder "Resources/plugins".
#pragma once

#include <string>
#include <vector>

#include "XPLMDataAccess.h"

namespace simhost {

struct ListedDataref {
    std::string name;
    XPLMDataTypeID type = xplmType_Unknown;
    int elements = 1; // the product of all dimensions; 512 for data without a size
    bool isWritable = false;
};

struct ListedCommand {
    std::string name;
    std::string description;
};

// Read one list, from DataRefs.txt or Commands.txt. Lines that are no entry are left out. Empty, with the
// reason in error, when the file cannot be read or holds no entry.
std::vector<ListedDataref> ReadDatarefList(const std::string &path, std::string &error);
std::vector<ListedCommand> ReadCommandList(const std::string &path, std::string &error);

// Makes every name of both lists of a simulator's folder exist. A dataref that exists with the listed type
// keeps its value. False, with the reason in error, when a list cannot be read; nothing is published then.
bool ReadSimulatorLists(const std::string &xplaneFolder, std::string &error);

} // namespace simhost
