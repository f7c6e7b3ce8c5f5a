// Where a parameter is used.
#pragma once

#include <vector>

#include "systems/editor_blocks.h"

// A link to the parameter: a comparison's operand or an element of a calculation.
struct out_usage_struct {
    BlockPlace place;
    int item = -1;    // comparison, or calculation
    int element = -1; // of the calculation; -1: it is a comparison
};

extern std::vector<out_usage_struct> usageVector;

// Fills usageVector with the uses of the parameter, in the model's order.
void UsageVectorRebuild(int sys, int dev, int out);
