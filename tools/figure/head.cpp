// The head's skin: a skull, a jaw and a nose melted together. Rays leave from between the ears, so nothing
// may overhang as seen from there; ears are parts of their own.
#include <array>

#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

// Millimetres of her head: to the right, up, forward.
struct Features {
    double skull; // half its width
    Vec jaw;      // below the ear, on its right
    double jawRadius;
    Vec chinCorner, chin, chinSize;
    Vec cheek;
    double brow; // thickness of the ridge
    double nose; // size, in hers
    Vec noseTip;
    double face; // half the width of the cheeks
};
// clang-format off
const Features HerFeatures = {
    .skull = 74, .jaw = {41, -43, 11}, .jawRadius = 17,
    .chinCorner = {15, -82, 67}, .chin = {0, -84, 85}, .chinSize = {17, 15, 14},
    .cheek = {24, 32, 26}, .brow = 8, .nose = 1, .noseTip = {0, -28, 103.5}, .face = 60};
const Features HisFeatures = {
    .skull = 75, .jaw = {46, -48, 9}, .jawRadius = 16,
    .chinCorner = {21, -87, 68}, .chin = {0, -89, 87}, .chinSize = {21, 15, 14},
    .cheek = {22, 32, 22}, .brow = 11, .nose = 1.14, .noseTip = {0, -29, 105}, .face = 61};
// clang-format on

// Columns begin behind; more of them stand in the face.
double FaceColumns(double u) {
    const double x = u - 0.5;
    return 0.5 + x * (0.21 + 3.16 * x * x);
}

// More rows between the chin and the brows.
double FaceRows(double v) {
    const double x = v - 0.44;
    const auto curve = [](double t) { return t * (0.42 + 2.4 * t * t); };
    return (curve(x) - curve(-0.44)) / (curve(0.56) - curve(-0.44));
}

// About the head's centre, in millimetres of her head: x to the right, y up, z forward.
Vec InHead(const Body &body, Vec p) {
    const Vec d = (p - body.headCentre) * (1000 / body.measures.head);
    return {d.x, d.y, -d.z};
}

double Spot(Vec d, double side, double up, double forward, double size) {
    return std::exp(-std::pow(Length(Vec{std::abs(d.x), d.y, d.z} - Vec{side, up, forward}) / size, 2));
}

// How much of a brow is at a place: an arch of hairs over each eye.
double Brow(double side, double up) {
    const double along = (side - 11) / 37; // 0 at the nose
    if (along < 0 || along > 1) return 0;
    const double arch = 19.5 + 5.5 * std::sin(along * 2.3) - 3.5 * along * along;
    const double width = 3.3 * (1 - 0.75 * along) * SmoothStep(0, 0.12, along) + 0.4;
    const double hairs = 0.85 + 0.25 * Noise({(side - up * 0.6) * 0.9, 0, 0});
    return (1 - SmoothStep(width * 0.55, width, std::abs(up - arch))) * hairs
           * (1 - 0.5 * SmoothStep(0.8, 1, along));
}

// A line of the skin: how near a place is to the way from a to b, seen from the front, 0 to 1.
double Crease(Vec d, Vec a, Vec b, double width) {
    const Vec p = {std::abs(d.x), d.y, 0}, along = b - a;
    const double share = std::clamp(Dot(p - a, along) / Dot(along, along), 0.0, 1.0);
    const double away = Length(p - a - along * share) / width;
    return std::exp(-away * away) * std::sin(180 * Degree * (0.08 + 0.84 * share));
}

// Lines of the forehead, beside the eyes, below them, and from the nose to the corners of the mouth.
double Lines(Vec d) {
    double lines = 0;
    for (double up : {34.0, 43.0, 52.0}) {
        const double wave = up + 1.5 * std::sin(d.x * 0.09) + 1.2 * Noise({d.x * 0.05, up, 0});
        lines += 0.55 * std::exp(-std::pow((d.y - wave) / 1.1, 2)) * SmoothStep(40, 22, std::abs(d.x));
    }
    lines += Crease(d, {13, -33, 0}, {29, -58, 0}, 1.7);
    lines += 0.8 * Crease(d, {20, -8, 0}, {40, -7, 0}, 1.3);
    for (double up : {8.0, 2.0, -4.0}) lines += 0.6 * Crease(d, {51, up * 0.5, 0}, {62, up * 1.4, 0}, 1.0);
    return lines + 0.5 * Crease(d, {4, 14, 0}, {5, 27, 0}, 1.0);
}

// Where a beard grows, 0 to 1: below a line from the ear to the mouth, on the upper lip, and before the ear.
double Beard(Vec d) {
    const double side = std::abs(d.x);
    const double line = -18 - 0.34 * std::clamp(d.z - 8, 0.0, 70.0);
    const double cheek = SmoothStep(line + 5, line - 7, d.y) * SmoothStep(-6, 8, d.z);
    const double lip = SmoothStep(-38, -43, d.y) * SmoothStep(34, 24, side) * SmoothStep(40, 60, d.z);
    const double sideburn =
        SmoothStep(2, 7, d.z) * SmoothStep(24, 16, d.z) * SmoothStep(12, 0, d.y) * SmoothStep(-40, -20, d.y);
    const double mouth = Length({side / 27, (d.y + 57.5) / 8, 0});
    return std::max({cheek, lip, sideburn}) * SmoothStep(0.9, 1.25, mouth);
}

Texel PaintFace(const Body &body, int index, const SkinPoint &point) {
    const Look &look = LookOf(body, index);
    const Vec d = InHead(body, point.position);
    const double side = std::abs(d.x), up = d.y, forward = d.z;
    const double flush = body.isMan ? 0.75 : 1;
    const double redness = (0.34 * Spot(d, 44, -20, 72, 26) + 0.5 * Spot(d, 0, -30, 108, 13)
                            + 0.22 * Spot(d, 0, -84, 88, 20) + 0.3 * Spot(d, 31, 4, 80, 16))
                           * flush;
    Texel texel = Skin(point, look.tone, redness);
    const double beard = look.stubble * Beard(d), hairs = 0.75 + 0.5 * Turbulence(d * 0.9, 2);
    texel.color =
        Mix(texel.color, Mix(look.hair, look.tone.skin * 0.5, 0.25), std::min(1.0, beard * hairs) * 0.85);
    texel.height += 0.0004 * beard * hairs;
    if (forward > 20) {
        // Eye shadow, the crease beside the nose, nostrils, lines, brows.
        const double socket = Spot(d, 30, 9, 84, 15);
        texel.color = Mix(texel.color, look.tone.blood * 0.78, 0.34 * socket);
        const double lines = look.age * Lines(d);
        texel.height -= 0.0007 * lines;
        texel.color = texel.color * (1 - 0.13 * std::min(1.0, lines));
        const double nostril = std::exp(-(std::pow((side - 6.8) / 3.6, 2) + std::pow((up + 38.5) / 2.2, 2)));
        if (forward > 85) texel.color = Mix(texel.color, look.tone.blood * 0.3, std::min(1.0, nostril * 0.9));
        const double full = body.isMan ? 1.0 : 0.85;
        const double brow = std::clamp(Brow(side, body.isMan ? 19 + (up - 19) * 0.72 : up), 0.0, 1.0);
        texel.color = Mix(texel.color, look.brow, full * brow);
        texel.height += 0.0004 * brow;
        // A shadow under the lower lip.
        texel.color = texel.color * (1 - 0.10 * Spot(d, 0, -74, 92, 9));
    }
    // Short hairs where the hair begins.
    const double hair = HairSolid(body, index, point.position);
    const double strand = Turbulence({std::atan2(d.x, d.y - 10) * 45, d.z * 0.04, 0}, 2);
    const double fringe = 1 - SmoothStep(-0.0005, 0.0042, hair + 0.0016 * strand);
    if (up > -60 && forward < 100) texel.color = Mix(texel.color, look.hair, 0.8 * fringe);
    return texel;
}

// The ear in its own plane, about the canal: millimetres backwards and up. Its outline, clockwise as one sees
// the right one, from behind: over the top, down before the canal, and round the lobe.
const int OutlinePoints = 12;
const double EarOutline[OutlinePoints][2] = {{19.5, 0},   {20, 11.5}, {13, 24.5}, {2, 30},
                                             {-8, 25},    {-11, 13},  {-11.5, 1}, {-10.5, -9},
                                             {-9.5, -20}, {-5, -27},  {4.5, -28}, {13.5, -15.5}};

// How far the outline is from the canal, in a direction.
double EarRadius(double degrees) {
    static const auto radii = [] {
        std::array<double, 360> found{};
        const auto point = [](int i) {
            const double *at = EarOutline[(i + OutlinePoints) % OutlinePoints];
            return Vec{at[0], at[1], 0};
        };
        // A curve through all points, each with the slope of its neighbours.
        for (int i = 0; i < OutlinePoints; i++)
            for (int step = 0; step < 400; step++) {
                const double t = step / 400.0, u = 1 - t;
                const Vec from = (point(i + 1) - point(i - 1)) * 0.5, to = (point(i + 2) - point(i)) * 0.5;
                const Vec p = point(i) * (u * u * (1 + 2 * t)) + point(i + 1) * (t * t * (1 + 2 * u))
                              + from * (t * u * u) - to * (t * t * u);
                const double turn = std::atan2(p.y, p.x) / Degree;
                found[static_cast<size_t>(std::lround(turn + 360)) % 360] = Length(p);
            }
        return found;
    }();
    const double turn = std::fmod(degrees + 720, 360), whole = std::floor(turn);
    const size_t i = static_cast<size_t>(whole) % 360;
    return Mix(radii[i], radii[(i + 1) % 360], turn - whole);
}

// A hill of height 1 about a direction, or a share of the way to the rim.
double About(double value, double middle, double width) {
    return std::exp(-std::pow((value - middle) / width, 2));
}
double AboutTurn(double degrees, double middle, double width) {
    return About(std::remainder(degrees - middle, 360), 0, width);
}

// Its relief, millimetres outwards: the direction, 0 behind and 90 above, and the share of the way to the
// rim.
double EarRelief(double degrees, double share) {
    const double turn = std::remainder(degrees - 60, 360) + 60; // -120 to 240
    // The helix begins before the canal, runs over the top and down behind, and ends above the lobe.
    const double rolled = SmoothStep(-64, -30, turn) * SmoothStep(204, 166, turn);
    const double helix = 4.2 * rolled * About(share, 0.88, 0.11);
    const double groove = -1.5 * rolled * About(share, 0.715, 0.08);
    // The antihelix lies within it and divides above; between its legs and the helix is a hollow.
    const double ridge =
        3.4 * SmoothStep(-78, -48, turn) * SmoothStep(62, 34, turn) * About(share, 0.58, 0.11)
        + 2.4 * AboutTurn(turn, 76, 15) * About(share, 0.62, 0.2)
        + 2.0 * AboutTurn(turn, 128, 15) * About(share, 0.50, 0.2);
    const double hollow = -1.4 * AboutTurn(turn, 102, 13) * About(share, 0.68, 0.16);
    // The bowl, with the helix's root above the canal; before the canal the tragus, behind it its
    // counterpart, and the notch between them.
    const double bowl = -5.5 * (1 - SmoothStep(0.26, 0.52, share));
    const double root =
        3.4 * AboutTurn(turn, 158, 17) * SmoothStep(0.12, 0.3, share) * SmoothStep(0.95, 0.5, share);
    const double tragus = 5.2 * AboutTurn(turn, 190, 24) * About(share, 0.62, 0.22);
    const double counterpart = 2.6 * AboutTurn(turn, -62, 17) * About(share, 0.46, 0.13);
    const double notch = -2.6 * AboutTurn(turn, -108, 17) * About(share, 0.42, 0.16);
    const double lobe = 1.4 * AboutTurn(turn, -88, 34) * About(share, 0.78, 0.24);
    // In front, and at the lobe's front, it grows out of the cheek.
    const double rooted = -3.5 * AboutTurn(turn, 206, 46) * SmoothStep(0.72, 1, share);
    return helix + groove + ridge + hollow + bowl + root + tragus + counterpart + notch + lobe + rooted;
}

// Polar: u round, from behind; v from the canal to the rim, and behind it back to the head.
const double EarRim = 7.0 / 9; // of v
Vec OnEar(const Body &body, double u, double v) {
    const double turn = u * 360, c = std::cos(turn * Degree), s = std::sin(turn * Degree);
    double share = 0.05 + 0.95 * v / EarRim, out = 0; // no pole: it has no normal
    if (share <= 1) {
        out = EarRelief(turn, share);
    } else {
        const double back = (v - EarRim) / (1 - EarRim);
        share = 1 + 0.05 * std::sin(back * 180 * Degree) - 0.36 * back * back;
        out = EarRelief(turn, 1) - 17 * back;
    }
    const double radius = share * EarRadius(turn) * (body.isMan ? 1.02 : 1);
    // Stands off behind and above, leans back.
    const Vec placed =
        Turn(Turn(Vec{out + 0.10 * s * radius, s * radius, c * radius}, {0, 1, 0}, 22), {1, 0, 0}, 9);
    return OnHead(body, 77.5 + placed.x, -8 + placed.y, -6 - placed.z);
}

Texel PaintEar(const Tone &tone, const SkinPoint &point) {
    const double turn = point.u * 360, share = std::min(1.0, 0.05 + 0.95 * point.v / EarRim);
    // What lies deeper than its surroundings is darker, edges let light through.
    const double here = EarRelief(turn, share);
    double around = 0;
    for (int side = 0; side < 8; side++) {
        const double a = side * 45 * Degree;
        around += EarRelief(turn + 16 * std::cos(a), std::clamp(share + 0.16 * std::sin(a), 0.0, 1.0)) / 8;
    }
    const double deep =
        std::clamp((around - here) / 3.0, -0.5, 1.0) + 0.5 * (1 - SmoothStep(0.05, 0.3, share));
    Texel texel = Skin(point, tone, 0.26 + 0.2 * SmoothStep(0.8, 0.95, share));
    texel.color = Mix(texel.color, tone.blood * 0.45, 0.42 * std::clamp(deep, 0.0, 1.0))
                  * (1 - 0.10 * std::min(0.0, deep));
    return texel;
}

void AddNeck(Surfaces &surfaces, const Body &body, const Tone &tone, const Solid &around) {
    const Vec nape = body.At(Neck).pivot, skull = body.At(Head).pivot;
    const Path path = {{nape + Vec{0, -0.005, 0.001}, skull + Vec{0, 0.012, 0}}, 0};
    const std::vector<double> rows = Rows({Steps(0, 0.36, 2), Steps(0.52, 1, 3)});
    Surface neck;
    neck.joint = BodyTop;
    neck.looks = LooksWith(body, tone);
    neck.chart = std::string("neck ") + tone.name;
    neck.width = 130;
    neck.height = 110;
    neck.isHalved = true;
    neck.paint = [&tone](const SkinPoint &point) { return Skin(point, tone, 0.05); };
    neck.grid = LimbSkin([&](Vec p) { return NeckSolid(body, p); }, path, {0, 0, 1}, 15, rows, 0.12);
    Shade(neck.grid, around, 0.06);
    AddBending(surfaces, neck, rows, {{Neck, 0, 0.36}, {Head, 0.52, 1}}, 1, 0.0008);
}

} // namespace

double HeadSolid(const Body &body, Vec p) {
    const Features &f = body.isMan ? HisFeatures : HerFeatures;
    const Vec d = InHead(body, p), q = {std::abs(d.x), d.y, d.z};
    double skin = Ellipsoid(q, {0, 40, -4}, {f.skull, 77, 94});
    skin = Join(skin, Ellipsoid(q, {0, 46, 40}, {60, 56, 54}), 22);                 // forehead
    skin = Join(skin, Ellipsoid(q, {0, -14, 28}, {f.face, 70, 60}), 26);            // face
    skin = Join(skin, RoundCone(q, f.jaw, f.chinCorner, f.jawRadius, 14), 28);      // jaw
    skin = Join(skin, Ellipsoid(q, f.chin, f.chinSize), 18);                        // chin
    skin = Join(skin, Ellipsoid(q, {0, -54, 74}, {29, 26, 26}), 20);                // round the mouth
    skin = Join(skin, Ellipsoid(q, {32, -38, 52}, f.cheek), 28);                    // cheek
    skin = Join(skin, Ellipsoid(q, {39, -10, 57}, {20, 15, 18}), 28);               // cheekbone
    skin = Join(skin, RoundCone(q, {8, 20, 85}, {44, 23, 68}, f.brow, f.brow), 16); // brow
    skin = Cut(skin, Ellipsoid(q, {32, 4, 99}, {19, 13.5, 18}), 14);                // socket
    const double n = f.nose;
    skin = Join(skin, RoundCone(q, {0, 13, 82}, f.noseTip - Vec{0, -8, 4}, 6 * n, 6.8 * n), 17); // nose
    skin = Join(skin, Ellipsoid(q, f.noseTip, Vec{8.2, 7.4, 8.0} * n), 9);
    skin = Join(skin, Ellipsoid(q, {9.8 * n, f.noseTip.y - 3.5, 94.5}, Vec{5.8, 5.4, 8.5} * n), 8); // wing
    skin =
        Cut(skin, RoundCone(q, {0, f.noseTip.y - 16 * n, 101}, {0, -52, 100}, 2.4, 3.0), 6); // below the nose
    skin = Cut(skin, Ellipsoid(q, {0, f.chin.y + 9.5, 101}, {16, 4.5, 8}), 10);              // below the lips
    return skin * (0.001 * body.measures.head);
}

double NeckSolid(const Body &body, Vec p) {
    const Vec nape = body.At(Neck).pivot, skull = body.At(Head).pivot;
    const double size = body.measures.neck;
    double skin = RoundCone(p, nape + Vec{0, -0.015, 0.007}, skull + Vec{0, -0.005, -0.002}, 0.051 * size,
                            0.046 * size);
    const Vec q = {std::abs(p.x), p.y, p.z};
    skin = Join(skin,
                RoundCone(q, nape + Vec{0.014, -0.007, -0.043} * size, skull + Vec{0.046 * size, -0.005, 0},
                          0.008 * size, 0.008 * size),
                0.02); // muscle
    const double throat = body.isMan ? 0.015 : 0.012;
    return Join(skin,
                Ellipsoid(p, Mix(nape, skull, 0.58) + Vec{0, 0.002, -0.048 * size}, {throat, 0.02, throat}),
                0.02);
}

Grid HeadSkin(const Body &body, int columns, int rows) {
    return BallSkin([&](Vec p) { return HeadSolid(body, p); }, {OnHead(body, 0, -6, 20)}, columns, rows,
                    FaceColumns, FaceRows);
}

void AddHead(Surfaces &surfaces, const Body &body) {
    for (int look = 0; look < LookCount; look++) {
        Surface head;
        head.joint = Head;
        head.looks = 1 << look;
        head.chart = ChartOf(body, look, "head");
        head.width = 400;
        head.height = 590;
        head.isHalved = true;
        head.paint = [&body, look](const SkinPoint &point) { return PaintFace(body, look, point); };
        head.grid = HeadSkin(body, 35, 37);
        Shade(
            head.grid,
            [&](Vec p) {
                return std::min({HeadSolid(body, p), HairSolid(body, look, p), NeckSolid(body, p)});
            },
            0.016);
        HideWhere(head,
                  [&](Vec p) { return HairSolid(body, look, p) < -0.0025 || NeckSolid(body, p) < -0.012; });
        surfaces.push_back(head);
    }
    for (const Tone *tone : {&LightTone(), &DarkTone()}) {
        Surface ear;
        ear.joint = Head;
        ear.looks = LooksWith(body, *tone);
        for (int look = 0; look < LookCount; look++)
            if (LookOf(body, look).style == HairStyle::Bob) ear.looks &= ~(1 << look);
        ear.chart = std::string("ear ") + tone->name;
        ear.width = 130;
        ear.height = 110;
        ear.paint = [tone](const SkinPoint &point) { return PaintEar(*tone, point); };
        ear.grid = Sheet(21, 10, [&](double u, double v) { return OnEar(body, u, v); }, {});
        HideWhere(ear, [&](Vec p) { return HeadSolid(body, p) < -0.005; });
        surfaces.push_back(ear);
        surfaces.push_back(Mirror(ear));
        AddNeck(surfaces, body, *tone, [&](Vec p) {
            return std::min({HeadSolid(body, p), HairSolid(body, 0, p), NeckSolid(body, p)});
        });
    }
}

} // namespace figure_maker
