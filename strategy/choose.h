// Binomial coefficients, as all counting here uses them.
#ifndef TESSARIN_STRATEGY_CHOOSE_H
#define TESSARIN_STRATEGY_CHOOSE_H

#include <array>
#include <cstdint>

// The number of ways to choose k of n, in 32-bit integers; 0 when n < k. n is 0..53 and k 0..5,
// so that no product overflows (53 * 52 * 51 * 50 * 49 fits).
constexpr std::int32_t Choose(std::int32_t n, std::int32_t k) {
    if (n < k) {
        return 0;
    }
    std::int32_t numerator = 1;
    std::int32_t denominator = 1;
    for (std::int32_t i = 0; i < k; ++i) {
        numerator *= n - i;
        denominator *= i + 1;
    }
    return numerator / denominator;
}

// Row n, column k: the ways to take k of the n cards left of one rank.
inline constexpr std::array<std::array<std::int32_t, 5>, 5> SmallChoose = {{
    {1, 0, 0, 0, 0},
    {1, 1, 0, 0, 0},
    {1, 2, 1, 0, 0},
    {1, 3, 3, 1, 0},
    {1, 4, 6, 4, 1},
}};

#endif
