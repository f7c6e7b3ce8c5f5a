// The plug-ins menu as a pilot sees it.
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

// The items of the plug-ins menu, with everything below them.
std::vector<MenuItemView> PluginsMenuItems();

// Clicks an item of the plug-ins menu: the texts of its levels, from the outermost. False when there is no
// such item, it is disabled, or it opens a submenu.
bool ChooseMenuItem(const std::vector<std::string> &path);

} // namespace simhost
