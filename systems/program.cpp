// Compiles the model into the program and carries values between the two. The program holds pointers into
// the records: nothing may change them without ModelChanges.
#include "systems/program.h"

#include <algorithm>
#include <bit>
#include <numeric>
#include <span>
#include <utility>

#include "systems/checklist_calls.h"
#include "systems/operators.h"

SystemsProgram systemsProgram;

namespace {

const uint32_t IndexMask = 0x3FFFFFFF;

bool isProgramCurrent = false;

uint32_t Count(const auto &records) {
    return static_cast<uint32_t>(records.size());
}

void ForEachParameter(auto visit) {
    for (system_class &system : systems_vector)
        for (device_struct &device : system.devices)
            for (out_parameter_struct &parameter : device.outs) visit(parameter);
}

class Compiler {
public:
    void Compile() {
        program = {};
        LayOutValues();
        for (ParameterAddress place{0, 0, 0}; SystemAt(place); place = {place.sys + 1, 0, 0})
            for (; DeviceAt(place); place = {place.sys, place.dev + 1, 0}) CompileDevice(place);
        program.parameters.push_back({Count(program.blocks), 0, 0});
        program.blocks.push_back({Count(program.comparisons), Count(program.elements), NoIndex});
        LinkDependents();
    }

private:
    // A parameter's value is read.
    template <typename By> struct Read {
        uint32_t value;
        By by;
    };

    SystemsProgram &program = systemsProgram;
    std::unordered_map<uint64_t, uint32_t> constants; // by bits, so that 0 and -0 stay apart
    std::vector<Read<Dependent>> reads;               // in the order of those who read, as the others
    std::vector<Read<ComparingDependent>> comparingReads;
    std::vector<uint32_t> lastReaders; // per parameter
    uint32_t reader = 0;               // what is compiled
    bool isInSequence = false;         // as a step

    void LayOutValues() {
        uint32_t parameters = 0;
        for (const system_class &system : systems_vector) {
            program.firstDeviceOfSystem.push_back(Count(program.firstParameterOfDevice));
            for (const device_struct &device : system.devices) {
                program.firstParameterOfDevice.push_back(parameters);
                parameters += Count(device.outs);
            }
        }
        program.values.reserve(parameters);
        program.evaluated.resize(parameters);
        lastReaders.assign(parameters, NoIndex);
        for (MarkSet *set : {&program.marked, &program.all}) set->Resize(parameters);
        program.extras.emplace_back();
        program.phrases = {"", "", AnyPhrase};
        program.phraseNumbers = {{AnyPhrase, AnyPhraseNumber}};
        ForEachParameter([this](const out_parameter_struct &parameter) {
            const auto fired = static_cast<size_t>(parameter.activeBlock); // -1: beyond every block
            const bool hasFired = fired < parameter.logic.size() && fired < NoBlock;
            const bool isActive = hasFired && parameter.logic[fired].active;
            program.values.push_back(parameter.value);
            program.firedBlocks.push_back((hasFired ? static_cast<uint16_t>(fired) : NoBlock)
                                          | (isActive ? 0 : InactiveBlock));
        });
    }

    uint32_t Constant(double value) {
        const auto [entry, isNew] = constants.emplace(std::bit_cast<uint64_t>(value), Count(program.values));
        if (isNew) program.values.push_back(value);
        return entry->second;
    }

    bool isParameter(uint32_t value) const { return value < lastReaders.size(); }

    // What the frame counts of the block that is compiled.
    uint16_t BlockNumber() const {
        const uint32_t number = Count(program.blocks) - 1 - program.parameters.back().firstBlock;
        return static_cast<uint16_t>(std::min<uint32_t>(number, NoBlock - 1));
    }

    // By what is evaluated whatever fired.
    void AddRead(uint32_t value) {
        if (isParameter(value)) reads.push_back({value, {reader, 0, 0}});
    }

    // By a calculation.
    void AddCalculation(uint32_t value) {
        if (!isParameter(value) || lastReaders[value] == Count(program.blocks)) return;
        lastReaders[value] = Count(program.blocks);
        reads.push_back({value, {reader, BlockNumber(), 0xFFFF}});
    }

    // By a comparison. Where a parameter has an input, its blocks see that in place of its value.
    void AddComparison(uint32_t value, uint32_t other, unsigned relations) {
        const uint32_t own = Count(program.parameters) - 1;
        const bool seesInput =
            (program.parameters.back().traits & HasInput) && (value == own || other == own);
        const bool isList = relations == 0;
        if (seesInput || (value == other && !isList))
            AddRead(value);
        else if (isParameter(value))
            comparingReads.push_back({value, {reader, other, BlockNumber(), relations & 7U}});
    }

    // Operands that do not resolve read 0.
    uint32_t Operand(const sysLink_struct &link, double constant) {
        if (link.kind == LinkNone) return Constant(constant);
        const bool isResolved = link.kind == LinkLive || link.kind == LinkDeleted;
        return isResolved && ParameterAt(link) ? ValueIndex(link) : Constant(0.0);
    }

    void CompileDevice(ParameterAddress place) {
        const device_struct &device = *DeviceAt(place);
        const uint32_t first = Count(program.parameters);
        const uint32_t end = first + Count(device.outs);
        if (first == end) return;
        for (; ParameterAt(place); place.out++) {
            isInSequence = device.serialStack;
            reader = isInSequence ? first : Count(program.parameters);
            program.all.Insert(reader);
            CompileParameter(device, place);
        }
        std::fill(program.evaluated.begin() + first, program.evaluated.begin() + end, !device.serialStack);
        if (device.serialStack) AddSequence(first, end);
        const bool joinsRun = !device.serialStack && !program.runs.empty() && !program.runs.back().isSerial;
        if (joinsRun)
            program.runs.back().endParameter = end;
        else
            program.runs.push_back({first, end, device.serialStack});
        if (!device.serialStack || !(program.parameters[first].traits & HasSpeech)) return;
        program.runs.back().called = &device;
        program.runs.back().isChecklist = isChecklist(device);
    }

    // Its gates read every step.
    void AddSequence(uint32_t first, uint32_t end) {
        for (uint32_t step = first; step < end; step++) AddRead(step);
        program.parameters[first].traits |= IsSequence;
        ExtrasOf(program.parameters[first]).run = Count(program.runs);
        program.sequences.push_back(first);
    }

    ParameterExtras &ExtrasOf(ProgramParameter &parameter) {
        if (parameter.extras == 0) {
            parameter.extras = Count(program.extras) & 0x0FFFFFFFU;
            program.extras.emplace_back();
        }
        return program.extras[parameter.extras];
    }

    ParameterExtras &ExtrasOfNewest(uint32_t trait) {
        program.parameters.back().traits |= trait & 0xFU;
        return ExtrasOf(program.parameters.back());
    }

    uint32_t Bind(dataref_class &dataref) {
        program.datarefs.push_back({dataref.Access(), 0.0});
        program.datarefRecords.push_back(&dataref);
        return Count(program.datarefs) - 1;
    }

    // Of a sequence once.
    void AddVisit() {
        const ProgramParameter &parameter = program.parameters.back();
        if (!(parameter.traits & (HasInput | HasOutput))) return;
        const ParameterExtras &extras = program.extras[parameter.extras];
        if (!isInSequence)
            program.visits.push_back({reader, extras.input, extras.output});
        else if (program.visits.empty() || program.visits.back().unit != reader)
            program.visits.push_back({reader, NoIndex, NoIndex});
    }

    void CompileParameter(const device_struct &device, const ParameterAddress &place) {
        out_parameter_struct &parameter = *ParameterAt(place);
        program.parameters.push_back({Count(program.blocks), 0, 0});
        if (parameter.inDataref.mode != BindingNone)
            ExtrasOfNewest(HasInput).input = Bind(parameter.inDataref);
        if (parameter.outDataref.mode != BindingNone)
            ExtrasOfNewest(HasOutput).output = Bind(parameter.outDataref);
        if (parameter.hasMin) ExtrasOfNewest(0).minimum = parameter.minLimit;
        if (parameter.hasMax) ExtrasOfNewest(0).maximum = parameter.maxLimit;
        AddVisit();
        for (size_t index = 0; index < parameter.logic.size(); index++)
            CompileBlock({&parameter.logic[index], &device, place, static_cast<int>(index)});
    }

    void CompileBlock(BlockFiring firing) {
        const logicblock_struct &block = *firing.block;
        program.blocks.push_back({Count(program.comparisons), Count(program.elements), NoIndex});
        for (const compare_block_class &comparison : block.compares) {
            if (comparison.a.kind == LinkSpeech) firing.hasSpeech = true;
            CompileComparison(comparison);
        }
        CompileCalculations(block);
        firing.hasActions = !block.executes.empty();
        if (!block.calcs.empty() && block.graph.size() >= 2) firing.graph = CompileGraph(block.graph);
        if (firing.hasSpeech) MarkAsSpeech();
        if (!firing.hasSpeech && !firing.hasActions && firing.graph == NoIndex) return;
        program.blocks.back().firing = Count(program.firings);
        program.firings.push_back(firing);
    }

    void MarkAsSpeech() {
        program.parameters.back().traits |= HasSpeech;
        if (program.speechUnits.empty() || program.speechUnits.back() != reader)
            program.speechUnits.push_back(reader);
    }

    uint32_t CompileGraph(const std::vector<graf_struct> &points) {
        const uint32_t first = Count(program.graphPoints);
        for (const graf_struct &point : points) program.graphPoints.push_back({point.x, point.y});
        const std::span compiled = std::span(program.graphPoints).subspan(first);
        program.graphs.push_back({first, Count(points), isAscending(compiled), 0});
        return Count(program.graphs) - 1;
    }

    uint32_t PhraseNumberFor(const std::string &phrase) {
        const auto [entry, isNew] = program.phraseNumbers.emplace(phrase, Count(program.phrases));
        if (isNew) program.phrases.push_back(phrase);
        return entry->second;
    }

    void CompileComparison(const compare_block_class &comparison) {
        const unsigned joinsWithOr = comparison.joinOp == 1;
        const bool isList = !comparison.bList.empty() && isEquality(comparison.cmpOp);
        const bool isSpeech = comparison.a.kind == LinkSpeech;
        if (isList || isSpeech) {
            program.comparisons.push_back({Count(program.special) & IndexMask, 0, 0, 0, 0, joinsWithOr});
            CompileSpecial(comparison, isSpeech);
            return;
        }
        const Comparator &comparator = Comparators[comparison.cmpOp];
        uint32_t first = Operand(comparison.a, comparison.aValue) & IndexMask;
        uint32_t second = Operand(comparison.b, comparison.bValue) & IndexMask;
        if (comparator.swapped) std::swap(first, second);
        const unsigned equal = comparator.equal ? RelationEqual : 0U;
        AddComparison(first, second, comparator.greater ? equal | RelationGreater : equal);
        AddComparison(second, first, comparator.greater ? equal | RelationLess : equal);
        program.comparisons.push_back(
            {first, comparator.greater, comparator.equal, second, comparator.negated, joinsWithOr});
    }

    void CompileSpecial(const compare_block_class &comparison, bool isSpeech) {
        const unsigned isEqual = comparison.cmpOp == CompareEqual;
        if (isSpeech) {
            program.special.push_back({PhraseNumberFor(comparison.phrase) & IndexMask, 1, isEqual, 0, 0});
            return;
        }
        const uint32_t first = Count(program.listNumbers);
        program.listNumbers.insert(program.listNumbers.end(), comparison.bList.begin(),
                                   comparison.bList.end());
        const uint32_t operand = Operand(comparison.a, comparison.aValue);
        AddComparison(operand, Count(program.special), 0);
        program.special.push_back({first & IndexMask, 0, isEqual, Count(program.listNumbers), operand});
    }

    void AddElement(uint32_t oper, uint32_t operand) {
        program.elements.push_back({operand & 0x1FFFFFFFU, oper & 7U});
    }

    // All calculations but the last keep their result for the others; the last one's is the block's. One
    // without elements gives the block's constant, and counts only as the last.
    void CompileCalculations(const logicblock_struct &block) {
        std::vector<uint32_t> kept; // where the results of the calculations so far lie
        for (const calcBlock_struct &calculation : block.calcs) {
            const bool isLast = &calculation == &block.calcs.back();
            if (calculation.stack.empty()) {
                if (isLast) AddElement(OperatorLoad, Constant(block.constant));
                continue;
            }
            if (calculation.stack.front().operType != OperatorLoad)
                AddCalculation(Count(program.parameters) - 1);
            for (const calcStack_class &element : calculation.stack) {
                const uint32_t operand = CalculationOperand(element, kept);
                AddCalculation(operand);
                AddElement(static_cast<uint32_t>(element.operType), operand);
            }
            if (isLast) continue;
            kept.push_back(Count(program.values));
            program.values.push_back(0.0);
            AddElement(OperatorKeep, kept.back());
        }
    }

    // An operand that names a calculation which does not come before it is 0.
    uint32_t CalculationOperand(const calcStack_class &element, const std::vector<uint32_t> &kept) {
        if (element.blockIndex == -1) return Operand(element.link, element.constant);
        const bool isKept = element.blockIndex >= 0 && static_cast<size_t>(element.blockIndex) < kept.size();
        return isKept ? kept[static_cast<size_t>(element.blockIndex)] : Constant(0.0);
    }

    // Sorts reads by value, those of one value in the order of their readers.
    template <typename By>
    void Link(const std::vector<Read<By>> &from, std::vector<By> &dependents, uint32_t FirstDependents::*of) {
        std::vector<FirstDependents> &first = program.firstDependents;
        std::vector<uint32_t> next(first.size());
        for (const Read<By> &read : from) next[read.value + 1]++;
        std::partial_sum(next.begin(), next.end(), next.begin());
        for (size_t value = 0; value < first.size(); value++) first[value].*of = next[value];
        dependents.resize(from.size());
        for (const Read<By> &read : from) dependents[next[read.value]++] = read.by;
    }

    // What is evaluated whole does not ask what fired, nor how its comparisons turn out.
    void LinkDependents() {
        const auto isWhole = [this](uint32_t unit) {
            return (program.parameters[unit].traits & (IsSequence | HasSpeech)) != 0;
        };
        const auto addWhole = [&](const Read<ComparingDependent> &read) {
            if (!isWhole(read.by.unit)) return false;
            reads.push_back({read.value, {read.by.unit, 0, 0}});
            return true;
        };
        std::erase_if(comparingReads, addWhole);
        lastReaders.assign(lastReaders.size(), NoIndex);
        std::erase_if(reads, [&](Read<Dependent> &read) {
            if (!isWhole(read.by.unit)) return false;
            read.by = {read.by.unit, 0, 0};
            return std::exchange(lastReaders[read.value], read.by.unit) == read.by.unit;
        });
        program.firstDependents.resize(lastReaders.size() + 1);
        Link(reads, program.dependents, &FirstDependents::any);
        Link(comparingReads, program.comparing, &FirstDependents::comparing);
    }
};

} // namespace

SystemsProgram &CurrentProgram() {
    if (!isProgramCurrent) Compiler().Compile();
    isProgramCurrent = true;
    return systemsProgram;
}

uint32_t ValueIndex(const ParameterAddress &place) {
    const uint32_t device = systemsProgram.firstDeviceOfSystem[static_cast<uint32_t>(place.sys)]
                            + static_cast<uint32_t>(place.dev);
    return systemsProgram.firstParameterOfDevice[device] + static_cast<uint32_t>(place.out);
}

void ModelChanges() {
    RefreshRecords();
    isProgramCurrent = false;
}

void RefreshRecords() {
    if (!isProgramCurrent) return;
    size_t index = 0;
    ForEachParameter([&](out_parameter_struct &parameter) {
        const uint16_t fired = systemsProgram.firedBlocks[index];
        parameter.value = systemsProgram.values[index];
        if (parameter.type == TypeInteger || parameter.inDataref.handle)
            parameter.intValue = TruncateToInt(parameter.value);
        parameter.activeBlock = (fired & NoBlock) == NoBlock ? -1 : fired & NoBlock;
        for (size_t block = 0; block < parameter.logic.size(); block++)
            parameter.logic[block].active = fired == block;
        index++;
    });
    for (size_t i = 0; i < systemsProgram.datarefs.size(); i++)
        systemsProgram.datarefRecords[i]->lastValue = systemsProgram.datarefs[i].lastValue;
}

double LiveValue(const ParameterAddress &place) {
    const out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter) return 0.0;
    return isProgramCurrent ? systemsProgram.values[ValueIndex(place)] : parameter->value;
}

bool isEvaluated(const ParameterAddress &place) {
    if (!ParameterAt(place)) return false;
    return isProgramCurrent ? systemsProgram.evaluated[ValueIndex(place)] != 0
                            : !DeviceAt(place)->serialStack;
}

int FiredBlock(const ParameterAddress &place) {
    const out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter) return -1;
    if (isProgramCurrent) {
        const uint16_t fired = systemsProgram.firedBlocks[ValueIndex(place)];
        return fired & InactiveBlock ? -1 : fired;
    }
    const logicblock_struct *block = RecordAt(parameter->logic, parameter->activeBlock);
    return block && block->active ? parameter->activeBlock : -1;
}
