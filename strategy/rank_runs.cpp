#include "strategy/rank_runs.h"

#include <bit>

namespace {

constexpr std::size_t sets = std::size_t{1} << HandSize; // of dealt ranks
constexpr std::size_t paddedRuns = 16;                   // so that a loop over runs is one vector

// The ways to fill the undealt ranks of a run, four cards each, by the set of its dealt ranks.
constexpr std::array<std::int32_t, sets> undealtWays = [] {
    std::array<std::int32_t, sets> ways{};
    for (std::uint32_t dealt = 0; dealt < sets; ++dealt) {
        ways[dealt] = 1 << 2 * (RunLength - std::popcount(dealt));
    }
    return ways;
}();

} // namespace

// The ways to fill a run up are the product of the cards left of its missing ranks. Only the dealt
// ranks of the run differ from hold to hold, and every set of them is a hold that may fill it.
void CountStraightWays(StraightWays& straights,
                       const std::array<std::int32_t, HandSize>& dealtRanks,
                       const std::array<std::int32_t, RanksPerSuit>& rankCount) {
    // Dealt ranks from the ace below the deuce up, so that every run is five neighbours.
    std::array<std::uint8_t, paddedRuns + RunLength - 1> dealtAt{};
    std::array<std::uint16_t, sets> missingWays; // by set of dealt ranks, at most 4^5
    missingWays[0] = 1;
    for (std::size_t i = 0; i < HandSize; ++i) {
        const auto rank = static_cast<std::size_t>(dealtRanks[i]);
        const std::size_t bit = std::size_t{1} << i;
        const bool isNew = dealtAt[rank + 1] == 0;
        // A rank dealt before has its bit already; the one left over is in no set that is asked
        // for.
        const std::int32_t left = isNew ? rankCount[rank] : 1;
        dealtAt[rank + 1] = isNew ? static_cast<std::uint8_t>(bit) : dealtAt[rank + 1];
        straights.dealtBit[i] = dealtAt[rank + 1];
        for (std::size_t set = 0; set < bit; ++set) {
            missingWays[bit + set] = static_cast<std::uint16_t>(missingWays[set] * left);
        }
    }
    dealtAt[0] = dealtAt[RankAce + 1];

    std::array<std::uint8_t, paddedRuns> dealtInRun;
    for (std::size_t run = 0; run < paddedRuns; ++run) {
        dealtInRun[run] =
            static_cast<std::uint8_t>(dealtAt[run] | dealtAt[run + 1] | dealtAt[run + 2] |
                                      dealtAt[run + 3] | dealtAt[run + 4]);
    }
    straights.ways = {};
    for (std::size_t run = 0; run < RunCount; ++run) {
        const std::size_t all = dealtInRun[run];
        const std::int32_t undealt = undealtWays[all];
        std::size_t missing = all;
        do {
            straights.ways[all ^ missing] += undealt * missingWays[missing];
            missing = (missing - 1) & all;
        } while (missing != all);
    }
}
