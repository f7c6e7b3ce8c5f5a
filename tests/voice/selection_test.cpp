// One button for all answers: what a short press, a long one, and a paused simulator make of it.
#include "voice/selection.h"

#include "tests/plugin_folder.h"
#include "util/clock.h"

namespace {

class Selection : public PluginFolder {
protected:
    // Holds the select command for that long in frames of 0.05 s.
    static void Press(double seconds, bool isPaused = false) {
        SelectPressed();
        FrpSEC = isPaused ? 0.0 : 0.05;
        for (double held = 0; held < seconds; held += 0.05) {
            RunSelectionClick();
            FlightTimeSEC += FrpSEC;
        }
        SelectReleased();
        RunSelectionClick();
    }
};

TEST_F(Selection, AShortPressStepsAndAHoldConfirms) {
    simhost::PublishDataref("kv/fennic/click_snd", xplmType_Int);
    FindClickDataref();
    Press(0.1);
    EXPECT_EQ(selectCommandDoSelect, 1);
    EXPECT_EQ(selectCommandDoConfirm, 0);
    Press(0.4);
    EXPECT_EQ(selectCommandDoConfirm, 1);
    EXPECT_EQ(selectCommandDoSelect, 1) << "nothing highlighted: the first answer comes first";
    EXPECT_EQ(simhost::GetNumber("kv/fennic/click_snd"), 0) << "the click is over";
    selectCommandAnswerIndex = 1;
    selectCommandDoConfirm = 0;
    Press(0.4);
    EXPECT_EQ(selectCommandDoConfirm, 1);
    EXPECT_EQ(selectCommandDoSelect, 0);
    SelectPressed();
    FrpSEC = 0.31;
    RunSelectionClick();
    EXPECT_EQ(simhost::GetNumber("kv/fennic/click_snd"), 1);
}

TEST_F(Selection, WhilePausedOrWithoutTheClickNothingIsConfirmed) {
    Press(0.4);
    EXPECT_EQ(selectCommandDoConfirm, 0);
    simhost::PublishDataref("kv/fennic/click_snd", xplmType_Int);
    FindClickDataref();
    Press(0.4, true);
    EXPECT_EQ(selectCommandDoConfirm, 0);
}

} // namespace
