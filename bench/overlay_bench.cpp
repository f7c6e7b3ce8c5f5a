// Drawing the overlay: a frame with few and many lines on a screen that shows them all.
#include <benchmark/benchmark.h>

#include <string>

#include "XPLMDisplay.h"
#include "bench/frames.h"
#include "bench/made_model.h"
#include "frame/kill_switch.h"
#include "frame/overlay.h"

#include "simhost/drawing/screen.h"
#include "simhost/simulator.h"
#include "voice/executer.h"
#include "voice/recognition.h"

namespace {

const int TallScreen = 8000;

void BM_DrawOverlay(benchmark::State &state) {
    BenchFolder folder;
    simhost::SetScreenSize(1920, TallScreen);
    isFennicKillDrfWasReaded = true;
    fennicsay = {"Brakes?", "Seats and belts?", "Before start checklist."};
    for (int64_t i = 0; i < state.range(0); i++) answers.push_back("answer number " + std::to_string(i));
    XPLMRegisterDrawCallback(DrawScreen, xplm_Phase_Window, 0, nullptr);
    TimeEachFrame(state, [] { simhost::DrawFrame(false); });
    state.counters["strings"] = static_cast<double>(simhost::ScreenTexts().size());
    XPLMUnregisterDrawCallback(DrawScreen, xplm_Phase_Window, 0, nullptr);
    CloseOverlay();
    answers.clear();
    fennicsay.clear();
}
BENCHMARK(BM_DrawOverlay)->Arg(3)->Arg(30)->Arg(300)->Unit(benchmark::kMicrosecond);

} // namespace
