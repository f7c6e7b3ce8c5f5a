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

enum {
    xplm_FlightLoop_Phase_BeforeFlightModel = 0,
    xplm_FlightLoop_Phase_AfterFlightModel = 1,
};
typedef int XPLMFlightLoopPhaseType;
typedef void *XPLMFlightLoopID;

/* What XPLMCreateFlightLoop is given. structSize is the size that the caller compiled. */
typedef struct {
    int structSize;
    XPLMFlightLoopPhaseType phase;
    XPLMFlightLoop_f callbackFunc;
    void *refcon;
} XPLMCreateFlightLoop_t;

/* A flight loop that is created is not called before it is scheduled. */
XPLM_API XPLMFlightLoopID XPLMCreateFlightLoop(XPLMCreateFlightLoop_t *inParams);
XPLM_API void XPLMDestroyFlightLoop(XPLMFlightLoopID inFlightLoopID);
XPLM_API void XPLMScheduleFlightLoop(XPLMFlightLoopID inFlightLoopID, float inInterval, int inRelativeToNow);

#ifdef __cplusplus
}
#endif

#endif
