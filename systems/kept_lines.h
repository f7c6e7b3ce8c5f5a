// Lines that were not understood, and their places, while the editor changes what stands around them.
#pragma once

#include <cstddef>

#include "systems/model.h"

// How many records one of a block's lists has.
size_t CountOf(const logicblock_struct &block, int list);

// A record of the list was put in at index (by 1) or taken out (by -1): lines behind it move with it.
void ShiftKept(logicblock_struct &block, int list, int index, int by);

// The lines that stand before the parameter at index, which is where those behind it go when it is moved
// away.
KeptLines &KeptBefore(device_struct &device, int index);

// How many lines that were not understood stand in it and below it.
size_t CountKept(const out_parameter_struct &parameter); // without those behind it
size_t CountKept(const device_struct &device);
size_t CountKept(const system_class &system);
