// A list that is filled anew every frame and keeps its memory: emptying it keeps the entries allocated, so
// that assigning to them again allocates nothing.
#pragma once

#include <cstddef>
#include <vector>

template <typename Entry> struct RefilledList {
    std::vector<Entry> entries; // the first count of them are in use
    size_t count = 0;

    void Clear() { count = 0; }
    bool IsEmpty() const { return count == 0; }

    // The next entry, with whatever an earlier filling left in it.
    Entry &Add() {
        if (count == entries.size()) entries.emplace_back();
        return entries[count++];
    }
    Entry &Last() { return entries[count - 1]; }

    auto begin() const { return entries.begin(); }
    auto end() const { return entries.begin() + static_cast<std::ptrdiff_t>(count); }
};
