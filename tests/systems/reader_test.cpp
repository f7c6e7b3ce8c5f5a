// Systems files as authors write them, with every kind of mistake: each is named in the log by file and
// line, and everything around it stands.
#include "systems/body_parser.h"
#include "systems/model_end.h"
#include "tests/systems/model_folder.h"
#include "voice/phrases.h"

namespace {

class Reader : public ModelFolder {};

// Datarefs are flown in flights/systems_datarefs.lua, and all that is written is in the writer's test.
TEST_F(Reader, FieldsOfAParameter) {
    Load("draw=1\nsys=A\ndev=B\nout=P,integer,kg,5.000000,-1.5,99,,,,,free text,1\nout=R,execute,,7,,,,,,,,\n"
         "out=S,word,,not read,,,,,,,,x\nout=VERSION,int,,12,,,,,,,,0,more,fields\n");
    const out_parameter_struct &p = Parameter("A.B.P");
    EXPECT_TRUE(p.type == TypeInteger && p.intValue == 5 && p.value == 5 && p.minLimit == -1.5);
    EXPECT_EQ(p.unit + ", " + p.text, "kg, free text");
    EXPECT_TRUE(p.hasMin && p.hasMax && p.saveOnExit);
    EXPECT_FALSE(Parameter("A.B.R").hasMin || Parameter("A.B.R").saveOnExit);
    EXPECT_EQ(Parameter("A.B.R").intValue, 7);
    EXPECT_EQ(Parameter("A.B.S").value, 0);
    const auto lines = simhost::TakeLogLines();
    EXPECT_EQ(lines.size(), 1U);
    EXPECT_EQ(CountLines(lines, {"Fennic Systems Version: 12"}), 1);
}

TEST_F(Reader, EveryMalformedLineIsNamedAndTheRestStands) {
    const std::string good = "out=GOOD,int,,1,,,,,,,,0\nlogic:\n[1]==[1]\ncalc=[S.D.GOOD]+[1]\n";
    const struct {
        const char *line, *message;
    } rows[] = {
        {"out=X,int,,1,,,,,", "ten to twelve fields"},
        {"out=", "ten to twelve fields"},
        {"out=X,int,,one,,,,,,,,0", "initial value \"one\" is no number"},
        {"out=X,double,,,,,,,,,,0", "initial value \"\" is no number"},
        {"out=X,int,,1,low,,,,,,,0", "minimum \"low\" is no number"},
        {"out=X,int,,1,0,1.2.3,,,,,,0", "maximum \"1.2.3\" is no number"},
        {"graf=1", "y \"\" is no number"},
        {"graf=x,1", "x \"x\" is no number"},
        {"calc=[1]+[1-2]", "operand \"1-2\" is no number"},
        {"calc=[CBLOCKa]", "operand \"CBLOCKa\" is no number"},
        {"calc=-", "constant \"-\" is no number"},
        {"execute=1,text", "three fields"},
        {"execute=say,text,0", "type \"say\" is no number"},
        {"execute=1,text,soon", "value \"soon\" is no number"},
        {"[-]==[1]", "left side \"-\" is no number"},
        {"[1]>[1.1.1]", "right side \"1.1.1\" is no number"},
        {"hello", "neither a keyword nor a comparison"},
        {"logic: ", "neither a keyword nor a comparison"},
    };
    for (const auto &row : rows) {
        DeleteSystems();
        Load("sys=S\n\ndev=D\n" + good + row.line + "\ncalc=[S.D.LAST]\nlogic:\n"
             + "out=LAST,int,,3,,,,,,,,0\n");
        const auto lines = simhost::TakeLogLines();
        EXPECT_EQ(lines.size(), 1U) << row.line;
        EXPECT_EQ(CountLines(lines, {"sys.txt line 8: ", row.message, std::string("dropped: ") + row.line}),
                  1)
            << row.line << " gave " << (lines.empty() ? "nothing" : lines[0]);
        EXPECT_EQ(Value("S.D.LAST"), 3) << row.line;
        EXPECT_EQ(systems_vector[0].devices[0].outs.size(), 2U) << row.line;
        const std::vector<logicblock_struct> &logic = Parameter("S.D.GOOD").logic;
        const bool isBodyLine = std::string(row.line).rfind("out=", 0) != 0;
        EXPECT_EQ(logic.size(), isBodyLine ? 2U : 1U) << row.line;
        EXPECT_EQ(logic[0].compares.size(), 1U) << row.line;
        EXPECT_EQ(logic[0].calcs.size(), isBodyLine ? 2U : 1U)
            << "the body of a dropped parameter goes with it";
        Frame();
    }
}

TEST_F(Reader, StructureWithoutItsParentIsDropped) {
    Load("dev=EARLY\nout=EARLY,int,,1,,,,,,,,0\nlogic:\nsys=A\nout=E2,int,,1,,,,,,,,0\ndev=D\n"
         "out=P,int,,1,,,,,,,,0\n[1]==[1]\nlogic:\ncalc=[2]\n"
         "sys=B\nout=Q,int,,1,,,,,,,,0\ncalc=[1]\n");
    const auto lines = simhost::TakeLogLines();
    for (const char *place : {"line 1:", "line 2:", "line 5:", "line 8:", "line 12:"})
        EXPECT_EQ(CountLines(lines, {"sys.txt", place}), 1) << place;
    EXPECT_EQ(lines.size(), 5U);
    EXPECT_EQ(Parameter("A.D.P").logic.size(), 1U);
    EXPECT_TRUE(systems_vector[1].devices.empty());
}

TEST_F(Reader, KeysAreFoundAnywhereInALine) {
    Load("the sys=A=1\nmy devstack=D\nmore out=P,int,,1,,,,,,,,0\nlogic:\ninstring=check out=now\n"
         "say execute=0,dev=E,0\n"
         + Out("Q"));
    ASSERT_EQ(systems_vector.size(), 1U);
    EXPECT_EQ(systems_vector[0].name, "the A=1");
    ASSERT_EQ(systems_vector[0].devices.size(), 2U);
    EXPECT_EQ(systems_vector[0].devices[0].name, "my D");
    EXPECT_TRUE(systems_vector[0].devices[0].serialStack);
    EXPECT_EQ(systems_vector[0].devices[0].outs.size(), 1U) << "\"check out=now\" is a malformed parameter";
    EXPECT_EQ(systems_vector[0].devices[1].name, "say execute=0,E,0");
    EXPECT_EQ(systems_vector[0].devices[1].outs.size(), 1U);
}

TEST_F(Reader, TheListOfFilesGoesFirst) {
    write("sys.txt", "sys=SINGLE\n");
    write("systems/_systems.txt", "B\r\n\r\nMISSING\r\n../../sys\r\nA\r\n");
    write("systems/A.txt", "sys=A\r\ndev=D\r\n" + Out("P") + "logic:\r\nbad\r\n");
    write("systems/B.txt", "sys=B\ndev=D\n" + Out("P") + "logic:\ncalc=[A.D.P]");
    simhost::TakeLogLines();
    CreateSystemsFromFile();
    ASSERT_EQ(systems_vector.size(), 2U);
    EXPECT_EQ(systems_vector[0].name, "B");
    EXPECT_EQ(isSeparateSysSaving, 1);
    const auto lines = simhost::TakeLogLines();
    EXPECT_EQ(CountLines(lines, {"systems/_systems.txt line 4:", "../../sys"}), 1);
    EXPECT_EQ(CountLines(lines, {"systems/A.txt line 5:", "bad"}), 1);
    EXPECT_EQ(lines.size(), 2U);
    DeleteSystems();
    std::filesystem::remove(plugin + "systems/_systems.txt");
    CreateSystemsFromFile();
    EXPECT_EQ(isSeparateSysSaving, 0);
    DeleteSystems();
    std::filesystem::remove(plugin + "sys.txt");
    simhost::TakeLogLines();
    CreateSystemsFromFile();
    EXPECT_EQ(isSeparateSysSaving, -1);
    EXPECT_EQ(CountNewLines({"System files not found at " + plugin}), 1);
    Frame();
}

TEST_F(Reader, PhrasesAreOfferedUnderTheirDevice) {
    const std::string steps = Out("ONE") + "logic:\ninstring=go\n||\ninstring=start\n" + Out("TWO")
                              + "logic:\ninstring=next\n||\ninstring=go\n";
    Load("sys=CHECKLIST\ndevstack=C1\n" + steps + "sys=PROCEDURE\ndevstack=P1\n" + steps);
    ASSERT_EQ(commandsMenuVector.size(), 2U);
    EXPECT_EQ(commandsMenuVector[0].title, "C1");
    EXPECT_EQ(commandsMenuVector[0].phrases, (std::vector<std::string>{"go", "start"}));
    EXPECT_EQ(commandsMenuVector[1].phrases, (std::vector<std::string>{"go", "start", "next"}));
    EXPECT_EQ(contextString, ",GO,START,NEXT");
}

} // namespace
