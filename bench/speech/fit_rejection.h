// Fits the weights of speech/voice/rejection.cpp.
#pragma once

#include <vector>

#include "speech/voice/rejection.h"

namespace speech_bench {

struct Example {
    fennic_voice::Signs signs;
    bool isGood = false;   // it is the phrase that was said; otherwise none was
    bool isFitted = false; // the weights are fitted to it
};

struct Weights {
    double constant = 0.0;
    fennic_voice::Signs each = {};
    double ConfidenceOf(const fennic_voice::Signs &signs) const;
};

// Fits to those examples, and prints the lines of rejection.cpp. Each group, good and not, counts as much as
// the other; a small penalty on large weights keeps a sign that few examples show from deciding.
Weights FitRejection(const std::vector<Example> &examples);

// Prints which share of the good is refused where a share of the others is accepted.
void PrintCurve(std::vector<double> good, std::vector<double> foreign);

} // namespace speech_bench
