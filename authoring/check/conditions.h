// What the conditions of a logic block can be: whether a chain of comparisons can hold at all, and whether
// one implies another. Only comparisons with constants and with speech are understood; all others may be
// true or false.
#pragma once

#include <limits>
#include <map>
#include <string>
#include <vector>

#include "systems/model.h"

namespace simhost {

// The values that one parameter may have.
struct ValueRange {
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();
    bool isLowestOpen = false, isHighestOpen = false; // the limit itself does not belong to it
    std::vector<double> excluded;
    bool isExact = true; // else it may have fewer values: a list is known by its span

    bool isEmpty() const;
    bool Contains(const ValueRange &other) const;
    void Intersect(const ValueRange &other);
};

// Comparisons that hold together.
struct Conjunction {
    std::map<std::string, ValueRange> ranges; // by link text
    std::string phrase;                       // what was said; "" when nothing is asked, "any" for whatever
    std::vector<std::string> others;          // comparisons of other kinds, as texts

    // Adds a comparison; false when both cannot hold together.
    bool Add(const compare_block_class &comparison);
    bool Add(const Conjunction &other);

    // Whenever this holds, weaker does.
    bool Implies(const Conjunction &weaker) const;
    bool isAlwaysTrue() const;
};

// The alternatives of a chain of comparisons, at least one of which holds when the chain does. Empty: it can
// never hold. More alternatives than anybody writes: one that is always possible, and isExact is false.
struct Alternatives {
    std::vector<Conjunction> list;
    bool isExact = true;

    bool isAlwaysTrue() const;
};

Alternatives AlternativesOf(const logicblock_struct &block);

} // namespace simhost
