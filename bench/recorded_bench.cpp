// The shipped aircraft with most parameters in a recorded take-off (recorded_flight.lua), whose datarefs are
// played back: by the cycle and by the evaluation of everything, a whole flight by turns. Both are compared
// first. There is no C++ beside them, since compiled/make_models.cpp refuses what talks.
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include <benchmark/benchmark.h>

#include "bench/made_model.h"
#include "bench/ways.h"
#include "frame/kill_switch.h"
#include "simhost/simulator.h"
#include "simhost/system.h"
#include "simhost/world/aircraft_folder.h"
#include "systems/cycle.h"
#include "systems/links.h"
#include "systems/model_end.h"
#include "systems/program.h"
#include "systems/reader.h"
#include "voice/action_queue.h"

namespace {

const int Stretches = 25;

struct Change {
    size_t dataref;
    double value;
};

struct Recording {
    std::vector<std::string> names;
    std::vector<std::vector<Change>> frames;

    Recording() {
        std::ifstream file(RECORDED_FLIGHT);
        std::string line, name;
        std::getline(file, line);
        for (std::istringstream words(line); words >> name;) names.push_back(name);
        while (std::getline(file, line)) {
            frames.emplace_back();
            Change change{};
            for (std::istringstream words(line); words >> change.dataref >> change.value;)
                frames.back().push_back(change);
        }
    }
};

class RecordedFlight {
public:
    explicit RecordedFlight(const Recording &recording) : recording(recording) {
        const std::string aircraft = simhost::FindAircraft("737_Level_Up", simhost::ProgramFolder());
        if (aircraft.empty()) {
            std::cerr << "no staged 737_Level_Up beside this program\n";
            std::exit(1);
        }
        std::filesystem::copy(aircraft + "/plugins/fennic/64/systems", folder.plugin + "systems",
                              std::filesystem::copy_options::recursive);
        for (const std::string &fullName : recording.names) {
            const std::string name = DatarefName(fullName).name; // the plug-in's own are not there
            if (!XPLMFindDataRef(name.c_str())) simhost::PublishDataref(name, xplmType_Float);
            dataref_class dataref;
            dataref.Init(fullName, "exist", 0, 0.0);
            datarefs.push_back(dataref.Access());
        }
        ResetActionQueue();
        CreateSystemsFromFile();
        isFennicKillDrfWasReaded = true;
        ForEachAddress([this](const ParameterAddress &place) {
            out_parameter_struct &parameter = *ParameterAt(place);
            if (parameter.inDataref.handle) inputs.push_back(parameter.inDataref.Access());
        });
    }
    ~RecordedFlight() { ForgetModel(); }
    RecordedFlight(const RecordedFlight &) = delete;
    RecordedFlight &operator=(const RecordedFlight &) = delete;

    // Calls back behind each frame. Actions leave the queue as in flight, one a frame, but nobody does them.
    template <typename Look> void Fly(FrameEvaluation evaluation, Look look) {
        frameEvaluation = evaluation;
        for (const std::vector<Change> &frame : recording.frames) {
            Play(frame);
            if (!executeFlow.empty()) executeFlow.erase(executeFlow.begin());
            CalculateSystemsCycle(0, 0, 0, nullptr);
            look();
        }
    }

    // The datarefs alone.
    void Host() {
        for (const std::vector<Change> &frame : recording.frames) {
            Play(frame);
            for (const DatarefAccess &input : inputs) hostValue += input.Get();
        }
        benchmark::DoNotOptimize(hostValue);
    }

private:
    const Recording &recording;
    BenchFolder folder;
    std::vector<DatarefAccess> datarefs; // of the recording
    std::vector<DatarefAccess> inputs;   // of the model
    double hostValue = 0.0;

    void Play(const std::vector<Change> &frame) {
        for (const Change &change : frame) datarefs[change.dataref].Set(change.value);
    }
};

// The values of all parameters behind each frame.
std::vector<std::vector<double>> ValuesOf(const Recording &recording, FrameEvaluation evaluation) {
    RecordedFlight flight(recording);
    std::vector<std::vector<double>> values;
    flight.Fly(evaluation, [&] {
        const auto first = systemsProgram.values.begin(); // constants stand behind the parameters
        values.emplace_back(first, first + static_cast<std::ptrdiff_t>(systemsProgram.firedBlocks.size()));
    });
    return values;
}

bool isSame(const std::vector<double> &a, const std::vector<double> &b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

void BM_Recorded(benchmark::State &state) {
    const Recording recording;
    const auto values = ValuesOf(recording, FrameEvaluation::AsItPays);
    const auto plainValues = ValuesOf(recording, FrameEvaluation::OfAll);
    size_t changed = 0;
    for (size_t frame = 0; frame < values.size(); frame++) {
        if (!isSame(values[frame], plainValues[frame])) {
            state.SkipWithError("the cycle and the evaluation of everything differ");
            return;
        }
        for (size_t i = 0; frame > 0 && i < values[frame].size(); i++)
            changed += values[frame][i] != values[frame - 1][i];
    }
    if (recording.frames.size() < 1000 || changed == 0) {
        state.SkipWithError("nothing is recorded");
        return;
    }
    RecordedFlight flight(recording);
    Way cycle{[&] { flight.Fly(FrameEvaluation::AsItPays, [] {}); }};
    Way plain{[&] { flight.Fly(FrameEvaluation::OfAll, [] {}); }};
    Way host{[&] { flight.Host(); }};
    const auto frames = static_cast<double>(recording.frames.size());
    for (auto _ : state) {
        for (int stretch = 0; stretch < Stretches; stretch++) {
            cycle.Fly();
            plain.Fly();
            host.Fly();
        }
        state.SetIterationTime(cycle.fastest / frames);
    }
    state.counters["changed%"] =
        100.0 * static_cast<double>(changed) / frames / static_cast<double>(values.front().size());
    state.counters["plain/cycle"] = plain.fastest / cycle.fastest;
    state.counters["own"] = (plain.fastest - host.fastest) / (cycle.fastest - host.fastest);
    state.counters["host_us"] = host.fastest / frames * 1e6;
}
BENCHMARK(BM_Recorded)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

} // namespace
