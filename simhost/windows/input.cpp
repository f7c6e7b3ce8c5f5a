// Mouse and keyboard: which window gets a press, who holds the mouse until the release, who has the
// keyboard. The frames that the simulator draws around windows are worked here too.
#include <algorithm>

#include "XPLMDisplay.h"
#include "simhost/drawing/screen.h"
#include "simhost/interface/callback_list.h"
#include "simhost/modules.h"
#include "simhost/windows/state.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

constexpr int LeastGrabbed = 30; // contents that are dragged smaller could not be grabbed again

// What the pressed button holds. The window is null when nobody took the press, or when it has gone since.
struct Held {
    MouseButton button = MouseButton::Left;
    XPLMWindowID window = nullptr;
    WindowPart part = WindowPart::Contents;
    GrabbedEdges edges;
    Rectangle placeAtPress;
    int pressX = 0, pressY = 0;
};

constinit int mouseX = 0, mouseY = 0; // on the screen, or on the window that is pointed at
constinit int screenMouseX = 0, screenMouseY = 0;
constinit XPLMWindowID pointedAt = nullptr; // in the headset
constinit bool isHeld = false;
constinit Held held;
constinit XPLMCursorStatus cursorStatus = xplm_CursorDefault;
constinit XPLMWindowID focused = nullptr;

struct KeySniffer {
    XPLMKeySniffer_f callback = nullptr;
    bool beforeWindows = false;
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};
constinit CallbackList<KeySniffer> keySniffers;

bool isBeamOn() {
    const Window *window = FindWindow(pointedAt);
    return window && isInVr(*window);
}

void SetMouse(int x, int y) {
    mouseX = x;
    mouseY = y;
    if (isBeamOn()) return;
    screenMouseX = x;
    screenMouseY = y;
}

bool isWithinReach(const Window &window) {
    if (!isBeamOn()) return isOnMonitor(window);
    return window.id == pointedAt && window.isVisible && isPluginEnabled(window.owner);
}

WindowPart PartAtMouse(const Window &window) {
    if (!isBeamOn()) return PartAt(window, mouseX, mouseY);
    const Rectangle contents = {0, window.vrHeight, window.vrWidth, 0};
    return contents.Contains(mouseX, mouseY) ? WindowPart::Contents : WindowPart::None;
}

// The handles of what lies under the mouse, from the front down to a modal window, which keeps everything
// below it from the mouse.
std::vector<XPLMWindowID> WithinReachOfMouse() {
    std::vector<XPLMWindowID> ids;
    bool isModalOpen = false;
    for (XPLMWindowID id : IdsFrontToBack()) {
        const Window &window = *FindWindow(id);
        if (!isWithinReach(window)) continue;
        if (isModalOpen && window.layer < xplm_WindowLayerModal) break;
        if (window.layer == xplm_WindowLayerModal) isModalOpen = true;
        ids.push_back(id);
    }
    return ids;
}

// The window, if it still is there to be asked at the mouse's place, and the part of it.
Window *StillUnderMouse(XPLMWindowID id, WindowPart &part) {
    Window *window = FindWindow(id);
    if (!window || !isWithinReach(*window)) return nullptr;
    part = PartAtMouse(*window);
    return part != WindowPart::None ? window : nullptr;
}

int CallClick(const Window &window, MouseButton button, XPLMMouseStatus status) {
    const XPLMHandleMouseClick_f callback = button == MouseButton::Left ? window.click : window.rightClick;
    if (!callback) return 0;
    RunningScope scope(window.owner, "window's mouse handler");
    return callback(window.id, mouseX, mouseY, status, window.refcon);
}

void GrabFrame(Window &window, WindowPart part) {
    held.window = window.id;
    held.part = part;
    held.edges = EdgesAt(window, mouseX, mouseY);
    held.placeAtPress = window.place;
    RaiseWindow(window.id);
}

int LeastOr(int least) {
    return std::max(least, LeastGrabbed);
}

void DragFrame(Window &window) {
    const int right = mouseX - held.pressX, up = mouseY - held.pressY;
    Rectangle place = held.placeAtPress;
    if (held.part == WindowPart::TitleBar) {
        PlaceWindow(window, {place.left + right, place.top + up, place.right + right, place.bottom + up});
        return;
    }
    if (held.part != WindowPart::Edge) return;
    // The edge on the other side stays where it is when a limit is reached.
    const auto width = [&](int wanted) {
        return LimitedWidth(window, std::max(wanted, std::min(LeastOr(window.leastWidth), window.mostWidth)));
    };
    const auto height = [&](int wanted) {
        return LimitedHeight(window,
                             std::max(wanted, std::min(LeastOr(window.leastHeight), window.mostHeight)));
    };
    if (held.edges.left) place.left = place.right - width(place.Width() - right);
    if (held.edges.right) place.right = place.left + width(place.Width() + right);
    if (held.edges.top) place.top = place.bottom + height(place.Height() + up);
    if (held.edges.bottom) place.bottom = place.top - height(place.Height() - up);
    PlaceWindow(window, place);
}

// Whether the key goes on.
bool AskSniffers(CallbackList<KeySniffer>::Round &round, bool beforeWindows, char character,
                 XPLMKeyFlags flags, char virtualKey) {
    return round.Run([&](const KeySniffer &sniffer, std::size_t) {
        if (sniffer.beforeWindows != beforeWindows) return true;
        RunningScope scope(sniffer.owner, "key sniffer");
        return sniffer.callback(character, flags, virtualKey, sniffer.refcon) != 0;
    });
}

bool GiveKeyToWindow(char character, XPLMKeyFlags flags, char virtualKey) {
    const Window *window = FindWindow(focused);
    if (!window || !window->isVisible || !isPluginEnabled(window->owner)) return false;
    if (!window->key) return true;
    RunningScope scope(window->owner, "window's key handler");
    window->key(window->id, character, flags, virtualKey, window->refcon, 0);
    return true;
}

} // namespace

XPLMWindowID FocusedWindow() {
    return focused;
}

void GiveFocus(XPLMWindowID id) {
    if (focused == id) return;
    const Window *before = FindWindow(focused);
    focused = id;
    if (!before || !before->key || !isPluginEnabled(before->owner)) return;
    RunningScope scope(before->owner, "window's key handler");
    before->key(before->id, 0, 0, 0, before->refcon, 1);
}

void ForgetWindow(XPLMWindowID id) {
    if (focused == id) focused = nullptr;
    if (held.window == id) held.window = nullptr;
    if (pointedAt == id) pointedAt = nullptr;
}

void PointInHeadset(XPLMWindowID id) {
    pointedAt = id;
}

void DropKeySniffers(XPLMPluginID plugin, LeftBehind &leftBehind) {
    keySniffers.Drop(plugin, "key sniffer", leftBehind);
}

void ResetInput() {
    pointedAt = nullptr;
    SetMouse(0, 0);
    isHeld = false;
    held = {};
    cursorStatus = xplm_CursorDefault;
    focused = nullptr;
    keySniffers.Clear();
}

bool isMouseHeld() {
    return isHeld;
}

XPLMCursorStatus MouseCursor() {
    return cursorStatus;
}

void MoveMouse(int x, int y) {
    if (isHeld) {
        DragMouse(x, y);
        return;
    }
    SetMouse(x, y);
    cursorStatus = xplm_CursorDefault;
    for (XPLMWindowID id : WithinReachOfMouse()) {
        WindowPart part = WindowPart::None;
        const Window *window = StillUnderMouse(id, part);
        if (!window) continue;
        if (part != WindowPart::Contents || !window->cursor) return;
        RunningScope scope(window->owner, "window's cursor handler");
        cursorStatus = window->cursor(window->id, x, y, window->refcon);
        return;
    }
}

bool PressMouse(int x, int y, MouseButton button) {
    if (isHeld) return false;
    SetMouse(x, y);
    isHeld = true;
    held = {};
    held.button = button;
    held.pressX = x;
    held.pressY = y;
    for (XPLMWindowID id : WithinReachOfMouse()) {
        WindowPart part = WindowPart::None;
        Window *window = StillUnderMouse(id, part);
        if (!window) continue;
        if (part != WindowPart::Contents) {
            if (button == MouseButton::Left) GrabFrame(*window, part);
            return true;
        }
        held.window = id; // at once, so that it is forgotten if the handler destroys it
        if (CallClick(*window, button, xplm_MouseDown) != 0) return true;
        held.window = nullptr;
    }
    GiveFocus(nullptr); // pressed in the cockpit
    return false;
}

void DragMouse(int x, int y) {
    SetMouse(x, y);
    Window *window = isHeld ? FindWindow(held.window) : nullptr;
    if (!window || !isPluginEnabled(window->owner)) return;
    if (held.part == WindowPart::Contents)
        CallClick(*window, held.button, xplm_MouseDrag);
    else
        DragFrame(*window);
}

void ReleaseMouse(int x, int y) {
    if (!isHeld) return;
    SetMouse(x, y);
    isHeld = false;
    const Window *window = FindWindow(held.window);
    const WindowPart part = held.part;
    held.window = nullptr;
    if (!window || !isPluginEnabled(window->owner)) return;
    if (part == WindowPart::Contents)
        CallClick(*window, held.button, xplm_MouseUp);
    else if (part == WindowPart::CloseBox && PartAt(*window, x, y) == WindowPart::CloseBox)
        ShowWindow(window->id, false);
}

void ContinueMouse() {
    if (isHeld && held.part == WindowPart::Contents) DragMouse(mouseX, mouseY);
}

bool TurnWheel(int x, int y, int clicks) {
    SetMouse(x, y);
    constexpr int verticalWheel = 0;
    for (XPLMWindowID id : WithinReachOfMouse()) {
        WindowPart part = WindowPart::None;
        const Window *window = StillUnderMouse(id, part);
        if (!window) continue;
        if (part != WindowPart::Contents) return true;
        if (!window->wheel) continue;
        RunningScope scope(window->owner, "window's wheel handler");
        if (window->wheel(window->id, x, y, verticalWheel, clicks, window->refcon) != 0) return true;
    }
    return false;
}

bool SendKey(char character, XPLMKeyFlags flags, char virtualKey) {
    CallbackList<KeySniffer>::Round round(keySniffers);
    return !AskSniffers(round, true, character, flags, virtualKey)
           || GiveKeyToWindow(character, flags, virtualKey) || StrikeHotKeys(flags, virtualKey)
           || !AskSniffers(round, false, character, flags, virtualKey);
}

} // namespace simhost

using namespace simhost;

namespace {

void TellMouse(int *outX, int *outY) {
    if (outX) *outX = screenMouseX;
    if (outY) *outY = screenMouseY;
}

} // namespace

// Of the one monitor, which is all there is.
void XPLMGetMouseLocation(int *outX, int *outY) {
    TellMouse(outX, outY);
}

void XPLMGetMouseLocationGlobal(int *outX, int *outY) {
    TellMouse(outX, outY);
}

int XPLMRegisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void *inRefcon) {
    if (!inCallback) {
        ReportMisuse("XPLMRegisterKeySniffer without a callback");
        return 0;
    }
    keySniffers.Add({inCallback, inBeforeWindows != 0, inRefcon, currentRunning.plugin});
    return 1;
}

int XPLMUnregisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void *inRefcon) {
    const auto isIt = [&](const KeySniffer &sniffer) {
        return sniffer.beforeWindows == (inBeforeWindows != 0);
    };
    return keySniffers.Remove(inCallback, inRefcon, isIt) ? 1 : 0;
}
