// The main loop. The order of the steps matters: the executer sees the clock of this frame, the systems
// cycle (a flight loop of its own, registered behind this one) sees the recognition of this frame.
#include "frame/main_loop.h"

#include "figure/animation.h"
#include "figure/channels.h"
#include "figure/flight_computations.h"
#include "figure/liveliness.h"
#include "figure/position_creator.h"
#include "figure/positions.h"
#include "figure/setup_dialogs.h"
#include "frame/aircraft.h"
#include "frame/kill_switch.h"
#include "frame/menus.h"
#include "frame/settings.h"
#include "util/clock.h"
#include "util/files.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/paths.h"
#include "voice/action_queue.h"
#include "voice/executer.h"
#include "voice/phrases.h"
#include "voice/push_to_talk.h"
#include "voice/selection.h"
#include "voice/speech_link.h"

MainLoopState mainLoopState;

namespace {

const float NextFrame = -1.0F;
const float InASecond = 1.0F;

bool FindControlDataref() {
    if (!isControlDrfWasFind)
        isControlDrfWasFind = globalCheckDrfName.empty() || FindDataref(globalCheckDrfName.c_str());
    return isControlDrfWasFind;
}

void AdvanceClock() {
    FlightTimeSEC = XPLMGetDataf(DRFf_TotalFlightTimeSec);
    if (FlightTimeOld > FlightTimeSEC) {
        ReInitVariables();
    } else {
        FrpSEC = FlightTimeSEC - FlightTimeOld;
        FlightTimeOld = FlightTimeSEC;
    }
}

void BindOnce() {
    if (drfDone != 0) return;
    if (ThisAircraft().carriesFigure)
        InstallationState = InstallationNotNeeded;
    else if (InstallationState == InstallationMissing && !ThisAircraft().needsNoSetup)
        OpenSetupPrompt();
    FindSpeechDatarefs();
    XPLMSetDatai(FindDataref("kv/fo/kill"), 0);
    if (isLegalAcf) drfDone = 1;
}

void MoveFigure() {
    if (TargetTimeSEC != -1.0) {
        Animation();
    } else {
        isPrevExecuteCompleted = 1;
        if (executeFlow.empty() && !EditorPanel.isShow()) LiveAnimation();
    }
    EyesAnimation();
    FaceAnimation();
    LiveOnTop(EditorPanel.isShow());
    if (XPLMGetDatai(DRFi_ShowFennic) == 0) XPLMSetDatai(DRFi_Face, -1);
}

void LoadOrStartVoice() {
    if (readDone != 0) {
        RunVoiceStartup();
        return;
    }
    ReadVoiceList();
    ReadCommandsFolder();
    BuildMenu2();
    readDone = 1;
}

} // namespace

float Main(float, float, int, void *) {
    ReportLeftOutLines();
    if (!isFennicKillDrfWasReaded) {
        FindKillSwitch();
        FindClickDataref();
    }
    if (isKilled()) return NextFrame;
    if (!FindControlDataref()) return InASecond;
    AdvanceClock();
    BindOnce();
    Executer();
    MoveFigure();
    LoadOrStartVoice();
    const bool wasStoppedNow = RunPushToTalk();
    if (setvoiceDone == 3) CalcPilot2FennicHdg();
    ReadServerMessage(wasStoppedNow);
    CalcBaro();
    RunSelectionClick();
    if (ThisAircraft().publishesRunways) CalcOrvik();
    return NextFrame;
}

void ReInitVariables() {
    ReInitFigureVariables();
    ReInitLiveliness();
    ReInitPositionCreator();
    ReInitSpeechLink();
    DropSelectionRequests();
    ReInitExecuter();
    FlightTimeSEC = 0.0;
    FlightTimeOld = 0.0;
    FrpSEC = 0.0;
}

void SavePathToFile() {
    const std::string folder = WhatPluginPath();
    WriteWholeFile(folder + "path.txt", folder + "\r\n");
}

void ResetMainLoop() {
    MakeFresh(mainLoopState);
}
