// The Joker Wild hands that are counted by runs of ranks and by suits.
#ifndef TESSARIN_STRATEGY_JOKER_ROUTINES_H
#define TESSARIN_STRATEGY_JOKER_ROUTINES_H

#include "strategy/joker_deck.h"

// Fills the ways to a straight of every set of dealt ranks held, flushes among them.
void CountStraights(JokerDeckState& deck);

constexpr std::int32_t Hands(JokerWays ways) {
    return NaturalWays(ways) + WildWays(ways);
}

// With the joker, hands of different ranks pair its highest, and ranks alone count them as kings or
// better if that is a high one. Straights and flushes are more: all that have a high rank. The rest
// were counted as nothing.
inline void CorrectKingsOrBetter(JokerCountRecord& record, JokerWays straightsAndFlushes) {
    const std::int32_t high = WildWays(straightsAndFlushes) - LowWildWays(straightsAndFlushes);
    record[JokerHighPair] -= high;
    record[JokerNoPay] -= Hands(straightsAndFlushes) - high;
}

// CountRunsAndFlushes for a hold that suits do not keep from a flush.
void AddSuitedHands(const JokerDeckState& deck, JokerCountRecord& record, const HeldSummary& held);

// Adds the straights, flushes, straight flushes and royals of a hold of different ranks to its
// record, and takes them out of what ranks alone count them as.
inline void CountRunsAndFlushes(const JokerDeckState& deck, JokerCountRecord& record,
                                const HeldSummary& held) {
    if ((held.suits & (held.suits - 1)) == 0) {
        AddSuitedHands(deck, record, held);
        return;
    }
    const JokerWays counted = deck.countedWays[held.jokerHeld != 0];
    const JokerWays straights = deck.straights[held.rankSet] & counted;
    if (straights != 0) {
        record[JokerStraight] += Hands(straights);
        CorrectKingsOrBetter(record, straights);
    }
}

#endif
