// Operations inside a parameter. The whole parameter is kept for undoing: it is small.
#include "systems/editor/blocks.h"

#include <algorithm>
#include <string>

#include "systems/body_parser.h"
#include "systems/editor/undo.h"
#include "systems/kept_lines.h"
#include "systems/links.h"
#include "systems/notation.h"
#include "systems/operators.h"
#include "util/numbers.h"

namespace {

// A step that changes one parameter, which comes back as it is now.
class ParameterStep : EditStep {
public:
    ParameterStep(const char *name, const ParameterAddress &place) : EditStep(name) { KeepParameter(place); }
};

template <typename Record> int InsertBehind(std::vector<Record> &records, int after, Record record) {
    const int index = RecordAt(records, after) ? after + 1 : static_cast<int>(records.size());
    records.insert(records.begin() + index, std::move(record));
    return index;
}

template <typename Record> constexpr int ListOf = ListOfPoints;
template <> constexpr int ListOf<compare_block_class> = ListOfComparisons;
template <> constexpr int ListOf<structExecute> = ListOfActions;

// One record of a block's list, with its step.
template <typename Record>
int AddRecord(const char *name, const BlockPlace &place, std::vector<Record> logicblock_struct::*list,
              int after, Record record) {
    logicblock_struct *block = BlockAt(place);
    if (!block) return -1;
    const ParameterStep step(name, place);
    const int index = InsertBehind(block->*list, after, std::move(record));
    ShiftKept(*block, ListOf<Record>, index, 1);
    return index;
}

template <typename Record>
void DeleteRecord(const char *name, const BlockPlace &place, std::vector<Record> logicblock_struct::*list,
                  int index) {
    logicblock_struct *block = BlockAt(place);
    if (!block || !RecordAt(block->*list, index)) return;
    const ParameterStep step(name, place);
    (block->*list).erase((block->*list).begin() + index);
    ShiftKept(*block, ListOf<Record>, index, -1);
}

template <typename Record>
void ChangeRecord(const char *name, const BlockPlace &place, std::vector<Record> logicblock_struct::*list,
                  int index, auto change) {
    logicblock_struct *block = BlockAt(place);
    Record *record = block ? RecordAt(block->*list, index) : nullptr;
    if (!record) return;
    const ParameterStep step(name, place);
    change(*record);
}

// Operands that name calculations from first on name those that come after it; one that names a calculation
// which is gone becomes a number.
void ShiftCalculationNames(logicblock_struct &block, int first, int by) {
    for (calcBlock_struct &calculation : block.calcs) {
        for (calcStack_class &element : calculation.stack) {
            if (element.blockIndex < first) continue;
            if (by < 0 && element.blockIndex == first) {
                element.blockIndex = -1;
                element.constant = 0.0;
            } else {
                element.blockIndex += by;
            }
        }
    }
}

calcStack_class NewElement(int oper) {
    calcStack_class element;
    element.constant = 0.0;
    element.oper = Operators[oper].text;
    element.operTypeDetect();
    return element;
}

calcBlock_struct *CalculationAt(const BlockPlace &place, int calculation) {
    logicblock_struct *block = BlockAt(place);
    return block ? RecordAt(block->calcs, calculation) : nullptr;
}

// The text that a new action begins with.
const char *NewText(int type) {
    const ActionKind *kind = ActionKindOf(type);
    return kind ? kind->newText : "";
}

void Rebind(dataref_class &dataref, int mode, const out_parameter_struct &parameter) {
    const std::string name = dataref.fullName;
    BindDataref(dataref, name, mode, BindingType(parameter), parameter.initValue);
}

} // namespace

logicblock_struct *BlockAt(const BlockPlace &place) {
    out_parameter_struct *parameter = ParameterAt(place);
    return parameter ? RecordAt(parameter->logic, place.block) : nullptr;
}

int AddBlock(const BlockPlace &place) {
    out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter) return -1;
    const ParameterStep step("ADD BLOCK", place);
    return InsertBehind(parameter->logic, place.block, {});
}

void DeleteBlock(const BlockPlace &place) {
    if (!BlockAt(place)) return;
    const ParameterStep step("DELETE BLOCK", place);
    std::vector<logicblock_struct> &logic = ParameterAt(place)->logic;
    logic.erase(logic.begin() + place.block);
}

int AddComparison(const BlockPlace &place, int after) {
    return AddRecord("ADD COMPARISON", place, &logicblock_struct::compares, after, compare_block_class());
}

void DeleteComparison(const BlockPlace &place, int index) {
    DeleteRecord("DELETE COMPARISON", place, &logicblock_struct::compares, index);
}

void SwitchJoin(const BlockPlace &place, int index) {
    ChangeRecord("JOIN", place, &logicblock_struct::compares, index, [](compare_block_class &comparison) {
        comparison.joinOp = comparison.joinOp == 1 ? 0 : 1;
        comparison.joinText = JoinKeys[comparison.joinOp];
    });
}

void SwitchComparator(const BlockPlace &place, int index) {
    ChangeRecord("COMPARATOR", place, &logicblock_struct::compares, index,
                 [](compare_block_class &comparison) {
                     if (comparison.a.kind == LinkSpeech) return; // the files know no other than "=="
                     comparison.cmpOp = (comparison.cmpOp + 1) % ComparisonOperators;
                     comparison.cmpText = Comparators[comparison.cmpOp].text;
                 });
}

void SwitchSpeech(const BlockPlace &place, int index) {
    ChangeRecord("SPEECH", place, &logicblock_struct::compares, index, [](compare_block_class &comparison) {
        compare_block_class switched;
        switched.joinOp = comparison.joinOp;
        switched.joinText = comparison.joinText;
        if (comparison.a.kind != LinkSpeech) {
            switched.a.kind = LinkSpeech;
            switched.phrase = AnyPhrase;
            switched.phraseStroka = MakeStrokaFromText(switched.phrase, NormaliseOnly);
        }
        comparison = std::move(switched);
    });
}

int AddCalculation(const BlockPlace &place, int after) {
    logicblock_struct *block = BlockAt(place);
    if (!block) return -1;
    const ParameterStep step("ADD CALCULATION", place);
    calcBlock_struct calculation;
    calculation.stack.push_back(NewElement(OperatorLoad));
    const int index = InsertBehind(block->calcs, after, std::move(calculation));
    ShiftCalculationNames(*block, index, 1);
    ShiftKept(*block, ListOfCalculations, index, 1);
    return index;
}

int AddElement(const BlockPlace &place, int calculation, int after) {
    calcBlock_struct *record = CalculationAt(place, calculation);
    if (!record) return -1;
    const ParameterStep step("ADD ELEMENT", place);
    return InsertBehind(record->stack, after, NewElement(record->stack.empty() ? OperatorLoad : OperatorAdd));
}

void DeleteElement(const BlockPlace &place, int calculation, int index) {
    calcBlock_struct *record = CalculationAt(place, calculation);
    if (!record || (!record->stack.empty() && !RecordAt(record->stack, index))) return;
    const ParameterStep step("DELETE ELEMENT", place);
    if (record->stack.size() > 1) {
        record->stack.erase(record->stack.begin() + index);
        return;
    }
    logicblock_struct &block = *BlockAt(place);
    block.calcs.erase(block.calcs.begin() + calculation);
    ShiftCalculationNames(block, calculation, -1);
    ShiftKept(block, ListOfCalculations, calculation, -1);
}

bool isResultUsed(const BlockPlace &place, int calculation) {
    const calcBlock_struct *used = CalculationAt(place, calculation);
    if (!used) return false;
    for (const calcBlock_struct &other : BlockAt(place)->calcs)
        for (const calcStack_class &element : other.stack)
            if (&other != used && element.blockIndex == calculation) return true;
    return false;
}

void SetOperator(const BlockPlace &place, int calculation, int index, int oper) {
    calcBlock_struct *record = CalculationAt(place, calculation);
    calcStack_class *element = record ? RecordAt(record->stack, index) : nullptr;
    if (!element || oper < 0 || oper >= CalculationOperators) return;
    const ParameterStep step("OPERATOR", place);
    element->oper = Operators[oper].text;
    element->operTypeDetect();
}

int AddAction(const BlockPlace &place, int after) {
    structExecute action;
    action.text = NewText(action.type);
    return AddRecord("ADD ACTION", place, &logicblock_struct::executes, after, std::move(action));
}

void DeleteAction(const BlockPlace &place, int index) {
    DeleteRecord("DELETE ACTION", place, &logicblock_struct::executes, index);
}

// A text that was never written by the author gives way to the new type's.
void SetActionType(const BlockPlace &place, int index, int type) {
    if (!ActionKindOf(type)) return;
    ChangeRecord("ACTION TYPE", place, &logicblock_struct::executes, index, [=](structExecute &action) {
        if (action.text == NewText(action.type)) action.text = NewText(type);
        action.type = type;
        ReadSpokenLinks(action);
        action.notFound = isMissing(action) ? 1 : 0;
    });
}

void CopyAction(const BlockPlace &place, int index) {
    logicblock_struct *block = BlockAt(place);
    const structExecute *action = block ? RecordAt(block->executes, index) : nullptr;
    if (!action) return;
    ExecCopy = *action;
    copies.isActionCopied = true;
}

bool isActionCopied() {
    return copies.isActionCopied;
}

int PasteAction(const BlockPlace &place, int after) {
    if (!isActionCopied()) return -1;
    structExecute action = ExecCopy;
    action.line = 0;
    return AddRecord("PASTE ACTION", place, &logicblock_struct::executes, after, std::move(action));
}

int AddPoint(const BlockPlace &place, int after) {
    return AddRecord("ADD DATA", place, &logicblock_struct::graph, after, graf_struct());
}

void DeletePoint(const BlockPlace &place, int index) {
    DeleteRecord("DEL DATA", place, &logicblock_struct::graph, index);
}

// A published dataref is of the parameter's type.
void SwitchType(const ParameterAddress &place) {
    out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter) return;
    const ParameterStep step("TYPE", place);
    parameter->type = parameter->type == TypeDouble ? TypeInteger : TypeDouble;
    parameter->intValue = parameter->type == TypeInteger ? TruncateToInt(parameter->value) : 0;
    for (dataref_class *dataref : {&parameter->inDataref, &parameter->outDataref})
        if (dataref->mode == BindingNew) Rebind(*dataref, BindingNew, *parameter);
}

void SwitchSaveOnExit(const ParameterAddress &place) {
    out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter) return;
    const ParameterStep step("SAVE ON EXIT", place);
    parameter->saveOnExit = !parameter->saveOnExit;
}

void SwitchDatarefMode(const ParameterAddress &place, bool isOutput) {
    out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter) return;
    dataref_class &dataref = isOutput ? parameter->outDataref : parameter->inDataref;
    if (dataref.fullName.empty()) return;
    const ParameterStep step("DATAREF", place);
    Rebind(dataref, dataref.mode == BindingNew ? BindingExist : BindingNew, *parameter);
}

void SwitchSerial(const ParameterAddress &place) {
    device_struct *device = DeviceAt(place);
    if (!device) return;
    EditStep step("SERIAL STACK");
    KeepDeviceHead(place);
    device->serialStack = !device->serialStack;
}
