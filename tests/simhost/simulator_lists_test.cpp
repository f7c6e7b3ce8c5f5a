// The simulator's lists of names, and the built-in tables against them.
#include "simhost/world/simulator_lists.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "XPLMUtilities.h"
#include "simhost/simulator.h"
#include "simhost/world/builtin_commands.h"
#include "simhost/world/builtin_datarefs.h"
#include "tests/scratch_folder.h"

using namespace simhost;

namespace {

class SimulatorLists : public ::testing::Test {
protected:
    SimulatorLists() {
        ResetSimulator();
        std::filesystem::create_directories(root + "Resources/plugins");
    }
    void Write(const std::string &name, const std::string &text) const {
        std::ofstream(root + "Resources/plugins/" + name, std::ios::binary) << text;
    }
    const ScratchFolder folder;
    const std::string &root = folder.path;
};

TEST_F(SimulatorLists, EveryListedNameExistsWithItsType) {
    Write("DataRefs.txt", "2 1210 Mon Nov 24 10:10:21 2025\r\n\r\n"
                          "l/int\tint\ty\tboolean\tA switch\r\n"
                          "l/float\tfloat\tn\n"
                          "l/double\tdouble\ty\tdegrees\n"
                          "l/ints\tint[8]\ty\n"
                          "l/deep\tfloat[56][10]\ty\n"
                          "l/text\tbyte[40]\ty\tstring\n"
                          "l/open\tbyte[]\tn\tstring\n"
                          "l/bad\tfloat[x]\ty\n"
                          "l/bad\tfloat[4\ty\n"
                          "l/bad\tfloat[-4]\ty\n"
                          "l/bad\tfloat[99999][99999]\ty\n"
                          "l/bad\tquad\ty\n"
                          "l/bad\n"
                          "sim/flightmodel/position/latitude\tdouble\tn\n");
    Write("Commands.txt", "l/press                 Press it.\r\nl/bare\n\nno command here\n");
    const double latitude = GetNumber("sim/flightmodel/position/latitude");
    ASSERT_NE(latitude, 0);
    std::string error;
    ASSERT_TRUE(ReadSimulatorLists(root, error)) << error;
    const std::map<std::string, XPLMDataTypeID> types = {
        {"l/int", xplmType_Int},       {"l/float", xplmType_Float},     {"l/double", xplmType_Double},
        {"l/ints", xplmType_IntArray}, {"l/deep", xplmType_FloatArray}, {"l/text", xplmType_Data},
        {"l/open", xplmType_Data},     {"l/bad", xplmType_Unknown}};
    for (const auto &[name, type] : types) {
        EXPECT_EQ(XPLMGetDataRefTypes(XPLMFindDataRef(name.c_str())), type) << name;
    }
    EXPECT_EQ(XPLMGetDatavi(XPLMFindDataRef("l/ints"), nullptr, 0, 0), 8);
    EXPECT_EQ(XPLMGetDatavf(XPLMFindDataRef("l/deep"), nullptr, 0, 0), 560);
    EXPECT_EQ(XPLMGetDatab(XPLMFindDataRef("l/text"), nullptr, 0, 0), 40);
    EXPECT_EQ(XPLMCanWriteDataRef(XPLMFindDataRef("l/int")), 1);
    EXPECT_EQ(XPLMCanWriteDataRef(XPLMFindDataRef("l/float")), 0);
    EXPECT_EQ(GetNumber("sim/flightmodel/position/latitude"), latitude) << "a known one keeps its value";
    EXPECT_NE(XPLMFindCommand("l/press"), nullptr);
    EXPECT_NE(XPLMFindCommand("l/bare"), nullptr);
    EXPECT_EQ(XPLMFindCommand("no"), nullptr);
}

TEST_F(SimulatorLists, AFolderWithoutListsIsAnError) {
    std::string error;
    EXPECT_FALSE(ReadSimulatorLists(root, error));
    EXPECT_NE(error.find("DataRefs.txt"), std::string::npos);
    Write("DataRefs.txt", "l/int\tint\ty\n");
    EXPECT_FALSE(ReadSimulatorLists(root, error));
    EXPECT_NE(error.find("Commands.txt"), std::string::npos);
    EXPECT_EQ(XPLMFindDataRef("l/int"), nullptr) << "both or none";
}

TEST_F(SimulatorLists, TheBuiltInTablesAgreeWithTheSimulatorsOwn) {
    const char *lists = std::getenv("FENNIC_XPLANE_LISTS");
    if (lists == nullptr) GTEST_SKIP() << "FENNIC_XPLANE_LISTS names no folder with the simulator's lists";
    std::string error;
    std::map<std::string, ListedDataref> listed;
    for (ListedDataref &dataref : ReadDatarefList(lists + std::string("/DataRefs.txt"), error)) {
        listed[dataref.name] = dataref;
    }
    ASSERT_FALSE(listed.empty()) << error;
    for (const BuiltinDataref &builtin : BuiltinDatarefs()) {
        ASSERT_TRUE(listed.contains(builtin.name)) << builtin.name;
        const ListedDataref &dataref = listed[builtin.name];
        EXPECT_EQ(builtin.type, dataref.type) << builtin.name;
        EXPECT_EQ(builtin.elements, dataref.elements) << builtin.name;
        EXPECT_EQ(builtin.isWritable, dataref.isWritable) << builtin.name;
    }
    std::map<std::string, bool> commands;
    for (const ListedCommand &command : ReadCommandList(lists + std::string("/Commands.txt"), error)) {
        commands[command.name] = true;
    }
    ASSERT_FALSE(commands.empty()) << error;
    for (const std::string &command : BuiltinCommands()) EXPECT_TRUE(commands[command]) << command;
}

// A command whose dataref does not exist, or has too few elements, would move nothing.
TEST_F(SimulatorLists, EveryBuiltInCommandMovesWhatExists) {
    for (const BuiltinAction &action : BuiltinActions()) {
        const double before = GetNumber(action.dataref, action.index);
        EXPECT_TRUE(SetNumber(action.dataref, before, action.index)) << action.command;
    }
}

} // namespace
