// The state of OpenGL that the simulator promises to what draws, and the part of it that plug-ins change
// through XPLMSetGraphicsState and XPLMBindTexture2d, which is cached.
#pragma once

#include <string>

namespace simhost {

struct GraphicsState {
    bool fog = false;
    int textureUnits = 0; // units 0 to textureUnits - 1 have texturing on
    bool lighting = false;
    bool alphaTest = false;
    bool alphaBlend = true;
    bool depthTest = false;
    bool depthWrite = false;
};
inline constexpr int TextureUnitCount = 8;

// For whoever needs OpenGL from now on: makes the context and notes its original state. False when there is
// no OpenGL.
bool ProvideGraphics();

// Brings OpenGL from wherever it is to the state at the start of a callback: the simulator's surface, one
// unit per pixel with (0, 0) at the lower left, everything else as it came, blending on. Nothing while there
// is no context.
void RestoreGraphicsState();

// The size of what is drawn on from now on, boxels; the screen's for 0, 0.
void SetDrawingSize(int width, int height);

void SetGraphicsState(const GraphicsState &state);
void BindTexture(int texture, int unit);

// Around a function of a plug-in that draws, inside a RunningScope: it finds the state in order, whatever ran
// before it. Mistakes that it leaves behind are named in the log, once each.
class DrawingScope {
public:
    DrawingScope();
    ~DrawingScope();
    DrawingScope(const DrawingScope &) = delete;
    DrawingScope &operator=(const DrawingScope &) = delete;
};

bool isInDrawingScope();

// The running plug-in's mistake with OpenGL: a line in the log, once for each place.
void ReportOnce(const std::string &mistake);

// A call that makes an object of OpenGL: where the running plug-in may not, it is reported and counted.
void NoteOpenGlObject(const char *function);
int MisplacedOpenGlObjects(); // since the reset
void ResetOpenGlObjects();

void ResetGraphicsState(); // forgets the mistakes

} // namespace simhost
