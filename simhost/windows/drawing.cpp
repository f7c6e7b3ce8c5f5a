// The windows on the picture, with the frames that the simulator draws around them. A window with round
// corners gets its frame outside its contents; one that decorates itself and can be resized has its edges
// inside.
#include <algorithm>

#include "simhost/drawing/graphics_state.h"
#include "simhost/drawing/screen.h"
#include "simhost/modules.h"
#include "simhost/windows/state.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

constexpr Tint Background = {0.16F, 0.18F, 0.21F, 0.95F};
constexpr Tint TitleBar = {0.25F, 0.28F, 0.33F, 1.0F};
constexpr Tint FocusedTitleBar = {0.22F, 0.35F, 0.50F, 1.0F};
constexpr Tint Outline = {0.45F, 0.50F, 0.56F, 1.0F};
constexpr Tint TitleText = {0.92F, 0.94F, 0.96F, 1.0F};
constexpr Tint BehindModal = {0.0F, 0.0F, 0.0F, 0.5F};

constexpr int CloseBoxSize = 12;
constexpr int CornerReach = 12; // how far from a corner two edges are grabbed at once

bool isFramed(const Window &window) {
    return window.decoration == xplm_WindowDecorationRoundRectangle;
}

bool hasEdges(const Window &window) {
    return isFramed(window) || window.decoration == xplm_WindowDecorationSelfDecoratedResizable;
}

// The contents, with the frame where there is one.
Rectangle Outside(const Window &window) {
    const Rectangle &place = window.place;
    if (!isFramed(window)) return place;
    return {place.left - BorderWidth, place.top + TitleBarHeight, place.right + BorderWidth,
            place.bottom - BorderWidth};
}

Rectangle CloseBox(const Window &window) {
    const int bottom = window.place.top + (TitleBarHeight - BorderWidth - CloseBoxSize) / 2;
    return {window.place.left, bottom + CloseBoxSize, window.place.left + CloseBoxSize, bottom};
}

void DrawCloseBox(const Rectangle &box) {
    OutlineRectangle(box.left, box.top, box.right, box.bottom, Outline);
    const int textLeft = box.left + (box.Width() - TextWidth("x")) / 2;
    DrawSimulatorText("x", textLeft, box.bottom + 3, TitleText, true);
}

// As much of the title as the bar holds.
std::string FittingTitle(const Window &window, int width) {
    std::string title = window.title.substr(0, static_cast<std::size_t>(std::max(width, 0)));
    while (!title.empty() && TextWidth(title) > width) {
        title.pop_back();
        while (!title.empty() && (title.back() & 0xC0) == 0x80) title.pop_back();
    }
    return title;
}

void DrawFrame(const Window &window) {
    const Rectangle outside = Outside(window);
    const Rectangle &place = window.place;
    FillRectangle(outside.left, outside.top, outside.right, outside.bottom, Background);
    FillRectangle(outside.left, outside.top, outside.right, place.top,
                  FocusedWindow() == window.id ? FocusedTitleBar : TitleBar);
    OutlineRectangle(outside.left, outside.top, outside.right, outside.bottom, Outline);
    const Rectangle box = CloseBox(window);
    DrawCloseBox(box);
    const std::string title = FittingTitle(window, place.Width() - 2 * (CloseBoxSize + BorderWidth));
    const int textLeft = place.left + std::max((place.Width() - TextWidth(title)) / 2, box.Width() + 4);
    DrawSimulatorText(title, textLeft, box.bottom + 3, TitleText, true);
}

void DrawContents(const Window &window) {
    if (!window.draw) return;
    RunningScope scope(window.owner, "window's draw function");
    DrawingScope drawing;
    window.draw(window.id, window.refcon);
}

// Kept from frame to frame for its memory.
constinit std::vector<XPLMWindowID> order;

} // namespace

WindowPart PartAt(const Window &window, int x, int y) {
    if (!Outside(window).Contains(x, y)) return WindowPart::None;
    const GrabbedEdges edges = EdgesAt(window, x, y);
    if (edges.left || edges.top || edges.right || edges.bottom) return WindowPart::Edge;
    if (window.place.Contains(x, y)) return WindowPart::Contents;
    return CloseBox(window).Contains(x, y) ? WindowPart::CloseBox : WindowPart::TitleBar;
}

GrabbedEdges EdgesAt(const Window &window, int x, int y) {
    if (!hasEdges(window)) return {};
    const Rectangle outside = Outside(window);
    const auto within = [&](int reach) {
        return GrabbedEdges{.left = x < outside.left + reach,
                            .top = y >= outside.top - reach,
                            .right = x >= outside.right - reach,
                            .bottom = y < outside.bottom + reach};
    };
    const GrabbedEdges near = within(BorderWidth);
    if (!near.left && !near.top && !near.right && !near.bottom) return {};
    const GrabbedEdges far = within(CornerReach);
    return {.left = near.left || (far.left && (near.top || near.bottom)),
            .top = near.top || (far.top && (near.left || near.right)),
            .right = near.right || (far.right && (near.top || near.bottom)),
            .bottom = near.bottom || (far.bottom && (near.left || near.right))};
}

void DrawWindows() {
    order.clear();
    for (const auto &window : Windows()) order.push_back(window->id);
    bool isModalDrawn = false;
    for (XPLMWindowID id : order) {
        const Window *window = FindWindow(id);
        if (!window || !window->isVisible || !isPluginEnabled(window->owner)) continue;
        if (isInVr(*window)) {
            const HeadsetScope headset(window->title, window->vrWidth, window->vrHeight);
            DrawContents(*window);
            continue;
        }
        if (window->layer == xplm_WindowLayerModal && !isModalDrawn) {
            FillRectangle(0, ScreenHeight(), ScreenWidth(), 0, BehindModal);
            isModalDrawn = true;
        }
        if (isFramed(*window)) DrawFrame(*window);
        DrawContents(*window);
    }
}

} // namespace simhost
