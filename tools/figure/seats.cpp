// A pair of pilots' seats, hers at the origin and the captain's at her left: cushion, back with side
// bolsters, headrest, armrests and a base. The captain has turned the armrest between them up. They share a
// cut of cloth, so one seat's charts serve both.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

const double CaptainsSide = -1.06; // metres from seat to seat
const double FloorHeight = -0.34;

// A box with rounded edges.
double Padding(Vec p, Vec half, double edge) {
    const Vec d = {std::abs(p.x) - half.x + edge, std::abs(p.y) - half.y + edge,
                   std::abs(p.z) - half.z + edge};
    const Vec out = {std::max(d.x, 0.0), std::max(d.y, 0.0), std::max(d.z, 0.0)};
    return Length(out) + std::min(0.0, std::max({d.x, d.y, d.z})) - edge;
}

// Along the back's recline: y up the back, z behind it.
Frame BackFrame() {
    return FrameAlong({0, 0.36, 0.315}, {0, 0.16, -1}, {0, 1, 0.16});
}

double CushionSolid(Vec p) {
    const double dip = 0.018 * std::exp(-std::pow(p.x / 0.15, 4)) * SmoothStep(-0.24, -0.05, p.z);
    double pad =
        Padding(p - Vec{0, -0.062, 0.01}, {0.245, 0.068, 0.25}, 0.05) + dip * SmoothStep(-0.06, 0, p.y);
    return Join(pad,
                Padding(Vec{std::abs(p.x), p.y, p.z} - Vec{0.215, -0.035, 0.03}, {0.036, 0.06, 0.22}, 0.032),
                0.03);
}

double BackSolid(Vec p) {
    const Vec q = ToLocal(BackFrame(), p);
    const double narrow = 1 + 0.16 * SmoothStep(0, 0.33, q.y);
    const Vec w = {q.x * narrow, q.y, q.z};
    double pad = Padding(w, {0.24, 0.355, 0.055}, 0.045);
    pad = Join(pad,
               Padding(Vec{std::abs(w.x), w.y, w.z} - Vec{0.205, -0.05, -0.045}, {0.036, 0.25, 0.055}, 0.034),
               0.035);
    return Join(pad, Padding(w - Vec{0, -0.16, -0.045}, {0.14, 0.10, 0.03}, 0.028), 0.05); // lumbar
}

double HeadrestSolid(Vec p) {
    const Vec q = ToLocal(BackFrame(), p) - Vec{0, 0.455, -0.01};
    return Padding({q.x, q.y, q.z - 1.2 * q.x * q.x}, {0.135, 0.085, 0.048}, 0.042);
}

Texel PaintUpholstery(const SkinPoint &point) {
    const Vec p = point.position;
    Texel texel = Cloth(point, Color(78, 84, 94), {0, 1, 0}, 0.0005);
    // Pipes across the middle, leather at the sides, and a seam between. Nothing is finer than two texels.
    const double side = SmoothStep(0.161, 0.169, std::abs(p.x));
    const double along = p.y > 0.02 ? p.y : p.z;
    const double pipe = std::abs(std::fmod(along + 2, 0.065) - 0.0325) / 0.0325;
    const double groove = SmoothStep(0.72, 1, pipe) * (1 - side);
    const Vec leather = Shaded(Color(52, 55, 60) * (1 + 0.05 * Turbulence(p * 40, 2)), point.openness);
    const double seam = std::exp(-std::pow((std::abs(p.x) - 0.165) / 0.005, 2));
    texel.color = Mix(texel.color, leather, side) * (1 - 0.28 * groove) * (1 - 0.35 * seam);
    texel.gloss = Mix(texel.gloss, 0.25, side);
    texel.height -= 0.004 * groove + 0.003 * seam;
    return texel;
}

Texel PaintMetal(const SkinPoint &point) {
    Texel texel;
    texel.color = Color(96, 98, 102) * (0.55 + 0.4 * point.openness + 0.1 * point.normal.y);
    texel.gloss = 0.5;
    return texel;
}

Texel PaintArmrest(const SkinPoint &point) {
    Texel texel;
    texel.color = Shaded(Color(44, 46, 50) * (1 + 0.06 * Turbulence(point.position * 40, 2)), point.openness);
    texel.gloss = 0.25;
    return texel;
}

void AddPart(std::vector<Surface> &parts, const std::string &chart, int width, int height, const Paint &paint,
             Grid grid, const Solid &around) {
    Surface part;
    part.chart = chart;
    part.width = width;
    part.height = height;
    part.paint = paint;
    part.grid = std::move(grid);
    Shade(part.grid, around, 0.08);
    parts.push_back(part);
}

// An armrest is turned up about its hinge, beside the back.
void FoldUp(Grid &grid) {
    const Vec hinge = {0.315, 0.235, 0.24}, axis = {1, 0, 0};
    for (Vec &position : grid.positions) position = hinge + Turn(position - hinge, axis, 76);
    for (Vec &normal : grid.normals) normal = Turn(normal, axis, 76);
}

} // namespace

void AddSeats(std::vector<Surface> &surfaces) {
    const Solid whole = [](Vec p) { return std::min({CushionSolid(p), BackSolid(p), HeadrestSolid(p)}); };
    std::vector<Surface> parts;
    const Frame back = BackFrame();
    // More rows where the ends have their corners.
    const std::vector<double> ends =
        Rows({{-1, -0.75, -0.55, -0.42, -0.31, -0.21, -0.11, 0}, {1, 1.11, 1.21, 1.31, 1.42, 1.55, 1.75, 2}});
    const Path cushion = {{{0, -0.06, 0.19}, {0, -0.06, -0.17}}, 0};
    AddPart(parts, "cushion", 420, 280, PaintUpholstery,
            LimbSkin(CushionSolid, cushion, {0, -1, 0}, 45, Rows({ends, Steps(0, 1, 8)}), 1,
                     ColumnsAtCorners(CushionSolid, cushion, {0, -1, 0})),
            whole);
    const Path upright = {{ToWorld(back, {0, -0.25, 0}), ToWorld(back, {0, 0.25, 0})}, 0};
    AddPart(parts, "back", 380, 380, PaintUpholstery,
            LimbSkin(BackSolid, upright, {0, 0, 1}, 41, Rows({ends, Steps(0, 1, 14)}), 1,
                     ColumnsAtCorners(BackSolid, upright, {0, 0, 1})),
            whole);
    const Path across = {{ToWorld(back, {-0.07, 0.455, 0}), ToWorld(back, {0.07, 0.455, 0})}, 0};
    AddPart(parts, "headrest", 200, 120, PaintArmrest,
            LimbSkin(HeadrestSolid, across, {0, 0, 1}, 21, Rows({ends, Steps(0, 1, 4)}), 1,
                     ColumnsAtCorners(HeadrestSolid, across, {0, 0, 1})),
            whole);
    for (double side : {-1.0, 1.0}) {
        const Solid armrest = [=](Vec p) {
            return Padding(p - Vec{side * 0.315, 0.235, 0.10}, {0.030, 0.020, 0.165}, 0.018);
        };
        AddPart(parts, "armrest", 160, 60, PaintArmrest,
                LimbSkin(armrest, {{{side * 0.315, 0.235, 0.24}, {side * 0.315, 0.235, -0.04}}, 0},
                         {0, -1, 0}, 17, Rows({Steps(-1, 0, 4), Steps(0, 1, 3), Steps(1, 2, 4)})),
                armrest);
        const Solid post = [=](Vec p) {
            return RoundCone(p, {side * 0.315, 0.225, 0.22}, {side * 0.255, 0.16, 0.30}, 0.013, 0.015);
        };
        AddPart(parts, "metal", 40, 40, PaintMetal,
                LimbSkin(post, {{{side * 0.315, 0.225, 0.22}, {side * 0.255, 0.16, 0.30}}, 0}, {0, 0, 1}, 11,
                         Steps(-1, 2, 6)),
                post);
        const Solid rail = [=](Vec p) {
            return Padding(p - Vec{side * 0.15, FloorHeight + 0.012, 0.02}, {0.028, 0.014, 0.34}, 0.008);
        };
        AddPart(
            parts, "metal", 40, 40, PaintMetal,
            LimbSkin(
                rail,
                {{{side * 0.15, FloorHeight + 0.012, 0.35}, {side * 0.15, FloorHeight + 0.012, -0.31}}, 0},
                {0, -1, 0}, 13, {-1, -0.6, -0.3, 0, 1, 1.3, 1.6, 2}),
            rail);
    }
    const Solid base = [](Vec p) {
        const double slope = std::clamp((p.y - FloorHeight) / (-0.12 - FloorHeight), 0.0, 1.0);
        return Padding(p - Vec{0, (FloorHeight - 0.11) / 2, 0.04},
                       {Mix(0.20, 0.13, slope), (-0.11 - FloorHeight) / 2, Mix(0.19, 0.14, slope)}, 0.02)
               * 0.8;
    };
    AddPart(parts, "base", 120, 120, PaintMetal,
            LimbSkin(base, {{{0, FloorHeight + 0.06, 0.04}, {0, -0.16, 0.04}}, 0}, {0, 0, 1}, 25,
                     Rows({Steps(-1, 0, 3), Steps(0, 1, 8), Steps(1, 2, 3)})),
            whole);
    for (double x : {0.0, CaptainsSide})
        for (Surface part : parts) {
            if (x != 0 && part.chart == "armrest" && part.grid.positions[0].x > 0) FoldUp(part.grid);
            for (Vec &position : part.grid.positions) position.x += x;
            surfaces.push_back(part);
        }
}

} // namespace figure_maker
