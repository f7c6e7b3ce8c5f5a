// The functions of OpenGL beyond 1.1 that are drawn with. Where the driver lacks them nothing is drawn: no
// framebuffer is complete then.
#include "gfx/opengl.h"

#include "sdk/windows/driver_calls.h"

FROM_DRIVER(glBindBuffer, void, (GLenum target, GLuint buffer), (target, buffer))
FROM_DRIVER(glBlendFuncSeparate, void, (GLenum colour, GLenum toColour, GLenum alpha, GLenum toAlpha),
            (colour, toColour, alpha, toAlpha))
FROM_DRIVER(glBindFramebuffer, void, (GLenum target, GLuint framebuffer), (target, framebuffer))
FROM_DRIVER(glCheckFramebufferStatus, GLenum, (GLenum target), (target))
FROM_DRIVER(glDeleteFramebuffers, void, (GLsizei count, const GLuint *names), (count, names))
FROM_DRIVER(glFramebufferTexture2D, void,
            (GLenum target, GLenum attachment, GLenum kind, GLuint texture, GLint level),
            (target, attachment, kind, texture, level))
FROM_DRIVER(glGenFramebuffers, void, (GLsizei count, GLuint *names), (count, names))
