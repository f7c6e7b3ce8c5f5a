// A set of small numbers that is walked in order while it grows: bits in words, and a summary with a bit for
// each word that is not 0, so that a walk over few of many looks at few words.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

struct MarkSet {
    std::vector<uint64_t> words, summary;

    // Numbers below count can be in it; none is.
    void Resize(size_t count) {
        words.assign((count + 63) / 64, 0);
        summary.assign((words.size() + 63) / 64, 0);
    }

    void Insert(uint32_t number) { InsertIf(true, number); }

    // Without a branch.
    void InsertIf(bool isWanted, uint32_t number) {
        words[number / 64] |= uint64_t{isWanted} << number % 64;
        summary[number / 4096] |= uint64_t{isWanted} << number / 64 % 64;
    }
};

// Bit and those below it.
inline uint64_t BitsUpTo(int bit) {
    return (uint64_t{2} << bit) - 1;
}

// Visits in order what is marked and what is always visited, with the number and whether it was marked, and
// takes the marks away. What is marked meanwhile, behind the present place, is visited in this walk, too; at
// it or before it the mark stays for the next.
template <typename Visit> void WalkMarks(MarkSet &marked, const MarkSet &always, Visit visit) {
    for (size_t part = 0; part < marked.summary.size(); part++) {
        uint64_t passedWords = 0;
        while (const uint64_t wordsLeft = (marked.summary[part] | always.summary[part]) & ~passedWords) {
            const int wordBit = std::countr_zero(wordsLeft);
            passedWords = BitsUpTo(wordBit);
            const size_t word = part * 64 + static_cast<size_t>(wordBit);
            uint64_t passed = 0;
            while (const uint64_t left = (marked.words[word] | always.words[word]) & ~passed) {
                const int bit = std::countr_zero(left);
                const uint64_t mark = uint64_t{1} << bit;
                passed = BitsUpTo(bit);
                const bool isMarked = (marked.words[word] & mark) != 0;
                marked.words[word] &= ~mark;
                visit(static_cast<uint32_t>(word * 64) + static_cast<uint32_t>(bit), isMarked);
            }
            if (marked.words[word] == 0) marked.summary[part] &= ~(uint64_t{1} << wordBit);
        }
    }
}
