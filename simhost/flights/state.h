// What the parts of the table "sim" (the files *.cpp) share. Nothing outside them needs it.
#pragma once

#include <string>
#include <vector>

#include <lua.hpp>

#include "XPLMDefs.h"
#include "simhost/events.h"
#include "simhost/flights/flight.h"
#include "simhost/flights/watchdog.h"
#include "simhost/simulator.h"
#include "simhost/world/aircraft_folder.h"

namespace simhost {

struct FlightState {
    FlightOptions options;
    ScratchAircraft scratch;
    double frameSeconds = 1.0 / 60;
    long long frames = 0;    // stepped in all
    std::string locale;      // empty: "C"
    std::string startFolder; // the working directory of the flight's own script

    struct LoadedPlugin {
        XPLMPluginID id = XPLM_NO_PLUGIN_ID;
        std::string name;
    };
    std::vector<LoadedPlugin> globalPlugins; // of Resources/plugins/, in the order of loading
    std::vector<LoadedPlugin> plugins;       // the aircraft's, in the order of loading; empty while stopped
    bool areGlobalPluginsLoaded = false;     // once in a flight, be there any or not
    bool isAircraftLoaded = false;
    bool wasAnythingLeftBehind = false;
    int statusWhenClosed = ExitFlown; // the exit status when the pilot closes the window

    // What the simulator gave out and the flight has not asked for yet, one list for each call.
    std::vector<SentMessage> sent;
    std::vector<std::string> said, understood;
};
extern FlightState flight;

// The absolute path of what the flight's script names, for our own calls: the working directory may be the
// simulator's folder.
std::string PathFromStart(const std::string &path);

// Around everything that may run a plug-in's code: the watchdog looks, the working directory is the
// simulator's folder, and the process has the flight's locale. In between it has the locale "C", so that
// neither Lua nor the simulator is led astray by it; and Lua's calls on files go back to where the script was
// started.
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

// What is heard and said aloud. The voice has the machine's own devices where the clock is the machine's, and
// else the simulator's: then each frame waits for it. False with the reason in error.
bool StartSound(std::string &error);
void RunFrameOfSound();
void NoteUnderstood(const Event &event); // by a speech server in the simulator
bool EndSound();                         // false when a recording was not written, which it tells on stderr

// Loads what lies in the aircraft's folder; before it, the first time, what lies in Resources/plugins/: of
// those, one that cannot be loaded is told on stderr and passed over. False with the reason in error; then
// nothing of the aircraft stays loaded.
bool StartPlugins(std::string &error);
// Stops the aircraft's plug-ins, tells on stderr what was left behind and gives it.
std::vector<std::string> StopPlugins();
// The simulator ends: stops the aircraft's plug-ins, and then the others.
void EndPlugins();

// Each adds its calls to the table on top of the stack.
void AddPluginCalls(lua_State *lua);  // plugins.cpp
void AddTimeCalls(lua_State *lua);    // time.cpp
void AddDatarefCalls(lua_State *lua); // datarefs.cpp
void AddCockpitCalls(lua_State *lua); // cockpit.cpp
void AddSoundCalls(lua_State *lua);   // sound.cpp
void AddScreenCalls(lua_State *lua);  // screen.cpp
void AddMouseCalls(lua_State *lua);   // mouse.cpp
void AddFileCalls(lua_State *lua);    // files.cpp
void AddWindowCalls(lua_State *lua);  // windows.cpp
void AddWidgetCalls(lua_State *lua);  // widgets.cpp

} // namespace simhost
