// The list of aircraft, "data/aircraft.txt" in the plug-in's folder: which aircraft she serves beside those
// that she knows, and what differs between them. docs/aircraft-file.md describes it.
#pragma once

#include <string>
#include <vector>

#include "frame/aircraft.h"

inline const char *const AircraftListFile = "data/aircraft.txt";

// Reads the list. A line that cannot be used is reported, and the others stand. False, with no rows, when
// there is no list or it cannot be read.
bool ReadAircraftList(const std::string &pluginFolder, std::vector<AircraftRow> &rows);

// The text of a list with another seat in this line, from 1; all else, line ends too, as it was.
std::string WithSeat(const std::string &list, int line, const SeatPlace &seat);
