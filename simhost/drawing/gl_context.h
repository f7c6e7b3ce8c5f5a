// OpenGL without a display, and the surfaces that are the simulator's screen: one pixel for ordinary frames,
// the screen's size for frames that somebody looks at. The context lasts as long as the process.
#pragma once

#include <string>

#if IBM
#include <windows.h> // which its gl.h takes for granted
#undef FindWindow
#endif
#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

namespace simhost {

// Makes the context on the first call: Mesa's software driver, so that a picture is the same everywhere.
// False where there is none; then a line on stderr has said so once, and OpenGL's calls do nothing.
bool ProvideContext();

bool hasContext();
const std::string &WhyNoContext();

// The surface to draw on from now on. False, and the surface of one pixel, when there can be none of that
// size.
bool UseFullSurface(int width, int height);
void UsePixelSurface();

// A surface for what the headset shows, in place of the chosen one until EndHeadsetSurface. False, and all as
// it was, when there can be none of that size.
bool BeginHeadsetSurface(int width, int height);
void EndHeadsetSurface();

// Makes the chosen surface the one that OpenGL draws on and reads.
void BindSurface();

// A surface of the same size as the full one, with several samples for each pixel where the driver has them,
// to draw on until EndScene, which puts the picture onto the full surface. False when there can be none.
bool BeginScene();
void EndScene();

// Copies the full surface to the framebuffer of the adopted context's window.
void ShowFullSurface();

} // namespace simhost
