// The five simulator commands that pilots bind to buttons. Their handlers only set flags for the frame.
#pragma once

#include "XPLMUtilities.h"

struct CommandsState {
    XPLMCommandRef rec = nullptr, step = nullptr, widget = nullptr, select = nullptr, stop = nullptr;
    int showWidget = 1; // the text overlay is shown
};
extern CommandsState commandsState;
inline XPLMCommandRef &CommandRec = commandsState.rec, &CommandStep = commandsState.step;
inline XPLMCommandRef &CommandWidget = commandsState.widget, &CommandSelect = commandsState.select;
inline XPLMCommandRef &CommandStop = commandsState.stop;
inline int &ShowWidget = commandsState.showWidget;

void CustCommInit(); // creates the commands and registers their handlers
void CustCommExit();

// Everything as when the program starts.
void ResetCommands();
