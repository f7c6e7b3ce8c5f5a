// Blocks that cannot fire, or never get their turn, and steps that are never done.
#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "authoring/check/checks.h"
#include "authoring/check/conditions.h"
#include "authoring/check/findings.h"
#include "systems/links.h"
#include "systems/operators.h"
#include "util/numbers.h"

namespace simhost {

namespace {

constexpr size_t MostEarlierBlocks = 200; // that a block is compared with, so that a check ends soon

bool isCoveredBy(const Conjunction &one, const Alternatives &earlier) {
    return earlier.isExact
           && std::any_of(earlier.list.begin(), earlier.list.end(),
                          [&](const Conjunction &weaker) { return one.Implies(weaker); });
}

// The block, among those before, that fires whenever this one could; -1 for none.
int BlockInTheWay(const std::vector<Alternatives> &blocks, size_t index) {
    if (!blocks[index].isExact) return -1;
    for (size_t earlier = 0; earlier < std::min(index, MostEarlierBlocks); earlier++)
        if (std::all_of(blocks[index].list.begin(), blocks[index].list.end(),
                        [&](const Conjunction &one) { return isCoveredBy(one, blocks[earlier]); }))
            return static_cast<int>(earlier);
    return -1;
}

// Whether a block that fires may leave the step done: by an action, or by a value other than 0.
bool FinishesStep(const logicblock_struct &block) {
    if (!block.executes.empty()) return true;
    return std::any_of(block.calcs.begin(), block.calcs.end(), [](const calcBlock_struct &calculation) {
        const std::vector<calcStack_class> &stack = calculation.stack;
        const bool isZero = stack.size() == 1 && stack[0].link.kind == LinkNone && stack[0].blockIndex == -1
                            && stack[0].operType == OperatorLoad && stack[0].constant == 0.0;
        return !stack.empty() && !isZero;
    });
}

bool hasPhrase(const logicblock_struct &block) {
    return std::any_of(block.compares.begin(), block.compares.end(),
                       [](const compare_block_class &one) { return one.a.kind == LinkSpeech; });
}

// Whether a phrase leads to the next step while the button may still be down: nothing queued waits behind
// what is said last.
bool GoesOnAtOnce(const logicblock_struct &block) {
    return hasPhrase(block) && !block.executes.empty()
           && TextOfAction(block.executes.back().type) == ActionText::Spoken;
}

// A step that takes anything takes the silence, too, in which the button is let go.
void CheckAnyAnswer(const ParameterPlace &place) {
    if (place.isFirstStep()) return;
    const std::vector<logicblock_struct> &before =
        place.device.outs[static_cast<size_t>(place.out) - 1].logic;
    if (std::none_of(before.begin(), before.end(), GoesOnAtOnce)) return;
    for (const logicblock_struct &block : place.parameter.logic)
        for (const compare_block_class &comparison : block.compares)
            if (comparison.a.kind == LinkSpeech && comparison.phrase == AnyPhrase)
                AddFinding(Severity::Warning, place.parameter.fileName, comparison.line,
                           "letting go of the button behind the phrase before answers this, too; put a pause "
                           "behind the question: execute=7,,0.5");
}

void CheckStep(const ParameterPlace &place, const std::vector<Alternatives> &conditions) {
    const out_parameter_struct &step = place.parameter;
    bool canFinish = false, isOtherFound = false; // blocks that never fire are told themselves
    for (size_t i = 0; i < step.logic.size(); i++) {
        const bool canFire = !conditions[i].list.empty() && BlockInTheWay(conditions, i) == -1;
        canFinish = canFinish || (canFire && FinishesStep(step.logic[i]));
        isOtherFound = isOtherFound || (!canFire && FinishesStep(step.logic[i]));
    }
    if ((step.hasMin && step.minLimit > 0.0) || (step.hasMax && step.maxLimit < 1.0))
        AddFinding(Severity::Error, step.fileName, step.line,
                   "the value of a step is 0, 1 or 2; the limits do not allow it");
    if (!canFinish && !isOtherFound)
        AddSymptom(Severity::Error, step.fileName, step.line, place.LastLine(),
                   "this step is never done: no block of it that can fire has an action");
    if (step.initValue != 0.0)
        AddFinding(Severity::Error, step.fileName, step.line,
                   "a step begins with the value 0, else it is done before it is reached");
    if (place.isFirstStep() && std::any_of(conditions.begin(), conditions.end(), [](const auto &one) {
            return one.isAlwaysTrue();
        }))
        AddFinding(Severity::Warning, step.fileName, step.line,
                   "this sequence starts by itself, again and again: its first step waits for nothing");
}

// A numeric comparison right under the phrases of an answer, joined by the "||" that joined those.
void CheckInheritedJoin(const logicblock_struct &block, const std::string &file) {
    for (size_t i = 1; i < block.compares.size(); i++) {
        const compare_block_class &before = block.compares[i - 1], &one = block.compares[i];
        if (one.joinOp == 1 && before.joinOp == 1 && before.a.kind == LinkSpeech && one.a.kind != LinkSpeech
            && one.line == before.line + 1)
            AddFinding(Severity::Warning, file, one.line,
                       "joined by the \"||\" above, so no answer is needed when it holds; write \"&&\" or "
                       "\"||\" before it");
    }
}

// What is offered or expected in each frame is meant to be.
bool isRepeatedEachFrame(const structExecute &action) {
    const ActionKind *kind = ActionKindOf(action.type);
    return !kind || (kind->when != ActionTime::Never && kind->text != ActionText::Phrase);
}

void CheckParameter(const ParameterPlace &place) {
    const out_parameter_struct &parameter = place.parameter;
    std::vector<Alternatives> conditions;
    for (const logicblock_struct &block : parameter.logic) conditions.push_back(AlternativesOf(block));

    for (size_t i = 0; i < parameter.logic.size(); i++) {
        const logicblock_struct &block = parameter.logic[i];
        if (!block.compares.empty() && block.compares[0].joinOp == 1)
            AddFinding(Severity::Warning, parameter.fileName, block.compares[0].line,
                       "the first comparison after \"||\" always holds: the chain starts from true");
        CheckInheritedJoin(block, parameter.fileName);
        if (!place.device.serialStack && i + 1 == parameter.logic.size() && block.executes.empty()
            && block.calcs.empty() && block.graph.empty())
            AddSymptom(Severity::Warning, parameter.fileName, block.line, place.LastLine(),
                       "this block does nothing");
        if (conditions[i].list.empty()) {
            AddFinding(Severity::Error, parameter.fileName, block.line,
                       "this block can never fire: its comparisons contradict each other");
            continue;
        }
        const int inTheWay = BlockInTheWay(conditions, i);
        if (inTheWay >= 0)
            AddFinding(Severity::Error, parameter.fileName, block.line,
                       "this block is never reached: the block in line "
                           + int2string(parameter.logic[static_cast<size_t>(inTheWay)].line)
                           + " fires whenever it could");
        if (!place.device.serialStack && conditions[i].isAlwaysTrue()
            && std::any_of(block.executes.begin(), block.executes.end(), isRepeatedEachFrame))
            AddFinding(Severity::Warning, parameter.fileName, block.line,
                       "this block's actions are repeated in every frame");
    }
    if (!place.device.serialStack) return;
    CheckStep(place, conditions);
    CheckAnyAnswer(place);
}

// It acts, but nothing gives it another value than its initial one.
bool isFixed(const ParameterPlace &place) {
    const auto has = [&](auto list) {
        return std::any_of(place.parameter.logic.begin(), place.parameter.logic.end(),
                           [&](const logicblock_struct &block) { return !(block.*list).empty(); });
    };
    return !place.device.serialStack && place.parameter.inDataref.name.empty()
           && place.parameter.outDataref.name.empty() && has(&logicblock_struct::executes)
           && !has(&logicblock_struct::calcs);
}

// What others compare with, though it never changes: most often a checklist whose device is no sequence.
void CheckFixedValues() {
    std::set<const out_parameter_struct *> compared;
    ForEachParameter([&](const ParameterPlace &place) {
        for (const logicblock_struct &block : place.parameter.logic)
            for (const compare_block_class &comparison : block.compares)
                for (const sysLink_struct *link : {&comparison.a, &comparison.b})
                    if (link->kind == LinkLive) compared.insert(ParameterAt(*link));
    });
    const device_struct *told = nullptr;
    ForEachParameter([&](const ParameterPlace &place) {
        if (told == &place.device || !isFixed(place) || !compared.contains(&place.parameter)) return;
        told = &place.device;
        AddFinding(Severity::Warning, place.parameter.fileName, place.parameter.line,
                   place.Name()
                       + " is compared with, but never changes; in a sequence, which begins with "
                         "\"devstack=\", it is 1 when the step is done");
    });
}

} // namespace

void CheckBlocks() {
    ForEachParameter(CheckParameter);
    CheckFixedValues();
}

} // namespace simhost
