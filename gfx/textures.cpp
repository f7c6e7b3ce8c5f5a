// Loading and drawing of pictures. A file is judged by its header before anything is decoded, so that a
// damaged or hostile one costs no memory; a texture without a picture stays valid and draws nothing. The
// decoded pixels wait in memory for the first drawing and are freed with it.
#include "gfx/textures.h"

#include <lodepng.h>

#include <string_view>
#include <vector>

#include "XPLMGraphics.h"
#include "XPLMUtilities.h"
#include "gfx/opengl.h"
#include "gfx/palette.h"
#include "gfx/pixel_store.h"
#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/paths.h"

TexturesState texturesState;

namespace {

const unsigned LargestSide = 8192;      // pixels; the plug-in's own pictures are far smaller
const size_t HighestCompression = 1032; // of deflate, times
const GLfloat SharperBias = -0.5F;      // of what is drawn smaller, in halvings of its size
const char *const TooLarge = "the picture is larger than a texture can be";

// LodePNG's interface in C: as a shared library it may have another C++ runtime than the plug-in.
struct Picture {
    std::unique_ptr<unsigned char, decltype(&std::free)> pixels{nullptr, std::free}; // RGBA, upper row first
    unsigned width = 0, height = 0;
};

struct DecoderState : LodePNGState {
    DecoderState() { lodepng_state_init(this); }
    ~DecoderState() { lodepng_state_cleanup(this); }
    DecoderState(const DecoderState &) = delete;
    DecoderState &operator=(const DecoderState &) = delete;
};

// Empty, or why the file gives no picture.
std::string_view DecodePNG(const std::string &file, Picture &picture) {
    const auto *bytes = reinterpret_cast<const unsigned char *>(file.data());
    DecoderState state;
    unsigned width = 0, height = 0;
    unsigned failed = lodepng_inspect(&width, &height, &state, bytes, file.size());
    if (failed != 0) return lodepng_error_text(failed);
    if (width > LargestSide || height > LargestSide) return TooLarge;
    const size_t size = lodepng_get_raw_size(width, height, &state.info_png.color);
    if (size / HighestCompression > file.size()) return "the file is too short for the size it names";
    const size_t filterBytes = 16 * static_cast<size_t>(height + 1); // more than all passes of rows have
    state.decoder.zlibsettings.max_output_size = size + filterBytes;
    state.decoder.read_text_chunks = 0;
    unsigned char *pixels = nullptr;
    failed = lodepng_decode(&pixels, &width, &height, &state, bytes, file.size());
    picture.pixels.reset(pixels);
    if (failed != 0) return lodepng_error_text(failed);
    picture.width = width;
    picture.height = height;
    return "";
}

void ClampToEdge() {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

// Between glBegin and glEnd. leftmost 1 mirrors it. The picture's upper edge has the texture coordinate
// upper, its lower edge the other one of 0 and 1.
void AddQuad(double x, double y, double w, double h, double upper, double leftmost = 0) {
    const double lower = 1.0 - upper, rightmost = 1.0 - leftmost;
    glTexCoord2d(leftmost, upper);
    glVertex2d(x, y + h);
    glTexCoord2d(rightmost, upper);
    glVertex2d(x + w, y + h);
    glTexCoord2d(rightmost, lower);
    glVertex2d(x + w, y);
    glTexCoord2d(leftmost, lower);
    glVertex2d(x, y);
}

void DrawQuad(double x, double y, double w, double h, double upper) {
    glBegin(GL_QUADS);
    AddQuad(x, y, w, h, upper);
    glEnd();
}

// The picture turns by turning what the corners show the other way.
void DrawRotatedQuad(double x, double y, double w, double h, double angle) {
    ClampToEdge();
    glPushAttrib(GL_TRANSFORM_BIT);
    glMatrixMode(GL_TEXTURE);
    glPushMatrix();
    glTranslated(0.5, 0.5, 0);
    glRotated(angle, 0, 0, -1);
    glTranslated(-0.5, -0.5, 0);
    DrawQuad(x, y, w, h, 0);
    glPopMatrix();
    glPopAttrib();
}

void DrawRotated(int id, double x, double y, double w, double h, double angle, const RGB_Col &colour,
                 double t) {
    if (!BeginTexturedDrawing(TextureOfId(id))) return;
    glColor4d(colour.r, colour.g, colour.b, t);
    DrawRotatedQuad(x, y, w, h, angle);
    XPLMBindTexture2d(0, 0);
}

} // namespace

void textures_class::Load(const std::string &path) {
    if (LoadPNGTexture(path) == 0) LogFileProblem("Texture failed to load: ", path);
}

int textures_class::LoadPNGTexture(const std::string &path) {
    string2debugString("Load Texture: ", path, 0);
    Picture picture;
    const std::string file = ReadFileToString(path, PictureFile);
    const std::string_view failure = DecodePNG(file, picture);
    if (!failure.empty()) {
        XPLMDebugString("PNG texture failed to load\n");
        LogFileProblem("", path, std::string(failure));
    }
    XPLMSetGraphicsState(0, 1, 0, 1, 1, 1, 1);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA); // what all drawing of pictures counts on
    width = static_cast<double>(picture.width) / detail;
    height = static_cast<double>(picture.height) / detail;
    pixels = std::move(picture.pixels);
    return 1;
}

int textures_class::Provide() {
    if (pixels) Upload();
    return number;
}

void textures_class::Upload() {
    const auto waiting = std::move(pixels);
    XPLMGenerateTextureNumbers(&number, 1); // without OpenGL 0; its answers are good from here on
    GLint largest = 0;
    if (number != 0) glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    const double columns = width * detail, rows = height * detail;
    if (columns > largest || rows > largest) {
        if (number != 0) LogFileProblem("", name, TooLarge);
        width = height = 0.0;
        return;
    }
    XPLMBindTexture2d(number, 0);
    const PixelsFromMemory source;
    glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, isShrunk ? GL_TRUE : GL_FALSE);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, static_cast<GLsizei>(columns), static_cast<GLsizei>(rows), 0,
                 GL_RGBA, GL_UNSIGNED_BYTE, waiting.get());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, isShrunk ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    if (isShrunk) glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_LOD_BIAS, SharperBias);
    ClampToEdge();
    XPLMBindTexture2d(0, 0);
}

void textures_class::Delete() {
    const GLuint name = static_cast<GLuint>(number);
    if (number != 0) {
        XPLMBindTexture2d(0, 0); // the simulator may still have it for bound
        glDeleteTextures(1, &name);
    }
    number = 0;
    width = height = 0.0;
    pixels = nullptr;
}

void LoadTextures() {
    png_btn_body = LoadTexture("body", PanelPictureDetail);
    png_btn_hand_l = LoadTexture("hand_l", PanelPictureDetail);
    png_btn_hand_r = LoadTexture("hand_r", PanelPictureDetail);
    png_btn_8px = LoadTexture("btn_8px", PanelPictureDetail);
    tex_fbo = LoadTexture("fbo");
}

int LoadTexture(const std::string &name, int detail) {
    const int id = static_cast<int>(textures.size());
    textures_class &texture = textures.emplace_back();
    texture.name = name;
    texture.detail = detail;
    texture.isShrunk = detail > 1;
    texture.Load(WhatPluginPath() + "data/png/" + name + ".png");
    texturesMap.insert({name, id});
    return id;
}

void UnLoadTextures() {
    for (textures_class &texture : textures) texture.Delete();
    textures.clear();
    texturesMap.clear();
}

textures_class &TextureOfId(int id) {
    static textures_class none;
    return id < 0 || static_cast<size_t>(id) >= textures.size() ? none : textures[static_cast<size_t>(id)];
}

bool BeginTexturedDrawing(textures_class &texture) {
    if (texture.Provide() == 0 || texture.width == 0.0) return false;
    XPLMSetGraphicsState(0, 1, 0, 1, 1, 1, 1);
    XPLMBindTexture2d(texture.number, 0);
    return true;
}

void DrawTextureIdXYRGBT(int id, double x, double y, double r, double g, double b, double t) {
    const textures_class &texture = TextureOfId(id);
    DrawTextureIdXYWHRGBT(id, x, y, texture.width, texture.height, r, g, b, t);
}

void DrawTextureNameXYRGBT(const std::string &name, double x, double y, double r, double g, double b,
                           double t) {
    const auto found = texturesMap.find(name);
    if (found != texturesMap.end()) DrawTextureIdXYRGBT(found->second, x, y, r, g, b, t);
}

void DrawTextureIdXYCT(int id, double x, double y, int C, double t) {
    const textures_class &texture = TextureOfId(id);
    DrawTextureIdXYWHCT(id, x, y, texture.width, texture.height, C, t);
}

void DrawTextureIdXYWHRGBT(int id, double x, double y, double w, double h, double r, double g, double b,
                           double t) {
    if (!BeginTexturedDrawing(TextureOfId(id))) return;
    glColor4d(r, g, b, t);
    DrawQuad(x, y, w, h, 0);
    XPLMBindTexture2d(0, 0);
}

void DrawTextureIdXYWHCT(int id, double x, double y, double w, double h, int C, double t) {
    const RGB_Col &colour = PaletteColour(C);
    DrawTextureIdXYWHRGBT(id, x, y, w, h, colour.r, colour.g, colour.b, t);
}

void DrawMirroredTextureIdXYWHCT(int id, double x, double y, double w, double h, int C, double t) {
    if (!BeginTexturedDrawing(TextureOfId(id))) return;
    const RGB_Col &colour = PaletteColour(C);
    glColor4d(colour.r, colour.g, colour.b, t);
    glBegin(GL_QUADS);
    AddQuad(x, y, w, h, 0, 1);
    glEnd();
    XPLMBindTexture2d(0, 0);
}

void DrawTextureIdCopies(int id, const std::vector<TextureCopy> &copies) {
    textures_class &texture = TextureOfId(id);
    if (copies.empty() || !BeginTexturedDrawing(texture)) return;
    glBegin(GL_QUADS);
    for (const TextureCopy &copy : copies) {
        const RGB_Col &colour = PaletteColour(copy.C);
        glColor4d(colour.r, colour.g, colour.b, copy.t);
        AddQuad(copy.x, copy.y, texture.width, texture.height, 0);
    }
    glEnd();
    XPLMBindTexture2d(0, 0);
}

// What was blended in an offscreen buffer has its alpha in its colours already.
void DrawTextureBufferIdXYWHCT(int id, double x, double y, double w, double h, int C, double t) {
    if (!BeginTexturedDrawing(TextureOfId(id))) return;
    const RGB_Col &colour = PaletteColour(C);
    glPushAttrib(GL_COLOR_BUFFER_BIT);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glColor4d(colour.r * t, colour.g * t, colour.b * t, t);
    DrawQuad(x, y, w, h, 1);
    glPopAttrib();
    XPLMBindTexture2d(0, 0);
}

void DrawRotTextureIdXYA(int id, double x, double y, double angle) {
    DrawRotTextureIdXYACT(id, x, y, angle, ColourWhite, 1.0);
}

void DrawRotTextureIdXYACT(int id, double x, double y, double angle, int C, double t) {
    const textures_class &texture = TextureOfId(id);
    DrawRotated(id, x, y, texture.width, texture.height, angle, PaletteColour(C), t);
}

void DrawRotTextureIdXYASCT(int id, double x, double y, double angle, double size, int C, double t) {
    DrawRotated(id, x, y, size, size, angle, PaletteColour(C), t);
}

void ResetTextures() {
    MakeFresh(texturesState);
}
