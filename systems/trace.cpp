// Parameters are evaluated in the order of the program, so what one of them saw can be told afterwards: those
// before it had their new values, and the others the values that the frame began with.
#include "systems/trace.h"

#include "systems/evaluation.h"
#include "systems/links.h"

bool areFramesTraced = false;

namespace {

class TracedView {
public:
    TracedView(const ProgramArrays &arrays, uint32_t parameter, uint32_t block, BlockTrace &trace)
        : arrays(arrays), program(arrays.program), parameter(parameter), trace(trace), own(OwnValue()),
          heard(block <= program.before.consumer ? program.before.heard : NothingHeard) {}

    double Own() const { return own; }

    double &operator[](uint32_t index) {
        if (index == parameter) return own;
        const bool isOld = index > parameter && index < program.before.values.size();
        return isOld ? program.before.values[index] : program.values[index];
    }

    bool isTrue(const SpecialComparison &special) {
        ComparisonTrace &told = trace.comparisons.emplace_back();
        if (!special.isSpeech) told.a = (*this)[special.operand];
        told.isTrue =
            special.isSpeech ? CompareWithSpeech(special, heard) : CompareWithList(arrays, special, told.a);
        return told.isTrue;
    }
    void Compared(double a, double b, bool isTrue) { trace.comparisons.push_back({a, b, isTrue}); }
    void Calculated(double operand, double result) { trace.elements.push_back({operand, result}); }

private:
    const ProgramArrays &arrays;
    SystemsProgram &program;
    const uint32_t parameter;
    BlockTrace &trace;
    double own;
    const uint32_t heard;

    // What its blocks began with: its input, where it has one.
    double OwnValue() const {
        const ProgramParameter &compiled = program.parameters[parameter];
        if (compiled.traits & HasInput) {
            const ProgramDataref &input = program.datarefs[program.extras[compiled.extras].input];
            if (input.access.handle && program.evaluated[parameter]) return input.lastValue;
        }
        const bool isKept = parameter < program.before.values.size();
        return isKept ? program.before.values[parameter] : program.values[parameter];
    }
};

} // namespace

void BeginTracedFrame(SystemsProgram &program) {
    program.before.values.assign(program.values.begin(),
                                 program.values.begin()
                                     + static_cast<std::ptrdiff_t>(program.firedBlocks.size()));
    program.before.heard = program.heard;
    program.before.consumer = NoIndex;
}

void TraceConsumption(SystemsProgram &program, uint32_t block) {
    program.before.consumer = std::min(program.before.consumer, block);
}

bool TraceBlock(const ParameterAddress &place, int block, BlockTrace &trace) {
    trace.comparisons.clear();
    trace.elements.clear();
    const out_parameter_struct *record = ParameterAt(place);
    const logicblock_struct *blockRecord = record ? RecordAt(record->logic, block) : nullptr;
    if (!blockRecord) return false;
    SystemsProgram &program = CurrentProgram();
    const ProgramArrays arrays(program);
    const uint32_t parameter = ValueIndex(place);
    const uint32_t index = program.parameters[parameter].firstBlock + static_cast<uint32_t>(block);
    TracedView view(arrays, parameter, index, trace);
    trace.isEvaluated = isEvaluated(place);
    trace.hasFired = trace.isEvaluated && FiredBlock(place) == block;
    trace.isTrue = EvaluateChain(arrays, index, view);
    for (size_t i = 0; i < trace.comparisons.size(); i++) // as the record has them
        if (Comparators[blockRecord->compares[i].cmpOp].swapped)
            std::swap(trace.comparisons[i].a, trace.comparisons[i].b);
    Calculate(arrays, index, view.Own(), view);
    return true;
}
