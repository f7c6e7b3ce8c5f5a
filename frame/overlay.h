// What is drawn over the simulator's picture: what she said, which answers she waits for, and the
// checklists and procedures that can be called.
#pragma once

#include "XPLMDisplay.h"

// Draw callback, after the simulator's window phase. Returns 1.
int DrawScreen(XPLMDrawingPhase phase, int before, void *refcon);

// Takes the overlay's window away; before the plug-in stops.
void CloseOverlay();

// Everything as when the program starts.
void ResetOverlay();
