// A plug-in for the flight over widgets: one window with all classes, and a log line for every notice.
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <utility>

#include "XPLMUtilities.h"
#include "XPStandardWidgets.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"

namespace {

constexpr XPWidgetCreate_t made[] = {
    {100, 500, 420, 200, 1, "All classes", 1, NO_PARENT, xpWidgetClass_MainWindow},
    {115, 470, 405, 450, 1, "A caption", 0, 0, xpWidgetClass_Caption},
    {115, 440, 205, 420, 1, "Push me", 0, 0, xpWidgetClass_Button},
    {215, 440, 305, 420, 1, "Not me", 0, 0, xpWidgetClass_Button},
    {115, 410, 255, 390, 1, "Check", 0, 0, xpWidgetClass_Button},
    {265, 410, 405, 390, 1, "Checked", 0, 0, xpWidgetClass_Button},
    {115, 385, 255, 365, 1, "Captain", 0, 0, xpWidgetClass_Button},
    {265, 385, 405, 365, 1, "First officer", 0, 0, xpWidgetClass_Button},
    {115, 355, 255, 335, 1, "Velmora", 0, 0, xpWidgetClass_TextField},
    {265, 355, 405, 335, 1, "secret", 0, 0, xpWidgetClass_TextField},
    {115, 325, 405, 225, 1, "", 0, 0, xpWidgetClass_SubWindow},
    {385, 320, 400, 230, 1, "", 0, 10, xpWidgetClass_ScrollBar},
    {120, 320, 370, 305, 1, "", 0, 10, xpWidgetClass_ScrollBar},
    {120, 295, 370, 280, 1, "", 0, 10, xpWidgetClass_Progress},
    {120, 270, 240, 230, 1, "", 0, 10, xpWidgetClass_SubWindow},
    {250, 270, 370, 230, 1, "", 0, 10, xpWidgetClass_SubWindow},
    {125, 265, 235, 250, 1, "Lit", 0, 14, xpWidgetClass_Caption},
    {255, 265, 365, 250, 1, "A list", 0, 15, xpWidgetClass_Caption},
    {380, 225, 381, 224, 1, "", 0, 0, xpWidgetClass_GeneralGraphics},
    {450, 300, 650, 200, 1, "Covers", 1, NO_PARENT, xpWidgetClass_MainWindow},
    {460, 270, 640, 240, 1, "Lit on dark", 0, 19, xpWidgetClass_Caption},
    {460, 235, 640, 210, 1, "dark field", 0, 19, xpWidgetClass_TextField},
};
constexpr int count = sizeof made / sizeof *made;
XPWidgetID widgets[count];

void Log(const char *what, XPWidgetID widget, intptr_t second) {
    char caption[64], line[128];
    XPGetWidgetDescriptor(widget, caption, sizeof caption);
    std::snprintf(line, sizeof line, "%s \"%s\" %d\n", what, caption, static_cast<int>(second));
    XPLMDebugString(line);
}

int OnNotice(XPWidgetMessage message, XPWidgetID, intptr_t first, intptr_t second) {
    const XPWidgetID widget = reinterpret_cast<XPWidgetID>(first);
    switch (message) {
    case xpMsg_PushButtonPressed: Log("pushed", widget, second); return 1;
    case xpMsg_ButtonStateChanged: Log("state of", widget, second); return 1;
    case xpMsg_TextFieldChanged: Log("text", widget, second); return 1;
    case xpMsg_ScrollBarSliderPositionChanged: Log("scrolled", widget, second); return 1;
    case xpMessage_CloseButtonPushed:
        Log("closed", widget, second);
        XPDestroyWidget(widget, 1); // inside its own callback
        return 1;
    default: return 0;
    }
}

void Set(int widget, std::initializer_list<std::pair<int, int>> properties) {
    for (const auto &[property, value] : properties) XPSetWidgetProperty(widgets[widget], property, value);
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) int XPluginStart(char *name, char *signature, char *description) {
    std::strcpy(name, "Widget probe");
    std::strcpy(signature, "test.widgets");
    std::strcpy(description, "");
    XPUCreateWidgets(made, count, nullptr, widgets);
    for (int root : {0, 19}) XPAddWidgetCallback(widgets[root], OnNotice);
    Set(0, {{xpProperty_MainWindowHasCloseBoxes, 1}});
    Set(3, {{xpProperty_Enabled, 0}});
    for (int check : {4, 5})
        Set(check, {{xpProperty_ButtonType, xpRadioButton},
                    {xpProperty_ButtonBehavior, xpButtonBehaviorCheckBox},
                    {xpProperty_ButtonState, check - 4}});
    for (int radio : {6, 7})
        Set(radio, {{xpProperty_ButtonType, xpRadioButton},
                    {xpProperty_ButtonBehavior, xpButtonBehaviorRadioButton},
                    {xpProperty_ButtonState, radio - 6}});
    Set(8, {{xpProperty_MaxCharacters, 30}});
    Set(9, {{xpProperty_PasswordMode, 1}});
    for (int bar : {11, 12}) Set(bar, {{xpProperty_ScrollBarMax, 100}});
    Set(11, {{xpProperty_ScrollBarSliderPosition, 100}, {xpProperty_ScrollBarPageAmount, 25}});
    Set(12, {{xpProperty_ScrollBarSliderPosition, 40}, {xpProperty_ScrollBarType, xpScrollBarTypeSlider}});
    Set(13, {{xpProperty_ProgressMax, 10}, {xpProperty_ProgressPosition, 7}});
    Set(14, {{xpProperty_SubWindowType, xpSubWindowStyle_Screen}});
    Set(15, {{xpProperty_SubWindowType, xpSubWindowStyle_ListView}});
    Set(16, {{xpProperty_CaptionLit, 1}});
    Set(19, {{xpProperty_MainWindowType, xpMainWindowStyle_Translucent}});
    Set(20, {{xpProperty_CaptionLit, 1}});
    Set(21, {{xpProperty_TextFieldType, xpTextTranslucent}});
    return 1;
}

__attribute__((visibility("default"))) void XPluginStop() {}
__attribute__((visibility("default"))) int XPluginEnable() {
    return 1;
}
__attribute__((visibility("default"))) void XPluginDisable() {}
__attribute__((visibility("default"))) void XPluginReceiveMessage(int, int, void *) {}
}
