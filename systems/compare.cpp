// Comparisons as the records hold them. The compiled program evaluates plain numeric ones itself and calls
// these for lists and for speech.
#include "systems/model.h"

#include <algorithm>

#include "systems/links.h"
#include "systems/operators.h"

bool compare_block_class::Logic(bool in) {
    if (a.kind != LinkNone) aValue = GetValueFromSysLink(a);
    if (b.kind != LinkNone) bValue = GetValueFromSysLink(b);
    cmpResult = Compare();
    return Join(in);
}

bool compare_block_class::Logic(bool in, const std::string &recognised) {
    cmpResult = false;
    if (!recognised.empty()) {
        const bool isEqual = recognised == phrase;
        cmpResult = phrase == AnyPhrase || (cmpOp == CompareEqual && isEqual)
                    || (cmpOp == CompareNotEqual && !isEqual);
    }
    return Join(in);
}

bool compare_block_class::Compare() const {
    if (isEquality(cmpOp) && !bList.empty()) {
        const bool isListed = std::any_of(bList.begin(), bList.end(), [this](int n) { return aValue == n; });
        return isListed == (cmpOp == CompareEqual);
    }
    if (cmpOp < 0 || cmpOp >= ComparisonOperators) return false;
    const Comparator &comparator = Comparators[cmpOp];
    const double first = comparator.swapped ? bValue : aValue;
    const double second = comparator.swapped ? aValue : bValue;
    return CompareNumbers(first, second, comparator.greater, comparator.equal, comparator.negated) != 0;
}

bool compare_block_class::Join(bool in) {
    inState = in;
    outState = joinOp == 1 ? in || cmpResult : in && cmpResult;
    return outState;
}
