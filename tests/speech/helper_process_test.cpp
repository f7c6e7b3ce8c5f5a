// The companion's process: lines both ways without waiting, and no process left behind.
#include "speech/companion/helper_process.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "speech/companion/patience.h"

namespace fennic_speech {
namespace {

class Helper : public testing::Test {
protected:
    std::string program = testing::TempDir() + "fennic_helper_" + std::to_string(getpid());
    HelperProcess process;

    ~Helper() override { std::filesystem::remove(program); }

    void Start(const std::string &script) {
        std::ofstream(program) << "#!/bin/sh\n" << script;
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        std::string error;
        ASSERT_TRUE(process.Start(program, error)) << error;
    }

    // Frames until it is so; the limit is against hanging alone.
    template <typename Condition> bool Until(const Condition &isSo) {
        for (int frame = 0; frame < 100000; frame++) {
            process.Exchange();
            if (isSo()) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return false;
    }
    std::string NextLine() {
        std::string line;
        return Until([&] { return process.TakeLine(line); }) ? line : "nothing";
    }
};

TEST_F(Helper, LinesGoBothWaysAndItsEndIsNoticed) {
    Start(
        "echo $1; while read -r line; do echo \"<$line>\"; echo log >&2; [ \"$line\" = die ] && exit 7; done");
    EXPECT_EQ(NextLine(), "--child");
    EXPECT_TRUE(process.Send("say>Gear up."));
    EXPECT_EQ(NextLine(), "<say>Gear up.>");
    std::string line;
    EXPECT_TRUE(Until([&] { return process.TakeLogLine(line); }));
    EXPECT_EQ(line, "log");
    EXPECT_TRUE(process.Send("die"));
    EXPECT_TRUE(Until([&] { return !process.isRunning(); }));
    EXPECT_EQ(process.Ending(), "with status 7");
    EXPECT_FALSE(process.Send("say>Nobody hears."));
    Start("kill -9 $$"); // and starts again
    EXPECT_TRUE(Until([&] { return !process.isRunning(); }));
    EXPECT_EQ(process.Ending(), "by signal 9");
}

TEST_F(Helper, OneThatReadsNothingCostsLinesAndNoTime) {
    Start("trap '' TERM; echo ready; sleep 1000");
    EXPECT_EQ(NextLine(), "ready");
    bool isFull = false;
    for (int i = 0; i < 100000 && !isFull; i++) {
        isFull = !process.Send(std::string(1000, 'x'));
        process.Exchange();
    }
    EXPECT_TRUE(isFull);
    process.End();
    EXPECT_FALSE(process.isRunning());
    EXPECT_EQ(process.Ending(), "by signal 9");
}

// It takes its text, lives, and says nothing; neither a pause of the simulator nor its hurry counts.
TEST_F(Helper, OneThatHangsIsGivenUpByBothClocks) {
    Start("read -r line; echo taken; sleep 1000");
    const Patience::Clock::time_point clock;
    const auto after = [&](int seconds) { return clock + std::chrono::seconds(seconds); };
    Patience patience;
    EXPECT_FALSE(patience.isOver(1e9, after(1000000)));
    EXPECT_TRUE(process.Send("say>Gear up."));
    patience.Give(10, 100.0, clock); // 28 s
    EXPECT_EQ(NextLine(), "taken");
    EXPECT_FALSE(patience.isOver(127.0, after(27)));
    EXPECT_FALSE(patience.isOver(1e9, after(27)));
    EXPECT_FALSE(patience.isOver(127.0, after(1000000)));
    EXPECT_TRUE(patience.isOver(129.0, after(29)));
    patience.Give(10, 110.0, after(10)); // which it may say behind the first
    EXPECT_FALSE(patience.isOver(155.0, after(55)));
    EXPECT_TRUE(patience.isOver(157.0, after(57)));
    process.Kill();
    EXPECT_EQ(process.Ending(), "by signal 9");
    patience.Forget();
    EXPECT_FALSE(patience.isOver(1e9, after(1000000)));
    patience.Give(0, 200.0, after(100)); // the next one starts with all its time
    EXPECT_FALSE(patience.isOver(223.0, after(123)));
    EXPECT_TRUE(patience.isOver(225.0, after(125)));
}

TEST_F(Helper, GarbageIsCutIntoLines) {
    Start("head -c 3000000 /dev/zero; echo; echo end; sleep 1000");
    EXPECT_LE(NextLine().size(), 104096U);
    EXPECT_EQ(NextLine(), "end");
    process.End();
}

TEST_F(Helper, AFloodTakesItsTurn) {
    Start("yes 123456789");
    std::string line;
    for (int frame = 0, most = 0; frame < 200; frame++) {
        process.Exchange();
        int lines = 0;
        while (process.TakeLine(line)) lines++;
        most = std::max(most, lines);
        EXPECT_LE(most, 64 * 1024 / 10 + 1);
    }
    EXPECT_TRUE(process.isRunning());
    process.Kill();
    EXPECT_EQ(process.Ending(), "by signal 9");
}

TEST_F(Helper, LeavesWithoutAWait) {
    Start("while read -r line; do echo \"$line\"; done; echo end");
    EXPECT_TRUE(process.Send("say>Bye."));
    process.Leave();
    EXPECT_FALSE(process.Send("say>Nobody hears."));
    for (const char *line : {"say>Bye.", "exit>", "end"}) EXPECT_EQ(NextLine(), line);
    EXPECT_TRUE(Until([&] { return !process.isRunning(); }));
    EXPECT_EQ(process.Ending(), "with status 0");
}

// The simulator's process ends without a word, in the middle of a text.
TEST_F(Helper, TheVoiceDoesNotOutliveItsCompanion) {
    const std::string numberFile = program + ".number";
    const pid_t companion = fork();
    ASSERT_GE(companion, 0);
    if (companion == 0) {
        Start("echo $$ >" + numberFile + ".new; mv " + numberFile + ".new " + numberFile
              + "; exec " VOICE_PROGRAM " --model /nowhere \"$@\"");
        process.Send("say>A text that has only just begun when all of this comes to its end, and goes on.");
        Until([] { return false; });
        _exit(0);
    }
    int voice = 0;
    for (int i = 0; i < 10000 && !(std::ifstream(numberFile) >> voice); i++) usleep(10000);
    ASSERT_GT(voice, 0);
    usleep(300000);
    kill(companion, SIGKILL);
    waitpid(companion, nullptr, 0);
    std::string state = "R"; // a zombie has ended: whoever inherits it may be slow to look
    for (int i = 0; i < 10000 && state != "Z" && !state.empty(); i++) {
        usleep(10000);
        std::string number, name;
        state.clear();
        std::ifstream("/proc/" + std::to_string(voice) + "/stat") >> number >> name >> state;
    }
    EXPECT_TRUE(state.empty() || state == "Z") << state;
    std::filesystem::remove(numberFile);
}

TEST_F(Helper, AProgramThatIsMissingOrMayNotBeRunIsTold) {
    std::string error;
    EXPECT_FALSE(process.Start(program + ".missing", error));
    EXPECT_NE(error, "");
    EXPECT_FALSE(process.isRunning());
    process.End();

    Start("echo lives; read -r line"); // unpacked without its rights
    process.Kill();
    std::filesystem::permissions(program, std::filesystem::perms::owner_read);
    EXPECT_TRUE(process.Start(program, error)) << error;
    EXPECT_EQ(NextLine(), "lives");
}

} // namespace
} // namespace fennic_speech
