// What the simulator does not publish but call-outs need: whether the pilot looks at the first officer,
// whether the altimeter setting is sensible, and, in the 737s that publish their flight management's
// runways, how far and how aligned the departure and arrival runways are. All are called every frame.
#pragma once

#include <string>

// Runway state. -1: not known, and of the flags: not since load. Distances in metres, headings in degrees.
extern int OrvikOnAir, OrvikLanded;                    // 0 or 1
extern float OrvikRaOld;                               // radio altitude taken last in the air, feet
extern float OrvikLandLat, OrvikLandLon, OrvikLandHdg; // aircraft at touchdown
extern float OrvikToRwyDistM;                          // aircraft to departure threshold
extern float OrvikLdgRwyDistM;                         // in the air: to the arrival threshold; landed:
                                                       // sideways from the line it landed on
extern float OrvikLdgRwyDeltaHdgDeg;                   // to the arrival runway
extern std::string OrvikToRwyName, OrvikLdgRwyName;    // as spoken

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
