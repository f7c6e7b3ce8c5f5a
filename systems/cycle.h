// The systems cycle: evaluates every parameter once per frame and drives checklists and procedures.
#pragma once

// Flight-loop callback; returns -1.0: next frame.
float CalculateSystemsCycle(float sinceLastCall, float sinceLastLoop, int counter, void *refcon);
