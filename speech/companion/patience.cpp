#include "speech/companion/patience.h"

#include <algorithm>

namespace fennic_speech {

namespace {

const double Factor = 4.0, Extra = 20.0; // seconds

} // namespace

void Patience::Give(size_t characters, double now, Clock::time_point clock) {
    const double seconds = Extra + Factor * (0.1 * static_cast<double>(characters) + 1.0);
    until = (isWaiting ? std::max(until, now) : now) + seconds;
    untilClock = (isWaiting ? std::max(untilClock, clock) : clock)
                 + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
    isWaiting = true;
}

} // namespace fennic_speech
