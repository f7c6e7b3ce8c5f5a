// Conditions of other people's checklists, as the systems that are made of them find them met.
#include "systems/import/clist_import.h"
#include "systems/import/condition.h"
#include "systems/import/spoken.h"
#include "systems/model_end.h"
#include "tests/systems/model_folder.h"

#include "XPLMDataAccess.h"
#include "simhost/simulator.h"

namespace {

class Import : public ModelFolder {
protected:
    // Datarefs "t/a" to "t/c", floats, "t/i", an int, and "t/v", an array.
    Import() {
        for (const char *name : {"t/a", "t/b", "t/c"}) simhost::PublishDataref(name, xplmType_Float);
        simhost::PublishDataref("t/i", xplmType_Int);
        simhost::PublishDataref("t/v", xplmType_FloatArray, 16);
    }

    // A checklist of one item with this condition, loaded.
    ClistImport Take(const std::string &condition) {
        DeleteSystems();
        ClistImportOptions options;
        options.isWhole = [](const std::string &name) { return name == "t/i"; };
        ClistImport import =
            ImportClist("sw_checklist:L\nsw_item:FIRST\nsw_item:ITEM|ON:" + condition + "\n", options);
        std::string all;
        for (const ImportedSystem &system : import.systems) all += system.content;
        Load(all);
        return import;
    }

    // Whether the condition holds after these values, of a to c and i, have passed by, a frame each.
    bool isMet(const std::string &condition, const std::vector<std::vector<double>> &values) {
        const ClistImport import = Take(condition);
        EXPECT_EQ(import.conditionsTaken, 1U)
            << condition << ": " << (import.notes.empty() ? "" : import.notes[0].text);
        if (import.conditionsTaken == 0) return false;
        for (const std::vector<double> &frame : values) {
            const char *const names[] = {"t/a", "t/b", "t/c", "t/i"};
            for (size_t i = 0; i < frame.size(); i++) simhost::SetNumber(names[i], frame[i]);
            Frame();
        }
        return Value("CHECKLIST DATA.L.ITEM") == 1.0;
    }
};

TEST_F(Import, ConditionsAreMetAsTheyAreWritten) {
    const struct {
        const char *condition;
        std::vector<std::vector<double>> met, notMet;
    } rows[] = {
        {"t/a:1", {{1}, {0.999}}, {{0}, {0.9}, {2}}},
        {"t/i:1", {{0, 0, 0, 1}}, {{0, 0, 0, 0}, {0, 0, 0, 2}}},
        {"t/a:=0.5", {{0.5}}, {{0.6}, {0.49}}},
        {"t/a:!1", {{0}, {2}}, {{1}}},
        {"t/a:>0.5", {{0.6}}, {{0.5}, {0}}},
        {"t/a:>=0.5", {{0.5}}, {{0.4}}},
        {"t/a:<-1.5e0", {{-2}}, {{-1}}},
        {"t/a:-2|2", {{-2}, {2}, {0}}, {{-3}, {2.5}}},
        {"t/a:!-2|2", {{3}}, {{0}}},
        {"t/a:1&&t/b:1||t/c:1", {{1, 1, 0}, {0, 0, 1}}, {{1, 0, 0}, {0, 1, 0}}},
        {"t/c:1||t/a:1&&t/b:1", {{1, 1, 0}, {0, 0, 1}}, {{1, 0, 0}, {0, 1, 0}}},
        {"(t/a:1||t/b:1)&&(t/b:1||t/c:1)", {{1, 0, 1}, {0, 1, 0}}, {{1, 0, 0}, {0, 0, 1}}},
        {"!(t/a:1&&t/b:1)", {{1, 0}, {0, 0}}, {{1, 1}}},
        {"t/a:>{t/b}+2*3", {{8, 1}}, {{7, 1}, {0, 0}}},
        {"t/a:(({t/b}+1)*(2-{t/c}))/2", {{3, 2, 0}, {0, 1, 2}}, {{2, 2, 0}}},
        {"t/a:{t/b}**2-1", {{8, 3}}, {{9, 3}}},
        {"t/a:-{t/b}", {{-3, 3}}, {{3, 3}}},
        {"t/a:round({t/b})", {{3, 2.6}}, {{2, 2.6}}},
        {"t/a:(int){t/b}", {{-2, -2.6}, {2, 2.6}}, {{-3, -2.6}}},
        {"t/a:abs({t/b})+max({t/b},{t/c})", {{5, -2, 3}}, {{1, -2, 3}}},
        {":({t/a} == 1) && ({t/b} != 2)", {{1, 0}}, {{1, 2}, {0, 0}}},
        {":{t/a} + 1 > {t/b} || !({t/c} <= 0)", {{1, 1, 0}, {0, 5, 1}}, {{0, 5, 0}}},
        {":(({t/a} + 1) * 2 == 4) && {t/b}", {{1, 5}}, {{1, 0}, {2, 5}}},
        {":closer_than({t/a}, {t/b}, 5)", {{10, 14}, {14, 10}}, {{10, 15}, {16, 10}}},
    };
    for (const auto &row : rows) {
        for (const auto &values : row.met) EXPECT_TRUE(isMet(row.condition, {values})) << row.condition;
        for (const auto &values : row.notMet) EXPECT_FALSE(isMet(row.condition, {values})) << row.condition;
    }
    Take("t/v[3]:1");
    EXPECT_EQ(Parameter("CHECKLIST DATA.DATAREFS.V 3").inDataref.fullName, "t/v[3]");
}

TEST_F(Import, SomeRememberWhatWasBefore) {
    EXPECT_TRUE(isMet("t/a:0:1", {{0}, {0.5}, {1}}));
    EXPECT_FALSE(isMet("t/a:0:1", {{1}, {0.5}, {1}}));
    EXPECT_TRUE(isMet("t/a:5:2", {{6}, {2}}));
    EXPECT_FALSE(isMet("t/a:5:2", {{6}, {2}, {6}}));
    // The item is the current one when the first has been answered.
    const auto moved = [this](const char *condition, double first, double second) {
        Take(condition);
        simhost::SetNumber("t/a", first);
        Frame("l checklist");
        executeFlow.clear();
        Frame("checked");
        executeFlow.clear();
        Frame();
        simhost::SetNumber("t/a", second);
        Frame();
        return Value("CHECKLIST DATA.L.ITEM") == 1.0;
    };
    EXPECT_TRUE(moved("t/a:+>2", 10, 12.5));
    EXPECT_FALSE(moved("t/a:+>2", 10, 11));
    EXPECT_TRUE(moved("t/a:-<2", 10, 7));
    EXPECT_FALSE(moved("t/a:-<2", 10, 13));
    EXPECT_TRUE(moved("t/a:><2", 10, 7));
    EXPECT_TRUE(moved("t/a:><2", 10, 13));
}

TEST_F(Import, WhatCannotBeSaidBecomesAPlainQuestion) {
    for (const char *condition :
         {"t/a", "t/a:", "t/a:1&&", "t/a:(1", "t/v[16]:1", "t/a:sin(1)", "t/a:{t/b}**{t/c}",
          "t/a:{t/b}:{t/c}", ":{t/a} ==", ":({t/a} == 1", "0:1", "t/a:1 junk", "t a:1"}) {
        const ClistImport import = Take(condition);
        EXPECT_EQ(import.conditionsTaken, 0U) << condition;
        ASSERT_EQ(import.notes.size(), 1U) << condition;
        EXPECT_EQ(import.notes[0].line, 3) << condition;
        EXPECT_EQ(Parameter("CHECKLIST.L.ITEM").logic.size(), 1U) << condition;
    }
    ClistExpression expression;
    std::string reason;
    EXPECT_FALSE(ReadClistCondition(std::string(100000, '('), expression, reason));
    EXPECT_FALSE(ReadClistCondition(":" + std::string(100000, '-'), expression, reason));
}

TEST_F(Import, AListGoesOnWithTheOneThatItNames) {
    const ClistImport import = ImportClist(
        "sw_checklist:A\nsw_item:X|ON\nsw_continue:last\nsw_checklist:B\nsw_item:X|ON\nsw_checklist:LAST\nsw_item:X|ON\n",
        {});
    std::string all;
    for (const ImportedSystem &system : import.systems) all += system.content;
    EXPECT_NE(all.find("Next is the last checklist."), std::string::npos) << all;
}

TEST(Spoken, AsAPilotWouldSayIt) {
    const struct {
        const char *written, *spoken;
    } rows[] = {
        {"ENG 1 & 2 FUEL PUMPS ......", "Engine 1 and 2 fuel pumps"},
        {"L/R PACK SW.", "L, R pack switch"},
        {"T/O CONFIG", "Take off config"},
        {"APU (if reqd)", "APU, if required"},
        {"V2+10 KTS", "V2 and 10 knots"},
        {"A/THR", "Autothrust"},
        {"ALT <10,000 FT", "Altitude below 10000 feet"},
        {"Flaps 5-15", "Flaps 5 to 15"},
        {"SET -1.5 out=[X];#", "Set minus 1.5 out X, number"},
        {"-----", ""},
    };
    for (const auto &row : rows) EXPECT_EQ(SpokenText(row.written), row.spoken);
    const auto phrases = [](const char *answer) {
        std::string all;
        for (const std::string &phrase : AnswerPhrases(answer)) all += (all.empty() ? "" : "|") + phrase;
        return all;
    };
    EXPECT_EQ(phrases("ON / AUTO"), "on|auto|checked");
    EXPECT_EQ(phrases("CLOSE OR LOCK"), "close|closed|lock|locked|checked");
    EXPECT_EQ(phrases("AS REQ'D"), "");
    EXPECT_EQ(phrases("SET & CHECK"), "set and check|set and checked|checked");
    EXPECT_EQ(ChecklistPhrase("BEFORE T/O"), "before take off checklist");
}

} // namespace
