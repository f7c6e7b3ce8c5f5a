// Mouse and keyboard: which window gets what, until when, and what windows may do to themselves meanwhile.
#include <string>
#include <vector>

#include "simhost/windows/windows.h"
#include "tests/simhost/test_window.h"

using namespace simhost;

namespace {

using Input = OnScreen;

TEST_F(Input, ThePressGoesDownToTheOneThatTakesIt) {
    TestWindow below{"below"}, above{"above"};
    Create(below, 0, 100, 100, 0);
    Create(above, 50, 150, 150, 50);
    Click(75, 75);
    EXPECT_EQ(TakenEvents(), (Events{"above down 75 75", "above up 75 75"}));
    above.answer = 0;
    PressMouse(75, 75, MouseButton::Left);
    DragMouse(500, 500);
    StepFrame(0.02);
    ReleaseMouse(140, 140);
    EXPECT_EQ(TakenEvents(), (Events{"above down 75 75", "below down 75 75", "below drag 500 500",
                                     "below drag 500 500", "below up 140 140"}))
        << "wherever the cursor is, and in every frame";
    below.answer = 0;
    PressMouse(75, 75, MouseButton::Left);
    EXPECT_TRUE(isMouseHeld());
    above.answer = below.answer = 1;
    DragMouse(80, 80);
    ReleaseMouse(80, 80);
    EXPECT_EQ(TakenEvents(), (Events{"above down 75 75", "below down 75 75"})) << "nobody took it";

    // The edges: the left and lower ones belong to the window.
    for (auto [x, y, hits] : {std::tuple{0, 0, true}, {100, 49, false}, {0, 100, false}, {99, 49, true}}) {
        Click(x, y);
        EXPECT_EQ(!TakenEvents().empty(), hits) << x << " " << y;
    }
    above.answer = 0;
    PressMouse(75, 75, MouseButton::Right);
    PressMouse(140, 140, MouseButton::Left);
    ReleaseMouse(75, 75);
    EXPECT_EQ(TakenEvents(),
              (Events{"above right down 75 75", "below right down 75 75", "below right up 75 75"}))
        << "one button at a time";
}

TEST_F(Input, AModalWindowKeepsTheMouseFromThoseBelow) {
    TestWindow below{"below"}, modal{"modal"}, growl{"growl"};
    Create(below, 0, 100, 100, 0);
    Create(modal, 50, 150, 150, 50, xplm_WindowDecorationNone, xplm_WindowLayerModal);
    Create(growl, 0, 20, 20, 0, xplm_WindowDecorationNone, xplm_WindowLayerGrowlNotifications);
    modal.answer = 0;
    Click(75, 75);
    Click(30, 30);
    Click(10, 10);
    EXPECT_EQ(TakenEvents(), (Events{"modal down 75 75", "growl down 10 10", "growl up 10 10"}));
    XPLMSetWindowIsVisible(modal.id, 0);
    Click(30, 30);
    EXPECT_EQ(TakenEvents().size(), 2u);
}

TEST_F(Input, WheelAndCursor) {
    TestWindow below{"below"}, above{"above"};
    Create(below, 0, 100, 100, 0);
    Create(above, 50, 150, 150, 50);
    TurnWheel(75, 75, -2);
    above.answer = 0;
    TurnWheel(75, 75, 1);
    TurnWheel(500, 500, 1);
    EXPECT_EQ(TakenEvents(),
              (Events{"above wheel 0 by -2 75 75", "above wheel 0 by 1 75 75", "below wheel 0 by 1 75 75"}));
    above.cursor = xplm_CursorHidden;
    MoveMouse(75, 75);
    EXPECT_EQ(MouseCursor(), xplm_CursorHidden);
    MoveMouse(25, 25);
    EXPECT_EQ(MouseCursor(), xplm_CursorDefault);
    MoveMouse(500, 300);
    EXPECT_EQ(TakenEvents(), (Events{"above cursor", "below cursor"}));
    int x = 0, y = 0, globalX = 0, globalY = 0;
    XPLMGetMouseLocation(&x, &y);
    XPLMGetMouseLocationGlobal(&globalX, &globalY);
    EXPECT_EQ((Corners{x, y, globalX, globalY}), (Corners{500, 300, 500, 300}));
    XPLMGetMouseLocation(nullptr, nullptr);
    PressMouse(75, 75, MouseButton::Left);
    TakenEvents();
    MoveMouse(80, 80);
    EXPECT_EQ(TakenEvents(), (Events{"below drag 80 80"})) << "a held button drags";
}

// What a window does to itself when it is clicked: nobody else gets the rest of the click.
TEST_F(Input, WindowsMayGoWhileTheyHoldTheMouse) {
    TestWindow below{"below"}, window{"w"}, made{"made"};
    Create(below, 0, 100, 100, 0);
    for (const std::string when : {"down", "drag", "up"}) {
        Create(window, 0, 100, 100, 0);
        window.act = [&](const std::string &event) {
            if (event.find(when) == std::string::npos) return;
            XPLMDestroyWindow(window.id);
            Create(made, 0, 100, 100, 0);
        };
        PressMouse(10, 10, MouseButton::Left);
        DragMouse(20, 20);
        StepFrame(0.02);
        ReleaseMouse(30, 30);
        const std::size_t expected = when == "down" ? 1 : when == "drag" ? 2 : 4;
        const Events events = TakenEvents();
        EXPECT_EQ(events.size(), expected) << when;
        for (const std::string &event : events) EXPECT_EQ(event.substr(0, 2), "w ") << when;
        Click(10, 10);
        EXPECT_EQ(TakenEvents(), (Events{"made down 10 10", "made up 10 10"})) << "a click of its own";
        XPLMDestroyWindow(made.id);
    }

    // One that passes the press on while it destroys the one below.
    Create(window, 0, 100, 100, 0);
    window.answer = 0;
    window.act = [&](const std::string &) { XPLMDestroyWindow(below.id); };
    Click(10, 10);
    EXPECT_EQ(TakenEvents(), (Events{"w down 10 10"}));
}

TEST_F(Input, TheKeyboardGoesToTheFocusAndItsLossIsTold) {
    TestWindow a{"a"}, b{"b"};
    Create(a, 0, 100, 100, 0);
    Create(b, 200, 100, 300, 0);
    SendKey('x', xplm_DownFlag, 'X');
    EXPECT_EQ(TakenEvents(), Events{});
    EXPECT_EQ(XPLMHasKeyboardFocus(nullptr), 1) << "the simulator's";
    int struck = 0;
    const auto strike = [](void *count) { ++*static_cast<int *>(count); };
    const XPLMHotKeyID hotKey = XPLMRegisterHotKey('X', xplm_ShiftFlag, "Hot", strike, &struck);
    SendKey('x', xplm_DownFlag, 'X');
    EXPECT_TRUE(SendKey('X', xplm_DownFlag | xplm_ShiftFlag, 'X'));
    SendKey('X', xplm_UpFlag | xplm_ShiftFlag, 'X');
    EXPECT_EQ(struck, 1) << "once a press, with its modifiers";
    XPLMTakeKeyboardFocus(a.id);
    EXPECT_EQ(XPLMHasKeyboardFocus(a.id), 1);
    EXPECT_EQ(XPLMHasKeyboardFocus(nullptr), 0);
    SendKey('x', xplm_DownFlag | xplm_ShiftFlag, 'X');
    EXPECT_EQ(TakenEvents(), (Events{"a key 120 9 88"}));
    EXPECT_EQ(struck, 1) << "the window's own";
    XPLMUnregisterHotKey(hotKey);
    EXPECT_EQ(XPLMCountHotKeys(), 0);
    XPLMTakeKeyboardFocus(a.id);
    XPLMTakeKeyboardFocus(b.id);
    EXPECT_EQ(TakenEvents(), (Events{"a loses focus"}));
    EXPECT_EQ(XPLMHasKeyboardFocus(a.id), 0);
    Click(50, 50);
    EXPECT_EQ(XPLMHasKeyboardFocus(b.id), 1) << "a click on another window is that one's affair";
    TakenEvents();
    Click(500, 500);
    EXPECT_EQ(TakenEvents(), (Events{"b loses focus"})) << "a click in the cockpit";
    XPLMTakeKeyboardFocus(b.id);
    XPLMSetWindowIsVisible(b.id, 0);
    EXPECT_EQ(TakenEvents(), (Events{"b loses focus"}));
    XPLMTakeKeyboardFocus(b.id);
    EXPECT_EQ(XPLMHasKeyboardFocus(b.id), 0) << "hidden";
    XPLMTakeKeyboardFocus(a.id);
    XPLMDestroyWindow(a.id);
    EXPECT_EQ(TakenEvents(), (Events{"a loses focus"}));

    // Focus that is taken back at once, and windows that end themselves with it.
    XPLMSetWindowIsVisible(b.id, 1);
    Create(a, 0, 100, 100, 0);
    XPLMTakeKeyboardFocus(a.id);
    a.act = [&](const std::string &event) {
        if (event == "loses focus") XPLMTakeKeyboardFocus(a.id);
    };
    XPLMTakeKeyboardFocus(b.id);
    EXPECT_EQ(XPLMHasKeyboardFocus(a.id), 1);
    EXPECT_EQ(TakenEvents(), (Events{"a loses focus", "b loses focus"}));
    a.act = [&](const std::string &) { XPLMDestroyWindow(a.id); };
    SendKey('x', xplm_DownFlag, 'X');
    EXPECT_EQ(TakenEvents(), (Events{"a key 120 8 88", "a loses focus"}));
    EXPECT_EQ(WindowsFrontToBack().size(), 1u);
}

struct Sniffer {
    std::string name;
    int answer = 1;
};

int Sniff(char, XPLMKeyFlags, char, void *refcon) {
    const auto *sniffer = static_cast<const Sniffer *>(refcon);
    TestWindow::events.push_back(sniffer->name);
    if (sniffer->name == "leaves") XPLMUnregisterKeySniffer(Sniff, 1, refcon);
    return sniffer->answer;
}

TEST_F(Input, SniffersComeBeforeAndBehindTheWindows) {
    TestWindow window{"w"};
    Sniffer before{"before"}, leaves{"leaves"}, behind{"behind"};
    Create(window, 0, 100, 100, 0);
    EXPECT_EQ(XPLMRegisterKeySniffer(Sniff, 0, &behind), 1);
    EXPECT_EQ(XPLMRegisterKeySniffer(Sniff, 1, &leaves), 1);
    EXPECT_EQ(XPLMRegisterKeySniffer(Sniff, 1, &before), 1);
    SendKey('x', xplm_DownFlag, 'X');
    SendKey('x', xplm_UpFlag, 'X');
    EXPECT_EQ(TakenEvents(), (Events{"leaves", "before", "behind", "before", "behind"}));
    XPLMTakeKeyboardFocus(window.id);
    SendKey('x', xplm_DownFlag, 'X');
    EXPECT_EQ(TakenEvents(), (Events{"before", "w key 120 8 88"})) << "the window has it";
    before.answer = 0;
    SendKey('x', xplm_DownFlag, 'X');
    EXPECT_EQ(TakenEvents(), (Events{"before"}));
    EXPECT_EQ(XPLMUnregisterKeySniffer(Sniff, 0, &before), 0) << "it sniffs before the windows";
    EXPECT_EQ(XPLMUnregisterKeySniffer(Sniff, 1, &before), 1);
}

void Drag(int fromX, int fromY, int toX, int toY) {
    PressMouse(fromX, fromY, MouseButton::Left);
    DragMouse(toX, toY);
    ReleaseMouse(toX, toY);
}

TEST_F(Input, FramesAreDraggedResizedAndClosed) {
    TestWindow window{"w"}, above{"above"};
    Create(window, 300, 600, 500, 400, xplm_WindowDecorationRoundRectangle);
    XPLMSetWindowResizingLimits(window.id, 100, 100, 300, 300);
    Create(above, 0, 50, 50, 0);
    Drag(400, 610, 450, 560);
    EXPECT_EQ(GeometryOf(window), (Corners{350, 550, 550, 350}));
    EXPECT_EQ(XPLMIsWindowInFront(window.id), 1) << "raised";
    Drag(551, 450, 621, 450);
    EXPECT_EQ(GeometryOf(window), (Corners{350, 550, 620, 350})) << "right edge";
    Drag(348, 450, 0, 450);
    EXPECT_EQ(GeometryOf(window), (Corners{320, 550, 620, 350})) << "left edge, to the greatest width";
    Drag(347, 347, 900, 337);
    EXPECT_EQ(GeometryOf(window), (Corners{320, 550, 620, 340})) << "the lower edge alone";
    Drag(318, 338, 900, 900);
    EXPECT_EQ(GeometryOf(window), (Corners{520, 550, 620, 450})) << "a corner, to the least size";
    Drag(570, 568, 570, 600);
    EXPECT_EQ(GeometryOf(window), (Corners{520, 582, 620, 450})) << "upper edge";
    EXPECT_EQ(TakenEvents(), Events{}) << "its frame is the simulator's";

    XPLMSetWindowGeometry(window.id, 520, 582, 620, 0);
    EXPECT_EQ(GeometryOf(window), (Corners{520, 582, 620, 282})) << "no higher than its limit";
    PressMouse(525, 590, MouseButton::Left);
    ReleaseMouse(570, 500);
    EXPECT_EQ(XPLMGetWindowIsVisible(window.id), 1) << "let go elsewhere";
    XPLMTakeKeyboardFocus(window.id);
    Click(525, 590);
    EXPECT_EQ(XPLMGetWindowIsVisible(window.id), 0);
    EXPECT_EQ(TakenEvents(), (Events{"w loses focus"}));
}

TEST_F(Input, OnesThatDecorateThemselvesHaveNoFrame) {
    TestWindow plain{"plain"}, resizable{"resizable"};
    Create(plain, 100, 300, 300, 100, xplm_WindowDecorationSelfDecorated);
    Create(resizable, 400, 300, 600, 100, xplm_WindowDecorationSelfDecoratedResizable);
    Drag(101, 200, 50, 200);
    Drag(200, 310, 200, 400);
    EXPECT_EQ(GeometryOf(plain), (Corners{100, 300, 300, 100}));
    EXPECT_EQ(TakenEvents().size(), 3u) << "the first was in its contents";
    Drag(401, 200, 351, 200);
    EXPECT_EQ(GeometryOf(resizable), (Corners{350, 300, 600, 100}));
    Drag(599, 101, 0, 900);
    EXPECT_EQ(GeometryOf(resizable), (Corners{350, 300, 380, 270})) << "large enough to be grabbed again";
    EXPECT_EQ(TakenEvents(), Events{});
}

} // namespace
