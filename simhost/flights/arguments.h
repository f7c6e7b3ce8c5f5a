// The arguments of one call of a flight, checked: a wrong one becomes a Lua error that names the call and
// the argument. The calls are written as C++ functions over a Call; Bridge makes Lua functions of them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <lua.hpp>

namespace simhost {

// A wrong call. Thrown by a call's function, turned into a Lua error by Bridge, never seen by a plug-in.
struct CallError {
    std::string message;
};

class Call {
public:
    Call(lua_State *state, const char *callName) : lua(state), name(callName) {}

    // Is there an argument at this place (counted from 1) that is not nil?
    bool Has(int place) const { return !lua_isnoneornil(lua, place); }

    // Each gives the argument at a place, or throws with the argument's name. A number is not taken for a
    // text nor a text for a number: what looks like a slip of the author's is one.
    std::string Text(int place, const char *argument) const;
    bool Boolean(int place, const char *argument) const;
    double Number(int place, const char *argument, double least, double most) const;
    std::int64_t Integer(int place, const char *argument, std::int64_t least, std::int64_t most) const;

    // An error about an argument, or about the call as a whole.
    [[noreturn]] void Refuse(const char *argument, const std::string &why) const;
    [[noreturn]] void Fail(const std::string &why) const;
    // "a number" or "the string "x"": what was found at a place, for an error's text.
    std::string Found(int place) const;

    lua_State *const lua;
    const char *const name; // "sim.run"
};

// The innermost line of the flight that is running, kept for the reports of crashes and hangs; null: none.
void RememberCaller(lua_State *lua);

// Pushes a list of texts.
void PushTexts(lua_State *lua, const std::vector<std::string> &texts);

// Sets a field of the table on top of the stack.
void SetField(lua_State *lua, const char *name, const std::string &text);
void SetField(lua_State *lua, const char *name, int number);
void SetField(lua_State *lua, const char *name, bool value);

// The fields that windows and widgets share; view tells what it looks like from outside.
template <typename View> void SetPlaceFields(lua_State *lua, const View &view) {
    SetField(lua, "left", view.left);
    SetField(lua, "top", view.top);
    SetField(lua, "right", view.right);
    SetField(lua, "bottom", view.bottom);
    SetField(lua, "visible", view.isVisible);
    SetField(lua, "focus", view.hasFocus);
}

// A Lua function of a call; the call's name is its upvalue. No C++ object may be alive when Lua raises the
// error, since Lua leaves by longjmp.
template <int (*function)(Call &)> int Bridge(lua_State *lua) {
    RememberCaller(lua);
    try {
        Call call(lua, lua_tostring(lua, lua_upvalueindex(1)));
        return function(call);
    } catch (const CallError &error) {
        luaL_where(lua, 1);
        lua_pushlstring(lua, error.message.data(), error.message.size());
        lua_concat(lua, 2);
    }
    return lua_error(lua);
}

struct CallEntry {
    const char *name; // without "sim."
    lua_CFunction function;
};

// Adds calls to the table on top of the stack.
template <int count> void AddCalls(lua_State *lua, const CallEntry (&calls)[count]) {
    for (const CallEntry &entry : calls) {
        lua_pushfstring(lua, "sim.%s", entry.name);
        lua_pushcclosure(lua, entry.function, 1);
        lua_setfield(lua, -2, entry.name);
    }
}

} // namespace simhost
