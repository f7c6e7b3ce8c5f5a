// Bitmap fonts: an atlas picture and its description in the BMFont text format, addressed by a small id.
#pragma once

#include <cstdint>
#include <istream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "gfx/textures.h"

struct CharDescriptor {
    std::uint16_t x = 0, y = 0, width = 0, height = 0; // in the atlas, pixels from its upper left
    float xoffset = 0.0F, yoffset = 0.0F, xadvance = 0.0F;
    std::uint16_t page = 0;
};

struct Charset {
    std::uint16_t lineHeight = 0; // between lines, pixels
    std::uint16_t base = 0;       // of the baseline below a line's top
    std::uint16_t scaleW = 0, scaleH = 0;
    std::uint16_t pages = 0;   // only one is used
    CharDescriptor chars[256]; // by character code; zero where the font has none
};

struct font_class {
    Charset charset;
    int offsetX = 0, offsetY = 0; // added to every place
    std::string name;
    std::string atlasFile; // of the "page" line
    textures_class atlas;
    int larger = -1;      // font from which letters are drawn where a boxel is not a pixel; -1: none
    float largerSize = 1; // this one's, times the larger one's
    float r = 1.0F, g = 1.0F, b = 1.0F, a = 1.0F; // of what is drawn now

    // Reads a description and loads its atlas. What is missing or malformed gives a line in the log; texts
    // then draw nothing and measure 0.
    void Load(const std::string &path);
    void ParseFont(std::istream &stream, const std::string &file = "a font"); // the file's name, for the log

    // Draws one line of text, y its lower edge (not the baseline); maxWidth -1: however long it is, else the
    // text ends before the character that would reach that width. Returns where the next text would begin.
    int Draw(std::string_view text, double x, double y, int maxWidth, float r, float g, float b, float a);

    // The width of a text, boxels; each character's advance is cut to a whole number in turn.
    int MeasureString(std::string_view text) const;

private:
    bool isInAtlas(const CharDescriptor &glyph) const;
    void TellOfGlyphsOutsideAtlas() const;
    void AddGlyph(const CharDescriptor &glyph, float pen, float lineTop, float size) const;
    void AddLargerGlyph(const font_class &from, unsigned char code, float pen, float lineTop) const;
};

struct FontsState {
    std::vector<font_class> fonts; // the id is the index
    std::map<std::string, int> byName;
    int main = 0; // "verd_17", the texts of panels and editor
    int led = 0;  // "led_36", large digits
};
extern FontsState fontsState;
inline std::vector<font_class> &fonts = fontsState.fonts;
inline std::map<std::string, int> &fontsMap = fontsState.byName;
inline int &fnt_Main = fontsState.main, &fnt_Led = fontsState.led;

void LoadFonts();

// Loads "data/fnt/" + name + ".fnt" of the plug-in's folder; returns the id.
int LoadFont(const std::string &name, int offsetX, int offsetY);

// For panels, which are drawn in many sizes: loads "verd_14", small letters, and "verd_68", from which those
// and the main font's letters are drawn where a boxel is not a pixel. Returns the small font's id.
int ProvidePanelFonts();

// Gives the atlases back to OpenGL and forgets the fonts.
void UnLoadFonts();

// Drawing by id; an id that there is not draws nothing. S the text, XY the left end and lower edge of the
// line, C the palette's colour. Each returns where the next text would begin.
int DrawFontIdSXYC(int id, std::string_view text, double x, double y, int C, int maxWidth = -1);
// L: the colour's brightness, 0 black to 1.
int DrawFontIdSXYCL(int id, std::string_view text, double x, double y, int C, double L, int maxWidth = -1);
// B: how far it blends over what is below, 0 to 1.
int DrawFontIdSXYCB(int id, std::string_view text, double x, double y, int C, double B, int maxWidth = -1);
int DrawFontIdSXYRGBT(int id, std::string_view text, double x, double y, double r, double g, double b,
                      double t, int maxWidth = -1);
// A: degrees, clockwise about (x, y).
int DrawRotatedFontIdASXYC(int id, double angle, std::string_view text, double x, double y, int C);

int LenFontIdS(int id, std::string_view text);

// Everything as when the program starts.
void ResetFonts();
