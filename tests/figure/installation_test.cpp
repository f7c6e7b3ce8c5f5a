// The setup and its undoing: updates, links, and aircraft files of every form. What they leave behind in each
// type is flown in flights/installation.lua; what becomes of them when they are broken off is tested with all
// writers of files, in tests/writers/.
#include "figure/installation.h"

#include "frame/aircraft.h"
#include "tests/log_lines.h"
#include "tests/plugin_folder.h"
#include "util/files.h"
#include "util/log.h"

namespace {

namespace fs = std::filesystem;

const std::string Acf =
    "I\r\n1200 Version\r\n\r\nP _obja/0/_v10_att_file_stl seat.obj\r\nP _obja/count 1\r\n";
const char *const Object = "P _obja/0/_obj_flags 0\n\nP _obja/0/_v10_att_file_stl kvfennic.obj\n";
const std::string AcfWithFigure =
    "I\r\n1200 Version\r\n\r\nP _obja/0/_v10_att_file_stl seat.obj\r\nP _obja/1/_obj_flags 0\r\n"
    "P _obja/1/_v10_att_file_stl kvfennic.obj\r\nP _obja/count 2\r\n";

// Of the plug-in's folder, what is in this one counts as well: the setup keeps the aircraft's own figure
// there.
const std::string Originals = "plugins/fennic/64/data/obj/original/";

class Installation : public PluginFolder {
protected:
    Tree first; // the aircraft before the first setup

    void ShipAndBuild(int type) {
        LoadAircraft(type);
        simhost::SetFolders(root, aircraft, "test.acf");
        ShipFigure();
        write("data/obj/acf.txt", Object);
        first = {{"test.acf", Acf}};
        for (const char *name : {"objects/kvfennic.obj", "objects/kvfennic.png"})
            if (type != 767) first[name] = std::string("the aircraft's ") + name;
        for (const char *name : {"kvfennic.obj", "kvfennic.png"})
            first[Originals + name] = std::string("original ") + name;
        if (type < 400)
            for (const char *name : {"objects/seats.obj", "objects/seats_Std.obj"})
                first[name] = std::string("the aircraft's ") + name;
        Restore(first);
    }

    Tree Files() const {
        Tree tree = ReadTree(aircraft);
        std::erase_if(tree, [](const auto &file) {
            return file.first.starts_with("plugins") && !file.first.starts_with(Originals);
        });
        return tree;
    }

    void Restore(const Tree &tree) const {
        fs::create_directories(aircraft + "objects");
        RestoreTree(aircraft, Files(), tree);
    }
};

TEST_F(Installation, BringsTheAircraftsOwnFigureBackAfterUpdates) {
    ShipAndBuild(737);
    const auto objects = [&] {
        return std::pair(Files().at("objects/kvfennic.obj"), Files().at("objects/kvfennic.png"));
    };
    const auto own = objects();
    const auto updatePlugin = [&](const std::string &version) { // all that a package holds is written over
        write("data/obj/kvfennic.obj", "# Made for Fennic\n" + version);
        write("data/obj/kvfennic.png", version);
        write("data/obj/original/kvfennic.obj",
              "I\n800\nOBJ\n\nTEXTURE kvfennic.png\nPOINT_COUNTS 216 0 0 924\n");
        write("data/obj/original/kvfennic.png", "stand-in");
    };
    const auto standIn = [&] {
        return std::pair(read("data/obj/original/kvfennic.obj"), read("data/obj/original/kvfennic.png"));
    };
    updatePlugin("version 1");
    SetUpThisAircraft();
    EXPECT_EQ(standIn(), own);
    updatePlugin("version 2");
    SetUpThisAircraft();
    updatePlugin("version 3");
    UninstallFromAcf();
    EXPECT_EQ(objects(), own);
    EXPECT_EQ(standIn(), own);

    // The aircraft's own update, before and after a setup, and a setup over what a removal left half done.
    for (const char *version : {"new", "newer"}) {
        std::ofstream(aircraft + "objects/kvfennic.obj", std::ios::binary) << version << " object";
        std::ofstream(aircraft + "objects/kvfennic.png", std::ios::binary) << version;
        SetUpThisAircraft();
        SetUpThisAircraft();
        std::filesystem::copy_file(plugin + "data/obj/original/kvfennic.obj",
                                   aircraft + "objects/kvfennic.obj",
                                   std::filesystem::copy_options::overwrite_existing);
        SetUpThisAircraft();
        UninstallFromAcf();
        EXPECT_EQ(objects(), std::pair(std::string(version) + " object", std::string(version)));
    }

    // A figure of ours is not kept, whatever its version: here the removal of version 1.0.0 left its
    // stand-in.
    ShipAndBuild(739);
    for (const auto &entry : fs::directory_iterator(plugin + "data/obj/original")) fs::remove(entry);
    updatePlugin("version 4");
    const std::string figure = "ANIM_begin\nANIM_hide -1000 1000 kv/fo/_show\n";
    for (const std::string &object : {figure, standIn().first}) {
        std::ofstream(aircraft + "objects/kvfennic.obj", std::ios::binary) << object;
        SetUpThisAircraft();
        EXPECT_FALSE(exists("data/obj/original/kvfennic.obj.aircraft")) << object;
    }
    EXPECT_TRUE(failedSteps.empty());
}

TEST_F(Installation, KeepsLinksPermissionsAndWhatNeedsNoFigure) {
    ShipAndBuild(172);
    SetUpThisAircraft();
    UninstallFromAcf();
    EXPECT_EQ(Files(), first);

    ShipAndBuild(319);
    fs::rename(aircraft + "objects/seats.obj", aircraft + "elsewhere.obj");
    fs::permissions(aircraft + "elsewhere.obj", fs::perms(0640));
    fs::create_symlink("../elsewhere.obj", aircraft + "objects/seats.obj");
    fs::create_symlink("gone/kvfennic.png", aircraft + "objects/kvfennic_nml.png");
    simhost::TakeLogLines();
    SetupAcf();
    EXPECT_TRUE(fs::is_symlink(aircraft + "objects/seats.obj"));
    EXPECT_EQ(Files().at("elsewhere.obj"), "the plug-in's seats.obj");
    EXPECT_EQ(fs::status(aircraft + "elsewhere.obj").permissions(), fs::perms(0640));
    EXPECT_TRUE(fs::is_symlink(aircraft + "objects/kvfennic_nml.png")) << "a link to nowhere is not lost";
    EXPECT_EQ(CountNewLines({"Cant write file", "kvfennic_nml.png"}), 1);
    UninstallFromAcf();
    EXPECT_EQ(Files().at("objects/kvfennic.png"), first.at("objects/kvfennic.png"));
    EXPECT_EQ(Files().at("elsewhere.obj"), "the aircraft's objects/seats.obj");
    EXPECT_TRUE(fs::is_symlink(aircraft + "objects/seats.obj"));
}

TEST_F(Installation, AttachesTheFigureToAnyAircraftFileThatStatesItsObjectsOnce) {
    ShipAndBuild(767);
    const std::string figure = "P _obja/1/_obj_flags 0\r\nP _obja/1/_v10_att_file_stl kvfennic.obj\r\n";
    for (const auto &[acf, expected] :
         Tree{{"a\nP _obja/count 1\n\n b\t\n", "a\r\n" + figure + "P _obja/count 2\r\n\r\n b\t\r\n"},
              {"\r\nP _obja/count 1 ", "\r\n" + figure + "P _obja/count 2\r\n"}}) {
        std::ofstream(aircraft + "test.acf", std::ios::binary) << acf;
        Setup_767();
        EXPECT_EQ(Files().at("test.acf"), expected);
        fs::remove(aircraft + "test.acf.backup");
    }
    const std::string count = "P _obja/count ";
    for (const auto &[acf, reason] : Tree{{"I\n", "no line \"P _obja/count\""},
                                          {"I\n" + count + "1\nP _obja/0/x 1\n" + count + "2\n",
                                           "line 4 states the number of objects again"},
                                          {count + "many\n", "line 1 states no number"},
                                          {count + "-1\n", "line 1 states no number"},
                                          {count + "2147483647\n", "line 1 states no number"},
                                          {count + "99999999999999999999\n", "line 1 states no number"},
                                          {count + "1.5\n", "line 1 states no number"},
                                          {count + "\n", "line 1 states no number"},
                                          {count + "1 2\n", "line 1 states no number"},
                                          {"P a\rP _obja/count 1\rP b\r", "line 1 states no number"},
                                          {"", "file not found: " + aircraft + "test.acf"},
                                          {"\r\n\n", "file not found: " + aircraft + "test.acf"}}) {
        std::ofstream(aircraft + "test.acf", std::ios::binary) << acf;
        simhost::TakeLogLines();
        Setup_767();
        EXPECT_EQ(CountNewLines({"Setup was not complete - ", aircraft + "test.acf", reason}), 1) << acf;
        EXPECT_EQ(Files().at("test.acf"), acf);
        EXPECT_FALSE(fs::exists(aircraft + "test.acf.backup")) << acf;
        EXPECT_EQ(isSetupCompleted_767(), 0);
    }
    Restore(first);
    write("data/obj/acf.txt", "P _obja/0/a 1\nP kvfennic.obj\n");
    Setup_767();
    EXPECT_EQ(CountNewLines({"line 2 of the object has no index"}), 1);
    EXPECT_EQ(Files().at("test.acf"), Acf);
    write("data/obj/acf.txt", "\n");
    Setup_767();
    EXPECT_EQ(CountNewLines({"file not found: ", "test.acf OR ", "acf.txt"}), 1);
    EXPECT_EQ(Files().at("test.acf"), Acf);
    EXPECT_EQ(Files().at("test.acf.backup"), Acf) << "made before the object is looked for";
    write("data/obj/acf.txt", Object);
    Setup_767();
    EXPECT_EQ(Files().at("test.acf"), AcfWithFigure);
    EXPECT_TRUE(isAcfSetupDone());
    Setup_767();
    EXPECT_EQ(CountNewLines({".acf file was not changed - it already contain kvfennic.obj"}), 1);
    EXPECT_EQ(Files().at("test.acf"), AcfWithFigure);
}

} // namespace
