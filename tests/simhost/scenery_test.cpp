// The camera, the ground, objects and their instances, and whose the other planes are.
#include "XPLMScenery.h"

#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "XPLMCamera.h"
#include "XPLMGraphics.h"
#include "XPLMInstance.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "simhost/interface/plugins.h"
#include "simhost/simulator.h"

using namespace simhost;

namespace {

class World : public ::testing::Test {
protected:
    World() {
        ResetSimulator();
        ActAsPlugin("/nowhere/plugins/test/64/lin.xpl");
    }
};

struct Operator {
    int frames = 0, left = 0, lost = 0;
};

int MoveCamera(XPLMCameraPosition_t *position, int isLosingControl, void *refcon) {
    auto *one = static_cast<Operator *>(refcon);
    if (isLosingControl) {
        EXPECT_EQ(position, nullptr);
        return one->lost++;
    }
    position->heading = static_cast<float>(++one->frames);
    return one->frames < one->left;
}

float Heading() {
    XPLMCameraPosition_t position = {};
    XPLMReadCameraPosition(&position);
    return position.heading;
}

TEST_F(World, TheCameraIsThePilotsHeadUntilSomebodyHasIt) {
    SetNumber("sim/flightmodel/position/psi", 90);
    SetNumber("sim/graphics/view/pilots_head_z", -2); // ahead, which is east
    XPLMCameraPosition_t position = {};
    XPLMReadCameraPosition(&position);
    EXPECT_NEAR(position.x - GetNumber("sim/flightmodel/position/local_x"), 2, 1e-3);
    EXPECT_FLOAT_EQ(position.heading, 90);
    Operator first{0, 100}, second{0, 3};
    XPLMControlCamera(xplm_ControlCameraUntilViewChanges, MoveCamera, &first);
    for (int i = 0; i < 2; i++) StepFrame(0.02);
    EXPECT_FLOAT_EQ(Heading(), 2);
    SetNumber("sim/graphics/view/view_type", 1000);
    StepFrame(0.02);
    EXPECT_EQ(first.lost, 1);
    XPLMControlCamera(xplm_ControlCameraForever, MoveCamera, &first);
    XPLMControlCamera(xplm_ControlCameraForever, MoveCamera, &second);
    EXPECT_EQ(first.lost, 2) << "to the other";
    for (int i = 0; i < 5; i++) StepFrame(0.02);
    EXPECT_EQ(second.frames, 3) << "given back";
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr) + second.lost, 0);
    EXPECT_FLOAT_EQ(Heading(), 90);
}

TEST_F(World, AProbeHitsTheGroundBelowTheWheels) {
    SetNumber("sim/flightmodel/position/y_agl", 100);
    double x = 0, y = 0, z = 0;
    XPLMWorldToLocal(GetNumber("sim/flightmodel/position/latitude"),
                     GetNumber("sim/flightmodel/position/longitude"),
                     GetNumber("sim/flightmodel/position/elevation"), &x, &y, &z);
    const XPLMProbeRef probe = XPLMCreateProbe(xplm_ProbeY);
    XPLMProbeInfo_t info = {};
    info.structSize = sizeof info;
    ASSERT_EQ(XPLMProbeTerrainXYZ(probe, static_cast<float>(x), static_cast<float>(y), static_cast<float>(z),
                                  &info),
              xplm_ProbeHitTerrain);
    EXPECT_NEAR(info.locationY, y - 100, 0.01);
    EXPECT_NEAR(info.normalY, 1, 1e-5);
    XPLMDestroyProbe(probe);
    EXPECT_EQ(XPLMProbeTerrainXYZ(probe, 0, 0, 0, &info), xplm_ProbeError);
}

TEST_F(World, ObjectsAreCountedAndLoadedBehindTheScenes) {
    const std::string path = ::testing::TempDir() + "fennic-box.obj";
    std::ofstream(path) << "I\n800\nOBJ\n\nPOINT_COUNTS 0 0 0 0\n";
    const XPLMObjectRef box = XPLMLoadObject(path.c_str());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(XPLMLoadObject("nowhere.obj"), nullptr);
    static std::vector<XPLMObjectRef> loaded;
    loaded.clear();
    for (const char *name : {path.c_str(), "nowhere.obj"})
        XPLMLoadObjectAsync(
            name, [](XPLMObjectRef object, void *) { loaded.push_back(object); }, nullptr);
    EXPECT_TRUE(loaded.empty());
    StepFrame(0.02);
    EXPECT_EQ(loaded, (std::vector<XPLMObjectRef>{box, nullptr}));
    const XPLMInstanceRef instance = XPLMCreateInstance(box, nullptr);
    for (int i = 0; i < 2; i++) XPLMUnloadObject(box);
    EXPECT_NE(XPLMCreateInstance(box, nullptr), nullptr) << "an instance keeps its object";
    XPLMDestroyInstance(instance);
    std::remove(path.c_str());
}

TEST_F(World, OnePluginHasTheOtherPlanes) {
    const XPLMPluginID first = XPLMGetMyID();
    EXPECT_EQ(XPLMAcquirePlanes(nullptr, nullptr, nullptr), 1);
    ActAsPlugin("/nowhere/plugins/other/64/lin.xpl");
    static bool isAsked;
    isAsked = false;
    const auto ask = [](void *) { isAsked = XPLMAcquirePlanes(nullptr, nullptr, nullptr) == 1; };
    EXPECT_EQ(XPLMAcquirePlanes(nullptr, ask, nullptr), 0);
    XPLMReleasePlanes(); // which it has not
    EXPECT_FALSE(isAsked);
    {
        RunningScope scope(first, "a test");
        XPLMReleasePlanes();
    }
    XPLMPluginID controller = 0;
    XPLMCountAircraft(nullptr, nullptr, &controller);
    EXPECT_TRUE(isAsked && controller == XPLMGetMyID());
}

} // namespace
