// A context without a surface, of Mesa's software driver.
#include "simhost/drawing/make_context.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <cstdlib>

#include "simhost/drawing/system_libraries.h"

namespace simhost {

std::string MakeContext() {
    for (const std::string &missing : {LoadOpenGl(), LoadSystemLibrary("libEGL.so.1")})
        if (!missing.empty()) return missing;
    // One thread of our own is enough, also for a cache on disk, and there is no graphics card to look for.
    // What the user has set stands.
    setenv("LP_NUM_THREADS", "0", 0);
    setenv("MESA_SHADER_CACHE_DISABLE", "true", 0);
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 0);
    const EGLDisplay display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA,
                                                     reinterpret_cast<void *>(EGL_DEFAULT_DISPLAY), nullptr);
    if (display == EGL_NO_DISPLAY) return "EGL has no display without a screen";
    if (eglInitialize(display, nullptr, nullptr) == EGL_FALSE) return "EGL finds no driver";
    if (eglBindAPI(EGL_OPENGL_API) == EGL_FALSE) return "EGL does not offer desktop OpenGL";
    const EGLint attributes[] = {EGL_CONTEXT_MAJOR_VERSION, 2, EGL_CONTEXT_MINOR_VERSION, 1, EGL_NONE};
    const EGLContext context = eglCreateContext(display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, attributes);
    if (context == EGL_NO_CONTEXT) return "EGL gives no context of OpenGL 2.1";
    if (eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context) == EGL_FALSE)
        return "EGL gives no context without a surface";
    return "";
}

} // namespace simhost
