// The box is a root widget of its own, in front of the editor's window. It is not destroyed in its own
// callback but by the next drawing.
#include "systems/editor/edit_box.h"

#include <algorithm>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "gfx/fonts.h"
#include "systems/editor/state.h"
#include "util/guard.h"
#include "util/make_fresh.h"
#include "util/screen.h"
#include "util/text.h"

namespace {

const char *const EmptyFieldText = "input text";
const int LongestText = 2000; // bytes
const int NarrowestBox = 220, WidestBox = 700, BoxHeight = 22, Margin = 6;
const int LetterWidth = 8; // about that of the box's letters

struct {
    XPWidgetID box = nullptr;
    bool isDone = false;
    FieldPlace edited;
    std::string refusal; // why the text that was typed last is not stored
} state;

std::string TypedText() {
    char text[LongestText + 1] = "";
    XPGetWidgetDescriptor(state.box, text, LongestText + 1);
    text[LongestText] = 0;
    return text;
}

void Close() {
    state.isDone = true;
    state.refusal.clear();
    XPLoseKeyboardFocus(state.box);
    XPHideWidget(state.box);
}

// Left and top as they are asked for, moved as far as the screen needs.
Area BoxOnScreen(int left, int top, int width) {
    int screenWidth = 0, screenHeight = 0;
    ReadScreenSize(screenWidth, screenHeight);
    left = std::max(0, std::min(left, screenWidth - width));
    top = std::max(std::min(top, screenHeight), BoxHeight);
    return {left, top, left + width, top - BoxHeight};
}

} // namespace

void EditWidgetCreate(const FieldPlace &field, const Area &area) {
    EditWidgetDestroy();
    state.edited = field;
    state.refusal.clear();
    const std::string text = FieldText(field);
    if (text.size() > LongestText) {
        Say("this text is too long to be edited here", true);
        return;
    }
    const int textWidth =
        std::clamp(static_cast<int>(CountCharacters(text) + 4) * LetterWidth, NarrowestBox, WidestBox);
    const Area place = BoxOnScreen(area.left, area.top + 2, std::max(area.right - area.left, textWidth));
    state.box =
        XPCreateWidget(place.left, place.top, place.right, place.bottom, 1,
                       text.empty() ? EmptyFieldText : text.c_str(), 1, nullptr, xpWidgetClass_TextField);
    XPSetWidgetProperty(state.box, xpProperty_TextFieldType, xpTextEntryField);
    XPSetWidgetProperty(state.box, xpProperty_MaxCharacters, LongestText);
    XPSetWidgetProperty(state.box, xpProperty_EditFieldSelStart, 0);
    XPSetWidgetProperty(state.box, xpProperty_EditFieldSelEnd, static_cast<intptr_t>(TypedText().size()));
    XPAddWidgetCallback(state.box, Guarded<"the editor's edit box", EditWidgetHandler>);
    XPSetKeyboardFocus(state.box);
}

void EditWidgetDestroy() {
    if (state.box) XPDestroyWidget(state.box, 1);
    MakeFresh(state);
}

bool isEditWidgetOpen() {
    return state.box && !state.isDone;
}

void KeepEditWidgetOnScreen() {
    if (!state.box) return;
    int left = 0, top = 0, right = 0, bottom = 0;
    XPGetWidgetGeometry(state.box, &left, &top, &right, &bottom);
    const Area place = BoxOnScreen(left, top, right - left);
    XPSetWidgetGeometry(state.box, place.left, place.top, place.right, place.bottom);
}

int EditWidgetHandler(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t) {
    if (widget != state.box || state.isDone) return 0;
    if (message == xpMsg_TextFieldChanged) state.refusal.clear();
    if (message != xpMsg_KeyPress) return 0;
    const XPKeyState_t &key = *reinterpret_cast<const XPKeyState_t *>(first);
    const bool isReturn = key.key == XPLM_KEY_RETURN, isEscape = key.key == XPLM_KEY_ESCAPE;
    if (!isReturn && !isEscape) return 0;
    if (key.flags & xplm_UpFlag) return 1;
    if (isReturn) {
        EditWidgetStore();
    } else {
        Say(""); // a refusal is settled
        Close();
    }
    return 1;
}

bool EditWidgetStore() {
    std::string text = TypedText();
    if (text == EmptyFieldText && FieldText(state.edited).empty()) text.clear();
    Say("");
    state.refusal = SetField(state.edited, text);
    if (state.refusal.empty()) {
        Close();
        return true;
    }
    Say(state.refusal, true);
    XPSetKeyboardFocus(state.box);
    return false;
}

void DrawEditWidget() {
    if (state.isDone) EditWidgetDestroy();
    if (!state.box || state.refusal.empty()) return;
    int left = 0, top = 0, right = 0, bottom = 0;
    XPGetWidgetGeometry(state.box, &left, &top, &right, &bottom);
    const int above = bottom < RowHeight + 2 ? top + RowHeight + 2 : bottom - 2;
    const int width = LenFontIdS(fnt_Main, state.refusal) + 2 * Margin;
    int screenWidth = 0, screenHeight = 0;
    ReadScreenSize(screenWidth, screenHeight);
    left = std::max(0, std::min(left, screenWidth - width));
    const Area area = {left, above, left + width, above - RowHeight - 2};
    FillArea(area, ColourBlack, 1.0);
    FrameArea(area, ColourRed, 1.0);
    DrawCut(state.refusal, left + Margin, above - 1, width, ColourOrange);
}
