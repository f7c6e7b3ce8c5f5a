/* Control of the camera. Metres in local coordinates, degrees. */
#ifndef FENNIC_SDK_XPLMCAMERA_H
#define FENNIC_SDK_XPLMCAMERA_H

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    xplm_ControlCameraUntilViewChanges = 1,
    xplm_ControlCameraForever = 2,
};
typedef int XPLMCameraControlDuration;

typedef struct {
    float x;
    float y;
    float z;
    float pitch;
    float heading;
    float roll;
    float zoom;
} XPLMCameraPosition_t;

/* Returns 1 with the camera's position, 0 to give the camera back. When control is taken away,
   inIsLosingControl is 1 and outCameraPosition null. */
typedef int (*XPLMCameraControl_f)(XPLMCameraPosition_t *outCameraPosition, int inIsLosingControl,
                                   void *inRefcon);

XPLM_API void XPLMControlCamera(XPLMCameraControlDuration inHowLong, XPLMCameraControl_f inControlFunc,
                                void *inRefcon);
XPLM_API void XPLMDontControlCamera(void);
XPLM_API int XPLMIsCameraBeingControlled(XPLMCameraControlDuration *outCameraControlDuration);
XPLM_API void XPLMReadCameraPosition(XPLMCameraPosition_t *outCameraPosition);

#ifdef __cplusplus
}
#endif

#endif
