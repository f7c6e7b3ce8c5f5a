// Checklists and procedures: serial devices, step by step, with the pilot's answers and the executer's pace.
#include "figure/animation.h"
#include "figure/channels.h"
#include "frame/datarefs.h"
#include "tests/systems/model_folder.h"
#include "voice/selection.h"

namespace {

class Sequence : public ModelFolder {
protected:
    Sequence() {
        DRFi_ShowPlanshet = CreateDrf_Int("t/planshet", 1);
        FlightTimeSEC = 50;
    }

    // Steps C.L.ONE, TWO and THREE, each of one block with these lines.
    void LoadSteps(const std::string &one, const std::string &two, const std::string &three) {
        Load("sys=C\ndevstack=L\n" + Out("ONE") + "logic:\n" + one + Out("TWO") + "logic:\n" + two
             + Out("THREE") + "logic:\n" + three);
    }

    static std::string Steps() {
        std::string all;
        for (const char *step : {"C.L.ONE", "C.L.TWO", "C.L.THREE"})
            all += std::to_string(static_cast<int>(Value(step)));
        return all;
    }

    using Texts = std::vector<std::string>;
};

const char *const Say = "execute=0,text,0\n";

TEST_F(Sequence, ThreeStepsThenBackToTheStart) {
    LoadSteps("instring=go\nexecute=0,first,0\n", "instring=yes\n||\ninstring=no\nexecute=0,second,0\n",
              "instring=any\nexecute=0,third,0\n");
    Frame();
    EXPECT_EQ(Steps(), "000");
    EXPECT_FALSE(onChecklistOrProcedure);
    EXPECT_TRUE(answers.empty()) << "what starts a sequence is no answer";
    isNewRecognitionMayCome = true;
    Frame("go");
    EXPECT_EQ(Steps(), "100");
    EXPECT_EQ(Queue(), "0 first");
    EXPECT_EQ(LastRecognition, "");
    EXPECT_FALSE(isNewRecognitionMayCome);
    Frame("yes");
    EXPECT_EQ(Steps(), "100") << "the executer still speaks";
    EXPECT_EQ(LastRecognition, "yes");
    EXPECT_TRUE(onChecklistOrProcedure && isLiveAnimationBlocked);
    executeFlow.clear();
    Frame();
    EXPECT_EQ(Steps(), "110") << "the answer was kept until it could be used";
    EXPECT_EQ(TakeQueue(), "0 second");
    LastRecognition.clear();
    Frame();
    EXPECT_EQ(Steps(), "110");
    EXPECT_TRUE(isAnyInputGood);
    EXPECT_TRUE(answers.empty()) << "\"any\" is no text to choose";
    Frame("ANY");
    EXPECT_EQ(Steps(), "111");
    EXPECT_EQ(TakeQueue(), "0 third");
    Frame();
    EXPECT_EQ(Steps(), "000");
    EXPECT_FALSE(onChecklistOrProcedure);
}

TEST_F(Sequence, AnswersAreShownWhileTheirStepIsOpen) {
    LoadSteps(Say, "instring=yes\n[1]==[2]\ninstring=no\n||\ninstring=yes\nexecute=9,item,0\n", Say);
    Frame();
    EXPECT_TRUE(answers.empty());
    executeFlow.clear();
    Frame();
    EXPECT_EQ(answers, (Texts{"yes", "no"})) << "also those of a block that cannot fire";
    simhost::SetPaused(true);
    Frame("yes");
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(Steps(), "100");
    simhost::SetPaused(false);
    Frame();
    EXPECT_EQ(Steps(), "111") << "a step that queues nothing lets the next one begin in the same frame";
    ASSERT_EQ(inputs.size(), 1U);
    EXPECT_EQ(inputs[0].name, "L");
    EXPECT_EQ(inputs[0].texts, Texts{"item"});
    Frame();
    EXPECT_TRUE(inputs.empty());
}

TEST_F(Sequence, BreakCascadesToTheEndAndRewinds) {
    LoadSteps(Say, "execute=3,,0\nexecute=0,never reached,0\n", Say);
    Frame();
    TakeQueue();
    Frame();
    EXPECT_EQ(TakeQueue(), "5 |0 never reached"); // the executer drops what is behind the break
    // The broken step's value reaches the last step in the same pass only when nothing is queued.
    EXPECT_EQ(Steps(), "120");
    Frame();
    EXPECT_EQ(Steps(), "122");
    EXPECT_EQ(simhost::GetNumber("t/planshet"), 0);
    Frame();
    EXPECT_EQ(Steps(), "000");
}

TEST_F(Sequence, AbortRewindsInTheSameFrame) {
    LoadSteps(Say, "instring=yes\n" + std::string(Say), Say);
    Frame();
    TakeQueue();
    Frame();
    EXPECT_EQ(Steps(), "100");
    Frame("abort");
    EXPECT_EQ(Steps(), "000");
    EXPECT_FALSE(onChecklistOrProcedure);
    EXPECT_EQ(simhost::GetNumber("t/planshet"), 0);
    Frame();
    EXPECT_EQ(Steps(), "100") << "what starts after the abort is not aborted";
    Frame();
    EXPECT_EQ(Steps(), "100");
}

TEST_F(Sequence, AStepWithoutActionsTakesItsCalculatedValue) {
    LoadSteps("calc=[-1]\n", "calc=[0.5]\n", "calc=[0]\n");
    Frame();
    EXPECT_EQ(Value("C.L.ONE"), -1) << "negative: tried again each frame, and counts as done";
    EXPECT_EQ(Value("C.L.TWO"), 0.5);
    EXPECT_EQ(Value("C.L.THREE"), 0);
    for (int i = 0; i < 5; i++) Frame();
    EXPECT_EQ(Value("C.L.TWO"), 0.5) << "the last step is never done";
}

TEST_F(Sequence, ADeviceOfOneStepRestartsEveryOtherFrame) {
    Load("sys=C\ndevstack=L\n" + Out("ONE") + "logic:\n" + Say + "devstack=EMPTY\n");
    for (int i = 0; i < 4; i++) {
        Frame();
        EXPECT_EQ(Value("C.L.ONE"), i % 2 == 0 ? 1 : 0);
        TakeQueue();
    }
}

TEST_F(Sequence, EachActionIsQueuedInItsForm) {
    simhost::AddCommand("t/held", "");
    XPLMCommandBegin(XPLMFindCommand("t/held"));
    Load(
        "sys=S\ndev=D\n" + Out("P")
        + "logic:\nexecute=0,a,0\nexecute=1,b,0\nexecute=2,pos,1\nexecute=2,pos,0\n"
          "execute=3,x,0\nexecute=4,c,0\nexecute=5,c,0\nexecute=6,c,0\nexecute=7,,2.5\nexecute=8,t/d[1],-0.125\n"
          "execute=9,item,0\nexecute=9,item two,0\nexecute=10,,0\nexecute=11,t/held,0\nexecute=12,yes,3\n"
          "execute=13,?,0\nexecute=-1,?,0\ncalc=[4]\n");
    simhost::TakeLogLines();
    Frame();
    EXPECT_EQ(TakeQueue(), "0 a|1 b|2 pos|3 pos|5 x|6 c|7 c|8 c|4 2.500000|9 t/d[1]=-0.125000");
    EXPECT_EQ(CountNewLines({"EXECUTE FROM:S.D.P B 0"}), 1);
    EXPECT_EQ(simhost::CountCommand("t/held").ended, 1);
    ASSERT_EQ(inputs.size(), 1U);
    EXPECT_EQ(inputs[0].texts, (Texts{"item", "item two"}));
    EXPECT_EQ(Value("S.D.P"), 4) << "a device that is no sequence calculates, break or not";
}

TEST_F(Sequence, AnswerTimers) {
    Load("sys=S\ndev=D\n" + Out("P")
         + "logic:\n[S.D.Q]==[1]\nexecute=12,yes,3\nexecute=12,no,5\nlogic:\n[S.D.Q]==[2]\n"
           "execute=12,yes,0\n"
         + Out("Q"));
    const auto ask = [](double value) {
        ModelChanges();
        Parameter("S.D.Q").value = value;
        Frame();
    };
    ask(1);
    ask(1); // again: restarted, not doubled
    ask(0);
    EXPECT_EQ(answers, (Texts{"yes", "no"}));
    simhost::SetPaused(true);
    FlightTimeSEC = 54;
    Frame();
    EXPECT_EQ(answers, Texts{"yes"})
        << "one expires: what slides into its place is looked at in the next frame";
    Frame();
    EXPECT_EQ(answers, Texts{"no"});
    simhost::SetPaused(false);
    ask(1);
    ask(2);
    Frame();
    EXPECT_EQ(answers, Texts{"no"}) << "withdrawn";
}

TEST_F(Sequence, SpeechOutsideASequenceIsConsumedToo) {
    Load("sys=S\ndev=D\n" + Out("P") + "logic:\ninstring=go\ncalc=[1]\n" + Out("Q")
         + "logic:\ninstring=go\ncalc=[1]\n");
    isNewRecognitionMayCome = true;
    Frame("go");
    EXPECT_EQ(Value("S.D.P"), 1);
    EXPECT_EQ(Value("S.D.Q"), 0) << "the first to match takes it";
    EXPECT_TRUE(isNewRecognitionMayCome);
    EXPECT_TRUE(answers.empty());
    Frame("Go");
    EXPECT_EQ(LastRecognition, "Go") << "only the very text matches";
}

TEST_F(Sequence, TheKillSwitchStopsEverything) {
    Load("sys=S\ndev=D\n" + Out("P") + "logic:\ncalc=+[1]\n");
    DRFi_FennicKill = CreateDrf_Int("t/kill", 1);
    Frame();
    EXPECT_EQ(Value("S.D.P"), 0);
    XPLMSetDatai(DRFi_FennicKill, 0);
    Frame();
    EXPECT_EQ(Value("S.D.P"), 1);
    isFennicKillDrfWasReaded = false;
    Frame();
    EXPECT_EQ(Value("S.D.P"), 1);
}

TEST_F(Sequence, ADatarefThatComesLateIsFoundAndLimitsHold) {
    Load(
        "sys=S\ndev=D\nout=IN,double,,3,,,t/late,exist,,,,0\nout=OUT,int,,0,-2,2.5,,,t/late out[1],exist,,0\n"
        "logic:\ncalc=[S.D.IN]\nout=BAD,double,,6,,,t/array[16],exist,t/array,exist,,0\n");
    Frame();
    EXPECT_EQ(Value("S.D.IN"), 3) << "keeps its value while there is no dataref";
    simhost::PublishDataref("t/late", xplmType_Float | xplmType_Double);
    simhost::PublishDataref("t/late out", xplmType_IntArray, 3);
    simhost::PublishDataref("t/array", xplmType_FloatArray, 20);
    simhost::SetNumber("t/late", 7.75);
    simhost::TakeLogLines();
    for (int i = 0; i < 3; i++) Frame();
    EXPECT_EQ(Value("S.D.IN"), 7.75);
    EXPECT_EQ(Value("S.D.OUT"), 2.5) << "an integer is not cut in the model";
    EXPECT_EQ(simhost::GetNumber("t/late out", 1), 2);
    EXPECT_EQ(Value("S.D.BAD"), 0);
    EXPECT_LE(CountNewLines({"array index outside 0 to 15"}), 2);
    simhost::SetNumber("t/late", -100);
    Frame();
    EXPECT_EQ(Value("S.D.OUT"), -2);
}

} // namespace
