// A panel's mouse and keys: buttons that are clicked, boxes that are typed into, and what is dragged.
#include "gfx/panel.h"

#include <algorithm>
#include <string_view>

#include "gfx/fonts.h"
#include "util/screen.h"

namespace {

// Buttons and boxes, whose place is their lower left corner.
template <typename Item> bool isHit(const Item &item, int x, int y) {
    return item.x < x && x < item.x + item.width && item.y - item.height < y && y < item.y;
}

// Scrolls so that the cursor is inside the box, and what was erased leaves no room behind the text.
void ShowCursor(VR_box_struct &box) {
    const std::string_view text = box.text;
    const auto isWide = [&](int first, int end) {
        const std::string_view part =
            text.substr(static_cast<size_t>(first), static_cast<size_t>(end - first));
        return LenFontIdS(box.font, part) > box.width - 2 * BoxTextMargin;
    };
    const int length = static_cast<int>(text.size());
    box.scroll = std::min(box.scroll, box.cursor);
    while (box.scroll < box.cursor && isWide(box.scroll, box.cursor)) box.scroll++;
    while (box.scroll > 0 && !isWide(box.scroll - 1, length)) box.scroll--;
}

// A blank becomes an underscore: boxes hold names, and in the files that use them blanks do not count.
void TypeInto(VR_box_struct &box, char character) {
    const bool isPrintable = character >= ' ' && character <= '~';
    if (!isPrintable || static_cast<int>(box.text.size()) >= box.maxLength) return;
    box.text.insert(static_cast<size_t>(box.cursor), 1, character == ' ' ? '_' : character);
    box.cursor++;
}

void PressKey(VR_box_struct &box, char key) {
    const int length = static_cast<int>(box.text.size());
    if (key == XPLM_KEY_RIGHT)
        box.cursor = std::min(box.cursor + 1, length);
    else if (key == XPLM_KEY_LEFT)
        box.cursor = std::max(box.cursor - 1, 0);
    else if (key != XPLM_KEY_DELETE)
        TypeInto(box, key);
    else if (box.cursor > 0)
        box.text.erase(static_cast<size_t>(--box.cursor), 1);
    ShowCursor(box);
}

} // namespace

void widgetVR_class::SetBoxText(int index, const std::string &text) {
    if (index < 0 || static_cast<size_t>(index) >= boxes.size()) return;
    VR_box_struct &box = boxes[static_cast<size_t>(index)];
    box.text = text;
    box.cursor = static_cast<int>(text.size());
    box.scroll = 0;
    ShowCursor(box);
    redraw = 1;
}

VR_box_struct *widgetVR_class::FocusedBox() {
    for (VR_box_struct &box : boxes)
        if (box.focused && box.page == page) return &box;
    return nullptr;
}

int widgetVR_class::FocusedBoxIndex() const {
    for (size_t i = 0; i < boxes.size(); i++)
        if (boxes[i].focused && boxes[i].page == page) return static_cast<int>(i);
    return -1;
}

void widgetVR_class::LoseFocus() {
    for (VR_box_struct &box : boxes) {
        box.focused = 0;
        box.isAllChosen = false;
    }
}

// False when the owner does not take the text.
bool widgetVR_class::EndTyping(BoxEnd end) {
    const int box = FocusedBoxIndex();
    return box < 0 || !boxFunction || boxFunction(box, end);
}

void widgetVR_class::Focus(VR_box_struct &box) {
    LoseFocus();
    box.focused = 1;
    box.isAllChosen = box.isReplacedAtOnce;
    if (box.isReplacedAtOnce) box.cursor = static_cast<int>(box.text.size());
    XPLMTakeKeyboardFocus(window);
    redraw = 1;
}

// A click elsewhere on the panel gives the keyboard back to the simulator.
void widgetVR_class::FocusBoxAt(int x, int y) {
    const auto hit = std::find_if(boxes.begin(), boxes.end(), [&](const VR_box_struct &box) {
        return box.page == page && box.enabled && isHit(box, x, y);
    });
    if (hit != boxes.end() && hit->focused) {
        hit->isAllChosen = false;
        return;
    }
    EndTyping(BoxEnd::Left);
    LoseFocus();
    if (hit != boxes.end())
        Focus(*hit);
    else if (XPLMHasKeyboardFocus(window))
        XPLMTakeKeyboardFocus(nullptr);
}

void widgetVR_class::FocusNextBox() {
    const size_t count = boxes.size(), from = static_cast<size_t>(FocusedBoxIndex());
    for (size_t i = 1; i <= count; i++) {
        VR_box_struct &box = boxes[(from + i) % count];
        if (box.page != page || !box.enabled) continue;
        Focus(box);
        return;
    }
}

void widgetVR_class::Click(int x, int y) {
    const auto hit = std::find_if(buttons.begin(), buttons.end(), [&](const VR_btn_struct &button) {
        return button.visible == 1 && button.enabled && isHit(button, x, y);
    });
    const int index = hit == buttons.end() ? -1 : static_cast<int>(hit - buttons.begin());
    FocusBoxAt(x, y);
    clickedButton = index;
    if (clickedButton >= 0)
        redraw = 1;
    else if (padFunction)
        padFunction(x, y);
    if (mouseHandler) mouseHandler();
}

void widgetVR_class::FollowMouse(int x, int y) {
    mouseX = PlaceOnScreen(x);
    mouseY = PlaceOnScreen(y);
}

int widgetVR_class::MouseL_handler(XPLMWindowID, int x, int y, XPLMMouseStatus status, void *refcon) {
    widgetVR_class &panel = *static_cast<widgetVR_class *>(refcon);
    panel.FollowMouse(x, y);
    const WindowPlace place = panel.Place();
    const int width = place.right - place.left, height = place.top - place.bottom;
    if (status == xplm_MouseUp && panel.isDragging) {
        panel.isDragging = false;
        panel.dropFunction();
    }
    if (status == xplm_MouseUp || width <= 0 || height <= 0) return 1;
    const int right = PlaceOnScreen(x) - place.left, up = PlaceOnScreen(y) - place.bottom;
    const double panelX = static_cast<double>(right) * panel.referenceWidth / width;
    const double panelY = panel.referenceHeight - static_cast<double>(up) * panel.referenceHeight / height;
    if (status == xplm_MouseDown) {
        panel.Click(right * panel.referenceWidth / width,
                    panel.referenceHeight - up * panel.referenceHeight / height);
        const bool isFree = panel.clickedButton < 0 && panel.FocusedBoxIndex() < 0;
        panel.isDragging = isFree && panel.pressFunction && panel.pressFunction(panelX, panelY);
    } else if (panel.isDragging) {
        panel.dragFunction(panelX, panelY);
    }
    return 1;
}

int widgetVR_class::MouseR_handler(XPLMWindowID, int, int, XPLMMouseStatus, void *) {
    return 1;
}

int widgetVR_class::MouseW_handler(XPLMWindowID, int x, int y, int, int clicks, void *refcon) {
    widgetVR_class &panel = *static_cast<widgetVR_class *>(refcon);
    panel.FollowMouse(x, y);
    if (clicks == 0) return 1;
    if (!panel.wheelFunction || !panel.wheelFunction(clicks)) panel.Scale(clicks);
    return 1;
}

// Return, escape and tab end the typing; tab goes on to the next box.
void widgetVR_class::PressKeyInBox(VR_box_struct &box, char key) {
    if (key == XPLM_KEY_RETURN || key == XPLM_KEY_ESCAPE) {
        if (!EndTyping(key == XPLM_KEY_RETURN ? BoxEnd::Taken : BoxEnd::Dropped) && key == XPLM_KEY_RETURN)
            return;
        LoseFocus();
        XPLMTakeKeyboardFocus(nullptr);
    } else if (key == XPLM_KEY_TAB) {
        if (EndTyping(BoxEnd::Taken)) FocusNextBox();
    } else {
        const bool isReplacing = box.isAllChosen && key != XPLM_KEY_LEFT && key != XPLM_KEY_RIGHT;
        if (isReplacing) {
            box.text.clear();
            box.cursor = 0;
        }
        box.isAllChosen = false;
        PressKey(box, key);
    }
}

// A key together with a modifier is none of the panel's.
void widgetVR_class::Keyboard_handler(XPLMWindowID, char key, XPLMKeyFlags flags, char, void *refcon,
                                      int isLosingFocus) {
    widgetVR_class &panel = *static_cast<widgetVR_class *>(refcon);
    if (isLosingFocus) {
        panel.EndTyping(BoxEnd::Left);
        panel.LoseFocus();
        panel.redraw = 1;
    }
    VR_box_struct *box = panel.FocusedBox();
    if (!box || flags != xplm_DownFlag) return;
    panel.redraw = 1;
    panel.PressKeyInBox(*box, key);
}

XPLMCursorStatus widgetVR_class::CursorStatus_handler(XPLMWindowID, int x, int y, void *refcon) {
    static_cast<widgetVR_class *>(refcon)->FollowMouse(x, y);
    return xplm_CursorDefault;
}
