// The calls on what is seen: screen_text, screenshot, show.
#include "simhost/drawing/screen.h"
#include "simhost/drawing/cockpit_view.h"
#include "simhost/flights/arguments.h"
#include "simhost/flights/state.h"
#include "simhost/flights/transcript.h"

namespace simhost {

namespace {

void SetColourField(lua_State *lua, const char *name, float value) {
    lua_pushnumber(lua, static_cast<lua_Number>(value));
    lua_setfield(lua, -2, name);
}

int ScreenText(Call &call) {
    const std::vector<DrawnText> &texts = ScreenTexts();
    lua_createtable(call.lua, static_cast<int>(texts.size()), 0);
    lua_Integer place = 0;
    for (const DrawnText &drawn : texts) {
        lua_createtable(call.lua, 0, 7);
        lua_pushlstring(call.lua, drawn.text.data(), drawn.text.size());
        lua_setfield(call.lua, -2, "text");
        lua_pushinteger(call.lua, drawn.x);
        lua_setfield(call.lua, -2, "x");
        lua_pushinteger(call.lua, drawn.y);
        lua_setfield(call.lua, -2, "y");
        SetColourField(call.lua, "r", drawn.red);
        SetColourField(call.lua, "g", drawn.green);
        SetColourField(call.lua, "b", drawn.blue);
        if (!drawn.window.empty()) {
            lua_pushlstring(call.lua, drawn.window.data(), drawn.window.size());
            lua_setfield(call.lua, -2, "window");
        }
        lua_rawseti(call.lua, -2, ++place);
    }
    return 1;
}

int Screenshot(Call &call) {
    std::string path = call.Text(1, "path");
    if (path.empty()) call.Refuse("path", "must not be empty");
    path = PathFromStart(path);
    const std::string window = call.Has(2) ? call.Text(2, "window") : "";
    std::string error;
    bool written = false;
    {
        SimulatorCall inside;
        written = window.empty() ? WriteScreenshot(path, error) : WriteHeadsetPicture(window, path, error);
    }
    if (!written) call.Fail(error);
    return 0;
}

int Show(Call &call) {
    const std::string view = call.Has(1) ? call.Text(1, "what") : "none";
    const std::vector<std::string> libraries = FindPluginLibraries(flight.scratch.aircraft);
    std::string figure;
    if (!libraries.empty())
        figure = libraries[0].substr(0, libraries[0].rfind('/')) + "/data/obj/kvfennic.obj";
    std::vector<std::string> notes;
    if (!ShowCockpit(view, flight.scratch.aircraft, FindAircraftFile(flight.scratch.aircraft).name, figure,
                     notes))
        call.Refuse("what", std::string("must be ") + CockpitViews + ", got \"" + view + "\"");
    for (const std::string &note : notes) TranscribeDirection(note);
    return 0;
}

} // namespace

void AddScreenCalls(lua_State *lua) {
    AddCalls(
        lua,
        {{"screen_text", Bridge<ScreenText>}, {"screenshot", Bridge<Screenshot>}, {"show", Bridge<Show>}});
}

} // namespace simhost
