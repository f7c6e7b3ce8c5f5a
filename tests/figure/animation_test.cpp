// What is not seen from outside of the figure's own life: how its idle motion chooses where to go, and what a
// new flight begins with.
#include <algorithm>

#include "tests/figure/figure_folder.h"

using FigureMotion = FigureFolder;

TEST_F(FigureMotion, ABlockedHeadMovesAFifthAsFarAndIsNotClamped) {
    isLiveAnimationBlocked = true;
    const char axes[AxisCount] = {'x', 'y', 'z'};
    const double furthest[AxisCount] = {2.4, 5, 1};
    for (int axis = 0; axis < AxisCount; axis++) {
        Show(HeadChannel, axes[axis], 40);
        anim[HeadChannel].current[axis] = anim[HeadChannel].target[axis] = 40;
    }
    double offsets[AxisCount] = {};
    bool isXBroken = false;
    for (int i = 0; i < 6000; i++) {
        const structAnim before = anim[HeadChannel];
        Frame(1.0 / 60);
        for (int axis = 0; axis < AxisCount; axis++) {
            if (anim[HeadChannel].target[axis] == before.target[axis]) continue;
            const double offset = anim[HeadChannel].target[axis] - before.current[axis];
            ASSERT_LE(std::abs(offset), furthest[axis] + 1e-4);
            offsets[axis] = std::max(offsets[axis], std::abs(offset));
            const double fraction = std::abs(offset - std::round(offset));
            if (axis == 0)
                isXBroken |= fraction > 0.1;
            else
                ASSERT_LT(fraction, 1e-4) << "whole degrees";
        }
    }
    EXPECT_TRUE(isXBroken);
    EXPECT_GT(Shown(HeadChannel, 'x'), 12);
    for (int axis = 0; axis < AxisCount; axis++) EXPECT_GT(offsets[axis], furthest[axis] * 0.75);
}

TEST_F(FigureMotion, ANewFlightStartsAfresh) {
    write("custom/positions-w/rest.txt", "4,arm,1,1,1\r\n");
    ReadPositionFolder();
    FlightTimeSEC = 5000;
    Next_lipsAnimTime = 5100;
    Run(60);
    LoadPositionFromFile("rest");
    FlightTimeSEC = 0;
    ReInitFigureVariables();
    EXPECT_EQ(TargetTimeSEC, -1.0);
    Run(20); // with a deadline left over from 5000 s neither would come again
    EXPECT_TRUE(eyesOpen == 0 || Next_eyesCloseTime < 30);
    EXPECT_LT(NextRestPositionTime, 40);
    EXPECT_LT(NextEyePositionTime, 30);
    EXPECT_EQ(lipsOpen, 0);
}
