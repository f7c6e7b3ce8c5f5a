// A segment holds x from its first point, included, to its second, excluded. Where the points ascend only one
// can, so it does not matter how it is found.
#include "systems/graph.h"

#include <algorithm>

namespace {

bool isHeld(std::span<const GraphPoint> points, size_t segment, double x) {
    return points[segment].x <= x && x < points[segment + 1].x;
}

double Interpolate(const GraphPoint &from, const GraphPoint &to, double x) {
    return from.y + (x - from.x) * (to.y - from.y) / (to.x - from.x);
}

// Whether x lies outside, which gives the y of an end; so does one that is no number.
bool isOutside(std::span<const GraphPoint> points, double x, double &y) {
    if (points.empty())
        y = 0.0;
    else if (!(x > points.front().x))
        y = points.front().y;
    else if (!(x < points.back().x))
        y = points.back().y;
    else
        return false;
    return true;
}

} // namespace

bool isAscending(std::span<const GraphPoint> points) {
    for (size_t i = 1; i < points.size(); i++)
        if (!(points[i - 1].x <= points[i].x)) return false;
    return true;
}

double LookUpAscending(std::span<const GraphPoint> points, double x, size_t &segment) {
    double y;
    if (isOutside(points, x, y)) return y;
    if (segment + 1 >= points.size() || !isHeld(points, segment, x)) {
        const auto isBefore = [](double value, const GraphPoint &point) { return value < point.x; };
        const auto next = std::upper_bound(points.begin(), points.end(), x, isBefore);
        segment = static_cast<size_t>(next - points.begin()) - 1;
    }
    return Interpolate(points[segment], points[segment + 1], x);
}

double LookUpUnordered(std::span<const GraphPoint> points, double x) {
    double y;
    if (isOutside(points, x, y)) return y;
    for (size_t i = 0; i + 1 < points.size(); i++)
        if (isHeld(points, i, x)) return Interpolate(points[i], points[i + 1], x);
    return 0.0;
}
