// The one place that looks the clock's datarefs up.
#include "frame/simulator_datarefs.h"

#include "util/find_dataref.h"

XPLMDataRef DRFf_TotalFlightTimeSec = nullptr;
XPLMDataRef DRF_paused = nullptr;

void FindSimulatorDatarefs() {
    DRFf_TotalFlightTimeSec = FindDataref("sim/time/total_flight_time_sec");
    DRF_paused = FindDataref("sim/time/paused");
}
