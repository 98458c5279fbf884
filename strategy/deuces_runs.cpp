#include "strategy/deuces_runs.h"

#include <algorithm>
#include <bit>

#include "strategy/choose.h"
#include "strategy/rank_runs.h"

DrawWays deucesStraights[DealtSets];

namespace {

constexpr std::int32_t Five = HandSize;

// The ways to draw from one suit, by which of four neighbouring ranks are left.
constexpr std::array<DrawWays, 16> WaysOfPresent = [] {
    std::array<DrawWays, 16> ways{1};
    for (std::size_t present = 1; present < ways.size(); ++present) {
        ways[present] = WithRank(ways[present >> 1], static_cast<std::int32_t>(present & 1));
    }
    return ways;
}();

// The same by which of five are left, of which the lowest must be; it is not among those drawn.
constexpr std::array<DrawWays, 32> WaysFromLowest = [] {
    std::array<DrawWays, 32> ways{};
    for (std::size_t present = 1; present < ways.size(); present += 2) {
        ways[present] = WaysOfPresent[present >> 1];
    }
    return ways;
}();

// The ways to draw from 0..4 ranks that are all left whole.
constexpr std::array<DrawWays, 5> WaysOfWholeRanks = [] {
    std::array<DrawWays, 5> ways{1};
    for (std::size_t ranks = 1; ranks < ways.size(); ++ranks) {
        ways[ranks] = WithRank(ways[ranks - 1], SuitCount);
    }
    return ways;
}();

// Row n, column k: the ways to choose k of n naturals of a suit.
using SuitChooseRow = std::array<std::int32_t, Five + 1>;
constexpr std::array<SuitChooseRow, RanksPerSuit> SuitChoose = [] {
    std::array<SuitChooseRow, RanksPerSuit> rows{};
    for (std::int32_t n = 0; n < RanksPerSuit; ++n) {
        for (std::int32_t k = 0; k <= Five; ++k) {
            rows[static_cast<std::size_t>(n)][static_cast<std::size_t>(k)] = Choose(n, k);
        }
    }
    return rows;
}();

constexpr SuitChooseRow NoRoyals{};

const std::int32_t* ChooseFromSuit(std::int32_t cards) {
    return SuitChoose[static_cast<std::size_t>(cards)].data();
}

// The run from the deuce is never at its lowest: no natural is a deuce.
constexpr std::int32_t DeuceRun = 1;

// Places 0..13 are the ranks from the ace below the deuce up to the ace above the king, so that run
// k is places k..k + 4 and place k its lowest. The deuces' own place is always empty.
constexpr std::int32_t PlaceCount = RanksPerSuit + 1;

constexpr RankMask PlacesOf(RankMask ranks) {
    return (ranks << 1 | ranks >> RankAce) & ~RankMask{2};
}

constexpr bool Has(RankMask places, std::int32_t place) {
    return (places >> place & 1) != 0;
}

// By set of dealt ranks.
constexpr std::array<std::uint8_t, DealtSets> SizeOfSet = [] {
    std::array<std::uint8_t, DealtSets> sizes{};
    for (std::uint32_t set = 0; set < DealtSets; ++set) {
        sizes[set] = static_cast<std::uint8_t>(std::popcount(set));
    }
    return sizes;
}();

struct SearchRuns {
    RankMask present[SuitCount]; // places of the naturals left in each suit
    // With no natural held, by naturals drawn; the straights and flushes are of all kinds.
    std::int32_t royals[Five + 1];
    std::int32_t flushes[Five + 1];
    std::int32_t straightsToNothing[Five + 1];
    DrawWays straightFlushes; // the cards beside the lowest
};

SearchRuns searchRuns;

void FindPresent(const DeucesHand& hand) {
    constexpr RankMask all = (RankMask{1} << RanksPerSuit) - 1;
    for (RankMask& present : searchRuns.present) {
        present = PlacesOf(all);
    }
    for (std::size_t place = 0; place < HandSize; ++place) {
        if (hand.ranks[place] != RankDeuce) {
            searchRuns.present[hand.suits[place]] &= ~PlacesOf(RankBit(hand.ranks[place]));
        }
    }
}

// With no natural held: royals, straight flushes and flushes of every suit.
void FindSuitedToNothing(const DeucesDeckState& deck) {
    for (std::int32_t suit = 0; suit < SuitCount; ++suit) {
        for (std::int32_t run = 0; run < RunCount - 1; ++run) {
            searchRuns.straightFlushes += WaysFromLowest[searchRuns.present[suit] >> run & 0x1f];
        }
        const std::int32_t* royals = ChooseFromSuit(deck.royalCount[suit]);
        const std::int32_t* flushes = ChooseFromSuit(deck.suitCount[suit]);
        for (std::int32_t naturals = 2; naturals <= Five; ++naturals) {
            searchRuns.royals[naturals] += royals[naturals];
            searchRuns.flushes[naturals] += flushes[naturals];
        }
    }
}

// With no natural held: the lowest card of a run and 2, 3 or 4 of those above it, which are two
// neighbouring ranks and the two after; in the run from ten to ace, also those without the ten.
void FindStraightsToNothing(const DeucesDeckState& deck) {
    std::int32_t left[PlaceCount];
    std::copy_n(deck.rankCount, RanksPerSuit, left + 1);
    left[0] = left[RankAce + 1];
    left[DeuceRun] = 0;
    std::int32_t both[PlaceCount - 1];   // a card of each of two neighbours
    std::int32_t either[PlaceCount - 1]; // a card of one of them
    for (std::int32_t place = 0; place < PlaceCount - 1; ++place) {
        both[place] = left[place] * left[place + 1];
        either[place] = left[place] + left[place + 1];
    }
    std::int32_t ofThree = 0;
    std::int32_t ofFour = 0;
    std::int32_t ofFive = 0;
    for (std::int32_t run = 0; run < RunCount; ++run) {
        const std::int32_t near = run + 1;
        const std::int32_t far = run + 3;
        const std::int32_t withoutLowest = run == RunCount - 1 ? 1 : 0;
        const std::int32_t two = both[near] + both[far] + either[near] * either[far];
        const std::int32_t three = both[near] * either[far] + either[near] * both[far];
        const std::int32_t four = both[near] * both[far];
        ofThree += left[run] * two + withoutLowest * three;
        ofFour += left[run] * three + withoutLowest * four;
        ofFive += left[run] * four;
    }
    searchRuns.straightsToNothing[3] = ofThree;
    searchRuns.straightsToNothing[4] = ofFour;
    searchRuns.straightsToNothing[5] = ofFive;
}

// Adds the straights of a run to the sets of dealt ranks they have, held or drawn; the ranks not
// dealt are whole.
void AddStraightsOfRun(const std::uint32_t* dealtAt, std::int32_t run) {
    const std::uint32_t lowest = dealtAt[run];
    const std::uint32_t above =
        dealtAt[run + 1] | dealtAt[run + 2] | dealtAt[run + 3] | dealtAt[run + 4];
    if ((lowest | above) == 0) {
        return;
    }
    const std::size_t whole = 4u - SizeOfSet[above] - (run == 0 ? 1u : 0u);
    std::uint32_t always = lowest; // dealt ranks that these straights all have
    std::uint32_t maybe = above;   // and that they may have
    DrawWays ways = WaysOfWholeRanks[whole];
    if (run == RunCount - 1) {
        always = 0;
        maybe = above | lowest;
        ways = lowest == 0 ? WithRank(ways, SuitCount) : ways;
    } else if (lowest == 0) {
        ways = AndCard(ways, SuitCount);
    }
    for (std::uint32_t set = maybe;; set = (set - 1) & maybe) {
        deucesStraights[set | always] += ways;
        if (set == 0) {
            break;
        }
    }
}

// With naturals held: first by the dealt ranks that the straights have; then, rank by rank, those
// that have it are also draws, of a card of it, to the holds without it.
void FindStraights(const DeucesDeckState& deck, const DeucesHand& hand) {
    std::uint32_t dealtAt[PlaceCount] = {};
    for (std::int32_t number = 0; number < hand.distinct; ++number) {
        dealtAt[hand.naturalRanks[number] + 1] = 1u << number;
    }
    dealtAt[0] = dealtAt[RankAce + 1];
    for (std::int32_t run = 0; run < RunCount; ++run) {
        if (run != DeuceRun) {
            AddStraightsOfRun(dealtAt, run);
        }
    }
    const std::uint32_t sets = 1u << hand.distinct;
    for (std::int32_t number = 0; number < hand.distinct; ++number) {
        const std::uint32_t bit = 1u << number;
        const std::int32_t left = deck.rankCount[hand.naturalRanks[number]];
        for (std::uint32_t high = 0; high < sets; high += 2 * bit) {
            for (std::uint32_t set = high; set < high + bit; ++set) {
                deucesStraights[set] += AndCard(deucesStraights[set + bit], left);
            }
        }
    }
}

// Straight flushes with held naturals of one suit, by the runs that all of them lie in. The lowest
// card of a run is held, or left and drawn, or was discarded.
DrawWays StraightFlushesOfHeld(RunMask runs, RankMask held, RankMask present) {
    DrawWays ways = 0;
    for (RunMask rest = runs & ~RoyalRun; rest != 0; rest &= rest - 1) {
        const std::int32_t run = std::countr_zero(rest);
        const DrawWays above = WaysOfPresent[present >> (run + 1) & 0xf];
        if (Has(held, run)) {
            ways += above;
        } else if (Has(present, run)) {
            ways += AndCard(above, 1);
        }
    }
    return ways;
}

} // namespace

void PrepareDeucesRuns(const DeucesDeckState& deck, const DeucesHand& hand) {
    searchRuns = {};
    std::fill_n(deucesStraights, DealtSets, 0);
    FindPresent(hand);
    FindSuitedToNothing(deck);
    FindStraightsToNothing(deck);
    FindStraights(deck, hand);
}

void FindSuitedRuns(const DeucesDeckState& deck, HeldRuns& found) {
    const DeucesHeldShape& held = deck.held;
    RankMask ranks = 0;
    RunMask runs = AllRuns;
    for (std::int32_t i = 0; i < held.distinct; ++i) {
        ranks |= RankBit(held.singles[i]);
        runs &= RunsThrough[static_cast<std::size_t>(held.singles[i])];
    }
    const std::int32_t suit = held.suits[held.deuces];
    found.royals = (runs & RoyalRun) != 0 ? ChooseFromSuit(deck.royalCount[suit]) : NoRoyals.data();
    found.flushes = ChooseFromSuit(deck.suitCount[suit]);
    found.straightFlushes = StraightFlushesOfHeld(runs, PlacesOf(ranks), searchRuns.present[suit]);
}

RunDraws DrawRunsToNothing(std::int32_t naturals) {
    const std::int32_t royals = searchRuns.royals[naturals];
    const std::int32_t straightFlushes = WaysToDraw(searchRuns.straightFlushes, naturals - 1);
    const std::int32_t suited = royals + straightFlushes;
    return {royals, straightFlushes, searchRuns.flushes[naturals] - suited,
            searchRuns.straightsToNothing[naturals] - suited};
}
