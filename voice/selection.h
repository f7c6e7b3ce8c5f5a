// One button for all answers: a short press of the select command steps through the expected answers, a
// hold confirms. The button's presses and the frame set requests; each drawing frame carries them out.
#pragma once

extern int selectCommandAnswerIndex;  // the highlighted answer; -1: none
extern double selectCommandStartTime; // FlightTimeSEC of the last press
extern double selectCommandHoldLong;  // how long the last press was held, seconds
extern int selectCommandDoSelect;     // a step is pending
extern int selectCommandDoConfirm;    // a confirmation is pending
extern bool SndTimerOn;               // held and not yet confirmed
extern double SndTimerSec;            // held so far, seconds

void SelectPressed();
void SelectReleased();

// Once a frame: a hold becomes a confirmation, with a click through "kv/fennic/click_snd" when the aircraft
// has that dataref.
void RunSelectionClick();

// Once a drawing frame: a pending step moves the highlight to the next answer, half a second after its
// press; a pending confirmation makes the highlighted answer the recognition.
void CarryOutSelection();

// Ends pending requests and a press that is under way, which then is neither step nor confirmation: while the
// list is not drawn, and when flight time went back.
void DropSelectionRequests();

// Looks the aircraft's click dataref up; once, at the first frame.
void FindClickDataref();

// Everything as when the program starts.
void ResetSelection();
