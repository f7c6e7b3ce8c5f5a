// A step that is done is 1, one that was broken off 2, and so are then all behind it, until the last one,
// which rewinds them all to 0.
#include "systems/sequences.h"

#include <algorithm>

#include "XPLMDataAccess.h"
#include "figure/animation.h"
#include "figure/channels.h"
#include "systems/checklists.h"
#include "systems/parameter_evaluation.h"
#include "voice/action_queue.h"
#include "voice/recognition.h"

namespace {

template <bool isMarking>
void Rewind(const ProgramArrays &arrays, const ProgramRun &run, const device_struct *called) {
    for (uint32_t i = run.firstParameter; i < run.endParameter; i++) Store<isMarking>(arrays, i, 0.0);
    std::fill(arrays.evaluated + run.firstParameter, arrays.evaluated + run.endParameter, 0);
    if (called) ForgetSkipped(*called);
    onChecklistOrProcedure = false;
}

// True when the step may be evaluated: it is reached, and the executer has nothing left to do.
template <bool isMarking>
bool isStepOpen(const ProgramArrays &arrays, const ProgramRun &run, uint32_t index) {
    const bool isFirst = index == run.firstParameter;
    const double before = isFirst ? 0.0 : arrays.values[index - 1];
    if (arrays.values[index] == 0.0 && !isFirst && before == 0.0) return false;
    if (!executeFlow.empty()) return false;
    if (isFirst || before != StepBrokenOff) return true;
    Store<isMarking>(arrays, index, StepBrokenOff); // cascades to the end of the sequence, which rewinds
    XPLMSetDatai(DRFi_ShowPlanshet, 0);
    return false;
}

// Of a sequence that is held only those steps listen that wait for the pilot, and have asked him.
bool isListeningWhileHeld(const ProgramArrays &arrays, uint32_t index, const StepContext &step) {
    return (arrays.parameters[index].traits & HasSpeech) != 0 && (step.isFirst || !isQueuePutAside());
}

template <bool isMarking>
void GoOnWithoutItem(const ProgramArrays &arrays, const ProgramRun &run, uint32_t index, StepContext &step) {
    const SkippedStep skipped = SkipStep(*step.called, index - run.firstParameter);
    if (skipped.block >= 0) arrays.firedBlocks[index] = static_cast<uint16_t>(skipped.block);
    for (const structExecute *action : skipped.actions) RunAction(*action, *step.called, step);
    NoticeSurroundings(arrays.program);
    step.comesAgain = true;
    Store<isMarking>(arrays, index, StepDone);
}

} // namespace

template <bool isMarking> bool RunSequence(const ProgramArrays &arrays, const ProgramRun &run) {
    StepContext step;
    step.isSerial = true;
    step.called = run.called;
    step.isHeld = step.comesAgain = step.called && isStandingBy();
    std::fill(arrays.evaluated + run.firstParameter, arrays.evaluated + run.endParameter, 0);
    for (uint32_t index = run.firstParameter; index < run.endParameter; index++) {
        if (arrays.values[index] > 0.0) {
            onChecklistOrProcedure = true;
            isLiveAnimationBlocked = true;
            step.comesAgain = true;
            if (isAbortHeard()) {
                index = run.endParameter - 1;
                XPLMSetDatai(DRFi_ShowPlanshet, 0);
                onChecklistOrProcedure = false;
            }
            if (index == run.endParameter - 1) Rewind<isMarking>(arrays, run, step.called);
        } else if (isStepOpen<isMarking>(arrays, run, index)) {
            step.isFirst = index == run.firstParameter;
            if (step.isHeld && !isListeningWhileHeld(arrays, index, step)) continue;
            arrays.evaluated[index] = 1;
            EvaluateParameter<isMarking>(arrays, index, step);
            const bool waits = run.isChecklist && !step.isFirst && arrays.values[index] == 0.0;
            if (waits && TakeSkip()) GoOnWithoutItem<isMarking>(arrays, run, index, step);
        }
    }
    if (run.isChecklist && arrays.values[run.firstParameter] > 0.0) NoteChecklistRuns();
    return step.comesAgain;
}

template bool RunSequence<true>(const ProgramArrays &arrays, const ProgramRun &run);
template bool RunSequence<false>(const ProgramArrays &arrays, const ProgramRun &run);
