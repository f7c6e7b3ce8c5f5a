// The search goes on from the pose that is shown, so the arm moves steadily; what costs no effort is the pose
// in which the hand was taken. A hand keeps the direction that it had then, as far as it can. Where the back
// moves, the other hand is held where it was.
#include "figure/hand_views.h"

#include <cmath>

#include "figure/channels.h"
#include "figure/pose_edits.h"
#include "figure/position_creator_places.h"
#include "frame/settings.h"
#include "gfx/drawing.h"
#include "gfx/opengl.h"
#include "util/make_fresh.h"
#include "util/numbers.h"

HandViewsState handViews;

namespace {

using namespace rig;

const double BoxelsPerMetre = 76;
const double LowestShown = -0.06;  // metres; the feet are left out
const double MiddleAhead = -0.16;  // of what the side view shows
const double HandReach = 8;        // boxels from a hand in which it is taken
const double DepthPerClick = 0.01; // metres
const int MostFramesShort = 6;
const double StillThere = 0.0005; // metres
const int TrialsInFrame = 300, TrialsOfOther = 120;
const double NearEnough = 0.01;             // metres
const double AtLimit = 0.5, WideRange = 10; // degrees; narrower joints are at a limit most of the time

size_t At(int index) {
    return static_cast<size_t>(index);
}

// Panel coordinates, y up from the view's lower edge of the panel.
struct Spot {
    double x, y;
};

enum { FromAhead, FromLeft };

// Her right is on the left when she faces the user; from her left she looks to the left.
Spot SpotOf(int view, Vec p, int panelHeight) {
    const HandView &place = HandViewPlaces[view];
    const double middle = place.x + place.width / 2.0;
    const double across = view == FromAhead ? -p.x : p.z - MiddleAhead;
    return {middle + across * BoxelsPerMetre, panelHeight - place.y + (p.y - LowestShown) * BoxelsPerMetre};
}

struct Paint {
    double r, g, b;
};
const Paint Bone = {0.50, 0.58, 0.67}, FarBone = {0.33, 0.39, 0.46}, Chosen = {1, 1, 0},
            Limit = {1, 0.6, 0.3}, Handle = {0.84, 0.70, 0.37}, Inside = {0.07, 0.09, 0.12};

struct Picture {
    const Body &body;
    const Pose pose;
    const Frames frames;
    int view, panelHeight, chosen;

    Vec Carried(int channel, Vec p) const { return ToWorld(frames[At(channel)], p); }
    Spot Place(int channel, Vec p) const { return SpotOf(view, Carried(channel, p), panelHeight); }

    void Draw(Spot a, double radiusA, Spot b, double radiusB, const Paint &paint) const {
        FillCapsuleRGBT({a.x, a.y, radiusA, b.x, b.y, radiusB}, paint.r, paint.g, paint.b, 1.0);
    }

    // What lies before something else stands out from it.
    void DrawEdge(int channel, double radius, double endRadius) const {
        const Joint &joint = body.At(channel);
        Draw(Place(channel, joint.pivot), radius + 1, Place(channel, joint.end), endRadius + 1, Inside);
    }

    void DrawBone(int channel, double radius, double endRadius, bool isFar) const {
        const Joint &joint = body.At(channel);
        const Paint &paint = channel == chosen ? Chosen : isFar ? FarBone : Bone;
        Draw(Place(channel, joint.pivot), radius, Place(channel, joint.end), endRadius, paint);
    }

    void MarkLimit(int channel) const {
        if (!isAtLimit(body, pose, channel)) return;
        const Spot spot = Place(channel, body.At(channel).pivot);
        Draw(spot, 2.6, spot, 2.6, Limit);
    }

    void DrawTrunk() const {
        DrawBone(BodyMiddle, 7, 8, false);
        DrawBone(BodyTop, 8, 6, false);
        const Spot hip = SpotOf(view, Carried(WholeFigure, {0, 0.10, 0.09}), panelHeight);
        Draw(hip, 7.5, Place(BodyMiddle, body.At(BodyMiddle).pivot), 7, Bone);
        const Spot left = Place(BodyTop, body.At(LeftArm).pivot),
                   right = Place(BodyTop, body.At(RightArm).pivot);
        Draw(left, 4, right, 4, Bone);
        DrawBone(Neck, 3, 3, false);
        const Spot head = Place(Head, body.headCentre + Vec{0, 0.02, 0});
        const Paint &paint = chosen == Head ? Chosen : Bone;
        Draw(head, 7, Place(Head, body.headCentre + Vec{0, 0.07, 0}), 7, paint);
        const Spot chin = Place(Head, body.headCentre + Vec{0, -0.03, -0.05});
        Draw(head, 5, chin, 4, paint);
        const Spot nose = Place(Head, body.headCentre + Vec{0, 0.01, -0.09});
        Draw(head, 2, nose, 1.6, paint);
        for (int channel : {+BodyMiddle, +BodyTop, +Neck, +Head}) MarkLimit(channel);
    }

    void DrawLimbs(bool isRight) const {
        const bool isFar = view == FromLeft && isRight;
        const int leg = isRight ? RightLeg : LeftLeg, arm = isRight ? RightArm : LeftArm,
                  fingers = isRight ? RightFingers : LeftFingers;
        DrawBone(leg, 5.5, 4, isFar);
        DrawBone(leg + 1, 4, 3, isFar);
        DrawEdge(arm, 3.6, 2.8);
        DrawEdge(arm + 1, 2.8, 2);
        DrawEdge(arm + 2, 2.2, 2.4);
        DrawBone(arm, 3.6, 2.8, isFar);
        DrawBone(arm + 1, 2.8, 2, isFar);
        DrawBone(arm + 2, 2.2, 2.4, isFar);
        for (int finger = fingers; finger < fingers + 15; finger++) DrawBone(finger, 0.8, 0.7, isFar);
        for (int channel : {leg, leg + 1, arm, arm + 1, arm + 2}) MarkLimit(channel);
    }

    void DrawHandle(bool isRight) const {
        const Spot spot = SpotOf(view, PlaceOf(body, pose, handViews.point, isRight), panelHeight);
        const bool isTaken = handViews.isDragging && handViews.isRight == isRight;
        Draw(spot, 4.5, spot, 4.5, isTaken ? Chosen : Handle);
        Draw(spot, 2.2, spot, 2.2, Inside);
    }

    void DrawTarget() const {
        if (!handViews.isDragging || HandDistance() < NearEnough) return;
        const Spot spot = SpotOf(view, handViews.target, panelHeight);
        const Spot hand = SpotOf(view, PlaceOf(body, pose, handViews.point, handViews.isRight), panelHeight);
        Draw(hand, 0.5, spot, 0.5, Limit);
        Draw({spot.x - 4, spot.y}, 0.7, {spot.x + 4, spot.y}, 0.7, Limit);
        Draw({spot.x, spot.y - 4}, 0.7, {spot.x, spot.y + 4}, 0.7, Limit);
    }
};

// What is outside the view is cut off.
void DrawView(int view, int panelHeight, int chosen) {
    const HandView &place = HandViewPlaces[view];
    const int bottom = panelHeight - place.y;
    FillRestangleRGBT(place.x, bottom, place.x + place.width, bottom + place.height, Inside.r, Inside.g,
                      Inside.b, 1.0);
    if (!isFigureOfRig()) return;
    const auto pixels = [](double boxels) {
        return static_cast<GLint>(std::lround(boxels * DrawingScale()));
    };
    glEnable(GL_SCISSOR_TEST);
    glScissor(pixels(place.x), pixels(bottom), pixels(place.width), pixels(place.height));
    const Body &body = BodyInUse();
    const Pose pose = RigPoseShown();
    const Picture picture = {body, pose, CarriedFrames(body, pose), view, panelHeight, chosen};
    picture.DrawLimbs(true); // the farther side first
    picture.DrawTrunk();
    picture.DrawLimbs(false);
    for (bool isRight : {true, false}) picture.DrawHandle(isRight);
    picture.DrawTarget();
    glDisable(GL_SCISSOR_TEST);
}

ReachTask TaskOf(bool isRight, Vec target, HandPoint point, bool movesBack) {
    const Body &body = BodyInUse();
    ReachTask task = {body, isRight, HandOf(body, handViews.start, point, isRight),
                      ReachVariables(isRight, movesBack)};
    task.goal.target = target;
    task.ease = handViews.start;
    return task;
}

// Large steps where there is far to go.
Steps StepsFor(double distance, int trials) {
    const double first = std::clamp(distance * 150, 0.6, 25.0), least = 0.05;
    return {first, std::pow(least / first, 1.0 / trials), least};
}

void ShowValues(const Pose &pose, const std::vector<Variable> &variables) {
    for (const Variable &variable : variables) {
        const float value = static_cast<float>(pose[At(variable.channel)][At(variable.axis)]);
        if (value != anim[At(variable.channel)].Shown(variable.axis))
            SetChannelValue(variable.channel, variable.axis, value);
    }
}

bool isBackMoved(const Pose &pose) {
    return pose[BodyMiddle] != handViews.start[BodyMiddle] || pose[BodyTop] != handViews.start[BodyTop];
}

} // namespace

bool isFigureOfRig() {
    const Body &body = Woman();
    if (anim.size() != JointCount) return false;
    for (size_t i = 0; i < anim.size(); i++)
        if (anim[i].name != body.joints[i].name) return false;
    return true;
}

const Body &BodyInUse() {
    return BodyOf(globalGender == "m");
}

Pose RigPoseShown() {
    Pose pose{};
    const Body &body = BodyInUse();
    for (int channel = 0; channel < JointCount && At(channel) < anim.size(); channel++)
        for (int axis = 0; axis < AxisCount; axis++) {
            const double value = anim[At(channel)].Shown(axis);
            pose[At(channel)][At(axis)] =
                channel == WholeFigure ? value : WithinLimits(body, channel, axis, value);
        }
    return pose;
}

bool isAtLimit(const Body &body, const Pose &pose, int channel) {
    const Joint &joint = body.At(channel);
    for (int axis = 0; axis < AxisCount; axis++) {
        const double value = pose[At(channel)][At(axis)], low = joint.low[axis], high = joint.high[axis];
        if (high - low > WideRange && (value < low + AtLimit || value > high - AtLimit)) return true;
    }
    return false;
}

void DrawHandViews(int panelHeight, int chosenChannel) {
    for (int view : {FromAhead, FromLeft}) DrawView(view, panelHeight, chosenChannel);
}

bool TakeHand(double x, double y, int chosenChannel) {
    if (!isFigureOfRig()) return false;
    const Pose pose = RigPoseShown();
    const int sideOfChosen = chosenChannel - OtherSide(chosenChannel); // above 0 on the right
    double nearest = HandReach;
    for (int view : {FromAhead, FromLeft})
        for (bool isRight : {false, true}) {
            const Vec place = PlaceOf(BodyInUse(), pose, handViews.point, isRight);
            const Spot spot = SpotOf(view, place, 0); // y is the place's negated
            const HandView &box = HandViewPlaces[view];
            const bool isInView =
                x >= box.x && x <= box.x + box.width && y >= box.y - box.height && y <= box.y;
            double distance = std::hypot(spot.x - x, spot.y + y);
            if (sideOfChosen != 0 && (sideOfChosen > 0) == isRight) distance -= HandReach / 2;
            if (!isInView || distance >= nearest) continue;
            nearest = distance;
            handViews.isDragging = true;
            handViews.isRight = isRight;
            handViews.view = view;
            handViews.target = place;
        }
    if (!handViews.isDragging) return false;
    handViews.pressX = x;
    handViews.pressY = y;
    handViews.depth = 0;
    handViews.framesShort = 0;
    handViews.start = pose;
    return true;
}

void DragHand(double x, double y) {
    const Vec from = PlaceOf(BodyInUse(), handViews.start, handViews.point, handViews.isRight);
    const double across = (x - handViews.pressX) / BoxelsPerMetre,
                 up = (handViews.pressY - y) / BoxelsPerMetre;
    handViews.target = from
                       + (handViews.view == FromAhead ? Vec{-across, up, handViews.depth}
                                                      : Vec{handViews.depth, up, across});
}

void MoveHandAway(int clicks) {
    const double by = clicks * DepthPerClick;
    handViews.depth += by;
    (handViews.view == FromAhead ? handViews.target.z : handViews.target.x) += by;
}

// The back helps when the arm alone does not get there in some frames, and from then on.
void FollowHand() {
    const Body &body = BodyInUse();
    Pose pose = RigPoseShown();
    const auto distance = [&] {
        return Length(PlaceOf(body, pose, handViews.point, handViews.isRight) - handViews.target);
    };
    const bool movesBack = isBackMoved(pose) || handViews.framesShort > MostFramesShort;
    if (!movesBack && distance() < StillThere) return; // taken, and not drawn anywhere yet
    const ReachTask task = TaskOf(handViews.isRight, handViews.target, handViews.point, movesBack);
    Improve(task, pose, TrialsInFrame, StepsFor(distance(), TrialsInFrame), handViews.random);
    ShowValues(pose, task.variables);
    handViews.framesShort = distance() > NearEnough ? handViews.framesShort + 1 : 0;
    if (!isBackMoved(pose)) return;
    const Vec held = PlaceOf(body, handViews.start, HandPoint::Grip, !handViews.isRight);
    const ReachTask other = TaskOf(!handViews.isRight, held, HandPoint::Grip, false);
    const double off = Length(PlaceOf(body, pose, HandPoint::Grip, !handViews.isRight) - held);
    Improve(other, pose, TrialsOfOther, StepsFor(off, TrialsOfOther), handViews.random);
    ShowValues(pose, other.variables);
}

void DropHand() {
    handViews.isDragging = false;
    const Pose pose = RigPoseShown();
    for (bool isRight : {false, true})
        for (const Variable &variable : ReachVariables(isRight, true)) {
            const double value = pose[At(variable.channel)][At(variable.axis)];
            if (value != handViews.start[At(variable.channel)][At(variable.axis)])
                SetChannelValue(variable.channel, variable.axis,
                                static_cast<float>(std::round(value * 10) / 10));
        }
}

double HandDistance() {
    const Vec hand = PlaceOf(BodyInUse(), RigPoseShown(), handViews.point, handViews.isRight);
    return Length(hand - handViews.target);
}

std::string HandReport() {
    const double distance = HandDistance();
    if (distance < NearEnough) return "The hand is there.";
    std::string report = int2string(TruncateToInt(distance * 100 + 0.5)) + " cm short";
    const Body &body = BodyInUse();
    const Pose pose = RigPoseShown();
    const int arm = handViews.isRight ? RightArm : LeftArm;
    std::string atLimit;
    for (int channel : {arm, arm + 1, arm + 2, +BodyMiddle, +BodyTop})
        if (isAtLimit(body, pose, channel)) atLimit += (atLimit.empty() ? "" : ", ") + PartName(channel);
    if (!atLimit.empty()) return report + ". At its limit: " + atLimit;
    if (Clearance(body, pose, handViews.isRight) < 0.006) return report + ": her body is in the way";
    return report;
}

std::string PartName(int channel) {
    const char *const middle[] = {"waist", "chest", "neck", "head"};
    const char *const arm[] = {"upper arm", "forearm", "hand"}, *const leg[] = {"thigh", "shank", "foot"};
    const char *const fingers[] = {"thumb", "index", "middle", "ring", "little"};
    if (channel < 0 || channel > WholeFigure) return "";
    if (channel == WholeFigure) return "whole figure";
    if (channel < LeftArm) return middle[channel];
    const bool isRight = OtherSide(channel) < channel;
    const int ofLeft = isRight ? OtherSide(channel) : channel;
    const std::string side = isRight ? "right " : "left ";
    if (ofLeft >= LeftLeg) return side + leg[ofLeft - LeftLeg];
    if (ofLeft < LeftFingers) return side + arm[ofLeft - LeftArm];
    const int joint = ofLeft - LeftFingers;
    return side + fingers[joint / 3] + ", joint " + int2string(joint % 3 + 1);
}

void ResetHandViews() {
    MakeFresh(handViews);
}
