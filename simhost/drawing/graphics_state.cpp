// The original state lies at the bottom of OpenGL's attribute stack and is taken from there and put back
// before each callback, which undoes what callbacks, and calls from outside a frame, have changed. What the
// stack does not hold (matrices, the program, the surface) is set.
#include "simhost/drawing/graphics_state.h"

#include <cstdio>
#include <set>
#include <string>
#include <utility>

#include "simhost/drawing/gl_context.h"
#include "simhost/drawing/screen.h"
#include "simhost/modules.h"

namespace simhost {

namespace {

struct AppliedState {
    GraphicsState state;
    int textures[TextureUnitCount] = {};
};
constinit AppliedState applied; // what the original state is, at first

constinit bool isOriginalStateSaved = false;
constinit int drawingWidth = 0, drawingHeight = 0; // 0: the screen's

int DrawingWidth() {
    return drawingWidth > 0 ? drawingWidth : ScreenWidth();
}
int DrawingHeight() {
    return drawingHeight > 0 ? drawingHeight : ScreenHeight();
}

constinit bool isScopeOpen = false;

constinit std::set<std::pair<XPLMPluginID, std::string>> *reported = nullptr;

void SetSwitch(GLenum what, bool on) {
    if (on)
        glEnable(what);
    else
        glDisable(what);
}

// Inside glBegin nothing can be asked: the value stays.
int Ask(GLenum what) {
    GLint value = -1;
    glGetIntegerv(what, &value);
    return value;
}

void SaveOriginalState() {
    BindSurface();
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glAlphaFunc(GL_GREATER, 0);
    glDepthFunc(GL_LEQUAL);
    SetSwitch(GL_BLEND, true);
    glDepthMask(GL_FALSE);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    isOriginalStateSaved = true;
}

void EmptyMatrixStack(GLenum mode, GLenum depth) {
    glMatrixMode(mode);
    for (int levels = Ask(depth); levels > 1; levels--) glPopMatrix();
    glLoadIdentity();
}

void SetMatrices() {
    EmptyMatrixStack(GL_PROJECTION, GL_PROJECTION_STACK_DEPTH);
    glOrtho(0, DrawingWidth(), 0, DrawingHeight(), -1, 1);
    EmptyMatrixStack(GL_TEXTURE, GL_TEXTURE_STACK_DEPTH);
    EmptyMatrixStack(GL_MODELVIEW, GL_MODELVIEW_STACK_DEPTH);
}

void TakeBackAttributes() {
    for (int depth = Ask(GL_ATTRIB_STACK_DEPTH); depth > 0; depth--) glPopAttrib();
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    for (int depth = Ask(GL_CLIENT_ATTRIB_STACK_DEPTH); depth > 0; depth--) glPopClientAttrib();
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
}

// A lost context would never stop to tell errors.
constexpr int MostErrors = 8;

// Errors from outside callbacks are nobody's that could be named.
void ForgetErrors() {
    for (int i = 0; i < MostErrors && glGetError() != GL_NO_ERROR; i++) {
    }
}

void ReportMistakes() {
    if (Ask(GL_MODELVIEW_STACK_DEPTH) < 0) {
        ReportOnce("ends between glBegin and glEnd");
        glEnd();
        glGetError(); // of the question
    }
    if (Ask(GL_ATTRIB_STACK_DEPTH) != 1 || Ask(GL_CLIENT_ATTRIB_STACK_DEPTH) != 1)
        ReportOnce("leaves pushed attributes, or pops too many");
    if (Ask(GL_MODELVIEW_STACK_DEPTH) != 1 || Ask(GL_PROJECTION_STACK_DEPTH) != 1)
        ReportOnce("leaves pushed matrices");
    for (int i = 0; i < MostErrors; i++) {
        const GLenum error = glGetError();
        if (error == GL_NO_ERROR) break;
        char text[64];
        std::snprintf(text, sizeof text, "causes the OpenGL error 0x%04X", error);
        ReportOnce(text);
    }
}

} // namespace

void ReportOnce(const std::string &mistake) {
    if (!reported) reported = new std::set<std::pair<XPLMPluginID, std::string>>;
    const std::string what = std::string(currentRunning.doing) + " " + mistake;
    if (reported->insert({currentRunning.plugin, what}).second) ReportMisuse(what);
}

bool ProvideGraphics() {
    if (!ProvideContext()) return false;
    if (!isOriginalStateSaved) {
        SaveOriginalState();
        RestoreGraphicsState();
    }
    return true;
}

void RestoreGraphicsState() {
    if (!isOriginalStateSaved) return;
    BindSurface(); // at first, since the attributes hold which of its buffers is drawn on
    TakeBackAttributes();
    glUseProgram(0);
    glViewport(0, 0, DrawingWidth(), DrawingHeight());
    SetMatrices();
    applied = {};
}

void SetDrawingSize(int width, int height) {
    drawingWidth = width;
    drawingHeight = height;
}

void SetGraphicsState(const GraphicsState &state) {
    GraphicsState &old = applied.state;
    if (state.fog != old.fog) SetSwitch(GL_FOG, state.fog);
    if (state.lighting != old.lighting) SetSwitch(GL_LIGHTING, state.lighting);
    if (state.alphaTest != old.alphaTest) SetSwitch(GL_ALPHA_TEST, state.alphaTest);
    if (state.alphaBlend != old.alphaBlend) SetSwitch(GL_BLEND, state.alphaBlend);
    if (state.depthTest != old.depthTest) SetSwitch(GL_DEPTH_TEST, state.depthTest);
    if (state.depthWrite != old.depthWrite) glDepthMask(state.depthWrite ? GL_TRUE : GL_FALSE);
    for (int unit = 0; unit < TextureUnitCount; unit++) {
        const bool on = unit < state.textureUnits;
        if (on == (unit < old.textureUnits)) continue;
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
        SetSwitch(GL_TEXTURE_2D, on);
        glActiveTexture(GL_TEXTURE0);
    }
    old = state;
}

void BindTexture(int texture, int unit) {
    if (applied.textures[unit] == texture) return;
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(texture));
    glActiveTexture(GL_TEXTURE0);
    applied.textures[unit] = texture;
}

DrawingScope::DrawingScope() {
    isScopeOpen = true;
    if (!isOriginalStateSaved) return;
    RestoreGraphicsState();
    ForgetErrors();
}

DrawingScope::~DrawingScope() {
    if (isOriginalStateSaved) ReportMistakes();
    isScopeOpen = false;
}

bool isInDrawingScope() {
    return isScopeOpen;
}

void ResetGraphicsState() {
    delete reported;
    reported = nullptr;
    ResetOpenGlObjects();
}

} // namespace simhost
