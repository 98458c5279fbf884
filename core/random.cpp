#include "core/random.h"

#include <chrono>

namespace {

std::uint32_t state = 1;
bool notYetSeeded = true;

} // namespace

void SeedRandom(std::uint32_t seed) {
    state = seed;
    notYetSeeded = false;
}

void SeedRandomOnce() {
    if (!notYetSeeded) {
        return;
    }
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    const auto ticks = std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count();
    SeedRandom(static_cast<std::uint32_t>(ticks));
}

// A linear congruential generator modulo 2^32 (the multiplier and increment are those of Knuth and
// Lewis). Its low bits repeat quickly, so the number is taken from the top.
std::int32_t NextRandom() {
    state = state * 1664525U + 1013904223U;
    return static_cast<std::int32_t>(state >> 17);
}
