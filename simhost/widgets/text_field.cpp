// The text field: one line of text with a selection between two places, which are the same where there is
// only the cursor. Places are bytes of the descriptor, and never inside a letter.
#include <algorithm>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "simhost/drawing/screen.h"
#include "simhost/drawing/screen_font.h"
#include "simhost/widgets/state.h"

namespace simhost {

namespace {

constexpr bool isInsideLetter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// A field as its properties say, with places that are in the text.
struct Field {
    XPWidgetID id = nullptr;
    std::string text;
    std::size_t start = 0, end = 0; // of the selection
    std::size_t scroll = 0;         // the first letter that can be seen
    bool isEndActive = true;        // which of the two moves with shift

    std::size_t Next(std::size_t place) const {
        if (place < text.size()) place++;
        while (place < text.size() && isInsideLetter(text[place])) place++;
        return place;
    }
    std::size_t Previous(std::size_t place) const {
        if (place > 0) place--;
        while (place > 0 && isInsideLetter(text[place])) place--;
        return place;
    }
    std::size_t Active() const { return isEndActive ? end : start; }
    int LettersBetween(std::size_t from, std::size_t to) const {
        return CountLetters(std::string_view(text).substr(from, to - from));
    }
};

std::size_t PlaceIn(const std::string &text, XPWidgetID widget, XPWidgetPropertyID property) {
    const intptr_t given = PropertyOf(widget, property);
    std::size_t place = std::min(static_cast<std::size_t>(std::max(given, intptr_t{0})), text.size());
    while (place < text.size() && isInsideLetter(text[place])) place--;
    return place;
}

Field FieldOf(XPWidgetID widget) {
    Field field;
    field.id = widget;
    if (const Widget *found = FindWidget(widget)) field.text = found->descriptor;
    field.start = PlaceIn(field.text, widget, xpProperty_EditFieldSelStart);
    field.end = std::max(PlaceIn(field.text, widget, xpProperty_EditFieldSelEnd), field.start);
    field.scroll = PlaceIn(field.text, widget, xpProperty_ScrollPosition);
    field.isEndActive = PropertyOf(widget, xpProperty_ActiveEditSide, 1) != 0;
    return field;
}

int LettersThatFit(XPWidgetID widget) {
    return std::max((PlaceOf(widget).Width() - 2 * TextFieldMargin) / ScreenFontAdvance, 1);
}

// Scrolls so far that the active end of the selection can be seen, and no farther than the text needs.
std::size_t ScrolledTo(const Field &field) {
    const int most = LettersThatFit(field.id);
    std::size_t scroll = std::min(field.scroll, field.Active());
    while (field.LettersBetween(scroll, field.Active()) > most) scroll = field.Next(scroll);
    while (scroll > 0 && field.LettersBetween(field.Previous(scroll), field.text.size()) <= most)
        scroll = field.Previous(scroll);
    return scroll;
}

void SetPlace(XPWidgetID widget, XPWidgetPropertyID property, std::size_t place) {
    XPSetWidgetProperty(widget, property, static_cast<intptr_t>(place));
}

void StoreSelection(const Field &field) {
    SetPlace(field.id, xpProperty_EditFieldSelStart, field.start);
    SetPlace(field.id, xpProperty_EditFieldSelEnd, field.end);
    XPSetWidgetProperty(field.id, xpProperty_ActiveEditSide, field.isEndActive ? 1 : 0);
    SetPlace(field.id, xpProperty_ScrollPosition, ScrolledTo(field));
}

void SelectBetween(Field &field, std::size_t fixed, std::size_t active) {
    field.isEndActive = active >= fixed;
    field.start = std::min(fixed, active);
    field.end = std::max(fixed, active);
    StoreSelection(field);
}

// With shift the other end of the selection stays.
void MoveCursor(Field &field, std::size_t place, bool isSelecting) {
    SelectBetween(field, isSelecting ? (field.isEndActive ? field.start : field.end) : place, place);
}

void Replace(Field &field, std::size_t start, std::size_t end, std::string_view by) {
    if (start == end && by.empty()) return;
    field.text.replace(start, end - start, by);
    XPSetWidgetDescriptor(field.id, field.text.c_str());
    MoveCursor(field, start + by.size(), false);
    Notify(field.id, xpMsg_TextFieldChanged);
}

void TypeCharacter(Field &field, char character) {
    const intptr_t most = PropertyOf(field.id, xpProperty_MaxCharacters);
    const intptr_t kept =
        field.LettersBetween(0, field.start) + field.LettersBetween(field.end, field.text.size());
    if (most > 0 && kept >= most) return;
    Replace(field, field.start, field.end, {&character, 1});
}

bool MovesCursor(Field &field, const XPKeyState_t &key) {
    const bool isSelecting = (key.flags & xplm_ShiftFlag) != 0;
    const bool hasSelection = field.start != field.end;
    switch (static_cast<unsigned char>(key.vkey)) {
    case XPLM_VK_LEFT:
        MoveCursor(field, hasSelection && !isSelecting ? field.start : field.Previous(field.Active()),
                   isSelecting);
        return true;
    case XPLM_VK_RIGHT:
        MoveCursor(field, hasSelection && !isSelecting ? field.end : field.Next(field.Active()), isSelecting);
        return true;
    case XPLM_VK_HOME: MoveCursor(field, 0, isSelecting); return true;
    case XPLM_VK_END: MoveCursor(field, field.text.size(), isSelecting); return true;
    default: return false;
    }
}

// Keys that the field does not use, return, escape and tab among them, go up the chain.
bool PressKey(XPWidgetID widget, const XPKeyState_t &key) {
    Field field = FieldOf(widget);
    const unsigned char virtualKey = static_cast<unsigned char>(key.vkey);
    const unsigned char character = static_cast<unsigned char>(key.key);
    const bool isBackspace = virtualKey == XPLM_VK_BACK, isDelete = virtualKey == XPLM_VK_DELETE;
    const bool isMove = virtualKey == XPLM_VK_LEFT || virtualKey == XPLM_VK_RIGHT
                        || virtualKey == XPLM_VK_HOME || virtualKey == XPLM_VK_END;
    const bool isText =
        character >= ' ' && character != 127 && (key.flags & (xplm_ControlFlag | xplm_OptionAltFlag)) == 0;
    if (!isBackspace && !isDelete && !isMove && !isText) return false;
    if ((key.flags & xplm_UpFlag) != 0) return true;
    const bool hasSelection = field.start != field.end;
    if (isBackspace)
        Replace(field, hasSelection ? field.start : field.Previous(field.start), field.end, "");
    else if (isDelete)
        Replace(field, field.start, hasSelection ? field.end : field.Next(field.end), "");
    else if (!isMove || !MovesCursor(field, key))
        TypeCharacter(field, key.key);
    return true;
}

// The place between letters next to the mouse. Beside the field it is one letter beyond what can be seen, so
// that a held mouse scrolls.
std::size_t PlaceAt(const Field &field, int x) {
    const int offset = x - PlaceOf(field.id).left - TextFieldMargin;
    if (offset < -TextFieldMargin) return field.Previous(field.scroll);
    const int letters =
        std::min((offset + ScreenFontAdvance / 2) / ScreenFontAdvance, LettersThatFit(field.id) + 1);
    std::size_t place = field.scroll;
    for (int i = 0; i < letters; i++) place = field.Next(place);
    return place;
}

bool PressMouse(XPWidgetID widget, const XPMouseState_t &mouse) {
    XPSetKeyboardFocus(widget);
    Field field = FieldOf(widget);
    const std::size_t place = PlaceAt(field, mouse.x);
    SetPlace(widget, xpProperty_EditFieldSelDragStart, place);
    MoveCursor(field, place, false);
    return true;
}

bool DragMouse(XPWidgetID widget, const XPMouseState_t &mouse) {
    Field field = FieldOf(widget);
    SelectBetween(field, PlaceIn(field.text, widget, xpProperty_EditFieldSelDragStart),
                  PlaceAt(field, mouse.x));
    return true;
}

bool Draw(XPWidgetID widget) {
    const Field field = FieldOf(widget);
    const int letters =
        std::min(LettersThatFit(widget), field.LettersBetween(field.scroll, field.text.size()));
    TextFieldLook look;
    look.type = PropertyOf(widget, xpProperty_TextFieldType);
    look.hasFocus = FocusedWidget() == widget;
    std::size_t end = field.scroll;
    for (int i = 0; i < letters; i++) end = field.Next(end);
    const bool isPassword = PropertyOf(widget, xpProperty_PasswordMode) != 0;
    look.visible = isPassword ? std::string(static_cast<std::size_t>(letters), '*')
                              : field.text.substr(field.scroll, end - field.scroll);
    const auto offset = [&](std::size_t place) {
        const std::size_t seen = std::clamp(place, field.scroll, end);
        return field.LettersBetween(field.scroll, seen) * ScreenFontAdvance;
    };
    look.selectionLeft = offset(field.start);
    look.selectionRight = offset(field.end);
    DrawTextField(PlaceOf(widget), look);
    return true;
}

} // namespace

int TextFieldClass(XPWidgetMessage message, XPWidgetID widget, intptr_t first, intptr_t) {
    const auto mouse = [&]() -> const XPMouseState_t & {
        return *reinterpret_cast<const XPMouseState_t *>(first);
    };
    switch (message) {
    case xpMsg_Draw: return Draw(widget);
    case xpMsg_KeyTakeFocus: return 1;
    case xpMsg_KeyPress: return PressKey(widget, *reinterpret_cast<const XPKeyState_t *>(first));
    case xpMsg_MouseDown: return PressMouse(widget, mouse());
    case xpMsg_MouseDrag: return DragMouse(widget, mouse());
    case xpMsg_MouseUp: return 1;
    default: return 0;
    }
}

} // namespace simhost
