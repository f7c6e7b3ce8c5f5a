// The sequences that the pilot calls, beyond their steps: what the words that every crew uses are about.
// "Stand by" holds them, "next item" skips what a checklist waits for, and she tells where she is.
// A sequence that nobody calls, such as the call-outs of a take-off, is neither held nor skipped.
#pragma once

#include <string>
#include <vector>

#include "systems/model.h"

// Publishes "kv/fo/checklist", 1 while a checklist runs, and "kv/fo/stand_by", 1 while she stands by.
void CreateChecklistDatarefs();

// Once a frame, in front of the systems and behind them.
void BeginChecklists();
void EndChecklists();

// One has begun and has not ended.
void NoteChecklistRuns();

// ---- Standing by ----

// What called sequences have queued is put aside, and they wait, until GoOn. While a command is held down,
// she goes on until that is let go.
void StandBy();

// Ends it: what was put aside is done. Where nothing was, and repeats is set, the running checklists ask
// again what they have asked.
void GoOn(bool repeats);

// Ends it, and drops what was put aside.
void DropStandBy();

bool isStandingBy();

// Something was put aside, so that what the sequences wait for has not been asked yet.
bool isQueuePutAside();

// ---- Skipping ----

// The checklist that waits in this frame or the next one is to go on without its item.
void SkipItem();

// True, once for each SkipItem, when the checklist that asks is to go on so.
bool TakeSkip();

// What a step does that is skipped: its first block that goes on, without what that does to the aircraft, and
// without what she answers. So of its texts she says the last one where it asks for the next item or ends the
// list, and those that have a value.
struct SkippedStep {
    int block = -1; // none: it does nothing
    std::vector<const structExecute *> actions;
};

// Remembers the item that the step waits for by its name, until the sequence is rewound.
SkippedStep SkipStep(const device_struct &sequence, size_t step);

void ForgetSkipped(const device_struct &sequence);

// ---- What she says of them ----

// A text as it is queued: "[SKIPPED]" is replaced by the items that this sequence has skipped, ", except fuel
// pumps and beacon", or by nothing; "[CHECKLIST]" by the checklists that run and their items, "before start
// checklist, at fuel pumps", or "no checklist".
std::string WithChecklistWords(const std::string &text, const device_struct &device);

// Everything as when the program starts, the datarefs apart.
void ResetChecklists();
