// Loading, messages, unloading, and what a plug-in leaves behind, with real libraries.
#include "simhost/interface/plugins.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "XPLMDataAccess.h"
#include "XPLMMenus.h"
#include "XPLMPlanes.h"
#include "XPLMUtilities.h"
#include "simhost/interface/menus.h"
#include "simhost/simulator.h"

using namespace simhost;

namespace {

// The guest's modes, as in plugins/guest.c.
enum { RefuseStart = 1, RefuseEnable = 2, LeaveBehind = 4 };

const std::string Folder = TEST_PLUGINS;
const std::string Guest = Folder + "/guest.xpl";

class Plugins : public ::testing::Test {
protected:
    Plugins() { ResetSimulator(); }

    static XPLMPluginID Load(const std::string &path, int mode = 0) {
        PublishDataref("test/mode", xplmType_Int);
        SetNumber("test/mode", mode);
        std::string error;
        const XPLMPluginID id = LoadPlugin(path, error);
        EXPECT_EQ(error, "");
        return id;
    }
    static std::string LoadError(const std::string &path, int mode = 0) {
        PublishDataref("test/mode", xplmType_Int);
        SetNumber("test/mode", mode);
        std::string error;
        EXPECT_EQ(LoadPlugin(path, error), XPLM_NO_PLUGIN_ID);
        EXPECT_EQ(XPLMCountPlugins(), 0);
        return error;
    }
    static std::string Joined(const std::vector<std::string> &lines) {
        std::string text;
        for (const std::string &line : lines) text += line + "\n";
        return text;
    }
    static bool Holds(const std::string &text, const std::string &part) {
        return text.find(part) != std::string::npos;
    }
};

TEST_F(Plugins, LoadsTellsAndUnloads) {
    const XPLMPluginID id = Load(Guest);
    ASSERT_GT(id, XPLM_PLUGIN_XPLANE);
    EXPECT_EQ(GetNumber("guest/id_at_load"), id) << "calls of static initialisers are the plug-in's";
    EXPECT_EQ(XPLMGetMyID(), XPLM_PLUGIN_XPLANE);
    EXPECT_EQ(XPLMCountPlugins(), 1);
    EXPECT_EQ(XPLMGetNthPlugin(0), id);
    EXPECT_EQ(XPLMFindPluginBySignature("test.guest"), id);
    EXPECT_EQ(XPLMFindPluginByPath(Guest.c_str()), id);
    char name[256], path[256];
    XPLMGetPluginInfo(id, name, path, nullptr, nullptr);
    EXPECT_STREQ(name, "Guest");
    EXPECT_EQ(path, Guest);
    EXPECT_EQ(XPLMIsPluginEnabled(id), 1);
    std::string error;
    EXPECT_EQ(LoadPlugin(Guest, error), XPLM_NO_PLUGIN_ID);
    EXPECT_TRUE(Holds(error, "loaded already")) << error;

    StepFrame(0.02);
    EXPECT_EQ(GetNumber("guest/loops"), 1);
    const XPLMDataRef starts = XPLMFindDataRef("guest/starts");
    UnloadPlugin(id);
    EXPECT_EQ(Joined(LastLeftBehind().errors), "");
    EXPECT_EQ(Joined(LastLeftBehind().notes), "command handler of \"guest/command\"\nmenu item \"Guest\"\n"
                                              "menu \"Guest\"\n");
    EXPECT_EQ(XPLMCountPlugins(), 0);
    EXPECT_EQ(XPLMGetDatai(starts), 0);
    EXPECT_TRUE(MenuItems().empty());
    EXPECT_NE(XPLMFindCommand("guest/command"), nullptr) << "commands stay";
    const std::vector<std::string> log = TakeLogLines();
    EXPECT_EQ(std::count(log.begin(), log.end(), "guest stops"), 1) << "a last line without its end";

    EXPECT_NE(Load(Guest), id);
    EXPECT_EQ(XPLMGetDatai(starts), 1) << "globals are fresh, and the old handle has revived";
}

TEST_F(Plugins, ErrorsSayWhatIsWrong) {
    EXPECT_TRUE(Holds(LoadError(Folder + "/absent.xpl"), "absent.xpl"));
    EXPECT_TRUE(Holds(LoadError(Folder + "/unresolved.xpl"), "XPLMCallOfAnotherAge"));
    EXPECT_TRUE(Holds(LoadError(Folder + "/incomplete.xpl"),
                      "XPluginStop, XPluginEnable, XPluginDisable, XPluginReceiveMessage"));
    EXPECT_TRUE(Holds(LoadError("/" + std::string(300, 'x') + "/lin.xpl"), "too long"));
    EXPECT_TRUE(Holds(LoadError(Guest, RefuseStart), "Guest refused to start"));
    // What it had registered before it refused is gone with it.
    StepFrame(0.02);
    EXPECT_EQ(XPLMIsDataRefGood(XPLMFindDataRef("guest/starts")), 0);
    EXPECT_TRUE(MenuItems().empty());
}

TEST_F(Plugins, DisabledMeansNoCallbacks) {
    const XPLMPluginID id = Load(Guest, RefuseEnable);
    EXPECT_EQ(XPLMIsPluginEnabled(id), 0);
    StepFrame(0.02);
    XPLMSendMessageToPlugin(id, 4711, nullptr);
    EXPECT_EQ(GetNumber("guest/loops"), 0);
    EXPECT_EQ(GetNumber("guest/message"), 0);
    EXPECT_EQ(XPLMEnablePlugin(id), 0);
    SetNumber("test/mode", 0);
    EXPECT_EQ(XPLMEnablePlugin(id), 1);
    StepFrame(0.02);
    EXPECT_EQ(GetNumber("guest/loops"), 1);
    XPLMDisablePlugin(id);
    StepFrame(0.02);
    EXPECT_EQ(GetNumber("guest/loops"), 1);
}

TEST_F(Plugins, WhatIsLeftBehindIsNamedAndNeverCalledAgain) {
    UnloadPlugin(Load(Guest, LeaveBehind));
    const std::string errors = Joined(LastLeftBehind().errors);
    EXPECT_EQ(LastLeftBehind().errors.size(), 6u) << errors;
    EXPECT_TRUE(Holds(errors, "flight loop guest.xpl+0x")) << errors;
    EXPECT_TRUE(Holds(errors, "draw callback guest.xpl+0x")) << errors;
    EXPECT_TRUE(Holds(errors, "data accessor \"guest/starts\"")) << errors;
    StepFrame(0.02);
    XPLMCommandOnce(XPLMFindCommand("guest/command"));
    EXPECT_EQ(GetNumber("guest/starts"), 0);

    // A library that cannot be unloaded is a note.
    UnloadPlugin(Load(Folder + "/resident.xpl"));
    EXPECT_TRUE(Holds(Joined(LastLeftBehind().notes), "stayed in memory"));
    UnloadPlugin(12345);
    EXPECT_TRUE(LastLeftBehind().notes.empty());
}

} // namespace
