// Texts are collected in one buffer, since what they are made of may be gone when they are drawn.
#include "systems/editor/canvas.h"

#include <algorithm>
#include <string>
#include <vector>

#include "gfx/drawing.h"
#include "gfx/fonts.h"
#include "util/numbers.h"

namespace {

const std::string_view CutMark = "...";

struct CanvasText {
    size_t start, length; // in letters
    int x, top, C;
};

std::string letters; // of all texts
std::vector<CanvasText> texts;

void AddText(std::string_view head, std::string_view tail, int x, int top, int C) {
    const size_t start = letters.size();
    letters.append(head);
    if (!tail.empty()) letters.append(CutMark).append(tail);
    texts.push_back({start, letters.size() - start, x, top, C});
}

// The font draws plain letters alone: of any other character a question mark is seen.
std::string_view Drawable(std::string_view text) {
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::all_of(text.begin(), text.end(), isPlain)) return text;
    static std::string drawable; // kept for its memory
    drawable.clear();
    for (const char c : text) {
        const bool isInside =
            (static_cast<unsigned char>(c) & 0xC0) == 0x80; // of a character of several bytes
        if (!isInside) drawable += isPlain(c) ? c : '?';
    }
    return drawable;
}

// How much of a text fits into a width, from its beginning or from its end.
size_t LettersThatFit(std::string_view text, int width, bool isFromEnd) {
    size_t count = 0;
    int used = 0;
    while (count < text.size()) {
        used += LenFontIdS(fnt_Main, text.substr(isFromEnd ? text.size() - count - 1 : count, 1));
        if (used > width) break;
        count++;
    }
    return count;
}

} // namespace

void BeginCanvas() {
    letters.clear();
    texts.clear();
}

void EndCanvas() {
    for (const CanvasText &text : texts)
        DrawFontIdSXYC(fnt_Main, std::string_view(letters).substr(text.start, text.length), text.x,
                       text.top - RowHeight + 1, text.C);
}

void DrawCut(std::string_view whole, int x, int top, int width, int C) {
    if (width <= 0) return;
    const std::string_view text = Drawable(whole);
    if (LenFontIdS(fnt_Main, text) <= width) {
        AddText(text, {}, x, top, C);
        return;
    }
    const int half = (width - LenFontIdS(fnt_Main, CutMark)) / 2;
    const size_t tail = LettersThatFit(text, half, true);
    AddText(text.substr(0, LettersThatFit(text, half, false)), text.substr(text.size() - tail), x, top, C);
}

void DrawCutRight(std::string_view text, int right, int top, int width, int C) {
    const int length = LenFontIdS(fnt_Main, text);
    DrawCut(text, length < width ? right - length : right - width, top, width, C);
}

void DrawNumberRight(double value, int right, int top, int width, int C) {
    int digits = 6;
    std::string text = SignificantDigits(value, digits);
    while (digits > 1 && LenFontIdS(fnt_Main, text) >= width) text = SignificantDigits(value, --digits);
    DrawCutRight(text, right, top, width, C);
}

void FillArea(const Area &area, int C, double t) {
    FillRestangleCT(area.left, area.bottom, area.right, area.top, C, t);
}

void FrameArea(const Area &area, int C, double t) {
    DrawRestangleCT(area.left, area.bottom, area.right - 1, area.top - 1, C, 1, t);
}
