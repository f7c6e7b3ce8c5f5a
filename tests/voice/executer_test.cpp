// The executer's timing and what each action does to the simulator.
#include "voice/executer.h"

#include <cmath>

#include "frame/settings.h"
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

TEST_F(ExecuterTest, APlainSayLetsTheNextActionStartHalfASecondLater) {
    executeFlow = {{ActionSay, "A"}, {ActionPause, "2"}, {ActionSay, "B"}, {ActionSay, ""}, {ActionSay, "C"}};
    // A at once, the pause half a second later, B at its end; the empty text takes its frame alone.
    const Said said = Run(6);
    ASSERT_EQ(said.size(), 3U);
    EXPECT_EQ(said[0], "0.0 say>A");
    EXPECT_TRUE(said[1] == "2.5 say>B" || said[1] == "2.6 say>B") << said[1];
    EXPECT_TRUE(executeFlow.empty());
    EXPECT_EQ(executeFlowActual, "");
    EXPECT_EQ(fennicsay, (std::vector<std::string>{"C", "B", "A"}));
}

TEST_F(ExecuterTest, SayAndWaitSpeaksOneAlternativeForItsOwnTime) {
    std::vector<std::string> chosen;
    for (int i = 0; i < 60; i++) {
        executeFlow = {{ActionSayWait, "one#three#fifteen"}};
        const double before = FlightTimeSEC;
        Executer();
        chosen.push_back(fennicsay.front());
        EXPECT_NEAR(waitUntil, before + static_cast<double>(chosen.back().size()) * 0.1 + 1.0, 0.01);
        FlightTimeSEC += 10;
    }
    for (const char *text : {"one", "three", "fifteen"}) EXPECT_TRUE(CountLines(chosen, {text})) << text;
    simhost::TakeSentMessages();
    executeFlow = {{ActionSayWait, "[NAME], look"}, {ActionSay, "then"}};
    globalName = "Maximilian";
    // The wait counts the text as written: 12 characters.
    EXPECT_EQ(Run(5), (Said{"0.0 say>Maximilian, look", "2.2 say>then"}));
}

TEST_F(ExecuterTest, AnnouncementsAreSaidOnlyOnRequest) {
    executeFlow = {{ActionSay, "#quiet"}, {ActionSayWait, "#quiet#too"}, {ActionSay, "loud"}};
    EXPECT_EQ(Run(0.3), Said{"0.2 say>loud"});
    simhost::PublishDataref("kv/fennic/comments", xplmType_Int); // an aircraft that comes late
    simhost::SetNumber("kv/fennic/comments", 1);
    FlightTimeSEC += 10;
    executeFlow = {{ActionSay, "#now"}, {ActionSayWait, "#alike"}, {ActionSay, "#"}};
    EXPECT_EQ(Run(5), (Said{"0.0 say>now", "0.5 say>alike"}));
}

TEST_F(ExecuterTest, DatarefsAreWrittenByTheirType) {
    const struct {
        const char *name;
        int type, elements, index;
        const char *text;
        double expected;
    } rows[] = {
        {"t/int", xplmType_Int, 1, 0, "t/int = 7.9", 7},
        {"t/float", xplmType_Float, 1, 0, "t/float=-1.5", -1.5},
        {"t/double", xplmType_Double, 1, 0, "t/double=0.1", 0.1},
        {"t/both", xplmType_Float | xplmType_Double, 1, 0, "t/both=2.5", 2.5},
        {"t/floats", xplmType_FloatArray, 20, 15, "t/floats[15]=3.5", 3.5},
        {"t/ints", xplmType_IntArray, 8, 3, " t/ints [3] = 4 ", 4},
        {"t/first", xplmType_IntArray, 8, 0, "t/first=5", 5},
    };
    simhost::TakeLogLines();
    for (const auto &row : rows) {
        simhost::PublishDataref(row.name, row.type, row.elements);
        ExecuteDrf(row.text);
        EXPECT_NEAR(simhost::GetNumber(row.name, row.index), row.expected, 1e-12) << row.text;
    }
    EXPECT_TRUE(simhost::TakeLogLines().empty());
}

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

TEST_F(ExecuterTest, CommandsAndUnknownThings) {
    simhost::AddCommand("t/command", "");
    executeFlow = {{ActionCommandOnce, "t/command"},
                   {ActionCommandBegin, "t/command"},
                   {ActionCommandOnce, "t/no"},
                   {ActionCommandEnd, "t/command"},
                   {ActionCommandEndNow, "t/command"},
                   {12, "no such type"},
                   {-1, "nor this"},
                   {ActionAnswer, "2.5 checked"}};
    Run(0.8);
    EXPECT_TRUE(executeFlow.empty());
    EXPECT_EQ(simhost::CountCommand("t/command").begun, 2);
    EXPECT_EQ(simhost::CountCommand("t/command").ended, 2);
    ASSERT_EQ(answerstimer.size(), 1U);
    EXPECT_EQ(answerstimer[0].name, "2.5 checked");
    EXPECT_NEAR(answerstimer[0].time, 1000.7 + 2.5, 1e-6);

    executeFlow = {{ActionBreak, ""}, {ActionSay, "never"}};
    EXPECT_TRUE(Run(1).empty());
    EXPECT_EQ(CountNewLines({"EXECUTE RUN: dotypeBreak "}), 1);
}

TEST_F(ExecuterTest, StepModeStartsOneActionAStep) {
    isNeedStep = 1;
    executeFlow = {{ActionSay, "A"}, {ActionSay, "B"}, {ActionSay, "C"}};
    EXPECT_EQ(Run(5), Said{"0.0 say>A"});
    EXPECT_EQ(executeFlowActual, "B");
    lockStep = 0;
    EXPECT_EQ(Run(5), Said{"0.0 say>B"});
}

TEST_F(ExecuterTest, AbortEmptiesTheQueueHoweverItIsWritten) {
    for (const char *word : {"abort", "ABORT", "Abort!"}) {
        executeFlow = {{ActionSay, "A"}, {ActionSay, "B"}};
        executeFlowActual = "A";
        LastRecognition = word;
        LastRecognitionOld = "before";
        NewRecognition_Handler();
        EXPECT_TRUE(executeFlow.empty());
        EXPECT_EQ(executeFlowActual, "");
        EXPECT_EQ(LastRecognitionOld, "before");
        const auto sent = simhost::TakeSentMessages();
        ASSERT_EQ(sent.size(), 1U);
        EXPECT_EQ(sent[0].text, "say>All Commands and Checklists Aborted!");
    }
    LastRecognition = "abort mission";
    isAnyInputGood = true;
    NewRecognition_Handler();
    EXPECT_EQ(LastRecognitionOld, "abort mission");
    EXPECT_FALSE(isAnyInputGood);
    EXPECT_TRUE(simhost::TakeSentMessages().empty());
}

TEST_F(ExecuterTest, NothingGrowsWithoutBound) {
    simhost::TakeLogLines();
    for (int i = 0; i < 30000; i++) QueueAction(ActionPause, "1");
    EXPECT_EQ(CountNewLines({"queue is full"}), 1);
    EXPECT_LT(executeFlow.size(), 20000U);
    for (int i = 0; i < 1000; i++) ExecuteSay(std::to_string(i));
    EXPECT_LT(fennicsay.size(), 500U);
    EXPECT_EQ(fennicsay.front(), "999");
}

} // namespace
