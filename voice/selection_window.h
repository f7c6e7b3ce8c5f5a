// The list on screen made clickable: an invisible window over it, and the lines that were drawn in this
// frame.
#pragma once

#include <string>

#include "util/refilled_list.h"

// One clickable line.
struct structSelect {
    bool isTitle = false;   // of a group: folds and unfolds it
    std::string text;       // the phrase that the line stands for, or the group's title
    int posY = 0;           // of the text's baseline
    bool isPassive = false; // a click selects nothing
};

extern RefilledList<structSelect> vectorSelect; // the overlay empties and fills it every frame
extern std::string LastCalledChklProcName;      // what was called last by a click
extern std::string unfoldedTitle;               // the group that is open; empty: none
extern double secUnfoldTFT;                     // FlightTimeSEC of the last click in the list
extern int widgetOffsetX;                       // of the list, boxels; widgetOffsetY is a setting
extern int selH, selW;                          // height and width of the window

void AddToSelVector(const std::string &text, int posY, bool isTitle, bool isPassive);

// The window of this height over the list's place, made anew; while the button is held on it, it stays the
// same window and is only moved.
void SelWindowCreate(int height);
void SelWindowDestroy();
bool isSelWindowOpen();

// Once a drawing frame: brings the list's place back onto the screen, and to the middle while none was
// chosen. A drag keeps itself on the screen.
void KeepListOnScreen();

// Everything as when the program starts.
void ResetSelectionWindow();
