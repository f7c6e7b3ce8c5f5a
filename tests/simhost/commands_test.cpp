// Commands and menus: who hears of a command, in which order, and what the simulator itself does with it.
#include <functional>
#include <string>
#include <vector>

#include "XPLMMenus.h"
#include "XPLMUtilities.h"
#include "simhost/events.h"
#include "simhost/interface/menus.h"
#include "tests/simhost/as_plugin.h"

using namespace simhost;

namespace {

std::vector<std::string> calls;

struct Handler {
    std::string name;
    int answer = 1;
    std::function<void()> act = [] {};
};

int Handle(XPLMCommandRef, XPLMCommandPhase phase, void *refcon) {
    const auto *handler = static_cast<Handler *>(refcon);
    const char *phases[] = {" begin", " continue", " end"};
    calls.push_back(handler->name + phases[phase]);
    const int answer = handler->answer; // the handler may take itself away
    handler->act();
    return answer;
}

using Calls = std::vector<std::string>;

class Commands : public AsPlugin {
protected:
    Commands() { calls.clear(); }

    static Calls Taken() { return std::exchange(calls, {}); }
};

TEST_F(Commands, BeforeThenAfterAndBeforeCanEndIt) {
    Handler early{"early"}, second{"second"}, late{"late"};
    const XPLMCommandRef command = XPLMCreateCommand("t/command", "A test");
    EXPECT_EQ(XPLMCreateCommand("t/command", "Another"), command);
    EXPECT_EQ(XPLMFindCommand("t/command"), command);
    EXPECT_EQ(XPLMFindCommand("t/none"), nullptr);
    XPLMRegisterCommandHandler(command, Handle, 0, &late);
    XPLMRegisterCommandHandler(command, Handle, 1, &early);
    XPLMRegisterCommandHandler(command, Handle, 1, &second);
    XPLMCommandOnce(command);
    EXPECT_EQ(Taken(),
              (Calls{"early begin", "second begin", "late begin", "early end", "second end", "late end"}));
    early.answer = 0;
    XPLMCommandOnce(command);
    EXPECT_EQ(Taken(), (Calls{"early begin", "early end"}));
    EXPECT_EQ(CountCommand("t/command").begun, 2);
    EXPECT_EQ(CountCommand("t/command").ended, 2);
    EXPECT_EQ(CountCommand("t/none").begun, 0);

    // Unregistering needs the very same handler, flag and refcon.
    XPLMUnregisterCommandHandler(command, Handle, 0, &early);
    XPLMUnregisterCommandHandler(command, Handle, 1, &late);
    XPLMCommandOnce(command);
    EXPECT_EQ(Taken().size(), 2u);
    XPLMUnregisterCommandHandler(command, Handle, 1, &early);
    XPLMCommandOnce(command);
    EXPECT_EQ(Taken().front(), "second begin");
}

TEST_F(Commands, HeldCommandsContinueOnceAFrame) {
    Handler handler{"h"};
    const XPLMCommandRef command = XPLMCreateCommand("t/held", "");
    XPLMRegisterCommandHandler(command, Handle, 1, &handler);
    EXPECT_TRUE(HoldCommand("t/held"));
    EXPECT_TRUE(HoldCommand("t/held")) << "pressed already";
    StepFrame(0.02);
    StepFrame(0.02);
    XPLMCommandBegin(command); // the plug-in holds it as well
    XPLMCommandOnce(command);
    ReleaseCommand("t/held");
    StepFrame(0.02);
    XPLMCommandEnd(command);
    XPLMCommandEnd(command);
    StepFrame(0.02);
    EXPECT_EQ(Taken(), (Calls{"h begin", "h continue", "h continue", "h continue", "h end"}));
    EXPECT_EQ(CountCommand("t/held").begun, 1);
    EXPECT_EQ(CountCommand("t/held").ended, 1);
    EXPECT_FALSE(HoldCommand("t/none"));
    EXPECT_FALSE(ReleaseCommand("t/none"));
}

TEST_F(Commands, HandlersMayChangeTheListAndOtherCommands) {
    const XPLMCommandRef command = XPLMCreateCommand("t/command", "");
    Handler first{"first"}, second{"second"}, fresh{"fresh"};
    first.act = [&] {
        XPLMUnregisterCommandHandler(command, Handle, 1, &first);
        XPLMUnregisterCommandHandler(command, Handle, 1, &second);
        for (int i = 0; i < 50; i++) XPLMRegisterCommandHandler(command, Handle, 0, &fresh);
    };
    XPLMRegisterCommandHandler(command, Handle, 1, &first);
    XPLMRegisterCommandHandler(command, Handle, 1, &second);
    XPLMCommandBegin(command);
    EXPECT_EQ(Taken(), (Calls{"first begin"})) << "newcomers wait for the next phase";
    XPLMCommandEnd(command);
    EXPECT_EQ(Taken().size(), 50u);

    // A handler that ends the command it continues, with another one held beside it.
    const XPLMCommandRef a = XPLMCreateCommand("t/a", ""), b = XPLMCreateCommand("t/b", "");
    Handler ends{"ends"}, beside{"beside"};
    XPLMRegisterCommandHandler(a, Handle, 1, &ends);
    XPLMRegisterCommandHandler(b, Handle, 1, &beside);
    XPLMCommandBegin(a);
    XPLMCommandBegin(b);
    ends.act = [&] {
        XPLMCommandEnd(a);
        XPLMCommandEnd(b);
    };
    Taken();
    StepFrame(0.02);
    EXPECT_EQ(Taken(), (Calls{"ends continue", "ends end", "beside end"}));
    StepFrame(0.02);
    EXPECT_TRUE(Taken().empty());
}

TEST_F(Commands, AHandlerThatEndsACommandKeepsTheSimulatorFromIt) {
    const XPLMCommandRef toggle = XPLMFindCommand("sim/electrical/battery_1_toggle");
    Handler guard{"guard", 0};
    XPLMCommandOnce(toggle);
    XPLMRegisterCommandHandler(toggle, Handle, 1, &guard);
    XPLMCommandOnce(toggle);
    EXPECT_EQ(GetNumber("sim/cockpit2/electrical/battery_on", 0), 1);
}

// ---- Menus ----

void Chosen(void *menu, void *item) {
    calls.push_back(std::string(static_cast<const char *>(menu)) + "/" + static_cast<const char *>(item));
}
void *Reference(const char *text) {
    return const_cast<char *>(text);
}

// Empty when the item was found and clicked, or why not.
std::string Choose(const std::string &path) {
    MenuPlace place;
    std::string error;
    if (FindMenuItem(path, place, error)) {
        EXPECT_TRUE(ChooseMenuItem(place)) << path;
    } else {
        EXPECT_FALSE(ChooseMenuItem(place)) << path;
        EXPECT_NE(error, "");
    }
    return error;
}

TEST_F(Commands, MenusKeepWhatPluginsHangIntoThem) {
    const int place = XPLMAppendMenuItem(XPLMFindPluginsMenu(), "Crew", nullptr, 0);
    const XPLMMenuID crew = XPLMCreateMenu("Crew", XPLMFindPluginsMenu(), place, Chosen, Reference("crew"));
    EXPECT_EQ(XPLMAppendMenuItem(crew, "One", Reference("1"), 0), 0);
    XPLMAppendMenuSeparator(crew);
    EXPECT_EQ(XPLMAppendMenuItem(crew, "Two", Reference("2"), 0), 2) << "the separator counts";
    XPLMSetMenuItemName(crew, 2, "Zwei", 0);
    XPLMCheckMenuItem(crew, 2, xplm_Menu_Checked);
    XPLMMenuCheck check = -1;
    XPLMCheckMenuItemState(crew, 2, &check);
    EXPECT_EQ(check, xplm_Menu_Checked);
    const XPLMMenuID voices = XPLMCreateMenu("Voices", crew, 0, Chosen, Reference("voices"));
    XPLMAppendMenuItem(voices, "Anna", Reference("anna"), 0);

    const std::vector<MenuItemView> items = MenuItems();
    ASSERT_EQ(items.size(), 1u);
    ASSERT_EQ(items[0].items.size(), 3u);
    EXPECT_EQ(items[0].items[0].items.at(0).text, "Anna");
    EXPECT_TRUE(items[0].items[1].isSeparator);
    EXPECT_EQ(items[0].items[2].text, "Zwei");
    EXPECT_EQ(items[0].items[2].check, xplm_Menu_Checked);

    EXPECT_EQ(Choose("Crew/Zwei"), "");
    EXPECT_EQ(Choose("Crew/One/Anna"), "");
    EXPECT_EQ(Choose("Crew/One"), "\"Crew/One\" opens a menu: \"Anna\"");
    EXPECT_EQ(Choose("Crew/Three"), "there is no \"Crew/Three\"; in \"Crew\" there is \"One\", \"Zwei\"");
    EXPECT_NE(Choose("Crew/Zwei/Drei"), "");
    EXPECT_FALSE(ChooseMenuItem({0, 1})) << "a separator";
    XPLMEnableMenuItem(crew, 2, 0);
    EXPECT_EQ(Choose("Zwei"), "\"Zwei\" is disabled");
    EXPECT_EQ(Taken(), (Calls{"crew/2", "voices/anna"}));

    XPLMAppendMenuItemWithCommand(crew, "Battery", XPLMFindCommand("sim/electrical/battery_1_on"));
    EXPECT_EQ(Choose("Crew/Battery"), "");
    EXPECT_EQ(CountCommand("sim/electrical/battery_1_on").ended, 1);
    XPLMRemoveMenuItem(crew, 0);
    XPLMCheckMenuItemState(crew, 1, &check);
    EXPECT_EQ(check, xplm_Menu_Checked) << "the ones behind move up";
    XPLMClearAllMenuItems(crew);
    EXPECT_TRUE(MenuItems().at(0).items.empty());
}

TEST_F(Commands, MenuItemsAreFoundByTheirPaths) {
    SetFolders("/sim/", "/sim/Aircraft/A/", "A.acf");
    ActAsPlugin("/sim/Aircraft/A/plugins/fennic/64/lin.xpl");
    const int place = XPLMAppendMenuItem(XPLMFindAircraftMenu(), "Crew", nullptr, 0);
    const XPLMMenuID crew = XPLMCreateMenu("Crew", XPLMFindAircraftMenu(), place, Chosen, Reference("crew"));
    const auto addMenu = [&](const char *text) {
        return XPLMCreateMenu(text, crew, XPLMAppendMenuItem(crew, text, nullptr, 0), Chosen,
                              Reference(text));
    };
    // Texts with "/" in them, two menus of one name, and one menu with the name of an item.
    const XPLMMenuID on = addMenu("On");
    XPLMAppendMenuItem(on, "Off/Half", Reference("1"), 0);
    XPLMAppendMenuItem(addMenu("On/Off"), "Half", Reference("2"), 0);
    XPLMAppendMenuItem(addMenu("On/Off"), "Full", Reference("3"), 0);
    XPLMAppendMenuItem(addMenu("Once"), "More", Reference("4"), 0);
    XPLMAppendMenuItem(crew, "Once", Reference("5"), 0);
    XPLMAppendMenuItem(crew, "Once/More", Reference("6"), 0);
    EXPECT_EQ(Choose("Crew/On/Off/Half"), "");
    EXPECT_EQ(Choose("Crew/On/Off/Full"), "");
    EXPECT_EQ(Choose("Once"), "");
    EXPECT_EQ(Choose("Once/More"), "");
    EXPECT_EQ(Taken(), (Calls{"On/Off/2", "On/Off/3", "crew/5", "crew/6"}));
    for (const char *wrong : {"", "/", "Crew", "Crew/", "/Crew/Once", "Crew/Once/", "Crew/once", "More"})
        EXPECT_NE(Choose(wrong), "") << wrong;

    // In the plug-ins menu, behind what hangs in the aircraft menu.
    XPLMAppendMenuItem(XPLMCreateMenu("Other", nullptr, 0, Chosen, Reference("other")), "Once",
                       Reference("7"), 0);
    EXPECT_EQ(Choose("Other/Once"), "");
    EXPECT_EQ(Choose("Once"), "\"Once\" is in several menus: \"Crew\", \"Other\"");
    EXPECT_EQ(Choose("Nobody"), "there is no \"Nobody\"; the menus are \"Crew\", \"Other\"");
    EXPECT_EQ(MenuPath({0, 4}), "Crew/Once");
    EXPECT_EQ(Taken(), (Calls{"other/7"}));

    // A menu inside itself, and everything below a menu that goes; the fixed ones stay.
    XPLMCreateMenu("Crew", crew, 4, Chosen, nullptr);
    XPLMDestroyMenu(crew);
    XPLMDestroyMenu(XPLMFindPluginsMenu());
    for (const XPLMMenuID gone : {crew, on}) EXPECT_EQ(XPLMAppendMenuItem(gone, "Late", nullptr, 0), -1);
    XPLMRemoveMenuItem(XPLMFindPluginsMenu(), 99);
    ActAsPlugin("/sim/Resources/plugins/other/64/lin.xpl");
    XPLMClearAllMenuItems(XPLMFindPluginsMenu()); // only its own
    EXPECT_EQ(Choose("Other/Once"), "");
    EXPECT_NE(Choose("Crew/On/Off/Half"), "");
}

} // namespace
