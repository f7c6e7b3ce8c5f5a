// The aircraft, or another plug-in, may switch the first officer off: "kv/fennic_kill".
#pragma once

#include "XPLMDataAccess.h"

struct KillSwitchState {
    bool wasLookedUp = false;
    XPLMDataRef dataref = nullptr; // null when the aircraft has none
};
extern KillSwitchState killSwitch;
inline bool &isFennicKillDrfWasReaded = killSwitch.wasLookedUp;
inline XPLMDataRef &DRFi_FennicKill = killSwitch.dataref;

// Looks the switch up: once, at the first frame.
void FindKillSwitch();

// Switched off.
bool isKilled();

// Nothing is to run or to be drawn: switched off, or not looked up yet.
bool isAtRest();

// Everything as when the program starts.
void ResetKillSwitch();
