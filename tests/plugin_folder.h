// A fixture: the plug-in's folder on disk, fresh for each test and removed after it, with the test program
// acting as the plug-in installed in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "frame/aircraft.h"
#include "frame/fresh_start.h"
#include "simhost/simulator.h"
#include "tests/scratch_folder.h"
#include "util/clock.h"

#if APL
const char *const LibraryName = "mac.xpl";
#else
const char *const LibraryName = "lin.xpl";
#endif

// As if an aircraft of this type were loaded.
inline void LoadAircraft(int type) {
    for (const AircraftRow &row : KnownAircraft())
        if (row.type == type) ServeAs(row);
}

using Tree = std::map<std::string, std::string>; // relative path -> bytes

// All files of a folder, and of those in it.
inline Tree ReadTree(const std::string &folder) {
    Tree tree;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        std::ifstream file(entry.path(), std::ios::binary);
        tree[std::filesystem::relative(entry.path(), folder)] = {std::istreambuf_iterator<char>(file), {}};
    }
    return tree;
}

// Makes of what is there now what was there; what has not changed is left alone.
inline void RestoreTree(const std::string &folder, const Tree &now, const Tree &tree) {
    for (const auto &[name, bytes] : now)
        if (!tree.contains(name)) std::filesystem::remove(folder + name);
    for (const auto &[name, bytes] : tree)
        if (!now.contains(name) || now.at(name) != bytes)
            std::ofstream(folder + name, std::ios::binary) << bytes;
}

class PluginFolder : public ::testing::Test {
protected:
    // All end in "/".
    const ScratchFolder scratch;
    const std::string &root = scratch.path; // the simulator's folder
    std::string aircraft;                   // <root>Aircraft/Test/
    std::string plugin;                     // <aircraft>plugins/fennic/64/

    PluginFolder() {
        aircraft = root + "Aircraft/Test/";
        plugin = aircraft + "plugins/fennic/64/";
        for (const char *folder : {"data/obj", "custom/positions-w", "custom/presets", "systems"})
            std::filesystem::create_directories(plugin + folder);
        simhost::ResetSimulator();
        simhost::SetFolders(root, aircraft, "");
        simhost::ActAsPlugin(plugin + LibraryName);
        FindSimulatorDatarefs();
    }

    // Nothing is left to another test of the same process.
    ~PluginFolder() override { ResetEverything(); }

    // Writes a file in the plug-in's folder, making its folders.
    void write(const std::string &path, const std::string &text) {
        std::filesystem::create_directories(std::filesystem::path(plugin + path).parent_path());
        std::ofstream file(plugin + path, std::ios::binary);
        file << text;
        if (!file.flush()) throw std::runtime_error("cannot write " + path);
    }

    // What a setup copies into the aircraft.
    void ShipFigure() {
        for (const char *name : {"kvfennic.obj", "kvfennic.png", "kvfennic_nml.png", "seats.obj"})
            write(std::string("data/obj/") + name, std::string("the plug-in's ") + name);
        for (const char *name : {"kvfennic.obj", "kvfennic.png"})
            write(std::string("data/obj/original/") + name, std::string("original ") + name);
    }

    // The bytes of a file in the plug-in's folder; fails the test when there is none.
    std::string read(const std::string &path) {
        std::ifstream file(plugin + path, std::ios::binary);
        EXPECT_TRUE(file.good()) << "no file " << path;
        return {std::istreambuf_iterator<char>(file), {}};
    }

    bool exists(const std::string &path) { return std::filesystem::exists(plugin + path); }
};
