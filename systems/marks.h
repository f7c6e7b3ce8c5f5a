// A set of small numbers that is walked in order while it grows: bits in words, and a summary with a bit for
// each word that may not be 0, so that a walk over few of many looks at few words.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

const uint32_t NoMark = 0xFFFFFFFF;

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

    void Remove(uint32_t number) { words[number / 64] &= ~(uint64_t{1} << number % 64); }

    // The first number in it that is not below from; NoMark when there is none.
    uint32_t Next(uint32_t from) {
        size_t word = from / 64;
        if (word >= words.size()) return NoMark;
        if (const uint64_t left = words[word] & (~uint64_t{0} << from % 64)) return FirstOf(word, left);
        word++;
        uint64_t unseen = ~uint64_t{0} << word % 64;
        for (size_t part = word / 64; part < summary.size(); part++, unseen = ~uint64_t{0}) {
            while (const uint64_t left = summary[part] & unseen) {
                word = part * 64 + static_cast<size_t>(std::countr_zero(left));
                if (words[word] != 0) return FirstOf(word, words[word]);
                summary[part] &= ~(left & -left);
            }
        }
        return NoMark;
    }

private:
    static uint32_t FirstOf(size_t word, uint64_t bits) {
        return static_cast<uint32_t>(word * 64) + static_cast<uint32_t>(std::countr_zero(bits));
    }
};
