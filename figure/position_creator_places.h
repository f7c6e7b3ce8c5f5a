// Where the position creator's panel has its pictures and the buttons of the channels. One table for the
// panel and for the program that draws the pictures (tools/make_panel_pictures.cpp), so that every button
// lies on its joint.
#pragma once

// The channels of the figure by the names of their buttons, in the order of the table of channels.
// HAND 1 to 3 are the segments of an arm, F<finger><joint> the fingers from the thumb on, LEG 1 to 3 the
// segments of a leg, XYZ the whole figure.
enum {
    btn_BODY_mid,
    btn_BODY_top,
    btn_NECK,
    btn_HEAD,
    btn_HAND1_l,
    btn_HAND2_l,
    btn_HAND3_l,
    btn_F11_L,
    btn_F12_L,
    btn_F13_L,
    btn_F21_L,
    btn_F22_L,
    btn_F23_L,
    btn_F31_L,
    btn_F32_L,
    btn_F33_L,
    btn_F41_L,
    btn_F42_L,
    btn_F43_L,
    btn_F51_L,
    btn_F52_L,
    btn_F53_L,
    btn_HAND1_r,
    btn_HAND2_r,
    btn_HAND3_r,
    btn_F11_R,
    btn_F12_R,
    btn_F13_R,
    btn_F21_R,
    btn_F22_R,
    btn_F23_R,
    btn_F31_R,
    btn_F32_R,
    btn_F33_R,
    btn_F41_R,
    btn_F42_R,
    btn_F43_R,
    btn_F51_R,
    btn_F52_R,
    btn_F53_R,
    btn_LEG1_l,
    btn_LEG2_l,
    btn_LEG3_l,
    btn_LEG1_r,
    btn_LEG2_r,
    btn_LEG3_r,
    btn_XYZ,
    ButtonCount
};

// Panel coordinates (gfx/panel.h) of an item's lower left corner.
struct PanelPlace {
    int x, y;
};

const int ButtonSize = 8;
const int PictureWidth = 128, PictureHeight = 256;

constexpr PanelPlace LeftHandPlace = {0, 256};
constexpr PanelPlace BodyPlace = {128, 256}; // it faces the user: its right side is on the left
constexpr PanelPlace RightHandPlace = {256, 256};

constexpr PanelPlace ButtonPlaces[ButtonCount] = {
    {187, 80},  {187, 50},  {187, 35},  // BODY_mid, BODY_top, NECK
    {187, 20},                          // HEAD
    {216, 83},  {221, 112}, {221, 140}, // HAND1_l to HAND3_l
    {91, 174},  {104, 145}, {111, 121}, // F11_L to F13_L
    {79, 106},  {80, 84},   {81, 62},   // F21_L to F23_L
    {57, 102},  {57, 78},   {57, 54},   // F31_L to F33_L
    {33, 106},  {33, 84},   {33, 62},   // F41_L to F43_L
    {13, 118},  {12, 103},  {10, 89},   // F51_L to F53_L
    {160, 83},  {155, 112}, {155, 140}, // HAND1_r to HAND3_r
    {285, 174}, {272, 145}, {265, 121}, // F11_R to F13_R
    {297, 106}, {296, 84},  {295, 62},  // F21_R to F23_R
    {319, 102}, {319, 78},  {319, 54},  // F31_R to F33_R
    {343, 106}, {343, 84},  {343, 62},  // F41_R to F43_R
    {363, 118}, {364, 103}, {366, 89},  // F51_R to F53_R
    {200, 158}, {204, 207}, {206, 245}, // LEG1_l to LEG3_l
    {174, 158}, {173, 207}, {170, 245}, // LEG1_r to LEG3_r
    {187, 130},                         // XYZ
};

// The views in which a hand is dragged, beside the pad.
struct HandView {
    int x, y, width, height;
};
constexpr HandView HandViewPlaces[] = {{388, 240, 120, 95}, {388, 338, 120, 95}}; // from ahead, from her left
