// A line's place is what stands before it, since that is what it was read after.
#include "systems/kept_lines.h"

size_t CountOf(const logicblock_struct &block, int list) {
    switch (list) {
    case ListOfComparisons: return block.compares.size();
    case ListOfCalculations: return block.calcs.size();
    case ListOfActions: return block.executes.size();
    default: return block.graph.size();
    }
}

void ShiftKept(logicblock_struct &block, int list, int index, int by) {
    for (kept_line_struct &kept : block.kept)
        if (kept.list == list && kept.behind > index) kept.behind += by;
}

KeptLines &KeptBefore(device_struct &device, int index) {
    const bool isFirst = index <= 0 || static_cast<size_t>(index) > device.outs.size();
    return isFirst ? device.kept : device.outs[static_cast<size_t>(index) - 1].keptBehind;
}

size_t CountKept(const out_parameter_struct &parameter) {
    size_t count = parameter.kept.size();
    for (const logicblock_struct &block : parameter.logic) count += block.kept.size();
    return count;
}

size_t CountKept(const device_struct &device) {
    size_t count = device.kept.size();
    for (const out_parameter_struct &parameter : device.outs)
        count += CountKept(parameter) + parameter.keptBehind.size();
    return count;
}

size_t CountKept(const system_class &system) {
    size_t count = system.kept.size();
    for (const device_struct &device : system.devices) count += CountKept(device);
    return count;
}
