// What the log leaves out, and what it says of that.
#include "util/log.h"

#include "simhost/simulator.h"
#include "tests/log_lines.h"

#include <gtest/gtest.h>

namespace {

void SecondPasses() {
    simhost::StepFrame(1.0);
    ReportLeftOutLines();
}

TEST(Log, OfEachKindTwentyLinesASecond) {
    simhost::ResetSimulator();
    for (int i = 0; i < 1000; i++) {
        string2debugString("Noise: ", std::to_string(i), 1);
        string2debugString("Noise: ", "of another level", 0);
        LogFileProblem("No file ", "/somewhere/" + std::to_string(i));
        LogDroppedLine("file " + std::to_string(i % 10), i, "bad", "line");
        LogListed("Entry: ", std::to_string(i));
    }
    auto lines = simhost::TakeLogLines();
    EXPECT_EQ(CountLines(lines, {"Noise: "}), 20);
    EXPECT_EQ(CountLines(lines, {"No file "}), 1000) << "each names a file";
    EXPECT_EQ(CountLines(lines, {" - line dropped: "}), 10 * 20);
    EXPECT_EQ(CountLines(lines, {"Entry: "}), 1000) << "asked for";

    SecondPasses();
    lines = simhost::TakeLogLines();
    EXPECT_EQ(CountLines(lines, {"980 more left out: Noise: "}), 1);
    EXPECT_EQ(CountLines(lines, {"80 more left out: file "}), 10);
    EXPECT_EQ(lines.size(), 11U);
    string2debugString("Noise: ", "again", 1);
    EXPECT_EQ(CountNewLines({"Noise: again"}), 1);
    SecondPasses();
    EXPECT_TRUE(simhost::TakeLogLines().empty()) << "nothing was left out";

    for (int i = 0; i < 21; i++) int2debugString("Number: ", i, 1);
    EndLog();
    EXPECT_EQ(CountNewLines({"1 more left out: Number: "}), 1) << "the plug-in stops";
}

} // namespace
