// A whole frame with the shipped Cessna and with the aircraft that has most parameters: the main loop, the
// systems cycle, and the headless simulator around the very library that users install.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "XPLMDefs.h"
#include "XPLMDisplay.h"
#include "XPLMProcessing.h"
#include "bench/frames.h"
#include "bench/ways.h"
#include "figure/animation.h"
#include "figure/channels.h"
#include "figure/positions.h"
#include "frame/main_loop.h"
#include "frame/settings.h"
#include "gfx/fonts.h"
#include "gfx/textures.h"
#include "simhost/interface/plugins.h"
#include "simhost/simulator.h"
#include "simhost/system.h"
#include "simhost/world/aircraft_folder.h"
#include "systems/cycle.h"
#include "systems/model_end.h"
#include "systems/program.h"
#include "systems/reader.h"
#include "util/clock.h"

PLUGIN_API int XPluginStart(char *outName, char *outSig, char *outDesc);
PLUGIN_API void XPluginStop(void);

namespace {

const double FrameSeconds = 1.0 / 60.0;
const int WarmUpFrames = 600; // past the start-up of voice and figure
const double Never = 1e9;

const char *const Cessna = "Cessna_172SP";
const char *const Largest = "737_Level_Up";

[[noreturn]] void End(const std::string &why) {
    std::cerr << why << "\n";
    std::exit(1);
}

// A copy of a staged aircraft, set up for her, loaded in the simulator.
class StagedAircraft {
public:
    std::string library;

    explicit StagedAircraft(const std::string &name) {
        const std::string folder = simhost::FindAircraft(name, simhost::ProgramFolder());
        std::string error = "no staged " + name + " beside this program";
        if (!folder.empty()) scratch.root = simhost::MakeScratchRoot(error);
        if (scratch.root.empty() || !simhost::MakeScratchAircraft(folder, scratch, error)) End(error);
        const simhost::AircraftFile file = simhost::FindAircraftFile(scratch.aircraft);
        simhost::ResetSimulator();
        simhost::SetFolders(scratch.root, scratch.aircraft, file.name);
        simhost::SetText("sim/aircraft/view/acf_descrip", file.description);
        library = simhost::FindPluginLibraries(scratch.aircraft).at(0);
        const std::filesystem::path seated = scratch.aircraft + "objects/kvfennic.obj";
        if (std::filesystem::exists(seated))
            std::filesystem::copy_file(std::filesystem::path(library).parent_path() / "data/obj/kvfennic.obj",
                                       seated, std::filesystem::copy_options::overwrite_existing);
    }
    ~StagedAircraft() {
        std::error_code failed;
        std::filesystem::remove_all(scratch.root, failed);
    }
    StagedAircraft(const StagedAircraft &) = delete;
    StagedAircraft &operator=(const StagedAircraft &) = delete;

private:
    simhost::ScratchAircraft scratch;
};

// Only what this program links: the aircraft's own library is not loaded.
void StartPlugin(const StagedAircraft &aircraft) {
    char name[256], signature[256], description[256];
    simhost::ActAsPlugin(aircraft.library);
    XPluginStart(name, signature, description);
}

// The plug-in's code running in this program, as installed in an aircraft.
class RunningPlugin {
public:
    explicit RunningPlugin(const std::string &name = Cessna) : aircraft(name) {
        StartPlugin(aircraft);
        for (int frame = 0; frame < WarmUpFrames; frame++) simhost::StepFrame(FrameSeconds);
        NextRestPositionTime = static_cast<float>(Never); // a rest pose is an event, not a steady frame
        for (int frame = 0; frame < WarmUpFrames; frame++) simhost::StepFrame(FrameSeconds);
        if (FlightTimeSEC == 0.0) End("she does nothing in the " + name);
    }
    ~RunningPlugin() { XPluginStop(); }
    RunningPlugin(const RunningPlugin &) = delete;
    RunningPlugin &operator=(const RunningPlugin &) = delete;

private:
    StagedAircraft aircraft;
};

// Times a frame's work while flight time goes on.
template <typename Work> void TimeFrames(benchmark::State &state, Work work) {
    double time = simhost::FlightTimeSeconds();
    TimeEachFrame(state, [&] {
        simhost::SetFlightTimeSeconds(time += FrameSeconds);
        work();
    });
}

template <typename Work> double SecondsOf(Work work) {
    const double begin = ProcessorSec();
    work();
    return ProcessorSec() - begin;
}

// The fastest of some stretches, a frame.
template <typename Frame> double FastestUs(Frame frame) {
    const int stretches = 30, frames = 30;
    double fastest = Never;
    for (int stretch = 0; stretch < stretches; stretch++)
        fastest = std::min(fastest, SecondsOf([&] {
                               for (int i = 0; i < frames; i++) frame();
                           }));
    return fastest / frames * 1e6;
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

// A plug-in that is called as often as she is, and does nothing.
void StartIdlePlugin() {
    XPLMRegisterDrawCallback([](XPLMDrawingPhase, int, void *) { return 1; }, xplm_Phase_Window, 0, nullptr);
    const XPLMFlightLoop_f loop = [](float, float, int, void *) { return -1.0F; };
    for (int i = 0; i < 2; i++) XPLMRegisterFlightLoopCallback(loop, -1.0F, nullptr);
}

// The simulator's frame with her, drawing included, and with one that does nothing, which is the host's. What
// the host takes to be asked and to write texts is in her own, and so is the drawing, which is what main loop
// and cycle leave of it.
void BM_WholeFrameLargest(benchmark::State &state) {
    const auto frame = [] { simhost::StepFrame(FrameSeconds); };
    double host = 0.0;
    {
        const StagedAircraft aircraft(Largest);
        simhost::ActAsPlugin(aircraft.library);
        StartIdlePlugin();
        host = FastestUs(frame);
    }
    RunningPlugin plugin(Largest);
    const auto inFlight = [](auto work) {
        return FastestUs([&] {
            simhost::SetFlightTimeSeconds(simhost::FlightTimeSeconds() + FrameSeconds);
            work();
        });
    };
    const double whole = FastestUs(frame);
    const double main = inFlight([] { Main(0, 0, 0, nullptr); });
    const double cycle = inFlight([] { CalculateSystemsCycle(0, 0, 0, nullptr); });
    TimeEachFrame(state, frame);
    state.counters["host_us"] = host;
    state.counters["own_us"] = whole - host;
    state.counters["main_us"] = main;
    state.counters["cycle_us"] = cycle;
}
BENCHMARK(BM_WholeFrameLargest)->Unit(benchmark::kMicrosecond);

// The start, and the shares of it that are done again by themselves.
void BM_StartLargest(benchmark::State &state) {
    double start = 0.0, settings = 0.0, systems = 0.0, program = 0.0, pictures = 0.0, fonts = 0.0,
           positions = 0.0;
    const auto time = [](double &sum, auto work) { sum += SecondsOf(work); };
    for (auto _ : state) {
        StagedAircraft aircraft(Largest);
        double all = 0.0;
        time(all, [&] { StartPlugin(aircraft); });
        state.SetIterationTime(all);
        start += all;
        time(settings, ReadSettings);
        time(program, [] { CurrentProgram(); });
        DeleteSystems();
        time(systems, [] { CreateSystemsFromFile(); });
        UnLoadTextures();
        time(pictures, LoadTextures);
        UnLoadFonts();
        time(fonts, LoadFonts);
        time(positions, ReadPositionFolder);
        XPluginStop();
    }
    state.counters["settings%"] = 100.0 * settings / start; // and whether the figure is seated
    state.counters["systems%"] = 100.0 * systems / start;
    state.counters["pictures%"] = 100.0 * pictures / start;
    state.counters["fonts%"] = 100.0 * fonts / start;
    state.counters["positions%"] = 100.0 * positions / start;
    state.counters["program%"] = 100.0 * program / start; // in the first frame
}
BENCHMARK(BM_StartLargest)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_SimulatedFrames(benchmark::State &state) {
    StagedAircraft aircraft(Cessna);
    std::string error;
    const XPLMPluginID plugin = simhost::LoadPlugin(aircraft.library, error);
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
