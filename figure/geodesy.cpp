// Angles and distances. Places become points of the simulator's local frame, whose origin is near the
// aircraft: far from it the plane leaves the earth, and only newLatLonDistKmTrueHDG holds.
#include "figure/geodesy.h"

#include <algorithm>
#include <cmath>

#include "XPLMGraphics.h"

float calc[6] = {};

namespace {

const double SphereRadiusKm = 6371;
const double Pi = 3.1415926535;
const double TwoPi = 6.283185307;

template <typename Number> Number DirectionInPlane(Number x1, Number z1, Number x2, Number z2) {
    const Number dx = x1 - x2;
    const Number dz = z2 - z1;
    const Number fromEastWest =
        static_cast<Number>(std::acos(std::abs(dx) / std::sqrt(dx * dx + dz * dz)) * rad2deg);
    if (dx > 0) return dz < 0 ? 270 + fromEastWest : 270 - fromEastWest;
    return dz >= 0 ? 90 + fromEastWest : 90 - fromEastWest;
}

struct LocalPoint {
    double x = 0, z = 0;
};

LocalPoint ToLocal(float latitude, float longitude) {
    LocalPoint point;
    double y = 0;
    XPLMWorldToLocal(latitude, longitude, 0.0, &point.x, &y, &point.z);
    return point;
}

} // namespace

float NormalizeAngle(float a) {
    if (a > 360) return a - 360;
    if (a < 0) return a + 360;
    return a;
}

float NormalizeDeltaAngle(float d) {
    if (d < -180) return d + 360;
    if (d > 180) return d - 360;
    return d;
}

float DeltaAngle(float a, float b) {
    return NormalizeDeltaAngle(a - b);
}

float DeltaAngleFromTo(float from, float to) {
    return NormalizeDeltaAngle(NormalizeDeltaAngle(to - from));
}

float DeltaAngleFromToDir(float from, float to, int dir) {
    const float d = DeltaAngleFromTo(from, to);
    if (dir == 1 && d < 0) return d + 360;
    if (dir == -1 && d > 0) return d - 360;
    return d;
}

float CalcActualHdg(double x1, double z1, double x2, double z2) {
    return static_cast<float>(DirectionInPlane(x1, z1, x2, z2));
}

float CalcActualHdgFennic(double x1, double z1, double x2, double z2) {
    return CalcActualHdg(x1, z1, x2, z2);
}

int CalcActualHdgDist(float x1, float z1, float x2, float z2) {
    calc[0] = x1 - x2;
    calc[1] = z2 - z1;
    calc[2] = CalcDist(x1, z1, x2, z2);
    calc[3] = std::abs(calc[0]);
    calc[4] = std::abs(calc[1]);
    calc[5] = DirectionInPlane(x1, z1, x2, z2);
    return 1;
}

float CalcDist(float x1, float z1, float x2, float z2) {
    return std::sqrt((x1 - x2) * (x1 - x2) + (z2 - z1) * (z2 - z1));
}

float DistLatLonM(float lat1, float lon1, float lat2, float lon2) {
    if (lat1 == lat2 && lon1 == lon2) return 0;
    const LocalPoint a = ToLocal(lat1, lon1);
    const LocalPoint b = ToLocal(lat2, lon2);
    const double x = b.x - a.x, z = b.z - a.z;
    return static_cast<float>(std::sqrt(x * x + z * z)); // std::hypot wants a newer C library
}

float trueHdgLatLon_ShortDist(float lat1, float lon1, float lat2, float lon2) {
    const LocalPoint a = ToLocal(lat1, lon1);
    const LocalPoint b = ToLocal(lat2, lon2);
    return CalcActualHdg(a.x, a.z, b.x, b.z);
}

void newXZfromDistHeading(float x, float z, float hdg, float addHdg, float dist, float &outX, float &outZ) {
    const double a = NormalizeAngle(hdg + addHdg) * deg2rad;
    outX = static_cast<float>(x + std::sin(a) * dist);
    outZ = static_cast<float>(z - std::cos(a) * dist);
}

void newLatLonDistKmTrueHDG(double lat, double lon, double hdg, double distKm, double &outLat,
                            double &outLon) {
    const float lat1 = static_cast<float>(lat * deg2rad);
    const float heading = static_cast<float>(hdg * deg2rad);
    const double arc = distKm / SphereRadiusKm;
    const double sinArc = std::sin(arc);
    const double cosArc = std::cos(arc);
    const double sinLat2 = std::sin(lat1) * cosArc + std::cos(lat1) * sinArc * std::cos(heading);
    const double lat2 = std::asin(std::clamp(sinLat2, -1.0, 1.0)); // rounding may leave the range at a pole
    const double turn = std::atan2(std::sin(heading) * sinArc * std::cos(lat1),
                                   cosArc - std::sin(lat1) * std::sin(static_cast<float>(lat2)));
    outLat = lat2 * rad2deg;
    outLon = (std::fmod(lon * deg2rad + turn + Pi, TwoPi) - Pi) * rad2deg;
}
