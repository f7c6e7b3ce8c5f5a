// A frame costs what has changed: the cycle over models of which a share changes in every frame, beside the
// evaluation of everything and beside the same model as C++. The ways are measured by turns, and the fastest
// of several stretches counts: compiled/cycle says how many times less than C++ a frame of the cycle costs,
// plain/compiled how many times more the evaluation of everything. "own" is the same without what the
// simulator takes to be asked for the datarefs, which is as much for both, and measured with nothing else.
// The program's and the C++'s values are compared first.
#include <algorithm>
#include <bit>

#include <benchmark/benchmark.h>

#include "bench/changing_model.h"
#include "bench/compiled/compiled_models.h"
#include "bench/made_model.h"
#include "bench/ways.h"
#include "frame/datarefs.h"
#include "frame/kill_switch.h"
#include "systems/cycle.h"
#include "systems/links.h"
#include "systems/model_end.h"
#include "systems/program.h"
#include "systems/reader.h"

namespace {

const int Stretches = 25;

const CompiledModel *CompiledModelOf(int parameters, bool hasMore) {
    for (const CompiledModel *model = CompiledModels; model->parameters > 0; model++)
        if (model->parameters == parameters && model->hasMore == hasMore) return model;
    return nullptr;
}

template <typename Element> size_t Bytes(const std::vector<Element> &elements) {
    return elements.size() * sizeof(Element);
}

size_t DependentsBytes(const SystemsProgram &program) {
    return Bytes(program.dependents) + Bytes(program.comparing) + Bytes(program.firstDependents)
           + Bytes(program.marked.words) * 2;
}

size_t ProgramBytes(const SystemsProgram &program) {
    return Bytes(program.values) + Bytes(program.firedBlocks) + Bytes(program.evaluated)
           + Bytes(program.parameters) + Bytes(program.blocks) + Bytes(program.comparisons)
           + Bytes(program.elements) + Bytes(program.special) + Bytes(program.listNumbers)
           + Bytes(program.firings) + Bytes(program.graphs) + Bytes(program.graphPoints)
           + Bytes(program.extras) + Bytes(program.datarefs) + Bytes(program.datarefRecords)
           + Bytes(program.visits) + Bytes(program.firstParameterOfDevice);
}

// A model of which a share changes, and the three ways to fly it.
class ChangingFlight {
public:
    ChangingFlight(int parameters, bool hasMore, int perMille)
        : compiled(CompiledModelOf(parameters, hasMore)) {
        folder.Write("sys.txt", ChangingModel(parameters, hasMore));
        CreateSystemsFromFile();
        isFennicKillDrfWasReaded = true;
        const std::vector<XPLMDataRef> all = Pulses();
        for (int group = 0, share = 1; group < PulseGroups && share <= perMille; group++, share *= 10)
            pulses.push_back(all[static_cast<size_t>(group)]);
        for (size_t group = 0; group < all.size(); group++) XPLMSetDataf(all[group], PulseAtRest[group]);
        ForEachAddress([this](const ParameterAddress &place) {
            const out_parameter_struct &parameter = *ParameterAt(place);
            values.push_back(parameter.value);
            for (const dataref_class *dataref : {&parameter.inDataref, &parameter.outDataref})
                if (dataref->handle) datarefs.push_back(dataref->handle);
            if (parameter.inDataref.handle) inputs.push_back(parameter.inDataref.handle);
            if (parameter.outDataref.handle) outputs.push_back(parameter.outDataref.handle);
        });
    }
    ~ChangingFlight() { ForgetModel(); }
    ChangingFlight(const ChangingFlight &) = delete;
    ChangingFlight &operator=(const ChangingFlight &) = delete;

    bool isCompiled() const { return compiled != nullptr; }

    void Cycle(FrameEvaluation evaluation) {
        Pulse();
        frameEvaluation = evaluation;
        CalculateSystemsCycle(0, 0, 0, nullptr);
    }
    void Compiled() {
        Pulse();
        compiled->frame(values.data(), datarefs.data());
    }

    // The datarefs alone.
    void Host() {
        Pulse();
        for (const XPLMDataRef input : inputs) hostValue += XPLMGetDataf(input);
        for (const XPLMDataRef output : outputs) XPLMSetDataf(output, 1.0F);
        benchmark::DoNotOptimize(hostValue);
    }

    // Flies the same frames in the program and in C++. The part of the values that changed in the last one;
    // below 0 when the two differ.
    double Compare() {
        const int frames = 10;
        isOdd = false;
        for (int i = 0; i < frames; i++) Cycle(FrameEvaluation::OfMarked);
        const std::vector<double> program = CurrentProgram().values;
        Cycle(FrameEvaluation::OfMarked);
        size_t changed = 0;
        for (size_t i = 0; i < values.size(); i++) changed += !isSame(program[i], systemsProgram.values[i]);
        if (!compiled) return static_cast<double>(changed) / static_cast<double>(values.size());
        isOdd = false;
        for (int i = 0; i <= frames; i++) Compiled();
        for (size_t i = 0; i < values.size(); i++)
            if (!isSame(values[i], systemsProgram.values[i])) return -1.0;
        return static_cast<double>(changed) / static_cast<double>(values.size());
    }

private:
    BenchFolder folder;
    const CompiledModel *compiled;
    std::vector<XPLMDataRef> pulses;   // that go
    std::vector<double> values;        // of the C++
    std::vector<XPLMDataRef> datarefs; // in the model's order
    std::vector<XPLMDataRef> inputs, outputs;
    float hostValue = 0.0F;
    bool isOdd = false;

    static bool isSame(double a, double b) {
        return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
    }

    void Pulse() {
        isOdd = !isOdd;
        for (size_t group = 0; group < pulses.size(); group++)
            XPLMSetDataf(pulses[group], PulseAtRest[group] * (isOdd ? 1.0F + 0x1p-20F : 1.0F));
    }
};

void BM_Changing(benchmark::State &state) {
    const int parameters = static_cast<int>(state.range(0));
    ChangingFlight flight(parameters, state.range(2) != 0, static_cast<int>(state.range(1)));
    const double changed = flight.Compare();
    if (changed < 0.0) {
        state.SkipWithError("the program and the C++ differ");
        return;
    }
    Way cycle{[&] { flight.Cycle(FrameEvaluation::AsItPays); }};
    Way plain{[&] { flight.Cycle(FrameEvaluation::OfAll); }};
    Way marked{[&] { flight.Cycle(FrameEvaluation::OfMarked); }};
    Way compiled{[&] { flight.Compiled(); }};
    Way host{[&] { flight.Host(); }};
    for (auto _ : state) {
        for (int stretch = 0; stretch < Stretches; stretch++) {
            for (int i = 0; i < 4; i++) flight.Cycle(FrameEvaluation::AsItPays); // which finds out what pays
            cycle.Fly();
            plain.Fly();
            flight.Cycle(FrameEvaluation::OfMarked); // everything
            marked.Fly();
            if (flight.isCompiled()) compiled.Fly();
            host.Fly();
        }
        state.SetIterationTime(cycle.fastest);
    }
    state.counters["changed%"] = changed * 100.0;
    state.counters["plain/marked"] = plain.fastest / marked.fastest;
    state.counters["plain/cycle"] = plain.fastest / cycle.fastest;
    if (!flight.isCompiled()) return;
    state.counters["compiled/cycle"] = compiled.fastest / cycle.fastest;
    state.counters["plain/compiled"] = plain.fastest / compiled.fastest;
    state.counters["own"] = (compiled.fastest - host.fastest) / std::max(cycle.fastest - host.fastest, 1e-9);
}
BENCHMARK(BM_Changing)
    ->ArgsProduct({{100, 1000, 10000, 100000}, {0, 1, 10, 100, 1000}, {0, 1}})
    ->ArgNames({"parameters", "permille", "more"})
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);

// With as many datarefs of its own as the plug-in may publish.
void BM_CompileProgram(benchmark::State &state) {
    BenchFolder folder;
    while (DRFcounter < DrfCapacity - 1) CreateDrf_Int("bench/own" + std::to_string(DRFcounter), 0);
    folder.Write("sys.txt", ChangingModel(static_cast<int>(state.range(0)), state.range(1) != 0));
    CreateSystemsFromFile();
    for (auto _ : state) {
        ModelChanges();
        CurrentProgram();
    }
    const auto parameters = static_cast<double>(systemsProgram.firedBlocks.size());
    state.counters["bytes/param"] = static_cast<double>(ProgramBytes(systemsProgram)) / parameters;
    state.counters["dependents/param"] = static_cast<double>(DependentsBytes(systemsProgram)) / parameters;
    ForgetModel();
    UnregisterDrfs();
    ResetPublishedDatarefs();
}
BENCHMARK(BM_CompileProgram)
    ->ArgsProduct({{10000, 100000}, {0, 1}})
    ->ArgNames({"parameters", "more"})
    ->Unit(benchmark::kMillisecond);

} // namespace
