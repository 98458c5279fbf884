// The best hold search: every hold of a hand, its exact outcomes and its expected return.
//
// All state here is program-wide: the one result table and the work areas of the enumerators. The
// search takes no lock. Where more than one thread searches, the caller holds the game lock
// (core/game_lock.h) from the call of FindBestHold to its last read of the result table.
#ifndef TESSARIN_STRATEGY_BEST_HOLD_H
#define TESSARIN_STRATEGY_BEST_HOLD_H

#include "core/games.h"
#include "strategy/hold_order.h"

// What one hold leads to. With R the game's row count, counts[0..R-1] are the draws that end in
// each paying row, counts[R] those that pay nothing, counts[R + 1] all draws; entries above are
// not used.
struct HoldResult {
    std::array<std::int32_t, 30> counts;
    HoldPattern pattern;
    double expectedReturn; // in coins of the current bet
};

// The 32 records of the last search, in hold order.
extern std::array<HoldResult, HoldCount> resultTable;

// Searches the five cards of the hand (only their codes, 0..52, are read) in the game at a bet of
// 1..5 coins, fills the result table and returns the index of the best record; equal returns go to
// the earlier one, and where none is above -1 the index is 0. Payouts may be any 32-bit value: the
// weighted sums wrap in 32 bits. For an unknown game id nothing is counted, record 31 is left with
// cleared counts, and the index returned is over whatever returns stand in the table.
std::int32_t FindBestHold(const CardRecord* hand, const GameDescriptor& game, std::int32_t coins);

// The search in each deck's games, all but the choice; called only by FindBestHold. Record 31's
// counts must be clear. A game that is not the front's gets no record of 0..30 written.
void ScoreStandardHolds(const CardRecord* hand, const GameDescriptor& game, std::int32_t coins);
void ScoreDeucesHolds(const CardRecord* hand, const GameDescriptor& game, std::int32_t coins);
void ScoreJokerHolds(const CardRecord* hand, const GameDescriptor& game, std::int32_t coins);

#endif
