// Poses are found by trial: from several starts, the values of one arm (and of the back, for the arm that
// reaches farther) are changed at random and the better pose is kept, with smaller and smaller steps; then in
// whole degrees. The random numbers are our own, so that a pose comes out the same everywhere.
#include "tools/figure/poses.h"

#include <cstdint>
#include <cstdio>

namespace figure_maker {

namespace {

struct Random {
    std::uint32_t state = 1;
    double Next() { // -1 to 1
        state = state * 1664525U + 1013904223U;
        return static_cast<double>(state >> 8) / 8388607.5 - 1;
    }
};

size_t At(int channel) {
    return static_cast<size_t>(channel);
}

// One value that the search may change.
struct Variable {
    int channel, axis;
    double effort; // how much less welcome it is than an arm's
};

// Longer arms come to near targets with the elbow far out, which is the less welcome.
std::vector<Variable> ArmVariables(const Body &body, bool isRight) {
    const int arm = isRight ? RightArm : LeftArm;
    return {{arm, 0, 1},       {arm, 1, 1},     {arm, 2, body.isMan ? 5.0 : 1.0},
            {arm + 1, 0, 0.5}, {arm + 1, 2, 1}, {arm + 2, 0, 1},
            {arm + 2, 1, 1},   {arm + 2, 2, 2}};
}

double DistanceToCapsule(Vec p, Vec a, Vec b, double radius) {
    const Vec along = b - a;
    const double share = std::clamp(Dot(p - a, along) / Dot(along, along), 0.0, 1.0);
    return Length(p - a - along * share) - radius;
}

double ClearanceOf(const Body &body, const std::array<Frame, JointCount> &frames, bool isRight) {
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

Vec PlaceIn(const Body &body, const std::array<Frame, JointCount> &frames, HandPoint point, bool isRight) {
    if (point == HandPoint::Fingertip) {
        const int tip = (isRight ? RightFingers : LeftFingers) + 5;
        return ToWorld(frames[At(tip)], body.At(tip).end);
    }
    const int hand = (isRight ? RightArm : LeftArm) + 2;
    return ToWorld(frames[At(hand)],
                   ToWorld(HandFrame(body, isRight), Vec{0, -0.028, -0.075} * body.measures.hand));
}

double Square(double value) {
    return value * value;
}

// How far a pose is from what a reach asks for; the less the better.
double Fault(const Body &body, const Pose &pose, const Reach &reach, bool isRight,
             const std::vector<Variable> &variables, Vec lean) {
    const auto frames = CarriedFrames(body, pose);
    double fault = Square(Length(PlaceIn(body, frames, reach.point, isRight) - reach.target) / 0.004);
    const Frame &hand = frames[At((isRight ? RightArm : LeftArm) + 2)];
    const Frame rest = HandFrame(body, isRight);
    const double palm = Dot(ToWorldDirection(hand, rest.y * -1), Unit(reach.palm));
    const double fingers = Dot(ToWorldDirection(hand, rest.z * -1), Unit(reach.fingers));
    fault += 14 * (1 - palm) + 14 * (1 - fingers);
    fault += Square(std::min(0.0, ClearanceOf(body, frames, isRight) - 0.004) / 0.003);
    for (const Variable &variable : variables) {
        const Joint &joint = body.At(variable.channel);
        double value = pose[At(variable.channel)][At(variable.axis)];
        const double leans[3] = {lean.x, lean.y, lean.z};
        if (variable.channel == BodyMiddle || variable.channel == BodyTop) value -= leans[variable.axis] / 2;
        const double range = joint.high[variable.axis] - joint.low[variable.axis];
        fault += 6 * variable.effort * Square(value / range);
    }
    return fault;
}

double Held(const Body &body, const Variable &variable, double value) {
    const Joint &joint = body.At(variable.channel);
    return std::clamp(value, joint.low[variable.axis], joint.high[variable.axis]);
}

void SolveReach(const Body &body, Pose &pose, const Reach &reach, bool isRight, bool movesBack, Vec lean) {
    std::vector<Variable> variables = ArmVariables(body, isRight);
    // The back moves unwillingly: only as far as the arm is too short.
    if (movesBack)
        for (int channel : {BodyMiddle, BodyTop})
            for (int axis = 0; axis < 3; axis++)
                variables.push_back({channel, axis, axis == 0 ? 25.0 : 60.0});
    Random random;
    Pose best = pose;
    double least = Fault(body, pose, reach, isRight, variables, lean);
    const double side = isRight ? 1 : -1;
    const double starts[][2] = {{0, 0}, {60, 30}, {110, 20}}; // of the upper arm's x and z
    for (const auto &start : starts) {
        Pose tried = pose;
        tried[At(isRight ? RightArm : LeftArm)][0] = start[0];
        tried[At(isRight ? RightArm : LeftArm)][2] = start[1] * side;
        double fault = Fault(body, tried, reach, isRight, variables, lean);
        double step = 30;
        for (int attempt = 0; attempt < 2600; attempt++, step = std::max(0.3, step * 0.9982)) {
            Pose next = tried;
            for (const Variable &variable : variables) {
                if (random.Next() > 0) continue;
                double &value = next[At(variable.channel)][At(variable.axis)];
                value = Held(body, variable, value + step * random.Next() * random.Next());
            }
            const double nextFault = Fault(body, next, reach, isRight, variables, lean);
            if (nextFault >= fault) continue;
            fault = nextFault;
            tried = next;
        }
        if (fault < least) {
            least = fault;
            best = tried;
        }
    }
    pose = best;
    for (const Variable &variable : variables) {
        double &value = pose[At(variable.channel)][At(variable.axis)];
        value = std::round(value);
    }
    // Two values at a time, a degree each, as long as it helps.
    least = Fault(body, pose, reach, isRight, variables, lean);
    bool isBetter = true;
    while (isBetter) {
        isBetter = false;
        for (const Variable &a : variables)
            for (const Variable &b : variables)
                for (int way = 0; way < 4; way++) {
                    Pose next = pose;
                    double &valueA = next[At(a.channel)][At(a.axis)];
                    valueA = Held(body, a, valueA + (way % 2 ? 1 : -1));
                    double &valueB = next[At(b.channel)][At(b.axis)];
                    if (&a != &b) valueB = Held(body, b, valueB + (way / 2 ? 1 : -1));
                    const double fault = Fault(body, next, reach, isRight, variables, lean);
                    if (fault >= least - 1e-6) continue;
                    least = fault;
                    pose = next;
                    isBetter = true;
                }
    }
}

// Neck and head share the turn towards a place; the eyes' own motion does the rest.
void LookAt(const Body &body, Pose &pose, Vec target) {
    for (int round = 0; round < 3; round++) {
        const Frame head = CarriedFrames(body, pose)[Head];
        const Vec eyes = ToWorld(head, body.headCentre + Vec{0, 0.004, -0.075});
        const Vec wanted = ToLocal({{}, head.x, head.y, head.z}, target - eyes);
        const double left = std::atan2(-wanted.x, -wanted.z) / Degree;
        const double up = std::atan2(wanted.y, std::sqrt(wanted.x * wanted.x + wanted.z * wanted.z)) / Degree;
        const double shares[2] = {0.35, 0.65};
        const int channels[2] = {Neck, Head};
        for (size_t i = 0; i < 2; i++) {
            const Variable x = {channels[i], 0, 0}, y = {channels[i], 1, 0};
            double &nod = pose[At(channels[i])][0], &turn = pose[At(channels[i])][1];
            nod = std::round(Held(body, x, nod + up * shares[i] * 0.85));
            turn = std::round(Held(body, y, turn + left * shares[i] * 0.9));
        }
    }
}

} // namespace

void SetHandShape(Pose &pose, const std::string &shape, bool isRight) {
    const int first = isRight ? RightFingers : LeftFingers;
    for (const HandShape &candidate : HandShapes()) {
        if (shape != candidate.name) continue;
        for (size_t i = 0; i < 15; i++) {
            const double side = isRight ? 1 : -1;
            pose[At(first) + i] = {candidate.values[i][0], candidate.values[i][1] * side,
                                   candidate.values[i][2] * side};
        }
    }
}

Vec PlaceOf(const Body &body, const Pose &pose, HandPoint point, bool isRight) {
    return PlaceIn(body, CarriedFrames(body, pose), point, isRight);
}

double Clearance(const Body &body, const Pose &pose, bool isRight) {
    return ClearanceOf(body, CarriedFrames(body, pose), isRight);
}

Pose Solve(const Body &body, const PoseRecipe &recipe) {
    Pose pose{};
    SetHandShape(pose, recipe.left.hand, false);
    SetHandShape(pose, recipe.right.hand, true);
    const double wider = body.isMan ? 4 : 0;
    pose[LeftLeg][1] = recipe.legs[0] + wider;
    pose[RightLeg][1] = -recipe.legs[1] - wider;
    pose[LeftLeg][2] = 0;
    for (size_t axis = 0; axis < 3; axis++) pose[WholeFigure][axis] = recipe.offset[axis];
    const double leans[3] = {recipe.lean.x, recipe.lean.y, recipe.lean.z};
    for (size_t axis = 0; axis < 3; axis++) {
        pose[BodyMiddle][axis] = std::trunc(leans[axis] / 2);
        pose[BodyTop][axis] = leans[axis] - pose[BodyMiddle][axis];
    }
    // The hand that is farther away takes the back with it.
    const double left = Length(recipe.left.target - body.At(LeftArm).pivot);
    const double right = Length(recipe.right.target - body.At(RightArm).pivot);
    const bool isRightFirst = right > left;
    SolveReach(body, pose, isRightFirst ? recipe.right : recipe.left, isRightFirst, true, recipe.lean);
    SolveReach(body, pose, isRightFirst ? recipe.left : recipe.right, !isRightFirst, false, recipe.lean);
    LookAt(body, pose, recipe.look);
    return pose;
}

std::string PositionText(const Pose &pose) {
    std::string text;
    for (int i = 0; i < JointCount; i++) {
        const auto &values = pose[At(i)];
        char line[96];
        // "+ 0.0" turns a negative zero into a plain one.
        std::snprintf(line, sizeof line, "%d,%s,%g,%g,%g,\r\n", i, Woman().At(i).name.c_str(),
                      values[0] + 0.0, values[1] + 0.0, values[2] + 0.0);
        text += line;
    }
    return text;
}

} // namespace figure_maker
