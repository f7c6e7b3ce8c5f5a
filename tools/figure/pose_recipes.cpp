// What the shipped positions and presets are. Targets are those of a middling cockpit with her in the
// right-hand seat: the pedestal is at her left.
#include "tools/figure/poses.h"

namespace figure_maker {

const std::vector<HandShape> &HandShapes() {
    // clang-format off
    static const std::vector<HandShape> shapes = {
        {"relaxed",
         {{4, 0, -4}, {0, 0, 0}, {0, 0, 0},
          {0, 0, -3}, {2, 0, 0}, {0, 0, 0},
          {2, 0, 0}, {4, 0, 0}, {2, 0, 0},
          {4, 0, 2}, {6, 0, 0}, {3, 0, 0},
          {5, 0, 6}, {6, 0, 0}, {3, 0, 0}}},
        {"open",
         {{-8, 0, 10}, {-6, 0, 0}, {-8, 0, 0},
          {-10, 0, 4}, {-12, 0, 0}, {-6, 0, 0},
          {-10, 0, 1}, {-14, 0, 0}, {-7, 0, 0},
          {-11, 0, -3}, {-14, 0, 0}, {-8, 0, 0},
          {-11, 0, -6}, {-13, 0, 0}, {-8, 0, 0}}},
        {"fist",
         {{4, 25, -22}, {28, 0, 0}, {30, 0, 0},
          {68, 0, -3}, {84, 0, 0}, {52, 0, 0},
          {70, 0, -1}, {86, 0, 0}, {52, 0, 0},
          {72, 0, 2}, {86, 0, 0}, {52, 0, 0},
          {74, 0, 5}, {84, 0, 0}, {52, 0, 0}}},
        {"point",
         {{4, 25, -22}, {28, 0, 0}, {30, 0, 0},
          {-4, 0, 1}, {-8, 0, 0}, {-6, 0, 0},
          {62, 0, 0}, {80, 0, 0}, {50, 0, 0},
          {66, 0, 2}, {82, 0, 0}, {50, 0, 0},
          {68, 0, 4}, {80, 0, 0}, {50, 0, 0}}},
        {"grip",
         {{18, 12, -6}, {22, 0, 0}, {20, 0, 0},
          {34, 0, 0}, {46, 0, 0}, {26, 0, 0},
          {36, 0, 0}, {48, 0, 0}, {28, 0, 0},
          {38, 0, 1}, {48, 0, 0}, {28, 0, 0},
          {40, 0, 3}, {46, 0, 0}, {28, 0, 0}}},
        {"thumb_up",
         {{-26, 0, 26}, {-18, 0, 0}, {-20, 0, 0},
          {70, 0, -3}, {84, 0, 0}, {52, 0, 0},
          {72, 0, -1}, {86, 0, 0}, {52, 0, 0},
          {74, 0, 2}, {86, 0, 0}, {52, 0, 0},
          {74, 0, 5}, {84, 0, 0}, {52, 0, 0}}},
        {"pen",
         {{22, 10, -12}, {20, 0, 0}, {14, 0, 0},
          {34, 0, -2}, {28, 0, 0}, {10, 0, 0},
          {44, 0, 0}, {40, 0, 0}, {20, 0, 0},
          {52, 0, 2}, {54, 0, 0}, {30, 0, 0},
          {54, 0, 4}, {56, 0, 0}, {30, 0, 0}}},
    };
    // clang-format on
    return shapes;
}

namespace {

const Vec Ahead = {0.02, 0.70, -3}, Panel = {0, 0.40, -0.8}, Lap = {0, 0.18, -0.28},
          Captain = {-1.0, 0.72, -0.25};

// A hand at rest on a thigh, moved from where it lies when all is zero.
Reach OnThigh(const Body &body, bool isRight, double outwards = 0, double forward = 0) {
    const double side = isRight ? 1 : -1;
    const Vec rest = ToWorld(HandFrame(body, isRight), Vec{0, -0.028, -0.075} * body.measures.hand);
    return {rest + Vec{side * outwards, 0.002 + 0.10 * forward, -forward},
            "relaxed",
            HandPoint::Grip,
            {-0.22 * side, -1, 0},
            {-0.12 * side, -0.08, -1}};
}

Reach Press(Vec target, Vec fingers, Vec palm = {0, -1, -0.2}) {
    return {target, "point", HandPoint::Fingertip, palm, fingers};
}

Reach Hold(Vec target, Vec palm, Vec fingers) {
    return {target, "grip", HandPoint::Grip, palm, fingers};
}

std::vector<PoseRecipe> MakeRecipes(const Body &body) {
    const double lap = body.measures.lap;
    const Reach left = OnThigh(body, false), right = OnThigh(body, true);
    const Vec upright = {};
    std::vector<PoseRecipe> recipes = {
        // ---- Idle ----
        {"rest", "rest_thighs", Ahead, left, right, upright},
        {"rest",
         "rest_knees",
         {0.1, 0.62, -3},
         OnThigh(body, false, 0.005, 0.075),
         OnThigh(body, true, 0.005, 0.07),
         {-5, 0, 0},
         {2, 3}},
        {"rest",
         "rest_lap",
         {0, 0.62, -2},
         OnThigh(body, false, -0.048, -0.005),
         OnThigh(body, true, -0.048, 0.005),
         {1, 0, 0},
         {0, 1}},
        {"rest",
         "rest_window",
         {2.2, 0.75, -1.8},
         OnThigh(body, false, -0.01, 0.02),
         OnThigh(body, true, 0.01, 0.03),
         {0, -5, 0},
         {1, 4}},
        {"rest",
         "rest_captain",
         {-1.5, 0.70, -1.3},
         OnThigh(body, false, 0, 0.03),
         OnThigh(body, true, -0.03, 0),
         {0, 5, 0},
         {2, 0}},
        {"rest",
         "rest_instruments",
         Panel,
         OnThigh(body, false, 0.01, 0.01),
         OnThigh(body, true, -0.01, 0.04),
         {-3, 0, 0},
         {3, 1}},
        // ---- Reach ----
        {"reach",
         "reach_panel",
         {-0.2, 0.47, -0.62},
         Press({-0.19, 0.47, -0.52}, {0.05, 0.05, -1}),
         right,
         upright},
        {"reach",
         "reach_switches",
         {0.24, 0.35, -0.5},
         left,
         Press({0.22, 0.38, -0.46}, {0, 0, -1}),
         upright},
        {"reach",
         "reach_throttle",
         {-0.3, 0.32, -0.42},
         Hold({-0.31, 0.33, -0.34}, {0.15, -1, -0.35}, {-0.1, -0.3, -1}),
         right,
         upright},
        {"reach",
         "reach_flaps",
         {-0.3, 0.27, -0.32},
         Hold({-0.30, 0.29, -0.24}, {0.5, -0.8, -0.2}, {-0.2, -0.3, -1}),
         right,
         upright},
        {"reach",
         "reach_trim",
         {-0.28, 0.24, -0.22},
         Hold({-0.27, 0.27, -0.18}, {-0.2, -1, 0}, {-0.3, -0.2, -1}),
         right,
         upright},
        {"reach",
         "reach_pedestal",
         {-0.34, 0.22, -0.16},
         Press({-0.33, 0.24, -0.16}, {-0.3, -0.75, -0.7}, {0.1, -0.8, 0.6}),
         right,
         upright},
        {"reach",
         "reach_radios",
         {-0.32, 0.40, -0.55},
         Press({-0.32, 0.41, -0.47}, {-0.1, 0, -1}),
         right,
         upright},
        {"reach",
         "reach_gear",
         {-0.26, 0.42, -0.55},
         Hold({-0.26, 0.42, -0.45}, {0.3, -0.9, -0.4}, {0, 0.1, -1}),
         right,
         upright},
        {"reach",
         "reach_glareshield",
         {-0.24, 0.58, -0.55},
         Press({-0.24, 0.57, -0.49}, {-0.05, 0.1, -1}),
         right,
         upright},
        {"reach",
         "reach_overhead",
         {-0.26, 1.03, -0.5},
         Press({-0.26, 1.00, -0.24}, {-0.05, 1, -0.35}, {0, 0.3, -1}),
         right,
         upright},
        {"reach",
         "reach_overhead_aft",
         {-0.25, 1.05, -0.45},
         Press({-0.25, 1.05, -0.13}, {-0.05, 1, -0.1}, {0, 0.1, -1}),
         right,
         upright},
        {"reach",
         "reach_yoke",
         {0, 0.55, -1.2},
         Hold({-0.13, 0.38, -0.33}, {1, -0.25, -0.2}, {0.1, 0.45, -1}),
         Hold({0.13, 0.38, -0.33}, {-1, -0.25, -0.2}, {-0.1, 0.45, -1}),
         upright},
        {"reach",
         "reach_handle",
         {0.6, 0.8, -0.3},
         left,
         Hold({0.36, 0.80, -0.20}, {0.2, 0.2, -1}, {0.1, 1, -0.25}),
         upright},
        // ---- Look ----
        {"look", "look_left", {-3, 0.72, -1.6}, left, OnThigh(body, true, -0.01, 0.01), {0, 8, 0}},
        {"look", "look_right", {3, 0.72, -1.4}, OnThigh(body, false, -0.01, 0.01), right, {0, -8, 0}},
        {"look", "look_captain", Captain, left, right, {0, 10, 0}},
        {"look", "look_instruments", Panel, OnThigh(body, false, 0, 0.02), right, {-4, 0, 0}},
        {"look", "look_overhead", {-0.3, 1.2, -0.45}, left, right, {3, 2, 0}},
        {"look", "look_down", {-0.34, 0.15, -0.25}, left, right, {-6, 4, 0}},
        {"look", "look_outside", {0.3, 0.62, -6}, left, right, {-7, 0, 0}},
        // ---- Work and signs ----
        {"",
         "tablet",
         {0, 0.21, -0.2},
         Hold({-0.098, lap + 0.017, -0.17}, {0.55, -0.75, 0}, {0.3, -0.1, -1}),
         Press({0.045, lap + 0.021, -0.205}, {-0.4, -0.35, -1}, {-0.1, -0.9, 0.4}),
         {-4, 0, 0}},
        {"work",
         "tablet_hold",
         {0, 0.21, -0.2},
         Hold({-0.098, lap + 0.017, -0.17}, {0.55, -0.75, 0}, {0.3, -0.1, -1}),
         Hold({0.098, lap + 0.017, -0.17}, {-0.55, -0.75, 0}, {-0.3, -0.1, -1}),
         {-3, 0, 0}},
        {"work",
         "writing",
         Lap,
         OnThigh(body, false, -0.03, 0.02),
         {{0.030, lap + 0.026, -0.175},
          "pen",
          HandPoint::Fingertip,
          {-0.6, -0.75, 0.1},
          {-0.55, -0.45, -0.8}},
         {-6, 0, 0}},
        {"signs",
         "thumbs_up",
         Captain,
         {{-0.27, 0.50, -0.18}, "thumb_up", HandPoint::Grip, {1, 0, 0.15}, {-0.25, 0.25, -1}},
         right,
         {0, 8, 0}},
        {"signs",
         "point_ahead",
         {0.2, 0.75, -5},
         left,
         {{0.20, 0.60, -0.42}, "point", HandPoint::Fingertip, {-0.3, -1, 0}, {0.02, 0.1, -1}},
         upright},
        {"signs",
         "hand_up",
         {0.6, 0.7, -2},
         left,
         {{0.30, 0.76, -0.10}, "open", HandPoint::Grip, {0, 0.1, -1}, {0.1, 1, -0.1}},
         upright},
    };
    return recipes;
}

} // namespace

const std::vector<PoseRecipe> &PoseRecipes(const Body &body) {
    static const std::vector<PoseRecipe> hers = MakeRecipes(Woman()), his = MakeRecipes(Man());
    return body.isMan ? his : hers;
}

} // namespace figure_maker
