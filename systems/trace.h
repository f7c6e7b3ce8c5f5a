// What a logic block did in the last frame, for the editor. While frames are traced, each keeps the values
// that it began with; from these a block is evaluated again when it is asked for, and nothing is stored.
#pragma once

#include <vector>

#include "systems/program.h"

struct ComparisonTrace {
    double a = 0.0, b = 0.0; // the values of the operands; of speech 0, and so is b of a list
    bool isTrue = false;
};

struct ElementTrace {
    double operand = 0.0, result = 0.0;
};

struct BlockTrace {
    bool isEvaluated = false; // false for a step that was passed over: the rest is what it would have found
    bool hasFired = false;
    bool isTrue = false;                      // what its comparisons make together
    std::vector<ComparisonTrace> comparisons; // as many as the block has
    std::vector<ElementTrace> elements;       // at least as many, of all calculations behind each other
};

// From the next frame on. Costs a copy of all values a frame.
extern bool areFramesTraced;

// A frame begins, with the recognition as it is; and the block at that index of the program consumes it.
void BeginTracedFrame(SystemsProgram &program);
void TraceConsumption(SystemsProgram &program, uint32_t block);

// The block of a parameter, with the values that the parameter saw in the last frame: of those before it the
// new ones, of itself and those behind it the old ones. After a change of the model it is evaluated with the
// values of now. False, and the trace is empty, when there is no such block.
bool TraceBlock(const ParameterAddress &place, int block, BlockTrace &trace);
