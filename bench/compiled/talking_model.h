// What C++ that was made from a model that talks calls: what an author would call as well who wrote it to
// begin with. What "stand by" and "next item" do is left out.
#pragma once

#include <algorithm>
#include <cmath>

#include "XPLMDataAccess.h"
#include "figure/animation.h"
#include "figure/channels.h"
#include "systems/checklists.h"
#include "systems/parameter_evaluation.h"
#include "voice/action_queue.h"
#include "voice/recognition.h"

inline double Quotient(double a, double b) {
    return b == 0.0 ? 0.0 : a / b;
}

inline void Act(SystemsProgram &program, uint32_t firing, StepContext &step) {
    RunActions(program.firings[firing], step);
    NoticeSurroundings(program);
}

// Whether a step may be evaluated, whose value this is, with those before it in front.
inline bool isStepOpen(double *value, bool isFirst) {
    const double before = isFirst ? 0.0 : value[-1];
    if (*value == 0.0 && !isFirst && before == 0.0) return false;
    if (!executeFlow.empty()) return false;
    if (isFirst || before != StepBrokenOff) return true;
    *value = StepBrokenOff;
    XPLMSetDatai(DRFi_ShowPlanshet, 0);
    return false;
}

// Of a step that is done: whether the sequence is aborted.
inline bool PassStep() {
    onChecklistOrProcedure = true;
    isLiveAnimationBlocked = true;
    if (!isAbortHeard()) return false;
    XPLMSetDatai(DRFi_ShowPlanshet, 0);
    return true;
}

inline void Rewind(double *first, size_t steps, const StepContext &step) {
    std::fill_n(first, steps, 0.0);
    if (step.called) ForgetSkipped(*step.called);
    onChecklistOrProcedure = false;
}
