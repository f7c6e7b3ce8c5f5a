// Pictures: PNG files loaded once as textures and addressed by an integer id, and how they are drawn. All
// drawing belongs into a draw callback or a window's draw function. x and y are boxels, y up; alpha 0 to 1.
//
// A file is read and decoded when it is loaded, which may be anywhere. Its texture is made when it is first
// drawn, since the simulator promises OpenGL to draw callbacks and flight loops alone.
#pragma once

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct textures_class {
    int number = 0;                   // the simulator's texture number, 0 before it was drawn
    double width = 0.0, height = 0.0; // boxels at its own size: pixels, unless it has several for a boxel
    std::string name;
    int detail = 1;        // pixels along the side of a boxel; to be set before loading
    bool isShrunk = false; // to be set before drawing: it is drawn smaller than its pixels are, in many sizes

    void Load(const std::string &path);

    // Loads a PNG file. A picture that is broken, missing, larger than OpenGL takes or than 8192 pixels gives
    // lines in the log and a texture without a picture, which draws nothing. Returns 1.
    int LoadPNGTexture(const std::string &path);

    // The texture number, made now if it is not yet; 0 without a picture. For drawing and flight loops.
    int Provide();

    // Gives the texture back to OpenGL.
    void Delete();

private:
    std::unique_ptr<unsigned char, decltype(&std::free)> pixels{nullptr, std::free}; // until it is made

    void Upload();
};

struct TexturesState {
    std::vector<textures_class> textures; // the id is the index
    std::map<std::string, int> byName;
    int body = 0, leftHand = 0, rightHand = 0, button8px = 0, offscreen = 0; // ids of the plug-in's own
};
extern TexturesState texturesState;
inline std::vector<textures_class> &textures = texturesState.textures;
inline std::map<std::string, int> &texturesMap = texturesState.byName;
inline int &png_btn_body = texturesState.body, &png_btn_hand_l = texturesState.leftHand;
inline int &png_btn_hand_r = texturesState.rightHand, &png_btn_8px = texturesState.button8px;
inline int &tex_fbo = texturesState.offscreen;

// Of the position creator's pictures, which are drawn at up to three times their size.
const int PanelPictureDetail = 4;

// Loads the plug-in's five pictures into the ids above.
void LoadTextures();

// Loads "data/png/" + name + ".png" of the plug-in's folder; returns its id. A picture with detail pixels
// along the side of a boxel stays sharp where a boxel is several pixels of the screen.
int LoadTexture(const std::string &name, int detail = 1);

// Gives all textures back to OpenGL and forgets them.
void UnLoadTextures();

// The texture of an id; one without a picture for an id that there is not.
textures_class &TextureOfId(int id);

// For drawing parts of a texture: sets the simulator's graphics state and binds. False, and nothing is to be
// drawn, when there is no picture.
bool BeginTexturedDrawing(textures_class &texture);

// Drawing by id. An id that there is not draws nothing. The first row of a picture is drawn at the top.
// Suffixes: XY the lower left corner, WH the size (else the picture's own), RGB a tint, C a tint from the
// palette, T alpha, A an angle in degrees by which the picture turns about its middle inside the upright
// rectangle, clockwise, its corners cut; S one side for both.
void DrawTextureIdXYRGBT(int id, double x, double y, double r, double g, double b, double t);
void DrawTextureNameXYRGBT(const std::string &name, double x, double y, double r, double g, double b,
                           double t);
void DrawTextureIdXYCT(int id, double x, double y, int C, double t);
void DrawTextureIdXYWHRGBT(int id, double x, double y, double w, double h, double r, double g, double b,
                           double t);
void DrawTextureIdXYWHCT(int id, double x, double y, double w, double h, int C, double t);
void DrawMirroredTextureIdXYWHCT(int id, double x, double y, double w, double h, int C, double t);

// Many copies of one picture at its own size, far cheaper than one by one: what a drawing costs is the state
// that goes with it.
struct TextureCopy {
    double x, y;
    int C;    // tint from the palette
    double t; // alpha
};
void DrawTextureIdCopies(int id, const std::vector<TextureCopy> &copies);

// For a texture that an offscreen buffer rendered into, whose first row is the lowest and whose colours are
// already weighted with their alpha.
void DrawTextureBufferIdXYWHCT(int id, double x, double y, double w, double h, int C, double t);

void DrawRotTextureIdXYA(int id, double x, double y, double angle);
void DrawRotTextureIdXYACT(int id, double x, double y, double angle, int C, double t);
void DrawRotTextureIdXYASCT(int id, double x, double y, double angle, double size, int C, double t);

// Everything as when the program starts.
void ResetTextures();
