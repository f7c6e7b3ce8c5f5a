// The systems engine: a frame of made models, loading, and growing the recognition context.
#include <algorithm>
#include <benchmark/benchmark.h>

#include "bench/frames.h"
#include "bench/made_model.h"
#include "frame/kill_switch.h"
#include "simhost/simulator.h"
#include "systems/cycle.h"
#include "systems/model.h"
#include "systems/model_end.h"
#include "systems/reader.h"
#include "voice/action_queue.h"
#include "voice/phrases.h"

namespace {

void BM_SystemsCycle(benchmark::State &state) {
    const int parameters = static_cast<int>(state.range(0));
    BenchFolder folder;
    folder.Write("sys.txt", MadeModel(parameters));
    CreateSystemsFromFile();
    isFennicKillDrfWasReaded = true;
    TimeEachFrame(state, [] { CalculateSystemsCycle(0, 0, 0, nullptr); });
    state.counters["per_param"] = benchmark::Counter(parameters, benchmark::Counter::kIsIterationInvariantRate
                                                                     | benchmark::Counter::kInvert);
    DeleteSystems();
}
BENCHMARK(BM_SystemsCycle)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

std::string ModelOfLines(size_t lines) {
    std::string text;
    for (int parameters = 1000;; parameters += 1000) {
        text = MadeModel(parameters);
        if (static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) >= lines) return text;
    }
}

void BM_LoadSystemsFile(benchmark::State &state) {
    BenchFolder folder;
    const std::string text = ModelOfLines(static_cast<size_t>(state.range(0)));
    folder.Write("sys.txt", text);
    for (auto _ : state) {
        CreateSystemsFromFile();
        state.PauseTiming();
        DeleteSystems();
        state.ResumeTiming();
    }
    state.counters["lines"] = static_cast<double>(std::count(text.begin(), text.end(), '\n'));
}
BENCHMARK(BM_LoadSystemsFile)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_AddPhrasesToContext(benchmark::State &state) {
    BenchFolder folder;
    int round = 0;
    for (auto _ : state) {
        for (int64_t i = 0; i < state.range(0); i++)
            MakeStrokaFromText("Confirm item " + std::to_string(i) + " of round " + std::to_string(round),
                               AddToContext);
        round++;
    }
}
BENCHMARK(BM_AddPhrasesToContext)->Arg(20000)->Unit(benchmark::kMillisecond)->Iterations(10);

} // namespace
