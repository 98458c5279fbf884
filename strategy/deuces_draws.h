// Deuces Wild: every draw of every hold of a hand, counted by category in closed form.
#ifndef TESSARIN_STRATEGY_DEUCES_DRAWS_H
#define TESSARIN_STRATEGY_DEUCES_DRAWS_H

#include "strategy/hold_order.h"

// The words of a count record. Four of a kind and straight flush are kept apart by whether a deuce
// takes part; the paytable pays both alike.
enum DeucesWord : std::int32_t {
    DeucesNoPay = 0,
    DeucesThreeOfAKind = 1,
    DeucesStraight = 2,
    DeucesFlush = 3,
    DeucesFullHouse = 4,
    DeucesFourOfAKind = 5, // made with one or more deuces
    DeucesNaturalFourOfAKind = 6,
    DeucesStraightFlush = 7, // made with one or more deuces
    DeucesNaturalStraightFlush = 8,
    DeucesFiveOfAKind = 9,
    DeucesWildRoyal = 10,
    DeucesFourDeuces = 11,
    DeucesNaturalRoyal = 12,
    DeucesTotal = 13, // all draws of the hold
};

inline constexpr std::int32_t DeucesWordCount = 14;

// The draws of one hold by category, indexed by DeucesWord; words 0..12 sum to word 13.
using DeucesCounter = std::int32_t[DeucesWordCount];

// What goes into a count and comes out of it.
struct DeucesWorkArea {
    Card codes[HandSize]; // the dealt hand in position order, set by the caller

    // The rest is filled per hold, in hold order.
    DeucesCounter counters[HoldCount];
    std::int32_t fiveOfAKindByRank[HoldCount][RanksPerSuit]; // by the rank of the five
    std::int32_t fourDeucesByRank[HoldCount][RanksPerSuit];  // by the rank of the fifth card
};

// Fills records and by-rank rows 0..30 of the work area for its five codes and returns 1. Record 31
// is only cleared, with a total of 1. Codes are 0..52 and need not differ: a joker's code counts as
// a deuce that is not of this deck, a repeated card leaves the deck once, and such hands get some
// counts, safely. Works in program-wide scratch: the caller holds the game lock.
std::int32_t CountDeucesHolds(DeucesWorkArea* workArea);

#endif
