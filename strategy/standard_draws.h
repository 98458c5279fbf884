// The draws of a 52-card deck without wild cards: for every hold of a hand but the hold of all
// five, how many draws end in each category.
//
// The deck state behind the counters is program-wide, as told in strategy/best_hold.h: the caller
// holds the game lock where more than one thread searches.
#ifndef TESSARIN_STRATEGY_STANDARD_DRAWS_H
#define TESSARIN_STRATEGY_STANDARD_DRAWS_H

#include "core/types.h"
#include "strategy/hold_order.h"

// The words of an outcome record. Straights and flushes leave out the straight flushes, which leave
// out the royal; a pair counts as high at or above the threshold, and below it is no pay.
enum StandardCategory : std::size_t {
    NoPay,
    HighPair,
    TwoPair,
    Trips,
    Straight,
    Flush,
    FullHouse,
    Quads,
    StraightFlush,
    Royal,
    Total,
    StandardCategoryCount,
};

// The quads that two games pay by their fifth card.
inline constexpr std::size_t KickerQuadsCount = 4;

using StandardOutcomes = std::array<std::int32_t, StandardCategoryCount>;
using QuadsByRank = std::array<std::int32_t, RanksPerSuit>; // the part of Quads of each rank
using KickerQuads = std::array<std::int32_t, KickerQuadsCount>;

// What the search hands over, and what it gets back: records 0..30 in hold order; record 31 is left
// alone.
struct StandardDraws {
    std::array<Card, HandSize> cards; // as dealt, by position
    std::array<StandardOutcomes, HoldCount> outcomes;
    std::array<QuadsByRank, HoldCount> quadsByRank;
    // Four jacks, queens, kings, each with a jack, queen, king or ace; four aces with a king, queen
    // or jack.
    std::array<KickerQuads, HoldCount> courtQuads;
    // Four deuces, threes, fours, each with an ace, deuce, three or four; four aces with a deuce,
    // three or four.
    std::array<KickerQuads, HoldCount> lowQuads;
};

// The layout is part of the contract: 32-bit words one after the other.
static_assert(sizeof(StandardDraws) == sizeof(std::int32_t) * (5 + 32 * (11 + 13 + 4 + 4)));

// Fills records 0..30 for the five cards. `threshold` is the rank index of the lowest pair that
// pays. Card codes are 0..52: a joker's code or a code that stands twice gives counts without
// meaning, but safely.
void EnumerateStandardDraws(StandardDraws& draws, std::int32_t threshold);

#endif
