// Bitmap fonts: loading, measuring and drawing. A text is one batch of quads over the atlas. Only the codes
// 0 to 127 are drawn; a byte over 127 takes no room, so a text in another encoding stays harmless.
#include "gfx/fonts.h"

#include <algorithm>
#include <sstream>

#include "gfx/drawing.h"
#include "gfx/opengl.h"
#include "gfx/palette.h"
#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"

FontsState fontsState;

namespace {

const unsigned char LastDrawnCode = 127;

// The font of an id, nullptr when there is none.
font_class *FontOfId(int id) {
    return id < 0 || static_cast<size_t>(id) >= fonts.size() ? nullptr : &fonts[static_cast<size_t>(id)];
}

int DrawFont(int id, std::string_view text, double x, double y, double r, double g, double b, double t,
             int maxWidth) {
    font_class *font = FontOfId(id);
    if (font == nullptr) return TruncateToInt(x);
    return font->Draw(text, x, y, maxWidth, static_cast<float>(r), static_cast<float>(g),
                      static_cast<float>(b), static_cast<float>(t));
}

} // namespace

void font_class::Load(const std::string &path) {
    std::string text;
    const auto add = [&text](std::string_view line) {
        text.append(line).append("\n");
        return true;
    };
    if (ReadEachLine(path, SmallFile, add) != Reading::Read) {
        LogFileProblem("Font failed to load: ", path);
        return;
    }
    std::istringstream stream(text);
    ParseFont(stream, "data/fnt/" + name + ".fnt");
    if (!isSafeFileName(atlasFile)) {
        LogFileProblem("", path, "no page with a file beside it: " + atlasFile);
        return;
    }
    const std::string atlasPath = WhatPluginPath() + "data/fnt/" + atlasFile;
    atlas.name = atlasFile;
    atlas.LoadPNGTexture(atlasPath);
    if (atlas.width == 0.0) {
        LogFileProblem("Texture failed to load: ", atlasPath);
        return;
    }
    TellOfGlyphsOutsideAtlas();
}

bool font_class::isInAtlas(const CharDescriptor &glyph) const {
    return glyph.x + glyph.width <= atlas.width && glyph.y + glyph.height <= atlas.height;
}

// They are not drawn, but keep their advance, so that texts keep their widths.
void font_class::TellOfGlyphsOutsideAtlas() const {
    const auto outside = std::count_if(std::begin(charset.chars), std::end(charset.chars),
                                       [this](const CharDescriptor &glyph) { return !isInAtlas(glyph); });
    if (outside > 0)
        int2debugString("Characters outside the atlas of font " + name + ": ", static_cast<int>(outside), 1);
}

int font_class::Draw(std::string_view text, double x, double y, int maxWidth, float red, float green,
                     float blue, float alpha) {
    r = red;
    g = green;
    b = blue;
    a = alpha;
    const double left = TruncateToInt(x + offsetX); // whole boxels keep the letters sharp
    const float lineTop = static_cast<float>(TruncateToInt(y + offsetY)) + charset.lineHeight;
    font_class *const large = DrawingScale() != 1.0 ? FontOfId(larger) : nullptr;
    const bool isVisible = BeginTexturedDrawing(large ? large->atlas : atlas);
    if (isVisible) {
        glColor4f(r, g, b, a);
        glBegin(GL_QUADS);
    }
    int pen = TruncateToInt(left);
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code > LastDrawnCode) continue;
        const CharDescriptor &glyph = charset.chars[code];
        const double next = pen + static_cast<double>(glyph.xadvance);
        if (maxWidth != -1 && next >= left + maxWidth) break;
        if (isVisible && large) AddLargerGlyph(*large, code, static_cast<float>(pen), lineTop);
        if (isVisible && !large) AddGlyph(glyph, static_cast<float>(pen), lineTop, 1.0F);
        pen = TruncateToInt(next);
    }
    if (isVisible) glEnd(); // the atlas stays bound: unbinding between texts doubles what they cost
    return pen;
}

// Between glBegin and glEnd. size is times the font's own.
void font_class::AddGlyph(const CharDescriptor &glyph, float pen, float lineTop, float size) const {
    if (glyph.width == 0 || glyph.height == 0 || !isInAtlas(glyph)) return;
    const float left = pen + glyph.xoffset * size, right = left + static_cast<float>(glyph.width) * size;
    const float top = lineTop - glyph.yoffset * size, bottom = top - static_cast<float>(glyph.height) * size;
    const float columns = static_cast<float>(atlas.width), rows = static_cast<float>(atlas.height);
    const float textureLeft = glyph.x / columns, textureRight = (glyph.x + glyph.width) / columns;
    const float textureTop = glyph.y / rows, textureBottom = (glyph.y + glyph.height) / rows;
    glTexCoord2f(textureLeft, textureTop);
    glVertex2f(left, top);
    glTexCoord2f(textureRight, textureTop);
    glVertex2f(right, top);
    glTexCoord2f(textureRight, textureBottom);
    glVertex2f(right, bottom);
    glTexCoord2f(textureLeft, textureBottom);
    glVertex2f(left, bottom);
}

// In the middle of the room that the letter has in this font, on the same line.
void font_class::AddLargerGlyph(const font_class &from, unsigned char code, float pen, float lineTop) const {
    const CharDescriptor &glyph = from.charset.chars[code];
    const float room = charset.chars[code].xadvance - glyph.xadvance * largerSize;
    const float baseline = lineTop - charset.base;
    from.AddGlyph(glyph, pen + room / 2, baseline + from.charset.base * largerSize, largerSize);
}

int font_class::MeasureString(std::string_view text) const {
    int width = 0;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code <= LastDrawnCode)
            width = TruncateToInt(width + static_cast<double>(charset.chars[code].xadvance));
    }
    return width;
}

void LoadFonts() {
    fnt_Main = LoadFont("verd_17", 0, 0);
    fnt_Led = LoadFont("led_36", 0, 0);
}

int LoadFont(const std::string &name, int offsetX, int offsetY) {
    const int id = static_cast<int>(fonts.size());
    font_class &font = fonts.emplace_back();
    font.name = name;
    font.Load(WhatPluginPath() + "data/fnt/" + name + ".fnt");
    font.offsetX = offsetX;
    font.offsetY = offsetY;
    fontsMap.insert({name, id});
    return id;
}

int ProvidePanelFonts() {
    const auto provide = [](const char *name) {
        const auto found = fontsMap.find(name);
        return found == fontsMap.end() ? LoadFont(name, 0, 0) : found->second;
    };
    const int smallFont = provide("verd_14"), large = provide("verd_68");
    fonts[static_cast<size_t>(large)].atlas.isShrunk = true;
    const std::pair<int, float> sizes[] = {{fnt_Main, 14.0F / 56}, {smallFont, 11.0F / 56}}; // of their ems
    for (const auto &[id, size] : sizes) {
        if (font_class *font = FontOfId(id)) {
            font->larger = large;
            font->largerSize = size;
        }
    }
    return smallFont;
}

void UnLoadFonts() {
    for (font_class &font : fonts) font.atlas.Delete();
    fonts.clear();
    fontsMap.clear();
}

int DrawFontIdSXYC(int id, std::string_view text, double x, double y, int C, int maxWidth) {
    return DrawFontIdSXYCB(id, text, x, y, C, 1.0, maxWidth);
}

int DrawFontIdSXYCL(int id, std::string_view text, double x, double y, int C, double L, int maxWidth) {
    const RGB_Col &colour = PaletteColour(C);
    return DrawFont(id, text, x, y, colour.r * L, colour.g * L, colour.b * L, 1.0, maxWidth);
}

int DrawFontIdSXYCB(int id, std::string_view text, double x, double y, int C, double B, int maxWidth) {
    const RGB_Col &colour = PaletteColour(C);
    return DrawFont(id, text, x, y, colour.r, colour.g, colour.b, B, maxWidth);
}

int DrawFontIdSXYRGBT(int id, std::string_view text, double x, double y, double r, double g, double b,
                      double t, int maxWidth) {
    return DrawFont(id, text, x, y, r, g, b, t, maxWidth);
}

int DrawRotatedFontIdASXYC(int id, double angle, std::string_view text, double x, double y, int C) {
    glPushMatrix();
    glTranslated(x, y, 0);
    glRotated(angle, 0, 0, -1);
    glTranslated(-x, -y, 0);
    const int pen = DrawFontIdSXYC(id, text, x, y, C);
    glPopMatrix();
    return pen;
}

int LenFontIdS(int id, std::string_view text) {
    const font_class *font = FontOfId(id);
    return font == nullptr ? 0 : font->MeasureString(text);
}

void ResetFonts() {
    MakeFresh(fontsState);
}
