/* The loaded aircraft. */
#ifndef FENNIC_SDK_XPLMPLANES_H
#define FENNIC_SDK_XPLMPLANES_H

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

#define XPLM_USER_AIRCRAFT 0

XPLM_API void XPLMCountAircraft(int *outTotalAircraft, int *outActiveAircraft, XPLMPluginID *outController);
XPLM_API void XPLMGetNthAircraftModel(int inIndex, char *outFileName, char *outPath);

/* Called when the other planes can be had. */
typedef void (*XPLMPlanesAvailable_f)(void *inRefcon);

XPLM_API int XPLMAcquirePlanes(char **inAircraft, XPLMPlanesAvailable_f inCallback, void *inRefcon);
XPLM_API void XPLMReleasePlanes(void);
XPLM_API void XPLMSetActiveAircraftCount(int inCount);
XPLM_API void XPLMSetAircraftModel(int inIndex, const char *inAircraftPath);
XPLM_API void XPLMDisableAIForPlane(int inPlaneIndex);
XPLM_API void XPLMSetUsersAircraft(const char *inAircraftPath);
XPLM_API void XPLMPlaceUserAtAirport(const char *inAirportCode);
XPLM_API void XPLMPlaceUserAtLocation(double latitudeDegrees, double longitudeDegrees,
                                      float elevationMetersMSL, float headingDegreesTrue,
                                      float speedMetersPerSecond);

#ifdef __cplusplus
}
#endif

#endif
