// Hands: a palm and five fingers of three segments. A segment begins with the ball that the one before ends
// with.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

// In the right hand's axes, millimetres: x outwards (the little finger's side), y out of the back, z to the
// wrist.
Vec InHand(Vec p) {
    return ToLocal(HandFrame(true), p) * 1000;
}

double PalmSolid(Vec p) {
    const Vec q = InHand(p);
    double skin = Ellipsoid(q, {0, 0, 0}, {24, 18, 26});
    // The bones of the fingers, and the muscle of thumb and edge.
    const Vec knuckles[4] = {{-27, -1, -84}, {-5, 1, -88}, {16, 0, -83}, {34, -4, -73}};
    for (Vec knuckle : knuckles)
        skin = Join(skin, RoundCone(q, {knuckle.x * 0.45, 0, -8}, knuckle, 13, 10.2), 12);
    skin = Join(skin, RoundCone(q, {-14, -8, -16}, {-24, -9, -58}, 13, 8), 14);
    skin = Join(skin, RoundCone(q, {16, -7, -12}, {31, -7, -62}, 12, 9), 14);
    return skin * 0.001;
}

const double Thickness[5][4] = {{13.0, 10.2, 9.2, 7.6},
                                {9.6, 8.3, 7.2, 5.9},
                                {9.8, 8.5, 7.4, 6.1},
                                {9.4, 8.1, 7.0, 5.8},
                                {8.4, 7.2, 6.3, 5.2}};

Vec NailDirection(const Joint &joint) {
    return joint.axes[2]; // a finger spreads about it
}

double SegmentSolid(Vec p, const Joint &joint, int finger, int segment) {
    const double a = Thickness[finger][segment] * 0.001, b = Thickness[finger][segment + 1] * 0.001;
    if (segment < 2) return RoundCone(p, joint.pivot, joint.end, a, b);
    // The tip: its ball ends at the bone's end, and is flat on the nail's side.
    const Vec along = Unit(joint.end - joint.pivot);
    const Vec tip = joint.end - along * b;
    double skin = RoundCone(p, joint.pivot, tip, a, b);
    skin = Join(skin,
                Ellipsoid(p, Mix(joint.pivot, tip, 0.65) - NailDirection(joint) * 0.0012,
                          {b * 1.1, b * 1.1, b * 1.1}),
                0.004);
    return skin;
}

Texel PaintPalm(const SkinPoint &point) {
    const Vec q = InHand(point.position);
    const double under = SmoothStep(0.1, -0.5, Dot(point.normal, HandFrame(true).y));
    double red = 0.10 + 0.28 * under;
    Texel texel;
    const double knuckleX[4] = {-27, -5, 16, 34}, knuckleZ[4] = {-84, -88, -83, -73};
    double tendon = 0;
    for (int i = 0; i < 4; i++) {
        red += 0.35 * (1 - under)
               * std::exp(-(std::pow((q.x - knuckleX[i]) / 7, 2) + std::pow((q.z - knuckleZ[i]) / 8, 2)));
        const double bone = knuckleX[i] * Mix(0.45, 1.0, std::clamp(-q.z / 85, 0.0, 1.0));
        tendon += std::exp(-std::pow((q.x - bone) / 3, 2)) * (1 - under) * SmoothStep(-10, -40, q.z);
    }
    texel = Skin(point, red);
    texel.height += 0.0009 * tendon;
    texel.color = texel.color * (1 + 0.03 * tendon);
    // Two lines across the palm.
    const double line = std::exp(-std::pow((q.z + 62 + 0.25 * q.x) / 1.2, 2))
                        + std::exp(-std::pow((q.z + 48 - 0.3 * q.x) / 1.2, 2));
    texel.color = texel.color * (1 - 0.12 * line * under);
    return texel;
}

// u = 0.5 on the nail's side.
Texel PaintSegment(const SkinPoint &point, bool isTip) {
    const double back = std::exp(-std::pow((point.u - 0.5) / 0.2, 2));
    // Over both joints the skin is redder and creased.
    const double fold = std::exp(-std::pow((point.v - 0.26) / 0.10, 2))
                        + (isTip ? 0 : std::exp(-std::pow((point.v - 0.74) / 0.10, 2)));
    Texel texel = Skin(point, 0.10 + 0.16 * fold + (isTip ? 0.2 * SmoothStep(0.5, 1, point.v) : 0));
    texel.height += 0.00012 * std::sin(point.v * 110) * fold * back;
    if (isTip) {
        const double x = std::abs(point.u - 0.5) / 0.135, y = (point.v - 0.66) / 0.25;
        const double nail = std::pow(x, 3) + std::pow(std::abs(y), 3.5);
        if (nail < 1) {
            texel.color = Mix(Color(232, 178, 160), Color(240, 214, 202), SmoothStep(0.55, 0.9, y));
            texel.height = 0.0003;
            texel.gloss = 0.7;
        } else if (nail < 1.5) {
            texel.color = texel.color * 0.86;
        }
    }
    return texel;
}

} // namespace

void AddHands(std::vector<Surface> &surfaces) {
    Surface palm;
    palm.chart = "palm";
    palm.width = 300;
    palm.height = 240;
    palm.paint = PaintPalm;
    const Frame hand = HandFrame(true);
    palm.grid = LimbSkin(PalmSolid, ToWorld(hand, {0, 0, 0.004}), ToWorld(hand, {0.001, -0.001, -0.066}),
                         hand.y * -1, 29, 19, 0.2, 0.32);
    Shade(palm.grid, PalmSolid, 0.02);
    palm.joint = RightArm + 2;
    surfaces.push_back(palm);
    surfaces.push_back(Mirror(palm, LeftArm + 2));
    for (int finger = 0; finger < 5; finger++)
        for (int segment = 0; segment < 3; segment++) {
            const int index = RightFingers + finger * 3 + segment;
            const Joint &joint = Joints()[static_cast<size_t>(index)];
            const bool isTip = segment == 2;
            Surface part;
            part.chart = std::string(finger == 0 ? "thumb " : "finger ") + std::to_string(segment + 1);
            part.width = 100;
            part.height = 80;
            part.paint = [isTip](const SkinPoint &point) { return PaintSegment(point, isTip); };
            const Solid solid = [=, &joint](Vec p) { return SegmentSolid(p, joint, finger, segment); };
            const double tipShare =
                isTip ? 1 - Thickness[finger][3] * 0.001 / Length(joint.end - joint.pivot) : 1;
            part.grid = LimbSkin(solid, joint.pivot, Mix(joint.pivot, joint.end, tipShare),
                                 NailDirection(joint) * -1, 11, isTip ? 9 : 7, 0.3, 0.3);
            part.joint = index;
            surfaces.push_back(part);
            surfaces.push_back(Mirror(part, index + LeftArm - RightArm));
        }
}

} // namespace figure_maker
