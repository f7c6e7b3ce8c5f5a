// Finds menu items by the texts of their levels, and says what there is when it finds none.
#include <algorithm>
#include <string_view>

#include "simhost/interface/menus.h"

namespace simhost {

namespace {

constexpr std::size_t MostListed = 20;

// How far a search came, for the error's text: the level at which nothing fitted any more.
struct FurthestLevel {
    std::string path;
    const std::vector<MenuItemView> *items = nullptr;
};

std::string List(const std::vector<MenuItemView> &items) {
    std::string list;
    std::size_t listed = 0, all = 0;
    for (const MenuItemView &item : items) {
        if (item.isSeparator) continue;
        if (++all > MostListed) continue;
        list += (list.empty() ? "\"" : ", \"") + item.text + "\"";
        listed++;
    }
    if (all > listed) list += " and " + std::to_string(all - listed) + " more";
    return list.empty() ? "nothing" : list;
}

bool Leads(const MenuItemView &item, std::string_view path) {
    return item.hasSubmenu && !item.text.empty() && path.size() > item.text.size() + 1
           && path.substr(0, item.text.size()) == item.text && path[item.text.size()] == '/';
}

// An item that can be clicked comes before a submenu of the same text.
bool FindHere(const std::vector<MenuItemView> &items, std::string_view path, MenuPlace &place) {
    for (bool submenus : {false, true}) {
        for (std::size_t i = 0; i < items.size(); i++) {
            if (items[i].isSeparator || items[i].hasSubmenu != submenus || items[i].text != path) continue;
            place.push_back(i);
            return true;
        }
    }
    return false;
}

bool Find(const std::vector<MenuItemView> &items, std::string_view path, const std::string &before,
          MenuPlace &place, FurthestLevel &furthest) {
    if (!furthest.items || before.size() > furthest.path.size()) furthest = {before, &items};
    if (FindHere(items, path, place)) return true;
    std::vector<std::size_t> leading;
    for (std::size_t i = 0; i < items.size(); i++)
        if (Leads(items[i], path)) leading.push_back(i);
    std::stable_sort(leading.begin(), leading.end(), [&](std::size_t a, std::size_t b) {
        return items[a].text.size() > items[b].text.size();
    });
    for (std::size_t i : leading) {
        const MenuItemView &item = items[i];
        place.push_back(i);
        const std::string here = before.empty() ? item.text : before + "/" + item.text;
        if (Find(item.items, path.substr(item.text.size() + 1), here, place, furthest)) return true;
        place.pop_back();
    }
    return false;
}

// Looks below each of the outermost items. False with a reason only when several hold the path.
bool FindBelow(const std::vector<MenuItemView> &items, const std::string &path, MenuPlace &place,
               FurthestLevel &furthest, std::string &error) {
    std::string menus;
    std::size_t found = 0;
    for (std::size_t i = 0; i < items.size(); i++) {
        MenuPlace below{i};
        if (!Find(items[i].items, path, items[i].text, below, furthest)) continue;
        place = below;
        menus += (menus.empty() ? "\"" : ", \"") + items[i].text + "\"";
        found++;
    }
    if (found <= 1) return found == 1;
    place.clear();
    error = "\"" + path + "\" is in several menus: " + menus;
    return false;
}

} // namespace

bool FindMenuItem(const std::string &path, MenuPlace &place, std::string &error) {
    const std::vector<MenuItemView> items = MenuItems();
    place.clear();
    error.clear();
    FurthestLevel furthest;
    if (!Find(items, path, "", place, furthest)) {
        const bool leadsSomewhere = !furthest.path.empty();
        FurthestLevel below = furthest;
        if (!FindBelow(items, path, place, below, error)) {
            // What is there is best told where the path led to; of a path that led nowhere, in the one menu.
            if (!leadsSomewhere && (items.size() == 1 || (below.path.find('/') != std::string::npos)))
                furthest = below;
            if (error.empty())
                error =
                    "there is no \"" + path + "\"; "
                    + (furthest.path.empty() ? "the menus are " : "in \"" + furthest.path + "\" there is ")
                    + List(*furthest.items);
            return false;
        }
    }
    const std::vector<MenuItemView> *level = &items;
    const MenuItemView *item = nullptr;
    for (std::size_t i : place) {
        item = &(*level)[i];
        level = &item->items;
        if (!item->isEnabled) {
            error = "\"" + item->text + "\" is disabled";
            return false;
        }
    }
    if (item->hasSubmenu) error = "\"" + path + "\" opens a menu: " + List(item->items);
    return error.empty();
}

std::string MenuPath(const MenuPlace &place) {
    const std::vector<MenuItemView> items = MenuItems();
    const std::vector<MenuItemView> *level = &items;
    std::string path;
    for (std::size_t i : place) {
        if (i >= level->size()) break;
        path += (path.empty() ? "" : "/") + (*level)[i].text;
        level = &(*level)[i].items;
    }
    return path;
}

} // namespace simhost
