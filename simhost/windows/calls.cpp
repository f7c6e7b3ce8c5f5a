// The calls of XPLMDisplay.h on windows. Handles of windows that have gone read as 0 and change nothing.
#include "XPLMDisplay.h"

#include <algorithm>
#include <cstring>

#include "simhost/drawing/screen.h"
#include "simhost/modules.h"
#include "simhost/windows/state.h"

using namespace simhost;

namespace {

// Fields past the caller's structSize are absent: they keep the value that is there.
template <typename Field>
void TakeField(const XPLMCreateWindow_t &given, Field XPLMCreateWindow_t::*field, Field &taken) {
    static const XPLMCreateWindow_t layout{};
    const auto offset = static_cast<std::size_t>(reinterpret_cast<const char *>(&(layout.*field))
                                                 - reinterpret_cast<const char *>(&layout));
    if (given.structSize < static_cast<int>(offset + sizeof(Field))) return;
    std::memcpy(&taken, reinterpret_cast<const char *>(&given) + offset, sizeof(Field));
}

XPLMWindowID MakeWindow(Window &window) {
    if (window.layer < xplm_WindowLayerFlightOverlay || window.layer > xplm_WindowLayerGrowlNotifications
        || window.decoration < xplm_WindowDecorationNone
        || window.decoration > xplm_WindowDecorationSelfDecoratedResizable) {
        ReportMisuse("XPLMCreateWindowEx with a layer or a decoration that does not exist");
        return nullptr;
    }
    window.owner = currentRunning.plugin;
    return AddWindow(window);
}

void SetCorners(const Rectangle &corners, int *left, int *top, int *right, int *bottom) {
    if (left) *left = corners.left;
    if (top) *top = corners.top;
    if (right) *right = corners.right;
    if (bottom) *bottom = corners.bottom;
}

const Window *FindPopOut(XPLMWindowID id) {
    const Window *window = FindWindow(id);
    return window && window->mode == xplm_WindowPopOut ? window : nullptr;
}

} // namespace

XPLMWindowID XPLMCreateWindowEx(XPLMCreateWindow_t *inParams) {
    if (!inParams) {
        ReportMisuse("XPLMCreateWindowEx without its parameters");
        return nullptr;
    }
    const XPLMCreateWindow_t &given = *inParams;
    using Given = XPLMCreateWindow_t;
    Window window;
    int visible = 0;
    TakeField(given, &Given::left, window.place.left);
    TakeField(given, &Given::top, window.place.top);
    TakeField(given, &Given::right, window.place.right);
    TakeField(given, &Given::bottom, window.place.bottom);
    TakeField(given, &Given::visible, visible);
    TakeField(given, &Given::drawWindowFunc, window.draw);
    TakeField(given, &Given::handleMouseClickFunc, window.click);
    TakeField(given, &Given::handleKeyFunc, window.key);
    TakeField(given, &Given::handleCursorFunc, window.cursor);
    TakeField(given, &Given::handleMouseWheelFunc, window.wheel);
    TakeField(given, &Given::refcon, window.refcon);
    TakeField(given, &Given::decorateAsFloatingWindow, window.decoration);
    XPLMWindowLayer layer = -1;
    TakeField(given, &Given::layer, layer);
    TakeField(given, &Given::handleRightClickFunc, window.rightClick);
    window.isVisible = visible != 0;
    // Callers from before layers existed have windows of the old kind.
    window.isLegacy = given.structSize < static_cast<int>(offsetof(Given, layer) + sizeof(layer));
    if (!window.isLegacy) window.layer = layer;
    return MakeWindow(window);
}

XPLMWindowID XPLMCreateWindow(int inLeft, int inTop, int inRight, int inBottom, int inIsVisible,
                              XPLMDrawWindow_f inDrawCallback, XPLMHandleKey_f inKeyCallback,
                              XPLMHandleMouseClick_f inMouseCallback, void *inRefcon) {
    Window window;
    window.place = {inLeft, inTop, inRight, inBottom};
    window.isVisible = inIsVisible != 0;
    window.isLegacy = true;
    window.draw = inDrawCallback;
    window.key = inKeyCallback;
    window.click = inMouseCallback;
    window.refcon = inRefcon;
    return MakeWindow(window);
}

void XPLMDestroyWindow(XPLMWindowID inWindowID) {
    if (FocusedWindow() == inWindowID) GiveFocus(nullptr);
    RemoveWindow(inWindowID);
}

void XPLMGetWindowGeometry(XPLMWindowID inWindowID, int *outLeft, int *outTop, int *outRight,
                           int *outBottom) {
    const Window *window = FindWindow(inWindowID);
    const bool isOnMonitor = window && !isInVr(*window);
    SetCorners(isOnMonitor ? window->place : Rectangle{}, outLeft, outTop, outRight, outBottom);
}

void XPLMSetWindowGeometry(XPLMWindowID inWindowID, int inLeft, int inTop, int inRight, int inBottom) {
    Window *window = FindWindow(inWindowID);
    const bool isOnMonitor = window && !isInVr(*window) && window->mode != xplm_WindowPopOut;
    if (isOnMonitor) PlaceWindow(*window, {inLeft, inTop, inRight, inBottom});
}

// The system's coordinates are the screen's: there is one monitor, with a pixel to a boxel.
void XPLMGetWindowGeometryOS(XPLMWindowID inWindowID, int *outLeft, int *outTop, int *outRight,
                             int *outBottom) {
    const Window *window = FindPopOut(inWindowID);
    SetCorners(window ? window->place : Rectangle{}, outLeft, outTop, outRight, outBottom);
}

void XPLMSetWindowGeometryOS(XPLMWindowID inWindowID, int inLeft, int inTop, int inRight, int inBottom) {
    if (FindPopOut(inWindowID)) PlaceWindow(*FindWindow(inWindowID), {inLeft, inTop, inRight, inBottom});
}

void XPLMGetWindowGeometryVR(XPLMWindowID inWindowID, int *outWidthBoxels, int *outHeightBoxels) {
    const Window *window = FindWindow(inWindowID);
    const bool isVr = window && isInVr(*window);
    if (outWidthBoxels) *outWidthBoxels = isVr ? window->vrWidth : 0;
    if (outHeightBoxels) *outHeightBoxels = isVr ? window->vrHeight : 0;
}

void XPLMSetWindowGeometryVR(XPLMWindowID inWindowID, int widthBoxels, int heightBoxels) {
    Window *window = FindWindow(inWindowID);
    if (!window || !isInVr(*window)) return;
    window->vrWidth = LimitedWidth(*window, widthBoxels);
    window->vrHeight = LimitedHeight(*window, heightBoxels);
}

int XPLMGetWindowIsVisible(XPLMWindowID inWindowID) {
    const Window *window = FindWindow(inWindowID);
    return window && window->isVisible ? 1 : 0;
}

void XPLMSetWindowIsVisible(XPLMWindowID inWindowID, int inIsVisible) {
    ShowWindow(inWindowID, inIsVisible != 0);
}

int XPLMWindowIsPoppedOut(XPLMWindowID inWindowID) {
    return FindPopOut(inWindowID) ? 1 : 0;
}

int XPLMWindowIsInVR(XPLMWindowID inWindowID) {
    const Window *window = FindWindow(inWindowID);
    return window && isInVr(*window) ? 1 : 0;
}

void XPLMSetWindowGravity(XPLMWindowID inWindowID, float inLeftGravity, float inTopGravity,
                          float inRightGravity, float inBottomGravity) {
    Window *window = FindWindow(inWindowID);
    if (!window) return;
    const auto fraction = [](float gravity) { return gravity >= 0 ? std::min(gravity, 1.0F) : 0.0F; };
    window->leftGravity = fraction(inLeftGravity);
    window->topGravity = fraction(inTopGravity);
    window->rightGravity = fraction(inRightGravity);
    window->bottomGravity = fraction(inBottomGravity);
}

void XPLMSetWindowResizingLimits(XPLMWindowID inWindowID, int inMinWidthBoxels, int inMinHeightBoxels,
                                 int inMaxWidthBoxels, int inMaxHeightBoxels) {
    Window *window = FindWindow(inWindowID);
    if (!window) return;
    if (inMinWidthBoxels < 0 || inMinHeightBoxels < 0 || inMaxWidthBoxels < inMinWidthBoxels
        || inMaxHeightBoxels < inMinHeightBoxels) {
        ReportMisuse("XPLMSetWindowResizingLimits with a least size above the largest");
        return;
    }
    window->leastWidth = inMinWidthBoxels;
    window->leastHeight = inMinHeightBoxels;
    window->mostWidth = inMaxWidthBoxels;
    window->mostHeight = inMaxHeightBoxels;
}

void XPLMSetWindowPositioningMode(XPLMWindowID inWindowID, XPLMWindowPositioningMode inPositioningMode,
                                  int inMonitorIndex) {
    Window *window = FindWindow(inWindowID);
    if (!window) return;
    if (window->isLegacy) {
        ReportMisuse("XPLMSetWindowPositioningMode on a legacy window, which has no modes");
    } else if (inPositioningMode < xplm_WindowPositionFree || inPositioningMode > xplm_WindowVR) {
        ReportMisuse("XPLMSetWindowPositioningMode with a mode that does not exist");
    } else if (inMonitorIndex != -1 && inMonitorIndex != 0) {
        ReportMisuse("XPLMSetWindowPositioningMode with a monitor that does not exist");
    } else {
        SetWindowMode(*window, inPositioningMode);
    }
}

void XPLMSetWindowTitle(XPLMWindowID inWindowID, const char *inWindowTitle) {
    Window *window = FindWindow(inWindowID);
    if (window) window->title = inWindowTitle ? inWindowTitle : "";
}

void *XPLMGetWindowRefCon(XPLMWindowID inWindowID) {
    const Window *window = FindWindow(inWindowID);
    return window ? window->refcon : nullptr;
}

void XPLMSetWindowRefCon(XPLMWindowID inWindowID, void *inRefcon) {
    if (Window *window = FindWindow(inWindowID)) window->refcon = inRefcon;
}

void XPLMTakeKeyboardFocus(XPLMWindowID inWindow) {
    const Window *window = FindWindow(inWindow);
    if (!inWindow || (window && window->isVisible)) GiveFocus(inWindow);
}

// The simulator's own, 0, has it when no plug-in's window does.
int XPLMHasKeyboardFocus(XPLMWindowID inWindow) {
    return FocusedWindow() == inWindow ? 1 : 0;
}

void XPLMBringWindowToFront(XPLMWindowID inWindow) {
    RaiseWindow(inWindow);
}

// Among the visible ones of its layer.
int XPLMIsWindowInFront(XPLMWindowID inWindow) {
    const Window *window = FindWindow(inWindow);
    if (!window || !window->isVisible) return 0;
    for (XPLMWindowID id : IdsFrontToBack()) {
        const Window *other = FindWindow(id);
        if (other->isVisible && other->layer == window->layer) return id == inWindow ? 1 : 0;
    }
    return 0;
}
