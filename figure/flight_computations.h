// What the simulator does not publish but call-outs need: whether the pilot looks at the first officer,
// whether the altimeter setting is sensible, and, in the 737s that publish their flight management's
// runways, how far and how aligned the departure and arrival runways are. All are called every frame.
#pragma once

#include <string>

// Runway state. -1: not known, and of the flags: not since load. Distances in metres, headings in degrees.
struct RunwayState {
    int onAir = -1, landed = -1;                 // 0 or 1
    float raOld = 0;                             // radio altitude taken last in the air, feet
    float landLat = 0, landLon = 0, landHdg = 0; // aircraft at touchdown
    float toRwyDistM = -1;                       // aircraft to departure threshold
    float ldgRwyDistM =
        -1; // in the air: to the arrival threshold; landed: sideways from the line it landed on
    float ldgRwyDeltaHdgDeg = -1;      // to the arrival runway
    std::string toRwyName, ldgRwyName; // as spoken
};
extern RunwayState runwayState;
inline int &OrvikOnAir = runwayState.onAir, &OrvikLanded = runwayState.landed;
inline float &OrvikRaOld = runwayState.raOld;
inline float &OrvikLandLat = runwayState.landLat, &OrvikLandLon = runwayState.landLon;
inline float &OrvikLandHdg = runwayState.landHdg;
inline float &OrvikToRwyDistM = runwayState.toRwyDistM, &OrvikLdgRwyDistM = runwayState.ldgRwyDistM;
inline float &OrvikLdgRwyDeltaHdgDeg = runwayState.ldgRwyDeltaHdgDeg;
inline std::string &OrvikToRwyName = runwayState.toRwyName, &OrvikLdgRwyName = runwayState.ldgRwyName;

// Publishes the four "kv/fnc/orvik/" floats with -1. Without them CalcOrvik's results reach only the
// globals.
void CreateOrvikDatarefs();

// The runway computation.
void CalcOrvik();

// Publishes the altimeter setting in 1/100 inHg, and whether it is within 0.02 inHg of the pressure here or
// at sea level.
void CalcBaro();

// Publishes |direction from the pilot's head to the figure - heading of the head|, degrees, not wrapped:
// 350 is as close as 10. Waits until the aircraft publishes where the figure sits.
void CalcPilot2FennicHdg();

// "27L" as "2 7 Left", "09" as "0 9 "; empty for fewer than two characters.
std::string RunwayName(const std::string &ident);

// Everything as when the program starts.
void ResetFlightComputations();
