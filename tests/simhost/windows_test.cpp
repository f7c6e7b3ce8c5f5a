// Windows as plug-ins make them: order, geometry, modes, the headset, and what is safe inside their
// callbacks.
#include "simhost/windows/windows.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "XPLMGraphics.h"
#include "XPLMPlugin.h"
#include "simhost/drawing/screen.h"
#include "simhost/simulator.h"
#include "tests/simhost/test_window.h"

using namespace simhost;

namespace {

class Windows : public ::testing::Test {
protected:
    Windows() {
        ResetSimulator();
        SetScreenSize(1000, 800);
        ActAsPlugin("/nowhere/plugins/test/64/lin.xpl");
        TakenEvents();
        TestWindow::notesDrawing = false;
    }

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
        whole.decorateAsFloatingWindow = xplm_WindowDecorationRoundRectangle;
        whole.layer = xplm_WindowLayerModal;
        whole.structSize = static_cast<int>(size);
        void *memory = std::malloc(size);
        std::memcpy(memory, &whole, size);
        window.id = XPLMCreateWindowEx(static_cast<XPLMCreateWindow_t *>(memory));
        std::free(memory);
    };
    createSized(sizeof(XPLMCreateWindow_t));
    EXPECT_EQ(WindowsFrontToBack().at(0).layer, xplm_WindowLayerModal);
    EXPECT_FALSE(WindowsFrontToBack().at(0).isLegacy);
    PressMouse(50, 50, MouseButton::Right);
    EXPECT_EQ(TakenEvents(), (Events{"w right down 50 50"}));
    XPLMDestroyWindow(window.id);
    ReleaseMouse(50, 50);

    createSized(offsetof(XPLMCreateWindow_t, handleRightClickFunc));
    PressMouse(50, 50, MouseButton::Right);
    EXPECT_EQ(TakenEvents(), Events{});
    ReleaseMouse(50, 50);
    EXPECT_EQ(WindowsFrontToBack().at(0).layer, xplm_WindowLayerModal);
    XPLMDestroyWindow(window.id);

    for (std::size_t fields : {offsetof(XPLMCreateWindow_t, decorateAsFloatingWindow),
                               offsetof(XPLMCreateWindow_t, decorateAsFloatingWindow) + 2}) {
        createSized(fields);
        const WindowView view = WindowsFrontToBack().at(0);
        EXPECT_TRUE(view.isLegacy);
        EXPECT_EQ(view.layer, xplm_WindowLayerFlightOverlay);
        EXPECT_EQ(view.decoration, xplm_WindowDecorationNone);
        EXPECT_EQ(XPLMGetWindowRefCon(window.id), &window);
        XPLMDestroyWindow(window.id);
    }
    createSized(sizeof(int) * 6);
    EXPECT_EQ(GeometryOf(window), (Corners{0, 100, 100, 0}));
    Drawn();
    PressMouse(50, 50, MouseButton::Left);
    ReleaseMouse(50, 50);
    XPLMTakeKeyboardFocus(window.id);
    SendKey('a', xplm_DownFlag, 'A');
    EXPECT_EQ(TakenEvents(), Events{}) << "a window without any function";

    XPLMCreateWindow_t wrong = Parameters(window, 0, 100, 100, 0);
    wrong.layer = 4;
    EXPECT_EQ(XPLMCreateWindowEx(&wrong), nullptr);
    wrong.layer = 0;
    wrong.decorateAsFloatingWindow = -1;
    EXPECT_EQ(XPLMCreateWindowEx(&wrong), nullptr);
    EXPECT_EQ(XPLMCreateWindowEx(nullptr), nullptr);
}

TEST_F(Windows, HandlesThatHaveGoneMeanNothing) {
    TestWindow window{"w"}, other{"other"};
    Create(window, 0, 100, 100, 0);
    XPLMDestroyWindow(window.id);
    Create(other, 10, 20, 30, 5);
    EXPECT_NE(other.id, window.id) << "a handle is not used twice";
    for (XPLMWindowID id : {window.id, static_cast<XPLMWindowID>(nullptr)}) {
        int left = 1, top = 1, right = 1, bottom = 1;
        XPLMGetWindowGeometry(id, &left, &top, &right, &bottom);
        EXPECT_EQ((Corners{left, top, right, bottom}), (Corners{0, 0, 0, 0}));
        left = 1;
        XPLMGetWindowGeometryOS(id, &left, nullptr, nullptr, nullptr);
        XPLMGetWindowGeometryVR(id, &top, nullptr);
        EXPECT_EQ(left, 0);
        EXPECT_EQ(top, 0);
        XPLMSetWindowGeometry(id, 1, 2, 3, 4);
        XPLMSetWindowGeometryOS(id, 1, 2, 3, 4);
        XPLMSetWindowGeometryVR(id, 1, 2);
        XPLMSetWindowIsVisible(id, 1);
        XPLMSetWindowGravity(id, 1, 1, 1, 1);
        XPLMSetWindowResizingLimits(id, 1, 1, 2, 2);
        XPLMSetWindowPositioningMode(id, xplm_WindowPopOut, -1);
        XPLMSetWindowTitle(id, "gone");
        XPLMSetWindowRefCon(id, &window);
        XPLMBringWindowToFront(id);
        XPLMDestroyWindow(id);
        EXPECT_EQ(XPLMGetWindowIsVisible(id) + XPLMWindowIsPoppedOut(id) + XPLMWindowIsInVR(id)
                      + XPLMHasKeyboardFocus(id) + XPLMIsWindowInFront(id),
                  0);
        EXPECT_EQ(XPLMGetWindowRefCon(id), nullptr);
    }
    XPLMTakeKeyboardFocus(other.id);
    XPLMTakeKeyboardFocus(window.id);
    EXPECT_EQ(XPLMHasKeyboardFocus(other.id), 1) << "nobody there to take it";
    EXPECT_EQ(GeometryOf(other), (Corners{10, 20, 30, 5}));
}

TEST_F(Windows, LimitsHoldForEverySize) {
    TestWindow window{"w"};
    Create(window, 100, 500, 300, 400);
    XPLMSetWindowResizingLimits(window.id, 150, 80, 400, 200);
    EXPECT_EQ(GeometryOf(window), (Corners{100, 500, 300, 400}));
    XPLMSetWindowGeometry(window.id, 100, 500, 110, 490);
    EXPECT_EQ(GeometryOf(window), (Corners{100, 500, 250, 420}));
    XPLMSetWindowGeometry(window.id, 0, 500, 900, 100);
    EXPECT_EQ(GeometryOf(window), (Corners{0, 500, 400, 300}));
    XPLMSetWindowResizingLimits(window.id, 300, 300, 200, 400);
    XPLMSetWindowGeometry(window.id, 0, 500, 10, 490);
    EXPECT_EQ(GeometryOf(window), (Corners{0, 500, 150, 420})) << "limits that cannot be change nothing";
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
    for (XPLMWindowPositioningMode mode :
         {xplm_WindowFullScreenOnMonitor, xplm_WindowFullScreenOnAllMonitors}) {
        XPLMSetWindowPositioningMode(window.id, mode, 0);
        EXPECT_EQ(GeometryOf(window), (Corners{0, 400, 600, 0}));
        XPLMSetWindowGeometry(window.id, 1, 2, 3, 0);
        EXPECT_EQ(GeometryOf(window), (Corners{0, 400, 600, 0}));
    }
    SetScreenSize(1000, 800);
    EXPECT_EQ(GeometryOf(window), (Corners{0, 800, 1000, 0}));

    int left = 1, top = 1, right = 1, bottom = 1;
    XPLMGetWindowGeometryOS(window.id, &left, &top, &right, &bottom);
    EXPECT_EQ((Corners{left, top, right, bottom}), (Corners{0, 0, 0, 0})) << "not popped out";
    XPLMSetWindowPositioningMode(window.id, xplm_WindowPopOut, -1);
    EXPECT_EQ(XPLMWindowIsPoppedOut(window.id), 1);
    EXPECT_EQ(WindowsFrontToBack().at(0).id, window.id) << "over everything";
    XPLMSetWindowGeometryOS(window.id, 50, 350, 250, 150);
    XPLMGetWindowGeometryOS(window.id, &left, &top, &right, &bottom);
    EXPECT_EQ((Corners{left, top, right, bottom}), (Corners{50, 350, 250, 150}));
    XPLMSetWindowPositioningMode(window.id, xplm_WindowPositionFree, -1);
    EXPECT_EQ(XPLMWindowIsPoppedOut(window.id), 0);
    EXPECT_EQ(WindowsFrontToBack().at(1).id, window.id);
    XPLMSetWindowGeometryOS(window.id, 0, 1, 1, 0);
    EXPECT_EQ(GeometryOf(window), (Corners{50, 350, 250, 150}));

    for (int wrong : {-1, 6}) XPLMSetWindowPositioningMode(window.id, wrong, -1);
    for (int monitor : {-2, 1}) XPLMSetWindowPositioningMode(window.id, xplm_WindowPopOut, monitor);
    EXPECT_EQ(XPLMWindowIsPoppedOut(window.id), 0);
    const XPLMWindowID legacy = XPLMCreateWindow(0, 10, 10, 0, 1, nullptr, nullptr, nullptr, nullptr);
    XPLMSetWindowPositioningMode(legacy, xplm_WindowPopOut, -1);
    EXPECT_EQ(XPLMWindowIsPoppedOut(legacy), 0);
}

TEST_F(Windows, TheHeadsetTakesThoseThatAskForIt) {
    TestWindow asks{"asks"}, stays{"stays"};
    Create(asks, 100, 500, 300, 400);
    Create(stays, 100, 500, 300, 400);
    XPLMSetWindowPositioningMode(asks.id, xplm_WindowVR, -1);
    int width = 1, height = 1;
    XPLMGetWindowGeometryVR(asks.id, &width, &height);
    EXPECT_EQ(width + height, 0) << "not in VR yet";
    EXPECT_EQ(GeometryOf(asks), (Corners{100, 500, 300, 400}));

    SetVr(true);
    EXPECT_EQ(GetNumber("sim/graphics/VR/enabled"), 1);
    EXPECT_EQ(XPLMWindowIsInVR(asks.id), 1);
    EXPECT_EQ(XPLMWindowIsInVR(stays.id), 0);
    EXPECT_EQ(GeometryOf(asks), (Corners{0, 0, 0, 0}));
    XPLMGetWindowGeometryVR(asks.id, &width, &height);
    EXPECT_EQ((Corners{width, height}), (Corners{200, 100}));
    XPLMSetWindowResizingLimits(asks.id, 0, 0, 500, 90);
    XPLMSetWindowGeometryVR(asks.id, 400, 300);
    XPLMGetWindowGeometryVR(asks.id, &width, &height);
    EXPECT_EQ((Corners{width, height}), (Corners{400, 90}));
    XPLMSetWindowGeometry(asks.id, 0, 10, 10, 0);
    EXPECT_EQ(Drawn(), (Events{"asks draws", "stays draws"})) << "in the headset";
    XPLMSetWindowIsVisible(stays.id, 0);
    PressMouse(150, 450, MouseButton::Left);
    EXPECT_EQ(TakenEvents(), Events{}) << "out of the mouse's reach";
    ReleaseMouse(150, 450);
    XPLMGetWindowGeometryVR(stays.id, &width, &height);
    EXPECT_EQ(width + height, 0);

    SetVr(false);
    EXPECT_EQ(GetNumber("sim/graphics/VR/enabled"), 0);
    EXPECT_EQ(XPLMWindowIsInVR(asks.id), 0);
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
    int width = 0, height = 0;
    XPLMGetScreenSize(&width, &height);
    EXPECT_EQ((Corners{width, height}), (Corners{600, 500}));
    EXPECT_EQ(GetNumber("sim/graphics/view/window_width"), 600);
    EXPECT_EQ(GetNumber("sim/graphics/view/window_height"), 500);
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
    third.act = [&](const std::string &) { XPLMSetWindowIsVisible(made.id, 0); };
    EXPECT_EQ(Drawn(), (Events{"third draws"}));
    third.act = [&](const std::string &) {
        for (int i = 0; i < 100; i++) Create(made, 0, 10, 10, 0);
    };
    EXPECT_EQ(Drawn(), (Events{"third draws"})) << "new ones are drawn in the next frame";
    EXPECT_EQ(Drawn().size(), 101u);
}

TEST_F(Windows, VanishWithTheirPlugIn) {
    TestWindow window{"w"}, others{"others"};
    const XPLMPluginID plugin = XPLMGetMyID();
    Create(window, 0, 100, 100, 0);
    XPLMSetWindowTitle(window.id, "Checklist");
    XPLMRegisterKeySniffer([](char, XPLMKeyFlags, char, void *) { return 1; }, 1, nullptr);
    PressMouse(50, 50, MouseButton::Left);
    XPLMTakeKeyboardFocus(window.id);
    TakenEvents();
    UnloadPlugin(plugin);
    ASSERT_EQ(LastLeftBehind().notes, (std::vector<std::string>{"window \"Checklist\""}));
    ASSERT_EQ(LastLeftBehind().errors.size(), 1u);
    EXPECT_EQ(LastLeftBehind().errors[0].find("key sniffer "), 0u);
    EXPECT_TRUE(WindowsFrontToBack().empty());
    ActAsPlugin("/nowhere/plugins/other/64/lin.xpl");
    Create(others, 0, 100, 100, 0);
    DragMouse(60, 60);
    StepFrame(0.02);
    ReleaseMouse(60, 60);
    SendKey('a', xplm_DownFlag, 'A');
    EXPECT_EQ(TakenEvents(), Events{}) << "the button was not pressed over this one";
}

TEST_F(Windows, FramesAreDrawnAroundTheContents) {
    TestWindow window{"w"}, plain{"plain"};
    const auto brightnessAt = [](const std::vector<unsigned char> &pixels, int x, int y) {
        const auto *pixel = &pixels.at(static_cast<std::size_t>(((800 - 1 - y) * 1000 + x) * 4));
        return pixel[0] + pixel[1] + pixel[2];
    };
    DrawFrame(true);
    const std::vector<unsigned char> before = ReadScreenPixels();
    Create(window, 300, 600, 700, 200, xplm_WindowDecorationRoundRectangle);
    XPLMSetWindowTitle(window.id,
                       "A title that is far too long for the bar: it ends where the bar does, and does "
                       "not run over what lies beside the window");
    Create(plain, 750, 600, 900, 200);
    DrawFrame(true);
    const std::vector<unsigned char> after = ReadScreenPixels();
    EXPECT_EQ(brightnessAt(after, 710, 610), brightnessAt(before, 710, 610)) << "beside the frame";
    EXPECT_EQ(brightnessAt(after, 800, 400), brightnessAt(before, 800, 400)) << "none of its own";
    EXPECT_LT(brightnessAt(after, 500, 300), 200) << "the contents have a dark ground";
    EXPECT_NE(brightnessAt(after, 698, 610), brightnessAt(before, 698, 610)) << "the title bar above";
    EXPECT_NE(brightnessAt(after, 701, 400), brightnessAt(before, 701, 400)) << "the border";
    EXPECT_TRUE(ScreenTexts().empty()) << "titles are not what plug-ins draw";
}

} // namespace
