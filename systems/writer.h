// Writes the model back into systems files.
#pragma once

#include <string>

#include "systems/model.h"

// Writes "systems/_systems.txt" and one file per system; what is flagged deleted is left out. All files are
// replaced or none: false when one cannot be written, when no file can have a system's name, when a line
// would be read back as something else, or when the model is not complete because a file could not be read.
// Logged, and told in saveFailure.
bool SaveSysToTxtFile();

// The text of a system's file. False, with the reason, when a line would be read back as something else.
bool WriteSystem(const system_class &system, std::string &text, std::string &reason);

// Finishes or undoes a save that an end of the simulator had broken off. Before the model is read; when it
// fails, which is logged, nothing is saved until the next start.
void FinishInterruptedSave();

// Why the last call saved nothing; empty when it saved.
extern std::string saveFailure;

// Everything as when the program starts.
void ResetWriter();
