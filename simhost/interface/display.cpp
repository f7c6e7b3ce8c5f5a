// Draw callbacks and the screen's size. A callback may unregister itself or others while it runs, so the list
// is swept afterwards.
#include "XPLMDisplay.h"

#include <algorithm>

#include "simhost/drawing/graphics_state.h"
#include "simhost/drawing/screen.h"
#include "simhost/modules.h"
#include "simhost/simulator.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

struct DrawCallback {
    XPLMDrawCallback_f callback = nullptr; // null: unregistered, swept out after the run
    XPLMDrawingPhase phase = 0;
    bool before = false;
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};

constinit std::vector<DrawCallback> drawCallbacks;
constinit bool isDrawing = false;

constexpr int DefaultScreenWidth = 1920;
constexpr int DefaultScreenHeight = 1080;
constinit int screenWidth = DefaultScreenWidth;
constinit int screenHeight = DefaultScreenHeight;

void SweepDrawCallbacks() {
    if (isDrawing) return;
    std::erase_if(drawCallbacks, [](const DrawCallback &draw) { return !draw.callback; });
}

void RunPhase(XPLMDrawingPhase phase, bool before) {
    const std::size_t count = drawCallbacks.size();
    for (std::size_t i = 0; i < count; i++) {
        const DrawCallback draw = drawCallbacks[i];
        if (!draw.callback || draw.phase != phase || draw.before != before) continue;
        if (!isPluginEnabled(draw.owner)) continue;
        RunningScope scope(draw.owner, "draw callback");
        DrawingScope drawing;
        draw.callback(phase, before ? 1 : 0, draw.refcon);
    }
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
    if (drawCallbacks.empty()) return;
    isDrawing = true;
    RunPhase(phase, true);
    RunPhase(phase, false);
    isDrawing = false;
    SweepDrawCallbacks();
}

void DropDrawCallbacks(XPLMPluginID plugin, LeftBehind &leftBehind) {
    for (DrawCallback &draw : drawCallbacks) {
        if (!draw.callback || draw.owner != plugin) continue;
        leftBehind.errors.push_back("draw callback "
                                    + DescribeFunction(reinterpret_cast<void *>(draw.callback)));
        draw.callback = nullptr;
    }
    SweepDrawCallbacks();
}

void ResetDisplay() {
    drawCallbacks.clear();
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
    drawCallbacks.push_back({inCallback, inPhase, inWantsBefore != 0, inRefcon, currentRunning.plugin});
    return 1;
}

int XPLMUnregisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase, int inWantsBefore,
                               void *inRefcon) {
    if (!inCallback) return 0;
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
    SetPair(0, screenHeight, outLeft, outTop);
    SetPair(screenWidth, 0, outRight, outBottom);
}
