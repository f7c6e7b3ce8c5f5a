// What flights with the position creator do not reach of a panel: overlapping and disabled buttons, pages,
// pictures for the selected state, a new reference size, closing by a command, drawing that stays inside.
#include "gfx/panel.h"

#include <filesystem>

#include "gfx/drawing.h"
#include "gfx/palette.h"
#include "simhost/windows/windows.h"
#include "tests/gfx/canvas.h"

namespace {

// A panel of 200 × 100 over the whole screen, with pictures of 20 × 10 in plain colours.
class Panels : public Canvas {
protected:
    widgetVR_class panel;
    int red = 0, green = 0;

    Panels() {
        WritePlain("red", 255, 0);
        WritePlain("green", 0, 255);
        write("data/png/fbo.png", "");
        std::filesystem::copy_file(SHIPPED_DATA "/png/fbo.png", plugin + "data/png/fbo.png",
                                   std::filesystem::copy_options::overwrite_existing);
        std::filesystem::copy(SHIPPED_DATA "/fnt", plugin + "data/fnt");
        LoadFonts();
        red = LoadTexture("red");
        green = LoadTexture("green");
        panel.offsetX = panel.offsetY = 0;
        panel.Create("Test", 200, 100);
    }
    ~Panels() override { panel.Delete(); }

    void WritePlain(const std::string &name, unsigned char r, unsigned char g) {
        std::vector<unsigned char> pixels;
        for (int i = 0; i < 20 * 10; i++) pixels.insert(pixels.end(), {r, g, 0, 255});
        WritePicture("data/png/" + name + ".png", pixels, 20, 10);
    }

    int Clicked(int x, int y) { // panel coordinates; nothing is scaled
        panel.SetMouseHandlerFunction([] {});
        simhost::PressMouse(x, 100 - y, simhost::MouseButton::Left);
        simhost::ReleaseMouse(x, 100 - y);
        return panel.clickedButton;
    }

    void AddButton(int style, int x, int y, int visible, int enabled, int selected) {
        panel.AddButton(style, x, y, red, green, visible, enabled, selected, 1.0F, 0, 0);
    }

    simhost::WindowView Window() { return simhost::WindowsFrontToBack().front(); }
};

TEST_F(Panels, TheButtonThatWasAddedFirstTakesTheClick) {
    AddButton(0, 50, 50, 0, 1, 0); // invisible
    AddButton(0, 50, 50, 1, 0, 0); // disabled
    AddButton(0, 50, 50, 1, 1, 0);
    AddButton(0, 60, 50, 1, 1, 0);
    EXPECT_EQ(Clicked(65, 45), 2) << "both cover it";
    EXPECT_EQ(Clicked(75, 45), 3);
    EXPECT_EQ(Clicked(51, 41), 2);
    for (const auto &[x, y] : {std::pair(50, 45), {80, 45}, {65, 40}, {65, 50}})
        EXPECT_EQ(Clicked(x, y), -1) << "an edge at " << x << ", " << y;
}

TEST_F(Panels, OnlyBoxesOfThePageTakeTheKeyboard) {
    for (int page : {1, 0})
        panel.AddBox(10, 50, 100, 20, "text", fnt_Main, ColourWhite, ColourBlack, 9, page);
    Clicked(20, 40);
    EXPECT_EQ(panel.boxes[0].focused, 0);
    EXPECT_EQ(panel.boxes[1].focused, 1);
    panel.page = 1;
    simhost::SendKey('x', xplm_DownFlag, 0);
    EXPECT_EQ(panel.boxes[0].text + panel.boxes[1].text, "texttext");
}

TEST_F(Panels, ALongTextScrollsWithItsCursor) {
    panel.AddBox(10, 50, 40, 20, "", fnt_Main, ColourWhite, ColourBlack, 100, 0);
    const VR_box_struct &box = panel.boxes[0];
    Clicked(20, 40);
    for (int i = 0; i < 50; i++) simhost::SendKey(i % 2 ? 'm' : 'i', xplm_DownFlag, 0);
    const int shown = box.cursor - box.scroll;
    EXPECT_EQ(box.cursor, 50);
    EXPECT_TRUE(shown > 1 && shown < 10) << shown;
    for (int i = 0; i < 10; i++) simhost::SendKey(XPLM_KEY_DELETE, xplm_DownFlag, 0);
    EXPECT_EQ(box.cursor - box.scroll, shown) << "what is left of the text is seen while it is erased";
    for (int i = 0; i < 10; i++) simhost::SendKey(i % 2 ? 'm' : 'i', xplm_DownFlag, 0);
    for (int i = 0; i < 60; i++) simhost::SendKey(XPLM_KEY_LEFT, xplm_DownFlag, 0);
    EXPECT_EQ(box.cursor, 0);
    EXPECT_EQ(box.scroll, 0);
    simhost::SendKey(XPLM_KEY_DELETE, xplm_DownFlag, 0);
    EXPECT_EQ(box.text.size(), 50U);
    panel.SetBoxText(0, box.text);
    EXPECT_EQ(box.cursor - box.scroll, shown) << "the end of a text that is given";
}

TEST_F(Panels, DrawsItsItemsWhereTheyAre) {
    AddButton(1, 10, 20, 1, 1, 0);
    AddButton(1, 40, 20, 1, 1, 1); // has its own picture
    AddButton(0, 70, 20, 1, 1, 1); // is marked
    AddButton(0, 100, 20, 0, 1, 0);
    panel.AddTexture(10, 100, green, 1, 1.0F, 0);
    panel.AddTexture(40, 100, green, 0, 1.0F, 0);
    panel.rectangles.push_back({130, 100, 20, 10});
    panel.texts.push_back({160, 40, "A", fnt_Main, ColourRed});
    panel.SetDrawFunction([] { FillRestangleCT(130, 0, 170, 9, ColourGreen, 1); });
    simhost::DrawFrame(true);
    simhost::DrawFrame(true); // what one frame leaves behind shows in the next
    const Screen screen{simhost::ReadScreenPixels()};
    EXPECT_EQ(screen.At(10, 89), Red);
    EXPECT_EQ(screen.At(29, 80), Red);
    EXPECT_EQ(screen.At(45, 85), Green);
    EXPECT_EQ(screen.At(75, 85), Red) << "red, tinted yellow";
    EXPECT_EQ(screen.At(68, 85), (Pixel{255, 255, 0})) << "its frame";
    EXPECT_GT(screen.At(105, 85).blue, 40) << "the simulator's background: no state is left behind";
    EXPECT_EQ(screen.At(15, 5), (Pixel{0, 255, 0}));
    EXPECT_GT(screen.At(45, 5).blue, 40);
    EXPECT_EQ(screen.At(160, 5), (Pixel{0, 204, 0}));
    EXPECT_EQ(screen.At(140, 5), (Pixel{0, 102, 0})) << "in the rectangle's shade";
    EXPECT_EQ(screen.At(130, 5), Black) << "its frame";
    int letter = 0;
    for (int x = 160; x < 175; x++)
        for (int y = 60; y < 80; y++) letter += screen.At(x, y).red > 200;
    EXPECT_GT(letter, 10);
}

// The simulator places a window of the system in that system's pixels alone.
TEST_F(Panels, AreScaledInAWindowOfTheSystemToo) {
    AddButton(0, 180, 95, 1, 1, 0);
    XPLMSetWindowPositioningMode(panel.window, xplm_WindowPopOut, -1);
    XPLMSetWindowGeometryOS(panel.window, 0, 100, 200, 0);
    EXPECT_FALSE(panel.isOnMonitor());
    EXPECT_EQ(Clicked(190, 90), 0);
    EXPECT_EQ(panel.mouseX, 190);
    simhost::TurnWheel(100, 50, -2);
    int left = 0, top = 0, right = 0, bottom = 0;
    XPLMGetWindowGeometryOS(panel.window, &left, &top, &right, &bottom);
    EXPECT_EQ((Extent{left, bottom, right, top}), (Extent{20, 10, 180, 90})) << "about its middle";
}

TEST_F(Panels, ANewReferenceSizeGivesTheWindowItsShape) {
    panel.ChangeOrigSize(400, 100);
    EXPECT_EQ(Window().right - Window().left, 200);
    EXPECT_EQ(Window().top, 100) << "it hangs from where it was";
    EXPECT_EQ(Window().bottom, 50);
    AddButton(0, 380, 95, 1, 1, 0);
    EXPECT_EQ(Clicked(195, 45), 0);
    simhost::DrawFrame(true);
    EXPECT_EQ((Screen{simhost::ReadScreenPixels()}.At(195, 55)), Red);
    simhost::DrawFrame(true);
    EXPECT_EQ(panel.buffer.width, 200) << "as many pixels as the window has";
    panel.ChangeOrigSize(0, -1);
    EXPECT_EQ(panel.referenceWidth, 400);
}

TEST_F(Panels, ItsCommandClosesItAndItCanBeMadeAgain) {
    panel.Delete();
    panel.Delete();
    panel.showHideCommand = XPLMCreateCommand("test/hide", "");
    panel.Create("Test", 100, 50);
    XPLMCommandBegin(panel.showHideCommand);
    EXPECT_EQ(panel.isShow(), 1);
    XPLMCommandEnd(panel.showHideCommand);
    EXPECT_EQ(panel.isShow(), 0);
    simhost::DrawFrame(true);
    XPLMCommandOnce(panel.showHideCommand);
    panel.Delete();
    panel.Create("Test", 100, 50);
    EXPECT_EQ(panel.isShow(), 1);
}

} // namespace
