// The context's framebuffer objects. Nobody sees the framebuffer of its own, if it has one, so a plug-in that
// binds number 0 draws nowhere; as in the simulator, it has to ask what was bound.
#include "simhost/drawing/gl_context.h"

#include <algorithm>
#include <cstdio>

#include "simhost/drawing/make_context.h"
#include "simhost/drawing/screen.h"
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
