// Sleeves, trouser legs and shoes. A sleeve is one skin from the shoulder to the cuff, and begins with a ball
// that turns over the shirt's; a trouser leg is one from the hip to the hem, and melts into the hips.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

// Radii of cloth around the bones, metres.
struct Limbs {
    double shoulder, upperArm, elbow, forearm, cuff; // the last inside the cuff's rim
    double hip, thigh, knee, calf, hem;
    double shoe; // in hers
};
// clang-format off
const Limbs Hers = {.shoulder = 0.0460, .upperArm = 0.0450, .elbow = 0.0395, .forearm = 0.0385, .cuff = 0.0315,
                    .hip = 0.086, .thigh = 0.076, .knee = 0.057, .calf = 0.060, .hem = 0.057, .shoe = 1};
const Limbs His = {.shoulder = 0.0530, .upperArm = 0.0535, .elbow = 0.0460, .forearm = 0.0455, .cuff = 0.0360,
                   .hip = 0.091, .thigh = 0.083, .knee = 0.063, .calf = 0.066, .hem = 0.063, .shoe = 1.13};
// clang-format on

const Limbs &LimbsOf(const Body &body) {
    return body.isMan ? His : Hers;
}

double UpperArmSolid(const Body &body, Vec p) {
    const Limbs &limbs = LimbsOf(body);
    const Vec shoulder = body.At(RightArm).pivot, elbow = body.At(RightArm).end;
    const double skin = RoundCone(p, shoulder, elbow, limbs.shoulder, limbs.elbow * 0.82);
    return Join(skin,
                RoundCone(p, Mix(shoulder, elbow, 0.22), Mix(shoulder, elbow, 0.62), limbs.upperArm,
                          limbs.upperArm * 0.93),
                0.03);
}

double ForearmSolid(const Body &body, Vec p) {
    const Limbs &limbs = LimbsOf(body);
    const Vec elbow = body.At(RightArm + 1).pivot, wrist = body.At(RightArm + 1).end;
    const double skin = RoundCone(p, elbow, Mix(elbow, wrist, 0.8), limbs.elbow * 0.84, limbs.cuff);
    return Join(
        skin,
        RoundCone(p, Mix(elbow, wrist, 0.1), Mix(elbow, wrist, 0.5), limbs.forearm, limbs.forearm * 0.93),
        0.02);
}

// Folds of cloth about a joint: rings across the limb on the side to which it bends, that run out on the
// other.
double Rings(Vec p, Vec joint, Vec along, Vec inwards, double reach) {
    const Vec d = p - joint;
    const double away = Length(d);
    const double side = away > 0 ? Dot(d, inwards) / away : 0;
    const double wave = Dot(d, along) * 95 + side * 2.4 + 1.6 * Noise(p * 26);
    return std::sin(wave) * std::exp(-away * away / (reach * reach)) * (0.45 + 0.55 * side);
}

// The cloth of a limb: folds lie across either bone, and run into each other at the joint between them.
Texel LimbCloth(const SkinPoint &point, Vec color, const Joint &before, const Joint &behind, Vec lean,
                double foldDepth) {
    const Vec a = Unit(before.end - before.pivot), b = Unit(behind.end - behind.pivot);
    const double share = SmoothStep(-0.05, 0.05, Dot(point.position - before.end, Unit(a + b)));
    Texel texel = Cloth(point, color, Unit(a + lean), foldDepth);
    if (share <= 0) return texel;
    const Texel other = Cloth(point, color, Unit(b + lean), foldDepth);
    texel.color = Mix(texel.color, other.color, share);
    texel.height = Mix(texel.height, other.height, share);
    return texel;
}

Texel PaintSleeve(const Body &body, const SkinPoint &point) {
    const Joint &upper = body.At(RightArm), &fore = body.At(RightArm + 1);
    const Vec p = point.position, a = Unit(upper.end - upper.pivot), b = Unit(fore.end - fore.pivot);
    Texel texel = LimbCloth(point, ShirtWhite, upper, fore, upper.axes[0] * 0.35, 0.0020);
    const double rings = Rings(p, upper.end, Unit(a + b), Unit(b - a), 0.085);
    texel.height += 0.0026 * rings;
    texel.color = texel.color * (1 + 0.05 * rings);
    return texel;
}

Texel PaintCuff(const SkinPoint &point) {
    Texel texel = Cloth(point, ShirtWhite * 1.02, {0, 1, 0}, 0.0003);
    if (std::abs(point.v - 0.30) < 0.01 || std::abs(point.v - 0.68) < 0.01) texel.color = texel.color * 0.9;
    if (point.v > 0.75)
        texel.color = texel.color * (1 - 0.45 * SmoothStep(0.78, 0.9, point.v)); // the opening's inside
    if (std::abs(point.u - 0.06) < 0.012 && std::abs(point.v - 0.48) < 0.05)
        texel.color = Color(206, 208, 210);
    return texel;
}

double ThighSolid(const Body &body, Vec p) {
    const Limbs &limbs = LimbsOf(body);
    const Vec hip = body.At(RightLeg).pivot, knee = body.At(RightLeg).end;
    const double skin = RoundCone(p, hip, knee, limbs.hip, limbs.knee * 0.97);
    return Join(skin, RoundCone(p, Mix(hip, knee, 0.1), Mix(hip, knee, 0.6), limbs.hip, limbs.thigh * 0.95),
                0.03);
}

// Down to the hem, which lies on the shoe.
double ShankSolid(const Body &body, Vec p) {
    const Limbs &limbs = LimbsOf(body);
    const Vec knee = body.At(RightLeg + 1).pivot, ankle = body.At(RightLeg + 1).end;
    double skin = RoundCone(p, knee, ankle, limbs.knee + 0.005, limbs.hem);
    skin = Join(skin,
                RoundCone(p, Mix(knee, ankle, 0.2) + Vec{0, 0, 0.012}, Mix(knee, ankle, 0.5), limbs.calf,
                          limbs.calf * 0.9),
                0.03);
    return Cut(skin, -(Dot(p - Mix(knee, ankle, 0.95), Unit(ankle - knee))), 0.004);
}

// Along the foot: x outwards, y up, z to the heel.
Frame FootFrame(const Body &body) {
    return FrameAlong(body.At(RightLeg + 2).pivot, Vec{0.08, -0.18, -1}, {0, 1, 0});
}

Vec InShoe(const Body &body, Vec p) {
    return ToLocal(FootFrame(body), p) * (1 / LimbsOf(body).shoe);
}

// From the heel to the toes: half widths, soles and uppers.
const std::vector<Section> ShoeSections = {
    {-0.062, 0.012, -0.078, -0.048}, {-0.050, 0.027, -0.084, -0.016}, {-0.022, 0.034, -0.084, 0.008},
    {0.018, 0.035, -0.084, 0.008},   {0.055, 0.038, -0.083, -0.014},  {0.095, 0.042, -0.083, -0.034},
    {0.135, 0.043, -0.084, -0.044},  {0.160, 0.039, -0.084, -0.049},  {0.178, 0.030, -0.084, -0.055},
    {0.189, 0.019, -0.083, -0.062},  {0.195, 0.008, -0.081, -0.070}};

double ShoeSolid(const Body &body, Vec p) {
    const Vec q = InShoe(body, p);
    return Sections(ShoeSections, -q.z, q.x + 0.004 * std::sin(q.z * 16), q.y, 2.5) * LimbsOf(body).shoe;
}

// The front crease is at u = 0.25.
Texel PaintTrouserLeg(const Body &body, const SkinPoint &point) {
    const Joint &thigh = body.At(RightLeg), &shank = body.At(RightLeg + 1);
    const Vec p = point.position, a = Unit(thigh.end - thigh.pivot), b = Unit(shank.end - shank.pivot);
    Texel texel = LimbCloth(point, UniformNavy, thigh, shank, {0.5, 0.1, 0}, 0.0022);
    const double knee = Rings(p, thigh.end, Unit(a + b), Unit(b - a), 0.12);
    const double hip = Rings(p, thigh.pivot + Vec{0, 0.05, -0.03}, a, Vec{0, 1, 0}, 0.10);
    const double hem = Rings(p, shank.end, b, {0, 0, -1}, 0.07);
    texel.height += 0.0030 * (knee + hip + 0.6 * hem);
    texel.color = texel.color * (1 + 0.14 * (knee + hip + hem));
    const double crease = std::exp(-std::pow((point.u - 0.25) / 0.008, 2))
                          * SmoothStep(0.05, 0.12, Length(p - thigh.pivot) - 0.08);
    texel.height += 0.0012 * crease;
    texel.color = texel.color * (1 + 0.14 * crease);
    return texel;
}

Texel PaintShoe(const Body &body, const SkinPoint &point) {
    const Vec q = InShoe(body, point.position);
    Texel texel;
    texel.color = ShoeBlack * (0.7 + 0.5 * point.openness);
    texel.gloss = 0.55;
    if (q.y < -0.076) texel.color = Color(38, 34, 32), texel.gloss = 0.1; // sole
    if (std::abs(q.y + 0.076) < 0.002) texel.height = -0.0006;
    // Seams of the toe cap and of the quarters.
    const double cap = std::abs(q.z + 0.128 - 6 * q.x * q.x),
                 quarter = std::abs(q.z + 0.020 - 0.9 * (q.y + 0.02));
    if (q.y > -0.070 && std::min(cap, q.y < -0.01 ? quarter : 1.0) < 0.0012) {
        texel.height = -0.0006;
        texel.color = texel.color * 0.7;
    }
    if (q.y > -0.06 && std::abs(q.x) < 0.016 && q.z < -0.02 && q.z > -0.075) // laces
        texel.height = 0.0012 * SmoothStep(0.2, 0.8, std::sin(q.z * 520));
    return texel;
}

Texel PaintSock(const SkinPoint &point) {
    return Cloth(point, Color(24, 25, 32), {0, 1, 0}, 0.0004);
}

Surface Part(const std::string &chart, int width, int height, Paint paint) {
    Surface surface;
    surface.chart = chart;
    surface.width = width;
    surface.height = height;
    surface.paint = std::move(paint);
    return surface;
}

// A ball of the same cloth in a joint, under the skin, for the slits that a strong bend may open.
void AddCore(Surfaces &surfaces, const std::string &chart, Vec color, Vec centre, double radius, int joint) {
    Surface core = Part(chart, 12, 12, [color](const SkinPoint &) { return Texel{color, 0, 0.05}; });
    core.joint = joint;
    core.share = 0.5;
    core.grid = BallSkin([&](Vec p) { return Length(p - centre) - radius; }, {centre}, 9, 5);
    surfaces.push_back(core);
}

// Out along the cuff, over its rim and back inside to the hand: share of the forearm, and radius in that of
// the rim's inside.
const double CuffProfile[7][2] = {{0.75, 0.85},  {0.755, 1.095}, {0.86, 1.095}, {0.975, 1.05},
                                  {0.992, 1.01}, {0.985, 0.945}, {0.93, 0.635}};

void AddCuff(Surfaces &surfaces, const Body &body) {
    const Joint &fore = body.At(RightArm + 1);
    const Vec along = Unit(fore.end - fore.pivot), side = Unit(Cross(along, {0, 1, 0})),
              top = Cross(side, along);
    const double length = Length(fore.end - fore.pivot), rim = LimbsOf(body).cuff;
    Surface cuff = Part("cuff", 160, 72, PaintCuff);
    cuff.joint = RightArm + 1;
    cuff.grid = Sheet(
        13, 7,
        [&](double u, double v) {
            const double a = u * 360 * Degree, place = v * 6;
            const int i = std::min(5, static_cast<int>(place));
            const double f = place - i;
            const double share = Mix(CuffProfile[i][0], CuffProfile[i + 1][0], f),
                         radius = Mix(CuffProfile[i][1], CuffProfile[i + 1][1], f) * rim;
            return fore.pivot + along * (share * length) + (top * -std::cos(a) + side * std::sin(a)) * radius;
        },
        [&](Vec p) {
            const double share = Dot(p - fore.pivot, along);
            const Vec out = p - fore.pivot - along * share;
            return share > 0.986 * length                      ? along
                   : Length(out) < rim && share > 0.9 * length ? along * 0.05 - out
                                                               : out;
        });
    surfaces.push_back(cuff);
}

} // namespace

double TrousersSolid(const Body &body, Vec p) {
    const double leg = Join(ThighSolid(body, p), ShankSolid(body, p), 0.04);
    const double apart = SmoothStep(0.10, 0.20, Length(p - body.At(RightLeg).pivot));
    if (apart >= 1) return leg;
    return std::max(Join(leg, HipsSolid(body, p) + 0.05 * apart, 0.03) - 0.0012, leg - 0.010);
}

double ArmSolid(const Body &body, Vec p) {
    return Join(UpperArmSolid(body, p), ForearmSolid(body, p), 0.03);
}

void AddArms(Surfaces &surfaces, const Body &body) {
    const size_t first = surfaces.size();
    const Joint &upper = body.At(RightArm), &fore = body.At(RightArm + 1);
    const Limbs &limbs = LimbsOf(body);
    const Path path = {{upper.pivot, upper.end, Mix(fore.pivot, fore.end, 0.80)}, 0.075};
    const std::vector<double> rows =
        Rows({Steps(-1, 0, 4), {0.1, 0.2, 0.35}, Steps(0.51, 0.69, 8), {0.71, 1}});
    Surface sleeve =
        Part("sleeve", 300, 420, [&](const SkinPoint &point) { return PaintSleeve(body, point); });
    sleeve.joint = RightArm;
    sleeve.grid = LimbSkin([&](Vec p) { return ArmSolid(body, p); }, path, upper.axes[0], 15, rows, 0.090);
    Shade(
        sleeve.grid, [&](Vec p) { return std::min(ArmSolid(body, p), TorsoSolid(body, p) + 0.004); }, 0.04);
    // Less dark than it is at rest, since the arm leaves the body.
    for (double &openness : sleeve.grid.openness) openness = Mix(1.0, openness, 0.4);
    AddBending(surfaces, sleeve, rows, {{RightArm + 1, 0.51, 0.69}}, 1, 0.0020);
    AddCore(surfaces, "sleeve core", ShirtWhite * 0.93,
            upper.end + Unit(Unit(upper.pivot - upper.end) + Unit(fore.end - upper.end)) * 0.010,
            limbs.elbow - 0.007, RightArm + 1);
    AddCuff(surfaces, body);
    AddMirrored(surfaces, first);
}

void AddLegs(Surfaces &surfaces, const Body &body) {
    const size_t first = surfaces.size();
    const Joint &thigh = body.At(RightLeg), &shank = body.At(RightLeg + 1);
    const Path path = {{thigh.pivot, thigh.end, Mix(shank.pivot, shank.end, 0.93)}, 0.09};
    const std::vector<double> rows = Rows({Steps(-1, 0, 3),
                                           Steps(0, 0.08, 2),
                                           {0.10},
                                           Steps(0.22, 0.45, 2),
                                           Steps(0.45, 0.61, 8),
                                           {0.63},
                                           Steps(0.74, 1, 2),
                                           {1.5, 2}});
    Surface trousers =
        Part("trouser leg", 300, 520, [&](const SkinPoint &point) { return PaintTrouserLeg(body, point); });
    trousers.grid = LimbSkin([&](Vec p) { return TrousersSolid(body, p); }, path, {1, 0, 0}, 17, rows, 0.13);
    Shade(
        trousers.grid,
        [&](Vec p) { return std::min(TrousersSolid(body, p), TrousersSolid(body, MirrorX(p))); }, 0.06);
    HideWhere(trousers, [&](Vec p) { return HipsSolid(body, p) < -0.016; });
    AddBending(surfaces, trousers, rows, {{RightLeg, -0.666667, 0.08}, {RightLeg + 1, 0.45, 0.61}}, 1,
               0.0020);
    AddCore(surfaces, "trouser core", UniformNavy * 0.9, thigh.end, LimbsOf(body).knee - 0.008, RightLeg + 1);

    Surface sock = Part("sock", 60, 40, PaintSock);
    sock.joint = RightLeg + 2;
    const Vec from = Mix(shank.pivot, shank.end, 0.85);
    sock.grid = LimbSkin([&](Vec p) { return RoundCone(p, from, shank.end, 0.034, 0.030); },
                         {{from, shank.end}, 0}, {0, 0, 1}, 9, Steps(0, 1.5, 3));
    surfaces.push_back(sock);

    Surface shoe = Part("shoe", 200, 200, [&](const SkinPoint &point) { return PaintShoe(body, point); });
    shoe.joint = RightLeg + 2;
    const Frame foot = FootFrame(body);
    const double size = LimbsOf(body).shoe;
    const Solid solid = [&](Vec p) { return ShoeSolid(body, p); };
    const Path sole = {
        {ToWorld(foot, Vec{0, -0.045, 0.03} * size), ToWorld(foot, Vec{0.002, -0.064, -0.150} * size)}, 0};
    shoe.grid = LimbSkin(solid, sole, {0, -1, 0}, 15, Rows({Steps(-1, 0, 3), Steps(0, 1, 4), Steps(1, 2, 6)}),
                         1, ColumnsAtCorners(solid, sole, {0, -1, 0}));
    Shade(shoe.grid, solid, 0.03);
    HideWhere(shoe, [&](Vec p) { return InShoe(body, p).y < -0.082; }); // the sole's underside
    surfaces.push_back(shoe);
    AddMirrored(surfaces, first);
}

} // namespace figure_maker
