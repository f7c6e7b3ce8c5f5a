// Skins of parts: grids of points, each grid one chart of the texture. Grids are found by rays that leave an
// axis and stop at the skin of a solid, or are given point by point.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/figure/rig.h"
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
};
using Paint = std::function<Texel(const SkinPoint &)>;

// When a part is shown.
enum class Shown { Always, EyesOpen, EyesClosed, LipsOpen, LipsClosed, WithGlasses, WithTablet };

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
    Shown shown = Shown::Always;
    std::string chart;         // surfaces that name the same chart share its part of the texture
    int width = 0, height = 0; // of the chart, texels
    Paint paint;               // of the first surface that names the chart
    bool turnsWithEyes = false;
    Vec eyeCentre;
};

// Where a ray from inside leaves the solid; at the reach if it does not.
Vec Leave(const Solid &solid, Vec from, Vec direction, double reach);

// A ball-like skin: rays from the centre, in every direction. The poles lie along the frame's y; columns
// begin behind (at +z). The warps move columns and rows to where detail is, 0..1 to 0..1.
using Warp = std::function<double(double)>;
Grid BallSkin(const Solid &solid, const Frame &centre, int columns, int rows, const Warp &columnWarp = {},
              const Warp &rowWarp = {});

// A limb's skin: rays square to an axis from a to b, closed by half balls of rays at both ends. Columns begin
// at the frame's +z, which need not be square to the axis.
Grid LimbSkin(const Solid &solid, Vec a, Vec b, Vec behind, int columns, int rows, double capShareA = 0.2,
              double capShareB = 0.2);

// A sheet given point by point; normals from its neighbours, pointing to the side of the hint.
Grid Sheet(int columns, int rows, const std::function<Vec(double u, double v)> &at,
           const std::function<Vec(Vec)> &hint);

// Sets openness from the solids around.
void Shade(Grid &grid, const Solid &around, double reach);

// The same part on the other side.
Surface Mirror(Surface surface, int joint);

} // namespace figure_maker
