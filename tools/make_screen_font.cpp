// Makes simhost/drawing/screen_font_table.cpp, the letters of the headless simulator's screen, from a
// TrueType font. Building the simulator needs neither this program nor a font. On Debian, with
// libfreetype-dev and fonts-dejavu-core:
//
//     g++ -std=c++20 tools/make_screen_font.cpp $(pkg-config --cflags --libs freetype2) -o make_screen_font
//     ./make_screen_font /usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf >
//     simhost/drawing/screen_font_table.cpp
#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdio>
#include <cstdlib>

constexpr int Pixels = 12; // of the font's em; 7 from letter to letter
constexpr int Ascent = 10, Rows = 13, Columns = 8;

constexpr const char *Head =
    R"(// Made by tools/make_screen_font.cpp from DejaVu Sans Mono, which is derived from Bitstream Vera:
//
// Copyright (c) 2003 by Bitstream, Inc. All Rights Reserved. Bitstream Vera is a trademark of Bitstream, Inc.
// DejaVu changes are in public domain.
//
// Permission is hereby granted, free of charge, to any person obtaining a copy of the fonts accompanying this
// license ("Fonts") and associated documentation files (the "Font Software"), to reproduce and distribute the
// Font Software, including without limitation the rights to use, copy, merge, publish, distribute, and/or sell
// copies of the Font Software, and to permit persons to whom the Font Software is furnished to do so, subject
// to the following conditions:
//
// The above copyright and trademark notices and this permission notice shall be included in all copies of one
// or more of the Font Software typefaces.
//
// The Font Software may be modified, altered, or added to, and in particular the designs of glyphs or
// characters in the Fonts may be modified and additional glyphs or characters may be added to the Fonts, only
// if the fonts are renamed to names not containing either the words "Bitstream" or the word "Vera".
//
// This License becomes null and void to the extent applicable to Fonts or Font Software that has been modified
// and is distributed under the "Bitstream Vera" names.
//
// The Font Software may be sold as part of a larger software package but no copy of one or more of the Font
// Software typefaces may be sold by itself.
//
// THE FONT SOFTWARE IS PROVIDED "AS IS", WITHOUT WARRANTY OF ANY KIND, EXPRESS OR IMPLIED, INCLUDING BUT NOT
// LIMITED TO ANY WARRANTIES OF MERCHANTABILITY, FITNESS FOR A PARTICULAR PURPOSE AND NONINFRINGEMENT OF
// COPYRIGHT, PATENT, TRADEMARK, OR OTHER RIGHT. IN NO EVENT SHALL BITSTREAM OR THE GNOME FOUNDATION BE LIABLE
// FOR ANY CLAIM, DAMAGES OR OTHER LIABILITY, INCLUDING ANY GENERAL, SPECIAL, INDIRECT, INCIDENTAL, OR
// CONSEQUENTIAL DAMAGES, WHETHER IN AN ACTION OF CONTRACT, TORT OR OTHERWISE, ARISING FROM, OUT OF THE USE OR
// INABILITY TO USE THE FONT SOFTWARE OR FROM OTHER DEALINGS IN THE FONT SOFTWARE.
//
// Except as contained in this notice, the names of Gnome, the Gnome Foundation, and Bitstream Inc., shall not
// be used in advertising or otherwise to promote the sale, use or other dealings in this Font Software without
// prior written authorization from the Gnome Foundation or Bitstream Inc., respectively. For further
// information, contact: fonts at gnome dot org.
#include "simhost/drawing/screen_font.h"

namespace simhost {

// clang-format off
const std::uint32_t screenFontRows[screenFontCount][screenFontRowCount] = {
)";

// One row of a letter's cell, 4 bits of coverage for each pixel, the leftmost in the highest bits.
unsigned RowLevels(const FT_GlyphSlot glyph, int row) {
    const int bitmapRow = row - (Ascent - glyph->bitmap_top);
    if (bitmapRow < 0 || bitmapRow >= static_cast<int>(glyph->bitmap.rows)) return 0;
    unsigned levels = 0;
    for (int column = 0; column < Columns; column++) {
        const int x = column - glyph->bitmap_left;
        if (x < 0 || x >= static_cast<int>(glyph->bitmap.width)) continue;
        const unsigned coverage = glyph->bitmap.buffer[bitmapRow * glyph->bitmap.pitch + x];
        levels |= (coverage + 8) / 17 << (28 - 4 * column);
    }
    return levels;
}

int main(int argc, char **argv) {
    FT_Library library;
    FT_Face face;
    if (argc != 2 || FT_Init_FreeType(&library) != 0 || FT_New_Face(library, argv[1], 0, &face) != 0
        || FT_Set_Pixel_Sizes(face, 0, Pixels) != 0) {
        std::fprintf(stderr, "usage: make_screen_font FONT.ttf > screen_font_table.cpp\n");
        return EXIT_FAILURE;
    }
    std::fputs(Head, stdout);
    for (unsigned char letter = ' '; letter <= '~'; letter++) {
        if (FT_Load_Char(face, letter, FT_LOAD_RENDER) != 0) return EXIT_FAILURE;
        const FT_GlyphSlot glyph = face->glyph;
        const int bottom = glyph->bitmap_top - static_cast<int>(glyph->bitmap.rows);
        if (glyph->bitmap.rows != 0 && (glyph->bitmap_top > Ascent || bottom < Ascent - Rows)) {
            std::fprintf(stderr, "'%c' is higher than its cell\n", letter);
            return EXIT_FAILURE;
        }
        std::printf("    {");
        for (int row = 0; row < Rows; row++)
            std::printf("%s0x%08x", row == 0 ? "" : ", ", RowLevels(glyph, row));
        const char shown[] = {static_cast<char>(letter), 0};
        std::printf("}, // %s\n", letter == ' ' ? "blank" : letter == '\\' ? "backslash" : shown);
    }
    std::printf("};\n// clang-format on\n\n} // namespace simhost\n");
}
