// The calls on what is seen: screen_text, screenshot.
#include "simhost/flight_arguments.h"
#include "simhost/flight_state.h"
#include "simhost/screen.h"

namespace simhost {

namespace {

void SetField(lua_State *lua, const char *name, float value) {
    lua_pushnumber(lua, static_cast<lua_Number>(value));
    lua_setfield(lua, -2, name);
}

int ScreenText(Call &call) {
    const std::vector<DrawnText> &texts = ScreenTexts();
    lua_createtable(call.lua, static_cast<int>(texts.size()), 0);
    lua_Integer place = 0;
    for (const DrawnText &drawn : texts) {
        lua_createtable(call.lua, 0, 6);
        lua_pushlstring(call.lua, drawn.text.data(), drawn.text.size());
        lua_setfield(call.lua, -2, "text");
        lua_pushinteger(call.lua, drawn.x);
        lua_setfield(call.lua, -2, "x");
        lua_pushinteger(call.lua, drawn.y);
        lua_setfield(call.lua, -2, "y");
        SetField(call.lua, "r", drawn.red);
        SetField(call.lua, "g", drawn.green);
        SetField(call.lua, "b", drawn.blue);
        lua_rawseti(call.lua, -2, ++place);
    }
    return 1;
}

int Screenshot(Call &call) {
    const std::string path = call.Text(1, "path");
    if (path.empty()) call.Refuse("path", "must not be empty");
    std::string error;
    bool written = false;
    {
        SimulatorCall inside;
        written = WriteScreenshot(path, error);
    }
    if (!written) call.Fail(error);
    return 0;
}

} // namespace

void AddScreenCalls(lua_State *lua) {
    AddCalls(lua, {{"screen_text", Bridge<ScreenText>}, {"screenshot", Bridge<Screenshot>}});
}

} // namespace simhost
