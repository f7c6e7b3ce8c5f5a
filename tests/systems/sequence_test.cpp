// Sequences where no flight looks: what is shown while a step is open, and steps that have no actions.
#include "tests/systems/model_folder.h"

namespace {

class Sequence : public ModelFolder {
protected:
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

// What the editor shows of a step belongs to the last frame, or is not shown.
TEST_F(Sequence, OnlyTheOpenStepIsEvaluated) {
    const auto evaluated = [] {
        std::string all;
        for (int step = 0; step < 3; step++) all += isEvaluated({0, 0, step}) ? '1' : '0';
        return all;
    };
    LoadSteps(Say, "instring=yes\nexecute=0,text,0\n", Say);
    EXPECT_EQ(evaluated(), "000");
    Frame();
    EXPECT_EQ(evaluated(), "100");
    Frame();
    EXPECT_EQ(evaluated(), "000") << "done, and the next one waits for the queue";
    executeFlow.clear();
    Frame();
    EXPECT_EQ(evaluated(), "010");
    Frame("yes");
    EXPECT_EQ(evaluated(), "010");
    Frame("abort");
    EXPECT_EQ(evaluated(), "000");
}

} // namespace
