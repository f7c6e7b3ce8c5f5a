// What the modules of the simulator tell each other. Nothing outside this folder needs it.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "simhost/interface/plugins.h"

namespace simhost {

// ---- plugins.cpp ----

// CurrentlyRunning() without the call, for the reads and writes of datarefs.
extern Running currentRunning;
inline constexpr const char *ProgramItself = "the program itself"; // what a unit test does

bool isPluginEnabled(XPLMPluginID plugin); // the simulator itself always is
std::string PluginPath(XPLMPluginID plugin);

// The plug-in that is running did something that cannot be right: a line in the log, and its error callback.
void ReportMisuse(const std::string &what);
void SetErrorCallback(void (*callback)(const char *message)); // of the running plug-in

void ResetPlugins(); // stops and unloads what is loaded

// ---- utilities.cpp ----

// A line of the simulator's own in the log, after "simhost: ".
void WriteLog(const std::string &line);

// Says once per function, until the reset, that this simulator lacks it.
void ReportNotOffered(const char *function);

// What a plug-in wrote to "kv/diagnost/log": a kind, a subject and words, with tabs between them.
void RecordLogText(std::string_view text);

// Finishes a last line without a line end, so that it is seen.
void FlushLog();

const std::string &XplaneFolder();   // ends in "/"; "" while none is set
const std::string &AircraftFolder(); // the same
const std::string &AircraftFile();   // bare name

// A path in the form that the running plug-in gets.
std::string PathForPlugin(const std::string &path);
std::string PathFromPlugin(const std::string &given); // and back; a relative one is in the simulator's folder
void ResetUtilities();

// Copies text into an out-string of the C interface: cut to size - 1 bytes and ended by a zero; null:
// nothing.
void CopyText(const std::string &text, char *out, std::size_t size);

// What a plug-in has put into a structure that begins with its size: fields past the size that the caller
// compiled stay as they are in given.
template <typename Structure> void CopyGiven(Structure &given, const Structure *from) {
    if (!from || from->structSize < static_cast<int>(sizeof from->structSize)) return;
    const auto size = static_cast<std::size_t>(from->structSize);
    std::memcpy(&given, from, std::min(size, sizeof given));
}

// The same the other way: fills what the caller has room for, its size apart.
template <typename Structure> void CopyOut(const Structure &made, Structure *out) {
    constexpr std::size_t own = sizeof made.structSize;
    if (!out || out->structSize <= static_cast<int>(own)) return;
    const std::size_t size = std::min(static_cast<std::size_t>(out->structSize), sizeof made);
    std::memcpy(reinterpret_cast<char *>(out) + own, reinterpret_cast<const char *>(&made) + own, size - own);
}

// "lin.xpl+0x1a2b", or the function's name when the library tells it: names a callback of a plug-in in a
// way that a debugger can resolve.
std::string DescribeFunction(const void *function);

// ---- data_access.cpp ----

// Publishes with the writable flag for plug-ins; the flight may write it in any case.
XPLMDataRef PublishDataref(const std::string &name, XPLMDataTypeID type, int elements, bool writable);

// Makes every dataref an orphan and publishes the built-in table.
void ResetDatarefs();

// Drop what a plug-in has registered, and name each in leftBehind. The accessors' handles become orphans.
void DropAccessors(XPLMPluginID plugin, LeftBehind &leftBehind);

// ---- processing.cpp ----

void AdvanceClock(double seconds); // one frame more
double ElapsedSeconds();           // since the reset, pauses included
void RunFlightLoops();
void DropFlightLoops(XPLMPluginID plugin, LeftBehind &leftBehind);
void ResetProcessing();

// ---- camera.cpp ----

void RunCamera(); // each frame: who controls it is asked for its place
void DropCameraControl(XPLMPluginID plugin);
void ResetCamera();

// ---- scenery.cpp, instance.cpp ----

void FinishLoadingObjects(); // each frame: those that are loaded behind the plug-in's back
bool isLoadedObject(const void *object);
void HoldObject(void *object); // once more than plug-ins do
void LetGoOfObject(void *object);
void DropScenery(XPLMPluginID plugin, LeftBehind &leftBehind);
void DropInstances(XPLMPluginID plugin, LeftBehind &leftBehind);
void ResetScenery();
void ResetInstances();

// ---- planes.cpp ----

void DropPlanes(XPLMPluginID plugin);
void ResetPlanes();

// ---- display.cpp ----

inline constexpr XPLMDrawingPhase DrawingPhases[] = {xplm_Phase_Modern3D, xplm_Phase_FirstCockpit,
                                                     xplm_Phase_Panel,    xplm_Phase_Gauges,
                                                     xplm_Phase_Window,   xplm_Phase_LastCockpit};

void RunDrawPhase(XPLMDrawingPhase phase); // those before the simulator's own drawing, then those after
void DropDrawCallbacks(XPLMPluginID plugin, LeftBehind &leftBehind);
void ResetDisplay();

// ---- commands.cpp ----

void ContinueHeldCommands();
void DropCommandHandlers(XPLMPluginID plugin, LeftBehind &leftBehind);
void ResetCommands();

// ---- menus.cpp ----

void DropMenus(XPLMPluginID plugin, LeftBehind &leftBehind);
void ResetMenus();

// ---- screen.cpp ----

// While a frame is drawn: text as plug-ins draw it.
void DrawPluginText(std::string_view text, int x, int y, float red, float green, float blue);
bool isDrawingFrame();
void ResetScreen();

// ---- world.cpp ----

// Brings the aircraft's local coordinates in line with its latitude, longitude and elevation.
void UpdateLocalPosition();
void ResetWorld();

// ---- builtin_datarefs.cpp ----

void PublishBuiltinDatarefs();

} // namespace simhost
