// Files of a size that nobody expects must load to something that runs.
#include "systems/writer.h"
#include "tests/systems/model_folder.h"
#include "voice/executer.h"

namespace {

class HostileFiles : public ModelFolder {
protected:
    // Loads, runs, says, saves and stops.
    void Survive(const std::string &text) {
        write("sys.txt", text);
        std::filesystem::remove(plugin + "systems/_systems.txt");
        CreateSystemsFromFile();
        for (int i = 0; i < 3; i++) {
            Frame(i == 1 ? "go" : "");
            if (!executeFlow.empty()) VarToString(executeFlow.front().text);
            executeFlow.clear();
        }
        SaveSysToTxtFile();
        DeleteSystems();
        for (const auto &entry : std::filesystem::directory_iterator(plugin + "systems"))
            std::filesystem::remove_all(entry.path());
        simhost::TakeLogLines();
    }
};

TEST_F(HostileFiles, OneMegabyteLines) {
    const std::string long1(1000000, 'x'), digits(1000000, '9'), brackets(1000000, '[');
    std::string operands, list, links;
    for (int i = 0; i < 50000; i++) {
        operands += "+[1]";
        list += "7;";
        links += "<S.D.P>";
    }
    for (const std::string &line :
         {long1, digits, brackets, "calc=" + operands, "[1]==[" + list + "]", "instring=" + long1,
          "execute=0," + links + ",0", "execute=0," + long1 + ",0", "calc=[" + digits + "]",
          "graf=" + digits + ",1", "sys=" + long1, "out=" + std::string(1000000, ',')})
        Survive("sys=S\ndev=D\nout=P,int,,1,,,,,,,,0\nlogic:\n" + line + "\nlogic:\ncalc=[1]\n");
}

TEST_F(HostileFiles, AHundredThousandLines) {
    std::string text = "sys=S\n";
    for (int device = 0; device < 20; device++) {
        text += "dev=D" + std::to_string(device) + "\n";
        for (int i = 0; i < 1000; i++)
            text += Out("P" + std::to_string(i)) + "logic:\n[S.D19.P" + std::to_string(999 - i)
                    + "]==[0]\ninstring=phrase " + std::to_string(device * 1000 + i)
                    + "\ncalc=[S.D0.P0]+[1]\n";
    }
    Load(text);
    Frame("phrase 19999");
    EXPECT_EQ(Value("S.D19.P999"), 1);
    EXPECT_EQ(LastRecognition, "");
}

} // namespace
