// Runs of five consecutive ranks: what straights are made of.
#ifndef TESSARIN_STRATEGY_RANK_RUNS_H
#define TESSARIN_STRATEGY_RANK_RUNS_H

#include "core/types.h"

// A set of ranks, bit r for rank index r; 13 bits.
using RankMask = std::uint32_t;

constexpr RankMask RankBit(std::int32_t rank) {
    return RankMask{1} << rank;
}

// A set of runs, bit k for run k; 10 bits. Run 0 is the wheel, ace to five; run k > 0 starts at
// rank index k - 1; run 9 is ten to ace. No run goes round past the ace.
using RunMask = std::uint32_t;

inline constexpr std::int32_t RunLength = 5;
inline constexpr std::int32_t RunCount = 10;
inline constexpr RunMask AllRuns = (RunMask{1} << RunCount) - 1;
inline constexpr RunMask RoyalRun = RunMask{1} << (RunCount - 1);

// The ranks of each run.
inline constexpr std::array<RankMask, RunCount> RunRanks = [] {
    std::array<RankMask, RunCount> ranks{RankBit(RankAce) | 0xf};
    for (std::size_t run = 1; run < RunCount; ++run) {
        ranks[run] = RankMask{0x1f} << (run - 1);
    }
    return ranks;
}();

// The runs that each rank belongs to.
inline constexpr std::array<RunMask, RanksPerSuit> RunsThrough = [] {
    std::array<RunMask, RanksPerSuit> runs{};
    for (std::size_t rank = 0; rank < RanksPerSuit; ++rank) {
        for (std::size_t run = 0; run < RunCount; ++run) {
            runs[rank] |= (RunRanks[run] >> rank & 1) << run;
        }
    }
    return runs;
}();

// The runs all of whose ranks are in the set. The ace stands below the deuce too, so that the
// wheel is five neighbours like any other run.
constexpr RunMask CompleteRuns(RankMask ranks) {
    const RankMask low = ranks << 1 | ranks >> RankAce;
    const RankMask pairs = low & low >> 1;
    return pairs & pairs >> 2 & low >> 4;
}

// How many runs the set has.
inline constexpr std::array<std::uint8_t, AllRuns + 1> RunCounts = [] {
    std::array<std::uint8_t, AllRuns + 1> counts{};
    for (RunMask runs = 1; runs <= AllRuns; ++runs) {
        counts[runs] = static_cast<std::uint8_t>(counts[runs >> 1] + (runs & 1));
    }
    return counts;
}();
constexpr std::int32_t CountRuns(RunMask runs) {
    return RunCounts[runs];
}

// The straights that every hold of a hand may still become, without regard to suits.
struct StraightWays {
    // By position, the bit of the card's rank; cards of one rank have the same.
    std::array<std::uint32_t, HandSize> dealtBit;
    // By the set of dealt ranks kept, one card of each: the ways to fill up, from the cards left,
    // a run that has them all.
    std::array<std::int32_t, std::size_t{1} << HandSize> ways;
};

// dealtRanks are the ranks of the five cards; rankCount is the number of cards left of each rank
// (0..4), four of a rank not dealt.
void CountStraightWays(StraightWays& straights,
                       const std::array<std::int32_t, HandSize>& dealtRanks,
                       const std::array<std::int32_t, RanksPerSuit>& rankCount);

#endif
