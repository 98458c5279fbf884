// The program's own 15-bit generator: the same sequence for the same seed on every platform.
#ifndef TESSARIN_CORE_RANDOM_H
#define TESSARIN_CORE_RANDOM_H

#include <cstdint>

inline constexpr std::int32_t RandomMax = 32767;

// Starts the sequence over. Any seed will do. From then on the clock no longer seeds it.
void SeedRandom(std::uint32_t seed);

// Seeds from the system's millisecond tick count, the first time it is called and never again;
// nothing after SeedRandom.
void SeedRandomOnce();

// The next number, 0..RandomMax.
std::int32_t NextRandom();

#endif
