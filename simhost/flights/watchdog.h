// What watches over a flight. The flight is flown in a child process; its parent sees every end of it, be it
// a crash, an exit, a call that does not come back, or a signal that nobody can catch. An end that is not the
// flight's own gives one line that names the plug-in, what it was doing and the flight's line, and exit
// status 3. The parent also removes the scratch folder, whoever is told to end.
#pragma once

#include <string>

#include "simhost/interface/plugins.h"

namespace simhost {

inline constexpr int ExitCrashed = 3;

// Splits the program: the caller goes on in a child process, flies, and ends with EndFlight. The parent does
// not return; it ends with the flight's exit status after removing the scratch folder, or naming it when it
// is to be kept. A call into a plug-in may take 60 s of real time; the environment variable
// FENNIC_SIM_HANG_SECONDS sets another limit. False, with the reason in error, when there can be no child.
bool FlyUnderWatch(const std::string &scratchRoot, bool keepScratch, std::string &error);

// That limit.
double HangSeconds();

// Tells the parent that the flight has come to its own end; what follows is leaving the program.
void EndFlight(int status);

// Removes the scratch folder, or says on stderr where it is; that of a flight that could not begin always
// goes.
void TidyScratch(const std::string &root, bool keep, int status);

// What the child keeps up to date for the parent, in memory that both see. Without a parent it is of no
// consequence. Phrases are literals of this program, so the parent can read them, too.
struct FlightRecord {
    Running running;
    Running lastOfPlugin; // the last call into a plug-in that was begun
    volatile unsigned entered = 0;
    volatile bool isInside = false; // a call is stuck when both stay as they are
    double flightSeconds = 0;
    char script[64] = ""; // Lua's short name of the flight's file, and the line of its last call; 0: none
    int line = 0;
    char loadingLibrary[512] = "";
    struct {
        XPLMPluginID plugin = XPLM_NO_PLUGIN_ID;
        char text[256] = "";
    } names[32];
    char exception[512] = ""; // that nothing caught
    bool isSanitizerReport = false;
    bool isEnded = false;
    int status = 0;
};
extern FlightRecord *flightRecord;

// libraryPath names the plug-in that is being loaded and has no name yet.
void NameLoadingLibrary(const std::string &libraryPath);
void NamePluginForReports(XPLMPluginID plugin, const std::string &name);

// Around everything that may run a plug-in's code.
class WatchedCall {
public:
    WatchedCall() {
        flightRecord->entered = flightRecord->entered + 1;
        flightRecord->isInside = true;
    }
    ~WatchedCall() { flightRecord->isInside = false; }
    WatchedCall(const WatchedCall &) = delete;
    WatchedCall &operator=(const WatchedCall &) = delete;
};

// Around slow work of the simulator's own, inside a watched call or not: it may take what it takes.
class UnwatchedWork {
public:
    UnwatchedWork() : wasInside(flightRecord->isInside) { flightRecord->isInside = false; }
    ~UnwatchedWork() {
        flightRecord->entered = flightRecord->entered + 1;
        flightRecord->isInside = wasInside;
    }
    UnwatchedWork(const UnwatchedWork &) = delete;
    UnwatchedWork &operator=(const UnwatchedWork &) = delete;

private:
    const bool wasInside;
};

} // namespace simhost
