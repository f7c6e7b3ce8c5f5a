// The folder may be empty: then it becomes that of a plug-in.
#include "authoring/import/import.h"

#include <cstdio>
#include <filesystem>

#include "authoring/check/folder.h"
#include "systems/import/clist_folder.h"

namespace simhost {

namespace {

namespace fs = std::filesystem;

// The plug-in's folder in an aircraft's, in the plug-in's own, or the folder itself.
fs::path PluginFolderIn(const fs::path &folder) {
    std::error_code failed;
    for (const fs::path &inside : {fs::path("plugins") / "fennic" / "64", fs::path("64")})
        if (fs::exists(folder / inside, failed)) return folder / inside;
    return folder;
}

} // namespace

int ImportChecklists(const ImportOptions &options) {
    const fs::path folder = PluginFolderIn(options.folder);
    std::error_code failed;
    const bool isMade = fs::create_directories(folder / "systems", failed);
    const std::string pluginFolder = EnterFolder(folder.string(), options.xplaneFolder);
    if (pluginFolder.empty()) return 2;
    ClistImport result;
    std::string reason;
    if (!ImportClistFile(options.clist, pluginFolder, result, reason)) {
        std::fprintf(stderr, "fennic-sim: %s\n", reason.c_str());
        if (isMade) fs::remove(folder / "systems", failed); // only while it is empty
        return 1;
    }
    for (const ClistNote &note : result.notes)
        std::printf("%s:%d: %s\n", options.clist.c_str(), note.line, note.text.c_str());
    std::printf("%zu checklists with %zu items and %zu of %zu conditions, written to %ssystems/\n",
                result.lists, result.items, result.conditionsTaken, result.conditions, pluginFolder.c_str());
    return 0;
}

} // namespace simhost
