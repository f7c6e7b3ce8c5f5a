// What lies in the lap: the tablet, or a pad with a pen in the right hand.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

// The pen, in the right hand's axes at rest; metres of her hand.
const Vec PenNib = {-0.021, -0.095, -0.111}, PenEnd = {-0.030, 0.028, -0.043};

// A chart page: a heading, a plan of tracks, a table.
Texel PaintScreen(const SkinPoint &point) {
    const double u = point.u, v = point.v;
    Texel texel;
    texel.gloss = 0.9;
    texel.color = Color(18, 18, 20);
    if (u < 0.06 || u > 0.94 || v < 0.06 || v > 0.94) return texel;
    texel.color = Color(222, 226, 228);
    if (v > 0.87) texel.color = Color(38, 58, 92);
    const double ring = Length({(u - 0.5) * 0.75, v - 0.58, 0});
    if (std::abs(ring - 0.2) < 0.004 || std::abs(ring - 0.1) < 0.003) texel.color = Color(120, 140, 170);
    if (std::abs((u - 0.5) + (v - 0.58) * 0.6) < 0.008 && v > 0.34 && v < 0.84)
        texel.color = Color(150, 50, 120);
    if (v < 0.29 && v > 0.10) {
        if (std::fmod(v * 100, 5.0) < 0.7)
            texel.color = Color(150, 154, 160);
        else if (std::fmod(v * 100, 5.0) > 2 && std::fmod(v * 100, 5.0) < 3.6
                 && Noise({u * 60, std::floor(v * 20) * 7, 0}) > -0.1 && u < 0.85)
            texel.color = Color(70, 74, 80);
    }
    return texel;
}

// Ruled paper on a board, with lines of handwriting.
Texel PaintPad(const SkinPoint &point) {
    const double u = point.u, v = point.v;
    Texel texel;
    texel.gloss = 0.1;
    texel.color = Color(92, 66, 44); // the board
    if (u < 0.05 || u > 0.95 || v < 0.04 || v > 0.93) {
        if (v > 0.90 && std::abs(u - 0.5) < 0.2)
            texel.color = Color(168, 170, 174), texel.gloss = 0.8, texel.metal = 1; // the clip
        return texel;
    }
    texel.color = Color(240, 238, 230);
    const double line = std::fmod(v * 18 + 100, 1.0), row = std::floor(v * 18);
    if (line < 0.07) texel.color = Color(170, 190, 214);
    const double pen = 0.38 + 0.22 * Noise({u * 46, row * 7, 3}) + 0.1 * std::sin(u * 240);
    if (v > 0.45 && u > 0.12 && u < 0.62 + 0.25 * Noise({row, 3, 1}) && std::abs(line - pen) < 0.10
        && Noise({u * 9, row * 5, 9}) > -0.35)
        texel.color = Color(38, 48, 110);
    return texel;
}

// A flat box with round corners, in its own axes: half its width, thickness and length.
double Slab(const Frame &place, Vec half, Vec p) {
    const Vec q = ToLocal(place, p);
    const Vec d = {std::abs(q.x) - half.x + 0.008, std::abs(q.y) - half.y + 0.003,
                   std::abs(q.z) - half.z + 0.008};
    const Vec out = {std::max(d.x, 0.0), std::max(d.y * 2, 0.0), std::max(d.z, 0.0)};
    return Length(out) - 0.006 + std::min(0.0, std::max({d.x, d.y, d.z}));
}

// On both thighs, the upper edge raised towards the eyes; with a picture on top.
void AddSlab(Surfaces &surfaces, const Body &body, Shown shown, const std::string &name, Vec half,
             const Texel &edge, const Paint &picture) {
    const Frame place = FrameAlong({0, body.measures.lap, -0.165}, {0, -0.42, 1}, {0, 1, 0.42});
    Surface slab;
    slab.shown = shown;
    slab.chart = name;
    slab.width = 16;
    slab.height = 12;
    slab.paint = [edge](const SkinPoint &) { return edge; };
    slab.grid = BallSkin([&](Vec p) { return Slab(place, half, p); }, place, 13, 6);
    surfaces.push_back(slab);
    Surface top = slab;
    top.chart = name + " top";
    top.width = 140;
    top.height = 190;
    top.paint = picture;
    // She sits where z grows: her right is the picture's right.
    top.grid = Sheet(
        2, 2,
        [&](double u, double v) {
            return ToWorld(place, {(u - 0.5) * -2 * (half.x - 0.003), half.y + 0.0022,
                                   (v - 0.5) * 2 * (half.z - 0.003)});
        },
        [&](Vec) { return place.y; });
    surfaces.push_back(top);
}

// Between thumb and two fingers, as the hand shape "pen" closes them (pose_recipes.cpp).
void AddPen(Surfaces &surfaces, const Body &body) {
    const Frame hand = HandFrame(body, true);
    const double size = body.measures.hand;
    const Vec nib = ToWorld(hand, PenNib * size), end = ToWorld(hand, PenEnd * size);
    Surface pen;
    pen.joint = RightArm + 2;
    pen.shown = Shown::Writing;
    pen.chart = "pen";
    pen.width = 12;
    pen.height = 40;
    pen.paint = [](const SkinPoint &point) {
        return point.v < 0.2 ? Texel{Color(196, 198, 202), 0, 0.9} : Texel{Color(24, 30, 58), 0, 0.6};
    };
    pen.grid = LimbSkin([&](Vec p) { return RoundCone(p, nib, end, 0.0012, 0.0046); }, {{nib, end}, 0},
                        {1, 0, 0}, 8, {-1, 0, 0.12, 0.2, 1, 1.5, 2});
    surfaces.push_back(pen);
}

} // namespace

void AddThings(Surfaces &surfaces, const Body &body) {
    AddSlab(surfaces, body, Shown::WithTablet, "tablet", {0.074, 0.004, 0.102},
            Texel{Color(34, 34, 37), 0, 0.5}, PaintScreen);
    AddSlab(surfaces, body, Shown::Writing, "pad", {0.070, 0.003, 0.096}, Texel{Color(92, 66, 44), 0, 0.2},
            PaintPad);
    AddPen(surfaces, body);
}

} // namespace figure_maker
