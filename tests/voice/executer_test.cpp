// The executer where a flight does not look: actions that cannot be done, step mode, and its bounds.
#include "voice/executer.h"

#include <cmath>

#include "tests/systems/model_folder.h"
#include "voice/speech_link.h"

namespace {

class ExecuterTest : public ModelFolder {
protected:
    ExecuterTest() {
        CreateSpeechDatarefs();
        FlightTimeSEC = 1000;
    }

    // Runs the executer for a time, in frames of 0.1 s; what was said, as "seconds text", from the call on.
    static std::vector<std::string> Run(double seconds) {
        std::vector<std::string> said;
        const int frames = static_cast<int>(std::lround(seconds * 10));
        for (int frame = 0; frame < frames; frame++) {
            Executer();
            for (const simhost::SentMessage &message : simhost::TakeSentMessages())
                said.push_back(std::to_string(frame / 10) + "." + std::to_string(frame % 10) + " "
                               + message.text);
            FlightTimeSEC += 0.1;
        }
        return said;
    }

    using Said = std::vector<std::string>;
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

TEST_F(ExecuterTest, WhatIsUnknownIsPassedOverAndAnAnswerGetsItsTime) {
    executeFlow = {{QueueType(ScriptCommandOnce), "t/no"},
                   {12, "no such type"},
                   {-1, "nor this"},
                   {QueueType(ScriptAnswer), "2.5 checked"}};
    Run(0.4);
    EXPECT_TRUE(executeFlow.empty());
    ASSERT_EQ(answerstimer.size(), 1U);
    EXPECT_EQ(answerstimer[0].name, "2.5 checked");
    EXPECT_NEAR(answerstimer[0].time, 1000.3 + 2.5, 1e-6);
}

TEST_F(ExecuterTest, StepModeStartsOneActionAStep) {
    isNeedStep = 1;
    executeFlow = {{0, "A"}, {0, "B"}, {0, "C"}};
    EXPECT_EQ(Run(5), Said{"0.0 say>A"});
    EXPECT_EQ(executeFlowActual, "B");
    lockStep = 0;
    EXPECT_EQ(Run(5), Said{"0.0 say>B"});
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
