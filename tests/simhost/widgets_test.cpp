// Widgets as plug-ins use them: the tree, messages and their order, focus, geometry, text fields, and what is
// safe inside callbacks.
#include "simhost/widgets/widgets.h"

#include <map>
#include <string>
#include <vector>

#include "XPStandardWidgets.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"
#include "simhost/windows/keyboard.h"
#include "simhost/windows/windows.h"
#include "tests/simhost/test_window.h"

using namespace simhost;

namespace {

// Each callback notes "its name, the widget's name, the message", and takes what is in taken. A widget that
// has no name yet is "?".
std::map<XPWidgetID, std::string> names;
std::map<std::string, XPWidgetID> toDestroy; // by what is noted
std::vector<std::string> taken;              // "a root 8"

template <char name> int Note(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t) {
    if (message == xpMsg_Draw || message == xpMsg_Paint || message == xpMsg_CursorAdjust) return 0;
    const auto found = names.find(widget);
    const std::string event = std::string(1, name) + " " + (found != names.end() ? found->second : "?") + " "
                              + std::to_string(message);
    const auto other = names.find(reinterpret_cast<XPWidgetID>(first));
    TestWindow::events.push_back(event + (other != names.end() ? " " + other->second : ""));
    if (const auto destroyed = toDestroy.find(event); destroyed != toDestroy.end())
        XPDestroyWidget(destroyed->second, 1);
    return std::find(taken.begin(), taken.end(), event) != taken.end() ? 1 : 0;
}

class Widgets : public OnScreen {
protected:
    Widgets() {
        for (auto &[name, parent] : {std::pair{"root", ""}, {"child", "root"}, {"leaf", "child"}}) {
            const bool isRoot = *parent == '\0';
            const int inset = isRoot ? 0 : std::string(name) == "child" ? 10 : 20;
            id[name] = XPCreateCustomWidget(100 + inset, 500 - inset, 300 - inset, 300 + inset, 1, name,
                                            isRoot, isRoot ? nullptr : id[parent], Note<'a'>);
            names[id[name]] = name;
        }
        TakenEvents();
        taken.clear();
        toDestroy.clear();
    }

    static int Message(XPWidgetID widget, XPDispatchMode mode) {
        return XPSendMessageToWidget(widget, xpMsg_UserStart, mode, 0, 0);
    }
    static Corners Exposed(XPWidgetID widget) {
        Corners corners(4);
        XPGetWidgetExposedGeometry(widget, &corners[0], &corners[1], &corners[2], &corners[3]);
        return corners;
    }

    std::map<std::string, XPWidgetID> id;
};

TEST_F(Widgets, MessagesGoTheWayOfTheirMode) {
    XPAddWidgetCallback(id["child"], Note<'b'>);
    EXPECT_EQ(TakenEvents(), Events{"b child 1"}) << "a new callback learns of the widget, alone";
    EXPECT_EQ(Message(id["leaf"], xpMode_Direct), 0);
    EXPECT_EQ(TakenEvents(), Events{"a leaf 10000"});
    EXPECT_EQ(Message(id["leaf"], xpMode_UpChain), 0);
    EXPECT_EQ(TakenEvents(), (Events{"a leaf 10000", "b child 10000", "a child 10000", "a root 10000"}));
    taken = {"b child 10000"};
    EXPECT_EQ(Message(id["leaf"], xpMode_UpChain), 1);
    EXPECT_EQ(TakenEvents(), (Events{"a leaf 10000", "b child 10000"})) << "the last added ends it";
    EXPECT_EQ(Message(id["child"], xpMode_DirectAllCallbacks), 1);
    EXPECT_EQ(TakenEvents(), (Events{"b child 10000", "a child 10000"}));
    EXPECT_EQ(Message(id["root"], xpMode_Recursive), 1);
    EXPECT_EQ(TakenEvents(), (Events{"a root 10000", "b child 10000", "a leaf 10000"}));
    taken = {};
    EXPECT_EQ(Message(id["child"], xpMode_Once), 0);
    EXPECT_EQ(TakenEvents(), Events{"b child 10000"});
    EXPECT_EQ(Message(id["child"], 5), 0);
    EXPECT_EQ(TakenEvents(), Events{});
}

TEST_F(Widgets, ChangesAreTold) {
    XPSetWidgetDescriptor(id["leaf"], "leaf");
    EXPECT_EQ(TakenEvents(), Events{}) << "the same as before";
    XPSetWidgetDescriptor(id["leaf"], "new");
    XPSetWidgetProperty(id["leaf"], xpProperty_UserStart, 7);
    XPSetWidgetProperty(id["leaf"], xpProperty_UserStart, 7);
    XPHideWidget(id["child"]);
    EXPECT_EQ(XPIsWidgetVisible(id["leaf"]), 0);
    XPShowWidget(id["child"]);
    XPPlaceWidgetWithin(id["leaf"], id["root"]);
    EXPECT_EQ(TakenEvents(),
              (Events{"a leaf 18", "a leaf 19", "a child 17 child", "a root 17 child", "a child 16 child",
                      "a root 16 child", "a child 14 leaf", "a root 13 leaf", "a leaf 15 root"}));
    EXPECT_EQ(XPGetNthChildWidget(id["root"], 1), id["leaf"]) << "in front";
    XPPlaceWidgetWithin(id["root"], id["leaf"]);
    XPPlaceWidgetWithin(id["child"], id["child"]);
    EXPECT_EQ(XPGetParentWidget(id["child"]), id["root"]) << "neither a root nor into itself";
}

TEST_F(Widgets, GeometryIsClippedByWhatAWidgetLiesIn) {
    XPSetWidgetGeometry(id["child"], 200, 600, 400, 200);
    EXPECT_EQ(TakenEvents(), (Events{"a child 11 child", "a root 11 child", "a child 12", "a leaf 12"}));
    EXPECT_EQ(Exposed(id["child"]), (Corners{200, 500, 300, 300}));
    EXPECT_EQ(Exposed(id["leaf"]), (Corners{200, 480, 280, 320})) << "it has not moved along";
    for (int i = 0; i < 2; i++) XPAddWidgetCallback(id["child"], XPUFixedLayout); // which moves it once
    XPUMoveWidgetBy(id["child"], 5, -5);
    EXPECT_EQ(Exposed(id["leaf"]), (Corners{205, 475, 285, 315}));
    EXPECT_EQ(XPGetWidgetForLocation(id["root"], 250, 400, 1, 1), id["leaf"]);
    EXPECT_EQ(XPGetWidgetForLocation(id["root"], 250, 400, 0, 1), id["child"]);
    EXPECT_EQ(XPGetWidgetForLocation(id["root"], 110, 400, 1, 1), id["root"]);
    EXPECT_EQ(XPGetWidgetForLocation(id["root"], 99, 400, 1, 1), nullptr);
    XPHideWidget(id["leaf"]);
    EXPECT_EQ(XPGetWidgetForLocation(id["root"], 250, 400, 1, 1), id["child"]);
    EXPECT_EQ(XPGetWidgetForLocation(id["root"], 250, 400, 1, 0), id["leaf"]);
}

TEST_F(Widgets, DestroyingTellsAndIsSafeInsideCallbacks) {
    XPDestroyWidget(id["child"], 0);
    EXPECT_EQ(TakenEvents(), (Events{"a child 2", "a child 14 leaf", "a leaf 15", "a root 14 child"}));
    EXPECT_EQ(XPFindRootWidget(id["leaf"]), nullptr) << "lies nowhere";
    XPPlaceWidgetWithin(id["leaf"], id["root"]);
    TakenEvents();

    // The whole window from a press on what lies in it; then again while it is going.
    toDestroy = {{"a leaf 8", id["root"]}, {"a root 2", id["root"]}, {"a leaf 2", id["root"]}};
    PressMouse(200, 400, MouseButton::Left);
    ReleaseMouse(200, 400);
    EXPECT_EQ(TakenEvents(), (Events{"a leaf 8", "a root 2", "a leaf 2", "a root 14 leaf"}));
    EXPECT_TRUE(AllWidgets().empty());
    EXPECT_TRUE(WindowsFrontToBack().empty());

    for (XPWidgetID gone : {id["root"], static_cast<XPWidgetID>(nullptr), reinterpret_cast<XPWidgetID>(1)}) {
        XPDestroyWidget(gone, 1);
        XPHideWidget(gone);
        XPSetWidgetDescriptor(gone, "gone");
        XPPlaceWidgetWithin(gone, gone);
        EXPECT_EQ(XPSetKeyboardFocus(gone), nullptr);
        EXPECT_EQ(XPCountChildWidgets(gone) + Message(gone, xpMode_UpChain), 0);
    }
    EXPECT_EQ(XPCreateWidget(0, 9, 9, 0, 1, "", 1, nullptr, 9), nullptr) << "no such class";
    EXPECT_EQ(XPCreateCustomWidget(0, 9, 9, 0, 1, "", 1, nullptr, nullptr), nullptr);
}

TEST_F(Widgets, FocusGoesToWhoeverTakesIt) {
    EXPECT_EQ(XPSetKeyboardFocus(id["leaf"]), nullptr);
    EXPECT_EQ(TakenEvents(), Events{"a leaf 6"}) << "it refuses";
    taken = {"a leaf 6", "a root 6", "a child 5"};
    EXPECT_EQ(XPSetKeyboardFocus(id["leaf"]), id["leaf"]);
    SendKey('x', xplm_DownFlag, 'X');
    EXPECT_EQ(TakenEvents(), (Events{"a leaf 6", "a leaf 5", "a child 5"}));
    XPLoseKeyboardFocus(id["leaf"]);
    EXPECT_EQ(TakenEvents(), (Events{"a child 6", "a root 6", "a leaf 7"})) << "up the chain";
    EXPECT_EQ(XPGetWidgetWithFocus(), id["root"]);

    TestWindow other{"other"};
    Create(other, 500, 600, 600, 500);
    XPLMTakeKeyboardFocus(other.id);
    EXPECT_EQ(XPGetWidgetWithFocus(), nullptr);
    EXPECT_EQ(XPLMHasKeyboardFocus(other.id), 1);
    XPSetKeyboardFocus(id["leaf"]);
    XPHideWidget(id["child"]);
    EXPECT_EQ(XPGetWidgetWithFocus(), nullptr) << "nobody sees it";
    EXPECT_EQ(XPLMHasKeyboardFocus(XPGetWidgetUnderlyingWindow(id["leaf"])), 0);
}

TEST_F(Widgets, TextFieldsEdit) {
    const XPWidgetID field =
        XPCreateWidget(100, 480, 178, 460, 1, "", 0, id["root"], xpWidgetClass_TextField);
    const auto strike = [](const char *name, XPLMKeyFlags flags = 0) {
        Key key;
        if (!KeyNamed(name, key)) KeyOfCharacter(*name, key);
        StrikeKey(key, flags);
    };
    const auto state = [&] { // the text with the selection in brackets
        char text[100];
        XPGetWidgetDescriptor(field, text, sizeof text);
        std::string marked = text;
        const auto at = [&](int property) {
            return static_cast<std::size_t>(XPGetWidgetProperty(field, property, nullptr));
        };
        return marked.insert(at(xpProperty_EditFieldSelEnd), "]")
            .insert(at(xpProperty_EditFieldSelStart), "[");
    };
    Click(110, 470);
    for (const char *key : {"a", "b", "c", "d", "left", "left"}) strike(key);
    EXPECT_EQ(state(), "ab[]cd");
    strike("left", xplm_ShiftFlag);
    strike("right", xplm_ShiftFlag);
    strike("end", xplm_ShiftFlag);
    EXPECT_EQ(state(), "ab[cd]");
    strike("left");
    strike("home", xplm_ShiftFlag);
    EXPECT_EQ(state(), "[ab]cd");
    strike("delete");
    strike("delete");
    strike("backspace");
    EXPECT_EQ(state(), "[]d");
    strike("return");
    EXPECT_EQ(state(), "[]d") << "the plug-in's";
    XPSetWidgetDescriptor(field, "0123456789ABCDEF");
    strike("end");
    DrawFrame(false);
    EXPECT_EQ(ScreenTexts().back().text, "6789ABCDEF") << "ten letters fit; the cursor is in view";
    PressMouse(104 + 7 * 2, 470, MouseButton::Left);
    DragMouse(104 + 7 * 5, 470);
    EXPECT_EQ(state(), "01234567[89A]BCDEF");
    for (int i = 0; i < 20; i++) DragMouse(50, 470);
    ReleaseMouse(50, 470);
    EXPECT_EQ(state(), "[01234567]89ABCDEF") << "held beside the field it scrolls";
    XPSetWidgetProperty(field, xpProperty_PasswordMode, 1);
    XPSetWidgetProperty(field, xpProperty_MaxCharacters, 9);
    strike("x");
    strike("y");
    EXPECT_EQ(state(), "x[]89ABCDEF");
    DrawFrame(false);
    EXPECT_EQ(ScreenTexts().back().text, "*********");
    XPSetWidgetProperty(field, xpProperty_PasswordMode, 0);
    XPSetWidgetDescriptor(field, "0123456789ABC");
    for (const char *key : {"end", "backspace"}) strike(key);
    DrawFrame(false);
    EXPECT_EQ(ScreenTexts().back().text, "23456789AB")
        << "no room is left behind a text that has become shorter";
    XPSetWidgetDescriptor(field, "");
    strike("left", xplm_ShiftFlag);
    EXPECT_EQ(state(), "[]") << "places behind a text that has become shorter mean its end";
}

} // namespace
