// A flight: a Lua script over the table "sim", flown in the simulator of this process. docs/flights.md
// describes the table for those who write flights.
#pragma once

#include <string>
#include <vector>

namespace simhost {

struct FlightOptions {
    std::string script;                     // the flight's file
    std::vector<std::string> arguments;     // the script's "arg" from 1 on
    std::string aircraftFolder;             // copied, never written to
    std::string xplaneFolder;               // a real simulator's, for its lists of names; empty: none
    std::vector<std::string> pluginFolders; // copied to Resources/plugins/
    std::string recording;                  // a WAV file of what is said; empty: none
    double framesPerSecond = 60;
    int screenWidth = 1920; // boxels
    int screenHeight = 1080;
    bool window = false;   // show the simulator, in real time
    bool realTime = false; // frames wait for the clock
    bool quiet = false;    // no transcript
    bool keep = false;     // leave the scratch folder
    bool alone = false;    // one process, without one that watches over it
};

inline constexpr int ExitFlown = 0;  // the script ended without an error and nothing was left behind
inline constexpr int ExitFailed = 1; // it did not, or something was
inline constexpr int ExitUsage = 2;  // the flight could not begin

// Flies the flight and gives the program's exit status. Says what went wrong on stderr.
int FlyFlight(const FlightOptions &options);

} // namespace simhost
