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

#ifdef __cplusplus
}
#endif

#endif
