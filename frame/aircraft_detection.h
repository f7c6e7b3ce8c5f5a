// Finding out at start which aircraft is loaded, in two passes.
#pragma once

#include <string>

struct AircraftRow;

// The aircraft's description as the simulator publishes it.
std::string ReadDRF_descrString();

// First pass: reads the list of aircraft, sets acfType from the description and logs what was found. 1 when
// the aircraft is served.
int ReadDRF_descr();

// Publishes the datarefs that only aircraft of this row have.
void PublishForAircraft(const AircraftRow &row);

// Second pass: developer mode, which a line "editor=1" in "data/developer.txt" switches on; and, when the
// aircraft's model file is in its folder, the datarefs of its type and its systems, with the editor's window
// in developer mode.
void ReadAcfTypeAndDeveloperMode();
