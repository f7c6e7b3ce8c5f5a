// The tree of widgets: making, placing, showing and finding them. A handle is a serial number, so that one of
// a widget that has gone means nothing; the numbers are far from those of the windows.
#include "simhost/widgets/widgets.h"

#include <algorithm>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "simhost/modules.h"
#include "simhost/widgets/state.h"

namespace simhost {

namespace {

constinit std::uintptr_t lastSerial = 1'000'000; // goes on over resets

constexpr XPWidgetFunc_t ClassFunctions[] = {
    nullptr,        MainWindowClass, SubWindowClass,       ButtonClass,   TextFieldClass,
    ScrollBarClass, CaptionClass,    GeneralGraphicsClass, ProgressClass,
};
constexpr int ClassCount = sizeof ClassFunctions / sizeof *ClassFunctions;

// The class whose function it has, in front or behind.
XPWidgetClass ClassOf(const Widget &widget) {
    for (const WidgetCallback &callback : widget.callbacks)
        for (int i = 1; i < ClassCount; i++)
            if (ClassFunctions[i] == callback.function) return i;
    return xpWidgetClass_None;
}

void LeaveParent(Widget &widget) {
    if (Widget *parent = FindWidget(widget.parent)) std::erase(parent->children, widget.id);
    widget.parent = nullptr;
}

// What lies in it lies nowhere from now on.
void Remove(XPWidgetID id) {
    Widget *widget = FindWidget(id);
    if (!widget) return;
    LeaveParent(*widget);
    for (XPWidgetID child : widget->children) FindWidget(child)->parent = nullptr;
    if (widget->isRoot) RemoveWindow(widget->window);
    std::erase_if(Widgets(), [&](const auto &other) { return other->id == id; });
}

void Destroy(XPWidgetID id, bool withChildren, bool isExplicit) {
    Widget *widget = FindWidget(id);
    if (!widget || widget->isGoing) return;
    widget->isGoing = true;
    LeaveKeyboard(id);
    Send(id, xpMsg_Destroy, xpMode_DirectAllCallbacks, isExplicit ? 1 : 0);
    while (XPCountChildWidgets(id) > 0) {
        const XPWidgetID child = FindWidget(id)->children.back();
        if (withChildren && !FindWidget(child)->isGoing)
            Destroy(child, true, false);
        else
            XPPlaceWidgetWithin(child, nullptr);
    }
    const XPWidgetID parent = XPGetParentWidget(id);
    Remove(id);
    Send(parent, xpMsg_LoseChild, xpMode_Direct, AsParameter(id));
}

XPWidgetID Create(const Rectangle &place, bool isVisible, const char *descriptor, bool isRoot,
                  XPWidgetID container, XPWidgetFunc_t function) {
    if (isRoot && container) {
        ReportMisuse("a root widget cannot be made inside another widget");
        return nullptr;
    }
    auto made = std::make_unique<Widget>();
    const XPWidgetID id = reinterpret_cast<XPWidgetID>(++lastSerial);
    made->id = id;
    made->owner = currentRunning.plugin;
    made->place = LimitedPlace(place);
    made->descriptor = descriptor ? descriptor : "";
    made->isVisible = isVisible;
    made->isRoot = isRoot;
    if (function) made->callbacks.push_back({function, currentRunning.plugin});
    if (isRoot) made->window = MakeRootWindow(*made);
    Widgets().push_back(std::move(made));
    Send(id, xpMsg_Create, xpMode_Direct, 0);
    if (container) XPPlaceWidgetWithin(id, container);
    return FindWidget(id) ? id : nullptr;
}

void AddView(const Widget &widget, int parent, std::vector<WidgetView> &views) {
    WidgetView view;
    view.id = widget.id;
    view.widgetClass = ClassOf(widget);
    view.caption = widget.descriptor;
    view.left = widget.place.left;
    view.top = widget.place.top;
    view.right = widget.place.right;
    view.bottom = widget.place.bottom;
    view.isVisible = XPIsWidgetVisible(widget.id) != 0;
    view.isRoot = widget.isRoot;
    view.isEnabled = isEnabled(widget.id);
    view.hasFocus = FocusedWidget() == widget.id;
    view.parent = parent;
    view.owner = widget.owner;
    const int place = static_cast<int>(views.size());
    views.push_back(std::move(view));
    for (XPWidgetID child : widget.children) AddView(*FindWidget(child), place, views);
}

} // namespace

std::vector<std::unique_ptr<Widget>> &Widgets() {
    static auto &widgets = *new std::vector<std::unique_ptr<Widget>>;
    return widgets;
}

Widget *FindWidget(XPWidgetID id) {
    const auto found = std::lower_bound(
        Widgets().begin(), Widgets().end(), AsParameter(id),
        [](const auto &widget, intptr_t serial) { return AsParameter(widget->id) < serial; });
    return found != Widgets().end() && (*found)->id == id ? found->get() : nullptr;
}

bool isShown(const Widget &widget) {
    return widget.isRoot ? XPLMGetWindowIsVisible(widget.window) != 0 : widget.isVisible;
}

bool isEnabled(XPWidgetID id) {
    return PropertyOf(id, xpProperty_Enabled, 1) != 0;
}

bool isWithin(XPWidgetID id, XPWidgetID container) {
    const Widget *widget = FindWidget(id);
    while (widget && widget->id != container) widget = FindWidget(widget->parent);
    return widget != nullptr;
}

XPWidgetID RootOfWindow(XPLMWindowID window) {
    for (const auto &widget : Widgets())
        if (widget->isRoot && widget->window == window) return widget->id;
    return nullptr;
}

XPWidgetID WidgetAt(XPWidgetID container, int x, int y, bool isRecursive, bool isVisibleOnly) {
    const Widget *widget = FindWidget(container);
    if (!widget || !widget->place.Contains(x, y) || (isVisibleOnly && !isShown(*widget))) return nullptr;
    for (auto child = widget->children.rbegin(); child != widget->children.rend(); ++child) {
        const Widget &lower = *FindWidget(*child);
        if (!lower.place.Contains(x, y) || (isVisibleOnly && !isShown(lower))) continue;
        return isRecursive ? WidgetAt(*child, x, y, true, isVisibleOnly) : *child;
    }
    return container;
}

Rectangle PlaceOf(XPWidgetID id) {
    const Widget *widget = FindWidget(id);
    return widget ? widget->place : Rectangle{};
}

std::vector<WidgetView> AllWidgets() {
    std::vector<WidgetView> views;
    for (XPLMWindowID window : IdsFrontToBack())
        if (const Widget *root = FindWidget(RootOfWindow(window))) AddView(*root, -1, views);
    for (const auto &widget : Widgets())
        if (!widget->parent && (!widget->isRoot || !FindWindow(widget->window))) AddView(*widget, -1, views);
    return views;
}

void DropWidgets(XPLMPluginID plugin, LeftBehind &leftBehind) {
    std::vector<XPWidgetID> dropped;
    for (const auto &widget : Widgets()) {
        std::erase_if(widget->callbacks, [&](const auto &callback) { return callback.owner == plugin; });
        if (widget->owner != plugin) continue;
        dropped.push_back(widget->id);
        // Named once, by what they all lie in.
        if (!widget->parent) leftBehind.notes.push_back("widget \"" + widget->descriptor + "\"");
    }
    for (XPWidgetID id : dropped) Remove(id);
}

void ResetWidgets() {
    Widgets().clear();
}

} // namespace simhost

using namespace simhost;

XPWidgetID XPCreateWidget(int inLeft, int inTop, int inRight, int inBottom, int inVisible,
                          const char *inDescriptor, int inIsRoot, XPWidgetID inContainer,
                          XPWidgetClass inClass) {
    if (inClass < 0 || inClass >= ClassCount) {
        ReportMisuse("XPCreateWidget with a class that does not exist");
        return nullptr;
    }
    return Create({inLeft, inTop, inRight, inBottom}, inVisible != 0, inDescriptor, inIsRoot != 0,
                  inContainer, ClassFunctions[inClass]);
}

XPWidgetID XPCreateCustomWidget(int inLeft, int inTop, int inRight, int inBottom, int inVisible,
                                const char *inDescriptor, int inIsRoot, XPWidgetID inContainer,
                                XPWidgetFunc_t inCallback) {
    if (!inCallback) {
        ReportMisuse("XPCreateCustomWidget without a callback");
        return nullptr;
    }
    return Create({inLeft, inTop, inRight, inBottom}, inVisible != 0, inDescriptor, inIsRoot != 0,
                  inContainer, inCallback);
}

void XPDestroyWidget(XPWidgetID inWidget, int inDestroyChildren) {
    Destroy(inWidget, inDestroyChildren != 0, true);
}

XPWidgetFunc_t XPGetWidgetClassFunc(XPWidgetClass inWidgetClass) {
    return inWidgetClass >= 0 && inWidgetClass < ClassCount ? ClassFunctions[inWidgetClass] : nullptr;
}

// In front of what lies there already. Its place on the screen stays as it is.
void XPPlaceWidgetWithin(XPWidgetID inSubWidget, XPWidgetID inContainer) {
    Widget *widget = FindWidget(inSubWidget), *container = FindWidget(inContainer);
    if (!widget || (inContainer && (!container || container->isGoing))) return;
    if (widget->isRoot || isWithin(inContainer, inSubWidget)) {
        ReportMisuse("XPPlaceWidgetWithin with a root widget, or into the widget itself");
        return;
    }
    const XPWidgetID before = widget->parent;
    if (before == inContainer) return;
    ExposureWatch watch(inSubWidget);
    if (!isWithin(inContainer, XPFindRootWidget(inSubWidget))) LeaveKeyboard(inSubWidget);
    widget = FindWidget(inSubWidget);
    container = FindWidget(inContainer);
    if (!widget || (inContainer && !container)) return;
    LeaveParent(*widget);
    widget->parent = inContainer;
    if (container) container->children.push_back(inSubWidget);
    Send(before, xpMsg_LoseChild, xpMode_Direct, AsParameter(inSubWidget));
    Send(inContainer, xpMsg_AcceptChild, xpMode_Direct, AsParameter(inSubWidget));
    Send(inSubWidget, xpMsg_AcceptParent, xpMode_Direct, AsParameter(inContainer));
}

int XPCountChildWidgets(XPWidgetID inWidget) {
    const Widget *widget = FindWidget(inWidget);
    return widget ? static_cast<int>(widget->children.size()) : 0;
}

XPWidgetID XPGetNthChildWidget(XPWidgetID inWidget, int inIndex) {
    if (inIndex < 0 || inIndex >= XPCountChildWidgets(inWidget)) return nullptr;
    return FindWidget(inWidget)->children[static_cast<std::size_t>(inIndex)];
}

XPWidgetID XPGetParentWidget(XPWidgetID inWidget) {
    const Widget *widget = FindWidget(inWidget);
    return widget ? widget->parent : nullptr;
}

void XPShowWidget(XPWidgetID inWidget) {
    Widget *widget = FindWidget(inWidget);
    if (!widget || isShown(*widget)) return;
    widget->isVisible = true;
    if (widget->isRoot) ShowWindow(widget->window, true);
    Send(inWidget, xpMsg_Shown, xpMode_UpChain, AsParameter(inWidget));
}

void XPHideWidget(XPWidgetID inWidget) {
    if (const Widget *widget = FindWidget(inWidget); !widget || !isShown(*widget)) return;
    LeaveKeyboard(inWidget);
    Widget *widget = FindWidget(inWidget);
    if (!widget) return;
    widget->isVisible = false;
    if (widget->isRoot) ShowWindow(widget->window, false);
    Send(inWidget, xpMsg_Hidden, xpMode_UpChain, AsParameter(inWidget));
}

// With all that it lies in, up to a root.
int XPIsWidgetVisible(XPWidgetID inWidget) {
    const Widget *widget = FindWidget(inWidget);
    while (widget && isShown(*widget) && !widget->isRoot) widget = FindWidget(widget->parent);
    return widget && isShown(*widget) ? 1 : 0;
}

XPWidgetID XPFindRootWidget(XPWidgetID inWidget) {
    const Widget *widget = FindWidget(inWidget);
    while (widget && !widget->isRoot) widget = FindWidget(widget->parent);
    return widget ? widget->id : nullptr;
}

void XPBringRootWidgetToFront(XPWidgetID inWidget) {
    if (const Widget *root = FindWidget(XPFindRootWidget(inWidget))) RaiseWindow(root->window);
}

int XPIsWidgetInFront(XPWidgetID inWidget) {
    const Widget *root = FindWidget(XPFindRootWidget(inWidget));
    return root ? XPLMIsWindowInFront(root->window) : 0;
}

XPWidgetID XPGetWidgetForLocation(XPWidgetID inContainer, int inXOffset, int inYOffset, int inRecursive,
                                  int inVisibleOnly) {
    return WidgetAt(inContainer, inXOffset, inYOffset, inRecursive != 0, inVisibleOnly != 0);
}

XPLMWindowID XPGetWidgetUnderlyingWindow(XPWidgetID inWidget) {
    const Widget *root = FindWidget(XPFindRootWidget(inWidget));
    return root ? root->window : nullptr;
}
