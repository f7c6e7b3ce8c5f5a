// The frame: what runs every frame, in which order.
#pragma once

#include "XPLMDataAccess.h"

extern bool isFennicKillDrfWasReaded; // the kill switch was looked up
extern XPLMDataRef DRFi_FennicKill;   // "kv/fennic_kill"; null when the aircraft has none

// Flight-loop callback. Returns -1.0 (next frame), or 1.0 (in a second) while the control dataref named in
// the settings does not exist.
float Main(float sinceLastCall, float sinceLastLoop, int counter, void *refcon);

// True when the aircraft or another plug-in has switched the first officer off.
bool isKilled();

// Back to the state of a fresh flight: flight time went back.
void ReInitVariables();

// Writes the plug-in's folder into "path.txt" there.
void SavePathToFile();

// Everything as when the program starts.
void ResetMainLoop();
