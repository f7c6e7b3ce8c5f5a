// Ways to do the same, measured by turns.
#pragma once

#include <algorithm>
#include <ctime>

inline double ProcessorSec() {
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The processor time of a frame, from stretches of a millisecond or more that are flown by turns with those
// of others: that of the fastest.
template <typename Frame> struct Way {
    Frame frame;
    int frames = 1;
    double fastest = 1e9;

    void Fly() {
        const double stretchSec = 0.001;
        const double begin = ProcessorSec();
        for (int i = 0; i < frames; i++) frame();
        const double seconds = ProcessorSec() - begin;
        fastest = std::min(fastest, seconds / frames);
        if (seconds < stretchSec) frames = frames * 2;
    }
};
template <typename Frame> Way(Frame) -> Way<Frame>;
