// The shipped aircraft with most parameters in a recorded take-off (recorded_flight.lua), whose datarefs are
// played back: by the cycle, by the evaluation of everything and by the C++ that was made from its files, a
// whole flight by turns. All are compared first, with what they queue and expect.
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include <benchmark/benchmark.h>

#include "bench/compiled/compiled_models.h"
#include "bench/compiled/talking_model.h"
#include "bench/made_model.h"
#include "bench/ways.h"
#include "frame/kill_switch.h"
#include "simhost/simulator.h"
#include "simhost/system.h"
#include "simhost/world/aircraft_folder.h"
#include "systems/cycle.h"
#include "systems/expectations.h"
#include "systems/links.h"
#include "systems/model_end.h"
#include "systems/program.h"
#include "systems/reader.h"
#include "util/clock.h"
#include "voice/action_queue.h"
#include "voice/expected_phrases.h"
#include "voice/recognition.h"

namespace {

const int Stretches = 25;

enum class Evaluation { Cycle, Plain, Compiled };

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
            compiledValues.push_back(parameter.value);
            for (dataref_class *dataref : {&parameter.inDataref, &parameter.outDataref})
                if (dataref->mode != BindingNone) compiledDatarefs.push_back(dataref->Access());
            if (parameter.inDataref.handle) inputs.push_back(parameter.inDataref.Access());
        });
    }
    ~RecordedFlight() { ForgetModel(); }
    RecordedFlight(const RecordedFlight &) = delete;
    RecordedFlight &operator=(const RecordedFlight &) = delete;

    // Calls back behind each frame. Actions leave the queue as in flight, one a frame, but nobody does them.
    template <typename Look> void Fly(Evaluation evaluation, Look look) {
        if (evaluation != Evaluation::Compiled)
            frameEvaluation =
                evaluation == Evaluation::Cycle ? FrameEvaluation::AsItPays : FrameEvaluation::OfAll;
        for (const std::vector<Change> &frame : recording.frames) {
            Play(frame);
            if (!executeFlow.empty()) executeFlow.erase(executeFlow.begin());
            if (evaluation == Evaluation::Compiled)
                CompiledCycle();
            else
                CalculateSystemsCycle(0, 0, 0, nullptr);
            look();
        }
    }

    // Of all parameters; and how much is queued and expected.
    std::vector<double> Seen(Evaluation evaluation) const {
        const std::vector<double> &all =
            evaluation == Evaluation::Compiled ? compiledValues : systemsProgram.values;
        std::vector<double> seen(all.begin(),
                                 all.begin() + static_cast<std::ptrdiff_t>(compiledValues.size()));
        for (const size_t count : {executeFlow.size(), answers.size(), ::inputs.size()})
            seen.push_back(static_cast<double>(count));
        return seen;
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
    std::vector<double> compiledValues;
    std::vector<DatarefAccess> compiledDatarefs; // in the model's order

    // As CalculateSystemsCycle.
    void CompiledCycle() {
        if (isAtRest() || XPLMGetDatai(DRF_paused) == 1) return;
        isLiveAnimationBlocked = onChecklistOrProcedure = isAnyInputGood = false;
        BeginExpectations();
        ExpectAnswerTimers();
        BeginAnswerTimers();
        BeginChecklists();
        NoticeSurroundings(systemsProgram);
        LargestAircraftFrame(compiledValues.data(), compiledDatarefs.data(), systemsProgram);
        EndChecklists();
        RestartAnswerTimers();
        EndRecognition();
        PublishExpectations();
        PublishExpectedPhrases();
    }

    void Play(const std::vector<Change> &frame) {
        for (const Change &change : frame) datarefs[change.dataref].Set(change.value);
    }
};

// Behind each frame.
std::vector<std::vector<double>> SeenIn(const Recording &recording, Evaluation evaluation) {
    RecordedFlight flight(recording);
    CurrentProgram(); // which the C++ needs, too
    std::vector<std::vector<double>> seen;
    flight.Fly(evaluation, [&] { seen.push_back(flight.Seen(evaluation)); });
    return seen;
}

bool isSame(const std::vector<double> &a, const std::vector<double> &b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

void BM_Recorded(benchmark::State &state) {
    const Recording recording;
    const auto values = SeenIn(recording, Evaluation::Cycle);
    const auto plainValues = SeenIn(recording, Evaluation::Plain);
    const auto compiledValues = SeenIn(recording, Evaluation::Compiled);
    size_t changed = 0;
    for (size_t frame = 0; frame < values.size(); frame++) {
        if (!isSame(values[frame], plainValues[frame]) || !isSame(values[frame], compiledValues[frame])) {
            state.SkipWithError("the cycle, the evaluation of everything and the C++ differ");
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
    Way cycle{[&] { flight.Fly(Evaluation::Cycle, [] {}); }};
    Way plain{[&] { flight.Fly(Evaluation::Plain, [] {}); }};
    Way compiled{[&] { flight.Fly(Evaluation::Compiled, [] {}); }};
    Way host{[&] { flight.Host(); }};
    const auto frames = static_cast<double>(recording.frames.size());
    for (auto _ : state) {
        for (int stretch = 0; stretch < Stretches; stretch++) {
            cycle.Fly();
            plain.Fly();
            compiled.Fly();
            host.Fly();
        }
        state.SetIterationTime(cycle.fastest / frames);
    }
    state.counters["changed%"] =
        100.0 * static_cast<double>(changed) / frames / static_cast<double>(values.front().size());
    state.counters["plain/cycle"] = plain.fastest / cycle.fastest;
    state.counters["compiled/cycle"] = compiled.fastest / cycle.fastest;
    state.counters["plain/compiled"] = plain.fastest / compiled.fastest;
    state.counters["own"] = (compiled.fastest - host.fastest) / (cycle.fastest - host.fastest);
    state.counters["host_us"] = host.fastest / frames * 1e6;
}
BENCHMARK(BM_Recorded)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

} // namespace
