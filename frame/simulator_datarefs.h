// Handles of the simulator's own datarefs that the frame and the figure read every frame. Looked up once,
// at start; the simulator publishes them before any plug-in starts.
#pragma once

#include "XPLMDataAccess.h"

extern XPLMDataRef DRFf_TotalFlightTimeSec; // "sim/time/total_flight_time_sec", seconds
extern XPLMDataRef DRF_paused;              // "sim/time/paused", 1 while paused

void FindSimulatorDatarefs();
