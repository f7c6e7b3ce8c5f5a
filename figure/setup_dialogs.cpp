// The dialogs. One that is closed is hidden, not destroyed, since it is closed from within its own button;
// the next one to open, or the end of the plug-in, destroys it.
#include "figure/setup_dialogs.h"

#include <string>

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
    const char *lines[2];
    DialogButton buttons[2];
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
const int CaptionTop = 35, LineHeight = 20;
const int ButtonTop = 105, ButtonWidth = 70, ButtonHeight = 22;

const Dialog *current = nullptr; // what the window shows; null: nothing
XPWidgetID window = nullptr;     // with everything in it; may be hidden
XPWidgetID closed = nullptr;     // the one before, which a button of its own may have closed
XPWidgetID buttons[2];

void Destroy(XPWidgetID &widget) {
    if (widget) XPDestroyWidget(widget, 1);
    widget = nullptr;
}

void Close() {
    if (window) XPHideWidget(window);
    current = nullptr;
}

int HandleMessage(XPWidgetMessage message, XPWidgetID, intptr_t button, intptr_t) {
    if (message != xpMsg_PushButtonPressed || !current) return 0;
    for (int i = 0; i < 2; i++) {
        if (!buttons[i] || reinterpret_cast<XPWidgetID>(button) != buttons[i]) continue;
        void (*const press)() = current->buttons[i].press;
        Close();
        press();
        SaveSettings();
        return 1;
    }
    return 0;
}

// Offsets are from the window's left and top edges.
XPWidgetID AddWidget(XPWidgetClass widgetClass, const char *text, int left, int top, int width, int height) {
    int windowLeft = 0, windowTop = 0;
    XPGetWidgetGeometry(window, &windowLeft, &windowTop, nullptr, nullptr);
    return XPCreateWidget(windowLeft + left, windowTop - top, windowLeft + left + width,
                          windowTop - top - height, 1, text, 0, window, widgetClass);
}

// Where a line begins so that its words stand in the middle. The blanks in front do that in one font alone.
int CaptionLeft(const std::string &line) {
    const size_t blanks = line.find_first_not_of(' ');
    const auto width = [](const std::string &text) {
        return PlaceOnScreen(TruncateToInt(
            XPLMMeasureString(xplmFont_Proportional, text.c_str(), static_cast<int>(text.size()))));
    };
    return (DialogWidth - width(line.substr(blanks))) / 2 - width(line.substr(0, blanks));
}

XPWidgetID AddButton(const char *caption, int left) {
    const XPWidgetID button =
        AddWidget(xpWidgetClass_Button, caption, left, ButtonTop, ButtonWidth, ButtonHeight);
    XPSetWidgetProperty(button, xpProperty_ButtonType, xpPushButton);
    XPSetWidgetProperty(button, xpProperty_ButtonBehavior, xpButtonBehaviorPushButton);
    return button;
}

void Open(const Dialog &dialog) {
    Close();
    Destroy(closed);
    closed = window;
    int screenWidth = 0, screenHeight = 0;
    ReadScreenSize(screenWidth, screenHeight);
    const int left = (screenWidth - DialogWidth) / 2, top = (screenHeight + DialogHeight) / 2;
    window = XPCreateWidget(left, top, left + DialogWidth, top - DialogHeight, 1, "Fennic", 1, nullptr,
                            xpWidgetClass_MainWindow);
    XPSetWidgetProperty(window, xpProperty_MainWindowHasCloseBoxes, 0); // a question wants an answer
    XPAddWidgetCallback(window, Guarded<"a setup window", HandleMessage>);
    for (int i = 0; i < 2; i++)
        AddWidget(xpWidgetClass_Caption, dialog.lines[i], CaptionLeft(dialog.lines[i]),
                  CaptionTop + i * LineHeight, DialogWidth, LineHeight);
    const bool isOneButton = !dialog.buttons[1].caption;
    const int margin = (DialogWidth / 2 - ButtonWidth) / 2;
    buttons[0] = AddButton(dialog.buttons[0].caption, isOneButton ? (DialogWidth - ButtonWidth) / 2 : margin);
    buttons[1] = isOneButton ? nullptr : AddButton(dialog.buttons[1].caption, DialogWidth / 2 + margin);
    XPBringRootWidgetToFront(window);
    current = &dialog;
}

void PutOff() {
    InstallationState = InstallationPutOff;
}

void Uninstall() {
    UninstallFromAcf();
    InstallationState = InstallationRemoved;
    Open(Deactivated);
}

} // namespace

void OpenSetupPrompt() {
    if (current != &SetupQuestion) Open(SetupQuestion);
}

void SetUpAndTell() {
    SetUpThisAircraft();
    InstallationState = InstallationReady;
    SaveSettings();
    Open(SetUp);
}

void OpenUninstallPrompt() {
    if (current != &UninstallQuestion) Open(UninstallQuestion);
}

void CloseSetupDialogs() {
    Close();
    Destroy(window);
    Destroy(closed);
}

void ResetSetupDialogs() {
    MakeFresh(current, window, closed, buttons[0], buttons[1]);
}
