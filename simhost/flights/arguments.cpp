// Checks what a flight passes to a call. Lua's own checks (luaL_checknumber) are not used: they leave by
// longjmp past C++ destructors and know arguments by number only.
#include "simhost/flights/arguments.h"

#include <cmath>
#include <cstring>

#include "simhost/flights/watchdog.h"
#include "simhost/number_text.h"

namespace simhost {

std::string Call::Found(int place) const {
    switch (lua_type(lua, place)) {
    case LUA_TNONE:
    case LUA_TNIL: return "nothing";
    case LUA_TSTRING: return "the string \"" + std::string(lua_tostring(lua, place)) + "\"";
    case LUA_TBOOLEAN: return lua_toboolean(lua, place) ? "true" : "false";
    case LUA_TNUMBER:
        return lua_isinteger(lua, place) ? std::to_string(lua_tointeger(lua, place))
                                         : NumberText(lua_tonumber(lua, place));
    default: return std::string("a ") + luaL_typename(lua, place);
    }
}

void Call::Refuse(const char *argument, const std::string &why) const {
    throw CallError{std::string(name) + ": argument \"" + argument + "\" " + why};
}

void Call::Fail(const std::string &why) const {
    throw CallError{std::string(name) + ": " + why};
}

std::string Call::Text(int place, const char *argument) const {
    if (lua_type(lua, place) != LUA_TSTRING) Refuse(argument, "must be a string, got " + Found(place));
    size_t length = 0;
    const char *text = lua_tolstring(lua, place, &length);
    return std::string(text, length);
}

bool Call::Boolean(int place, const char *argument) const {
    if (lua_type(lua, place) != LUA_TBOOLEAN) Refuse(argument, "must be true or false, got " + Found(place));
    return lua_toboolean(lua, place) != 0;
}

double Call::Number(int place, const char *argument, double least, double most) const {
    if (lua_type(lua, place) != LUA_TNUMBER) Refuse(argument, "must be a number, got " + Found(place));
    const double value = lua_tonumber(lua, place);
    if (!(value >= least && value <= most))
        Refuse(argument,
               "must be from " + NumberText(least) + " to " + NumberText(most) + ", got " + Found(place));
    return value;
}

std::int64_t Call::Integer(int place, const char *argument, std::int64_t least, std::int64_t most) const {
    int whole = 0;
    const lua_Integer value =
        lua_type(lua, place) == LUA_TNUMBER ? lua_tointegerx(lua, place, &whole) : lua_Integer{0};
    if (whole == 0) Refuse(argument, "must be a whole number, got " + Found(place));
    if (value < least || value > most)
        Refuse(argument, "must be from " + std::to_string(least) + " to " + std::to_string(most) + ", got "
                             + Found(place));
    return value;
}

void PushTexts(lua_State *lua, const std::vector<std::string> &texts) {
    lua_createtable(lua, static_cast<int>(texts.size()), 0);
    lua_Integer place = 0;
    for (const std::string &text : texts) {
        lua_pushlstring(lua, text.data(), text.size());
        lua_rawseti(lua, -2, ++place);
    }
}

void SetField(lua_State *lua, const char *name, const std::string &text) {
    lua_pushlstring(lua, text.data(), text.size());
    lua_setfield(lua, -2, name);
}

void SetField(lua_State *lua, const char *name, int number) {
    lua_pushinteger(lua, number);
    lua_setfield(lua, -2, name);
}

void SetField(lua_State *lua, const char *name, bool value) {
    lua_pushboolean(lua, value ? 1 : 0);
    lua_setfield(lua, -2, name);
}

void RememberCaller(lua_State *lua) {
    flightRecord->line = 0;
    lua_Debug frame;
    for (int level = 0; lua && lua_getstack(lua, level, &frame) != 0; ++level) {
        lua_getinfo(lua, "Sl", &frame);
        if (frame.currentline <= 0) continue;
        static_assert(sizeof flightRecord->script >= sizeof frame.short_src);
        std::memcpy(flightRecord->script, frame.short_src, sizeof frame.short_src);
        flightRecord->line = frame.currentline;
        return;
    }
}

} // namespace simhost
