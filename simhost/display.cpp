// Draw callbacks, the screen's size, and what will be windows. Without a window system nothing is on
// screen yet: the calls on windows and key sniffers say so once in the log and do nothing.
#include "XPLMDisplay.h"

#include <algorithm>

#include "simhost/modules.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

struct DrawCallback {
    XPLMDrawCallback_f callback = nullptr; // null: unregistered, swept out after the run
    XPLMDrawingPhase phase = 0;
    bool before = false;
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};

constexpr XPLMDrawingPhase drawingPhases[] = {xplm_Phase_Modern3D, xplm_Phase_FirstCockpit,
                                              xplm_Phase_Panel,    xplm_Phase_Gauges,
                                              xplm_Phase_Window,   xplm_Phase_LastCockpit};

constinit std::vector<DrawCallback> drawCallbacks;
constinit bool isDrawing = false;

constexpr int defaultScreenWidth = 1920;
constexpr int defaultScreenHeight = 1080;
constinit int screenWidth = defaultScreenWidth;
constinit int screenHeight = defaultScreenHeight;

void SweepDrawCallbacks() {
    if (isDrawing) return;
    std::erase_if(drawCallbacks, [](const DrawCallback &draw) { return draw.callback == nullptr; });
}

void RunPhase(XPLMDrawingPhase phase, bool before) {
    const std::size_t count = drawCallbacks.size();
    for (std::size_t i = 0; i < count; i++) {
        const DrawCallback draw = drawCallbacks[i];
        if (draw.callback == nullptr || draw.phase != phase || draw.before != before) continue;
        if (!IsPluginEnabled(draw.owner)) continue;
        RunningScope scope(draw.owner, "draw callback");
        draw.callback(phase, before ? 1 : 0, draw.refcon);
    }
}

// The XPLM's four-cornered outputs, each of which may be null.
void SetCorners(int left, int top, int right, int bottom, int *outLeft, int *outTop, int *outRight,
                int *outBottom) {
    if (outLeft != nullptr) *outLeft = left;
    if (outTop != nullptr) *outTop = top;
    if (outRight != nullptr) *outRight = right;
    if (outBottom != nullptr) *outBottom = bottom;
}

void SetPair(int first, int second, int *outFirst, int *outSecond) {
    if (outFirst != nullptr) *outFirst = first;
    if (outSecond != nullptr) *outSecond = second;
}

} // namespace

void SetScreenSize(int width, int height) {
    screenWidth = width;
    screenHeight = height;
    SetNumber("sim/graphics/view/window_width", width);
    SetNumber("sim/graphics/view/window_height", height);
}

void RunDrawCallbacks() {
    if (drawCallbacks.empty()) return;
    isDrawing = true;
    for (XPLMDrawingPhase phase : drawingPhases) {
        RunPhase(phase, true);
        RunPhase(phase, false);
    }
    isDrawing = false;
    SweepDrawCallbacks();
}

void DropDrawCallbacks(XPLMPluginID plugin, LeftBehind &leftBehind) {
    for (DrawCallback &draw : drawCallbacks) {
        if (draw.callback == nullptr || draw.owner != plugin) continue;
        leftBehind.errors.push_back("draw callback "
                                    + DescribeFunction(reinterpret_cast<void *>(draw.callback)));
        draw.callback = nullptr;
    }
    SweepDrawCallbacks();
}

void ResetDisplay() {
    drawCallbacks.clear();
    screenWidth = defaultScreenWidth;
    screenHeight = defaultScreenHeight;
}

} // namespace simhost

using namespace simhost;

int XPLMRegisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase, int inWantsBefore,
                             void *inRefcon) {
    if (inCallback == nullptr
        || std::find(std::begin(drawingPhases), std::end(drawingPhases), inPhase)
               == std::end(drawingPhases)) {
        ReportMisuse("XPLMRegisterDrawCallback without a callback, or for a phase that does not exist");
        return 0;
    }
    drawCallbacks.push_back({inCallback, inPhase, inWantsBefore != 0, inRefcon, currentRunning.plugin});
    return 1;
}

int XPLMUnregisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase, int inWantsBefore,
                               void *inRefcon) {
    if (inCallback == nullptr) return 0;
    for (DrawCallback &draw : drawCallbacks) {
        if (draw.callback != inCallback || draw.phase != inPhase || draw.before != (inWantsBefore != 0)
            || draw.refcon != inRefcon) {
            continue;
        }
        draw.callback = nullptr;
        SweepDrawCallbacks();
        return 1;
    }
    return 0;
}

void XPLMGetScreenSize(int *outWidth, int *outHeight) {
    SetPair(screenWidth, screenHeight, outWidth, outHeight);
}

void XPLMGetScreenBoundsGlobal(int *outLeft, int *outTop, int *outRight, int *outBottom) {
    SetCorners(0, screenHeight, screenWidth, 0, outLeft, outTop, outRight, outBottom);
}

// ---- Not offered yet: the mouse, windows, the keyboard ----

void XPLMGetMouseLocation(int *outX, int *outY) {
    ReportNotOffered(__func__);
    SetPair(0, 0, outX, outY);
}

void XPLMGetMouseLocationGlobal(int *outX, int *outY) {
    ReportNotOffered(__func__);
    SetPair(0, 0, outX, outY);
}

XPLMWindowID XPLMCreateWindowEx(XPLMCreateWindow_t *) {
    ReportNotOffered(__func__);
    return nullptr;
}

XPLMWindowID XPLMCreateWindow(int, int, int, int, int, XPLMDrawWindow_f, XPLMHandleKey_f,
                              XPLMHandleMouseClick_f, void *) {
    ReportNotOffered(__func__);
    return nullptr;
}

void XPLMDestroyWindow(XPLMWindowID) {
    ReportNotOffered(__func__);
}

void XPLMGetWindowGeometry(XPLMWindowID, int *outLeft, int *outTop, int *outRight, int *outBottom) {
    ReportNotOffered(__func__);
    SetCorners(0, 0, 0, 0, outLeft, outTop, outRight, outBottom);
}

void XPLMSetWindowGeometry(XPLMWindowID, int, int, int, int) {
    ReportNotOffered(__func__);
}

void XPLMGetWindowGeometryOS(XPLMWindowID, int *outLeft, int *outTop, int *outRight, int *outBottom) {
    ReportNotOffered(__func__);
    SetCorners(0, 0, 0, 0, outLeft, outTop, outRight, outBottom);
}

void XPLMSetWindowGeometryOS(XPLMWindowID, int, int, int, int) {
    ReportNotOffered(__func__);
}

void XPLMGetWindowGeometryVR(XPLMWindowID, int *outWidthBoxels, int *outHeightBoxels) {
    ReportNotOffered(__func__);
    SetPair(0, 0, outWidthBoxels, outHeightBoxels);
}

void XPLMSetWindowGeometryVR(XPLMWindowID, int, int) {
    ReportNotOffered(__func__);
}

int XPLMGetWindowIsVisible(XPLMWindowID) {
    ReportNotOffered(__func__);
    return 0;
}

void XPLMSetWindowIsVisible(XPLMWindowID, int) {
    ReportNotOffered(__func__);
}

int XPLMWindowIsPoppedOut(XPLMWindowID) {
    ReportNotOffered(__func__);
    return 0;
}

int XPLMWindowIsInVR(XPLMWindowID) {
    ReportNotOffered(__func__);
    return 0;
}

void XPLMSetWindowGravity(XPLMWindowID, float, float, float, float) {
    ReportNotOffered(__func__);
}

void XPLMSetWindowResizingLimits(XPLMWindowID, int, int, int, int) {
    ReportNotOffered(__func__);
}

void XPLMSetWindowPositioningMode(XPLMWindowID, XPLMWindowPositioningMode, int) {
    ReportNotOffered(__func__);
}

void XPLMSetWindowTitle(XPLMWindowID, const char *) {
    ReportNotOffered(__func__);
}

void *XPLMGetWindowRefCon(XPLMWindowID) {
    ReportNotOffered(__func__);
    return nullptr;
}

void XPLMSetWindowRefCon(XPLMWindowID, void *) {
    ReportNotOffered(__func__);
}

void XPLMTakeKeyboardFocus(XPLMWindowID) {
    ReportNotOffered(__func__);
}

int XPLMHasKeyboardFocus(XPLMWindowID) {
    ReportNotOffered(__func__);
    return 0;
}

void XPLMBringWindowToFront(XPLMWindowID) {
    ReportNotOffered(__func__);
}

int XPLMIsWindowInFront(XPLMWindowID) {
    ReportNotOffered(__func__);
    return 0;
}

int XPLMRegisterKeySniffer(XPLMKeySniffer_f, int, void *) {
    ReportNotOffered(__func__);
    return 0;
}

int XPLMUnregisterKeySniffer(XPLMKeySniffer_f, int, void *) {
    ReportNotOffered(__func__);
    return 0;
}
