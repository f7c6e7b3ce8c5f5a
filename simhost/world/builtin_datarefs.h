// The table of the simulator's datarefs that are known without its lists.
#pragma once

#include <span>

#include "XPLMDataAccess.h"

namespace simhost {

struct BuiltinDataref {
    const char *name;
    XPLMDataTypeID type;
    int elements;    // of an array, bytes of data, 1 for a scalar
    bool isWritable; // by plug-ins
    double initial;  // of every element
};

std::span<const BuiltinDataref> BuiltinDatarefs();

} // namespace simhost
