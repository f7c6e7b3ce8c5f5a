// The datarefs that an aircraft's objects and its .acf use, for those who write systems files.
#pragma once

#include <string>

// Writes to the log, for each object and each .acf in the aircraft's folder (not in those below it), the
// datarefs that it names, in the order of the file, each once.
void ReadDrfListFromCockpitAndAcf();

// Adds a name to the list of the file being read, unless it is there.
void AddToCockpitObjDrfVector(const std::string &name);
