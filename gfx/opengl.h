// OpenGL as the simulator offers it to plug-ins: the fixed functions of 2.1, and framebuffer objects.
#pragma once

#if APL
#include <OpenGL/gl.h>
#include <OpenGL/glext.h>
#else
#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#endif
