// One frame from background to windows, its texts, and its pixels. In an ordinary frame the simulator draws
// nothing of its own, and texts are only noted; what plug-ins do with OpenGL happens in every frame.
#include "simhost/drawing/screen.h"

#include <lodepng.h>

#include <cstring>

#include "simhost/drawing/cockpit_view.h"
#include "simhost/drawing/gl_context.h"
#include "simhost/drawing/graphics_state.h"
#include "simhost/drawing/screen_font.h"
#include "simhost/flights/watchdog.h"
#include "simhost/modules.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

constinit bool isFrameDrawn = false;
constinit bool hasPixels = false;
constinit int frameWidth = 0, frameHeight = 0; // of the last frame with pixels

// Texts that the frame before does not need any more keep their memory for the next one.
constinit std::vector<DrawnText> texts, spareTexts;

void ClearTexts() {
    while (!texts.empty()) {
        spareTexts.push_back(std::move(texts.back()));
        texts.pop_back();
    }
}

// What the headset shows: the window under way, and the picture of the one that was asked for.
constinit bool isPictureWanted = false;
std::string headsetWindow, wantedWindow;
constinit int headsetWidth = 0, headsetHeight = 0;
std::vector<unsigned char> headsetPicture;
constinit int pictureWidth = 0, pictureHeight = 0;

void KeepText(std::string_view text, int x, int y, float red, float green, float blue) {
    if (spareTexts.empty()) {
        texts.emplace_back();
    } else {
        texts.push_back(std::move(spareTexts.back()));
        spareTexts.pop_back();
    }
    DrawnText &kept = texts.back();
    kept.text = text;
    kept.x = x;
    kept.y = y;
    kept.red = red;
    kept.green = green;
    kept.blue = blue;
    kept.window = headsetWindow;
}

// ---- Letters ----

// The font's texture: the letters and the box side by side, 16 in a row.
constexpr int LettersInRow = 16;
constexpr int FontWidth = 128, FontHeight = 128;
static_assert(LettersInRow * ScreenFontColumnCount <= FontWidth);
static_assert((ScreenFontCount / LettersInRow + 1) * ScreenFontRowCount <= FontHeight);

std::uint32_t BoxRow(int row) {
    if (row < 1 || row > 10) return 0;
    return row == 1 || row == 10 ? 0x0FFFFF00 : 0x0F000F00;
}

GLuint FontTexture() {
    static GLuint texture = 0;
    if (texture != 0) return texture;
    std::vector<unsigned char> pixels(FontWidth * FontHeight);
    for (int letter = 0; letter <= ScreenFontCount; letter++) {
        for (int row = 0; row < ScreenFontRowCount; row++) {
            const std::uint32_t levels = letter == ScreenFontBox ? BoxRow(row) : ScreenFontRows[letter][row];
            unsigned char *pixel = pixels.data()
                                   + (letter / LettersInRow * ScreenFontRowCount + row) * FontWidth
                                   + letter % LettersInRow * ScreenFontColumnCount;
            for (int column = 0; column < ScreenFontColumnCount; column++)
                pixel[column] = static_cast<unsigned char>((levels >> (28 - 4 * column) & 15) * 17);
        }
    }
    glGenTextures(1, &texture);
    BindTexture(static_cast<int>(texture), 0);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, FontWidth, FontHeight, 0, GL_ALPHA, GL_UNSIGNED_BYTE,
                 pixels.data());
    glPopClientAttrib();
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    return texture;
}

// In floats, since a plug-in may write at the end of the integers.
void DrawLetter(int letter, float x, float y) {
    const float left = static_cast<float>(letter % LettersInRow * ScreenFontColumnCount) / FontWidth;
    const float top = static_cast<float>(letter / LettersInRow * ScreenFontRowCount) / FontHeight;
    const float right = left + static_cast<float>(ScreenFontColumnCount) / FontWidth;
    const float bottom = top + static_cast<float>(ScreenFontRowCount) / FontHeight;
    const float lower = y - ScreenFontDescent;
    const float upper = lower + ScreenFontRowCount;
    glTexCoord2f(left, bottom);
    glVertex2f(x, lower);
    glTexCoord2f(right, bottom);
    glVertex2f(x + ScreenFontColumnCount, lower);
    glTexCoord2f(right, top);
    glVertex2f(x + ScreenFontColumnCount, upper);
    glTexCoord2f(left, top);
    glVertex2f(x, upper);
}

// What the simulator itself draws between callbacks does not depend on what they left.
void BeginOwnDrawing(int textureUnits) {
    if (!isInDrawingScope()) RestoreGraphicsState();
    SetGraphicsState({.textureUnits = textureUnits});
}

void DrawLetters(std::string_view text, int x, int y, const Tint &tint) {
    BeginOwnDrawing(1);
    BindTexture(static_cast<int>(FontTexture()), 0);
    glActiveTexture(GL_TEXTURE0);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glColor4f(tint.red, tint.green, tint.blue, tint.alpha);
    glBegin(GL_QUADS);
    for (float left = static_cast<float>(x); !text.empty(); left += ScreenFontAdvance)
        DrawLetter(TakeLetter(text), left, static_cast<float>(y));
    glEnd();
}

// ---- The background ----

struct DuskShade {
    float height; // 0: the lower edge, 1: the upper
    float red, green, blue;
};

// Dusk: bright over the horizon, dark above and below, so that a text's colour can be judged on both.
constexpr DuskShade Dusk[] = {{0.00F, 0.13F, 0.14F, 0.16F},
                              {0.30F, 0.36F, 0.33F, 0.35F},
                              {0.38F, 0.95F, 0.72F, 0.48F},
                              {0.62F, 0.56F, 0.48F, 0.62F},
                              {1.00F, 0.09F, 0.12F, 0.28F}};

void ClearSurface() {
    RestoreGraphicsState();
    glDepthMask(GL_TRUE);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    RestoreGraphicsState();
}

void DrawBackground() {
    ClearSurface();
    const float width = static_cast<float>(ScreenWidth()), height = static_cast<float>(ScreenHeight());
    glBegin(GL_QUAD_STRIP);
    for (const DuskShade &shade : Dusk) {
        glColor3f(shade.red, shade.green, shade.blue);
        glVertex2f(0, shade.height * height);
        glVertex2f(width, shade.height * height);
    }
    glEnd();
    if (isCockpitShown()) DrawCockpit();
}

} // namespace

void DrawFrame(bool withPixels) {
    ClearTexts();
    hasPixels = withPixels && ProvideGraphics() && UseFullSurface(ScreenWidth(), ScreenHeight());
    if (!hasPixels && hasContext()) UsePixelSurface();
    frameWidth = ScreenWidth();
    frameHeight = ScreenHeight();
    isFrameDrawn = true;
    if (hasPixels) DrawBackground();
    for (XPLMDrawingPhase phase : DrawingPhases) {
        RunDrawPhase(phase);
        if (phase == xplm_Phase_Window) DrawWindows();
    }
    isFrameDrawn = false;
}

bool isDrawingFrame() {
    return isFrameDrawn;
}

const std::vector<DrawnText> &ScreenTexts() {
    return texts;
}

namespace {

// Of the surface that is drawn on, rows from the top.
std::vector<unsigned char> ReadPixels(int columns, int rows) {
    RestoreGraphicsState();
    const std::size_t width = static_cast<std::size_t>(columns);
    const std::size_t height = static_cast<std::size_t>(rows);
    const std::size_t rowBytes = width * 4;
    std::vector<unsigned char> upward(height * rowBytes), pixels(height * rowBytes);
    glReadPixels(0, 0, columns, rows, GL_RGBA, GL_UNSIGNED_BYTE, upward.data());
    for (std::size_t row = 0; row < height; row++)
        std::memcpy(&pixels[row * rowBytes], &upward[(height - 1 - row) * rowBytes], rowBytes);
    // A screen is opaque, whatever blending has left in the fourth channel.
    for (std::size_t i = 3; i < pixels.size(); i += 4) pixels[i] = 255;
    return pixels;
}

bool DrawFrameForPicture(std::string &error) {
    DrawFrame(true);
    if (!hasPixels)
        error =
            hasContext() ? "the screen is larger than OpenGL can draw" : "no OpenGL here: " + WhyNoContext();
    return hasPixels;
}

bool WritePicture(const std::string &path, const std::vector<unsigned char> &pixels, int width, int height,
                  std::string &error) {
    UnwatchedWork encoding;
    const unsigned failed =
        lodepng::encode(path, pixels, static_cast<unsigned>(width), static_cast<unsigned>(height));
    if (failed != 0) error = path + ": " + lodepng_error_text(failed);
    return failed == 0;
}

} // namespace

std::vector<unsigned char> ReadScreenPixels() {
    return hasPixels ? ReadPixels(frameWidth, frameHeight) : std::vector<unsigned char>();
}

bool WriteScreenshot(const std::string &path, std::string &error) {
    return DrawFrameForPicture(error)
           && WritePicture(path, ReadScreenPixels(), ScreenWidth(), ScreenHeight(), error);
}

bool WriteHeadsetPicture(const std::string &title, const std::string &path, std::string &error) {
    wantedWindow = title;
    isPictureWanted = true;
    headsetPicture.clear();
    const bool isDrawn = DrawFrameForPicture(error);
    isPictureWanted = false;
    if (!isDrawn) return false;
    if (headsetPicture.empty()) {
        error = "no window \"" + title + "\" is in the headset";
        return false;
    }
    return WritePicture(path, headsetPicture, pictureWidth, pictureHeight, error);
}

// A window hangs before a dark background. Without pixels nothing is to be seen of it anywhere.
HeadsetScope::HeadsetScope(const std::string &title, int width, int height) {
    headsetWindow = title;
    headsetWidth = width;
    headsetHeight = height;
    hasSurface = hasPixels && BeginHeadsetSurface(width, height);
    SetDrawingSize(width, height);
    if (!hasSurface) return;
    ClearSurface();
    FillRectangle(0, height, width, 0, {0.16F, 0.18F, 0.21F, 1});
}

HeadsetScope::~HeadsetScope() {
    if (hasSurface && isPictureWanted && headsetWindow == wantedWindow) {
        headsetPicture = ReadPixels(headsetWidth, headsetHeight);
        pictureWidth = headsetWidth;
        pictureHeight = headsetHeight;
    }
    if (hasSurface) EndHeadsetSurface();
    SetDrawingSize(0, 0);
    headsetWindow.clear();
    RestoreGraphicsState();
}

void ShowScreen() {
    if (!hasPixels) return;
    RestoreGraphicsState();
    ShowFullSurface();
}

void FillRectangle(int left, int top, int right, int bottom, const Tint &tint) {
    if (!hasPixels) return;
    BeginOwnDrawing(0);
    glColor4f(tint.red, tint.green, tint.blue, tint.alpha);
    glRecti(left, bottom, right, top);
}

void OutlineRectangle(int left, int top, int right, int bottom, const Tint &tint) {
    FillRectangle(left, top, right, top - 1, tint);
    FillRectangle(left, bottom + 1, right, bottom, tint);
    FillRectangle(left, top - 1, left + 1, bottom + 1, tint);
    FillRectangle(right - 1, top - 1, right, bottom + 1, tint);
}

void DrawSimulatorText(const std::string &text, int x, int y, const Tint &tint, bool isOwn) {
    if (!isOwn) KeepText(text, x, y, tint.red, tint.green, tint.blue);
    if (hasPixels) DrawLetters(text, x, y, tint);
}

void DrawPluginText(std::string_view text, int x, int y, float red, float green, float blue) {
    KeepText(text, x, y, red, green, blue);
    if (hasPixels) DrawLetters(text, x, y, {red, green, blue, 1});
}

int TextWidth(const std::string &text) {
    return CountLetters(text) * ScreenFontAdvance;
}

int TextHeight() {
    return ScreenFontRowCount;
}

void ResetScreen() {
    texts.clear();
    spareTexts.clear();
    hasPixels = false;
    ResetCockpitView();
    ResetGraphicsState();
}

} // namespace simhost
