// What makes one pose better than another for a hand that is to be somewhere: the distance first, then where
// palm and fingers look, room between arm and body, and little effort.
#include "figure/reach.h"

namespace rig {

namespace {

size_t At(int channel) {
    return static_cast<size_t>(channel);
}

double DistanceToCapsule(Vec p, Vec a, Vec b, double radius) {
    const Vec along = b - a;
    const double share = std::clamp(Dot(p - a, along) / Dot(along, along), 0.0, 1.0);
    return Length(p - a - along * share) - radius;
}

double ClearanceOf(const Body &body, const Frames &frames, bool isRight) {
    const int arm = isRight ? RightArm : LeftArm;
    const auto carried = [&](int channel, Vec p) { return ToWorld(frames[At(channel)], p); };
    const Vec elbow = body.At(arm + 1).pivot, wrist = body.At(arm + 2).pivot, knuckles = body.At(arm + 2).end;
    const Vec fingertip = body.At((isRight ? RightFingers : LeftFingers) + 8).end;
    const double trunk = body.measures.trunk, thigh = body.isMan ? 0.072 : 0.066;
    struct Probe {
        Vec place;
        double radius;
    };
    const Probe probes[] = {{carried(arm + 1, Mix(elbow, wrist, 0.35)), 0.036},
                            {carried(arm + 1, Mix(elbow, wrist, 0.7)), 0.032},
                            {carried(arm + 2, wrist), 0.02},
                            {carried(arm + 2, Mix(wrist, knuckles, 0.5)), 0.014},
                            {carried(arm + 2, knuckles), 0.012},
                            {carried((isRight ? RightFingers : LeftFingers) + 8, fingertip), 0.006}};
    double clearance = 1;
    for (const Probe &probe : probes) {
        const double distances[] = {
            DistanceToCapsule(probe.place, carried(BodyMiddle, {0, 0.20 * trunk, 0.115}),
                              carried(BodyTop, {0, 0.44 * trunk, 0.135}), body.isMan ? 0.125 : 0.110),
            DistanceToCapsule(probe.place, carried(Head, body.headCentre + Vec{0, 0.03, 0}),
                              carried(Head, body.headCentre + Vec{0, -0.04, -0.04}), 0.095),
            DistanceToCapsule(probe.place, carried(RightLeg, body.At(RightLeg).pivot),
                              carried(RightLeg, body.At(RightLeg).end), thigh),
            DistanceToCapsule(probe.place, carried(LeftLeg, body.At(LeftLeg).pivot),
                              carried(LeftLeg, body.At(LeftLeg).end), thigh)};
        for (double distance : distances) clearance = std::min(clearance, distance - probe.radius);
    }
    return clearance;
}

HandGoal HandIn(const Body &body, const Frames &frames, HandPoint point, bool isRight) {
    const Frame &hand = frames[At((isRight ? RightArm : LeftArm) + 2)];
    const Frame rest = HandFrame(body, isRight);
    HandGoal found;
    found.point = point;
    if (point == HandPoint::Fingertip) {
        const int tip = (isRight ? RightFingers : LeftFingers) + 5;
        found.target = ToWorld(frames[At(tip)], body.At(tip).end);
    } else {
        found.target = ToWorld(hand, ToWorld(rest, Vec{0, -0.028, -0.075} * body.measures.hand));
    }
    found.palm = ToWorldDirection(hand, rest.y * -1);
    found.fingers = ToWorldDirection(hand, rest.z * -1);
    return found;
}

double Square(double value) {
    return value * value;
}

// Of the joints that a fault depends on alone; the others' frames are those of the rest position.
Frames FramesForReach(const Body &body, const Pose &pose, bool isRight) {
    Frames frames;
    frames[WholeFigure] = WholeFrame(pose);
    const int arm = isRight ? RightArm : LeftArm, index = (isRight ? RightFingers : LeftFingers) + 3;
    for (int channel : {+BodyMiddle, +BodyTop, +Neck, +Head, arm, arm + 1, arm + 2, index, index + 1,
                        index + 2, index + 3, index + 4, index + 5, +LeftLeg, +RightLeg})
        CarryJoint(body, pose, frames, channel);
    return frames;
}

} // namespace

std::vector<Variable> ReachVariables(bool isRight, bool movesBack) {
    const int arm = isRight ? RightArm : LeftArm;
    std::vector<Variable> variables = {{arm, 0, 1},     {arm, 1, 1},     {arm, 2, 1},     {arm + 1, 0, 0.5},
                                       {arm + 1, 2, 1}, {arm + 2, 0, 1}, {arm + 2, 1, 1}, {arm + 2, 2, 2}};
    if (movesBack)
        for (int channel : {BodyMiddle, BodyTop})
            for (int axis = 0; axis < 3; axis++)
                variables.push_back({channel, axis, axis == 0 ? 25.0 : 60.0});
    return variables;
}

double Fault(const ReachTask &task, const Pose &pose) {
    const HandGoal &goal = task.goal;
    const Frames frames = FramesForReach(task.body, pose, task.isRight);
    const HandGoal hand = HandIn(task.body, frames, goal.point, task.isRight);
    double fault = Square(Length(hand.target - goal.target) / 0.004);
    fault += 14 * (1 - Dot(hand.palm, Unit(goal.palm))) + 14 * (1 - Dot(hand.fingers, Unit(goal.fingers)));
    // The elbow hangs, rather than to stand out from the shoulder.
    const int arm = task.isRight ? RightArm : LeftArm;
    const Joint &upper = task.body.At(arm);
    const double elbow = std::abs(ToWorld(frames[At(arm)], upper.end).x),
                 shoulder = std::abs(ToWorld(frames[At(arm)], upper.pivot).x);
    fault += Square(std::max(0.0, elbow - shoulder - 0.06) / 0.02);
    fault += Square(std::min(0.0, ClearanceOf(task.body, frames, task.isRight) - 0.004) / 0.003);
    for (const Variable &variable : task.variables) {
        const Joint &joint = task.body.At(variable.channel);
        const size_t axis = At(variable.axis);
        const double value = pose[At(variable.channel)][axis] - task.ease[At(variable.channel)][axis];
        const double range = joint.high[variable.axis] - joint.low[variable.axis];
        fault += 6 * variable.effort * Square(value / range);
    }
    return fault;
}

double WithinLimits(const Body &body, int channel, int axis, double value) {
    const Joint &joint = body.At(channel);
    return std::clamp(value, joint.low[axis], joint.high[axis]);
}

double Random::Next() {
    state = state * 1664525U + 1013904223U;
    return static_cast<double>(state >> 8) / 8388607.5 - 1;
}

double Improve(const ReachTask &task, Pose &pose, int trials, const Steps &steps, Random &random) {
    double fault = Fault(task, pose), step = steps.first;
    for (int trial = 0; trial < trials; trial++, step = std::max(steps.least, step * steps.factor)) {
        Pose next = pose;
        for (const Variable &variable : task.variables) {
            if (random.Next() > 0) continue;
            double &value = next[At(variable.channel)][At(variable.axis)];
            value = WithinLimits(task.body, variable.channel, variable.axis,
                                 value + step * random.Next() * random.Next());
        }
        const double nextFault = Fault(task, next);
        if (nextFault >= fault) continue;
        fault = nextFault;
        pose = next;
    }
    return fault;
}

HandGoal HandOf(const Body &body, const Pose &pose, HandPoint point, bool isRight) {
    return HandIn(body, FramesForReach(body, pose, isRight), point, isRight);
}

Vec PlaceOf(const Body &body, const Pose &pose, HandPoint point, bool isRight) {
    return HandOf(body, pose, point, isRight).target;
}

double Clearance(const Body &body, const Pose &pose, bool isRight) {
    return ClearanceOf(body, FramesForReach(body, pose, isRight), isRight);
}

} // namespace rig
