// The selection window. It draws nothing; it takes the clicks on the list's lines, and dragging it moves the
// list.
#include "voice/selection_window.h"

#include <algorithm>

#include "frame/settings.h"
#include "util/clock.h"
#include "util/guard.h"
#include "util/make_fresh.h"
#include "util/screen.h"
#include "voice/recognition.h"

SelectionWindowState selectionWindow;

namespace {

const int LeftOfList = 50;               // how far the window reaches left of the list's place
const int LineBelow = 3, LineAbove = 18; // what belongs to a line, around its baseline

const int FarthestLeft = 35, FarthestRight = 10; // of the list's place, from the screen's edges
const int Lowest = 10, Highest = 100;            // from the screen's lower and upper edge

const structSelect *LineAt(int y) {
    for (const structSelect &line : vectorSelect)
        if (line.posY - LineBelow < y && y < line.posY + LineAbove) return &line;
    return nullptr;
}

void ClickTitle(const std::string &title) {
    const bool unfolds = unfoldedTitle != title;
    unfoldedTitle = unfolds ? title : "";
    secUnfoldTFT = unfolds ? FlightTimeSEC : 0.0;
}

void ClickLine(const structSelect &line) {
    secUnfoldTFT = FlightTimeSEC;
    if (line.isPassive) return;
    Hear(line.text, HeardFrom::List);
    LastCalledChklProcName = isAbortHeard() ? "" : line.text;
}

void MouseDown(int y) {
    const structSelect *line = LineAt(y);
    if (!line) return;
    if (line->isTitle)
        ClickTitle(line->text);
    else
        ClickLine(*line);
}

void ReadScreen() {
    ReadScreenSize(selectionWindow.screenWidth, selectionWindow.screenHeight);
}

// The same window in the list's present place.
void MoveWindow() {
    XPLMSetWindowGeometry(selectionWindow.window, widgetOffsetX - LeftOfList, selH + widgetOffsetY,
                          widgetOffsetX + selW, widgetOffsetY);
}

// On another screen the window is made afresh, in the list's place there.
void SelWindowDraw(XPLMWindowID, void *) {
    const int width = selectionWindow.screenWidth, height = selectionWindow.screenHeight;
    ReadScreen();
    if (width != selectionWindow.screenWidth || height != selectionWindow.screenHeight) SelWindowCreate(selH);
}

void SelWindowKey(XPLMWindowID, char, XPLMKeyFlags, char, void *, int) {}

// The list follows the mouse from where both were at the press, as far as the screen goes. So it never comes
// to 0, which stands for the middle.
void Drag(int x, int y) {
    const SelectionWindowState &state = selectionWindow;
    if (!state.isPressed) return;
    ReadScreen();
    widgetOffsetX = std::clamp(state.pressListX + x - state.pressX, FarthestLeft,
                               std::max(state.screenWidth - FarthestRight, FarthestLeft));
    widgetOffsetY = std::clamp(state.pressListY + y - state.pressY, Lowest,
                               std::max(state.screenHeight - Highest, Lowest));
    MoveWindow();
}

void Press(int x, int y) {
    SelectionWindowState &state = selectionWindow;
    state.isPressed = true;
    state.pressX = x;
    state.pressY = y;
    state.pressListX = widgetOffsetX;
    state.pressListY = widgetOffsetY;
    MouseDown(y);
}

void Release() {
    selectionWindow.isPressed = false;
    SelWindowCreate(selH);
}

int SelWindowMouse(XPLMWindowID, int mouseX, int mouseY, XPLMMouseStatus status, void *) {
    const int x = PlaceOnScreen(mouseX), y = PlaceOnScreen(mouseY);
    if (status == xplm_MouseDown)
        Press(x, y);
    else if (status == xplm_MouseDrag)
        Drag(x, y);
    else
        Release();
    return 1;
}

// The place that is kept: on the screen, and in the middle while none was chosen.
int PlaceX(int x, int width) {
    if (x == 0) x = width / 2 - 50;
    if (x < 0) x = FarthestLeft;
    return std::min(x, width - FarthestRight);
}

int PlaceY(int y, int height) {
    return std::min(std::max(y, Lowest), height - Highest);
}

} // namespace

void AddToSelVector(const std::string &text, int posY, bool isTitle, bool isPassive) {
    structSelect &line = vectorSelect.Add();
    line.isTitle = isTitle;
    line.text = text;
    line.posY = posY;
    line.isPassive = isPassive;
}

void SelWindowCreate(int height) {
    selH = height;
    if (selectionWindow.isPressed) {
        MoveWindow();
        return;
    }
    SelWindowDestroy();
    ReadScreen();
    selectionWindow.window =
        XPLMCreateWindow(widgetOffsetX - LeftOfList, selH + widgetOffsetY, widgetOffsetX + selW,
                         widgetOffsetY, 1, Guarded<"drawing the list's window", SelWindowDraw>, SelWindowKey,
                         Guarded<"a click on the list", SelWindowMouse, 1>, nullptr);
}

void SelWindowDestroy() {
    if (selectionWindow.window) XPLMDestroyWindow(selectionWindow.window);
    selectionWindow.window = nullptr;
    selectionWindow.isPressed = false;
}

void KeepListOnScreen() {
    if (selectionWindow.isPressed) return;
    int width = 0, height = 0;
    ReadScreenSize(width, height);
    const int x = PlaceX(widgetOffsetX, width), y = PlaceY(widgetOffsetY, height);
    if (x == widgetOffsetX && y == widgetOffsetY) return;
    widgetOffsetX = x;
    widgetOffsetY = y;
    if (isSelWindowOpen()) SelWindowCreate(selH);
}

bool isSelWindowOpen() {
    return selectionWindow.window != nullptr;
}

void ResetSelectionWindow() {
    MakeFresh(selectionWindow);
}
