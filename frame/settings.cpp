// The settings file. Keys are found anywhere in a line, and the first of the table below that a line holds
// decides: "installation=11" is therefore read as 1, and name lines count for the current gender only when
// the gender line came before them, which is the order they are written in.
#include "frame/settings.h"

#include <vector>

#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

std::string globalGender;
std::string globalPosFolder;
std::string globalIBMVoiceW, globalIBMVoiceM;
std::string globalAPLVoiceW, globalAPLVoiceM;
std::string globalVoiceW, globalVoiceM;
int globalVolume = 100;
int globalRate = 50;
std::string globalNameW, globalNameM;
std::string globalName;
std::string globalSizeW, globalSizeM;
std::string globalSir;
std::string globalUser;
std::string globalCheckDrfName;
int widgetOffsetY = 10;
int InstallationState = InstallationMissing;

namespace {

const char *const SettingsFile = "data/settings_mac.txt";
const char *const SettingsFileKept = "data/settings_mac.txt.kept";
const int DefaultOffsetY = 10;

bool isFileOurs = false; // what it holds was read, or written here, so that it may be replaced

// What is being read, for messages.
struct SettingsLine {
    const std::string &file;
    int number;
    const std::string &value;
};

void SetGender(const SettingsLine &line) {
    if (line.value != "w" && line.value != "m") return;
    globalGender = line.value;
    globalPosFolder = "positions-" + line.value + "/";
}

void SetAPLVoiceW(const SettingsLine &line) {
    globalAPLVoiceW = globalVoiceW = line.value;
}

void SetAPLVoiceM(const SettingsLine &line) {
    globalAPLVoiceM = globalVoiceM = line.value;
}

void SetNameW(const SettingsLine &line) {
    globalNameW = line.value;
    if (globalGender == "w") globalName = line.value;
}

void SetNameM(const SettingsLine &line) {
    globalNameM = line.value;
    if (globalGender == "m") globalName = line.value;
}

void SetNumber(int &setting, const char *key, const SettingsLine &line) {
    if (!ParseInt(line.value, setting))
        LogDroppedLine(line.file, line.number, NoNumber(key, line.value), key);
}

// The offset is not taken over: every start begins at the default height.
void SetOffsetY(const SettingsLine &line) {
    if (isNumber(line.value)) widgetOffsetY = DefaultOffsetY;
}

struct SettingsKey {
    const char *text;
    void (*set)(const SettingsLine &line);
};

// In order of precedence.
const SettingsKey Keys[] = {
    {"gender=", SetGender},
    {"IBMvoice-w=", [](const SettingsLine &line) { globalIBMVoiceW = line.value; }},
    {"IBMvoice-m=", [](const SettingsLine &line) { globalIBMVoiceM = line.value; }},
    {"APLvoice-w=", SetAPLVoiceW},
    {"APLvoice-m=", SetAPLVoiceM},
    {"volume=", [](const SettingsLine &line) { SetNumber(globalVolume, "volume=", line); }},
    {"rate=", [](const SettingsLine &line) { SetNumber(globalRate, "rate=", line); }},
    {"installation=-1", [](const SettingsLine &) { InstallationState = InstallationRemoved; }},
    {"installation=0", [](const SettingsLine &) { InstallationState = InstallationMissing; }},
    {"installation=1", [](const SettingsLine &) { InstallationState = InstallationPutOff; }},
    {"installation=2", [](const SettingsLine &) { InstallationState = InstallationReady; }},
    {"name-w=", SetNameW},
    {"name-m=", SetNameM},
    {"size-m=", [](const SettingsLine &line) { globalSizeM = line.value; }},
    {"size-w=", [](const SettingsLine &line) { globalSizeW = line.value; }},
    {"sign=", [](const SettingsLine &line) { globalSir = line.value; }},
    {"user=", [](const SettingsLine &line) { globalUser = line.value; }},
    {"checkdrf=", [](const SettingsLine &line) { globalCheckDrfName = line.value; }},
    {"txtoffset=", SetOffsetY},
};

// The file to read, relative to the plug-in's folder; empty when no folder has the pair. While the system
// does not say whether the partner is there, nobody knows whether the file would have been read.
std::string FindSettingsFile(const std::string &pluginFolder) {
    for (const std::string folder : {"data/", "custom/"}) {
        const std::string partner = pluginFolder + folder + "settings_win.txt";
        const bool hasPartner = isFileExistString(partner) == 1;
        if (!hasPartner && WhatIsAt(partner) != Presence::Absent)
            KeepUntilNextStart(pluginFolder + SettingsFile);
        if (hasPartner && isFileExistString(pluginFolder + folder + "settings_mac.txt"))
            return folder + "settings_mac.txt";
    }
    return "";
}

// An aircraft update that replaced the figure's object takes the setup back, so that it is offered again.
void CheckInstalledObject(const std::string &pluginFolder) {
    const std::string installed = WhatThisAircraftPath() + "objects/kvfennic.obj";
    const std::string shipped = pluginFolder + "data/obj/kvfennic.obj";
    if (InstallationState != InstallationReady) return;
    std::vector<FileLine> installedLines, shippedLines;
    if (ReadLines(installed, installedLines, ObjectFile) != Reading::Read) return;
    if (ReadLines(shipped, shippedLines, ObjectFile) != Reading::Read) return;
    if (installedLines.size() != shippedLines.size()) InstallationState = InstallationMissing;
}

// The settings of a file without its partner are not read, and the defaults take its place all the same.
// What it holds goes into a copy, the first time; false when that fails.
bool KeepUnreadSettings(const std::string &pluginFolder) {
    const std::string file = pluginFolder + SettingsFile, kept = pluginFolder + SettingsFileKept;
    if (isFileOurs || WhatIsAt(file) != Presence::Present || WhatIsAt(kept) == Presence::Present) return true;
    if (!copyFile(file, kept)) return false;
    LogFileProblem("Settings were not read, since settings_win.txt is not beside them - kept in ", kept);
    return true;
}

} // namespace

void ReadSettings() {
    isFileOurs = false;
    const std::string pluginFolder = WhatPluginPath();
    const std::string file = FindSettingsFile(pluginFolder);
    if (file.empty()) return;
    std::vector<FileLine> lines;
    if (ReadLines(pluginFolder + file, lines) != Reading::Read) return;
    isFileOurs = file == SettingsFile;
    for (const FileLine &line : lines) {
        for (const SettingsKey &key : Keys) {
            if (!Contains(line.text, key.text)) continue;
            const std::string value = ReplaceString(RemoveNRS(line.text), key.text, "");
            key.set({file, line.number, value});
            break;
        }
    }
    if (!lines.empty()) CheckInstalledObject(pluginFolder);
}

void SaveSettings() {
    if (globalGender == "w")
        globalAPLVoiceW = globalVoiceW;
    else
        globalAPLVoiceM = globalVoiceM;

    std::string content;
    const auto write = [&content](const char *key, const std::string &value) {
        content += key + value + "\r\n";
    };
    write("gender=", globalGender);
    write("APLvoice-w=", globalAPLVoiceW);
    write("APLvoice-m=", globalAPLVoiceM);
    write("IBMvoice-w=", globalIBMVoiceW);
    write("IBMvoice-m=", globalIBMVoiceM);
    write("volume=", int2string(globalVolume));
    write("rate=", int2string(globalRate));
    write("name-w=", globalNameW);
    write("name-m=", globalNameM);
    write("size-w=", globalSizeW);
    write("size-m=", globalSizeM);
    write("sign=", globalSir);
    write("user=", globalUser);
    write("checkdrf=", globalCheckDrfName);
    write("txtoffset=", int2string(widgetOffsetY));
    write("installation=", int2string(InstallationState));
    content += "\r\n";
    const std::string pluginFolder = WhatPluginPath();
    if (!KeepUnreadSettings(pluginFolder)) return;
    isFileOurs |= WriteWholeFile(pluginFolder + SettingsFile, content);
}

void ResetSettings() {
    MakeFresh(globalGender, globalPosFolder, globalIBMVoiceW, globalIBMVoiceM, globalAPLVoiceW);
    MakeFresh(globalAPLVoiceM, globalVoiceW, globalVoiceM, globalNameW, globalNameM, globalName);
    MakeFresh(globalSizeW, globalSizeM, globalSir, globalUser, globalCheckDrfName);
    globalVolume = 100;
    globalRate = 50;
    widgetOffsetY = DefaultOffsetY;
    InstallationState = InstallationMissing;
    isFileOurs = false;
}
