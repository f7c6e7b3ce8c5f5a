// Graph tables: a value looked up between points.
#pragma once

#include <cstddef>
#include <span>

struct GraphPoint {
    double x = 0.0, y = 0.0;
};

// True when no x is less than the one before it.
bool isAscending(std::span<const GraphPoint> points);

// Linear between the points, in the order they stand; flat outside the first and the last. 0 when the points
// do not ascend and no segment holds x. For points that ascend the segment that was used last is tried first,
// and kept in segment; any will do to begin with.
double LookUpAscending(std::span<const GraphPoint> points, double x, size_t &segment);
double LookUpUnordered(std::span<const GraphPoint> points, double x);
