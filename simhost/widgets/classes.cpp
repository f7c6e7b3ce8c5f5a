// The standard classes without keyboard: main window, sub-window, button, caption, progress. Each is a widget
// function like a plug-in's own, so that plug-ins can call it and put theirs in front.
#include <algorithm>
#include <cstdint>

#include "XPStandardWidgets.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"
#include "simhost/widgets/state.h"

namespace simhost {

namespace {

// Which main window's close box is pressed. There is one mouse.
constinit XPWidgetID closing = nullptr;

const XPMouseState_t &MouseOf(intptr_t first) {
    return *reinterpret_cast<const XPMouseState_t *>(first);
}

const std::string &TextOf(XPWidgetID id) {
    static const std::string none;
    const Widget *widget = FindWidget(id);
    return widget ? widget->descriptor : none;
}

void PressMainWindow(XPWidgetID widget, const XPMouseState_t &mouse) {
    XPSetKeyboardFocus(nullptr); // a click beside a text field ends typing
    const Rectangle place = PlaceOf(widget);
    if (PropertyOf(widget, xpProperty_MainWindowHasCloseBoxes) != 0
        && isInCloseBox(place, mouse.x, mouse.y)) {
        closing = widget;
    } else if (TitleBarOf(place).Contains(mouse.x, mouse.y)) {
        XPSetWidgetProperty(widget, xpProperty_DragXOff, mouse.x - place.left);
        XPSetWidgetProperty(widget, xpProperty_DragYOff, mouse.y - place.bottom);
        XPSetWidgetProperty(widget, xpProperty_Dragging, 1);
    }
}

void DragMainWindow(XPWidgetID widget, const XPMouseState_t &mouse) {
    if (PropertyOf(widget, xpProperty_Dragging) == 0) return;
    const Rectangle place = PlaceOf(widget);
    const auto distance = [&](int from, int to, XPWidgetPropertyID offset) {
        constexpr intptr_t most = INT32_MAX;
        const intptr_t held = std::clamp(PropertyOf(widget, offset), -most, most);
        return static_cast<int>(std::clamp(intptr_t{to} - from - held, -most, most));
    };
    XPUMoveWidgetBy(widget, distance(place.left, mouse.x, xpProperty_DragXOff),
                    distance(place.bottom, mouse.y, xpProperty_DragYOff));
}

void ReleaseMainWindow(XPWidgetID widget, const XPMouseState_t &mouse) {
    XPSetWidgetProperty(widget, xpProperty_Dragging, 0);
    const bool isClosed = closing == widget && isInCloseBox(PlaceOf(widget), mouse.x, mouse.y);
    closing = nullptr;
    if (isClosed) Notify(widget, xpMessage_CloseButtonPushed);
}

// Released over itself: what a click does.
void ClickButton(XPWidgetID widget) {
    const intptr_t behavior = PropertyOf(widget, xpProperty_ButtonBehavior);
    if (behavior == xpButtonBehaviorPushButton) {
        Notify(widget, xpMsg_PushButtonPressed);
        return;
    }
    const intptr_t before = PropertyOf(widget, xpProperty_ButtonState);
    const intptr_t state = behavior == xpButtonBehaviorCheckBox && before != 0 ? 0 : 1;
    if (state == before) return; // a radio button that is on stays on
    XPSetWidgetProperty(widget, xpProperty_ButtonState, state);
    Notify(widget, xpMsg_ButtonStateChanged, state);
}

void DrawButton(XPWidgetID widget) {
    const bool isPressed = PropertyOf(widget, xpProperty_Hilited) != 0;
    if (PropertyOf(widget, xpProperty_ButtonType) == xpPushButton) {
        const bool isOn = PropertyOf(widget, xpProperty_ButtonBehavior) != xpButtonBehaviorPushButton
                          && PropertyOf(widget, xpProperty_ButtonState) != 0;
        DrawPushButton(PlaceOf(widget), TextOf(widget), isPressed || isOn, isEnabled(widget));
    } else {
        DrawToggle(PlaceOf(widget), TextOf(widget),
                   PropertyOf(widget, xpProperty_ButtonBehavior) == xpButtonBehaviorRadioButton,
                   PropertyOf(widget, xpProperty_ButtonState) != 0, isPressed, isEnabled(widget));
    }
}

} // namespace

int MainWindowClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second) {
    XPUFixedLayout(message, widget, first, second);
    switch (message) {
    case xpMsg_Draw:
        DrawMainWindow(PlaceOf(widget), TextOf(widget),
                       PropertyOf(widget, xpProperty_MainWindowType) == xpMainWindowStyle_Translucent,
                       PropertyOf(widget, xpProperty_MainWindowHasCloseBoxes) != 0, closing == widget);
        return 1;
    case xpMsg_MouseDown: PressMainWindow(widget, MouseOf(first)); return 1;
    case xpMsg_MouseDrag: DragMainWindow(widget, MouseOf(first)); return 1;
    case xpMsg_MouseUp: ReleaseMainWindow(widget, MouseOf(first)); return 1;
    case xpMsg_MouseWheel: return 1; // not for what lies behind
    default: return 0;
    }
}

int SubWindowClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t second) {
    XPUFixedLayout(message, widget, first, second);
    if (message != xpMsg_Draw) return 0;
    DrawSubWindow(PlaceOf(widget), PropertyOf(widget, xpProperty_SubWindowType));
    return 1;
}

int ButtonClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t) {
    switch (message) {
    case xpMsg_Draw: DrawButton(widget); return 1;
    case xpMsg_MouseDown: XPSetWidgetProperty(widget, xpProperty_Hilited, 1); return 1;
    case xpMsg_MouseDrag:
        XPSetWidgetProperty(widget, xpProperty_Hilited,
                            PlaceOf(widget).Contains(MouseOf(first).x, MouseOf(first).y) ? 1 : 0);
        return 1;
    case xpMsg_MouseUp:
        XPSetWidgetProperty(widget, xpProperty_Hilited, 0);
        if (PlaceOf(widget).Contains(MouseOf(first).x, MouseOf(first).y)) ClickButton(widget);
        return 1;
    default: return 0;
    }
}

int CaptionClass(XPWidgetMessage message, XPWidgetID widget, intptr_t, intptr_t) {
    if (message != xpMsg_Draw) return 0;
    DrawCaption(PlaceOf(widget), TextOf(widget), PropertyOf(widget, xpProperty_CaptionLit) != 0);
    return 1;
}

// The plug-in draws it.
int GeneralGraphicsClass(XPWidgetMessage, XPWidgetID, intptr_t, intptr_t) {
    return 0;
}

int ProgressClass(XPWidgetMessage message, XPWidgetID widget, intptr_t, intptr_t) {
    if (message != xpMsg_Draw) return 0;
    const double least = static_cast<double>(PropertyOf(widget, xpProperty_ProgressMin));
    const double most = static_cast<double>(PropertyOf(widget, xpProperty_ProgressMax));
    const double position = static_cast<double>(PropertyOf(widget, xpProperty_ProgressPosition));
    DrawProgress(PlaceOf(widget), most > least ? (position - least) / (most - least) : 0);
    return 1;
}

} // namespace simhost
