// OpenGL's own functions that make objects, under their own names: plug-ins find these in the program before
// those of the library, which do the work.
#include <dlfcn.h>

#include "simhost/drawing/gl_context.h"
#include "simhost/drawing/graphics_state.h"

namespace simhost {

namespace {

template <typename Function> Function Next(const char *name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

} // namespace simhost

// name, result, parameters, arguments
#define WATCHED(name, result, parameters, arguments)                                                         \
    extern "C" __attribute__((visibility("default"))) result name parameters {                               \
        simhost::NoteOpenGlObject(#name);                                                                    \
        static const auto next = simhost::Next<result(*) parameters>(#name);                                 \
        return next arguments;                                                                               \
    }

WATCHED(glGenTextures, void, (GLsizei count, GLuint *names), (count, names))
WATCHED(glGenFramebuffers, void, (GLsizei count, GLuint *names), (count, names))
WATCHED(glGenRenderbuffers, void, (GLsizei count, GLuint *names), (count, names))
WATCHED(glGenBuffers, void, (GLsizei count, GLuint *names), (count, names))
WATCHED(glGenLists, GLuint, (GLsizei count), (count))
WATCHED(glCreateShader, GLuint, (GLenum type), (type))
WATCHED(glCreateProgram, GLuint, (), ())
WATCHED(glTexImage2D, void,
        (GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height, GLint border,
         GLenum format, GLenum type, const void *pixels),
        (target, level, internalFormat, width, height, border, format, type, pixels))
