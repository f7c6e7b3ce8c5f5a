// Windows as plug-ins make them: order, geometry, modes, the headset, and what is safe inside their
// callbacks.
#include "simhost/windows/windows.h"

#include <cstring>
#include <string>
#include <vector>

#include "XPLMGraphics.h"
#include "tests/simhost/test_window.h"

using namespace simhost;

namespace {

class Windows : public OnScreen {
protected:
    static Events Drawn() {
        TestWindow::notesDrawing = true;
        DrawFrame(false);
        TestWindow::notesDrawing = false;
        return TakenEvents();
    }
};

TEST_F(Windows, LieInLayersAndInTheOrderOfTheirMaking) {
    TestWindow a{"a"}, b{"b"}, modal{"modal"}, overlay{"overlay"}, growl{"growl"};
    Create(growl, 0, 10, 10, 0, 0, xplm_WindowLayerGrowlNotifications);
    Create(modal, 0, 10, 10, 0, 0, xplm_WindowLayerModal);
    Create(a, 0, 10, 10, 0);
    Create(b, 0, 10, 10, 0);
    Create(overlay, 0, 10, 10, 0, 0, xplm_WindowLayerFlightOverlay);
    EXPECT_EQ(Drawn(), (Events{"overlay draws", "a draws", "b draws", "modal draws", "growl draws"}));
    for (const TestWindow *front : {&b, &modal, &overlay, &growl})
        EXPECT_TRUE(XPLMIsWindowInFront(front->id));
    EXPECT_FALSE(XPLMIsWindowInFront(a.id));

    XPLMBringWindowToFront(a.id);
    XPLMBringWindowToFront(overlay.id);
    EXPECT_EQ(Drawn(), (Events{"overlay draws", "b draws", "a draws", "modal draws", "growl draws"}));
    XPLMSetWindowIsVisible(a.id, 0);
    EXPECT_TRUE(XPLMIsWindowInFront(b.id)) << "of those that are visible";
    EXPECT_FALSE(XPLMIsWindowInFront(a.id));
    EXPECT_EQ(XPLMGetWindowIsVisible(a.id), 0);
    EXPECT_EQ(Drawn(), (Events{"overlay draws", "b draws", "modal draws", "growl draws"}));
    XPLMDestroyWindow(b.id);
    XPLMDestroyWindow(modal.id);
    EXPECT_EQ(Drawn(), (Events{"overlay draws", "growl draws"}));
    EXPECT_EQ(WindowsFrontToBack().size(), 3u);
}

TEST_F(Windows, FieldsPastTheStructSizeAreAbsent) {
    TestWindow window{"w"};
    // Only so much memory as the caller's structure has: the sanitizer sees a read behind it.
    const auto createSized = [&](std::size_t size) {
        XPLMCreateWindow_t whole = Parameters(window, 0, 100, 100, 0);
        whole.layer = xplm_WindowLayerModal;
        whole.structSize = static_cast<int>(size);
        std::vector<char> memory(size);
        std::memcpy(memory.data(), &whole, size);
        window.id = XPLMCreateWindowEx(reinterpret_cast<XPLMCreateWindow_t *>(memory.data()));
        PressMouse(50, 50, MouseButton::Right);
        ReleaseMouse(50, 50);
        const WindowView view = WindowsFrontToBack().at(0);
        XPLMDestroyWindow(window.id);
        return view;
    };
    EXPECT_EQ(createSized(sizeof(XPLMCreateWindow_t)).layer, xplm_WindowLayerModal);
    EXPECT_EQ(TakenEvents(), (Events{"w right down 50 50", "w right up 50 50"}));
    EXPECT_EQ(createSized(offsetof(XPLMCreateWindow_t, handleRightClickFunc)).layer, xplm_WindowLayerModal);
    EXPECT_TRUE(createSized(offsetof(XPLMCreateWindow_t, decorateAsFloatingWindow) + 2).isLegacy);
    EXPECT_TRUE(createSized(sizeof(int) * 6).isLegacy) << "a window without any function";
    EXPECT_EQ(TakenEvents(), Events{});
}

TEST_F(Windows, HandlesThatHaveGoneMeanNothing) {
    TestWindow window{"w"}, other{"other"};
    Create(window, 0, 100, 100, 0);
    XPLMDestroyWindow(window.id);
    Create(other, 10, 20, 30, 5);
    XPLMTakeKeyboardFocus(other.id);
    EXPECT_NE(other.id, window.id) << "a handle is not used twice";
    for (XPLMWindowID id : {window.id, static_cast<XPLMWindowID>(nullptr)}) {
        EXPECT_EQ(GeometryOf({"gone", id}), (Corners{0, 0, 0, 0}));
        XPLMSetWindowGeometry(id, 1, 2, 3, 4);
        XPLMSetWindowIsVisible(id, 1);
        XPLMSetWindowPositioningMode(id, xplm_WindowPopOut, -1);
        XPLMBringWindowToFront(id);
        XPLMDestroyWindow(id);
        EXPECT_EQ(XPLMGetWindowIsVisible(id) + XPLMWindowIsPoppedOut(id) + XPLMWindowIsInVR(id)
                      + (id && XPLMHasKeyboardFocus(id)) + XPLMIsWindowInFront(id),
                  0);
        EXPECT_EQ(XPLMGetWindowRefCon(id), nullptr);
    }
    XPLMTakeKeyboardFocus(window.id);
    EXPECT_EQ(XPLMHasKeyboardFocus(other.id), 1) << "nobody there to take it";
    EXPECT_EQ(GeometryOf(other), (Corners{10, 20, 30, 5}));
}

TEST_F(Windows, PositioningModes) {
    TestWindow window{"w"}, other{"other"};
    Create(window, 100, 500, 300, 400);
    Create(other, 0, 10, 10, 0, 0, xplm_WindowLayerGrowlNotifications);
    XPLMSetWindowPositioningMode(window.id, xplm_WindowCenterOnMonitor, -1);
    EXPECT_EQ(GeometryOf(window), (Corners{400, 450, 600, 350}));
    XPLMSetWindowGeometry(window.id, 0, 300, 100, 0);
    EXPECT_EQ(GeometryOf(window), (Corners{450, 550, 550, 250})) << "only the size is its own";
    SetScreenSize(600, 400);
    EXPECT_EQ(GeometryOf(window), (Corners{250, 350, 350, 50}));
    XPLMSetWindowPositioningMode(window.id, xplm_WindowFullScreenOnAllMonitors, 0);
    XPLMSetWindowGeometry(window.id, 1, 2, 3, 0);
    SetScreenSize(1000, 800);
    EXPECT_EQ(GeometryOf(window), (Corners{0, 800, 1000, 0}));

    XPLMSetWindowPositioningMode(window.id, xplm_WindowPopOut, -1);
    EXPECT_EQ(XPLMWindowIsPoppedOut(window.id), 1);
    EXPECT_EQ(WindowsFrontToBack().at(0).id, window.id) << "over everything";
    int left = 1, top = 1, right = 1, bottom = 1;
    XPLMSetWindowGeometryOS(window.id, 50, 350, 250, 150);
    XPLMGetWindowGeometryOS(window.id, &left, &top, &right, &bottom);
    EXPECT_EQ((Corners{left, top, right, bottom}), (Corners{50, 350, 250, 150}));
    XPLMSetWindowPositioningMode(window.id, xplm_WindowPositionFree, -1);
    EXPECT_EQ(XPLMWindowIsPoppedOut(window.id), 0);
    EXPECT_EQ(GeometryOf(window), (Corners{50, 350, 250, 150}));
}

// What is done in the headset is flown in flights/position_creator_vr.lua.
TEST_F(Windows, TheHeadsetTakesThoseThatAskForIt) {
    TestWindow asks{"asks"}, stays{"stays"};
    Create(asks, 100, 500, 300, 400);
    Create(stays, 100, 500, 300, 400);
    XPLMSetWindowPositioningMode(asks.id, xplm_WindowVR, -1);
    XPLMSetWindowResizingLimits(asks.id, 0, 0, 500, 90);
    EXPECT_EQ(GeometryOf(asks), (Corners{100, 500, 300, 400})) << "not in VR yet";
    SetVr(true);
    EXPECT_EQ(XPLMWindowIsInVR(asks.id) - XPLMWindowIsInVR(stays.id), 1);
    EXPECT_EQ(GeometryOf(asks), (Corners{0, 0, 0, 0}));
    XPLMSetWindowGeometryVR(asks.id, 400, 300);
    int width = 1, height = 1;
    XPLMGetWindowGeometryVR(asks.id, &width, &height);
    EXPECT_EQ((Corners{width, height}), (Corners{400, 90}));
    EXPECT_EQ(Drawn(), (Events{"asks draws", "stays draws"})) << "in the headset";
    SetVr(false);
    EXPECT_EQ(GeometryOf(asks), (Corners{100, 500, 300, 400}));
}

TEST_F(Windows, AnotherScreenMovesThemByTheirGravity) {
    TestWindow upperLeft{"upper left"}, right{"right"}, spans{"spans"}, framed{"framed"};
    Create(upperLeft, 100, 700, 300, 500);
    Create(right, 800, 200, 900, 100);
    Create(spans, 100, 300, 900, 100);
    Create(framed, 900, 700, 1000, 500, xplm_WindowDecorationRoundRectangle);
    XPLMSetWindowGravity(right.id, 1, 0, 1, 0);
    XPLMSetWindowGravity(spans.id, 0, 0.5F, 1, 0);
    const XPLMWindowID legacy = XPLMCreateWindow(900, 700, 1000, 500, 1, nullptr, nullptr, nullptr, nullptr);
    SetScreenSize(600, 500);
    EXPECT_EQ(GeometryOf(upperLeft), (Corners{100, 400, 300, 200}));
    EXPECT_EQ(GeometryOf(right), (Corners{400, 200, 500, 100}));
    EXPECT_EQ(GeometryOf(spans), (Corners{100, 150, 500, 100}));
    EXPECT_EQ(GeometryOf(framed)[0], 600 - 40) << "within reach";
    TestWindow old{"old", legacy};
    EXPECT_EQ(GeometryOf(old), (Corners{900, 700, 1000, 500})) << "its coordinates are the plug-in's affair";
}

// Each window does something to the others from inside its draw function.
TEST_F(Windows, MayChangeEverythingWhileTheyAreDrawn) {
    TestWindow first{"first"}, second{"second"}, third{"third"}, made{"made"};
    Create(first, 0, 10, 10, 0);
    Create(second, 0, 10, 10, 0);
    Create(third, 0, 10, 10, 0);
    first.act = [&](const std::string &) {
        XPLMDestroyWindow(first.id);
        XPLMDestroyWindow(second.id);
        XPLMBringWindowToFront(third.id);
        if (made.id == nullptr) Create(made, 0, 10, 10, 0);
    };
    EXPECT_EQ(Drawn(), (Events{"first draws", "third draws"}));
    EXPECT_EQ(Drawn(), (Events{"third draws", "made draws"}));
    third.act = [&](const std::string &) {
        for (int i = 0; i < 100; i++) Create(made, 0, 10, 10, 0);
    };
    EXPECT_EQ(Drawn(), (Events{"third draws", "made draws"})) << "new ones are drawn in the next frame";
    EXPECT_EQ(Drawn().size(), 102u);
}

} // namespace
