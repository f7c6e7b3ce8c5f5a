// Angles, distances and directions. Angles are in degrees; headings run clockwise from north. In planes +x is
// east (right) and +z is south (aft), as in the simulator's local frame.
#pragma once

#include "util/angles.h"

const float ft2m = 0.3048F;
const float m2ft = 3.28084F;
const float knot2ms = 0.514444F;

// One turn added or taken off: 0 to 360 for anything within one turn of that; 360 stays.
float NormalizeAngle(float a);

// a - b within -180 to 180, for headings within 0 to 360.
float DeltaAngle(float a, float b);

// One turn added or taken off a difference of two headings.
float NormalizeDeltaAngle(float d);

// The turn from one heading to the other: -180 to 180, right is positive.
float DeltaAngleFromTo(float from, float to);

// The same turn made to the right alone (dir 1: 0 to 360), to the left alone (dir -1: -360 to 0) or, with
// any other dir, the short way.
float DeltaAngleFromToDir(float from, float to, int dir);

// Direction from point 1 to point 2 in a plane, 0 to 360. Not a number when both are the same point.
float CalcActualHdg(double x1, double z1, double x2, double z2);
float CalcActualHdgFennic(double x1, double z1, double x2, double z2);

// The same in single precision; leaves dx, dz, distance, |dx|, |dz| and the direction in calc. Returns 1.
extern float calc[6];
int CalcActualHdgDist(float x1, float z1, float x2, float z2);

// Distance in a plane.
float CalcDist(float x1, float z1, float x2, float z2);

// Metres between two places near the aircraft, on the plane of the simulator's local frame.
float DistLatLonM(float lat1, float lon1, float lat2, float lon2);

// True bearing from place 1 to place 2, both near the aircraft. Not a number when both are the same.
float trueHdgLatLon_ShortDist(float lat1, float lon1, float lat2, float lon2);

// The point at a distance from x, z in the direction hdg + addHdg.
void newXZfromDistHeading(float x, float z, float hdg, float addHdg, float dist, float &outX, float &outZ);

// Where a great circle from a place leads: true heading at the start, kilometres, on a sphere of radius
// 6371 km. The sphere's angles are taken in single precision, which is good to about a metre.
void newLatLonDistKmTrueHDG(double lat, double lon, double hdg, double distKm, double &outLat,
                            double &outLon);
