// The one clock of the plug-in: flight time as the main loop read it at the start of the frame. Every
// deadline and timer is in these seconds, never in wall-clock time. Only the main loop writes it.
#pragma once

extern double FlightTimeSEC; // total flight time of the simulator, seconds
extern double FrpSEC;        // length of the last frame, seconds; 0 while the simulator is paused

// Everything as when the program starts.
void ResetClock();
