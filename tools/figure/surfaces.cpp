// Skins found by rays: from inside outwards, so a solid must be seen whole from its axis.
#include "tools/figure/surfaces.h"

namespace figure_maker {

namespace {

const double Pi = 180 * Degree;

Grid EmptyGrid(int columns, int rows) {
    Grid grid;
    grid.columns = columns;
    grid.rows = rows;
    const size_t count = static_cast<size_t>(columns * rows);
    grid.positions.resize(count);
    grid.normals.resize(count);
    grid.openness.assign(count, 1);
    return grid;
}

void TakeNormals(Grid &grid, const Solid &solid) {
    for (size_t i = 0; i < grid.positions.size(); i++) grid.normals[i] = OutOf(solid, grid.positions[i]);
}

} // namespace

Vec Leave(const Solid &solid, Vec from, Vec direction, double reach) {
    double travelled = 0;
    for (int step = 0; step < 160 && travelled < reach; step++) {
        const double distance = solid(from + direction * travelled);
        if (distance > -2e-6) break;
        travelled += std::max(-distance * 0.7, 2e-5);
    }
    return from + direction * std::min(travelled, reach);
}

Grid BallSkin(const Solid &solid, const Frame &centre, int columns, int rows, const Warp &columnWarp,
              const Warp &rowWarp) {
    Grid grid = EmptyGrid(columns, rows);
    for (int row = 0; row < rows; row++) {
        const double v = static_cast<double>(row) / (rows - 1);
        const double elevation = ((rowWarp ? rowWarp(v) : v) - 0.5) * Pi;
        for (int column = 0; column < columns; column++) {
            const double u = static_cast<double>(column % (columns - 1)) / (columns - 1);
            const double azimuth = (columnWarp ? columnWarp(u) : u) * 2 * Pi;
            const Vec local = {std::sin(azimuth) * std::cos(elevation), std::sin(elevation),
                               std::cos(azimuth) * std::cos(elevation)};
            grid.At(column, row) = Leave(solid, centre.origin, ToWorldDirection(centre, local), 1);
        }
    }
    TakeNormals(grid, solid);
    return grid;
}

Grid LimbSkin(const Solid &solid, Vec a, Vec b, Vec behind, int columns, int rows, double capShareA,
              double capShareB) {
    Grid grid = EmptyGrid(columns, rows);
    const Vec along = Unit(b - a);
    const Vec z = Unit(behind - along * Dot(behind, along)), x = Cross(z, along);
    for (int row = 0; row < rows; row++) {
        const double v = static_cast<double>(row) / (rows - 1);
        double share = std::clamp((v - capShareA) / (1 - capShareA - capShareB), 0.0, 1.0);
        double tilt = 0; // towards b
        if (v < capShareA) tilt = -(1 - v / capShareA) * Pi / 2;
        if (v > 1 - capShareB) tilt = (v - 1 + capShareB) / capShareB * Pi / 2;
        for (int column = 0; column < columns; column++) {
            const double azimuth = static_cast<double>(column % (columns - 1)) / (columns - 1) * 2 * Pi;
            const Vec round = x * std::sin(azimuth) + z * std::cos(azimuth);
            const Vec direction = round * std::cos(tilt) + along * std::sin(tilt);
            grid.At(column, row) = Leave(solid, Mix(a, b, share), direction, 1);
        }
    }
    TakeNormals(grid, solid);
    return grid;
}

Grid Sheet(int columns, int rows, const std::function<Vec(double u, double v)> &at,
           const std::function<Vec(Vec)> &hint) {
    Grid grid = EmptyGrid(columns, rows);
    const double e = 1e-3;
    for (int row = 0; row < rows; row++)
        for (int column = 0; column < columns; column++) {
            const double u = static_cast<double>(column) / (columns - 1),
                         v = static_cast<double>(row) / (rows - 1);
            const Vec p = at(u, v);
            const Vec alongU = at(std::min(u + e, 1.0), v) - at(std::max(u - e, 0.0), v);
            const Vec alongV = at(u, std::min(v + e, 1.0)) - at(u, std::max(v - e, 0.0));
            Vec normal = Unit(Cross(alongU, alongV));
            const Vec wanted = hint(p);
            if (Dot(normal, normal) < 0.5) normal = Unit(wanted); // a pole of the sheet
            grid.At(column, row) = p;
            grid.normals[static_cast<size_t>(row * columns + column)] =
                Dot(normal, wanted) < 0 ? normal * -1 : normal;
        }
    return grid;
}

void Shade(Grid &grid, const Solid &around, double reach) {
    for (size_t i = 0; i < grid.positions.size(); i++)
        grid.openness[i] = Openness(around, grid.positions[i], grid.normals[i], reach);
}

Surface Mirror(Surface surface, int joint) {
    for (Vec &position : surface.grid.positions) position = MirrorX(position);
    for (Vec &normal : surface.grid.normals) normal = MirrorX(normal);
    surface.eyeCentre = MirrorX(surface.eyeCentre);
    surface.joint = joint;
    return surface;
}

} // namespace figure_maker
