// Lines, rectangles and needles in the palette's colours (gfx/palette.h). Boxels, y up; width in boxels,
// 0 keeps OpenGL's; t is the alpha, 0 to 1. After each call the line width is 1.
#pragma once

#include "gfx/palette.h"

// How many pixels a boxel has along its side, for what is drawn from now on: lines, and letters of fonts that
// come in a larger size, too, keep to it. 1 but between two calls that set it.
void SetDrawingScale(double pixelsPerBoxel);
double DrawingScale();

// End points are rounded toward zero to whole pixels.
void DrawLine2D(double x1, double y1, double x2, double y2, double r, double g, double b, double width,
                double t);
void DrawLineCT(double x1, double y1, double x2, double y2, int C, double width, double t);
void DrawLineStrippedCT(double x1, double y1, double x2, double y2, int C, double width, double t); // dashed

// The outline of a rectangle: left, right, lower, upper edge.
void DrawRestangleCT(double x1, double y1, double x2, double y2, int C, double width, double t);

// A filled rectangle.
void FillRestangleCT(double x1, double y1, double x2, double y2, int C, double t);

void FillRestangleRGBT(double x1, double y1, double x2, double y2, double r, double g, double b, double t);

// A bar with round ends of different thickness, its edge smooth.
struct Capsule {
    double x1, y1, radius1, x2, y2, radius2;
};
void FillCapsuleRGBT(const Capsule &capsule, double r, double g, double b, double t);

// A smooth line from (x, y); angle in degrees, 0 up, growing clockwise.
void DrawNeedleXYCH(double x, double y, int C, double width, double length, double angle);
