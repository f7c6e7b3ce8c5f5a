/* The declarations of OpenGL are the same on all systems. */
#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
