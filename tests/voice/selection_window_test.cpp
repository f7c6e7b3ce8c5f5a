// The window over the list: when it is the same one and when another.
#include "voice/selection_window.h"

#include "frame/settings.h"
#include "simhost/windows/windows.h"
#include "tests/plugin_folder.h"

namespace {

XPLMWindowID Window() {
    const std::vector<simhost::WindowView> windows = simhost::WindowsFrontToBack();
    return windows.size() == 1 ? windows[0].id : nullptr;
}

TEST_F(PluginFolder, TheListsWindowIsMadeAnewOnlyWhenNobodyHoldsIt) {
    widgetOffsetX = widgetOffsetY = 300;
    SelWindowCreate(200);
    const XPLMWindowID first = Window();
    simhost::StepFrame(0.1);
    EXPECT_EQ(Window(), first) << "drawn for the first time";
    simhost::SetScreenSize(1000, 800);
    simhost::StepFrame(0.1);
    const XPLMWindowID second = Window();
    EXPECT_NE(second, first) << "another screen";

    simhost::PressMouse(310, 310, simhost::MouseButton::Left);
    for (int x : {200, 10, -500, 900, 2000}) {
        simhost::MoveMouse(x, 310);
        SelWindowCreate(200 + x / 10); // the list has another height
        KeepListOnScreen();
        simhost::StepFrame(0.1);
        EXPECT_EQ(Window(), second) << x;
    }
    EXPECT_EQ(widgetOffsetX, 1000 - 10);
    simhost::ReleaseMouse(2000, 310);
    EXPECT_NE(Window(), second) << "let go";
    SelWindowDestroy();
}

} // namespace
