// The scratch copy of an aircraft. Links are followed, so that nothing that a flight writes can reach the
// original; who watches over the flight removes the copy whatever happens.
#include "simhost/world/aircraft_folder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "simhost/system.h"

namespace fs = std::filesystem;

namespace simhost {

namespace {

// A folder that leads back into itself through a link would be copied for ever.
constexpr int DeepestFolder = 64;

void CopyFolder(const fs::path &from, const fs::path &to, int depth) {
    if (depth > DeepestFolder)
        throw fs::filesystem_error("folders nested too deep", from,
                                   std::make_error_code(std::errc::too_many_symbolic_link_levels));
    fs::create_directories(to);
    for (const fs::directory_entry &entry : fs::directory_iterator(from)) {
        const fs::path target = to / entry.path().filename();
        if (entry.is_directory()) {
            CopyFolder(entry.path(), target, depth + 1);
        } else if (entry.is_regular_file()) {
            fs::copy_file(entry.path(), target);
            fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add);
        }
    }
}

// A first officer who was never set up would ask for it in every flight, and do nothing until the aircraft is
// loaded again. Settings that say nothing about it, as they ship, count as set up in the copy.
void MarkAsSetUp(const fs::path &settings) {
    std::ifstream in(settings, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    if (!in.is_open() || text.find("installation=") != std::string::npos) return;
    std::ofstream(settings, std::ios::binary | std::ios::app) << "\r\ninstallation=2\r\n";
}

std::vector<fs::path> SortedEntries(const fs::path &folder) {
    std::vector<fs::path> entries;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed))
        entries.push_back(entry->path());
    std::sort(entries.begin(), entries.end());
    return entries;
}

// Of "Resources/plugins/talker/" it is "talker", and "." has a name, too.
std::string NameOfFolder(const fs::path &folder) {
    std::error_code failed;
    const fs::path whole = fs::absolute(folder, failed).lexically_normal();
    return (whole.has_filename() ? whole : whole.parent_path()).filename().generic_string();
}

// A path, or a bare name in the folder; empty when there is none.
std::string FindFolder(const std::string &nameOrPath, const fs::path &folder) {
    std::error_code failed;
    if (fs::is_directory(nameOrPath, failed)) return nameOrPath;
    const fs::path named = folder / nameOrPath;
    const bool isBare = nameOrPath.find('/') == std::string::npos && !nameOrPath.empty();
    return isBare && fs::is_directory(named, failed) ? named.generic_string() : "";
}

} // namespace

std::string FindAircraft(const std::string &nameOrPath, const std::string &programFolder) {
    return FindFolder(nameOrPath, fs::path(programFolder) / "aircraft");
}

std::string FindPlugin(const std::string &nameOrPath, const std::string &programFolder) {
    return FindFolder(nameOrPath, fs::path(programFolder) / "plugins");
}

std::string MakeScratchRoot(std::string &error) {
    return MakeTemporaryFolder("fennic-sim-", error);
}

bool MakeScratchAircraft(const std::string &aircraftFolder, ScratchAircraft &scratch, std::string &error) {
    try {
        const fs::path source = fs::canonical(aircraftFolder);
        scratch.folder = source.filename().generic_string();
        const fs::path root = scratch.root;
        scratch.aircraft = (root / "Aircraft" / scratch.folder).generic_string() + "/";
        for (const char *folder :
             {"Resources/plugins", "Output/preferences", "Custom Data", "Custom Scenery"})
            fs::create_directories(root / folder);
        CopyFolder(source, scratch.aircraft, 0);
        for (const std::string &library : FindPluginLibraries(scratch.aircraft))
            for (const char *folder : {"data", "custom"})
                MarkAsSetUp(fs::path(library).parent_path() / folder / "settings_mac.txt");
    } catch (const fs::filesystem_error &failure) {
        error = failure.what();
        return false;
    }
    return true;
}

std::vector<std::string> FindPluginFolders(const std::string &folder) {
    std::vector<std::string> folders;
    std::error_code failed;
    for (const fs::path &entry : SortedEntries(fs::path(folder) / "plugins"))
        if (fs::is_directory(entry, failed)) folders.push_back(entry.generic_string());
    return folders;
}

std::string FindPluginLibrary(const std::string &pluginFolder) {
    const fs::path folder = pluginFolder, named = NameOfFolder(folder) + ".xpl";
    std::error_code failed;
    for (const fs::path &library : {folder / "64" / LibraryName, folder / LibraryFolder / named})
        if (fs::is_regular_file(library, failed)) return library.generic_string();
    return "";
}

std::vector<std::string> FindPluginLibraries(const std::string &folder) {
    std::vector<std::string> libraries;
    for (const std::string &plugin : FindPluginFolders(folder)) {
        const std::string library = FindPluginLibrary(plugin);
        if (!library.empty()) libraries.push_back(library);
    }
    return libraries;
}

bool AddGlobalPlugin(const std::string &pluginFolder, const std::string &root, std::string &error) {
    try {
        const std::string name = NameOfFolder(pluginFolder);
        const fs::path target = fs::path(root) / "Resources/plugins" / name;
        if (fs::exists(target)) {
            error = "there are two plug-ins called " + name;
            return false;
        }
        CopyFolder(pluginFolder, target, 0);
    } catch (const fs::filesystem_error &failure) {
        error = failure.what();
        return false;
    }
    return true;
}

AircraftFile FindAircraftFile(const std::string &aircraftFolder) {
    static const std::string key = "P acf/_descrip";
    AircraftFile first;
    for (const fs::path &path : SortedEntries(aircraftFolder)) {
        if (path.extension() != ".acf") continue;
        AircraftFile found{path.filename().generic_string(), "", false};
        std::ifstream file(path, std::ios::binary);
        for (std::string line; std::getline(file, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            if (line.compare(0, key.size(), key) != 0) continue;
            if (line.size() > key.size() && line[key.size()] != ' ') continue;
            found.description = line.size() > key.size() ? line.substr(key.size() + 1) : "";
            found.hasDescription = true;
            return found;
        }
        if (first.name.empty()) first = found;
    }
    return first;
}

} // namespace simhost
