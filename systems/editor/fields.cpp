// Checks of what is typed. What must hold: all that is stored here is written to the systems files and read
// back as the same, so a text may hold nothing that the files' lines give a meaning to.
#include "systems/editor/fields.h"

#include <algorithm>

#include "frame/datarefs.h"
#include "systems/body_parser.h"
#include "systems/calculation.h"
#include "systems/editor/model.h"
#include "systems/editor/undo.h"
#include "systems/links.h"
#include "systems/notation.h"
#include "systems/operators.h"
#include "util/numbers.h"
#include "util/text.h"

namespace {

const char *const NothingThere = "there is nothing to change any more";

std::string Trimmed(const std::string &text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// "1.5" for "1,5"; empty for what is no number written so.
std::string WithPoint(const std::string &text) {
    double ignored = 0.0;
    const std::string changed = ReplaceString(text, ",", ".");
    return changed != text && ParseDouble(changed, ignored) ? changed : "";
}

std::string ReadNumber(const std::string &text, double &value) {
    if (const std::string meant = WithPoint(text); !meant.empty())
        return "a number has a point: write " + meant;
    return ParseDouble(text, value) ? "" : "this is not a number";
}

// Why a sign cannot stand in a text and, where one of "," and ";" can stand for the other, what to write.
std::string SignRefusal(char sign, std::string_view forbidden) {
    const bool isOtherGood = forbidden.find(sign == ',' ? ';' : ',') == std::string_view::npos;
    if (sign == ',' && isOtherGood) return "a comma ends the field in the files: leave it out, or write ;";
    if (sign == ';' && isOtherGood) return "the files keep a comma as ; so write a comma instead";
    return std::string("this must not contain ") + sign;
}

// Why a text cannot stand in a line of the files: the lines' keys are found anywhere in them.
std::string TextRefusal(const std::string &text, std::string_view forbidden) {
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < ' ') return "control characters cannot be kept";
        if (forbidden.find(c) != std::string_view::npos) return SignRefusal(c, forbidden);
    }
    for (const LineKey &key : LineKeys)
        if (Contains(text, key.text)) return std::string("this must not contain ") + key.text;
    return "";
}

// A link is accepted whether or not there is such a parameter; it is marked when there is none.
std::string ReadLink(const std::string &text, sysLink_struct &link) {
    const std::vector<std::string> names = StringToWordsArray(text, '.');
    if (names.size() != 3) return "this is neither a number nor SYSTEM.DEVICE.PARAMETER";
    for (const std::string &name : names)
        if (std::string refusal = NameRefusal(name); !refusal.empty()) return refusal;
    link = String2sysLink(text);
    if (link.kind == LinkNone) link.kind = LinkUnresolved;
    link.name = text;
    return "";
}

std::string ReadOperand(const std::string &text, sysLink_struct &link, double &number) {
    double ignored = 0.0;
    link = {};
    const bool isMeantAsNumber = isNumber(text) || ParseDouble(text, ignored) || !WithPoint(text).empty();
    return isMeantAsNumber ? ReadNumber(text, number) : ReadLink(text, link);
}

// Whether a text is whole numbers with commas between them, as a list may be meant.
bool isListWithCommas(const std::string &text) {
    const std::vector<std::string> pieces = StringToWordsArray(text, ',');
    return pieces.size() > 1 && std::all_of(pieces.begin(), pieces.end(), [](const std::string &piece) {
               int ignored = 0;
               return ParseInt(Trimmed(piece), ignored);
           });
}

std::string ReadList(const std::string &text, std::vector<int> &list) {
    list.clear();
    for (const std::string &piece : StringToWordsArray(text, ';')) {
        int number = 0;
        const std::string trimmed = Trimmed(piece);
        if (trimmed.empty()) continue;
        if (!isNumber(trimmed) || !ParseInt(trimmed, number) || int2string(number) != trimmed)
            return "a list holds whole numbers, separated by ;";
        list.push_back(number);
    }
    return list.empty() ? "this list is empty" : "";
}

// One of the three forms takes the place of another: nothing of that stays behind.
std::string SetRight(const std::string &text, compare_block_class &comparison) {
    comparison.b = {};
    comparison.bValue = 0.0;
    comparison.bList.clear();
    if (Contains(text, ";")) return ReadList(text, comparison.bList);
    if (isListWithCommas(text))
        return "a number has a point, a list ; between its numbers: "
               + (std::count(text.begin(), text.end(), ',') == 1 ? ReplaceString(text, ",", ".") + " or "
                                                                 : "")
               + ReplaceStringAll(text, ",", ";");
    return ReadOperand(text, comparison.b, comparison.bValue);
}

std::string SetLeft(const std::string &text, compare_block_class &comparison) {
    if (comparison.a.kind != LinkSpeech) return ReadOperand(text, comparison.a, comparison.aValue);
    if (text.empty()) return "a phrase must not be empty";
    std::string refusal = TextRefusal(text, "");
    if (!refusal.empty()) return refusal;
    comparison.phrase = text;
    comparison.phraseStroka = MakeStrokaFromText(text, AddAndTellServer);
    return "";
}

std::string SetOperand(const std::string &text, calcStack_class &element) {
    const std::string_view word = CalculationWord;
    element.blockIndex = -1;
    if (!text.starts_with(word)) return ReadOperand(text, element.link, element.constant);
    const std::string digits = text.substr(word.size());
    element.link = {};
    if (!ParseInt(digits, element.blockIndex) || int2string(element.blockIndex) != digits
        || element.blockIndex < 0)
        return std::string(word) + " is followed by the number of a calculation, from 0";
    return "";
}

// The whole line. A text without brackets is a single operand.
std::string SetCalculation(const std::string &text, calcBlock_struct &calculation) {
    const std::string line = Contains(text, "[") ? text : "[" + text + "]";
    if (!line.ends_with("]")) return "a calculation ends with ]";
    std::string refusal;
    if (Contains(text, ",")) refusal = "numbers have a point, not a comma";
    if (refusal.empty()) refusal = TextRefusal(line, ",;=");
    std::vector<calcStack_class> stack;
    std::vector<std::string_view> pieces;
    SplitFields(line, ']', pieces);
    pieces.pop_back();
    for (std::string_view piece : pieces)
        if (refusal.empty() && !Contains(piece, "[")) refusal = "every operand stands in brackets";
    std::string error;
    if (refusal.empty() && !calcString2calcStack({}, line, stack, error))
        refusal = "this is not a number: " + error;
    for (size_t i = 0; i < stack.size() && refusal.empty(); i++) {
        calcStack_class &element = stack[i];
        const bool isKnown = element.operType != OperatorLoad || element.oper.empty();
        if (!isKnown) return "there is no operator " + element.oper;
        refusal = SetOperand(std::string(pieces[i].substr(element.oper.size() + 1)), element);
    }
    if (refusal.empty()) calculation.stack = std::move(stack);
    return refusal;
}

std::string DatarefRefusal(const std::string &text) {
    std::string refusal = TextRefusal(text, ", ;");
    const size_t bracket = text.find('[');
    if (!refusal.empty() || bracket == std::string::npos) return refusal;
    if (bracket == 0) return "a dataref has a name";
    const std::string digits = text.substr(bracket + 1, text.size() - bracket - 2);
    int index = 0;
    if (text.ends_with("]") && ParseInt(digits, index) && int2string(index) == digits
        && isReachableElement(index))
        return "";
    return "an index is a number from 0 to 15 in brackets, at the end";
}

std::string SetLimit(const std::string &text, bool &has, double &limit) {
    has = !text.empty() && text != "non";
    return has ? ReadNumber(text, limit) : "";
}

// A field of the parameter itself. The record may be left half changed when it is refused.
std::string SetParameterField(int field, const std::string &text, out_parameter_struct &parameter) {
    std::string refusal;
    switch (field) {
    case FieldUnit:
    case FieldFreeText:
        refusal = TextRefusal(text, ",");
        (field == FieldUnit ? parameter.unit : parameter.text) = text;
        return refusal;
    case FieldInit: return ReadNumber(text, parameter.initValue);
    case FieldMin: refusal = SetLimit(text, parameter.hasMin, parameter.minLimit); break;
    case FieldMax: refusal = SetLimit(text, parameter.hasMax, parameter.maxLimit); break;
    default: return NothingThere;
    }
    const bool isCrossed = parameter.hasMin && parameter.hasMax && parameter.minLimit > parameter.maxLimit;
    return refusal.empty() && isCrossed ? "the lower limit would be above the upper one" : refusal;
}

// A field of a logic block.
std::string SetBlockField(const FieldPlace &field, const std::string &text, logicblock_struct &block) {
    compare_block_class *comparison = RecordAt(block.compares, field.item);
    calcBlock_struct *calculation = RecordAt(block.calcs, field.item);
    calcStack_class *element = calculation ? RecordAt(calculation->stack, field.element) : nullptr;
    structExecute *action = RecordAt(block.executes, field.item);
    graf_struct *point = RecordAt(block.graph, field.item);
    std::string refusal;
    switch (field.field) {
    case FieldLeft: return comparison ? SetLeft(text, *comparison) : NothingThere;
    case FieldRight: return comparison ? SetRight(text, *comparison) : NothingThere;
    case FieldCalculation: return calculation ? SetCalculation(text, *calculation) : NothingThere;
    case FieldOperand: return element ? SetOperand(text, *element) : NothingThere;
    case FieldActionText:
        if (!action) return NothingThere;
        refusal = TextRefusal(text, ";");
        action->text = text;
        ReadSpokenLinks(*action);
        action->notFound = isMissing(*action) ? 1 : 0;
        return refusal;
    case FieldActionValue: return action ? ReadNumber(text, action->value) : NothingThere;
    case FieldPointX: return point ? ReadNumber(text, point->x) : NothingThere;
    case FieldPointY: return point ? ReadNumber(text, point->y) : NothingThere;
    default: return NothingThere;
    }
}

const char *StepName(int field) {
    const char *const names[] = {
        "",           "RENAME",      "RENAME",      "RENAME",        "UNIT",           "TEXT",
        "INIT VALUE", "MIN LIMIT",   "MAX LIMIT",   "INPUT DATAREF", "OUTPUT DATAREF", "COMPARISON",
        "COMPARISON", "CALCULATION", "CALCULATION", "ACTION TEXT",   "ACTION VALUE",   "GRAPH POINT",
        "GRAPH POINT"};
    return names[field];
}

std::string BlockFieldText(const FieldPlace &field, logicblock_struct &block) {
    const compare_block_class *comparison = RecordAt(block.compares, field.item);
    calcBlock_struct *calculation = RecordAt(block.calcs, field.item);
    const calcStack_class *element = calculation ? RecordAt(calculation->stack, field.element) : nullptr;
    const structExecute *action = RecordAt(block.executes, field.item);
    const graf_struct *point = RecordAt(block.graph, field.item);
    std::string text;
    switch (field.field) {
    case FieldLeft:
        if (comparison && comparison->a.kind == LinkSpeech) return comparison->phrase;
        if (comparison) AddOperand(text, comparison->a, comparison->aValue, ShortDecimal);
        return text;
    case FieldRight:
        if (comparison) AddRightOperand(text, *comparison, ShortDecimal);
        return text;
    case FieldCalculation:
        if (calculation && calculation->stack.empty()) return ShortDecimal(block.constant);
        if (calculation) AddElements(text, *calculation, ShortDecimal);
        return text;
    case FieldOperand:
        if (element) AddOperand(text, *element, ShortDecimal);
        return text;
    case FieldActionText: return action ? action->text : "";
    case FieldActionValue: return action ? ShortDecimal(action->value) : "";
    case FieldPointX: return point ? ShortDecimal(point->x) : "";
    case FieldPointY: return point ? ShortDecimal(point->y) : "";
    default: return "";
    }
}

} // namespace

std::string FieldText(const FieldPlace &field) {
    const BlockPlace &place = field.place;
    if (field.field == FieldSystemName) return SystemAt(place) ? SystemAt(place)->name : "";
    if (field.field == FieldDeviceName) return DeviceAt(place) ? DeviceAt(place)->name : "";
    if (!ParameterAt(place)) return "";
    const out_parameter_struct &parameter = *ParameterAt(place);
    switch (field.field) {
    case FieldName: return parameter.name;
    case FieldUnit: return parameter.unit;
    case FieldFreeText: return parameter.text;
    case FieldInit: return ShortDecimal(parameter.initValue);
    case FieldMin: return parameter.hasMin ? ShortDecimal(parameter.minLimit) : "";
    case FieldMax: return parameter.hasMax ? ShortDecimal(parameter.maxLimit) : "";
    case FieldInDataref: return parameter.inDataref.fullName;
    case FieldOutDataref: return parameter.outDataref.fullName;
    default: break;
    }
    logicblock_struct *block = BlockAt(place);
    return block ? BlockFieldText(field, *block) : "";
}

// Blocks are changed in a copy of the record, so that a refused text changes nothing. Datarefs are bound in
// the record itself, after all checks.
std::string SetField(const FieldPlace &field, const std::string &typed) {
    const BlockPlace &place = field.place;
    const std::string text = Trimmed(typed);
    switch (field.field) {
    case FieldSystemName: return RenameSystem(place, text);
    case FieldDeviceName: return RenameDevice(place, text);
    case FieldName: return RenameOut(place, text);
    default: break;
    }
    if (!ParameterAt(place)) return NothingThere;
    if (text == FieldText(field)) return "";
    out_parameter_struct &parameter = *ParameterAt(place);
    const bool isInput = field.field == FieldInDataref;
    if (isInput || field.field == FieldOutDataref) {
        std::string refusal = DatarefRefusal(text);
        if (!refusal.empty()) return refusal;
        EditStep step(StepName(field.field));
        KeepParameter(place);
        dataref_class &dataref = isInput ? parameter.inDataref : parameter.outDataref;
        const int mode = dataref.mode == BindingNone ? static_cast<int>(BindingExist) : dataref.mode;
        BindDataref(dataref, text, mode, BindingType(parameter), parameter.initValue);
        return "";
    }
    EditStep step(StepName(field.field));
    out_parameter_struct changed = parameter;
    logicblock_struct *block = field.field < FieldLeft ? nullptr : RecordAt(changed.logic, place.block);
    std::string refusal = field.field < FieldLeft ? SetParameterField(field.field, text, changed)
                          : block                 ? SetBlockField(field, text, *block)
                                                  : NothingThere;
    if (!refusal.empty()) return refusal;
    KeepParameter(place);
    parameter = std::move(changed);
    return "";
}

bool isDatarefMissing(const dataref_class &dataref) {
    return dataref.mode != BindingNone && !dataref.handle;
}
