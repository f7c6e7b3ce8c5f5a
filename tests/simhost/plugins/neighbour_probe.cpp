// A plug-in to be laid beside others: it prints what happens to it, under the name of the folder that it lies
// in. In a folder called "refuses" it does not want to start.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include "XPLMPlugin.h"
#include "XPLMUtilities.h"

namespace {

std::string folderName;

void Print(const std::string &what) {
    char root[512] = "";
    XPLMGetSystemPath(root);
    const bool isAtHome = std::filesystem::current_path().string() + "/" == root;
    std::printf("%s %s%s\n", folderName.c_str(), what.c_str(), isAtHome ? "" : " in another folder");
}

} // namespace

#define ENTRY extern "C" __attribute__((visibility("default")))

ENTRY int XPluginStart(char *name, char *signature, char *description) {
    char path[256] = "";
    XPLMGetPluginInfo(XPLMGetMyID(), nullptr, path, nullptr, nullptr);
    folderName = std::filesystem::path(path).parent_path().parent_path().filename().string();
    std::strcpy(name, folderName.c_str());
    std::strcpy(signature, ("fennic.test." + folderName).c_str());
    std::strcpy(description, "Prints what happens to it");
    Print("starts");
    return folderName == "refuses" ? 0 : 1;
}

ENTRY void XPluginStop(void) {
    Print("stops");
}

ENTRY int XPluginEnable(void) {
    return 1;
}

ENTRY void XPluginDisable(void) {}

ENTRY void XPluginReceiveMessage(XPLMPluginID from, int message, void *parameter) {
    const bool isOfSimulator = from == XPLM_PLUGIN_XPLANE && parameter == nullptr;
    Print("gets " + std::to_string(message) + (isOfSimulator ? "" : " from somebody"));
}
