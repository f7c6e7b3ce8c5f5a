// Lines and filled shapes. They are drawn untextured and without the depth buffer; what OpenGL keeps
// beside the simulator's graphics state is put back by each function.
#include "gfx/drawing.h"

#include <algorithm>
#include <cmath>

#include "XPLMGraphics.h"
#include "gfx/opengl.h"
#include "util/angles.h"
#include "util/numbers.h"

namespace {

const GLushort Dashes = 0x3F3F; // 6 pixels on, 2 off

double pixelsPerBoxel = 1.0;

void SetColour(double r, double g, double b, double t) {
    XPLMSetGraphicsState(0, 0, 0, 0, 1, 0, 0);
    glColor4d(r, g, b, t);
}

void SetColour(int C, double t) {
    const RGB_Col &colour = PaletteColour(C);
    SetColour(colour.r, colour.g, colour.b, t);
}

// A width of OpenGL's own when there is none given; less than none would be an error.
void SetWidth(double width) {
    if (width > 0) glLineWidth(static_cast<GLfloat>(width * pixelsPerBoxel));
}

// Between glBegin and glEnd.
void AddSegment(double x1, double y1, double x2, double y2) {
    glVertex2i(TruncateToInt(x1), TruncateToInt(y1));
    glVertex2i(TruncateToInt(x2), TruncateToInt(y2));
}

void DrawSegment(double x1, double y1, double x2, double y2, double width) {
    SetWidth(width);
    glBegin(GL_LINES);
    AddSegment(x1, y1, x2, y2);
    glEnd();
    glLineWidth(1.0F);
}

} // namespace

void SetDrawingScale(double pixels) {
    pixelsPerBoxel = pixels;
}

double DrawingScale() {
    return pixelsPerBoxel;
}

void DrawLine2D(double x1, double y1, double x2, double y2, double r, double g, double b, double width,
                double t) {
    SetColour(r, g, b, t);
    DrawSegment(x1, y1, x2, y2, width);
}

void DrawLineCT(double x1, double y1, double x2, double y2, int C, double width, double t) {
    SetColour(C, t);
    DrawSegment(x1, y1, x2, y2, width);
}

void DrawLineStrippedCT(double x1, double y1, double x2, double y2, int C, double width, double t) {
    SetColour(C, t);
    glPushAttrib(GL_LINE_BIT);
    glEnable(GL_LINE_STIPPLE);
    glLineStipple(1, Dashes);
    DrawSegment(x1, y1, x2, y2, width);
    glPopAttrib();
    glLineWidth(1.0F);
}

void DrawRestangleCT(double x1, double y1, double x2, double y2, int C, double width, double t) {
    SetColour(C, t);
    SetWidth(width);
    glBegin(GL_LINES);
    AddSegment(x1, y2, x1, y1); // once around: OpenGL leaves a segment's last pixel to the next one
    AddSegment(x2, y1, x2, y2);
    AddSegment(x1, y1, x2, y1);
    AddSegment(x2, y2, x1, y2);
    glEnd();
    glLineWidth(1.0F);
}

void FillRestangleCT(double x1, double y1, double x2, double y2, int C, double t) {
    SetColour(C, t);
    glRectd(x1, y1, x2, y2);
}

void FillRestangleRGBT(double x1, double y1, double x2, double y2, double r, double g, double b, double t) {
    SetColour(r, g, b, t);
    glRectd(x1, y1, x2, y2);
}

// Two half circles make the outline; the last pixel towards it fades out.
void FillCapsuleRGBT(const Capsule &capsule, double r, double g, double b, double t) {
    const double thickest = std::max(capsule.radius1, capsule.radius2) * pixelsPerBoxel;
    const int halfSteps = static_cast<int>(std::clamp(3 + thickest, 3.0, 16.0)); // as round as is seen
    const int corners = 2 * (halfSteps + 1);
    const double along = std::atan2(capsule.y2 - capsule.y1, capsule.x2 - capsule.x1);
    const double fade = 0.5 / pixelsPerBoxel;
    const auto corner = [&](int index, double margin) {
        const bool isFirst = index <= halfSteps;
        const double angle = along + deg2rad * (90 + 180.0 * (isFirst ? index : index - 1) / halfSteps);
        const double radius = std::max(0.0, (isFirst ? capsule.radius1 : capsule.radius2) + margin);
        glVertex2d((isFirst ? capsule.x1 : capsule.x2) + radius * std::cos(angle),
                   (isFirst ? capsule.y1 : capsule.y2) + radius * std::sin(angle));
    };
    SetColour(r, g, b, t);
    glBegin(GL_POLYGON);
    for (int i = 0; i < corners; i++) corner(i, -fade);
    glEnd();
    glBegin(GL_TRIANGLE_STRIP);
    for (int i = 0; i <= corners; i++) {
        glColor4d(r, g, b, t);
        corner(i % corners, -fade);
        glColor4d(r, g, b, 0);
        corner(i % corners, fade);
    }
    glEnd();
}

void DrawNeedleXYCH(double x, double y, int C, double width, double length, double angle) {
    SetColour(C, 1.0);
    glPushAttrib(GL_COLOR_BUFFER_BIT | GL_HINT_BIT | GL_LINE_BIT);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_LINE_SMOOTH);
    glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
    SetWidth(width);
    glBegin(GL_LINES);
    glVertex2d(x, y);
    glVertex2d(x + length * std::sin(angle * deg2rad), y + length * std::cos(angle * deg2rad));
    glEnd();
    glPopAttrib();
    glLineWidth(1.0F);
}
