// The hands of Deuces Wild in which no rank repeats: royals, straight flushes, flushes, straights.
//
// w deuces and 5 - w naturals of different ranks make a straight exactly when the naturals lie
// within one run of five ranks. So that none is counted twice, a set of naturals belongs to the one
// run that starts with its lowest rank, or, when none does, to the run from ten to ace; the ace is
// the lowest rank of the wheel. A straight flush that belongs to ten to ace in its entirety is a
// royal.
#ifndef TESSARIN_STRATEGY_DEUCES_RUNS_H
#define TESSARIN_STRATEGY_DEUCES_RUNS_H

#include "strategy/deuces_deck.h"
#include "strategy/rank_runs.h"

// Takes the runs out of the prepared deck, for all holds of the hand.
void PrepareDeucesRuns(const DeucesDeckState& deck);

// The runs that all held naturals lie in.
RunMask RunsThroughHeld(const DeucesHeldShape& held);

// Adds royals (words 12 and 10), straight flushes (8 and 7) and flushes (3) drawn to held naturals,
// one or more, of one suit; or, with none held, those of every suit. Leaves the draws of each
// number of deuces in the final hand in the scratch.
void CountSuitedDraws(DeucesDeckState& deck, std::int32_t hold, RunMask runs);
void CountSuitedDrawsOfAnySuit(DeucesDeckState& deck, std::int32_t hold);

// Adds straights (2): the draws to the given runs less the suited ones in the scratch. Comes after
// the suited draws, if there are any.
void CountStraightDraws(DeucesDeckState& deck, std::int32_t hold, RunMask runs);
void CountStraightDrawsToNothing(DeucesDeckState& deck, std::int32_t hold);

// What the scratch tells after the above, for w deuces in the final hand and a given draw of them:
// the draws of naturals that make a royal or straight flush, and any category of this room.
std::int32_t SuitedRunDraws(const DeucesDeckState& deck, std::int32_t finalDeuces);
std::int32_t RunOrFlushDraws(const DeucesDeckState& deck, std::int32_t finalDeuces);
void ClearRunScratch(DeucesDeckState& deck);

#endif
