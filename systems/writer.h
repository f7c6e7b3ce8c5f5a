// Writes the model back into systems files.
#pragma once

#include <string>

// Writes "systems/_systems.txt" and one file per system; what is flagged deleted is left out. All files are
// replaced or none: false when one cannot be written, or when no file can have a system's name, which is
// logged and told in saveFailure.
bool SaveSysToTxtFile();

// Why the last call saved nothing; empty when it saved.
extern std::string saveFailure;

// Everything as when the program starts.
void ResetWriter();
