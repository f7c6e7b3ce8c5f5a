// The menu bar. All that is kept is which menus are open and how far they are scrolled; their items are asked
// for anew each time, since the plug-in may change them while the pilot looks.
#include "simhost/windows/menu_bar.h"

#include <algorithm>

#include "XPLMMenus.h"
#include "simhost/drawing/screen.h"

namespace simhost {

namespace {

constexpr Tint BarTint = {0.10F, 0.11F, 0.13F, 0.90F};
constexpr Tint PanelTint = {0.13F, 0.14F, 0.17F, 0.97F};
constexpr Tint EdgeTint = {0.35F, 0.38F, 0.43F, 1.0F};
constexpr Tint ChosenTint = {0.22F, 0.40F, 0.62F, 1.0F};
constexpr Tint TextTint = {0.93F, 0.94F, 0.96F, 1.0F};
constexpr Tint DimTint = {0.50F, 0.52F, 0.55F, 1.0F};

constexpr int TitlePadding = 10;
constexpr int RowHeight = 18;
constexpr int PanelPadding = 4;
constexpr int CheckWidth = 18; // left of an item's text
constexpr int ArrowWidth = 20; // right of it
constexpr int Baseline = 5;    // of a row's text
constexpr int RowsPerWheelClick = 3;

// The path of what is open: the title in the bar, then the item whose submenu is open, and so on.
constinit MenuPlace opened;
constinit std::vector<int> firstRows; // of each open menu, for those that are higher than the screen
constinit int pointedX = 0, pointedY = 0;

struct Panel {
    const std::vector<MenuItemView> *items = nullptr;
    int left = 0, right = 0, top = 0;
    int firstRow = 0, rows = 0;

    int Bottom() const { return top - rows * RowHeight - 2 * PanelPadding; }
    bool Contains(int x, int y) const { return x >= left && x < right && y >= Bottom() && y < top; }
    int RowTop(int row) const { return top - PanelPadding - (row - firstRow) * RowHeight; }
    // The item at a height, or -1.
    int RowAt(int y) const {
        const int row = (top - PanelPadding - 1 - y) / RowHeight;
        return y < top - PanelPadding && row < rows ? firstRow + row : -1;
    }
};

struct Layout {
    std::vector<MenuItemView> menus;
    std::vector<int> titleLefts; // one more than there are menus
    std::vector<Panel> panels;   // from the bar outwards
};

int PanelWidth(const std::vector<MenuItemView> &items) {
    int widest = 60;
    for (const MenuItemView &item : items) widest = std::max(widest, TextWidth(item.text));
    return std::min(CheckWidth + widest + ArrowWidth, ScreenWidth());
}

Panel MakePanel(const std::vector<MenuItemView> &items, int left, int top, int firstRow) {
    Panel panel;
    panel.items = &items;
    const int count = static_cast<int>(items.size());
    const int fitting = std::max(1, (ScreenHeight() - MenuBarHeight - 2 * PanelPadding) / RowHeight);
    panel.rows = std::min(count, fitting);
    panel.firstRow = std::clamp(firstRow, 0, count - panel.rows);
    panel.left = left;
    panel.right = left + PanelWidth(items);
    // Up, when it would hang over the lower edge.
    const int height = panel.rows * RowHeight + 2 * PanelPadding;
    panel.top = std::min(std::max(top, height), ScreenHeight() - MenuBarHeight);
    return panel;
}

// Closes what has gone, and finds the place of the rest.
Layout LayOut() {
    Layout layout;
    layout.menus = MenuItems();
    int left = 0;
    for (const MenuItemView &menu : layout.menus) {
        layout.titleLefts.push_back(left);
        left += TextWidth(menu.text) + 2 * TitlePadding;
    }
    layout.titleLefts.push_back(left);
    const std::vector<MenuItemView> *items = &layout.menus;
    firstRows.resize(opened.size());
    for (std::size_t level = 0; level < opened.size(); level++) {
        const std::size_t index = opened[level];
        if (index >= items->size() || !(*items)[index].hasSubmenu) {
            opened.resize(level);
            firstRows.resize(level);
            break;
        }
        int panelLeft = 0, panelTop = ScreenHeight() - MenuBarHeight;
        if (level == 0) {
            panelLeft = layout.titleLefts[index];
        } else {
            const Panel &parent = layout.panels.back();
            panelTop = parent.RowTop(static_cast<int>(index)) + PanelPadding;
            panelLeft = parent.right;
            const int width = PanelWidth((*items)[index].items);
            if (panelLeft + width > ScreenWidth()) panelLeft = std::max(0, parent.left - width);
        }
        items = &(*items)[index].items;
        layout.panels.push_back(MakePanel(*items, panelLeft, panelTop, firstRows[level]));
        firstRows[level] = layout.panels.back().firstRow;
    }
    return layout;
}

bool isInBar(int y) {
    return y >= ScreenHeight() - MenuBarHeight;
}

// The title at a place in the bar, or -1.
int TitleAt(const Layout &layout, int x) {
    for (std::size_t i = 0; i < layout.menus.size(); i++)
        if (x >= layout.titleLefts[i] && x < layout.titleLefts[i + 1]) return static_cast<int>(i);
    return -1;
}

// The open menu below a place, the last one opened first; or -1.
int PanelAt(const Layout &layout, int x, int y) {
    for (std::size_t i = layout.panels.size(); i-- > 0;)
        if (layout.panels[i].Contains(x, y)) return static_cast<int>(i);
    return -1;
}

void Open(std::size_t level, int index) {
    opened.resize(level);
    firstRows.resize(level);
    opened.push_back(static_cast<std::size_t>(index));
    firstRows.push_back(0);
}

// Opens the submenu of the item that is pointed at, and closes those of others.
void PointAt(const Layout &layout, int panel, int row) {
    const std::size_t level = static_cast<std::size_t>(panel) + 1;
    if (row < 0) return;
    const MenuItemView &item = (*layout.panels[level - 1].items)[static_cast<std::size_t>(row)];
    if (level < opened.size() && opened[level] == static_cast<std::size_t>(row)) return;
    opened.resize(std::min(opened.size(), level));
    firstRows.resize(opened.size());
    if (item.hasSubmenu && item.isEnabled) Open(level, row);
}

// The font has letters alone.
void DrawCheckMark(int left, int bottom) {
    constexpr int heights[] = {3, 2, 1, 0, 1, 2, 3, 4, 5, 6};
    for (int i = 0; i < 10; i++)
        FillRectangle(left + i, bottom + heights[i] + 3, left + i + 1, bottom + heights[i], TextTint);
}

void DrawRow(const Panel &panel, const MenuItemView &item, int row, bool isPointedAt) {
    const int top = panel.RowTop(row), bottom = top - RowHeight;
    if (item.isSeparator) {
        const int middle = bottom + RowHeight / 2;
        FillRectangle(panel.left + 4, middle + 1, panel.right - 4, middle, EdgeTint);
        return;
    }
    if (isPointedAt && item.isEnabled)
        FillRectangle(panel.left + 1, top, panel.right - 1, bottom, ChosenTint);
    if (item.check == xplm_Menu_Checked) DrawCheckMark(panel.left + 4, bottom + Baseline);
    const Tint &tint = item.isEnabled ? TextTint : DimTint;
    DrawSimulatorText(item.text, panel.left + CheckWidth, bottom + Baseline, tint, true);
    if (item.hasSubmenu) DrawSimulatorText(">", panel.right - 12, bottom + Baseline, tint, true);
}

void DrawPanel(const Panel &panel, std::size_t level) {
    FillRectangle(panel.left, panel.top, panel.right, panel.Bottom(), PanelTint);
    OutlineRectangle(panel.left, panel.top, panel.right, panel.Bottom(), EdgeTint);
    for (int row = panel.firstRow; row < panel.firstRow + panel.rows; row++) {
        const bool isOpen = level + 1 < opened.size() && opened[level + 1] == static_cast<std::size_t>(row);
        const bool isBelowMouse = panel.Contains(pointedX, pointedY) && panel.RowAt(pointedY) == row;
        DrawRow(panel, (*panel.items)[static_cast<std::size_t>(row)], row, isOpen || isBelowMouse);
    }
    // There is more above or below.
    const int middle = (panel.left + panel.right) / 2;
    if (panel.firstRow > 0) FillRectangle(middle - 10, panel.top - 1, middle + 10, panel.top - 3, TextTint);
    if (panel.firstRow + panel.rows < static_cast<int>(panel.items->size()))
        FillRectangle(middle - 10, panel.Bottom() + 3, middle + 10, panel.Bottom() + 1, TextTint);
}

} // namespace

void DrawMenuBar() {
    const Layout layout = LayOut();
    const int top = ScreenHeight(), bottom = top - MenuBarHeight;
    FillRectangle(0, top, ScreenWidth(), bottom, BarTint);
    for (std::size_t i = 0; i < layout.menus.size(); i++) {
        const MenuItemView &menu = layout.menus[i];
        const int left = layout.titleLefts[i];
        if (!opened.empty() && opened[0] == i)
            FillRectangle(left, top, layout.titleLefts[i + 1], bottom, ChosenTint);
        DrawSimulatorText(menu.text, left + TitlePadding, bottom + 7, menu.isEnabled ? TextTint : DimTint,
                          true);
    }
    for (std::size_t level = 0; level < layout.panels.size(); level++) DrawPanel(layout.panels[level], level);
}

bool MoveOverMenuBar(int x, int y) {
    pointedX = x;
    pointedY = y;
    if (opened.empty()) return isInBar(y);
    const Layout layout = LayOut();
    if (isInBar(y)) {
        const int title = TitleAt(layout, x);
        if (title >= 0 && !opened.empty() && opened[0] != static_cast<std::size_t>(title)
            && layout.menus[static_cast<std::size_t>(title)].hasSubmenu)
            Open(0, title);
        return true;
    }
    const int panel = PanelAt(layout, x, y);
    if (panel >= 0) PointAt(layout, panel, layout.panels[static_cast<std::size_t>(panel)].RowAt(y));
    return true;
}

bool TurnWheelOverMenuBar(int x, int y, int clicks) {
    if (opened.empty()) return isInBar(y);
    const Layout layout = LayOut();
    const int panel = PanelAt(layout, x, y);
    if (panel < 0) return true;
    const std::size_t level = static_cast<std::size_t>(panel);
    opened.resize(level + 1);
    firstRows.resize(level + 1);
    firstRows[level] -= clicks * RowsPerWheelClick;
    return true;
}

bool PressMenuBar(int x, int y, MenuPlace &chosen) {
    chosen.clear();
    pointedX = x;
    pointedY = y;
    const Layout layout = LayOut();
    if (isInBar(y)) {
        const int title = TitleAt(layout, x);
        const bool wasOpen = !opened.empty();
        CloseMenuBar();
        if (title < 0) return true;
        const MenuItemView &menu = layout.menus[static_cast<std::size_t>(title)];
        if (!menu.isEnabled) return true;
        if (!menu.hasSubmenu)
            chosen = {static_cast<std::size_t>(title)};
        else if (!wasOpen)
            Open(0, title);
        return true;
    }
    if (opened.empty()) return false;
    const int panel = PanelAt(layout, x, y);
    if (panel < 0) {
        CloseMenuBar();
        return true;
    }
    const int row = layout.panels[static_cast<std::size_t>(panel)].RowAt(y);
    if (row < 0) return true;
    const MenuItemView &item =
        (*layout.panels[static_cast<std::size_t>(panel)].items)[static_cast<std::size_t>(row)];
    if (item.isSeparator || !item.isEnabled) return true;
    if (item.hasSubmenu) {
        PointAt(layout, panel, row);
        return true;
    }
    chosen.assign(opened.begin(), opened.begin() + panel + 1);
    chosen.push_back(static_cast<std::size_t>(row));
    CloseMenuBar();
    return true;
}

bool isMenuBarOpen() {
    return !opened.empty();
}

void CloseMenuBar() {
    opened.clear();
    firstRows.clear();
}

} // namespace simhost
