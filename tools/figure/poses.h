// The shipped positions and hand presets: what each is to do, and how the arms find their way there.
#pragma once

#include <string>
#include <vector>

#include "figure/reach.h"

namespace figure_maker {

using namespace rig;

// The shape of a hand: right fingers' values, thumb first, three joints each; the left hand mirrors them.
struct HandShape {
    const char *name;
    double values[15][3];
};
const std::vector<HandShape> &HandShapes();
void SetHandShape(Pose &pose, const std::string &shape, bool isRight);

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

// A pose in whole degrees and centimetres, as the position creator would make it. Men sit a little wider.
Pose Solve(const Body &body, const PoseRecipe &recipe);

// A position's or preset's lines, for all channels.
std::string PositionText(const Pose &pose);

} // namespace figure_maker
