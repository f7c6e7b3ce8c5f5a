// The picture: what plug-ins draw lands where they draw it, whatever others did before, and its texts are
// told.
#include "simhost/drawing/screen.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "simhost/drawing/gl_context.h"
#include "simhost/interface/plugins.h"
#include "simhost/simulator.h"
#include "tests/screen_picture.h"

using namespace simhost;

namespace {

// The painter's modes, as in plugins/painter.c.
enum {
    NoMischief,
    ChangeEverything = 1,
    PushAndPop = 2,
    NeverEnd = 4,
    CauseError = 8,
    ChangeOutsideFrames = 16
};

Picture Draw() {
    DrawFrame(true);
    return {ReadScreenPixels()};
}

// What a test draws, in the window phase.
std::function<void()> paint;

int Paint(XPLMDrawingPhase, int, void *) {
    if (paint) paint();
    return 1;
}

class Screen : public ::testing::Test {
protected:
    Screen() {
        ResetSimulator();
        SetScreenSize(200, 100);
        paint = nullptr;
    }

    static void PaintInFrames(std::function<void()> what) {
        paint = std::move(what);
        XPLMRegisterDrawCallback(Paint, xplm_Phase_Window, 0, nullptr);
    }

    static void LoadPainter(int mode) {
        PublishDataref("test/mode", xplmType_Int);
        PublishDataref("test/seen", xplmType_FloatArray, 8);
        SetNumber("test/mode", mode);
        std::string error;
        painter = LoadPlugin(std::string(TEST_PLUGINS) + "/painter.xpl", error);
        ASSERT_EQ(error, "");
    }

    static void ExpectPainted(const Picture &picture) {
        EXPECT_EQ(picture.At(10, 20), Red) << "lower left";
        EXPECT_EQ(picture.At(39, 29), Red) << "upper right";
        EXPECT_NE(picture.At(9, 20), Red);
        EXPECT_NE(picture.At(10, 19), Red);
        EXPECT_NE(picture.At(40, 29), Red);
        EXPECT_NE(picture.At(39, 30), Red);
        EXPECT_EQ(picture.At(60, 20), Blue) << "the texture's first row is below";
        EXPECT_EQ(picture.At(79, 39), White);
        const double expected[] = {200, 100, 2.0 / 200, 2.0 / 100, 1, 0, 1, 0};
        for (int i = 0; i < 8; i++) EXPECT_NEAR(GetNumber("test/seen", i), expected[i], 1e-6) << i;
    }

    static std::size_t CountLogLines(const std::string &part) {
        const std::vector<std::string> lines = TakeLogLines();
        return static_cast<std::size_t>(
            std::count_if(lines.begin(), lines.end(),
                          [&](const std::string &line) { return line.find(part) != std::string::npos; }));
    }

    static inline XPLMPluginID painter = XPLM_NO_PLUGIN_ID;
};

TEST_F(Screen, ShowsWhatAPlugInDrawsWhateverOthersDo) {
    for (int mode : {NoMischief, ChangeEverything, PushAndPop, NeverEnd, CauseError, ChangeOutsideFrames}) {
        SCOPED_TRACE(mode);
        ResetSimulator();
        SetScreenSize(200, 100);
        LoadPainter(mode);
        for (int i = 0; i < 100; i++) StepFrame(0.02); // stacks of OpenGL hold less
        Draw();
        const Picture picture = Draw();
        ExpectPainted(picture);
        const std::size_t mistakes = CountLogLines("Painter: ");
        EXPECT_EQ(mistakes, mode == PushAndPop ? 2u : mode == NeverEnd || mode == CauseError ? 1u : 0u);
        UnloadPlugin(painter);
        const Picture empty = Draw();
        EXPECT_LT(picture.Difference(empty).right, 100) << "the background is the same";
    }
    // A frame that nobody looks at has the same state.
    LoadPainter(ChangeEverything);
    SetScreenSize(300, 150);
    StepFrame(0.02);
    EXPECT_EQ(GetNumber("test/seen", 0), 300) << "the viewport is the screen's";
    EXPECT_EQ(GetNumber("test/seen", 6), 1) << "there is something to draw on";
    EXPECT_TRUE(ReadScreenPixels().empty());
}

void DrawString(const char *text, int x, int y) {
    float yellow[] = {1, 0.9F, 0.1F};
    XPLMDrawString(yellow, x, y, const_cast<char *>(text), nullptr, xplmFont_Basic);
}

TEST_F(Screen, DrawsTexts) {
    const Picture empty = Draw();
    PaintInFrames([] { DrawString("Hg", 50, 60); });
    const Picture picture = Draw();
    // H stands on the baseline, g hangs under it; 7 pixels for each.
    const Extent extent = picture.Difference(empty);
    EXPECT_GE(extent.left, 50);
    EXPECT_LT(extent.right, 50 + 14);
    EXPECT_EQ(extent.bottom, 57);
    EXPECT_EQ(extent.top, 68);
    const auto isUnderH = [&](int x, int y) {
        return x < 57 && y < 60 && picture.At(x, y) != empty.At(x, y);
    };
    EXPECT_EQ(picture.Where(isUnderH), Extent()) << "the baseline";
    int bright = 0;
    for (int y = 57; y < 69; y++)
        for (int x = 50; x < 64; x++) bright += picture.At(x, y).red > 240 && picture.At(x, y).blue < 60;
    EXPECT_GT(bright, 20) << "strokes in the text's colour";
}

TEST_F(Screen, DrawsABoxForWhatIsNoLetter) {
    std::string text;
    PaintInFrames([&] { DrawString(text.c_str(), 20, 20); });
    const auto pictureOf = [&](const std::string &drawn) {
        text = drawn;
        return Draw();
    };
    const Picture box = pictureOf("\x7F"), boxes = pictureOf("\x7F\x7F\x7F");
    for (const char *one : {"ü", "€", "😀", "\n"}) EXPECT_EQ(box.Difference(pictureOf(one)), Extent()) << one;
    EXPECT_EQ(boxes.Difference(pictureOf("\xFF\xC3\xE2")), Extent()) << "one for each broken byte";
    EXPECT_EQ(boxes.Difference(pictureOf("\xE2\x82\xC3")), Extent()) << "a character cut short";
    EXPECT_EQ(ScreenTexts().at(0).text, "\xE2\x82\xC3") << "told as it came";
}

TEST_F(Screen, MeasuresTextsAndDrawsNumbers) {
    int width = 0, height = 0;
    XPLMGetFontDimensions(xplmFont_Basic, &width, &height, nullptr);
    EXPECT_EQ(width * 100 + height, 713);
    EXPECT_EQ(XPLMMeasureString(xplmFont_Basic, "Grüße", 100), 5 * 7) << "not beyond the end";
    float white[] = {1, 1, 1};
    PaintInFrames([&] { XPLMDrawNumber(white, 1, 2, -12.345, 3, 2, 0, xplmFont_Basic); });
    StepFrame(0.02);
    ASSERT_FALSE(ScreenTexts().empty());
    EXPECT_EQ(ScreenTexts().back().text, "-012.35");
}

TEST_F(Screen, DarkensABox) {
    const Picture empty = Draw();
    PaintInFrames([] { XPLMDrawTranslucentDarkBox(20, 60, 90, 30); });
    const Picture picture = Draw();
    EXPECT_EQ(empty.Difference(picture), (Extent{20, 30, 89, 59}));
    for (int y = 30; y < 60; y++) {
        EXPECT_LT(picture.At(50, y).Brightness(), empty.At(50, y).Brightness() * 0.6);
        EXPECT_GT(picture.At(50, y).Brightness(), empty.At(50, y).Brightness() * 0.2) << "it is translucent";
    }
}

TEST_F(Screen, DrawsTextsTheSameInAnyState) {
    PaintInFrames([] { DrawString("Text", 20, 70); });
    const Picture plain = Draw();
    paint = [] {
        XPLMSetGraphicsState(0, 3, 0, 1, 0, 1, 1);
        XPLMBindTexture2d(XPLMGetTexture(0), 0);
        DrawString("", 20, 70);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_COMBINE);
        glActiveTexture(GL_TEXTURE2);
        DrawString("Text", 20, 70);
    };
    EXPECT_EQ(plain.Difference(Draw()), Extent());
    paint = [] {
        DrawString("Text", 20, 70);
        XPLMDrawTranslucentDarkBox(120, 60, 190, 30);
    };
    EXPECT_EQ(plain.Difference(Draw()), (Extent{120, 30, 189, 59})) << "nor does it spoil the box";
}

TEST_F(Screen, RefusesToDrawOutsideFrames) {
    DrawString("outside", 1, 2);
    XPLMDrawTranslucentDarkBox(0, 10, 10, 0);
    EXPECT_TRUE(ScreenTexts().empty());
    EXPECT_EQ(CountLogLines("outside a function that draws"), 2u);
}

} // namespace
