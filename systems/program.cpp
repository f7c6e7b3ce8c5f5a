// Compiles the model into the program and carries values between the two. The program holds pointers into
// the records: nothing may change them without ModelChanges.
#include "systems/program.h"

#include <algorithm>
#include <bit>
#include <unordered_map>
#include <utility>

#include "systems/links.h"
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
        program.blocks.push_back({Count(program.comparisons), Count(program.elements), NoRecord});
    }

private:
    SystemsProgram &program = systemsProgram;
    std::unordered_map<uint64_t, uint32_t> constants; // by bits, so that 0 and -0 stay apart

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

    // Operands that do not resolve read 0.
    uint32_t Operand(const sysLink_struct &link, double constant) {
        if (link.kind == LinkNone) return Constant(constant);
        const bool isResolved = link.kind == LinkLive || link.kind == LinkDeleted;
        return isResolved && ParameterAt(link) ? ValueIndex(link) : Constant(0.0);
    }

    void CompileDevice(ParameterAddress place) {
        const device_struct &device = *DeviceAt(place);
        const uint32_t first = Count(program.parameters);
        for (; ParameterAt(place); place.out++) CompileParameter(device, place);
        const uint32_t end = Count(program.parameters);
        if (first == end) return;
        std::fill(program.evaluated.begin() + first, program.evaluated.begin() + end, !device.serialStack);
        const bool joinsRun = !device.serialStack && !program.runs.empty() && !program.runs.back().serial;
        if (joinsRun)
            program.runs.back().endParameter = end;
        else
            program.runs.push_back({first, end, device.serialStack ? &device : nullptr});
    }

    void CompileParameter(const device_struct &device, const ParameterAddress &place) {
        out_parameter_struct &parameter = *ParameterAt(place);
        uint32_t traits = 0;
        if (parameter.inDataref.mode != BindingNone) traits |= HasInput;
        if (parameter.outDataref.mode != BindingNone) traits |= HasOutput;
        if (parameter.hasMin || parameter.hasMax) traits |= HasLimits;
        const uint32_t firstBlock = Count(program.blocks);
        for (size_t index = 0; index < parameter.logic.size(); index++)
            if (CompileBlock({&parameter.logic[index], &device, place, static_cast<int>(index), false}))
                traits |= HasSpeech;
        program.parameters.push_back({firstBlock, traits, 0});
        if (traits == 0) return;
        program.parameters.back().record = Count(program.parameterRecords) & 0x0FFFFFFFU;
        program.parameterRecords.push_back(&parameter);
    }

    // True when the block compares speech.
    bool CompileBlock(BlockRecord record) {
        const uint32_t firstComparison = Count(program.comparisons);
        const uint32_t firstElement = Count(program.elements);
        for (const compare_block_class &comparison : record.block->compares) {
            if (comparison.a.kind == LinkSpeech) record.hasSpeech = true;
            CompileComparison(comparison);
        }
        CompileCalculations(*record.block);
        const bool needsRecord =
            record.hasSpeech || !record.block->executes.empty() || record.block->graph.size() >= 2;
        program.blocks.push_back(
            {firstComparison, firstElement, needsRecord ? Count(program.records) : NoRecord});
        if (needsRecord) program.records.push_back(record);
        return record.hasSpeech;
    }

    void CompileComparison(const compare_block_class &comparison) {
        const unsigned joinsWithOr = comparison.joinOp == 1;
        const bool isList = !comparison.bList.empty() && isEquality(comparison.cmpOp);
        const bool isSpeech = comparison.a.kind == LinkSpeech;
        if (isList || isSpeech) {
            program.comparisons.push_back({Count(program.special) & IndexMask, 0, 0, 0, 0, joinsWithOr});
            program.special.push_back({&comparison, isSpeech, Operand(comparison.a, comparison.aValue)});
            return;
        }
        const Comparator &comparator = Comparators[comparison.cmpOp];
        uint32_t first = Operand(comparison.a, comparison.aValue) & IndexMask;
        uint32_t second = Operand(comparison.b, comparison.bValue) & IndexMask;
        if (comparator.swapped) std::swap(first, second);
        program.comparisons.push_back(
            {first, comparator.greater, comparator.equal, second, comparator.negated, joinsWithOr});
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
            for (const calcStack_class &element : calculation.stack)
                AddElement(static_cast<uint32_t>(element.operType), CalculationOperand(element, kept));
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
