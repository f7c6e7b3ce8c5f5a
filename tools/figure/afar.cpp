// The figures as one sees them through the windows from outside: each bone with a plain skin. Charts are
// those of the parts near by, whose colours are enough.
#include "tools/figure/looks.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

Surface Plain(const std::string &chart, int joint, Grid grid) {
    Surface surface;
    surface.chart = chart;
    surface.joint = joint;
    surface.grid = std::move(grid);
    return surface;
}

const std::vector<double> PlainRows = {-1, -0.4, 0, 1, 1.4, 2};

// A bone's skin, as thick as said at both ends.
Surface Bone(const Body &body, const std::string &chart, int joint, double radiusA, double radiusB) {
    const Joint &bone = body.At(joint);
    return Plain(chart, joint,
                 LimbSkin([&](Vec p) { return RoundCone(p, bone.pivot, bone.end, radiusA, radiusB); },
                          {{bone.pivot, bone.end}, 0}, bone.axes[0], 6, PlainRows));
}

} // namespace

void AddFromAfar(Surfaces &surfaces, const Body &body) {
    const double stout = body.isMan ? 1.15 : 1;
    const size_t first = surfaces.size();
    surfaces.push_back(Bone(body, "sleeve", RightArm, 0.053 * stout, 0.039 * stout));
    surfaces.push_back(Bone(body, "sleeve", RightArm + 1, 0.039 * stout, 0.032 * stout));
    surfaces.push_back(Bone(body, "trouser leg", RightLeg, 0.088 * stout, 0.062 * stout));
    surfaces.push_back(Bone(body, "trouser leg", RightLeg + 1, 0.062 * stout, 0.050 * stout));
    surfaces.push_back(Bone(body, "shoe", RightLeg + 2, 0.040 * stout, 0.034 * stout));
    for (const Tone *tone : {&LightTone(), &DarkTone()}) {
        Surface hand = Bone(body, std::string("palm ") + tone->name, RightArm + 2, 0.026, 0.030);
        hand.looks = LooksWith(body, *tone);
        surfaces.push_back(hand);
    }
    AddMirrored(surfaces, first);

    const Vec seat = {0, 0.150 * body.measures.trunk, 0.112}, chest = body.At(RightArm).pivot;
    surfaces.push_back(
        Plain("shirt", BodyTop,
              LimbSkin([&](Vec p) { return TorsoSolid(body, p); }, {{seat, {0, chest.y, chest.z}}, 0},
                       {0, 0, 1}, 11, {0, 0.25, 0.5, 0.75, 1, 1.35, 1.7, 2})));
    // What one knows a pilot by lies on it.
    const Vec nape = body.At(Neck).pivot;
    const auto onChest = [&](double across, double up, double lift) {
        const Vec skin =
            Leave([&](Vec p) { return TorsoSolid(body, p); }, {across, up, 0.15}, {0, 0, -1}, 0.3);
        return skin + Vec{0, 0, -lift};
    };
    surfaces.push_back(Plain("tie", BodyTop,
                             Sheet(
                                 2, 4,
                                 [&](double u, double v) {
                                     const double half = Mix(0.040, 0.013, v);
                                     return onChest((u * 2 - 1) * half, Mix(seat.y + 0.03, nape.y - 0.01, v),
                                                    0.014);
                                 },
                                 [](Vec) {
                                     return Vec{0, 0, -1};
                                 })));
    const Surface epaulette = Plain(
        "epaulette", BodyTop,
        Sheet(
            2, 2,
            [&](double u, double v) {
                const Vec from = {Mix(chest.x + 0.012, 0.085, v), chest.y - 0.03, chest.z + (u - 0.5) * 0.05};
                return Leave([&](Vec p) { return std::min(TorsoSolid(body, p), ArmSolid(body, p)); }, from,
                             {0, 1, 0}, 0.2)
                       + Vec{0, 0.012, 0};
            },
            [](Vec) {
                return Vec{0, 1, 0};
            }));
    surfaces.push_back(epaulette);
    surfaces.push_back(Mirror(epaulette));
    surfaces.push_back(Plain(
        "hips", WholeFigure,
        BallSkin([&](Vec p) { return HipsSolid(body, p); }, {{0, body.At(RightLeg).pivot.y, 0.080}}, 9, 6)));
    for (const Tone *tone : {&LightTone(), &DarkTone()}) {
        const int looks = LooksWith(body, *tone);
        int look = 0; // whose head is shown
        while (!(looks & 1 << look)) look++;
        Surface head = Plain(ChartOf(body, look, "head"), Head, HeadSkin(body, 11, 9));
        head.isHalved = true;
        head.looks = looks;
        surfaces.push_back(head);
        Surface neck = Bone(body, std::string("neck ") + tone->name, Neck, 0.052, 0.048);
        neck.looks = looks;
        surfaces.push_back(neck);
    }
    for (int look = 0; look < LookCount; look++) {
        Surface hair = Plain(
            ChartOf(body, look, "hair"), Head,
            BallSkin([&](Vec p) { return HairSolid(body, look, p); }, {OnHead(body, 0, 34, -22)}, 9, 7));
        hair.isHalved = true;
        hair.looks = 1 << look;
        surfaces.push_back(hair);
    }
}

} // namespace figure_maker
