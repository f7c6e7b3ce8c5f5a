// The systems program: the model compiled into flat arrays that a frame runs over. All values lie side by
// side in one array, parameters first and constants behind them, and every operand is an index into it; the
// records, scattered over the heap, are touched only where a block fires actions, compares speech or a list,
// or looks up a graph.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "systems/model.h"

// A comparison of two values as CompareNumbers takes it, or, when it asks for neither relation, the special
// one whose index is first.
struct ProgramComparison {
    uint32_t first : 30;
    uint32_t greater : 1;
    uint32_t equal : 1;
    uint32_t second : 30;
    uint32_t negated : 1;
    uint32_t joinsWithOr : 1;
};

// A comparison of a value with a list, or of what was heard with a phrase.
struct SpecialComparison {
    const compare_block_class *record;
    bool isSpeech;
    uint32_t operand; // of a list: the value
};

const uint32_t OperatorKeep = 7; // stores the accumulator at the operand and starts over from the parameter

struct ProgramElement {
    uint32_t operand : 29; // value
    uint32_t oper : 3;     // CalculationOperator or OperatorKeep
};

const uint32_t NoRecord = 0xFFFFFFFF;

// A block's comparisons and elements end where those of the next block begin.
struct ProgramBlock {
    uint32_t firstComparison;
    uint32_t firstElement;
    uint32_t record; // index in records when firing needs more than the elements; else NoRecord
};

// What a block that fires needs of its record.
struct BlockRecord {
    const logicblock_struct *block;
    const device_struct *device;
    ParameterAddress place; // for the log, with the block's index
    int index;
    bool hasSpeech;
};

enum ParameterTraits : uint32_t {
    HasInput = 1,
    HasOutput = 2,
    HasLimits = 4,
    HasSpeech = 8, // every block is evaluated every frame, also behind one that fired
};

// A parameter's blocks end where those of the next parameter begin.
struct ProgramParameter {
    uint32_t firstBlock;
    uint32_t traits : 4;
    uint32_t record : 28; // index in parameterRecords, when there are traits
};

// Parameters that are evaluated alike: a serial device, or all the others up to the next one.
struct ProgramRun {
    uint32_t firstParameter;
    uint32_t endParameter;
    const device_struct *serial; // null: no sequence
};

struct SystemsProgram {
    std::vector<double> values;
    std::vector<uint16_t> firedBlocks; // per parameter: the block that fired last, with InactiveBlock
    std::vector<uint8_t> evaluated;    // per parameter: 0 for a step that the last frame passed over
    std::vector<ProgramRun> runs;
    std::vector<ProgramParameter> parameters; // and one behind the last, for the ends
    std::vector<ProgramBlock> blocks;         // likewise
    std::vector<ProgramComparison> comparisons;
    std::vector<ProgramElement> elements;
    std::vector<BlockRecord> records;
    std::vector<SpecialComparison> special;
    std::vector<out_parameter_struct *> parameterRecords;
    std::vector<uint32_t> firstDeviceOfSystem;    // index in firstParameterOfDevice
    std::vector<uint32_t> firstParameterOfDevice; // index in values

    // What the last frame began with, while frames are traced (systems/trace.h).
    struct {
        std::vector<double> values; // of the parameters; none: no frame since the program was compiled
        std::string heard;
        uint32_t consumer = NoRecord; // the block that consumed the recognition
    } before;
};

const uint16_t InactiveBlock = 0x8000; // did not fire in the last frame
const uint16_t NoBlock = 0x7FFF;

extern SystemsProgram systemsProgram;

// The program of the model as it is now; compiled when the model has changed since.
SystemsProgram &CurrentProgram();

// To be called before the records change: brings the live values into them and has the program compiled
// afresh before the next frame.
void ModelChanges();

// Brings the live values and the states of the blocks into the records.
void RefreshRecords();

// The index of a parameter, which must be there, in the current program's values.
uint32_t ValueIndex(const ParameterAddress &place);

// The live value of the parameter; 0 when there is none there.
double LiveValue(const ParameterAddress &place);

// False when there is no such parameter, and for a step of a sequence that the last frame did not evaluate,
// since it is not reached, done or waits
// for the actions of the one before. Its blocks are as they were when it was evaluated last.
bool isEvaluated(const ParameterAddress &place);

// The logic block of the parameter that fired in the last frame; -1: none.
int FiredBlock(const ParameterAddress &place);
