// The systems program: the model compiled into flat arrays that a frame runs over. All values lie side by
// side in one array, parameters first and constants behind them, and every operand is an index into it. The
// records, scattered over the heap, are touched only where a block runs its actions and where a dataref is
// missing.
//
// A frame may evaluate everything, in order. But what a parameter becomes depends only on the values that its
// blocks read, its own among them where a calculation goes on from it, and on what was heard, where it
// compares speech. While none of these has changed, evaluating it again would store the same value and let
// the same block fire. So a frame evaluates what is marked, in the same order, and this is what marks:
//
// - A value that is stored and differs from the old one, in any bit, marks those that read it: its
//   dependents. Those behind it in the order see it in this frame, and their marks are met in this frame;
//   those before it, and the parameter itself, see it in the next, for which their marks are left. So a
//   mark is always met when evaluating everything would first have seen the new value.
// - Of those it marks only the ones for which it makes a difference. A calculation is done by the block that
//   fired last alone, as long as no comparison up to that block turns out otherwise; and a comparison that
//   turns out as before, with the other value as it is now, changes nothing. Values change one after the
//   other, so what turned out the same at each change is the same at the end of all.
// - A sequence is evaluated as a whole, in its gates' order, and stands in the order at its first step,
//   whose mark is that of all. Its gates look at its own steps, so it reads them all; and at whether the
//   queue of actions is empty: when that changes, every sequence is marked.
// - When what was heard is another text, or was consumed, everything that compares speech is marked.
// - What does more than store a value marks itself for the next frame: a block that ran actions, since it
//   runs them in every frame in which it fires; a comparison that told what is waited for; a sequence that
//   runs, since it says so.
//
// Parameters with datarefs are visited in every frame, at their place, to read and write them; only an input
// that is another one than before has them evaluated. Limits give the same for what they gave, and graphs and
// calculations for what they were given, so nothing else needs to be remembered.
//
// Marking costs more than evaluating when most of it changes: then a stretch of frames is evaluated whole
// (RunProgram in systems/cycle.cpp).
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <unordered_map>
#include <vector>

#include "systems/graph.h"
#include "systems/marks.h"
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
    uint32_t first : 30; // of a list: its first number; of speech: the phrase
    uint32_t isSpeech : 1;
    uint32_t isEquality : 1; // "=="; else "!="
    uint32_t end;            // of a list: behind its last number
    uint32_t operand;        // of a list: the value
};

// Phrases and what was heard are compared by their numbers.
enum PhraseNumber : uint32_t {
    NothingHeard = 0,
    OtherPhrase = 1, // heard, but compared with nowhere
    AnyPhraseNumber = 2,
};

const uint32_t OperatorKeep = 7; // stores the accumulator at the operand and starts over from the parameter

struct ProgramElement {
    uint32_t operand : 29; // value
    uint32_t oper : 3;     // CalculationOperator or OperatorKeep
};

const uint32_t NoIndex = 0xFFFFFFFF;

// A block's comparisons and elements end where those of the next block begin.
struct ProgramBlock {
    uint32_t firstComparison;
    uint32_t firstElement;
    uint32_t firing; // index in firings when it needs more than the elements; else NoIndex
};

// What a block needs besides its elements when it fires.
struct BlockFiring {
    const logicblock_struct *block; // for its actions
    const device_struct *device;
    ParameterAddress place; // for the log, with the block's index
    int index;
    uint32_t graph = NoIndex; // index in graphs
    bool hasSpeech = false;
    bool hasActions = false;
};

// What reads a value, and is marked when it changes: what is evaluated whole (a sequence, what compares
// speech), whatever fired; a parameter that calculates with it, while the block that does so is the one that
// fired last.
struct Dependent {
    uint32_t unit;
    uint16_t block;
    uint16_t mask; // of the block's bits that count; 0: whatever fired
};

// A parameter that compares the value, in one of its blocks: marked when the comparison turns out otherwise,
// while no block before it fires.
struct ComparingDependent {
    uint32_t unit;
    uint32_t other; // the value that it is compared with; of a list: index in special
    uint32_t block : 16;
    uint32_t relations : 3; // of the value to the other for which the comparison is true, or for which it is
                            // false, and otherwise not; of a list 0
};

enum Relation : uint32_t { RelationGreater = 1, RelationEqual = 2, RelationLess = 4 };

// Where those of one value begin; they end where those of the next begin.
struct FirstDependents {
    uint32_t any, comparing;
};

struct ProgramGraph {
    uint32_t firstPoint, points;
    bool isAscending;
    size_t segment; // used last
};

struct ProgramDataref {
    DatarefAccess access;
    double lastValue;
};

// What is visited in every frame, marked or not: a parameter that has datarefs, or a sequence with one that
// has.
struct DatarefVisit {
    uint32_t unit;
    uint32_t input, output; // index in datarefs; of a sequence none
};

enum ParameterTraits : uint32_t {
    HasInput = 1,
    HasOutput = 2,
    HasSpeech = 4,  // every block is evaluated, also behind one that fired
    IsSequence = 8, // the first step of a serial device
};

// What a parameter may have beside its blocks.
struct ParameterExtras {
    double minimum = -std::numeric_limits<double>::infinity();
    double maximum = std::numeric_limits<double>::infinity();
    uint32_t input = NoIndex, output = NoIndex; // index in datarefs
    uint32_t run = NoIndex;                     // of the first step of a sequence: index in runs
};

// A parameter's blocks end where those of the next parameter begin.
struct ProgramParameter {
    uint32_t firstBlock;
    uint32_t traits : 4;
    uint32_t extras : 28; // index in extras; 0: it has none
};

// Parameters that are evaluated alike: a serial device, or all the others up to the next one.
struct ProgramRun {
    uint32_t firstParameter;
    uint32_t endParameter;
    bool isSerial;
    bool isChecklist = false;              // of those that are called
    const device_struct *called = nullptr; // a serial device whose first step waits for a phrase
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
    std::vector<SpecialComparison> special;
    std::vector<double> listNumbers;
    std::vector<BlockFiring> firings;
    std::vector<ProgramGraph> graphs;
    std::vector<GraphPoint> graphPoints;
    std::vector<ParameterExtras> extras;
    std::vector<ProgramDataref> datarefs;
    std::vector<dataref_class *> datarefRecords;  // of each; looks it up while it is missing
    std::vector<uint32_t> firstDeviceOfSystem;    // index in firstParameterOfDevice
    std::vector<uint32_t> firstParameterOfDevice; // index in values

    // Speech.
    std::vector<std::string> phrases; // by number
    std::unordered_map<std::string, uint32_t> phraseNumbers;
    std::string heardText; // LastRecognition as the frame last saw it, and its number
    uint32_t heard = NothingHeard;

    // What is to be evaluated, by the index of a parameter or of a sequence's first step.
    MarkSet marked;
    MarkSet all;                                  // what can be marked
    std::vector<DatarefVisit> visits;             // in order
    std::vector<FirstDependents> firstDependents; // per parameter, and one behind the last
    std::vector<Dependent> dependents;
    std::vector<ComparingDependent> comparing;
    std::vector<uint32_t> speechUnits; // what compares speech
    std::vector<uint32_t> sequences;
    bool wasQueueEmpty = true;    // when the sequences were marked last
    bool areMarksCurrent = false; // false: the next frame that evaluates what is marked must mark all
    int plainFramesLeft = 0;      // frames to come in which everything is evaluated
    size_t dependentsMet = 0;     // by the values that the frame has changed

    // What the last frame began with, while frames are traced (systems/trace.h).
    struct {
        std::vector<double> values; // of the parameters; none: no frame since the program was compiled
        uint32_t heard = NothingHeard;
        uint32_t consumer = NoIndex; // the block that consumed the recognition
    } before;

    // By its text; OtherPhrase when no comparison knows it.
    uint32_t PhraseNumberOf(const std::string &text) const {
        if (text.empty()) return NothingHeard;
        const auto found = phraseNumbers.find(text);
        return found == phraseNumbers.end() ? OtherPhrase : found->second;
    }
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

// False when there is no such parameter, and for a step of a sequence that the last frame passed over, since
// it is not reached, done or waits for the actions of the one before. Its blocks are as they were when it was
// evaluated last.
bool isEvaluated(const ParameterAddress &place);

// The logic block of the parameter that fired in the last frame; -1: none.
int FiredBlock(const ParameterAddress &place);
