// Keys are found anywhere in a line, and much may stand in one that is not looked at. A record that tells
// less than its line keeps the line, so that saving does not take from the author what the loader had no use
// for.
#include <algorithm>

#include "systems/links.h"
#include "systems/notation.h"
#include "systems/operators.h"
#include "util/numbers.h"
#include "util/text.h"

namespace {

const int SearchOrder[] = {CompareEqual,    CompareAtLeast, CompareAtMost,
                           CompareNotEqual, CompareGreater, CompareLess}; // longer operators first

std::string Without(int key, std::string_view line) {
    return ReplaceString(std::string(line), LineKeys[key].text, "");
}

// The first key that is in the line, of some that follow each other; -1: none.
int FindKey(std::string_view line, int first, int last) {
    for (int key = first; key <= last; key++)
        if (Contains(line, LineKeys[key].text)) return key;
    return -1;
}

std::string TakenFor(int key, std::string_view line) {
    return std::string("taken for ") + LineKeys[key].item + ", since \"" + LineKeys[key].text
           + "\" is in it: " + std::string(line);
}

// Without its first brackets.
std::string Bare(std::string_view text) {
    return ReplaceString(ReplaceString(std::string(text), "[", ""), "]", "");
}

UnreadableLine NotANumber(const char *field, std::string_view text) {
    return {NoNumber(field, text)};
}

BodyItem ReadPoint(std::string_view line, LineRemarks &remarks) {
    const std::string rest = Without(KeyPoint, line);
    std::vector<std::string_view> fields;
    SplitFields(rest, ',', fields);
    graf_struct point;
    if (fields.size() > 2)
        remarks.AddLoss("a point has two numbers, each with a point, not a comma: " + std::string(line));
    if (!ParseDouble(fields[0], point.x)) return NotANumber("x", fields[0]);
    const std::string_view y = fields.size() > 1 ? fields[1] : "";
    if (!ParseDouble(y, point.y)) return NotANumber("y", y);
    return point;
}

// A number that cannot be read is no constant; the elements stand without it.
BodyItem ReadCalculationLine(std::string_view line, LineRemarks &remarks) {
    const std::string rest = Without(KeyCalculation, line);
    CalculationLine item;
    std::vector<calcStack_class> &stack = item.calculation.stack;
    std::string error;
    bool isWhole = true;
    if (!ReadCalculation(rest, stack, error, isWhole)) return NotANumber("operand", error);
    const std::string number = Bare(rest);
    if (isNumber(number)) {
        const bool isConstant = ParseDouble(number, item.constant);
        if (stack.empty()) return isConstant ? BodyItem(item) : NotANumber("constant", number);
    }
    const auto count = [&](char bracket) { return std::count(rest.begin(), rest.end(), bracket); };
    if (!isWhole || count('[') != count(']'))
        remarks.list.push_back("each operand stands between \"[\" and \"]\": " + std::string(line));
    remarks.isWhole = isWhole;
    return item;
}

BodyItem ReadAction(std::string_view line, LineRemarks &remarks) {
    const std::string rest = Without(KeyAction, line);
    std::vector<std::string_view> fields;
    SplitFields(rest, ',', fields);
    if (fields.size() < 3) return UnreadableLine{"an action has three fields: type, text, value"};
    if (fields.size() > 3)
        remarks.AddLoss("an action has three fields; a comma inside its text is written as \";\": "
                        + std::string(line));
    structExecute action;
    if (!ParseInt(fields[0], action.type)) return NotANumber("type", fields[0]);
    if (!ParseDouble(fields[2], action.value)) return NotANumber("value", fields[2]);
    action.text = fields[1];
    std::replace(action.text.begin(), action.text.end(), ';', ',');
    return action;
}

BodyItem ReadSpeech(std::string_view line) {
    compare_block_class comparison;
    comparison.a.kind = LinkSpeech;
    comparison.phrase = Without(KeySpeech, line);
    return comparison;
}

// A number or a link; false when it is a number that cannot be read.
bool ReadOperand(std::string text, sysLink_struct &link, double &number) {
    if (isNumber(text)) return ParseDouble(text, number);
    link.kind = LinkUnresolved;
    link.name = std::move(text);
    return true;
}

// The whole numbers among the pieces. False when that is not all there is.
bool ReadList(std::string_view text, std::vector<int> &list) {
    bool isWhole = true;
    std::vector<std::string_view> pieces;
    SplitFields(text, ';', pieces);
    for (std::string_view piece : pieces) {
        int number = 0;
        double exact = 0.0;
        if (piece.empty()) continue;
        if (!isNumber(piece) || !ParseInt(piece, number)) {
            isWhole = false;
            continue;
        }
        list.push_back(number);
        isWhole = isWhole && ParseDouble(piece, exact) && exact == number;
    }
    return isWhole;
}

BodyItem ReadComparison(const std::string &line, LineRemarks &remarks) {
    compare_block_class comparison;
    std::string sides = line;
    bool hasOperator = false;
    for (int oper : SearchOrder) {
        const size_t place = line.find(Comparators[oper].text);
        if (place == std::string::npos) continue;
        hasOperator = true;
        comparison.cmpOp = oper;
        comparison.cmpText = Comparators[oper].text;
        sides.replace(place, comparison.cmpText.size(), ",");
        break;
    }
    std::vector<std::string_view> fields;
    SplitFields(sides, ',', fields);
    if (fields.size() < 2) return UnreadableLine{"neither a keyword nor a comparison"};
    std::string left = Bare(fields[0]), right = Bare(fields[1]);
    if (!ReadOperand(left, comparison.a, comparison.aValue)) return NotANumber("left side", left);
    const bool isList = Contains(right, ";");
    if (!isList && !ReadOperand(right, comparison.b, comparison.bValue))
        return NotANumber("right side", right);
    remarks.isWhole = fields.size() == 2;
    if (!hasOperator)
        remarks.list.push_back("no comparison, but the comma is taken for ==: " + line);
    else if (fields.size() > 2)
        remarks.list.push_back("what follows the comma is ignored; a number has a point, a list \";\": "
                               + line);
    if (isList && !isEquality(comparison.cmpOp))
        remarks.list.push_back("a list is compared with == or != only: " + line);
    if (isList && !ReadList(right, comparison.bList))
        remarks.AddLoss("a list holds whole numbers only, without blanks: " + line);
    return comparison;
}

bool ParseElement(std::string_view operand, calcStack_class &element, bool &isWhole) {
    if (isNumber(operand)) return ParseDouble(operand, element.constant);
    if (Contains(operand, CalculationWord)) {
        const std::string number = ReplaceString(std::string(operand), CalculationWord, "");
        const bool isRead = ParseInt(number, element.blockIndex);
        isWhole = isWhole && element.blockIndex != -1; // which stands for none
        return isRead;
    }
    element.link.kind = LinkUnresolved;
    element.link.name = operand;
    return true;
}

// Whether what is written from the record may be misread: only when one of these letters is in it where no
// key and no operator put it.
bool isSuspicious(const std::string &text) {
    return text.find_first_of("[]=!<>") != std::string::npos;
}

bool isSuspicious(const compare_block_class &comparison) {
    return isSuspicious(comparison.a.name) || isSuspicious(comparison.b.name)
           || isSuspicious(comparison.phrase);
}

bool isSuspicious(const structExecute &action) {
    return isSuspicious(action.text);
}

bool isSuspicious(const graf_struct &) {
    return false;
}

int ModeOf(std::string_view word) {
    return word == "new" ? BindingNew : word == "exist" ? BindingExist : BindingNone;
}

// Words that are neither types, modes nor flags; a mode of nothing; fields behind the last one. A word that
// is no mode is told of the binding.
void RemarkOnFields(const std::vector<std::string_view> &fields, LineRemarks &remarks) {
    if (fields.size() > MostFields) remarks.AddLoss("more than twelve fields: is there a comma in the text?");
    if (!isTypeWord(fields[1]))
        remarks.AddLoss("the type is \"int\" or \"double\", else the initial value is not read: "
                        + std::string(fields[1]));
    for (size_t mode : {7U, 9U}) {
        if (fields[mode].empty()) continue;
        if (fields[mode - 1].empty())
            remarks.AddLoss("a mode without a dataref: " + std::string(fields[mode]));
        else if (ModeOf(fields[mode]) == BindingNone)
            remarks.isWhole = false;
    }
    const std::string_view flag = fields.size() > 11 ? fields[11] : "";
    if (!flag.empty() && flag != "0" && flag != "1")
        remarks.AddLoss("only \"1\" in the last field saves the value: " + std::string(flag));
}

BodyItem ReadKeyedLine(int key, const std::string &line, LineRemarks &remarks) {
    switch (key) {
    case KeyPoint: return ReadPoint(line, remarks);
    case KeyCalculation: return ReadCalculationLine(line, remarks);
    case KeyAction: return ReadAction(line, remarks);
    case KeySpeech: return ReadSpeech(line);
    default: return ReadComparison(line, remarks);
    }
}

} // namespace

void ReportRemarks(const LineRemarks &remarks, const std::string &file, int line) {
    for (const std::string &remark : remarks.list)
        Report({.file = file, .line = line, .reason = remark, .isLogged = false});
}

LineKind KindOfLine(std::string_view line) {
    const int key = Contains(line, "=") ? FindKey(line, KeySystem, KeyParameter) : -1;
    return key < 0 ? LineKind::Body : static_cast<LineKind>(key);
}

void RemarkOnKey(LineKind kind, std::string_view line, LineRemarks &remarks) {
    const int key = static_cast<int>(kind);
    if (kind != LineKind::Body && !line.starts_with(LineKeys[key].text))
        remarks.list.push_back(TakenFor(key, line));
}

std::string NameInLine(LineKind kind, std::string_view line) {
    return kind == LineKind::Body ? std::string(line) : Without(static_cast<int>(kind), line);
}

bool isTypeWord(std::string_view word) {
    return word == "int" || word == "integer" || word == "execute" || word == "double";
}

system_class ReadSystemLine(const std::string &line) {
    system_class system;
    system.name = NameInLine(LineKind::System, line);
    if (!Says(LineOf(system), system)) system.asWritten = line;
    return system;
}

device_struct ReadDeviceLine(const std::string &line) {
    device_struct device;
    device.serialStack = KindOfLine(line) == LineKind::SerialDevice;
    device.name = NameInLine(KindOfLine(line), line);
    if (!Says(LineOf(device), device)) device.asWritten = line;
    return device;
}

bool ReadParameterFields(const std::vector<std::string_view> &fields, out_parameter_struct &parameter,
                         std::string &reason, LineRemarks &remarks) {
    if (fields.size() < FewestFields) {
        reason = "a parameter has ten to twelve fields";
        return false;
    }
    RemarkOnFields(fields, remarks);
    const auto readNumber = [&](size_t field, const char *what, double &value) {
        if (ParseDouble(fields[field], value)) return true;
        reason = NoNumber(what, fields[field]);
        return false;
    };
    parameter.name = fields[0];
    parameter.type = fields[1] == "double" ? TypeDouble : TypeInteger;
    parameter.unit = fields[2];
    if (isTypeWord(fields[1]) && !readNumber(3, "initial value", parameter.initValue)) return false;
    parameter.hasMin = !fields[4].empty();
    parameter.hasMax = !fields[5].empty();
    if (parameter.hasMin && !readNumber(4, "minimum", parameter.minLimit)) return false;
    if (parameter.hasMax && !readNumber(5, "maximum", parameter.maxLimit)) return false;
    parameter.inDataref.fullName = fields[6];
    parameter.outDataref.fullName = fields[8];
    if (!fields[6].empty()) parameter.inDataref.mode = ModeOf(fields[7]);
    if (!fields[8].empty()) parameter.outDataref.mode = ModeOf(fields[9]);
    if (fields.size() > 10) parameter.text = fields[10];
    parameter.saveOnExit = fields.size() > 11 && fields[11] == "1";
    return true;
}

BodyItem ReadBodyLine(const std::string &line, LineRemarks &remarks) {
    remarks = {};
    if (line == BlockKey) return BlockBegin{};
    for (int join : {0, 1})
        if (line == JoinKeys[join]) return JoinLine{join};
    const int key = FindKey(line, KeyPoint, KeySpeech);
    BodyItem item = ReadKeyedLine(key, line, remarks);
    if (key >= 0 && !line.starts_with(LineKeys[key].text))
        remarks.list.insert(remarks.list.begin(), TakenFor(key, line));
    return item;
}

// A calculation without elements is the constant of its block, which another calculation may take from it.
void KeepAsWritten(const std::string &line, bool isWhole, BodyItem &item) {
    const auto keep = [&](auto &record) {
        if (!isWhole || (isSuspicious(record) && !Says(LineOf(record), record))) record.asWritten = line;
    };
    if (auto *comparison = std::get_if<compare_block_class>(&item)) keep(*comparison);
    if (auto *action = std::get_if<structExecute>(&item)) keep(*action);
    if (auto *point = std::get_if<graf_struct>(&item)) keep(*point);
    if (auto *found = std::get_if<CalculationLine>(&item)) {
        calcBlock_struct &calculation = found->calculation;
        const bool isOdd = std::count(line.begin(), line.end(), '=') > 1;
        if (!isWhole || calculation.stack.empty()
            || (isOdd && !Says(LineOf(calculation, logicblock_struct()), calculation)))
            calculation.asWritten = line;
    }
}

void KeepAsWritten(const std::string &line, bool isWhole, out_parameter_struct &parameter) {
    const std::string rest = NameInLine(LineKind::Parameter, line);
    if (!isWhole || (isSuspicious(rest) && !Says(LineOf(parameter), parameter))) parameter.asWritten = line;
}

bool ReadCalculation(std::string_view text, std::vector<calcStack_class> &stack, std::string &error,
                     bool &isWhole) {
    stack.clear();
    std::vector<std::string_view> pieces;
    SplitFields(text, ']', pieces);
    isWhole = pieces.back().empty(); // what stands behind the last "]" has no use
    pieces.pop_back();
    for (std::string_view piece : pieces) {
        const size_t bracket = piece.find('[');
        calcStack_class element;
        element.oper = piece.substr(0, bracket);
        element.operTypeDetect();
        std::string_view operand;
        if (bracket != std::string_view::npos) operand = piece.substr(bracket + 1);
        const size_t second = operand.find('[');
        isWhole = isWhole && second == std::string_view::npos;
        operand = operand.substr(0, second);
        if (!ParseElement(operand, element, isWhole)) {
            error = operand;
            return false;
        }
        stack.push_back(std::move(element));
    }
    return true;
}
