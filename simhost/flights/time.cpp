// The calls that let time pass or change the state of the simulator: frames, run, time, new_flight, pause,
// vr, screen, locale, colon_paths, world.
#include "simhost/flights/state.h"

#include <clocale>
#include <cmath>

#include "simhost/flights/arguments.h"
#include "simhost/flights/transcript.h"
#include "simhost/number_text.h"
#include "simhost/system.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

constexpr double LongestRunSeconds = 1e8;

int Frames(Call &call) {
    StepFrames(call.Integer(1, "n", 0, 1'000'000'000));
    return 0;
}

// Whole frames, as many as it takes to fill the time.
int Run(Call &call) {
    const double seconds = call.Number(1, "seconds", 0, LongestRunSeconds);
    StepFrames(static_cast<long long>(std::ceil(seconds / flight.frameSeconds - 1e-6)));
    return 0;
}

int Time(Call &call) {
    lua_pushnumber(call.lua, FlightTimeSeconds());
    return 1;
}

int NewFlight(Call &) {
    SetFlightTimeSeconds(0);
    TranscribeDirection("A new flight begins.");
    return 0;
}

int Pause(Call &call) {
    const bool on = call.Boolean(1, "on");
    SetPaused(on);
    TranscribeDirection(on ? "The simulator is paused." : "The simulator goes on.");
    return 0;
}

int VirtualReality(Call &call) {
    const bool on = call.Boolean(1, "on");
    if ((GetNumber("sim/graphics/VR/enabled") != 0) == on) return 0;
    SimulatorCall inside;
    SetVr(on);
    TranscribeDirection(on ? "The pilot puts the headset on." : "The pilot takes the headset off.");
    return 0;
}

int Screen(Call &call) {
    const int width = static_cast<int>(call.Integer(1, "w", 1, 16384));
    const int height = static_cast<int>(call.Integer(2, "h", 1, 16384));
    SetScreenSize(width, height);
    return 0;
}

// Checked here, set around the calls into plug-ins.
int Locale(Call &call) {
    const std::string name = call.Text(1, "name"), ownName = LocaleName(name);
    const bool installed = std::setlocale(LC_ALL, ownName.c_str()) != nullptr;
    std::setlocale(LC_ALL, "C");
    if (!installed) call.Refuse("name", "names a locale that is not installed: \"" + name + "\"");
    flight.locale = name == "C" || name == "POSIX" ? "" : ownName;
    TranscribeDirection("The system's locale is " + name + ".");
    return 0;
}

int ColonPaths(Call &call) {
    const bool on = call.Boolean(1, "on");
    UseColonPaths(on);
    if (on) TranscribeDirection("Paths have colons, as on a Mac, unless a plug-in asks for others.");
    return 0;
}

int World(Call &call) {
    const double latitude = call.Number(1, "latitude", -90, 90);
    const double longitude = call.Number(2, "longitude", -180, 180);
    SetWorldReference(latitude, longitude);
    return 0;
}

} // namespace

void AddTimeCalls(lua_State *lua) {
    AddCalls(lua, {{"frames", Bridge<Frames>},
                   {"run", Bridge<Run>},
                   {"time", Bridge<Time>},
                   {"new_flight", Bridge<NewFlight>},
                   {"pause", Bridge<Pause>},
                   {"vr", Bridge<VirtualReality>},
                   {"screen", Bridge<Screen>},
                   {"locale", Bridge<Locale>},
                   {"colon_paths", Bridge<ColonPaths>},
                   {"world", Bridge<World>}});
}

} // namespace simhost
