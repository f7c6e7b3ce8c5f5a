// Makes the fonts under data/fnt/: "verd_17", "verd_14" and "verd_68" from a TrueType font, and "led_36" from
// segments drawn here.
// Building the plug-in needs neither this program nor FreeType. On Debian, with libfreetype-dev and
// fonts-dejavu-core (what is committed came from FreeType 2.12.1 and DejaVu 2.37):
//
//     cmake --preset release && ninja -C build/release make_fonts
//     build/release/tools/make_fonts /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf data/fnt
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_MODULE_H
#include <lodepng.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

// A character's picture: coverage, 0 to 255, rows from the top.
struct Glyph {
    int code = 0;
    int width = 0, height = 0;
    int xOffset = 0, yOffset = 0; // of the picture's upper left corner, from the pen and the line's top
    int advance = 0;
    std::vector<unsigned char> coverage = {};
    int x = 0, y = 0; // in the atlas
};

struct Font {
    std::string name, face;
    int size = 0, lineHeight = 0, base = 0;
    std::vector<Glyph> glyphs = {};
    int atlasWidth = 256, atlasHeight = 0;
    int gap = 1; // between pictures, so that scaled letters do not touch their neighbours
};

[[noreturn]] void Stop(const std::string &why) {
    std::fprintf(stderr, "make_fonts: %s\n", why.c_str());
    std::exit(1);
}

// ---- The atlas ----

// Row by row in the order of the codes; the height is what they need, rounded up to a multiple of 4.
void PlaceGlyphs(Font &font) {
    const int gap = font.gap;
    int x = gap, y = gap, rowHeight = 0;
    for (Glyph &glyph : font.glyphs) {
        if (x + glyph.width + gap > font.atlasWidth) {
            x = gap;
            y += rowHeight + gap;
            rowHeight = 0;
        }
        glyph.x = x;
        glyph.y = y;
        x += glyph.width + gap;
        rowHeight = std::max(rowHeight, glyph.height);
    }
    font.atlasHeight = (y + rowHeight + gap + 3) / 4 * 4;
}

// White everywhere, with the coverage as alpha, so that no dark seam shows where a letter ends.
void WriteAtlas(const Font &font, const std::string &path) {
    const size_t width = static_cast<size_t>(font.atlasWidth);
    std::vector<unsigned char> pixels(width * static_cast<size_t>(font.atlasHeight) * 4, 255);
    for (size_t i = 3; i < pixels.size(); i += 4) pixels[i] = 0;
    for (const Glyph &glyph : font.glyphs)
        for (int row = 0; row < glyph.height; row++)
            for (int column = 0; column < glyph.width; column++)
                pixels[(static_cast<size_t>(glyph.y + row) * width + static_cast<size_t>(glyph.x + column))
                           * 4
                       + 3] = glyph.coverage[static_cast<size_t>(row * glyph.width + column)];
    const unsigned failed = lodepng::encode(path, pixels, static_cast<unsigned>(font.atlasWidth),
                                            static_cast<unsigned>(font.atlasHeight));
    if (failed != 0) Stop(path + ": " + lodepng_error_text(failed));
}

void WriteDescription(const Font &font, const std::string &path) {
    std::ofstream out(path);
    out << "info face=\"" << font.face << "\" size=" << font.size
        << " bold=0 italic=0 charset=\"\" unicode=1 stretchH=100 smooth=1 aa=1 padding=0,0,0,0 spacing="
        << font.gap << "," << font.gap << "\n";
    out << "common lineHeight=" << font.lineHeight << " base=" << font.base << " scaleW=" << font.atlasWidth
        << " scaleH=" << font.atlasHeight << " pages=1 packed=0\n";
    out << "page id=0 file=\"" << font.name << ".png\"\n";
    out << "chars count=" << font.glyphs.size() << "\n";
    for (const Glyph &glyph : font.glyphs)
        out << "char id=" << glyph.code << " x=" << glyph.x << " y=" << glyph.y << " width=" << glyph.width
            << " height=" << glyph.height << " xoffset=" << glyph.xOffset << " yoffset=" << glyph.yOffset
            << " xadvance=" << glyph.advance << " page=0 chnl=15\n";
    if (!out.flush()) Stop(path + " cannot be written");
}

void WriteFont(Font font, const std::string &folder) {
    PlaceGlyphs(font);
    WriteAtlas(font, folder + "/" + font.name + ".png");
    WriteDescription(font, folder + "/" + font.name + ".fnt");
}

// ---- "verd_…" ----

// Sizes in pixels. A line is 17 pixels high where an em has 14.
struct TextSize {
    int em, lineHeight, base;
    int lastCode; // the plug-in draws none above 127
};
const TextSize Main = {14, 17, 13, 255}, Small = {11, 14, 11, 126};

// For panels that are drawn at several times their size: smaller pictures are made of this one's, so its
// letters keep their own forms, and stand far apart.
const TextSize Large = {56, 68, 52, 126};
const int LargeGap = 8, LargeAtlasWidth = 512;

// Stems are fitted to whole pixels in both directions, as the font's own instructions want it.
const FT_UInt FullHinting = 35;

Glyph RenderCharacter(FT_Face face, int code, int base, bool isHinted) {
    const FT_Int32 flags =
        FT_LOAD_RENDER | (isHinted ? FT_LOAD_TARGET_NORMAL : static_cast<FT_Int32>(FT_LOAD_NO_HINTING));
    if (FT_Load_Char(face, static_cast<FT_ULong>(code), flags) != 0)
        Stop("the font has no character " + std::to_string(code));
    const FT_GlyphSlot slot = face->glyph;
    const FT_Bitmap &bitmap = slot->bitmap;
    Glyph glyph = {.code = code,
                   .width = static_cast<int>(bitmap.width),
                   .height = static_cast<int>(bitmap.rows),
                   .xOffset = slot->bitmap_left,
                   .yOffset = base - slot->bitmap_top,
                   .advance = static_cast<int>((slot->advance.x + 32) >> 6)};
    for (int row = 0; row < glyph.height; row++) {
        const unsigned char *from = bitmap.buffer + row * bitmap.pitch;
        glyph.coverage.insert(glyph.coverage.end(), from, from + glyph.width);
    }
    return glyph;
}

Font MakeTextFont(const char *file, const TextSize &size) {
    FT_Library library;
    FT_Face face;
    if (FT_Init_FreeType(&library) != 0) Stop("FreeType does not start");
    FT_UInt version = FullHinting;
    if (FT_Property_Set(library, "truetype", "interpreter-version", &version) != 0)
        Stop("this FreeType cannot hint fully");
    if (FT_New_Face(library, file, 0, &face) != 0) Stop(std::string("cannot read the font ") + file);
    FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(size.em));
    const bool isLarge = size.em == Large.em;
    Font font = {.name = "verd_" + std::to_string(size.lineHeight),
                 .face = face->family_name,
                 .size = size.lineHeight,
                 .lineHeight = size.lineHeight,
                 .base = size.base};
    if (isLarge) {
        font.gap = LargeGap;
        font.atlasWidth = LargeAtlasWidth;
    }
    for (int code = 32; code <= size.lastCode; code++)
        if (code < 127 || code >= 160)
            font.glyphs.push_back(RenderCharacter(face, code, font.base, !isLarge));
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return font;
}

// ---- "led_36" ----

// The segments' bits: a the upper bar, then clockwise b to f, g the middle bar.
enum { a = 1, b = 2, c = 4, d = 8, e = 16, f = 32, g = 64 };

// Characters without a form of their own in seven segments are left out. Small letters take the capital's
// form, and the other way round, where there is only one.
const std::map<char, int> Segments = {
    {' ', 0},
    {'0', a + b + c + d + e + f},
    {'1', b + c},
    {'2', a + b + g + e + d},
    {'3', a + b + g + c + d},
    {'4', f + g + b + c},
    {'5', a + f + g + c + d},
    {'6', a + f + g + e + d + c},
    {'7', a + b + c},
    {'8', a + b + c + d + e + f + g},
    {'9', a + b + c + d + f + g},
    {'A', a + b + c + e + f + g},
    {'b', c + d + e + f + g},
    {'C', a + d + e + f},
    {'c', d + e + g},
    {'d', b + c + d + e + g},
    {'E', a + d + e + f + g},
    {'F', a + e + f + g},
    {'G', a + c + d + e + f},
    {'H', b + c + e + f + g},
    {'h', c + e + f + g},
    {'I', e + f},
    {'i', e},
    {'J', b + c + d + e},
    {'L', d + e + f},
    {'n', c + e + g},
    {'N', a + b + c + e + f},
    {'O', a + b + c + d + e + f},
    {'o', c + d + e + g},
    {'P', a + b + e + f + g},
    {'q', a + b + c + f + g},
    {'r', e + g},
    {'S', a + f + g + c + d},
    {'t', d + e + f + g},
    {'U', b + c + d + e + f},
    {'u', c + d + e},
    {'Y', b + c + d + f + g},
    {'Z', a + b + g + e + d},
    {'-', g},
    {'_', d},
    {'=', d + g},
    {'[', a + d + e + f},
    {']', a + b + c + d},
    {'\'', f},
    {'"', b + f},
    {'?', a + b + e + g},
};

// All lengths in sixteenths of a pixel, so that the edges come out the same everywhere.
const int Fine = 16;
const int LedWidth = 18, LedHeight = 32, LedTop = 2, LedLeft = 2, LedAdvance = 22; // pixels
const int HalfThick = 2 * Fine;                                                    // of a segment
const int Between = Fine / 2; // half the gap between two segments' tips
const int DotSide = 4;        // of "." and ":", pixels

// A segment from one corner of the digit to the next, lying or standing: a bar with pointed ends.
struct Bar {
    int segment, x, y;
    bool isLying;
};
const int Right = LedWidth * Fine - HalfThick, Middle = LedHeight / 2 * Fine,
          Lowest = LedHeight * Fine - HalfThick;
const Bar Bars[] = {{a, HalfThick, HalfThick, true}, {b, Right, HalfThick, false},
                    {c, Right, Middle, false},       {d, HalfThick, Lowest, true},
                    {e, HalfThick, Middle, false},   {f, HalfThick, HalfThick, false},
                    {g, HalfThick, Middle, true}};

bool Covers(const Bar &bar, int x, int y) {
    const int length = bar.isLying ? Right - HalfThick : Middle - HalfThick;
    const int along = bar.isLying ? x - bar.x : y - bar.y;
    const int across = std::abs(bar.isLying ? y - bar.y : x - bar.x);
    if (across >= HalfThick) return false;
    return along - Between >= across && length - along - Between >= across;
}

// Between 0 and 255: how much of a pixel the lit segments cover, sampled at the middles of its parts.
unsigned char Coverage(int segments, int column, int row) {
    int covered = 0;
    for (int y = 0; y < Fine; y++)
        for (int x = 0; x < Fine; x++)
            covered += std::any_of(std::begin(Bars), std::end(Bars), [&](const Bar &bar) {
                return (segments & bar.segment) != 0 && Covers(bar, column * Fine + x, row * Fine + y);
            });
    return static_cast<unsigned char>(covered * 255 / (Fine * Fine));
}

Glyph DrawSegments(int code, int segments) {
    Glyph glyph = {.code = code, .xOffset = LedLeft, .yOffset = LedTop, .advance = LedAdvance};
    if (segments == 0) return glyph;
    glyph.width = LedWidth;
    glyph.height = LedHeight;
    for (int row = 0; row < LedHeight; row++)
        for (int column = 0; column < LedWidth; column++)
            glyph.coverage.push_back(Coverage(segments, column, row));
    return glyph;
}

// Dots stand between digits and take little room of their own. Rows from the digits' top.
Glyph DrawDots(int code, const std::vector<int> &rows) {
    Glyph glyph = {.code = code,
                   .width = DotSide,
                   .height = rows.back() - rows.front() + DotSide,
                   .xOffset = LedLeft,
                   .yOffset = LedTop + rows.front(),
                   .advance = LedLeft + DotSide + LedLeft};
    glyph.coverage.assign(static_cast<size_t>(glyph.width * glyph.height), 0);
    for (int row : rows)
        std::fill_n(glyph.coverage.begin() + (row - rows.front()) * DotSide, DotSide * DotSide, 255);
    return glyph;
}

char OtherCase(char letter) {
    if (letter >= 'a' && letter <= 'z') return static_cast<char>(letter - 'a' + 'A');
    if (letter >= 'A' && letter <= 'Z') return static_cast<char>(letter - 'A' + 'a');
    return letter;
}

Font MakeLedFont() {
    Font font = {.name = "led_36", .face = "Seven segments", .size = 36, .lineHeight = 36, .base = 34};
    for (char code = ' '; code <= '~'; code++) {
        if (code == '.' || code == ',') {
            font.glyphs.push_back(DrawDots(code, {LedHeight - DotSide}));
        } else if (code == ':') {
            font.glyphs.push_back(DrawDots(code, {8, LedHeight - 8 - DotSide}));
        } else if (const auto own = Segments.find(code); own != Segments.end()) {
            font.glyphs.push_back(DrawSegments(code, own->second));
        } else if (const auto other = Segments.find(OtherCase(code)); other != Segments.end()) {
            font.glyphs.push_back(DrawSegments(code, other->second));
        }
    }
    return font;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3) Stop("usage: make_fonts FONT.ttf FOLDER");
    for (const TextSize &size : {Main, Small, Large}) WriteFont(MakeTextFont(argv[1], size), argv[2]);
    WriteFont(MakeLedFont(), argv[2]);
    return 0;
}
