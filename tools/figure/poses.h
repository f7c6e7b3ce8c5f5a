// The shipped positions and hand presets: what each is to do, and how the arms find their way there.
#pragma once

#include <string>
#include <vector>

#include "tools/figure/rig.h"

namespace figure_maker {

// The shape of a hand: right fingers' values, thumb first, three joints each; the left hand mirrors them.
struct HandShape {
    const char *name;
    double values[15][3];
};
const std::vector<HandShape> &HandShapes();
void SetHandShape(Pose &pose, const std::string &shape, bool isRight);

// The point of a hand that arrives at a target.
enum class HandPoint { Fingertip, Grip };

struct Reach {
    Vec target;                   // metres from the seat's reference point
    const char *hand = "relaxed"; // its shape
    HandPoint point = HandPoint::Grip;
    Vec palm = {0, -1, 0};    // where the palm looks
    Vec fingers = {0, 0, -1}; // where the fingers point
};

struct PoseRecipe {
    const char *group, *name; // no group: ""
    Vec look;                 // what she looks at
    Reach left, right;
    Vec lean;                // of the back at least, degrees: forward negative, y to the left, z
    double legs[2] = {0, 0}; // how far the left and the right knee are moved outwards
    double offset[3] = {0, 0, 0};
};
const std::vector<PoseRecipe> &PoseRecipes(const Body &body);

// Where a hand's point is in a pose.
Vec PlaceOf(const Body &body, const Pose &pose, HandPoint point, bool isRight);

// How far forearm and hand keep from her head, body and thighs; negative: they pass through.
double Clearance(const Body &body, const Pose &pose, bool isRight);

// A pose in whole degrees and centimetres, as the position creator would make it. Men sit a little wider.
Pose Solve(const Body &body, const PoseRecipe &recipe);

// A position's or preset's lines, for all channels.
std::string PositionText(const Pose &pose);

} // namespace figure_maker
