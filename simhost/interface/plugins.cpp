// The loaded plug-ins. Each call into one runs in a RunningScope, which is how a registration finds its
// owner; that also holds for calls that a library's static initialisers make while it is being opened.
#include "simhost/interface/plugins.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <memory>
#include <set>

#include "simhost/drawing/system_libraries.h"
#include "simhost/flights/watchdog.h"
#include "simhost/modules.h"
#include "simhost/simulator.h"
#include "simhost/system.h"
#include "simhost/widgets/widgets.h"
#include "simhost/windows/windows.h"

namespace simhost {

constinit Running currentRunning;

namespace {

struct EntryPoints {
    int (*start)(char *, char *, char *) = nullptr;
    void (*stop)() = nullptr;
    int (*enable)() = nullptr;
    void (*disable)() = nullptr;
    void (*receiveMessage)(XPLMPluginID, int, void *) = nullptr;
};

struct Plugin {
    XPLMPluginID id = XPLM_NO_PLUGIN_ID;
    std::string path, name, signature, description;
    void *library = nullptr; // null: the program itself, or the stand-in of the dataref browser
    EntryPoints entryPoints; // all set, or none
    bool isEnabled = false;
    std::set<std::string> enabledFeatures;
    XPLMError_f errorCallback = nullptr;
};

constexpr std::size_t PluginInfoSize = 256; // of every buffer with a plug-in's texts, zero included

constexpr const char *DatarefBrowserSignature = "xplanesdk.examples.DataRefEditor";
constexpr int DatarefBrowserMessage = 0x01000000; // parameter: the dataref's name
constexpr const char *OfferedFeatures[] = {"XPLM_USE_NATIVE_PATHS"};

std::vector<std::unique_ptr<Plugin>> &Plugins() {
    static auto &plugins = *new std::vector<std::unique_ptr<Plugin>>;
    return plugins;
}

constinit XPLMPluginID lastPluginId = XPLM_PLUGIN_XPLANE; // ids are not used twice
constinit XPLMPluginID datarefBrowser = XPLM_NO_PLUGIN_ID;

std::vector<std::string> &NamesTold() {
    static auto &names = *new std::vector<std::string>;
    return names;
}

LeftBehind &LeftBehindStore() {
    static auto &leftBehind = *new LeftBehind;
    return leftBehind;
}

Plugin *FindPlugin(XPLMPluginID id) {
    for (const auto &plugin : Plugins()) {
        if (plugin->id == id) return plugin.get();
    }
    return nullptr;
}

Plugin &AddPlugin(const std::string &path) {
    Plugin &plugin = *Plugins().emplace_back(std::make_unique<Plugin>());
    plugin.id = ++lastPluginId;
    plugin.path = path;
    return plugin;
}

void RemovePlugin(XPLMPluginID id) {
    std::erase_if(Plugins(), [&](const auto &plugin) { return plugin->id == id; });
    if (currentRunning.plugin == id) currentRunning = {};
}

LeftBehind DropRegistrations(XPLMPluginID id) {
    LeftBehind leftBehind;
    DropFlightLoops(id, leftBehind);
    DropDrawCallbacks(id, leftBehind);
    DropAccessors(id, leftBehind);
    DropCommandHandlers(id, leftBehind);
    DropMenus(id, leftBehind);
    DropWidgets(id, leftBehind);
    DropWindows(id, leftBehind);
    DropInstances(id, leftBehind);
    DropScenery(id, leftBehind);
    DropCameraControl(id);
    DropPlanes(id);
    return leftBehind;
}

bool isLoaded(const std::string &path) {
    return std::any_of(Plugins().begin(), Plugins().end(),
                       [&](const auto &plugin) { return plugin->library && plugin->path == path; });
}

template <typename Function>
bool FindEntryPoint(void *library, const char *name, Function &function, std::string &missing) {
    function = reinterpret_cast<Function>(FindInLibrary(library, name));
    if (!function) missing += (missing.empty() ? "" : ", ") + std::string(name);
    return function != nullptr;
}

std::string MissingEntryPoints(void *library, EntryPoints &entryPoints) {
    std::string missing;
    FindEntryPoint(library, "XPluginStart", entryPoints.start, missing);
    FindEntryPoint(library, "XPluginStop", entryPoints.stop, missing);
    FindEntryPoint(library, "XPluginEnable", entryPoints.enable, missing);
    FindEntryPoint(library, "XPluginDisable", entryPoints.disable, missing);
    FindEntryPoint(library, "XPluginReceiveMessage", entryPoints.receiveMessage, missing);
    return missing;
}

// Closes the library, whose destructors may still call the interface, and forgets the plug-in. False when the
// library stays in memory for all that.
bool CloseLibrary(XPLMPluginID id) {
    const Plugin *plugin = FindPlugin(id);
    bool isGone = true;
    if (plugin->library) {
        RunningScope scope(id, "being unloaded");
        ReleaseLibrary(plugin->library);
        isGone = !isInMemory(plugin->path);
    }
    DropRegistrations(id);
    RemovePlugin(id);
    return isGone;
}

bool StartPlugin(Plugin &plugin) {
    char name[PluginInfoSize] = "", signature[PluginInfoSize] = "", description[PluginInfoSize] = "";
    int started = 0;
    {
        RunningScope scope(plugin.id, "XPluginStart");
        started = plugin.entryPoints.start(name, signature, description);
    }
    name[PluginInfoSize - 1] = signature[PluginInfoSize - 1] = description[PluginInfoSize - 1] = '\0';
    plugin.name = name;
    plugin.signature = signature;
    plugin.description = description;
    return started != 0;
}

bool EnablePlugin(Plugin &plugin) {
    if (plugin.isEnabled || !plugin.entryPoints.enable) return plugin.isEnabled;
    RunningScope scope(plugin.id, "XPluginEnable");
    plugin.isEnabled = plugin.entryPoints.enable() != 0;
    return plugin.isEnabled;
}

void DisablePlugin(Plugin &plugin) {
    if (!plugin.isEnabled || !plugin.entryPoints.disable) return;
    RunningScope scope(plugin.id, "XPluginDisable");
    plugin.entryPoints.disable();
    plugin.isEnabled = false;
}

void Deliver(const Plugin &plugin, XPLMPluginID from, int message, void *parameter) {
    if (!plugin.isEnabled) return;
    if (plugin.id == datarefBrowser && message == DatarefBrowserMessage && parameter) {
        NamesTold().emplace_back(static_cast<const char *>(parameter));
    }
    if (!plugin.entryPoints.receiveMessage) return;
    RunningScope scope(plugin.id, "XPluginReceiveMessage");
    plugin.entryPoints.receiveMessage(from, message, parameter);
}

// To every enabled plug-in; one that goes away meanwhile is passed over.
void DeliverToAll(XPLMPluginID from, int message, void *parameter) {
    std::vector<XPLMPluginID> ids;
    for (const auto &plugin : Plugins()) ids.push_back(plugin->id);
    for (XPLMPluginID id : ids) {
        if (const Plugin *plugin = FindPlugin(id)) Deliver(*plugin, from, message, parameter);
    }
}

} // namespace

RunningScope::RunningScope(XPLMPluginID plugin, const char *doing) : before(currentRunning) {
    currentRunning = {plugin, doing};
    flightRecord->running = currentRunning;
    if (plugin != XPLM_PLUGIN_XPLANE) flightRecord->lastOfPlugin = currentRunning;
}

RunningScope::~RunningScope() {
    currentRunning = before;
    flightRecord->running = before;
}

Running CurrentlyRunning() {
    return currentRunning;
}

XPLMPluginID LoadPlugin(const std::string &libraryPath, std::string &error) {
    error.clear();
    const std::string path = std::filesystem::absolute(libraryPath).lexically_normal().generic_string();
    // XPLMGetPluginInfo could only tell such a plug-in a part of where it lies.
    if (path.size() >= PluginInfoSize) error = path + " is too long a path for a plug-in";
    if (error.empty() && isLoaded(path)) error = path + " is loaded already";
    if (!error.empty()) return XPLM_NO_PLUGIN_ID;

    Plugin &plugin = AddPlugin(path);
    const XPLMPluginID id = plugin.id;
    {
        RunningScope scope(id, "being loaded");
        LoadOpenGl(); // most plug-ins are linked with it
        plugin.library = OpenLibrary(path, error);
    }
    if (error.empty()) {
        const std::string missing = MissingEntryPoints(plugin.library, plugin.entryPoints);
        if (!missing.empty()) error = path + " is no plug-in: it does not export " + missing;
    }
    if (error.empty() && !StartPlugin(plugin)) {
        error = PluginName(id) + " refused to start: XPluginStart returned 0";
    }
    if (!error.empty()) {
        DropRegistrations(id);
        CloseLibrary(id);
        return XPLM_NO_PLUGIN_ID;
    }
    if (!EnablePlugin(plugin)) {
        WriteLog(PluginName(id) + " did not let itself be enabled: XPluginEnable returned 0");
    }
    return id;
}

void UnloadPlugin(XPLMPluginID id) {
    LeftBehindStore() = {};
    Plugin *plugin = FindPlugin(id);
    if (!plugin) return;
    DisablePlugin(*plugin);
    if (plugin->entryPoints.stop) {
        RunningScope scope(id, "XPluginStop");
        plugin->entryPoints.stop();
    }
    plugin->isEnabled = false;
    FlushLog();
    LeftBehindStore() = DropRegistrations(id);
    if (!CloseLibrary(id)) {
        LeftBehindStore().notes.emplace_back(
            "the library, which stayed in memory after it was closed: loaded "
            "again, its globals will not be fresh");
    }
}

const LeftBehind &LastLeftBehind() {
    return LeftBehindStore();
}

void ActAsPlugin(const std::string &libraryPath) {
    Plugin &plugin = AddPlugin(libraryPath);
    plugin.isEnabled = true;
    currentRunning = {plugin.id, ProgramItself};
}

void ResetPlugins() {
    while (!Plugins().empty()) UnloadPlugin(Plugins().back()->id);
    LeftBehindStore() = {};
    NamesTold().clear();
    lastPluginId = XPLM_PLUGIN_XPLANE;
    datarefBrowser = XPLM_NO_PLUGIN_ID;
    currentRunning = {};
}

bool isPluginEnabled(XPLMPluginID id) {
    if (id == XPLM_PLUGIN_XPLANE) return true;
    const Plugin *plugin = FindPlugin(id);
    return plugin && plugin->isEnabled;
}

std::string PluginPath(XPLMPluginID id) {
    const Plugin *plugin = FindPlugin(id);
    return plugin ? plugin->path : std::string();
}

std::string PluginName(XPLMPluginID id) {
    if (id == XPLM_PLUGIN_XPLANE) return "simulator";
    const Plugin *plugin = FindPlugin(id);
    return plugin && !plugin->name.empty() ? plugin->name : "plug-in " + std::to_string(id);
}

void BroadcastMessage(int message, void *parameter) {
    DeliverToAll(XPLM_PLUGIN_XPLANE, message, parameter);
}

void ReportMisuse(const std::string &what) {
    WriteLog(PluginName(currentRunning.plugin) + ": " + what);
    const Plugin *plugin = FindPlugin(currentRunning.plugin);
    if (plugin && plugin->errorCallback) plugin->errorCallback(what.c_str());
}

void SetErrorCallback(void (*callback)(const char *message)) {
    if (Plugin *plugin = FindPlugin(currentRunning.plugin)) plugin->errorCallback = callback;
}

void SwitchDatarefBrowser(bool on) {
    if (on == (datarefBrowser != XPLM_NO_PLUGIN_ID)) return;
    if (!on) {
        RemovePlugin(datarefBrowser);
        datarefBrowser = XPLM_NO_PLUGIN_ID;
        return;
    }
    Plugin &plugin = AddPlugin(XplaneFolder() + "Resources/plugins/DataRefEditor/64/" + LibraryName);
    plugin.name = "DataRefEditor";
    plugin.signature = DatarefBrowserSignature;
    plugin.description = "Lists datarefs";
    plugin.isEnabled = true;
    datarefBrowser = plugin.id;
}

std::vector<std::string> TakeNamesToldToDatarefBrowser() {
    std::vector<std::string> taken;
    taken.swap(NamesTold());
    return taken;
}

} // namespace simhost

using namespace simhost;

XPLMPluginID XPLMGetMyID(void) {
    return currentRunning.plugin;
}

int XPLMCountPlugins(void) {
    return static_cast<int>(Plugins().size());
}

XPLMPluginID XPLMGetNthPlugin(int inIndex) {
    if (inIndex < 0 || inIndex >= XPLMCountPlugins()) return XPLM_NO_PLUGIN_ID;
    return Plugins()[static_cast<std::size_t>(inIndex)]->id;
}

XPLMPluginID XPLMFindPluginByPath(const char *inPath) {
    for (const auto &plugin : Plugins()) {
        if (inPath && PathForPlugin(plugin->path) == inPath) return plugin->id;
    }
    return XPLM_NO_PLUGIN_ID;
}

XPLMPluginID XPLMFindPluginBySignature(const char *inSignature) {
    for (const auto &plugin : Plugins()) {
        if (inSignature && plugin->signature == inSignature) return plugin->id;
    }
    return XPLM_NO_PLUGIN_ID;
}

void XPLMGetPluginInfo(XPLMPluginID inPlugin, char *outName, char *outFilePath, char *outSignature,
                       char *outDescription) {
    const Plugin *plugin = FindPlugin(inPlugin);
    const bool isSimulator = inPlugin == XPLM_PLUGIN_XPLANE;
    CopyText(plugin ? plugin->name : isSimulator ? "X-Plane" : "", outName, PluginInfoSize);
    CopyText(PathForPlugin(plugin        ? plugin->path
                           : isSimulator ? XplaneFolder()
                                         : ""),
             outFilePath, PluginInfoSize);
    CopyText(plugin ? plugin->signature : "", outSignature, PluginInfoSize);
    CopyText(plugin ? plugin->description : "", outDescription, PluginInfoSize);
}

int XPLMIsPluginEnabled(XPLMPluginID inPluginID) {
    return isPluginEnabled(inPluginID) ? 1 : 0;
}

int XPLMEnablePlugin(XPLMPluginID inPluginID) {
    Plugin *plugin = FindPlugin(inPluginID);
    return plugin && EnablePlugin(*plugin) ? 1 : 0;
}

void XPLMDisablePlugin(XPLMPluginID inPluginID) {
    if (Plugin *plugin = FindPlugin(inPluginID)) DisablePlugin(*plugin);
}

void XPLMReloadPlugins(void) {
    ReportNotOffered(__func__);
}

void XPLMSendMessageToPlugin(XPLMPluginID inPlugin, int inMessage, void *inParam) {
    const XPLMPluginID from = currentRunning.plugin;
    if (inPlugin == XPLM_NO_PLUGIN_ID) {
        DeliverToAll(from, inMessage, inParam);
    } else if (const Plugin *plugin = FindPlugin(inPlugin)) {
        Deliver(*plugin, from, inMessage, inParam);
    }
}

int XPLMHasFeature(const char *inFeature) {
    return inFeature
                   && std::any_of(std::begin(OfferedFeatures), std::end(OfferedFeatures),
                                  [&](const char *feature) { return std::strcmp(feature, inFeature) == 0; })
               ? 1
               : 0;
}

int XPLMIsFeatureEnabled(const char *inFeature) {
    const Plugin *plugin = FindPlugin(currentRunning.plugin);
    return inFeature && plugin && plugin->enabledFeatures.contains(inFeature) ? 1 : 0;
}

void XPLMEnableFeature(const char *inFeature, int inEnable) {
    Plugin *plugin = FindPlugin(currentRunning.plugin);
    if (!plugin || !XPLMHasFeature(inFeature)) return;
    if (inEnable) {
        plugin->enabledFeatures.insert(inFeature);
    } else {
        plugin->enabledFeatures.erase(inFeature);
    }
}

void XPLMEnumerateFeatures(XPLMFeatureEnumerator_f inEnumerator, void *inRef) {
    if (!inEnumerator) return;
    for (const char *feature : OfferedFeatures) inEnumerator(feature, inRef);
}
