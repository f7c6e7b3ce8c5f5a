// The calls by which the pilot uses mouse and keyboard: mouse, mouse_down, mouse_drag, mouse_up, click,
// double_click, wheel, key, type. No frame passes in any of them. Presses, turns and keys return whether a
// plug-in took them.
#include "simhost/flights/arguments.h"
#include "simhost/flights/state.h"
#include "simhost/flights/transcript.h"
#include "simhost/windows/keyboard.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

struct Point {
    int x = 0, y = 0;
    std::string Text() const { return std::to_string(x) + ", " + std::to_string(y); }
};

// The cursor may leave the screen while a button is held.
Point PointArgument(const Call &call) {
    constexpr int farthest = 65536;
    return {static_cast<int>(call.Integer(1, "x", -farthest, farthest)),
            static_cast<int>(call.Integer(2, "y", -farthest, farthest))};
}

void NeedHeld(const Call &call, bool held) {
    if (isMouseHeld() == held) return;
    call.Fail(held ? "no mouse button is held; call sim.mouse_down before"
                   : "a mouse button is held already; call sim.mouse_up before");
}

int ReturnTaken(const Call &call, bool isTaken) {
    lua_pushboolean(call.lua, isTaken);
    return 1;
}

constexpr const char *CursorNames[] = {"default", "hidden", "arrow", "custom"};

// Names the window that the next places are on; none: the screen.
int PointAt(Call &call) {
    NeedHeld(call, false);
    if (!call.Has(1)) {
        PointInHeadset(nullptr);
        return 0;
    }
    const std::string title = call.Text(1, "title");
    for (const WindowView &window : WindowsFrontToBack()) {
        if (!window.isInVr || !window.isVisible || window.title != title) continue;
        PointInHeadset(window.id);
        TranscribeAct("points at \"" + title + "\"");
        return 0;
    }
    call.Refuse("title", "must name a window in the headset, got \"" + title + "\"");
}

int Move(Call &call) {
    const Point point = PointArgument(call);
    {
        SimulatorCall inside;
        MoveMouse(point.x, point.y);
    }
    const XPLMCursorStatus cursor = MouseCursor();
    const bool isKnown = cursor >= xplm_CursorDefault && cursor <= xplm_CursorCustom;
    lua_pushstring(call.lua, CursorNames[isKnown ? cursor : xplm_CursorDefault]);
    return 1;
}

int Down(Call &call) {
    const Point point = PointArgument(call);
    const std::string name = call.Has(3) ? call.Text(3, "button") : "left";
    if (name != "left" && name != "right")
        call.Refuse("button", "must be \"left\" or \"right\", got \"" + name + "\"");
    NeedHeld(call, false);
    TranscribeAct("holds the " + name + " mouse button at " + point.Text());
    SimulatorCall inside;
    MoveMouse(point.x, point.y);
    return ReturnTaken(call,
                       PressMouse(point.x, point.y, name == "left" ? MouseButton::Left : MouseButton::Right));
}

int Drag(Call &call) {
    const Point point = PointArgument(call);
    NeedHeld(call, true);
    SimulatorCall inside;
    DragMouse(point.x, point.y);
    return 0;
}

int Up(Call &call) {
    const Point point = PointArgument(call);
    NeedHeld(call, true);
    TranscribeAct("lets go of the mouse at " + point.Text());
    SimulatorCall inside;
    ReleaseMouse(point.x, point.y);
    return 0;
}

int ClickTimes(const Call &call, const char *verb, int times) {
    const Point point = PointArgument(call);
    NeedHeld(call, false);
    TranscribeAct(verb + point.Text());
    SimulatorCall inside;
    MoveMouse(point.x, point.y);
    bool isTaken = false;
    for (int i = 0; i < times; i++) {
        isTaken = PressMouse(point.x, point.y, MouseButton::Left);
        ReleaseMouse(point.x, point.y);
    }
    return ReturnTaken(call, isTaken);
}

int Click(Call &call) {
    return ClickTimes(call, "clicks at ", 1);
}

int DoubleClick(Call &call) {
    return ClickTimes(call, "double-clicks at ", 2);
}

int Wheel(Call &call) {
    const Point point = PointArgument(call);
    const int clicks = static_cast<int>(call.Integer(3, "clicks", -1000, 1000));
    SimulatorCall inside;
    if (!isMouseHeld()) MoveMouse(point.x, point.y);
    return ReturnTaken(call, TurnWheel(point.x, point.y, clicks));
}

XPLMKeyFlags Flags(const Call &call) {
    XPLMKeyFlags flags = 0;
    if (!call.Has(2)) return flags;
    std::string rest = call.Text(2, "flags");
    while (!rest.empty()) {
        const std::size_t plus = std::min(rest.find('+'), rest.size());
        const std::string name = rest.substr(0, plus);
        rest.erase(0, plus + 1);
        if (name == "shift")
            flags |= xplm_ShiftFlag;
        else if (name == "control")
            flags |= xplm_ControlFlag;
        else if (name == "option")
            flags |= xplm_OptionAltFlag;
        else
            call.Refuse("flags", "holds \"" + name + "\"; there are \"shift\", \"control\" and \"option\"");
    }
    return flags;
}

int StrikeOne(Call &call) {
    Key key;
    std::string told;
    if (lua_type(call.lua, 1) == LUA_TNUMBER) {
        key = KeyOfVirtualKey(static_cast<int>(call.Integer(1, "key", 1, 255)));
        told = "the virtual key " + call.Found(1);
    } else {
        told = call.Text(1, "key");
        if (!KeyNamed(told, key) && !(told.size() == 1 && KeyOfCharacter(told[0], key)))
            call.Refuse("key", "must be a character, the name of a key such as \"return\", or a virtual "
                               "key's number, got "
                                   + call.Found(1));
    }
    const XPLMKeyFlags flags = Flags(call);
    TranscribeAct("presses " + (call.Has(2) ? call.Text(2, "flags") + "+" : std::string()) + told);
    SimulatorCall inside;
    return ReturnTaken(call, StrikeKey(key, flags));
}

int Type(Call &call) {
    const std::string text = call.Text(1, "text");
    Key key;
    for (char character : text)
        if (!KeyOfCharacter(character, key)) call.Refuse("text", "holds a character that is not ASCII");
    TranscribeAct("types \"" + text + "\"");
    SimulatorCall inside;
    for (char character : text) {
        KeyOfCharacter(character, key);
        StrikeKey(key, 0);
    }
    return 0;
}

} // namespace

void AddMouseCalls(lua_State *lua) {
    AddCalls(lua, {{"point_at", Bridge<PointAt>},
                   {"mouse", Bridge<Move>},
                   {"mouse_down", Bridge<Down>},
                   {"mouse_drag", Bridge<Drag>},
                   {"mouse_up", Bridge<Up>},
                   {"click", Bridge<Click>},
                   {"double_click", Bridge<DoubleClick>},
                   {"wheel", Bridge<Wheel>},
                   {"key", Bridge<StrikeOne>},
                   {"type", Bridge<Type>}});
}

} // namespace simhost
