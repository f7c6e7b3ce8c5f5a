// How an arm finds its way to a point: inverse kinematics by trial. The values of the arm (and of the back,
// when it may help) are changed at random and the better pose is kept, with smaller and smaller steps. The
// makers of the shipped positions search from several starts; the position creator goes on from the pose that
// is shown, a little in each frame, while a hand is dragged.
#pragma once

#include <cstdint>
#include <vector>

#include "figure/rig.h"

namespace rig {

// The point of a hand that arrives at a target.
enum class HandPoint { Fingertip, Grip };

struct HandGoal {
    Vec target; // metres from the seat's reference point
    HandPoint point = HandPoint::Grip;
    Vec palm = {0, -1, 0};    // where the palm looks
    Vec fingers = {0, 0, -1}; // where the fingers point
};

// One value that the search may change.
struct Variable {
    int channel, axis;
    double effort; // how much less welcome it is than an arm's
};

struct ReachTask {
    const Body &body;
    bool isRight;
    HandGoal goal;
    std::vector<Variable> variables;
    Pose ease{}; // the values that cost no effort
};

// An arm's values, and where the back may help its, which moves unwillingly: only as far as the arm is too
// short.
std::vector<Variable> ReachVariables(bool isRight, bool movesBack);

// How far a pose is from what a task asks for; the less the better.
double Fault(const ReachTask &task, const Pose &pose);

// The nearest value within the joint's limits.
double WithinLimits(const Body &body, int channel, int axis, double value);

// Random numbers of our own, so that a pose comes out the same everywhere.
struct Random {
    std::uint32_t state = 1;
    double Next(); // -1 to 1
};

// How the steps shrink from trial to trial, degrees.
struct Steps {
    double first, factor, least;
};

// Tries so many changes of the pose and keeps what lessens the fault, which it returns.
double Improve(const ReachTask &task, Pose &pose, int trials, const Steps &steps, Random &random);

// Where a hand's point is in a pose, and where palm and fingers look.
HandGoal HandOf(const Body &body, const Pose &pose, HandPoint point, bool isRight);
Vec PlaceOf(const Body &body, const Pose &pose, HandPoint point, bool isRight);

// How far forearm and hand keep from her head, body and thighs; negative: they pass through.
double Clearance(const Body &body, const Pose &pose, bool isRight);

} // namespace rig
