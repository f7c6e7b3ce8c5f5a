// The overlay is a column of lines that grows upwards from its place on the screen. What is drawn and what
// can be clicked are the same lines, laid out in the same pass, and again only when what they show has
// changed.
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
#include "util/refilled_list.h"
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

struct ListLine {
    std::string text;
    int x = 0, y = 0;
    Colour colour = {};
    bool isPulsing = false; // then its colour is the pulsing one
};

struct ShownGroup {
    std::string name;
    size_t size = 0;
    std::vector<std::string> texts; // while it is unfolded
};

// What the lines were laid out from.
struct ListContents {
    bool isKnown = false;
    std::vector<std::string> said, answers; // of the said ones those in the list
    std::vector<ShownGroup> groups;
    bool isAnyInputGood = false;
    int answerIndex = -1;
    std::string unfoldedTitle, called;
    int left = 0, bottom = 0, screenTop = 0, characterWidth = 0;
};

struct OverlayState {
    int listHeight = 0, listWidth = 0; // of the last frame
    RefilledList<ListLine> lines;
    int height = 0, widestLine = 0; // of the lines, from the list's place
    int characterWidth = 0;         // of the simulator's font, in which all characters are equally wide
    int screenTop = 0;
    ListContents shown;
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
void AddLine(const std::string &text, int x, int y, const Colour &colour, bool isPulsing = false) {
    if (y > state.screenTop) return;
    const int length = static_cast<int>(CountCharacters({text.c_str(), strnlen(text.c_str(), LongestLine)}));
    state.widestLine = std::max(state.widestLine, x - widgetOffsetX + length * state.characterWidth);
    ListLine &line = state.lines.Add();
    line.text = text;
    line.x = x;
    line.y = y;
    line.colour = colour;
    line.isPulsing = isPulsing;
}

void AddHeading(const std::string &text, int y) {
    AddLine(text, widgetOffsetX + HeadingIndent, y, HeadingColour);
}

// Each of the following lays its lines out from y upwards and returns where the next one begins.

// The newest stands highest.
int LayOutSpokenTexts(int y) {
    for (size_t age = SpokenLines; age-- > 0; y += LineHeight)
        if (age < fennicsay.size()) AddLine(fennicsay[age], widgetOffsetX, y, SpokenColour);
    AddHeading("FENNIC ANNOUNCES:", y);
    return y + LineHeight;
}

int LayOutAnswers(int y) {
    for (size_t i = 0; i < answers.size(); i++) {
        const bool isHighlighted = static_cast<int>(i) == selectCommandAnswerIndex;
        AddLine(answers[i], widgetOffsetX, y, AnswerColour, isHighlighted);
        AddToSelVector(answers[i], y, false, false);
        y += LineHeight;
    }
    if (answers.empty()) {
        static const std::string any = "any";
        AddLine("...", widgetOffsetX, y, HintColour);
        if (isAnyInputGood) AddLine(any, widgetOffsetX + BoxMargin * 3, y, AnswerColour);
        AddToSelVector(any, y, false, !isAnyInputGood);
        y += LineHeight;
    }
    AddHeading("EXPECTED ANSWERS:", y);
    return y + LineHeight;
}

int LayOutGroup(const input_struct &group, int y) {
    static std::string title; // kept for its memory
    const std::string *word = HighlightedWord();
    const bool holdsWord =
        word && std::find(group.texts.begin(), group.texts.end(), *word) != group.texts.end();
    if (unfoldedTitle == group.name || holdsWord) {
        for (size_t i = group.texts.size(); i-- > 0; y += LineHeight) { // the first stands highest
            const std::string &item = group.texts[i];
            const Colour &colour = item == LastCalledChklProcName ? CalledColour : ItemColour;
            AddLine(item, widgetOffsetX, y, colour, word && item == *word);
            AddToSelVector(item, y, false, false);
        }
    }
    title.assign(group.name).append(" (").append(std::to_string(group.texts.size())).append(")");
    AddHeading(title, y);
    AddToSelVector(group.name, y, true, false);
    return y + LineHeight;
}

void LayOutList() {
    vectorSelect.Clear();
    state.lines.Clear();
    state.widestLine = 0;
    AddLine("(MOVABLE)", widgetOffsetX + HeadingIndent, widgetOffsetY, HintColour);
    int y = LayOutSpokenTexts(widgetOffsetY + LineHeight);
    y = LayOutAnswers(y);
    for (const input_struct &group : inputs) y = LayOutGroup(group, y);
    state.height = y - widgetOffsetY;
}

size_t CountSaid() {
    return std::min(fennicsay.size(), SpokenLines);
}

bool isShown(const ShownGroup &shown, const input_struct &group) {
    return shown.size == group.texts.size() && shown.name == group.name
           && (unfoldedTitle != group.name || shown.texts == group.texts);
}

// A highlighted word unfolds groups, whatever they hold; for its time nothing is remembered.
bool isListShown() {
    const ListContents &shown = state.shown;
    return shown.isKnown && !HighlightedWord() && shown.left == widgetOffsetX && shown.bottom == widgetOffsetY
           && shown.screenTop == state.screenTop && shown.characterWidth == state.characterWidth
           && shown.isAnyInputGood == isAnyInputGood && shown.answerIndex == selectCommandAnswerIndex
           && shown.unfoldedTitle == unfoldedTitle && shown.called == LastCalledChklProcName
           && shown.answers == answers && shown.said.size() == CountSaid()
           && std::equal(shown.said.begin(), shown.said.end(), fennicsay.begin())
           && std::equal(shown.groups.begin(), shown.groups.end(), inputs.begin(), inputs.end(), isShown);
}

void RememberShown() {
    ListContents &shown = state.shown;
    shown.isKnown = !HighlightedWord();
    if (!shown.isKnown) return;
    shown.left = widgetOffsetX;
    shown.bottom = widgetOffsetY;
    shown.screenTop = state.screenTop;
    shown.characterWidth = state.characterWidth;
    shown.isAnyInputGood = isAnyInputGood;
    shown.answerIndex = selectCommandAnswerIndex;
    shown.unfoldedTitle = unfoldedTitle;
    shown.called = LastCalledChklProcName;
    shown.answers = answers;
    shown.said.assign(fennicsay.begin(), fennicsay.begin() + static_cast<std::ptrdiff_t>(CountSaid()));
    shown.groups.resize(inputs.size());
    for (size_t i = 0; i < inputs.size(); i++) {
        shown.groups[i].name = inputs[i].name;
        shown.groups[i].size = inputs[i].texts.size();
        shown.groups[i].texts.clear();
        if (unfoldedTitle == inputs[i].name) shown.groups[i].texts = inputs[i].texts;
    }
}

void DrawLines() {
    for (const ListLine &line : state.lines) {
        const Colour &colour = line.isPulsing ? PulsingColour() : line.colour;
        float rgb[] = {colour.red, colour.green, colour.blue};
        XPLMDrawString(rgb, line.x, line.y, const_cast<char *>(line.text.c_str()), nullptr, xplmFont_Basic);
    }
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
    XPLMGetFontDimensions(xplmFont_Basic, &state.characterWidth, nullptr, nullptr);
    CarryOutSelection();
    if (!isListShown()) {
        LayOutList();
        RememberShown();
    }
    DrawLines();
    state.listWidth = state.widestLine;
    const int height = state.height;
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
    state.shown.isKnown = false;
    SelWindowDestroy();
}

void ResetOverlay() {
    MakeFresh(state);
}
