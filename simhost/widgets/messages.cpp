// Messages to widgets, and the keyboard's focus. A message may destroy whom it is for: then the rest of that
// widget's callbacks are not asked.
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "simhost/modules.h"
#include "simhost/widgets/state.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

constinit XPWidgetID focused = nullptr;

// Those that are added meanwhile are behind the ones that are asked.
bool SendDirect(XPWidgetID id, XPWidgetMessage message, XPDispatchMode mode, intptr_t first,
                intptr_t second) {
    const Widget *widget = FindWidget(id);
    if (!widget) return false;
    bool isHandled = false;
    for (std::size_t i = widget->callbacks.size(); i-- > 0;) {
        widget = FindWidget(id);
        if (!widget || i >= widget->callbacks.size()) break;
        const WidgetCallback callback = widget->callbacks[i];
        RunningScope scope(callback.owner, "widget's callback");
        if (callback.function(message, id, first, second) != 0) isHandled = true;
        if (mode == xpMode_Once || (isHandled && mode != xpMode_DirectAllCallbacks)) break;
    }
    return isHandled;
}

bool SendUpChain(XPWidgetID id, XPWidgetMessage message, intptr_t first, intptr_t second) {
    while (id) {
        const XPWidgetID parent = XPGetParentWidget(id);
        if (SendDirect(id, message, xpMode_Direct, first, second)) return true;
        id = parent;
    }
    return false;
}

// Everybody gets it, whoever takes it. Those that join meanwhile do not.
bool SendRecursive(XPWidgetID id, XPWidgetMessage message, intptr_t first, intptr_t second) {
    bool isHandled = SendDirect(id, message, xpMode_Direct, first, second);
    const Widget *widget = FindWidget(id);
    if (!widget) return isHandled;
    const std::vector<XPWidgetID> children = widget->children;
    for (XPWidgetID child : children)
        if (SendRecursive(child, message, first, second)) isHandled = true;
    return isHandled;
}

bool WantsKeys(XPWidgetID id, bool fromChild) {
    return Send(id, xpMsg_KeyTakeFocus, xpMode_Direct, fromChild ? 1 : 0);
}

// Whoever had the focus is told once that it has it no more. The window's focus goes along.
void SetFocused(XPWidgetID id) {
    const XPWidgetID before = focused;
    const XPLMWindowID windowBefore = XPGetWidgetUnderlyingWindow(before);
    focused = id;
    if (before != id) Send(before, xpMsg_KeyLoseFocus, xpMode_Direct, id ? 1 : 0);
    if (focused != id) return; // it has gone on from there
    const XPLMWindowID window = XPGetWidgetUnderlyingWindow(id);
    if (window || FocusedWindow() == windowBefore) GiveFocus(window);
}

} // namespace

bool Send(XPWidgetID id, XPWidgetMessage message, XPDispatchMode mode, intptr_t first, intptr_t second) {
    switch (mode) {
    case xpMode_Direct:
    case xpMode_DirectAllCallbacks:
    case xpMode_Once: return SendDirect(id, message, mode, first, second);
    case xpMode_UpChain: return SendUpChain(id, message, first, second);
    case xpMode_Recursive: return SendRecursive(id, message, first, second);
    default: ReportMisuse("XPSendMessageToWidget with a mode that does not exist"); return false;
    }
}

void Notify(XPWidgetID id, XPWidgetMessage message, intptr_t second) {
    Send(id, message, xpMode_UpChain, AsParameter(id), second);
}

XPWidgetID FocusedWidget() {
    return FindWidget(focused) ? focused : nullptr;
}

void LeaveKeyboard(XPWidgetID container) {
    if (isWithin(focused, container)) SetFocused(nullptr);
}

} // namespace simhost

using namespace simhost;

int XPSendMessageToWidget(XPWidgetID inWidget, XPWidgetMessage inMessage, XPDispatchMode inMode,
                          intptr_t inParam1, intptr_t inParam2) {
    return Send(inWidget, inMessage, inMode, inParam1, inParam2) ? 1 : 0;
}

// It learns of the widget at once.
void XPAddWidgetCallback(XPWidgetID inWidget, XPWidgetFunc_t inNewCallback) {
    Widget *widget = FindWidget(inWidget);
    if (!widget) return;
    if (!inNewCallback) {
        ReportMisuse("XPAddWidgetCallback without a callback");
        return;
    }
    widget->callbacks.push_back({inNewCallback, currentRunning.plugin});
    Send(inWidget, xpMsg_Create, xpMode_Once, 1);
}

// Who has the focus afterwards. A widget that does not take it, or that nobody sees, changes nothing.
XPWidgetID XPSetKeyboardFocus(XPWidgetID inWidget) {
    if (!inWidget) {
        SetFocused(nullptr);
    } else if (inWidget != FocusedWidget() && XPIsWidgetVisible(inWidget) != 0 && WantsKeys(inWidget, false)
               && XPIsWidgetVisible(inWidget) != 0) {
        SetFocused(inWidget);
    }
    return FocusedWidget();
}

// To the next one up the chain that wants it.
void XPLoseKeyboardFocus(XPWidgetID inWidget) {
    if (!inWidget || FocusedWidget() != inWidget) return;
    XPWidgetID next = XPGetParentWidget(inWidget);
    while (next && !WantsKeys(next, true)) next = XPGetParentWidget(next);
    if (FocusedWidget() == inWidget) SetFocused(next);
}

XPWidgetID XPGetWidgetWithFocus(void) {
    return FocusedWidget();
}
