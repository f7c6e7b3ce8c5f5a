// The aircraft that a flight flies: found, copied to a scratch place with a small simulator root around
// it, and removed again.
#pragma once

#include <string>
#include <vector>

namespace simhost {

struct ScratchAircraft {
    std::string root;     // the simulator's folder, ending in "/"; empty: none made
    std::string aircraft; // <root>Aircraft/<folder>/
    std::string folder;   // the aircraft folder's bare name
};

// Where an aircraft lies: a path, or the bare name of a folder in programFolder's "aircraft/". Empty when
// there is no such folder.
std::string FindAircraft(const std::string &nameOrPath, const std::string &programFolder);

// Where a plug-in lies: the same, with "plugins/".
std::string FindPlugin(const std::string &nameOrPath, const std::string &programFolder);

// Makes <temporary folder>/fennic-sim-XXXXXX/. Empty, with the reason in error, when that fails.
std::string MakeScratchRoot(std::string &error);

// Copies the aircraft to <scratch.root>Aircraft/<folder>/ and makes the folders of a simulator root. The copy
// may be written to even where the original may not, and in it the first officer counts as set up when the
// pilot was not asked yet. False with the reason in error.
bool MakeScratchAircraft(const std::string &aircraftFolder, ScratchAircraft &scratch, std::string &error);

// The folders in <folder>/plugins/, in alphabetical order: that of an aircraft, or the simulator's
// "Resources".
std::vector<std::string> FindPluginFolders(const std::string &folder);

// The library of a plug-in's folder: 64/lin.xpl or lin_x64/<name of the folder>.xpl; on macOS mac.xpl and
// mac_x64. Empty when there is neither.
std::string FindPluginLibrary(const std::string &pluginFolder);

// The libraries of <folder>/plugins/, in the order of their folders.
std::vector<std::string> FindPluginLibraries(const std::string &folder);

// Copies a plug-in's folder into the simulator's Resources/plugins/. False with the reason in error, also
// when one of that name lies there already.
bool AddGlobalPlugin(const std::string &pluginFolder, const std::string &root, std::string &error);

// The aircraft file that the simulator would load: the first .acf in alphabetical order that has a line
// "P acf/_descrip", or else the first of all.
struct AircraftFile {
    std::string name; // bare file name, empty when there is none
    std::string description;
    bool hasDescription = false;
};
AircraftFile FindAircraftFile(const std::string &aircraftFolder);

} // namespace simhost
