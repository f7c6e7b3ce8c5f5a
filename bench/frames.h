// The loop of a benchmark whose work is a frame.
#pragma once

#include <benchmark/benchmark.h>

#include "bench/allocations.h"

// Times frame(), after a few that bring it to its steady state, and counts what one of them allocates.
template <typename Frame> void TimeEachFrame(benchmark::State &state, Frame frame) {
    const int framesBefore = 10;
    for (int i = 0; i < framesBefore; i++) frame();
    const size_t before = AllocationCount();
    for (auto _ : state) frame();
    state.counters["allocs/frame"] =
        static_cast<double>(AllocationCount() - before) / static_cast<double>(state.iterations());
}
