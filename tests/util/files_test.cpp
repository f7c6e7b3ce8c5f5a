// Files: what reading drops, and what no write may touch. That a write which fails or is cut off leaves the
// old file or the new one is tested with all writers of files, in tests/writers/.
#include "util/files.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/log_lines.h"
#include "tests/plugin_folder.h"
#include "tests/writers/file_calls.h"
#include "util/log.h"
#include "util/nav_data.h"
#include "util/paths.h"

namespace {

namespace fs = std::filesystem;

class Files : public PluginFolder {
protected:
    Files() { simhost::TakeLogLines(); }

    static size_t Entries(const std::string &folder) {
        return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }
};

TEST_F(Files, LinesAreReadWithEitherLineEndAndTheirNumbers) {
    write("a.txt", "one\r\n\r\n\ntwo\r\r\n\nth\rree");
    const std::vector<FileLine> lines = ReadFileLines(plugin + "a.txt");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].text, "one");
    EXPECT_EQ(lines[1].text, "two");
    EXPECT_EQ(lines[1].number, 4);
    EXPECT_EQ(lines[2].text, "three");
    EXPECT_EQ(lines[2].number, 6);
    EXPECT_EQ(FileLineSize(plugin + "a.txt"), 3);
    write("empty.txt", "");
    EXPECT_TRUE(ReadFileToVector(plugin + "empty.txt").empty());
    EXPECT_TRUE(simhost::TakeLogLines().empty());
}

TEST_F(Files, WhatCannotBeReadIsEmptyAndSaysSoOnce) {
    for (const std::string &path : {plugin + "missing.txt", plugin + "data"}) {
        EXPECT_EQ(isFileExistString(path), 0);
        simhost::TakeLogLines();
        EXPECT_TRUE(ReadFileToVector(path).empty());
        EXPECT_EQ(CountNewLines({"FileIO:Cant open file " + path}), 1);
        EXPECT_EQ(ReadFileToString(path), "");
        EXPECT_EQ(CountNewLines({"Nimbrel:FileIO:Cant open file " + path}), 1);
    }
    EXPECT_EQ(isFileExistChar(nullptr), 0);
}

TEST_F(Files, WhatCouldNotBeReadIsNotReplacedUntilTheNextStart) {
    for (const auto how : {Harm::Fail, Harm::None}) {
        write("a.txt", "mine");
        std::vector<FileLine> lines;
        int call = 0;
        if (how == Harm::Fail) {
            HarmCalls(Harm::None, 0, 0, true);
            EXPECT_EQ(ReadLines(plugin + "a.txt", lines), Reading::Read);
            call = counts->calls;
        } else {
            write("a.txt", "mine" + std::string(SmallFile, '\n')); // too large
        }
        for (; call >= 0; call--) {
            HarmCalls(how, call, EIO, true);
            const bool isRead = ReadLines(plugin + "a.txt", lines) == Reading::Read;
            HarmCalls(Harm::None, 0, 0, true);
            const std::string before = read("a.txt");
            EXPECT_EQ(WriteWholeFile(plugin + "data/../a.txt", "defaults"), isRead) << call;
            EXPECT_TRUE(isRead || read("a.txt") == before);
            ResetFiles();
            write("a.txt", before);
        }
    }
    EXPECT_EQ(CountNewLines({"Cant write file", "could not be read"}), 6)
        << "opening, both looks at it, both reads, too large";
    std::vector<FileLine> lines;
    EXPECT_EQ(ReadLines(plugin + "none.txt", lines), Reading::Absent);
    EXPECT_TRUE(WriteWholeFile(plugin + "none.txt", "first"));
}

TEST_F(Files, NothingButARegularFileIsReadOrReplaced) {
    ASSERT_EQ(mkfifo((plugin + "pipe.txt").c_str(), 0666), 0);
    fs::create_symlink("/dev/zero", plugin + "device.txt");
    write("target.txt", "t");
    for (const char *name : {"pipe.txt", "device.txt"}) {
        EXPECT_EQ(isFileExistString(plugin + name), 0);
        EXPECT_TRUE(ReadFileLines(plugin + name).empty());
        EXPECT_EQ(copyFile(plugin + name, plugin + "target.txt"), 0);
        EXPECT_EQ(CountNewLines({"Cant open file ", name, "it is no regular file"}), 2) << name;
        ResetFiles();
        EXPECT_FALSE(WriteWholeFile(plugin + name, "x"));
    }
    EXPECT_EQ(read("target.txt"), "t");
}

TEST_F(Files, LinksAreFollowedWithinTheAircraftAlone) {
    fs::create_directories(root + "elsewhere");
    std::ofstream(root + "elsewhere/notes.txt") << "the user's";
    fs::create_symlink(root + "elsewhere/notes.txt", plugin + "data/out.txt");
    fs::create_symlink(root + "elsewhere", plugin + "linked");
    EXPECT_FALSE(WriteWholeFile(plugin + "data/out.txt", "x"));
    EXPECT_FALSE(WriteWholeFile(plugin + "linked/new.txt", "x"));
    EXPECT_EQ(CountNewLines({"Cant write file", "out of the aircraft's folder"}), 2);
    fs::create_symlink(root + "elsewhere/notes.txt", plugin + "data/in.txt.fennic-new"); // planted
    EXPECT_TRUE(WriteWholeFile(plugin + "data/in.txt", "x"));
    EXPECT_EQ(ReadFileToString(root + "elsewhere/notes.txt"), "the user's");
    EXPECT_EQ(Entries(root + "elsewhere"), 1U);

    // A link of the user's for the plug-in's or the aircraft's whole folder is the folder itself.
    fs::rename(plugin, root + "elsewhere/64");
    fs::create_directory_symlink(root + "elsewhere/64", plugin.substr(0, plugin.size() - 1));
    fs::rename(aircraft, root + "elsewhere/Test");
    fs::create_directory_symlink(root + "elsewhere/Test", aircraft.substr(0, aircraft.size() - 1));
    EXPECT_TRUE(WriteWholeFile(plugin + "data/in.txt", "y"));
    EXPECT_TRUE(WriteWholeFile(aircraft + "test.acf", "z"));
    EXPECT_EQ(read("data/in.txt"), "y");
}

TEST_F(Files, AWriteKeepsPermissionsAndLinks) {
    write("target.txt", "old");
    fs::permissions(plugin + "target.txt", fs::perms(0640));
    fs::create_symlink("target.txt", plugin + "link.txt");
    EXPECT_TRUE(WriteWholeFile(plugin + "link.txt", std::string("n\0w", 3)));
    EXPECT_TRUE(fs::is_symlink(plugin + "link.txt"));
    EXPECT_EQ(read("target.txt"), std::string("n\0w", 3));
    EXPECT_EQ(fs::status(plugin + "target.txt").permissions(), fs::perms(0640));

    // A neighbour that a crash left is no obstacle.
    write("target.txt.fennic-new", std::string(1000, 'x'));
    EXPECT_TRUE(WriteWholeFile(plugin + "target.txt", "short"));
    EXPECT_EQ(read("target.txt"), "short");
    EXPECT_FALSE(exists("target.txt.fennic-new"));
}

// The superuser may write everything, so this is tried as nobody, in a process of its own.
TEST_F(Files, AFileOrFolderThatMayNotBeWrittenStays) {
    write("data/old.txt", "old");
    write("data/closed/old.txt", "old");
    fs::permissions(root, fs::perms(0777));
    for (const auto &entry : fs::recursive_directory_iterator(root))
        fs::permissions(entry.path(), fs::perms(0777));
    fs::permissions(plugin + "data/old.txt", fs::perms(0444));
    fs::permissions(plugin + "data/closed", fs::perms(0555));
    const auto areBothRefused = [&] {
        if (geteuid() == 0 && setuid(65534) != 0) return false;
        return !WriteWholeFile(plugin + "data/old.txt", "x")
               && !WriteWholeFile(plugin + "data/closed/old.txt", "x");
    };
    EXPECT_EXIT(_exit(areBothRefused() ? 0 : 1), testing::ExitedWithCode(0), "");
    EXPECT_EQ(read("data/old.txt"), "old");
    EXPECT_EQ(read("data/closed/old.txt"), "old");
    EXPECT_EQ(Entries(plugin + "data/closed"), 1U);
    EXPECT_FALSE(exists("data/old.txt.fennic-new"));
    fs::permissions(plugin + "data/closed", fs::perms(0755));
}

TEST_F(Files, ListsAreSplitByTheDotInTheName) {
    for (const char *name : {"list/b.txt", "list/a.txt", "list/.hidden", "list/odd..txt", "list/noext"})
        write(name, "");
    fs::create_directories(plugin + "list/sub");
    EXPECT_EQ(ReadFileListFromFolder(plugin + "list"),
              (std::vector<std::string>{".", ".hidden", "a.txt", "b.txt"}));
    EXPECT_EQ(ReadFolderListFromFolder(plugin + "list"),
              (std::vector<std::string>{plugin + "list/noext", plugin + "list/sub"}));
    EXPECT_TRUE(ReadFileListFromFolder(plugin + "nowhere").empty());
}

TEST_F(Files, NamesThatLeaveTheirFolderAreNotSafe) {
    for (const char *name : {"", ".", "..", "a/b", "../a", "a\\b", "C:a"})
        EXPECT_FALSE(isSafeFileName(name)) << name;
    EXPECT_FALSE(isSafeFileName(std::string_view("a\0b", 3)));
    for (const char *name : {"a", "...", "BEFORE START", "a.txt"}) EXPECT_TRUE(isSafeFileName(name)) << name;
}

TEST_F(Files, NavigationDataIsTheUsersOwnWhereThereIsSome) {
    EXPECT_EQ(WhatNavDataProcPath(), root + "Resources/GNS430/navdata/Proc/");
    fs::create_directories(root + "Custom Data/GNS430/navdata");
    std::ofstream(root + "Custom Data/GNS430/navdata/cycle_info.txt") << "x";
    EXPECT_EQ(WhatNavDataPath(), root + "Custom Data/GNS430/navdata/");
    EXPECT_EQ(WhatNavDataProcPath(), root + "Custom Data/GNS430/navdata/Proc/");
}

TEST_F(Files, NativePathsPassUntouched) {
    char out[8];
    EXPECT_EQ(ConvertPath("/a:b/cd", out, sizeof out), 0);
    EXPECT_STREQ(out, "/a:b/cd");
    EXPECT_EQ(ConvertPath("/a/b/c/d", out, sizeof out), -1) << "one byte too long";
    EXPECT_STREQ(out, "/a/b/c/");
    EXPECT_EQ(ConvertPath(nullptr, out, sizeof out), -1);
}

TEST_F(Files, AMessageIsOneLineOfTheLogWhateverItQuotes) {
    LogDroppedLine("a.txt", 3, "no reason", std::string_view("x\0y", 3));
    string2debugString("next", "", 1);
    string2debugString("silent", "", 0);
    const std::vector<std::string> lines = simhost::TakeLogLines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_NE(lines[0].find("a.txt line 3: no reason"), std::string::npos);
    EXPECT_EQ(lines[1], "KV FENNIC Plugin: 0 SEC TFT next");
}

} // namespace
