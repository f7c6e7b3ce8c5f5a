// An offscreen buffer: a framebuffer that renders into one texture.
#pragma once

struct FBO_class {
    unsigned framebuffer = 0; // OpenGL's name, 0: none
    int texture = 0;          // the simulator's texture number that it renders into
    int width = 0, height = 0;

    // Gives the texture an empty picture of width × height pixels and a framebuffer. When OpenGL refuses, a
    // line "fboStatus=…" in the log says so, and the buffer stays empty. For drawing and flight loops.
    void MakeFBO(int texture, int width, int height);
    void DeleteFBO();

    // From Bind to Unbind drawing goes into the buffer, which starts out transparent: one unit per pixel,
    // (0, 0) at the lower left. The simulator's framebuffer, viewport and projection come back afterwards.
    // Bind returns false, and nothing is to be drawn, when there is no buffer.
    bool Bind();
    void Unbind();
};

const int fboSizePX = 700;

// What Bind changes in OpenGL, as it was before.
struct GraphicsBefore {
    int framebuffer = 0;
    int blend[4] = {}; // source and destination for the colours, the same for alpha
    int viewport[4] = {}, matrixMode = 0;
    bool isScissored = false;
    double projection[16] = {}, modelView[16] = {};
};

struct OffscreenState {
    FBO_class frame; // on the texture "fbo"
    bool isBound = false;
    GraphicsBefore before; // while a buffer is bound
};
extern OffscreenState offscreen;
inline FBO_class &FBOcontrol = offscreen.frame;
void FBOinit();
void FBOkill();

// Everything as when the program starts.
void ResetOffscreen();
