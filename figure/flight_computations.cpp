// Per-frame computations for call-outs. Magnetic variation is added to a true bearing before it is compared
// with a magnetic course, and also to the turn since touchdown: call-outs are written for these values.
#include "figure/flight_computations.h"

#include <cmath>

#include "figure/channels.h"
#include "figure/geodesy.h"
#include "frame/datarefs.h"
#include "util/clock.h"
#include "util/find_dataref.h"
#include "util/make_fresh.h"
#include "util/numbers.h"

RunwayState runwayState;

namespace {

const float AirborneFt = 3;
const float ApproachLowestFt = 100, ApproachHighestFt = 2000;
const float ApproachMaxDeltaDeg = 10;
const float ApproachMaxDistM = 15000;
const float TouchdownMaxDeltaDeg = 15;
const double LookupSeconds = 1;

// What CalcOrvik reads. The aircraft publishes its runways some time after the plug-in starts, so what is
// missing is looked up again.
struct orvikInput {
    const char *name;
    XPLMDataRef handle;
};
orvikInput RadioAltitude = {"sim/cockpit2/gauges/indicators/radio_altimeter_height_ft_pilot", nullptr};
orvikInput Latitude = {"sim/flightmodel/position/latitude", nullptr};
orvikInput Longitude = {"sim/flightmodel/position/longitude", nullptr};
orvikInput MagneticHeading = {"sim/cockpit2/gauges/indicators/heading_AHARS_deg_mag_pilot", nullptr};
orvikInput MagneticVariation = {"sim/flightmodel/position/magnetic_variation", nullptr};
orvikInput ToRwyLat = {"laminar/B738/fms/ref_runway_start_lat", nullptr};
orvikInput ToRwyLon = {"laminar/B738/fms/ref_runway_start_lon", nullptr};
orvikInput ToRwyCourse = {"laminar/B738/fms/ref_runway_crs", nullptr};
orvikInput ToRwyIdent = {"laminar/B738/pfd/ils_runway0", nullptr};
orvikInput LdgRwyLat = {"laminar/B738/fms/des_runway_start_lat", nullptr};
orvikInput LdgRwyLon = {"laminar/B738/fms/des_runway_start_lon", nullptr};
orvikInput LdgRwyCourse = {"laminar/B738/fms/des_runway_crs", nullptr};
orvikInput LdgRwyIdent = {"laminar/B738/pfd/ils_runway", nullptr};
orvikInput *const OrvikInputs[] = {
    &RadioAltitude, &Latitude,   &Longitude, &MagneticHeading, &MagneticVariation, &ToRwyLat,   &ToRwyLon,
    &ToRwyCourse,   &ToRwyIdent, &LdgRwyLat, &LdgRwyLon,       &LdgRwyCourse,      &LdgRwyIdent};

struct {
    bool isLookedUp = false;
    double lookupTime = 0; // of the last look for what was missing
    XPLMDataRef toRwyDistM = nullptr, toRwyDeltaHdgDeg = nullptr;
    XPLMDataRef ldgRwyDistM = nullptr, ldgRwyDeltaHdgDeg = nullptr;
} runways;

// Looked up once.
struct {
    bool isLookedUp = false;
    XPLMDataRef setting = nullptr, current = nullptr, seaLevel = nullptr;
} baro;
struct {
    bool isLookedUp = false;
    XPLMDataRef headX = nullptr, headZ = nullptr, headHeading = nullptr, centreOfGravityZ = nullptr;
    XPLMDataRef figureX = nullptr, figureZ = nullptr; // the aircraft's
} view;

void FindOrvikInputs() {
    runways.lookupTime = FlightTimeSEC;
    for (orvikInput *input : OrvikInputs)
        if (!input->handle) input->handle = FindDataref(input->name);
}

// An aircraft chooses the type of its own datarefs, and a read of the wrong type gives 0.
float Number(const orvikInput &input) {
    const XPLMDataTypeID types = input.handle ? XPLMGetDataRefTypes(input.handle) : 0;
    if (types & xplmType_Float) return XPLMGetDataf(input.handle);
    if (types & xplmType_Double) return static_cast<float>(XPLMGetDatad(input.handle));
    if (types & xplmType_Int) return static_cast<float>(XPLMGetDatai(input.handle));
    return 0;
}

std::string SpokenRunway(const orvikInput &input) {
    char ident[4] = ""; // RunwayName uses three characters; so short a text needs no allocation
    XPLMGetDatab(input.handle, ident, 0, 3);
    return RunwayName(ident);
}

void PublishDeparture(float distM, float deltaHdgDeg) {
    OrvikToRwyDistM = distM;
    XPLMSetDataf(runways.toRwyDistM, distM);
    XPLMSetDataf(runways.toRwyDeltaHdgDeg, deltaHdgDeg);
}

void PublishArrival(float distM, float deltaHdgDeg) {
    OrvikLdgRwyDistM = distM;
    OrvikLdgRwyDeltaHdgDeg = deltaHdgDeg;
    XPLMSetDataf(runways.ldgRwyDistM, distM);
    XPLMSetDataf(runways.ldgRwyDeltaHdgDeg, deltaHdgDeg);
}

float MagneticBearing(float lat1, float lon1, float lat2, float lon2) {
    return NormalizeAngle(trueHdgLatLon_ShortDist(lat1, lon1, lat2, lon2) + Number(MagneticVariation));
}

void CalcAirborne(float radioAltitude) {
    OrvikOnAir = 1;
    OrvikLanded = 0;
    OrvikRaOld = radioAltitude;
    OrvikLdgRwyName.clear();
    float distM = -1, deltaHdgDeg = -1;
    const float lat = Number(LdgRwyLat), lon = Number(LdgRwyLon), course = Number(LdgRwyCourse);
    const bool isApproach = radioAltitude > ApproachLowestFt && radioAltitude < ApproachHighestFt;
    if (isApproach && course != 0 && lat != 0 && lon != 0) {
        const float ownLat = Number(Latitude), ownLon = Number(Longitude);
        const float delta = std::abs(DeltaAngleFromTo(course, MagneticBearing(ownLat, ownLon, lat, lon)));
        const float dist = DistLatLonM(ownLat, ownLon, lat, lon);
        if (delta < ApproachMaxDeltaDeg && dist < ApproachMaxDistM) {
            OrvikLdgRwyName = SpokenRunway(LdgRwyIdent);
            distM = dist;
            deltaHdgDeg = delta;
        }
    }
    PublishArrival(distM, deltaHdgDeg);
}

// Across the runway nothing changes: that was a bounce, or another runway.
void CalcTouchdown(float radioAltitude) {
    const float heading = Number(MagneticHeading);
    if (!(std::abs(DeltaAngleFromTo(heading, Number(LdgRwyCourse))) < TouchdownMaxDeltaDeg)) return;
    OrvikOnAir = 0;
    OrvikLanded = 1;
    OrvikRaOld = radioAltitude;
    OrvikLandLat = Number(Latitude);
    OrvikLandLon = Number(Longitude);
    OrvikLandHdg = heading;
    OrvikLdgRwyName = SpokenRunway(LdgRwyIdent);
}

void CalcOnGround() {
    const float ownLat = Number(Latitude), ownLon = Number(Longitude), heading = Number(MagneticHeading);
    const float lat = Number(ToRwyLat), lon = Number(ToRwyLon);
    if (lat == 0 || lon == 0) {
        PublishDeparture(-1, -1);
    } else {
        PublishDeparture(DistLatLonM(lat, lon, ownLat, ownLon),
                         std::abs(DeltaAngleFromTo(heading, Number(ToRwyCourse))));
        OrvikToRwyName = SpokenRunway(ToRwyIdent);
    }

    if (OrvikLanded != 1) {
        PublishArrival(-1, -1);
        return;
    }
    const float rolledM = DistLatLonM(OrvikLandLat, OrvikLandLon, ownLat, ownLon);
    float sidewaysM = 0; // there is no bearing from a point to itself
    if (rolledM > 0) {
        const float bearing = MagneticBearing(OrvikLandLat, OrvikLandLon, ownLat, ownLon);
        const float angle = std::abs(DeltaAngleFromTo(OrvikLandHdg, bearing));
        sidewaysM = static_cast<float>(std::sin(angle * deg2rad) * rolledM);
    }
    const float turn = DeltaAngleFromTo(OrvikLandHdg, heading);
    PublishArrival(sidewaysM, std::abs(turn + Number(MagneticVariation)));
}

int HundredthsOf(XPLMDataRef pressure) {
    // Single precision on purpose: 29.66F times 100 is 2966 there, and just below it in double.
    return TruncateToInt(XPLMGetDataf(pressure) * 100.0F);
}

} // namespace

void CreateOrvikDatarefs() {
    runways.toRwyDistM = CreateDrf_Float("kv/fnc/orvik/to_rwy/dist_m", -1.0F);
    runways.toRwyDeltaHdgDeg = CreateDrf_Float("kv/fnc/orvik/to_rwy/delta_hdg_deg", -1.0F);
    runways.ldgRwyDistM = CreateDrf_Float("kv/fnc/orvik/ldg_rwy/dist_m", -1.0F);
    runways.ldgRwyDeltaHdgDeg = CreateDrf_Float("kv/fnc/orvik/ldg_rwy/delta_hdg_deg", -1.0F);
}

void CalcOrvik() {
    if (!runways.isLookedUp) {
        FindOrvikInputs();
        runways.isLookedUp = true;
        return;
    }
    if (std::abs(FlightTimeSEC - runways.lookupTime) >= LookupSeconds) FindOrvikInputs();

    const float radioAltitude = Number(RadioAltitude);
    if (std::isnan(radioAltitude)) {
        PublishDeparture(-1, -1);
        PublishArrival(-1, -1);
    } else if (radioAltitude >= AirborneFt) {
        CalcAirborne(radioAltitude);
    } else if (OrvikOnAir == 1) {
        CalcTouchdown(radioAltitude);
    } else {
        CalcOnGround();
    }
}

void CalcBaro() {
    if (!baro.isLookedUp) {
        baro.isLookedUp = true;
        baro.setting = FindDataref("sim/cockpit/misc/barometer_setting");
        baro.current = FindDataref("sim/weather/barometer_current_inhg");
        baro.seaLevel = FindDataref("sim/weather/barometer_sealevel_inhg");
    }
    const int set = HundredthsOf(baro.setting);
    const auto isNear = [&](XPLMDataRef pressure) {
        return std::abs(static_cast<double>(HundredthsOf(pressure)) - set) < 3;
    };
    XPLMSetDatai(DRFi_BaroCheck, isNear(baro.current) || isNear(baro.seaLevel) ? 1 : 0);
    XPLMSetDatai(DRFi_Baro100, set);
}

void CalcPilot2FennicHdg() {
    if (!view.isLookedUp) {
        view.isLookedUp = true;
        view.headX = FindDataref("sim/graphics/view/pilots_head_x");
        view.headZ = FindDataref("sim/graphics/view/pilots_head_z");
        view.headHeading = FindDataref("sim/graphics/view/pilots_head_psi");
        view.centreOfGravityZ = FindDataref("sim/aircraft/weight/acf_cgZ_original");
    }
    if (!view.figureX) {
        view.figureX = FindDataref("kv/fo/_pos_x");
        if (view.figureX) view.figureZ = FindDataref("kv/fo/_pos_z");
        return;
    }
    const float direction = CalcActualHdgFennic(
        XPLMGetDataf(view.headX), XPLMGetDataf(view.headZ) + XPLMGetDataf(view.centreOfGravityZ) * ft2m,
        XPLMGetDataf(view.figureX), XPLMGetDataf(view.figureZ));
    if (std::isnan(direction)) return; // the head is where the figure sits: there is no direction
    XPLMSetDataf(DRFf_DeltaHdg2Fo, std::abs(direction - XPLMGetDataf(view.headHeading)));
}

std::string RunwayName(const std::string &ident) {
    if (ident.size() < 2) return "";
    std::string spoken = {ident[0], ' ', ident[1], ' '};
    switch (ident.size() > 2 ? ident[2] : ' ') {
    case 'R': return spoken + "Right";
    case 'L': return spoken + "Left";
    case 'C': return spoken + "Center";
    default: return spoken;
    }
}

void ResetFlightComputations() {
    for (orvikInput *input : OrvikInputs) input->handle = nullptr;
    MakeFresh(runwayState, runways, baro, view);
}
