// The figure's joints: where they are while she sits with her hands on her thighs, about which axes they
// turn, and how far. Woman and man differ in their measures alone. The object and the poses are made from
// this one table, and the position creator works with it, so that their lengths agree. A pose stays within
// the limits; the object, which must take any value, stays at a limit beyond it. It moves the whole figure as
// far as it is told.
//
// The origin is the top centre of the seat's cushion; she looks forward, along -z. Every value is 0 in the
// rest position. Angles are degrees, right-handed about the axis; the last channel is the whole figure's
// offset, metres.
#pragma once

#include <array>
#include <string>

#include "figure/vectors.h"

namespace rig {

const int JointCount = 47;

// Indices of channels, as in data/obj/fennic.txt. Sides are hers.
enum Channel {
    BodyMiddle = 0,
    BodyTop = 1,
    Neck = 2,
    Head = 3,
    LeftArm = 4,     // upper arm, forearm, hand
    LeftFingers = 7, // thumb first, three joints each
    RightArm = 22,
    RightFingers = 25,
    LeftLeg = 40, // thigh, shank, foot
    RightLeg = 43,
    WholeFigure = 46,
    NoJoint = -1
};

struct Joint {
    std::string name;
    int parent = NoJoint;
    Vec pivot;              // at rest
    Vec axes[3];            // of the channel's x, y and z at rest, unit length
    const char *order;      // which turn comes first, counted from the parent: "yxz"
    double low[3], high[3]; // how far it goes; metres for the whole figure
    Vec end;                // of the bone that begins at the pivot, at rest
};

// What sets two people's bones apart, at rest: metres, the right side.
struct Measures {
    double trunk; // length of the spine, in hers
    Vec shoulder, wrist;
    double upperArm, forearm;
    Vec hip, knee, ankle, toes;
    double neck, hand, head; // sizes, in hers
    double lap;              // height of what lies on both thighs
};

struct Body {
    bool isMan = false;
    Measures measures;
    std::array<Joint, JointCount> joints;
    Vec headCentre; // between the two ears, on the line through both; the head is modelled about it

    const Joint &At(int channel) const { return joints[static_cast<size_t>(channel)]; }
};
const Body &Woman();
const Body &Man();
inline const Body &BodyOf(bool isMan) {
    return isMan ? Man() : Woman();
}

// How far the eyes turn up and down, and to each side, degrees: as long as the iris is between the lids.
const double EyesUp = 15, EyesAside = 30;

// One value per channel and axis.
using Pose = std::array<std::array<double, 3>, JointCount>;

// What takes points at rest to where each joint carries them.
using Frames = std::array<Frame, JointCount>;
Frames CarriedFrames(const Body &body, const Pose &pose);

// The same for one joint, whose parent's frame is there already. Not for the whole figure.
void CarryJoint(const Body &body, const Pose &pose, Frames &frames, int channel);
Frame WholeFrame(const Pose &pose);

// The hand's own axes at rest: origin in the wrist, -z along the hand, y out of its back.
Frame HandFrame(const Body &body, bool isRight);

} // namespace rig
