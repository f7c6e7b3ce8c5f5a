// The settings file as users and older versions left it.
#include "frame/settings.h"

#include "tests/log_lines.h"
#include "tests/plugin_folder.h"

namespace {

class Settings : public PluginFolder {
protected:
    void Read(const std::string &text) {
        write("data/settings_mac.txt", text);
        write("data/settings_win.txt", "");
        simhost::TakeLogLines();
        ReadSettings();
    }
};

TEST_F(Settings, OnlyAPairOfFilesCounts) {
    write("data/settings_mac.txt", "user=data\n");
    ReadSettings();
    EXPECT_EQ(globalUser, "") << "without its partner the file is not read";
    write("custom/settings_mac.txt", "user=custom\r\nvolume=40\r\n");
    write("custom/settings_win.txt", "user=never read");
    ReadSettings();
    EXPECT_EQ(globalUser, "custom");
    write("data/settings_win.txt", "user=never read");
    ReadSettings();
    EXPECT_EQ(globalUser, "data");
    EXPECT_EQ(globalVolume, 40) << "what a file does not name stays";
}

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

TEST_F(Settings, ANameCountsOnlyBehindItsGender) {
    Read("name-w=Anna\ngender=w\n");
    EXPECT_EQ(globalNameW, "Anna");
    EXPECT_EQ(globalName, "");
}

TEST_F(Settings, MalformedNumbersKeepTheDefaultAndNameTheirLine) {
    Read("gender=w\n\nvolume=\nrate=fast\nvolume=99999999999\nrate=45\n");
    EXPECT_EQ(globalVolume, 100);
    EXPECT_EQ(globalRate, 45);
    const auto lines = simhost::TakeLogLines();
    EXPECT_EQ(lines.size(), 3U);
    EXPECT_EQ(CountLines(lines, {"data/settings_mac.txt line 3:", "volume="}), 1);
    EXPECT_EQ(CountLines(lines, {"data/settings_mac.txt line 4:", "rate=", "fast"}), 1);
    EXPECT_EQ(CountLines(lines, {"data/settings_mac.txt line 5:", "volume="}), 1);
}

TEST_F(Settings, WhatIsWrittenIsReadBack) {
    const std::string text =
        "gender=w\r\nAPLvoice-w=voice a\r\nAPLvoice-m=voice b\r\nIBMvoice-w=c\r\n"
        "IBMvoice-m=d\r\nvolume=30\r\nrate=55\r\nname-w=Ann e\r\nname-m=f\r\nsize-w=1.5\r\n"
        "size-m=2\r\nsign=Sir\r\nuser=J\xC3\xB6rg\r\ncheckdrf=a/b\r\ntxtoffset=10\r\n"
        "installation=-1\r\n\r\n";
    Read(text);
    EXPECT_EQ(InstallationState, -1);
    SaveSettings();
    EXPECT_EQ(read("data/settings_mac.txt"), text);

    // The menu's choice of a voice is that of the present gender.
    globalVoiceW = "chosen";
    globalVoiceM = "of the other";
    SaveSettings();
    EXPECT_NE(read("data/settings_mac.txt").find("APLvoice-w=chosen\r\nAPLvoice-m=voice b\r\n"),
              std::string::npos);
    simhost::TakeLogLines();
    std::filesystem::remove_all(plugin + "data");
    SaveSettings();
    EXPECT_EQ(CountNewLines({"Cant write file", "settings_mac.txt"}), 1);
}

TEST_F(Settings, AnotherFigureInTheAircraftAsksForTheSetupAgain) {
    const auto installed = [&](const std::string &object, const std::string &settings) {
        std::filesystem::create_directories(aircraft + "objects");
        std::ofstream(aircraft + "objects/kvfennic.obj") << object;
        Read(settings);
        return InstallationState;
    };
    EXPECT_EQ(installed("I\n", "installation=2\n"), 2) << "nothing to compare with";
    write("data/obj/kvfennic.obj", "I\r\n\r\n800\r\n");
    EXPECT_EQ(installed("I\n800\n", "installation=2\n"), 2);
    EXPECT_EQ(installed("I\n800\nOBJ\n", "installation=2\nuser=x\n"), 0);
    EXPECT_EQ(installed("I\n800\nOBJ\n", "installation=1\n"), 1);
}

} // namespace
