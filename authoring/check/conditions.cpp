// The chain is computed as it runs: from top to bottom, starting from true, each comparison joined with the
// value so far. The alternatives of that value are carried along.
#include "authoring/check/conditions.h"

#include <algorithm>

#include "systems/links.h"
#include "systems/operators.h"

namespace simhost {

namespace {

constexpr size_t MostAlternatives = 64;

ValueRange RangeOf(int oper, double value) {
    ValueRange range;
    if (oper == CompareEqual || oper == CompareGreater || oper == CompareAtLeast) range.lowest = value;
    if (oper == CompareEqual || oper == CompareLess || oper == CompareAtMost) range.highest = value;
    range.isLowestOpen = oper == CompareGreater;
    range.isHighestOpen = oper == CompareLess;
    if (oper == CompareNotEqual) range.excluded.push_back(value);
    return range;
}

// Of "the list contains the value", the span is enough to find contradictions.
ValueRange RangeOf(const compare_block_class &comparison) {
    if (comparison.bList.empty() || !isEquality(comparison.cmpOp))
        return RangeOf(comparison.cmpOp, comparison.bValue);
    ValueRange range;
    if (comparison.cmpOp == CompareNotEqual) {
        range.excluded.assign(comparison.bList.begin(), comparison.bList.end());
        return range;
    }
    const auto [lowest, highest] = std::minmax_element(comparison.bList.begin(), comparison.bList.end());
    range.lowest = *lowest;
    range.highest = *highest;
    range.isExact = comparison.bList.size() == 1;
    return range;
}

int Mirrored(int oper) {
    switch (oper) {
    case CompareGreater: return CompareLess;
    case CompareLess: return CompareGreater;
    case CompareAtLeast: return CompareAtMost;
    case CompareAtMost: return CompareAtLeast;
    default: return oper;
    }
}

bool isOfConstants(const compare_block_class &comparison) {
    return comparison.a.kind == LinkNone && comparison.b.kind == LinkNone;
}

// What the parameter can be at all. A value is kept within its limits from its first computation on.
ValueRange LimitsOf(const sysLink_struct &link) {
    ValueRange range;
    const out_parameter_struct *parameter = ParameterAt(link);
    if (!parameter) return range;
    if (parameter->hasMin) range.lowest = std::min(parameter->minLimit, parameter->initValue);
    if (parameter->hasMax) range.highest = std::max(parameter->maxLimit, parameter->initValue);
    return range;
}

} // namespace

bool ValueRange::isEmpty() const {
    if (lowest > highest) return true;
    if (lowest < highest) return false;
    return isLowestOpen || isHighestOpen
           || std::find(excluded.begin(), excluded.end(), lowest) != excluded.end();
}

bool ValueRange::Contains(const ValueRange &other) const {
    if (!isExact) return false;
    if (other.lowest < lowest || (other.lowest == lowest && isLowestOpen && !other.isLowestOpen))
        return false;
    if (other.highest > highest || (other.highest == highest && isHighestOpen && !other.isHighestOpen))
        return false;
    return std::all_of(excluded.begin(), excluded.end(), [&](double value) {
        ValueRange one = RangeOf(CompareEqual, value);
        one.Intersect(other);
        return one.isEmpty();
    });
}

void ValueRange::Intersect(const ValueRange &other) {
    if (other.lowest > lowest || (other.lowest == lowest && other.isLowestOpen)) {
        lowest = other.lowest;
        isLowestOpen = other.isLowestOpen;
    }
    if (other.highest < highest || (other.highest == highest && other.isHighestOpen)) {
        highest = other.highest;
        isHighestOpen = other.isHighestOpen;
    }
    excluded.insert(excluded.end(), other.excluded.begin(), other.excluded.end());
    isExact = isExact && other.isExact;
}

bool Conjunction::Add(const compare_block_class &comparison) {
    Conjunction other;
    if (comparison.a.kind == LinkSpeech) {
        other.phrase = comparison.phrase;
    } else if (isOfConstants(comparison)) {
        if (comparison.bList.empty()) {
            ValueRange range = RangeOf(comparison.cmpOp, comparison.bValue);
            range.Intersect(RangeOf(CompareEqual, comparison.aValue));
            return !range.isEmpty();
        }
    } else if (comparison.b.kind == LinkNone) {
        ValueRange range = LimitsOf(comparison.a);
        range.Intersect(RangeOf(comparison));
        other.ranges[comparison.a.name] = range;
    } else if (comparison.a.kind == LinkNone) {
        ValueRange range = LimitsOf(comparison.b);
        range.Intersect(RangeOf(Mirrored(comparison.cmpOp), comparison.aValue));
        other.ranges[comparison.b.name] = range;
    } else {
        other.others.push_back(comparison.a.name + comparison.cmpText + comparison.b.name);
    }
    return Add(other);
}

bool Conjunction::Add(const Conjunction &other) {
    if (phrase.empty() || phrase == AnyPhrase)
        phrase = other.phrase.empty() ? phrase : other.phrase;
    else if (!other.phrase.empty() && other.phrase != AnyPhrase && other.phrase != phrase)
        return false;
    others.insert(others.end(), other.others.begin(), other.others.end());
    for (const auto &[link, range] : other.ranges) {
        ValueRange &own = ranges[link];
        own.Intersect(range);
        if (own.isEmpty()) return false;
    }
    return true;
}

bool Conjunction::Implies(const Conjunction &weaker) const {
    if (!weaker.phrase.empty() && weaker.phrase != phrase && !(weaker.phrase == AnyPhrase && !phrase.empty()))
        return false;
    for (const std::string &text : weaker.others)
        if (std::find(others.begin(), others.end(), text) == others.end()) return false;
    return std::all_of(weaker.ranges.begin(), weaker.ranges.end(), [&](const auto &entry) {
        const auto own = ranges.find(entry.first);
        return own != ranges.end() && entry.second.Contains(own->second);
    });
}

bool Conjunction::isAlwaysTrue() const {
    return phrase.empty() && others.empty() && ranges.empty();
}

bool Alternatives::isAlwaysTrue() const {
    return isExact
           && std::any_of(list.begin(), list.end(), [](const auto &one) { return one.isAlwaysTrue(); });
}

Alternatives AlternativesOf(const logicblock_struct &block) {
    Alternatives alternatives;
    std::vector<Conjunction> &list = alternatives.list;
    list.emplace_back();
    for (const compare_block_class &comparison : block.compares) {
        if (comparison.joinOp == 1) {
            Conjunction one;
            if (one.Add(comparison)) list.push_back(one);
        } else {
            std::erase_if(list, [&](Conjunction &one) { return !one.Add(comparison); });
        }
        if (list.size() > MostAlternatives) {
            alternatives.isExact = false;
            list.assign(1, {});
            return alternatives;
        }
    }
    return alternatives;
}

} // namespace simhost
