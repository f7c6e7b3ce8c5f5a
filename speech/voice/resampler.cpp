#include "speech/voice/resampler.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace fennic_voice {

namespace {

const size_t StepsOfKernel = 64; // between them it is taken for straight: an error of less than one in 3000
const double SamplesOfLowerRate = 16.0;

} // namespace

Resampler::Resampler(unsigned from, unsigned to) : step(static_cast<double>(from) / to) {
    if (from == to) return;
    const double cutoff = std::min(1.0, 1.0 / step), width = SamplesOfLowerRate / cutoff;
    reach = static_cast<size_t>(std::ceil(width));
    for (size_t i = 0; i <= reach * StepsOfKernel + 1; i++) {
        const double x = static_cast<double>(i) / StepsOfKernel, angle = std::numbers::pi * x * cutoff;
        const double sinc = i == 0 ? 1.0 : std::sin(angle) / angle;
        kernel.push_back(x >= width ? 0.0
                                    : cutoff * sinc * (0.5 + 0.5 * std::cos(std::numbers::pi * x / width)));
    }
    kept.assign(reach, 0);
    centre = static_cast<double>(reach);
}

double Resampler::Kernel(double distance) const {
    const double at = std::abs(distance) * StepsOfKernel;
    const auto index = static_cast<size_t>(at);
    if (index + 1 >= kernel.size()) return 0.0;
    return kernel[index] + (at - static_cast<double>(index)) * (kernel[index + 1] - kernel[index]);
}

void Resampler::Add(std::span<const int16_t> samples, Samples &made) {
    if (reach == 0) {
        made.insert(made.end(), samples.begin(), samples.end());
        return;
    }
    kept.insert(kept.end(), samples.begin(), samples.end());
    for (; centre + static_cast<double>(reach) < static_cast<double>(kept.size()); centre += step) {
        const auto middle = static_cast<size_t>(centre);
        double sum = 0.0;
        for (size_t i = middle + 1 - std::min(reach, middle + 1); i <= middle + reach && i < kept.size(); i++)
            sum += kept[i] * Kernel(static_cast<double>(i) - centre);
        made.push_back(static_cast<int16_t>(std::clamp(std::lround(sum), -32768L, 32767L)));
    }
    const auto done = static_cast<size_t>(centre) - std::min(static_cast<size_t>(centre), reach);
    const size_t dropped = std::min(done, kept.size());
    kept.erase(kept.begin(), kept.begin() + static_cast<std::ptrdiff_t>(dropped));
    centre -= static_cast<double>(dropped);
}

void Resampler::Finish(Samples &made) {
    Add(std::vector<int16_t>(reach, 0), made);
}

} // namespace fennic_voice
