// What the files of the windows share: windows.cpp (the list), calls.cpp (what plug-ins call),
// input.cpp (mouse and keyboard) and drawing.cpp. Nothing outside them needs it.
//
// Any function of a plug-in may destroy, make, hide or raise windows. So nobody keeps a Window across such a
// call: one keeps its handle, and looks for it again. Handles are never used twice.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "simhost/interface/plugins.h"

namespace simhost {

struct Rectangle {
    int left = 0, top = 0, right = 0, bottom = 0; // boxels, y up

    bool Contains(int x, int y) const { return x >= left && x < right && y >= bottom && y < top; }
    int Width() const { return right - left; }
    int Height() const { return top - bottom; }
    bool operator==(const Rectangle &) const = default;
};

// Plug-ins may give any numbers. Kept so near that places can be added and taken from each other.
constexpr Rectangle LimitedPlace(std::int64_t left, std::int64_t top, std::int64_t right,
                                 std::int64_t bottom) {
    constexpr auto limited = [](std::int64_t corner) {
        constexpr std::int64_t most = 500'000'000;
        return static_cast<int>(std::clamp(corner, -most, most));
    };
    return {limited(left), limited(top), limited(right), limited(bottom)};
}
constexpr Rectangle LimitedPlace(const Rectangle &place) {
    return LimitedPlace(place.left, place.top, place.right, place.bottom);
}

struct Window {
    XPLMWindowID id = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
    bool isLegacy = false;
    bool isVisible = false;
    Rectangle place; // of the contents
    std::string title;
    void *refcon = nullptr;
    XPLMDrawWindow_f draw = nullptr;
    XPLMHandleMouseClick_f click = nullptr, rightClick = nullptr;
    XPLMHandleKey_f key = nullptr;
    XPLMHandleCursor_f cursor = nullptr;
    XPLMHandleMouseWheel_f wheel = nullptr;
    XPLMWindowDecoration decoration = xplm_WindowDecorationNone;
    XPLMWindowLayer layer = xplm_WindowLayerFloatingWindows; // of a legacy one the flight overlay
    XPLMWindowPositioningMode mode = xplm_WindowPositionFree;
    // How much of the screen's growth each edge follows: by default the window stays at the upper left.
    float leftGravity = 0, topGravity = 1, rightGravity = 0, bottomGravity = 1;
    // Of the contents; no limits until the plug-in sets some.
    int leastWidth = 0, leastHeight = 0, mostWidth = 1 << 24, mostHeight = 1 << 24;
    int vrWidth = 0, vrHeight = 0; // 0 until it asked for VR
};

// ---- windows.cpp ----

// From back to front, the layers in order. Pop-outs are windows of the system and lie over everything.
std::vector<std::unique_ptr<Window>> &Windows();
Window *FindWindow(XPLMWindowID id); // null when there is none any more
std::vector<XPLMWindowID> IdsFrontToBack();

XPLMWindowID AddWindow(const Window &window); // in front of its layer
void RemoveWindow(XPLMWindowID id);
void RaiseWindow(XPLMWindowID id); // to the front of its layer
void ShowWindow(XPLMWindowID id, bool visible);

bool isInVr(const Window &window);
bool isOnMonitor(const Window &window); // visible, not in the headset, its plug-in enabled

// Puts the contents where they are wanted, as far as limits and positioning mode allow. What does not fit is
// made to fit at the right and the lower edge.
void PlaceWindow(Window &window, const Rectangle &given);
void SetWindowMode(Window &window, XPLMWindowPositioningMode mode);
int LimitedWidth(const Window &window, int width);
int LimitedHeight(const Window &window, int height);

// ---- input.cpp ----

XPLMWindowID FocusedWindow();
// Gives the keyboard to a window, or back to the simulator (null), and tells the one that had it.
void GiveFocus(XPLMWindowID id);
void ForgetWindow(XPLMWindowID id); // a window that goes: the mouse and the keyboard leave it, untold
void DropKeySniffers(XPLMPluginID plugin, LeftBehind &leftBehind);
void ResetInput();

// ---- drawing.cpp ----

// The simulator frames windows with round corners: a title bar with a close box, and a border all around.
inline constexpr int TitleBarHeight = 20;
inline constexpr int BorderWidth = 4;

enum class WindowPart { None, Contents, TitleBar, CloseBox, Edge };
WindowPart PartAt(const Window &window, int x, int y);

// Which edges of the window are grabbed at an Edge: two of them at a corner.
struct GrabbedEdges {
    bool left = false, top = false, right = false, bottom = false;
};
GrabbedEdges EdgesAt(const Window &window, int x, int y);

// ---- hot_keys.cpp ----

// A key that no window has taken, as SendKey has it: true when it is somebody's hot key, whom it calls.
bool StrikeHotKeys(XPLMKeyFlags flags, char virtualKey);
void DropHotKeys(XPLMPluginID plugin, LeftBehind &leftBehind);
void ResetHotKeys();

} // namespace simhost
