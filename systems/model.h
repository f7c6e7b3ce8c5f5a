// The systems model: a tree of systems, devices and output parameters that an aircraft author writes as
// text files and that runs once per frame.
//
// All records are values in vectors owned by systems_vector. Cross references are addresses, so the vectors
// are only appended to, or all links are resolved again. Deleting sets a flag; a deleted item stays, and is
// evaluated, until the next load. The records are what files and editor see; while the model runs its live
// values are in the systems program (systems/program.h), and RefreshRecords brings them back here. What a
// comparison or an element read and gave in the last frame the trace tells (systems/trace.h); their own
// fields for it, operand, input, result, inState, cmpResult and outState, are left alone.
//
// A record's line is the number, from 1, of the line of its system's file that it was read from; 0 for what
// the editor made. Its asWritten is that line as the author wrote it, where the record does not tell all that
// it says; else empty.
#pragma once

#include <compare>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "systems/action_kinds.h"
#include "systems/dataref_binding.h"
#include "voice/phrases.h"

// ---- Lines that were not understood ----

// A line of which the loader could make nothing. It stays at its place in the files, and does nothing.
struct kept_line_struct {
    std::string text;
    std::string reason;
    int line = 0;
    // In a logic block only: it stands behind the first so many records of one of the block's lists.
    int list = 0; // BlockList
    int behind = 0;
};
using KeptLines = std::vector<kept_line_struct>;

// ---- Links ----

enum LinkKind {
    LinkLive = 0,       // resolved
    LinkDeleted = 1,    // resolved, to a parameter flagged deleted; still readable
    LinkNone = 2,       // no link: the owner uses its own constant
    LinkUnresolved = 4, // the text names no parameter; reads as 0
    LinkSpeech = 5,     // in a comparison's left operand only: it compares recognised speech
};

// Where a record stands: its indices in systems_vector, devices and outs. With out -1 it is a device's, with
// dev -1, too, a system's. SystemAt, DeviceAt and ParameterAt give the record.
struct ParameterAddress {
    int sys = -1, dev = -1, out = -1;
    // The order of the model. NOLINTNEXTLINE(modernize-use-nullptr): a 0 inside of it
    auto operator<=>(const ParameterAddress &) const = default;
};

// A reference to a parameter.
struct sysLink_struct : ParameterAddress {
    std::string name; // "SYSTEM.DEVICE.PARAMETER" as written
    int kind = LinkNone;
};

// ---- Blocks of a parameter ----

// One operator and operand of a calculation.
struct calcStack_class {
    std::string oper; // as written
    int operType = 0; // CalculationOperator
    sysLink_struct link;
    int blockIndex = -1; // operand: the result of that calculation of the same logic block
    double operand = 0.0;
    double constant = 1.0; // operand: a number
    double input = 0.0;
    double result = 0.0;

    void operTypeDetect();
};

struct calcBlock_struct {
    std::vector<calcStack_class> stack; // empty: the logic block's constant
    double result = 0.0;
    int line = 0;
    std::string asWritten;
};

inline constexpr const char *AnyPhrase = "any"; // in a speech comparison: whatever was heard

// One comparison line.
struct compare_block_class {
    sysLink_struct a;
    double aValue = 0.0; // left operand: a number
    sysLink_struct b;
    double bValue = 0.0;    // right operand: a number
    std::vector<int> bList; // right operand: a list of integers
    std::string phrase;     // of a speech comparison
    strokaStruct phraseStroka;
    int joinOp = 0; // 0 "&&", 1 "||"
    std::string joinText = "&&";
    int cmpOp = 0; // 0 "==", 1 "!=", 2 ">", 3 "<", 4 ">=", 5 "<="
    std::string cmpText = "==";
    bool inState = false;
    bool cmpResult = false;
    bool outState = false;
    int line = 0;
    std::string asWritten;
};

// One point of a graph.
struct graf_struct {
    double x = 0.0;
    double y = 0.0;
    int line = 0;
    std::string asWritten = {};
};

// One action of a logic block.
struct structExecute {
    int type = ScriptSay; // a code of the action kinds
    std::string text;     // phrase, position name, command, dataref or answer
    double value = 0.0;
    int notFound = 0; // the named position, command or dataref did not exist at load
    sysLink_struct link;
    std::vector<sysLink_struct> spokenLinks; // of a text that is said, in its order (systems/spoken_links.h)
    int line = 0;
    std::string asWritten;
};

// The lists of a logic block, in the order in which they are written.
enum BlockList { ListOfComparisons, ListOfCalculations, ListOfActions, ListOfPoints, BlockLists };

// A guarded rule: when the chain of comparisons is true it runs its actions, or its calculations.
struct logicblock_struct {
    std::vector<compare_block_class> compares;
    double constant = 0.0; // of a "calc=" line that holds only a number
    bool active = false;   // fired in the last frame
    std::vector<calcBlock_struct> calcs;
    std::vector<structExecute> executes;
    std::vector<graf_struct> graph;
    KeptLines kept;
    int line = 0;
};

// ---- The tree ----

enum { TypeInteger = 0, TypeDouble = 1 };

struct out_parameter_struct {
    std::string name = "NewOut";
    std::string text; // free text
    int type = TypeInteger;
    int intValue = 0;
    double value = 0.0;
    double initValue = 0.0; // what the writer stores
    std::string unit;
    std::vector<std::string> lines; // body lines, until they are parsed
    std::vector<int> lineNumbers;   // of lines, in the file named by fileName; for messages
    std::string fileName;
    int line = 0;
    std::string asWritten;
    KeptLines kept; // before its first block
    std::vector<logicblock_struct> logic;
    int activeBlock = -1; // the logic block that fired last
    dataref_class inDataref;
    dataref_class outDataref;
    bool hasMin = false, hasMax = false;
    double minLimit = 0.0, maxLimit = 0.0;
    bool deleted = false;
    bool hasError = false;
    bool saveOnExit = false;
    KeptLines keptBehind; // between it and the next one: of the device, so they stay when it moves
};

// Name to index. For a name that occurs twice it holds the first.
using NameIndex = std::map<std::string, int, std::less<>>;

struct device_struct {
    std::string name = "NewDevice";
    std::vector<out_parameter_struct> outs;
    NameIndex outIndex;
    bool deleted = false;
    bool hasError = false;
    bool serialStack = false; // a sequence of steps: a checklist or procedure
    int line = 0;
    std::string asWritten;
    KeptLines kept; // before its first parameter
};

struct system_class {
    std::string name = "NewSystem";
    std::vector<device_struct> devices;
    NameIndex deviceIndex;
    int expanded = 1; // editor display
    bool deleted = false;
    bool hasError = false; // a link written in this system does not resolve
    std::string fileName;
    int line = 0;
    std::string asWritten;
    KeptLines kept;       // before its first device
    KeptLines keptInList; // of the list of files: names behind its own that no system came from
};

// What stands before the first system, in its file and in the list of files.
struct KeptBeforeSystems {
    KeptLines lines, inList;
};

struct ModelState {
    std::vector<system_class> systems;
    NameIndex systemIndex;
    KeptBeforeSystems keptBefore;
    // 1: the model came from the files that "systems/_systems.txt" lists; 0: from "sys.txt"; -1: no files.
    int isSeparate = -1;
};
extern ModelState modelState;
inline std::vector<system_class> &systems_vector = modelState.systems;
inline NameIndex &mapSystemName = modelState.systemIndex;
inline KeptBeforeSystems &keptBeforeSystems = modelState.keptBefore;
inline int &isSeparateSysSaving = modelState.isSeparate;

// The record at an index; null when there is none.
template <typename Records> auto *RecordAt(Records &records, int index) {
    const bool isThere = index >= 0 && static_cast<size_t>(index) < records.size();
    return isThere ? &records[static_cast<size_t>(index)] : nullptr;
}

// What stands at an address, as deep as the function goes; null when the address names none.
inline system_class *SystemAt(const ParameterAddress &place) {
    return RecordAt(systems_vector, place.sys);
}
inline device_struct *DeviceAt(const ParameterAddress &place) {
    system_class *system = SystemAt(place);
    return system ? RecordAt(system->devices, place.dev) : nullptr;
}
inline out_parameter_struct *ParameterAt(const ParameterAddress &place) {
    device_struct *device = DeviceAt(place);
    return device ? RecordAt(device->outs, place.out) : nullptr;
}

// Where a device of the model stands.
ParameterAddress AddressOf(const device_struct &device);

// Calls visit with the address of every parameter of the model, in its order.
template <typename Visit> void ForEachAddress(Visit visit) {
    for (ParameterAddress place{0, 0, 0}; SystemAt(place); place = {place.sys + 1, 0, 0})
        for (; DeviceAt(place); place = {place.sys, place.dev + 1, 0})
            for (; ParameterAt(place); place.out++) visit(std::as_const(place));
}
