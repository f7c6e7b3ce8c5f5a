// The panel's window: its place, its size, mouse and keys. What it shows is in panel_drawing.cpp. In VR the
// size belongs to the headset's geometry, on the monitor to the window's; each is kept while the other
// counts. A window of the system is drawn in boxels like one on the monitor, and placed in pixels.
#include "gfx/panel.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "gfx/fonts.h"
#include "gfx/opengl.h"
#include "gfx/palette.h"
#include "gfx/textures.h"
#include "util/find_dataref.h"
#include "util/guard.h"
#include "util/screen.h"

namespace {

const int PlaceAfterVr = 50; // of the window's lower left corner on the monitor
const float ScalePerClick = 0.1F;
const int BeforePhase = 1;
const int AnyMonitor = -1;
const double MostPixelsPerBoxel = 4;

using Geometry = WindowPlace;

Geometry Bounded(const Geometry &place) {
    return {PlaceOnScreen(place.left), PlaceOnScreen(place.top), PlaceOnScreen(place.right),
            PlaceOnScreen(place.bottom)};
}

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

// While a window is drawn: more than 1 where the user has the simulator's interface enlarged.
double PixelsPerBoxel() {
    GLdouble projection[16], modelView[16];
    GLint viewport[4];
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetDoublev(GL_MODELVIEW_MATRIX, modelView);
    glGetIntegerv(GL_VIEWPORT, viewport);
    const double pixels = std::abs(projection[0] * modelView[0]) * viewport[2] / 2;
    return pixels >= 1 && pixels <= MostPixelsPerBoxel ? pixels : 1;
}

} // namespace

void widgetVR_class::get_default_window_pos() {
    int screenLeft = 0, screenBottom = 0;
    XPLMGetScreenBoundsGlobal(&screenLeft, nullptr, nullptr, &screenBottom);
    left = PlaceOnScreen(screenLeft) + offsetX;
    bottom = PlaceOnScreen(screenBottom) + offsetY;
    right = left + (isVr ? vrWidth : referenceWidth);
    top = bottom + (isVr ? vrHeight : referenceHeight);
}

void widgetVR_class::OpenWindow() {
    XPLMCreateWindow_t wanted{};
    wanted.structSize = sizeof(wanted);
    wanted.left = left;
    wanted.top = top;
    wanted.right = right;
    wanted.bottom = bottom;
    wanted.visible = 1;
    wanted.drawWindowFunc = Guarded<"drawing a panel", Draw>;
    wanted.handleMouseClickFunc = Guarded<"a click on a panel", MouseL_handler, 1>;
    wanted.handleKeyFunc = Guarded<"a key in a panel", Keyboard_handler>;
    wanted.handleCursorFunc = Guarded<"the cursor over a panel", CursorStatus_handler>;
    wanted.handleMouseWheelFunc = Guarded<"the wheel over a panel", MouseW_handler, 1>;
    wanted.refcon = this;
    wanted.decorateAsFloatingWindow = xplm_WindowDecorationRoundRectangle;
    wanted.layer = xplm_WindowLayerFloatingWindows;
    wanted.handleRightClickFunc = Guarded<"a right click on a panel", MouseR_handler, 1>;
    window = XPLMCreateWindowEx(&wanted);
}

void widgetVR_class::Create(const std::string &title, int width, int height) {
    vrDataref = FindDataref("sim/graphics/VR/enabled");
    isVr = XPLMGetDatai(vrDataref);
    referenceWidth = currentWidth = vrWidth = width;
    referenceHeight = currentHeight = vrHeight = height;
    get_default_window_pos();
    OpenWindow();
    bufferTexture = LoadTexture("fbo"); // one for each panel
    bufferWidth = width;
    bufferHeight = height;
    SetPositioningMode();
    SetResizingLimits();
    XPLMSetWindowTitle(window, title.c_str());
    redraw = 1;
    XPLMRegisterDrawCallback(Guarded<"drawing into a panel", DrawFBO, 1>, xplm_Phase_Window, BeforePhase,
                             this);
    if (showHideCommand)
        XPLMRegisterCommandHandler(showHideCommand, Guarded<"showing a panel", CommandShowHideHandler>,
                                   BeforePhase, this);
    isCreated = true;
}

void widgetVR_class::Delete() {
    if (!isCreated) return;
    if (window) XPLMDestroyWindow(window);
    buffer.DeleteFBO();
    if (showHideCommand)
        XPLMUnregisterCommandHandler(showHideCommand, Guarded<"showing a panel", CommandShowHideHandler>,
                                     BeforePhase, this);
    XPLMUnregisterDrawCallback(Guarded<"drawing into a panel", DrawFBO, 1>, xplm_Phase_Window, BeforePhase,
                               this);
    *this = widgetVR_class();
}

int widgetVR_class::isShow() const {
    return window && XPLMGetWindowIsVisible(window) ? 1 : 0;
}

bool widgetVR_class::isOnMonitor() const {
    return !XPLMWindowIsInVR(window) && !XPLMWindowIsPoppedOut(window);
}

WindowPlace widgetVR_class::Place() const {
    WindowPlace place;
    if (XPLMWindowIsInVR(window))
        XPLMGetWindowGeometryVR(window, &place.right, &place.top);
    else
        XPLMGetWindowGeometry(window, &place.left, &place.top, &place.right, &place.bottom);
    return Bounded(place);
}

// ---- Contents ----

int widgetVR_class::AddTexture(int x, int y, int textureId, int visible, float alpha, int owner) {
    const textures_class &picture = TextureOfId(textureId);
    textures.push_back({x, y, alpha, static_cast<int>(picture.width), static_cast<int>(picture.height),
                        textureId, visible, owner});
    return static_cast<int>(textures.size()) - 1;
}

int widgetVR_class::AddButton(int style, int x, int y, int normalTexture, int selectedTexture, int visible,
                              int enabled, int selected, float alpha, int c, int d) {
    const textures_class &picture = TextureOfId(normalTexture);
    VR_btn_struct &button = buttons.emplace_back();
    button.style = style;
    button.x = x;
    button.y = y;
    button.alpha = alpha;
    button.width = static_cast<int>(picture.width);
    button.height = static_cast<int>(picture.height);
    button.normalTexture = normalTexture;
    button.selectedTexture = style == 1 ? selectedTexture : normalTexture;
    button.visible = visible;
    button.enabled = enabled;
    button.selected = selected;
    button.c = c;
    button.d = d;
    return static_cast<int>(buttons.size()) - 1;
}

int widgetVR_class::AddPlate(int x, int y, int width, int height, const std::string &caption, int font) {
    VR_btn_struct &plate = buttons.emplace_back();
    plate.isPlate = true;
    plate.x = x;
    plate.y = y;
    plate.width = width;
    plate.height = height;
    plate.caption = caption;
    plate.font = font;
    return static_cast<int>(buttons.size()) - 1;
}

int widgetVR_class::AddBox(int x, int y, int width, int height, const std::string &text, int font,
                           int background, int textColour, int maxLength, int boxPage) {
    VR_box_struct &box = boxes.emplace_back();
    box.x = x;
    box.y = y;
    box.width = width;
    box.height = height;
    box.font = font;
    box.background = background;
    box.textColour = textColour;
    box.maxLength = maxLength;
    box.page = boxPage;
    const int index = static_cast<int>(boxes.size()) - 1;
    SetBoxText(index, text);
    return index;
}

void widgetVR_class::SetBoxText(int index, const std::string &text) {
    if (index < 0 || static_cast<size_t>(index) >= boxes.size()) return;
    VR_box_struct &box = boxes[static_cast<size_t>(index)];
    box.text = text;
    box.cursor = static_cast<int>(text.size());
    box.scroll = 0;
    ShowCursor(box);
    redraw = 1;
}

void widgetVR_class::SetDrawFunction(void (*function)()) {
    drawFunction = function;
}

void widgetVR_class::SetOverlayFunction(void (*function)()) {
    overlayFunction = function;
}

void widgetVR_class::SetMouseHandlerFunction(void (*function)()) {
    mouseHandler = function;
}

void widgetVR_class::SetPadFunction(void (*function)(int x, int y)) {
    padFunction = function;
}

void widgetVR_class::SetWheelFunction(int (*function)(int clicks)) {
    wheelFunction = function;
}

void widgetVR_class::SetDragFunctions(int (*press)(double x, double y), void (*drag)(double x, double y),
                                      void (*drop)()) {
    pressFunction = press;
    dragFunction = drag;
    dropFunction = drop;
}

void widgetVR_class::SetBoxFunction(int (*function)(int box, BoxEnd end)) {
    boxFunction = function;
}

void widgetVR_class::UnselectButtons() {
    for (VR_btn_struct &button : buttons) button.selected = 0;
}

// ---- Size and place ----

void widgetVR_class::SetPositioningMode() {
    XPLMSetWindowPositioningMode(window, isVr ? xplm_WindowVR : xplm_WindowPositionFree, AnyMonitor);
}

void widgetVR_class::SetResizingLimits() {
    const auto times = [](float scale, int size) {
        return static_cast<int>(scale * static_cast<float>(size));
    };
    XPLMSetWindowResizingLimits(window, times(minimumScale, referenceWidth),
                                times(minimumScale, referenceHeight), times(maximumScale, referenceWidth),
                                times(maximumScale, referenceHeight));
}

int widgetVR_class::WidthWithinLimits(float width) const {
    const float reference = static_cast<float>(referenceWidth);
    return static_cast<int>(std::clamp(width, minimumScale * reference, maximumScale * reference));
}

int widgetVR_class::HeightOfWidth(int width) const {
    return static_cast<int>(static_cast<float>(referenceHeight) / static_cast<float>(referenceWidth)
                            * static_cast<float>(width));
}

void widgetVR_class::ChangeOrigSize(int width, int height) {
    if (!window || width <= 0 || height <= 0) return;
    WantBuffer(width, height);
    referenceWidth = width;
    referenceHeight = height;
    SetResizingLimits();
    if (XPLMWindowIsInVR(window)) {
        ReadVrWidth();
        ResizeInVr();
        return;
    }
    currentHeight = HeightOfWidth(currentWidth);
    ResizeOnMonitor(false);
}

// Gives the window its current size. It keeps its middle, or else its upper left corner. In a window of the
// system a boxel may be several pixels.
void widgetVR_class::ResizeOnMonitor(bool keepsMiddle) {
    const Geometry boxels = Place();
    Geometry place = boxels;
    int width = currentWidth, height = currentHeight;
    const bool isPoppedOut = XPLMWindowIsPoppedOut(window);
    if (isPoppedOut) {
        XPLMGetWindowGeometryOS(window, &place.left, &place.top, &place.right, &place.bottom);
        place = Bounded(place);
        const auto inPixels = [](int size, int pixels, int of) {
            const double inAll = static_cast<double>(size) * pixels / std::max(of, 1);
            return static_cast<int>(std::min<double>(inAll, FarthestBoxel));
        };
        width = inPixels(width, place.right - place.left, boxels.right - boxels.left);
        height = inPixels(height, place.top - place.bottom, boxels.top - boxels.bottom);
    }
    const int newLeft = keepsMiddle ? (place.left + place.right - width) / 2 : place.left;
    const int newBottom = keepsMiddle ? (place.bottom + place.top - height) / 2 : place.top - height;
    const auto set = isPoppedOut ? XPLMSetWindowGeometryOS : XPLMSetWindowGeometry;
    set(window, newLeft, newBottom + height, newLeft + width, newBottom);
}

void widgetVR_class::ResizeInVr() {
    vrHeight = HeightOfWidth(vrWidth);
    XPLMSetWindowGeometryVR(window, vrWidth, vrHeight);
}

void widgetVR_class::ReadVrWidth() {
    XPLMGetWindowGeometryVR(window, &vrWidth, nullptr);
    vrWidth = PlaceOnScreen(vrWidth);
}

// The pilot put the headset on or took it off.
void widgetVR_class::FollowVr() {
    SetPositioningMode();
    if (!isVr)
        XPLMSetWindowGeometry(window, PlaceAfterVr, PlaceAfterVr + currentHeight, PlaceAfterVr + currentWidth,
                              PlaceAfterVr);
}

// On the monitor the window keeps its middle.
void widgetVR_class::Scale(int clicks) {
    const float factor = 1.0F + ScalePerClick * static_cast<float>(clicks);
    if (XPLMWindowIsInVR(window)) {
        ReadVrWidth();
        vrWidth = WidthWithinLimits(factor * static_cast<float>(vrWidth));
        ResizeInVr();
        return;
    }
    currentWidth = WidthWithinLimits(factor * static_cast<float>(currentWidth));
    currentHeight = HeightOfWidth(currentWidth);
    ResizeOnMonitor(true);
}

// ---- Mouse and keys ----

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
    const Geometry place = panel.Place();
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

int widgetVR_class::CommandShowHideHandler(XPLMCommandRef, XPLMCommandPhase phase, void *refcon) {
    widgetVR_class &panel = *static_cast<widgetVR_class *>(refcon);
    if (phase != xplm_CommandEnd || !panel.isShow()) return 1;
    XPLMDestroyWindow(panel.window);
    panel.window = nullptr;
    return 1;
}

// ---- Drawing ----

void widgetVR_class::Draw(XPLMWindowID, void *refcon) {
    widgetVR_class &panel = *static_cast<widgetVR_class *>(refcon);
    const int isVrNow = XPLMGetDatai(panel.vrDataref);
    if (isVrNow != panel.isVr) {
        panel.isVr = isVrNow;
        panel.FollowVr();
        return;
    }
    const Geometry place = panel.Place();
    const int width = place.right - place.left, height = place.top - place.bottom;
    if (!XPLMWindowIsInVR(panel.window)) { // the user can also drag the window's edges
        panel.currentWidth = width;
        panel.currentHeight = height;
    }
    const double pixels = PixelsPerBoxel();
    panel.WantBuffer(static_cast<int>(std::lround(width * pixels)),
                     static_cast<int>(std::lround(height * pixels)));
    DrawTextureBufferIdXYWHCT(panel.bufferTexture, place.left, place.bottom, width, height, ColourWhite, 1.0);
    if (panel.overlayFunction && !panel.isOnMonitor()) panel.overlayFunction();
}
