// Hair: a shell over the skull that dips below the skin at the hairline, cut as the style says, and a knot.
#include <array>

#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

// Millimetres of the head: to the right, up, forward.
struct Ball {
    Vec centre, size;
};
struct Shape {
    // Long hair is a shell over the skull, melted with the nape and cut by the face and the temples.
    Vec shell = {}; // half sizes
    Ball nape = {}, face = {}, temple = {};
    double roots = 0; // thickness where it rises from the forehead
    // Short hair lies on the skull: its thickness on the crown and at the nape, and how far forward it goes
    // at which height.
    double top = 0, low = 0;
    std::vector<std::array<double, 2>> hairline = {};
    // Both are cut about the ear and below.
    Ball ear = {};
    double lowest = 0;
};

// How far forward short hair goes at a height.
double Hairline(const Shape &shape, double up) {
    size_t i = 0;
    while (i + 2 < shape.hairline.size() && up > shape.hairline[i + 1][0]) i++;
    const auto &a = shape.hairline[i], &b = shape.hairline[i + 1];
    return Mix(a[1], b[1], (up - a[0]) / (b[0] - a[0]));
}

const Shape &ShapeOf(HairStyle style) {
    // clang-format off
    static const Shape knot = {
        .shell = {81, 84.5, 98}, .nape = {{0, -8, -56}, {58, 52, 46}}, .face = {{0, 16, 104}, {63, 66, 66}},
        .temple = {{70, 60, 84}, {20, 20, 20}}, .roots = 12, .ear = {{74, -40, 22}, {40, 50, 33}}, .lowest = -90};
    static const Shape bob = {
        .shell = {84, 88, 100}, .nape = {{0, -18, -20}, {89, 88, 82}}, .face = {{0, -2, 104}, {61, 80, 78}},
        .temple = {{70, -60, 84}, {30, 40, 50}}, .roots = 14, .ear = {{0, -110, 60}, {50, 50, 70}}, .lowest = -74};
    static const Ball ear = {{80, -30, 8}, {30, 42, 24}};
    static const Shape cut = {
        .top = 8.5, .low = 1.5,
        .hairline = {{-60, -10}, {-14, 12}, {4, 17}, {26, 38}, {46, 43}, {64, 58}, {78, 74}, {94, 93}, {112, 120}},
        .ear = ear, .lowest = -54};
    static const Shape receding = {
        .top = 4.5, .low = 1.5,
        .hairline = {{-60, -10}, {-14, 10}, {4, 14}, {34, 34}, {62, 26}, {90, 26}, {108, 44}, {125, 70}},
        .ear = ear, .lowest = -54};
    static const Shape cropped = {
        .top = 3.5, .low = 1.2,
        .hairline = {{-60, -10}, {-14, 14}, {6, 20}, {26, 46}, {60, 52}, {78, 76}, {94, 93}, {112, 120}},
        .ear = ear, .lowest = -54};
    // clang-format on
    switch (style) {
    case HairStyle::Bob: return bob;
    case HairStyle::Short: return cut;
    case HairStyle::Receding: return receding;
    case HairStyle::Cropped: return cropped;
    default: return knot;
    }
}

// Columns begin behind; more of them stand about the face.
double HairColumns(double u) {
    const double x = u - 0.5;
    return 0.5 + x * (0.85 + 0.6 * x * x);
}

Vec KnotCentre(const Body &body) {
    return OnHead(body, 0, -18, -104);
}

double KnotSolid(const Body &body, Vec p) {
    return Ellipsoid(p, KnotCentre(body), {0.036, 0.033, 0.028});
}

// Strands run from the crown, or from the forehead to the knot.
double Strands(const Body &body, HairStyle style, Vec p, double fine) {
    const Vec d = p - (style == HairStyle::Knot ? KnotCentre(body) : OnHead(body, 0, 96, -50));
    const double around = (style == HairStyle::Knot ? std::atan2(d.x, d.y) : std::atan2(d.x, d.z)) * 26;
    return Turbulence({around * fine, Length(d) * 22, 3}, 3);
}

Texel PaintHair(const Body &body, int index, const SkinPoint &point) {
    const Look &look = LookOf(body, index);
    const bool isCropped = look.style == HairStyle::Cropped;
    const double curl = isCropped ? Turbulence(point.position * 500, 2) : 0;
    const double strands = isCropped ? curl : Strands(body, look.style, point.position, 1),
                 fine = isCropped ? curl : Strands(body, look.style, point.position, 3);
    // A sheen across the crown, and grey hairs.
    const double sheen = isCropped ? 0 : std::exp(-std::pow((point.normal.y - 0.72) / 0.16, 2));
    Texel texel;
    Vec color = look.hair * (0.88 + 0.30 * strands + 0.18 * fine + 0.35 * sheen);
    if (look.age > 0.6) color = Mix(color, Color(196, 192, 188), 0.5 * SmoothStep(0.0, 0.5, fine));
    texel.color = Shaded(color, point.openness);
    texel.height = 0.0006 * strands + 0.0003 * fine;
    texel.gloss = isCropped ? 0.12 : 0.42;
    return texel;
}

Texel PaintKnot(const Body &body, int index, const SkinPoint &point) {
    const Vec d = (point.position - KnotCentre(body)) * 1000;
    const double coil =
        std::sin(std::atan2(d.x, d.y) * 2 + Length({d.x, d.y, 0}) * 0.22 + 0.6 * Noise(d * 0.06));
    const double fine = Turbulence({Length({d.x, d.y, 0}) * 0.9, std::atan2(d.x, d.y) * 2, 7}, 2);
    Texel texel;
    texel.color = Shaded(LookOf(body, index).hair * (0.95 + 0.16 * coil + 0.25 * fine), point.openness);
    texel.height = 0.0016 * coil + 0.0004 * fine;
    texel.gloss = 0.4;
    return texel;
}

} // namespace

double HairSolid(const Body &body, int look, Vec p) {
    const Shape &shape = ShapeOf(LookOf(body, look).style);
    const double scale = 0.001 * body.measures.head;
    const Vec d = (p - body.headCentre) * (1 / scale), q = {std::abs(d.x), d.y, -d.z};
    double hair = 0;
    if (shape.top > 0) {
        // Down the nape, too.
        const double behind = Hairline(shape, q.y) - q.z;
        const double thick =
            Mix(shape.low, shape.top, SmoothStep(-35, 75, q.y)) * SmoothStep(-12, 48, behind);
        hair = Join(HeadSolid(body, p), NeckSolid(body, p), 0.012) / scale - thick;
        hair = Cut(hair, behind, 8);
    } else {
        hair = Join(Ellipsoid(q, {0, 42, -8}, shape.shell), Ellipsoid(q, shape.nape.centre, shape.nape.size),
                    26);
        // Up over the forehead, down at the temple, behind the ear.
        hair = Join(hair, RoundCone(q, {0, 88, 62}, {62, 50, 34}, shape.roots, shape.roots), 26);
        hair = Cut(hair, Ellipsoid(q, shape.face.centre, shape.face.size), 14);
        hair = Cut(hair, Ellipsoid(q, shape.temple.centre, shape.temple.size), 12);
    }
    hair = Cut(hair, Ellipsoid(q, shape.ear.centre, shape.ear.size), 12);
    return Cut(hair, q.y - shape.lowest, 16) * scale;
}

void AddHair(Surfaces &surfaces, const Body &body) {
    for (int look = 0; look < LookCount; look++) {
        const bool hasKnot = LookOf(body, look).style == HairStyle::Knot;
        const Solid around = [&](Vec p) {
            return hasKnot ? std::min(HairSolid(body, look, p), KnotSolid(body, p))
                           : HairSolid(body, look, p);
        };
        Surface hair;
        hair.joint = Head;
        hair.looks = 1 << look;
        hair.chart = ChartOf(body, look, "hair");
        hair.width = 240;
        hair.height = 340;
        hair.isHalved = true;
        hair.paint = [&body, look](const SkinPoint &point) { return PaintHair(body, look, point); };
        hair.grid = BallSkin([&](Vec p) { return HairSolid(body, look, p); }, {OnHead(body, 0, 34, -22)}, 25,
                             18, HairColumns);
        Shade(hair.grid, around, 0.03);
        HideWhere(hair, [&](Vec p) { return HeadSolid(body, p) < -0.004; });
        surfaces.push_back(hair);
        if (!hasKnot) continue;
        Surface knot = hair;
        knot.hidden.clear();
        knot.chart = ChartOf(body, look, "knot");
        knot.width = 90;
        knot.height = 100;
        knot.paint = [&body, look](const SkinPoint &point) { return PaintKnot(body, look, point); };
        knot.grid = BallSkin([&](Vec p) { return KnotSolid(body, p); }, {KnotCentre(body)}, 13, 9);
        Shade(knot.grid, around, 0.03);
        surfaces.push_back(knot);
    }
}

} // namespace figure_maker
