#include "strategy/hold_order.h"

#include <gtest/gtest.h>

#include "strategy/choose.h"
#include "strategy/rank_runs.h"

TEST(HoldOrder, ListsTheHoldsAsTiesAndListsNeedThem) {
    constexpr std::array<HoldPattern, HoldCount> expected = {
        0, 1,  2,  4,  8,  16, 3,  5,  9,  17, 6,  10, 18, 12, 20, 24,
        7, 11, 13, 14, 19, 21, 22, 25, 26, 28, 30, 29, 27, 23, 15, 31};
    EXPECT_EQ(HoldOrder, expected);
}

TEST(HoldOrder, IsInvertedByHoldIndex) {
    for (std::int32_t index = 0; index < HoldCount; ++index) {
        const HoldPattern pattern = HoldOrder[static_cast<std::size_t>(index)];
        EXPECT_EQ(HoldIndex[static_cast<std::size_t>(pattern)], index);
    }
}

TEST(Choose, FollowsPascalsRule) {
    for (std::int32_t n = 1; n <= 53; ++n) {
        EXPECT_EQ(Choose(n, 0), 1);
        for (std::int32_t k = 1; k <= 5; ++k) {
            EXPECT_EQ(Choose(n, k), Choose(n - 1, k - 1) + Choose(n - 1, k)) << n << " " << k;
        }
    }
    EXPECT_EQ(Choose(47, 5), 1533939);
    EXPECT_EQ(Choose(48, 5), 1712304);
    EXPECT_EQ(Choose(4, 5), 0);
    for (std::size_t n = 0; n < SmallChoose.size(); ++n) {
        for (std::size_t k = 0; k < SmallChoose[n].size(); ++k) {
            EXPECT_EQ(SmallChoose[n][k],
                      Choose(static_cast<std::int32_t>(n), static_cast<std::int32_t>(k)));
        }
    }
}

TEST(RankRuns, AreTenAndNeverGoRoundPastTheAce) {
    for (RankMask ranks = 0; ranks < RankMask{1} << RanksPerSuit; ++ranks) {
        RunMask complete = 0;
        for (std::size_t run = 0; run < RunCount; ++run) {
            if ((ranks & RunRanks[run]) == RunRanks[run]) {
                complete |= RunMask{1} << run;
            }
        }
        ASSERT_EQ(CompleteRuns(ranks), complete) << ranks;
    }
    EXPECT_EQ(CompleteRuns(RankBit(RankAce) | 0xf), RunMask{1});
    EXPECT_EQ(CompleteRuns(0x1f00), RoyalRun);
    EXPECT_EQ(CompleteRuns(0x1c03), RunMask{0});
    EXPECT_EQ(CountRuns(AllRuns), RunCount);
}
