// Maps: there are none, so no layer can be made, and nobody who waits for one is called.
#include "XPLMMap.h"

#include "simhost/modules.h"

using namespace simhost;

int XPLMMapExists(const char *) {
    return 0;
}

XPLMMapLayerID XPLMCreateMapLayer(XPLMCreateMapLayer_t *) {
    return nullptr;
}

int XPLMDestroyMapLayer(XPLMMapLayerID) {
    return 0;
}

void XPLMRegisterMapCreationHook(XPLMMapCreatedCallback_f, void *) {}

void XPLMDrawMapIconFromSheet(XPLMMapLayerID, const char *, int, int, int, int, float, float,
                              XPLMMapOrientation, float, float) {
    ReportNotOffered(__func__);
}

void XPLMDrawMapLabel(XPLMMapLayerID, const char *, float, float, XPLMMapOrientation, float) {
    ReportNotOffered(__func__);
}

void XPLMMapProject(XPLMMapProjectionID, double, double, float *outX, float *outY) {
    ReportNotOffered(__func__);
    if (outX) *outX = 0;
    if (outY) *outY = 0;
}

void XPLMMapUnproject(XPLMMapProjectionID, float, float, double *outLatitude, double *outLongitude) {
    ReportNotOffered(__func__);
    if (outLatitude) *outLatitude = 0;
    if (outLongitude) *outLongitude = 0;
}

float XPLMMapScaleMeter(XPLMMapProjectionID, float, float) {
    ReportNotOffered(__func__);
    return 0;
}

float XPLMMapGetNorthHeading(XPLMMapProjectionID, float, float) {
    ReportNotOffered(__func__);
    return 0;
}
