#include "core/cards.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "core/random.h"

TEST(Random, StaysWithinFifteenBits) {
    SeedRandom(7);
    for (int i = 0; i < 100000; ++i) {
        const std::int32_t r = NextRandom();
        ASSERT_GE(r, 0);
        ASSERT_LE(r, RandomMax);
    }
}
