// The system's library has the functions of OpenGL 1.1; the driver has the others, for who asks by name.
// Where it does not, nothing is drawn: no framebuffer is complete then.
#include "gfx/opengl.h"

namespace {

template <typename Function> Function Find(const char *name) {
    return reinterpret_cast<Function>(reinterpret_cast<void *>(wglGetProcAddress(name)));
}

} // namespace

// name, result, parameters, arguments
#define FROM_DRIVER(name, result, parameters, arguments)                                                     \
    extern "C" result APIENTRY name parameters {                                                             \
        static result(APIENTRY *call) parameters = nullptr;                                                  \
        if (!call) call = Find<result(APIENTRY *) parameters>(#name);                                        \
        return call ? call arguments : result();                                                             \
    }

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
