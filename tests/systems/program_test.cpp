// The program against the plain reference: random models, the same flight through the reference, through the
// program that evaluates everything, and through the one that evaluates what is marked; everything that can
// be seen compared after every frame. FENNIC_MODELS=100000 in the environment flies more of them, and
// FENNIC_FIRST_MODEL=5000 begins with that one.
#include "systems/program.h"

#include <bit>
#include <cmath>
#include <cstdlib>

#include "figure/animation.h"
#include "figure/channels.h"
#include "frame/datarefs.h"
#include "systems/editor/model.h"
#include "systems/editor/undo.h"
#include "systems/saved_values.h"
#include "systems/trace.h"
#include "tests/systems/model_folder.h"
#include "tests/systems/random_edits.h"
#include "tests/systems/reference_cycle.h"
#include "util/log.h"
#include "util/numbers.h"

namespace {

const int ModelsOfEveryDay = 300;
const int Frames = 30;

enum class Way { Reference, EvaluateAll, EvaluateMarked, EvaluateByTurns };

// What happens in one frame before the cycle runs.
struct FlightStep {
    std::string heard;
    double seconds = 0;
    bool isQueueDone = false, isPaused = false;
    bool isLate = false;           // a dataref appears
    bool isTurn = false;           // by turns: everything is evaluated
    unsigned editSeed = 0;         // the model is edited
    const char *dataref = nullptr; // changed by the simulator
    double value = 0;
};

// Everything that can be seen after a frame.
struct Seen {
    std::vector<double> values; // parameters, then datarefs
    std::vector<int> blocks;
    std::string rest;
    std::vector<std::vector<double>> findings; // of the blocks, by parameter
};

class Program : public ModelFolder {
protected:
    std::map<std::string, long> coverage; // what the flights have been through
    int endedBefore = 0;                  // commands, in earlier flights

    Program() {
        simhost::AddCommand("t/command", "");
        simhost::PublishDataref("t/planshet", xplmType_Int);
        DRFi_ShowPlanshet = XPLMFindDataRef("t/planshet");
        areFramesTraced = true;
    }

    ~Program() override { frameEvaluation = FrameEvaluation::AsItPays; }

    void StartFlight(const std::string &text) {
        ModelChanges();
        systems_vector.clear();
        mapSystemName.clear();
        UnregisterDrfs();
        DRFcounter = 0;
        ForgetUndo();
        ForgetCopies();
        referenceFindings.clear();
        executeFlow.clear();
        answerstimer = {{"early", 101.0}, {"late", 103.0}, {"yes", 102.0}};
        LastRecognition = LastRecognitionOld = "";
        isNewRecognitionMayCome = isAnyInputGood = false;
        for (const ModelDataref &dataref : ModelDatarefs) {
            simhost::PublishDataref(dataref.name, dataref.type, dataref.elements);
            for (int i = 0; i < dataref.elements; i++) simhost::SetNumber(dataref.name, 0, i);
        }
        FlightTimeSEC = 100;
        XPLMCommandEnd(XPLMFindCommand("t/command"));
        endedBefore = simhost::CountCommand("t/command").ended;
        ResetLog();
        Load(text);
    }

    static std::vector<FlightStep> PlanFlight(RandomModel &random) {
        std::vector<FlightStep> steps(Frames);
        for (FlightStep &step : steps) {
            if (random.Chance(40))
                step.heard = random.OneOf({"go", "next", "ready", "go", "next", "ready", "ANY", "abort"});
            step.seconds = 0.1 * random.Below(10);
            step.isQueueDone = random.Chance(65);
            step.isPaused = random.Chance(5);
            step.isTurn = random.Chance(20);
            if (random.Chance(5)) step.editSeed = 1 + random.Below(1000000);
            if (random.Chance(30)) step.dataref = ModelDatarefs[random.Below(6)].name;
            step.value = random.Below(7) - 2.0;
        }
        steps[random.Below(Frames)].isLate = true;
        return steps;
    }

    // Which block fired last is known by its index alone, whatever stands there now.
    void Edit(unsigned seed) {
        RandomModel random(seed);
        const unsigned before = modelChangeCount;
        for (int i = 0; i < 3; i++) EditAtRandom(random);
        coverage["edited"] += modelChangeCount - before;
        ForEachAddress([](const ParameterAddress &place) {
            out_parameter_struct &parameter = *ParameterAt(place);
            const logicblock_struct *last = RecordAt(parameter.logic, parameter.activeBlock);
            if (!last) parameter.activeBlock = -1;
            for (logicblock_struct &block : parameter.logic) block.active = block.active && &block == last;
        });
    }

    void Prepare(const FlightStep &step) {
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
        if (step.isLate) CreateDrf_Float("t/missing", static_cast<float>(step.value));
        if (step.editSeed) Edit(step.editSeed);
    }

    Seen Look() const {
        Seen seen;
        ForEachAddress([&](const ParameterAddress &place) {
            const out_parameter_struct &parameter = *ParameterAt(place);
            seen.values.push_back(parameter.value);
            if (parameter.outDataref.mode == BindingNew && parameter.outDataref.handle)
                seen.values.push_back(simhost::GetNumber(parameter.outDataref.name));
            seen.blocks.push_back(parameter.activeBlock);
            for (const logicblock_struct &block : parameter.logic) seen.blocks.push_back(block.active);
        });
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

    // As the reference puts it.
    static std::vector<std::vector<double>> TracedFindings() {
        std::vector<std::vector<double>> all;
        ForEachAddress([&](const ParameterAddress &place) {
            std::vector<double> &findings = all.emplace_back();
            if (!isEvaluated(place)) return;
            const std::vector<logicblock_struct> &logic = ParameterAt(place)->logic;
            BlockTrace trace;
            for (size_t b = 0; TraceBlock(place, static_cast<int>(b), trace); b++) {
                findings.insert(findings.end(), {trace.isTrue ? 1.0 : 0.0, trace.hasFired ? 1.0 : 0.0});
                for (const ComparisonTrace &told : trace.comparisons)
                    findings.insert(findings.end(), {told.a, told.b, told.isTrue ? 1.0 : 0.0});
                size_t element = 0;
                for (const calcBlock_struct &calculation : logic[b].calcs)
                    for (size_t i = 0; i < calculation.stack.size(); i++, element++)
                        findings.insert(findings.end(),
                                        {trace.elements[element].operand, trace.elements[element].result});
            }
            findings.push_back(0);
        });
        return all;
    }

    // Flies the model through the reference or through the program.
    std::vector<Seen> Fly(const std::string &text, const std::vector<FlightStep> &steps, Way way) {
        const bool isReference = way == Way::Reference;
        StartFlight(text);
        std::vector<Seen> flight;
        for (const FlightStep &step : steps) {
            Prepare(step);
            const bool isAll = way == Way::EvaluateAll || (way == Way::EvaluateByTurns && step.isTurn);
            frameEvaluation = isAll ? FrameEvaluation::OfAll : FrameEvaluation::OfMarked;
            isReference ? ReferenceCycle() : Frame();
            RefreshRecords();
            flight.push_back(Look());
            flight.back().findings = isReference ? referenceFindings : TracedFindings();
        }
        return flight;
    }

    // What is saved at the end of the flight.
    std::string Saved(bool isReference) {
        ForEachAddress([](const ParameterAddress &place) { // flagged deleted: not saved
            if (place.out == 1) ParameterAt(place)->deleted = true;
            if (place.dev == 2) DeviceAt(place)->deleted = true;
        });
        std::filesystem::remove(plugin + "systems/_save.txt");
        isReference ? WriteByTheRule() : SaveParametersValue();
        const std::string saved = exists("systems/_save.txt") ? read("systems/_save.txt") : "";
        std::filesystem::remove(plugin + "systems/_save.txt");
        coverage["saved"] += !saved.empty();
        return saved;
    }

    void WriteByTheRule() {
        std::string content;
        ForEachAddress([&](const ParameterAddress &place) {
            const out_parameter_struct &parameter = *ParameterAt(place);
            const bool isDeleted = SystemAt(place)->deleted || DeviceAt(place)->deleted || parameter.deleted;
            if (parameter.saveOnExit && !isDeleted)
                content += SysDevOut2name(place) + "="
                           + float2string(static_cast<double>(static_cast<float>(parameter.value))) + "\r\n";
        });
        if (!content.empty()) write("systems/_save.txt", content);
    }

    static bool isEqual(double a, double b) {
        return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b) || (std::isnan(a) && std::isnan(b));
    }

    static void ExpectEqual(const std::vector<double> &values, const std::vector<double> &reference,
                            const std::string &what) {
        ASSERT_EQ(values.size(), reference.size()) << what;
        for (size_t i = 0; i < values.size(); i++)
            EXPECT_TRUE(isEqual(values[i], reference[i]))
                << what << ", value " << i << ": " << values[i] << ", not " << reference[i];
    }

    static void ExpectEqual(const Seen &program, const Seen &reference, bool isTraceOfNow) {
        EXPECT_EQ(program.rest, reference.rest);
        EXPECT_EQ(program.blocks, reference.blocks);
        ExpectEqual(program.values, reference.values, "seen");
        if (!isTraceOfNow) return;
        ASSERT_EQ(program.findings.size(), reference.findings.size());
        for (size_t i = 0; i < program.findings.size(); i++)
            ExpectEqual(program.findings[i], reference.findings[i],
                        "trace of parameter " + std::to_string(i));
    }

    void Cover(const std::vector<Seen> &flight) {
        for (size_t frame = 1; frame < flight.size(); frame++) {
            const std::string &rest = flight[frame].rest;
            for (const char *part :
                 {"EXECUTE FROM:", "tablet 0", "running 1", "recognition / may come 0", " ready", "\ninput "})
                coverage[part] += rest.find(part) != std::string::npos;
            coverage["ended"] += rest.find("ended 0 ") == std::string::npos;
            for (const std::vector<double> &findings : flight[frame].findings)
                coverage["evaluated"] += !findings.empty();
            for (double value : flight[frame].values) coverage["not finite"] += !std::isfinite(value);
        }
    }
};

int NumberFromEnvironment(const char *name, int otherwise) {
    const char *const wanted = std::getenv(name);
    return wanted ? std::atoi(wanted) : otherwise;
}

TEST_F(Program, AgreesWithTheReferenceOnRandomModels) {
    const int first = NumberFromEnvironment("FENNIC_FIRST_MODEL", 1);
    const int models = NumberFromEnvironment("FENNIC_MODELS", ModelsOfEveryDay);
    for (int seed = first; seed <= models && !HasFailure(); seed++) {
        RandomModel random(static_cast<unsigned>(seed));
        const std::string text = random.Text();
        const std::vector<FlightStep> steps = PlanFlight(random);
        const bool isSaving = seed % 10 == 0; // which waits for the disk
        const std::vector<Seen> reference = Fly(text, steps, Way::Reference);
        const std::string saved = isSaving ? Saved(true) : "";
        for (const Way way : {Way::EvaluateAll, Way::EvaluateMarked, Way::EvaluateByTurns}) {
            const std::vector<Seen> program = Fly(text, steps, way);
            EXPECT_EQ(isSaving ? Saved(false) : "", saved);
            bool isTraceOfNow = false; // not before the first frame, nor between an edit and the next one
            for (size_t frame = 0; frame < steps.size() && !HasFailure(); frame++) {
                SCOPED_TRACE("seed " + int2string(seed) + ", way " + int2string(static_cast<int>(way))
                             + ", frame " + int2string(static_cast<int>(frame)) + ", heard \""
                             + steps[frame].heard + "\"\n" + text);
                isTraceOfNow = !steps[frame].isPaused || (isTraceOfNow && steps[frame].editSeed == 0);
                ExpectEqual(program[frame], reference[frame], isTraceOfNow);
            }
        }
        Cover(reference);
    }
    const int flown = models - first + 1;
    if (flown < ModelsOfEveryDay) return;
    for (const auto &[what, count] : coverage) EXPECT_GT(count, flown / 40) << what << " is hardly seen";
}

} // namespace
