// Shirt, collar, tie, epaulettes, belt and hips. The chest's shirt hangs a little over the waist's and that
// over the belt, so that bends open no gap.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

Vec BothSides(Vec p) {
    return {std::abs(p.x), p.y, p.z};
}

double WaistSolid(Vec p) {
    double skin = Ellipsoid(p, {0, 0.255, 0.122}, {0.130, 0.125, 0.096});
    return Join(skin, Ellipsoid(p, {0, 0.185, 0.112}, {0.150, 0.072, 0.106}), 0.05);
}

Texel PaintShirt(const SkinPoint &point) {
    const Vec p = point.position;
    Texel texel = Cloth(point, ShirtWhite, Unit({0.25, 1, 0}), 0.0016);
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
        }
    } else if (p.z > 0.13) {
        texel.height += 0.0006 * SmoothStep(0.487, 0.484, p.y); // yoke
        if (std::abs(p.y - 0.485) < 0.0014) texel.color = texel.color * 0.9;
    }
    return texel;
}

Texel PaintTrousers(const SkinPoint &point) {
    return Cloth(point, UniformNavy, Unit({0.6, 0.3, 1}), 0.0018);
}

// ---- Collar and tie ----

// A place on the collar's fold: turns about the neck, 0 in front, -1 and 1 behind.
Vec OnCollar(double around, double out, double up) {
    const double a = around * 180 * Degree;
    // Higher behind than in front.
    const double rise = Mix(0.5835, 0.632, SmoothStep(0, 1, std::abs(around)));
    return Vec{std::sin(a) * (0.0570 + out), rise + up,
               0.166 - std::cos(a) * (0.0570 + out) + 0.010 * std::cos(a)};
}

// On the shirt in front of the chest, at a height.
Vec OnChest(double x, double y, double lift) {
    const Vec skin = Leave(ChestSolid, {x, y, 0.13}, {0, 0, -1}, 0.3);
    return skin + Vec{0, 0, -lift};
}

Texel PaintCollar(const SkinPoint &point) {
    Texel texel = Cloth(point, ShirtWhite * 1.02, {0, 1, 0}, 0.0002);
    const double seam = std::min(std::abs(point.v - 0.93), std::abs(point.v - 0.07));
    if (seam < 0.02) texel.color = texel.color * 0.93;
    texel.color = texel.color * (1 - 0.18 * SmoothStep(0.9, 1, point.v));
    return texel;
}

void AddCollar(std::vector<Surface> &surfaces, const Solid &around) {
    Surface collar;
    collar.joint = BodyTop;
    collar.chart = "collar stand";
    collar.width = 260;
    collar.height = 48;
    collar.paint = PaintCollar;
    // The stand leans to the neck; the fall hangs over it and ends in two points.
    const auto outwards = [](Vec p) { return Vec{p.x, 0.05, p.z - 0.163}; };
    collar.grid = Sheet(
        33, 4,
        [](double u, double v) { return OnCollar(u * 2 - 1, Mix(0.004, -0.004, v), Mix(-0.030, 0.004, v)); },
        outwards);
    Shade(collar.grid, around, 0.02);
    surfaces.push_back(collar);
    collar.chart = "collar";
    collar.width = 400;
    collar.height = 100;
    collar.grid = Sheet(
        49, 9,
        [](double u, double v) {
            const double turn = u * 2 - 1, side = std::abs(turn);
            // Its front edges part below the knot, and the corners are its points.
            const double around = (turn < 0 ? -1 : 1) * Mix(0.035 + 0.14 * v, 1, side);
            const double drop = Mix(0.070, 0.033, SmoothStep(0, 0.30, side));
            const double roll = std::min(1.0, v * 6);
            Vec p = OnCollar(
                around, Mix(-0.0035, 0.0045, std::sin(roll * 90 * Degree)) + 0.014 * v * (1 - 0.5 * side),
                0.0045 + 0.002 * std::sin(roll * 180 * Degree) - drop * v);
            // Lies on the shirt.
            for (int round = 0; round < 2; round++) {
                const double depth = ChestSolid(p) - 0.0045;
                if (depth < 0) p = p + OutOf(ChestSolid, p) * -depth;
            }
            return p;
        },
        outwards);
    Shade(collar.grid, around, 0.02);
    surfaces.push_back(collar);
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

void AddTie(std::vector<Surface> &surfaces, const Solid &around) {
    Surface knot;
    knot.joint = BodyTop;
    knot.chart = "tie knot";
    knot.width = 90;
    knot.height = 80;
    knot.paint = PaintTie;
    const auto solid = [](Vec p) {
        const Vec q = {p.x, p.y, p.z};
        return Join(RoundCone(q, {0, 0.577, 0.0965}, {0, 0.551, 0.0885}, 0.0155, 0.0095),
                    Ellipsoid(BothSides(q), {0.009, 0.579, 0.098}, {0.010, 0.008, 0.010}), 0.008);
    };
    knot.grid = LimbSkin(solid, {0, 0.577, 0.0965}, {0, 0.551, 0.0885}, {0, 0, 1}, 17, 11, 0.3, 0.3);
    Shade(knot.grid, around, 0.02);
    surfaces.push_back(knot);
    // The blade, in two pieces: the chest carries the upper one.
    for (int piece = 0; piece < 2; piece++) {
        Surface blade;
        blade.joint = piece == 0 ? BodyTop : BodyMiddle;
        blade.chart = piece == 0 ? "tie" : "tie end";
        blade.width = 100;
        blade.height = piece == 0 ? 300 : 120;
        blade.paint = PaintTie;
        const double top = piece == 0 ? 0.552 : 0.315, bottom = piece == 0 ? 0.285 : 0.195;
        blade.grid = Sheet(
            11, piece == 0 ? 25 : 9,
            [=](double u, double v) {
                const double across = u * 2 - 1, y = Mix(bottom, top, v);
                const double half = Mix(0.041, 0.0125, std::clamp((y - 0.19) / 0.36, 0.0, 1.0));
                const double edge = std::pow(std::abs(across), 3);
                // Hangs from the fullest place in front of the middle.
                const double down = std::clamp((0.43 - y) / 0.2, 0.0, 1.0);
                Vec p = piece == 0 ? OnChest(across * half * 0.7, y, 0.0045 - 0.0045 * edge) : Vec{};
                if (piece == 1)
                    p = Leave(WaistSolid, {across * half * 0.7, y, 0.13}, {0, 0, -1}, 0.3)
                        + Vec{0, 0, -0.0045 + 0.004 * edge};
                p.x = across * half;
                p.z -= piece == 0 ? 0.010 * down * (1 - down) * 2 : 0.004;
                return p;
            },
            [](Vec) {
                return Vec{0, 0, -1};
            });
        Shade(blade.grid, around, 0.02);
        surfaces.push_back(blade);
    }
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
            texel.gloss = 0.6;
        }
    }
    const double button = Length({(point.u - 0.5) * 0.046, (point.v - 0.88) * 0.105, 0});
    if (button < 0.0062) {
        texel.color = Gold;
        texel.height = 0.001 * (1 - button / 0.0062);
        texel.gloss = 0.8;
    }
    return texel;
}

void AddEpaulettes(std::vector<Surface> &surfaces) {
    Surface epaulette;
    epaulette.joint = BodyTop;
    epaulette.chart = "epaulette";
    epaulette.width = 110;
    epaulette.height = 220;
    epaulette.paint = PaintEpaulette;
    const Solid shoulder = [](Vec p) {
        const Joint &arm = Joints()[RightArm];
        return Join(ChestSolid(p), Length(p - arm.pivot) - 0.060, 0.012);
    };
    epaulette.grid = Sheet(
        11, 15,
        [&shoulder](double u, double v) {
            const double across = u * 2 - 1;
            // Outer end at v = 0; round at the collar's end, thick at the edges.
            const double x = Mix(0.186, 0.084, v);
            const double half =
                0.0245
                * (v > 0.8 ? std::sqrt(std::max(0.0, 1 - std::pow((v - 0.8) / 0.2, 2))) * 0.75 + 0.25 : 1);
            const Vec from = {x, 0.50, 0.158 + across * half};
            Vec p = Leave(shoulder, from, {0, 1, 0}, 0.2);
            const bool isRim = std::abs(across) > 0.999 || v < 0.001 || v > 0.999;
            p.y += isRim ? -0.002 : 0.0045;
            return p;
        },
        [](Vec) {
            return Vec{0, 1, 0};
        });
    surfaces.push_back(epaulette);
    surfaces.push_back(Mirror(epaulette, BodyTop));
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
            texel.gloss = 0.9;
        }
    }
    return texel;
}

void AddBelt(std::vector<Surface> &surfaces) {
    Surface belt;
    belt.joint = WholeFigure;
    belt.chart = "belt";
    belt.width = 480;
    belt.height = 36;
    belt.paint = PaintBelt;
    belt.grid = Sheet(
        49, 5,
        [](double u, double v) {
            const double a = (u * 2 - 1) * 180 * Degree; // in front at 0.5
            const Vec from = {0, Mix(0.168, 0.198, v), 0.112};
            const Vec out = {std::sin(a), 0, -std::cos(a)};
            const Vec skin =
                Leave([](Vec p) { return std::min(HipsSolid(p), WaistSolid(p)); }, from, out, 0.3);
            const bool isRim = v < 0.001 || v > 0.999;
            return skin + out * (isRim ? 0.001 : 0.006);
        },
        [](Vec p) {
            return Vec{p.x, 0, p.z - 0.11};
        });
    surfaces.push_back(belt);
}

} // namespace

double ChestSolid(Vec p) {
    const Vec q = BothSides(p);
    double skin = Ellipsoid(q, {0, 0.430, 0.142}, {0.146, 0.150, 0.106});
    skin =
        Join(skin, RoundCone(q, {0, 0.515, 0.155}, {0.138, 0.524, 0.158}, 0.056, 0.047), 0.05); // shoulders
    skin = Join(skin, RoundCone(q, {0.02, 0.570, 0.168}, {0.128, 0.540, 0.160}, 0.046, 0.030),
                0.04);                                                                   // to the neck
    skin = Join(skin, Ellipsoid(q, {0.066, 0.420, 0.066}, {0.058, 0.060, 0.050}), 0.05); // bust
    skin = Join(skin, Ellipsoid(q, {0, 0.325, 0.130}, {0.136, 0.062, 0.100}), 0.06);     // hanging over
    return Join(skin, Ellipsoid(q, {0.075, 0.470, 0.215}, {0.06, 0.08, 0.035}), 0.05);   // shoulder blade
}

double HipsSolid(Vec p) {
    const Vec q = BothSides(p);
    double skin = Ellipsoid(q, {0, 0.105, 0.118}, {0.168, 0.098, 0.110});
    skin = Join(skin, Ellipsoid(q, {0, 0.160, 0.112}, {0.150, 0.055, 0.104}), 0.04);
    skin = Join(skin, RoundCone(q, {0.082, 0.086, 0.110}, {0.098, 0.096, -0.050}, 0.090, 0.080), 0.035);
    return Cut(skin, 0.186 - p.y, 0.01); // ends under the belt
}

void AddTorso(std::vector<Surface> &surfaces) {
    const Solid around = [](Vec p) {
        return std::min({ChestSolid(p), WaistSolid(p), NeckSolid(p), HipsSolid(p)});
    };
    Surface chest;
    chest.joint = BodyTop;
    chest.chart = "chest";
    chest.width = 820;
    chest.height = 560;
    chest.paint = PaintShirt;
    chest.grid = LimbSkin(ChestSolid, {0, 0.35, 0.137}, {0, 0.525, 0.155}, {0, 0, 1}, 39, 25, 0.18, 0.30);
    Shade(chest.grid, around, 0.07);
    surfaces.push_back(chest);

    Surface waist;
    waist.joint = BodyMiddle;
    waist.chart = "waist";
    waist.width = 520;
    waist.height = 220;
    waist.paint = PaintShirt;
    waist.grid = LimbSkin(WaistSolid, {0, 0.175, 0.112}, {0, 0.31, 0.128}, {0, 0, 1}, 29, 11, 0.15, 0.2);
    Shade(waist.grid, around, 0.06);
    surfaces.push_back(waist);

    Surface hips;
    hips.joint = WholeFigure;
    hips.chart = "hips";
    hips.width = 440;
    hips.height = 280;
    hips.paint = PaintTrousers;
    hips.grid = BallSkin(HipsSolid, {{0, 0.100, 0.080}}, 31, 17);
    Shade(hips.grid, around, 0.06);
    surfaces.push_back(hips);
    AddCollar(surfaces, around);
    AddTie(surfaces, around);
    AddEpaulettes(surfaces);
    AddBelt(surfaces);
}

} // namespace figure_maker
