// OpenGL's own functions that make objects, under their own names: plug-ins find these in the program before
// those of the library, which do the work. Where a plug-in calls one decides whether it is told off.
#include <dlfcn.h>

#include <string_view>

#include "simhost/drawing/gl_context.h"
#include "simhost/drawing/graphics_state.h"
#include "simhost/modules.h"

namespace simhost {

namespace {

constinit int misplacedObjects = 0;

// The simulator promises OpenGL to these alone: elsewhere its context may be another's, or none.
bool MayMakeObjects() {
    return currentRunning.plugin == XPLM_PLUGIN_XPLANE || isInDrawingScope()
           || std::string_view(currentRunning.doing) == "flight loop"
           || std::string_view(currentRunning.doing) == ProgramItself;
}

template <typename Function> Function Next(const char *name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

void NoteOpenGlObject(const char *function) {
    if (MayMakeObjects()) return;
    misplacedObjects++;
    ReportOnce("makes an OpenGL object (" + std::string(function)
               + "), which is for draw callbacks and flight loops");
}

int MisplacedOpenGlObjects() {
    return misplacedObjects;
}

void ResetOpenGlObjects() {
    misplacedObjects = 0;
}

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
