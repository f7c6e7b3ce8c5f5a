// A window for the tests: it notes what it is told, and does in each of its functions what a test wants.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "XPLMDisplay.h"
#include "simhost/drawing/screen.h"
#include "tests/simhost/as_plugin.h"

struct TestWindow {
    std::string name;
    XPLMWindowID id = nullptr;
    int answer = 1; // to presses and the wheel
    XPLMCursorStatus cursor = xplm_CursorDefault;
    std::function<void(const std::string &event)> act = [](const std::string &) {};

    static inline std::vector<std::string> events; // "name down 10 20"
    static inline bool notesDrawing = false;

    void Note(const std::string &event) {
        events.push_back(name + " " + event);
        act(event); // may destroy the window, but not this
    }
};
inline std::vector<std::string> TakenEvents() {
    return std::exchange(TestWindow::events, {});
}
using Events = std::vector<std::string>;

inline TestWindow &Of(void *refcon) {
    return *static_cast<TestWindow *>(refcon);
}

inline std::string At(int x, int y) {
    return " " + std::to_string(x) + " " + std::to_string(y);
}

inline void DrawTestWindow(XPLMWindowID, void *refcon) {
    if (TestWindow::notesDrawing) Of(refcon).Note("draws");
}

inline void TestWindowKey(XPLMWindowID, char character, XPLMKeyFlags flags, char virtualKey, void *refcon,
                          int losingFocus) {
    if (losingFocus != 0)
        Of(refcon).Note("loses focus");
    else
        Of(refcon).Note("key " + std::to_string(character)
                        + At(flags, static_cast<unsigned char>(virtualKey)));
}

inline int TestWindowClick(XPLMWindowID, int x, int y, XPLMMouseStatus status, void *refcon) {
    const char *names[] = {"", "down", "drag", "up"};
    const int answer = Of(refcon).answer;
    Of(refcon).Note(names[status] + At(x, y));
    return answer;
}

inline int TestWindowRightClick(XPLMWindowID, int x, int y, XPLMMouseStatus status, void *refcon) {
    const char *names[] = {"", "right down", "right drag", "right up"};
    Of(refcon).Note(names[status] + At(x, y));
    return Of(refcon).answer;
}

inline XPLMCursorStatus TestWindowCursor(XPLMWindowID, int, int, void *refcon) {
    Of(refcon).Note("cursor");
    return Of(refcon).cursor;
}

inline int TestWindowWheel(XPLMWindowID, int x, int y, int wheel, int clicks, void *refcon) {
    Of(refcon).Note("wheel " + std::to_string(wheel) + " by " + std::to_string(clicks) + At(x, y));
    return Of(refcon).answer;
}

inline XPLMCreateWindow_t Parameters(TestWindow &window, int left, int top, int right, int bottom) {
    XPLMCreateWindow_t parameters{};
    parameters.structSize = sizeof parameters;
    parameters.left = left;
    parameters.top = top;
    parameters.right = right;
    parameters.bottom = bottom;
    parameters.visible = 1;
    parameters.drawWindowFunc = DrawTestWindow;
    parameters.handleMouseClickFunc = TestWindowClick;
    parameters.handleRightClickFunc = TestWindowRightClick;
    parameters.handleMouseWheelFunc = TestWindowWheel;
    parameters.handleKeyFunc = TestWindowKey;
    parameters.handleCursorFunc = TestWindowCursor;
    parameters.layer = xplm_WindowLayerFloatingWindows;
    parameters.decorateAsFloatingWindow = xplm_WindowDecorationNone;
    parameters.refcon = &window;
    return parameters;
}

inline void Create(TestWindow &window, int left, int top, int right, int bottom,
                   XPLMWindowDecoration decoration = xplm_WindowDecorationNone,
                   XPLMWindowLayer layer = xplm_WindowLayerFloatingWindows) {
    XPLMCreateWindow_t parameters = Parameters(window, left, top, right, bottom);
    parameters.decorateAsFloatingWindow = decoration;
    parameters.layer = layer;
    window.id = XPLMCreateWindowEx(&parameters);
}

inline std::vector<int> GeometryOf(const TestWindow &window) {
    std::vector<int> corners(4, -1);
    XPLMGetWindowGeometry(window.id, &corners[0], &corners[1], &corners[2], &corners[3]);
    return corners;
}
using Corners = std::vector<int>; // left, top, right, bottom

// A screen of 1000 × 800 boxels, on which nothing has happened.
class OnScreen : public AsPlugin {
protected:
    OnScreen() {
        simhost::SetScreenSize(1000, 800);
        TakenEvents();
    }
    static void Click(int x, int y) {
        simhost::PressMouse(x, y, simhost::MouseButton::Left);
        simhost::ReleaseMouse(x, y);
    }
};
