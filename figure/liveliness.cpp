// Head and hands follow their goals as if drawn by springs without a swing: each frame the goal is what is
// missing from the channel to the pose, or 0, so idle motion below it does not show while a hand is at a
// switch. Nothing is random here: what a script chooses at random must not change with what is seen.
#include "figure/liveliness.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "figure/animation.h"
#include "figure/positions.h"
#include "figure/switch_places.h"
#include "frame/settings.h"
#include "util/clock.h"
#include "util/make_fresh.h"
#include "util/text.h"

LivelinessState liveliness;

namespace {

const char *const CaptainPosition = "look_captain";
const char *const LookPositions = "look"; // what their names begin with

// A hand arrives about this long after it has set out, and stays for a moment.
const double ReachSeconds = 0.7, StaySeconds = 0.9;
const double LongestGlance = 2, AfterQuestion = 1.5;
const double ThingsShare = 0.45; // of a question that names one, before she looks at the captain

// Times in which three quarters of a way are done, seconds.
const float HeadSeconds = 0.22F, HandSeconds = 0.30F;
const float SettledDegrees = 0.02F, SettledSpeed = 0.1F;
const float EyesShare = 0.6F, EyesFarthest = 18; // of the way that the head has left, degrees

// Fourteen breaths a minute, of which the smaller part is drawn in. Degrees of x at its height: the chest
// rises against the belly, head and hands stay about where they are.
const double BreathSeconds = 4.3, DrawnShare = 0.4, SpeakingPace = 0.7, BreathFades = 1.5;
struct BreathShare {
    int channel;
    float degrees;
};
const BreathShare BreathShares[] = {{BodyMiddleChannel, -0.4F},
                                    {BodyTopChannel, 1.3F},
                                    {NeckChannel, -0.9F},
                                    {LeftArmChannel, -0.9F},
                                    {RightArmChannel, -0.9F}};

const LivingPose *PoseOf(const std::string &position) {
    if (position.empty()) return nullptr;
    const auto [entry, isNew] = liveliness.poses.try_emplace(position);
    LivingPose &pose = entry->second;
    if (isNew) {
        pose.isLook = position.starts_with(LookPositions);
        for (const PositionLine &line : LinesOfPosition(position)) {
            if (line.index >= ShownChannels) continue;
            pose.isNamed[line.index] = true;
            std::copy_n(line.values, AxisCount, pose.values[line.index]);
        }
    }
    return &pose;
}

bool isNow(const LivingTurn &turn) {
    return turn.pose && FlightTimeSEC >= turn.from && FlightTimeSEC < turn.until;
}

bool areHandsHeld() {
    return !positions.held.empty();
}

bool isHeadHeld() {
    return areHandsHeld() && (TargetTimeSEC != -1.0 || positions.held.starts_with(LookPositions));
}

// Where she looks, and where her hands are; null: as the channels say.
const LivingPose *LookedAt() {
    if (isHeadHeld()) return nullptr;
    const LivingTurn &reach = liveliness.reach;
    if (reach.pose && FlightTimeSEC < reach.until && !areHandsHeld()) return reach.pose;
    for (const LivingTurn &glance : liveliness.glances)
        if (isNow(glance)) return glance.pose;
    return nullptr;
}

const LivingPose *ReachedFor() {
    return isNow(liveliness.reach) && !areHandsHeld() ? liveliness.reach.pose : nullptr;
}

float ChannelAt(int channel, int axis) {
    const float *published = shown.channels[channel][axis].published;
    return published ? *published : 0.0F;
}

// The head turns for the body that stays behind, too.
float BodyLacks(const LivingPose &pose, int axis) {
    float lacks = 0.0F;
    for (int channel : {BodyMiddleChannel, BodyTopChannel})
        if (pose.isNamed[channel] && axis < 2)
            lacks += pose.values[channel][axis] - ChannelAt(channel, axis)
                     - liveliness.motions[channel][axis].place;
    return lacks;
}

float GoalOf(const LivingPose *pose, int channel, int axis) {
    if (!pose || !pose->isNamed[channel]) return 0.0F;
    const float goal = pose->values[channel][axis] - ChannelAt(channel, axis);
    return channel == HeadChannel ? goal + BodyLacks(*pose, axis) : goal;
}

// A critically damped spring, stable for frames of any length (Lowe, Game Programming Gems 4, 1.10). True
// while it is on its way.
bool Follow(LivingMotion &motion, float goal, float smoothSeconds) {
    const float seconds = static_cast<float>(FrpSEC), omega = 2.0F / smoothSeconds, x = omega * seconds;
    const float decay = 1.0F / (1.0F + x + 0.48F * x * x + 0.235F * x * x * x);
    const float behind = motion.place - goal;
    const float push = (motion.speed + omega * behind) * seconds;
    motion.speed = (motion.speed - omega * push) * decay;
    motion.place = goal + (behind + push) * decay;
    const bool isSettled =
        std::abs(motion.place - goal) < SettledDegrees && std::abs(motion.speed) < SettledSpeed;
    if (isSettled) motion = {goal, 0.0F};
    return !isSettled || goal != 0.0F;
}

void MoveHeadAndHands() {
    const LivingPose *const looked = LookedAt(), *const reached = ReachedFor();
    if (!looked && !reached && !liveliness.isMoving) return;
    liveliness.isMoving = false;
    for (int channel = 0; channel < ShownChannels; channel++) {
        const bool isHead = channel == NeckChannel || channel == HeadChannel;
        for (int axis = 0; axis < AxisCount; axis++) {
            LivingMotion &motion = liveliness.motions[channel][axis];
            const float goal = GoalOf(isHead ? looked : reached, channel, axis);
            liveliness.isMoving |= Follow(motion, goal, isHead ? HeadSeconds : HandSeconds);
            shown.channels[channel][axis].living = motion.place;
            // The eyes are there first.
            if (channel == HeadChannel && axis < EyeAxes)
                shown.eyes[axis].living =
                    std::clamp(EyesShare * (goal - motion.place), -EyesFarthest, EyesFarthest);
        }
    }
}

void Breathe(bool isSeen) {
    const bool isSpeaking = FlightTimeSEC < Next_lipsAnimTime;
    liveliness.breath += FrpSEC / BreathSeconds * (isSpeaking ? SpeakingPace : 1);
    liveliness.breath -= std::floor(liveliness.breath);
    const double wanted = isSeen ? 1 : 0, fade = FrpSEC / BreathFades;
    liveliness.breathSize += std::clamp(wanted - liveliness.breathSize, -fade, fade);
    const double part = liveliness.breath, pi = std::numbers::pi;
    const double wave = part < DrawnShare ? 1 - std::cos(pi * part / DrawnShare)
                                          : 1 + std::cos(pi * (part - DrawnShare) / (1 - DrawnShare));
    const float drawn = static_cast<float>(0.5 * wave * liveliness.breathSize);
    for (const BreathShare &share : BreathShares)
        shown.channels[share.channel][0].living =
            liveliness.motions[share.channel][0].place + share.degrees * drawn;
}

void MoveMouth() {
    const bool isSpeaking = isLively() && FlightTimeSEC < Next_lipsAnimTime && !liveliness.mouth.empty();
    MouthShape shape = MouthAsFaceSays;
    if (isSpeaking) {
        const double said = FlightTimeSEC - liveliness.mouthFrom;
        const std::vector<MouthPhase> &phases = liveliness.mouth;
        size_t &phase = liveliness.mouthPhase;
        while (phase < phases.size() && said >= phases[phase].until) phase++;
        shape = phase < phases.size() ? phases[phase].shape : MouthClosed;
    }
    if (XPLMGetDatai(figureChannels.mouth) != shape) XPLMSetDatai(figureChannels.mouth, shape);
}

// What is on top goes at once.
void ShowChannelsAlone() {
    DropGestures();
    for (auto &channel : liveliness.motions)
        for (LivingMotion &motion : channel) motion = {};
    for (auto &channel : shown.channels)
        for (ShownAxis &axis : channel) axis.living = 0.0F;
    for (ShownAxis &axis : shown.eyes) axis.living = 0.0F;
    liveliness.isMoving = false;
    liveliness.breathSize = 0.0;
}

} // namespace

bool isLively() {
    return settings.lively != "0";
}

void ReadLiveliness() {
    DropGestures();
    liveliness.poses.clear();
    ReadSwitchPlaces();
}

void LiveOnTop(bool isPosed) {
    if (isPosed || positions.wasTakenAtOnce) ShowChannelsAlone();
    positions.wasTakenAtOnce = false;
    if (FrpSEC == 0 || FlightTimeSEC < StillSeconds || isPosed) return;
    if (!isLively()) DropGestures();
    MoveHeadAndHands();
    Breathe(isLively());
    MoveMouth();
}

void LiveWhileSaying(std::string_view text) {
    MakeMouthPhases(text, liveliness.mouth);
    liveliness.mouthPhase = 0;
    liveliness.mouthFrom = FlightTimeSEC;
    const double seconds = liveliness.mouth.back().until;
    const LivingPose *const thing = PoseOf(PlaceOf(text));
    const size_t last = text.find_last_not_of(' ');
    const bool isQuestion = last != std::string_view::npos && text[last] == '?';
    const double turns = isQuestion ? seconds * ThingsShare : std::min(seconds, LongestGlance);
    if (thing || isQuestion) liveliness.glances[0] = {thing, FlightTimeSEC, FlightTimeSEC + turns};
    if (isQuestion)
        liveliness.glances[1] = {PoseOf(CaptainPosition), FlightTimeSEC + (thing ? turns : 0),
                                 FlightTimeSEC + seconds + AfterQuestion};
    else if (thing)
        liveliness.glances[1] = {};
}

void ReachFor(std::string_view name, double at) {
    const LivingPose *const pose = PoseOf(PlaceOf(name));
    if (!pose || areHandsHeld()) return;
    if (pose->isLook) {
        liveliness.glances[0] = {pose, FlightTimeSEC, at + StaySeconds};
        return;
    }
    LivingTurn &reach = liveliness.reach;
    const bool isThere = reach.pose == pose && isNow(reach);
    reach = {pose, isThere ? reach.from : std::max(FlightTimeSEC, at - ReachSeconds), at + StaySeconds};
}

void DropGestures() {
    liveliness.reach = {};
    for (LivingTurn &glance : liveliness.glances) glance = {};
}

void ReInitLiveliness() {
    ShowChannelsAlone();
    liveliness.mouth.clear();
    liveliness.breath = 0.0;
}

void ResetLiveliness() {
    MakeFresh(liveliness);
}
