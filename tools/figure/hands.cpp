// Hands: a palm, and five fingers. Each bone of a finger has a skin of its own that ends in a ball about the
// next joint, so the outside of a bent finger stays closed and the inside folds, however far it curls.
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
    const Vec knuckles[4] = {{-27, 0, -84}, {-5, 2, -88}, {16, 1, -83}, {34, -3, -73}};
    for (Vec knuckle : knuckles)
        skin = Join(skin, RoundCone(q, {knuckle.x * 0.45, 0, -8}, knuckle, 13, 10.8), 8);
    skin = Join(skin, RoundCone(q, {-17, -8, -14}, {-28, -9, -50}, 15, 10), 14);
    skin = Join(skin, RoundCone(q, {-20, -8, -18}, {-35, -12, -37}, 17, 12.5), 14);
    skin = Join(skin, RoundCone(q, {16, -7, -12}, {31, -7, -62}, 12, 9), 14);
    return skin * 0.001 * body.measures.hand;
}

// Radii at the knuckle, the two joints and the tip, thumb first; millimetres of her hand.
const double Thickness[5][4] = {{11.4, 10.2, 9.2, 7.6},
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

Vec EndOf(const Body &body, int finger, int segment) {
    return segment == 2 ? TipOf(body, finger) : Segment(body, finger, segment).end;
}

// One bone with its flesh: round at both ends, slimmer between, fuller on the palm's side. All but the first
// begin a little smaller than the ball before them, under which they turn.
double SegmentSolid(const Body &body, int finger, int segment, Vec p) {
    const Joint &joint = Segment(body, finger, segment);
    const Vec along = EndOf(body, finger, segment) - joint.pivot, from = p - joint.pivot;
    const double share = std::clamp(Dot(from, along) / Dot(along, along), 0.0, 1.0);
    const Vec out = from - along * share;
    const double away = Length(out), back = away > 0 ? Dot(out, NailDirection(joint)) / away : 0;
    double radius = Mix(Thickness[finger][segment], Thickness[finger][segment + 1], share);
    const double middle = std::sin(180 * Degree * share);
    radius *= segment == 2 ? 1 - 0.06 * middle * back : 1 - 0.07 * middle * (0.6 + 0.4 * back);
    if (segment > 0) radius *= Mix(0.945, 1.0, SmoothStep(0, 0.28, share));
    if (finger == 0 && segment == 0)
        radius *= Mix(0.88, 1.0, SmoothStep(0, 0.4, share)) + 0.09 * middle; // its muscle
    return away - radius * Stoutness(body);
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
    const double under = SmoothStep(0.1, -0.5, Dot(point.normal, HandFrame(body, true).y));
    Texel texel = Skin(point, tone, 0.10 + 0.26 * under + 0.16 * fold + 0.2 * SmoothStep(12, 3, tip));
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

// Light falls on a skin as if it ran on smoothly into its neighbour: where both meet they have the same
// normals. What lies deep in the neighbour comes out when the finger bends, and keeps its own.
void SoftenTowards(Grid &grid, const Solid &own, const Solid &neighbour, double width) {
    const Solid both = [&](Vec p) { return Join(own(p), neighbour(p), width); };
    for (size_t i = 0; i < grid.positions.size(); i++) {
        const double near = SmoothStep(-width * 0.6, -width * 0.1, neighbour(grid.positions[i]));
        grid.normals[i] = Unit(Mix(grid.normals[i], OutOf(both, grid.positions[i]), near));
    }
}

// A ball's side to the palm lies within its neighbour, unless the finger is bent backwards.
void HideInsides(Surface &skin, const std::vector<double> &rows) {
    for (double row : rows)
        for (int column = 0; column < skin.grid.columns; column++) {
            const double palm = std::cos(360 * Degree * column / (skin.grid.columns - 1));
            skin.hidden.push_back((row < -0.3 || (row > 1.3 && row < 2)) && palm > 0.3);
        }
}

void AddFinger(Surfaces &surfaces, const Body &body, int finger, Surface skin, const Tone &tone) {
    static const std::vector<double> thumbRows = {-0.28, 0, 0.3, 0.6, 1, 1.35, 1.7, 2};
    static const std::vector<double> segmentRows[3] = {{-1, -0.6, -0.28, 0, 0.5, 1, 1.35, 1.7, 2},
                                                       {0, 0.5, 1, 1.35, 1.7, 2},
                                                       {0, 0.4, 0.8, 1.15, 1.45, 1.72, 2}};
    skin.paint = [&body, &tone, finger](const SkinPoint &point) {
        return PaintFinger(body, finger, tone, point);
    };
    for (int segment = 0; segment < 3; segment++) {
        const Joint &joint = Segment(body, finger, segment);
        const bool isRoot = finger == 0 && segment == 0;
        const std::vector<double> &rows = isRoot ? thumbRows : segmentRows[segment];
        Surface piece = skin;
        piece.joint = RightFingers + finger * 3 + segment;
        piece.chart =
            std::string(finger == 0 ? "thumb " : "finger ") + tone.name + " " + std::to_string(segment);
        piece.width = 64;
        piece.height = 88;
        piece.grid = LimbSkin([&](Vec p) { return SegmentSolid(body, finger, segment, p); },
                              {{joint.pivot, EndOf(body, finger, segment)}, 0}, NailDirection(joint) * -1, 9,
                              rows, 0.03);
        const auto solidOf = [&](int other) {
            return [&body, finger, other](Vec p) {
                return other < 0 ? PalmSolid(body, p) : SegmentSolid(body, finger, other, p);
            };
        };
        const double width = segment == 0 ? (finger == 0 ? 0.014 : 0.009) : 0.004;
        SoftenTowards(piece.grid, solidOf(segment), solidOf(segment - 1), width);
        if (segment < 2) SoftenTowards(piece.grid, solidOf(segment), solidOf(segment + 1), 0.004);
        if (segment < 2 && finger > 0) HideInsides(piece, rows);
        if (isRoot) {
            // The muscle of the thumb grows out of the palm, and takes the turn band by band.
            piece.joint = RightArm + 2;
            AddBending(surfaces, piece, rows, {{RightFingers, -0.28, 0.6}}, 1, 0.0008);
        } else {
            surfaces.push_back(piece);
        }
    }
}

} // namespace

double HandSolid(const Body &body, const Frames &frames, Vec p) {
    double fingers = 1;
    for (int finger = 0; finger < 5; finger++) {
        double bones = 1;
        for (int segment = 0; segment < 3; segment++) {
            const Frame &frame = frames[static_cast<size_t>(RightFingers + finger * 3 + segment)];
            bones = Join(bones, SegmentSolid(body, finger, segment, ToLocal(frame, p)), 0.0025);
        }
        fingers = std::min(fingers, bones);
    }
    return Join(PalmSolid(body, p), fingers, 0.008);
}

void AddHands(Surfaces &surfaces, const Body &body) {
    const size_t first = surfaces.size();
    for (const Tone *tone : {&LightTone(), &DarkTone()}) {
        Surface skin;
        skin.looks = LooksWith(body, *tone);
        Surface palm = skin;
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
            hand.y * -1, 23, Rows({Steps(-1, 0, 2), Steps(0, 1, 5), Steps(1, 2, 4)}));
        Shade(palm.grid, solid, 0.02);
        for (int finger = 0; finger < 5; finger++)
            SoftenTowards(
                palm.grid, solid, [&](Vec p) { return SegmentSolid(body, finger, 0, p); },
                finger == 0 ? 0.014 : 0.009);
        HideWhere(palm, [&](Vec p) { return InHand(body, p).z > 16; }); // within the cuff
        surfaces.push_back(palm);
        for (int finger = 0; finger < 5; finger++) AddFinger(surfaces, body, finger, skin, *tone);
    }
    AddMirrored(surfaces, first);
}

} // namespace figure_maker
