// The loaded aircraft: one, the user's. The others, of which there are none, belong to one plug-in at a time.
#include "XPLMPlanes.h"

#include <string>
#include <vector>

#include "XPLMPlugin.h"
#include "simhost/modules.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

struct Waiting {
    XPLMPlanesAvailable_f callback = nullptr;
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};

struct Planes {
    XPLMPluginID controller = XPLM_NO_PLUGIN_ID;
    std::vector<Waiting> waiting;
};

Planes &PlanesState() {
    static auto &state = *new Planes;
    return state;
}

// Those who wait are called, until one has taken them.
void Release() {
    PlanesState().controller = XPLM_NO_PLUGIN_ID;
    while (PlanesState().controller == XPLM_NO_PLUGIN_ID && !PlanesState().waiting.empty()) {
        const Waiting next = PlanesState().waiting.front();
        PlanesState().waiting.erase(PlanesState().waiting.begin());
        if (!isPluginEnabled(next.owner)) continue;
        RunningScope scope(next.owner, "planes' callback");
        next.callback(next.refcon);
    }
}

bool isController() {
    return PlanesState().controller == currentRunning.plugin;
}

} // namespace

void DropPlanes(XPLMPluginID plugin) {
    std::erase_if(PlanesState().waiting, [&](const Waiting &one) { return one.owner == plugin; });
    if (PlanesState().controller == plugin) Release();
}

void ResetPlanes() {
    PlanesState() = {};
}

} // namespace simhost

using namespace simhost;

void XPLMCountAircraft(int *outTotalAircraft, int *outActiveAircraft, XPLMPluginID *outController) {
    if (outTotalAircraft) *outTotalAircraft = 1;
    if (outActiveAircraft) *outActiveAircraft = 1;
    if (outController) *outController = PlanesState().controller;
}

void XPLMGetNthAircraftModel(int inIndex, char *outFileName, char *outPath) {
    const bool isUserAircraft = inIndex == XPLM_USER_AIRCRAFT && !AircraftFile().empty();
    CopyText(isUserAircraft ? AircraftFile() : "", outFileName, 256);
    CopyText(isUserAircraft ? PathForPlugin(AircraftFolder() + AircraftFile()) : "", outPath, 512);
}

int XPLMAcquirePlanes(char **, XPLMPlanesAvailable_f inCallback, void *inRefcon) {
    if (PlanesState().controller == XPLM_NO_PLUGIN_ID) PlanesState().controller = currentRunning.plugin;
    if (isController()) return 1;
    if (inCallback) PlanesState().waiting.push_back({inCallback, inRefcon, currentRunning.plugin});
    return 0;
}

void XPLMReleasePlanes(void) {
    if (isController()) Release();
}

void XPLMSetActiveAircraftCount(int inCount) {
    if (inCount > 1) ReportNotOffered(__func__);
}

void XPLMSetAircraftModel(int, const char *) {
    ReportNotOffered(__func__);
}

void XPLMDisableAIForPlane(int) {}

void XPLMSetUsersAircraft(const char *) {
    ReportNotOffered(__func__);
}

void XPLMPlaceUserAtAirport(const char *) {
    ReportNotOffered(__func__);
}

void XPLMPlaceUserAtLocation(double latitudeDegrees, double longitudeDegrees, float elevationMetersMSL,
                             float headingDegreesTrue, float speedMetersPerSecond) {
    RunningScope scope(XPLM_PLUGIN_XPLANE, "placing the aircraft");
    const std::string position = "sim/flightmodel/position/";
    SetNumber(position + "latitude", latitudeDegrees);
    SetNumber(position + "longitude", longitudeDegrees);
    SetNumber(position + "elevation", elevationMetersMSL);
    SetNumber(position + "psi", headingDegreesTrue);
    SetNumber(position + "groundspeed", speedMetersPerSecond);
    SetWorldReference(latitudeDegrees, longitudeDegrees);
    BroadcastMessage(XPLM_MSG_AIRPORT_LOADED, nullptr);
    BroadcastMessage(XPLM_MSG_SCENERY_LOADED, nullptr);
}
