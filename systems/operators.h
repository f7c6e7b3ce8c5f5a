// What comparisons and calculations do with numbers: the one definition that the records and the compiled
// program share.
#pragma once

#include <cmath>
#include <cstdint>

#include "util/numbers.h"

// ---- Comparisons ----

// A comparison operator, taken apart into two relations, of which at least one is asked for: the first
// operand is greater than the second, or equal to it. "<" and "<=" swap the operands, "!=" negates.
struct Comparator {
    bool greater;
    bool equal;
    bool swapped;
    bool negated;
};

// "==", "!=", ">", "<", ">=", "<=", by operator code.
const Comparator Comparators[] = {
    {false, true, false, false}, {false, true, false, true}, {true, false, false, false},
    {true, false, true, false},  {true, true, false, false}, {true, true, true, false},
};
const int ComparisonOperators = 6;

const char *const ComparisonTexts[ComparisonOperators] = {"==", "!=", ">",
                                                          "<",  ">=", "<="}; // by operator code

// 0 or 1, for operands already swapped. Without a branch: the outcome changes from parameter to parameter.
inline unsigned CompareNumbers(double a, double b, unsigned greater, unsigned equal, unsigned negated) {
    return ((static_cast<unsigned>(a > b) & greater) | (static_cast<unsigned>(a == b) & equal)) ^ negated;
}

// ---- Calculations ----

enum CalculationOperator {
    OperatorLoad = 0,
    OperatorAdd = 1,
    OperatorSubtract = 2,
    OperatorMultiply = 3,
    OperatorDivide = 4,
    OperatorBinaryToInteger = 5, // "b2i"
    OperatorFloor = 6,           // "flr"
};
const int CalculationOperators = 7;
const char *const OperatorTexts[CalculationOperators] = {"", "+", "-", "*", "/", "b2i", "flr"};

// The decimal digits of the integer part read as a base-2 number (1100 gives 12), up to the first digit
// that is neither 0 nor 1.
double BinaryToInteger(double value);

// Any other operator is no operator and returns the accumulator. The common four are looked up among their
// results instead of branched to: which one comes next is not predictable.
inline double ApplyOperator(int operatorType, double accumulator, double operand) {
    if (operatorType >= OperatorLoad && operatorType <= OperatorMultiply) [[likely]] {
        const double results[] = {operand, accumulator + operand, accumulator - operand,
                                  accumulator * operand};
        return results[operatorType];
    }
    switch (operatorType) {
    case OperatorDivide: return operand == 0.0 ? 0.0 : accumulator / operand;
    case OperatorBinaryToInteger: return BinaryToInteger(accumulator);
    case OperatorFloor: return std::floor(accumulator);
    default: return accumulator;
    }
}
