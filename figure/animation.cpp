// The figure's motion. Random numbers come from rand(), never seeded: the motion need not differ from flight
// to flight. Deadlines are single precision; a flight would have to last days for that to show.
#include "figure/animation.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "figure/channels.h"
#include "figure/positions.h"
#include "util/clock.h"
#include "util/make_fresh.h"

FigureMotionState figureMotion;

namespace {

const double SmallestIdleStep = 0.1;
const double IdleFactor = 5;
const double BlinkSeconds = 0.1;
const double BlockedShare = 0.2; // of the head's idle offsets

// How far the head may be from straight ahead, and its random offset: lowest + rand() mod count.
struct HeadRange {
    double limit;
    int lowest, count;
    bool isWholeWhenBlocked;
};
const HeadRange HeadRanges[AxisCount] = {{12, -12, 24, false}, {25, -25, 50, true}, {5, -5, 10, true}};

int Random(int count) {
    return std::rand() % count;
}

float SecondsAhead(double seconds) {
    return static_cast<float>(FlightTimeSEC + seconds);
}

bool isStill() {
    return FrpSEC == 0 || FlightTimeSEC < StillSeconds;
}

void MoveAxis(structAnim &channel, int axis, double value) {
    channel.current[axis] = value;
    channel.Show(axis, static_cast<float>(value));
}

// A blocked head is not held within its limits. Cut to whole degrees its offsets lean to the negative side
// (of the z axis -1 and 0 alone are left), so in a long checklist its channel drifts until the next position;
// what is seen ends at the neck's limits, which are the object's.
void ChooseHeadTarget(structAnim &head, int axis, double shown) {
    const HeadRange &range = HeadRanges[axis];
    double offset = Random(range.count) + range.lowest;
    if (isLiveAnimationBlocked) offset *= BlockedShare;
    if (isLiveAnimationBlocked && range.isWholeWhenBlocked) offset = std::trunc(offset);
    double target = static_cast<float>(head.current[axis] + offset);
    if (!isLiveAnimationBlocked) target = std::clamp(target, -range.limit, range.limit);
    head.target[axis] = target;
    head.liveDelta[axis] = target - shown;
    head.liveFactor[axis] = (Random(50) + 50) * 0.003;
}

// The step has the sign of the value: a channel creeps away from zero until the next rest pose.
void ChooseTarget(structAnim &channel, int axis, double shown) {
    const double step = Random(10) * 0.1 * (channel.current[axis] >= 0 ? 0.1 : -0.1);
    channel.target[axis] = channel.current[axis] + step;
    channel.liveDelta[axis] = channel.target[axis] - shown;
}

void IdleAxis(structAnim &channel, int axis, bool isHead) {
    const double shown = channel.Shown(axis);
    const double remaining = channel.target[axis] - shown;
    const float delta = static_cast<float>(channel.liveDelta[axis]);
    const bool isTravelling = (delta > 0 && remaining > 0) || (delta < 0 && remaining < 0);
    if (isTravelling) {
        const double step = std::max(std::abs(remaining), SmallestIdleStep);
        const double factor = isHead ? channel.liveFactor[axis] : IdleFactor;
        // After a frame that took long (the kill switch, a jump of the clock) not far past the target.
        const double move = std::clamp(step * delta * FrpSEC * factor, -step, step);
        MoveAxis(channel, axis, shown + move);
    } else if (isHead) {
        ChooseHeadTarget(channel, axis, shown);
    } else {
        ChooseTarget(channel, axis, shown);
    }
}

void AnimateEyelids() {
    if (eyesOpen == 1 && Next_eyesCloseTime == -1) {
        Next_eyesCloseTime = SecondsAhead(1 + Random(5));
    } else if (eyesOpen == 1 && FlightTimeSEC > Next_eyesCloseTime) {
        Next_eyesCloseTime = -1;
        Next_eyesOpenTime = SecondsAhead(BlinkSeconds);
        eyesOpen = 0;
    } else if (eyesOpen == 0 && FlightTimeSEC > Next_eyesOpenTime) {
        Next_eyesCloseTime = SecondsAhead(1 + Random(5));
        eyesOpen = 1;
    }
}

void AnimateLips() {
    if (FlightTimeSEC >= Next_lipsAnimTime) {
        lipsOpen = 0;
        Next_lipsOpenTime = -1;
    } else if (lipsOpen == 0 && Next_lipsOpenTime == -1) {
        Next_lipsOpenTime = SecondsAhead(0.2);
    } else if (lipsOpen == 0 && FlightTimeSEC > Next_lipsOpenTime) {
        Next_lipsOpenTime = -1;
        Next_lipsCloseTime = SecondsAhead(0.05 + Random(10) * 0.05);
        lipsOpen = 1;
    } else if (lipsOpen == 1 && FlightTimeSEC > Next_lipsCloseTime) {
        Next_lipsOpenTime = SecondsAhead(0.05 + Random(10) * 0.05);
        lipsOpen = 0;
    }
}

} // namespace

void Animation() {
    if (FrpSEC == 0) return;
    const bool isArrived = TargetTimeSEC != -1.0 && FlightTimeSEC > TargetTimeSEC;
    for (structAnim &channel : anim)
        for (int axis = 0; axis < AxisCount; axis++) {
            if (channel.speed[axis] == 0) continue; // another hand may hold this axis
            const double moved = channel.current[axis] + channel.speed[axis] * FrpSEC;
            MoveAxis(channel, axis, isArrived ? channel.target[axis] : moved);
        }
    if (isArrived) TargetTimeSEC = -1.0;
}

void LiveAnimation() {
    if (isStill()) return;
    if (FlightTimeSEC > NextRestPositionTime && !isLiveAnimationBlocked && !positionRestList.empty()) {
        NextRestPositionTime = SecondsAhead(Random(10) + 3);
        ExecutePos(positionRestList[static_cast<size_t>(std::rand()) % positionRestList.size()]);
        return;
    }
    for (size_t i = 0; i < anim.size(); i++) {
        if (i == FigureOffsetChannel) continue;
        for (int axis = 0; axis < AxisCount; axis++) IdleAxis(anim[i], axis, i == HeadChannel);
    }
}

void EyesAnimation() {
    if (isStill()) return;
    if (FlightTimeSEC > NextEyePositionTime) {
        NextEyePositionTime = SecondsAhead((Random(10) + 1) / 5.0);
        newEyePositionAddX = static_cast<float>(Random(50)) / 10.0F;
        newEyePositionAddY = static_cast<float>(Random(50)) / 10.0F;
    }
    float *const *const eyes = figureChannels.publishedEyes;
    const bool hasHead = anim.size() > HeadChannel;
    const float headX = hasHead ? anim[HeadChannel].Shown(0) : 0.0F;
    const float headY = hasHead ? anim[HeadChannel].Shown(1) : 0.0F;
    if (eyes[0]) *eyes[0] = newEyePositionAddX + headX / -3.0F;
    if (eyes[1]) *eyes[1] = newEyePositionAddY + headY * -0.25F;
}

void FaceAnimation() {
    if (isStill()) return;
    AnimateEyelids();
    AnimateLips();
    if (eyesOpen == 1)
        faceAnim = lipsOpen == 1 ? 2 : 0;
    else
        faceAnim = lipsOpen == 1 ? 1 : 3;
    XPLMSetDatai(DRFi_Face, faceAnim);
}

void ReInitFigureVariables() {
    const bool isBlocked = isLiveAnimationBlocked;
    MakeFresh(figureMotion);
    isLiveAnimationBlocked = isBlocked;
    TargetTimeSEC = -1.0;
    AnimTime = 0.8;
}

void ResetAnimation() {
    MakeFresh(figureMotion);
}
