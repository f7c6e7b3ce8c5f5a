// Drawing texts with the shipped font, and pictures and lines, as the panels do in each frame: the plug-in's
// own work and the driver's, without pixels to look at.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "XPLMDisplay.h"
#include "bench/frames.h"
#include "bench/made_model.h"
#include "gfx/drawing.h"
#include "gfx/fonts.h"
#include "gfx/opengl.h"
#include "gfx/textures.h"
#include "simhost/drawing/screen.h"
#include "simhost/simulator.h"

namespace {

const int PerColumn = 50;
int64_t wanted = 0; // of each frame's texts or pictures

// Runs frames in which only the callback draws.
void DrawFrames(benchmark::State &state, XPLMDrawCallback_f draw) {
    wanted = state.range(0);
    simhost::SetScreenSize(1920, 1080);
    XPLMRegisterDrawCallback(draw, xplm_Phase_Window, 0, nullptr);
    TimeEachFrame(state, [] {
        simhost::DrawFrame(false);
        glFinish();
    });
    XPLMUnregisterDrawCallback(draw, xplm_Phase_Window, 0, nullptr);
    UnLoadFonts();
    UnLoadTextures();
}

int DrawTexts(XPLMDrawingPhase, int, void *) {
    for (int64_t i = 0; i < wanted; i++)
        DrawFontIdSXYC(fnt_Main, "twenty characters ok", static_cast<double>(i / PerColumn * 180),
                       static_cast<double>(i % PerColumn * 20), ColourWhite);
    return 1;
}

void BM_DrawTexts(benchmark::State &state) {
    BenchFolder folder;
    std::filesystem::copy(SHIPPED_DATA "/fnt", folder.plugin + "data/fnt",
                          std::filesystem::copy_options::recursive);
    LoadFonts();
    DrawFrames(state, DrawTexts);
}
BENCHMARK(BM_DrawTexts)->Arg(50)->Arg(500)->Unit(benchmark::kMicrosecond);

int DrawPictures(XPLMDrawingPhase, int, void *) {
    for (int64_t i = 0; i < wanted; i++) {
        const double x = static_cast<double>(i % PerColumn * 20), y = static_cast<double>(i / PerColumn * 20);
        DrawTextureIdXYCT(tex_fbo, x, y, ColourWhite, 1.0);
        DrawRestangleCT(x, y, x + 16, y + 16, ColourGrey, 1.0, 1.0);
    }
    return 1;
}

void BM_DrawPicturesAndRectangles(benchmark::State &state) {
    BenchFolder folder;
    std::filesystem::copy(SHIPPED_DATA "/png", folder.plugin + "data/png",
                          std::filesystem::copy_options::recursive);
    LoadTextures();
    DrawFrames(state, DrawPictures);
}
BENCHMARK(BM_DrawPicturesAndRectangles)->Arg(50)->Unit(benchmark::kMicrosecond);

} // namespace
