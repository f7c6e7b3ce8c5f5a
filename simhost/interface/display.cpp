// Draw callbacks and the screen's size.
#include "XPLMDisplay.h"

#include <algorithm>

#include "simhost/drawing/graphics_state.h"
#include "simhost/drawing/screen.h"
#include "simhost/interface/callback_list.h"
#include "simhost/modules.h"
#include "simhost/simulator.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

struct DrawCallback {
    XPLMDrawCallback_f callback = nullptr;
    XPLMDrawingPhase phase = 0;
    bool before = false;
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};

constinit CallbackList<DrawCallback> drawCallbacks;

constexpr int DefaultScreenWidth = 1920;
constexpr int DefaultScreenHeight = 1080;
constinit int screenWidth = DefaultScreenWidth;
constinit int screenHeight = DefaultScreenHeight;

void RunPhase(CallbackList<DrawCallback>::Round &round, XPLMDrawingPhase phase, bool before) {
    round.Run([&](const DrawCallback &draw, std::size_t) {
        if (draw.phase != phase || draw.before != before) return true;
        RunningScope scope(draw.owner, "draw callback");
        DrawingScope drawing;
        draw.callback(phase, before ? 1 : 0, draw.refcon);
        return true;
    });
}

void SetPair(int first, int second, int *outFirst, int *outSecond) {
    if (outFirst) *outFirst = first;
    if (outSecond) *outSecond = second;
}

} // namespace

void SetScreenSize(int width, int height) {
    const int widerBy = width - screenWidth, higherBy = height - screenHeight;
    screenWidth = width;
    screenHeight = height;
    SetNumber("sim/graphics/view/window_width", width);
    SetNumber("sim/graphics/view/window_height", height);
    ScreenSizeChanged(widerBy, higherBy);
}

int ScreenWidth() {
    return screenWidth;
}

int ScreenHeight() {
    return screenHeight;
}

void RunDrawPhase(XPLMDrawingPhase phase) {
    if (drawCallbacks.isEmpty()) return;
    CallbackList<DrawCallback>::Round round(drawCallbacks);
    RunPhase(round, phase, true);
    RunPhase(round, phase, false);
}

void DropDrawCallbacks(XPLMPluginID plugin, LeftBehind &leftBehind) {
    drawCallbacks.Drop(plugin, "draw callback", leftBehind);
}

void ResetDisplay() {
    drawCallbacks.Clear();
    screenWidth = DefaultScreenWidth;
    screenHeight = DefaultScreenHeight;
}

} // namespace simhost

using namespace simhost;

int XPLMRegisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase, int inWantsBefore,
                             void *inRefcon) {
    if (!inCallback
        || std::find(std::begin(DrawingPhases), std::end(DrawingPhases), inPhase)
               == std::end(DrawingPhases)) {
        ReportMisuse("XPLMRegisterDrawCallback without a callback, or for a phase that does not exist");
        return 0;
    }
    ProvideGraphics();
    drawCallbacks.Add({inCallback, inPhase, inWantsBefore != 0, inRefcon, currentRunning.plugin});
    return 1;
}

int XPLMUnregisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase, int inWantsBefore,
                               void *inRefcon) {
    const auto isIt = [&](const DrawCallback &draw) {
        return draw.phase == inPhase && draw.before == (inWantsBefore != 0);
    };
    return drawCallbacks.Remove(inCallback, inRefcon, isIt) ? 1 : 0;
}

void XPLMGetScreenSize(int *outWidth, int *outHeight) {
    SetPair(screenWidth, screenHeight, outWidth, outHeight);
}

void XPLMGetScreenBoundsGlobal(int *outLeft, int *outTop, int *outRight, int *outBottom) {
    SetPair(0, screenHeight, outLeft, outTop);
    SetPair(screenWidth, 0, outRight, outBottom);
}

// One monitor, whose boxels are its pixels.
void XPLMGetAllMonitorBoundsGlobal(XPLMReceiveMonitorBoundsGlobal_f inMonitorBoundsCallback, void *inRefcon) {
    if (inMonitorBoundsCallback) inMonitorBoundsCallback(0, 0, screenHeight, screenWidth, 0, inRefcon);
}

void XPLMGetAllMonitorBoundsOS(XPLMReceiveMonitorBoundsOS_f inMonitorBoundsCallback, void *inRefcon) {
    if (inMonitorBoundsCallback) inMonitorBoundsCallback(0, 0, screenHeight, screenWidth, 0, inRefcon);
}
