// A frame with the position creator: never opened, open, and closed again. Its panel is rendered and its
// window drawn in every frame while it is open; the overlay draws too. The one allocation is the simulator's,
// for the window's title.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "bench/frames.h"
#include "bench/made_model.h"
#include "figure/position_creator.h"
#include "frame/kill_switch.h"
#include "frame/overlay.h"
#include "gfx/fonts.h"
#include "gfx/opengl.h"
#include "gfx/textures.h"
#include "simhost/drawing/screen.h"

namespace {

enum { NeverOpened, Open, Closed };

void BM_PositionCreator(benchmark::State &state) {
    BenchFolder folder;
    for (const char *kind : {"fnt", "png"})
        std::filesystem::copy(std::filesystem::path(SHIPPED_DATA) / kind, folder.plugin + "data/" + kind);
    LoadTextures();
    LoadFonts();
    isFennicKillDrfWasReaded = true;
    XPLMRegisterDrawCallback(DrawScreen, xplm_Phase_Window, 0, nullptr);
    if (state.range(0) != NeverOpened) EditorPanel_Create();
    if (state.range(0) == Closed) XPLMSetWindowIsVisible(EditorPanel.window, 0);
    TimeEachFrame(state, [] {
        simhost::DrawFrame(false);
        glFinish();
    });
    EditorPanel.Delete();
    XPLMUnregisterDrawCallback(DrawScreen, xplm_Phase_Window, 0, nullptr);
    CloseOverlay();
    UnLoadFonts();
    UnLoadTextures();
}
BENCHMARK(BM_PositionCreator)->Arg(NeverOpened)->Arg(Open)->Arg(Closed)->Unit(benchmark::kMicrosecond);

} // namespace
