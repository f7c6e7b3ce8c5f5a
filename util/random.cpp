// The C library's rand() differs from system to system, and is shared with the simulator on some.
#include "util/random.h"

#include <random>

#include "util/make_fresh.h"

namespace {

std::minstd_rand generator;

} // namespace

size_t RandomBelow(size_t count) {
    return generator() % count;
}

void ResetRandom() {
    MakeFresh(generator);
}
