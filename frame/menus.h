// The plug-in's menu, under the simulator's aircraft menu. It is built in two steps, since voices and
// commands are known only when the frame has loaded them, and never rebuilt.
#pragma once

#include <deque>
#include <string>

#include "XPLMMenus.h"

struct MenusState {
    XPLMMenuID aircraft = nullptr, fennic = nullptr, options = nullptr, update = nullptr;
    std::deque<std::string> references; // of items from lists; a deque does not move them
};
extern MenusState menusState;
inline XPLMMenuID &idAircraft = menusState.aircraft, &idFENNIC = menusState.fennic;
inline XPLMMenuID &OptionsID = menusState.options, &idUpdate = menusState.update;

// At start: the menu itself and, where it is needed, the setup.
void BuildMenu1();

// At the first loading stage of the frame: everything else.
void BuildMenu2();

void DestroyMenu();

// Everything as when the program starts.
void ResetMenus();
