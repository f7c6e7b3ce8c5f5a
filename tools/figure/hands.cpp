// Hands: a palm, and five fingers whose skin runs over their joints.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

// In the right hand's axes, millimetres of her hand: x outwards (the little finger's side), y out of the
// back, z to the wrist.
Vec InHand(const Body &body, Vec p) {
    return ToLocal(HandFrame(body, true), p) * (1000 / body.measures.hand);
}

double PalmSolid(const Body &body, Vec p) {
    const Vec q = InHand(body, p);
    double skin = Ellipsoid(q, {0, 0, 0}, {24, 18, 26});
    // The bones of the fingers, and the muscle of thumb and edge.
    const Vec knuckles[4] = {{-27, -1, -84}, {-5, 1, -88}, {16, 0, -83}, {34, -4, -73}};
    for (Vec knuckle : knuckles)
        skin = Join(skin, RoundCone(q, {knuckle.x * 0.45, 0, -8}, knuckle, 13, 9.8), 12);
    skin = Join(skin, RoundCone(q, {-14, -8, -16}, {-24, -9, -58}, 13, 8), 14);
    skin = Join(skin, RoundCone(q, {16, -7, -12}, {31, -7, -62}, 12, 9), 14);
    return skin * 0.001 * body.measures.hand;
}

// Radii at the knuckle, the two joints and the tip, thumb first; millimetres of her hand.
const double Thickness[5][4] = {{13.0, 10.2, 9.2, 7.6},
                                {9.6, 8.1, 7.1, 6.1},
                                {9.8, 8.3, 7.3, 6.3},
                                {9.4, 7.9, 6.9, 6.0},
                                {8.4, 7.0, 6.2, 5.4}};
// A man's are a little thicker than his hand is longer.
double Stoutness(const Body &body) {
    return 0.001 * body.measures.hand * (body.isMan ? 1.06 : 1);
}

const Joint &Segment(const Body &body, int finger, int segment) {
    return body.At(RightFingers + finger * 3 + segment);
}

Vec NailDirection(const Joint &joint) {
    return joint.axes[2]; // a finger spreads about it
}

// The middle of the ball at the tip.
Vec TipOf(const Body &body, int finger) {
    const Joint &last = Segment(body, finger, 2);
    return last.end - Unit(last.end - last.pivot) * (Thickness[finger][3] * Stoutness(body));
}

double FingerSolid(const Body &body, int finger, Vec p) {
    double skin = 1;
    for (int segment = 0; segment < 3; segment++) {
        const Joint &joint = Segment(body, finger, segment);
        const double a = Thickness[finger][segment] * Stoutness(body),
                     b = Thickness[finger][segment + 1] * Stoutness(body);
        const Vec end = segment == 2 ? TipOf(body, finger) : joint.end;
        // Slimmer between the joints.
        const double bone = Join(RoundCone(p, joint.pivot, end, a * 0.96, b * 0.92),
                                 RoundCone(p, end, end + Vec{0, 0, 1e-6}, b, b), 0.006);
        skin = segment == 0 ? bone : Join(skin, bone, 0.004);
        // The pulp below the nail.
        if (segment == 2)
            skin = Join(
                skin,
                Ellipsoid(p, Mix(joint.pivot, end, 0.7) - NailDirection(joint) * 0.0012, Vec{b, b, b} * 1.08),
                0.004);
    }
    return skin;
}

Texel PaintPalm(const Body &body, const Tone &tone, const SkinPoint &point) {
    const Vec q = InHand(body, point.position);
    const double under = SmoothStep(0.1, -0.5, Dot(point.normal, HandFrame(body, true).y));
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
    texel = Skin(point, tone, red);
    texel.height += 0.0009 * tendon;
    texel.color = texel.color * (1 + 0.03 * tendon);
    // Two lines across the palm.
    const double line = std::exp(-std::pow((q.z + 62 + 0.25 * q.x) / 1.2, 2))
                        + std::exp(-std::pow((q.z + 48 - 0.3 * q.x) / 1.2, 2));
    texel.color = texel.color * (1 - 0.12 * line * under);
    return texel;
}

// u = 0.5 on the nail's side. Joints and nail are found by their places.
Texel PaintFinger(const Body &body, int finger, const Tone &tone, const SkinPoint &point) {
    const double back = std::exp(-std::pow((point.u - 0.5) / 0.2, 2));
    double fold = 0;
    Vec along;
    for (int segment = 0; segment < 3; segment++) {
        const Joint &joint = Segment(body, finger, segment);
        along = Unit(joint.end - joint.pivot);
        if (segment > 0) fold += std::exp(-std::pow(Dot(point.position - joint.pivot, along) / 0.0045, 2));
    }
    const Joint &last = Segment(body, finger, 2);
    const double size = Stoutness(body) * 1000, tip = Dot(last.end - point.position, along) / size * 1000;
    // Over the joints the skin is redder and creased.
    Texel texel = Skin(point, tone, 0.10 + 0.16 * fold + 0.2 * SmoothStep(12, 3, tip));
    texel.height += 0.00012 * std::sin(Dot(point.position, along) * 4200) * fold * back;
    texel.color = texel.color * (1 - 0.06 * fold * back);
    const Vec q = point.position - last.end;
    const double half = Thickness[finger][3] * 0.70,
                 across = std::abs(Dot(q, last.axes[0])) / size * 1000 / half,
                 y = (tip - 6.4) / 5.6; // 1 at the root, -1 at the free edge
    const bool isAbove = Dot(point.normal, NailDirection(last)) > 0.15 && tip < 14;
    const double nail = std::pow(across, 3) + std::pow(std::abs(y), 3.5);
    if (isAbove && nail < 1) {
        const Vec bed = Mix(tone.skin, tone.blood, 0.45);
        texel.color = Mix(bed, Mix(bed, Color(246, 232, 222), 0.65), SmoothStep(-0.55, -0.9, y));
        texel.height = 0.0003;
        texel.gloss = 0.7;
    } else if (isAbove && nail < 1.5) {
        texel.color = texel.color * 0.88;
    }
    return texel;
}

void AddFinger(Surfaces &surfaces, const Body &body, int finger, Surface skin, const Tone &tone) {
    const int first = RightFingers + finger * 3;
    const Joint *const joints[3] = {&body.At(first), &body.At(first + 1), &body.At(first + 2)};
    const Vec tip = TipOf(body, finger);
    double places[4] = {}; // of the joints and the tip on the path
    for (int i = 1; i < 4; i++)
        places[i] = places[i - 1] + Length((i < 3 ? joints[i]->pivot : tip) - joints[i - 1]->pivot);
    for (double &place : places) place /= places[3];
    const Path path = {{joints[0]->pivot, joints[1]->pivot, joints[2]->pivot, tip}, 0.006};
    const double near = 0.075;
    const std::vector<double> rows = Rows({{-0.7, 0.06},
                                           Steps(places[1] - near, places[1] + near, 2),
                                           Steps(places[2] - near, places[2] + near, 2),
                                           {1, 1.4, 1.75, 2}});
    skin.chart = std::string(finger == 0 ? "thumb " : "finger ") + tone.name;
    skin.width = 80;
    skin.height = 190;
    skin.paint = [&body, &tone, finger](const SkinPoint &point) {
        return PaintFinger(body, finger, tone, point);
    };
    skin.grid = LimbSkin([&](Vec p) { return FingerSolid(body, finger, p); }, path,
                         NailDirection(*joints[1]) * -1, 7, rows, 0.03);
    AddBending(surfaces, skin, rows,
               {{first, -0.7, 0.06},
                {first + 1, places[1] - near, places[1] + near},
                {first + 2, places[2] - near, places[2] + near}},
               1, 0.0006);
}

} // namespace

void AddHands(Surfaces &surfaces, const Body &body) {
    const size_t first = surfaces.size();
    for (const Tone *tone : {&LightTone(), &DarkTone()}) {
        Surface palm;
        palm.looks = LooksWith(body, *tone);
        palm.joint = RightArm + 2;
        palm.chart = std::string("palm ") + tone->name;
        palm.width = 220;
        palm.height = 180;
        palm.paint = [&body, tone](const SkinPoint &point) { return PaintPalm(body, *tone, point); };
        const Frame hand = HandFrame(body, true);
        const double size = body.measures.hand;
        const Solid solid = [&](Vec p) { return PalmSolid(body, p); };
        palm.grid = LimbSkin(
            solid,
            {{ToWorld(hand, Vec{0, 0, 0.004} * size), ToWorld(hand, Vec{0.001, -0.001, -0.066} * size)}, 0},
            hand.y * -1, 19, Rows({Steps(-1, 0, 2), Steps(0, 1, 5), Steps(1, 2, 4)}));
        Shade(palm.grid, solid, 0.02);
        surfaces.push_back(palm);
        for (int finger = 0; finger < 5; finger++) AddFinger(surfaces, body, finger, palm, *tone);
    }
    AddMirrored(surfaces, first);
}

} // namespace figure_maker
