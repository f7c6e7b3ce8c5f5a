// Positions and presets: what the scan lists, how a load moves the channels, what a bad file does, and that
// what is saved is what was shown.
#include <clocale>

#include "figure/position_creator.h"
#include "figure/position_creator_tools.h"
#include "tests/figure/figure_folder.h"

using Names = std::vector<std::string>;

class Positions : public FigureFolder {
protected:
    Positions() { isExecuterBusy = true; } // no idle motion between the moves

    void Position(const std::string &name, const std::string &text) {
        write("custom/positions-w/" + name + ".txt", text);
    }
};

// What the scan lists is seen in the menu of flights/menus.lua.
TEST_F(Positions, AScanForgetsTheFolderBeforeButForThePosesToRestIn) {
    for (const char *name : {"rest lap", "group/sit", "group/rest knees"}) Position(name, "");
    ReadPositionFolder();
    EXPECT_EQ(positionList, (Names{"rest lap", "rest knees", "sit"}));
    globalPosFolder = "no such folder/";
    ReadPositionFolder();
    EXPECT_TRUE(positionList.empty() && mapPos.empty());
    EXPECT_EQ(positionRestList, (Names{"rest lap", "rest knees"}));
}

TEST_F(Positions, AnAxisThatNeedNotMoveIsLeftToOthers) {
    Position("reach", "4,arm,10,0,0\r\n");
    ReadPositionFolder();
    LoadPositionFromFile("reach");
    Show(4, 'y', 33);
    Run(1);
    EXPECT_EQ(Shown(4, 'x'), 10);
    EXPECT_EQ(Shown(4, 'y'), 33);
}

TEST_F(Positions, AMoveThatHasEndedDoesNotGoOnInTheNext) {
    Position("whole", "4,arm,40,0,0\r\n5,arm,-30,0,0\r\n8,finger,60,0,0\r\n");
    Position("part", "5,arm,10,0,0\r\n");
    Position("gone", "5,arm,1,1,1\r\n");
    write("custom/presets/l_fist.txt", "7,finger,50,0,0\r\n"); // not with all channels, as users have them
    ReadPositionFolder();
    std::filesystem::remove(plugin + "custom/positions-w/gone.txt");
    void (*const loads[])() = {[] { LoadPresetFromFile("l_fist.txt"); }, [] { LoadPositionFromFile("part"); },
                               [] { LoadPositionFromFile("gone"); }, [] { LoadPositionFastFromFile("gone"); },
                               [] { LoadPresetFromFile("gone.txt"); }};
    for (const auto &load : loads) {
        LoadPositionFromFile("whole");
        Run(1);
        anim[4].current[0] = 15; // a pose is being made
        Show(4, 'x', 15);
        load();
        double furthest = 0;
        for (int i = 0; i < 100; i++) {
            Frame(0.02);
            furthest = std::max(furthest, std::abs(Shown(4, 'x') - 15));
        }
        EXPECT_EQ(furthest, 0) << "load " << &load - loads;
        EXPECT_EQ(TargetTimeSEC, -1.0);
    }
}

TEST_F(Positions, AMoveOvertakesAnother) {
    Position("left", "4,arm,8,0,0\r\n5,arm,8,0,0\r\n");
    Position("right", "4,arm,-8,0,0\r\n");
    ReadPositionFolder();
    LoadPositionFromFile("left");
    Frame(0.4);
    LoadPositionFromFile("right");
    Frame(0.2);
    EXPECT_NEAR(Shown(4, 'x'), 4 - 3, 1e-5);
    EXPECT_NEAR(Shown(5, 'x'), 4 + 2, 1e-5) << "keeps its old speed";
    Run(1);
    EXPECT_EQ(Shown(4, 'x'), -8);
    EXPECT_EQ(Shown(5, 'x'), 8);
}

TEST_F(Positions, TabletAndPadComeWithTheirPositionsAndGoWithThem) {
    for (const char *name : {"tablet_hold", "writing", "reach"}) Position(name, "4,arm,10,0,0\r\n");
    ReadPositionFolder();
    const auto shown = [] {
        return std::pair(simhost::GetNumber("kv/fo/_planshet"), simhost::GetNumber("kv/fo/_pad"));
    };
    LoadPositionFromFile("tablet_hold");
    EXPECT_EQ(shown(), std::pair(1.0, 0.0));
    LoadPositionFastFromFile("writing");
    EXPECT_EQ(shown(), std::pair(0.0, 1.0));
    LoadPositionFromFile("reach");
    EXPECT_EQ(shown(), std::pair(0.0, 0.0));
    simhost::SetNumber("kv/fo/_planshet", 1); // a checklist
    for (const char *name : {"tablet_hold", "reach"}) LoadPositionFromFile(name);
    EXPECT_EQ(shown(), std::pair(1.0, 0.0)) << "the checklist's own";
}

TEST_F(Positions, APresetMovesTheFingersOfOneHand) {
    std::string everything;
    for (int i = 0; i < 47; i++) everything += std::to_string(i) + ",name,5,5,5\r\n";
    struct Case {
        const char *gender, *file;
        int first, last;
    };
    const Case cases[] = {{"w", "l_fist.txt", 7, 21},
                          {"m", "r_fist.txt", 25, 39},
                          {"w", "wl_new.txt", 25, 39}, // as saved: right until renamed
                          {"w", "l", 25, 39},
                          {"", "l_fist.txt", 1, 0}};
    for (const Case &preset : cases) {
        write(std::string("custom/presets/") + preset.file, everything);
        for (structAnim &channel : anim)
            for (int axis = 0; axis < AxisCount; axis++) {
                channel.current[axis] = 1;
                XPLMSetDataf(channel.dataref[axis], 1);
            }
        globalGender = preset.gender;
        LoadPresetFromFile(preset.file);
        Run(1);
        for (int i = 0; i < 47; i++)
            EXPECT_EQ(Shown(i, 'y'), i >= preset.first && i <= preset.last ? 5 : 1)
                << preset.gender << " " << preset.file << " channel " << i;
    }
}

TEST_F(Positions, WhatCannotBeReadMovesNothing) {
    Position("gone", "4,arm,1,1,1\r\n");
    ReadPositionFolder();
    std::filesystem::remove(plugin + "custom/positions-w/gone.txt");
    LoadPositionFromFile("gone");
    EXPECT_EQ(Logged("!!! Error: Cant read file gone"), 1);
    EXPECT_DOUBLE_EQ(TargetTimeSEC, 100.8) << "an empty move runs";
    Run(1);
    EXPECT_EQ(TargetTimeSEC, -1.0);

    ExecutePos("unknown");
    ExecutePosFast("gon");
    EXPECT_EQ(Logged(""), 0);
    LoadPositionFromFile("../presets/fist");
    EXPECT_EQ(Logged("Cant read file ../presets/fist"), 1);
    EXPECT_EQ(TargetTimeSEC, -1.0);

    Position("outside", "4,arm,1,1,1\r\n");
    LoadPresetFromFile("../positions-w/outside.txt");
    EXPECT_EQ(Logged("Cant read file ../positions-w/outside.txt"), 1);
    LoadPresetFromFile("none.txt");
    EXPECT_EQ(Logged("!!! Error: Cant read file none.txt"), 1);
    Run(1);
    EXPECT_EQ(Shown(4, 'x'), 0);
    EXPECT_EQ(ActualPosition, "");
}

TEST_F(Positions, AFigureWithoutDefinitionSavesNoPose) {
    simhost::ResetSimulator();
    simhost::ActAsPlugin(plugin + LibraryName);
    LoadAnimationFile(plugin + "data/obj/none.txt");
    EXPECT_EQ(simhost::GetNumber("kv/fo/_show"), 1) << "its single datarefs are there";
    write("custom/positions-w/new.txt", "kept");
    SavePositionToFile();
    EXPECT_EQ(read("custom/positions-w/new.txt"), "kept");
}

TEST_F(Positions, SavedIsWhatIsShown) {
    std::setlocale(LC_ALL, "de_DE.UTF-8"); // a comma as decimal point, where that locale is installed
    Show(0, 'x', 1.0 / 3);
    Show(0, 'y', -1234567);
    Show(46, 'z', -0.25);
    SavePositionToFile();
    const std::string saved = read("custom/positions-w/new.txt");
    EXPECT_EQ(saved.substr(0, saved.find("2,c2,")), "0,c0,0.333333,-1.23457e+06,0,\r\n1,c1,0,0,0,\r\n");
    EXPECT_TRUE(saved.ends_with("\r\n46,xyz,0,0,-0.25,\r\n"));

    globalGender = "m";
    SavePresetLeftToFile();
    SavePresetRghtToFile();
    EXPECT_EQ(read("custom/presets/ml_new.txt"), read("custom/presets/mr_new.txt"));
    EXPECT_EQ(read("custom/presets/mr_new.txt"), saved);
}
