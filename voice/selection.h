// One button for all answers: a short press of the select command steps through the expected answers, a
// hold confirms. The button's presses and the frame set requests; each drawing frame carries them out.
#pragma once

#include <string>
#include <vector>

#include "XPLMDataAccess.h"

struct SelectionState {
    int answerIndex = -1;                   // the highlighted answer; -1: none
    int wordIndex = -1;                     // the highlighted one of the words behind the answers; -1: none
    std::vector<std::string> answersBefore; // those that there were when a word was highlighted
    double startTime = 0.0;                 // FlightTimeSEC of the last press
    double holdLong = 0.0;                  // how long the last press was held, seconds
    int doSelect = 0;                       // a step is pending
    int doConfirm = 0;                      // a confirmation is pending
    bool isHeld = false;                    // and not yet confirmed
    double heldSec = 0.0;                   // so far
    XPLMDataRef clickSound = nullptr;       // "kv/fennic/click_snd", the aircraft's
};
extern SelectionState selectionState;
inline int &selectCommandAnswerIndex = selectionState.answerIndex;
inline double &selectCommandStartTime = selectionState.startTime;
inline double &selectCommandHoldLong = selectionState.holdLong;
inline int &selectCommandDoSelect = selectionState.doSelect;
inline int &selectCommandDoConfirm = selectionState.doConfirm;
inline bool &SndTimerOn = selectionState.isHeld;
inline double &SndTimerSec = selectionState.heldSec;
inline XPLMDataRef &DRFi_FennicSnd = selectionState.clickSound;

void SelectPressed();
void SelectReleased();

// Once a frame: a hold becomes a confirmation, with a click through "kv/fennic/click_snd" when the aircraft
// has that dataref.
void RunSelectionClick();

// Once a drawing frame: a pending step moves the highlight to the next answer, half a second after its
// press, and behind the last one to the words of recognitionState; a pending confirmation makes what is
// highlighted the recognition.
void CarryOutSelection();

// The word that is highlighted; null: none.
const std::string *HighlightedWord();

// Ends pending requests and a press that is under way, which then is neither step nor confirmation: while the
// list is not drawn, and when flight time went back.
void DropSelectionRequests();

// Looks the aircraft's click dataref up; once, at the first frame.
void FindClickDataref();

// Everything as when the program starts.
void ResetSelection();
