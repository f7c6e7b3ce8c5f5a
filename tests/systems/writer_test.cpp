// What the editor saves: read back it is the same model, and saved again the same bytes.
#include "systems/writer.h"

#include <csignal>
#include <sys/resource.h>

#include "frame/aircraft.h"
#include "frame/datarefs.h"
#include "tests/systems/model_folder.h"
#include "tests/systems/random_model.h"

namespace {

class Writer : public ModelFolder {
protected:
    std::map<std::string, std::string> Files() {
        std::map<std::string, std::string> files;
        for (const auto &entry : std::filesystem::directory_iterator(plugin + "systems"))
            files[entry.path().filename()] = read("systems/" + entry.path().filename().string());
        return files;
    }

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
        "execute=1,Well; then,0\nexecute=7,,2.5\ngraf=0,1\ngraf=2.5,-3\nlogic:\n[2]==[4;x]\n"
        "out=Q,odd,,9,,,t/x,other,,,,0\n");
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
        "graf=2.500000,-3.000000\r\nlogic:\r\n[2.000000]==[4;]\r\n"
        "out=Q,integer,,0.000000,,,t/x,,,,,0\r\n");
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

TEST_F(Writer, NoSystemIsWrittenOutsideTheFolderOrOverTheLists) {
    write("systems/_save.txt", "A.D.P=1\r\n");
    for (const std::string name : {"../escape", "_systems", "_save"}) {
        Forget();
        Load("sys=A\nsys=" + name + "\n");
        simhost::TakeLogLines();
        EXPECT_FALSE(SaveSysToTxtFile());
        EXPECT_EQ(saveFailure, "no file can have the name of the system " + name);
        EXPECT_EQ(CountNewLines({"systems not saved"}), 1);
    }
    EXPECT_EQ(Files(), (std::map<std::string, std::string>{{"_save.txt", "A.D.P=1\r\n"}}));
    EXPECT_FALSE(exists("escape.txt"));
}

// What cannot be written leaves all files as they were: here B is swapped in before C turns out to be a
// folder.
TEST_F(Writer, AllFilesAreReplacedOrNone) {
    Load("sys=A\nsys=B\n");
    ASSERT_TRUE(SaveSysToTxtFile());
    auto before = Files();
    systems_vector[1].devices.emplace_back().name = "NEW";
    systems_vector.emplace_back().name = "NEW";
    systems_vector.emplace_back().name = "C";
    std::filesystem::create_directory(plugin + "systems/C.txt"); // in the way
    simhost::TakeLogLines();
    EXPECT_FALSE(SaveSysToTxtFile());
    EXPECT_EQ(saveFailure, "cannot write C.txt");
    EXPECT_EQ(CountNewLines({"Cant write file", "C.txt"}), 1);
    std::filesystem::remove(plugin + "systems/C.txt");
    EXPECT_EQ(Files(), before) << "with nothing left beside them";

    // A full disk: what is longer than the limit cannot be written.
    rlimit limit = {};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit full = {15, limit.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &full);
    EXPECT_FALSE(SaveSysToTxtFile());
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(saveFailure, "cannot write B.txt");
    EXPECT_EQ(Files(), before);
    EXPECT_TRUE(SaveSysToTxtFile());
    EXPECT_TRUE(saveFailure.empty());
    EXPECT_EQ(Files().size(), 5U);
    std::filesystem::remove_all(plugin + "systems");
    write("systems", "a file");
    EXPECT_FALSE(SaveSysToTxtFile());
    EXPECT_EQ(saveFailure, "cannot write A.txt");
}

TEST_F(Writer, RandomModelsComeBackEqual) {
    for (unsigned seed = 1; seed <= 80 && !HasFailure(); seed++) {
        SCOPED_TRACE(seed);
        Forget();
        for (const auto &entry : std::filesystem::directory_iterator(plugin + "systems"))
            std::filesystem::remove(entry.path());
        for (const ModelDataref &dataref : ModelDatarefs)
            simhost::PublishDataref(dataref.name, dataref.type, dataref.elements);
        write("sys.txt", RandomModel(seed).Text());
        CreateSystemsFromFile();
        ASSERT_TRUE(SaveSysToTxtFile());
        const auto first = Files();
        const std::vector<system_class> before = systems_vector;
        Forget();
        simhost::TakeLogLines();
        CreateSystemsFromFile();
        EXPECT_EQ(CountNewLines({"dropped"}), 0);
        ASSERT_TRUE(SaveSysToTxtFile());
        EXPECT_EQ(Files(), first);

        // Both run alike.
        const auto values = [] {
            for (int i = 0; i < 5; i++) {
                executeFlow.clear();
                Frame();
            }
            RefreshRecords();
            std::string all;
            for (const system_class &system : systems_vector)
                for (const device_struct &device : system.devices)
                    for (const out_parameter_struct &parameter : device.outs)
                        all += std::to_string(parameter.value) + " " + std::to_string(parameter.activeBlock)
                               + ",";
            return all;
        };
        const auto start = [] {
            answerstimer.clear();
            LastRecognition.clear();
            for (const ModelDataref &dataref : ModelDatarefs)
                for (int i = 0; i < dataref.elements; i++) simhost::SetNumber(dataref.name, 0, i);
        };
        start();
        const std::string again = values();
        ModelChanges();
        systems_vector = before;
        start();
        EXPECT_EQ(values(), again);
    }
}

TEST_F(Writer, SystemsOfOneNameShareAFileAndAreBothKept) {
    Load("sys=A\ndev=D\n" + Out("P") + "sys=B\nsys=A\ndev=E\n" + Out("Q"));
    ASSERT_TRUE(SaveSysToTxtFile());
    EXPECT_EQ(read("systems/_systems.txt"), "A\r\nB\r\n");
    const std::map<std::string, std::string> first = Files();
    Forget();
    CreateSystemsFromFile();
    ASSERT_EQ(systems_vector.size(), 3U);
    EXPECT_EQ(systems_vector[0].devices[0].outs[0].name, "P");
    EXPECT_EQ(systems_vector[1].devices[0].outs[0].name, "Q");
    ASSERT_TRUE(SaveSysToTxtFile());
    EXPECT_EQ(Files(), first);
}

} // namespace
