// Cleaning and splitting of text, with the corners that files in users' hands rely on.
#include "util/text.h"

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;

TEST(Text, SplittingKeepsEveryField) {
    const struct {
        const char *text;
        Words expected;
    } rows[] = {
        {"a,b,c", {"a", "b", "c"}}, {"a,,b", {"a", "", "b"}}, {"a,", {"a", ""}}, {",a,b", {"", "a", "b"}},
        {",,a", {"", "", "a"}},     {",", {"", ""}},          {"", {""}},        {"a\r\n,\nb", {"a", "b"}},
        {"\r,a", {"", "a"}},
    };
    for (const auto &row : rows) EXPECT_EQ(StringToWordsArray(row.text, ','), row.expected) << row.text;
    EXPECT_EQ(StringToWordsArray("GEAR UP", ' '), (Words{"GEAR", "UP"}));
}

TEST(Text, BlanksAreRemovedButForTheLastTwoCharacters) {
    const struct {
        const char *text, *removed, *merged;
    } rows[] = {
        {"a   b", "a b", "a b"}, // both functions spare the last two characters
        {"a b ", "ab ", "a b "},    {"a  ", "a  ", "a  "}, {"  ", "  ", "  "},
        {"   ", "  ", "  "},        {"", "", ""},          {" a  b c", "ab c", " a b c"},
        {"a\r\n  b", "a b", "a b"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(RemoveNRS(row.text), row.merged) << '"' << row.text << '"';
        EXPECT_EQ(RemoveS(RemoveNR(row.text)), row.removed) << '"' << row.text << '"';
    }
    EXPECT_EQ(ReplaceStringDoubleSpace("  a     b  "), " a b ");
    EXPECT_EQ(RemoveTags("(<[x]>)y"), "xy");
}

TEST(Text, ReplacingEndsAndNeverReplacesWhatItInserted) {
    EXPECT_EQ(ReplaceString("aXbXc", "X", "--"), "a--bXc");
    EXPECT_EQ(ReplaceStringAll("aXbXc", "X", "XX"), "aXXbXXc");
    EXPECT_EQ(ReplaceStringAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(ReplaceStringAll("abc", "", "x"), "abc");
    EXPECT_EQ(ReplaceString("abc", "", "x"), "abc");
    EXPECT_EQ(ReplaceStringAll("abc", "abc", ""), "");
}

TEST(Text, CaseIsThatOfAsciiAlone) {
    EXPECT_EQ(LowerToUpperCase("az[`{\xC3\xA4"), "AZ[`{\xC3\xA4");
    EXPECT_EQ(UpperToLowerCase("AZ@[\xC3\x84"), "az@[\xC3\x84");
}

TEST(Text, CharactersAreCountedAndNotBytes) {
    const struct {
        std::string_view text;
        size_t count;
    } rows[] = {
        {"", 0},
        {"abc", 3},
        {"Двигатель запущен, сэр", 22},
        {"\xE2\x82\xAC\xF0\x9F\x9B\xAB", 2},
        {"\xD0", 1}, // cut off within a character
        {"a\xE2\x82", 3},
        {"\xF0\x9F\x9B", 3},
        {"\xE4\xE4\xE4", 3}, // another encoding
        {"\x80\xBF\xFF", 3},
        {std::string_view("\0\0", 2), 2},
    };
    for (const auto &row : rows) EXPECT_EQ(CountCharacters(row.text), row.count) << row.text;
}

} // namespace
