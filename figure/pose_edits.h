// What changes a pose by hand, as a whole or in parts, and takes the changes back: the position creator's
// tools. A pose is what the channels' datarefs show. Every change stops the move of the values that it sets.
#pragma once

#include <vector>

// The values of all channels, three for each.
using ShownPose = std::vector<float>;
ShownPose PoseShown();

struct PoseEditsState {
    std::vector<ShownPose> done, undone; // the poses before each change, and those that were taken back
};
extern PoseEditsState poseEdits;

// To be called before a change: the pose shown can be come back to. What had been taken back is forgotten.
void RememberPose();

// After a change that may have changed nothing: then it need not be taken back.
void ForgetUnchangedPose();

// Shows the pose before the last change, or the one after it again. False when there is none.
bool UndoPose();
bool RedoPose();

// Sets one axis, 0 to 2, and ends its move.
void SetChannelValue(int channel, int axis, float value);

// What reset, mirror and copy are for.
enum class PoseScope { Joint, Limb, All };

// Back, arm, fingers of a hand, leg or whole figure to which the channel belongs, as ranges of channels that
// include both ends.
struct ChannelRange {
    int first, last;
};
ChannelRange LimbOf(int channel);

// The channel of the other side; the same for one in the middle.
int OtherSide(int channel);

// Each does nothing for a channel that there is not. All leaves none out, whatever the channel.
void ResetPose(PoseScope scope, int channel);
void MirrorPose(PoseScope scope, int channel); // exchanges left and right; twice is as before
void CopyPoseToOtherSide(PoseScope scope,
                         int channel); // what is in the middle stays; All: the channel's side

// Everything as when the program starts.
void ResetPoseEdits();
