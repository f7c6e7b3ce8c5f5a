// What the files of the widgets share: widgets.cpp (the tree and its calls), properties.cpp (geometry,
// text and properties), messages.cpp (messages, and who gets them), input.cpp (mouse, keyboard
// and drawing, as a root's window passes them on), utils.cpp, and the standard classes
// (classes.cpp, scroll_bar.cpp, text_field.cpp, with drawing.cpp). Nothing
// outside them needs it.
//
// Any callback may destroy, make or move widgets. So nobody keeps a Widget across a message: one keeps its
// handle, and looks for it again. Handles are never used twice, so nothing needs to be put off.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "XPWidgetDefs.h"
#include "simhost/windows/state.h"

namespace simhost {

struct WidgetCallback {
    XPWidgetFunc_t function = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};

struct Widget {
    XPWidgetID id = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
    Rectangle place;
    std::string descriptor;
    bool isVisible = false; // itself; a root is as visible as its window
    bool isRoot = false;
    bool isGoing = false;          // is being destroyed: nothing can be placed in it any more
    XPLMWindowID window = nullptr; // of a root
    XPWidgetID parent = nullptr;
    std::vector<XPWidgetID> children;      // from back to front
    std::vector<WidgetCallback> callbacks; // the last one is asked first
    std::vector<std::pair<XPWidgetPropertyID, intptr_t>> properties;
};

// ---- widgets.cpp ----

std::vector<std::unique_ptr<Widget>> &Widgets();    // in the order of their making
Widget *FindWidget(XPWidgetID id);                  // null when there is none any more
bool isShown(const Widget &widget);                 // itself, whatever it lies in
bool isEnabled(XPWidgetID id);                      // unless the property says that it is not
bool isWithin(XPWidgetID id, XPWidgetID container); // lies in it, or is it
XPWidgetID RootOfWindow(XPLMWindowID window);
XPWidgetID WidgetAt(XPWidgetID container, int x, int y, bool isRecursive, bool isVisibleOnly);
Rectangle PlaceOf(XPWidgetID id); // empty when there is none any more
intptr_t PropertyOf(XPWidgetID id, XPWidgetPropertyID property, intptr_t otherwise = 0);

// ---- properties.cpp ----

Rectangle ExposedPlace(XPWidgetID id); // as far as it lies within all its parents

// While the outermost of these is alive widgets move. At its end those whose exposed part has changed are
// told.
class ExposureWatch {
public:
    explicit ExposureWatch(XPWidgetID top); // of those that may be affected
    ~ExposureWatch();
    ExposureWatch(const ExposureWatch &) = delete;
    ExposureWatch &operator=(const ExposureWatch &) = delete;

private:
    std::vector<std::pair<XPWidgetID, Rectangle>> before;
    bool isOutermost = false;
};

// ---- messages.cpp ----

bool Send(XPWidgetID id, XPWidgetMessage message, XPDispatchMode mode, intptr_t first = 0,
          intptr_t second = 0);
// A notice of a standard class: up the chain, the widget itself in parameter 1.
void Notify(XPWidgetID id, XPWidgetMessage message, intptr_t second = 0);
inline intptr_t AsParameter(XPWidgetID id) {
    return reinterpret_cast<intptr_t>(id);
}

XPWidgetID FocusedWidget();
void LeaveKeyboard(XPWidgetID container); // to the simulator, if one within the container has it

// ---- input.cpp ----

XPLMWindowID MakeRootWindow(const Widget &widget);
void FollowWindow(XPWidgetID root); // takes over a place that was given to the window itself

// ---- The standard classes ----

int MainWindowClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second);
int SubWindowClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second);
int ButtonClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second);
int TextFieldClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second);
int ScrollBarClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second);
int CaptionClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second);
int GeneralGraphicsClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second);
int ProgressClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second);

// ---- drawing.cpp: the looks of the classes, and where their parts are ----

Rectangle TitleBarOf(const Rectangle &window);
bool isInCloseBox(const Rectangle &window, int x, int y); // there is one at each end of the title bar

void DrawMainWindow(const Rectangle &place, const std::string &title, bool isTranslucent, bool hasCloseBoxes,
                    bool isClosePressed);
void DrawSubWindow(const Rectangle &place, intptr_t style);
void DrawPushButton(const Rectangle &place, const std::string &caption, bool isPressed, bool isEnabled);
void DrawToggle(const Rectangle &place, const std::string &caption, bool isRound, bool isOn, bool isPressed,
                bool isEnabled);
void DrawCaption(const Rectangle &place, const std::string &text, bool isLit);
void DrawScrollBar(const Rectangle &place, const Rectangle &track, const Rectangle &thumb, bool isPressed);
void DrawProgress(const Rectangle &place, double fraction);

struct TextFieldLook {
    intptr_t type = 0;
    bool hasFocus = false;
    std::string visible;                       // what can be seen of the text
    int selectionLeft = 0, selectionRight = 0; // boxels from the text's left end; equal: the cursor
};
void DrawTextField(const Rectangle &place, const TextFieldLook &look);
inline constexpr int TextFieldMargin = 4; // from the field's edge to its text

} // namespace simhost
