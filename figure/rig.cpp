// The joints of a woman of 1.68 m and of a man of 1.80 m. The right side is laid out and the left one
// mirrored; turns are right-handed on both sides, so that a mirrored pose has its y and z values negated.
#include "figure/rig.h"

namespace rig {

namespace {

// clang-format off
const Measures HerMeasures = {
    .trunk = 1,
    .shoulder = {0.168, 0.528, 0.158}, .wrist = {0.122, 0.203, -0.075},
    .upperArm = 0.285, .forearm = 0.245,
    .hip = {0.088, 0.093, 0.085}, .knee = {0.118, 0.118, -0.345},
    .ankle = {0.118, -0.250, -0.485}, .toes = {0.130, -0.315, -0.64},
    .neck = 1, .hand = 1, .head = 1, .lap = 0.205};
const Measures HisMeasures = {
    .trunk = 1.06,
    .shoulder = {0.194, 0.558, 0.160}, .wrist = {0.134, 0.224, -0.092},
    .upperArm = 0.308, .forearm = 0.268,
    .hip = {0.092, 0.101, 0.085}, .knee = {0.132, 0.137, -0.374},
    .ankle = {0.134, -0.245, -0.515}, .toes = {0.150, -0.315, -0.70},
    .neck = 1.14, .hand = 1.11, .head = 1.05, .lap = 0.224};
// clang-format on

const Vec ElbowSide = {0.55, -0.30, 0.75}; // where the elbow points
const Vec HandDirection = {-0.10, -0.09, -1}, HandUp = {0.22, 1, 0};

// Of each finger, thumb first, in the right hand's axes: the base, the three lengths, how far it points
// outwards, and its natural bend at each joint. Her lengths.
struct FingerShape {
    Vec base;
    double lengths[3];
    double outwards;
    double bend[3];
};
const FingerShape FingerShapes[5] = {
    {{-0.022, -0.008, -0.022}, {0.043, 0.031, 0.026}, -42, {4, 8, 10}},
    {{-0.027, 0.000, -0.086}, {0.041, 0.024, 0.020}, -4, {10, 14, 8}},
    {{-0.005, 0.002, -0.090}, {0.045, 0.028, 0.021}, -1, {10, 16, 9}},
    {{0.016, 0.001, -0.085}, {0.041, 0.026, 0.021}, 3, {11, 17, 10}},
    {{0.034, -0.003, -0.075}, {0.032, 0.019, 0.018}, 8, {11, 16, 10}},
};

using JointTable = std::array<Joint, JointCount>;

// Where two bones of the given lengths meet between a and b, bent towards a side.
Vec Between(Vec a, Vec b, double first, double second, Vec side) {
    const Vec along = Unit(b - a);
    const double distance = Length(b - a);
    const double foot = (first * first - second * second + distance * distance) / (2 * distance);
    const Vec out = Unit(side - along * Dot(side, along));
    return a + along * foot + out * std::sqrt(first * first - foot * foot);
}

struct Limits {
    double low[3], high[3];
};

void Set(Joint &joint, const std::string &name, int parent, Vec pivot, Vec end, const Frame &axes,
         const char *order, const Limits &limits) {
    joint.name = name;
    joint.parent = parent;
    joint.pivot = pivot;
    joint.end = end;
    const Vec directions[3] = {axes.x, axes.y, axes.z};
    for (int axis = 0; axis < 3; axis++) {
        joint.axes[axis] = directions[axis];
        joint.low[axis] = limits.low[axis];
        joint.high[axis] = limits.high[axis];
    }
    joint.order = order;
}

Vec OnSpine(const Measures &m, double up, double back) {
    return {0, up * m.trunk, back};
}

void SetSpine(JointTable &joints, const Measures &m) {
    const Frame upright;
    const Vec waist = OnSpine(m, 0.170, 0.115), chest = OnSpine(m, 0.330, 0.135),
              nape = OnSpine(m, 0.575, 0.165), skull = OnSpine(m, 0.705, 0.150);
    Set(joints[BodyMiddle], "body_mid", WholeFigure, waist, chest, upright, "yxz",
        {{-28, -20, -14}, {12, 20, 14}});
    Set(joints[BodyTop], "body_top", BodyMiddle, chest, nape, upright, "yxz",
        {{-24, -22, -14}, {12, 22, 14}});
    Set(joints[Neck], "neck", BodyTop, nape, skull, upright, "yxz", {{-22, -30, -14}, {22, 30, 14}});
    Set(joints[Head], "head", Neck, skull, OnSpine(m, 0.860, 0.140), upright, "yxz",
        {{-28, -48, -14}, {26, 48, 14}});
    Set(joints[WholeFigure], "xyz", NoJoint, {}, {}, upright, "xyz", {{-0.1, -0.1, -0.15}, {0.1, 0.1, 0.15}});
}

Frame RightHand(const Measures &m) {
    return FrameAlong(m.wrist, HandDirection, HandUp);
}

void SetArm(JointTable &joints, const Measures &m) {
    const Vec elbow = Between(m.shoulder, m.wrist, m.upperArm, m.forearm, ElbowSide);
    const Frame hand = RightHand(m);
    // The upper arm's y is along the bone; the elbow is a hinge about x.
    const Vec up = Unit(m.shoulder - elbow), back = Unit(elbow - m.wrist);
    const Vec hinge = Unit(Cross(up, back));
    const Frame upper = {m.shoulder, hinge, up, Cross(hinge, up)};
    const Frame fore = {elbow, hinge, Cross(back, hinge), back};
    Set(joints[RightArm], "r_arm1", BodyTop, m.shoulder, elbow, upper, "xzy",
        {{-45, -75, -35}, {160, 75, 100}});
    Set(joints[RightArm + 1], "r_arm2", RightArm, elbow, m.wrist, fore, "yxz",
        {{-80, -4, -100}, {55, 4, 100}});
    Set(joints[RightArm + 2], "r_arm3", RightArm + 1, m.wrist, ToWorld(hand, {0, 0, -0.09 * m.hand}), hand,
        "yxz", {{-65, -28, -45}, {65, 28, 45}});
}

void SetFinger(JointTable &joints, const Measures &m, int finger) {
    const FingerShape &shape = FingerShapes[finger];
    const Frame hand = RightHand(m);
    const Limits fingerLimits = {{-25, -15, -16}, {95, 15, 16}},
                 thumbLimits = {{-30, -40, -35}, {60, 40, 35}};
    // In the hand's axes; a thumb's nail looks sideways.
    Vec direction = Turn({0, 0, -1}, {0, 1, 0}, -shape.outwards);
    Vec nail = {0, 1, 0};
    if (finger == 0) {
        direction = Unit(direction + Vec{0, -0.28, 0});
        nail = {-0.62, 0.70, 0.15};
    }
    Vec pivot = shape.base * m.hand;
    for (int segment = 0; segment < 3; segment++) {
        const Frame straight = FrameAlong(pivot, direction, nail);
        direction = Turn(direction, straight.x, -shape.bend[segment]);
        const Frame bent = FrameAlong(pivot, direction, nail);
        const Vec end = pivot + direction * (shape.lengths[segment] * m.hand);
        // x curls; z spreads, about the nail's direction; y twists.
        const Frame axes = {{},
                            ToWorldDirection(hand, bent.x * -1),
                            ToWorldDirection(hand, bent.z * -1),
                            ToWorldDirection(hand, bent.y)};
        const int index = RightFingers + finger * 3 + segment;
        Set(joints[static_cast<size_t>(index)],
            "r_f" + std::to_string(finger + 1) + std::to_string(segment + 1),
            segment == 0 ? RightArm + 2 : index - 1, ToWorld(hand, pivot), ToWorld(hand, end), axes, "zxy",
            finger == 0 ? thumbLimits : fingerLimits);
        pivot = end;
    }
}

void SetLeg(JointTable &joints, const Measures &m) {
    // x is level for all three; the thigh's z and the shank's y are along the bone.
    const Frame thigh = FrameAlong(m.hip, m.knee - m.hip, {0, 1, 0});
    const Vec up = Unit(m.knee - m.ankle);
    const Frame shank = {m.knee, {1, 0, 0}, up, Cross({1, 0, 0}, up)};
    Set(joints[RightLeg], "r_leg1", WholeFigure, m.hip, m.knee, thigh, "yxz", {{-8, -25, -12}, {22, 25, 12}});
    Set(joints[RightLeg + 1], "r_leg2", RightLeg, m.knee, m.ankle, shank, "xzy",
        {{-30, -20, -8}, {30, 20, 8}});
    Set(joints[RightLeg + 2], "r_leg3", RightLeg + 1, m.ankle, m.toes, Frame{}, "yxz",
        {{-25, -20, -10}, {25, 20, 10}});
}

// A limb's left joint from its right one: x turns mirrored, y and z turn the same way in space.
Joint Mirrored(const Joint &right, int offset) {
    Joint left = right;
    left.name[0] = 'l';
    if (left.parent >= LeftArm && left.parent != WholeFigure) left.parent += offset;
    left.pivot = MirrorX(right.pivot);
    left.end = MirrorX(right.end);
    for (int axis = 0; axis < 3; axis++) {
        const Vec mirrored = MirrorX(right.axes[axis]);
        const bool isSame = axis == 0;
        // The mirror image of a turn is one about the negated mirror image of its axis.
        left.axes[axis] = isSame ? mirrored * -1 : mirrored;
        if (!isSame) {
            left.low[axis] = -right.high[axis];
            left.high[axis] = -right.low[axis];
        }
    }
    return left;
}

Body MakeBody(bool isMan) {
    Body body;
    body.isMan = isMan;
    body.measures = isMan ? HisMeasures : HerMeasures;
    JointTable &joints = body.joints;
    SetSpine(joints, body.measures);
    SetArm(joints, body.measures);
    for (int finger = 0; finger < 5; finger++) SetFinger(joints, body.measures, finger);
    SetLeg(joints, body.measures);
    for (size_t i = 0; i < 18; i++) joints[LeftArm + i] = Mirrored(joints[RightArm + i], LeftArm - RightArm);
    for (size_t i = 0; i < 3; i++) joints[LeftLeg + i] = Mirrored(joints[RightLeg + i], LeftLeg - RightLeg);
    body.headCentre = body.At(Head).pivot + Vec{0, 0.047, -0.010} * body.measures.head;
    return body;
}

// What comes of the transform after a turn about a fixed axis through a point, in the transform's own
// coordinates.
Frame TurnedAbout(const Frame &carried, Vec pivot, Vec axis, double degrees) {
    const Frame turned = {pivot - Turn(pivot, axis, degrees), Turn({1, 0, 0}, axis, degrees),
                          Turn({0, 1, 0}, axis, degrees), Turn({0, 0, 1}, axis, degrees)};
    return {ToWorld(carried, turned.origin), ToWorldDirection(carried, turned.x),
            ToWorldDirection(carried, turned.y), ToWorldDirection(carried, turned.z)};
}

} // namespace

const Body &Woman() {
    static const Body body = MakeBody(false);
    return body;
}

const Body &Man() {
    static const Body body = MakeBody(true);
    return body;
}

Frame HandFrame(const Body &body, bool isRight) {
    const Vec wrist = body.measures.wrist;
    if (isRight) return RightHand(body.measures);
    return FrameAlong(MirrorX(wrist), MirrorX(HandDirection), MirrorX(HandUp));
}

Frame WholeFrame(const Pose &pose) {
    const auto &offset = pose[WholeFigure];
    return {{offset[0], offset[1], offset[2]}};
}

void CarryJoint(const Body &body, const Pose &pose, Frames &frames, int channel) {
    const Joint &joint = body.At(channel);
    const auto &values = pose[static_cast<size_t>(channel)];
    Frame frame = frames[static_cast<size_t>(joint.parent)];
    for (const char *letter = joint.order; *letter; letter++) {
        const int axis = *letter - 'x';
        const double value = values[static_cast<size_t>(axis)];
        if (value != 0) frame = TurnedAbout(frame, joint.pivot, joint.axes[axis], value);
    }
    frames[static_cast<size_t>(channel)] = frame;
}

Frames CarriedFrames(const Body &body, const Pose &pose) {
    Frames frames;
    frames[WholeFigure] = WholeFrame(pose);
    for (int channel = 0; channel < WholeFigure; channel++) // a parent stands before its children
        CarryJoint(body, pose, frames, channel);
    return frames;
}

} // namespace rig
