// An aircraft's folder as the plug-in would find it, for programs that read its files without flying.
#pragma once

#include <string>

namespace simhost {

// Makes a fresh simulator in which this program poses as the plug-in installed in the folder: the aircraft's,
// or the plug-in's own, which holds systems/ or sys.txt. With a simulator's folder its lists of datarefs and
// commands are read. Returns the plug-in's folder, absolute and ending in "/"; empty, with the reason on
// stderr, when there are no systems files or lists.
std::string EnterFolder(const std::string &folder, const std::string &xplaneFolder = "");

} // namespace simhost
