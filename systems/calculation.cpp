// Calculation elements. An operator that is none of the seven acts as a load; blanks count as part of it.
#include "systems/calculation.h"

#include <algorithm>

#include "systems/links.h"
#include "systems/notation.h"
#include "systems/operators.h"
#include "util/text.h"

bool calcString2calcStack(const ParameterAddress &owner, std::string_view text,
                          std::vector<calcStack_class> &stack, std::string &error) {
    bool isWhole = true;
    if (!ReadCalculation(text, stack, error, isWhole)) return false;
    for (calcStack_class &element : stack)
        if (isLink(element.link)) element.link = String2sysLinkSDO(owner, element.link.name);
    return true;
}

void calcStack_class::operTypeDetect() {
    operType = std::max(OperatorOf(oper), static_cast<int>(OperatorLoad));
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
