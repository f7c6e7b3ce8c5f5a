// The overlay is a column of lines that grows upwards from its place on the screen. What is drawn and what
// can be clicked are the same lines, collected in the same pass.
#include "frame/overlay.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "XPLMDataAccess.h"
#include "XPLMGraphics.h"
#include "figure/position_creator.h"
#include "frame/commands.h"
#include "frame/kill_switch.h"
#include "frame/settings.h"
#include "systems/editor/window.h"
#include "util/clock.h"
#include "util/find_dataref.h"
#include "util/make_fresh.h"
#include "util/screen.h"
#include "util/text.h"
#include "voice/executer.h"
#include "voice/recognition.h"
#include "voice/selection.h"
#include "voice/selection_window.h"

namespace {

const int LineHeight = 15;
const int HeadingIndent = -30; // headings stand left of their lines
const size_t SpokenLines = 3;
const size_t LongestLine = 4000; // bytes of a line that the background follows
const double FoldAfterSec = 10.0;
const int WindowAboveList = 30; // the selection window reaches this far above the list
const int BoxMargin = 10;

struct Colour {
    float red, green, blue;
};
const Colour HeadingColour = {0.55F, 0.80F, 1.00F};
const Colour SpokenColour = {0.95F, 0.95F, 0.95F};
const Colour AnswerColour = {0.70F, 1.00F, 0.70F};
const Colour ItemColour = {0.85F, 0.85F, 0.85F};
const Colour CalledColour = {1.00F, 0.80F, 0.35F};
const Colour HintColour = {0.60F, 0.60F, 0.60F};

struct OverlayState {
    int listHeight = 0, listWidth = 0; // of the last frame
    int widestLine = 0;                // of this frame so far, from the list's place
    int characterWidth = 0;            // of the simulator's font, in which all characters are equally wide
    int screenTop = 0;
    XPLMDataRef sinWave = nullptr; // "sim/graphics/animation/sin_wave_2", -1 to 1
};
OverlayState state;

// The highlighted answer swings between yellow and white.
Colour PulsingColour() {
    if (!state.sinWave) state.sinWave = FindDataref("sim/graphics/animation/sin_wave_2");
    const float pulse = std::clamp(XPLMGetDataf(state.sinWave) * 0.5F + 0.5F, 0.0F, 1.0F);
    return {1.0F, 0.85F + 0.15F * pulse, 0.20F + 0.80F * pulse};
}

// Lines above the screen are not worth a call.
void DrawText(const char *text, int x, int y, const Colour &colour) {
    if (y > state.screenTop) return;
    const int length = static_cast<int>(CountCharacters({text, strnlen(text, LongestLine)}));
    state.widestLine = std::max(state.widestLine, x - widgetOffsetX + length * state.characterWidth);
    float rgb[] = {colour.red, colour.green, colour.blue};
    XPLMDrawString(rgb, x, y, const_cast<char *>(text), nullptr, xplmFont_Basic);
}

void DrawHeading(const char *text, int y) {
    DrawText(text, widgetOffsetX + HeadingIndent, y, HeadingColour);
}

// Each of the following draws its lines from y upwards and returns where the next one begins.

// The newest stands highest.
int DrawSpokenTexts(int y) {
    for (size_t age = SpokenLines; age-- > 0; y += LineHeight)
        if (age < fennicsay.size()) DrawText(fennicsay[age].c_str(), widgetOffsetX, y, SpokenColour);
    DrawHeading("FENNIC ANNOUNCES:", y);
    return y + LineHeight;
}

int DrawAnswers(int y) {
    CarryOutSelection();
    for (size_t i = 0; i < answers.size(); i++) {
        const bool isHighlighted = static_cast<int>(i) == selectCommandAnswerIndex;
        DrawText(answers[i].c_str(), widgetOffsetX, y, isHighlighted ? PulsingColour() : AnswerColour);
        AddToSelVector(answers[i], y, false, false);
        y += LineHeight;
    }
    if (answers.empty()) {
        static const std::string any = "any";
        DrawText("...", widgetOffsetX, y, HintColour);
        if (isAnyInputGood) DrawText(any.c_str(), widgetOffsetX + BoxMargin * 3, y, AnswerColour);
        AddToSelVector(any, y, false, !isAnyInputGood);
        y += LineHeight;
    }
    DrawHeading("EXPECTED ANSWERS:", y);
    return y + LineHeight;
}

int DrawGroup(const input_struct &group, int y) {
    static std::string title; // kept for its memory
    const std::string *word = HighlightedWord();
    const bool holdsWord =
        word && std::find(group.texts.begin(), group.texts.end(), *word) != group.texts.end();
    if (unfoldedTitle == group.name || holdsWord) {
        for (size_t i = group.texts.size(); i-- > 0; y += LineHeight) { // the first stands highest
            const std::string &item = group.texts[i];
            const bool isHighlighted = word && item == *word;
            const Colour &colour = item == LastCalledChklProcName ? CalledColour : ItemColour;
            DrawText(item.c_str(), widgetOffsetX, y, isHighlighted ? PulsingColour() : colour);
            AddToSelVector(item, y, false, false);
        }
    }
    title.assign(group.name).append(" (").append(std::to_string(group.texts.size())).append(")");
    DrawHeading(title.c_str(), y);
    AddToSelVector(group.name, y, true, false);
    return y + LineHeight;
}

// What the list covers, darkened so that its texts can be read before any sky.
void DrawBackground() {
    XPLMDrawTranslucentDarkBox(widgetOffsetX + HeadingIndent - BoxMargin,
                               std::min(widgetOffsetY + state.listHeight, state.screenTop),
                               widgetOffsetX + std::max(state.listWidth, selW) + BoxMargin,
                               widgetOffsetY - BoxMargin / 2);
}

void DrawList() {
    int screenWidth = 0;
    ReadScreenSize(screenWidth, state.screenTop);
    DrawBackground();
    vectorSelect.Clear();
    state.widestLine = 0;
    XPLMGetFontDimensions(xplmFont_Basic, &state.characterWidth, nullptr, nullptr);
    DrawText("(MOVABLE)", widgetOffsetX + HeadingIndent, widgetOffsetY, HintColour);
    int y = DrawSpokenTexts(widgetOffsetY + LineHeight);
    y = DrawAnswers(y);
    for (const input_struct &group : inputs) y = DrawGroup(group, y);
    state.listWidth = state.widestLine;
    const int height = y - widgetOffsetY;
    if (isEditorOverScreen()) { // which hides the list; it is not clicked through the editor
        SelWindowDestroy();
        return;
    }
    if (height == state.listHeight && isSelWindowOpen()) return;
    state.listHeight = height;
    SelWindowCreate(state.listHeight + WindowAboveList);
}

void FoldWhenIdle() {
    if (secUnfoldTFT > FlightTimeSEC) secUnfoldTFT = FlightTimeSEC; // clicked in the flight before
    if (!unfoldedTitle.empty() && FlightTimeSEC - secUnfoldTFT >= FoldAfterSec) unfoldedTitle.clear();
}

} // namespace

int DrawScreen(XPLMDrawingPhase, int, void *) {
    if (isAtRest()) {
        CloseOverlay();
        return 1;
    }
    FoldWhenIdle();
    DrawPositionCreator();
    if (!ShowWidget) {
        CloseOverlay();
        return 1;
    }
    if (isEditorOverScreen()) DropSelectionRequests(); // nobody sees what they would do
    KeepListOnScreen();
    DrawList();
    return 1;
}

void CloseOverlay() {
    DropSelectionRequests();
    vectorSelect.Clear();
    SelWindowDestroy();
}

void ResetOverlay() {
    MakeFresh(state);
}
