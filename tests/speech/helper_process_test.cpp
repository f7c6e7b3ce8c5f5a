// The companion's process: lines both ways without waiting, and no process left behind.
#include "speech/companion/helper_process.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

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

TEST_F(Helper, GarbageIsCutIntoLines) {
    Start("head -c 3000000 /dev/zero; echo; echo end; sleep 1000");
    EXPECT_LE(NextLine().size(), 104096U);
    EXPECT_EQ(NextLine(), "end");
    process.End();
}

TEST_F(Helper, AProgramThatIsMissingIsTold) {
    std::string error;
    EXPECT_FALSE(process.Start(program + ".missing", error));
    EXPECT_NE(error, "");
    EXPECT_FALSE(process.isRunning());
    process.End();
}

} // namespace
} // namespace fennic_speech
