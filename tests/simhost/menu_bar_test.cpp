// The menu bar of the simulator's window: what opens, closes and is chosen where the pilot clicks.
#include "simhost/windows/menu_bar.h"

#include <string>

#include "XPLMMenus.h"
#include "simhost/drawing/screen.h"
#include "tests/simhost/as_plugin.h"

using namespace simhost;

namespace {

constexpr int InBar = 590, FirstRow = 565, RowHeight = 18; // of a screen 600 high

class MenuBar : public AsPlugin {
protected:
    MenuBar() {
        SetScreenSize(800, 600);
        CloseMenuBar();
        crew = XPLMCreateMenu("Crew", nullptr, 0, nullptr, nullptr);
        for (const char *text : {"One", "Two"}) XPLMAppendMenuItem(crew, text, nullptr, 0);
        XPLMAppendMenuSeparator(crew);
        more = XPLMCreateMenu("More", crew, XPLMAppendMenuItem(crew, "More", nullptr, 0), nullptr, nullptr);
        XPLMAppendMenuItem(more, "Three", nullptr, 0);
        XPLMEnableMenuItem(crew, XPLMAppendMenuItem(crew, "Never", nullptr, 0), 0);
        XPLMAppendMenuItem(XPLMCreateMenu("Next", nullptr, 0, nullptr, nullptr), "Four", nullptr, 0);
    }

    // The path of what a click chooses, "" for nothing; "below" when it goes to what lies below the bar.
    static std::string Click(int x, int y) {
        MenuPlace chosen;
        if (!PressMenuBar(x, y, chosen)) return "below";
        return MenuPath(chosen);
    }
    static int Row(int row) { return FirstRow - row * RowHeight; }

    XPLMMenuID crew = nullptr, more = nullptr;
};

TEST_F(MenuBar, OpensAndChooses) {
    EXPECT_EQ(Click(20, Row(0)), "below");
    EXPECT_EQ(Click(20, InBar), "");
    EXPECT_TRUE(isMenuBarOpen());
    EXPECT_EQ(Click(20, Row(1)), "Crew/Two");
    EXPECT_FALSE(isMenuBarOpen());

    Click(20, InBar);
    EXPECT_EQ(Click(20, Row(2)) + Click(20, Row(4)), "") << "a separator, a disabled item";
    EXPECT_TRUE(isMenuBarOpen());
    EXPECT_TRUE(MoveOverMenuBar(20, Row(3)));
    EXPECT_EQ(Click(150, Row(3)), "Crew/More/Three") << "the submenu lies on the right of its item";

    Click(20, InBar);
    MoveOverMenuBar(60, InBar);
    EXPECT_EQ(Click(60, Row(0)), "Next/Four") << "an open menu follows the mouse along the bar";

    Click(20, InBar);
    EXPECT_EQ(Click(700, 100), "") << "a click beside closes, and goes no further";
    EXPECT_EQ(Click(700, 100), "below");
    Click(20, InBar);
    Click(20, InBar);
    EXPECT_FALSE(isMenuBarOpen());
    EXPECT_EQ(Click(700, InBar), "");
    EXPECT_FALSE(MoveOverMenuBar(700, 100));
}

TEST_F(MenuBar, MenusMayChangeWhileTheyAreOpen) {
    Click(20, InBar);
    MoveOverMenuBar(20, Row(3));
    XPLMDestroyMenu(more);
    DrawFrame(true);
    DrawMenuBar();
    EXPECT_EQ(Click(150, Row(3)), "") << "beside what is left";
    Click(20, InBar);
    XPLMClearAllMenuItems(crew);
    DrawMenuBar();
    XPLMDestroyMenu(crew);
    DrawMenuBar();
    EXPECT_FALSE(Click(20, Row(0)) == "Crew/One");
    ResetSimulator();
    DrawMenuBar();
    EXPECT_FALSE(isMenuBarOpen());
}

TEST_F(MenuBar, LongMenusAreScrolled) {
    XPLMClearAllMenuItems(crew);
    for (int i = 0; i < 10000; i++) XPLMAppendMenuItem(crew, std::to_string(i).c_str(), nullptr, 0);
    Click(20, InBar);
    DrawFrame(true);
    DrawMenuBar();
    EXPECT_TRUE(TurnWheelOverMenuBar(20, Row(0), -10));
    EXPECT_EQ(Click(20, Row(0)), "Crew/30");
    Click(20, InBar);
    TurnWheelOverMenuBar(20, Row(0), 10);
    EXPECT_EQ(Click(20, Row(0)), "Crew/0");
    EXPECT_FALSE(TurnWheelOverMenuBar(700, 100, 1));
}

} // namespace
