// How long the voice's process may take to say what it was given. One that takes longer hangs.
#pragma once

#include <chrono>
#include <cstddef>

namespace fennic_speech {

class Patience {
public:
    using Clock = std::chrono::steady_clock;

    // A text of so many characters was given to it: four times what the link allows for that and 20 s more,
    // by the simulator's time (seconds of its run) and by the clock, since the first may stand still or run
    // ahead. It counts from the end of the texts before.
    void Give(size_t characters, double now, Clock::time_point clock);

    // Everything was said, or there is nobody to say it.
    void Forget() { *this = Patience(); }

    bool isOver(double now, Clock::time_point clock) const {
        return isWaiting && now > until && clock > untilClock;
    }

private:
    bool isWaiting = false;
    double until = 0.0;
    Clock::time_point untilClock;
};

} // namespace fennic_speech
