/* Probes of the ground, 3D objects, and where magnetic north is. */
#ifndef FENNIC_SDK_XPLMSCENERY_H
#define FENNIC_SDK_XPLMSCENERY_H

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    xplm_ProbeY = 0,
};
typedef int XPLMProbeType;
enum {
    xplm_ProbeHitTerrain = 0,
    xplm_ProbeError = 1,
    xplm_ProbeMissed = 2,
};
typedef int XPLMProbeResult;
typedef void *XPLMProbeRef;

/* What a probe has hit: the place, the direction that is up there, and how the ground moves. */
typedef struct {
    int structSize;
    float locationX;
    float locationY;
    float locationZ;
    float normalX;
    float normalY;
    float normalZ;
    float velocityX;
    float velocityY;
    float velocityZ;
    int is_wet;
} XPLMProbeInfo_t;

typedef void *XPLMObjectRef;

/* Where an object is drawn. */
typedef struct {
    int structSize;
    float x;
    float y;
    float z;
    float pitch;
    float heading;
    float roll;
} XPLMDrawInfo_t;

typedef void (*XPLMObjectLoaded_f)(XPLMObjectRef inObject, void *inRefcon);
typedef void (*XPLMLibraryEnumerator_f)(const char *inFilePath, void *inRef);

XPLM_API XPLMProbeRef XPLMCreateProbe(XPLMProbeType inProbeType);
XPLM_API void XPLMDestroyProbe(XPLMProbeRef inProbe);
XPLM_API XPLMProbeResult XPLMProbeTerrainXYZ(XPLMProbeRef inProbe, float inX, float inY, float inZ,
                                             XPLMProbeInfo_t *outInfo);
XPLM_API float XPLMGetMagneticVariation(double latitude, double longitude);
XPLM_API float XPLMDegTrueToDegMagnetic(float headingDegreesTrue);
XPLM_API float XPLMDegMagneticToDegTrue(float headingDegreesMagnetic);
XPLM_API XPLMObjectRef XPLMLoadObject(const char *inPath);
XPLM_API void XPLMLoadObjectAsync(const char *inPath, XPLMObjectLoaded_f inCallback, void *inRefcon);
XPLM_API void XPLMUnloadObject(XPLMObjectRef inObject);
XPLM_API int XPLMLookupObjects(const char *inPath, float inLatitude, float inLongitude,
                               XPLMLibraryEnumerator_f enumerator, void *ref);

#ifdef __cplusplus
}
#endif

#endif
