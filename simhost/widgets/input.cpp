// A root's window passes on what it gets: the mouse to the widget below it and up the chain until one takes
// it, keys to the widget with the focus and up, drawing down the tree.
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "simhost/drawing/gl_context.h"
#include "simhost/modules.h"
#include "simhost/widgets/state.h"
#include "simhost/widgets/widgets.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

constinit XPWidgetID holder = nullptr; // the widget that took the press

// The frontmost widget there that is visible and enabled, with what it lies in.
XPWidgetID UnderMouse(XPLMWindowID window, int x, int y) {
    const XPWidgetID root = RootOfWindow(window);
    FollowWindow(root);
    XPWidgetID found = WidgetAt(root, x, y, true, true);
    for (XPWidgetID id = found; id; id = XPGetParentWidget(id))
        if (!isEnabled(id)) found = XPGetParentWidget(id);
    return found;
}

int Press(XPLMWindowID window, XPMouseState_t &mouse) {
    XPWidgetID id = UnderMouse(window, mouse.x, mouse.y);
    const XPWidgetID root = RootOfWindow(window);
    while (id) {
        const XPWidgetID parent = XPGetParentWidget(id);
        holder = id;
        if (Send(id, xpMsg_MouseDown, xpMode_Direct, reinterpret_cast<intptr_t>(&mouse))) {
            XPBringRootWidgetToFront(root);
            return 1;
        }
        id = parent;
    }
    holder = nullptr;
    return 0;
}

int OnMouse(XPLMWindowID window, int x, int y, XPLMMouseStatus status, void *) {
    XPMouseState_t mouse = {x, y, 0, 0};
    if (status == xplm_MouseDown) return Press(window, mouse);
    const XPWidgetID id = holder;
    if (status == xplm_MouseUp) holder = nullptr;
    Send(id, status == xplm_MouseUp ? xpMsg_MouseUp : xpMsg_MouseDrag, xpMode_Direct,
         reinterpret_cast<intptr_t>(&mouse));
    return 1;
}

int OnWheel(XPLMWindowID window, int x, int y, int wheel, int clicks, void *) {
    XPMouseState_t mouse = {x, y, wheel, clicks};
    return Send(UnderMouse(window, x, y), xpMsg_MouseWheel, xpMode_UpChain,
                reinterpret_cast<intptr_t>(&mouse))
               ? 1
               : 0;
}

XPLMCursorStatus OnCursor(XPLMWindowID window, int x, int y, void *) {
    XPMouseState_t mouse = {x, y, 0, 0};
    XPLMCursorStatus status = xplm_CursorDefault;
    Send(UnderMouse(window, x, y), xpMsg_CursorAdjust, xpMode_UpChain, reinterpret_cast<intptr_t>(&mouse),
         reinterpret_cast<intptr_t>(&status));
    return status;
}

void OnKey(XPLMWindowID window, char key, XPLMKeyFlags flags, char virtualKey, void *, int losingFocus) {
    const XPWidgetID focused = FocusedWidget();
    if (!focused || XPGetWidgetUnderlyingWindow(focused) != window) return;
    if (losingFocus != 0) {
        LeaveKeyboard(focused);
        return;
    }
    XPKeyState_t state = {key, flags, virtualKey};
    Send(focused, xpMsg_KeyPress, xpMode_UpChain, reinterpret_cast<intptr_t>(&state));
}

// Keeps drawing within the exposed part of a widget that asks for it.
class ClipScope {
public:
    explicit ClipScope(XPWidgetID id) : isOn(hasContext() && PropertyOf(id, xpProperty_Clip) != 0) {
        if (!isOn) return;
        const Rectangle exposed = ExposedPlace(id);
        glPushAttrib(GL_SCISSOR_BIT);
        glEnable(GL_SCISSOR_TEST);
        glScissor(exposed.left, exposed.bottom, exposed.Width(), exposed.Height());
    }
    ~ClipScope() {
        if (isOn) glPopAttrib();
    }
    ClipScope(const ClipScope &) = delete;
    ClipScope &operator=(const ClipScope &) = delete;

private:
    const bool isOn;
};

// A widget that takes the paint message draws itself and all that lies in it.
void Paint(XPWidgetID id) {
    const Widget *widget = FindWidget(id);
    if (!widget || !isShown(*widget)) return;
    {
        ClipScope clip(id);
        if (Send(id, xpMsg_Paint, xpMode_Direct)) return;
        Send(id, xpMsg_Draw, xpMode_Direct);
    }
    for (int i = 0; i < XPCountChildWidgets(id); i++) Paint(XPGetNthChildWidget(id, i));
}

void OnDraw(XPLMWindowID window, void *) {
    const XPWidgetID root = RootOfWindow(window);
    FollowWindow(root);
    Paint(root);
}

} // namespace

XPLMWindowID MakeRootWindow(const Widget &widget) {
    Window window;
    window.owner = widget.owner;
    window.isLegacy = true;
    window.isVisible = widget.isVisible;
    window.place = widget.place;
    window.title = widget.descriptor;
    window.draw = OnDraw;
    window.click = OnMouse;
    window.key = OnKey;
    window.cursor = OnCursor;
    window.wheel = OnWheel;
    return AddWindow(window);
}

void FollowWindow(XPWidgetID root) {
    const Widget *widget = FindWidget(root);
    const Window *window = widget ? FindWindow(widget->window) : nullptr;
    if (!window || window->place == widget->place) return;
    const Rectangle place = window->place;
    XPSetWidgetGeometry(root, place.left, place.top, place.right, place.bottom);
}

bool ClickWidget(XPWidgetID widget) {
    FollowWindow(XPFindRootWidget(widget));
    const Rectangle exposed = ExposedPlace(widget);
    const int x = exposed.left + exposed.Width() / 2, y = exposed.bottom + exposed.Height() / 2;
    MoveMouse(x, y);
    holder = nullptr;
    PressMouse(x, y, MouseButton::Left);
    const bool isTaken = holder == widget;
    ReleaseMouse(x, y);
    return isTaken;
}

} // namespace simhost
