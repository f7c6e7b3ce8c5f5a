// A whole frame with the shipped Cessna: the main loop, the systems cycle, and the headless simulator around
// the very library that users install.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "XPLMDefs.h"
#include "bench/frames.h"
#include "figure/animation.h"
#include "figure/channels.h"
#include "figure/positions.h"
#include "frame/main_loop.h"
#include "simhost/interface/plugins.h"
#include "simhost/simulator.h"
#include "simhost/world/aircraft_folder.h"
#include "systems/cycle.h"
#include "util/clock.h"

PLUGIN_API int XPluginStart(char *outName, char *outSig, char *outDesc);
PLUGIN_API void XPluginStop(void);

namespace {

const double FrameSeconds = 1.0 / 60.0;
const int WarmUpFrames = 600; // past the start-up of voice and figure
const double Never = 1e9;

// A copy of the staged Cessna, loaded in the simulator.
class Cessna {
public:
    std::string library;

    Cessna() {
        const std::string folder = simhost::FindAircraft("Cessna_172SP", simhost::ProgramFolder());
        std::string error = "no staged Cessna_172SP beside this program";
        if (!folder.empty()) scratch.root = simhost::MakeScratchRoot(error);
        if (scratch.root.empty() || !simhost::MakeScratchAircraft(folder, scratch, error)) {
            std::cerr << error << "\n";
            std::exit(1);
        }
        const simhost::AircraftFile file = simhost::FindAircraftFile(scratch.aircraft);
        simhost::ResetSimulator();
        simhost::SetFolders(scratch.root, scratch.aircraft, file.name);
        simhost::SetText("sim/aircraft/view/acf_descrip", file.description);
        library = simhost::FindPluginLibraries(scratch.aircraft).at(0);
    }
    ~Cessna() {
        std::error_code failed;
        std::filesystem::remove_all(scratch.root, failed);
    }
    Cessna(const Cessna &) = delete;
    Cessna &operator=(const Cessna &) = delete;

private:
    simhost::ScratchAircraft scratch;
};

// The plug-in's code running in this program, as installed in the Cessna.
class RunningPlugin {
public:
    RunningPlugin() {
        char name[256], signature[256], description[256];
        simhost::ActAsPlugin(cessna.library);
        XPluginStart(name, signature, description);
        for (int frame = 0; frame < WarmUpFrames; frame++) simhost::StepFrame(FrameSeconds);
        NextRestPositionTime = static_cast<float>(Never); // a rest pose is an event, not a steady frame
        for (int frame = 0; frame < WarmUpFrames; frame++) simhost::StepFrame(FrameSeconds);
    }
    ~RunningPlugin() { XPluginStop(); }
    RunningPlugin(const RunningPlugin &) = delete;
    RunningPlugin &operator=(const RunningPlugin &) = delete;

private:
    Cessna cessna;
};

// Times a frame's work while flight time goes on.
template <typename Work> void TimeFrames(benchmark::State &state, Work work) {
    double time = simhost::FlightTimeSeconds();
    TimeEachFrame(state, [&] {
        simhost::SetFlightTimeSeconds(time += FrameSeconds);
        work();
    });
}

void BM_MainIdle(benchmark::State &state) {
    RunningPlugin plugin;
    TimeFrames(state, [] { Main(0, 0, 0, nullptr); });
}
BENCHMARK(BM_MainIdle)->Unit(benchmark::kMicrosecond);

int MovingAxes() {
    int count = 0;
    for (const structAnim &channel : anim)
        for (double speed : channel.speed) count += speed != 0.0;
    return count;
}

// Starts the move that has most to do, and lets it last.
void StartLongMove() {
    std::string position = positionList.at(0);
    int axes = 0;
    for (const std::string &candidate : positionList) {
        LoadPositionFromFile(candidate);
        if (MovingAxes() > axes) position = candidate;
        axes = std::max(axes, MovingAxes());
    }
    LoadPositionFromFile(position);
    TargetTimeSEC = Never;
}

void BM_MainDuringMove(benchmark::State &state) {
    RunningPlugin plugin;
    StartLongMove();
    TimeFrames(state, [] { Main(0, 0, 0, nullptr); });
    state.counters["axes"] = MovingAxes();
    TargetTimeSEC = -1.0;
}
BENCHMARK(BM_MainDuringMove)->Unit(benchmark::kMicrosecond);

// The figure alone: moving to a position, then at rest; eyes and face with both.
void BM_FigureDuringMove(benchmark::State &state) {
    RunningPlugin plugin;
    StartLongMove();
    TimeFrames(state, [] {
        FlightTimeSEC += FrpSEC;
        Animation();
        EyesAnimation();
        FaceAnimation();
    });
    state.counters["axes"] = MovingAxes();
    TargetTimeSEC = -1.0;
}
BENCHMARK(BM_FigureDuringMove)->Unit(benchmark::kMicrosecond);

void BM_FigureAtRest(benchmark::State &state) {
    RunningPlugin plugin;
    TimeFrames(state, [] {
        FlightTimeSEC += FrpSEC;
        LiveAnimation();
        EyesAnimation();
        FaceAnimation();
    });
}
BENCHMARK(BM_FigureAtRest)->Unit(benchmark::kMicrosecond);

void BM_SystemsCycleCessna(benchmark::State &state) {
    RunningPlugin plugin;
    TimeFrames(state, [] { CalculateSystemsCycle(0, 0, 0, nullptr); });
}
BENCHMARK(BM_SystemsCycleCessna)->Unit(benchmark::kMicrosecond);

void BM_SimulatedFrames(benchmark::State &state) {
    Cessna cessna;
    std::string error;
    const XPLMPluginID plugin = simhost::LoadPlugin(cessna.library, error);
    if (plugin == XPLM_NO_PLUGIN_ID) {
        state.SkipWithError(error.c_str());
        return;
    }
    for (auto _ : state) simhost::StepFrame(FrameSeconds);
    state.counters["frames/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
    simhost::UnloadPlugin(plugin);
}
BENCHMARK(BM_SimulatedFrames)->Unit(benchmark::kMicrosecond);

} // namespace
