// The widget calls, so that every plug-in loads. None is offered yet: each says so once in the log, does
// nothing and gives null or 0.
#include "XPStandardWidgets.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"

#include "simhost/modules.h"

using simhost::ReportNotOffered;

#define NOT_OFFERED(result, name, parameters)                                                                \
    result name parameters {                                                                                 \
        ReportNotOffered(#name);                                                                             \
        return result();                                                                                     \
    }

// XPWidgets.h
NOT_OFFERED(XPWidgetID, XPCreateWidget,
            (int, int, int, int, int, const char *, int, XPWidgetID, XPWidgetClass))
NOT_OFFERED(XPWidgetID, XPCreateCustomWidget,
            (int, int, int, int, int, const char *, int, XPWidgetID, XPWidgetFunc_t))
NOT_OFFERED(void, XPDestroyWidget, (XPWidgetID, int))
NOT_OFFERED(int, XPSendMessageToWidget, (XPWidgetID, XPWidgetMessage, XPDispatchMode, intptr_t, intptr_t))
NOT_OFFERED(void, XPPlaceWidgetWithin, (XPWidgetID, XPWidgetID))
NOT_OFFERED(int, XPCountChildWidgets, (XPWidgetID))
NOT_OFFERED(XPWidgetID, XPGetNthChildWidget, (XPWidgetID, int))
NOT_OFFERED(XPWidgetID, XPGetParentWidget, (XPWidgetID))
NOT_OFFERED(void, XPShowWidget, (XPWidgetID))
NOT_OFFERED(void, XPHideWidget, (XPWidgetID))
NOT_OFFERED(int, XPIsWidgetVisible, (XPWidgetID))
NOT_OFFERED(XPWidgetID, XPFindRootWidget, (XPWidgetID))
NOT_OFFERED(void, XPBringRootWidgetToFront, (XPWidgetID))
NOT_OFFERED(int, XPIsWidgetInFront, (XPWidgetID))
NOT_OFFERED(void, XPSetWidgetGeometry, (XPWidgetID, int, int, int, int))
NOT_OFFERED(XPWidgetID, XPGetWidgetForLocation, (XPWidgetID, int, int, int, int))
NOT_OFFERED(void, XPSetWidgetDescriptor, (XPWidgetID, const char *))
NOT_OFFERED(XPLMWindowID, XPGetWidgetUnderlyingWindow, (XPWidgetID))
NOT_OFFERED(void, XPSetWidgetProperty, (XPWidgetID, XPWidgetPropertyID, intptr_t))
NOT_OFFERED(XPWidgetID, XPSetKeyboardFocus, (XPWidgetID))
NOT_OFFERED(void, XPLoseKeyboardFocus, (XPWidgetID))
NOT_OFFERED(XPWidgetID, XPGetWidgetWithFocus, ())
NOT_OFFERED(void, XPAddWidgetCallback, (XPWidgetID, XPWidgetFunc_t))
NOT_OFFERED(XPWidgetFunc_t, XPGetWidgetClassFunc, (XPWidgetClass))

// XPWidgetUtils.h
NOT_OFFERED(void, XPUMoveWidgetBy, (XPWidgetID, int, int))
NOT_OFFERED(int, XPUFixedLayout, (XPWidgetMessage, XPWidgetID, intptr_t, intptr_t))

// Those with results in the caller's memory.

static void ZeroCorners(int *left, int *top, int *right, int *bottom) {
    for (int *corner : {left, top, right, bottom}) {
        if (corner != nullptr) *corner = 0;
    }
}

void XPGetWidgetGeometry(XPWidgetID, int *outLeft, int *outTop, int *outRight, int *outBottom) {
    ReportNotOffered(__func__);
    ZeroCorners(outLeft, outTop, outRight, outBottom);
}

void XPGetWidgetExposedGeometry(XPWidgetID, int *outLeft, int *outTop, int *outRight, int *outBottom) {
    ReportNotOffered(__func__);
    ZeroCorners(outLeft, outTop, outRight, outBottom);
}

int XPGetWidgetDescriptor(XPWidgetID, char *outDescriptor, int inMaxDescLength) {
    ReportNotOffered(__func__);
    if (outDescriptor != nullptr && inMaxDescLength > 0) outDescriptor[0] = '\0';
    return 0;
}

intptr_t XPGetWidgetProperty(XPWidgetID, XPWidgetPropertyID, int *inExists) {
    ReportNotOffered(__func__);
    if (inExists != nullptr) *inExists = 0;
    return 0;
}

void XPUCreateWidgets(const XPWidgetCreate_t *, int inCount, XPWidgetID, XPWidgetID *ioWidgets) {
    ReportNotOffered(__func__);
    for (int i = 0; ioWidgets != nullptr && i < inCount; i++) ioWidgets[i] = nullptr;
}
