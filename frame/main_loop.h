// The frame: what runs every frame, in which order.
#pragma once

struct MainLoopState {
    bool wasControlFound = false; // the dataref that the settings name exists
    int drfDone = 0;              // one-time binding done
    int readDone = 0;             // voice list, context and menu loaded
};
extern MainLoopState mainLoopState;
inline bool &isControlDrfWasFind = mainLoopState.wasControlFound;
inline int &drfDone = mainLoopState.drfDone, &readDone = mainLoopState.readDone;

// Flight-loop callback. Returns -1.0 (next frame), or 1.0 (in a second) while the control dataref named in
// the settings does not exist.
float Main(float sinceLastCall, float sinceLastLoop, int counter, void *refcon);

// Back to the state of a fresh flight: flight time went back.
void ReInitVariables();

// Writes the plug-in's folder into "path.txt" there.
void SavePathToFile();

// Everything as when the program starts.
void ResetMainLoop();
