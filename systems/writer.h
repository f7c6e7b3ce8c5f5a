// Writes the model back into systems files.
#pragma once

// Writes "systems/_systems.txt" and one file per system; what is flagged deleted is left out, and so is,
// with a line in the log, a system whose name cannot name a file there. False when a file could not be
// written, which is logged; the files after it are then not written.
bool SaveSysToTxtFile();
