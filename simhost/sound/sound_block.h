// Sound as it passes between the simulator and the voice: one channel, 16 bits, in blocks of 20 ms.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace simhost {

inline constexpr int SoundRate = 16000; // samples a second
inline constexpr std::size_t BlockSamples = 320;

using SoundBlock = std::array<std::int16_t, BlockSamples>;

} // namespace simhost
