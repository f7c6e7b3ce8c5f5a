// Importing a clist.txt into the folder of a plug-in.
#pragma once

#include <string>

#include "systems/import/clist_import.h"

// Reads the checklists at path and writes them as systems files into "systems/" of the plug-in's folder
// (which ends in "/"), behind those that are there; all files or none. False, with the reason in English,
// when the file cannot be read or holds no checklist, when checklists were imported there before, whose files
// are not replaced, or when writing fails. A dataref that the simulator does not know now, since
// the aircraft brings it later, is taken for one with fractions.
bool ImportClistFile(const std::string &path, const std::string &pluginFolder, ClistImport &import,
                     std::string &reason);

// The checklists of an aircraft whose .acf is called acfName: the path of "<name>_clist.txt" or "clist.txt"
// in its folder (which ends in "/"); empty when there is neither.
std::string FindClist(const std::string &aircraftFolder, const std::string &acfName);
