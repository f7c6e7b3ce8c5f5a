// Equality with a number, asked of values that have fractions: a lever at 0.9999 is not at 1.
#include <algorithm>
#include <cmath>
#include <map>
#include <string>

#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "systems/links.h"
#include "systems/operators.h"
#include "util/find_dataref.h"
#include "util/numbers.h"

namespace simhost {

namespace {

constexpr int DeepestLink = 200; // of a chain that is followed

std::map<ParameterAddress, std::string> sourceNames; // where one has its fractions from; "": it has none

const std::string &SourceOf(const sysLink_struct &link, int depth);

// The dataref is a float or double, as far as it is known.
bool isFloat(const dataref_class &dataref) {
    const XPLMDataRef handle = dataref.name.empty() ? nullptr : FindDataref(dataref.name.c_str());
    if (!handle) return false;
    constexpr int whole = xplmType_Int | xplmType_IntArray;
    return (XPLMGetDataRefTypes(handle) & whole) == 0;
}

std::string SourceOfCalculation(const calcBlock_struct &calculation, int depth) {
    std::string source;
    for (const calcStack_class &element : calculation.stack) {
        if (element.operType == OperatorFloor || element.operType == OperatorBinaryToInteger) {
            source.clear();
            continue;
        }
        if (element.operType == OperatorDivide) source = "a division";
        if (element.link.kind == LinkLive) {
            const std::string &own = SourceOf(element.link, depth + 1);
            if (!own.empty()) source = own;
        }
    }
    return source;
}

std::string FindSource(const out_parameter_struct &parameter, int depth) {
    if (isFloat(parameter.inDataref)) return parameter.inDataref.name;
    for (const logicblock_struct &block : parameter.logic) {
        if (block.graph.size() > 1 && !block.calcs.empty()) return "a table";
        if (block.calcs.empty()) continue;
        std::string source = SourceOfCalculation(block.calcs.back(), depth);
        if (!source.empty()) return source;
    }
    return "";
}

const std::string &SourceOf(const sysLink_struct &link, int depth) {
    const auto [entry, isNew] = sourceNames.emplace(link, "");
    const out_parameter_struct *parameter = ParameterAt(link);
    if (isNew && depth < DeepestLink && parameter && !DeviceAt(link)->serialStack)
        entry->second = FindSource(*parameter, depth);
    return entry->second;
}

// At its limits a value is exact.
bool isLimit(const sysLink_struct &link, double number) {
    const out_parameter_struct &parameter = *ParameterAt(link);
    return (parameter.hasMin && parameter.minLimit == number)
           || (parameter.hasMax && parameter.maxLimit == number);
}

void CheckComparison(const compare_block_class &comparison, const ParameterPlace &place) {
    if (!isEquality(comparison.cmpOp)) return;
    if (comparison.a.kind != LinkLive || comparison.b.kind != LinkNone) return;
    if (comparison.bList.empty() && isLimit(comparison.a, comparison.bValue)) return;
    const std::string &source = SourceOf(comparison.a, 0);
    if (!source.empty())
        AddFinding(Severity::Warning, place.parameter.fileName, comparison.line,
                   comparison.a.name + " has fractions, from " + source + ", and is hardly ever exactly "
                       + (comparison.bList.empty() ? SignificantDigits(comparison.bValue) : "a whole number")
                       + "; compare it with > and <");
}

} // namespace

void CheckFractions() {
    sourceNames.clear();
    ForEachParameter([](const ParameterPlace &place) {
        for (const logicblock_struct &block : place.parameter.logic)
            for (const compare_block_class &comparison : block.compares) CheckComparison(comparison, place);
    });
}

} // namespace simhost
