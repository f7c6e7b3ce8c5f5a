// Hair drawn back into a low knot: a shell over the skull that dips below the skin at the hairline.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

Vec KnotCentre() {
    return OnHead(0, -18, -104);
}

double KnotSolid(Vec p) {
    return Ellipsoid(p, KnotCentre(), {0.036, 0.033, 0.028});
}

// Strands run from the parting to the knot.
double Strands(Vec p, double fine) {
    const Vec d = p - KnotCentre();
    const double around = std::atan2(d.x, d.y) * 26;
    return Turbulence({around * fine, Length(d) * 22, 3}, 3);
}

Texel PaintHair(const SkinPoint &point) {
    const Vec d = (point.position - HeadCentre) * 1000;
    const double strands = Strands(point.position, 1), fine = Strands(point.position, 3);
    Texel texel;
    // A sheen across the crown.
    const double sheen = std::exp(-std::pow((point.normal.y - 0.72) / 0.16, 2));
    Vec color = HairBrown * (0.88 + 0.30 * strands + 0.18 * fine + 0.35 * sheen);
    const double parting =
        std::exp(-std::pow((d.x + 20) / 1.8, 2)) * SmoothStep(96, 108, d.y) * SmoothStep(-5, 25, -d.z);
    color = Mix(color, SkinTone * 0.8, 0.6 * parting);
    texel.color = Shaded(color, point.openness);
    texel.height = 0.0006 * strands + 0.0003 * fine - 0.001 * parting;
    texel.gloss = 0.42;
    return texel;
}

Texel PaintKnot(const SkinPoint &point) {
    const Vec d = (point.position - KnotCentre()) * 1000;
    const double coil =
        std::sin(std::atan2(d.x, d.y) * 2 + Length({d.x, d.y, 0}) * 0.22 + 0.6 * Noise(d * 0.06));
    const double fine = Turbulence({Length({d.x, d.y, 0}) * 0.9, std::atan2(d.x, d.y) * 2, 7}, 2);
    Texel texel;
    texel.color = Shaded(HairBrown * (0.95 + 0.16 * coil + 0.25 * fine), point.openness);
    texel.height = 0.0016 * coil + 0.0004 * fine;
    texel.gloss = 0.4;
    return texel;
}

} // namespace

double HairSolid(Vec p) {
    const Vec d = (p - HeadCentre) * 1000;
    const Vec q = {std::abs(d.x), d.y, -d.z};
    double hair = Ellipsoid(q, {0, 42, -8}, {82.5, 86, 99});
    hair = Join(hair, Ellipsoid(q, {0, -8, -56}, {58, 52, 46}), 26); // nape
    // The hairline: up over the forehead, down at the temple, behind the ear.
    hair = Join(hair, RoundCone(q, {0, 89, 64}, {62, 50, 34}, 15, 12), 26);
    const double face = Ellipsoid(q, {0, 16, 104}, {63, 66, 66});
    hair = Cut(hair, face, 10);
    hair = Cut(hair, Ellipsoid(q, {74, -40, 22}, {40, 50, 33}), 12);
    return hair * 0.001;
}

void AddHair(std::vector<Surface> &surfaces) {
    Surface hair;
    hair.joint = Head;
    hair.chart = "hair";
    hair.width = 700;
    hair.height = 520;
    hair.paint = PaintHair;
    hair.grid = BallSkin(HairSolid, {OnHead(0, 34, -22)}, 43, 31);
    Shade(
        hair.grid, [](Vec p) { return std::min(HairSolid(p), KnotSolid(p)); }, 0.03);
    surfaces.push_back(hair);

    Surface knot;
    knot.joint = Head;
    knot.chart = "knot";
    knot.width = 240;
    knot.height = 160;
    knot.paint = PaintKnot;
    knot.grid = BallSkin(KnotSolid, {KnotCentre()}, 19, 11);
    Shade(
        knot.grid, [](Vec p) { return std::min(HairSolid(p), KnotSolid(p)); }, 0.03);
    surfaces.push_back(knot);
}

} // namespace figure_maker
