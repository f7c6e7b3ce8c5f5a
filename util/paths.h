// Where the plug-in, its aircraft and the simulator live. Every folder ends in "/".
#pragma once

#include <cstddef>
#include <string>

// Asks the simulator for paths in the system's own form. To be called before anything that asks for a path.
// What refuses goes on giving colon-separated ones on macOS, which are converted.
void UseNativePaths();

// Turns a path as the simulator gives it into one with slashes, "/…" or on Windows "C:/…", of at most size
// bytes with its zero byte: one that begins with "/" is one already. 0, or -1 when it does not fit or cannot
// be converted; out then holds as much of the path as it came.
int ConvertPath(const char *in, char *out, size_t size);

// The simulator's root folder.
std::string WhatXplanePath();

// The folder that holds the plug-in's library and beside it data/, custom/ and systems/.
std::string WhatPluginPath();

// The folder of the aircraft that the plug-in is installed in: the plug-in's folder cut before the first
// "plugins".
std::string WhatThisAircraftPath();

// The path of the loaded aircraft's file (.acf).
std::string WhatThisAircraftAcfPath();

// Plug-in folder + "Aircrafts/".
std::string WhatAircraftsPath();

// The folder of the plug-in's library + relative.
std::string MakePath(const std::string &relative);
