// Left and right are mirror images, as the joints have it (rig.h): y and z negated. The whole figure moves
// and does not turn: of it x is.
#include "figure/pose_edits.h"

#include "figure/channels.h"
#include "figure/positions.h"
#include "util/make_fresh.h"

PoseEditsState poseEdits;

namespace {

const size_t MostRemembered = 200;
const int LeftArmFirst = 4, RightArmFirst = 22, LeftLegFirst = 40, RightLegFirst = 43, LimbJoints = 3;
const int ArmChannels = RightArmFirst - LeftArmFirst; // with its fingers
const ChannelRange Back = {0, 3};

bool isIn(const ChannelRange &range, int channel) {
    return channel >= range.first && channel <= range.last;
}

bool isThere(int channel) {
    return channel >= 0 && static_cast<size_t>(channel) < anim.size();
}

int ChannelCount() {
    return static_cast<int>(anim.size());
}

void Show(const ShownPose &pose) {
    TargetTimeSEC = -1;
    size_t value = 0;
    for (int channel = 0; channel < ChannelCount(); channel++)
        for (int axis = 0; axis < AxisCount && value < pose.size(); axis++)
            SetChannelValue(channel, axis, pose[value++]);
}

// Takes the latest pose that is not the one shown; what it is exchanged for goes to the other list.
bool Exchange(std::vector<ShownPose> &from, std::vector<ShownPose> &to) {
    ShownPose shown = PoseShown();
    while (!from.empty() && from.back() == shown) from.pop_back();
    if (from.empty()) return false;
    const ShownPose pose = from.back();
    from.pop_back();
    to.push_back(std::move(shown));
    Show(pose);
    return true;
}

void Remember(std::vector<ShownPose> &list, ShownPose pose) {
    if (!list.empty() && list.back() == pose) return;
    if (list.size() == MostRemembered) list.erase(list.begin());
    list.push_back(std::move(pose));
}

float MirroredValue(int channel, int axis, const ShownPose &pose, int from) {
    const float value = pose[static_cast<size_t>(from * AxisCount + axis)];
    const bool isOffset = anim[static_cast<size_t>(channel)].name == FigureOffsetName;
    const bool isNegated = isOffset ? axis == 0 : axis != 0;
    return isNegated ? 0.0F - value : value; // no negative zero
}

void SetMirrored(int channel, const ShownPose &pose) {
    for (int axis = 0; axis < AxisCount; axis++)
        SetChannelValue(channel, axis, MirroredValue(channel, axis, pose, OtherSide(channel)));
}

// Calls with each channel of the scope.
template <typename Change> void ForEach(PoseScope scope, int channel, Change change) {
    if (scope != PoseScope::All && !isThere(channel)) return;
    ChannelRange range = {0, ChannelCount() - 1};
    if (scope == PoseScope::Joint) range = {channel, channel};
    if (scope == PoseScope::Limb) range = LimbOf(channel);
    for (int i = range.first; i <= range.last; i++)
        if (isThere(i) && isThere(OtherSide(i))) change(i);
}

bool isOfSide(int channel, bool isRight) {
    const int other = OtherSide(channel);
    return isRight ? other < channel : other > channel;
}

} // namespace

ShownPose PoseShown() {
    ShownPose pose;
    pose.reserve(anim.size() * AxisCount);
    for (const structAnim &channel : anim)
        for (int axis = 0; axis < AxisCount; axis++) pose.push_back(channel.Shown(axis));
    return pose;
}

void RememberPose() {
    Remember(poseEdits.done, PoseShown());
    poseEdits.undone.clear();
}

void ForgetUnchangedPose() {
    if (!poseEdits.done.empty() && poseEdits.done.back() == PoseShown()) poseEdits.done.pop_back();
}

bool UndoPose() {
    return Exchange(poseEdits.done, poseEdits.undone);
}

bool RedoPose() {
    return Exchange(poseEdits.undone, poseEdits.done);
}

void SetChannelValue(int channel, int axis, float value) {
    if (!isThere(channel)) return;
    structAnim &record = anim[static_cast<size_t>(channel)];
    record.current[axis] = record.target[axis] = value;
    record.speed[axis] = 0;
    record.Show(axis, value);
}

ChannelRange LimbOf(int channel) {
    const ChannelRange limbs[] = {Back,
                                  {LeftArmFirst, LeftArmFirst + LimbJoints - 1},
                                  {LeftFingersFirst, LeftFingersLast},
                                  {RightArmFirst, RightArmFirst + LimbJoints - 1},
                                  {RightFingersFirst, RightFingersLast},
                                  {LeftLegFirst, LeftLegFirst + LimbJoints - 1},
                                  {RightLegFirst, RightLegFirst + LimbJoints - 1}};
    for (const ChannelRange &limb : limbs)
        if (isIn(limb, channel)) return limb;
    return {channel, channel};
}

int OtherSide(int channel) {
    if (isIn({LeftArmFirst, RightArmFirst - 1}, channel)) return channel + ArmChannels;
    if (isIn({RightArmFirst, LeftLegFirst - 1}, channel)) return channel - ArmChannels;
    if (isIn({LeftLegFirst, RightLegFirst - 1}, channel)) return channel + LimbJoints;
    if (isIn({RightLegFirst, RightLegFirst + LimbJoints - 1}, channel)) return channel - LimbJoints;
    return channel;
}

void ResetPose(PoseScope scope, int channel) {
    ForEach(scope, channel, [](int i) {
        for (int axis = 0; axis < AxisCount; axis++) SetChannelValue(i, axis, 0.0F);
    });
}

void MirrorPose(PoseScope scope, int channel) {
    const ShownPose pose = PoseShown();
    ForEach(scope, channel, [&](int i) {
        SetMirrored(i, pose);
        SetMirrored(OtherSide(i), pose);
    });
}

void CopyPoseToOtherSide(PoseScope scope, int channel) {
    const ShownPose pose = PoseShown();
    const bool isFromRight = isOfSide(channel, true);
    ForEach(scope, channel, [&](int i) {
        if (isOfSide(i, isFromRight) && OtherSide(i) != i) SetMirrored(OtherSide(i), pose);
    });
}

void ResetPoseEdits() {
    MakeFresh(poseEdits);
}
