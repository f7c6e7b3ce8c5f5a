#include "util/nav_data.h"

#include "util/files.h"
#include "util/paths.h"

namespace {

std::string NavDataFolder(const std::string &folder) {
    const std::string root = WhatXplanePath();
    const bool hasUpdate = isFileExistString(root + "Custom Data/GNS430/navdata/cycle_info.txt");
    return root + (hasUpdate ? "Custom Data/" : "Resources/") + folder;
}

} // namespace

std::string WhatNavDataPath() {
    return NavDataFolder("GNS430/navdata/");
}

std::string WhatNavDataProcPath() {
    return NavDataFolder("GNS430/navdata/Proc/");
}
