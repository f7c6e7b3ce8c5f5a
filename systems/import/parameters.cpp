// The notation's own printing makes the lines of these records.
#include "systems/import/parameters.h"

#include <algorithm>
#include <utility>

#include "systems/operators.h"
#include "util/numbers.h"
#include "util/text.h"

namespace {

void SetOperand(const Operand &operand, sysLink_struct &link, double &number) {
    number = operand.number;
    if (operand.link.empty()) return;
    link.name = operand.link;
    link.kind = LinkUnresolved;
}

} // namespace

compare_block_class Comparison(const Operand &left, const std::string &oper, const Operand &right) {
    compare_block_class comparison;
    SetOperand(left, comparison.a, comparison.aValue);
    SetOperand(right, comparison.b, comparison.bValue);
    comparison.cmpOp = std::max(ComparisonOf(oper), static_cast<int>(CompareEqual));
    comparison.cmpText = Comparators[comparison.cmpOp].text;
    return comparison;
}

compare_block_class Heard(const std::string &phrase) {
    compare_block_class comparison;
    comparison.a.kind = LinkSpeech;
    comparison.phrase = phrase;
    return comparison;
}

calcStack_class Element(const std::string &oper, const Operand &operand) {
    calcStack_class element;
    element.oper = oper;
    SetOperand(operand, element.link, element.constant);
    return element;
}

calcBlock_struct Calculation(const Operand &value) {
    calcBlock_struct calculation;
    calculation.stack.push_back(Element("", value));
    return calculation;
}

structExecute Action(int type, const std::string &text, double value) {
    structExecute action;
    action.type = type;
    action.text = text;
    action.value = value;
    return action;
}

void JoinByOr(std::vector<compare_block_class> &chain, compare_block_class comparison) {
    if (!chain.empty()) {
        comparison.joinOp = 1;
        comparison.joinText = "||";
    }
    chain.push_back(std::move(comparison));
}

std::vector<logicblock_struct> OneWhile(std::vector<compare_block_class> chain) {
    std::vector<logicblock_struct> blocks(2);
    blocks[0].compares = std::move(chain);
    blocks[0].calcs = {Calculation({"", 1.0})};
    blocks[1].calcs = {Calculation({"", 0.0})};
    return blocks;
}

// "VERSION" would be logged; a name of digits would be read as a number.
std::string UniqueName(const std::string &wanted, std::vector<std::string> &used) {
    std::string name = LowerToUpperCase(wanted);
    for (char &c : name)
        if (std::string_view(".,;[]<>=&#|/\\:").find(c) != std::string_view::npos) c = ' ';
    name = ReplaceStringDoubleSpace(name);
    while (!name.empty() && name.back() == ' ') name.pop_back();
    while (!name.empty() && name.front() == ' ') name.erase(0, 1);
    if (name.empty() || isNumber(name) || name == "VERSION") name = "ITEM" + (name.empty() ? "" : " " + name);
    const std::string first = name;
    for (int copy = 2; std::find(used.begin(), used.end(), name) != used.end(); copy++)
        name = first + " " + int2string(copy);
    used.push_back(name);
    return name;
}
