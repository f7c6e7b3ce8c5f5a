// Where the plug-in, its aircraft, the simulator and the navigation data live. Every folder ends in "/".
#pragma once

#include <string>

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

// Navigation data and its procedures: the user's update under "Custom Data/" when it is there, else what
// the simulator ships under "Resources/".
std::string WhatNavDataPath();
std::string WhatNavDataProcPath();

// The folder of the plug-in's library + relative.
std::string MakePath(const std::string &relative);
