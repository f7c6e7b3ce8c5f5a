// What callbacks throw stays in the plug-in.
#include "util/guard.h"

#include <new>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/log_lines.h"

namespace {

enum Throws { Nothing, NoMemory, Number, Words };

float Loop(Throws what, void *) {
    if (what == NoMemory) throw std::bad_alloc();
    if (what == Number) throw 7;
    if (what == Words) throw std::out_of_range(std::string(5000, 'x'));
    return 3.5F;
}

TEST(Guard, GivesAHarmlessAnswerAndSaysOnceWhatAndWhere) {
    simhost::TakeLogLines();
    float (*const callback)(Throws, void *) = Guarded<"the loop", Loop, -1>;
    EXPECT_EQ(callback(Nothing, nullptr), 3.5F);
    for (int i = 0; i < 3; i++) EXPECT_EQ(callback(NoMemory, nullptr), -1);
    EXPECT_EQ(callback, (Guarded<"the loop", Loop, -1>)) << "needed to unregister it";
    EXPECT_EQ(CountNewLines({"Error in the loop: std::bad_alloc"}), 1);
    EXPECT_EQ((Guarded<"another loop", Loop>)(Number, nullptr), 0);
    EXPECT_EQ(CountNewLines({"Error in another loop: something"}), 1);
    ResetGuards();
    EXPECT_EQ(callback(Words, nullptr), -1);
    EXPECT_EQ(CountNewLines({"Error in the loop: xxx"}), 1);
    EXPECT_FALSE(RunGuarded("a step", [] { throw std::bad_alloc(); }));
    EXPECT_TRUE(RunGuarded("a step", [] {}));
    EXPECT_EQ(CountNewLines({"Error in a step"}), 1);
}

} // namespace
