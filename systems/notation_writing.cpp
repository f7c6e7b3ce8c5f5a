// A line is made from its record, or is the author's where the record tells less. Whatever it is, the reader
// must make the same record of it, which Says finds out by reading it.
#include "systems/notation.h"

#include <algorithm>

#include "systems/links.h"
#include "util/numbers.h"
#include "util/text.h"

namespace {

bool isSameOperand(const sysLink_struct &a, double aNumber, const sysLink_struct &b, double bNumber) {
    if (isLink(a) != isLink(b)) return false;
    return isLink(a) ? a.name == b.name : aNumber == bNumber;
}

bool isSame(const compare_block_class &a, const compare_block_class &b) {
    if (a.a.kind == LinkSpeech || b.a.kind == LinkSpeech) return a.a.kind == b.a.kind && a.phrase == b.phrase;
    if (a.cmpOp != b.cmpOp || a.bList != b.bList || !isSameOperand(a.a, a.aValue, b.a, b.aValue))
        return false;
    return !a.bList.empty() || isSameOperand(a.b, a.bValue, b.b, b.bValue);
}

bool isSame(const calcBlock_struct &a, const calcBlock_struct &b) {
    const auto isSameElement = [](const calcStack_class &one, const calcStack_class &other) {
        if (one.oper != other.oper || one.blockIndex != other.blockIndex) return false;
        return one.blockIndex != -1 || isSameOperand(one.link, one.constant, other.link, other.constant);
    };
    return std::equal(a.stack.begin(), a.stack.end(), b.stack.begin(), b.stack.end(), isSameElement);
}

bool isSame(const structExecute &a, const structExecute &b) {
    return a.type == b.type && a.text == b.text && a.value == b.value;
}

bool isSame(const graf_struct &a, const graf_struct &b) {
    return a.x == b.x && a.y == b.y;
}

bool isSame(const dataref_class &a, const dataref_class &b) {
    return a.fullName == b.fullName && (a.fullName.empty() || a.mode == b.mode);
}

bool isSame(const out_parameter_struct &a, const out_parameter_struct &b) {
    const auto isSameLimit = [](bool hasOne, double one, bool hasOther, double other) {
        return hasOne == hasOther && (!hasOne || one == other);
    };
    return a.name == b.name && a.type == b.type && a.unit == b.unit && a.initValue == b.initValue
           && isSameLimit(a.hasMin, a.minLimit, b.hasMin, b.minLimit)
           && isSameLimit(a.hasMax, a.maxLimit, b.hasMax, b.maxLimit) && isSame(a.inDataref, b.inDataref)
           && isSame(a.outDataref, b.outDataref) && a.text == b.text && a.saveOnExit == b.saveOnExit;
}

// The record that the reader makes of a body line; false when it makes something else.
template <typename Record> bool ReadAgain(const std::string &line, Record &record) {
    if (KindOfLine(line) != LineKind::Body) return false;
    LineRemarks ignored;
    BodyItem item = ReadBodyLine(line, ignored);
    Record *found = std::get_if<Record>(&item);
    if (!found) return false;
    record = std::move(*found);
    return true;
}

bool ReadAgain(const std::string &line, calcBlock_struct &calculation) {
    CalculationLine item;
    if (!ReadAgain(line, item)) return false;
    calculation = std::move(item.calculation);
    return true;
}

// ---- As the author wrote it ----

std::vector<std::string> LinksOf(const compare_block_class &comparison) {
    return {comparison.a.name, comparison.b.name};
}

std::vector<std::string> LinksOf(const calcBlock_struct &calculation) {
    std::vector<std::string> names;
    for (const calcStack_class &element : calculation.stack) names.push_back(element.link.name);
    return names;
}

template <typename Record> std::vector<std::string> LinksOf(const Record &) {
    return {};
}

// The author's line with the record's present links; empty when it does not say what the record does.
template <typename Record> std::string AuthorsLine(const Record &record) {
    if (record.asWritten.empty()) return "";
    std::string line = record.asWritten;
    Record before;
    if (!ReadAgain(line, before)) return "";
    const std::vector<std::string> oldNames = LinksOf(before), names = LinksOf(record);
    for (size_t i = 0; i < std::min(names.size(), oldNames.size()); i++)
        if (names[i] != oldNames[i]) line = ReplaceStringAll(line, oldNames[i], names[i]);
    return Says(line, record) ? line : "";
}

std::string Line(int key, const std::string &rest) {
    return LineKeys[key].text + rest;
}

// Fields that the reader had no use for stand as the author wrote them, while the parameter is what it was
// for want of them; fields behind the last one always do.
void KeepFields(const out_parameter_struct &parameter, std::vector<std::string> &fields) {
    if (parameter.asWritten.empty()) return;
    const std::vector<std::string> written =
        StringToWordsArray(NameInLine(LineKind::Parameter, parameter.asWritten), ',');
    if (written.size() < FewestFields) return;
    const std::string &type = written[1];
    if (!isTypeWord(type) && parameter.type == TypeInteger && parameter.initValue == 0.0) {
        fields[1] = type;
        fields[3] = written[3];
    }
    for (size_t mode : {7U, 9U})
        if (fields[mode].empty() && fields[mode - 1] == written[mode - 1]) fields[mode] = written[mode];
    if (written.size() < MostFields) return;
    if (!parameter.saveOnExit && written[11] != "1") fields[11] = written[11];
    fields.insert(fields.end(), written.begin() + MostFields, written.end());
}

} // namespace

std::string ShownNumber(double number) {
    return SignificantDigits(number);
}

void AddOperand(std::string &text, const sysLink_struct &link, double number, NumberForm form) {
    if (isLink(link))
        text += link.name;
    else
        text += form(number);
}

void AddOperand(std::string &text, const calcStack_class &element, NumberForm form) {
    if (element.blockIndex == -1)
        AddOperand(text, element.link, element.constant, form);
    else
        text.append(CalculationWord).append(int2string(element.blockIndex));
}

void AddRightOperand(std::string &text, const compare_block_class &comparison, NumberForm form) {
    const std::vector<int> &list = comparison.bList;
    if (list.empty()) AddOperand(text, comparison.b, comparison.bValue, form);
    for (size_t i = 0; i < list.size(); i++) text.append(i > 0 ? ";" : "").append(int2string(list[i]));
    if (list.size() == 1) text += ';';
}

void AddElements(std::string &text, const calcBlock_struct &calculation, NumberForm form) {
    for (const calcStack_class &element : calculation.stack) {
        text.append(element.oper).append("[");
        AddOperand(text, element, form);
        text += ']';
    }
}

const char *ModeWord(int mode) {
    return mode == BindingNew ? "new" : mode == BindingExist ? "exist" : "";
}

std::string LineOf(const system_class &system) {
    const std::string line = Line(KeySystem, system.name);
    return Says(line, system) || !Says(system.asWritten, system) ? line : system.asWritten;
}

std::string LineOf(const device_struct &device) {
    const std::string line = Line(device.serialStack ? KeySerialDevice : KeyDevice, device.name);
    return Says(line, device) || !Says(device.asWritten, device) ? line : device.asWritten;
}

std::string LineOf(const out_parameter_struct &parameter) {
    std::vector<std::string> fields = {
        parameter.name,
        parameter.type == TypeDouble ? "double" : "integer",
        parameter.unit,
        ExactDecimal(parameter.initValue),
        parameter.hasMin ? ExactDecimal(parameter.minLimit) : "",
        parameter.hasMax ? ExactDecimal(parameter.maxLimit) : "",
        parameter.inDataref.fullName,
        ModeWord(parameter.inDataref.mode),
        parameter.outDataref.fullName,
        ModeWord(parameter.outDataref.mode),
        parameter.text,
        parameter.saveOnExit ? "1" : "0",
    };
    KeepFields(parameter, fields);
    std::string line = Line(KeyParameter, fields[0]);
    for (size_t i = 1; i < fields.size(); i++) line += "," + fields[i];
    return Says(line, parameter) || !Says(parameter.asWritten, parameter) ? line : parameter.asWritten;
}

std::string LineOf(const compare_block_class &comparison) {
    std::string line = AuthorsLine(comparison);
    if (!line.empty()) return line;
    if (comparison.a.kind == LinkSpeech) return Line(KeySpeech, comparison.phrase);
    line = "[";
    AddOperand(line, comparison.a, comparison.aValue, ExactDecimal);
    line += "]" + comparison.cmpText + "[";
    AddRightOperand(line, comparison, ExactDecimal);
    return line + "]";
}

// A calculation without elements stands for the block's constant, which only the last one can give.
std::string LineOf(const calcBlock_struct &calculation, const logicblock_struct &block) {
    const bool isLast = !block.calcs.empty() && &calculation == &block.calcs.back();
    std::string line = AuthorsLine(calculation);
    if (calculation.stack.empty() && isLast) {
        CalculationLine written;
        const bool isToldByLine = ReadAgain(line, written) && written.constant == block.constant;
        if (!isToldByLine || isNumber(ReplaceString(line, LineKeys[KeyCalculation].text, "")))
            return Line(KeyCalculation, ExactDecimal(block.constant));
    }
    if (!line.empty()) return line;
    line = Line(KeyCalculation, calculation.stack.empty() ? ExactDecimal(0.0) : "");
    AddElements(line, calculation, ExactDecimal);
    return line;
}

std::string LineOf(const structExecute &action) {
    std::string line = AuthorsLine(action);
    if (!line.empty()) return line;
    return Line(KeyAction, int2string(action.type) + "," + ReplaceStringAll(action.text, ",", ";") + ","
                               + ExactDecimal(action.value));
}

std::string LineOf(const graf_struct &point) {
    std::string line = AuthorsLine(point);
    return line.empty() ? Line(KeyPoint, ExactDecimal(point.x) + "," + ExactDecimal(point.y)) : line;
}

bool Says(const std::string &line, const system_class &system) {
    return KindOfLine(line) == LineKind::System && NameInLine(LineKind::System, line) == system.name;
}

bool Says(const std::string &line, const device_struct &device) {
    const LineKind kind = device.serialStack ? LineKind::SerialDevice : LineKind::Device;
    return KindOfLine(line) == kind && NameInLine(kind, line) == device.name;
}

bool Says(const std::string &line, const out_parameter_struct &parameter) {
    if (KindOfLine(line) != LineKind::Parameter) return false;
    const std::string rest = NameInLine(LineKind::Parameter, line);
    std::vector<std::string_view> fields;
    SplitFields(rest, ',', fields);
    out_parameter_struct found;
    std::string reason;
    LineRemarks ignored;
    return ReadParameterFields(fields, found, reason, ignored) && isSame(found, parameter);
}

bool Says(const std::string &line, const compare_block_class &comparison) {
    compare_block_class found;
    return ReadAgain(line, found) && isSame(found, comparison);
}

bool Says(const std::string &line, const calcBlock_struct &calculation) {
    calcBlock_struct found;
    return ReadAgain(line, found) && isSame(found, calculation);
}

bool Says(const std::string &line, const structExecute &action) {
    structExecute found;
    return ReadAgain(line, found) && isSame(found, action);
}

bool Says(const std::string &line, const graf_struct &point) {
    graf_struct found;
    return ReadAgain(line, found) && isSame(found, point);
}
