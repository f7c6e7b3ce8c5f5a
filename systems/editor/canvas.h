// What the systems editor draws with: areas, rows of text, and names cut so that both ends can be read.
//
// Rectangles are drawn at once, texts when the canvas ends, so that OpenGL changes its state twice a frame
// and not twice a word. Nothing is allocated once the buffers have grown to a full window.
#pragma once

#include <string_view>

#include "gfx/palette.h"

struct Area { // boxels, y up
    int left = 0, top = 0, right = 0, bottom = 0;

    bool isHit(int x, int y) const { return x >= left && x < right && y >= bottom && y < top; }
};

const int RowHeight = 18;
const int Gap = 6, NarrowGap = 4; // between what stands side by side

void BeginCanvas();
void EndCanvas();

// Texts stand in a row whose upper edge is top; what is wider than width is cut in its middle.
void DrawCut(std::string_view text, int x, int top, int width, int C);
void DrawCutRight(std::string_view text, int right, int top, int width, int C);

// A number with six significant digits, or as many as fit.
void DrawNumberRight(double value, int right, int top, int width, int C);

void FillArea(const Area &area, int C, double t);
void FrameArea(const Area &area, int C, double t);
