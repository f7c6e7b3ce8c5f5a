// What the editor saves: read back it is the same model, and saved again the same bytes.
#include "systems/writer.h"

#include "frame/aircraft.h"
#include "frame/datarefs.h"
#include "systems/editor/blocks.h"
#include "systems/editor/model.h"
#include "systems/editor/undo.h"
#include "systems/kept_lines.h"
#include "tests/systems/model_folder.h"
#include "tests/systems/random_model.h"
#include "util/log.h"

namespace {

class Writer : public ModelFolder {
protected:
    Tree Files() const { return ReadTree(plugin + "systems"); }

    static void Forget() {
        ModelChanges();
        systems_vector.clear();
        mapSystemName.clear();
        UnregisterDrfs();
        DRFcounter = 0;
    }
};

TEST_F(Writer, TheFormOfEachLine) {
    isVAdraw = 1;
    Load(
        "sys=A\ndevstack=D\nout=P,double,kg,1.5,-1,,t/in[2],exist,t/out,new,say; this,1\nlogic:\n||\n[A.D.P]>[1]\n"
        "[A.NO.NO]==[3]\n||\n[A.D.P]!=[1;2]\ninstring=Gear up!\ncalc=[A.D.P]*[2]flr[0]\ncalc=[CBLOCK0]\ncalc=8\n"
        "execute=1,Well; then,0\nexecute=7,,2.5\ngraf=0,1\ngraf=2.5,-3\nlogic:\n[2]==[4;5]\n"
        "out=Q,int,,0,,,t/x,exist,,,\n");
    Frame();
    Parameter("A.D.P").value = 77; // live, not to be written
    ASSERT_TRUE(SaveSysToTxtFile());
    EXPECT_EQ(read("systems/_systems.txt"), "A\r\n");
    EXPECT_EQ(
        read("systems/A.txt"),
        "draw=1\r\nsys=A\r\ndevstack=D\r\n"
        "out=P,double,kg,1.500000,-1.000000,,t/in[2],exist,t/out,new,say; this,1\r\nlogic:\r\n||\r\n"
        "[A.D.P]>[1.000000]\r\n||\r\n[A.NO.NO]==[3.000000]\r\n||\r\n[A.D.P]!=[1;2]\r\n||\r\n"
        "instring=Gear up!\r\ncalc=[A.D.P]*[2.000000]flr[0.000000]\r\ncalc=[CBLOCK0]\r\ncalc=8.000000\r\n"
        "execute=1,Well; then,0.000000\r\nexecute=7,,2.500000\r\ngraf=0.000000,1.000000\r\n"
        "graf=2.500000,-3.000000\r\nlogic:\r\n[2.000000]==[4;5]\r\n"
        "out=Q,integer,,0.000000,,,t/x,exist,,,,0\r\n");
}

TEST_F(Writer, WhatIsDeletedIsLeftOut) {
    Load("sys=A\ndev=D\n" + Out("P") + Out("GONE") + "dev=GONE\n" + Out("P") + "sys=GONE\nsys=B\n");
    Parameter("A.D.GONE").deleted = true;
    systems_vector[0].devices[1].deleted = true;
    systems_vector[1].deleted = true;
    ASSERT_TRUE(SaveSysToTxtFile());
    EXPECT_EQ(read("systems/_systems.txt"), "A\r\nB\r\n");
    EXPECT_EQ(read("systems/A.txt").find("GONE"), std::string::npos);
    EXPECT_FALSE(exists("systems/GONE.txt"));
    EXPECT_EQ(read("systems/B.txt"), "sys=B\r\n");
}

TEST_F(Writer, AModelThatCouldNotBeReadWholeIsNotWritten) {
    write("systems/_systems.txt", "A\nWIDE\n");
    write("systems/A.txt", "sys=A\n");
    write("systems/WIDE.txt", std::string("s\0y\0s\0", 6));
    const Tree before = Files();
    CreateSystemsFromFile();
    EXPECT_FALSE(SaveSysToTxtFile());
    EXPECT_EQ(saveFailure, "a systems file could not be read at the start");
    EXPECT_EQ(Files(), before);
}

TEST_F(Writer, NoSystemIsWrittenOutsideTheFolderOrOverTheLists) {
    write("systems/_save.txt", "A.D.P=1\r\n");
    for (const std::string name : {"../escape", "_systems", "_Save"}) {
        Forget();
        Load("sys=A\nsys=" + name + "\n");
        simhost::TakeLogLines();
        EXPECT_FALSE(SaveSysToTxtFile());
        EXPECT_EQ(saveFailure, "no file can have the name of the system " + name + "; rename it");
        EXPECT_EQ(CountNewLines({"systems not saved"}), 1);
    }
    EXPECT_EQ(Files(), (Tree{{"_save.txt", "A.D.P=1\r\n"}}));
    EXPECT_FALSE(exists("escape.txt"));
}

class RandomWriter : public Writer {
protected:
    // A model of one file, loaded, with what the log said.
    std::vector<std::string> LoadAfresh(const std::string &text) {
        Forget();
        for (const auto &entry : std::filesystem::directory_iterator(plugin + "systems"))
            std::filesystem::remove(entry.path());
        for (const ModelDataref &dataref : ModelDatarefs)
            simhost::PublishDataref(dataref.name, dataref.type, dataref.elements);
        ResetLog(); // which leaves out what is too much for a second
        Load(text);
        return simhost::TakeLogLines();
    }

    // Saved, read and saved again.
    void SaveAndLoad() {
        EXPECT_TRUE(SaveSysToTxtFile()) << saveFailure;
        const auto first = Files();
        Forget();
        CreateSystemsFromFile();
        EXPECT_TRUE(SaveSysToTxtFile()) << saveFailure;
        EXPECT_EQ(Files(), first);
    }

    static std::string ValuesOfFiveFrames() {
        answerstimer.clear();
        LastRecognition.clear();
        for (const ModelDataref &dataref : ModelDatarefs)
            for (int i = 0; i < dataref.elements; i++) simhost::SetNumber(dataref.name, 0, i);
        for (int i = 0; i < 5; i++) {
            executeFlow.clear();
            Frame();
        }
        RefreshRecords();
        std::string all;
        for (const system_class &system : systems_vector)
            for (const device_struct &device : system.devices)
                for (const out_parameter_struct &parameter : device.outs)
                    all +=
                        std::to_string(parameter.value) + " " + std::to_string(parameter.activeBlock) + ",";
        return all;
    }
};

TEST_F(RandomWriter, ModelsComeBackEqual) {
    for (unsigned seed = 1; seed <= 80 && !HasFailure(); seed++) {
        SCOPED_TRACE(seed);
        const auto lines = LoadAfresh(RandomModel(seed).Text());
        EXPECT_EQ(CountLines(lines, {"line dropped"}), 0) << "all of it is good";
        const std::vector<system_class> before = systems_vector;
        SaveAndLoad();
        const std::string again = ValuesOfFiveFrames();
        ModelChanges();
        systems_vector = before;
        EXPECT_EQ(ValuesOfFiveFrames(), again);
    }
}

// Whatever is in a file: what was understood stays the same, and what was not stays there and is not
// understood again.
TEST_F(RandomWriter, FilesWithMistakesLoseNoLine) {
    int saved = 0, droppedLines = 0;
    for (unsigned seed = 1; seed <= 150 && !HasFailure(); seed++) {
        SCOPED_TRACE(seed);
        RandomModel random(seed);
        const auto lines = LoadAfresh(random.WithMistakes(random.Text()));
        if (!SaveSysToTxtFile()) {
            EXPECT_TRUE(saveFailure.find("no file can have the name") != std::string::npos
                        || systems_vector.empty())
                << saveFailure;
            continue;
        }
        std::string all = "\r\n";
        for (const auto &[name, content] : Files()) all += content;
        for (const std::string &line : lines) {
            const size_t place = line.find("line dropped: ");
            if (place == std::string::npos) continue;
            droppedLines++;
            const std::string dropped = line.substr(place + 14);
            EXPECT_NE(all.find("\r\n" + dropped + "\r\n"), std::string::npos) << dropped;
        }
        SaveAndLoad();
        saved++;
    }
    EXPECT_GT(saved, 100);
    EXPECT_GT(droppedLines, 750);
}

// They keep their order, and what stood between them.
TEST_F(Writer, SystemsThatAreOneFileOnSomeDisksShareIt) {
    Load("sys=A\ndev=D\n" + Out("P") + "sys=B\nsys=a\ndev=E\n" + Out("Q")
         + "sys=\xC3\x84\nsys=\xC3\xA4\nsys=A\n" + "sys=C\n");
    ASSERT_TRUE(SaveSysToTxtFile());
    EXPECT_EQ(read("systems/_systems.txt"), "A\r\nC\r\n");
    const Tree first = Files();
    Forget();
    CreateSystemsFromFile();
    std::string names;
    for (const system_class &system : systems_vector) names += system.name + " ";
    EXPECT_EQ(names, "A B a \xC3\x84 \xC3\xA4 A C ");
    EXPECT_EQ(systems_vector[2].devices[0].outs[0].name, "Q");
    ASSERT_TRUE(SaveSysToTxtFile());
    EXPECT_EQ(Files(), first);
    systems_vector[2].name = systems_vector[5].name =
        "D"; // as an author mends it, which gives B back its file
    systems_vector[4].name = "E";
    ASSERT_TRUE(SaveSysToTxtFile());
    EXPECT_EQ(read("systems/_systems.txt"), "A\r\nB\r\nD\r\nC\r\n");
}

// What was not understood stays where it stood, whatever happens to what stands around it; and does nothing.
TEST_F(Writer, LinesThatWereNotUnderstoodStayInTheirPlaces) {
    isVAdraw = 1;
    const std::string file =
        "draw=1\r\n# by me\r\nout=EARLY,int\r\nsys=A\r\n# of the system\r\ndevstack=D\r\nlogic:\r\n"
        "out=BAD,int,,one,,,,,,,,0\r\nlogic:\r\ncalc=[1.000000]\r\n"
        "out=P,integer,,0.000000,,,,,,,,0\r\n[1]==[1]\r\n||\r\nlogic:\r\n# first\r\n||\r\n"
        "[--5]==[1]\r\n&&\r\ninstring=go\r\n||\r\ngarbage\r\n||\r\ninstring=now\r\ncalc=A.D.P*2\r\n"
        "execute=1,Set thrust, please,0\r\nexecute=1,Well,0,0\r\nexecute=0,Yes,0.000000\r\n"
        "out=WORSE,int\r\nlogic:\r\nexecute=0,Help,0.000000\r\n"
        "out=Q,odd,,9,,,t/x,other,,,left, right,1\r\nlogic:\r\n[A.D.P]==[4;x]\r\n"
        "calc=[A.D.P]+[3\r\ngraf=0,0,5\r\n";
    write("systems/_systems.txt", "gone\r\nA\r\n../up\r\nempty\r\n");
    write("systems/A.txt", file);
    write("systems/empty.txt", "");
    CreateSystemsFromFile();
    ASSERT_TRUE(SaveSysToTxtFile()) << saveFailure;
    EXPECT_EQ(read("systems/A.txt"), file);
    EXPECT_EQ(read("systems/_systems.txt"), "gone\r\nA\r\n../up\r\nempty\r\n");
    EXPECT_EQ(systems_vector[0].devices[0].outs.size(), 2U);
    EXPECT_EQ(CountKept(systems_vector[0]), 16U);

    // Its neighbours are deleted, renamed and moved, others come.
    const BlockPlace block = {{0, 0, 0}, 0};
    DeleteComparison(block, 0);
    AddAction(block, -1);
    EXPECT_EQ(RenameOut({0, 0, 0}, "NEW"), "");
    NewDevice({0, -1});
    CopyOut({0, 0, 0});
    EXPECT_EQ(MoveOut({0, 1, -1}), 0);
    ASSERT_TRUE(SaveSysToTxtFile()) << saveFailure;
    EXPECT_EQ(read("systems/A.txt"),
              "draw=1\r\n# by me\r\nout=EARLY,int\r\nsys=A\r\n# of the system\r\ndevstack=D\r\nlogic:\r\n"
              "out=BAD,int,,one,,,,,,,,0\r\nlogic:\r\ncalc=[1.000000]\r\n"
              "out=WORSE,int\r\nlogic:\r\nexecute=0,Help,0.000000\r\n"
              "out=Q,odd,,9,,,t/x,other,,,left, right,1\r\nlogic:\r\n[A.NewDevice.NEW]==[4;x]\r\n"
              "calc=[A.NewDevice.NEW]+[3\r\ngraf=0,0,5\r\ndev=NewDevice\r\n"
              "out=NEW,integer,,0.000000,,,,,,,,0\r\n[1]==[1]\r\n||\r\nlogic:\r\n# first\r\n||\r\n"
              "[--5]==[1]\r\n||\r\ngarbage\r\n||\r\ninstring=now\r\ncalc=A.D.P*2\r\n"
              "execute=1,Set thrust, please,0\r\nexecute=1,Well,0,0\r\nexecute=0,Yes,0.000000\r\n"
              "execute=0,Example Text!,0.000000\r\n");
    DeleteOut({0, 0, 1});
    ASSERT_TRUE(SaveSysToTxtFile()) << saveFailure;
    EXPECT_NE(read("systems/A.txt").find("out=WORSE,int"), std::string::npos);
    while (UndoEditStep()) {
    }
    ASSERT_TRUE(SaveSysToTxtFile()) << saveFailure;
    EXPECT_EQ(read("systems/A.txt"), file);
    EXPECT_EQ(NewSystem({-1}), 1);
    EXPECT_EQ(RenameSystem({1}, "GONE"), "");
    ASSERT_TRUE(SaveSysToTxtFile()) << saveFailure;
    EXPECT_EQ(read("systems/_systems.txt"), "A\r\n../up\r\nempty\r\nGONE\r\n");
}

// Names that become keys when a key is taken out of their line.
TEST_F(Writer, WhatWouldBeReadAsSomethingElseIsNotWritten) {
    Load("sys=A\ndev=dev=X\n" + Out("P"));
    ASSERT_TRUE(SaveSysToTxtFile()) << saveFailure;
    const auto first = Files();
    SwitchSerial({0, 0});
    EXPECT_FALSE(SaveSysToTxtFile());
    EXPECT_EQ(saveFailure, "in A.dev=X this would be read as something else: devstack=dev=X");
    EXPECT_EQ(Files(), first);
}

} // namespace
