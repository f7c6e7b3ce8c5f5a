// A hand that is dragged comes to where it is wanted, as far as the joints go, and says how far that is.
#include "figure/hand_views.h"

#include "figure/channels.h"
#include "figure/pose_edits.h"
#include "figure/position_creator_places.h"
#include "frame/settings.h"
#include "tests/figure/figure_folder.h"

namespace {

class Hands : public PluginFolder {
protected:
    Hands() {
        std::string channels;
        for (int i = 0; i < rig::JointCount; i++)
            channels += std::to_string(i) + "," + rig::Woman().At(i).name + "\r\n";
        write("data/obj/fennic.txt", channels);
        LoadAnimationFile(plugin + "data/obj/fennic.txt");
    }

    static rig::Vec Palm(bool isRight) {
        return rig::PlaceOf(BodyInUse(), RigPoseShown(), rig::HandPoint::Grip, isRight);
    }

    // Takes a hand in the view from ahead, draws it by so many boxels, and the wheel by so many clicks.
    static void Draw(bool isRight, double right, double up, int clicks) {
        const rig::Vec hand = Palm(isRight);
        const HandView &view = HandViewPlaces[0];
        const double x = view.x + view.width / 2.0 - hand.x * 76, y = view.y - (hand.y + 0.06) * 76;
        ASSERT_TRUE(TakeHand(x, y, -1));
        EXPECT_EQ(handViews.isRight, isRight);
        DragHand(x + right, y - up);
        MoveHandAway(clicks);
        for (int frame = 0; frame < 60; frame++) FollowHand();
    }

    static void ExpectWithinLimits() {
        for (int channel = 0; channel < rig::WholeFigure; channel++)
            for (int axis = 0; axis < AxisCount; axis++) {
                const float value = XPLMGetDataf(anim[static_cast<size_t>(channel)].dataref[axis]);
                const double held = rig::WithinLimits(BodyInUse(), channel, axis, value);
                EXPECT_NEAR(value, held, 1e-4) << PartName(channel);
            }
    }
};

TEST_F(Hands, ComeToWhereTheyAreDrawn) {
    const struct {
        bool isRight;
        double right, up;
        int clicks;
        const char *gender;
    } drags[] = {{false, 12, 25, -10, "w"},
                 {true, -20, 40, -8, "w"},
                 {false, -5, 14, -15, "m"},
                 {true, 4, 10, -14, "w"}};
    for (const auto &drag : drags) {
        globalGender = drag.gender;
        ResetPose(PoseScope::All, -1);
        Draw(drag.isRight, drag.right, drag.up, drag.clicks);
        EXPECT_LT(HandDistance(), 0.01) << drag.up;
        EXPECT_EQ(HandReport(), "The hand is there.");
        ExpectWithinLimits();
        const rig::Vec wanted = handViews.target;
        DropHand();
        EXPECT_LT(rig::Length(Palm(drag.isRight) - wanted), 0.015) << "in tenths of a degree";
    }
}

TEST_F(Hands, StopAtTheLimitsAndSayHowMuchIsMissing) {
    const rig::Vec other = Palm(true);
    Draw(false, 10, 60, -60); // far over the glareshield
    EXPECT_GT(HandDistance(), 0.05);
    EXPECT_NE(HandReport().find(" cm short. At its limit: "), std::string::npos) << HandReport();
    ExpectWithinLimits();
    EXPECT_NE(XPLMGetDataf(anim[rig::BodyTop].dataref[0]), 0) << "the back helps";
    EXPECT_LT(rig::Length(Palm(true) - other), 0.02) << "and the other hand stays";
}

TEST_F(Hands, AreNotTakenWhereTheJointsAreUnknown) {
    EXPECT_FALSE(TakeHand(HandViewPlaces[0].x + 3, HandViewPlaces[0].y - 90, -1)) << "nothing is there";
    anim[4].name = "wing";
    EXPECT_FALSE(isFigureOfRig());
    const rig::Vec hand = Palm(false);
    EXPECT_FALSE(TakeHand(448 - hand.x * 76, 240 - (hand.y + 0.06) * 76, -1));
}

} // namespace
