// The operators of comparisons and calculations: how they are written, and what they do with numbers.
#pragma once

#include <cmath>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "util/numbers.h"

// ---- Comparisons ----

// A comparison operator as it is written, and taken apart into two relations, of which at least one is asked
// for: the first operand is greater than the second, or equal to it. "<" and "<=" swap the operands, "!="
// negates.
struct Comparator {
    const char *text;
    bool greater;
    bool equal;
    bool swapped;
    bool negated;
};

enum ComparisonOperator {
    CompareEqual = 0,
    CompareNotEqual = 1,
    CompareGreater = 2,
    CompareLess = 3,
    CompareAtLeast = 4,
    CompareAtMost = 5,
};

inline constexpr Comparator Comparators[] = {
    {"==", false, true, false, false}, {"!=", false, true, false, true}, {">", true, false, false, false},
    {"<", true, false, true, false},   {">=", true, true, false, false}, {"<=", true, true, true, false},
}; // by operator code
const int ComparisonOperators = std::size(Comparators);

// By its text; -1: there is none.
constexpr int ComparisonOf(std::string_view text) {
    for (int oper = 0; oper < ComparisonOperators; oper++)
        if (text == Comparators[oper].text) return oper;
    return -1;
}

// Those that a list can be compared with.
constexpr bool isEquality(int comparisonOperator) {
    return comparisonOperator == CompareEqual || comparisonOperator == CompareNotEqual;
}

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
    OperatorBinaryToInteger = 5,
    OperatorFloor = 6,
};

struct OperatorWords {
    const char *text;   // in the files
    const char *label;  // in the editor
    const char *result; // for the table of docs/systems-files.md, in its language
};
inline constexpr OperatorWords Operators[] = {
    {"", " =", "the operand"},
    {"+", " +", "the sum"},
    {"-", " -", "the difference"},
    {"*", " *", "the product"},
    {"/", " /", "the quotient; division by 0 gives 0"},
    {"b2i", "b2i",
     "the digits of the running value read as a binary number: 101 gives 5 (write `b2i[0]`; the operand is "
     "ignored)"},
    {"flr", "flr", "the running value rounded down (write `flr[0]`)"},
}; // by operator code
const int CalculationOperators = std::size(Operators);

// By its text; -1: there is none.
constexpr int OperatorOf(std::string_view text) {
    for (int oper = 0; oper < CalculationOperators; oper++)
        if (text == Operators[oper].text) return oper;
    return -1;
}

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
