// The EGL context and its framebuffer objects. An EGL context without a surface has no framebuffer of its
// own, so a plug-in that binds number 0 draws nowhere; as in the simulator, it has to ask what was bound.
#include "simhost/drawing/gl_context.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "simhost/drawing/screen.h"
#include "simhost/drawing/system_libraries.h"
#include "simhost/interface/plugins.h"

namespace simhost {

namespace {

enum class ContextState { None, Ready, Impossible };
constinit ContextState contextState = ContextState::None;

std::string whyNoContext;

struct Surface {
    GLuint framebuffer = 0, colour = 0, depth = 0;
    int width = 0, height = 0;
};
constinit Surface pixelSurface, fullSurface, sceneSurface, headsetSurface;
constinit const Surface *surface = &pixelSurface, *surfaceBefore = nullptr;

// Empty when the context is made and current, or what went wrong.
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

void DeleteSurface(Surface &old) {
    glDeleteFramebuffers(1, &old.framebuffer);
    glDeleteRenderbuffers(1, &old.colour);
    glDeleteRenderbuffers(1, &old.depth);
    old = {};
}

GLuint MakeRenderbuffer(GLenum format, GLenum attachment, int width, int height, int samples) {
    GLuint buffer = 0;
    glGenRenderbuffers(1, &buffer);
    glBindRenderbuffer(GL_RENDERBUFFER, buffer);
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, format, width, height);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
    return buffer;
}

bool MakeSurface(Surface &made, int width, int height, int samples = 0) {
    if (made.width == width && made.height == height) return true;
    DeleteSurface(made);
    GLint largest = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &largest);
    if (width < 1 || height < 1 || width > largest || height > largest) return false;
    glGenFramebuffers(1, &made.framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, made.framebuffer);
    made.colour = MakeRenderbuffer(GL_RGBA8, GL_COLOR_ATTACHMENT0, width, height, samples);
    made.depth = MakeRenderbuffer(GL_DEPTH24_STENCIL8, GL_DEPTH_STENCIL_ATTACHMENT, width, height, samples);
    glBindRenderbuffer(GL_RENDERBUFFER, 0);
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) {
        DeleteSurface(made);
        return false;
    }
    made.width = width;
    made.height = height;
    return true;
}

void CopyPicture(const Surface &from, GLuint framebuffer) {
    glBindFramebuffer(GL_READ_FRAMEBUFFER, from.framebuffer);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, framebuffer);
    glBlitFramebuffer(0, 0, from.width, from.height, 0, 0, from.width, from.height, GL_COLOR_BUFFER_BIT,
                      GL_NEAREST);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
}

} // namespace

bool ProvideContext() {
    if (contextState != ContextState::None) return hasContext();
    const RunningScope scope(XPLM_PLUGIN_XPLANE, "preparing OpenGL"); // whoever asked for it
    whyNoContext = MakeContext();
    contextState = whyNoContext.empty() ? ContextState::Ready : ContextState::Impossible;
    if (hasContext())
        UsePixelSurface();
    else
        std::fprintf(stderr, "fennic-sim: no OpenGL here (%s); the flight goes on without pictures\n",
                     whyNoContext.c_str());
    return hasContext();
}

bool hasContext() {
    return contextState == ContextState::Ready;
}

const std::string &WhyNoContext() {
    return whyNoContext;
}

void UseCurrentContext() {
    if (contextState != ContextState::None) return;
    contextState = ContextState::Ready;
    UsePixelSurface();
}

bool UseFullSurface(int width, int height) {
    surface = &fullSurface;
    if (MakeSurface(fullSurface, width, height)) return true;
    UsePixelSurface();
    return false;
}

void UsePixelSurface() {
    surface = &pixelSurface;
    MakeSurface(pixelSurface, 1, 1);
}

bool BeginHeadsetSurface(int width, int height) {
    if (!MakeSurface(headsetSurface, width, height)) return false;
    surfaceBefore = surface;
    surface = &headsetSurface;
    return true;
}

void EndHeadsetSurface() {
    surface = surfaceBefore;
}

void BindSurface() {
    glBindFramebuffer(GL_FRAMEBUFFER, surface->framebuffer);
}

bool BeginScene() {
    constexpr int wantedSamples = 4;
    GLint mostSamples = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &mostSamples);
    if (!MakeSurface(sceneSurface, fullSurface.width, fullSurface.height,
                     std::min(wantedSamples, mostSamples)))
        return false;
    glBindFramebuffer(GL_FRAMEBUFFER, sceneSurface.framebuffer);
    return true;
}

void EndScene() {
    CopyPicture(sceneSurface, fullSurface.framebuffer);
}

void ShowFullSurface() {
    CopyPicture(fullSurface, 0);
}

} // namespace simhost
