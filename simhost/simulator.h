// The headless simulator from the outside: what a flight, a unit test or a benchmark does to it. Plug-ins
// see the other side, the C interface under sdk/, whose calls are implemented in the files named after
// its headers.
//
// There is one simulator per process and everything runs on one thread. All state belongs to the modules
// of this folder; ResetSimulator makes it fresh.
#pragma once

#include <string>
#include <vector>

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"

namespace simhost {

// ---- The simulator as a whole ----

// Forgets every dataref, command, callback, plug-in and log line, sets flight time and cycle to 0, and
// publishes the built-in table of the simulator's datarefs and commands.
void ResetSimulator();

// The folders that the path calls report; both absolute, with or without "/" at the end.
// aircraftFile is the bare file name of the .acf in aircraftFolder ("" when there is none).
void SetFolders(const std::string &xplaneFolder, const std::string &aircraftFolder,
                const std::string &aircraftFile);

// Paths with colons, as on a Mac, for plug-ins that have not asked for native ones.
void UseColonPaths(bool on);

// Makes the calling program itself the running plug-in, as if its library lay at libraryPath; for unit
// tests and benchmarks, which link the plug-in's code instead of loading it. Its id is what XPLMGetMyID
// gives from then on.
void ActAsPlugin(const std::string &libraryPath);

// One frame of the given length in seconds (flight time stands still while paused): held commands
// continue, due flight loops run, then everything is drawn, for somebody to look at or not.
void StepFrame(double seconds, bool withPixels = false);

void SetPaused(bool paused); // "sim/time/paused", which decides
double FlightTimeSeconds();  // "sim/time/total_flight_time_sec"
void SetFlightTimeSeconds(double seconds);

void SetScreenSize(int width, int height); // boxels; 1920 x 1080 after a reset

// Moves the origin of the local coordinates, as the simulator does when it shifts the scenery: degrees, at
// sea level. After a reset it lies where the aircraft is when local coordinates are first asked for. A place
// that is not on Earth changes nothing.
void SetWorldReference(double latitude, double longitude);

// ---- Datarefs of the simulator and the aircraft ----

// Publishes a dataref of the simulator's side, owned and stored here, writable. type is one of the
// xplmType_ bits; elements is the size of an array or the capacity of byte data, 1 for a scalar. Publishing
// a name again replaces type and size and sets its value to 0; its handle stays valid.
void PublishDataref(const std::string &name, XPLMDataTypeID type, int elements = 1);

// Reads or writes any dataref as a number, whatever its type; index is the element of an array. Unknown
// names and elements read 0 and are not written; SetNumber says whether it wrote.
double GetNumber(const std::string &name, int index = 0);
bool SetNumber(const std::string &name, double value, int index = 0);

// Reads or writes byte data as text: up to the first zero byte, with one zero byte added on writing.
std::string GetText(const std::string &name);
bool SetText(const std::string &name, const std::string &value);

// ---- Commands ----

struct CommandCount {
    int begun = 0;
    int ended = 0;
};

void AddCommand(const std::string &name, const std::string &description);
CommandCount CountCommand(const std::string &name); // how often it was begun and ended; 0, 0 if unknown
bool HoldCommand(const std::string &name);          // the pilot presses; false for an unknown name
bool ReleaseCommand(const std::string &name);

// ---- What the plug-in said ----

struct SentMessage {
    double time = 0; // flight time, seconds
    std::string text;
};

// Every message written to "kv/to_speech" since the last call, in order.
std::vector<SentMessage> TakeSentMessages();

// What the simulator said for plug-ins, with its own voice, since the last call.
std::vector<std::string> TakeSimulatorSpeech();

// The lines written to the simulator's log since the last call, without line ends.
std::vector<std::string> TakeLogLines();

// Those that tell of a problem, without what stands at the start of each, since the last call of either.
std::vector<std::string> TakeProblems();

} // namespace simhost
