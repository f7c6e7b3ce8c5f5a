// The systems editor on a large model: a frame of its window, hidden and open, and what a click costs that
// changes something.
#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>

#include "bench/allocations.h"
#include "bench/made_model.h"
#include "frame/kill_switch.h"
#include "gfx/fonts.h"
#include "gfx/opengl.h"
#include "simhost/drawing/screen.h"
#include "simhost/simulator.h"
#include "systems/cycle.h"
#include "systems/editor/fields.h"
#include "systems/editor/model.h"
#include "systems/editor/state.h"
#include "systems/editor/undo.h"
#include "systems/editor/window.h"
#include "systems/model_end.h"
#include "systems/reader.h"
#include "util/clock.h"

namespace {

const int Parameters = 10000;

void LoadModel(const BenchFolder &folder) {
    folder.Write("sys.txt", MadeModel(Parameters));
    CreateSystemsFromFile();
    SysWindowCreate();
    isFennicKillDrfWasReaded = true;
    CalculateSystemsCycle(0, 0, 0, nullptr);
}

// Only the plug-in's callback is timed; the frame around it, and the driver's pixels, are not.
void BM_EditorFrame(benchmark::State &state) {
    BenchFolder folder;
    std::filesystem::copy(SHIPPED_DATA "/fnt", folder.plugin + "data/fnt",
                          std::filesystem::copy_options::recursive);
    LoadFonts();
    simhost::SetScreenSize(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    LoadModel(folder);
    isEditorShown = state.range(2) != 0;
    SelectPlace({3, 5, 7});
    const auto nextFrame = [] {
        FlightTimeSEC += 0.11;
        CalculateSystemsCycle(0, 0, 0, nullptr);
    };
    for (int frame = 0; frame < 300; frame++) { // until the value graph is full
        nextFrame();
        simhost::DrawFrame(false);
    }
    size_t allocations = 0;
    for (auto _ : state) {
        nextFrame();
        const size_t before = AllocationCount();
        const auto start = std::chrono::steady_clock::now();
        SysWindowCallback(SysWindow, nullptr);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        allocations += AllocationCount() - before;
        state.SetIterationTime(taken.count());
        glFinish();
    }
    state.counters["allocs/frame"] =
        static_cast<double>(allocations) / static_cast<double>(state.iterations());
    SysWindowDestroy();
    DeleteSystems();
    UnLoadFonts();
}
BENCHMARK(BM_EditorFrame)
    ->Args({1280, 800, 0})
    ->Args({1280, 800, 1})
    ->Args({2560, 1440, 1})
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

// A number is typed: the record is kept, all links are resolved again, and the cycle compiles its program.
void BM_EditorEdit(benchmark::State &state) {
    BenchFolder folder;
    LoadModel(folder);
    bool isOdd = false;
    for (auto _ : state) {
        SetField({FieldInit, {{3, 5, 7}, -1}, -1, -1}, (isOdd = !isOdd) ? "1" : "2");
        CalculateSystemsCycle(0, 0, 0, nullptr);
    }
    SysWindowDestroy();
    DeleteSystems();
}
BENCHMARK(BM_EditorEdit)->Unit(benchmark::kMillisecond);

// A system is renamed, which one link in twenty follows.
void BM_EditorRename(benchmark::State &state) {
    BenchFolder folder;
    LoadModel(folder);
    int number = 0;
    for (auto _ : state) {
        RenameSystem({3}, "NAME" + std::to_string(number++));
        CalculateSystemsCycle(0, 0, 0, nullptr);
    }
    state.counters["undo_bytes/step"] =
        static_cast<double>(UndoBytes()) / static_cast<double>(CountUndoSteps());
    SysWindowDestroy();
    DeleteSystems();
}
BENCHMARK(BM_EditorRename)->Unit(benchmark::kMillisecond);

} // namespace
