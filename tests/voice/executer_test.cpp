// The executer where a flight does not look: writes that cannot be done, and its bounds.
#include "voice/executer.h"

#include "tests/systems/model_folder.h"
#include "voice/speech_link.h"

namespace {

class ExecuterTest : public ModelFolder {
protected:
    ExecuterTest() {
        CreateSpeechDatarefs();
        FlightTimeSEC = 1000;
    }
};

TEST_F(ExecuterTest, AWriteThatCannotBeDoneSaysWhy) {
    simhost::PublishDataref("t/ints", xplmType_IntArray, 20);
    const struct {
        const char *text, *message;
    } rows[] = {
        {"t/ints", "no operand in this string: t/ints"},
        {"t/ints[1]=2=3", "no operand in this string: "},
        {"", "no operand in this string: "},
        {"t/none[1]=2", "cant find dataref: t/none"},
        {"=2", "cant find dataref: "},
        {"t/ints[1]=two", "no number"},
        {"t/ints[1]=", "no number"},
        {"t/ints[16]=2", "index outside 0 to 15: t/ints[16]=2"},
        {"t/ints[-1]=2", "index outside 0 to 15: "},
        {"t/ints[]=2", "index outside 0 to 15: "},
        {"t/ints[99999999999]=2", "index outside 0 to 15: "},
    };
    simhost::TakeLogLines();
    for (const auto &row : rows) {
        ExecuteDrf(row.text);
        const auto lines = simhost::TakeLogLines();
        EXPECT_EQ(lines.size(), 1U) << row.text;
        EXPECT_EQ(CountLines(lines, {"Error in script - ", row.message}), 1) << row.text;
    }
    ExecuteDrf("t/ints[16]=2");
    EXPECT_TRUE(simhost::TakeLogLines().empty()) << "an index is reported once";
    for (int i = 0; i < 20; i++) EXPECT_EQ(simhost::GetNumber("t/ints", i), 0) << i;
}

TEST_F(ExecuterTest, ASentenceTakesTheTimeOfItsCharacters) {
    ExecuteWaitSay("Двигатели запущены, сэр!");
    EXPECT_NEAR(waitUntil, 1000 + 24 * 0.1 + 1.0, 0.01);
}

TEST_F(ExecuterTest, NothingGrowsWithoutBound) {
    simhost::TakeLogLines();
    for (int i = 0; i < 30000; i++) QueueAction(QueueType(ScriptPause), "1");
    EXPECT_EQ(CountNewLines({"queue is full"}), 1);
    EXPECT_LT(executeFlow.size(), 20000U);
    for (int i = 0; i < 1000; i++) ExecuteSay(std::to_string(i));
    EXPECT_LT(fennicsay.size(), 500U);
    EXPECT_EQ(fennicsay.front(), "999");
}

} // namespace
