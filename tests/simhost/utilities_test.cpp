// Paths, the log, world coordinates, and calls that are not offered yet.
#include "XPLMUtilities.h"

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "simhost/simulator.h"
#include "tests/scratch_folder.h"

using namespace simhost;

namespace {

class Utilities : public ::testing::Test {
protected:
    Utilities() { ResetSimulator(); }
};

TEST_F(Utilities, PathsEndWithTheSeparatorAndFitTheirBuffers) {
    SetFolders("/games/sim", "/games/sim/Aircraft/Cessna/", "Cessna.acf");
    char path[512], file[256];
    XPLMGetSystemPath(path);
    EXPECT_STREQ(path, "/games/sim/");
    XPLMGetNthAircraftModel(0, file, path);
    EXPECT_STREQ(file, "Cessna.acf");
    EXPECT_STREQ(path, "/games/sim/Aircraft/Cessna/Cessna.acf");
    XPLMGetNthAircraftModel(1, file, path);
    EXPECT_STREQ(file, "");
    EXPECT_STREQ(path, "");
    SetFolders("/" + std::string(600, 'd'), "", "");
    XPLMGetSystemPath(path);
    EXPECT_EQ(std::string(path).size(), 511u);

    char full[] = "/a/b/c.txt", bare[] = "c.txt";
    EXPECT_STREQ(XPLMExtractFileAndPath(full), "c.txt");
    EXPECT_STREQ(full, "/a/b");
    EXPECT_STREQ(XPLMExtractFileAndPath(bare), "c.txt");
    EXPECT_EQ(XPLMExtractFileAndPath(nullptr), nullptr);
}

TEST_F(Utilities, EveryCallThatTheHeadersDeclareIsThere) {
    std::istringstream names(INTERFACE_NAMES);
    int count = 0;
    for (std::string name; std::getline(names, name, ','); count++)
        EXPECT_NE(XPLMFindSymbol(name.c_str()), nullptr) << name;
    EXPECT_GT(count, 200);
}

TEST_F(Utilities, FoldersAreListedAsFarAsThereIsRoom) {
    const std::filesystem::path folder = std::filesystem::path(::testing::TempDir()) / "fennic-listed";
    std::filesystem::create_directories(folder / "b");
    std::ofstream(folder / "a.txt") << "";
    char names[8];
    char *places[4];
    int total = 0, returned = 0;
    const std::string path = folder.string();
    EXPECT_EQ(XPLMGetDirectoryContents(path.c_str(), 0, names, 7, places, 4, &total, &returned), 0);
    EXPECT_EQ(std::pair(total, returned), std::pair(2, 1));
    EXPECT_EQ(XPLMGetDirectoryContents(path.c_str(), 0, names, 8, places, 4, &total, &returned), 1);
    EXPECT_STREQ(places[1], "b");
    std::filesystem::remove_all(folder);
}

TEST_F(Utilities, LogLinesMayComeInPieces) {
    const ScratchFolder folder;
    SetFolders(folder.path, "", "");
    XPLMDebugString("one ");
    EXPECT_TRUE(TakeLogLines().empty());
    XPLMDebugString("line\r\n\ntwo\nthr");
    XPLMDebugString("ee");
    XPLMDebugString(nullptr);
    EXPECT_EQ(TakeLogLines(), (std::vector<std::string>{"one line", "", "two"}));
    XPLMDebugString("\n");
    EXPECT_EQ(TakeLogLines(), std::vector<std::string>{"three"});
    std::ifstream file(folder.path + "Log.txt", std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_EQ(text.str(), "one line\r\n\ntwo\nthree\n");
}

TEST_F(Utilities, LocalCoordinatesAreEastUpSouthInMetres) {
    SetWorldReference(47.5, 8.5);
    double x = 1, y = 1, z = 1;
    XPLMWorldToLocal(47.5, 8.5, 100, &x, &y, &z);
    EXPECT_NEAR(x, 0, 1e-6);
    EXPECT_NEAR(y, 100, 1e-6);
    EXPECT_NEAR(z, 0, 1e-6);
    // WGS84 (a = 6378137 m, e^2 = 0.00669438) at 47.5 degrees of latitude: the radius of curvature of the
    // meridian a (1 - e^2) / (1 - e^2 sin^2)^1.5 = 6370.2 km makes a hundredth of a degree 1111.8 m; that of
    // the prime vertical a / (1 - e^2 sin^2)^0.5 = 6389.8 km times the cosine makes it 753.4 m.
    XPLMWorldToLocal(47.51, 8.5, 0, &x, &y, &z);
    EXPECT_NEAR(z, -1111.8, 0.1);
    EXPECT_NEAR(x, 0, 1e-6);
    XPLMWorldToLocal(47.5, 8.51, 0, &x, &y, &z);
    EXPECT_NEAR(x, 753.4, 0.1);
    EXPECT_LT(y, 0) << "the Earth curves away below the plane";

    // There and back, also after the origin has moved.
    for (double originLatitude : {47.5, -33.9, 89.999}) {
        SetWorldReference(originLatitude, 8.5);
        double latitude = 0, longitude = 0, altitude = 0;
        XPLMWorldToLocal(originLatitude - 0.3, 8.9, 1234, &x, &y, &z);
        XPLMLocalToWorld(x, y, z, &latitude, &longitude, &altitude);
        EXPECT_NEAR(latitude, originLatitude - 0.3, 1e-9);
        EXPECT_NEAR(longitude, 8.9, 1e-9);
        EXPECT_NEAR(altitude, 1234, 1e-5);
    }
    for (double noPlace : {std::nan(""), 91.0}) SetWorldReference(noPlace, 0);
    EXPECT_NEAR(GetNumber("sim/flightmodel/position/lat_ref"), 89.999, 1e-4);

    // The origin lies at the aircraft, and its local position follows it.
    ResetSimulator();
    SetNumber("sim/flightmodel/position/latitude", -33.9);
    SetNumber("sim/flightmodel/position/longitude", 151.2);
    SetNumber("sim/flightmodel/position/elevation", 50);
    XPLMWorldToLocal(-33.9, 151.2, 0, &x, &y, &z);
    EXPECT_NEAR(std::hypot(x, y, z), 0, 1e-6);
    SetNumber("sim/flightmodel/position/longitude", 151.21);
    StepFrame(0.02);
    XPLMWorldToLocal(-33.9, 151.21, 50, &x, &y, &z);
    EXPECT_GT(x, 900);
    EXPECT_EQ(GetNumber("sim/flightmodel/position/local_x"), x);
    EXPECT_EQ(GetNumber("sim/flightmodel/position/local_z"), z);
}

} // namespace
