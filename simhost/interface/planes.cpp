// The loaded aircraft: one, the user's.
#include "XPLMPlanes.h"

#include "simhost/modules.h"

using namespace simhost;

void XPLMCountAircraft(int *outTotalAircraft, int *outActiveAircraft, XPLMPluginID *outController) {
    if (outTotalAircraft) *outTotalAircraft = 1;
    if (outActiveAircraft) *outActiveAircraft = 1;
    if (outController) *outController = XPLM_NO_PLUGIN_ID;
}

void XPLMGetNthAircraftModel(int inIndex, char *outFileName, char *outPath) {
    const bool isUserAircraft = inIndex == XPLM_USER_AIRCRAFT && !AircraftFile().empty();
    CopyText(isUserAircraft ? AircraftFile() : "", outFileName, 256);
    CopyText(isUserAircraft ? PathForPlugin(AircraftFolder() + AircraftFile()) : "", outPath, 512);
}
