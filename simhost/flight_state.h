// What the parts of the table "sim" (the files flight_*.cpp) share. Nothing outside them needs it.
#pragma once

#include <string>
#include <vector>

#include <lua.hpp>

#include "XPLMDefs.h"
#include "simhost/aircraft_folder.h"
#include "simhost/flight.h"
#include "simhost/simulator.h"
#include "simhost/watchdog.h"

namespace simhost {

struct FlightState {
    FlightOptions options;
    ScratchAircraft scratch;
    double frameSeconds = 1.0 / 60;
    long long frames = 0; // stepped in all
    std::string locale;   // empty: "C"

    struct LoadedPlugin {
        XPLMPluginID id = XPLM_NO_PLUGIN_ID;
        std::string name;
    };
    std::vector<LoadedPlugin> plugins; // in the order of loading; empty while stopped
    bool wasAnythingLeftBehind = false;
    int statusWhenClosed = EXIT_FLOWN; // the exit status when the pilot closes the window

    // What the simulator gave out and the flight has not asked for yet, one list for each call.
    std::vector<SentMessage> sent;
    std::vector<std::string> said;
};
extern FlightState flight;

// Around everything that may run a plug-in's code: the watchdog looks, and the process has the flight's
// locale. In between it has the locale "C", so that neither Lua nor the simulator is led astray by it.
class SimulatorCall {
public:
    SimulatorCall();
    ~SimulatorCall();
    SimulatorCall(const SimulatorCall &) = delete;
    SimulatorCall &operator=(const SimulatorCall &) = delete;

private:
    WatchedCall watched;
};

void StepFrames(long long count);

// What the pilot types into the window's line: heard over the next frames. StepFrames tells where a frame
// begins and ends.
void TypeSpeech(const std::string &text);
void BeginFrameOfSpeech();
void EndFrameOfSpeech();

// Loads what lies in the aircraft's folder. False with the reason in error; then nothing stays loaded.
bool StartPlugins(std::string &error);
// Stops what is loaded, tells on stderr what was left behind and gives it.
std::vector<std::string> StopPlugins();

// Each adds its calls to the table on top of the stack.
void AddPluginCalls(lua_State *lua);  // flight_plugins.cpp
void AddTimeCalls(lua_State *lua);    // flight_time.cpp
void AddDatarefCalls(lua_State *lua); // flight_datarefs.cpp
void AddCockpitCalls(lua_State *lua); // flight_cockpit.cpp
void AddScreenCalls(lua_State *lua);  // flight_screen.cpp
void AddMouseCalls(lua_State *lua);   // flight_mouse.cpp
void AddWindowCalls(lua_State *lua);  // flight_windows.cpp
void AddWidgetCalls(lua_State *lua);  // flight_widgets.cpp

} // namespace simhost
