// The state of a module, made afresh. Where the system keeps the library in memory when the simulator has
// unloaded it, all its globals are at the next start as they were left.
#pragma once

// Gives each the value of one that was just made, and lets its memory go.
template <typename... Values> void MakeFresh(Values &...values) {
    ((values = Values()), ...);
}
