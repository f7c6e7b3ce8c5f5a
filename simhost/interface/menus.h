// The menus of the plug-ins as a pilot sees them.
#pragma once

#include <string>
#include <vector>

namespace simhost {

struct MenuItemView {
    std::string text; // "" for a separator
    bool isSeparator = false;
    bool isEnabled = true;
    int check = 0; // xplm_Menu_NoCheck, _Unchecked or _Checked
    bool hasSubmenu = false;
    std::vector<MenuItemView> items; // of the submenu
};

// What plug-ins have hung into the aircraft menu, then what they have hung into the plug-ins menu, with
// everything below it.
std::vector<MenuItemView> MenuItems();

// Where an item is: its place in MenuItems(), its place in that one's items, and so on.
using MenuPlace = std::vector<std::size_t>;

// Clicks an item. False when there is no such item, it is disabled, or it opens a submenu.
bool ChooseMenuItem(const MenuPlace &place);

// ---- menu_paths.cpp ----

// Finds the item that can be clicked at a path: the texts of the levels with "/" in between. A text may hold
// a "/" itself: the longest one that leads to an item counts. The outermost level may be left out when the
// rest is found in one menu alone. False with the reason in error, which lists what there is.
bool FindMenuItem(const std::string &path, MenuPlace &place, std::string &error);

// The path of an item, whole.
std::string MenuPath(const MenuPlace &place);

} // namespace simhost
