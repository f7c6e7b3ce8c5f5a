// Lines, rectangles and needles by their pixels, and what of OpenGL's state all drawing leaves as it was.
#include "gfx/drawing.h"

#include <cmath>

#include "gfx/fonts.h"
#include "gfx/offscreen.h"
#include "gfx/textures.h"
#include "tests/gfx/canvas.h"

namespace {

using Drawing = Canvas;

// Where a pixel's edge lies on a line, OpenGL chooses the pixel.
void ExpectNear(const Extent &found, const Extent &expected) {
    EXPECT_NEAR(found.left, expected.left, 1);
    EXPECT_NEAR(found.right, expected.right, 1);
    EXPECT_NEAR(found.bottom, expected.bottom, 1);
    EXPECT_NEAR(found.top, expected.top, 1);
}

TEST_F(Drawing, LinesEndAtWholePixels) {
    const Extent whole = Draw([] { DrawLineCT(10, 20, 30, 20, ColourRed, 1, 1); }).Covered();
    ExpectNear(whole, {10, 20, 29, 20});
    EXPECT_EQ(whole.bottom, whole.top) << "one pixel wide";
    EXPECT_EQ(whole.right - whole.left, 19);
    EXPECT_EQ(Draw([] { DrawLineCT(10.9, 20.9, 30.9, 20.9, ColourRed, 1, 1); }).Covered(), whole);
    ExpectNear(Draw([] { DrawLine2D(50, 90, 50, 10, 1, 1, 1, 5, 1); }).Covered(), {48, 10, 52, 89});
    EXPECT_EQ(Draw([] { DrawLineCT(10, 20, 30, 20, ColourRed, 0, 1); }).Covered(), whole);
    EXPECT_EQ(Draw([] { DrawLineCT(10, 20, 30, 20, ColourRed, -3, 1); }).Covered(), whole);
    const Screen faint = Draw([] { DrawLine2D(10, 20, 30, 20, 0, 0, 1, 3, 0.5); });
    EXPECT_NEAR(faint.At(20, 20).blue, 128, 1);
    Draw([] { DrawLineCT(NAN, -1e300, INFINITY, 1e300, ColourRed, 1, 1); });
}

TEST_F(Drawing, RectanglesAreOutlinedOrFilled) {
    const Screen outline = Draw([] { DrawRestangleCT(10, 20, 60, 50, ColourRed, 3, 1); });
    ExpectNear(outline.Covered(), {9, 19, 61, 51});
    EXPECT_EQ(outline.At(35, 35), Black);
    for (const auto &[x, y] : {std::pair{10, 35}, {60, 35}, {35, 20}, {35, 50}})
        EXPECT_EQ(outline.At(x, y), Red);
    const Screen corners = Draw([] {
        glTranslated(0.5, 0.5, 0);
        DrawRestangleCT(10, 20, 60, 50, ColourWhite, 1, 0.5);
    });
    for (const auto &[x, y] : {std::pair{10, 20}, {60, 20}, {10, 50}, {60, 50}})
        EXPECT_NEAR(corners.At(x, y).red, 128, 1) << "each drawn once: " << x << ", " << y;
    EXPECT_EQ(Draw([] { FillRestangleCT(10, 20, 60, 50, ColourRed, 1); }).Covered(),
              (Extent{10, 20, 59, 49}));
}

TEST_F(Drawing, NeedlesPointClockwiseFromUp) {
    ExpectNear(Draw([] { DrawNeedleXYCH(50, 50, ColourWhite, 1, 10, 90); }).Covered(), {50, 49, 60, 50});
    ExpectNear(Draw([] { DrawNeedleXYCH(50, 50, ColourWhite, 1, 10, 0); }).Covered(), {49, 50, 50, 60});
    ExpectNear(Draw([] { DrawNeedleXYCH(50, 50, ColourWhite, 1, 20, 225); }).Covered(), {36, 36, 50, 50});
    const Screen slanted = Draw([] { DrawNeedleXYCH(50, 50, ColourWhite, 0, 40, 70); });
    int between = 0;
    for (int x = 50; x < 90; x++)
        for (int y = 50; y < 70; y++) between += slanted.At(x, y).red > 20 && slanted.At(x, y).red < 235;
    EXPECT_GT(between, 20) << "its edges are smooth";
}

// What the simulator's own graphics state does not cover.
std::vector<double> OpenGLState() {
    std::vector<double> state;
    for (GLenum what : {GL_MATRIX_MODE,
                        GL_MODELVIEW_MATRIX,
                        GL_PROJECTION_MATRIX,
                        GL_TEXTURE_MATRIX,
                        GL_MODELVIEW_STACK_DEPTH,
                        GL_TEXTURE_STACK_DEPTH,
                        GL_ATTRIB_STACK_DEPTH,
                        GL_VIEWPORT,
                        GL_SCISSOR_TEST,
                        GL_SCISSOR_BOX,
                        GL_BLEND_SRC_RGB,
                        GL_BLEND_DST_RGB,
                        GL_BLEND_SRC_ALPHA,
                        GL_BLEND_DST_ALPHA,
                        GL_LINE_WIDTH,
                        GL_LINE_SMOOTH,
                        GL_LINE_STIPPLE,
                        GL_LINE_STIPPLE_PATTERN,
                        GL_LINE_SMOOTH_HINT,
                        GL_DRAW_FRAMEBUFFER_BINDING,
                        GL_READ_FRAMEBUFFER_BINDING,
                        GL_COLOR_CLEAR_VALUE,
                        GL_COLOR_WRITEMASK,
                        GL_DEPTH_FUNC,
                        GL_UNPACK_ALIGNMENT,
                        GL_UNPACK_ROW_LENGTH}) {
        double values[16] = {};
        glGetDoublev(what, values);
        state.insert(state.end(), values, values + 16);
    }
    return state;
}

TEST_F(Drawing, LeavesOpenGLAsItWas) {
    WritePicture("data/png/fbo.png", std::vector<unsigned char>(16, 255), 2, 2);
    write("data/fnt/f.fnt", "common lineHeight=2\npage id=0 file=\"a.png\"\nchar id=65 width=2 height=2\n");
    WritePicture("data/fnt/a.png", std::vector<unsigned char>(16, 255), 2, 2);
    Draw([] {
        glEnable(GL_SCISSOR_TEST);
        glScissor(1, 2, 150, 60);
        glViewport(1, 2, 180, 90);
        glTranslated(1, 2, 0);
        glLineStipple(1, 0x1234);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 7);
        std::vector<double> before = OpenGLState();
        tex_fbo = LoadTexture("fbo");
        const int font = LoadFont("f", 0, 0);
        FBOinit();
        EXPECT_EQ(OpenGLState(), before) << "loading";
        glBlendFuncSeparate(GL_ONE, GL_ZERO, GL_DST_ALPHA, GL_ONE);
        before = OpenGLState();
        ASSERT_TRUE(FBOcontrol.Bind());
        DrawTextureIdXYCT(tex_fbo, 0, 0, 0, 1);
        FBOcontrol.Unbind();
        EXPECT_EQ(OpenGLState(), before) << "the buffer";
        DrawTextureBufferIdXYWHCT(tex_fbo, 0, 0, 9, 9, 0, 1);
        DrawRotTextureIdXYA(tex_fbo, 0, 0, 30);
        EXPECT_EQ(OpenGLState(), before) << "pictures";
        DrawLineStrippedCT(0, 0, 9, 9, 0, 4, 1);
        DrawNeedleXYCH(0, 0, 0, 4, 9, 30);
        DrawRestangleCT(0, 0, 9, 9, 0, 4, 1);
        EXPECT_EQ(OpenGLState(), before) << "lines";
        DrawRotatedFontIdASXYC(font, 30, "AA", 5, 5, 0);
        EXPECT_EQ(OpenGLState(), before) << "texts";
        UnLoadFonts();
        UnLoadTextures();
        FBOkill();
        EXPECT_EQ(OpenGLState(), before) << "unloading";
    });
}

} // namespace
