// Fonts: descriptions as different tools write them, measuring, and where the letters land.
#include "gfx/fonts.h"

#include <sstream>

#include "gfx/palette.h"
#include "tests/gfx/canvas.h"

namespace {

const std::string Description =
    "info face=\"Two words\" size=10\r\n"
    "common lineHeight=10 base=8 scaleW=16 scaleH=16 pages=1 packed=0\r\n"
    "page id=0 file=\"atlas.png\"\r\n"
    "chars count=3\r\n"
    "char id=65 x=4 y=4 width=6 height=7 xoffset=1 yoffset=2 xadvance=8 page=0 chnl=15\r\n"
    "char id=66 x=12 y=4 width=6 height=7 xoffset=1 yoffset=2 xadvance=7.6 page=0\r\n"
    "char id=195 xadvance=3\r\n"
    "kernings count=1\r\n"
    "kerning first=65 second=66 amount=-1\r\n";

class Fonts : public Canvas {
protected:
    static font_class Parsed(const std::string &text) {
        font_class font;
        std::istringstream stream(text);
        font.ParseFont(stream);
        return font;
    }

    // A font whose "A" is a white block of 6 × 7 pixels; its "B" lies half outside the atlas.
    int LoadBlocks(int offsetX = 0, int offsetY = 0) {
        write("data/fnt/blocks.fnt", Description);
        WritePicture("data/fnt/atlas.png", std::vector<unsigned char>(16 * 16 * 4, 255), 16, 16);
        return LoadFont("blocks", offsetX, offsetY);
    }
};

TEST_F(Fonts, AreReadFromWhatToolsWrite) {
    font_class font = Parsed(Description);
    EXPECT_EQ(font.atlasFile, "atlas.png");
    EXPECT_EQ(font.charset.lineHeight, 10);
    EXPECT_EQ(font.charset.base, 8);
    EXPECT_EQ(font.charset.scaleW, 16);
    EXPECT_EQ(font.charset.chars[65].yoffset, 2.0F);
    EXPECT_FLOAT_EQ(font.charset.chars[66].xadvance, 7.6F);
    EXPECT_EQ(font.MeasureString("BB"), 14) << "each advance is cut";
    EXPECT_EQ(font.MeasureString(""), 0);
    EXPECT_EQ(font.MeasureString("\xC3\xA4"
                                 "A\xFF\n"),
              8)
        << "what is not there takes no room";
    EXPECT_EQ(simhost::TakeLogLines().size(), 0U);

    font = Parsed("  common\tlineHeight = 12 base= 9 scaleW =3\n"
                  "char x=9 id=300 x=1 xadvance=5\nchar id=-2 x=1\nchar x=1\nchar id= x=1\n\n = =\nchar\n"
                  "char id=97 xadvance=4 y= bold=yes\nchar id=255 xadvance=3");
    EXPECT_EQ(font.charset.lineHeight, 12);
    EXPECT_EQ(font.charset.base, 9);
    EXPECT_EQ(font.charset.scaleW, 3);
    EXPECT_EQ(font.charset.chars[97].xadvance, 4.0F);
    EXPECT_EQ(font.charset.chars[255].xadvance, 3.0F);
    EXPECT_EQ(font.charset.chars[44].xadvance + font.charset.chars[0].x, 0.0F);
    EXPECT_EQ(CountNewLines({"line 9", "y cannot be \"\""}), 1);

    font = Parsed("char id=65 x=-4 width=70000 xadvance=1e99 height=7px");
    EXPECT_EQ(font.charset.chars[65].width, 65535);
    EXPECT_EQ(font.MeasureString(std::string(100000, 'A')), 2147483647);
    EXPECT_EQ(CountNewLines({"line 1", "cannot be"}), 4);
}

TEST_F(Fonts, DrawFromTheLastOfSeveralPages) {
    write("data/fnt/pages.fnt", "page id=0 file=a.png\npage id=1 file=\"b.png\"\n"
                                "char id=65 width=5 height=5 xadvance=6 page=0\n"
                                "char id=66 width=5 height=5 xadvance=6 page=1\n");
    WritePicture("data/fnt/b.png", std::vector<unsigned char>(8 * 8 * 4, 255), 8, 8);
    const int id = LoadFont("pages", 0, 0);
    EXPECT_EQ(CountNewLines({"several pages"}), 1);
    EXPECT_EQ(Draw([&] { DrawFontIdSXYC(id, "AB", 10, 20, ColourRed); }).Covered(), (Extent{10, 15, 20, 19}));
}

TEST_F(Fonts, StandOnTheLowerEdgeOfTheirLine) {
    const int id = LoadBlocks();
    EXPECT_EQ(CountNewLines({"outside the atlas", "blocks"}), 1) << "half of B";
    int pen = 0;
    const Screen screen = Draw([&] { pen = DrawFontIdSXYC(id, "AB", 20.7, 30.2, ColourRed); });
    EXPECT_EQ(screen.Covered(), (Extent{21, 31, 26, 37}));
    EXPECT_EQ(screen.At(21, 31), Red);
    EXPECT_EQ(pen, 35);
    EXPECT_EQ(LenFontIdS(id, "AB"), 15);
    const Screen dim = Draw([&] {
        DrawFontIdSXYCL(id, "A", 10, 10, ColourWhite, 0.5);
        DrawFontIdSXYCB(id, "A", 30, 10, ColourRed, 0.5);
        DrawFontIdSXYRGBT(id, "A", 50, 10, 0, 0, 1, 1);
    });
    EXPECT_NEAR(dim.At(12, 13).green, 128, 1);
    EXPECT_NEAR(dim.At(32, 13).red, 128, 1);
    EXPECT_EQ(dim.At(52, 13), Blue);
    EXPECT_EQ(Draw([&] { DrawRotatedFontIdASXYC(id, 90, "A", 50, 50, ColourRed); }).Covered(),
              (Extent{51, 43, 57, 48}));
    const int moved = LoadBlocks(5, -3);
    EXPECT_EQ(moved, id + 1);
    EXPECT_EQ(fontsMap.at("blocks"), id) << "the first keeps the name";
    EXPECT_EQ(Draw([&] { DrawFontIdSXYC(moved, "A", 20, 30, ColourRed); }).Covered(),
              (Extent{26, 28, 31, 34}));
}

TEST_F(Fonts, EndBeforeTheWidthTheyMayHave) {
    const int id = LoadBlocks();
    int pen = 0;
    const Screen screen = Draw([&] { pen = DrawFontIdSXYC(id, "AAAAA", 10, 10, ColourRed, 20); });
    EXPECT_EQ(screen.Covered().right, 24) << "two letters";
    EXPECT_EQ(pen, 26);
    Draw([&] { EXPECT_EQ(DrawFontIdSXYC(id, "AA", 10, 10, ColourRed, 16), 18) << "reaching it is too far"; });
}

TEST_F(Fonts, WithoutFilesDrawNothing) {
    EXPECT_EQ(LoadFont("none", 0, 0), 0);
    EXPECT_EQ(CountNewLines({"Font failed to load: ", "data/fnt/none.fnt"}), 1);
    write("data/fnt/away.fnt", Description);
    const int away = LoadFont("away", 0, 0);
    EXPECT_EQ(CountNewLines({"Texture failed to load: ", "data/fnt/atlas.png"}), 1);
    write("data/fnt/outside.fnt", "page file=\"../png/a.png\"");
    LoadFont("outside", 0, 0);
    EXPECT_EQ(CountNewLines({"outside.fnt", "../png/a.png"}), 1) << "no file elsewhere is read";
    EXPECT_EQ(Draw([&] { DrawFontIdSXYC(away, "A", 10, 10, 0), DrawFontIdSXYC(0, "A", 9, 9, 0); }).Covered(),
              Extent());
    const int id = LoadBlocks();
    Draw([&] { DrawFontIdSXYC(id, "A", 10, 10, 0); });
    const GLuint atlas = static_cast<GLuint>(fonts[static_cast<size_t>(id)].atlas.number);
    UnLoadFonts();
    EXPECT_FALSE(glIsTexture(atlas));
    EXPECT_TRUE(fonts.empty() && fontsMap.empty());
}

// Every character of the shipped fonts has a picture that stays in its line, and the digits are one width.
TEST_F(Fonts, AreShipped) {
    std::filesystem::copy(SHIPPED_DATA "/fnt", plugin + "data/fnt", std::filesystem::copy_options::recursive);
    LoadFonts();
    EXPECT_EQ(simhost::TakeLogLines().size(), 0U);
    const Charset &text = fonts.at(static_cast<size_t>(fnt_Main)).charset;
    for (int code = 33; code < 127; code++) {
        const CharDescriptor &glyph = text.chars[code];
        EXPECT_GT(glyph.width * glyph.height, 0) << code;
        EXPECT_GE(glyph.yoffset, 0) << code;
        EXPECT_LE(glyph.yoffset + static_cast<float>(glyph.height), text.lineHeight) << code;
    }
    for (int font : {fnt_Main, fnt_Led})
        for (char digit = '0'; digit <= '9'; digit++)
            EXPECT_EQ(LenFontIdS(font, {&digit, 1}), LenFontIdS(font, "0"));
}

} // namespace
