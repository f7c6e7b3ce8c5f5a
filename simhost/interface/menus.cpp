// The simulator's plug-ins menu and aircraft menu with what plug-ins hang into them. A handle is a serial
// number, and is looked for among the living menus before it is used, since plug-ins keep handles of menus
// that have gone; so does an item that opens one. Nothing but a look-up depends on how many menus there are.
#include "XPLMMenus.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "simhost/interface/menus.h"
#include "simhost/modules.h"

namespace simhost {

namespace {

struct Item {
    std::string text;
    void *refcon = nullptr;
    XPLMCommandRef command = nullptr;
    bool isSeparator = false;
    bool isEnabled = true;
    XPLMMenuCheck check = xplm_Menu_NoCheck;
    XPLMMenuID submenu = nullptr;  // may have gone: then the item opens nothing
    bool isOfSubmenuAlone = false; // made for a submenu without a place of its own, and goes with it
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};

struct Menu {
    std::string name;
    XPLMMenuHandler_f handler = nullptr;
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
    std::deque<Item> items; // which plug-ins remove from either end
};

std::unordered_map<XPLMMenuID, Menu> &Menus() {
    static auto &menus = *new std::unordered_map<XPLMMenuID, Menu>;
    return menus;
}

XPLMMenuID Handle(std::uintptr_t serial) {
    return reinterpret_cast<XPLMMenuID>(serial);
}

// The simulator's own are always there.
const XPLMMenuID PluginsMenu = Handle(1), AircraftMenu = Handle(2);
constinit std::uintptr_t lastSerial = 2; // goes on over resets
constinit bool isAnyItemDead = false;    // in the plug-ins menu

bool isFixed(XPLMMenuID handle) {
    return handle == PluginsMenu || handle == AircraftMenu;
}

bool isDead(const Item &item) {
    return item.isOfSubmenuAlone && !Menus().contains(item.submenu);
}

Menu *Living(XPLMMenuID handle) {
    if (isFixed(handle)) {
        Menu &menu = Menus()[handle];
        if (handle == PluginsMenu && std::exchange(isAnyItemDead, false)) std::erase_if(menu.items, isDead);
        return &menu;
    }
    const auto found = Menus().find(handle);
    return found != Menus().end() ? &found->second : nullptr;
}

Item *FindItem(XPLMMenuID handle, int index) {
    Menu *menu = Living(handle);
    if (!menu || index < 0 || index >= static_cast<int>(menu->items.size())) return nullptr;
    return &menu->items[static_cast<std::size_t>(index)];
}

int Append(XPLMMenuID handle, Item item) {
    Menu *menu = Living(handle);
    if (!menu) return -1;
    item.owner = currentRunning.plugin;
    menu->items.push_back(std::move(item));
    return static_cast<int>(menu->items.size()) - 1;
}

// With the menus that open from its items, however deep.
void Destroy(XPLMMenuID handle) {
    std::vector<XPLMMenuID> doomed{handle};
    while (!doomed.empty()) {
        const auto found = Menus().find(doomed.back());
        doomed.pop_back();
        if (found == Menus().end() || isFixed(found->first)) continue;
        for (const Item &item : found->second.items)
            if (item.submenu) doomed.push_back(item.submenu);
        Menus().erase(found);
        isAnyItemDead = true;
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
        const Menu *submenu = Living(item.submenu);
        view.hasSubmenu = submenu != nullptr;
        if (submenu) view.items = ViewOf(*submenu, depth + 1);
        views.push_back(std::move(view));
    }
    return views;
}

} // namespace

std::vector<MenuItemView> MenuItems() {
    std::vector<MenuItemView> items = ViewOf(*Living(AircraftMenu), 0);
    std::vector<MenuItemView> ofPluginsMenu = ViewOf(*Living(PluginsMenu), 0);
    std::move(ofPluginsMenu.begin(), ofPluginsMenu.end(), std::back_inserter(items));
    return items;
}

bool ChooseMenuItem(const MenuPlace &place) {
    const Menu *menu = Living(AircraftMenu);
    const Item *item = nullptr;
    for (std::size_t index : place) {
        if (!item && index >= menu->items.size()) {
            index -= menu->items.size();
            menu = Living(PluginsMenu);
        } else if (item) {
            menu = Living(item->submenu);
        }
        if (!menu || index >= menu->items.size()) return false;
        item = &menu->items[index];
        if (item->isSeparator || !item->isEnabled) return false;
    }
    if (!item || Living(item->submenu)) return false;
    if (item->command) {
        RunningScope scope(XPLM_PLUGIN_XPLANE, "menu");
        XPLMCommandOnce(item->command);
    } else if (menu->handler && isPluginEnabled(menu->owner)) {
        RunningScope scope(menu->owner, "menu handler");
        menu->handler(menu->refcon, item->refcon);
    }
    return true;
}

void DropMenus(XPLMPluginID plugin, LeftBehind &leftBehind) {
    const auto isOwned = [&](const auto &owned) { return owned.owner == plugin; };
    for (Menu *fixed : {Living(PluginsMenu), Living(AircraftMenu)}) {
        for (const Item &item : fixed->items) {
            if (isOwned(item)) leftBehind.notes.push_back("menu item \"" + item.text + "\"");
        }
        std::erase_if(fixed->items, isOwned);
    }
    std::vector<XPLMMenuID> owned;
    for (const auto &[handle, menu] : Menus()) {
        if (!isFixed(handle) && isOwned(menu)) owned.push_back(handle);
    }
    std::sort(owned.begin(), owned.end());
    for (const XPLMMenuID handle : owned) {
        const Menu *menu = Living(handle);
        if (!menu) continue; // gone with the one above it
        leftBehind.notes.push_back("menu \"" + menu->name + "\"");
        Destroy(handle);
    }
}

void ResetMenus() {
    Menus().clear();
    isAnyItemDead = false;
}

} // namespace simhost

using namespace simhost;

XPLMMenuID XPLMFindPluginsMenu(void) {
    return PluginsMenu;
}

XPLMMenuID XPLMFindAircraftMenu(void) {
    const std::string folder = AircraftFolder() + "plugins/";
    const bool isFromAircraft =
        !AircraftFolder().empty() && PluginPath(currentRunning.plugin).compare(0, folder.size(), folder) == 0;
    return isFromAircraft ? AircraftMenu : nullptr;
}

XPLMMenuID XPLMCreateMenu(const char *inName, XPLMMenuID inParentMenu, int inParentItem,
                          XPLMMenuHandler_f inHandler, void *inMenuRef) {
    Item *parentItem = nullptr;
    if (inParentMenu) {
        parentItem = FindItem(inParentMenu, inParentItem);
        if (!parentItem || parentItem->isSeparator) {
            ReportMisuse("XPLMCreateMenu under a menu item that does not exist");
            return nullptr;
        }
    }
    const XPLMMenuID handle = Handle(++lastSerial);
    Menu menu;
    menu.name = inName ? inName : "";
    menu.handler = inHandler;
    menu.refcon = inMenuRef;
    menu.owner = currentRunning.plugin;
    if (parentItem) {
        parentItem->submenu = handle;
    } else {
        Item item;
        item.text = menu.name;
        item.submenu = handle;
        item.isOfSubmenuAlone = true;
        Append(PluginsMenu, std::move(item));
    }
    Menus().emplace(handle, std::move(menu));
    return handle;
}

void XPLMDestroyMenu(XPLMMenuID inMenuID) {
    Destroy(inMenuID);
}

void XPLMClearAllMenuItems(XPLMMenuID inMenuID) {
    Menu *menu = Living(inMenuID);
    if (!menu) return;
    // In the menus that all share, only one's own.
    const bool isShared = isFixed(inMenuID);
    std::erase_if(menu->items,
                  [&](const Item &item) { return !isShared || item.owner == currentRunning.plugin; });
}

int XPLMAppendMenuItem(XPLMMenuID inMenu, const char *inItemName, void *inItemRef, int) {
    Item item;
    item.text = inItemName ? inItemName : "";
    item.refcon = inItemRef;
    return Append(inMenu, std::move(item));
}

int XPLMAppendMenuItemWithCommand(XPLMMenuID inMenu, const char *inItemName,
                                  XPLMCommandRef inCommandToExecute) {
    Item item;
    item.text = inItemName ? inItemName : "";
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
    if (item && inItemName) item->text = inItemName;
}

void XPLMCheckMenuItem(XPLMMenuID inMenu, int index, XPLMMenuCheck inCheck) {
    if (Item *item = FindItem(inMenu, index)) item->check = inCheck;
}

void XPLMCheckMenuItemState(XPLMMenuID inMenu, int index, XPLMMenuCheck *outCheck) {
    const Item *item = FindItem(inMenu, index);
    if (outCheck) *outCheck = item ? item->check : xplm_Menu_NoCheck;
}

void XPLMEnableMenuItem(XPLMMenuID inMenu, int index, int enabled) {
    if (Item *item = FindItem(inMenu, index)) item->isEnabled = enabled != 0;
}

void XPLMRemoveMenuItem(XPLMMenuID inMenu, int inIndex) {
    if (!FindItem(inMenu, inIndex)) return;
    Menu *menu = Living(inMenu);
    menu->items.erase(menu->items.begin() + inIndex);
}
