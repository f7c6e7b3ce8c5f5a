/* A plug-in in C that draws with OpenGL itself. In the window phase, before the simulator, it does the
   mischief that the test asks for through "test/mode"; behind, it notes the state that it finds in
   "test/seen" and paints a red rectangle and a textured one. */
#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

#include <stddef.h>
#include <string.h>

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"

enum {
    CHANGE_EVERYTHING = 1,
    PUSH_AND_POP = 2,
    NEVER_END = 4,
    CAUSE_ERROR = 8,
    CHANGE_OUTSIDE_FRAMES = 16,
};

static int texture;
static XPLMDataRef mode, seen;

static void ChangeEverything(void) {
    static const unsigned char green[] = {0, 255, 0, 255};
    static const char *shader = "void main() { gl_FragColor = vec4(0, 1, 0, 1); }";
    GLuint buffer, fragments = glCreateShader(GL_FRAGMENT_SHADER), program = glCreateProgram();
    glShaderSource(fragments, 1, &shader, NULL);
    glCompileShader(fragments);
    glAttachShader(program, fragments);
    glLinkProgram(program);
    glUseProgram(program);
    glMatrixMode(GL_PROJECTION);
    glScalef(0.1f, 3, 1);
    glMatrixMode(GL_MODELVIEW);
    glTranslatef(500, 500, 0);
    glViewport(3, 4, 5, 6);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glColorMask(GL_FALSE, GL_FALSE, GL_TRUE, GL_TRUE);
    glEnable(GL_LIGHTING);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT_AND_BACK);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glBlendFunc(GL_ZERO, GL_ONE);
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, buffer);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glActiveTexture(GL_TEXTURE3);
    glEnable(GL_TEXTURE_2D);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, green);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 1);
    XPLMSetGraphicsState(1, 4, 1, 1, 0, 1, 1);
    XPLMBindTexture2d(texture, 0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
}

static void DoMischief(int what) {
    if (what & CHANGE_EVERYTHING) ChangeEverything();
    if (what & PUSH_AND_POP) {
        glPushMatrix();
        glTranslatef(100, 100, 0);
        glPushAttrib(GL_ENABLE_BIT);
        glEnable(GL_LIGHTING);
    }
    if (what & CAUSE_ERROR) glEnable(0x1234);
    if (what & NEVER_END) glBegin(GL_TRIANGLES);
}

static void NoteState(void) {
    float found[8], matrix[16];
    GLint viewport[4], framebuffer = 0;
    glGetIntegerv(GL_VIEWPORT, viewport);
    found[0] = (float)viewport[2];
    found[1] = (float)viewport[3];
    glGetFloatv(GL_PROJECTION_MATRIX, matrix);
    found[2] = matrix[0];
    found[3] = matrix[5];
    glGetFloatv(GL_MODELVIEW_MATRIX, matrix);
    found[4] = matrix[0];
    found[5] = matrix[12];
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &framebuffer);
    found[6] = framebuffer != 0 && glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    found[7] = (float)glIsEnabled(GL_LIGHTING);
    XPLMSetDatavf(seen, found, 0, 8);
}

static void PaintTexture(int left, int bottom, int right, int top) {
    XPLMSetGraphicsState(0, 1, 0, 0, 1, 0, 0);
    XPLMBindTexture2d(texture, 0);
    glColor3f(1, 1, 1);
    glBegin(GL_QUADS);
    glTexCoord2f(0, 0);
    glVertex2i(left, bottom);
    glTexCoord2f(1, 0);
    glVertex2i(right, bottom);
    glTexCoord2f(1, 1);
    glVertex2i(right, top);
    glTexCoord2f(0, 1);
    glVertex2i(left, top);
    glEnd();
}

static int Draw(XPLMDrawingPhase phase, int before, void *refcon) {
    (void)phase;
    (void)refcon;
    if (before) {
        DoMischief(XPLMGetDatai(mode));
        return 1;
    }
    NoteState();
    XPLMSetGraphicsState(0, 0, 0, 0, 0, 0, 0);
    glColor3f(1, 0, 0);
    glRecti(10, 20, 40, 30);
    PaintTexture(60, 20, 80, 40);
    return 1;
}

/* Blue below, white above. Like the flight loops of plug-ins that load their textures late. */
static void MakeTexture(void) {
    static const unsigned char pixels[] = {0, 0, 255, 255, 255, 255, 255, 255};
    XPLMGenerateTextureNumbers(&texture, 1);
    XPLMBindTexture2d(texture, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 1, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
}

__attribute__((visibility("default"))) int XPluginStart(char *name, char *signature, char *description) {
    strcpy(name, "Painter");
    strcpy(signature, "test.painter");
    strcpy(description, "Draws with OpenGL");
    mode = XPLMFindDataRef("test/mode");
    seen = XPLMFindDataRef("test/seen");
    MakeTexture();
    XPLMRegisterDrawCallback(Draw, xplm_Phase_Window, 1, NULL);
    XPLMRegisterDrawCallback(Draw, xplm_Phase_Window, 0, NULL);
    if (XPLMGetDatai(mode) & CHANGE_OUTSIDE_FRAMES) ChangeEverything();
    return 1;
}

__attribute__((visibility("default"))) void XPluginStop(void) {
    XPLMUnregisterDrawCallback(Draw, xplm_Phase_Window, 1, NULL);
    XPLMUnregisterDrawCallback(Draw, xplm_Phase_Window, 0, NULL);
}

__attribute__((visibility("default"))) int XPluginEnable(void) {
    return 1;
}

__attribute__((visibility("default"))) void XPluginDisable(void) {}

__attribute__((visibility("default"))) void XPluginReceiveMessage(XPLMPluginID from, int message,
                                                                  void *parameter) {
    (void)from;
    (void)message;
    (void)parameter;
}
