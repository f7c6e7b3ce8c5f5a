// What is drawn over the simulator's picture.
#pragma once

#include "XPLMDisplay.h"

// Draw callback, after the simulator's window phase. Returns 1.
int DrawScreen(XPLMDrawingPhase phase, int before, void *refcon);
