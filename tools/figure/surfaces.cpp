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

Vec Path::At(double along) const {
    double length = 0;
    for (size_t i = 0; i + 1 < points.size(); i++) length += Length(points[i + 1] - points[i]);
    double left = along * length;
    for (size_t i = 0; i + 1 < points.size(); i++) {
        const Vec a = points[i], b = points[i + 1], direction = Unit(b - a);
        const double span = Length(b - a);
        const bool isLast = i + 2 == points.size();
        // Near a point between two lines the way is a parabola that touches both.
        if (i > 0 && left < rounding) {
            const double t = 0.5 + left / rounding / 2;
            const Vec from = a - Unit(a - points[i - 1]) * rounding, to = a + direction * rounding;
            return Mix(Mix(from, a, t), Mix(a, to, t), t);
        }
        if (!isLast && left > span - rounding && left <= span) {
            const double t = (left - span + rounding) / rounding / 2;
            const Vec from = b - direction * rounding, to = b + Unit(points[i + 2] - b) * rounding;
            return Mix(Mix(from, b, t), Mix(b, to, t), t);
        }
        if (left <= span || isLast) return a + direction * left;
        left -= span;
    }
    return points.back();
}

Warp ColumnsAtCorners(const Solid &solid, const Path &path, Vec behind) {
    const int count = 360;
    const Grid round = LimbSkin(solid, path, behind, count + 1, {0.5});
    std::vector<double> lengths(1, 0), bends(1, 0);
    for (size_t i = 0; i < count; i++) {
        lengths.push_back(lengths.back() + Length(round.positions[i + 1] - round.positions[i]));
        const double cosine = Dot(round.normals[i + 1], round.normals[i]);
        bends.push_back(bends.back() + std::acos(std::clamp(cosine, -1.0, 1.0)));
    }
    std::vector<double> shares;
    for (size_t i = 0; i < lengths.size(); i++)
        shares.push_back(0.5 * lengths[i] / lengths.back() + 0.5 * bends[i] / bends.back());
    return [shares](double u) {
        const auto above = std::upper_bound(shares.begin() + 1, shares.end() - 1, u);
        const size_t i = static_cast<size_t>(above - shares.begin());
        const double share = (u - shares[i - 1]) / (shares[i] - shares[i - 1]);
        return (static_cast<double>(i) - 1 + share) / count;
    };
}

Grid LimbSkin(const Solid &solid, const Path &path, Vec behind, int columns, const std::vector<double> &rows,
              double reach, const Warp &columnWarp) {
    Grid grid = EmptyGrid(columns, static_cast<int>(rows.size()));
    for (int row = 0; row < grid.rows; row++) {
        const double place = rows[static_cast<size_t>(row)], at = std::clamp(place, 0.0, 1.0);
        const double tilt = (place - at) * Pi / 2; // towards the end
        const Vec centre = path.At(at), along = Unit(path.At(at + 0.005) - path.At(at - 0.005));
        const Vec z = Unit(behind - along * Dot(behind, along)), x = Cross(z, along);
        for (int column = 0; column < columns; column++) {
            const double u = static_cast<double>(column % (columns - 1)) / (columns - 1);
            const double azimuth = (columnWarp ? columnWarp(u) : u) * 2 * Pi;
            const Vec round = x * std::sin(azimuth) + z * std::cos(azimuth);
            const Vec direction = round * std::cos(tilt) + along * std::sin(tilt);
            grid.At(column, row) = Leave(solid, centre, direction, reach);
        }
    }
    TakeNormals(grid, solid);
    return grid;
}

std::vector<double> Steps(double from, double to, int count) {
    std::vector<double> steps;
    for (int i = 0; i <= count; i++) steps.push_back(Mix(from, to, static_cast<double>(i) / count));
    return steps;
}

std::vector<double> Rows(const std::vector<std::vector<double>> &lists) {
    std::vector<double> rows;
    for (const auto &list : lists) rows.insert(rows.end(), list.begin(), list.end());
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end(), [](double a, double b) { return b - a < 1e-6; }),
               rows.end());
    return rows;
}

namespace {

// Rows of a skin; those behind the last one lie under what follows.
Surface Piece(const Surface &skin, int first, int last, int tucked, double depth) {
    Surface piece = skin;
    piece.firstRow = first;
    const Grid &whole = *skin.whole;
    const int end = std::min(last + tucked, whole.rows - 1);
    piece.grid = EmptyGrid(whole.columns, end - first + 1);
    if (!skin.hidden.empty())
        piece.hidden.assign(skin.hidden.begin() + first * whole.columns,
                            skin.hidden.begin() + (end + 1) * whole.columns);
    for (int row = first; row <= end; row++) {
        const double sunk = row > last ? depth * (row - last) / tucked : 0;
        for (int column = 0; column < whole.columns; column++) {
            const size_t from = static_cast<size_t>(row * whole.columns + column),
                         to = static_cast<size_t>((row - first) * whole.columns + column);
            piece.grid.positions[to] = whole.positions[from] - whole.normals[from] * sunk;
            piece.grid.normals[to] = whole.normals[from];
            piece.grid.openness[to] = whole.openness[from];
        }
    }
    return piece;
}

} // namespace

void AddBending(std::vector<Surface> &surfaces, const Surface &skin, const std::vector<double> &rows,
                const std::vector<Bend> &bends, int tuckedRows, double depth) {
    const auto rowAt = [&](double place) {
        return static_cast<int>(std::lower_bound(rows.begin(), rows.end(), place - 1e-6) - rows.begin());
    };
    Surface rest = skin;
    rest.whole = std::make_shared<Grid>(skin.grid);
    int row = 0;
    for (const Bend &bend : bends) {
        const int first = rowAt(bend.from), bands = rowAt(bend.to) - first;
        if (first > row) surfaces.push_back(Piece(rest, row, first, tuckedRows, depth));
        rest.joint = bend.joint;
        for (int band = 0; band < bands; band++) {
            // Small steps at both ends, far from the joint, where they would show most.
            rest.share = SmoothStep(0, 1, (band + 1.0) / (bands + 1));
            surfaces.push_back(Piece(rest, first + band, first + band + 1, tuckedRows, depth));
        }
        rest.share = 1;
        row = first + bands;
    }
    if (row + 1 < skin.grid.rows) surfaces.push_back(Piece(rest, row, skin.grid.rows - 1, 0, 0));
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
            const Vec wanted = hint ? hint(p) : normal;
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

void HideWhere(Surface &surface, const std::function<bool(Vec)> &isCovered) {
    surface.hidden.clear();
    for (Vec p : surface.grid.positions) surface.hidden.push_back(isCovered(p));
}

namespace {

void MirrorGrid(Grid &grid) {
    for (Vec &position : grid.positions) position = MirrorX(position);
    for (Vec &normal : grid.normals) normal = MirrorX(normal);
}

int OtherSide(int joint) {
    if (joint >= RightArm && joint < LeftLeg) return joint - RightArm + LeftArm;
    if (joint >= RightLeg && joint < WholeFigure) return joint - RightLeg + LeftLeg;
    return joint;
}

} // namespace

Surface Mirror(const Surface &surface) {
    Surface mirrored = surface;
    MirrorGrid(mirrored.grid);
    mirrored.eyeCentre = MirrorX(surface.eyeCentre);
    mirrored.joint = OtherSide(surface.joint);
    return mirrored;
}

void AddMirrored(std::vector<Surface> &surfaces, size_t first) {
    for (size_t i = first, end = surfaces.size(); i < end; i++) surfaces.push_back(Mirror(surfaces[i]));
}

} // namespace figure_maker
