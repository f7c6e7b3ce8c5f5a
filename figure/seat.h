// Where the figure sits in an aircraft whose file (.acf) names her: an author moves her into the seat with
// the position creator's channel of the whole figure, and what is shown becomes her place.
#pragma once

// Writes the place that is shown: into "data/obj/acf.txt", from which a setup takes it; into the line "seat="
// of the list of aircraft, where that is where it came from; and into the .acf, for the next time that the
// aircraft is loaded. Each file is replaced whole. False when one could not be, which leaves those behind
// it as they were, or when the aircraft's setup does not attach her; the log says which, and why.
bool SaveSeat();

// Everything as when the program starts.
void ResetSeat();
