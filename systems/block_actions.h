// What the actions of a block that fires do in its frame: those of the executer are queued, the others done
// at once. And the answer timers that they start.
#pragma once

#include "systems/program.h"

// How a parameter is evaluated that is a step of a sequence, or is none.
struct StepContext {
    bool isSerial = false;
    bool isFirst = true;
    const device_struct *called = nullptr; // a sequence that waits for a phrase that calls it
    bool isHeld = false;                   // and she stands by: nothing but an answer takes it further
    bool isBrokenOff = false;              // a step of this device broke off in this frame
    bool comesAgain = false;               // it is to be evaluated in the next frame, too, whatever changes
};

void RunAction(const structExecute &action, const device_struct &device, StepContext &step);

// All of the block, with a line in the debug log.
void RunActions(const BlockFiring &firing, StepContext &step);

// In front of the systems: what the running timers expect. Expired ones are still expected in the frame in
// which they go; the one that takes an expired timer's place is looked at in the next frame.
void ExpectAnswerTimers();

// Around the systems: begins without timers that actions have started, and starts them. One that is started
// again stands behind all others; one without time is taken back. Of several with the same text the last
// counts.
void BeginAnswerTimers();
void RestartAnswerTimers();
