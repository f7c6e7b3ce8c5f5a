// Counts allocations of this program, for figures of what a frame allocates.
#pragma once

#include <cstddef>

size_t AllocationCount();
