// The simulator's plug-ins menu and aircraft menu with what plug-ins hang into them. A handle is the address
// of a menu, and is looked for among the living ones before it is used, since plug-ins keep handles of menus
// that have gone.
#include "XPLMMenus.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "simhost/menus.h"
#include "simhost/modules.h"

namespace simhost {

namespace {

struct Menu;

struct Item {
    std::string text;
    void *refcon = nullptr;
    XPLMCommandRef command = nullptr;
    bool isSeparator = false;
    bool isEnabled = true;
    XPLMMenuCheck check = xplm_Menu_NoCheck;
    Menu *submenu = nullptr;
    bool isOfSubmenuAlone = false; // made for a submenu without a place of its own, and goes with it
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};

struct Menu {
    std::string name;
    XPLMMenuHandler_f handler = nullptr;
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
    std::vector<Item> items;
};

std::vector<std::unique_ptr<Menu>> &Menus() {
    static auto &menus = *new std::vector<std::unique_ptr<Menu>>;
    return menus;
}

// The first two menus are the simulator's and always there.
Menu *FixedMenu(std::size_t index) {
    while (Menus().size() < 2) Menus().push_back(std::make_unique<Menu>());
    return Menus()[index].get();
}
Menu *PluginsMenu() {
    return FixedMenu(0);
}
Menu *AircraftMenu() {
    return FixedMenu(1);
}

Menu *Living(XPLMMenuID handle) {
    for (const auto &menu : Menus()) {
        if (menu.get() == handle) return menu.get();
    }
    return nullptr;
}

Item *FindItem(XPLMMenuID handle, int index) {
    Menu *menu = Living(handle);
    if (menu == nullptr || index < 0 || index >= static_cast<int>(menu->items.size())) return nullptr;
    return &menu->items[static_cast<std::size_t>(index)];
}

int Append(XPLMMenuID handle, Item item) {
    Menu *menu = Living(handle);
    if (menu == nullptr) return -1;
    item.owner = currentRunning.plugin;
    menu->items.push_back(std::move(item));
    return static_cast<int>(menu->items.size()) - 1;
}

bool IsFixed(const Menu *menu) {
    return menu == PluginsMenu() || menu == AircraftMenu();
}

// With the menus that open from its items.
void Destroy(Menu *destroyed) {
    for (const auto &menu : Menus()) {
        std::erase_if(menu->items,
                      [&](const Item &item) { return item.submenu == destroyed && item.isOfSubmenuAlone; });
        for (Item &item : menu->items) {
            if (item.submenu == destroyed) item.submenu = nullptr;
        }
    }
    const std::vector<Item> items = std::move(destroyed->items);
    std::erase_if(Menus(), [&](const auto &menu) { return menu.get() == destroyed; });
    for (const Item &item : items) {
        Menu *submenu = Living(item.submenu);
        if (submenu != nullptr && !IsFixed(submenu)) Destroy(submenu);
    }
}

std::vector<MenuItemView> ViewOf(const Menu &menu, int depth) {
    std::vector<MenuItemView> views;
    constexpr int deepest = 16; // a plug-in can hang a menu into itself
    if (depth > deepest) return views;
    for (const Item &item : menu.items) {
        MenuItemView view;
        view.text = item.text;
        view.isSeparator = item.isSeparator;
        view.isEnabled = item.isEnabled;
        view.check = item.check;
        view.hasSubmenu = item.submenu != nullptr;
        if (item.submenu != nullptr) view.items = ViewOf(*item.submenu, depth + 1);
        views.push_back(std::move(view));
    }
    return views;
}

} // namespace

std::vector<MenuItemView> MenuItems() {
    std::vector<MenuItemView> items = ViewOf(*AircraftMenu(), 0);
    std::vector<MenuItemView> ofPluginsMenu = ViewOf(*PluginsMenu(), 0);
    std::move(ofPluginsMenu.begin(), ofPluginsMenu.end(), std::back_inserter(items));
    return items;
}

bool ChooseMenuItem(const MenuPlace &place) {
    const Menu *menu = AircraftMenu();
    const Item *item = nullptr;
    for (std::size_t index : place) {
        if (item == nullptr && index >= menu->items.size()) {
            index -= menu->items.size();
            menu = PluginsMenu();
        } else if (item != nullptr) {
            menu = item->submenu;
        }
        if (menu == nullptr || index >= menu->items.size()) return false;
        item = &menu->items[index];
        if (item->isSeparator || !item->isEnabled) return false;
    }
    if (item == nullptr || item->submenu != nullptr) return false;
    if (item->command != nullptr) {
        RunningScope scope(XPLM_PLUGIN_XPLANE, "menu");
        XPLMCommandOnce(item->command);
    } else if (menu->handler != nullptr && IsPluginEnabled(menu->owner)) {
        RunningScope scope(menu->owner, "menu handler");
        menu->handler(menu->refcon, item->refcon);
    }
    return true;
}

void DropMenus(XPLMPluginID plugin, LeftBehind &leftBehind) {
    const auto isOwned = [&](const auto &owned) { return owned.owner == plugin; };
    for (Menu *fixed : {PluginsMenu(), AircraftMenu()}) {
        for (const Item &item : fixed->items) {
            if (isOwned(item)) leftBehind.notes.push_back("menu item \"" + item.text + "\"");
        }
        std::erase_if(fixed->items, isOwned);
    }
    std::vector<Menu *> owned;
    for (const auto &menu : Menus()) {
        if (!IsFixed(menu.get()) && isOwned(*menu)) owned.push_back(menu.get());
    }
    for (Menu *menu : owned) {
        if (Living(menu) == nullptr) continue; // gone with the one above it
        leftBehind.notes.push_back("menu \"" + menu->name + "\"");
        Destroy(menu);
    }
}

void ResetMenus() {
    Menus().clear();
}

} // namespace simhost

using namespace simhost;

XPLMMenuID XPLMFindPluginsMenu(void) {
    return PluginsMenu();
}

XPLMMenuID XPLMFindAircraftMenu(void) {
    const std::string folder = AircraftFolder() + "plugins/";
    const bool isFromAircraft =
        !AircraftFolder().empty() && PluginPath(currentRunning.plugin).compare(0, folder.size(), folder) == 0;
    return isFromAircraft ? AircraftMenu() : nullptr;
}

XPLMMenuID XPLMCreateMenu(const char *inName, XPLMMenuID inParentMenu, int inParentItem,
                          XPLMMenuHandler_f inHandler, void *inMenuRef) {
    Item *parentItem = nullptr;
    if (inParentMenu != nullptr) {
        parentItem = FindItem(inParentMenu, inParentItem);
        if (parentItem == nullptr || parentItem->isSeparator) {
            ReportMisuse("XPLMCreateMenu under a menu item that does not exist");
            return nullptr;
        }
    }
    FixedMenu(0); // the simulator's come first
    auto created = std::make_unique<Menu>();
    Menu *menu = created.get();
    menu->name = inName != nullptr ? inName : "";
    menu->handler = inHandler;
    menu->refcon = inMenuRef;
    menu->owner = currentRunning.plugin;
    if (parentItem != nullptr) {
        parentItem->submenu = menu;
    } else {
        Item item;
        item.text = menu->name;
        item.submenu = menu;
        item.isOfSubmenuAlone = true;
        Append(PluginsMenu(), std::move(item));
    }
    Menus().push_back(std::move(created));
    return menu;
}

void XPLMDestroyMenu(XPLMMenuID inMenuID) {
    Menu *menu = Living(inMenuID);
    if (menu != nullptr && !IsFixed(menu)) Destroy(menu);
}

void XPLMClearAllMenuItems(XPLMMenuID inMenuID) {
    Menu *menu = Living(inMenuID);
    if (menu == nullptr) return;
    // In the menus that all share, only one's own.
    const bool isFixed = IsFixed(menu);
    std::erase_if(menu->items,
                  [&](const Item &item) { return !isFixed || item.owner == currentRunning.plugin; });
}

int XPLMAppendMenuItem(XPLMMenuID inMenu, const char *inItemName, void *inItemRef, int) {
    Item item;
    item.text = inItemName != nullptr ? inItemName : "";
    item.refcon = inItemRef;
    return Append(inMenu, std::move(item));
}

int XPLMAppendMenuItemWithCommand(XPLMMenuID inMenu, const char *inItemName,
                                  XPLMCommandRef inCommandToExecute) {
    Item item;
    item.text = inItemName != nullptr ? inItemName : "";
    item.command = inCommandToExecute;
    return Append(inMenu, std::move(item));
}

void XPLMAppendMenuSeparator(XPLMMenuID inMenu) {
    Item item;
    item.isSeparator = true;
    Append(inMenu, std::move(item));
}

void XPLMSetMenuItemName(XPLMMenuID inMenu, int inIndex, const char *inItemName, int) {
    Item *item = FindItem(inMenu, inIndex);
    if (item != nullptr && inItemName != nullptr) item->text = inItemName;
}

void XPLMCheckMenuItem(XPLMMenuID inMenu, int index, XPLMMenuCheck inCheck) {
    if (Item *item = FindItem(inMenu, index)) item->check = inCheck;
}

void XPLMCheckMenuItemState(XPLMMenuID inMenu, int index, XPLMMenuCheck *outCheck) {
    const Item *item = FindItem(inMenu, index);
    if (outCheck != nullptr) *outCheck = item != nullptr ? item->check : xplm_Menu_NoCheck;
}

void XPLMEnableMenuItem(XPLMMenuID inMenu, int index, int enabled) {
    if (Item *item = FindItem(inMenu, index)) item->isEnabled = enabled != 0;
}

void XPLMRemoveMenuItem(XPLMMenuID inMenu, int inIndex) {
    if (FindItem(inMenu, inIndex) == nullptr) return;
    Menu *menu = Living(inMenu);
    menu->items.erase(menu->items.begin() + inIndex);
}
