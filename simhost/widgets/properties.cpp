// What is set and asked of one widget: its geometry, its text, its properties. Each change is told by a
// message, and one that changes nothing is not.
#include <algorithm>
#include <cstring>

#include "XPWidgets.h"
#include "simhost/widgets/state.h"

namespace simhost {

namespace {

constinit int watchCount = 0;

void SetCorners(const Rectangle &corners, int *left, int *top, int *right, int *bottom) {
    if (left) *left = corners.left;
    if (top) *top = corners.top;
    if (right) *right = corners.right;
    if (bottom) *bottom = corners.bottom;
}

void CollectExposed(XPWidgetID id, std::vector<std::pair<XPWidgetID, Rectangle>> &places) {
    const Widget *widget = FindWidget(id);
    if (!widget) return;
    places.emplace_back(id, ExposedPlace(id));
    for (XPWidgetID child : widget->children) CollectExposed(child, places);
}

} // namespace

Rectangle ExposedPlace(XPWidgetID id) {
    Rectangle exposed = PlaceOf(id);
    for (const Widget *widget = FindWidget(id); widget; widget = FindWidget(widget->parent)) {
        exposed.left = std::max(exposed.left, widget->place.left);
        exposed.right = std::max(exposed.left, std::min(exposed.right, widget->place.right));
        exposed.top = std::min(exposed.top, widget->place.top);
        exposed.bottom = std::min(exposed.top, std::max(exposed.bottom, widget->place.bottom));
    }
    return exposed;
}

ExposureWatch::ExposureWatch(XPWidgetID top) : isOutermost(watchCount++ == 0) {
    if (isOutermost) CollectExposed(top, before);
}

ExposureWatch::~ExposureWatch() {
    watchCount--;
    for (const auto &[id, exposed] : before)
        if (FindWidget(id) && ExposedPlace(id) != exposed) Send(id, xpMsg_ExposedChanged, xpMode_Direct);
}

intptr_t PropertyOf(XPWidgetID id, XPWidgetPropertyID property, intptr_t otherwise) {
    int exists = 0;
    const intptr_t value = XPGetWidgetProperty(id, property, &exists);
    return exists != 0 ? value : otherwise;
}

} // namespace simhost

using namespace simhost;

void XPGetWidgetGeometry(XPWidgetID inWidget, int *outLeft, int *outTop, int *outRight, int *outBottom) {
    FollowWindow(XPFindRootWidget(inWidget));
    SetCorners(PlaceOf(inWidget), outLeft, outTop, outRight, outBottom);
}

// The change is told as that of the lower left corner and of the size. What lies in the widget stays where it
// is, unless the widget moves it: main and sub-windows do.
void XPSetWidgetGeometry(XPWidgetID inWidget, int inLeft, int inTop, int inRight, int inBottom) {
    Widget *widget = FindWidget(inWidget);
    const Rectangle place = LimitedPlace(inLeft, inTop, inRight, inBottom);
    if (!widget || widget->place == place) return;
    ExposureWatch watch(inWidget);
    XPWidgetGeometryChange_t change = {place.left - widget->place.left, place.bottom - widget->place.bottom,
                                       place.Width() - widget->place.Width(),
                                       place.Height() - widget->place.Height()};
    widget->place = place;
    if (Window *window = FindWindow(widget->window)) window->place = place;
    Send(inWidget, xpMsg_Reshape, xpMode_UpChain, AsParameter(inWidget), reinterpret_cast<intptr_t>(&change));
}

void XPGetWidgetExposedGeometry(XPWidgetID inWidgetID, int *outLeft, int *outTop, int *outRight,
                                int *outBottom) {
    FollowWindow(XPFindRootWidget(inWidgetID));
    SetCorners(ExposedPlace(inWidgetID), outLeft, outTop, outRight, outBottom);
}

void XPSetWidgetDescriptor(XPWidgetID inWidget, const char *inDescriptor) {
    Widget *widget = FindWidget(inWidget);
    if (!inDescriptor) inDescriptor = "";
    if (!widget || widget->descriptor == inDescriptor) return;
    widget->descriptor = inDescriptor;
    if (Window *window = FindWindow(widget->window)) window->title = inDescriptor;
    Send(inWidget, xpMsg_DescriptorChanged, xpMode_Direct);
}

// The text's whole length. A buffer that is too short is filled to its last byte and has no zero at its end,
// as in the simulator.
int XPGetWidgetDescriptor(XPWidgetID inWidget, char *outDescriptor, int inMaxDescLength) {
    const Widget *widget = FindWidget(inWidget);
    const std::string text = widget ? widget->descriptor : std::string();
    if (outDescriptor && inMaxDescLength > 0) {
        const std::size_t size = std::min(text.size() + 1, static_cast<std::size_t>(inMaxDescLength));
        std::memcpy(outDescriptor, text.c_str(), size);
    }
    return static_cast<int>(text.size());
}

void XPSetWidgetProperty(XPWidgetID inWidget, XPWidgetPropertyID inProperty, intptr_t inValue) {
    Widget *widget = FindWidget(inWidget);
    if (!widget) return;
    const auto found = std::find_if(widget->properties.begin(), widget->properties.end(),
                                    [&](const auto &property) { return property.first == inProperty; });
    if (found == widget->properties.end())
        widget->properties.emplace_back(inProperty, inValue);
    else if (found->second == inValue)
        return;
    else
        found->second = inValue;
    Send(inWidget, xpMsg_PropertyChanged, xpMode_Direct, inProperty, inValue);
}

intptr_t XPGetWidgetProperty(XPWidgetID inWidget, XPWidgetPropertyID inProperty, int *inExists) {
    if (inExists) *inExists = 0;
    const Widget *widget = FindWidget(inWidget);
    if (!widget) return 0;
    for (const auto &[property, value] : widget->properties) {
        if (property != inProperty) continue;
        if (inExists) *inExists = 1;
        return value;
    }
    return 0;
}
