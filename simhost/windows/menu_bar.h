// The plug-ins' menus as a bar over the upper edge of the screen, for a pilot with a mouse. Coordinates are
// boxels, y up.
#pragma once

#include "simhost/interface/menus.h"

namespace simhost {

inline constexpr int MenuBarHeight = 22;

// Draws the bar and what is open over the frame that was drawn last.
void DrawMenuBar();

// Each says whether the bar or an open menu took it; then the windows below get nothing of it.
bool MoveOverMenuBar(int x, int y);
bool TurnWheelOverMenuBar(int x, int y, int clicks);
// A press also closes menus. chosen becomes the item that was clicked, or stays empty.
bool PressMenuBar(int x, int y, MenuPlace &chosen);

bool isMenuBarOpen();
void CloseMenuBar();

} // namespace simhost
