// Poses are found by trial, from several starts, for one arm (and the back, for the arm that reaches
// farther), and then in whole degrees.
#include "tools/figure/poses.h"

#include <cstdio>

namespace figure_maker {

namespace {

size_t At(int channel) {
    return static_cast<size_t>(channel);
}

void SolveReach(const Body &body, Pose &pose, const Reach &reach, bool isRight, bool movesBack, Vec lean) {
    ReachTask task = {body,
                      isRight,
                      {reach.target, reach.point, reach.palm, reach.fingers},
                      ReachVariables(isRight, movesBack)};
    for (int channel : {BodyMiddle, BodyTop}) task.ease[At(channel)] = {lean.x / 2, lean.y / 2, lean.z / 2};
    Random random;
    Pose best = pose;
    double least = Fault(task, pose);
    const double side = isRight ? 1 : -1;
    const double starts[][2] = {{0, 0}, {60, 30}, {110, 20}}; // of the upper arm's x and z
    for (const auto &start : starts) {
        Pose tried = pose;
        tried[At(isRight ? RightArm : LeftArm)][0] = start[0];
        tried[At(isRight ? RightArm : LeftArm)][2] = start[1] * side;
        const double fault = Improve(task, tried, 2600, {30, 0.9982, 0.3}, random);
        if (fault < least) {
            least = fault;
            best = tried;
        }
    }
    pose = best;
    for (const Variable &variable : task.variables) {
        double &value = pose[At(variable.channel)][At(variable.axis)];
        value = std::round(value);
    }
    // Two values at a time, a degree each, as long as it helps.
    least = Fault(task, pose);
    const auto move = [&body](Pose &moved, const Variable &variable, double by) {
        double &value = moved[At(variable.channel)][At(variable.axis)];
        value = WithinLimits(body, variable.channel, variable.axis, value + by);
    };
    bool isBetter = true;
    while (isBetter) {
        isBetter = false;
        for (const Variable &a : task.variables)
            for (const Variable &b : task.variables)
                for (int way = 0; way < 4; way++) {
                    Pose next = pose;
                    move(next, a, way % 2 ? 1 : -1);
                    if (&a != &b) move(next, b, way / 2 ? 1 : -1);
                    const double fault = Fault(task, next);
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
            double &nod = pose[At(channels[i])][0], &turn = pose[At(channels[i])][1];
            nod = std::round(WithinLimits(body, channels[i], 0, nod + up * shares[i] * 0.85));
            turn = std::round(WithinLimits(body, channels[i], 1, turn + left * shares[i] * 0.9));
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
