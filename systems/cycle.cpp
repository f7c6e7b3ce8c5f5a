// One frame of the systems program. A block that fires may queue actions for the executer; what the running
// sequences wait for is collected on the way and handed to the voice engine when it has changed, so that a
// steady frame allocates nothing.
#include "systems/cycle.h"

#include "XPLMDataAccess.h"
#include "figure/animation.h"
#include "frame/kill_switch.h"
#include "systems/block_actions.h"
#include "systems/checklists.h"
#include "systems/expectations.h"
#include "systems/parameter_evaluation.h"
#include "systems/sequences.h"
#include "systems/trace.h"
#include "util/clock.h"
#include "voice/expected_phrases.h"
#include "voice/recognition.h"

namespace {

const float NextFrame = -1.0F;

// Where a frame's work is more than this part of evaluating everything, so many frames are evaluated whole.
// The two behind them that find out whether it still is so cost three hundredths of that. What costs how much
// was measured on models of 1,000 and 10,000 parameters (bench/changing_bench.cpp).
const double MarkingPaysBelow = 0.8;
const double WorkOfDependent = 0.2; // of a parameter's
const int PlainFrames = 100;

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

    // Two lines of the cache, of an array that may have nothing.
    static void Fetch(const void *place) {
        if (!place) return;
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
        BeginAnswerTimers();
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
