// The selection window. It draws nothing; it takes the clicks on the list's lines, and dragging it moves the
// list.
#include "voice/selection_window.h"

#include <algorithm>

#include "XPLMDisplay.h"
#include "frame/settings.h"
#include "util/clock.h"
#include "util/guard.h"
#include "util/make_fresh.h"
#include "util/screen.h"
#include "voice/executer.h"
#include "voice/recognition.h"

RefilledList<structSelect> vectorSelect;
std::string LastCalledChklProcName;
std::string unfoldedTitle;
double secUnfoldTFT = 0.0;
int widgetOffsetX = 0;
int selH = 0;
int selW = 200;

namespace {

const int LeftOfList = 50;               // how far the window reaches left of the list's place
const int LineBelow = 3, LineAbove = 18; // what belongs to a line, around its baseline

const int FarthestLeft = 35, FarthestRight = 10; // of the list's place, from the screen's edges
const int Lowest = 10, Highest = 100;            // from the screen's lower and upper edge

// Where mouse and list were when the button was pressed.
struct PressPlace {
    int mouseX, mouseY, listX, listY;
};

XPLMWindowID selectionWindow;
bool isPressed = false; // the button, on the window: it stays the same window until then
PressPlace press;
int screenWidth = 0, screenHeight = 0; // when the window was made or drawn last

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
    if (!line.isPassive) {
        Recognise(line.text);
        LastCalledChklProcName = line.text;
    }
    if (LastRecognition == "abort") {
        SayAborted();
        LastCalledChklProcName.clear();
    }
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
    ReadScreenSize(screenWidth, screenHeight);
}

// The same window in the list's present place.
void MoveWindow() {
    XPLMSetWindowGeometry(selectionWindow, widgetOffsetX - LeftOfList, selH + widgetOffsetY,
                          widgetOffsetX + selW, widgetOffsetY);
}

// On another screen the window is made afresh, in the list's place there.
void SelWindowDraw(XPLMWindowID, void *) {
    const int width = screenWidth, height = screenHeight;
    ReadScreen();
    if (width != screenWidth || height != screenHeight) SelWindowCreate(selH);
}

void SelWindowKey(XPLMWindowID, char, XPLMKeyFlags, char, void *, int) {}

// The list follows the mouse from where both were at the press, as far as the screen goes. So it never comes
// to 0, which stands for the middle.
void Drag(int x, int y) {
    if (!isPressed) return;
    ReadScreen();
    widgetOffsetX = std::clamp(press.listX + x - press.mouseX, FarthestLeft,
                               std::max(screenWidth - FarthestRight, FarthestLeft));
    widgetOffsetY =
        std::clamp(press.listY + y - press.mouseY, Lowest, std::max(screenHeight - Highest, Lowest));
    MoveWindow();
}

void Press(int x, int y) {
    isPressed = true;
    press = {x, y, widgetOffsetX, widgetOffsetY};
    MouseDown(y);
}

void Release() {
    isPressed = false;
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
    if (isPressed) {
        MoveWindow();
        return;
    }
    SelWindowDestroy();
    ReadScreen();
    selectionWindow =
        XPLMCreateWindow(widgetOffsetX - LeftOfList, selH + widgetOffsetY, widgetOffsetX + selW,
                         widgetOffsetY, 1, Guarded<"drawing the list's window", SelWindowDraw>, SelWindowKey,
                         Guarded<"a click on the list", SelWindowMouse, 1>, nullptr);
}

void SelWindowDestroy() {
    if (selectionWindow) XPLMDestroyWindow(selectionWindow);
    selectionWindow = nullptr;
    isPressed = false;
}

void KeepListOnScreen() {
    if (isPressed) return;
    int width = 0, height = 0;
    ReadScreenSize(width, height);
    const int x = PlaceX(widgetOffsetX, width), y = PlaceY(widgetOffsetY, height);
    if (x == widgetOffsetX && y == widgetOffsetY) return;
    widgetOffsetX = x;
    widgetOffsetY = y;
    if (isSelWindowOpen()) SelWindowCreate(selH);
}

bool isSelWindowOpen() {
    return selectionWindow != nullptr;
}

void ResetSelectionWindow() {
    MakeFresh(vectorSelect, LastCalledChklProcName, unfoldedTitle, secUnfoldTFT, widgetOffsetX, selH);
    MakeFresh(selectionWindow, isPressed, press, screenWidth, screenHeight);
    selW = 200;
}
