// Two small views of the figure, from ahead and from her left, in which a hand can be taken and drawn to a
// point: the arm finds its way as far as its joints go (reach.h), and the back helps where it is too short.
// They show which joints are at their limits. For the position creator, which owns the panel around them.
#pragma once

#include <string>

#include "figure/reach.h"

struct HandViewsState {
    rig::HandPoint point = rig::HandPoint::Grip; // of the hand that is taken
    bool isDragging = false, isRight = false;    // which hand
    int view = 0;                                // in which it was taken
    double pressX = 0.0, pressY = 0.0;           // where, panel coordinates
    double depth = 0.0;                          // by the wheel, metres away from who looks
    rig::Vec target;
    int framesShort = 0; // for which the arm alone has not come near
    rig::Pose start{};   // when it was taken
    rig::Random random;
};
extern HandViewsState handViews;

// Whether the channels are those of the figure that is shipped: of another one nobody knows the joints.
bool isFigureOfRig();

// Of the figure in use.
const rig::Body &BodyInUse();

// What is shown: the datarefs' values within the limits.
rig::Pose RigPoseShown();

// For a channel of the shipped figure.
bool isAtLimit(const rig::Body &body, const rig::Pose &pose, int channel);

// Draws both views, for a panel of that height whose coordinates go up. The channel chosen is marked.
void DrawHandViews(int panelHeight, int chosenChannel);

// Takes the hand at a place of the panel; false when there is none. Of two that are equally near it is the
// one of the channel's side.
bool TakeHand(double x, double y, int chosenChannel);

// The mouse has moved; the wheel was turned.
void DragHand(double x, double y);
void MoveHandAway(int clicks);

// Once a frame during a drag: the arm comes nearer to the target.
void FollowHand();

// Ends the drag. Values are brought to tenths of a degree.
void DropHand();

// How far the hand is from its target, metres, and that in words, with the joints that can go no further.
double HandDistance();
std::string HandReport();

// What a user calls the part that a channel moves: "left forearm".
std::string PartName(int channel);

// Everything as when the program starts.
void ResetHandViews();
