// Saved values: the way they are found against the rule as it is written, over random files.
#include "systems/saved_values.h"

#include <random>

#include "tests/plugin_folder.h"
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

} // namespace
