// How the standard classes look: light grey windows with raised and sunken edges. Their texts are among those
// that a flight sees on the screen.
#include <algorithm>
#include <cmath>

#include "XPStandardWidgets.h"
#include "simhost/drawing/screen.h"
#include "simhost/drawing/screen_font.h"
#include "simhost/widgets/state.h"

namespace simhost {

namespace {

constexpr Tint windowGround = {0.78F, 0.79F, 0.80F, 1.0F};
constexpr Tint panelGround = {0.72F, 0.73F, 0.75F, 1.0F};
constexpr Tint darkGround = {0.07F, 0.08F, 0.10F, 1.0F};
constexpr Tint listGround = {0.93F, 0.94F, 0.95F, 1.0F};
constexpr Tint translucentGround = {0.05F, 0.06F, 0.08F, 0.70F};
constexpr Tint titleGround = {0.30F, 0.35F, 0.42F, 1.0F};
constexpr Tint buttonGround = {0.86F, 0.87F, 0.88F, 1.0F};
constexpr Tint pressedGround = {0.56F, 0.62F, 0.70F, 1.0F};
constexpr Tint fieldGround = {0.99F, 0.99F, 0.98F, 1.0F};
constexpr Tint trackGround = {0.62F, 0.64F, 0.66F, 1.0F};
constexpr Tint bright = {0.97F, 0.97F, 0.98F, 1.0F};
constexpr Tint dim = {0.45F, 0.47F, 0.50F, 1.0F};
constexpr Tint edge = {0.18F, 0.20F, 0.23F, 1.0F};
constexpr Tint darkText = {0.08F, 0.09F, 0.11F, 1.0F};
constexpr Tint lightText = {0.95F, 0.96F, 0.97F, 1.0F};
constexpr Tint disabledText = {0.52F, 0.53F, 0.55F, 1.0F};
constexpr Tint selection = {0.60F, 0.75F, 0.95F, 1.0F};
constexpr Tint selectionOnDark = {0.20F, 0.38F, 0.62F, 1.0F};
constexpr Tint progressBar = {0.24F, 0.50F, 0.78F, 1.0F};

constexpr int titleHeight = 20;
constexpr int closeBoxSize = 12;
constexpr int closeBoxInset = 4; // from the corner
constexpr int toggleSize = 11;

void Fill(const Rectangle &place, const Tint &tint) {
    FillRectangle(place.left, place.top, place.right, place.bottom, tint);
}

void Outline(const Rectangle &place, const Tint &tint) {
    OutlineRectangle(place.left, place.top, place.right, place.bottom, tint);
}

Rectangle Inset(const Rectangle &place, int by) {
    return {place.left + by, place.top - by, place.right - by, place.bottom + by};
}

// Light from the upper left: raised where the upper tint is the brighter one.
void DrawBevel(const Rectangle &place, const Tint &upper, const Tint &lower) {
    FillRectangle(place.left, place.top, place.right, place.top - 1, upper);
    FillRectangle(place.left, place.top, place.left + 1, place.bottom, upper);
    FillRectangle(place.left, place.bottom + 1, place.right, place.bottom, lower);
    FillRectangle(place.right - 1, place.top, place.right, place.bottom, lower);
}

// The line on which a text stands in the middle of a height.
int Baseline(const Rectangle &place) {
    constexpr int capitalHeight = 9;
    return place.bottom + (place.Height() - capitalHeight) / 2;
}

void DrawTextIn(const Rectangle &place, const std::string &text, const Tint &tint) {
    if (!text.empty()) DrawSimulatorText(text, place.left, Baseline(place), tint, false);
}

void DrawTextCentred(const Rectangle &place, const std::string &text, const Tint &tint) {
    Rectangle line = place;
    line.left += (place.Width() - TextWidth(text)) / 2;
    DrawTextIn(line, text, tint);
}

Rectangle CloseBoxAt(const Rectangle &window, bool isRight) {
    const int left = isRight ? window.right - closeBoxInset - closeBoxSize : window.left + closeBoxInset;
    const int top = window.top - closeBoxInset;
    return {left, top, left + closeBoxSize, top - closeBoxSize};
}

void DrawCloseBox(const Rectangle &box, bool isPressed) {
    Fill(box, isPressed ? pressedGround : buttonGround);
    Outline(box, edge);
    for (int i = 3; i < closeBoxSize - 3; i++) {
        FillRectangle(box.left + i, box.bottom + i + 1, box.left + i + 1, box.bottom + i, edge);
        FillRectangle(box.left + i, box.top - i, box.left + i + 1, box.top - i - 1, edge);
    }
}

// Within the square of a toggle; the radius in boxels.
void DrawDisc(const Rectangle &box, double radius, const Tint &tint) {
    constexpr double middle = toggleSize / 2.0;
    for (int row = 0; row < toggleSize; row++) {
        const double up = row + 0.5 - middle;
        if (std::fabs(up) >= radius) continue;
        const int start = static_cast<int>(std::lround(middle - std::sqrt(radius * radius - up * up)));
        FillRectangle(box.left + start, box.top - row, box.right - start, box.top - row - 1, tint);
    }
}

void DrawTick(const Rectangle &box, const Tint &tint) {
    for (int i = 0; i < 7; i++) {
        const int up = i < 2 ? 3 - i : i; // down to the tick's foot, then up
        const int bottom = box.bottom + up + (i < 2 ? 0 : -1) + 1;
        FillRectangle(box.left + 2 + i, bottom + 2, box.left + 3 + i, bottom, tint);
    }
}

} // namespace

Rectangle TitleBarOf(const Rectangle &window) {
    return {window.left, window.top, window.right, window.top - titleHeight};
}

bool IsInCloseBox(const Rectangle &window, int x, int y) {
    return CloseBoxAt(window, false).Contains(x, y) || CloseBoxAt(window, true).Contains(x, y);
}

void DrawMainWindow(const Rectangle &place, const std::string &title, bool isTranslucent, bool hasCloseBoxes,
                    bool isClosePressed) {
    const Rectangle bar = TitleBarOf(place);
    Fill(place, isTranslucent ? translucentGround : windowGround);
    if (!isTranslucent) {
        DrawBevel(Inset(place, 1), bright, dim);
        Fill(bar, titleGround);
    }
    Outline(place, edge);
    DrawTextCentred(bar, title, lightText);
    if (!hasCloseBoxes) return;
    DrawCloseBox(CloseBoxAt(place, false), isClosePressed);
    DrawCloseBox(CloseBoxAt(place, true), isClosePressed);
}

void DrawSubWindow(const Rectangle &place, intptr_t style) {
    Fill(place, style == xpSubWindowStyle_Screen     ? darkGround
                : style == xpSubWindowStyle_ListView ? listGround
                                                     : panelGround);
    DrawBevel(place, dim, bright);
}

void DrawPushButton(const Rectangle &place, const std::string &caption, bool isPressed, bool isEnabled) {
    Fill(place, isPressed ? pressedGround : buttonGround);
    const Rectangle inside = Inset(place, 1);
    isPressed ? DrawBevel(inside, dim, bright) : DrawBevel(inside, bright, dim);
    Outline(place, isEnabled ? edge : dim);
    DrawTextCentred(place, caption, isEnabled ? darkText : disabledText);
}

void DrawToggle(const Rectangle &place, const std::string &caption, bool isRound, bool isOn, bool isPressed,
                bool isEnabled) {
    const int bottom = place.bottom + (place.Height() - toggleSize) / 2;
    const Rectangle box = {place.left, bottom + toggleSize, place.left + toggleSize, bottom};
    const Tint &ground = isPressed ? pressedGround : fieldGround;
    const Tint &line = isEnabled ? edge : dim;
    if (isRound) {
        DrawDisc(box, 5.5, line);
        DrawDisc(box, 4.5, ground);
        if (isOn) DrawDisc(box, 2.5, line);
    } else {
        Fill(box, ground);
        Outline(box, line);
        if (isOn) DrawTick(box, line);
    }
    Rectangle text = place;
    text.left = box.right + 6;
    DrawTextIn(text, caption, isEnabled ? darkText : disabledText);
}

void DrawCaption(const Rectangle &place, const std::string &text, bool isLit) {
    DrawTextIn(place, text, isLit ? lightText : darkText);
}

void DrawScrollBar(const Rectangle &place, const Rectangle &track, const Rectangle &thumb, bool isPressed) {
    Fill(place, buttonGround);
    Fill(track, trackGround);
    DrawBevel(track, dim, bright);
    Outline(place, edge);
    // An arrow in each of the ends that the track leaves free.
    const bool isVertical = track.Height() < place.Height();
    for (int i = 0; i < 4 && track != place; i++) {
        if (isVertical) {
            const int middle = place.left + place.Width() / 2;
            const int down = place.bottom + (track.bottom - place.bottom) / 2 - 2 + i;
            const int up = place.top - (place.top - track.top) / 2 + 2 - i;
            FillRectangle(middle - i, down + 1, middle + i + 1, down, darkText);
            FillRectangle(middle - i, up, middle + i + 1, up - 1, darkText);
        } else {
            const int middle = place.bottom + place.Height() / 2;
            const int left = place.left + (track.left - place.left) / 2 - 2 + i;
            const int right = place.right - (place.right - track.right) / 2 + 2 - i;
            FillRectangle(left, middle + i + 1, left + 1, middle - i, darkText);
            FillRectangle(right - 1, middle + i + 1, right, middle - i, darkText);
        }
    }
    Fill(thumb, isPressed ? pressedGround : buttonGround);
    DrawBevel(Inset(thumb, 1), bright, dim);
    Outline(thumb, edge);
}

void DrawProgress(const Rectangle &place, double fraction) {
    Fill(place, trackGround);
    Rectangle bar = Inset(place, 1);
    bar.right = bar.left + static_cast<int>(std::clamp(fraction, 0.0, 1.0) * std::max(bar.Width(), 0));
    Fill(bar, progressBar);
    DrawBevel(place, dim, bright);
}

void DrawTextField(const Rectangle &place, const TextFieldLook &look) {
    const bool isDark = look.type == xpTextTransparent || look.type == xpTextTranslucent;
    if (look.type == xpTextTranslucent) Fill(place, translucentGround);
    if (look.type == xpTextEntryField) {
        Fill(place, fieldGround);
        DrawBevel(place, dim, bright);
        if (look.hasFocus) Outline(place, progressBar);
    }
    const int textLeft = place.left + textFieldMargin;
    const int baseline = Baseline(place);
    if (look.hasFocus && look.selectionLeft != look.selectionRight)
        FillRectangle(textLeft + look.selectionLeft, baseline - screenFontDescent + screenFontRowCount,
                      textLeft + look.selectionRight, baseline - screenFontDescent,
                      isDark ? selectionOnDark : selection);
    Rectangle line = place;
    line.left = textLeft;
    DrawTextIn(line, look.visible, isDark ? lightText : darkText);
    if (look.hasFocus && look.selectionLeft == look.selectionRight && look.selectionLeft >= 0)
        FillRectangle(textLeft + look.selectionLeft, baseline - screenFontDescent + screenFontRowCount,
                      textLeft + look.selectionLeft + 1, baseline - screenFontDescent,
                      isDark ? lightText : darkText);
}

} // namespace simhost
