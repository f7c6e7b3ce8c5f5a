// Values that parameters keep from one flight to the next, in "systems/_save.txt".
#pragma once

#include <string>

// Reads the file, if there is one, for RestoreSavedValue; and lets it go again.
void ReadSavedValues();
void ForgetSavedValues();

// Replaces an initial value by the saved one: that of the last line that contains the parameter's address
// anywhere and holds a number behind "=".
void RestoreSavedValue(const std::string &address, std::string &initial);

// Writes the live values of all parameters that ask for it. No file is made while none does.
void SaveParametersValue();
