// The folder is used where it lies; reading it writes nothing.
#include "authoring/check/folder.h"

#include <cstdio>
#include <filesystem>

#include "frame/commands.h"
#include "simhost/simulator.h"
#include "simhost/world/simulator_lists.h"
#include "util/clock.h"
#include "voice/speech_link.h"

namespace simhost {

namespace {

namespace fs = std::filesystem;

bool hasSystems(const fs::path &folder) {
    std::error_code failed;
    return fs::exists(folder / "systems", failed) || fs::exists(folder / "sys.txt", failed);
}

// The folder that holds the systems files, ending in "/"; empty when there is none.
std::string FindPluginFolder(const std::string &folder) {
    std::error_code failed;
    const fs::path base = fs::absolute(folder, failed).lexically_normal();
    if (hasSystems(base)) return (base / "").lexically_normal().generic_string();
    for (const auto &plugin : fs::directory_iterator(base / "plugins", failed))
        if (hasSystems(plugin.path() / "64"))
            return (plugin.path() / "64" / "").lexically_normal().generic_string();
    return "";
}

} // namespace

std::string EnterFolder(const std::string &folder, const std::string &xplaneFolder) {
    std::string pluginFolder = FindPluginFolder(folder);
    if (pluginFolder.empty()) {
        std::fprintf(stderr, "fennic-sim: no systems files in %s\n", folder.c_str());
        return "";
    }
    ResetSimulator();
    std::string error;
    if (!xplaneFolder.empty() && !ReadSimulatorLists(xplaneFolder, error)) {
        std::fprintf(stderr, "fennic-sim: %s\n", error.c_str());
        return "";
    }
    SetFolders("", pluginFolder, ""); // no simulator, so that no log is written
    ActAsPlugin(pluginFolder + "lin.xpl");
    FindSimulatorDatarefs();
    CreateSpeechDatarefs();
    CustCommInit();
    return pluginFolder;
}

} // namespace simhost
