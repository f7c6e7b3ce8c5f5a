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

constexpr Tint WindowGround = {0.78F, 0.79F, 0.80F, 1.0F};
constexpr Tint PanelGround = {0.72F, 0.73F, 0.75F, 1.0F};
constexpr Tint DarkGround = {0.07F, 0.08F, 0.10F, 1.0F};
constexpr Tint ListGround = {0.93F, 0.94F, 0.95F, 1.0F};
constexpr Tint TranslucentGround = {0.05F, 0.06F, 0.08F, 0.70F};
constexpr Tint TitleGround = {0.30F, 0.35F, 0.42F, 1.0F};
constexpr Tint ButtonGround = {0.86F, 0.87F, 0.88F, 1.0F};
constexpr Tint PressedGround = {0.56F, 0.62F, 0.70F, 1.0F};
constexpr Tint FieldGround = {0.99F, 0.99F, 0.98F, 1.0F};
constexpr Tint TrackGround = {0.62F, 0.64F, 0.66F, 1.0F};
constexpr Tint Bright = {0.97F, 0.97F, 0.98F, 1.0F};
constexpr Tint Dim = {0.45F, 0.47F, 0.50F, 1.0F};
constexpr Tint Edge = {0.18F, 0.20F, 0.23F, 1.0F};
constexpr Tint DarkText = {0.08F, 0.09F, 0.11F, 1.0F};
constexpr Tint LightText = {0.95F, 0.96F, 0.97F, 1.0F};
constexpr Tint DisabledText = {0.52F, 0.53F, 0.55F, 1.0F};
constexpr Tint Selection = {0.60F, 0.75F, 0.95F, 1.0F};
constexpr Tint SelectionOnDark = {0.20F, 0.38F, 0.62F, 1.0F};
constexpr Tint ProgressBar = {0.24F, 0.50F, 0.78F, 1.0F};

constexpr int TitleHeight = 20;
constexpr int CloseBoxSize = 12;
constexpr int CloseBoxInset = 4; // from the corner
constexpr int ToggleSize = 11;

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
    const int left = isRight ? window.right - CloseBoxInset - CloseBoxSize : window.left + CloseBoxInset;
    const int top = window.top - CloseBoxInset;
    return {left, top, left + CloseBoxSize, top - CloseBoxSize};
}

void DrawCloseBox(const Rectangle &box, bool isPressed) {
    Fill(box, isPressed ? PressedGround : ButtonGround);
    Outline(box, Edge);
    for (int i = 3; i < CloseBoxSize - 3; i++) {
        FillRectangle(box.left + i, box.bottom + i + 1, box.left + i + 1, box.bottom + i, Edge);
        FillRectangle(box.left + i, box.top - i, box.left + i + 1, box.top - i - 1, Edge);
    }
}

// Within the square of a toggle; the radius in boxels.
void DrawDisc(const Rectangle &box, double radius, const Tint &tint) {
    constexpr double middle = ToggleSize / 2.0;
    for (int row = 0; row < ToggleSize; row++) {
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
    return {window.left, window.top, window.right, window.top - TitleHeight};
}

bool isInCloseBox(const Rectangle &window, int x, int y) {
    return CloseBoxAt(window, false).Contains(x, y) || CloseBoxAt(window, true).Contains(x, y);
}

void DrawMainWindow(const Rectangle &place, const std::string &title, bool isTranslucent, bool hasCloseBoxes,
                    bool isClosePressed) {
    const Rectangle bar = TitleBarOf(place);
    Fill(place, isTranslucent ? TranslucentGround : WindowGround);
    if (!isTranslucent) {
        DrawBevel(Inset(place, 1), Bright, Dim);
        Fill(bar, TitleGround);
    }
    Outline(place, Edge);
    DrawTextCentred(bar, title, LightText);
    if (!hasCloseBoxes) return;
    DrawCloseBox(CloseBoxAt(place, false), isClosePressed);
    DrawCloseBox(CloseBoxAt(place, true), isClosePressed);
}

void DrawSubWindow(const Rectangle &place, intptr_t style) {
    Fill(place, style == xpSubWindowStyle_Screen     ? DarkGround
                : style == xpSubWindowStyle_ListView ? ListGround
                                                     : PanelGround);
    DrawBevel(place, Dim, Bright);
}

void DrawPushButton(const Rectangle &place, const std::string &caption, bool isPressed, bool isEnabled) {
    Fill(place, isPressed ? PressedGround : ButtonGround);
    const Rectangle inside = Inset(place, 1);
    isPressed ? DrawBevel(inside, Dim, Bright) : DrawBevel(inside, Bright, Dim);
    Outline(place, isEnabled ? Edge : Dim);
    DrawTextCentred(place, caption, isEnabled ? DarkText : DisabledText);
}

void DrawToggle(const Rectangle &place, const std::string &caption, bool isRound, bool isOn, bool isPressed,
                bool isEnabled) {
    const int bottom = place.bottom + (place.Height() - ToggleSize) / 2;
    const Rectangle box = {place.left, bottom + ToggleSize, place.left + ToggleSize, bottom};
    const Tint &ground = isPressed ? PressedGround : FieldGround;
    const Tint &line = isEnabled ? Edge : Dim;
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
    DrawTextIn(text, caption, isEnabled ? DarkText : DisabledText);
}

void DrawCaption(const Rectangle &place, const std::string &text, bool isLit) {
    DrawTextIn(place, text, isLit ? LightText : DarkText);
}

void DrawScrollBar(const Rectangle &place, const Rectangle &track, const Rectangle &thumb, bool isPressed) {
    Fill(place, ButtonGround);
    Fill(track, TrackGround);
    DrawBevel(track, Dim, Bright);
    Outline(place, Edge);
    // An arrow in each of the ends that the track leaves free.
    const bool isVertical = track.Height() < place.Height();
    for (int i = 0; i < 4 && track != place; i++) {
        if (isVertical) {
            const int middle = place.left + place.Width() / 2;
            const int down = place.bottom + (track.bottom - place.bottom) / 2 - 2 + i;
            const int up = place.top - (place.top - track.top) / 2 + 2 - i;
            FillRectangle(middle - i, down + 1, middle + i + 1, down, DarkText);
            FillRectangle(middle - i, up, middle + i + 1, up - 1, DarkText);
        } else {
            const int middle = place.bottom + place.Height() / 2;
            const int left = place.left + (track.left - place.left) / 2 - 2 + i;
            const int right = place.right - (place.right - track.right) / 2 + 2 - i;
            FillRectangle(left, middle + i + 1, left + 1, middle - i, DarkText);
            FillRectangle(right - 1, middle + i + 1, right, middle - i, DarkText);
        }
    }
    Fill(thumb, isPressed ? PressedGround : ButtonGround);
    DrawBevel(Inset(thumb, 1), Bright, Dim);
    Outline(thumb, Edge);
}

void DrawProgress(const Rectangle &place, double fraction) {
    Fill(place, TrackGround);
    Rectangle bar = Inset(place, 1);
    bar.right = bar.left + static_cast<int>(std::clamp(fraction, 0.0, 1.0) * std::max(bar.Width(), 0));
    Fill(bar, ProgressBar);
    DrawBevel(place, Dim, Bright);
}

void DrawTextField(const Rectangle &place, const TextFieldLook &look) {
    const bool isDark = look.type == xpTextTransparent || look.type == xpTextTranslucent;
    if (look.type == xpTextTranslucent) Fill(place, TranslucentGround);
    if (look.type == xpTextEntryField) {
        Fill(place, FieldGround);
        DrawBevel(place, Dim, Bright);
        if (look.hasFocus) Outline(place, ProgressBar);
    }
    const int textLeft = place.left + TextFieldMargin;
    const int baseline = Baseline(place);
    if (look.hasFocus && look.selectionLeft != look.selectionRight)
        FillRectangle(textLeft + look.selectionLeft, baseline - ScreenFontDescent + ScreenFontRowCount,
                      textLeft + look.selectionRight, baseline - ScreenFontDescent,
                      isDark ? SelectionOnDark : Selection);
    Rectangle line = place;
    line.left = textLeft;
    DrawTextIn(line, look.visible, isDark ? LightText : DarkText);
    if (look.hasFocus && look.selectionLeft == look.selectionRight && look.selectionLeft >= 0)
        FillRectangle(textLeft + look.selectionLeft, baseline - ScreenFontDescent + ScreenFontRowCount,
                      textLeft + look.selectionLeft + 1, baseline - ScreenFontDescent,
                      isDark ? LightText : DarkText);
}

} // namespace simhost
