// Paths as the simulator reports them, with slashes. A call costs a few string operations and is
// meant for loading and saving, not for a frame.
#include "util/paths.h"

#include <cstring>

#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMUtilities.h"
#include "util/platform.h"

namespace {

const size_t PathSize = 2048;       // the simulator asks for 256 and 512
const size_t LibraryNameLength = 7; // "mac.xpl", "lin.xpl", "win.xpl"
const char *const NativePaths = "XPLM_USE_NATIVE_PATHS";

// False when only a part of the path fits.
bool CopyPath(const char *in, char *out, size_t size) {
    const size_t length = strnlen(in, size);
    const size_t count = length < size ? length : size - 1;
    std::memcpy(out, in, count);
    out[count] = '\0';
    return count == length;
}

std::string Converted(const char *native) {
    char path[PathSize] = "";
    ConvertPath(native, path, PathSize);
    return path;
}

std::string WithSeparator(std::string folder) {
    if (folder.empty() || folder.back() != '/') folder += '/';
    return folder;
}

std::string LibraryPath() {
    char native[PathSize] = "";
    XPLMGetPluginInfo(XPLMGetMyID(), nullptr, native, nullptr, nullptr);
    return Converted(native);
}

} // namespace

void UseNativePaths() {
    if (XPLMHasFeature(NativePaths)) XPLMEnableFeature(NativePaths, 1);
}

int ConvertPath(const char *in, char *out, size_t size) {
    if (!in || !out || size == 0) return -1;
    if (in[0] != '/' && ConvertNativePath(in, out, size) == 0) return 0;
    const bool isWhole = CopyPath(in, out, size);
    return in[0] == '/' && isWhole ? 0 : -1;
}

std::string WhatXplanePath() {
    char native[PathSize] = "";
    XPLMGetSystemPath(native);
    return WithSeparator(Converted(native));
}

std::string WhatPluginPath() {
    std::string path = LibraryPath();
    path.resize(path.size() > LibraryNameLength ? path.size() - LibraryNameLength : 0);
    return path;
}

std::string WhatThisAircraftPath() {
    const std::string path = WhatPluginPath();
    return path.substr(0, path.find("plugins"));
}

std::string WhatThisAircraftAcfPath() {
    char fileName[PathSize] = "";
    char native[PathSize] = "";
    XPLMGetNthAircraftModel(XPLM_USER_AIRCRAFT, fileName, native);
    return Converted(native);
}

std::string WhatAircraftsPath() {
    return WhatPluginPath() + "Aircrafts/";
}

std::string MakePath(const std::string &relative) {
    const std::string path = LibraryPath();
    return path.substr(0, path.find_last_of('/') + 1) + relative;
}
