// Made models of which as much changes in a frame as one wants, for comparing ways to evaluate them.
#pragma once

#include <string>
#include <vector>

#include "XPLMDataAccess.h"

// The systems file of a model with that many parameters, the same at every call. They are in four groups of
// 0.1, 0.9, 9 and 90 % of them. A change of a group's pulse changes all that are in it and hardly any other:
// a parameter adds the pulse to what it calculates from parameters of its own group and slower ones, and
// compares any of those before it, by values that the pulses do not reach. Each has two blocks of two
// comparisons, one behind them without, and four elements in each.
//
// hasMore: one in three has limits, one in four a list in a comparison, one in ten a dataref in or out.
std::string ChangingModel(int parameters, bool hasMore);

// The datarefs of the pulses, published by ChangingModel.
const int PulseGroups = 4;
const float PulseAtRest[PulseGroups] = {1.0617F, 1.1373F, 0.9241F, 1.0893F}; // so that sums hardly ever meet
std::vector<XPLMDataRef> Pulses();
