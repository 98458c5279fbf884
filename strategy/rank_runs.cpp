#include "strategy/rank_runs.h"

// The ways to fill a run up are the product of the cards left of its missing ranks: four for a rank
// not dealt, so only the dealt ranks of the run differ from hold to hold, and every set of them is
// a hold that may fill it.
void CountStraightWays(StraightWays& straights, const Card* dealt,
                       const std::array<std::int32_t, RanksPerSuit>& rankCount) {
    straights = {};
    std::array<std::uint32_t, RunCount> dealtInRun{};
    std::array<std::int32_t, RunCount> waysUndealt;
    waysUndealt.fill(4 * 4 * 4 * 4 * 4);
    std::array<std::int32_t, std::size_t{1} << HandSize>
        waysOf; // by the set of dealt ranks missing
    waysOf[0] = 1;
    std::uint32_t sets = 1;
    for (std::size_t i = 0; i < HandSize; ++i) {
        const auto rank = static_cast<std::size_t>(RankOf(dealt[i]));
        if (straights.dealtBit[rank] != 0) {
            continue;
        }
        straights.dealtBit[rank] = sets;
        for (std::uint32_t set = 0; set < sets; ++set) {
            waysOf[sets + set] = waysOf[set] * rankCount[rank];
        }
        for (std::size_t run = 0; run < RunCount; ++run) {
            if ((RunsThrough[rank] >> run & 1) != 0) {
                dealtInRun[run] |= sets;
                waysUndealt[run] /= 4;
            }
        }
        sets *= 2;
    }
    for (std::size_t run = 0; run < RunCount; ++run) {
        const std::uint32_t all = dealtInRun[run];
        for (std::uint32_t missing = all;; missing = (missing - 1) & all) {
            straights.ways[all ^ missing] += waysUndealt[run] * waysOf[missing];
            if (missing == 0) {
                break;
            }
        }
    }
}
