// Sleeves, trouser legs and shoes. Every joint is a ball that both its segments share, so a bend shows cloth
// and no gap.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

const Joint &Right(int channel) {
    return Joints()[static_cast<size_t>(channel)];
}

void AddBoth(std::vector<Surface> &surfaces, Surface surface, int rightJoint, int leftJoint) {
    surface.joint = rightJoint;
    surfaces.push_back(surface);
    surfaces.push_back(Mirror(surface, leftJoint));
}

double UpperArmSolid(Vec p) {
    const Vec shoulder = Right(RightArm).pivot, elbow = Right(RightArm).end;
    double skin = RoundCone(p, shoulder, elbow, 0.055, 0.0355);
    return Join(skin, RoundCone(p, Mix(shoulder, elbow, 0.2), Mix(shoulder, elbow, 0.65), 0.051, 0.046),
                0.02);
}

double ForearmSolid(Vec p) {
    const Vec elbow = Right(RightArm + 1).pivot, wrist = Right(RightArm + 1).end;
    double skin = RoundCone(p, elbow, Mix(elbow, wrist, 0.8), 0.0395, 0.031);
    skin = Join(skin, RoundCone(p, Mix(elbow, wrist, 0.1), Mix(elbow, wrist, 0.5), 0.0395, 0.036), 0.02);
    return skin;
}

double CuffSolid(Vec p) {
    const Vec elbow = Right(RightArm + 1).pivot, wrist = Right(RightArm + 1).end;
    const Vec along = Unit(wrist - elbow);
    const double share = Dot(p - elbow, along), length = Length(wrist - elbow);
    const double ring = Length(p - elbow - along * share) - 0.0325;
    const double from = length * 0.755, to = length + 0.002;
    return std::max({ring, from - share, share - to});
}

Texel PaintSleeve(const SkinPoint &point) {
    const Joint &arm = Right(RightArm);
    Texel texel = Cloth(point, ShirtWhite, Unit(arm.end - arm.pivot), 0.0022);
    return texel;
}

Texel PaintForearm(const SkinPoint &point) {
    const Joint &arm = Right(RightArm + 1);
    return Cloth(point, ShirtWhite, Unit(arm.end - arm.pivot), 0.0022);
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

double ThighSolid(Vec p) {
    const Vec hip = Right(RightLeg).pivot, knee = Right(RightLeg).end;
    double skin = RoundCone(p, hip, knee, 0.086, 0.0575);
    return Join(skin, RoundCone(p, Mix(hip, knee, 0.1), Mix(hip, knee, 0.6), 0.085, 0.072), 0.03);
}

double ShankSolid(Vec p) {
    const Vec knee = Right(RightLeg + 1).pivot, ankle = Right(RightLeg + 1).end;
    double skin = RoundCone(p, knee, Mix(knee, ankle, 0.98), 0.060, 0.049);
    return Join(skin,
                RoundCone(p, Mix(knee, ankle, 0.15) + Vec{0, 0, 0.012}, Mix(knee, ankle, 0.5), 0.055, 0.050),
                0.03);
}

double ShoeSolid(Vec p) {
    const Vec ankle = Right(RightLeg + 2).pivot;
    // Along the foot: z back, y up.
    const Vec q = ToLocal(FrameAlong(ankle, Vec{0.08, -0.18, -1}, {0, 1, 0}), p);
    double shoe = RoundCone(q, {0, -0.020, 0.012}, {0, -0.052, 0.035}, 0.036, 0.033);
    shoe = Join(shoe, RoundCone(q, {0, -0.045, 0.02}, {0.003, -0.060, -0.125}, 0.036, 0.032), 0.03);
    shoe = Join(shoe, RoundCone(q, {-0.004, -0.062, -0.10}, {-0.006, -0.068, -0.165}, 0.034, 0.022), 0.02);
    const double floor = -q.y - 0.084; // flat below
    return Join(-Join(-shoe, -floor, 0.006), Ellipsoid(q, {0, -0.078, 0.035}, {0.03, 0.014, 0.034}),
                0.006); // heel
}

Texel PaintThigh(const SkinPoint &point) {
    Texel texel = Cloth(point, UniformNavy, Unit({0.5, 0.2, 1}), 0.0020);
    // The pressed crease along the top.
    const double crease = std::exp(-std::pow((point.u - 0.5) / 0.006, 2)) * SmoothStep(0.3, 0.5, point.v);
    texel.height += 0.0012 * crease;
    texel.color = texel.color * (1 + 0.12 * crease);
    return texel;
}

Texel PaintShank(const SkinPoint &point) {
    Texel texel = Cloth(point, UniformNavy, Unit({0.3, 1, 0.2}), 0.0024);
    const double crease = std::exp(-std::pow((point.u - 0.5) / 0.006, 2));
    texel.height += 0.0012 * crease;
    texel.color = texel.color * (1 + 0.12 * crease);
    return texel;
}

Texel PaintShoe(const SkinPoint &point) {
    const Vec q =
        ToLocal(FrameAlong(Right(RightLeg + 2).pivot, Vec{0.08, -0.18, -1}, {0, 1, 0}), point.position);
    Texel texel;
    texel.color = ShoeBlack * (0.7 + 0.5 * point.openness);
    texel.gloss = 0.55;
    if (q.y < -0.076) texel.color = Color(38, 34, 32), texel.gloss = 0.1; // sole
    if (std::abs(q.y + 0.076) < 0.002) texel.height = -0.0006;
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

} // namespace

void AddArms(std::vector<Surface> &surfaces) {
    const Joint &upper = Right(RightArm), &fore = Right(RightArm + 1);
    Surface sleeve = Part("sleeve", 300, 260, PaintSleeve);
    sleeve.grid = LimbSkin(UpperArmSolid, upper.pivot, upper.end, {1, 0, 0.3}, 17, 15, 0.22, 0.18);
    Shade(sleeve.grid, UpperArmSolid, 0.04);
    AddBoth(surfaces, sleeve, RightArm, LeftArm);

    Surface forearm = Part("forearm", 260, 220, PaintForearm);
    forearm.grid =
        LimbSkin(ForearmSolid, fore.pivot, Mix(fore.pivot, fore.end, 0.8), {0, -1, 0}, 17, 12, 0.22, 0.15);
    Shade(
        forearm.grid, [](Vec p) { return std::min(ForearmSolid(p), CuffSolid(p)); }, 0.02);
    AddBoth(surfaces, forearm, RightArm + 1, LeftArm + 1);

    Surface cuff = Part("cuff", 200, 90, PaintCuff);
    // Out along the cuff, over its rim and back inside to the hand.
    const Vec along = Unit(fore.end - fore.pivot), side = Unit(Cross(along, {0, 1, 0})),
              top = Cross(side, along);
    const double length = Length(fore.end - fore.pivot);
    cuff.grid = Sheet(
        19, 9,
        [&](double u, double v) {
            const double a = u * 360 * Degree;
            const double profile[7][2] = {{0.74, 0.030},   {0.755, 0.0345}, {0.86, 0.0345}, {0.975, 0.0330},
                                          {0.992, 0.0318}, {0.985, 0.0298}, {0.93, 0.0200}};
            const double place = v * 6;
            const int i = std::min(5, static_cast<int>(place));
            const double f = place - i;
            const double share = Mix(profile[i][0], profile[i + 1][0], f),
                         radius = Mix(profile[i][1], profile[i + 1][1], f);
            return fore.pivot + along * (share * length) + (top * -std::cos(a) + side * std::sin(a)) * radius;
        },
        [&](Vec p) {
            const double share = Dot(p - fore.pivot, along);
            const Vec out = p - fore.pivot - along * share;
            return share > 0.986 * length                         ? along
                   : Length(out) < 0.0315 && share > 0.9 * length ? along * 0.05 - out
                                                                  : out;
        });
    AddBoth(surfaces, cuff, RightArm + 1, LeftArm + 1);
}

void AddLegs(std::vector<Surface> &surfaces) {
    const Joint &thigh = Right(RightLeg), &shank = Right(RightLeg + 1);
    Surface upper = Part("thigh", 320, 300, PaintThigh);
    upper.grid = LimbSkin(ThighSolid, thigh.pivot, thigh.end, {0, -1, 0}, 19, 13, 0.18, 0.2);
    Shade(
        upper.grid, [](Vec p) { return std::min(ThighSolid(p), ThighSolid(MirrorX(p))); }, 0.06);
    AddBoth(surfaces, upper, RightLeg, LeftLeg);

    Surface lower = Part("shank", 280, 280, PaintShank);
    lower.grid =
        LimbSkin(ShankSolid, shank.pivot, Mix(shank.pivot, shank.end, 0.93), {0, 0, 1}, 17, 12, 0.2, 0.12);
    Shade(lower.grid, ShankSolid, 0.05);
    AddBoth(surfaces, lower, RightLeg + 1, LeftLeg + 1);

    Surface sock = Part("sock", 60, 40, PaintSock);
    const auto sockSolid = [](Vec p) {
        return RoundCone(p, Mix(Right(RightLeg + 1).pivot, Right(RightLeg + 1).end, 0.85),
                         Right(RightLeg + 1).end, 0.034, 0.036);
    };
    sock.grid = LimbSkin(sockSolid, Mix(shank.pivot, shank.end, 0.85), shank.end, {0, 0, 1}, 13, 7, 0.2, 0.3);
    AddBoth(surfaces, sock, RightLeg + 2, LeftLeg + 2);

    Surface shoe = Part("shoe", 220, 200, PaintShoe);
    const Vec ankle = Right(RightLeg + 2).pivot;
    const Frame foot = FrameAlong(ankle, Vec{0.08, -0.18, -1}, {0, 1, 0});
    shoe.grid = LimbSkin(ShoeSolid, ToWorld(foot, {0, -0.045, 0.03}), ToWorld(foot, {0, -0.062, -0.145}),
                         {0, -1, 0}, 17, 15, 0.25, 0.2);
    Shade(shoe.grid, ShoeSolid, 0.03);
    AddBoth(surfaces, shoe, RightLeg + 2, LeftLeg + 2);
}

} // namespace figure_maker
