// How a logic block is evaluated: its chain of comparisons, and its calculations. The frame evaluates blocks
// over the live values; the trace (systems/trace.h) evaluates them again over the values as they were, and
// tells every operand and result. A view makes the difference:
//
//     double &operator[](uint32_t)                     an operand, or where a calculation keeps its result
//     bool isTrue(const SpecialComparison &)           the outcome of a comparison that is special
//     void Compared(double a, double b, bool isTrue)   is told of every other comparison; swapped as it was
//     void Calculated(double operand, double result)   is told of every element, apart from those that keep
#pragma once

#include "systems/operators.h"
#include "systems/program.h"

// What a frame runs over. Plain pointers: the compiler need not read them again after each value that is
// stored.
struct ProgramArrays {
    double *values;
    uint16_t *firedBlocks;
    uint8_t *evaluated;
    const ProgramParameter *parameters;
    const ProgramBlock *blocks;
    const ProgramComparison *comparisons;
    const ProgramElement *elements;
    const SpecialComparison *special;
    const double *listNumbers;
    const ParameterExtras *extras;
    ProgramDataref *datarefs;
    const FirstDependents *firstDependents;
    const Dependent *dependents;
    const ComparingDependent *comparing;
    SystemsProgram &program; // what is seldom needed

    explicit ProgramArrays(SystemsProgram &program)
        : values(program.values.data()), firedBlocks(program.firedBlocks.data()),
          evaluated(program.evaluated.data()), parameters(program.parameters.data()),
          blocks(program.blocks.data()), comparisons(program.comparisons.data()),
          elements(program.elements.data()), special(program.special.data()),
          listNumbers(program.listNumbers.data()), extras(program.extras.data()),
          datarefs(program.datarefs.data()), firstDependents(program.firstDependents.data()),
          dependents(program.dependents.data()), comparing(program.comparing.data()), program(program) {}
};

// Whether a value is one of a list, or with "!=" none of it.
inline bool CompareWithList(const ProgramArrays &arrays, const SpecialComparison &comparison, double value) {
    unsigned isListed = 0;
    for (uint32_t i = comparison.first; i < comparison.end; i++) isListed |= value == arrays.listNumbers[i];
    return isListed == comparison.isEquality;
}

// Nothing is true while nothing is heard.
inline bool CompareWithSpeech(const SpecialComparison &comparison, uint32_t heard) {
    if (heard == NothingHeard) return false;
    return comparison.first == AnyPhraseNumber || (heard == comparison.first) == comparison.isEquality;
}

// Every comparison is evaluated and joined to those before it, which are true to begin with.
template <typename View>
[[gnu::always_inline]] inline bool EvaluateChain(const ProgramArrays &arrays, uint32_t block, View &view) {
    const ProgramComparison *comparison = arrays.comparisons + arrays.blocks[block].firstComparison;
    const ProgramComparison *const end = arrays.comparisons + arrays.blocks[block + 1].firstComparison;
    unsigned chain = 1;
    for (; comparison != end; ++comparison) {
        unsigned isTrue;
        if (!comparison->greater && !comparison->equal) [[unlikely]] {
            isTrue = view.isTrue(arrays.special[comparison->first]) ? 1 : 0;
        } else {
            const double first = view[comparison->first], second = view[comparison->second];
            isTrue =
                CompareNumbers(first, second, comparison->greater, comparison->equal, comparison->negated);
            view.Compared(first, second, isTrue != 0);
        }
        chain = (chain & isTrue) | (comparison->joinsWithOr & (chain | isTrue));
    }
    return chain != 0;
}

// The value of a block's calculations, starting from the parameter's value.
template <typename View>
[[gnu::always_inline]] inline double Calculate(const ProgramArrays &arrays, uint32_t block, double value,
                                               View &view) {
    const ProgramElement *element = arrays.elements + arrays.blocks[block].firstElement;
    const ProgramElement *const end = arrays.elements + arrays.blocks[block + 1].firstElement;
    double accumulator = value;
    for (; element != end; ++element) {
        if (element->oper == OperatorKeep) [[unlikely]] {
            view[element->operand] = accumulator;
            accumulator = value;
        } else {
            const double operand = view[element->operand];
            accumulator = ApplyOperator(static_cast<int>(element->oper), accumulator, operand);
            view.Calculated(operand, accumulator);
        }
    }
    return accumulator;
}
