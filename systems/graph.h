// Graph tables: a value looked up between points.
#pragma once

#include <vector>

#include "systems/model.h"

// Linear between the points, in the order they stand; flat outside the first and the last. Between two
// points of equal x the mean of their y; 0 when the points do not ascend and no segment holds x.
double CalcGraf(const std::vector<graf_struct> &points, double x);
