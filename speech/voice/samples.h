// Sound as all of this program has it: one channel, 16 bits, 16,000 samples a second, which is what the
// recognition's model was trained on.
#pragma once

#include <cstdint>
#include <vector>

namespace fennic_voice {

const int SampleRate = 16000; // samples a second

using Samples = std::vector<int16_t>;

} // namespace fennic_voice
