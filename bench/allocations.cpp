// Replaces the global allocation functions by counting ones.
#include "bench/allocations.h"

#include <cstdlib>
#include <new>

namespace {

size_t allocationCount = 0;

} // namespace

size_t AllocationCount() {
    return allocationCount;
}

void *operator new(size_t size) {
    allocationCount++;
    if (void *memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}

void *operator new(size_t size, const std::nothrow_t &) noexcept {
    allocationCount++;
    return std::malloc(size ? size : 1);
}

void operator delete(void *memory) noexcept {
    std::free(memory);
}

void operator delete(void *memory, size_t) noexcept {
    std::free(memory);
}
