// Calculation elements. An operator that is none of the seven acts as a load; blanks count as part of it.
#include "systems/calculation.h"

#include <algorithm>

#include "systems/links.h"
#include "systems/operators.h"
#include "util/text.h"

namespace {

const std::string_view BlockWord = "CBLOCK";

bool ParseOperand(int sys, int dev, int out, std::string_view text, calcStack_class &element) {
    const size_t block = text.find(BlockWord);
    if (isNumber(text)) return ParseDouble(text, element.constant);
    if (block != std::string_view::npos)
        return ParseInt(ReplaceString(std::string(text), BlockWord, ""), element.blockIndex);
    element.link = String2sysLinkSDO(sys, dev, out, text);
    return true;
}

} // namespace

bool calcString2calcStack(int sys, int dev, int out, std::string_view text,
                          std::vector<calcStack_class> &stack, std::string &error) {
    stack.clear();
    std::vector<std::string_view> pieces;
    SplitFields(text, ']', pieces);
    pieces.pop_back(); // what stands behind the last "]" is nothing
    for (std::string_view piece : pieces) {
        const size_t bracket = piece.find('[');
        calcStack_class element;
        element.oper = piece.substr(0, bracket);
        element.operTypeDetect();
        std::string_view operand;
        if (bracket != std::string_view::npos) operand = piece.substr(bracket + 1);
        operand = operand.substr(0, operand.find('['));
        if (!ParseOperand(sys, dev, out, operand, element)) {
            error = operand;
            return false;
        }
        stack.push_back(std::move(element));
    }
    return true;
}

void calcStack_class::operTypeDetect() {
    const auto *found = std::find(std::begin(OperatorTexts), std::end(OperatorTexts), oper);
    operType =
        found == std::end(OperatorTexts) ? OperatorLoad : static_cast<int>(found - std::begin(OperatorTexts));
}

double calcStack_class::Calc(double acc, const std::vector<double> &results) {
    input = acc;
    if (blockIndex == -1)
        operand = link.kind == LinkNone ? constant : GetValueFromSysLink(link);
    else if (blockIndex >= 0 && static_cast<size_t>(blockIndex) < results.size())
        operand = results[static_cast<size_t>(blockIndex)];
    result = ApplyOperator(operType, acc, operand);
    return result;
}

double BinaryToInteger(double value) {
    const int digits = TruncateToInt(value);
    double number = 0.0;
    for (char digit : int2string(digits)) {
        if (digit == '-') continue;
        if (digit != '0' && digit != '1') break;
        number = number * 2.0 + (digit - '0');
    }
    return digits < 0 ? -number : number;
}
