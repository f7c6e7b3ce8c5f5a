// The compiled program against the plain reference: random models, the same flight through both, everything
// that can be seen compared after every frame.
#include "systems/program.h"

#include <bit>
#include <cmath>

#include "figure/animation.h"
#include "figure/channels.h"
#include "frame/datarefs.h"
#include "tests/systems/model_folder.h"
#include "tests/systems/random_model.h"
#include "tests/systems/reference_cycle.h"
#include "util/log.h"
#include "util/numbers.h"

namespace {

const int Models = 2000;
const int Frames = 40;

// What happens in one frame before the cycle runs.
struct FlightStep {
    std::string heard;
    double seconds = 0;
    bool isQueueDone = false, isPaused = false, isEdited = false;
    const char *dataref = nullptr; // changed by the simulator
    double value = 0;
};

// Everything that can be seen after a frame.
struct Seen {
    std::vector<double> values; // parameters, then datarefs
    std::vector<int> blocks;
    std::string rest;
};

// What the flights have been through, to show that they reach the corners.
struct Coverage {
    long queued = 0, broken = 0, running = 0, consumed = 0, answers = 0, inputs = 0, ended = 0;
    long notFinite = 0, changed = 0;
};

class Program : public ModelFolder {
protected:
    Coverage coverage;
    std::vector<system_class> loaded;
    int endedBefore = 0; // commands, in earlier flights

    Program() {
        simhost::AddCommand("t/command", "");
        simhost::PublishDataref("t/planshet", xplmType_Int);
        DRFi_ShowPlanshet = XPLMFindDataRef("t/planshet");
    }

    void LoadModel(const std::string &text) {
        ModelChanges();
        systems_vector.clear();
        mapSystemName.clear();
        UnregisterDrfs();
        DRFcounter = 0;
        for (const ModelDataref &dataref : ModelDatarefs)
            simhost::PublishDataref(dataref.name, dataref.type, dataref.elements);
        Load(text);
        loaded = systems_vector;
    }

    void StartFlight() {
        ModelChanges();
        systems_vector = loaded;
        executeFlow.clear();
        answerstimer = {{"early", 101.0}, {"late", 103.0}, {"yes", 102.0}};
        LastRecognition = LastRecognitionOld = "";
        isNewRecognitionMayCome = isAnyInputGood = false;
        for (const ModelDataref &dataref : ModelDatarefs)
            for (int i = 0; i < dataref.elements; i++) simhost::SetNumber(dataref.name, 0, i);
        for (const system_class &system : systems_vector)
            for (const device_struct &device : system.devices)
                for (const out_parameter_struct &parameter : device.outs)
                    if (parameter.outDataref.mode == BindingNew)
                        simhost::SetNumber(parameter.outDataref.name, parameter.initValue);
        FlightTimeSEC = 100;
        XPLMCommandEnd(XPLMFindCommand("t/command"));
        endedBefore = simhost::CountCommand("t/command").ended;
    }

    static std::vector<FlightStep> PlanFlight(RandomModel &random) {
        std::vector<FlightStep> steps(Frames);
        for (FlightStep &step : steps) {
            if (random.Chance(40))
                step.heard = random.OneOf({"go", "next", "ready", "go", "next", "ready", "ANY", "abort"});
            step.seconds = 0.1 * random.Below(10);
            step.isQueueDone = random.Chance(65);
            step.isPaused = random.Chance(5);
            step.isEdited = random.Chance(5);
            if (random.Chance(30)) step.dataref = ModelDatarefs[random.Below(6)].name;
            step.value = random.Below(7) - 2.0;
        }
        return steps;
    }

    static void Prepare(const FlightStep &step) {
        FlightTimeSEC += step.seconds;
        ResetLog(); // every line is compared
        if (!step.heard.empty()) {
            LastRecognition = step.heard;
            isNewRecognitionMayCome = true;
        }
        if (step.isQueueDone) executeFlow.clear();
        simhost::SetPaused(step.isPaused);
        simhost::SetNumber("t/planshet", 1);
        const simhost::CommandCount count = simhost::CountCommand("t/command");
        if (count.begun == count.ended) XPLMCommandBegin(XPLMFindCommand("t/command"));
        for (int index : {0, 2, 3})
            if (step.dataref) simhost::SetNumber(step.dataref, step.value, index);
    }

    Seen Look() const {
        Seen seen;
        for (const system_class &system : systems_vector) {
            for (const device_struct &device : system.devices) {
                for (const out_parameter_struct &parameter : device.outs) {
                    seen.values.push_back(parameter.value);
                    if (parameter.outDataref.mode == BindingNew)
                        seen.values.push_back(simhost::GetNumber(parameter.outDataref.name));
                    if (parameter.type == TypeInteger) seen.blocks.push_back(parameter.intValue);
                    seen.blocks.push_back(parameter.activeBlock);
                    for (const logicblock_struct &block : parameter.logic)
                        seen.blocks.push_back(block.active);
                }
            }
        }
        for (const ModelDataref &dataref : ModelDatarefs)
            for (int i = 0; i < dataref.elements; i++)
                seen.values.push_back(simhost::GetNumber(dataref.name, i));
        std::string &rest = seen.rest;
        rest = Queue() + "\nrecognition " + LastRecognition + "/" + LastRecognitionOld + " may come "
               + int2string(isNewRecognitionMayCome) + " any " + int2string(isAnyInputGood) + "\nrunning "
               + int2string(onChecklistOrProcedure) + " blocked " + int2string(isLiveAnimationBlocked)
               + "\nended " + int2string(simhost::CountCommand("t/command").ended - endedBefore) + " tablet "
               + int2string(TruncateToInt(simhost::GetNumber("t/planshet"))) + "\nanswers";
        for (const std::string &answer : answers) rest += " " + answer;
        for (const answertimer_struct &timer : answerstimer)
            rest += "\ntimer " + timer.name + " " + float2string(timer.time);
        for (const input_struct &input : inputs) {
            rest += "\ninput " + input.name;
            for (const std::string &text : input.texts) rest += " " + text;
        }
        for (const std::string &line : simhost::TakeLogLines())
            if (line.find("EXECUTE FROM:") != std::string::npos) rest += "\n" + line;
        return seen;
    }

    // Flies the model through the reference or through the program.
    std::vector<Seen> Fly(const std::vector<FlightStep> &steps, bool isReference) {
        StartFlight();
        simhost::TakeLogLines();
        std::vector<Seen> flight;
        for (const FlightStep &step : steps) {
            Prepare(step);
            if (isReference) {
                ReferenceCycle();
            } else {
                if (step.isEdited) ModelChanges(); // as the editor does: nothing may be lost
                Frame();
                RefreshRecords();
            }
            flight.push_back(Look());
        }
        return flight;
    }

    static bool isEqual(double a, double b) {
        return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b) || (std::isnan(a) && std::isnan(b));
    }

    static void ExpectEqual(const Seen &program, const Seen &reference) {
        EXPECT_EQ(program.rest, reference.rest);
        EXPECT_EQ(program.blocks, reference.blocks);
        ASSERT_EQ(program.values.size(), reference.values.size());
        for (size_t i = 0; i < program.values.size(); i++)
            EXPECT_TRUE(isEqual(program.values[i], reference.values[i]))
                << "value " << i << ": " << program.values[i] << ", not " << reference.values[i];
    }

    void Cover(const std::vector<Seen> &flight) {
        for (size_t frame = 1; frame < flight.size(); frame++) {
            const std::string &rest = flight[frame].rest;
            const auto holds = [&](const char *part) { return rest.find(part) != std::string::npos; };
            coverage.queued += holds("EXECUTE FROM:");
            coverage.broken += holds("tablet 0");
            coverage.running += holds("running 1");
            coverage.consumed += holds("recognition / may come 0");
            coverage.answers += holds(" ready");
            coverage.inputs += holds("\ninput ");
            coverage.ended += !holds("ended 0 ");
            for (size_t i = 0; i < flight[frame].values.size(); i++) {
                coverage.notFinite += !std::isfinite(flight[frame].values[i]);
                coverage.changed += !isEqual(flight[frame].values[i], flight[frame - 1].values[i]);
            }
        }
    }
};

TEST_F(Program, AgreesWithTheReferenceOnRandomModels) {
    for (unsigned seed = 1; seed <= Models && !HasFailure(); seed++) {
        RandomModel random(seed);
        const std::string text = random.Text();
        LoadModel(text);
        const std::vector<FlightStep> steps = PlanFlight(random);
        const std::vector<Seen> reference = Fly(steps, true);
        const std::vector<Seen> program = Fly(steps, false);
        for (size_t frame = 0; frame < steps.size() && !HasFailure(); frame++) {
            SCOPED_TRACE("seed " + int2string(static_cast<int>(seed)) + ", frame "
                         + int2string(static_cast<int>(frame)) + ", heard \"" + steps[frame].heard + "\"\n"
                         + text);
            ExpectEqual(program[frame], reference[frame]);
        }
        Cover(reference);
    }
    // The flights have been everywhere.
    EXPECT_GT(coverage.queued, Models);
    EXPECT_GT(coverage.broken, Models / 10);
    EXPECT_GT(coverage.running, Models);
    EXPECT_GT(coverage.consumed, Models / 10);
    EXPECT_GT(coverage.answers, Models / 10);
    EXPECT_GT(coverage.inputs, Models / 10);
    EXPECT_GT(coverage.ended, Models / 10);
    EXPECT_GT(coverage.notFinite, Models / 50);
    EXPECT_GT(coverage.changed, Models * 10);
}

} // namespace
