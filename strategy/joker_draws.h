// Joker Wild draws: how many draws of every hold end in each hand of the game, by closed form.
#ifndef TESSARIN_STRATEGY_JOKER_DRAWS_H
#define TESSARIN_STRATEGY_JOKER_DRAWS_H

#include "strategy/hold_order.h"

// The words of a count record: the hands of Joker Wild from nothing upward, so that class c is row
// 11 - c of the paytable, and last the number of all draws.
enum JokerClass : std::size_t {
    JokerNoPay,
    JokerHighPair, // a pair of the threshold rank or above: kings or better
    JokerTwoPair,
    JokerTrips,
    JokerStraight,
    JokerFlush,
    JokerFullHouse,
    JokerQuads,
    JokerStraightFlush,
    JokerWildRoyal, // a royal flush that the joker completes
    JokerFiveOfAKind,
    JokerNaturalRoyal,
    JokerTotal,
    JokerRecordSize,
};

using JokerCountRecord = std::array<std::int32_t, JokerRecordSize>;

// What the front of the search and the enumerator hand to each other.
struct JokerWorkArea {
    std::array<Card, HandSize> cards;                // in: the hand in position order, codes 0..52
    std::array<JokerCountRecord, HoldCount> records; // out: in hold order
    std::int32_t pairThreshold;                      // in: the lowest rank that pays as a pair
};

// The threshold of the game.
inline constexpr std::int32_t JokerPairThreshold = RankKing;

// Counts the draws of holds 0..30 into their records, clears classes 0..11 of record 31 (whose
// total is left as it is) and returns 1. Codes are 0..52 and the threshold is 0..13. The counts are
// exact for five different cards and a threshold of 5 or more, 13 letting no pair pay. Anything
// else gets some counts, in records that still add up, and does no harm: a threshold below 5, a
// code that stands twice, a second joker.
//
// Works in program-wide state: one call at a time, which the game lock of the caller sees to.
std::int32_t CountJokerDraws(JokerWorkArea& area);

#endif
