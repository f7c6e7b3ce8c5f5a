// Framebuffers that render into a texture. The simulator's own framebuffer has whatever number the simulator
// gave it, so what was bound is asked for and put back. Blending keeps a buffer's alpha right: what is drawn
// over something opaque leaves it opaque.
#include "gfx/offscreen.h"

#include "XPLMGraphics.h"
#include "gfx/opengl.h"
#include "gfx/pixel_store.h"
#include "gfx/textures.h"
#include "util/log.h"
#include "util/make_fresh.h"

OffscreenState offscreen;

namespace {

GLuint BoundFramebuffer() {
    GLint framebuffer = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer);
    return static_cast<GLuint>(framebuffer);
}

void Clear(float brightness) {
    glPushAttrib(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_SCISSOR_BIT);
    glDisable(GL_SCISSOR_TEST);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glClearColor(brightness, brightness, brightness, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glPopAttrib();
}

void SetMatrix(GLenum mode, const GLdouble *matrix) {
    glMatrixMode(mode);
    glLoadMatrixd(matrix);
}

void SetProjection(int width, int height) {
    glPushAttrib(GL_TRANSFORM_BIT);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, width, 0, height, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glPopAttrib();
}

// OpenGL's attribute stack is not held open for it: between Bind and Unbind others change the graphics state,
// which the simulator remembers itself, and Mesa then lost what lay below on the stack.
void SaveState() {
    GraphicsBefore &saved = offscreen.before;
    saved.framebuffer = static_cast<int>(BoundFramebuffer());
    glGetIntegerv(GL_BLEND_SRC_RGB, &saved.blend[0]);
    glGetIntegerv(GL_BLEND_DST_RGB, &saved.blend[1]);
    glGetIntegerv(GL_BLEND_SRC_ALPHA, &saved.blend[2]);
    glGetIntegerv(GL_BLEND_DST_ALPHA, &saved.blend[3]);
    glGetDoublev(GL_PROJECTION_MATRIX, saved.projection);
    glGetDoublev(GL_MODELVIEW_MATRIX, saved.modelView);
    glGetIntegerv(GL_VIEWPORT, saved.viewport);
    glGetIntegerv(GL_MATRIX_MODE, &saved.matrixMode);
    saved.isScissored = glIsEnabled(GL_SCISSOR_TEST) == GL_TRUE;
}

void RestoreState() {
    const GraphicsBefore &saved = offscreen.before;
    SetMatrix(GL_PROJECTION, saved.projection);
    SetMatrix(GL_MODELVIEW, saved.modelView);
    glMatrixMode(static_cast<GLenum>(saved.matrixMode));
    glViewport(saved.viewport[0], saved.viewport[1], saved.viewport[2], saved.viewport[3]);
    if (saved.isScissored) glEnable(GL_SCISSOR_TEST);
    glBlendFuncSeparate(static_cast<GLenum>(saved.blend[0]), static_cast<GLenum>(saved.blend[1]),
                        static_cast<GLenum>(saved.blend[2]), static_cast<GLenum>(saved.blend[3]));
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(saved.framebuffer));
}

// The texture gets an empty picture; false when OpenGL cannot make one of that size.
bool MakeEmptyPicture(int texture, int width, int height) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (texture <= 0 || width < 1 || height < 1 || width > largest || height > largest) return false;
    XPLMBindTexture2d(texture, 0);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    const PixelsFromMemory none;
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    XPLMBindTexture2d(0, 0);
    return true;
}

} // namespace

void FBO_class::MakeFBO(int textureNumber, int newWidth, int newHeight) {
    DeleteFBO();
    const bool hasPicture = MakeEmptyPicture(textureNumber, newWidth, newHeight);
    texture = hasPicture ? textureNumber : 0; // without a picture the framebuffer is incomplete
    width = newWidth;
    height = newHeight;
    const GLuint before = BoundFramebuffer();
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, framebuffer);
    glFramebufferTexture2D(GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D,
                           static_cast<GLuint>(texture), 0);
    const GLenum status = glCheckFramebufferStatus(GL_DRAW_FRAMEBUFFER);
    const bool isComplete = status == GL_FRAMEBUFFER_COMPLETE;
    if (isComplete) Clear(1.0F);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, before);
    if (isComplete) return;
    int2debugString("fboStatus=", static_cast<int>(status), 1);
    DeleteFBO();
}

void FBO_class::DeleteFBO() {
    if (framebuffer != 0) glDeleteFramebuffers(1, &framebuffer);
    *this = {};
}

bool FBO_class::Bind() {
    if (framebuffer == 0 || offscreen.isBound) return false;
    SaveState();
    offscreen.isBound = true;
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, framebuffer);
    glDisable(GL_SCISSOR_TEST);
    glViewport(0, 0, width, height);
    SetProjection(width, height);
    Clear(0.0F);
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    return true;
}

void FBO_class::Unbind() {
    if (!offscreen.isBound) return;
    RestoreState();
    offscreen.isBound = false;
}

void FBOinit() {
    FBOcontrol.MakeFBO(TextureOfId(tex_fbo).Provide(), fboSizePX, fboSizePX);
}

void FBOkill() {
    FBOcontrol.DeleteFBO();
}

void ResetOffscreen() {
    MakeFresh(offscreen);
}
