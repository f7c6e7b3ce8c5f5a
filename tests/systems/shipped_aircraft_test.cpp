// What an author of the shipped aircraft cannot see on the page: that every name in its systems files exists
// in the simulator with the right type, that links, poses and phrases lead somewhere, and that the files are
// as the editor would write them.
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "figure/channels.h"
#include "figure/positions.h"
#include "frame/settings.h"
#include "simhost/world/simulator_lists.h"
#include "systems/writer.h"
#include "tests/systems/model_folder.h"
#include "util/log.h"

namespace {

const std::filesystem::path Staged = STAGED_AIRCRAFT; // the folders as the build puts them together
const std::filesystem::path ForAll = Staged.parent_path() / "any"; // systems alone

std::vector<std::filesystem::path> AircraftFolders() {
    std::vector<std::filesystem::path> folders;
    for (const auto &entry : std::filesystem::directory_iterator(Staged))
        folders.push_back(entry.path() / "plugins/fennic/64");
    std::sort(folders.begin(), folders.end());
    folders.push_back(ForAll);
    return folders;
}

// The plug-in's folder as it ships with one aircraft, loaded as at start.
class ShippedAircraft : public ModelFolder, public ::testing::WithParamInterface<std::filesystem::path> {
protected:
    std::vector<std::string> problems; // of loading

    ShippedAircraft() {
        const auto whole =
            std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing;
        const auto rest = GetParam() == ForAll ? AircraftFolders().front() : GetParam();
        for (const auto &folder : {GetParam() / "systems", rest / "data", rest / "custom"})
            std::filesystem::copy(folder, plugin + folder.filename().string(), whole);
        ListenToLog([this](const LogRecord &record, const std::string &) {
            problems.push_back(record.file + ": " + WordsOf(record));
        });
        ReadSettings();
        LoadAnimationFile(plugin + "data/obj/fennic.txt");
        ReadPositionFolder();
        CreateSystemsFromFile();
        ResetLog();
    }

    using Visit =
        std::function<void(const std::string &address, const out_parameter_struct &, const device_struct &)>;
    static void ForEachParameter(const Visit &visit) {
        for (const system_class &system : systems_vector)
            for (const device_struct &device : system.devices)
                for (const out_parameter_struct &parameter : device.outs)
                    visit(system.name + "." + device.name + "." + parameter.name, parameter, device);
    }

    static void
    ForEachAction(const std::function<void(const std::string &address, const structExecute &)> &visit) {
        ForEachParameter(
            [&](const std::string &address, const out_parameter_struct &parameter, const device_struct &) {
                for (const logicblock_struct &block : parameter.logic)
                    for (const structExecute &action : block.executes) visit(address, action);
            });
    }

    // Every phrase that some parameter waits for.
    static std::set<std::string> Phrases() {
        std::set<std::string> phrases;
        ForEachParameter(
            [&](const std::string &, const out_parameter_struct &parameter, const device_struct &) {
                for (const logicblock_struct &block : parameter.logic)
                    for (const compare_block_class &comparison : block.compares)
                        if (comparison.a.kind == LinkSpeech) phrases.insert(comparison.phrase);
            });
        return phrases;
    }
};

INSTANTIATE_TEST_SUITE_P(Aircraft, ShippedAircraft, ::testing::ValuesIn(AircraftFolders()),
                         [](const auto &info) {
                             if (info.param == ForAll) return std::string("any");
                             std::string name =
                                 std::filesystem::relative(info.param, Staged).begin()->string();
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

bool isOwn(const std::string &dataref) {
    return dataref.rfind("kv/", 0) == 0;
}

// "name[3]" into "name" and 3; -1 without an index.
std::string SplitIndex(const std::string &fullName, int &index) {
    const size_t bracket = fullName.find('[');
    index = bracket == std::string::npos ? -1 : std::atoi(fullName.c_str() + bracket + 1);
    return fullName.substr(0, bracket);
}

TEST_P(ShippedAircraft, LoadsWithoutAComplaint) {
    ASSERT_FALSE(systems_vector.empty());
    EXPECT_EQ(problems, std::vector<std::string>());
    ForEachAction([](const std::string &address, const structExecute &action) {
        EXPECT_FALSE(action.notFound) << address << ": " << action.text;
    });
}

TEST_P(ShippedAircraft, IsWrittenBackAsItIs) {
    std::map<std::string, std::string> before;
    for (const auto &entry : std::filesystem::directory_iterator(plugin + "systems")) {
        const std::string name = "systems/" + entry.path().filename().string();
        before[name] = read(name);
    }
    ASSERT_TRUE(SaveSysToTxtFile());
    for (const auto &[name, text] : before) EXPECT_EQ(read(name), text) << name;
}

TEST_P(ShippedAircraft, SpeaksOnlyOfWhatExists) {
    ForEachAction([](const std::string &address, const structExecute &action) {
        if (TextOfAction(action.type) != ActionText::Spoken) return;
        for (size_t begin = 0; (begin = action.text.find('<', begin)) != std::string::npos; begin++) {
            const size_t end = action.text.find('>', begin);
            ASSERT_NE(end, std::string::npos) << address << ": " << action.text;
            std::string link = action.text.substr(begin + 1, end - begin - 1);
            if (link[0] == '&') link.erase(0, 1);
            EXPECT_EQ(String2sysLink(link).kind, LinkLive) << address << " says <" << link << ">";
        }
    });
}

// The speech server knows phrases in lower case and without punctuation, and a comparison is exact. What is
// offered on screen is heard as it stands.
TEST_P(ShippedAircraft, CanBeAnswered) {
    const std::set<std::string> phrases = Phrases();
    for (const std::string &phrase : phrases) {
        std::string known = MakeStrokaFromText(phrase, 0).text;
        for (char &c : known) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        EXPECT_EQ(phrase, known);
    }
    ForEachAction([&](const std::string &address, const structExecute &action) {
        if (TextOfAction(action.type) != ActionText::Phrase) return;
        EXPECT_TRUE(phrases.contains(action.text)) << address << " offers \"" << action.text << "\"";
    });
}

// A step that takes any answer must not be looked at while the button of the answer before may still be
// held: letting go of it would count as a silent answer. So something has to be waited for after she has
// asked.
TEST_P(ShippedAircraft, AsksBeforeItTakesAnyAnswer) {
    ForEachParameter(
        [](const std::string &address, const out_parameter_struct &parameter, const device_struct &device) {
            for (const logicblock_struct &block : parameter.logic) {
                for (const compare_block_class &comparison : block.compares) {
                    if (comparison.a.kind != LinkSpeech || comparison.phrase != "any") continue;
                    ASSERT_TRUE(device.serialStack && &parameter != &device.outs.front()) << address;
                    for (const logicblock_struct &question : (&parameter - 1)->logic) {
                        ASSERT_FALSE(question.executes.empty()) << address;
                        EXPECT_EQ(question.executes.back().type, ScriptPause) << address;
                    }
                }
            }
        });
}

TEST_P(ShippedAircraft, PosesBothFigures) {
    for (const char *gender : {"positions-w/", "positions-m/"}) {
        positionList.clear();
        positionRestList.clear();
        globalPosFolder = gender;
        ReadPositionFolder();
        EXPECT_GE(positionRestList.size(), 3u) << gender;
        ForEachAction([&](const std::string &address, const structExecute &action) {
            if (action.type != ScriptPosition) return;
            EXPECT_NE(std::find(positionList.begin(), positionList.end(), action.text), positionList.end())
                << address << ": " << gender << action.text;
        });
        simhost::TakeLogLines();
        for (const std::string &name : positionList) LoadPositionFromFile(name);
        EXPECT_EQ(simhost::TakeLogLines(), std::vector<std::string>()) << gender;
    }
    EXPECT_EQ(anim.size(), static_cast<size_t>(FigureOffsetChannel) + 1);
}

TEST_P(ShippedAircraft, UsesNamesOfTheSimulator) {
    const char *lists = std::getenv("FENNIC_XPLANE_LISTS");
    if (lists == nullptr) GTEST_SKIP() << "FENNIC_XPLANE_LISTS names no folder with the simulator's lists";
    std::string error;
    std::map<std::string, simhost::ListedDataref> datarefs;
    for (simhost::ListedDataref &dataref :
         simhost::ReadDatarefList(lists + std::string("/DataRefs.txt"), error))
        datarefs[dataref.name] = dataref;
    ASSERT_FALSE(datarefs.empty()) << error;
    std::set<std::string> commands;
    for (const simhost::ListedCommand &command :
         simhost::ReadCommandList(lists + std::string("/Commands.txt"), error))
        commands.insert(command.name);
    ASSERT_FALSE(commands.empty()) << error;

    // An element for an array and none for a single value; written only if it may be.
    const auto expectListed = [&](const std::string &address, const std::string &fullName, bool isWritten) {
        int index = -1;
        const std::string name = SplitIndex(fullName, index);
        if (isOwn(name)) return;
        ASSERT_TRUE(datarefs.contains(name)) << address << ": " << name;
        const simhost::ListedDataref &dataref = datarefs[name];
        const bool isArray = dataref.type == xplmType_IntArray || dataref.type == xplmType_FloatArray;
        EXPECT_NE(dataref.type, xplmType_Data) << address << ": " << name;
        EXPECT_EQ(isArray, index >= 0) << address << ": " << fullName;
        EXPECT_LT(index, isArray ? std::min(dataref.elements, 16) : 1) << address << ": " << fullName;
        EXPECT_TRUE(dataref.isWritable || !isWritten) << address << ": " << name;
    };
    ForEachParameter(
        [&](const std::string &address, const out_parameter_struct &parameter, const device_struct &) {
            if (!parameter.inDataref.fullName.empty())
                expectListed(address, parameter.inDataref.fullName, false);
            if (!parameter.outDataref.fullName.empty())
                expectListed(address, parameter.outDataref.fullName, true);
        });
    ForEachAction([&](const std::string &address, const structExecute &action) {
        if (action.type == ScriptSet) expectListed(address, action.text, true);
        EXPECT_TRUE(commands.contains(action.text) || TextOfAction(action.type) != ActionText::Command)
            << address << ": " << action.text;
    });
}

} // namespace
