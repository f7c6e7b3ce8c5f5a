// What the items of the plug-in's menu do. Handlers get the item's reference, a text; null does nothing.
#pragma once

#include "XPLMDataAccess.h"
#include "XPLMMenus.h"
#include "figure/channels.h"

void MenuHandler(void *menu, void *reference);        // tools, volume, rate, positions, presets
void MenuCommandHandler(void *menu, void *reference); // a phrase, as if it had been heard
void MenuOptionsHandler(void *menu, void *reference); // announcements and jobs
void MenuVoiceHandler(void *menu, void *reference);   // a line of the voice list
void MenuUpdateHandler(void *menu, void *reference);

// The items of the options submenu whose check marks follow the aircraft's datarefs.
struct OptionItems {
    XPLMMenuID menu = nullptr;
    int annSop = -1, annAll = -1; // announce: normal procedures, everything
    int exeFnc = -1, exeAll = -1; // execute: the first officer's job, both pilots'
};

// The items of the submenu of looks that change with the figure in use, and with what it does.
struct LookItems {
    XPLMMenuID menu = nullptr;
    int looks[FigureLooks] = {-1, -1, -1};
    int person = -1; // the man or the woman instead
    int lively = -1; // checked: breathes, glances and reaches
};

struct MenuActionsState {
    XPLMDataRef comments = nullptr; // "kv/fennic/comments", the aircraft's: announce everything
    XPLMDataRef realMode = nullptr; // "kv/fennic/realmode", the aircraft's: the first officer's job only
    OptionItems options;
    LookItems looks;
};
extern MenuActionsState menuActionsState;
inline int &itemAnnSop = menuActionsState.options.annSop, &itemAnnAll = menuActionsState.options.annAll;
inline int &ExeFnc = menuActionsState.options.exeFnc, &ExeAll = menuActionsState.options.exeAll;

// Looks the aircraft's datarefs up and sets the check marks, now and after every click on an option.
void BindOptions(const OptionItems &items);

// Names the items and sets the check mark, now and after every click on them.
void BindLooks(const LookItems &items);

// Everything as when the program starts.
void ResetMenuActions();
