// The select command's timing. A hold counts by frame periods, so that a paused simulator confirms nothing.
#include "voice/selection.h"

#include <algorithm>

#include "frame/aircraft.h"
#include "util/clock.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "voice/action_queue.h"
#include "voice/recognition.h"

SelectionState selectionState;

namespace {

const double HoldSec = 0.3;    // a longer press confirms, a shorter one steps
const double StepSec = 0.5;    // from the press to the step
const double LongAgo = -1.0e9; // a press since when every release ends a hold

void StopTimer() {
    SndTimerOn = false;
    SndTimerSec = 0.0;
}

bool isIndexOf(const std::vector<std::string> &texts, int index) {
    return index >= 0 && static_cast<size_t>(index) < texts.size();
}

// From answer to answer, behind the last one from word to word, and then from the first answer on.
void HighlightNext() {
    selectCommandDoSelect = 0;
    int &wordIndex = selectionState.wordIndex;
    if (wordIndex >= 0 && isIndexOf(recognitionState.words, ++wordIndex)) return;
    wordIndex = -1;
    if (isIndexOf(answers, ++selectCommandAnswerIndex)) return;
    selectCommandAnswerIndex = -1;
    (recognitionState.words.empty() ? selectCommandAnswerIndex : wordIndex) = 0;
    selectionState.answersBefore = answers;
}

// Answers and words may have changed. A highlighted word answers no question that has come since.
void DropOldHighlight() {
    if (!isIndexOf(answers, selectCommandAnswerIndex)) selectCommandAnswerIndex = -1;
    int &wordIndex = selectionState.wordIndex;
    if (wordIndex < 0) return;
    if (selectionState.answersBefore != answers || !isIndexOf(recognitionState.words, wordIndex))
        wordIndex = -1;
}

void ConfirmAnswer(const std::string &answer) {
    selectCommandDoConfirm = 0;
    selectCommandDoSelect = 0;
    selectCommandAnswerIndex = selectionState.wordIndex = -1;
    Hear(answer, HeardFrom::SelectCommand);
    string2debugString("LastRecognition=answers[i]=", answer, 1);
    const auto isItsTimer = [&](const answertimer_struct &timer) { return timer.name == answer; };
    const auto timer = std::find_if(answerstimer.begin(), answerstimer.end(), isItsTimer);
    if (timer != answerstimer.end()) answerstimer.erase(timer);
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

void DropSelectionRequests() {
    StopTimer();
    selectCommandDoSelect = selectCommandDoConfirm = 0;
    selectCommandStartTime = LongAgo;
}

void FindClickDataref() {
    DRFi_FennicSnd = FindDataref("kv/fennic/click_snd");
}

void RunSelectionClick() {
    if (!DRFi_FennicSnd && !ThisAircraft().hasClickSound) return;
    if (!SndTimerOn) {
        XPLMSetDatai(DRFi_FennicSnd, 0);
        return;
    }
    SndTimerSec += FrpSEC;
    if (SndTimerSec <= HoldSec) return;
    XPLMSetDatai(DRFi_FennicSnd, 1);
    selectCommandDoConfirm = 1;
    selectCommandDoSelect = selectCommandAnswerIndex == -1 && selectionState.wordIndex == -1 ? 1 : 0;
    StopTimer();
}

void CarryOutSelection() {
    DropOldHighlight();
    const std::vector<std::string> &words = recognitionState.words;
    const bool isStep = selectCommandDoSelect == 1 && selectCommandDoConfirm == 0;
    const bool isStepDue = isStep && FlightTimeSEC - selectCommandStartTime > StepSec;
    const bool isForNothing =
        selectionState.wordIndex == -1 && (selectCommandDoConfirm == 1 || words.empty());
    if (answers.empty() && isForNothing) { // what was pressed for nothing must not answer the next question
        if (isStepDue || selectCommandDoConfirm == 1) selectCommandDoSelect = selectCommandDoConfirm = 0;
        return;
    }
    if (isStepDue) HighlightNext();
    if (selectCommandDoSelect == 1 && selectCommandDoConfirm == 1) {
        HighlightNext();
        string2debugString("selectCommandAnswerIndex=", int2string(selectCommandAnswerIndex), 1);
    }
    if (selectCommandDoConfirm != 1) return;
    if (selectCommandAnswerIndex >= 0)
        ConfirmAnswer(answers[static_cast<size_t>(selectCommandAnswerIndex)]);
    else if (const std::string *word = HighlightedWord())
        ConfirmAnswer(*word);
}

const std::string *HighlightedWord() {
    const std::vector<std::string> &words = recognitionState.words;
    const int index = selectionState.wordIndex;
    return isIndexOf(words, index) ? &words[static_cast<size_t>(index)] : nullptr;
}

void ResetSelection() {
    MakeFresh(selectionState);
}
