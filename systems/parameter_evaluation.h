// How a frame evaluates a parameter: its blocks over the live values (systems/evaluation.h), its datarefs and
// limits, and, where marks are kept, what its new value marks (systems/program.h). What a frame does for each
// of thousands stands here, so that its loops have it inline.
#pragma once

#include <algorithm>
#include <bit>

#include "systems/block_actions.h"
#include "systems/evaluation.h"

// The value of a step that is no calculation's.
const double StepDone = 1.0;
const double StepBrokenOff = 2.0;

// ---- What is marked ----

// What is no value and yet decides, when it has changed: whether actions are queued, and what was heard.
void NoticeSurroundings(SystemsProgram &program);

// How a value lies to another.
inline unsigned RelationOf(double value, double other) {
    return (value > other ? RelationGreater : 0U) | (value == other ? RelationEqual : 0U)
           | (value < other ? RelationLess : 0U);
}

inline bool isListedOtherwise(const ProgramArrays &arrays, uint32_t special, double before, double value) {
    const SpecialComparison &list = arrays.special[special];
    return CompareWithList(arrays, list, before) != CompareWithList(arrays, list, value);
}

// Marks those for which it makes a difference that the parameter becomes another value. Which blocks of a
// parameter a change reaches, nobody can foresee, so that is asked without a branch.
inline void MarkDependents(const ProgramArrays &arrays, uint32_t index, double value) {
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
                                     StepContext &step);

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

// By a block of the parameter that is evaluated.
void ConsumeRecognition(SystemsProgram &program, uint32_t block, const StepContext &step);

double LookUp(SystemsProgram &program, ProgramGraph &graph, double x);

// What the parameter becomes when a block with actions, speech or a graph fires.
[[gnu::noinline]] double FireWithMore(const ProgramArrays &arrays, uint32_t block, double value,
                                      StepContext &step);

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
double EvaluateAllBlocks(const ProgramArrays &arrays, uint32_t index, double value, StepContext &step);

// ---- Parameters ----

// Looks again for a dataref that was missing.
[[gnu::noinline]] bool isFound(const ProgramArrays &arrays, uint32_t dataref);

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
