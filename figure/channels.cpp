// The table of channels. Its order is what positions, presets and the figure object rely on, so a line is
// dropped only when nothing else can be done with it.
#include "figure/channels.h"

#include "frame/datarefs.h"
#include "frame/settings.h"
#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

FigureChannelsState figureChannels;

namespace {

// What the dataref holds that was published last.
float *Published(XPLMDataRef handle) {
    return handle ? &DRFs[DRFcounter].floatValue : nullptr;
}

void AddChannel(const std::string &name) {
    structAnim &channel = anim.emplace_back();
    channel.name = name;
    const char *const axisNames[AxisCount] = {"_x", "_y", "_z"};
    for (int axis = 0; axis < AxisCount; axis++) {
        channel.dataref[axis] = CreateDrf_Float("kv/fo/" + name + axisNames[axis], 0.0F);
        channel.published[axis] = Published(channel.dataref[axis]);
    }
}

void AddChannels(const std::string &path) {
    for (const FileLine &line : ReadFileLines(path)) {
        std::string text = line.text;
        std::erase_if(text, [](char c) { return c == ' ' || c == '\t'; });
        const std::vector<std::string> fields = StringToWordsArray(text, ',');
        if (fields.size() < 2 || fields[1].empty()) {
            LogDroppedLine(path, line.number, "no channel name", line.text);
            continue;
        }
        AddChannel(fields[1]);
    }
}

int GenderFromSettings() {
    return globalGender == "m" ? 1 : 0;
}

// The settings' look of the figure in use.
std::string &LookInUse() {
    return globalGender == "m" ? settings.lookM : settings.lookW;
}

int LookFromSettings() {
    int look = 1;
    return ParseInt(LookInUse(), look) && look >= 1 && look <= FigureLooks ? look - 1 : 0;
}

} // namespace

void LoadAnimationFile(const std::string &path) {
    anim.clear();
    if (isFileExistString(path))
        AddChannels(path);
    else
        LogFileProblem("!!! Error: Cant read file ", path);

    DRFf_DeltaHdg2Fo = CreateDrf_Float("kv/fo/delta_hdg2fo", 360.0F);
    DRFf_EyesX = CreateDrf_Float("kv/fo/_eyes_x", 360.0F);
    figureChannels.publishedEyes[0] = Published(DRFf_EyesX);
    DRFf_EyesY = CreateDrf_Float("kv/fo/_eyes_y", 360.0F);
    figureChannels.publishedEyes[1] = Published(DRFf_EyesY);
    DRFi_Glass = CreateDrf_Int("kv/fo/_glass", 1);
    DRFi_ShowPlanshet = CreateDrf_Int("kv/fo/_planshet", 0);
    DRFi_Face = CreateDrf_Int("kv/fo/_face", 0);
    DRFi_ShowFennic = CreateDrf_Int("kv/fo/_show", 1);
    DRFi_Baro100 = CreateDrf_Int("kv/fo/baro100", 0);
    DRFi_BaroCheck = CreateDrf_Int("kv/fo/baro_check", 0);
    figureChannels.gender = CreateDrf_Int("kv/fo/_gender", GenderFromSettings());
    figureChannels.look = CreateDrf_Int("kv/fo/_look", LookFromSettings());
    figureChannels.showPad = CreateDrf_Int("kv/fo/_pad", 0);
    figureChannels.mouth = CreateDrf_Int("kv/fo/_mouth", 0);
}

void ReadObjFileForDatarefs(const std::string &path) {
    anim.clear();
    if (!isFileExistString(path)) {
        LogFileProblem("!!! Error: Cant read file ", path);
        return;
    }
    const std::string prefix = "kv/fo/", living = "shown/", axis = "_x";
    for (const FileLine &line : ReadFileLines(path)) {
        if (!line.text.starts_with("ANIM_")) continue;
        const std::string dataref = StringToWordsArray(line.text, ' ').back();
        if (!dataref.starts_with("kv/") || dataref.size() <= prefix.size() + axis.size()) continue;
        std::string name = dataref.substr(prefix.size(), dataref.size() - prefix.size() - axis.size());
        if (name.starts_with(living)) name.erase(0, living.size());
        if (anim.empty() || anim.back().name != name) AddChannel(name);
    }
}

void SaveAnimationFile() {
    std::string text;
    for (size_t i = 0; i < anim.size(); i++)
        text += int2string(static_cast<int>(i)) + "," + anim[i].name + "\r\n";
    WriteWholeFile(WhatPluginPath() + "/data/obj/fennic.txt", text);
}

void ShowPerson() {
    XPLMSetDatai(figureChannels.gender, GenderFromSettings());
    XPLMSetDatai(figureChannels.look, LookFromSettings());
}

void ChooseLook(int look) {
    LookInUse() = int2string(look + 1);
    XPLMSetDatai(figureChannels.look, look);
}

void ResetChannels() {
    MakeFresh(figureChannels);
}
