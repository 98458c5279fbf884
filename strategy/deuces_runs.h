// The hands of Deuces Wild in which no rank repeats: royals, straight flushes, flushes, straights.
//
// Deuces and naturals of different ranks make a straight exactly when the naturals lie within one
// run of five ranks. They may lie within several, so a set of naturals is counted at one: the run
// that starts with its lowest rank (the ace is the lowest of the wheel) or, when there is none, the
// run from ten to ace. Of one suit, those of ten to ace are the royals, the others straight
// flushes.
#ifndef TESSARIN_STRATEGY_DEUCES_RUNS_H
#define TESSARIN_STRATEGY_DEUCES_RUNS_H

#include "strategy/deuces_deck.h"

// The ways to draw 0..4 naturals of different ranks, 12 bits each from the lowest: a polynomial
// whose coefficient k is the ways to draw k of them. With a natural held at most five runs count,
// and a coefficient is 4 * 4^4 + 4^4 = 1,280 at most.
using DrawWays = std::uint64_t;

constexpr std::int32_t WaysToDraw(DrawWays ways, std::int32_t cards) {
    return static_cast<std::int32_t>(ways >> (12 * cards) & 0xfff);
}

// A card that is drawn besides, of a rank with so many left; and one that may be drawn or not.
constexpr DrawWays AndCard(DrawWays ways, std::int32_t left) {
    return static_cast<DrawWays>(left) * (ways << 12);
}
constexpr DrawWays WithRank(DrawWays ways, std::int32_t left) {
    return ways + AndCard(ways, left);
}

// Draws of naturals that make a run or flush with what is held, each in one category.
struct RunDraws {
    std::int32_t royals;
    std::int32_t straightFlushes;
    std::int32_t flushes;
    std::int32_t straights;
};

// All runs and flushes that a hold with naturals can become, by number of naturals drawn.
struct HeldRuns {
    DrawWays straights; // of any suits
    bool suited;        // only then is there what follows, of the held suit
    DrawWays straightFlushes;
    const std::int32_t* royals;
    const std::int32_t* flushes; // of any ranks
};

// Takes the runs out of the deck, once for all holds of the hand.
void PrepareDeucesRuns(const DeucesDeckState& deck, const DeucesHand& hand);

// Set by it: the straights of any suits by the set of dealt natural ranks held, one at least.
extern DrawWays deucesStraights[DealtSets];

// Fills what there is only for a suited hold.
void FindSuitedRuns(const DeucesDeckState& deck, HeldRuns& runs);

// For one held natural or more, of different ranks.
inline HeldRuns RunsOfHeld(const DeucesDeckState& deck) {
    HeldRuns runs = {deucesStraights[deck.scratch.heldRanks], deck.held.suited != 0, 0, nullptr,
                     nullptr};
    if (runs.suited) {
        FindSuitedRuns(deck, runs);
    }
    return runs;
}

// The draws of so many naturals to held ones.
inline RunDraws DrawRuns(const HeldRuns& runs, std::int32_t naturals) {
    const std::int32_t royals = runs.royals[naturals];
    const std::int32_t straightFlushes = WaysToDraw(runs.straightFlushes, naturals);
    const std::int32_t suited = royals + straightFlushes;
    return {royals, straightFlushes, runs.flushes[naturals] - suited,
            WaysToDraw(runs.straights, naturals) - suited};
}

// The draws of so many naturals, 2..5, with none held; two make no straight or flush here, since
// three deuces with them are four of a kind.
RunDraws DrawRunsToNothing(std::int32_t naturals);

#endif
