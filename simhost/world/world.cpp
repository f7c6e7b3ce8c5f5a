// World to local coordinates and back, on the WGS84 ellipsoid. Local coordinates are metres in the tangent
// plane at a reference point: x east, y up, z south.
#include "XPLMGraphics.h"

#include <GeographicLib/LocalCartesian.hpp>
#include <cmath>

#include "simhost/modules.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

constinit bool hasReference = false;
constinit double shownLatitude = NAN, shownLongitude = NAN, shownElevation = NAN;

GeographicLib::LocalCartesian &Tangent() {
    static GeographicLib::LocalCartesian tangent;
    return tangent;
}

// The first question after a reset sets the reference point where the aircraft then is.
GeographicLib::LocalCartesian &Reference() {
    if (!hasReference) {
        SetWorldReference(GetNumber("sim/flightmodel/position/latitude"),
                          GetNumber("sim/flightmodel/position/longitude"));
    }
    return Tangent();
}

} // namespace

void SetWorldReference(double latitude, double longitude) {
    // The tangent plane of a point that is no place on Earth would be no plane at all.
    if (!(std::fabs(latitude) <= 90) || !std::isfinite(longitude)) return;
    RunningScope scope(XPLM_PLUGIN_XPLANE, "moving the scenery");
    hasReference = true;
    Tangent().Reset(latitude, longitude, 0);
    shownLatitude = NAN;
    SetNumber("sim/flightmodel/position/lat_ref", latitude);
    SetNumber("sim/flightmodel/position/lon_ref", longitude);
    UpdateLocalPosition();
}

void UpdateLocalPosition() {
    static const XPLMDataRef latitudeRef = XPLMFindDataRef("sim/flightmodel/position/latitude");
    static const XPLMDataRef longitudeRef = XPLMFindDataRef("sim/flightmodel/position/longitude");
    static const XPLMDataRef elevationRef = XPLMFindDataRef("sim/flightmodel/position/elevation");
    static const XPLMDataRef localRefs[3] = {XPLMFindDataRef("sim/flightmodel/position/local_x"),
                                             XPLMFindDataRef("sim/flightmodel/position/local_y"),
                                             XPLMFindDataRef("sim/flightmodel/position/local_z")};
    const double latitude = XPLMGetDatad(latitudeRef);
    const double longitude = XPLMGetDatad(longitudeRef);
    const double elevation = XPLMGetDatad(elevationRef);
    if (latitude == shownLatitude && longitude == shownLongitude && elevation == shownElevation) return;
    double local[3] = {};
    XPLMWorldToLocal(latitude, longitude, elevation, &local[0], &local[1], &local[2]);
    shownLatitude = latitude;
    shownLongitude = longitude;
    shownElevation = elevation;
    for (int i = 0; i < 3; i++) XPLMSetDatad(localRefs[i], local[i]);
}

void ResetWorld() {
    hasReference = false;
    shownLatitude = NAN;
}

} // namespace simhost

using namespace simhost;

void XPLMWorldToLocal(double inLatitude, double inLongitude, double inAltitude, double *outX, double *outY,
                      double *outZ) {
    double east = 0, north = 0, up = 0;
    Reference().Forward(inLatitude, inLongitude, inAltitude, east, north, up);
    if (outX) *outX = east;
    if (outY) *outY = up;
    if (outZ) *outZ = -north;
}

void XPLMLocalToWorld(double inX, double inY, double inZ, double *outLatitude, double *outLongitude,
                      double *outAltitude) {
    double latitude = 0, longitude = 0, altitude = 0;
    Reference().Reverse(inX, -inZ, inY, latitude, longitude, altitude);
    if (outLatitude) *outLatitude = latitude;
    if (outLongitude) *outLongitude = longitude;
    if (outAltitude) *outAltitude = altitude;
}
