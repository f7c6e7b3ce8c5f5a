// The list of windows: order, place, visibility, and what becomes of them when the screen, the headset or
// their plug-in changes. A handle is a serial number, so that one of a window that has gone means nothing.
#include "simhost/windows/windows.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "simhost/drawing/screen.h"
#include "simhost/modules.h"
#include "simhost/simulator.h"
#include "simhost/windows/state.h"

namespace simhost {

namespace {

constinit bool isVrOn = false;
constinit std::uintptr_t lastSerial = 0; // goes on over resets

constexpr int MessageEnteredVr = 109;
constexpr int MessageExitingVr = 110;
constexpr int PopOutLayer = xplm_WindowLayerGrowlNotifications + 1;
constexpr int KeptOnScreen = 40; // boxels of a window that stay within reach

int EffectiveLayer(const Window &window) {
    return window.mode == xplm_WindowPopOut ? PopOutLayer : window.layer;
}

std::vector<std::unique_ptr<Window>>::iterator PlaceInList(XPLMWindowID id) {
    // What was made or raised last lies at the end, and is asked for most.
    const auto found = std::find_if(Windows().rbegin(), Windows().rend(),
                                    [&](const auto &window) { return window->id == id; });
    return found != Windows().rend() ? std::prev(found.base()) : Windows().end();
}

Rectangle Screen() {
    return {0, ScreenHeight(), ScreenWidth(), 0};
}

// One that waits for the headset lies on the monitor like a free one meanwhile.
bool isFree(const Window &window) {
    return !window.isLegacy && (window.mode == xplm_WindowPositionFree || window.mode == xplm_WindowVR);
}

// Where a window lies that must stay within the pilot's reach: its title bar is on the screen.
Rectangle WithinReach(const Window &window) {
    const Rectangle &place = window.place;
    const int bar = window.decoration == xplm_WindowDecorationRoundRectangle ? TitleBarHeight : 0;
    int right = std::min(0, ScreenWidth() - KeptOnScreen - place.left);
    if (place.right < KeptOnScreen) right = KeptOnScreen - place.right;
    int up = std::min(0, ScreenHeight() - bar - place.top);
    if (place.top < KeptOnScreen) up = KeptOnScreen - place.top;
    return {place.left + right, place.top + up, place.right + right, place.bottom + up};
}

int Follow(int edge, int growth, float gravity) {
    return edge + static_cast<int>(std::lround(static_cast<float>(growth) * gravity));
}

} // namespace

std::vector<std::unique_ptr<Window>> &Windows() {
    static auto &windows = *new std::vector<std::unique_ptr<Window>>;
    return windows;
}

Window *FindWindow(XPLMWindowID id) {
    if (!id) return nullptr;
    const auto found = PlaceInList(id);
    return found != Windows().end() ? found->get() : nullptr;
}

std::vector<XPLMWindowID> IdsFrontToBack() {
    std::vector<XPLMWindowID> ids;
    for (auto window = Windows().rbegin(); window != Windows().rend(); ++window) ids.push_back((*window)->id);
    return ids;
}

XPLMWindowID AddWindow(const Window &window) {
    auto added = std::make_unique<Window>(window);
    const XPLMWindowID id = reinterpret_cast<XPLMWindowID>(++lastSerial);
    added->id = id;
    if (added->isLegacy) added->layer = xplm_WindowLayerFlightOverlay;
    added->place = LimitedPlace(window.place);
    Windows().push_back(std::move(added));
    RaiseWindow(id);
    return id;
}

void RemoveWindow(XPLMWindowID id) {
    ForgetWindow(id);
    const auto found = PlaceInList(id);
    if (found != Windows().end()) Windows().erase(found);
}

void RaiseWindow(XPLMWindowID id) {
    const auto found = PlaceInList(id);
    if (found == Windows().end()) return;
    std::unique_ptr<Window> window = std::move(*found);
    Windows().erase(found);
    const auto above =
        std::upper_bound(Windows().begin(), Windows().end(), EffectiveLayer(*window),
                         [](int layer, const auto &other) { return layer < EffectiveLayer(*other); });
    Windows().insert(above, std::move(window));
}

void ShowWindow(XPLMWindowID id, bool visible) {
    Window *window = FindWindow(id);
    if (!window) return;
    window->isVisible = visible;
    if (!visible && FocusedWindow() == id) GiveFocus(nullptr);
}

bool isInVr(const Window &window) {
    return isVrOn && window.mode == xplm_WindowVR;
}

bool isOnMonitor(const Window &window) {
    return window.isVisible && !isInVr(window) && isPluginEnabled(window.owner);
}

int LimitedWidth(const Window &window, int width) {
    return std::clamp(width, window.leastWidth, window.mostWidth);
}

int LimitedHeight(const Window &window, int height) {
    return std::clamp(height, window.leastHeight, window.mostHeight);
}

void PlaceWindow(Window &window, const Rectangle &given) {
    const Rectangle wanted = LimitedPlace(given);
    if (window.mode == xplm_WindowFullScreenOnMonitor || window.mode == xplm_WindowFullScreenOnAllMonitors) {
        window.place = Screen();
        return;
    }
    const int width = LimitedWidth(window, wanted.Width()), height = LimitedHeight(window, wanted.Height());
    window.place = {wanted.left, wanted.top, wanted.left + width, wanted.top - height};
    if (window.mode != xplm_WindowCenterOnMonitor) return;
    const int left = (ScreenWidth() - width) / 2, bottom = (ScreenHeight() - height) / 2;
    window.place = {left, bottom + height, left + width, bottom};
}

void SetWindowMode(Window &window, XPLMWindowPositioningMode mode) {
    const int layerBefore = EffectiveLayer(window);
    window.mode = mode;
    if (mode == xplm_WindowVR && window.vrWidth == 0 && window.vrHeight == 0) {
        window.vrWidth = window.place.Width();
        window.vrHeight = window.place.Height();
    }
    PlaceWindow(window, window.place);
    if (EffectiveLayer(window) != layerBefore) RaiseWindow(window.id);
}

std::vector<WindowView> WindowsFrontToBack() {
    std::vector<WindowView> views;
    for (XPLMWindowID id : IdsFrontToBack()) {
        const Window &window = *FindWindow(id);
        WindowView view;
        view.id = id;
        view.title = window.title;
        XPLMGetWindowGeometry(id, &view.left, &view.top, &view.right, &view.bottom);
        view.isVisible = window.isVisible;
        view.isLegacy = window.isLegacy;
        view.isInVr = isInVr(window);
        XPLMGetWindowGeometryVR(id, &view.vrWidth, &view.vrHeight);
        view.isPoppedOut = window.mode == xplm_WindowPopOut;
        view.hasFocus = FocusedWindow() == id;
        view.layer = window.layer;
        view.decoration = window.decoration;
        view.owner = window.owner;
        views.push_back(std::move(view));
    }
    return views;
}

void DropWindows(XPLMPluginID plugin, LeftBehind &leftBehind) {
    DropKeySniffers(plugin, leftBehind);
    DropHotKeys(plugin, leftBehind);
    for (XPLMWindowID id : IdsFrontToBack()) {
        const Window &window = *FindWindow(id);
        if (window.owner != plugin) continue;
        leftBehind.notes.push_back("window \"" + window.title + "\"");
        RemoveWindow(id);
    }
}

void ResetWindows() {
    Windows().clear();
    ResetInput();
    ResetHotKeys();
    isVrOn = false;
}

void SetVr(bool isOn) {
    if (isOn == isVrOn) return;
    // Plug-ins are told when the headset is on, and before it comes off.
    if (!isOn) BroadcastMessage(MessageExitingVr, nullptr);
    PointInHeadset(nullptr);
    isVrOn = isOn;
    SetNumber("sim/graphics/VR/enabled", isOn ? 1 : 0);
    if (isOn) BroadcastMessage(MessageEnteredVr, nullptr);
}

void ScreenSizeChanged(int widerBy, int higherBy) {
    for (const auto &window : Windows()) {
        Rectangle place = window->place;
        if (isFree(*window)) {
            place = {Follow(place.left, widerBy, window->leftGravity),
                     Follow(place.top, higherBy, window->topGravity),
                     Follow(place.right, widerBy, window->rightGravity),
                     Follow(place.bottom, higherBy, window->bottomGravity)};
        }
        if (!window->isLegacy) PlaceWindow(*window, place);
        if (isFree(*window) && window->decoration != xplm_WindowDecorationNone)
            window->place = WithinReach(*window);
    }
}

} // namespace simhost
