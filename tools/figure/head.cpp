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
double Brow(double side, double up, Vec p) {
    const double along = (side - 11) / 37; // 0 at the nose
    if (along < 0 || along > 1) return 0;
    const double arch = 22.5 + 5.5 * std::sin(along * 2.3) - 3.5 * along * along;
    const double width = 3.3 * (1 - 0.75 * along) * SmoothStep(0, 0.12, along) + 0.4;
    const double hairs = 0.75 + 0.45 * Noise({p.x * 1300 - side * 0.5, p.y * 500, 0});
    return (1 - SmoothStep(width * 0.55, width, std::abs(up - arch))) * hairs
           * (1 - 0.5 * SmoothStep(0.8, 1, along));
}

Texel PaintFace(const SkinPoint &point) {
    const Vec p = point.position;
    const Vec d = (p - HeadCentre) * 1000;
    const double side = std::abs(d.x), up = d.y, forward = -d.z;
    double redness = 0.55 * Spot(p, side == d.x ? 44 : -44, -22, 72, 26) + 0.5 * Spot(p, 0, -30, 108, 13)
                     + 0.22 * Spot(p, 0, -84, 88, 20) + 0.3 * Spot(p, d.x > 0 ? 31 : -31, 4, 80, 16);
    Texel texel = Skin(point, redness);
    if (forward > 20) {
        // Eye shadow, the crease beside the nose, nostrils, brows.
        const double socket = Spot(p, d.x > 0 ? 30 : -30, 9, 84, 15);
        texel.color = Mix(texel.color, Color(170, 112, 92), 0.38 * socket);
        const double nostril = std::exp(-(std::pow((side - 6.8) / 3.6, 2) + std::pow((up + 37.5) / 2.2, 2)));
        if (forward > 85) texel.color = Mix(texel.color, Color(70, 32, 26), std::min(1.0, nostril * 1.1));
        const double brow = std::clamp(Brow(side, up, p), 0.0, 1.0);
        texel.color = Mix(texel.color, HairBrown * 1.05, 0.85 * brow);
        texel.height += 0.0004 * brow;
        // A shadow under the lower lip and between the lips' ends.
        texel.color = texel.color * (1 - 0.10 * Spot(p, 0, -74, 92, 9));
    }
    // Short hairs where the hair begins.
    const double hair = HairSolid(p);
    const double fringe = 1 - SmoothStep(0.0005, 0.0055, hair + 0.0022 * Noise(p * 700));
    if (up > -60 && forward < 100) texel.color = Mix(texel.color, HairBrown, 0.8 * fringe);
    return texel;
}

double EarSolid(Vec p) {
    // In millimetres about the ear: x outwards, y up, z back.
    const Vec d = (p - OnHead(75, -2, -8)) * 1000;
    const Vec turned = Turn(Turn(d, {0, 1, 0}, -20), {1, 0, 0}, 12);
    const Vec q = turned;
    double shell = Ellipsoid(q, {0, 2, 0}, {7, 31, 18});
    shell = Join(shell, Ellipsoid(q, {0, -22, -4}, {5, 11, 9}), 6); // lobe
    const double bowl = Ellipsoid(q, {8.5, -2, -5}, {9.5, 13, 9.5});
    const double groove = Ellipsoid(q, {8.5, 12, 0}, {7, 13, 9.5});
    shell = Cut(shell, bowl, 4);
    shell = Cut(shell, groove, 4);
    shell = Join(shell, RoundCone(q, {1.5, -6, -15}, {2.5, -2, -10}, 3.5, 3), 3); // in front of the canal
    return shell * 0.001;
}

Texel PaintEar(const SkinPoint &point) {
    return Skin(point, 0.32);
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
    skin = Join(skin, RoundCone(q, {46, -30, 6}, {14, -80, 66}, 19, 13), 26);  // jaw
    skin = Join(skin, Ellipsoid(q, {0, -80, 76}, {17, 15, 14}), 18);           // chin
    skin = Join(skin, Ellipsoid(q, {0, -56, 70}, {29, 24, 25}), 20);           // round the mouth
    skin = Join(skin, Ellipsoid(q, {41, -13, 60}, {22, 18, 22}), 24);          // cheekbone
    skin = Join(skin, RoundCone(q, {8, 20, 85}, {44, 23, 68}, 8, 8), 16);      // brow
    skin = Cut(skin, Ellipsoid(q, {32, 4, 99}, {19, 13.5, 18}), 14);           // socket
    skin = Join(skin, RoundCone(q, {0, 12, 82}, {0, -24, 102}, 6.5, 7.5), 13); // nose
    skin = Join(skin, Ellipsoid(q, {0, -28, 104}, {9, 8, 9}), 7);
    skin = Join(skin, Ellipsoid(q, {10.5, -32, 94}, {7, 6.5, 9}), 5);            // wing
    skin = Cut(skin, RoundCone(q, {0, -44, 100.5}, {0, -50, 100}, 2.6, 3.2), 5); // below the nose
    skin = Cut(skin, Ellipsoid(q, {0, -75, 100}, {16, 4.5, 8}), 8);              // below the lips
    return skin * 0.001;
}

double NeckSolid(Vec p) {
    double skin = RoundCone(p, {0, 0.560, 0.172}, {0, 0.700, 0.148}, 0.055, 0.051);
    const Vec q = {std::abs(p.x), p.y, p.z};
    skin =
        Join(skin, RoundCone(q, {0.016, 0.565, 0.118}, {0.056, 0.715, 0.158}, 0.011, 0.012), 0.022); // muscle
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
    Shade(head.grid, around, 0.03);
    surfaces.push_back(head);

    Surface ear;
    ear.joint = Head;
    ear.chart = "ear";
    ear.width = 190;
    ear.height = 150;
    ear.paint = PaintEar;
    // Rays leave from inside the flap.
    const Frame inside = {OnHead(73, -8, -14)};
    ear.grid = BallSkin(EarSolid, inside, 17, 13);
    Shade(ear.grid, EarSolid, 0.02);
    surfaces.push_back(ear);
    surfaces.push_back(Mirror(ear, Head));

    Surface neck;
    neck.joint = Neck;
    neck.chart = "neck";
    neck.width = 300;
    neck.height = 150;
    neck.paint = PaintNeck;
    neck.grid = LimbSkin(NeckSolid, {0, 0.585, 0.165}, {0, 0.690, 0.150}, {0, 0, 1}, 21, 7, 0.1, 0.1);
    Shade(neck.grid, around, 0.06);
    surfaces.push_back(neck);
}

} // namespace figure_maker
