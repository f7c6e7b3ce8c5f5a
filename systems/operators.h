// What comparisons and calculations do with numbers: the one definition that the records and the compiled
// program share.
#pragma once

#include <cmath>
#include <cstdint>

#include "util/numbers.h"

// ---- Comparisons ----

// How two numbers stand to each other, as one bit.
enum Relation : unsigned { Less = 1, Equal = 2, Greater = 4, Unordered = 8 };

// The relations that satisfy "==", "!=", ">", "<", ">=", "<=", in this order.
const unsigned SatisfyingRelations[] = {
    Equal, Less | Greater | Unordered, Greater, Less, Greater | Equal, Less | Equal};
const int ComparisonOperators = 6;

// Without a branch: the outcome changes from parameter to parameter, and no processor predicts it.
inline unsigned RelationBetween(double a, double b) {
    const unsigned less = a < b;
    const unsigned equal = a == b;
    const unsigned greater = a > b;
    return less * Less | equal * Equal | greater * Greater | (1U - (less | equal | greater)) * Unordered;
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

// The decimal digits of the integer part read as a base-2 number (1100 gives 12), up to the first digit
// that is neither 0 nor 1.
double BinaryToInteger(double value);

// Any other operator is no operator and returns the accumulator.
inline double ApplyOperator(int operatorType, double accumulator, double operand) {
    switch (operatorType) {
    case OperatorLoad: return operand;
    case OperatorAdd: return accumulator + operand;
    case OperatorSubtract: return accumulator - operand;
    case OperatorMultiply: return accumulator * operand;
    case OperatorDivide: return operand == 0.0 ? 0.0 : accumulator / operand;
    case OperatorBinaryToInteger: return BinaryToInteger(accumulator);
    case OperatorFloor: return std::floor(accumulator);
    default: return accumulator;
    }
}
