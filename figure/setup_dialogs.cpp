// The dialogs. One that is closed is hidden, not destroyed, since it is closed from within its own button;
// the next one to open, or the end of the plug-in, destroys it. What failed stands in a second window, below.
#include "figure/setup_dialogs.h"

#include <algorithm>
#include <string>
#include <vector>

#include "XPLMGraphics.h"
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "figure/installation.h"
#include "frame/settings.h"
#include "util/guard.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/screen.h"

namespace {

struct DialogButton {
    const char *caption; // null: no such button
    void (*press)();
};

struct Dialog {
    std::vector<std::string> lines;
    DialogButton buttons[2];
};

// A dialog on the screen, or what is left of one.
struct DialogWindow {
    const Dialog *shown = nullptr; // null: nothing
    XPWidgetID window = nullptr;   // with everything in it; may be hidden
    XPWidgetID closed = nullptr;   // the one before, which a button of its own may have closed
    XPWidgetID buttons[2] = {};
};

void PutOff();
void Uninstall();
void Nothing() {}

const Dialog SetupQuestion = {{"    Fennic plugin ready for", "               for setup."},
                              {{"Setup", SetUpAndTell}, {"Later", PutOff}}};
const Dialog SetUp = {{"    Fennic plugin was set up", "       Please reload aircraft"},
                      {{"OK", Nothing}, {nullptr, nullptr}}};
const Dialog UninstallQuestion = {{"    Do you want to uninstall", "       Fennic plugin now?"},
                                  {{"Yes", Uninstall}, {"No", Nothing}}};
const Dialog Deactivated = {{"    Plugin was deactivated", "     Please reload aircraft."},
                            {{"OK", Nothing}, {nullptr, nullptr}}};

const int DialogWidth = 200, DialogHeight = 150;
const int CaptionTop = 35, LineHeight = 20, Margin = 15;
const int ButtonTop = 105, ButtonWidth = 70, ButtonHeight = 22;
const size_t MostFailedSteps = 6; // that are named

struct {
    DialogWindow question, problems;
    Dialog problemList;
} state;

void Destroy(XPWidgetID &widget) {
    if (widget) XPDestroyWidget(widget, 1);
    widget = nullptr;
}

void Close(DialogWindow &dialog) {
    if (dialog.window) XPHideWidget(dialog.window);
    dialog.shown = nullptr;
}

int HandleMessage(XPWidgetMessage message, XPWidgetID, intptr_t button, intptr_t) {
    if (message != xpMsg_PushButtonPressed) return 0;
    for (DialogWindow *dialog : {&state.question, &state.problems})
        for (int i = 0; i < 2; i++) {
            if (!dialog->shown || reinterpret_cast<XPWidgetID>(button) != dialog->buttons[i]) continue;
            void (*const press)() = dialog->shown->buttons[i].press;
            Close(*dialog);
            press();
            SaveSettings();
            return 1;
        }
    return 0;
}

// Offsets are from the window's left and top edges.
XPWidgetID AddWidget(XPWidgetID window, XPWidgetClass widgetClass, const char *text, int left, int top,
                     int width, int height) {
    int windowLeft = 0, windowTop = 0;
    XPGetWidgetGeometry(window, &windowLeft, &windowTop, nullptr, nullptr);
    return XPCreateWidget(windowLeft + left, windowTop - top, windowLeft + left + width,
                          windowTop - top - height, 1, text, 0, window, widgetClass);
}

int WidthOf(const std::string &text) {
    return PlaceOnScreen(
        TruncateToInt(XPLMMeasureString(xplmFont_Proportional, text.c_str(), static_cast<int>(text.size()))));
}

// Where a line begins so that its words stand in the middle. The blanks in front do that in one font alone.
int CaptionLeft(const std::string &line) {
    const size_t blanks = line.find_first_not_of(' ');
    return (DialogWidth - WidthOf(line.substr(blanks))) / 2 - WidthOf(line.substr(0, blanks));
}

XPWidgetID AddButton(XPWidgetID window, const char *caption, int left, int top) {
    const XPWidgetID button =
        AddWidget(window, xpWidgetClass_Button, caption, left, top, ButtonWidth, ButtonHeight);
    XPSetWidgetProperty(button, xpProperty_ButtonType, xpPushButton);
    XPSetWidgetProperty(button, xpProperty_ButtonBehavior, xpButtonBehaviorPushButton);
    return button;
}

// An empty window in the middle of the screen, or with its top edge lower by a number of pixels.
void Open(DialogWindow &dialog, const Dialog &what, int width, int height, int lower) {
    Close(dialog);
    Destroy(dialog.closed);
    dialog.closed = dialog.window;
    int screenWidth = 0, screenHeight = 0;
    ReadScreenSize(screenWidth, screenHeight);
    const int left = (screenWidth - width) / 2, top = (screenHeight + DialogHeight) / 2 - lower;
    dialog.window = XPCreateWidget(left, top, left + width, top - height, 1, "Fennic", 1, nullptr,
                                   xpWidgetClass_MainWindow);
    XPSetWidgetProperty(dialog.window, xpProperty_MainWindowHasCloseBoxes, 0); // it wants an answer
    XPAddWidgetCallback(dialog.window, Guarded<"a setup window", HandleMessage>);
    dialog.shown = &what;
}

// Behind the captions, below which they stand.
void AddButtons(DialogWindow &dialog, int width, int top) {
    const DialogButton *const two = dialog.shown->buttons;
    const bool isOneButton = !two[1].caption;
    const int margin = (width / 2 - ButtonWidth) / 2;
    const int first = isOneButton ? (width - ButtonWidth) / 2 : margin;
    dialog.buttons[0] = AddButton(dialog.window, two[0].caption, first, top);
    dialog.buttons[1] =
        isOneButton ? nullptr : AddButton(dialog.window, two[1].caption, width / 2 + margin, top);
}

void OpenDialog(const Dialog &dialog) {
    Close(state.problems);
    Open(state.question, dialog, DialogWidth, DialogHeight, 0);
    for (int i = 0; i < 2; i++) {
        const std::string &line = dialog.lines[static_cast<size_t>(i)];
        AddWidget(state.question.window, xpWidgetClass_Caption, line.c_str(), CaptionLeft(line),
                  CaptionTop + i * LineHeight, DialogWidth, LineHeight);
    }
    AddButtons(state.question, DialogWidth, ButtonTop);
    XPBringRootWidgetToFront(state.question.window);
}

// Names the steps that failed and what to do, with a button that does them again; nothing when all was done.
void TellWhatFailed(const char *title, void (*again)()) {
    if (failedSteps.empty()) return;
    state.problemList = {{title}, {{"Try again", again}, {"Close", Nothing}}};
    std::vector<std::string> remedies;
    for (size_t i = 0; i < failedSteps.size(); i++) {
        if (i < MostFailedSteps) state.problemList.lines.push_back("- " + failedSteps[i].what);
        if (std::find(remedies.begin(), remedies.end(), failedSteps[i].remedy) == remedies.end())
            remedies.push_back(failedSteps[i].remedy);
    }
    if (failedSteps.size() > MostFailedSteps)
        state.problemList.lines.push_back("- and more, see the simulator's Log.txt");
    state.problemList.lines.insert(state.problemList.lines.end(), remedies.begin(), remedies.end());
    int width = DialogWidth;
    for (const std::string &line : state.problemList.lines)
        width = std::max(width, WidthOf(line) + 2 * Margin);
    const int end = CaptionTop + LineHeight * static_cast<int>(state.problemList.lines.size());
    Open(state.problems, state.problemList, width, end + LineHeight + 2 * ButtonHeight,
         DialogHeight + Margin);
    int top = CaptionTop;
    for (const std::string &line : state.problemList.lines) {
        AddWidget(state.problems.window, xpWidgetClass_Caption, line.c_str(), Margin, top, width - 2 * Margin,
                  LineHeight);
        top += LineHeight;
    }
    AddButtons(state.problems, width, end + LineHeight);
    XPBringRootWidgetToFront(state.problems.window);
}

void PutOff() {
    InstallationState = InstallationPutOff;
}

void Uninstall() {
    UninstallFromAcf();
    InstallationState = InstallationRemoved;
    OpenDialog(Deactivated);
    TellWhatFailed("Fennic's files were not all taken out:", Uninstall);
}

} // namespace

void OpenSetupPrompt() {
    if (state.question.shown != &SetupQuestion) OpenDialog(SetupQuestion);
}

void SetUpAndTell() {
    SetUpThisAircraft();
    InstallationState = InstallationReady;
    SaveSettings();
    OpenDialog(SetUp);
    TellWhatFailed("But she is not complete in this aircraft:", SetUpAndTell);
}

void OpenUninstallPrompt() {
    if (state.question.shown != &UninstallQuestion) OpenDialog(UninstallQuestion);
}

void CloseSetupDialogs() {
    for (DialogWindow *dialog : {&state.question, &state.problems}) {
        Close(*dialog);
        Destroy(dialog->window);
        Destroy(dialog->closed);
    }
}

void ResetSetupDialogs() {
    MakeFresh(state);
}
