// The checker, on files with one mistake each.
#include "authoring/chart/chart.h"
#include "authoring/check/check.h"

#include <string>

#include <gtest/gtest.h>

#include "systems/model.h"
#include "systems/model_end.h"
#include "systems/writer.h"
#include "tests/plugin_folder.h"
#include "tests/systems/random_model.h"

namespace {

// Before each row's lines: a device whose parameter X is line 3, with the bounds 0 and 10, and W, line 4.
const char *const Head = "sys=A\ndev=D\nout=X,int,,0,0,10,,,,,,0\nout=W,int,,0,,,,,,,,0\n";
const char *const Step = "devstack=LIST\nout=CALL,int,,0,,,,,,,,0\nlogic:\ninstring=go\nexecute=10,,0\n";

class Check : public PluginFolder {
protected:
    std::string output;

    ~Check() override { ForgetModel(); }

    int CheckWith(const simhost::CheckOptions &options) {
        ForgetModel(); // as a program that has just started
        testing::internal::CaptureStdout();
        const int status = simhost::CheckFolder(options);
        output = testing::internal::GetCapturedStdout();
        return status;
    }

    void WriteSystem(const std::string &system) {
        write("systems/_systems.txt", "A\n");
        write("systems/A.txt", system);
    }

    int Run(const std::string &system) {
        WriteSystem(system);
        return CheckWith({plugin, ""});
    }

    void ExpectFindings(std::initializer_list<const char *> findings) {
        for (const char *finding : findings)
            EXPECT_NE(output.find(finding), std::string::npos) << finding << " in\n" << output;
    }
};

// Lines behind Head, and the one finding in them.
const struct {
    const char *lines, *finding;
} Mistakes[] = {
    {"logic:\n[A.D.Y]==[1]\ncalc=[1]\n", "6: error: there is no parameter A.D.Y"},
    {"out=Y,int,,0,,,,,,,,0\nlogic:\ninstring=go\nexecute=0,Gone,0\nout=Z,int,,0,,,,,,,,0\n"
     "logic:\ninstring=on\n[A.D.Y]==[1]\nexecute=0,On,0\n",
     "5: warning: A.D.Y is compared with, but never changes"},
    {"logic:\n[12a]==[1]\ncalc=[1]\n", "6: error: neither a number nor a link"},
    {"out=Z,int,,zero,,,,,,,,0\n", "5: error: initial value \"zero\" is no number"},
    {"logic:\ninstring=go\nexecute=0,it is <A.D.Q>,0\n", "7: error: there is no parameter A.D.Q"},
    {"logic:\ninstring=go\nexecute=1,a#it is <&A.D.X.Y>,0\n", "7: error: what follows the third name"},
    {"logic:\ninstring=go\nexecute=1,under < 5#over > 5,0\n", "7: error: \"<\" without \">\""},
    {"logic:\ninstring=go\nexecute=0,hello [WHO],0\n", "7: warning: unknown placeholder"},
    {"dev=E=F\nout=Z,int,,0,,,,,,,,0\n", "5: error: the name of a device must not contain \"=\""},
    {"out=X,int,,0,,,,,,,,0\n", "5: error: a second parameter with this name"},
    {"logic:\n[A.D.X]>[5]\n[A.D.X]<[3]\ncalc=[1]\n", "5: error: this block can never fire"},
    {"logic:\n[A.D.X]==[11]\ncalc=[1]\n", "5: error: this block can never fire"},
    {"logic:\ncalc=[1]\nlogic:\n[A.D.X]==[1]\ncalc=[2]\n", "7: error: this block is never reached"},
    {"logic:\n[A.D.X]>[2]\ncalc=[1]\nlogic:\n[A.D.X]>=[3]\ncalc=[2]\n",
     "8: error: this block is never reached"},
    {"logic:\n||\n[A.D.X]==[1]\ncalc=[2]\n", "7: warning: the first comparison after \"||\" always holds"},
    {"logic:\nexecute=0,hello,0\n", "5: warning: this block's actions are repeated in every frame"},
    {"devstack=LIST\nout=CALL,int,,0,,,,,,,,0\n", "6: error: this step is never done"},
    {"devstack=LIST\nout=CALL,int,,0,,,,,,,,0\nlogic:\ninstring=go\n", "6: error: this step is never done"},
    {"devstack=LIST\nout=CALL,int,,0,,,,,,,,0\nlogic:\nexecute=10,,0\n",
     "6: warning: this sequence starts by itself"},
    {"devstack=LIST\nout=CALL,int,,0,,,,,,,,0\nlogic:\ninstring=go\nexecute=1,Any words?,0\n"
     "out=WORDS,int,,0,,,,,,,,0\nlogic:\ninstring=any\nexecute=10,,0\n",
     "12: warning: letting go of the button"},
    {"logic:\ninstring=Gear up!\ncalc=[1]\n", "6: error: this phrase is never heard"},
    {"logic:\ninstring=?!\ncalc=[1]\n", "6: error: nothing is left of this phrase"},
    {"logic:\n[A.D.X]==[1]\nexecute=12,set,5\n", "7: error: offered to the pilot, but no block waits"},
    {"logic:\ncalc=[A.D.X]\ngraf=0,0\ngraf=5,1\ngraf=4,2\n", "9: error: graph points must be"},
    {"logic:\ngraf=0,0\ngraf=5,1\n", "6: error: a graph without a \"calc=\""},
    {"logic:\ncalc=[1] +[2]\n", "6: error: no operator: \" +\""},
    {"logic:\ncalc=[CBLOCK1]\ncalc=[1]\n", "6: error: CBLOCK1 is no calculation above"},
    {"logic:\ngarbage\n", "6: error: neither a keyword nor a comparison"},
    {"dev=E\nlogic:\nout=Z,int,,0,,,,,,,,0\n", "6: warning: ignored"},
    {"logic:\ninstring=go\nexecute=77,,0\n", "7: error: there is no action 77"},
    {"out=Z,int,,0,,,some/dataref,maybe,,,,0\n", "5: error: the mode of a dataref"},
    {"out=Z,int,,0,,,sim/cockpit2/electrical/battery_voltage_indicated_volts[16],exist,,,,0\n",
     "5: error: the index of an array"},
    {"logic:\ninstring=go\nexecute=5,sim/none/such,0\n", "7: warning: held, and nothing lets go"},
    {"Logic:\n[A.D.X]==[1]\ncalc=[1]\n", "5: error: keys are written in lower case"},
    {"logic:\n\t[A.D.X]==[1]\ncalc=[1]\n", "6: error: a tab at the beginning"},
    {"logic:\n[A.D.X]==[1,5]\ncalc=[1]\n", "6: error: what follows the comma"},
    {"logic:\ninstring=go\nexecute=1,well, then,0\n", "7: error: an action has three fields"},
    {"logic:\n[A.D.X]==[1;2.5]\ncalc=[1]\n", "6: error: a list holds whole numbers"},
    {"logic:\ncalc=[A.D.X]+[3\n", "6: error: each operand stands between"},
    {"logic:\n[A.D.X.Y]==[1]\ncalc=[1]\n", "6: error: what follows the third name"},
    {"logic:\n[A.d.X]==[1]\ncalc=[1]\n", "6: error: there is no parameter A.d.X; is A.D.X meant?"},
    {"out=Z,int,,0,,,,,,,left, right,1\n", "5: error: more than twelve fields"},
    {"out=Z,float,,3,,,,,,,,0\n", "5: error: the type is"},
    {"logic:\ninstring=go\nexecute=1,f\xFCr Sie,0\n", "7: error: letters that are not UTF-8"},
    {"logic:\ninstring=set\n||\ninstring=checked\n[A.D.X]==[1]\ncalc=[1]\n",
     "9: warning: joined by the \"||\" above"},
    {"logic:\n[A.D.X]>[5]\nexecute=0,positive rate,0\n",
     "5: warning: said again in every frame while this holds"},
    {"logic:\ninstring=go\nexecute=0,[SIR]; yes [SIR],0\n", "7: error: only the first [SIR] is replaced"},
    {"logic:\ninstring=go\nexecute=0,from [TORW] to [LDRW],0\n",
     "7: error: beside [TORW] a [LDRW] is not replaced"},
    {"logic:\ninstring=abort\ncalc=[1]\n", "6: error: \"abort\" breaks everything off by itself"},
    {"logic:\n[A.D.Z]==[3]\ncalc=[1]\nout=Z,double,,0,,,,,,,,0\nlogic:\ncalc=[A.D.X]/[3]\n",
     "6: warning: A.D.Z has fractions, from a division"},
    {"logic:\ninstring=go\nexecute=3,,0\nexecute=12,go,5\nexecute=0,stopped,0\n",
     "9: error: never done: the break above drops"},
    {"out=Z,int,,0,,,,,sim/time/paused,exist,,0\n", "5: error: the dataref cannot be written"},
    {"logic:\ninstring=go\nexecute=8,sim/time/paused,1\n", "7: error: the dataref cannot be written"},
    {"logic:\n[SIM.FLIGHT.TIME]>[1]\n[SIM.FLIGHT.HEIGHT]>[SIM.FLIGHT.TIME]\ncalc=[1]\n",
     "6: error: A needs a system SIM, which is not among the files, with SIM.FLIGHT.HEIGHT, SIM.FLIGHT.TIME"},
    {"devstack=LIST\nout=CALL,int,,0,,,,,,,,0\nlogic:\ninstring=go\ncalc=[0]\n",
     "6: error: this step is never done"},
    {"logic:\ncalc=[A.D.Z]\nout=Z,int,,0,,,,,,,,0\nlogic:\ncalc=[A.D.W]\n",
     "4: note: A.D.W depends on itself through A.D.Z"},
};

TEST_F(Check, FindsEachMistakeAndNothingElse) {
    for (const auto &[lines, wanted] : Mistakes) {
        const std::string finding = wanted;
        EXPECT_EQ(Run(Head + std::string(lines)), finding.find("note:") == std::string::npos ? 1 : 0)
            << finding;
        ExpectFindings({("systems/A.txt:" + finding).c_str()});
        size_t findings = 0;
        for (size_t place = 0; (place = output.find("systems/A.txt:", place)) != std::string::npos; place++)
            findings++;
        EXPECT_EQ(findings, 1U) << output;
    }
}

// The rows above would pass with a checker that finds fault with everything.
TEST_F(Check, LeavesGoodFilesAlone) {
    EXPECT_EQ(
        Run("draw=1\n" + std::string(Head)
            + std::string(
                "logic:\n[A.D.X]>=[1]\n[A.D.X]<=[3]\ncalc=[A.D.X]*[2]\ngraf=0,0\ngraf=6,1\n"
                "logic:\n[A.D.X]==[0;5]\ncalc=-[-5]\nlogic:\n[A.D.X]==[3.5]\ncalc=[1]\n"
                "out=Z,double,,0,0,1,,,,,,0\nlogic:\ncalc=[A.D.X]/[3]\n" // is 1 exactly, at its limit
                "out=FULL,int,,0,,,,,,,,0\nlogic:\n[A.D.Z]==[1]\ncalc=[1]\n")
            + Step + "out=ANSWER,int,,0,,,,,,,,0\nlogic:\ninstring=set\n||\ninstring=checked\n&&\n"
            + "[A.D.X]==[1]\nexecute=1,<A.D.X> [SIR],0\nlogic:\ninstring=set\nexecute=1,look again,0\n"),
        0)
        << output;
    EXPECT_EQ(output.find("A.txt"), std::string::npos) << output;
    EXPECT_FALSE(std::filesystem::exists(plugin + "Log.txt"));
}

// What the editor writes is found no worse than what its author wrote, signs and operators included.
TEST_F(Check, WhatIsSavedGivesNoNewFindings) {
    const auto findings = [&] {
        DeleteSystems();
        testing::internal::CaptureStdout();
        simhost::CheckFolder({plugin, ""});
        std::istringstream lines(testing::internal::GetCapturedStdout());
        std::set<std::string> texts; // without files and numbers of lines
        for (std::string line; std::getline(lines, line);) {
            const size_t place = line.find(": error: ");
            const bool isSymptom = line.find("this step is never done") != std::string::npos;
            if (place == std::string::npos || isSymptom) continue; // which is told where nothing else is
            std::string text = line.substr(place, line.find(" (", place) - place);
            std::erase_if(text, [](char c) { return c >= '0' && c <= '9'; });
            texts.insert(text);
        }
        return texts;
    };
    for (unsigned seed = 1; seed <= 25 && !HasFailure(); seed++) {
        SCOPED_TRACE(seed);
        std::filesystem::remove_all(plugin + "systems");
        write("sys.txt", RandomModel(seed).Text());
        const auto before = findings();
        ASSERT_TRUE(SaveSysToTxtFile());
        for (const std::string &text : findings()) EXPECT_TRUE(before.contains(text)) << text;
    }
}

TEST_F(Check, FilesThatOnlyCapitalsTellApart) {
    write("systems/_systems.txt", "A\na\n");
    write("systems/A.txt", "sys=A\n");
    write("systems/a.txt", "sys=a\n");
    EXPECT_EQ(CheckWith({plugin, ""}), 1);
    ExpectFindings({"systems/_systems.txt:2: error: only capitals tell a.txt from A.txt",
                    "systems/a.txt:1: error: the system A (systems/A.txt:1) has this name but for capitals"});
}

TEST_F(Check, TextsThatTheReaderTakesForStructure) {
    EXPECT_EQ(Run(Head + std::string("logic:\ninstring=go\nexecute=0,shout=loud,0\n")), 1);
    ExpectFindings({"A.txt:7: error: taken for a new parameter"});
}

TEST_F(Check, TwoDevicesClaimAPhrase) {
    EXPECT_EQ(
        Run(Head + std::string(Step) + "dev=OTHER\nout=Z,int,,0,,,,,,,,0\nlogic:\ninstring=go\ncalc=[1]\n"),
        1);
    ExpectFindings({"A.txt:13: warning: \"go\" is used up by A.LIST.CALL (systems/A.txt:8)"});
}

TEST_F(Check, TheListNamesTheFiles) {
    write("systems/B.txt", "sys=B\n");
    EXPECT_EQ(Run(Head), 1);
    ExpectFindings({"systems/B.txt: warning: not in _systems.txt"});
}

// A name of a file must not hide what is found in it, nor may one file answer for another.
TEST_F(Check, EachFileAnswersForItself) {
    const std::string name = "base line check";
    write("systems/" + name + ".txt", "sys=B\ndev=D\nout=X,int,,none,,,,,,,,0\nout=Y,int,,0,,,,,,,,0\n");
    std::string wide;
    for (const char letter : std::string("sys=C\n[a]>[b]\n")) wide.append({letter, '\0'});
    write("systems/WIDE.txt", wide);
    write("systems/MARK.txt", "\xEF\xBB\xBFsys=M\ndev=D\nout=X,int,,0,,,,,,,,0\n");
    write("systems/A.txt", Head + std::string("logic:\n[A.D.X]>[1]\ncalc=[1]\n"));
    write("systems/_systems.txt", "A\n" + name + "\nWIDE\nMARK\n");
    EXPECT_EQ(CheckWith({plugin, ""}), 1);
    ExpectFindings({"systems/base line check.txt:3: error: initial value \"none\" is no number",
                    "systems/WIDE.txt: error: this is no plain text",
                    "systems/MARK.txt:1: error: an invisible mark", "3 errors, 0 warnings"});
}

// In flight the log leaves lines of a kind out.
TEST_F(Check, NoMistakeIsLeftOut) {
    std::string lines = "logic:\n";
    for (int line = 0; line < 60; line++) lines += "graf=x,1\n";
    EXPECT_EQ(Run(Head + lines), 1);
    ExpectFindings({"60 errors"});
}

TEST_F(Check, SettingsAndAnAircraftThatIsNotServed) {
    write("data/settings_mac.txt", "gender=w\nvolume=5\nrate=x\nmyuser=Bo\nsir=Sir\n");
    write("data/settings_win.txt", "");
    write("data/voicelist_mac.txt", "a voice\n");
    std::ofstream(aircraft + "glider.acf") << "I\n1200 Version\nACF\n\nP acf/_descrip A glider\n";
    EXPECT_EQ(Run(Head), 1);
    ExpectFindings({"data/settings_mac.txt:2: warning: volume and rate are from 10 to 100: 5",
                    ":3: error: rate= \"x\" is no number - line dropped: rate=x",
                    ":4: warning: taken for \"user=\": myuser=Bo",
                    ":5: warning: there is no such setting - line dropped: sir=Sir",
                    "glider.acf: error: she does not serve this aircraft", "2 errors, 3 warnings"});
    std::ofstream(aircraft + "glider.acf") << "P acf/_descrip Boeing 737-800X\n";
    EXPECT_EQ(Run(Head), 1);
    ExpectFindings({"the file of this aircraft must be named b738_4k.acf"});
}

TEST_F(Check, TheListOfAircraft) {
    EXPECT_EQ(Run(Head), 0);
    ExpectFindings({"data/aircraft.txt: note: not here, nor an aircraft around"});
    std::ofstream(aircraft + "glider.acf") << "P acf/_descrip A glider\nP _obja/count many\n";
    write("data/aircraft.txt", "aircraft=A boat\nfile=boat.acf\naircraft=A g\nfile=glider.acf\nsetup=acf\n"
                               "aircraft=A glider\nfile=glider.acf\nwings=2\n");
    EXPECT_EQ(Run(Head), 1);
    ExpectFindings({":1: warning: there is no boat.acf in the aircraft's folder",
                    ":3: error: the figure cannot be put into glider.acf: line 2 states no number",
                    ":6: warning: never used: line 3 serves", ":8: error: the keys are",
                    "2 errors, 2 warnings"});
    write("data/aircraft.txt", "# nothing yet\n");
    EXPECT_EQ(Run(Head), 1);
    ExpectFindings({"data/aircraft.txt: error: it describes no aircraft"});
}

TEST_F(Check, PositionsByTheirNamesAndChannels) {
    std::string channels = "0,spine\n1,neck\n";
    for (int i = 2; i < 47; i++)
        channels += std::to_string(i) + (i == 46 ? ",xyz\n" : ",c" + std::to_string(i) + "\n");
    write("data/obj/fennic.txt", channels);
    write("custom/positions-w/rest.txt",
          "0,spine,1,2,3\n1,nose,1,2,3\n47,far,1,2,3\n0,spine,1,2,x\n2,c2,0,5,1,0,2\n");
    write("systems/_places.txt", "flap = rest\nwing flap lever = none\ngear = roof\nlights\n");
    EXPECT_EQ(Run(Head + std::string("logic:\ninstring=go\nexecute=2,reach,1\n")), 1);
    ExpectFindings({"systems/_places.txt:2: warning: never used: line 1 has these words",
                    "systems/_places.txt:3: error: there is no position \"roof\"",
                    "systems/_places.txt:4: error: neither a comment nor words = position",
                    "custom/positions-w/rest.txt:2: warning: channel 1 is neck, not nose",
                    "custom/positions-w/rest.txt:3: error: no channel 47",
                    "custom/positions-w/rest.txt:4: error: z \"x\" is no number",
                    "custom/positions-w/rest.txt:4: warning: a second line for channel spine",
                    "custom/positions-w/rest.txt:5: error: three numbers, each with a point",
                    "systems/A.txt:7: error: there is no position reach in custom/positions-w/"});
}

TEST_F(Check, NamesOfTheSimulatorByItsLists) {
    const std::string lists = root + "Resources/plugins/";
    std::filesystem::create_directories(lists);
    std::ofstream(lists + "DataRefs.txt") << "2 1200 Mon\n\nsim/a/good\tint[4]\tn\tunit\ttext\n";
    std::ofstream(lists + "Commands.txt") << "sim/a/go  Goes.\n";
    WriteSystem(Head
                + std::string("out=P,int,,0,,,sim/a/good[4],exist,,,,0\n"
                              "out=Q,int,,0,,,,,sim/a/good[1],exist,,0\n"
                              "out=R,int,,0,,,sim/a/bad,exist,,,,0\n"
                              "logic:\ninstring=go\nexecute=4,sim/a/go,0\nexecute=4,sim/a/gone,0\n"));
    EXPECT_EQ(CheckWith({aircraft, root}), 1);
    ExpectFindings({"A.txt:5: error: the array has 4 elements",
                    "A.txt:6: error: the dataref cannot be written",
                    "A.txt:7: error: the simulator has no dataref sim/a/bad",
                    "A.txt:11: error: the simulator has no command sim/a/gone", "4 errors, 0 warnings"});
}

TEST_F(Check, WordsThatNobodyCanSay) {
    std::filesystem::create_directories(root + "speech/model");
    std::ofstream(root + "speech/model/cmudict-en-us.dict") << "gear G IH R\nup AH P\nup(2) AH P\n";
    std::ofstream(root + "speech/pronunciations.txt") << "# words\napu\tEY P IY Y UW\n";
    WriteSystem(Head
                + std::string("logic:\ninstring=gear up 15\ninstring=apu gearr\n"
                              "instring=gearr \xc2\xabtwo\nexecute=0,yes,0\n"));
    CheckWith({plugin, "", root + "speech"});
    ExpectFindings({"A.txt:7: note: the speech server guesses how \"gearr\" is said",
                    "A.txt:8: warning: the speech server cannot listen for \"\xc2\xabtwo\""});
    EXPECT_EQ(output.find("\"apu\""), std::string::npos) << output;
    EXPECT_EQ(output.find("\"15\""), std::string::npos) << output;
}

// The descriptions that Graphviz is given; the arrows are what can be wrong in them.
class Chart : public Check {
protected:
    int Draw(const std::string &device) {
        WriteSystem(Head + std::string(Step)
                    + "out=LOOK,int,,0,,,,,,,,0\nlogic:\n[A.D.X]<[5]\n[A.D.W]<[5]\nexecute=1,a & b,0\n"
                      "logic:\nexecute=3,,0\n");
        testing::internal::CaptureStdout();
        const int status = simhost::ChartFolder({plugin, device, true});
        output = testing::internal::GetCapturedStdout();
        return status;
    }
};

TEST_F(Chart, OfTheSystems) {
    EXPECT_EQ(Draw(""), 0);
    ExpectFindings({"d0_0 -> d0_1 [label=2];"});
}

TEST_F(Chart, OfASequence) {
    EXPECT_EQ(Draw("LIST"), 0);
    ExpectFindings({"the pilot says \"go\"", "A.D.X &lt; 5", "says \"a &amp; b\"", "s0 -> s1;", "s1 -> done;",
                    "s1:b1 -> broken"});
}

// A pipe's worth of text and more, that nobody reads.
TEST_F(Chart, WithoutGraphviz) {
    std::string steps = Step;
    for (int step = 0; step < 1000; step++)
        steps += "out=S" + std::to_string(step) + ",int,,0,,,,,,,,0\nlogic:\nexecute=1,"
                 + std::string(100, 'a') + ",0\n";
    WriteSystem(Head + steps);
    setenv("PATH", "/nowhere", 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(simhost::ChartFolder({plugin, "LIST", false}), 1);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Graphviz's program"), std::string::npos);
}

TEST_F(Chart, OfNoSequence) {
    EXPECT_EQ(Draw("D"), 2);
}

} // namespace
