// One frame of the systems program. A block that fires may queue actions for the executer; what the running
// sequences wait for is collected on the way and handed to the voice engine when it has changed, so that a
// steady frame allocates nothing.
#include "systems/cycle.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "XPLMDataAccess.h"
#include "figure/animation.h"
#include "figure/channels.h"
#include "frame/kill_switch.h"
#include "systems/action_kinds.h"
#include "systems/evaluation.h"
#include "systems/expectations.h"
#include "systems/graph.h"
#include "systems/links.h"
#include "systems/program.h"
#include "systems/trace.h"
#include "util/clock.h"
#include "util/log.h"
#include "util/numbers.h"
#include "voice/action_queue.h"
#include "voice/executer.h"
#include "voice/expected_phrases.h"
#include "voice/recognition.h"

namespace {

const float NextFrame = -1.0F;
const double StepDone = 1.0;
const double StepBrokenOff = 2.0;

// How a parameter is evaluated that is a step of a sequence, or is none.
struct StepContext {
    bool isSerial = false;
    bool isFirst = true;
    bool isBrokenOff = false; // a step of this device broke off in this frame
};

std::vector<const structExecute *> restartedTimers; // by the actions of this frame, in order

// Expired timers are still expected in the frame in which they go; the one that takes an expired timer's
// place is looked at in the next frame.
void ExpectAnswerTimers() {
    size_t kept = 0;
    for (size_t i = 0; i < answerstimer.size(); i++) {
        ExpectAnswer(answerstimer[i].name);
        if (answerstimer[i].time < FlightTimeSEC && ++i == answerstimer.size()) break;
        if (kept != i) std::swap(answerstimer[kept], answerstimer[i]);
        kept++;
    }
    answerstimer.resize(kept);
}

// A timer that is started again stands behind all others; one without time is taken back. Of several with the
// same text the last counts.
void RestartAnswerTimers() {
    if (restartedTimers.empty()) return;
    std::unordered_set<std::string_view> texts;
    const auto isSuperseded = [&](const structExecute *action) { return !texts.insert(action->text).second; };
    std::reverse(restartedTimers.begin(), restartedTimers.end());
    std::erase_if(restartedTimers, isSuperseded);
    std::reverse(restartedTimers.begin(), restartedTimers.end());
    std::erase_if(answerstimer, [&](const answertimer_struct &timer) { return texts.contains(timer.name); });
    for (const structExecute *action : restartedTimers)
        if (action->value > 0) answerstimer.push_back({action->text, FlightTimeSEC + action->value});
    restartedTimers.clear();
}

std::string QueuedTextOf(const structExecute &action, QueuedText form) {
    if (form == QueuedText::Value) return double2string(action.value);
    return form == QueuedText::Text ? action.text : action.text + "=" + double2string(action.value);
}

// What is queued is done by the executer, when it comes to it; all else is done here.
void RunAction(const structExecute &action, const device_struct &device, StepContext &step) {
    const ActionKind *kind = ActionKindOf(action.type);
    if (!kind) return;
    if (kind->when == ActionTime::Queued) {
        const bool isOther = action.value == 0.0 && kind->queueTypeAtZero >= 0;
        QueueAction(isOther ? kind->queueTypeAtZero : kind->queueType, QueuedTextOf(action, kind->queued));
    }
    switch (action.type) {
    case ScriptBreak: step.isBrokenOff = true; break;
    case ScriptInput: ExpectInput(device.name, action.text); break;
    case ScriptCommandEndNow: ExecuteCommand(action.text, "End"); break;
    case ScriptAnswer: restartedTimers.push_back(&action); break;
    default: break;
    }
}

void RunActions(const BlockRecord &record, StepContext &step) {
    const std::vector<structExecute> &actions = record.block->executes;
    if (actions.empty()) return;
    if (actions.front().type != ScriptInput) {
        string2debugString("EXECUTE FROM:", SysDevOut2name(record.place) + " B " + int2string(record.index),
                           1);
    }
    for (const structExecute &action : actions) RunAction(action, *record.device, step);
}

// A speech comparison tells the pilot what is waited for, whether or not it can still fire.
[[gnu::noinline]] bool CompareSpecial(const SpecialComparison &special, const double *values,
                                      const StepContext &step) {
    const compare_block_class &comparison = *special.record;
    if (!special.isSpeech) return CompareWithList(comparison, values[special.operand]);
    if (comparison.phrase == AnyPhrase) {
        isAnyInputGood = true;
        if (step.isSerial && !step.isFirst) ExpectAnyAnswer();
    } else if (step.isSerial && !step.isFirst) {
        ExpectAnswer(comparison.phrase);
    }
    return CompareWithSpeech(comparison, LastRecognition);
}

// The live values.
struct FrameView {
    double *values;
    const StepContext &step;

    double &operator[](uint32_t index) const { return values[index]; }
    bool isTrue(const SpecialComparison &special) const { return CompareSpecial(special, values, step); }
    void Compared(double, double, bool) const {}
    void Calculated(double, double) const {}
};

void ConsumeRecognition(uint32_t block, const StepContext &step) {
    TraceConsumption(systemsProgram, block);
    ForgetRecognition();
    if (step.isSerial) isNewRecognitionMayCome = false;
}

// What the parameter becomes when a block with actions, speech or a graph fires.
[[gnu::noinline]] double FireRecord(const ProgramArrays &arrays, uint32_t block, double value,
                                    StepContext &step) {
    const BlockRecord &record = arrays.program.records[arrays.blocks[block].record];
    RunActions(record, step);
    if (step.isSerial && step.isBrokenOff) return StepBrokenOff;
    if (step.isSerial && !record.block->executes.empty()) return StepDone;
    const FrameView view{arrays.values, step};
    value = Calculate(arrays, block, value, view);
    if (!record.block->calcs.empty() && record.block->graph.size() >= 2)
        value = CalcGraf(record.block->graph, value);
    return value;
}

[[gnu::always_inline]] inline double Fire(const ProgramArrays &arrays, uint32_t index, uint32_t block,
                                          double value, StepContext &step) {
    const uint32_t number = block - arrays.parameters[index].firstBlock;
    arrays.firedBlocks[index] = static_cast<uint16_t>(std::min<uint32_t>(number, NoBlock - 1));
    if (arrays.blocks[block].record != NoRecord) [[unlikely]]
        return FireRecord(arrays, block, value, step);
    if (step.isBrokenOff && step.isSerial) return StepBrokenOff;
    const FrameView view{arrays.values, step};
    return Calculate(arrays, block, value, view);
}

// Evaluates a parameter's blocks up to the first true one, which fires.
[[gnu::always_inline]] inline double EvaluateBlocks(const ProgramArrays &arrays, uint32_t index, double value,
                                                    StepContext &step) {
    const FrameView view{arrays.values, step};
    const uint32_t endBlock = arrays.parameters[index + 1].firstBlock;
    for (uint32_t block = arrays.parameters[index].firstBlock; block < endBlock; block++)
        if (EvaluateChain(arrays, block, view)) return Fire(arrays, index, block, value, step);
    arrays.firedBlocks[index] |= InactiveBlock;
    return value;
}

// The same where speech is compared: every block is evaluated, since it tells what is waited for, and one
// that is true consumes the recognition even behind the one that fired.
double EvaluateAllBlocks(const ProgramArrays &arrays, uint32_t index, double value, StepContext &step) {
    const FrameView view{arrays.values, step};
    const uint32_t endBlock = arrays.parameters[index + 1].firstBlock;
    bool hasFired = false;
    for (uint32_t block = arrays.parameters[index].firstBlock; block < endBlock; block++) {
        if (!EvaluateChain(arrays, block, view)) continue;
        const uint32_t record = arrays.blocks[block].record;
        if (record != NoRecord && arrays.program.records[record].hasSpeech) ConsumeRecognition(block, step);
        if (!hasFired) value = Fire(arrays, index, block, value, step);
        hasFired = true;
    }
    if (!hasFired) arrays.firedBlocks[index] |= InactiveBlock;
    return value;
}

// With datarefs, limits or speech.
[[gnu::noinline]] void EvaluateWithTraits(const ProgramArrays &arrays, uint32_t index, StepContext &step) {
    const ProgramParameter parameter = arrays.parameters[index];
    out_parameter_struct &record = *arrays.program.parameterRecords[parameter.record];
    double &value = arrays.values[index];
    if (parameter.traits & HasInput) {
        const double input = record.inDataref.GetValue();
        if (record.inDataref.handle) value = input;
    }
    double result = parameter.traits & HasSpeech ? EvaluateAllBlocks(arrays, index, value, step)
                                                 : EvaluateBlocks(arrays, index, value, step);
    if (record.hasMin && result < record.minLimit) result = record.minLimit;
    if (record.hasMax && result > record.maxLimit) result = record.maxLimit;
    value = result;
    if (parameter.traits & HasOutput) record.outDataref.SetValue(result);
}

inline void EvaluateParameter(const ProgramArrays &arrays, uint32_t index, StepContext &step) {
    if (arrays.parameters[index].traits != 0)
        EvaluateWithTraits(arrays, index, step);
    else
        arrays.values[index] = EvaluateBlocks(arrays, index, arrays.values[index], step);
}

void Rewind(const ProgramArrays &arrays, const ProgramRun &run) {
    std::fill(arrays.values + run.firstParameter, arrays.values + run.endParameter, 0.0);
    std::fill(arrays.evaluated + run.firstParameter, arrays.evaluated + run.endParameter, 0);
    onChecklistOrProcedure = false;
}

// True when the step may be evaluated: it is reached, and the executer has nothing left to do.
bool isStepOpen(const ProgramArrays &arrays, const ProgramRun &run, uint32_t index) {
    const bool isFirst = index == run.firstParameter;
    const double before = isFirst ? 0.0 : arrays.values[index - 1];
    if (arrays.values[index] == 0.0 && !isFirst && before == 0.0) return false;
    if (!executeFlow.empty()) return false;
    if (isFirst || before != StepBrokenOff) return true;
    arrays.values[index] = StepBrokenOff; // cascades to the end of the sequence, which rewinds
    XPLMSetDatai(DRFi_ShowPlanshet, 0);
    return false;
}

// A sequence: one step after the other, each waiting until the actions of the one before are done.
void RunSequence(const ProgramArrays &arrays, const ProgramRun &run) {
    StepContext step;
    step.isSerial = true;
    std::fill(arrays.evaluated + run.firstParameter, arrays.evaluated + run.endParameter, 0);
    for (uint32_t index = run.firstParameter; index < run.endParameter; index++) {
        if (arrays.values[index] > 0.0) {
            onChecklistOrProcedure = true;
            isLiveAnimationBlocked = true;
            if (isAbortHeard()) {
                index = run.endParameter - 1;
                XPLMSetDatai(DRFi_ShowPlanshet, 0);
                onChecklistOrProcedure = false;
            }
            if (index == run.endParameter - 1) Rewind(arrays, run);
        } else if (isStepOpen(arrays, run, index)) {
            step.isFirst = index == run.firstParameter;
            arrays.evaluated[index] = 1;
            EvaluateParameter(arrays, index, step);
        }
    }
}

void RunParameters(const ProgramArrays &arrays, const ProgramRun &run) {
    StepContext noStep;
    for (uint32_t index = run.firstParameter; index < run.endParameter; index++)
        EvaluateParameter(arrays, index, noStep);
}

void RunProgram(SystemsProgram &program) {
    const ProgramArrays arrays(program);
    if (areFramesTraced) BeginTracedFrame(program);
    for (const ProgramRun &run : program.runs) {
        if (run.serial)
            RunSequence(arrays, run);
        else
            RunParameters(arrays, run);
    }
}

} // namespace

float CalculateSystemsCycle(float, float, int, void *) {
    if (isAtRest()) return NextFrame;
    isLiveAnimationBlocked = false;
    onChecklistOrProcedure = false;
    BeginExpectations();
    ExpectAnswerTimers();
    if (XPLMGetDatai(DRF_paused) != 1) {
        isAnyInputGood = false;
        restartedTimers.clear();
        RunProgram(CurrentProgram());
        RestartAnswerTimers();
        EndRecognition();
    }
    PublishExpectations();
    PublishExpectedPhrases();
    return NextFrame;
}
