// Skins of parts: grids of points, each grid one chart of the texture. Grids are found by rays that leave an
// axis and stop at the skin of a solid, or are given point by point.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "figure/rig.h"
#include "tools/figure/solids.h"

namespace figure_maker {

// What stands at one point of a skin, and what a texture holds there.
struct SkinPoint {
    Vec position, normal; // at rest
    double u = 0, v = 0;  // 0 to 1 across the grid
    double openness = 1;
};
struct Texel {
    Vec color;          // 0 to 1 each, as shown
    double height = 0;  // metres above the skin, for the normal map
    double gloss = 0.1; // 0 to 1
    double metal = 0;   // 0 to 1
};
using Paint = std::function<Texel(const SkinPoint &)>;

// When a part is shown.
enum class Shown {
    Always,
    EyesOpen,
    EyesClosed,
    LipsOpen,
    LipsClosed,
    LipsNarrow,
    LipsRound,
    WithGlasses,
    WithTablet,
    Writing
};

// A person can look in three ways; a set of bits says with which of them a part is shown.
const int LookCount = 3, AllLooks = (1 << LookCount) - 1;

// A grid of columns (u) and rows (v), row by row; u runs round a tube, the first and last column being the
// same points.
struct Grid {
    int columns = 0, rows = 0;
    std::vector<Vec> positions, normals;
    std::vector<double> openness;
    Vec &At(int column, int row) { return positions[static_cast<size_t>(row * columns + column)]; }
};

struct Surface {
    Grid grid;
    int joint = WholeFigure; // of the channel that carries it
    double share = 1;        // how much of that joint's turn it takes
    Shown shown = Shown::Always;
    int looks = AllLooks;
    std::string chart;         // surfaces that name the same chart share its part of the texture
    int width = 0, height = 0; // of the chart, texels
    Paint paint;               // of the first surface that names the chart
    bool isHalved = false;     // the chart holds one side (u up to 0.5), and serves both
    bool turnsWithEyes = false;
    Vec eyeCentre;
    std::shared_ptr<const Grid> whole; // the skin that this piece was cut out of, from firstRow on
    int firstRow = 0;
    std::vector<bool> hidden; // points that other parts always cover; empty: none
};

// Where a ray from inside leaves the solid; at the reach if it does not.
Vec Leave(const Solid &solid, Vec from, Vec direction, double reach);

// A ball-like skin: rays from the centre, in every direction. The poles lie along the frame's y; columns
// begin behind (at +z). The warps move columns and rows to where detail is, 0..1 to 0..1.
using Warp = std::function<double(double)>;
Grid BallSkin(const Solid &solid, const Frame &centre, int columns, int rows, const Warp &columnWarp = {},
              const Warp &rowWarp = {});

// A line through a limb: straight between the points, rounded at those between the ends.
struct Path {
    std::vector<Vec> points;
    double rounding = 0;        // metres before and behind a point
    Vec At(double along) const; // 0 to 1 by length; beyond, straight on
};

// A limb's skin: rays square to a path, closed by half balls of rays. Rows are places on the path, 0 to 1;
// those down to -1 and up to 2 belong to the half balls. Columns begin at the direction given, which need not
// be square to the path. No ray goes farther than the reach.
Grid LimbSkin(const Solid &solid, const Path &path, Vec behind, int columns, const std::vector<double> &rows,
              double reach = 1, const Warp &columnWarp = {});

// Columns of such a skin, for what has corners: found in the middle of the path, as many of them where the
// skin bends as where it is long.
Warp ColumnsAtCorners(const Solid &solid, const Path &path, Vec behind);

// Places from one to another, both included.
std::vector<double> Steps(double from, double to, int count);
// The places of all lists, each once, ascending.
std::vector<double> Rows(const std::vector<std::vector<double>> &lists);

// Where a skin runs over a joint: from one row to another, given by their places, each band of the skin takes
// a larger share of its turn.
struct Bend {
    int joint;
    double from, to;
};
// Adds a skin in pieces, beginning with the joint that carries its first row. Each piece reaches under the
// next by some rows, as deep as said, so that a turn opens no gap.
void AddBending(std::vector<Surface> &surfaces, const Surface &skin, const std::vector<double> &rows,
                const std::vector<Bend> &bends, int tuckedRows, double depth);

// A sheet given point by point; normals from its neighbours, pointing to the side of the hint, or without one
// to that from which v lies on the left of u.
Grid Sheet(int columns, int rows, const std::function<Vec(double u, double v)> &at,
           const std::function<Vec(Vec)> &hint);

// Sets openness from the solids around.
void Shade(Grid &grid, const Solid &around, double reach);

// Hides the points that the test accepts: a triangle between such points alone is not made.
void HideWhere(Surface &surface, const std::function<bool(Vec)> &isCovered);

// The same part on the other side.
Surface Mirror(const Surface &surface);
// Adds, to right limbs' surfaces from an index on, those of the left ones.
void AddMirrored(std::vector<Surface> &surfaces, size_t first);

} // namespace figure_maker
