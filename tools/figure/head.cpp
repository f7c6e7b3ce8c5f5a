// The head's skin: a skull, a jaw and a nose melted together. Rays leave from between the ears, so nothing
// may overhang as seen from there; ears are parts of their own.
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
    .skull = 74, .jaw = {44, -43, 11}, .jawRadius = 18,
    .chinCorner = {15, -82, 66}, .chin = {0, -84, 83}, .chinSize = {17, 15, 14},
    .cheek = {24, 32, 26}, .brow = 8, .nose = 1, .noseTip = {0, -29, 103}, .face = 60};
const Features HisFeatures = {
    .skull = 75, .jaw = {52, -50, 9}, .jawRadius = 17,
    .chinCorner = {21, -87, 67}, .chin = {0, -89, 85}, .chinSize = {21, 15, 14},
    .cheek = {22, 32, 22}, .brow = 11, .nose = 1.18, .noseTip = {0, -30, 105}, .face = 61};
// clang-format on

// Columns begin behind; more of them stand in the face.
double FaceColumns(double u) {
    const double x = u - 0.5;
    return 0.5 + x * (0.22 + 3.12 * x * x);
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

// The ear in its own plane: a hollow, folds round it, the rim, and the way back to the head behind. Polar: u
// round, from behind; v from the hollow to the rim (at 0.75) and behind.
Vec OnEar(const Body &body, double u, double v) {
    const double a = u * 360 * Degree; // 0 behind, 90 degrees above
    const double c = std::cos(a), s = std::sin(a);
    const double front = std::max(0.0, -c), low = std::max(0.0, -s);
    // Wide and round above, narrow at the lobe.
    const double round = 1 / std::pow(std::pow(std::abs(c), 2.4) + std::pow(std::abs(s), 2.4), 1 / 2.4);
    double radius = v / 0.75, out = 0;
    if (v <= 0.75) {
        out = -4.5 * (1 - SmoothStep(0.18, 0.42, radius))
              + 1.6 * std::exp(-std::pow((radius - 0.52) / 0.10, 2))
              + 2.8 * std::exp(-std::pow((radius - 0.90) / 0.11, 2)) * (1 - 0.75 * front) * (1 - 0.7 * low);
        out += 2.6 * std::exp(-std::pow((radius - 0.42) / 0.2, 2)) * std::pow(front, 4); // before the canal
    } else {
        const double back = (v - 0.75) / 0.25;
        radius = 1 - 0.34 * back * back + 0.03 * std::sin(back * 180 * Degree);
        out = 2.2 - 17 * back;
    }
    const double wide = (c > 0 ? 15.5 : 13.0) * (1 - 0.36 * low * low);
    const Vec flat = {out, (s > 0 ? 25.5 : 27.5) * s * round * radius, wide * c * round * radius};
    // Stands off behind, leans back above.
    const Vec placed = Turn(Turn(flat, {0, 1, 0}, 20), {1, 0, 0}, 12);
    return OnHead(body, 76.0 + placed.x, -4 + placed.y, -7 - placed.z);
}

Texel PaintEar(const Tone &tone, const SkinPoint &point) {
    Texel texel = Skin(point, tone, 0.30);
    const double depth = std::exp(-std::pow((point.v - 0.13) / 0.10, 2))
                         + 0.4 * std::exp(-std::pow((point.v - 0.50) / 0.05, 2));
    texel.color = texel.color * (1 - 0.28 * depth);
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
    skin = Join(skin, Ellipsoid(q, {0, -57, 71}, {29, 24, 26}), 20);                // round the mouth
    skin = Join(skin, Ellipsoid(q, {32, -38, 52}, f.cheek), 28);                    // cheek
    skin = Join(skin, Ellipsoid(q, {39, -10, 57}, {20, 15, 18}), 28);               // cheekbone
    skin = Join(skin, RoundCone(q, {8, 20, 85}, {44, 23, 68}, f.brow, f.brow), 16); // brow
    skin = Cut(skin, Ellipsoid(q, {32, 4, 99}, {19, 13.5, 18}), 14);                // socket
    const double n = f.nose;
    skin = Join(skin, RoundCone(q, {0, 13, 82}, f.noseTip - Vec{0, -8, 4}, 6 * n, 7.2 * n), 13); // nose
    skin = Join(skin, Ellipsoid(q, f.noseTip, Vec{8.2, 7.4, 8.0} * n), 9);
    skin = Join(skin, Ellipsoid(q, {9.8 * n, f.noseTip.y - 3.5, 94.5}, Vec{5.8, 5.4, 8.5} * n), 6); // wing
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
        head.height = 600;
        head.isHalved = true;
        head.paint = [&body, look](const SkinPoint &point) { return PaintFace(body, look, point); };
        head.grid = HeadSkin(body, 37, 37);
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
        ear.grid = Sheet(
            13, 9, [&](double u, double v) { return OnEar(body, u, v); },
            [&](Vec p) {
                const Vec out = p - OnHead(body, 70, -2, -12);
                return Vec{out.x * 2, out.y * 0.3, out.z * 0.3};
            });
        HideWhere(ear, [&](Vec p) { return HeadSolid(body, p) < -0.005; });
        surfaces.push_back(ear);
        surfaces.push_back(Mirror(ear));
        AddNeck(surfaces, body, *tone, [&](Vec p) {
            return std::min({HeadSolid(body, p), HairSolid(body, 0, p), NeckSolid(body, p)});
        });
    }
}

} // namespace figure_maker
