// The calls dir, start, stop and restart: the plug-ins of the simulator, which stay, and those of the
// aircraft, loaded as the simulator loads them with it; all are checked when they are gone.
#include "simhost/flights/state.h"

#include <cstdio>
#include <map>

#include "XPLMPlugin.h"
#include "simhost/flights/arguments.h"
#include "simhost/flights/transcript.h"
#include "simhost/interface/plugins.h"
#include "simhost/modules.h"

namespace simhost {

namespace {

constexpr const char *Description = "sim/aircraft/view/acf_descrip";

// "<aircraft>/plugins/<name>/64/", where the first library lies.
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
    if (flight.isAircraftLoaded) call.Fail("the plug-in is started already");
    std::string error;
    if (!StartPlugins(error)) call.Fail(error);
}

std::vector<std::string> Stop(const Call &call) {
    if (!flight.isAircraftLoaded) call.Fail("the plug-in is not started");
    return StopPlugins();
}

int StartCall(Call &call) {
    Start(call);
    return 0;
}

int StopCall(Call &call) {
    PushTexts(call.lua, Stop(call));
    return 1;
}

int Restart(Call &call) {
    const std::vector<std::string> left = Stop(call);
    Start(call);
    PushTexts(call.lua, left);
    return 1;
}

std::string Names(const std::vector<FlightState::LoadedPlugin> &plugins) {
    std::string names;
    for (const FlightState::LoadedPlugin &plugin : plugins)
        names += (names.empty() ? "" : ", ") + plugin.name;
    return names.empty() ? "no plug-in" : names;
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

// Adds the library's plug-in to those that are loaded. False with the reason in error, which names the
// library by its path in folder.
bool LoadLibrary(const std::string &library, const std::string &folder,
                 std::vector<FlightState::LoadedPlugin> &plugins, std::string &error) {
    const std::string known = library.substr(folder.size());
    NameLoadingLibrary(known);
    XPLMPluginID id = XPLM_NO_PLUGIN_ID;
    {
        SimulatorCall inside;
        id = LoadPlugin(library, error);
    }
    NameLoadingLibrary("");
    if (id == XPLM_NO_PLUGIN_ID) {
        if (error.compare(0, library.size(), library) == 0)
            error.replace(0, library.size(), known);
        else
            error = known + ": " + error;
        return false;
    }
    const std::string name = PluginName(id);
    NamePluginForReports(id, name);
    plugins.push_back({id, name});
    return true;
}

void TellRefusals(const std::vector<FlightState::LoadedPlugin> &plugins) {
    for (const FlightState::LoadedPlugin &plugin : plugins) {
        if (XPLMIsPluginEnabled(plugin.id) == 0)
            std::fprintf(stderr, "fennic-sim: %s refused to be enabled\n", plugin.name.c_str());
    }
}

// As in the simulator, one that cannot be loaded costs itself and a line.
void StartGlobalPlugins() {
    flight.areGlobalPluginsLoaded = true;
    for (const std::string &folder : FindPluginFolders(flight.scratch.root + "Resources")) {
        const std::string library = FindPluginLibrary(folder);
        std::string error = folder.substr(flight.scratch.root.size()) + " holds no plug-in for this system";
        if (!library.empty() && LoadLibrary(library, flight.scratch.root, flight.globalPlugins, error))
            continue;
        std::fprintf(stderr, "fennic-sim: %s; the flight goes on without it\n", error.c_str());
        WriteLog(error);
    }
    if (flight.globalPlugins.empty()) return;
    TranscribeDirection("In the simulator: " + Names(flight.globalPlugins) + ".");
    TellRefusals(flight.globalPlugins);
}

void SendToPlugins(int message) {
    SimulatorCall inside;
    BroadcastMessage(message, nullptr); // of those about an aircraft, this means the pilot's
}

// Unloads in the opposite order, tells on stderr what was left behind, and gives it.
std::vector<std::string> Unload(std::vector<FlightState::LoadedPlugin> &plugins, const char *told) {
    std::vector<std::string> left;
    if (plugins.empty()) return left;
    const std::string names = Names(plugins);
    while (!plugins.empty()) {
        const FlightState::LoadedPlugin plugin = plugins.back();
        {
            SimulatorCall inside;
            UnloadPlugin(plugin.id);
        }
        plugins.pop_back();
        for (const std::string &error : LastLeftBehind().errors) {
            std::fprintf(stderr, "fennic-sim: %s left behind when it stopped: %s\n", plugin.name.c_str(),
                         error.c_str());
            left.push_back(plugin.name + ": " + error);
        }
        TellNotes(plugin.name);
    }
    flight.wasAnythingLeftBehind = flight.wasAnythingLeftBehind || !left.empty();
    TranscribeDirection(std::string(told) + ": " + names + ".");
    return left;
}

} // namespace

bool StartPlugins(std::string &error) {
    if (!flight.areGlobalPluginsLoaded) StartGlobalPlugins();
    const auto aircraft = FindAircraftFile(flight.scratch.aircraft);
    SetFolders(flight.scratch.root, flight.scratch.aircraft, aircraft.name);
    if (aircraft.hasDescription) SetText(Description, aircraft.description.substr(0, 259));
    const std::vector<std::string> libraries = FindPluginLibraries(flight.scratch.aircraft);
    if (libraries.empty() && flight.globalPlugins.empty()) {
        error =
            "the aircraft has no plug-in: nothing at " + flight.scratch.aircraft + "plugins/*/64/ to load";
        return false;
    }
    for (const std::string &library : libraries) {
        if (LoadLibrary(library, flight.scratch.aircraft, flight.plugins, error)) continue;
        StopPlugins();
        return false;
    }
    flight.isAircraftLoaded = true;
    TranscribeDirection("Aboard " + flight.scratch.folder + ": " + Names(flight.plugins) + ".");
    TellRefusals(flight.plugins);
    for (const int message :
         {XPLM_MSG_PLANE_LOADED, XPLM_MSG_LIVERY_LOADED, XPLM_MSG_AIRPORT_LOADED, XPLM_MSG_SCENERY_LOADED})
        SendToPlugins(message);
    return true;
}

std::vector<std::string> StopPlugins() {
    if (flight.isAircraftLoaded) SendToPlugins(XPLM_MSG_PLANE_UNLOADED);
    flight.isAircraftLoaded = false;
    return Unload(flight.plugins, "Left");
}

void EndPlugins() {
    SendToPlugins(XPLM_MSG_WILL_WRITE_PREFS);
    StopPlugins();
    Unload(flight.globalPlugins, "Stopped with the simulator");
}

void AddPluginCalls(lua_State *lua) {
    AddCalls(lua, {{"dir", Bridge<Dir>},
                   {"start", Bridge<StartCall>},
                   {"stop", Bridge<StopCall>},
                   {"restart", Bridge<Restart>}});
}

} // namespace simhost
