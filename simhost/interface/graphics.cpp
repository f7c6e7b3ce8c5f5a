// What plug-ins draw with beside OpenGL itself: the cached state, textures, texts, the dark box. A text
// leaves the state and the texture that it was drawn with, as in the simulator.
#include "XPLMGraphics.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

#include "simhost/drawing/gl_context.h"
#include "simhost/drawing/graphics_state.h"
#include "simhost/drawing/screen.h"
#include "simhost/drawing/screen_font.h"
#include "simhost/modules.h"

using namespace simhost;

namespace {

constexpr Tint DarkBox = {0.05F, 0.06F, 0.08F, 0.60F};

// Drawing is for callbacks that draw. In an ordinary frame there is nothing to see of it.
bool MayDraw(const char *function) {
    if (isDrawingFrame()) return true;
    ReportMisuse(std::string(function) + " outside a function that draws");
    return false;
}

void DrawText(const char *function, const float *colour, std::string_view text, int x, int y) {
    if (!MayDraw(function)) return;
    const float white[] = {1, 1, 1};
    if (!colour) colour = white;
    DrawPluginText(text, x, y, colour[0], colour[1], colour[2]);
}

} // namespace

void XPLMSetGraphicsState(int inEnableFog, int inNumberTexUnits, int inEnableLighting,
                          int inEnableAlphaTesting, int inEnableAlphaBlending, int inEnableDepthTesting,
                          int inEnableDepthWriting) {
    if (!ProvideGraphics()) return;
    SetGraphicsState({.fog = inEnableFog != 0,
                      .textureUnits = std::clamp(inNumberTexUnits, 0, TextureUnitCount),
                      .lighting = inEnableLighting != 0,
                      .alphaTest = inEnableAlphaTesting != 0,
                      .alphaBlend = inEnableAlphaBlending != 0,
                      .depthTest = inEnableDepthTesting != 0,
                      .depthWrite = inEnableDepthWriting != 0});
}

void XPLMBindTexture2d(int inTextureNum, int inTextureUnit) {
    if (inTextureUnit < 0 || inTextureUnit >= TextureUnitCount || inTextureNum < 0) {
        ReportMisuse("XPLMBindTexture2d with a texture or a unit that cannot be");
        return;
    }
    if (ProvideGraphics()) BindTexture(inTextureNum, inTextureUnit);
}

void XPLMGenerateTextureNumbers(int *outTextureIDs, int inCount) {
    if (!outTextureIDs) return;
    NoteOpenGlObject(__func__);
    const bool hasGraphics = ProvideGraphics();
    for (int i = 0; i < inCount; i++) {
        GLuint texture = 0;
        if (hasGraphics) glGenTextures(1, &texture);
        outTextureIDs[i] = static_cast<int>(texture);
    }
}

// The simulator's own interface texture is a plain light grey here.
int XPLMGetTexture(XPLMTextureID) {
    static GLuint texture = 0;
    if (texture != 0 || !ProvideGraphics()) return static_cast<int>(texture);
    const RunningScope scope(XPLM_PLUGIN_XPLANE, "preparing OpenGL");
    const unsigned char grey[] = {200, 200, 200, 255};
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, grey);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(bound));
    return static_cast<int>(texture);
}

void XPLMDrawTranslucentDarkBox(int inLeft, int inTop, int inRight, int inBottom) {
    if (!MayDraw(__func__)) return;
    FillRectangle(std::min(inLeft, inRight), std::max(inTop, inBottom), std::max(inLeft, inRight),
                  std::min(inTop, inBottom), DarkBox);
}

// Every text is one line; inWordWrapWidth is not looked at.
void XPLMDrawString(float *inColorRGB, int inXOffset, int inYOffset, char *inChar, int *, XPLMFontID) {
    if (inChar) DrawText(__func__, inColorRGB, inChar, inXOffset, inYOffset);
}

// At least inDigits digits before the decimal point, with zeros in front, and inDecimals behind it.
void XPLMDrawNumber(float *inColorRGB, int inXOffset, int inYOffset, double inValue, int inDigits,
                    int inDecimals, int inShowSign, XPLMFontID) {
    char digits[400], text[500];
    const int decimals = std::clamp(inDecimals, 0, 20);
    const auto [end, failed] =
        std::to_chars(digits, digits + sizeof digits, std::fabs(inValue), std::chars_format::fixed, decimals);
    if (failed != std::errc()) return;
    const std::ptrdiff_t length = end - digits;
    const std::ptrdiff_t whole = decimals == 0 ? length : length - decimals - 1;
    char *out = text;
    if (inShowSign != 0 || std::signbit(inValue)) *out++ = std::signbit(inValue) ? '-' : '+';
    for (std::ptrdiff_t i = whole; std::isfinite(inValue) && i < std::min(inDigits, 50); i++) *out++ = '0';
    out = std::copy(digits, end, out);
    DrawText(__func__, inColorRGB, {text, static_cast<std::size_t>(out - text)}, inXOffset, inYOffset);
}

void XPLMGetFontDimensions(XPLMFontID, int *outCharWidth, int *outCharHeight, int *outDigitsOnly) {
    if (outCharWidth) *outCharWidth = ScreenFontAdvance;
    if (outCharHeight) *outCharHeight = ScreenFontRowCount;
    if (outDigitsOnly) *outDigitsOnly = 0;
}

float XPLMMeasureString(XPLMFontID, const char *inChar, int inNumChars) {
    if (!inChar || inNumChars <= 0) return 0;
    const std::string_view text(inChar, strnlen(inChar, static_cast<std::size_t>(inNumChars)));
    return static_cast<float>(CountLetters(text) * ScreenFontAdvance);
}
