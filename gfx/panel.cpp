// The panel's window: its place and its size. What it shows is in panel_drawing.cpp, mouse and keys are in
// panel_input.cpp. In VR the size belongs to the headset's geometry, on the monitor to the window's; each is
// kept while the other counts. A window of the system is drawn in boxels like one on the monitor, and placed
// in pixels.
#include "gfx/panel.h"

#include <algorithm>
#include <cmath>

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
