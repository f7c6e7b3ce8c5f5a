// Models as C++ that was made for them and compiled with the benchmarks (make_models.cpp): what an author
// would get who wrote his systems in C++ to begin with.
#pragma once

#include "XPLMDataAccess.h"

struct CompiledModel {
    int parameters;
    bool hasMore; // as ChangingModel has it
    // A frame over the values of the model's parameters, and the handles of its datarefs, in the model's
    // order.
    void (*frame)(double *values, const XPLMDataRef *datarefs);
};

// Ends with one without parameters.
extern const CompiledModel CompiledModels[];

// The shipped aircraft with most parameters, likewise, over the datarefs of the model, those that are missing
// too, and the program of the same files, whose actions and phrases it says.
struct DatarefAccess;
struct SystemsProgram;
void LargestAircraftFrame(double *values, const DatarefAccess *datarefs, SystemsProgram &program);
