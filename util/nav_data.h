// Where navigation data lies.
#pragma once

#include <string>

// Navigation data and its procedures: the user's update under "Custom Data/" when it is there, else what
// the simulator ships under "Resources/".
std::string WhatNavDataPath();
std::string WhatNavDataProcPath();
