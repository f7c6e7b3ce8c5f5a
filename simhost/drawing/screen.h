// The picture: an OpenGL context without a display, the frame drawn into it, and the texts that were drawn.
//
// Ordinary frames run every callback with the context current, but onto a surface of one pixel, so that
// flights stay fast; a frame that somebody looks at (a screenshot, the window) is drawn again with pixels.
#pragma once

#include <string>
#include <vector>

namespace simhost {

// One string as the simulator drew it.
struct DrawnText {
    std::string text;
    int x = 0, y = 0; // of the baseline's left end, boxels
    float red = 0, green = 0, blue = 0;
    std::string window; // in the headset: the window's title; x and y are then the window's own
};

// Draws a frame: background, draw callbacks by phase, windows from back to front. withPixels false: only
// what callbacks do and say counts.
void DrawFrame(bool withPixels);

// The strings of the last frame, in the order drawn.
const std::vector<DrawnText> &ScreenTexts();

// Draws the frame with pixels and writes it as a PNG. False with the reason in error.
bool WriteScreenshot(const std::string &path, std::string &error);

// The same of a window that is in the headset alone, by its title.
bool WriteHeadsetPicture(const std::string &title, const std::string &path, std::string &error);

// The frame's pixels after DrawFrame(true): RGBA, rows from the top, width * height * 4 bytes.
std::vector<unsigned char> ReadScreenPixels();

// Makes the current OpenGL context (that of a real window) the one to draw with. To be called before a
// plug-in is loaded; once there is a context it changes nothing.
void UseCurrentContext();

// Copies the frame of DrawFrame(true), and what was drawn over it since, to that window's own framebuffer.
void ShowScreen();

// ---- For the modules that draw (decorations, menus, widgets); from the start of a frame with pixels to the
// start of the next one. In other frames nothing comes of it. What calls a plug-in's function that draws does
// so inside a DrawingScope (graphics_state.h). ----

struct Tint {
    float red, green, blue, alpha;
};

// While one exists, drawing goes onto a window in the headset, whose lower left is (0, 0).
class HeadsetScope {
public:
    HeadsetScope(const std::string &title, int width, int height);
    ~HeadsetScope();
    HeadsetScope(const HeadsetScope &) = delete;
    HeadsetScope &operator=(const HeadsetScope &) = delete;

private:
    bool hasSurface = false;
};
void FillRectangle(int left, int top, int right, int bottom, const Tint &tint);
void OutlineRectangle(int left, int top, int right, int bottom, const Tint &tint);

// The simulator's own text, not kept in ScreenTexts when isOwn (titles, menus).
void DrawSimulatorText(const std::string &text, int x, int y, const Tint &tint, bool isOwn);
int TextWidth(const std::string &text);
int TextHeight();

// The screen's size, boxels.
int ScreenWidth();
int ScreenHeight();

} // namespace simhost
