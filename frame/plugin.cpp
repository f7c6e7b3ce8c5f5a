// The five entry points. What starts here, in which order, and what is taken back at the end; the work is
// the other modules'.
#include <cstring>

#include "XPLMDisplay.h"
#include "XPLMProcessing.h"
#include "figure/channels.h"
#include "figure/installation.h"
#include "figure/liveliness.h"
#include "figure/position_creator.h"
#include "figure/positions.h"
#include "figure/setup_dialogs.h"
#include "figure/shown.h"
#include "frame/aircraft.h"
#include "frame/aircraft_detection.h"
#include "frame/commands.h"
#include "frame/datarefs.h"
#include "frame/fresh_start.h"
#include "frame/main_loop.h"
#include "frame/menus.h"
#include "frame/overlay.h"
#include "frame/settings.h"
#include "frame/shipped_files.h"
#include "gfx/fonts.h"
#include "gfx/textures.h"
#include "systems/checklists.h"
#include "systems/cycle.h"
#include "systems/editor/window.h"
#include "systems/model.h"
#include "systems/model_end.h"
#include "util/clock.h"
#include "util/files.h"
#include "util/guard.h"
#include "util/log.h"
#include "util/paths.h"
#include "voice/executer.h"
#include "voice/expected_phrases.h"
#include "voice/link_words.h"
#include "voice/published_log.h"
#include "voice/speech_link.h"

namespace {

const char *const Version = "v.090122";
const float EveryFrame = -1.0F;
const int AfterPhase = 0;

bool wasCallbacksRegistred = false;

constexpr auto DrawCallback = Guarded<"drawing", DrawScreen, 1>;
constexpr auto MainLoop = Guarded<"the main loop", Main, -1>; // again in the next frame
constexpr auto SystemsLoop = Guarded<"the systems cycle", CalculateSystemsCycle, -1>;

void RegisterCallbacks() {
    XPLMRegisterDrawCallback(DrawCallback, xplm_Phase_Window, AfterPhase, nullptr);
    XPLMRegisterFlightLoopCallback(MainLoop, EveryFrame, nullptr);
    XPLMRegisterFlightLoopCallback(SystemsLoop, EveryFrame, nullptr);
    wasCallbacksRegistred = true;
}

// Without callbacks the plug-in does nothing; the setup sets the state for the next start.
void RegisterCallbacksIfInstalled() {
    if (ThisAircraft().needsNoSetup) {
        RegisterCallbacks();
        return;
    }
    const bool isInAcf = ThisAircraft().setup == FigureSetup::Attached;
    if (isInAcf && InstallationState == InstallationReady && isSetupCompleted_767() == 0)
        InstallationState = InstallationMissing;
    if (InstallationState == InstallationReady) RegisterCallbacks();
    if (InstallationState == InstallationMissing) OpenSetupPrompt();
}

// What an end of the simulator in the middle of a write may have left. Positions and systems files have their
// own.
void RemoveLeftovers() {
    for (const std::string &folder :
         {WhatPluginPath(), WhatPluginPath() + "data/", WhatPluginPath() + "data/obj/",
          WhatPluginPath() + "custom/", WhatThisAircraftPath(), WhatThisAircraftPath() + "objects/"})
        RemoveUnfinishedIn(folder);
}

void StartEverything() {
    UseNativePaths();
    ResetEverything();
    PublishLog();
    wasCallbacksRegistred = false;
    FindSimulatorDatarefs();
    RemoveLeftovers();
    PutShippedFilesInPlace();
    ReadSettings();
    LoadAnimationFile(WhatPluginPath() + "data/obj/fennic.txt");
    PublishShown();
    ReadPositionFolder();
    ReadLiveliness();
    LoadTextures();
    LoadFonts();
    CustCommInit();
    CreateSpeechDatarefs();
    CreateExpectedPhrases();
    CreateChecklistDatarefs();
    ReadDRF_descr();
    string2debugString("Version: ", Version, 1);
    ReadAcfTypeAndDeveloperMode();
    RegisterCallbacksIfInstalled();
    BuildMenu1();
}

void UnregisterMainCallbacks() {
    if (!wasCallbacksRegistred) return;
    XPLMUnregisterDrawCallback(DrawCallback, xplm_Phase_Window, AfterPhase, nullptr);
    XPLMUnregisterFlightLoopCallback(MainLoop, nullptr);
}

void UnregisterSystemsLoop() {
    if (wasCallbacksRegistred) XPLMUnregisterFlightLoopCallback(SystemsLoop, nullptr);
}

// Each by itself, so that none that fails keeps another from being taken back: the simulator would call what
// is not there any more.
void TakeEverythingBack() {
    void (*const steps[])() = {UnregisterDrfs,
                               [] { EditorPanel.Delete(); },
                               CloseOverlay,
                               CloseSetupDialogs,
                               DestroyMenu,
                               CustCommExit,
                               UnregisterMainCallbacks,
                               UnregisterDrfs,
                               UnregisterSystemsLoop,
                               SysWindowDestroy,
                               DeleteSystems,
                               UnLoadFonts,
                               UnLoadTextures,
                               EndLog,
                               UnpublishLog};
    for (void (*const step)() : steps) RunGuarded("the stop", step);
}

} // namespace

PLUGIN_API int XPluginStart(char *outName, char *outSig, char *outDesc) {
    std::strcpy(outName, "Velmora Fennic plugin");
    std::strcpy(outSig, "velmora.fennic");
    std::strcpy(outDesc, "Velmora Fennic plugin");
    if (RunGuarded("the start", StartEverything)) return 1;
    TakeEverythingBack();
    return 0;
}

PLUGIN_API void XPluginStop(void) {
    RunGuarded("saving the settings", SaveSettings);
    TakeEverythingBack();
}

PLUGIN_API int XPluginEnable(void) {
    return 1;
}

PLUGIN_API void XPluginDisable(void) {
    RunGuarded("leaving", [] { SendMSG(link_words::Exit); });
    RunGuarded("leaving", EndBegunCommands);
}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID, int, void *) {}
