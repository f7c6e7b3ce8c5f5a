// The tablet in her lap.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

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

} // namespace

void AddTablet(std::vector<Surface> &surfaces) {
    // On both thighs, its upper edge raised towards her eyes.
    const Frame place = FrameAlong({0, 0.205, -0.165}, {0, -0.42, 1}, {0, 1, 0.42});
    const double halfWidth = 0.074, halfLength = 0.102, half = 0.004;
    const auto slab = [=](Vec p) {
        const Vec q = ToLocal(place, p);
        const Vec d = {std::abs(q.x) - halfWidth + 0.008, std::abs(q.y) - half + 0.003,
                       std::abs(q.z) - halfLength + 0.008};
        const Vec out = {std::max(d.x, 0.0), std::max(d.y * 2, 0.0), std::max(d.z, 0.0)};
        return Length(out) - 0.006 + std::min(0.0, std::max({d.x, d.y, d.z}));
    };
    Surface body;
    body.joint = WholeFigure;
    body.shown = Shown::WithTablet;
    body.chart = "tablet";
    body.width = 40;
    body.height = 24;
    body.paint = [](const SkinPoint &) { return Texel{Color(34, 34, 37), 0, 0.5}; };
    body.grid = BallSkin(slab, place, 25, 9);
    surfaces.push_back(body);
    Surface screen = body;
    screen.chart = "screen";
    screen.width = 220;
    screen.height = 300;
    screen.paint = PaintScreen;
    // She sits where z grows: her right is the picture's right.
    screen.grid = Sheet(
        2, 2,
        [=](double u, double v) {
            return ToWorld(
                place, {(u - 0.5) * -2 * (halfWidth - 0.003), 0.0062, (v - 0.5) * 2 * (halfLength - 0.003)});
        },
        [=](Vec) { return place.y; });
    surfaces.push_back(screen);
}

} // namespace figure_maker
