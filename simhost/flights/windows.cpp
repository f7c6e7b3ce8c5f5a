// The calls on windows and menus: windows, menu, choose.
#include "simhost/windows/windows.h"
#include "XPLMMenus.h"
#include "simhost/flights/arguments.h"
#include "simhost/flights/state.h"
#include "simhost/flights/transcript.h"
#include "simhost/interface/menus.h"
#include "simhost/interface/plugins.h"

namespace simhost {

namespace {

constexpr const char *LayerNames[] = {"overlay", "floating", "modal", "growl"};
constexpr const char *DecorationNames[] = {"none", "round", "self", "self_resizable"};

int ListWindows(Call &call) {
    const std::vector<WindowView> windows = WindowsFrontToBack();
    lua_createtable(call.lua, static_cast<int>(windows.size()), 0);
    lua_Integer place = 0;
    for (const WindowView &window : windows) {
        lua_newtable(call.lua);
        SetField(call.lua, "title", window.title);
        SetField(call.lua, "plugin", PluginName(window.owner));
        SetPlaceFields(call.lua, window);
        SetField(call.lua, "legacy", window.isLegacy);
        SetField(call.lua, "vr", window.isInVr);
        SetField(call.lua, "vr_width", window.vrWidth);
        SetField(call.lua, "vr_height", window.vrHeight);
        SetField(call.lua, "popped_out", window.isPoppedOut);
        SetField(call.lua, "layer", std::string(LayerNames[window.layer]));
        SetField(call.lua, "decoration", std::string(DecorationNames[window.decoration]));
        lua_rawseti(call.lua, -2, ++place);
    }
    return 1;
}

void PushItems(lua_State *lua, const std::vector<MenuItemView> &items) {
    lua_createtable(lua, static_cast<int>(items.size()), 0);
    lua_Integer place = 0;
    for (const MenuItemView &item : items) {
        lua_newtable(lua);
        if (item.isSeparator) {
            SetField(lua, "separator", true);
        } else {
            SetField(lua, "text", item.text);
            SetField(lua, "enabled", item.isEnabled);
            if (item.check != xplm_Menu_NoCheck) SetField(lua, "checked", item.check == xplm_Menu_Checked);
        }
        if (item.hasSubmenu) {
            PushItems(lua, item.items);
            lua_setfield(lua, -2, "items");
        }
        lua_rawseti(lua, -2, ++place);
    }
}

int Menu(Call &call) {
    lua_checkstack(call.lua, 100); // three for each level, of which MenuItems gives a few at most
    PushItems(call.lua, MenuItems());
    return 1;
}

int Choose(Call &call) {
    const std::string path = call.Text(1, "path");
    MenuPlace place;
    std::string error;
    if (!FindMenuItem(path, place, error)) call.Fail(error);
    TranscribeAct("chooses " + MenuPath(place));
    SimulatorCall inside;
    ChooseMenuItem(place);
    return 0;
}

} // namespace

void AddWindowCalls(lua_State *lua) {
    AddCalls(lua, {{"windows", Bridge<ListWindows>}, {"menu", Bridge<Menu>}, {"choose", Bridge<Choose>}});
}

} // namespace simhost
