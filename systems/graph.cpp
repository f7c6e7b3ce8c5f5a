// The lookup walks the segments from the first: tables are a few points long.
#include "systems/graph.h"

double CalcGraf(const std::vector<graf_struct> &points, double x) {
    if (points.empty()) return 0.0;
    if (!(x > points.front().x)) return points.front().y;
    if (!(x < points.back().x)) return points.back().y;
    for (size_t i = 0; i + 1 < points.size(); i++) {
        const graf_struct &from = points[i];
        const graf_struct &to = points[i + 1];
        if (x < from.x || x >= to.x) continue;
        if (from.x == to.x) return (from.y + to.y) / 2.0;
        return from.y + (x - from.x) * (to.y - from.y) / (to.x - from.x);
    }
    return 0.0;
}
