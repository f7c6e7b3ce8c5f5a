// The loaded plug-ins: opening a library, its five entry points, who is running right now, and what a
// plug-in has registered and not taken back.
#pragma once

#include <string>
#include <vector>

#include "XPLMPlugin.h"

namespace simhost {

// Opens a library and calls XPluginStart and XPluginEnable. Returns its id, or XPLM_NO_PLUGIN_ID with the
// reason in error (not found, no entry point, an undefined symbol, start refused). A plug-in that refuses
// to be enabled stays loaded without callbacks.
XPLMPluginID LoadPlugin(const std::string &libraryPath, std::string &error);

// Calls XPluginDisable and XPluginStop, then closes the library, so that loading it again starts with
// fresh globals. Drops what the simulator drops with a plug-in.
void UnloadPlugin(XPLMPluginID plugin);

// What a stopped plug-in left registered that the simulator would still call (flight loops, draw callbacks,
// key sniffers, data accessors: errors) or drops itself (command handlers, widgets, windows, menus: notes),
// as found by the last UnloadPlugin.
struct LeftBehind {
    std::vector<std::string> errors;
    std::vector<std::string> notes;
};
const LeftBehind &LastLeftBehind();

// Who is running: set around every call into a plug-in, so that a registration has an owner and a crash
// or a hang can be reported by name. doing is a short phrase such as "flight loop" or "XPluginStop".
struct Running {
    XPLMPluginID plugin = XPLM_PLUGIN_XPLANE;
    const char *doing = "";
};
Running CurrentlyRunning();

class RunningScope {
public:
    RunningScope(XPLMPluginID plugin, const char *doing);
    ~RunningScope();
    RunningScope(const RunningScope &) = delete;
    RunningScope &operator=(const RunningScope &) = delete;

private:
    Running before;
};

// "Velmora Fennic plugin", or "simulator" for XPLM_PLUGIN_XPLANE; "plug-in N" while it has no name.
std::string PluginName(XPLMPluginID plugin);

// Sends a message of the simulator to every enabled plug-in.
void BroadcastMessage(int message, void *parameter);

// The stand-in for the dataref browser, a plug-in with the signature
// "xplanesdk.examples.DataRefEditor" that a flight switches on; it keeps the names it is told with message
// 0x01000000.
void SwitchDatarefBrowser(bool on);
std::vector<std::string> TakeNamesToldToDatarefBrowser();

} // namespace simhost
