// Numbers from and to text: what counts as one, and the extremes. The process's locale is changed in
// flights/locale.lua.
#include "util/numbers.h"

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(Numbers, DoublesAreReadWholeOrNotAtAll) {
    const struct {
        const char *text;
        double expected;
    } rows[] = {{"0", 0},          {"-12.5", -12.5}, {"+3", 3},        {".5", 0.5},   {"5.", 5},
                {" 7.25\t", 7.25}, {"1e3", 1000},    {"2.5E-1", 0.25}, {"000012", 12}};
    double value = 0;
    for (const auto &row : rows) {
        EXPECT_TRUE(ParseDouble(row.text, value)) << row.text;
        EXPECT_EQ(value, row.expected);
    }
    EXPECT_TRUE(ParseDouble("0." + std::string(5000, '0') + "1", value)); // longer than any buffer
    EXPECT_EQ(value, 0.0);
    value = -77.25;
    for (const std::string &text : std::vector<std::string>{"", " ", "-", ".", "-.", "1.2.3", "1,5", "12abc",
                                                            "1 2", "0x10", "inf", "nan", "1e999", "1e", "--1",
                                                            std::string(5000, '9'), std::string("5\0x", 3)}) {
        EXPECT_FALSE(ParseDouble(text, value)) << text;
        EXPECT_EQ(value, -77.25);
    }
}

TEST(Numbers, IntegersAreCutTowardsZeroAndMustFit) {
    const struct {
        const char *text;
        bool isNumber;
        int expected;
    } rows[] = {{"5.999", true, 5},
                {"-5.999", true, -5},
                {"2147483647.9", true, std::numeric_limits<int>::max()},
                {"5 ", true, 5},
                {"2147483648", false, 7},
                {"-2147483648", true, std::numeric_limits<int>::min()},
                {"1e10", false, 7},
                {"-2147483649", false, 7},
                {"two", false, 7}};
    for (const auto &row : rows) {
        int value = 7;
        EXPECT_EQ(ParseInt(row.text, value), row.isNumber) << row.text;
        EXPECT_EQ(value, row.expected) << row.text;
    }
    EXPECT_EQ(TruncateToInt(-1.9), -1);
    EXPECT_EQ(TruncateToInt(1e20), std::numeric_limits<int>::max());
    EXPECT_EQ(TruncateToInt(-INFINITY), std::numeric_limits<int>::min());
    EXPECT_EQ(TruncateToInt(NAN), 0);
}

TEST(Numbers, LeadingNumberTakesWhatStandsInFront) {
    EXPECT_EQ(LeadingNumber("2.5 seconds"), 2.5);
    EXPECT_EQ(LeadingNumber("  -3x"), -3);
    EXPECT_EQ(LeadingNumber("10,5"), 10);
    EXPECT_EQ(LeadingNumber("4e"), 4);
    EXPECT_EQ(LeadingNumber("seconds 2"), 0);
    EXPECT_EQ(LeadingNumber("1e999"), 0);
}

TEST(Numbers, IsNumberLooksAtCharactersAlone) {
    for (const char *text : {"-", ".", "1.2.3", "0", "-5.000000"}) EXPECT_TRUE(isNumber(text)) << text;
    for (const char *text : {"", "1e5", "+1", " 1", "1;2", "A.B.C"}) EXPECT_FALSE(isNumber(text)) << text;
}

TEST(Numbers, FixedFormats) {
    EXPECT_EQ(float2string(0.1234567), "0.123457");
    EXPECT_EQ(double2string(-1.0 / 3.0), "-0.333333");
    EXPECT_EQ(int2string(std::numeric_limits<int>::min()), "-2147483648");
    EXPECT_EQ(float2string(std::numeric_limits<double>::max()).size(), 309U + 7U);
    EXPECT_EQ(add0before("7", 3), "007");
    EXPECT_EQ(add0before("1234", 3), "1234");
    EXPECT_EQ(add0before("7", 40), "00000000007");
    EXPECT_EQ(add0after("25", 4), "2500");
    EXPECT_EQ(add0after("25", 1), "2");

    const struct {
        double x;
        int intDigits, fracDigits;
        const char *expected;
    } rows[] = {
        {3.14159, 1, 2, "3.14"}, {12.5, 3, 1, "12.5"},      {7.999, 1, 2, "7.99"},
        {5.0, 3, 0, "05."},      {5.0, 2, 1, "5.0"},        {-5.5, 4, 1, "-5.5"},
        {1.5, 1, 8, "1.50"},     {0.9999999, 1, 2, "1.00"}, {5.0, 12, 1, "00000000005.0"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(FormatFloat2String(row.x, row.intDigits, row.fracDigits), row.expected) << row.x;
}

} // namespace
