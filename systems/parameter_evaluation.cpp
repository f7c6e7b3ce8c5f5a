// What is seldom needed: speech, actions, graphs, datarefs that are missing.
#include "systems/parameter_evaluation.h"

#include <span>

#include "systems/checklists.h"
#include "systems/expectations.h"
#include "systems/graph.h"
#include "systems/trace.h"
#include "voice/action_queue.h"
#include "voice/expected_phrases.h"
#include "voice/recognition.h"

namespace {

void MarkAll(MarkSet &marked, const std::vector<uint32_t> &units) {
    for (uint32_t unit : units) marked.Insert(unit);
}

} // namespace

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

[[gnu::noinline]] bool isFound(const ProgramArrays &arrays, uint32_t dataref) {
    arrays.datarefs[dataref].access = arrays.program.datarefRecords[dataref]->Access();
    return arrays.datarefs[dataref].access.handle != nullptr;
}
