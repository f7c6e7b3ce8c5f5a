// The calls dir, start, stop and restart: the plug-ins of the aircraft, loaded as the simulator loads them
// with the aircraft and checked when they are gone.
#include "simhost/flight_state.h"

#include <cstdio>
#include <map>

#include "XPLMPlugin.h"
#include "simhost/flight_arguments.h"
#include "simhost/plugins.h"
#include "simhost/transcript.h"

namespace simhost {

namespace {

constexpr const char *DESCRIPTION = "sim/aircraft/view/acf_descrip";

// "<aircraft>/plugins/*/64/lin.xpl" without the file name.
std::string PluginFolder(const Call &call) {
    const std::vector<std::string> libraries = FindPluginLibraries(flight.scratch.aircraft);
    if (libraries.empty()) call.Fail("the aircraft has no plug-in");
    return libraries.front().substr(0, libraries.front().rfind('/') + 1);
}

int Dir(Call &call) {
    const std::string what = call.Text(1, "what");
    std::string folder;
    if (what == "plugin")
        folder = PluginFolder(call);
    else if (what == "aircraft")
        folder = flight.scratch.aircraft;
    else if (what == "xplane")
        folder = flight.scratch.root;
    else
        call.Refuse("what", "must be \"plugin\", \"aircraft\" or \"xplane\", got \"" + what + "\"");
    lua_pushlstring(call.lua, folder.data(), folder.size());
    return 1;
}

void Start(const Call &call) {
    if (!flight.plugins.empty()) call.Fail("the plug-in is started already");
    std::string error;
    if (!StartPlugins(error)) call.Fail(error);
}

void PushList(lua_State *lua, const std::vector<std::string> &texts) {
    lua_createtable(lua, static_cast<int>(texts.size()), 0);
    for (size_t i = 0; i < texts.size(); ++i) {
        lua_pushlstring(lua, texts[i].data(), texts[i].size());
        lua_rawseti(lua, -2, static_cast<lua_Integer>(i) + 1);
    }
}

std::vector<std::string> Stop(const Call &call) {
    if (flight.plugins.empty()) call.Fail("the plug-in is not started");
    return StopPlugins();
}

int StartCall(Call &call) {
    Start(call);
    return 0;
}

int StopCall(Call &call) {
    PushList(call.lua, Stop(call));
    return 1;
}

int Restart(Call &call) {
    const std::vector<std::string> left = Stop(call);
    Start(call);
    PushList(call.lua, left);
    return 1;
}

std::string Names() {
    std::string names;
    for (const FlightState::LoadedPlugin &plugin : flight.plugins)
        names += (names.empty() ? "" : ", ") + plugin.name;
    return names;
}

// What the simulator drops with the plug-in: the things themselves when they are few, or else their kinds.
void TellNotes(const std::string &plugin) {
    std::map<std::string, int> kinds; // "command handler of" and how many
    std::string all;
    for (const std::string &note : LastLeftBehind().notes) {
        ++kinds[note.substr(0, note.find(" \""))];
        all += (all.empty() ? "" : ", ") + note;
    }
    if (all.empty()) return;
    if (LastLeftBehind().notes.size() > 2) {
        all.clear();
        for (const auto &[kind, count] : kinds) {
            const size_t end = kind.rfind(" of");
            all += (all.empty() ? "" : ", ") + std::to_string(count) + " " + kind.substr(0, end)
                   + (count > 1 ? "s" : "");
        }
    }
    TranscribeDirection(plugin + " left it to the simulator to drop: " + all + ".");
}

} // namespace

bool StartPlugins(std::string &error) {
    const AircraftFile aircraft = FindAircraftFile(flight.scratch.aircraft);
    SetFolders(flight.scratch.root, flight.scratch.aircraft, aircraft.name);
    if (aircraft.hasDescription) SetText(DESCRIPTION, aircraft.description.substr(0, 259));
    const std::vector<std::string> libraries = FindPluginLibraries(flight.scratch.aircraft);
    if (libraries.empty()) {
        error =
            "the aircraft has no plug-in: nothing at " + flight.scratch.aircraft + "plugins/*/64/ to load";
        return false;
    }
    for (const std::string &library : libraries) {
        const std::string known = library.substr(flight.scratch.aircraft.size());
        NameLoadingLibrary(known);
        SimulatorCall inside;
        const XPLMPluginID id = LoadPlugin(library, error);
        if (id == XPLM_NO_PLUGIN_ID) {
            if (error.compare(0, library.size(), library) == 0)
                error.replace(0, library.size(), known);
            else
                error = known + ": " + error;
            break;
        }
        const std::string name = PluginName(id);
        NamePluginForReports(id, name);
        flight.plugins.push_back({id, name});
    }
    NameLoadingLibrary("");
    if (flight.plugins.size() < libraries.size()) {
        StopPlugins();
        return false;
    }
    TranscribeDirection("Aboard " + flight.scratch.folder + ": " + Names() + ".");
    for (const FlightState::LoadedPlugin &plugin : flight.plugins) {
        if (XPLMIsPluginEnabled(plugin.id) == 0)
            std::fprintf(stderr, "fennic-sim: %s refused to be enabled\n", plugin.name.c_str());
    }
    return true;
}

std::vector<std::string> StopPlugins() {
    std::vector<std::string> left;
    if (flight.plugins.empty()) return left;
    const std::string names = Names();
    while (!flight.plugins.empty()) {
        const FlightState::LoadedPlugin plugin = flight.plugins.back();
        {
            SimulatorCall inside;
            UnloadPlugin(plugin.id);
        }
        flight.plugins.pop_back();
        for (const std::string &error : LastLeftBehind().errors) {
            std::fprintf(stderr, "fennic-sim: %s left behind when it stopped: %s\n", plugin.name.c_str(),
                         error.c_str());
            left.push_back(plugin.name + ": " + error);
        }
        TellNotes(plugin.name);
    }
    flight.wasAnythingLeftBehind = flight.wasAnythingLeftBehind || !left.empty();
    TranscribeDirection("Left: " + names + ".");
    return left;
}

void AddPluginCalls(lua_State *lua) {
    AddCalls(lua, {{"dir", Bridge<Dir>},
                   {"start", Bridge<StartCall>},
                   {"stop", Bridge<StopCall>},
                   {"restart", Bridge<Restart>}});
}

} // namespace simhost
