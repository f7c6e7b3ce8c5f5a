/* Flight loops: callbacks once a frame or at intervals.

   An interval is seconds when positive, frames when negative, 0 stops the calls. */
#ifndef FENNIC_SDK_XPLMPROCESSING_H
#define FENNIC_SDK_XPLMPROCESSING_H

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef float (*XPLMFlightLoop_f)(float inElapsedSinceLastCall, float inElapsedTimeSinceLastFlightLoop,
                                  int inCounter, void *inRefcon);

XPLM_API float XPLMGetElapsedTime(void);
XPLM_API int XPLMGetCycleNumber(void);
XPLM_API void XPLMRegisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, float inInterval, void *inRefcon);
XPLM_API void XPLMUnregisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, void *inRefcon);
XPLM_API void XPLMSetFlightLoopCallbackInterval(XPLMFlightLoop_f inFlightLoop, float inInterval,
                                                int inRelativeToNow, void *inRefcon);

#ifdef __cplusplus
}
#endif

#endif
