// The one place that looks the clock's datarefs up.
#include "util/clock.h"

#include "util/find_dataref.h"
#include "util/make_fresh.h"

ClockState clockState;

void FindSimulatorDatarefs() {
    DRFf_TotalFlightTimeSec = FindDataref("sim/time/total_flight_time_sec");
    DRF_paused = FindDataref("sim/time/paused");
}

void ResetClock() {
    MakeFresh(clockState);
}
