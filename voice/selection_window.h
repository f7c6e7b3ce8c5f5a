// The list on screen made clickable: an invisible window over it, and the lines that are drawn there.
#pragma once

#include <string>

#include "XPLMDisplay.h"
#include "util/refilled_list.h"

// One clickable line.
struct structSelect {
    bool isTitle = false;   // of a group: folds and unfolds it
    std::string text;       // the phrase that the line stands for, or the group's title
    int posY = 0;           // of the text's baseline
    bool isPassive = false; // a click selects nothing
};

struct SelectionWindowState {
    RefilledList<structSelect> lines; // the overlay fills it anew when they change
    std::string lastCalled;           // what was called last by a click
    std::string unfoldedTitle;        // the group that is open; empty: none
    double clickedSec = 0.0;          // FlightTimeSEC of the last click in the list
    int offsetX = 0;                  // of the list, boxels; widgetOffsetY is a setting
    int height = 0, width = 200;      // of the window
    XPLMWindowID window = nullptr;
    bool isPressed = false; // the button, on the window: it stays the same window until then
    int pressX = 0, pressY = 0, pressListX = 0, pressListY = 0; // mouse and list when it was pressed
    int screenWidth = 0, screenHeight = 0;                      // when the window was made or drawn last
};
extern SelectionWindowState selectionWindow;
inline RefilledList<structSelect> &vectorSelect = selectionWindow.lines;
inline std::string &LastCalledChklProcName = selectionWindow.lastCalled;
inline std::string &unfoldedTitle = selectionWindow.unfoldedTitle;
inline double &secUnfoldTFT = selectionWindow.clickedSec;
inline int &widgetOffsetX = selectionWindow.offsetX;
inline int &selH = selectionWindow.height, &selW = selectionWindow.width;

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
