// The settings file. Keys are found anywhere in a line, and the first of the table below that a line holds
// decides: "installation=11" is therefore read as 1, and name lines count for the current gender only when
// the gender line came before them, which is the order they are written in.
#include "frame/settings.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

SettingsState settings;

namespace {

const char *const SettingsFile = "data/settings_mac.txt";
const char *const SettingsFileKept = "data/settings_mac.txt.kept";

void UseGender(const std::string &gender) {
    globalGender = gender;
    globalPosFolder = "positions-" + gender + "/";
}

void TakeGender(const std::string &value, const std::string &) {
    if (value == "w" || value == "m") UseGender(value);
}

void TakeName(std::string &kept, const char *gender, const std::string &value) {
    kept = value;
    if (globalGender == gender) globalName = value;
}

// What stands behind the key need only begin with the number, so 11 is read as 1.
void TakeInstallation(const std::string &, const std::string &behindKey) {
    for (const int state : {InstallationRemoved, InstallationMissing, InstallationPutOff, InstallationReady})
        if (behindKey.starts_with(int2string(state))) InstallationState = state;
}

// The offset is not taken over: every start begins at the default height.
void TakeOffsetY(const std::string &value, const std::string &) {
    if (isNumber(value)) widgetOffsetY = SettingsState().offsetY;
}

const char *NoGender(const std::string &value) {
    return value == "w" || value == "m" ? nullptr : "the gender is \"w\" or \"m\"";
}

const char *NoPercentage(const std::string &value) {
    int percent = 0;
    const bool isOther = ParseInt(value, percent) && (percent < 10 || percent > 100);
    return isOther ? "volume and rate are from 10 to 100" : nullptr;
}

const char *NoInstallation(const std::string &value) {
    for (const char *state : {"-1", "0", "1", "2", "11"})
        if (value == state) return nullptr;
    return "the installation is -1, 0, 1 or 2";
}

const char *NoLook(const std::string &value) {
    for (const char *look : {"1", "2", "3"})
        if (value == look) return nullptr;
    return "a look is 1, 2 or 3";
}

const char *NoSwitch(const std::string &value) {
    return value == "0" || value == "1" ? nullptr : "it is 0 or 1";
}

const SettingsKey Keys[] = {
    {.text = "gender=", .place = 1, .string = &settings.gender, .take = TakeGender, .whyNot = NoGender},
    {.text = "IBMvoice-w=", .place = 4, .string = &settings.voiceIBMw},
    {.text = "IBMvoice-m=", .place = 5, .string = &settings.voiceIBMm},
    {.text = "APLvoice-w=",
     .place = 2,
     .string = &settings.voiceAPLw,
     .take = [](const std::string &value, const std::string &) { globalAPLVoiceW = globalVoiceW = value; }},
    {.text = "APLvoice-m=",
     .place = 3,
     .string = &settings.voiceAPLm,
     .take = [](const std::string &value, const std::string &) { globalAPLVoiceM = globalVoiceM = value; }},
    {.text = "volume=", .place = 6, .number = &settings.volume, .whyNot = NoPercentage},
    {.text = "rate=", .place = 7, .number = &settings.rate, .whyNot = NoPercentage},
    {.text = "installation=",
     .place = 16,
     .number = &settings.installation,
     .take = TakeInstallation,
     .whyNot = NoInstallation},
    {.text = "name-w=",
     .place = 8,
     .string = &settings.nameW,
     .take = [](const std::string &value, const std::string &) { TakeName(globalNameW, "w", value); }},
    {.text = "name-m=",
     .place = 9,
     .string = &settings.nameM,
     .take = [](const std::string &value, const std::string &) { TakeName(globalNameM, "m", value); }},
    {.text = "size-m=", .place = 11, .string = &settings.sizeM},
    {.text = "size-w=", .place = 10, .string = &settings.sizeW},
    {.text = "sign=", .place = 12, .string = &settings.sir},
    {.text = "user=", .place = 13, .string = &settings.user},
    {.text = "checkdrf=", .place = 14, .string = &settings.checkDataref},
    {.text = "txtoffset=", .place = 15, .number = &settings.offsetY, .take = TakeOffsetY},
    {.text = "look-w=", .place = 17, .string = &settings.lookW, .isLeftOut = true, .whyNot = NoLook},
    {.text = "look-m=", .place = 18, .string = &settings.lookM, .isLeftOut = true, .whyNot = NoLook},
    {.text = "lively=", .place = 19, .string = &settings.lively, .isLeftOut = true, .whyNot = NoSwitch},
};

void TakeSetting(const std::string &file, const FileLine &line) {
    for (const SettingsKey &key : Keys) {
        if (!Contains(line.text, key.text)) continue;
        const std::string value = ReplaceString(RemoveNRS(line.text), key.text, "");
        const char *whyNot = key.whyNot && key.string ? key.whyNot(value) : nullptr;
        if (whyNot)
            LogDroppedLine(file, line.number, whyNot, line.text);
        else if (key.take)
            key.take(value, line.text.substr(line.text.find(key.text) + std::strlen(key.text)));
        else if (key.string)
            *key.string = value;
        else if (!ParseInt(value, *key.number))
            LogDroppedLine(file, line.number, NoNumber(key.text, value), line.text);
        return;
    }
    Report({.severity = Severity::Warning,
            .file = file,
            .line = line.number,
            .reason = "there is no such setting",
            .text = line.text});
}

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
    int installedLines = 0, shippedLines = 0;
    if (CountLines(installed, installedLines, ObjectFile) != Reading::Read) return;
    if (CountLines(shipped, shippedLines, ObjectFile) != Reading::Read) return;
    if (installedLines != shippedLines) InstallationState = InstallationMissing;
}

// The settings of a file without its partner, or of one that is no text, are not read, and the defaults take
// its place all the same. What it holds goes into a copy, the first time; false when that fails.
bool KeepUnreadSettings(const std::string &pluginFolder) {
    const std::string file = pluginFolder + SettingsFile, kept = pluginFolder + SettingsFileKept;
    if (settings.isFileOurs || WhatIsAt(file) != Presence::Present || WhatIsAt(kept) == Presence::Present)
        return true;
    if (!copyFile(file, kept)) return false;
    const bool hasPartner = isFileExistString(pluginFolder + "data/settings_win.txt") == 1;
    LogFileProblem(std::string("Settings were not read, since ")
                       + (hasPartner ? "they are no plain text" : "settings_win.txt is not beside them")
                       + " - kept in ",
                   kept);
    return true;
}

} // namespace

std::span<const SettingsKey> SettingsKeys() {
    return Keys;
}

void ReadSettings() {
    settings.isFileOurs = false;
    const std::string pluginFolder = WhatPluginPath();
    const std::string file = FindSettingsFile(pluginFolder);
    if (file.empty()) return;
    std::vector<FileLine> lines;
    if (ReadLines(pluginFolder + file, lines) != Reading::Read) return;
    const auto isBinary = [](const FileLine &line) { return Contains(line.text, std::string_view("\0", 1)); };
    const auto binary = std::find_if(lines.begin(), lines.end(), isBinary);
    if (binary != lines.end()) { // of UTF-16, say, no line means anything
        LogDroppedLine(file, binary->number, "this is no plain text, so the file is not read", binary->text);
        return;
    }
    settings.isFileOurs = file == SettingsFile;
    for (const FileLine &line : lines) TakeSetting(file, line);
    if (lines.empty()) return;
    if (globalGender.empty())
        LogFileProblem(
            "No line gender=w or gender=m in the settings, so there are no positions and no voice: ", file);
    CheckInstalledObject(pluginFolder);
}

void SaveSettings() {
    if (globalGender == "w")
        globalAPLVoiceW = globalVoiceW;
    else
        globalAPLVoiceM = globalVoiceM;

    std::string lines[std::size(Keys)];
    for (const SettingsKey &key : Keys)
        if (!key.isLeftOut || !key.string->empty())
            lines[key.place - 1] = key.text + (key.string ? *key.string : int2string(*key.number)) + "\r\n";
    std::string content;
    for (const std::string &line : lines) content += line;
    content += "\r\n";
    const std::string pluginFolder = WhatPluginPath();
    if (!KeepUnreadSettings(pluginFolder)) return;
    settings.isFileOurs |= WriteWholeFile(pluginFolder + SettingsFile, content);
}

void ChooseGender(const std::string &gender) {
    UseGender(gender);
    globalName = gender == "m" ? globalNameM : globalNameW;
}

void ResetSettings() {
    MakeFresh(settings);
}
