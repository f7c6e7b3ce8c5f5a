// The select command's timing. A hold counts by frame periods, so that a paused simulator confirms nothing.
#include "voice/selection.h"

#include "XPLMDataAccess.h"
#include "frame/aircraft.h"
#include "util/clock.h"

int selectCommandAnswerIndex = -1;
double selectCommandStartTime = 0.0;
double selectCommandHoldLong = 0.0;
int selectCommandDoSelect = 0;
int selectCommandDoConfirm = 0;
bool SndTimerOn = false;
double SndTimerSec = 0.0;

namespace {

const double HoldSec = 0.3; // a longer press confirms, a shorter one steps

XPLMDataRef DRFi_FennicSnd; // "kv/fennic/click_snd", the aircraft's

void StopTimer() {
    SndTimerOn = false;
    SndTimerSec = 0.0;
}

} // namespace

void SelectPressed() {
    SndTimerOn = true;
    SndTimerSec = 0.0;
    selectCommandStartTime = FlightTimeSEC;
    selectCommandHoldLong = 0.0;
}

void SelectReleased() {
    StopTimer();
    selectCommandHoldLong = FlightTimeSEC - selectCommandStartTime;
    if (selectCommandHoldLong < HoldSec) {
        selectCommandDoSelect = 1;
        selectCommandDoConfirm = 0;
    }
}

void FindClickDataref() {
    DRFi_FennicSnd = XPLMFindDataRef("kv/fennic/click_snd");
}

void RunSelectionClick() {
    if (!DRFi_FennicSnd && acfType != 737) return;
    if (!SndTimerOn) {
        XPLMSetDatai(DRFi_FennicSnd, 0);
        return;
    }
    SndTimerSec += FrpSEC;
    if (SndTimerSec <= HoldSec) return;
    XPLMSetDatai(DRFi_FennicSnd, 1);
    selectCommandDoConfirm = 1;
    selectCommandDoSelect = selectCommandAnswerIndex == -1 ? 1 : 0;
    StopTimer();
}
