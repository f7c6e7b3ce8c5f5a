// Menu handlers run between frames: they change settings, send messages to the speech server, and set what
// the next frame reads.
#include "frame/menu_actions.h"

#include <algorithm>
#include <string>

#include "XPLMDataAccess.h"
#include "figure/animation.h"
#include "figure/channels.h"
#include "figure/dataref_list.h"
#include "figure/liveliness.h"
#include "figure/position_creator.h"
#include "figure/position_creator_tools.h"
#include "figure/positions.h"
#include "figure/seat.h"
#include "figure/setup_dialogs.h"
#include "frame/checklist_import.h"
#include "frame/settings.h"
#include "util/files.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/platform.h"
#include "util/text.h"
#include "voice/action_queue.h"
#include "voice/link_words.h"
#include "voice/phrase_log.h"
#include "voice/recognition.h"
#include "voice/speech_link.h"

MenuActionsState menuActionsState;

namespace {

const int LowestPercent = 10, HighestPercent = 100; // of volume and rate
const int VolumeStep = 10, RateStep = 5;

int StepUp(int percent, int step) {
    return std::min(percent, HighestPercent - step) + step;
}

int StepDown(int percent, int step) {
    return std::max(percent, LowestPercent + step) - step;
}

// The volume reaches the server only when the flight is under way; the rate at once.
void SetVolume(int percent) {
    globalVolume = percent;
    if (isLateFlight()) SendMSG(link_words::Volume + int2string(globalVolume));
}

void SetRate(int percent) {
    globalRate = percent;
    SendMSG(link_words::Rate + int2string(globalRate));
}

void ToggleStepByStep() {
    isNeedStep = isNeedStep ? 0 : 1;
    lockStep = isNeedStep;
}

void SaveSeatAndTell() {
    SendMSG(std::string(link_words::Say)
            + (SaveSeat() ? "My seat is saved. Please reload the aircraft." : "I could not save my seat."));
}

// What each version has brought. The log names the file, for whoever's system opens nothing.
void ShowChanges() {
    const std::string file = WhatPluginPath() + "CHANGELOG.txt";
    if (!isFileExistString(file)) {
        LogFileProblem("FileIO:Cant open file ", file);
        return;
    }
    string2debugString("The changes are in ", file, 1);
    openURL(file);
}

bool isListed(const std::vector<std::string> &list, const std::string &name) {
    return std::find(list.begin(), list.end(), name) != list.end();
}

void LoadPositionOrPreset(const std::string &name) {
    RememberPoseInCreator();
    if (isListed(positionList, name)) {
        LoadPositionFromFile(name);
        SetCurrentPositionName(name);
    }
    if (isListed(presetList, name)) LoadPresetFromFile(name);
}

// The looks are those of tools/figure/looks.cpp.
struct Person {
    const char *looks[FigureLooks];
    const char *other;
};
const Person Persons[] = {
    {{"Brown hair in a knot", "Fair bob, in her fifties", "Dark, black hair in a knot"},
     "A man in her place"},
    {{"Brown hair, forty", "Grey, near retirement", "Dark, with a short beard"}, "A woman in his place"}};

void NameItem(int item, const char *name) {
    XPLMSetMenuItemName(menuActionsState.looks.menu, item, name, 0);
}

void RefreshLooks() {
    const LookItems &items = menuActionsState.looks;
    const Person &person = Persons[globalGender == "m" ? 1 : 0];
    for (int look = 0; look < FigureLooks; look++) NameItem(items.looks[look], person.looks[look]);
    NameItem(items.person, person.other);
    XPLMCheckMenuItem(items.menu, items.lively, isLively() ? xplm_Menu_Checked : xplm_Menu_Unchecked);
}

void ToggleLively() {
    settings.lively = isLively() ? "0" : "";
    RefreshLooks();
}

void ReadPositionsAnew() {
    ReadPositionFolder();
    ReadLiveliness();
}

// The other figure with its name, voice, looks and positions. It takes the pose that is held as its own, or
// one to rest in.
void ChangePerson() {
    ChooseGender(globalGender == "m" ? "w" : "m");
    ShowPerson();
    const std::string &voice = globalGender == "m" ? globalVoiceM : globalVoiceW;
    if (isListed(voiceList, voice)) SendMSG(link_words::SetVoice + voice);
    positionRestList.clear();
    ReadPositionsAnew();
    NextRestPositionTime = 0.0F;
    ExecutePos(std::string(positions.held));
    RefreshLooks();
}

struct MenuAction {
    const char *reference;
    void (*perform)();
};

const MenuAction Actions[] = {
    {"Save Position", SavePositionToFile},
    {"SavePresetL", SavePresetLeftToFile},
    {"SavePresetR", SavePresetRghtToFile},
    {"SaveSeat", SaveSeatAndTell},
    {"Editor", EditorPanel_Create},
    {"Reload Scripts", ReadPositionsAnew},
    {"DataRef List", ReadDrfListFromCockpitAndAcf},
    {"LogPhrases", LogAllPhrases},
    {"Step", ToggleStepByStep},
    {"IncreaseVolume", [] { SetVolume(StepUp(globalVolume, VolumeStep)); }},
    {"DecreaseVolume", [] { SetVolume(StepDown(globalVolume, VolumeStep)); }},
    {"IncreaseRate", [] { SetRate(StepUp(globalRate, RateStep)); }},
    {"DecreaseRate", [] { SetRate(StepDown(globalRate, RateStep)); }},
    {"Look 1", [] { ChooseLook(0); }},
    {"Look 2", [] { ChooseLook(1); }},
    {"Look 3", [] { ChooseLook(2); }},
    {"Person", ChangePerson},
    {"Lively", ToggleLively},
    {"Restart", [] { SendMSG(link_words::Restart); }},
    {"Uninstall", OpenUninstallPrompt},
    {"Setup", SetUpAndTell},
    {"ImportChecklist", ImportChecklist},
};

// An option writes the aircraft's dataref and says so; without the dataref it does neither.
struct OptionAction {
    const char *reference;
    XPLMDataRef *dataref;
    int value;
    const char *message;
};

const OptionAction OptionActions[] = {
    {"AnnSop", &menuActionsState.comments, 0, "say>I will only announce the S O P actions"},
    {"AnnAll", &menuActionsState.comments, 1, "say>I will announce all my actions"},
    {"ExeFnc", &menuActionsState.realMode, 1, "say>I will only perform Pilot Monitoring actions"},
    {"ExeAll", &menuActionsState.realMode, 0, "say>I will perform all S O P actions"},
};

void CheckOneOf(bool isFirst, int first, int second) {
    XPLMCheckMenuItem(menuActionsState.options.menu, first,
                      isFirst ? xplm_Menu_Checked : xplm_Menu_Unchecked);
    XPLMCheckMenuItem(menuActionsState.options.menu, second,
                      isFirst ? xplm_Menu_Unchecked : xplm_Menu_Checked);
}

void RefreshCheckMarks() {
    CheckOneOf(XPLMGetDatai(menuActionsState.comments) == 1, itemAnnAll, itemAnnSop);
    CheckOneOf(XPLMGetDatai(menuActionsState.realMode) == 1, ExeFnc, ExeAll);
}

} // namespace

void MenuHandler(void *, void *reference) {
    if (!reference) return;
    const std::string name = static_cast<const char *>(reference);
    for (const MenuAction &action : Actions) {
        if (name != action.reference) continue;
        action.perform();
        return;
    }
    LoadPositionOrPreset(name);
}

void MenuCommandHandler(void *, void *reference) {
    if (reference) Hear(static_cast<const char *>(reference), HeardFrom::Menu);
}

void MenuOptionsHandler(void *, void *reference) {
    if (!reference) return;
    const std::string name = static_cast<const char *>(reference);
    for (const OptionAction &action : OptionActions) {
        if (name != action.reference || !*action.dataref) continue;
        XPLMSetDatai(*action.dataref, action.value);
        SendMSG(action.message);
    }
    RefreshCheckMarks();
}

void MenuVoiceHandler(void *, void *reference) {
    if (!reference) return;
    const std::string voice = static_cast<const char *>(reference);
    if (!isListed(voiceList, voice)) return;
    SendMSG(link_words::SetVoice + voice);
    if (globalGender == "w") globalVoiceW = voice;
    if (globalGender == "m") globalVoiceM = voice;
}

void MenuUpdateHandler(void *, void *reference) {
    if (reference && std::string(static_cast<const char *>(reference)) == "CheckUpdate") ShowChanges();
}

void BindOptions(const OptionItems &items) {
    menuActionsState.comments = FindDataref("kv/fennic/comments");
    menuActionsState.realMode = FindDataref("kv/fennic/realmode");
    menuActionsState.options = items;
    RefreshCheckMarks();
}

void BindLooks(const LookItems &items) {
    menuActionsState.looks = items;
    RefreshLooks();
}

void ResetMenuActions() {
    MakeFresh(menuActionsState);
}
