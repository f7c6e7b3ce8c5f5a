// The folder may be empty: then it becomes that of a plug-in.
#include "authoring/import/import.h"

#include <cstdio>
#include <filesystem>

#include "XPLMDataAccess.h"
#include "authoring/check/folder.h"
#include "systems/import/clist_folder.h"

namespace simhost {

namespace {

namespace fs = std::filesystem;

// The plug-in's folder in an aircraft's, in the plug-in's own, or the folder itself; with its systems.
fs::path MakePluginFolder(const fs::path &folder) {
    std::error_code failed;
    for (const fs::path &inside : {fs::path("plugins") / "fennic" / "64", fs::path("64")})
        if (fs::exists(folder / inside, failed)) return folder / inside;
    return folder;
}

bool isWholeDataref(const std::string &name) {
    XPLMDataRef const dataref = XPLMFindDataRef(name.substr(0, name.find('[')).c_str());
    constexpr int fractions = xplmType_Float | xplmType_Double | xplmType_FloatArray;
    return dataref && (XPLMGetDataRefTypes(dataref) & fractions) == 0;
}

} // namespace

int ImportChecklists(const ImportOptions &options) {
    const fs::path folder = MakePluginFolder(options.folder);
    std::error_code failed;
    fs::create_directories(folder / "systems", failed);
    const std::string pluginFolder = EnterFolder(folder.string(), options.xplaneFolder);
    if (pluginFolder.empty()) return 2;
    ClistImportOptions import;
    import.isWhole = isWholeDataref;
    ClistImport result;
    std::string reason;
    if (!ImportClistFile(options.clist, pluginFolder, import, result, reason)) {
        std::fprintf(stderr, "fennic-sim: %s\n", reason.c_str());
        fs::remove(folder / "systems", failed); // only when it is empty
        fs::remove(folder, failed);
        return 1;
    }
    for (const ClistNote &note : result.notes)
        std::printf("%s:%d: %s\n", options.clist.c_str(), note.line, note.text.c_str());
    std::printf("%zu checklists with %zu items and %zu of %zu conditions, written to %ssystems/\n",
                result.lists, result.items, result.conditionsTaken, result.conditions, pluginFolder.c_str());
    return 0;
}

} // namespace simhost
