// Building the menu. Items carry their reference as a text; what comes from lists that may be read again is
// copied, since the simulator keeps the pointer for as long as the menu lives.
#include "frame/menus.h"

#include <vector>

#include "figure/channels.h"
#include "figure/positions.h"
#include "frame/aircraft.h"
#include "frame/checklist_import.h"
#include "frame/menu_actions.h"
#include "frame/settings.h"
#include "frame/shipped_files.h"
#include "systems/body_parser.h"
#include "util/files.h"
#include "util/guard.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"
#include "voice/speech_link.h"

MenusState menusState;

namespace {

const int KeepsItsParameter = 0; // an argument that the simulator ignores

int AddItem(XPLMMenuID menu, const std::string &label, const char *reference) {
    return XPLMAppendMenuItem(menu, label.c_str(), const_cast<char *>(reference), KeepsItsParameter);
}

void AddListItem(XPLMMenuID menu, const std::string &label, const std::string &reference) {
    AddItem(menu, label, menusState.references.emplace_back(reference).c_str());
}

XPLMMenuID AddSubmenu(XPLMMenuID parent, const std::string &label, XPLMMenuHandler_f handler) {
    const int item = AddItem(parent, label, nullptr);
    return XPLMCreateMenu(label.c_str(), parent, item, handler, nullptr);
}

void AddSetupItem() {
    if (ThisAircraft().needsNoSetup) return;
    if (InstallationState != InstallationReady)
        AddItem(idFENNIC, "Setup Fennic", "Setup");
    else
        AddItem(idFENNIC, "UnInstall Fennic", "Uninstall");
}

void AddCommands() {
    const XPLMMenuID commands =
        AddSubmenu(idFENNIC, "Commands", Guarded<"the menu of commands", MenuCommandHandler>);
    for (const commandsMenuStruct &group : commandsMenuVector) {
        const XPLMMenuID submenu =
            AddSubmenu(commands, group.title, Guarded<"the menu of commands", MenuCommandHandler>);
        for (const std::string &phrase : group.phrases) AddListItem(submenu, phrase, phrase);
    }
}

void AddOptions() {
    OptionItems items;
    OptionsID = items.menu =
        AddSubmenu(idFENNIC, "Options", Guarded<"the menu of options", MenuOptionsHandler>);
    items.annSop = AddItem(OptionsID, "Announce SOP procedures", "AnnSop");
    items.annAll = AddItem(OptionsID, "Announce ALL procedures", "AnnAll");
    items.exeFnc = AddItem(OptionsID, "Execute PM (fennic) job only", "ExeFnc");
    items.exeAll = AddItem(OptionsID, "Execute PM and PF (both) job", "ExeAll");
    BindOptions(items);
}

void AddVoices() {
    const int item = AddItem(idFENNIC, "Select Voice", nullptr);
    const XPLMMenuID voices =
        XPLMCreateMenu("Voices", idFENNIC, item, Guarded<"the menu of voices", MenuVoiceHandler>, nullptr);
    for (const std::string &voice : voiceList)
        AddListItem(voices, ReplaceString(voice, "com.apple.speech.synthesis.voice.", ""), voice);
}

// The first four get their names when they are bound.
void AddLooks() {
    LookItems items;
    items.menu = AddSubmenu(idFENNIC, "Look", Guarded<"the menu", MenuHandler>);
    const char *const references[FigureLooks] = {"Look 1", "Look 2", "Look 3"};
    for (int look = 0; look < FigureLooks; look++)
        items.looks[look] = AddItem(items.menu, references[look], references[look]);
    items.person = AddItem(items.menu, "Person", "Person");
    items.lively = AddItem(items.menu, "Breathes, glances, reaches", "Lively");
    BindLooks(items);
}

void AddSpeechSettings() {
    const XPLMMenuID volume = AddSubmenu(idFENNIC, "Voice Volume", Guarded<"the menu", MenuHandler>);
    AddItem(volume, "+10% Increase", "IncreaseVolume");
    AddItem(volume, "-10% Decrease", "DecreaseVolume");
    const XPLMMenuID rate = AddSubmenu(idFENNIC, "Voice Rate", Guarded<"the menu", MenuHandler>);
    AddItem(rate, "+5% Increase", "IncreaseRate");
    AddItem(rate, "-5% Decrease", "DecreaseRate");
    AddItem(idFENNIC, "Restart Speech Engine", "Restart");
}

void AddUpdate() {
    idUpdate = AddSubmenu(idFENNIC, "Update", Guarded<"the menu of updates", MenuUpdateHandler>);
    const std::string versionFile = WhatPluginPath() + "version.txt";
    if (isFileExistString(versionFile)) {
        const std::vector<std::string> lines = ReadFileToVector(versionFile);
        AddItem(idUpdate, "Version " + (lines.empty() ? "" : lines[0]), nullptr);
    }
    AddItem(idUpdate, "Check Update", "CheckUpdate");
    const int beside = CountFilesBeside();
    if (beside > 0) AddItem(idUpdate, "New versions beside your own files: " + int2string(beside), nullptr);
}

// A group that comes back behind another one gets a second submenu of its name.
void AddPositions() {
    const XPLMMenuID positions = AddSubmenu(idFENNIC, "Positions", Guarded<"the menu", MenuHandler>);
    XPLMMenuID group = nullptr;
    std::string groupName;
    for (const std::string &position : positionList) {
        const auto entry = mapPos.find(position);
        const std::string name = entry == mapPos.end() ? "" : entry->second;
        if (!name.empty() && name != groupName) {
            group = AddSubmenu(positions, name, Guarded<"the menu", MenuHandler>);
            groupName = name;
        }
        AddListItem(name.empty() ? positions : group, position, position);
    }
}

void AddPresets() {
    const XPLMMenuID presets = AddSubmenu(idFENNIC, "Presets", Guarded<"the menu", MenuHandler>);
    for (const std::string &preset : presetList)
        if (Contains(preset, ".txt")) AddListItem(presets, preset, preset);
}

void AddDeveloperTools() {
    AddItem(idFENNIC, "Editor", "Editor");
    AddItem(idFENNIC, "Save Position", "Save Position");
    AddItem(idFENNIC, "Save Preset L", "SavePresetL");
    AddItem(idFENNIC, "Save Preset R", "SavePresetR");
    if (ThisAircraft().setup == FigureSetup::Attached) AddItem(idFENNIC, "Save Seat", "SaveSeat");
    AddItem(idFENNIC, "Reload Scripts", "Reload Scripts");
    AddItem(idFENNIC, "Log ACF DataRefs", "DataRef List");
    AddItem(idFENNIC, "Step-by-Step", "Step");
    AddItem(idFENNIC, "Log all phrases", "LogPhrases");
    AddPositions();
    AddPresets();
}

} // namespace

void BuildMenu1() {
    idAircraft = XPLMFindAircraftMenu();
    // A plug-in that was not installed in the aircraft has no aircraft menu and goes under the plug-ins menu.
    const int item = idAircraft ? AddItem(idAircraft, "Fennic", nullptr) : 0;
    idFENNIC = XPLMCreateMenu("Fennic", idAircraft, item, Guarded<"the menu", MenuHandler>, nullptr);
    if (InstallationState != InstallationReady) AddSetupItem();
    if (isChecklistImportOffered()) AddItem(idFENNIC, "Import Checklist", "ImportChecklist");
}

void BuildMenu2() {
    AddCommands();
    AddOptions();
    AddVoices();
    AddLooks();
    AddSpeechSettings();
    AddSetupItem();
    AddUpdate();
    if (globalDeveloper == 1) AddDeveloperTools();
}

void DestroyMenu() {
    XPLMDestroyMenu(idFENNIC);
}

void ResetMenus() {
    MakeFresh(menusState);
}
