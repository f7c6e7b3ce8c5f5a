// Where parameters are used.
#pragma once

#include <string>
#include <vector>

#include "systems/editor/blocks.h"

enum UsageKind { UsedInComparison, UsedInCalculation, UsedInText };

// A link to the parameter: a comparison's operand, an element of a calculation, or spoken.
struct out_usage_struct {
    BlockPlace place;
    int kind = UsedInComparison;
    int item = -1;    // comparison, calculation or action
    int element = -1; // of the calculation
};

struct UsageState {
    std::vector<out_usage_struct> uses;
    ParameterAddress place;   // whose uses they are
    unsigned changeCount = 0; // of the model that they were collected from
    bool isCollected = false;
};
extern UsageState usageState;
inline std::vector<out_usage_struct> &usageVector = usageState.uses;

// Fills usageVector with the uses of the parameter, in the model's order.
void UsageVectorRebuild(const ParameterAddress &place);

// The same, unless usageVector holds them already.
void RefreshUsage(const ParameterAddress &place);

// Who uses what is about to be deleted: "A.B.C, A.B.D and 3 more", parameters outside of it that are not
// deleted themselves; empty when nobody does. The address of a system or device stands for all that is in it.
std::string UsersOutside(const ParameterAddress &place);

// A parameter, such as "A.B.C", that says the value of what is named so, or of something in it; or empty.
std::string SpeakerOf(const ParameterAddress &place);
