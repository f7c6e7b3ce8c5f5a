// Reads the systems files into the model.
#pragma once

// False when a systems file could not be read, or not to its end: saving the model would lose what is in it.
// Told in the log by whoever could not read it.
extern bool isModelComplete;

// Reads the files that "systems/_systems.txt" lists, or "sys.txt" when there is no list, and the saved
// values. A line that cannot be read is logged and does nothing. Without any file the model stays empty and
// one line says so.
void CreateSystemsFromFile();

// Everything as when the program starts.
void ResetReader();
