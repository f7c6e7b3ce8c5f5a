// The selection window. It draws nothing; it takes the clicks on the list's lines, and dragging it moves the
// list.
#include "voice/selection_window.h"

#include "XPLMDisplay.h"
#include "frame/settings.h"
#include "util/clock.h"
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

XPLMWindowID selectionWindow;
int mouseX = 0, mouseY = 0; // where the last mouse event was
int screenWidth = 0, screenHeight = 0;

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
        LastRecognition = line.text;
        LastCalledChklProcName = line.text;
    }
    if (LastRecognition == "abort") {
        ExecuteSay("All Commands and Checklists Aborted!");
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

// On another screen the window is made afresh, in the list's place there.
void SelWindowDraw(XPLMWindowID, void *) {
    int width = 0, height = 0;
    ReadScreenSize(width, height);
    const bool hasChanged = width != screenWidth || height != screenHeight;
    screenWidth = width;
    screenHeight = height;
    if (hasChanged) SelWindowCreate(selH);
}

void SelWindowKey(XPLMWindowID, char, XPLMKeyFlags, char, void *, int) {}

int SelWindowMouse(XPLMWindowID, int mouseNowX, int mouseNowY, XPLMMouseStatus status, void *) {
    const int x = PlaceOnScreen(mouseNowX), y = PlaceOnScreen(mouseNowY);
    const int movedX = x - mouseX, movedY = y - mouseY;
    mouseX = x;
    mouseY = y;
    if (status == xplm_MouseDown) {
        MouseDown(y);
    } else if (status == xplm_MouseDrag) {
        widgetOffsetX += movedX;
        widgetOffsetY += movedY;
    } else {
        SelWindowCreate(selH);
    }
    return 1;
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
    SelWindowDestroy();
    selH = height;
    selectionWindow =
        XPLMCreateWindow(widgetOffsetX - LeftOfList, selH + widgetOffsetY, widgetOffsetX + selW,
                         widgetOffsetY, 1, SelWindowDraw, SelWindowKey, SelWindowMouse, nullptr);
}

void SelWindowDestroy() {
    if (selectionWindow) XPLMDestroyWindow(selectionWindow);
    selectionWindow = nullptr;
}

bool isSelWindowOpen() {
    return selectionWindow != nullptr;
}
