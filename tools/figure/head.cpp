// The head's skin: a skull, a jaw and a nose melted together. Rays leave from between the ears, so nothing
// may overhang as seen from there; ears are parts of their own.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

// Columns begin behind; more of them stand in the face.
double FaceColumns(double u) {
    const double x = u - 0.5;
    return 0.5 + x * (0.42 + 2.32 * x * x);
}

// More rows between the chin and the brows.
double FaceRows(double v) {
    const double x = v - 0.44;
    const double at0 = -0.44 * (0.55 + 2.0 * 0.44 * 0.44), at1 = 0.56 * (0.55 + 2.0 * 0.56 * 0.56);
    return (x * (0.55 + 2.0 * x * x) - at0) / (at1 - at0);
}

double Spot(Vec p, double right, double up, double forward, double size) {
    return std::exp(-std::pow(Length(p - OnHead(right, up, forward)) * 1000 / size, 2));
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

Texel PaintFace(const SkinPoint &point) {
    const Vec p = point.position;
    const Vec d = (p - HeadCentre) * 1000;
    const double side = std::abs(d.x), up = d.y, forward = -d.z;
    double redness = 0.34 * Spot(p, d.x > 0 ? 44 : -44, -20, 72, 26) + 0.5 * Spot(p, 0, -30, 108, 13)
                     + 0.22 * Spot(p, 0, -84, 88, 20) + 0.3 * Spot(p, d.x > 0 ? 31 : -31, 4, 80, 16);
    Texel texel = Skin(point, redness);
    if (forward > 20) {
        // Eye shadow, the crease beside the nose, nostrils, brows.
        const double socket = Spot(p, d.x > 0 ? 30 : -30, 9, 84, 15);
        texel.color = Mix(texel.color, Color(170, 112, 92), 0.38 * socket);
        const double nostril = std::exp(-(std::pow((side - 6.8) / 3.6, 2) + std::pow((up + 37.5) / 2.2, 2)));
        if (forward > 85) texel.color = Mix(texel.color, Color(70, 32, 26), std::min(1.0, nostril * 1.1));
        const double brow = std::clamp(Brow(side, up), 0.0, 1.0);
        texel.color = Mix(texel.color, HairBrown * 1.05, 0.85 * brow);
        texel.height += 0.0004 * brow;
        // A shadow under the lower lip and between the lips' ends.
        texel.color = texel.color * (1 - 0.10 * Spot(p, 0, -74, 92, 9));
    }
    // Short hairs where the hair begins.
    const double hair = HairSolid(p);
    const double strand = Turbulence({std::atan2(d.x, d.y - 10) * 45, d.z * 0.04, 0}, 2);
    const double fringe = 1 - SmoothStep(-0.0005, 0.0042, hair + 0.0016 * strand);
    if (up > -60 && forward < 100) texel.color = Mix(texel.color, HairBrown, 0.8 * fringe);
    return texel;
}

// The ear in its own plane: a hollow, folds round it, the rim, and the way back to the head behind. Polar: u
// round, from behind; v from the hollow to the rim (at 0.75) and behind.
Vec OnEar(double u, double v) {
    const double a = u * 360 * Degree; // 0 behind, 90 degrees above
    const double c = std::cos(a), s = std::sin(a);
    const double front = std::max(0.0, -c), low = std::max(0.0, -s);
    const double outline = 1 - 0.16 * front - 0.13 * low * std::abs(c);
    double radius = v / 0.75, out = 0;
    if (v <= 0.75) {
        out = -4.5 * (1 - SmoothStep(0.18, 0.42, radius))
              + 1.6 * std::exp(-std::pow((radius - 0.52) / 0.10, 2))
              + 3.4 * std::exp(-std::pow((radius - 0.90) / 0.11, 2)) * (1 - 0.75 * front) * (1 - 0.6 * low);
        out += 2.6 * std::exp(-std::pow((radius - 0.42) / 0.2, 2)) * std::pow(front, 4); // before the canal
    } else {
        const double back = (v - 0.75) / 0.25;
        radius = 1 - 0.34 * back * back + 0.03 * std::sin(back * 180 * Degree);
        out = 2.2 - 17 * back;
    }
    const Vec flat = {out, 31 * s * radius * outline, 17.5 * c * radius * outline};
    // Stands off behind, leans back above.
    const Vec placed = Turn(Turn(flat, {0, 1, 0}, 24), {1, 0, 0}, 10);
    return OnHead(76.5 + placed.x, -2 + placed.y, -7 - placed.z);
}

Texel PaintEar(const SkinPoint &point) {
    Texel texel = Skin(point, 0.30);
    const double depth = std::exp(-std::pow((point.v - 0.13) / 0.10, 2))
                         + 0.4 * std::exp(-std::pow((point.v - 0.50) / 0.05, 2));
    texel.color = texel.color * (1 - 0.28 * depth);
    return texel;
}

Texel PaintNeck(const SkinPoint &point) {
    return Skin(point, 0.05);
}

} // namespace

double HeadSolid(Vec p) {
    // Millimetres, both sides at once.
    const Vec d = (p - HeadCentre) * 1000;
    const Vec q = {std::abs(d.x), d.y, -d.z};
    double skin = Ellipsoid(q, {0, 40, -4}, {74, 77, 94});
    skin = Join(skin, Ellipsoid(q, {0, 46, 40}, {60, 56, 54}), 22);            // forehead
    skin = Join(skin, Ellipsoid(q, {0, -14, 28}, {60, 70, 60}), 26);           // face
    skin = Join(skin, RoundCone(q, {45, -34, 8}, {15, -80, 66}, 20, 14), 28);  // jaw
    skin = Join(skin, Ellipsoid(q, {0, -80, 76}, {17, 15, 14}), 18);           // chin
    skin = Join(skin, Ellipsoid(q, {0, -56, 70}, {29, 24, 25}), 20);           // round the mouth
    skin = Join(skin, Ellipsoid(q, {32, -38, 52}, {24, 32, 26}), 28);          // cheek
    skin = Join(skin, Ellipsoid(q, {38, -10, 57}, {20, 15, 18}), 28);          // cheekbone
    skin = Join(skin, RoundCone(q, {8, 20, 85}, {44, 23, 68}, 8, 8), 16);      // brow
    skin = Cut(skin, Ellipsoid(q, {32, 4, 99}, {19, 13.5, 18}), 14);           // socket
    skin = Join(skin, RoundCone(q, {0, 12, 82}, {0, -24, 102}, 6.5, 7.5), 13); // nose
    skin = Join(skin, Ellipsoid(q, {0, -28, 104}, {8, 7.5, 9}), 7);
    skin = Join(skin, Ellipsoid(q, {9.6, -32, 94.5}, {6, 5.6, 8.5}), 5);         // wing
    skin = Cut(skin, RoundCone(q, {0, -44, 100.5}, {0, -50, 100}, 2.6, 3.2), 5); // below the nose
    skin = Cut(skin, Ellipsoid(q, {0, -75, 100}, {16, 4.5, 8}), 8);              // below the lips
    return skin * 0.001;
}

double NeckSolid(Vec p) {
    double skin = RoundCone(p, {0, 0.560, 0.172}, {0, 0.700, 0.148}, 0.051, 0.046);
    const Vec q = {std::abs(p.x), p.y, p.z};
    skin =
        Join(skin, RoundCone(q, {0.014, 0.568, 0.122}, {0.046, 0.700, 0.150}, 0.008, 0.008), 0.02); // muscle
    return Join(skin, Ellipsoid(p, {0, 0.652, 0.108}, {0.012, 0.02, 0.012}), 0.02);
}

void AddHead(std::vector<Surface> &surfaces) {
    const Solid around = [](Vec p) { return std::min({HeadSolid(p), HairSolid(p), NeckSolid(p)}); };
    Surface head;
    head.joint = Head;
    head.chart = "head";
    head.width = 1000;
    head.height = 900;
    head.paint = PaintFace;
    const Frame centre = {OnHead(0, -6, 20)};
    head.grid = BallSkin(HeadSolid, centre, 55, 51, FaceColumns, FaceRows);
    Shade(head.grid, around, 0.016);
    surfaces.push_back(head);

    Surface ear;
    ear.joint = Head;
    ear.chart = "ear";
    ear.width = 190;
    ear.height = 150;
    ear.paint = PaintEar;
    ear.grid = Sheet(21, 15, OnEar, [](Vec p) {
        const Vec out = p - OnHead(70, -2, -12);
        return Vec{out.x * 2, out.y * 0.3, out.z * 0.3};
    });
    surfaces.push_back(ear);
    surfaces.push_back(Mirror(ear, Head));

    Surface neck;
    neck.joint = Neck;
    neck.chart = "neck";
    neck.width = 300;
    neck.height = 150;
    neck.paint = PaintNeck;
    neck.grid = LimbSkin(NeckSolid, {0, 0.585, 0.165}, {0, 0.690, 0.150}, {0, 0, 1}, 27, 9, 0.1, 0.1);
    Shade(neck.grid, around, 0.06);
    surfaces.push_back(neck);
}

} // namespace figure_maker
