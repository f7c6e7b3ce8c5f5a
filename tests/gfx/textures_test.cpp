// Pictures: what becomes of good, odd and hostile files, and which pixels drawing covers with what.
#include "gfx/textures.h"

#include <dlfcn.h>

#include "gfx/drawing.h"
#include "gfx/offscreen.h"
#include "tests/gfx/canvas.h"

GLint largestTexture = 0; // what OpenGL admits to; 0: the truth

extern "C" void glGetIntegerv(GLenum what, GLint *value) {
    static const auto ask = reinterpret_cast<decltype(&glGetIntegerv)>(dlsym(RTLD_NEXT, "glGetIntegerv"));
    ask(what, value);
    if (what == GL_MAX_TEXTURE_SIZE && largestTexture != 0) *value = largestTexture;
}

namespace {

class Textures : public Canvas {
protected:
    // Four texels: red and green above, blue and white below.
    int LoadQuarters() {
        WritePicture("data/png/quarters.png",
                     {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 255}, 2, 2);
        return LoadTexture("quarters");
    }

    // The colours 3 pixels from the corners of a square at (10, 10): upper left, upper right, lower left,
    // lower right.
    static std::vector<Pixel> Corners(const Screen &screen, int side) {
        const int low = 13, high = 10 + side - 4;
        return {screen.At(low, high), screen.At(high, high), screen.At(low, low), screen.At(high, low)};
    }

    // A PNG of one black pixel that names another size.
    static std::string LyingPicture(unsigned width, unsigned height) {
        std::vector<unsigned char> file;
        lodepng::encode(file, std::vector<unsigned char>(4), 1, 1);
        const auto put = [&](size_t at, unsigned value) {
            for (size_t i = 0; i < 4; i++) file[at + i] = static_cast<unsigned char>(value >> (24 - 8 * i));
        };
        put(16, width);
        put(20, height);
        put(29, lodepng_crc32(&file[12], 17)); // of the header
        return {file.begin(), file.end()};
    }
};

TEST_F(Textures, CoverTheirRectangleWithTheFirstRowAbove) {
    WritePicture("data/png/plain.png", std::vector<unsigned char>(64 * 32 * 4, 255), 64, 32);
    const int plain = LoadTexture("plain"), quarters = LoadQuarters();
    EXPECT_EQ(Draw([&] { DrawTextureIdXYRGBT(plain, 10, 10, 1, 1, 1, 1); }).Covered(),
              (Extent{10, 10, 73, 41}));
    EXPECT_EQ(Draw([&] { DrawTextureNameXYRGBT("plain", 10, 10, 1, 0, 0, 1); }).At(73, 41), Red);
    const Screen screen = Draw([&] { DrawTextureIdXYWHCT(quarters, 10, 10, 40, 40, ColourWhite, 1); });
    EXPECT_EQ(screen.Covered(), (Extent{10, 10, 49, 49}));
    EXPECT_EQ(Corners(screen, 40), (std::vector{Red, Green, Blue, White}));
}

TEST_F(Textures, TakeTintAndAlphaAndLieOverEachOther) {
    int id = 0;
    const Screen screen = Draw([&] {
        glBlendFunc(GL_ONE, GL_ZERO); // as somebody else has left it
        id = LoadQuarters();
        DrawTextureIdXYWHCT(id, 10, 10, 40, 40, ColourWhite, 1);
        DrawTextureIdXYWHRGBT(id, 10, 10, 40, 40, 0, 0, 1, 0.5);
    });
    // White, then half of it blue: the second quad is not hidden by the depth of the first.
    const Pixel mixed = screen.At(46, 13);
    EXPECT_NEAR(mixed.red, 128, 1);
    EXPECT_EQ(mixed.blue, 255);
    EXPECT_EQ(Draw([&] { DrawTextureIdXYCT(id, 10, 10, ColourRed, 0); }).Covered(), Extent());
}

TEST_F(Textures, TurnClockwiseInsideTheirRectangle) {
    const int id = LoadQuarters();
    const auto turned = [&](double angle) {
        return Draw([&] { DrawRotTextureIdXYASCT(id, 10, 10, angle, 40, ColourWhite, 1); });
    };
    EXPECT_EQ(turned(90).Covered(), (Extent{10, 10, 49, 49}));
    EXPECT_EQ(Corners(turned(90), 40), (std::vector{Blue, Red, White, Green}));
    EXPECT_EQ(Corners(turned(-180), 40), (std::vector{White, Blue, Green, Red}));
    EXPECT_EQ(Draw([&] { DrawRotTextureIdXYA(id, 10, 10, 30); }).Covered(), (Extent{10, 10, 11, 11}));
}

TEST_F(Textures, OfBadFilesDrawNothingAndAreToldInTheLog) {
    std::string cut = LyingPicture(1, 1);
    cut.resize(cut.size() - 20);
    const std::pair<std::string, const char *> files[] = {
        {"", ""},
        {cut, ""},
        {LyingPicture(4, 4), ""},
        {LyingPicture(8000, 8000), "too short"},
        {LyingPicture(30000, 1), "larger than"},
        {LyingPicture(2147483647, 2147483647), "larger than"},
    };
    for (const auto &[file, reason] : files) {
        write("data/png/bad.png", file);
        const int id = LoadTexture("bad");
        const std::vector<std::string> lines = simhost::TakeLogLines();
        EXPECT_EQ(CountLines(lines, {"PNG texture failed to load"}), 1);
        EXPECT_EQ(CountLines(lines, {"data/png/bad.png: ", reason}), 1) << reason;
        EXPECT_EQ(Draw([&] { DrawTextureIdXYWHCT(id, 10, 10, 40, 40, ColourRed, 1); }).Covered(), Extent());
    }
    largestTexture = 1; // of a very old card
    EXPECT_EQ(Draw([&] { DrawTextureIdXYCT(LoadQuarters(), 10, 10, ColourWhite, 1); }).Covered(), Extent());
    EXPECT_EQ(CountNewLines({"quarters", "larger than"}), 1);
    largestTexture = 0;
    LoadTexture("missing");
    EXPECT_EQ(CountNewLines({"PNG texture failed to load"}), 1);
    EXPECT_EQ(Draw([] {
                  for (int id : {-1, 1000, 2147483647}) DrawRotTextureIdXYACT(id, 0, 0, 10, 99, 1);
                  DrawTextureNameXYRGBT("nobody", 0, 0, 1, 1, 1, 1);
              }).Covered(),
              Extent());
}

// Another plug-in has left a buffer bound for pixels, and odd strides.
TEST_F(Textures, AreReadFromMemoryWhateverOthersHaveSet) {
    const int id = LoadQuarters();
    const Screen screen = Draw([&] {
        GLuint foreign = 0;
        GLint bound = 0, rowLength = 0;
        const std::vector<unsigned char> magenta(16 * 16 * 4, 200);
        glGenBuffers(1, &foreign);
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, foreign);
        glBufferData(GL_PIXEL_UNPACK_BUFFER, 16 * 16 * 4, magenta.data(), GL_STATIC_DRAW);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 7);
        FBOcontrol.MakeFBO(TextureOfId(LoadTexture("quarters")).Provide(), 4, 4);
        DrawTextureBufferIdXYWHCT(id + 1, 100, 10, 40, 40, ColourWhite, 1);
        DrawTextureIdXYWHCT(id, 10, 10, 40, 40, ColourWhite, 1);
        glGetIntegerv(GL_PIXEL_UNPACK_BUFFER_BINDING, &bound);
        glGetIntegerv(GL_UNPACK_ROW_LENGTH, &rowLength);
        EXPECT_EQ(static_cast<GLuint>(bound), foreign);
        EXPECT_EQ(rowLength, 7);
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
        glDeleteBuffers(1, &foreign);
        FBOkill();
    });
    EXPECT_EQ(Corners(screen, 40), (std::vector{Red, Green, Blue, White}));
    EXPECT_EQ(screen.Covered(), (Extent{10, 10, 49, 49})) << "the buffer starts out empty";
}

class Offscreen : public Textures {
protected:
    Offscreen() {
        WritePicture("data/png/fbo.png", std::vector<unsigned char>(4), 1, 1);
        tex_fbo = LoadTexture("fbo");
        FBOinit();
    }
    ~Offscreen() override { FBOkill(); }

    // Paints through the buffer, shown at its own scale.
    static void Through(void (*paint)()) {
        glEnable(GL_SCISSOR_TEST);
        glScissor(0, 0, 35, 35); // of the window that shows it, which must not cut it
        ASSERT_TRUE(FBOcontrol.Bind());
        paint();
        FBOcontrol.Unbind();
        glDisable(GL_SCISSOR_TEST);
        DrawTextureBufferIdXYWHCT(tex_fbo, 0, 0, fboSizePX, fboSizePX, ColourWhite, 1);
    }
};

TEST_F(Offscreen, ShowsWhatWasDrawnAsIfItWereDrawnDirectly) {
    const auto paint = [] {
        FillRestangleCT(10, 20, 60, 40, ColourRed, 1);
        FillRestangleCT(30, 30, 90, 50, ColourGreen, 0.5); // over red and over nothing
        FillRestangleCT(35, 35, 40, 40, ColourWhite, 0.2);
    };
    const auto background = [] { FillRestangleCT(0, 0, 200, 100, ColourMagenta, 1); };
    const Screen direct = Draw([&] { background(), paint(); });
    const Screen buffered = Draw([&] { background(), Through(paint); });
    int difference = 0;
    for (size_t i = 0; i < direct.bytes.size(); i++)
        difference = std::max(difference, std::abs(direct.bytes[i] - buffered.bytes[i]));
    EXPECT_LE(difference, 2);
    EXPECT_EQ(Draw([] { Through([] {}); }).Covered(), Extent()) << "it starts out empty";
    EXPECT_EQ(CountNewLines({"fboStatus"}), 0);
}

TEST_F(Offscreen, RefusesWhatCannotBe) {
    FBO_class none;
    EXPECT_FALSE(none.Bind());
    none.Unbind();
    none.MakeFBO(0, 10, 10);
    none.MakeFBO(TextureOfId(tex_fbo).Provide(), 1 << 20, 10);
    EXPECT_EQ(CountNewLines({"fboStatus="}), 2);
    EXPECT_FALSE(none.Bind());
    const unsigned framebuffer = FBOcontrol.framebuffer;
    EXPECT_TRUE(glIsFramebuffer(framebuffer));
    FBOkill();
    EXPECT_FALSE(glIsFramebuffer(framebuffer));
}

} // namespace
