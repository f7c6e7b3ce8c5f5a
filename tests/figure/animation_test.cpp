// The figure's own life: idle motion within its bounds, rest poses, eyes, blinking and lips, at several
// frame rates, and all of it frozen while the simulator is paused.
#include <algorithm>
#include <map>

#include "tests/figure/figure_folder.h"

class FigureMotion : public FigureFolder {
protected:
    static int Face() { return static_cast<int>(simhost::GetNumber("kv/fo/_face")); }

    // All axes and the face, to see whether anything moved.
    static std::vector<double> Everything() {
        std::vector<double> values = {simhost::GetNumber("kv/fo/_eyes_x"),
                                      simhost::GetNumber("kv/fo/_eyes_y"), simhost::GetNumber("kv/fo/_face")};
        for (int i = 0; i < 47; i++)
            for (char axis : {'x', 'y', 'z'}) values.push_back(Shown(i, axis));
        return values;
    }
};

TEST_F(FigureMotion, NothingMovesWhilePausedOrInTheFirstFiveSeconds) {
    write("custom/positions-w/rest.txt", "4,arm,1,1,1\r\n");
    ReadPositionFolder();
    Run(20);
    const std::vector<double> before = Everything();
    EXPECT_NE(before, std::vector<double>(before.size(), 0.0));
    Next_lipsAnimTime = 1000;
    for (int i = 0; i < 1000; i++) Frame(0);
    EXPECT_EQ(Everything(), before);

    FlightTimeSEC = 0;
    ReInitFigureVariables();
    Next_lipsAnimTime = 1000;
    Run(4.9);
    EXPECT_EQ(Everything(), before);
    Run(5);
    EXPECT_NE(Everything(), before);
}

TEST_F(FigureMotion, RestPosesFollowEachOtherUnlessBlocked) {
    write("custom/positions-w/rest1.txt", "4,arm,1,0,0\r\n");
    write("custom/positions-w/rest2.txt", "4,arm,2,0,0\r\n");
    ReadPositionFolder();
    std::map<std::string, int> chosen;
    double last = -1;
    for (int i = 0; i < 30000; i++) { // 600 s
        const bool wasMoving = TargetTimeSEC != -1.0;
        Frame(0.02);
        if (wasMoving || TargetTimeSEC == -1.0) continue;
        chosen[ActualPosition]++;
        if (last >= 0) {
            EXPECT_GE(FlightTimeSEC - last, 3 - 1e-3);
            EXPECT_LE(FlightTimeSEC - last, 12 + 0.05);
        }
        last = FlightTimeSEC;
    }
    EXPECT_GT(chosen["rest1.txt"], 20);
    EXPECT_GT(chosen["rest2.txt"], 20);

    Run(1);
    isLiveAnimationBlocked = true;
    for (int i = 0; i < 3000; i++) {
        Frame(0.02);
        ASSERT_EQ(TargetTimeSEC, -1.0);
    }
}

TEST_F(FigureMotion, TheHeadLooksAboutWithinItsBounds) {
    write("custom/positions-w/rest.txt", "3,head,-2,4,0\r\n46,xyz,0.5,0,0\r\n");
    ReadPositionFolder();
    double lowest[AxisCount] = {}, highest[AxisCount] = {};
    for (int i = 0; i < 36000; i++) { // 10 minutes
        Frame(1.0 / 60);
        const double shown[AxisCount] = {Shown(HeadChannel, 'x'), Shown(HeadChannel, 'y'),
                                         Shown(HeadChannel, 'z')};
        for (int axis = 0; axis < AxisCount; axis++) {
            lowest[axis] = std::min(lowest[axis], shown[axis]);
            highest[axis] = std::max(highest[axis], shown[axis]);
        }
    }
    const double limits[AxisCount] = {12, 25, 5};
    for (int axis = 0; axis < AxisCount; axis++) {
        EXPECT_GE(lowest[axis], -limits[axis] - 0.05);
        EXPECT_LE(highest[axis], limits[axis] + 0.05);
        EXPECT_LT(lowest[axis], -0.7 * limits[axis]);
        EXPECT_GT(highest[axis], 0.7 * limits[axis]);
    }
}

TEST_F(FigureMotion, TheRestOfTheFigureCreepsAwayFromZero) {
    Show(4, 'x', -1);
    anim[4].current[0] = anim[4].target[0] = -1;
    Show(46, 'x', 0.5);
    Run(12); // as long as it can take to the next rest pose
    EXPECT_LT(Shown(4, 'x'), -1);
    EXPECT_GT(Shown(4, 'x'), -2);
    EXPECT_GT(Shown(4, 'y'), 0);
    EXPECT_LT(Shown(4, 'y'), 1);
    EXPECT_EQ(Shown(46, 'x'), 0.5) << "the figure itself stays in its seat";
    isLiveAnimationBlocked = true;
    Run(3600);
    double furthest = 0;
    for (int i = 0; i < FigureOffsetChannel; i++)
        for (char axis : {'x', 'y', 'z'})
            if (i != HeadChannel) furthest = std::max(furthest, std::abs(Shown(i, axis)));
    EXPECT_LT(furthest, 3) << "in an hour of checklists";
}

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

TEST_F(FigureMotion, EyesCounterRotateAgainstTheHead) {
    isExecuterBusy = true;
    double jumps = 0, lastX = -1;
    for (int i = 0; i < 2000; i++) {
        Show(HeadChannel, 'x', i % 24 - 12);
        Show(HeadChannel, 'y', i % 50 - 25);
        Frame(0.02);
        const double addX = simhost::GetNumber("kv/fo/_eyes_x") - (i % 24 - 12) / -3.0;
        const double addY = simhost::GetNumber("kv/fo/_eyes_y") - (i % 50 - 25) * -0.25;
        for (double add : {addX, addY}) {
            ASSERT_GE(add, -1e-5);
            ASSERT_LE(add, 4.9 + 1e-5);
        }
        if (std::abs(addX - lastX) > 1e-4) jumps++;
        lastX = addX;
    }
    EXPECT_GE(jumps, 40 / 2.0 * 0.8) << "a new aim every 0.2 to 2 s, now and then the same";
    EXPECT_LE(jumps, 40 / 0.2);
}

TEST_F(FigureMotion, EyesBlink) {
    for (double frame : {0.01, 0.05}) {
        double changed = -1;
        int blinks = 0;
        bool wasOpen = true;
        for (double end = FlightTimeSEC + 120; FlightTimeSEC < end;) {
            Frame(frame);
            const int face = Face();
            ASSERT_TRUE(face == 0 || face == 3) << "eyes only while nothing is said";
            const bool isOpen = face == 0;
            if (isOpen == wasOpen) continue;
            wasOpen = isOpen;
            const double lasted = FlightTimeSEC - changed;
            if (changed >= 0 && isOpen) {
                blinks++;
                EXPECT_GE(lasted, 0.1 - 1e-3);
                EXPECT_LE(lasted, 0.1 + 2 * frame);
            } else if (changed >= 0) {
                EXPECT_GE(lasted, 1 - 1e-3);
                EXPECT_LE(lasted, 5 + 2 * frame);
            }
            changed = FlightTimeSEC;
        }
        EXPECT_GT(blinks, 20);
    }
}

TEST_F(FigureMotion, LipsMoveWhileSheSpeaks) {
    const double frame = 0.01;
    const double start = FlightTimeSEC;
    Next_lipsAnimTime = static_cast<float>(start + 20);
    double changed = start;
    int openings = 0;
    bool wasOpen = false;
    while (FlightTimeSEC < start + 20 - 2 * frame) {
        Frame(frame);
        const bool isOpen = Face() == 1 || Face() == 2;
        ASSERT_EQ(Face(), eyesOpen ? (isOpen ? 2 : 0) : (isOpen ? 1 : 3));
        if (isOpen == wasOpen) continue;
        const double lasted = FlightTimeSEC - changed;
        if (++openings == 1) {
            EXPECT_NEAR(lasted, 0.2, 3 * frame);
        } else {
            EXPECT_GE(lasted, 0.05 - 1e-3);
            EXPECT_LE(lasted, 0.5 + 2 * frame);
        }
        changed = FlightTimeSEC;
        wasOpen = isOpen;
    }
    EXPECT_GT(openings, 20);

    Next_lipsAnimTime = static_cast<float>(FlightTimeSEC + 20);
    while (lipsOpen == 0) Frame(frame);
    Next_lipsAnimTime = static_cast<float>(FlightTimeSEC); // the server says that she has finished
    Frame(frame);
    EXPECT_EQ(lipsOpen, 0);
    EXPECT_TRUE(Face() == 0 || Face() == 3);

    Run(3, frame);
    Next_lipsAnimTime = static_cast<float>(FlightTimeSEC + 20); // every utterance begins with closed lips
    const double next = FlightTimeSEC;
    while (lipsOpen == 0) Frame(frame);
    EXPECT_NEAR(FlightTimeSEC - next, 0.2, 3 * frame);
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
