// A switch that appears after the first frame is not seen.
#include "frame/kill_switch.h"

#include "util/find_dataref.h"
#include "util/make_fresh.h"

KillSwitchState killSwitch;

void FindKillSwitch() {
    DRFi_FennicKill = FindDataref("kv/fennic_kill");
    isFennicKillDrfWasReaded = true;
}

bool isKilled() {
    return DRFi_FennicKill && XPLMGetDatai(DRFi_FennicKill) == 1;
}

bool isAtRest() {
    return !isFennicKillDrfWasReaded || isKilled();
}

void ResetKillSwitch() {
    MakeFresh(killSwitch);
}
