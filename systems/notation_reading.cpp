// Keys are found anywhere in a line, and much may stand in one that is not looked at. A record that tells
// less than its line keeps the line, so that saving does not take from the author what the loader had no use
// for.
#include <algorithm>

#include "systems/links.h"
#include "systems/notation.h"
#include "systems/operators.h"
#include "util/log.h"
#include "util/numbers.h"
#include "util/text.h"

namespace {

const std::string_view StructureKeys[] = {"sys=", "dev=", "devstack=", "out="}; // by LineKind
const int SearchOrder[] = {0, 4, 5, 1, 2, 3};                                   // longer operators first
const size_t FewestFields = 10; // of an "out=" line; text and save flag may be missing
const std::string_view BlockWord = "CBLOCK";

std::string Without(std::string_view key, std::string_view line) {
    return ReplaceString(std::string(line), key, "");
}

// Without its first brackets.
std::string Bare(std::string_view text) {
    return ReplaceString(ReplaceString(std::string(text), "[", ""), "]", "");
}

UnreadableLine NotANumber(const char *field, std::string_view text) {
    return {NoNumber(field, text)};
}

BodyItem ReadPoint(std::string_view line, bool &isWhole) {
    const std::string rest = Without("graf=", line);
    std::vector<std::string_view> fields;
    SplitFields(rest, ',', fields);
    graf_struct point;
    if (!ParseDouble(fields[0], point.x)) return NotANumber("x", fields[0]);
    const std::string_view y = fields.size() > 1 ? fields[1] : "";
    if (!ParseDouble(y, point.y)) return NotANumber("y", y);
    isWhole = fields.size() == 2;
    return point;
}

// A number that cannot be read is no constant; the elements stand without it.
BodyItem ReadCalculationLine(std::string_view line, bool &isWhole) {
    const std::string rest = Without("calc=", line);
    CalculationLine item;
    std::vector<calcStack_class> &stack = item.calculation.stack;
    std::string error;
    if (!ReadCalculation(rest, stack, error, isWhole)) return NotANumber("operand", error);
    const std::string number = Bare(rest);
    if (!isNumber(number)) return item;
    const bool isConstant = ParseDouble(number, item.constant);
    if (!stack.empty()) return item;
    isWhole = isConstant;
    return isConstant ? BodyItem(item) : NotANumber("constant", number);
}

BodyItem ReadAction(std::string_view line, bool &isWhole) {
    const std::string rest = Without("execute=", line);
    std::vector<std::string_view> fields;
    SplitFields(rest, ',', fields);
    if (fields.size() < 3) return UnreadableLine{"an action has three fields: type, text, value"};
    structExecute action;
    if (!ParseInt(fields[0], action.type)) return NotANumber("type", fields[0]);
    if (!ParseDouble(fields[2], action.value)) return NotANumber("value", fields[2]);
    action.text = fields[1];
    std::replace(action.text.begin(), action.text.end(), ';', ',');
    isWhole = fields.size() == 3;
    return action;
}

BodyItem ReadSpeech(std::string_view line) {
    compare_block_class comparison;
    comparison.a.kind = LinkSpeech;
    comparison.phrase = Without("instring=", line);
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

BodyItem ReadComparison(const std::string &line, bool &isWhole) {
    compare_block_class comparison;
    std::string sides = line;
    for (int oper : SearchOrder) {
        const size_t place = line.find(ComparisonTexts[oper]);
        if (place == std::string::npos) continue;
        comparison.cmpOp = oper;
        comparison.cmpText = ComparisonTexts[oper];
        sides.replace(place, comparison.cmpText.size(), ",");
        break;
    }
    std::vector<std::string_view> fields;
    SplitFields(sides, ',', fields);
    if (fields.size() < 2) return UnreadableLine{"neither a keyword nor a comparison"};
    std::string left = Bare(fields[0]), right = Bare(fields[1]);
    isWhole = fields.size() == 2;
    if (!ReadOperand(left, comparison.a, comparison.aValue)) return NotANumber("left side", left);
    if (Contains(right, ";"))
        isWhole = ReadList(right, comparison.bList) && isWhole;
    else if (!ReadOperand(right, comparison.b, comparison.bValue))
        return NotANumber("right side", right);
    return comparison;
}

bool ParseElement(std::string_view operand, calcStack_class &element, bool &isWhole) {
    if (isNumber(operand)) return ParseDouble(operand, element.constant);
    if (Contains(operand, BlockWord)) {
        const bool isRead = ParseInt(Without(BlockWord, operand), element.blockIndex);
        isWhole = isWhole && element.blockIndex != -1; // which stands for none
        return isRead;
    }
    element.link.kind = LinkUnresolved;
    element.link.name = operand;
    return true;
}

bool isType(std::string_view word) {
    return word == "int" || word == "integer" || word == "execute" || word == "double";
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

} // namespace

LineKind KindOfLine(std::string_view line) {
    if (!Contains(line, "=")) return LineKind::Body;
    for (size_t kind = 0; kind < std::size(StructureKeys); kind++)
        if (Contains(line, StructureKeys[kind])) return static_cast<LineKind>(kind);
    return LineKind::Body;
}

std::string NameInLine(LineKind kind, std::string_view line) {
    return kind == LineKind::Body ? std::string(line)
                                  : Without(StructureKeys[static_cast<size_t>(kind)], line);
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
                         std::string &reason) {
    if (fields.size() < FewestFields) {
        reason = "a parameter has ten to twelve fields";
        return false;
    }
    const auto readNumber = [&](size_t field, const char *what, double &value) {
        if (ParseDouble(fields[field], value)) return true;
        reason = NoNumber(what, fields[field]);
        return false;
    };
    parameter.name = fields[0];
    parameter.type = fields[1] == "double" ? TypeDouble : TypeInteger;
    parameter.unit = fields[2];
    if (isType(fields[1]) && !readNumber(3, "initial value", parameter.initValue)) return false;
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

BodyItem ReadBodyLine(const std::string &line, bool &isWhole) {
    isWhole = true;
    if (line == "logic:") return BlockBegin{};
    if (line == "&&" || line == "||") return JoinLine{line == "||" ? 1 : 0};
    if (Contains(line, "graf=")) return ReadPoint(line, isWhole);
    if (Contains(line, "calc=")) return ReadCalculationLine(line, isWhole);
    if (Contains(line, "execute=")) return ReadAction(line, isWhole);
    if (Contains(line, "instring=")) return ReadSpeech(line);
    return ReadComparison(line, isWhole);
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
        const bool isOdd = Contains(NameInLine(LineKind::Body, line).substr(5), "=");
        if (!isWhole || calculation.stack.empty()
            || (isOdd && !Says(LineOf(calculation, logicblock_struct()), calculation)))
            calculation.asWritten = line;
    }
}

// Words that are neither types, modes nor flags; a mode of nothing; fields behind the last one.
void KeepAsWritten(const std::string &line, out_parameter_struct &parameter) {
    const std::string rest = NameInLine(LineKind::Parameter, line);
    std::vector<std::string_view> fields;
    SplitFields(rest, ',', fields);
    const auto isModeLost = [&](size_t mode) {
        return !fields[mode].empty() && (fields[mode - 1].empty() || ModeOf(fields[mode]) == BindingNone);
    };
    const bool isFlagLost =
        fields.size() > 11 && !fields[11].empty() && fields[11] != "0" && fields[11] != "1";
    const bool isLost =
        fields.size() > 12 || !isType(fields[1]) || isModeLost(7) || isModeLost(9) || isFlagLost;
    if (isLost || (isSuspicious(rest) && !Says(LineOf(parameter), parameter))) parameter.asWritten = line;
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
