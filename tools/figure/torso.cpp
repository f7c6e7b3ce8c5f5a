// Shirt, collar, tie, epaulettes, belt and hips. The shirt is one skin from the belt to the neck; it takes
// the back's turns band by band.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

// The trunk in the shirt, from the belt up: heights, half widths, and where front and back are. Metres.
// clang-format off
const std::vector<Section> HerTrunk = {
    {0.120, 0.150, 0.016, 0.216},
    {0.165, 0.148, 0.014, 0.217}, // the belt
    {0.200, 0.142, 0.012, 0.217}, // falls over it
    {0.240, 0.132, 0.019, 0.218},
    {0.285, 0.128, 0.022, 0.224},
    {0.330, 0.132, 0.020, 0.234},
    {0.375, 0.140, 0.016, 0.244},
    {0.420, 0.147, 0.014, 0.250}, // the bust's height
    {0.460, 0.149, 0.024, 0.252},
    {0.500, 0.142, 0.046, 0.246},
    {0.540, 0.116, 0.078, 0.230},
    {0.575, 0.070, 0.106, 0.212}};
const std::vector<Section> HisTrunk = {
    {0.125, 0.158, -0.004, 0.222},
    {0.175, 0.158, -0.006, 0.222},
    {0.212, 0.155, -0.010, 0.222},
    {0.255, 0.152, -0.008, 0.226},
    {0.302, 0.152, -0.004, 0.233},
    {0.350, 0.157, 0.000, 0.243},
    {0.398, 0.165, 0.004, 0.254},
    {0.445, 0.173, 0.008, 0.261},
    {0.488, 0.175, 0.020, 0.263},
    {0.530, 0.166, 0.044, 0.256},
    {0.572, 0.132, 0.078, 0.240},
    {0.610, 0.080, 0.108, 0.220}};

struct Build {
    const std::vector<Section> &trunk;
    double shoulder;      // thickness at the shoulder, metres
    double slope;         // of the muscle from there to the neck: its thickness beside the neck
    Vec bust, bustSize;   // of one side
    Vec hips, waistband;  // half sizes
};
const Build HerBuild = {
    .trunk = HerTrunk, .shoulder = 0.0435, .slope = 0.046,
    .bust = {0.064, 0.414, 0.062}, .bustSize = {0.056, 0.062, 0.052},
    .hips = {0.168, 0.098, 0.110}, .waistband = {0.150, 0.055, 0.104}};
const Build HisBuild = {
    .trunk = HisTrunk, .shoulder = 0.0505, .slope = 0.057,
    .bust = {0.074, 0.468, 0.075}, .bustSize = {0.072, 0.064, 0.052},
    .hips = {0.172, 0.106, 0.116}, .waistband = {0.158, 0.058, 0.116}};
// clang-format on

const Build &BuildOf(const Body &body) {
    return body.isMan ? HisBuild : HerBuild;
}

Vec BothSides(Vec p) {
    return {std::abs(p.x), p.y, p.z};
}

// Columns begin behind; more of them stand in front.
double ShirtColumns(double u) {
    const double x = u - 0.5;
    return 0.5 + x * (0.85 + 0.6 * x * x);
}

// From the belt up to between the shoulders.
Path TrunkPath(const Body &body) {
    const double trunk = body.measures.trunk;
    return {{{0, 0.150 * trunk, 0.112}, {0, 0.525 * trunk, 0.155}}, 0};
}

// Where the shirt, and what lies on it, takes the turns of the back.
const std::vector<Bend> BackBends = {{BodyMiddle, 0.12, 0.34}, {BodyTop, 0.36, 0.72}};
const std::vector<double> ShirtRows =
    Rows({{0.08}, Steps(0.12, 0.34, 5), Steps(0.36, 0.72, 8), Steps(0.72, 1, 4), Steps(1, 2, 6)});

// The shirt with a ball about each shoulder, over which the sleeves turn.
double ShirtWithShoulders(const Body &body, Vec p) {
    const double ball = Length(BothSides(p) - body.At(RightArm).pivot) - BuildOf(body).shoulder;
    return Join(TorsoSolid(body, p), ball, 0.03);
}

Texel PaintShirt(const SkinPoint &point) {
    const Vec p = point.position;
    Texel texel = Cloth(point, ShirtWhite, Unit({0.25, 1, 0}), 0.0012);
    // Folds over the belt, and from the armpits.
    const double low = SmoothStep(0.30, 0.20, p.y);
    const double creased = Turbulence({p.x * 9, p.y * 46 + 0.5 * Noise(p * 12), p.z * 9}, 2);
    const Vec pit = BothSides(p) - Vec{0.150, 0.470, 0.13};
    const double away = Length(pit);
    const Vec ray = Unit({pit.x + pit.z, pit.y, 0});
    const double rays = Noise({ray.x * 2.6, ray.y * 2.6, away * 7 + (p.z > 0.13 ? 4 : 0)});
    const double pulled = std::exp(-away * away / 0.008);
    texel.height += 0.0030 * low * creased + 0.0014 * pulled * rays;
    texel.color = texel.color * (1 + 0.05 * low * creased + 0.03 * pulled * rays);
    if (p.z < 0.13 && p.y < 0.56) {
        // Button strip, buttons, breast pockets with flaps and buttons, wings on the left.
        const double strip = 1 - SmoothStep(0.0125, 0.014, std::abs(p.x));
        texel.height += 0.0007 * strip;
        for (double up = 0.215; up < 0.53; up += 0.062)
            if (Length({p.x, p.y - up, 0}) < 0.0052) texel.color = Color(206, 208, 210);
        const double side = std::abs(p.x) - 0.073;
        const bool isPocket = std::abs(side) < 0.043 && p.y > 0.365 && p.y < 0.462;
        const bool isFlap =
            std::abs(side) < 0.045 && p.y < 0.466 && p.y > 0.441 - 0.007 * (1 - std::abs(side) / 0.045);
        if (isPocket) texel.height += 0.0006;
        if (isFlap) texel.height += 0.0006;
        const double seam = std::min({std::abs(std::abs(side) - 0.043), std::abs(p.y - 0.365)});
        if (isPocket && seam < 0.0022) texel.color = texel.color * 0.90;
        if (isFlap && p.y < 0.4435 - 0.007 * (1 - std::abs(side) / 0.045)) texel.color = texel.color * 0.84;
        if (Length({side, p.y - 0.443, 0}) < 0.0045) texel.color = Color(206, 208, 210);
        const double wing = std::abs(p.x + 0.073), rise = p.y - 0.482;
        const bool isWing = wing < 0.030 && rise < 0.0055 - wing * 0.05 && rise > -0.0045 + wing * 0.14;
        const bool isShield = wing < 0.0065 && std::abs(rise) < 0.0075;
        if (p.x < 0 && (isWing || isShield)) {
            texel.color = Gold * (isShield ? 0.85 : 0.9 + 0.25 * std::sin(wing * 1700));
            texel.height += 0.0009;
            texel.gloss = 0.8;
            texel.metal = 1;
        }
    } else if (p.z > 0.13) {
        texel.height += 0.0006 * SmoothStep(0.487, 0.484, p.y) * SmoothStep(0.16, 0.20, p.z); // yoke
        if (std::abs(p.y - 0.485) < 0.0014 && p.z > 0.18) texel.color = texel.color * 0.9;
    }
    return texel;
}

Texel PaintTrousers(const SkinPoint &point) {
    Texel texel = Cloth(point, UniformNavy, Unit({0.6, 0.3, 1}), 0.0018);
    // Folds fan out from the lap.
    const Vec p = point.position;
    const double around = std::atan2(std::abs(p.x) - 0.02, p.y - 0.06);
    texel.height += 0.003 * Noise({around * 4, p.z * 10, 0}) * SmoothStep(0.10, 0.02, p.z);
    return texel;
}

// ---- Collar and tie ----

// A place on the collar's fold: turns about the neck, 0 in front, -1 and 1 behind.
Vec OnCollar(const Body &body, double around, double out, double up) {
    const double a = around * 180 * Degree, radius = 0.0570 * body.measures.neck + out;
    // Higher behind than in front.
    const double rise = Mix(0.0085, 0.057, SmoothStep(0, 1, std::abs(around)));
    return body.At(Neck).pivot
           + Vec{std::sin(a) * radius, rise + up, 0.001 - std::cos(a) * radius + 0.010 * std::cos(a)};
}

Texel PaintCollar(const SkinPoint &point) {
    Texel texel = Cloth(point, ShirtWhite * 1.02, {0, 1, 0}, 0.0002);
    const double seam = std::min(std::abs(point.v - 0.93), std::abs(point.v - 0.07));
    if (seam < 0.02) texel.color = texel.color * 0.93;
    texel.color = texel.color * (1 - 0.18 * SmoothStep(0.9, 1, point.v));
    return texel;
}

void AddCollar(Surfaces &surfaces, const Body &body, const Solid &around) {
    Surface collar;
    collar.joint = BodyTop;
    collar.chart = "collar stand";
    collar.width = 200;
    collar.height = 40;
    collar.paint = PaintCollar;
    // The stand leans to the neck; the fall hangs over it and ends in two points.
    const auto outwards = [](Vec p) { return Vec{p.x, 0.05, p.z - 0.163}; };
    collar.grid = Sheet(
        19, 3,
        [&](double u, double v) {
            return OnCollar(body, u * 2 - 1, Mix(0.004, -0.004, v), Mix(-0.030, 0.004, v));
        },
        outwards);
    Shade(collar.grid, around, 0.02);
    surfaces.push_back(collar);
    // What one sees of its inside, beside the neck.
    collar.grid = Sheet(
        19, 2,
        [&](double u, double v) {
            return OnCollar(body, u * 2 - 1, Mix(0.001, -0.0042, v), Mix(-0.016, 0.0055, v));
        },
        [&](Vec p) { return outwards(p) * -1; });
    surfaces.push_back(collar);
    // Its halves meet behind.
    collar.chart = "collar";
    collar.width = 170;
    collar.height = 80;
    collar.grid = Sheet(
        17, 6,
        [&](double side, double v) {
            // Its front edges part below the knot, and the corners are its points.
            const double around = Mix(0.022 + 0.15 * v, 1, side);
            const double drop = Mix(0.070, 0.033, SmoothStep(0, 0.30, side));
            const double roll = std::min(1.0, v * 6);
            Vec p =
                OnCollar(body, around,
                         Mix(-0.0035, 0.0045, std::sin(roll * 90 * Degree)) + 0.014 * v * (1 - 0.5 * side),
                         0.0045 + 0.002 * std::sin(roll * 180 * Degree) - drop * v);
            // Lies on the shirt.
            const Solid shirt = [&](Vec q) { return TorsoSolid(body, q); };
            for (int round = 0; round < 2; round++) {
                const double depth = shirt(p) - 0.0045;
                if (depth < 0) p = p + OutOf(shirt, p) * -depth;
            }
            return p;
        },
        outwards);
    Shade(collar.grid, around, 0.02);
    surfaces.push_back(collar);
    surfaces.push_back(Mirror(collar));
}

Texel PaintTie(const SkinPoint &point) {
    Texel texel;
    const double stripe = std::fmod((point.position.x + point.position.y) * 1000 + 1000, 26.0);
    Vec color = TieNavy * 1.15;
    if (stripe < 2.6) color = Color(120, 128, 148);
    texel.color = Shaded(color, point.openness) * (1 + 0.06 * Noise(point.position * 30));
    texel.height = 0.0004 * Noise(point.position * 26);
    texel.gloss = 0.25;
    return texel;
}

void AddTie(Surfaces &surfaces, const Body &body, const Solid &around) {
    const Vec nape = body.At(Neck).pivot;
    const double forward = 0.0565 * body.measures.neck - 0.0565; // of her neck
    const Vec top = nape + Vec{0, 0.004, -0.0685 - forward},
              bottom = nape + Vec{0, -0.026, -0.0775 - forward};
    Surface knot;
    knot.joint = BodyTop;
    knot.chart = "tie knot";
    knot.width = 70;
    knot.height = 60;
    knot.paint = PaintTie;
    const auto solid = [&](Vec p) {
        return Join(RoundCone(p, top, bottom, 0.0155, 0.0095),
                    Ellipsoid(BothSides(p), top + Vec{0.009, 0.002, 0.0015}, {0.010, 0.008, 0.010}), 0.008);
    };
    knot.grid = LimbSkin(solid, {{top, bottom}, 0}, {0, 0, 1}, 13, Steps(-1, 2, 9));
    Shade(knot.grid, around, 0.02);
    HideWhere(knot, [&](Vec p) { return std::min(TorsoSolid(body, p), NeckSolid(body, p)) < -0.003; });
    surfaces.push_back(knot);

    // The blade hangs from the knot down to the buckle, on the shirt.
    const Path path = TrunkPath(body);
    const double length = 0.375 * body.measures.trunk, high = (bottom.y + 0.014 - path.points[0].y) / length;
    const std::vector<double> rows =
        Rows({{0.09}, Steps(0.12, 0.34, 5), Steps(0.36, 0.72, 8), Steps(0.72, high, 4)});
    Surface blade;
    blade.chart = "tie";
    blade.width = 80;
    blade.height = 340;
    blade.paint = PaintTie;
    const auto skin = [&](Vec p) { return TorsoSolid(body, p); };
    const auto at = [&](double u, double v) {
        const double place = v * (static_cast<double>(rows.size()) - 1);
        const size_t row = std::min(static_cast<size_t>(place), rows.size() - 2);
        const double along = Mix(rows[row], rows[row + 1], place - static_cast<double>(row));
        const double across = u * 2 - 1;
        const double half = Mix(0.039, 0.0125, std::clamp(along, 0.0, 1.0)),
                     edge = std::pow(std::abs(across), 3);
        const double y = path.points[0].y + along * length;
        // Thick in the middle; it bridges what lies hollow below the chest.
        double front = Leave(skin, {across * half * 0.7, y, 0.15}, {0, 0, -1}, 0.3).z;
        front = std::min(front, Leave(skin, {0, y + 0.03, 0.15}, {0, 0, -1}, 0.3).z + 0.004);
        front -= 0.0045 - 0.0045 * edge;
        // Its end is held by the knot.
        return Vec{across * half, y,
                   Mix(front, std::min(front, bottom.z), SmoothStep(high - 0.12, high, along))};
    };
    blade.grid = Sheet(7, static_cast<int>(rows.size()), at, [](Vec) { return Vec{0, 0, -1}; });
    Shade(blade.grid, around, 0.02);
    AddBending(surfaces, blade, rows, BackBends, 1, 0.0005);
}

// ---- Epaulettes ----

Texel PaintEpaulette(const SkinPoint &point) {
    Texel texel;
    texel.color = Shaded(UniformNavy * 0.9, point.openness);
    texel.gloss = 0.08;
    // Three bars, from the sleeve inwards, and a button at the collar.
    for (int bar = 0; bar < 3; bar++) {
        const double from = 0.07 + 0.155 * bar;
        if (point.v > from && point.v < from + 0.10) {
            texel.color = Gold * (0.92 + 0.12 * std::sin(point.v * 600) * std::sin(point.u * 60));
            texel.height = 0.0006;
            texel.gloss = 0.5;
            texel.metal = 0.6; // thread
        }
    }
    const double button = Length({(point.u - 0.5) * 0.046, (point.v - 0.88) * 0.105, 0});
    if (button < 0.0062) {
        texel.color = Gold;
        texel.height = 0.001 * (1 - button / 0.0062);
        texel.gloss = 0.8;
        texel.metal = 1;
    }
    return texel;
}

void AddEpaulettes(Surfaces &surfaces, const Body &body) {
    Surface epaulette;
    epaulette.joint = BodyTop;
    epaulette.chart = "epaulette";
    epaulette.width = 90;
    epaulette.height = 180;
    epaulette.paint = PaintEpaulette;
    const Solid shoulder = [&](Vec p) { return std::min(ShirtWithShoulders(body, p), ArmSolid(body, p)); };
    const Vec joint = body.At(RightArm).pivot;
    const double inner = 0.074 * body.measures.neck + 0.010;
    epaulette.grid = Sheet(
        7, 9,
        [&](double u, double v) {
            const double across = u * 2 - 1;
            // Outer end at v = 0; round at the collar's end, thick at the edges.
            const double x = Mix(joint.x + 0.011, inner, v);
            const double half =
                0.0245
                * (v > 0.8 ? std::sqrt(std::max(0.0, 1 - std::pow((v - 0.8) / 0.2, 2))) * 0.75 + 0.25 : 1);
            const Vec from = {x, joint.y - 0.028, joint.z + across * half};
            Vec p = Leave(shoulder, from, {0, 1, 0}, 0.2);
            const bool isRim = std::abs(across) > 0.999 || v < 0.001 || v > 0.999;
            p.y += isRim ? -0.002 : 0.0045;
            return p;
        },
        [](Vec) {
            return Vec{0, 1, 0};
        });
    surfaces.push_back(epaulette);
    surfaces.push_back(Mirror(epaulette));
}

// ---- Belt ----

Texel PaintBelt(const SkinPoint &point) {
    Texel texel;
    texel.color = Color(26, 24, 24) * (0.8 + 0.2 * point.openness);
    texel.gloss = 0.4;
    // The buckle stands in front, at u = 0.5.
    const double x = std::abs(point.u - 0.5) * 0.78, y = std::abs(point.v - 0.5) * 0.034;
    if (x < 0.019 && y < 0.0165) {
        const bool isHole = x < 0.0135 && y < 0.0105 && std::abs(y) > 0.0018;
        if (!isHole) {
            texel.color = Gold * 0.95;
            texel.height = 0.0012;
            texel.gloss = 0.8;
            texel.metal = 1;
        }
    }
    return texel;
}

void AddBelt(Surfaces &surfaces, const Body &body) {
    Surface belt;
    belt.chart = "belt";
    belt.width = 400;
    belt.height = 30;
    belt.paint = PaintBelt;
    const double trunk = body.measures.trunk;
    belt.grid = Sheet(
        33, 4,
        [&](double u, double v) {
            const double a = (u * 2 - 1) * 180 * Degree; // in front at 0.5
            const Vec from = {0, Mix(0.174, 0.202, v) * trunk, 0.112};
            const Vec out = {std::sin(a), 0, -std::cos(a)};
            const Vec skin = Leave([&](Vec p) { return std::min(HipsSolid(body, p), TorsoSolid(body, p)); },
                                   from, out, 0.3);
            const bool isRim = v < 0.001 || v > 0.999;
            return skin + out * (isRim ? 0.005 : 0.009);
        },
        [](Vec p) {
            return Vec{p.x, 0, p.z - 0.11};
        });
    surfaces.push_back(belt);
}

} // namespace

double TorsoSolid(const Body &body, Vec p) {
    const Build &build = BuildOf(body);
    const Vec q = BothSides(p), shoulder = body.At(RightArm).pivot, nape = body.At(Neck).pivot;
    double skin = Sections(build.trunk, q.y, q.x, q.z, 2.3);
    skin = Join(skin, Ellipsoid(q, build.bust, build.bustSize), 0.06);
    // Shoulders, and from them to the neck.
    skin = Join(skin,
                RoundCone(q, {0, shoulder.y - 0.012, shoulder.z - 0.003}, shoulder - Vec{0.024, 0.004, 0},
                          0.058, build.shoulder),
                0.05);
    return Join(skin,
                RoundCone(q, {0.02, nape.y - 0.005, nape.z + 0.003}, shoulder + Vec{-0.036, 0.008, 0.002},
                          build.slope, 0.030),
                0.04);
}

double HipsSolid(const Body &body, Vec p) {
    const Build &build = BuildOf(body);
    const Vec q = BothSides(p), hip = body.At(RightLeg).pivot, knee = body.At(RightLeg).end;
    const double belt = 0.192 * body.measures.trunk;
    double skin = Ellipsoid(q, {0, hip.y + 0.012, 0.118}, build.hips);
    skin = Join(skin, Ellipsoid(q, {0, belt - 0.022, 0.112}, build.waistband), 0.04);
    skin =
        Join(skin, RoundCone(q, hip + Vec{-0.006, -0.006, 0.025}, Mix(hip, knee, 0.31), 0.090, 0.080), 0.035);
    return Cut(skin, belt - q.y, 0.01); // ends under the belt
}

void AddTorso(Surfaces &surfaces, const Body &body) {
    const Solid around = [&](Vec p) {
        return std::min({TorsoSolid(body, p), NeckSolid(body, p), HipsSolid(body, p)});
    };
    Surface shirt;
    shirt.chart = "shirt";
    shirt.width = 700;
    shirt.height = 580;
    shirt.paint = PaintShirt;
    shirt.grid = LimbSkin([&](Vec p) { return ShirtWithShoulders(body, p); }, TrunkPath(body), {0, 0, 1}, 25,
                          ShirtRows, 0.9 * body.measures.shoulder.x, ShirtColumns);
    Shade(shirt.grid, around, 0.07);
    HideWhere(shirt, [&](Vec p) { return NeckSolid(body, p) < -0.012; });
    AddBending(surfaces, shirt, ShirtRows, BackBends, 1, 0.0015);

    Surface hips;
    hips.chart = "hips";
    hips.width = 340;
    hips.height = 220;
    hips.paint = PaintTrousers;
    hips.grid = BallSkin([&](Vec p) { return HipsSolid(body, p); },
                         {{0, body.At(RightLeg).pivot.y + 0.007, 0.080}}, 23, 12);
    Shade(hips.grid, around, 0.06);
    HideWhere(hips, [&](Vec p) { return p.y < 0.004 || TrousersSolid(body, BothSides(p)) < -0.014; });
    surfaces.push_back(hips);
    AddCollar(surfaces, body, around);
    AddTie(surfaces, body, around);
    AddEpaulettes(surfaces, body);
    AddBelt(surfaces, body);
}

} // namespace figure_maker
