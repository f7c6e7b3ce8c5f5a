// One frame of the systems program. A block that fires may queue actions for the executer; what the running
// sequences wait for is collected on the way and handed to the voice engine when it has changed, so that a
// steady frame allocates nothing.
#include "systems/cycle.h"

#include <algorithm>
#include <bit>
#include <span>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "XPLMDataAccess.h"
#include "figure/animation.h"
#include "figure/channels.h"
#include "frame/kill_switch.h"
#include "systems/action_kinds.h"
#include "systems/checklists.h"
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

// Where a frame's work is more than this part of evaluating everything, so many frames are evaluated whole.
// The two behind them that find out whether it still is so cost three hundredths of that. What costs how much
// was measured on models of 1,000 and 10,000 parameters (bench/changing_bench.cpp).
const double MarkingPaysBelow = 0.8;
const double WorkOfDependent = 0.2; // of a parameter's
const int PlainFrames = 100;

// How a parameter is evaluated that is a step of a sequence, or is none.
struct StepContext {
    bool isSerial = false;
    bool isFirst = true;
    const device_struct *called = nullptr; // a sequence that waits for a phrase that calls it
    bool isHeld = false;                   // and she stands by: nothing but an answer takes it further
    bool isBrokenOff = false;              // a step of this device broke off in this frame
    bool comesAgain = false;               // it is to be evaluated in the next frame, too, whatever changes
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
        std::string text = QueuedTextOf(action, kind->queued);
        if (kind->text == ActionText::Spoken) text = WithChecklistWords(text, device);
        QueueAction(isOther ? kind->queueTypeAtZero : kind->queueType, text, step.called != nullptr);
    }
    switch (action.type) {
    case ScriptBreak: step.isBrokenOff = true; break;
    case ScriptInput: ExpectInput(device.name, action.text, action.value != 0.0); break;
    case ScriptCommandEndNow: ExecuteCommand(action.text, "End"); break;
    case ScriptAnswer: restartedTimers.push_back(&action); break;
    case ScriptHold:
        if (action.value != 0.0)
            StandBy();
        else
            GoOn(true);
        break;
    case ScriptSkip: SkipItem(); break;
    default: break;
    }
}

void RunActions(const BlockFiring &firing, StepContext &step) {
    const std::vector<structExecute> &actions = firing.block->executes;
    if (actions.front().type != ScriptInput) {
        string2debugString("EXECUTE FROM:", SysDevOut2name(firing.place) + " B " + int2string(firing.index),
                           1);
    }
    for (const structExecute &action : actions) RunAction(action, *firing.device, step);
}

// ---- What is marked (systems/program.h) ----

void MarkAll(MarkSet &marked, const std::vector<uint32_t> &units) {
    for (uint32_t unit : units) marked.Insert(unit);
}

// What is no value and yet decides: whether actions are queued, and what was heard.
void NoticeSurroundings(SystemsProgram &program) {
    if (executeFlow.empty() != program.wasQueueEmpty) {
        program.wasQueueEmpty = !program.wasQueueEmpty;
        MarkAll(program.marked, program.sequences);
    }
    if (LastRecognition != program.heardText) {
        program.heardText = LastRecognition;
        program.heard = program.PhraseNumberOf(LastRecognition);
        MarkAll(program.marked, program.speechUnits);
    }
}

// How a value lies to another.
inline unsigned RelationOf(double value, double other) {
    return (value > other ? RelationGreater : 0U) | (value == other ? RelationEqual : 0U)
           | (value < other ? RelationLess : 0U);
}

bool isListedOtherwise(const ProgramArrays &arrays, uint32_t special, double before, double value) {
    const SpecialComparison &list = arrays.special[special];
    return CompareWithList(arrays, list, before) != CompareWithList(arrays, list, value);
}

// Marks those for which it makes a difference that the parameter becomes another value. Which blocks of a
// parameter a change reaches, nobody can foresee, so that is asked without a branch.
void MarkDependents(const ProgramArrays &arrays, uint32_t index, double value) {
    const FirstDependents first = arrays.firstDependents[index], end = arrays.firstDependents[index + 1];
    MarkSet &marked = arrays.program.marked;
    for (uint32_t i = first.any; i < end.any; i++) {
        const Dependent &dependent = arrays.dependents[i];
        const bool isReached = ((arrays.firedBlocks[dependent.unit] ^ dependent.block) & dependent.mask) == 0;
        marked.InsertIf(isReached, dependent.unit);
    }
    const double before = arrays.values[index];
    for (uint32_t i = first.comparing; i < end.comparing; i++) {
        const ComparingDependent &dependent = arrays.comparing[i];
        const bool isReached = dependent.block <= arrays.firedBlocks[dependent.unit]; // none fired: all are
        if (dependent.relations == 0) [[unlikely]] {
            if (isReached && isListedOtherwise(arrays, dependent.other, before, value))
                marked.Insert(dependent.unit);
            continue;
        }
        const double other = arrays.values[dependent.other];
        const bool wasTrue = (RelationOf(before, other) & dependent.relations) != 0;
        const bool isTrue = (RelationOf(value, other) & dependent.relations) != 0;
        if (static_cast<unsigned>(isReached) & static_cast<unsigned>(wasTrue != isTrue)) [[unlikely]]
            marked.Insert(dependent.unit);
    }
    arrays.program.dependentsMet += end.any - first.any + end.comparing - first.comparing;
}

// What a parameter becomes; while marks are kept, they follow.
template <bool isMarking>
[[gnu::always_inline]] inline void Store(const ProgramArrays &arrays, uint32_t index, double value) {
    if constexpr (isMarking) {
        if (std::bit_cast<uint64_t>(arrays.values[index]) == std::bit_cast<uint64_t>(value)) return;
        MarkDependents(arrays, index, value);
    }
    arrays.values[index] = value;
}

// ---- Blocks ----

// A speech comparison tells the pilot what is waited for, whether or not it can still fire.
[[gnu::noinline]] bool CompareSpeech(const SystemsProgram &program, const SpecialComparison &comparison,
                                     StepContext &step) {
    const bool isLaterStep = step.isSerial && !step.isFirst;
    if (comparison.first == AnyPhraseNumber) {
        isAnyInputGood = true;
        step.comesAgain = true;
        if (isLaterStep) ExpectAnyAnswer();
    } else if (isLaterStep) {
        step.comesAgain = true;
        ExpectAnswer(program.phrases[comparison.first]);
    }
    return CompareWithSpeech(comparison, program.heard);
}

// The live values.
struct FrameView {
    const ProgramArrays &arrays;
    StepContext &step;

    double &operator[](uint32_t index) const { return arrays.values[index]; }
    bool isTrue(const SpecialComparison &special) const {
        if (special.isSpeech) return CompareSpeech(arrays.program, special, step);
        return CompareWithList(arrays, special, arrays.values[special.operand]);
    }
    void Compared(double, double, bool) const {}
    void Calculated(double, double) const {}
};

void ConsumeRecognition(SystemsProgram &program, uint32_t block, const StepContext &step) {
    TraceConsumption(program, block);
    const std::vector<std::string> &words = recognitionState.words;
    recognitionState.wasWord = std::find(words.begin(), words.end(), LastRecognition) != words.end();
    ForgetRecognition();
    if (step.isSerial) {
        isNewRecognitionMayCome = false;
        GoOn(false);
    }
    NoticeSurroundings(program);
}

double LookUp(SystemsProgram &program, ProgramGraph &graph, double x) {
    const auto points =
        std::span<const GraphPoint>(program.graphPoints).subspan(graph.firstPoint, graph.points);
    return graph.isAscending ? LookUpAscending(points, x, graph.segment) : LookUpUnordered(points, x);
}

// What the parameter becomes when a block with actions, speech or a graph fires.
[[gnu::noinline]] double FireWithMore(const ProgramArrays &arrays, uint32_t block, double value,
                                      StepContext &step) {
    const BlockFiring &firing = arrays.program.firings[arrays.blocks[block].firing];
    if (firing.hasActions) {
        RunActions(firing, step);
        NoticeSurroundings(arrays.program);
        step.comesAgain = true;
    }
    if (step.isSerial && step.isBrokenOff) return StepBrokenOff;
    if (step.isSerial && firing.hasActions) return StepDone;
    const FrameView view{arrays, step};
    value = Calculate(arrays, block, value, view);
    return firing.graph == NoIndex ? value
                                   : LookUp(arrays.program, arrays.program.graphs[firing.graph], value);
}

[[gnu::always_inline]] inline double Fire(const ProgramArrays &arrays, uint32_t index, uint32_t block,
                                          double value, StepContext &step) {
    const uint32_t number = block - arrays.parameters[index].firstBlock;
    arrays.firedBlocks[index] = static_cast<uint16_t>(std::min<uint32_t>(number, NoBlock - 1));
    if (arrays.blocks[block].firing != NoIndex) [[unlikely]]
        return FireWithMore(arrays, block, value, step);
    if (step.isBrokenOff && step.isSerial) return StepBrokenOff;
    const FrameView view{arrays, step};
    return Calculate(arrays, block, value, view);
}

// Evaluates a parameter's blocks up to the first true one, which fires.
[[gnu::always_inline]] inline double EvaluateBlocks(const ProgramArrays &arrays, uint32_t index, double value,
                                                    StepContext &step) {
    const FrameView view{arrays, step};
    const uint32_t endBlock = arrays.parameters[index + 1].firstBlock;
    for (uint32_t block = arrays.parameters[index].firstBlock; block < endBlock; block++)
        if (EvaluateChain(arrays, block, view)) return Fire(arrays, index, block, value, step);
    arrays.firedBlocks[index] |= InactiveBlock;
    return value;
}

// The same where speech is compared: every block is evaluated, since it tells what is waited for, and one
// that is true consumes the recognition even behind the one that fired.
double EvaluateAllBlocks(const ProgramArrays &arrays, uint32_t index, double value, StepContext &step) {
    const FrameView view{arrays, step};
    const uint32_t endBlock = arrays.parameters[index + 1].firstBlock;
    bool hasFired = false;
    const bool isAnswerNeeded = step.isHeld && LastRecognition.empty();
    for (uint32_t block = arrays.parameters[index].firstBlock; block < endBlock; block++) {
        if (!EvaluateChain(arrays, block, view)) continue;
        const uint32_t firing = arrays.blocks[block].firing;
        const bool hasSpeech = firing != NoIndex && arrays.program.firings[firing].hasSpeech;
        if (step.isHeld && (isAnswerNeeded || !hasSpeech)) continue;
        if (hasSpeech) ConsumeRecognition(arrays.program, block, step);
        if (!hasFired) value = Fire(arrays, index, block, value, step);
        hasFired = true;
    }
    if (!hasFired) arrays.firedBlocks[index] |= InactiveBlock;
    return value;
}

// ---- Parameters ----

// Looks again for a dataref that was missing.
[[gnu::noinline]] bool isFound(const ProgramArrays &arrays, uint32_t dataref) {
    arrays.datarefs[dataref].access = arrays.program.datarefRecords[dataref]->Access();
    return arrays.datarefs[dataref].access.handle != nullptr;
}

// Reads an input that is there into the value. True when it gives another value than in the frame before.
[[gnu::always_inline]] inline bool ReadInput(const ProgramArrays &arrays, uint32_t dataref, double &value) {
    ProgramDataref &input = arrays.datarefs[dataref];
    const bool wasMissing = !input.access.handle;
    if (wasMissing && !isFound(arrays, dataref)) [[unlikely]]
        return false;
    value = input.access.Get();
    const bool isSame = std::bit_cast<uint64_t>(value) == std::bit_cast<uint64_t>(input.lastValue);
    input.lastValue = value;
    return wasMissing || !isSame;
}

[[gnu::always_inline]] inline void WriteOutput(const ProgramArrays &arrays, uint32_t dataref, double value) {
    ProgramDataref &output = arrays.datarefs[dataref];
    if (!output.access.handle && !isFound(arrays, dataref)) [[unlikely]]
        return;
    output.lastValue = value;
    output.access.Set(value);
}

[[gnu::always_inline]] inline double Limited(const ParameterExtras &extras, double value) {
    value = value < extras.minimum ? extras.minimum : value;
    return value > extras.maximum ? extras.maximum : value;
}

// With an input, whose value it begins with, or speech.
template <bool isMarking>
[[gnu::noinline]] void EvaluateFrom(const ProgramArrays &arrays, uint32_t index, double value,
                                    StepContext &step) {
    const ProgramParameter parameter = arrays.parameters[index];
    const double before = arrays.values[index];
    arrays.values[index] = value; // which its blocks may read
    value = parameter.traits & HasSpeech ? EvaluateAllBlocks(arrays, index, value, step)
                                         : EvaluateBlocks(arrays, index, value, step);
    arrays.values[index] = before; // which others know
    Store<isMarking>(arrays, index, Limited(arrays.extras[parameter.extras], value));
}

// With datarefs, which may be none, or speech: evaluated when it is due, and when its input has changed. True
// when it was.
template <bool isMarking>
[[gnu::always_inline]] inline bool EvaluateBetween(const ProgramArrays &arrays, const DatarefVisit &visit,
                                                   bool isDue, StepContext &step) {
    double value = arrays.values[visit.unit];
    if (visit.input != NoIndex && ReadInput(arrays, visit.input, value)) isDue = true;
    if (isDue) EvaluateFrom<isMarking>(arrays, visit.unit, value, step);
    if (visit.output != NoIndex) WriteOutput(arrays, visit.output, arrays.values[visit.unit]);
    return isDue;
}

template <bool isMarking>
[[gnu::always_inline]] inline void EvaluateParameter(const ProgramArrays &arrays, uint32_t index,
                                                     StepContext &step) {
    const ProgramParameter parameter = arrays.parameters[index];
    if (parameter.traits != 0) {
        const ParameterExtras &extras = arrays.extras[parameter.extras];
        EvaluateBetween<isMarking>(arrays, {index, extras.input, extras.output}, true, step);
    } else {
        const double value = EvaluateBlocks(arrays, index, arrays.values[index], step);
        Store<isMarking>(arrays, index, Limited(arrays.extras[parameter.extras], value));
    }
}

// ---- Sequences ----

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

// One step after the other, each waiting until the actions of the one before are done. True when it must be
// looked at in the next frame, too.
template <bool isMarking> bool RunSequence(const ProgramArrays &arrays, const ProgramRun &run) {
    StepContext step;
    step.isSerial = true;
    step.called = run.called;
    step.isHeld = step.comesAgain = step.called && isStandingBy();
    if (run.isChecklist && arrays.values[run.firstParameter] > 0.0) NoteChecklistRuns();
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
    return step.comesAgain;
}

// ---- The whole ----

void EvaluateAll(const ProgramArrays &arrays) {
    for (const ProgramRun &run : arrays.program.runs) {
        StepContext noStep;
        if (run.isSerial)
            RunSequence<false>(arrays, run);
        else
            for (uint32_t index = run.firstParameter; index < run.endParameter; index++)
                EvaluateParameter<false>(arrays, index, noStep);
    }
}

// What is marked, in order, and between it what has datarefs.
class MarkedFrame {
public:
    size_t evaluated = 0; // a sequence counts as one

    explicit MarkedFrame(const ProgramArrays &arrays)
        : arrays(arrays), marked(arrays.program.marked), next(marked.Next(0)) {}

    void Evaluate() {
        for (const DatarefVisit &visit : arrays.program.visits) {
            while (next < visit.unit) EvaluateNext();
            if (visit.input == NoIndex && visit.output == NoIndex)
                EvaluateSequence(visit.unit);
            else
                EvaluateVisited(visit);
        }
        while (next != NoMark) EvaluateNext();
    }

private:
    const ProgramArrays &arrays;
    MarkSet &marked;
    uint32_t next;
    StepContext step; // of what is no step

    // Has what the next unit runs over fetched, and what leads to that of the one behind it: models of tens
    // of thousands of parameters are larger than the caches, and what changes lies scattered in them.
    void FetchAhead() const {
        if (next == NoMark) return;
        const ProgramBlock &block = arrays.blocks[arrays.parameters[next].firstBlock];
        Fetch(arrays.comparisons + block.firstComparison);
        Fetch(arrays.elements + block.firstElement);
        const uint32_t after = marked.Next(next + 1);
        if (after == NoMark) return;
        const ProgramParameter parameter = arrays.parameters[after];
        const FirstDependents dependents = arrays.firstDependents[after];
        Fetch(arrays.blocks + parameter.firstBlock);
        Fetch(arrays.extras + parameter.extras);
        Fetch(arrays.dependents + dependents.any);
        Fetch(arrays.comparing + dependents.comparing);
    }

    // Two lines of the cache.
    static void Fetch(const void *place) {
        __builtin_prefetch(place);
        __builtin_prefetch(static_cast<const char *>(place) + 64);
    }

    // Behind the unit, which was evaluated; what it has marked is seen.
    void GoOnBehind(uint32_t unit) {
        next = marked.Next(unit + 1);
        FetchAhead();
        evaluated++;
        if (step.comesAgain) [[unlikely]]
            marked.Insert(unit);
        step.comesAgain = false;
    }

    void EvaluateNext() {
        const uint32_t unit = next;
        if (arrays.parameters[unit].traits & IsSequence) {
            EvaluateSequence(unit);
            return;
        }
        marked.Remove(unit);
        EvaluateParameter<true>(arrays, unit, step);
        GoOnBehind(unit);
    }

    void EvaluateSequence(uint32_t unit) {
        marked.Remove(unit);
        const uint32_t run = arrays.extras[arrays.parameters[unit].extras].run;
        step.comesAgain = RunSequence<true>(arrays, arrays.program.runs[run]);
        GoOnBehind(unit);
    }

    void EvaluateVisited(const DatarefVisit &visit) {
        const bool isMarked = next == visit.unit;
        if (isMarked) marked.Remove(visit.unit);
        if (EvaluateBetween<true>(arrays, visit, isMarked, step)) GoOnBehind(visit.unit);
    }
};

// Marks are not kept while everything is evaluated, so the first frame behind it marks everything, and only
// the second shows how much changes.
void RunProgram(SystemsProgram &program) {
    const ProgramArrays arrays(program);
    NoticeSurroundings(program);
    if (areFramesTraced) BeginTracedFrame(program);
    const bool wereMarksCurrent = program.areMarksCurrent;
    program.areMarksCurrent = false; // also when a frame is left by what an action throws
    const bool isPlain = frameEvaluation == FrameEvaluation::OfAll
                         || (frameEvaluation == FrameEvaluation::AsItPays && program.plainFramesLeft > 0);
    if (isPlain) {
        EvaluateAll(arrays);
        if (program.plainFramesLeft > 0) program.plainFramesLeft--;
        return;
    }
    if (!wereMarksCurrent) program.marked = program.all;
    program.dependentsMet = 0;
    MarkedFrame frame(arrays);
    frame.Evaluate();
    program.areMarksCurrent = true;
    const double work =
        static_cast<double>(frame.evaluated) + WorkOfDependent * static_cast<double>(program.dependentsMet);
    const double most = MarkingPaysBelow * static_cast<double>(program.firedBlocks.size());
    if (wereMarksCurrent && work > most) program.plainFramesLeft = PlainFrames;
}

} // namespace

FrameEvaluation frameEvaluation = FrameEvaluation::AsItPays;

float CalculateSystemsCycle(float, float, int, void *) {
    if (isAtRest()) return NextFrame;
    isLiveAnimationBlocked = false;
    onChecklistOrProcedure = false;
    BeginExpectations();
    ExpectAnswerTimers();
    if (XPLMGetDatai(DRF_paused) != 1) {
        isAnyInputGood = false;
        restartedTimers.clear();
        BeginChecklists();
        RunProgram(CurrentProgram());
        EndChecklists();
        RestartAnswerTimers();
        EndRecognition();
    }
    PublishExpectations();
    PublishExpectedPhrases();
    return NextFrame;
}
