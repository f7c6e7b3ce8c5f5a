// Saved values: the way they are found against the rule as it is written, over random files; and whose they
// are.
#include "systems/saved_values.h"

#include <random>

#include "tests/systems/model_folder.h"
#include "util/numbers.h"
#include "util/text.h"

namespace {

// The last line that contains the address anywhere and holds a number behind "=".
std::string ByTheRule(const std::vector<std::string> &lines, const std::string &address,
                      std::string initial) {
    for (const std::string &line : lines) {
        const std::vector<std::string> parts = StringToWordsArray(line, '=');
        double value = 0.0;
        if (Contains(line, address) && parts.size() > 1 && isNumber(parts[1]) && ParseDouble(parts[1], value))
            initial = parts[1];
    }
    return initial;
}

TEST_F(PluginFolder, SavedValuesAreThoseOfTheRule) {
    std::mt19937 random(1);
    const auto pick = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    // Names of few letters, so that one is often a part of another; dots, too, and what looks like a value.
    const auto name = [&] {
        static const char *const pieces[] = {"A", "B", "AB", "", ".", "=1", "1"};
        std::string text;
        for (int i = pick(3); i >= 0; i--) text += pieces[pick(pick(4) == 0 ? 7 : 2)];
        return text;
    };
    const auto address = [&] { return name() + "." + name() + "." + name(); };
    int restored = 0;
    for (int round = 0; round < 300; round++) {
        std::vector<std::string> lines;
        std::string content;
        for (int i = pick(30); i >= 0; i--) {
            static const char *const values[] = {"=1.5",   "=-2",  "=",    "=x", "",
                                                 "=1.2.3", "=7=8", ".A=3", ".9"};
            lines.push_back((pick(20) == 0 ? std::string(300, pick(2) ? 'A' : '.') : "") + address()
                            + values[pick(9)]);
            content += lines.back() + "\r\n";
        }
        write("systems/_save.txt", content);
        ReadSavedValues();
        for (int i = 0; i < 50; i++) {
            const std::string wanted = address();
            std::string initial = "0";
            RestoreSavedValue(wanted, initial);
            EXPECT_EQ(initial, ByTheRule(lines, wanted, "0")) << wanted << " in\n" << content;
            restored += initial != "0";
        }
    }
    EXPECT_GT(restored, 200);
    ForgetSavedValues();
}

// "1" alone says so, when the model is read and when it is saved; what the author has deleted goes.
TEST_F(ModelFolder, OnlyFlaggedParametersThatAreThereAreSaved) {
    std::string model = "sys=S\ndev=D\n", saved;
    for (const char *flag : {"0", "1", "2", "-1", "1.0", "yes", " 1", ""}) {
        const std::string name = std::string("P") + flag;
        model += "out=" + name + ",double,,5,,,,,,,," + flag + "\n";
        saved += "S.D." + name + "=7\r\n";
    }
    write("systems/_save.txt", saved + "S.D.GONE=7\r\nS.E.GONE=7\r\nT.D.GONE=7\r\n");
    const std::string gone = "out=GONE,double,,5,,,,,,,,1\n";
    Load(model + gone + "dev=E\n" + gone + "sys=T\ndev=D\n" + gone);
    for (const out_parameter_struct &parameter : systems_vector[0].devices[0].outs)
        EXPECT_EQ(parameter.value, parameter.name == "P1" || parameter.name == "GONE" ? 7 : 5)
            << parameter.name;
    Parameter("S.D.GONE").deleted = true;
    systems_vector[0].devices[1].deleted = true;
    systems_vector[1].deleted = true;
    SaveParametersValue();
    EXPECT_EQ(read("systems/_save.txt"), "S.D.P1=7.000000\r\n");
}

} // namespace
