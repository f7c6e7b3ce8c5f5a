// What a panel shows, rendered into its buffer in a draw callback of its own. Items are placed from the top
// down, OpenGL counts from the bottom up: an item's lower edge lies at referenceHeight - y.
#include "gfx/panel.h"

#include <string_view>
#include <vector>

#include "gfx/drawing.h"
#include "gfx/fonts.h"
#include "gfx/opengl.h"
#include "gfx/palette.h"
#include "gfx/textures.h"

namespace {

const double FrameWidth = 1.0;
const int SelectedFrameMargin = 2; // around a selected button

// The shade is drawn with the frame's colour at half its strength.
const double ShadeAlpha = 0.5;

// What is drawn along the middles of pixels lies on the same pixels everywhere; a line along an edge is
// inside.
template <typename Drawing> void DrawOnPixels(Drawing draw) {
    glPushMatrix();
    glTranslated(0.5, 0.5, 0.0);
    draw();
    glPopMatrix();
}

// The outermost pixels of a rectangle.
void DrawFrame(int x, int y, int width, int height, int colour) {
    DrawOnPixels([&] { DrawRestangleCT(x, y, x + width - 1, y + height - 1, colour, FrameWidth, 1.0); });
}

// A button without a picture of its own for the selected state.
bool isMarked(const VR_btn_struct &button) {
    return button.selected && button.style != 1;
}

int LineHeight(int font) {
    const bool isFont = font >= 0 && static_cast<size_t>(font) < fonts.size();
    return isFont ? fonts[static_cast<size_t>(font)].charset.lineHeight : 0;
}

} // namespace

void widgetVR_class::DrawBox(const VR_box_struct &box) const {
    const int bottom = referenceHeight - box.y;
    FillRestangleCT(box.x, bottom, box.x + box.width, bottom + box.height, box.background, 1.0);
    DrawFrame(box.x, bottom, box.width, box.height, ColourBlack);

    const int textX = box.x + BoxTextMargin;
    const int textY = bottom + (box.height - LineHeight(box.font)) / 2;
    const int widest = box.width - 2 * BoxTextMargin + 1; // a text ends before what would reach this
    const std::string_view shown = std::string_view(box.text).substr(static_cast<size_t>(box.scroll));
    DrawFontIdSXYC(box.font, shown, textX, textY, box.textColour, widest);
    if (!box.focused) return;
    const std::string_view before = shown.substr(0, static_cast<size_t>(box.cursor - box.scroll));
    const int cursorX = textX + LenFontIdS(box.font, before) - LenFontIdS(box.font, "|") / 2;
    DrawFontIdSXYC(box.font, "|", cursorX, textY, box.textColour);
}

// Neighbours with the same picture are drawn at once; the frames of selected ones come last.
void widgetVR_class::DrawButtons() const {
    static std::vector<TextureCopy> copies; // kept for its memory
    int picture = -1;
    const auto flush = [&] {
        DrawTextureIdCopies(picture, copies);
        copies.clear();
    };
    for (const VR_btn_struct &button : buttons) {
        if (!button.visible) continue;
        const int texture = button.selected ? button.selectedTexture : button.normalTexture;
        if (texture != picture) flush();
        picture = texture;
        copies.push_back({static_cast<double>(button.x), static_cast<double>(referenceHeight - button.y),
                          isMarked(button) ? ColourYellow : ColourWhite, static_cast<double>(button.alpha)});
    }
    flush();
    for (const VR_btn_struct &button : buttons)
        if (button.visible && isMarked(button))
            DrawFrame(button.x - SelectedFrameMargin, referenceHeight - button.y - SelectedFrameMargin,
                      button.width + 2 * SelectedFrameMargin, button.height + 2 * SelectedFrameMargin,
                      ColourYellow);
}

// Made by a drawing frame, and tried once. False when there is none.
bool widgetVR_class::ProvideBuffer() {
    if (isBufferWanted) buffer.MakeFBO(TextureOfId(bufferTexture).Provide(), referenceWidth, referenceHeight);
    isBufferWanted = false;
    return buffer.framebuffer != 0;
}

void widgetVR_class::RenderIntoBuffer() {
    if (drawFunction) DrawOnPixels(drawFunction);
    for (const VR_texture_struct &picture : textures)
        if (picture.visible)
            DrawTextureIdXYCT(picture.texture, picture.x, referenceHeight - picture.y, ColourWhite,
                              static_cast<double>(picture.alpha));
    for (const VR_box_struct &box : boxes)
        if (box.page == page) DrawBox(box);
    for (const VR_rectangle_struct &rectangle : rectangles) {
        const int x = rectangle.x, bottom = referenceHeight - rectangle.y;
        DrawFrame(x, bottom, rectangle.width, rectangle.height, ColourBlack);
        FillRestangleCT(x, bottom, x + rectangle.width, bottom + rectangle.height, ColourBlack, ShadeAlpha);
    }
    DrawButtons();
    for (const VR_text_struct &text : texts)
        DrawFontIdSXYC(text.font, text.text, text.x, referenceHeight - text.y, text.colour);
}

// Every frame while the window is open: the redraw flag, once set, stays. While it is closed a frame costs
// the question whether it is.
int widgetVR_class::DrawFBO(XPLMDrawingPhase, int, void *refcon) {
    widgetVR_class &panel = *static_cast<widgetVR_class *>(refcon);
    if (panel.redraw != 1 || !panel.isShow() || !panel.ProvideBuffer() || !panel.buffer.Bind()) return 1;
    panel.RenderIntoBuffer();
    panel.buffer.Unbind();
    panel.redraw = 1;
    return 1;
}
