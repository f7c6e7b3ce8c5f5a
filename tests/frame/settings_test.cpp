// The settings file as users and older versions left it.
#include "frame/settings.h"

#include <sys/stat.h>

#include "tests/log_lines.h"
#include "tests/plugin_folder.h"
#include "util/files.h"

namespace {

class Settings : public PluginFolder {
protected:
    void Read(const std::string &text) {
        write("data/settings_mac.txt", text);
        write("data/settings_win.txt", "");
        ReadSettings();
    }
};

TEST_F(Settings, TheFirstKeyOfTheOrderDecidesWhereverItStands) {
    Read("name-w=Anna\n"
         "gender=x\n"
         "xx gender=w\n" // the rest of the line is part of the value
         "gender=m\n"
         "name-m=Max  Mustermann\n"
         "user=John Smith\n"
         "user=volume=30\n"
         "sign=user=both\n"
         "txtoffset=250\n"
         "installation=11\n"
         "nonsense\n");
    EXPECT_EQ(globalGender, "m");
    EXPECT_EQ(globalPosFolder, "positions-m/");
    EXPECT_EQ(globalNameW, "Anna");
    EXPECT_EQ(globalName, "Max Mustermann");
    EXPECT_EQ(globalUser, "John Smith");
    EXPECT_EQ(globalSir, "user=both");
    EXPECT_EQ(globalVolume, 100) << "\"user=30\" is no number";
    EXPECT_EQ(widgetOffsetY, 10);
    EXPECT_EQ(InstallationState, 1);
}

TEST_F(Settings, WhatWasNotReadIsNotLost) {
    const std::string mine = "gender=w\nuser=Mine\n";
    write("data/settings_mac.txt", mine); // its partner is not there
    for (int flight = 0; flight < 2; flight++) {
        ReadSettings();
        EXPECT_EQ(globalUser, "");
        SaveSettings();
        EXPECT_NE(read("data/settings_mac.txt"), mine);
        EXPECT_EQ(read("data/settings_mac.txt.kept"), mine);
    }
    EXPECT_EQ(CountNewLines({"Settings were not read", "settings_mac.txt.kept"}), 1);

    // One that cannot be read for a flight, as it is a pipe then, or has a partner that is one.
    for (const char *name : {"settings_mac.txt", "settings_win.txt"}) {
        write("data/settings_mac.txt", mine);
        write("data/settings_win.txt", "");
        const std::string file = plugin + "data/" + name;
        std::filesystem::rename(file, file + "-");
        ASSERT_EQ(mkfifo(file.c_str(), 0666), 0);
        ResetFiles();
        ReadSettings();
        std::filesystem::rename(file + "-", file);
        SaveSettings();
        EXPECT_EQ(read("data/settings_mac.txt"), mine);
        EXPECT_EQ(CountNewLines({"Cant write file", "settings_mac.txt"}), 1);
    }
    ResetFiles();
    ReadSettings();
    EXPECT_EQ(globalUser, "Mine");
}

TEST_F(Settings, ANameCountsOnlyBehindItsGender) {
    Read("name-w=Anna\ngender=w\n");
    EXPECT_EQ(globalNameW, "Anna");
    EXPECT_EQ(globalName, "");
}

} // namespace
