// The calls on datarefs: publish, get, set, exists. Reading goes through the C interface, so that a flight
// sees what a plug-in would see; writing goes past the writable flag, since the flight is the simulator.
#include "simhost/flights/state.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

#include "XPLMDataAccess.h"
#include "simhost/flights/arguments.h"
#include "simhost/flights/transcript.h"
#include "simhost/interface/datarefs.h"
#include "simhost/number_text.h"

namespace simhost {

namespace {

constexpr int TextCapacity = 1024; // bytes of a published "string", more when its first value is longer
constexpr int MostElements = 100000;
constexpr double Most = std::numeric_limits<double>::infinity();
constexpr const char *FlightTime = "sim/time/total_flight_time_sec";

// What a call addresses: a dataref, and an element of it when index is not negative.
struct Target {
    std::string name;
    XPLMDataRef handle = nullptr; // null: unknown
    XPLMDataTypeID type = xplmType_Unknown;
    int elements = 1; // of an array
    int index = -1;
};

// The one type by which a dataref of several is read and written.
XPLMDataTypeID LeadingType(XPLMDataTypeID types) {
    for (const XPLMDataTypeID type : {xplmType_Double, xplmType_Float, xplmType_Int, xplmType_FloatArray,
                                      xplmType_IntArray, xplmType_Data}) {
        if ((types & type) != 0) return type;
    }
    return xplmType_Unknown;
}

bool isArray(const Target &target) {
    return target.type == xplmType_IntArray || target.type == xplmType_FloatArray;
}

std::string ElementText(int number) {
    return std::string("[").append(std::to_string(number)).append("]");
}

std::string TypeName(const Target &target) {
    const std::string size = ElementText(target.elements);
    switch (target.type) {
    case xplmType_Int: return "an int";
    case xplmType_Float: return "a float";
    case xplmType_Double: return "a double";
    case xplmType_IntArray: return "an int" + size;
    case xplmType_FloatArray: return "a float" + size;
    case xplmType_Data: return "a string";
    default: return "of no type";
    }
}

void Describe(Target &target) {
    target.handle = FindGoodRecord(target.name);
    if (!target.handle) return;
    target.type = LeadingType(XPLMGetDataRefTypes(target.handle));
    if (target.type == xplmType_IntArray) target.elements = XPLMGetDatavi(target.handle, nullptr, 0, 0);
    if (target.type == xplmType_FloatArray) target.elements = XPLMGetDatavf(target.handle, nullptr, 0, 0);
}

// "name[3]" in one, as systems files write it, when there is no dataref of that very name.
void SplitIndex(Target &target) {
    const size_t open = target.name.rfind('[');
    if (open == std::string::npos || open == 0 || target.name.back() != ']') return;
    Target split;
    const char *const end = target.name.data() + target.name.size() - 1;
    const auto parsed = std::from_chars(target.name.data() + open + 1, end, split.index);
    if (parsed.ec != std::errc() || parsed.ptr != end) return;
    split.name = target.name.substr(0, open);
    Describe(split);
    if (split.handle) target = split;
}

// The call's dataref, by its name and an index at indexPlace. An unknown one has no handle.
Target FindTarget(const Call &call, int indexPlace) {
    Target target;
    target.name = call.Text(1, "name");
    Describe(target);
    if (!target.handle) SplitIndex(target);
    if (call.Has(indexPlace)) {
        const auto index = call.Integer(indexPlace, "index", 0, std::numeric_limits<int>::max());
        if (target.index >= 0) call.Refuse("index", "is given twice, in the name as well");
        target.index = static_cast<int>(index);
    }
    if (!target.handle || target.index < 0) return target;
    if (!isArray(target) && target.index > 0)
        call.Refuse("index", "makes no sense: " + target.name + " is " + TypeName(target));
    if (isArray(target) && target.index >= target.elements)
        call.Refuse("index", "must be from 0 to " + std::to_string(target.elements - 1) + ", " + target.name
                                 + " is " + TypeName(target) + ", got " + std::to_string(target.index));
    return target;
}

void PushElement(lua_State *lua, const Target &target, int index) {
    if (target.type == xplmType_IntArray) {
        int value = 0;
        XPLMGetDatavi(target.handle, &value, index, 1);
        lua_pushinteger(lua, value);
    } else {
        float value = 0;
        XPLMGetDatavf(target.handle, &value, index, 1);
        lua_pushnumber(lua, static_cast<lua_Number>(value));
    }
}

int Get(Call &call) {
    SimulatorCall inside;
    const Target target = FindTarget(call, 2);
    switch (target.type) {
    case xplmType_Int: lua_pushinteger(call.lua, XPLMGetDatai(target.handle)); break;
    case xplmType_Float:
        lua_pushnumber(call.lua, static_cast<lua_Number>(XPLMGetDataf(target.handle)));
        break;
    case xplmType_Double: lua_pushnumber(call.lua, XPLMGetDatad(target.handle)); break;
    case xplmType_Data: {
        const std::string text = GetText(target.name);
        lua_pushlstring(call.lua, text.data(), text.size());
        break;
    }
    case xplmType_IntArray:
    case xplmType_FloatArray:
        if (target.index >= 0) {
            PushElement(call.lua, target, target.index);
            break;
        }
        lua_createtable(call.lua, target.elements, 0);
        for (int i = 0; i < target.elements; ++i) {
            PushElement(call.lua, target, i);
            lua_rawseti(call.lua, -2, i + 1);
        }
        break;
    default: lua_pushnil(call.lua);
    }
    return 1;
}

int Exists(Call &call) {
    const std::string name = call.Text(1, "name");
    lua_pushboolean(call.lua, FindGoodRecord(name) != nullptr);
    return 1;
}

// The number at a place of the stack, as one that the type can hold.
double NumberFor(const Call &call, int place, const char *argument, XPLMDataTypeID type) {
    if (type == xplmType_Int || type == xplmType_IntArray)
        return static_cast<double>(
            call.Integer(place, argument, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
    if (lua_type(call.lua, place) == LUA_TNUMBER && std::isnan(lua_tonumber(call.lua, place)))
        return lua_tonumber(call.lua, place);
    return call.Number(place, argument, -Most, Most);
}

void Write(const Call &call, const Target &target, double value, int index) {
    if (!SetNumber(target.name, value, index))
        call.Fail(target.name + " belongs to a plug-in that lets nobody write it");
}

void WriteText(const Call &call, const Target &target, const std::string &text) {
    if (SetText(target.name, text)) return;
    const int capacity = XPLMGetDatab(target.handle, nullptr, 0, 0);
    if (static_cast<int>(text.size()) >= capacity)
        call.Refuse("value",
                    "is too long: " + target.name + " holds " + std::to_string(capacity - 1) + " bytes");
    call.Fail(target.name + " belongs to a plug-in that lets nobody write it");
}

// A list of numbers from element 0 on. All are checked before the first is written.
void WriteList(const Call &call, const Target &target, int place) {
    const lua_Unsigned count = lua_rawlen(call.lua, place);
    if (count > static_cast<lua_Unsigned>(target.elements))
        call.Refuse("value",
                    "has " + std::to_string(count) + " elements, " + target.name + " is " + TypeName(target));
    std::vector<double> values;
    for (lua_Unsigned i = 1; i <= count; ++i) {
        lua_rawgeti(call.lua, place, static_cast<lua_Integer>(i));
        const std::string element = "value[" + std::to_string(i) + "]";
        values.push_back(NumberFor(call, lua_gettop(call.lua), element.c_str(), target.type));
        lua_pop(call.lua, 1);
    }
    for (size_t i = 0; i < values.size(); ++i) Write(call, target, values[i], static_cast<int>(i));
}

// Is this something that the pilot's hand moves? Then the transcript tells it. What is set while nobody is
// aboard is the stage, not the play.
bool isPilotsAct(std::string_view name) {
    if (!flight.isAircraftLoaded) return false;
    for (const char *part : {"/switches/", "/actuators/", "/controls/", "sim/cockpit/"})
        if (name.find(part) != std::string_view::npos) return true;
    return false;
}

int Set(Call &call) {
    constexpr int value = 2;
    SimulatorCall inside;
    Target target = FindTarget(call, 3);
    if (!target.handle) call.Refuse("name", "names no dataref: " + target.name);
    const int luaType = lua_type(call.lua, value);
    if (luaType == LUA_TNONE || luaType == LUA_TNIL) call.Refuse("value", "is missing");
    if (target.name == FlightTime) {
        SetFlightTimeSeconds(call.Number(value, "value", 0, 1e9));
    } else if (target.type == xplmType_Data) {
        WriteText(call, target, call.Text(value, "value"));
    } else if (isArray(target) && luaType == LUA_TTABLE) {
        if (target.index >= 0) call.Refuse("index", "makes no sense with a table of values");
        WriteList(call, target, value);
    } else {
        const double number = NumberFor(call, value, "value", target.type);
        if (isArray(target) && target.index < 0)
            call.Refuse("index", "is missing, or \"value\" must be a table: " + target.name + " is "
                                     + TypeName(target));
        const int index = target.index < 0 ? 0 : target.index;
        const bool changes = GetNumber(target.name, index) != number;
        Write(call, target, number, index);
        if (changes && isPilotsAct(target.name))
            TranscribeSet(target.name + (isArray(target) ? ElementText(index) : std::string()),
                          NumberText(static_cast<float>(number)));
    }
    return 0;
}

// "float[8]" and the like, into type and elements. False when it is none of the types.
bool ParseType(std::string_view text, Target &target) {
    if (text == "string")
        target.type = xplmType_Data;
    else if (text == "int")
        target.type = xplmType_Int;
    else if (text == "float")
        target.type = xplmType_Float;
    else if (text == "double")
        target.type = xplmType_Double;
    else {
        const size_t open = text.find('[');
        if (open == std::string_view::npos || text.back() != ']') return false;
        const std::string_view base = text.substr(0, open);
        if (base == "int")
            target.type = xplmType_IntArray;
        else if (base == "float")
            target.type = xplmType_FloatArray;
        else
            return false;
        const char *const end = text.data() + text.size() - 1;
        const auto parsed = std::from_chars(text.data() + open + 1, end, target.elements);
        return parsed.ec == std::errc() && parsed.ptr == end && target.elements >= 1
               && target.elements <= MostElements;
    }
    return true;
}

int Publish(Call &call) {
    constexpr int value = 3;
    Target target;
    target.name = call.Text(1, "name");
    if (target.name.empty() || target.name.find('\0') != std::string::npos)
        call.Refuse("name", "must not be empty or hold a zero byte");
    const std::string type = call.Text(2, "type");
    if (!ParseType(type, target))
        call.Refuse("type", "must be \"int\", \"float\", \"double\", \"int[n]\", \"float[n]\" or \"string\", "
                            "got \""
                                + type + "\"");
    const Dataref *known = FindRecord(target.name);
    if (known && known->isGood && !known->isStored)
        call.Refuse("name", "is published by a plug-in already: " + target.name);

    // The value is checked before anything is published.
    std::string text;
    double number = 0;
    const bool isList = isArray(target) && lua_type(call.lua, value) == LUA_TTABLE;
    if (call.Has(value) && !isList) {
        if (target.type == xplmType_Data)
            text = call.Text(value, "value");
        else
            number = NumberFor(call, value, "value", target.type);
    }
    if (target.type == xplmType_Data)
        target.elements = std::max(TextCapacity, static_cast<int>(text.size()) + 1);
    SimulatorCall inside;
    PublishDataref(target.name, target.type, target.elements);
    target.handle = FindGoodRecord(target.name);
    if (target.type == xplmType_Data)
        WriteText(call, target, text);
    else if (isList)
        WriteList(call, target, value);
    else
        for (int i = 0; i < target.elements; ++i) Write(call, target, number, i);
    return 0;
}

} // namespace

void AddDatarefCalls(lua_State *lua) {
    AddCalls(lua, {{"publish", Bridge<Publish>},
                   {"get", Bridge<Get>},
                   {"set", Bridge<Set>},
                   {"exists", Bridge<Exists>}});
}

} // namespace simhost
