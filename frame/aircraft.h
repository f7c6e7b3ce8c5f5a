// Which aircraft is loaded: its type code steers everything that differs between aircraft.
#pragma once

#include <string>

extern int acfType;         // 172, 319, 321, 345, 737, 739, 767; 0 when the aircraft is not served
extern bool isLegalAcf;     // an aircraft that the plug-in serves was detected
extern int globalDeveloper; // developer mode: the menu's tools
extern int isVAdraw;        // developer mode: the systems editor

// The aircraft's description as the simulator publishes it.
std::string ReadDRF_descrString();

// The name that the model file of an aircraft with this description must have; nullptr when it is not served.
const char *ServedModelFile(const std::string &description);

// First pass: sets acfType from the description and logs what was found. 1 when the aircraft is served.
int ReadDRF_descr();

// Second pass: developer mode, which a line "editor=1" in "data/developer.txt" switches on; and, when the
// aircraft's model file is in its folder, the datarefs of its type and its systems.
void ReadAcfTypeAndDeveloperMode();

// Everything as when the program starts.
void ResetAircraft();
