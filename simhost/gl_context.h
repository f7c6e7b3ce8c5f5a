// OpenGL without a display, and the surfaces that are the simulator's screen: one pixel for ordinary frames,
// the screen's size for frames that somebody looks at. The context lasts as long as the process.
#pragma once

#include <string>

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

namespace simhost {

// Makes the context on the first call: Mesa's software driver, so that a picture is the same everywhere.
// False where there is none; then a line on stderr has said so once, and OpenGL's calls do nothing.
bool ProvideContext();

bool HasContext();
const std::string &WhyNoContext();

// The surface to draw on from now on. False, and the surface of one pixel, when there can be none of that
// size.
bool UseFullSurface(int width, int height);
void UsePixelSurface();

// Makes the chosen surface the one that OpenGL draws on and reads.
void BindSurface();

// Copies the full surface to the framebuffer of the adopted context's window.
void ShowFullSurface();

} // namespace simhost
