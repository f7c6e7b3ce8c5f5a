// What a panel shows, rendered into its buffer in a draw callback of its own. Items are placed from the top
// down, OpenGL counts from the bottom up: an item's lower edge lies at referenceHeight - y.
#include "gfx/panel.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "gfx/drawing.h"
#include "gfx/fonts.h"
#include "gfx/opengl.h"
#include "gfx/palette.h"
#include "gfx/textures.h"

namespace {

const int LargestBuffer = 4096;    // pixels
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

// The outermost boxels of a rectangle, but not less than a pixel.
void DrawFrame(int x, int y, int width, int height, int colour) {
    const double thick = std::max(1.0, 1.0 / DrawingScale()), right = x + width, top = y + height;
    FillRestangleCT(x, y, right, y + thick, colour, 1.0);
    FillRestangleCT(x, top - thick, right, top, colour, 1.0);
    FillRestangleCT(x, y + thick, x + thick, top - thick, colour, 1.0);
    FillRestangleCT(right - thick, y + thick, right, top - thick, colour, 1.0);
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
    FillRestangleCT(box.x, bottom, box.x + box.width, bottom + box.height,
                    box.enabled ? box.background : ColourGrey, 1.0);
    DrawFrame(box.x, bottom, box.width, box.height, ColourBlack);
    if (box.focused && box.isReplacedAtOnce) DrawFrame(box.x, bottom, box.width, box.height, ColourOrange);

    const int textX = box.x + BoxTextMargin;
    const int textY = bottom + (box.height - LineHeight(box.font)) / 2;
    const int widest = box.width - 2 * BoxTextMargin + 1; // a text ends before what would reach this
    const std::string_view shown = std::string_view(box.text).substr(static_cast<size_t>(box.scroll));
    if (box.isAllChosen)
        FillRestangleCT(textX - 1, bottom + 2, textX + LenFontIdS(box.font, shown) + 1,
                        bottom + box.height - 2, ColourCyan, 1.0);
    DrawFontIdSXYC(box.font, shown, textX, textY, box.textColour, widest);
    if (!box.focused || box.isAllChosen) return;
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
        if (!button.visible || button.isPlate) continue;
        const int texture = button.selected ? button.selectedTexture : button.normalTexture;
        if (texture != picture) flush();
        picture = texture;
        copies.push_back({static_cast<double>(button.x), static_cast<double>(referenceHeight - button.y),
                          isMarked(button) ? ColourYellow : ColourWhite, static_cast<double>(button.alpha)});
    }
    flush();
    for (const VR_btn_struct &button : buttons)
        if (button.visible && button.isPlate) DrawPlate(button);
    for (const VR_btn_struct &button : buttons)
        if (button.visible && !button.isPlate && isMarked(button))
            DrawFrame(button.x - SelectedFrameMargin, referenceHeight - button.y - SelectedFrameMargin,
                      button.width + 2 * SelectedFrameMargin, button.height + 2 * SelectedFrameMargin,
                      ColourYellow);
}

// A caption in the middle of the plate, or at its lower edge below the picture.
void widgetVR_class::DrawPlate(const VR_btn_struct &plate) const {
    const int bottom = referenceHeight - plate.y, right = plate.x + plate.width, top = bottom + plate.height;
    const double bright = plate.enabled ? 1.0 : 0.6;
    if (plate.selected)
        FillRestangleRGBT(plate.x, bottom, right, top, 0.84, 0.70, 0.37, 1.0);
    else
        FillRestangleRGBT(plate.x, bottom, right, top, 0.20 * bright, 0.25 * bright, 0.31 * bright, 1.0);
    const int room = std::max(2, plate.width - LenFontIdS(plate.font, plate.caption));
    const int captionX = plate.x + room / 2;
    int captionY = bottom + (plate.height - LineHeight(plate.font)) / 2;
    if (plate.picture >= 0) {
        const textures_class &picture = TextureOfId(plate.picture);
        const double x = plate.x + (plate.width - picture.width) / 2;
        const auto draw = plate.isPictureMirrored ? DrawMirroredTextureIdXYWHCT : DrawTextureIdXYWHCT;
        draw(plate.picture, x, top - picture.height + 2, picture.width, picture.height, ColourWhite, 1.0);
        captionY = bottom;
    }
    DrawFontIdSXYCL(plate.font, plate.caption, captionX, captionY, plate.selected ? ColourBlack : ColourWhite,
                    bright, plate.width);
}

void widgetVR_class::WantBuffer(int width, int height) {
    bufferWidth = std::clamp(width, 1, LargestBuffer);
    bufferHeight = std::clamp(height, 1, LargestBuffer);
}

// Made by a drawing frame; one that cannot be had is tried once. False when there is none.
bool widgetVR_class::ProvideBuffer() {
    if (triedWidth != bufferWidth || triedHeight != bufferHeight)
        buffer.MakeFBO(TextureOfId(bufferTexture).Provide(), bufferWidth, bufferHeight);
    triedWidth = bufferWidth;
    triedHeight = bufferHeight;
    return buffer.framebuffer != 0;
}

void widgetVR_class::RenderIntoBuffer() {
    const double across = static_cast<double>(buffer.width) / referenceWidth,
                 upwards = static_cast<double>(buffer.height) / referenceHeight;
    SetDrawingScale(across);
    glPushMatrix();
    glScaled(across, upwards, 1.0);
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
    glPopMatrix();
    SetDrawingScale(1.0);
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
