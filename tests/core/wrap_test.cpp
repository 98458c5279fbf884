#include "core/wrap.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Least = std::numeric_limits<std::int32_t>::min();

// What a 32-bit word keeps of an exact result.
std::int32_t LowWord(std::int64_t exact) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(exact & 0xFFFFFFFF));
}

} // namespace

TEST(Wrap, GoesRoundAtTheLimits) {
    EXPECT_EQ(WrapAdd(Most, 1), Least);
    EXPECT_EQ(WrapAdd(Least, -1), Most);
    EXPECT_EQ(WrapSubtract(Least, 1), Most);
    EXPECT_EQ(WrapSubtract(Most, -1), Least);
    EXPECT_EQ(WrapSubtract(0, Least), Least);
    EXPECT_EQ(WrapMultiply(Most, 2), -2);
    EXPECT_EQ(WrapMultiply(Least, -1), Least);
    EXPECT_EQ(WrapMultiply(1 << 30, 4), 0);
}

TEST(Wrap, KeepsTheLowWordOfTheExactResult) {
    const std::int32_t numbers[] = {0, 1, -1, 5, -7, 4000, 65536, -65537, Most, Least, Most - 1};
    for (const std::int32_t a : numbers) {
        for (const std::int32_t b : numbers) {
            EXPECT_EQ(WrapAdd(a, b), LowWord(std::int64_t{a} + b));
            EXPECT_EQ(WrapSubtract(a, b), LowWord(std::int64_t{a} - b));
            EXPECT_EQ(WrapMultiply(a, b), LowWord(std::int64_t{a} * b));
        }
    }
}

// Usable where a constant is wanted.
static_assert(WrapAdd(2, 3) == 5 && WrapSubtract(2, 3) == -1 && WrapMultiply(2, 3) == 6);
