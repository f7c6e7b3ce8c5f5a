// The systems cycle as the description of the files reads, over the records alone. Slow and obvious, with
// arithmetic, comparisons, graphs and datarefs of its own: what the program must agree with, frame by frame.
#pragma once

#include <vector>

// What each parameter's blocks found in the last frame that was not paused: empty for a step that was passed
// over; else for each block whether it was true and whether it fired, then both operands and the outcome of
// each comparison, then operand and result of each element.
extern std::vector<std::vector<double>> referenceFindings;

// One frame. The model's values are those of the records, so the program must not have been compiled since
// the last ModelChanges.
void ReferenceCycle();
