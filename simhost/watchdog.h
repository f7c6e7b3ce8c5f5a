// What watches over the plug-ins' calls: a call that crashes or does not come back ends the program with
// one line that names the plug-in, what it was doing and the flight's line, and with exit status 3. The
// scratch folder is removed then, and also when the program is told to end (Ctrl-C).
#pragma once

#include <csignal>

#include "XPLMDefs.h"

struct lua_State;

namespace simhost {

inline constexpr int EXIT_CRASHED = 3;

// Starts watching. A call into a plug-in may take 10 s of real time; the environment variable
// FENNIC_SIM_HANG_SECONDS sets another limit. Under the address sanitizer crashes are left to its own
// report.
void StartWatchdog();

// What the reports need, copied where a signal handler can read it. The scratch folder is removed, or named
// when it is to be kept; an empty path does neither. libraryPath names the plug-in that is being loaded and
// has no name yet.
void NameScratchFolder(const char *path, bool keep);
void NameLoadingLibrary(const char *libraryPath);
void NamePluginForReports(XPLMPluginID plugin, const char *name);
void NameFlightState(lua_State *lua);

// Around everything that may run a plug-in's code.
class WatchedCall {
public:
    WatchedCall() {
        entered = entered + 1;
        inside = 1;
    }
    ~WatchedCall() { inside = 0; }
    WatchedCall(const WatchedCall &) = delete;
    WatchedCall &operator=(const WatchedCall &) = delete;

    // Read by the timer's signal handler: a call is stuck when both stay as they are.
    static inline volatile std::sig_atomic_t entered = 0;
    static inline volatile std::sig_atomic_t inside = 0;
};

// Around slow work of the simulator's own, inside a watched call or not: it may take what it takes.
class UnwatchedWork {
public:
    UnwatchedWork() : wasInside(WatchedCall::inside) { WatchedCall::inside = 0; }
    ~UnwatchedWork() {
        WatchedCall::entered = WatchedCall::entered + 1;
        WatchedCall::inside = wasInside;
    }
    UnwatchedWork(const UnwatchedWork &) = delete;
    UnwatchedWork &operator=(const UnwatchedWork &) = delete;

private:
    const std::sig_atomic_t wasInside;
};

} // namespace simhost
