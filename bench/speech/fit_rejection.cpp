// Logistic regression by gradient descent on signs that are scaled to a spread of one.
#include "bench/speech/fit_rejection.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <iterator>
#include <numeric>

namespace speech_bench {

using fennic_voice::SignCount;
using fennic_voice::Signs;

namespace {

const int Steps = 3000;
const double Rate = 0.3;
const double Penalty = 0.003;

} // namespace

double Weights::ConfidenceOf(const Signs &signs) const {
    return std::inner_product(signs.begin(), signs.end(), each.begin(), constant);
}

Weights FitRejection(const std::vector<Example> &all) {
    std::vector<Example> examples;
    std::copy_if(all.begin(), all.end(), std::back_inserter(examples),
                 [](const Example &e) { return e.isFitted; });
    Signs mean = {}, spread = {};
    const auto count = static_cast<double>(examples.size());
    double good = 0.0;
    for (const Example &example : examples) {
        good += example.isGood ? 1.0 : 0.0;
        for (size_t i = 0; i < SignCount; i++) mean[i] += example.signs[i] / count;
    }
    for (const Example &example : examples)
        for (size_t i = 0; i < SignCount; i++) spread[i] += std::pow(example.signs[i] - mean[i], 2) / count;
    for (double &value : spread) value = std::max(std::sqrt(value), 1e-6);

    Weights scaled;
    for (int step = 0; step < Steps; step++) {
        Weights slope;
        for (const Example &example : examples) {
            Signs signs;
            for (size_t i = 0; i < SignCount; i++) signs[i] = (example.signs[i] - mean[i]) / spread[i];
            const double error =
                (example.isGood ? 1.0 : 0.0) - 1.0 / (1.0 + std::exp(-scaled.ConfidenceOf(signs)));
            const double share = error / (example.isGood ? good : count - good) / 2.0;
            slope.constant += share;
            for (size_t i = 0; i < SignCount; i++) slope.each[i] += share * signs[i];
        }
        scaled.constant += Rate * slope.constant;
        for (size_t i = 0; i < SignCount; i++)
            scaled.each[i] += Rate * (slope.each[i] - Penalty * scaled.each[i]);
    }
    Weights weights = scaled;
    for (size_t i = 0; i < SignCount; i++) {
        weights.each[i] = scaled.each[i] / spread[i];
        weights.constant -= weights.each[i] * mean[i];
    }
    std::printf("const double Constant = %.2f;\nconst Signs Weights = {", weights.constant);
    for (size_t i = 0; i < SignCount; i++) std::printf("%s%.2f", i == 0 ? "" : ", ", weights.each[i]);
    std::printf("};\n");
    return weights;
}

void PrintCurve(std::vector<double> good, std::vector<double> foreign) {
    if (good.empty() || foreign.empty()) return;
    std::sort(foreign.begin(), foreign.end(), std::greater<>());
    std::printf("  others accepted   good refused   at a confidence of\n");
    for (double share : {0.01, 0.02, 0.03, 0.05, 0.08, 0.10, 0.15, 0.20}) {
        const double least = foreign[static_cast<size_t>(share * static_cast<double>(foreign.size()))];
        const auto refused = std::count_if(good.begin(), good.end(), [&](double c) { return c <= least; });
        std::printf("  %13.0f %%  %12.1f %%   %.2f\n", 100.0 * share,
                    100.0 * static_cast<double>(refused) / static_cast<double>(good.size()), least);
    }
}

} // namespace speech_bench
