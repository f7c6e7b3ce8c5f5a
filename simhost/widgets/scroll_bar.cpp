// The scroll bar: upright where it is higher than wide. Its largest position is at the right or upper end. A
// slider is one without arrows at its ends.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "simhost/widgets/state.h"

namespace simhost {

namespace {

constexpr intptr_t LeastThumb = 10; // boxels

// The bar along its length, from the end of the smallest position on; boxels.
struct Bar {
    Rectangle place;
    bool isVertical = false;
    intptr_t least = 0, most = 0, page = 1, position = 0;
    intptr_t arrows = 0; // the length of the arrow at each end
    intptr_t track = 0, thumb = 0, thumbStart = 0;

    intptr_t Along(const XPMouseState_t &mouse) const {
        return (isVertical ? mouse.y - place.bottom : mouse.x - place.left) - arrows;
    }
    Rectangle Part(intptr_t start, intptr_t length) const {
        const int from = static_cast<int>(arrows + start), to = static_cast<int>(arrows + start + length);
        return isVertical ? Rectangle{place.left, place.bottom + to, place.right, place.bottom + from}
                          : Rectangle{place.left + from, place.top, place.left + to, place.bottom};
    }
};

// What a plug-in may set to anything, so small that a few of them can be added.
intptr_t Limited(XPWidgetID widget, XPWidgetPropertyID property, intptr_t otherwise = 0) {
    constexpr intptr_t most = INT32_MAX;
    return std::clamp(PropertyOf(widget, property, otherwise), -most, most);
}

Bar BarOf(XPWidgetID widget) {
    Bar bar;
    bar.place = PlaceOf(widget);
    bar.isVertical = bar.place.Height() > bar.place.Width();
    bar.least = Limited(widget, xpProperty_ScrollBarMin);
    bar.most = std::max(Limited(widget, xpProperty_ScrollBarMax), bar.least);
    bar.page = std::max(Limited(widget, xpProperty_ScrollBarPageAmount, 1), intptr_t{1});
    bar.position = std::clamp(Limited(widget, xpProperty_ScrollBarSliderPosition), bar.least, bar.most);
    const intptr_t length = std::max(bar.isVertical ? bar.place.Height() : bar.place.Width(), 0);
    const intptr_t thickness = std::max(bar.isVertical ? bar.place.Width() : bar.place.Height(), 0);
    if (PropertyOf(widget, xpProperty_ScrollBarType) != xpScrollBarTypeSlider)
        bar.arrows = std::min(thickness, length / 4);
    bar.track = length - 2 * bar.arrows;
    // As much of the track as a page is of the whole.
    const double range = static_cast<double>(bar.most) - static_cast<double>(bar.least);
    const double share = static_cast<double>(bar.page) / (range + static_cast<double>(bar.page));
    bar.thumb = std::clamp(static_cast<intptr_t>(static_cast<double>(bar.track) * share),
                           std::min(LeastThumb, bar.track), bar.track);
    if (range > 0)
        bar.thumbStart = std::lround(static_cast<double>(bar.track - bar.thumb)
                                     * static_cast<double>(bar.position - bar.least) / range);
    return bar;
}

void MoveTo(XPWidgetID widget, const Bar &bar, intptr_t position) {
    position = std::clamp(position, bar.least, bar.most);
    if (position == bar.position) return;
    XPSetWidgetProperty(widget, xpProperty_ScrollBarSliderPosition, position);
    Notify(widget, xpMsg_ScrollBarSliderPositionChanged, position);
}

// On an arrow by one, beside the thumb by a page, on the thumb it is held where it was taken (the slop).
void Press(XPWidgetID widget, const XPMouseState_t &mouse) {
    const Bar bar = BarOf(widget);
    const intptr_t along = bar.Along(mouse);
    if (along < 0) {
        MoveTo(widget, bar, bar.position - 1);
    } else if (along >= bar.track) {
        MoveTo(widget, bar, bar.position + 1);
    } else if (along < bar.thumbStart) {
        MoveTo(widget, bar, bar.position - bar.page);
    } else if (along >= bar.thumbStart + bar.thumb) {
        MoveTo(widget, bar, bar.position + bar.page);
    } else {
        XPSetWidgetProperty(widget, xpProperty_ScrollBarSlop, along - bar.thumbStart);
        XPSetWidgetProperty(widget, xpProperty_Dragging, 1);
    }
}

void Drag(XPWidgetID widget, const XPMouseState_t &mouse) {
    const Bar bar = BarOf(widget);
    if (PropertyOf(widget, xpProperty_Dragging) == 0 || bar.track <= bar.thumb) return;
    const intptr_t start = bar.Along(mouse) - Limited(widget, xpProperty_ScrollBarSlop);
    const double share =
        std::clamp(static_cast<double>(start) / static_cast<double>(bar.track - bar.thumb), 0.0, 1.0);
    MoveTo(widget, bar, bar.least + std::lround(static_cast<double>(bar.most - bar.least) * share));
}

} // namespace

int ScrollBarClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t) {
    const auto mouse = [&]() -> const XPMouseState_t & {
        return *reinterpret_cast<const XPMouseState_t *>(first);
    };
    switch (message) {
    case xpMsg_Draw: {
        const Bar bar = BarOf(widget);
        DrawScrollBar(bar.place, bar.Part(0, bar.track), bar.Part(bar.thumbStart, bar.thumb),
                      PropertyOf(widget, xpProperty_Dragging) != 0);
        return 1;
    }
    case xpMsg_MouseDown: Press(widget, mouse()); return 1;
    case xpMsg_MouseDrag: Drag(widget, mouse()); return 1;
    case xpMsg_MouseUp: XPSetWidgetProperty(widget, xpProperty_Dragging, 0); return 1;
    case xpMsg_MouseWheel: {
        const Bar bar = BarOf(widget);
        MoveTo(widget, bar, bar.position + mouse().delta);
        return 1;
    }
    default: return 0;
    }
}

} // namespace simhost
