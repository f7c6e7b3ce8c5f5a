// What the checker does not look at in the shipped systems files: that they are as the editor would write
// them, and leave time between a question and any answer. (That it finds nothing in them is a test of its
// own, "shipped.*" in tests/CMakeLists.txt.)
#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "systems/writer.h"
#include "tests/systems/model_folder.h"

namespace {

const std::filesystem::path Staged = STAGED_AIRCRAFT; // the folders as the build puts them together
const std::filesystem::path ForAll = Staged.parent_path() / "any";

// The folders of systems files.
std::vector<std::filesystem::path> SystemsFolders() {
    std::vector<std::filesystem::path> folders;
    for (const auto &entry : std::filesystem::directory_iterator(Staged))
        folders.push_back(entry.path() / "plugins/fennic/64/systems");
    std::sort(folders.begin(), folders.end());
    folders.push_back(ForAll / "systems");
    return folders;
}

class ShippedAircraft : public ModelFolder, public ::testing::WithParamInterface<std::filesystem::path> {
protected:
    ShippedAircraft() {
        std::filesystem::copy(GetParam(), plugin + "systems", std::filesystem::copy_options::recursive);
        CreateSystemsFromFile();
        EXPECT_FALSE(systems_vector.empty());
    }
};

INSTANTIATE_TEST_SUITE_P(Aircraft, ShippedAircraft, ::testing::ValuesIn(SystemsFolders()),
                         [](const auto &info) {
                             if (info.param.parent_path() == ForAll) return std::string("any");
                             std::string name =
                                 std::filesystem::relative(info.param, Staged).begin()->string();
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST_P(ShippedAircraft, IsWrittenBackAsItIs) {
    std::map<std::string, std::string> before;
    for (const auto &entry : std::filesystem::directory_iterator(plugin + "systems")) {
        const std::string name = "systems/" + entry.path().filename().string();
        before[name] = read(name);
    }
    ASSERT_TRUE(SaveSysToTxtFile());
    for (const auto &[name, text] : before) EXPECT_EQ(read(name), text) << name;
}

// A step that takes any answer must not be looked at while the button of the answer before may still be
// held: letting go of it would count as a silent answer. So something has to be waited for after she has
// asked.
TEST_P(ShippedAircraft, AsksBeforeItTakesAnyAnswer) {
    ForEachAddress([](const ParameterAddress &place) {
        for (const logicblock_struct &block : ParameterAt(place)->logic)
            for (const compare_block_class &comparison : block.compares) {
                if (comparison.a.kind != LinkSpeech || comparison.phrase != "any") continue;
                ASSERT_TRUE(DeviceAt(place)->serialStack && place.out > 0) << SysDevOut2name(place);
                for (const logicblock_struct &question : (ParameterAt(place) - 1)->logic) {
                    ASSERT_FALSE(question.executes.empty()) << SysDevOut2name(place);
                    EXPECT_EQ(question.executes.back().type, ScriptPause) << SysDevOut2name(place);
                }
            }
    });
}

} // namespace
