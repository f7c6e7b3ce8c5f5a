// Placeholders of spoken texts: every text an author writes must come to an end and be said.
#include <string>

#include "frame/settings.h"
#include "tests/systems/model_folder.h"
#include "voice/executer.h"

namespace {

class SpokenText : public ModelFolder {
protected:
    SpokenText() {
        Load("sys=FUEL\ndev=TANK\n" + Out("QTY", "120.7") + Out("NEG", "-4.9") + Out("BIG", "9999999999")
             + "out=NAN,double,,0,,,,,,,,0\nlogic:\ncalc=[FUEL.TANK.HUGE]-[FUEL.TANK.HUGE]\n"
             + Out("HUGE", std::string(308, '9')));
        globalName = "Nora";
        globalSir = "Sir";
    }
};

TEST_F(SpokenText, Links) {
    const struct {
        const char *text, *expected;
    } rows[] = {
        {"<FUEL.TANK.QTY> gallons", "120 gallons"},
        {"<&FUEL.TANK.QTY>.", "1 2 0 ."},
        {"<FU&EL.TANK.QTY>", "120"}, // spelled only when the mark stands first
        {"<FUEL.TANK.NEG>/<&FUEL.TANK.NEG>", "-4/- 4 "},
        {"<FUEL.TANK.BIG>", "2147483647"},
        {"<FUEL.TANK.QTY><FUEL.TANK.QTY>", "120120"},
        {"<FUEL.TANK.NONE>, <&NO>", "UNKNOWN, UNKNOWN"},
        {"<>", "UNKNOWN"},
        {"<&>", "UNKNOWN"},
        {"<FUEL.TANK>", "UNKNOWN"},
        {"<FUEL.TANK.QTY.MORE>", "120"},
        {"a < b", "a < b"},
        {"a > b", "a > b"},
        {"><", "><"},
        {"> <FUEL.TANK.QTY>", "> 120"},
        {"<a<FUEL.TANK.QTY>>", "UNKNOWN>"},
        {"<FUEL.TANK.QTY> <", "120 <"},
        {"", ""},
    };
    for (const auto &row : rows) EXPECT_EQ(VarToString(row.text), row.expected) << row.text;
    Parameter("FUEL.TANK.NEG").deleted = true;
    EXPECT_EQ(VarToString("<FUEL.TANK.NEG>"), "-4") << "a deleted parameter is readable until the next load";
}

TEST_F(SpokenText, ReplacementsThatHoldMarksComeToAnEnd) {
    const struct {
        const char *user, *text, *expected;
    } rows[] = {
        {"<", "[USER] and <FUEL.TANK.QTY>", "UNKNOWN"},
        {"<FUEL.TANK.QTY>", "Hello [USER]", "Hello 120"},
        {"[USER]", "Hello [USER]", "Hello [USER]"},
        {"<[SIR]>", "[USER]", "UNKNOWN"},
        {"x>", "[USER]<", "x><"},
        {"[SIR]", "[NAME] [USER] [SIR] [SIR]", "Nora Sir [SIR] [SIR]"},
    };
    for (const auto &row : rows) {
        globalUser = row.user;
        EXPECT_EQ(VarToString(row.text), row.expected) << row.user;
    }
}

} // namespace
