// The one clock of the plug-in: flight time as the main loop read it at the start of the frame. Every
// deadline and timer is in these seconds, never in wall-clock time. Only the main loop writes it.
#pragma once

#include "XPLMDataAccess.h"

struct ClockState {
    double flightTime = 0.0;         // total flight time of the simulator, seconds
    double flightTimeOld = 0.0;      // that of the frame before
    double framePeriod = 0.0;        // length of the last frame, seconds; 0 while the simulator is paused
    XPLMDataRef totalTime = nullptr; // "sim/time/total_flight_time_sec", seconds
    XPLMDataRef paused = nullptr;    // "sim/time/paused", 1 while paused
};
extern ClockState clockState;
inline double &FlightTimeSEC = clockState.flightTime, &FlightTimeOld = clockState.flightTimeOld;
inline double &FrpSEC = clockState.framePeriod;
inline XPLMDataRef &DRFf_TotalFlightTimeSec = clockState.totalTime, &DRF_paused = clockState.paused;

// Looks the clock's datarefs up: once, at start. The simulator publishes them before any plug-in starts.
void FindSimulatorDatarefs();

// Everything as when the program starts.
void ResetClock();
