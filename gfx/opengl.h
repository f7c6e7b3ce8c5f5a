// OpenGL as the simulator offers it to plug-ins: the fixed functions of 2.1, and framebuffer objects.
#pragma once

#if IBM
#include <windows.h> // which its gl.h takes for granted
#endif
#if APL
#define GL_SILENCE_DEPRECATION // deprecated there, and what the simulator offers
#include <OpenGL/gl.h>
#include <OpenGL/glext.h>
#else
#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#endif
