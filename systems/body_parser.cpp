// Body lines, one item per line. A line that cannot be read is logged and dropped; the items before and
// after it stand.
#include "systems/body_parser.h"

#include <algorithm>
#include <unordered_set>

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"
#include "figure/positions.h"
#include "systems/calculation.h"
#include "systems/links.h"
#include "systems/model.h"
#include "systems/operators.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/text.h"

std::vector<commandsMenuStruct> commandsMenuVector;

namespace {

std::unordered_set<std::string> offered; // phrases of the last entry of the menu

const int SearchOrder[] = {0, 4, 5, 1, 2, 3}; // longer texts first

class BodyParser {
public:
    BodyParser(int sys, int dev, int out) : sys(sys), dev(dev), out(out) {}

    void Parse();

private:
    const int sys, dev, out;
    system_class &system = systems_vector[static_cast<size_t>(sys)];
    device_struct &device = system.devices[static_cast<size_t>(dev)];
    out_parameter_struct &parameter = device.outs[static_cast<size_t>(out)];
    size_t lineIndex = 0;
    std::string_view line;
    std::vector<std::string_view> fields;
    int joinOp = 0;

    void ParseLine();
    void ParseGraphPoint(std::string_view rest);
    void ParseCalculation(const std::string &rest);
    void ParseAction(std::string_view rest);
    void ParseComparison();
    void ParseSpeech();

    logicblock_struct &Block() { return parameter.logic.back(); }
    void Drop(const std::string &reason) const {
        LogDroppedLine(parameter.fileName, LineNumber(), reason, line);
    }
    int LineNumber() const { return parameter.lineNumbers[lineIndex]; }
    std::string WithoutKey(std::string_view key) const { return ReplaceString(std::string(line), key, ""); }

    bool ReadNumber(std::string_view text, const char *field, double &value) const {
        if (ParseDouble(text, value)) return true;
        Drop(NoNumber(field, text));
        return false;
    }
};

std::string_view WithoutBrackets(std::string_view text, std::string &buffer) {
    buffer = ReplaceString(ReplaceString(std::string(text), "[", ""), "]", "");
    return buffer;
}

// Offers a phrase to the menu, under the name of the device. Of a checklist only the first step's phrases
// are offered, which start it.
void OfferToMenu(const system_class &system, const device_struct &device, int out,
                 const std::string &phrase) {
    const bool isSameEntry = !commandsMenuVector.empty() && commandsMenuVector.back().title == device.name;
    if (isSameEntry && system.name == "CHECKLIST" && out != 0) return;
    if (!isSameEntry) {
        commandsMenuVector.push_back({device.name, {}});
        offered.clear();
    }
    if (offered.insert(phrase).second) commandsMenuVector.back().phrases.push_back(phrase);
}

void BodyParser::Parse() {
    for (; lineIndex < parameter.lines.size(); lineIndex++) {
        line = parameter.lines[lineIndex];
        ParseLine();
    }
    parameter.lines = {};
    parameter.lineNumbers = {};
}

void BodyParser::ParseLine() {
    if (line == "logic:") {
        parameter.logic.emplace_back().line = LineNumber();
        joinOp = 0;
    } else if (line == "&&" || line == "||") {
        joinOp = line == "||" ? 1 : 0;
    } else if (parameter.logic.empty()) {
        Drop("stands before the first \"logic:\"");
    } else if (Contains(line, "graf=")) {
        ParseGraphPoint(WithoutKey("graf="));
    } else if (Contains(line, "calc=")) {
        ParseCalculation(WithoutKey("calc="));
    } else if (Contains(line, "execute=")) {
        ParseAction(WithoutKey("execute="));
    } else if (Contains(line, "instring=")) {
        ParseSpeech();
    } else {
        ParseComparison();
    }
}

void BodyParser::ParseGraphPoint(std::string_view rest) {
    SplitFields(rest, ',', fields);
    graf_struct point;
    point.line = LineNumber();
    if (!ReadNumber(fields[0], "x", point.x)) return;
    if (!ReadNumber(fields.size() > 1 ? fields[1] : "", "y", point.y)) return;
    Block().graph.push_back(point);
}

void BodyParser::ParseCalculation(const std::string &rest) {
    calcBlock_struct calculation;
    calculation.line = LineNumber();
    std::string error;
    if (!calcString2calcStack(sys, dev, out, rest, calculation.stack, error)) {
        Drop(NoNumber("operand", error));
        return;
    }
    std::string buffer;
    const std::string_view number = WithoutBrackets(rest, buffer);
    double constant = 0.0;
    if (isNumber(number) && !ReadNumber(number, "constant", constant)) return;
    Block().constant = constant;
    Block().calcs.push_back(std::move(calculation));
}

void BodyParser::ParseAction(std::string_view rest) {
    SplitFields(rest, ',', fields);
    if (fields.size() < 3) {
        Drop("an action has three fields: type, text, value");
        return;
    }
    structExecute action;
    action.line = LineNumber();
    if (!ParseInt(fields[0], action.type)) {
        Drop(NoNumber("type", fields[0]));
        return;
    }
    if (!ReadNumber(fields[2], "value", action.value)) return;
    action.text = fields[1];
    std::replace(action.text.begin(), action.text.end(), ';', ',');
    action.notFound = isMissing(action) ? 1 : 0;
    Block().executes.push_back(std::move(action));
}

void BodyParser::ParseSpeech() {
    compare_block_class comparison;
    comparison.line = LineNumber();
    comparison.a.kind = LinkSpeech;
    comparison.phrase = WithoutKey("instring=");
    comparison.phraseStroka = MakeStrokaFromText(comparison.phrase, AddToContext);
    comparison.joinOp = joinOp;
    comparison.joinText = joinOp == 1 ? "||" : "&&";
    OfferToMenu(system, device, out, comparison.phrase);
    Block().compares.push_back(std::move(comparison));
}

void BodyParser::ParseComparison() {
    compare_block_class comparison;
    comparison.line = LineNumber();
    std::string sides(line);
    for (int oper : SearchOrder) {
        if (!Contains(line, ComparisonTexts[oper])) continue;
        comparison.cmpOp = oper;
        comparison.cmpText = ComparisonTexts[oper];
        sides = ReplaceString(sides, comparison.cmpText, ",");
        break;
    }
    comparison.joinOp = joinOp;
    comparison.joinText = joinOp == 1 ? "||" : "&&";
    SplitFields(sides, ',', fields);
    if (fields.size() < 2) {
        Drop("neither a keyword nor a comparison");
        return;
    }
    std::string leftBuffer, rightBuffer;
    const std::string_view left = WithoutBrackets(fields[0], leftBuffer);
    const std::string_view right = WithoutBrackets(fields[1], rightBuffer);
    if (isNumber(left)) {
        if (!ReadNumber(left, "left side", comparison.aValue)) return;
    } else {
        comparison.a = String2sysLinkSDO(sys, dev, out, left);
    }
    if (Contains(right, ";")) {
        SplitFields(right, ';', fields);
        int number = 0;
        for (std::string_view piece : fields)
            if (isNumber(piece) && ParseInt(piece, number)) comparison.bList.push_back(number);
    } else if (isNumber(right)) {
        if (!ReadNumber(right, "right side", comparison.bValue)) return;
    } else {
        comparison.b = String2sysLinkSDO(sys, dev, out, right);
    }
    Block().compares.push_back(std::move(comparison));
}

} // namespace

bool isMissing(const structExecute &action) {
    switch (action.type) {
    case ScriptPosition: return !mapPos.contains(action.text);
    case ScriptCommandOnce:
    case ScriptCommandBegin:
    case ScriptCommandEnd:
    case ScriptCommandEndNow: return !XPLMFindCommand(action.text.c_str());
    case ScriptSet: return !FindDataref(action.text.substr(0, action.text.find('[')).c_str());
    default: return false;
    }
}

void LogicAndCalcForOutputParce() {
    for (size_t sys = 0; sys < systems_vector.size(); sys++)
        for (size_t dev = 0; dev < systems_vector[sys].devices.size(); dev++)
            for (size_t out = 0; out < systems_vector[sys].devices[dev].outs.size(); out++)
                BodyParser(static_cast<int>(sys), static_cast<int>(dev), static_cast<int>(out)).Parse();
}

void ResetBodyParser() {
    MakeFresh(commandsMenuVector, offered);
}
