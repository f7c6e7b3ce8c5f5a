// From one rate of samples to another, as sound comes in: devices and recordings have rates of their own.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "speech/voice/samples.h"

namespace fennic_voice {

class Resampler {
public:
    // Samples a second. What the lower rate cannot hold is filtered out, by a sinc of 16 of its samples to
    // either side under a Hann window.
    Resampler(unsigned from, unsigned to);

    // Takes the next samples and appends what they make: all but the last 1 ms, which waits for the samples
    // behind it.
    void Add(std::span<const int16_t> samples, Samples &made);

    // Appends the rest, as if silence followed.
    void Finish(Samples &made);

private:
    double step = 1.0;          // samples read for one made
    size_t reach = 0;           // samples read to either side of one that is made
    std::vector<double> kernel; // its right half, StepsOfKernel values for each sample read
    std::vector<int16_t> kept;  // what was read and is still needed
    double centre = 0.0;        // of the next sample to be made, among those kept

    double Kernel(double distance) const;
};

} // namespace fennic_voice
