// The paytable row that five cards earn.
#ifndef TESSARIN_CORE_EVALUATE_H
#define TESSARIN_CORE_EVALUATE_H

#include "core/types.h"

// The row of the game that the five codes earn, the game's row count for nothing, NoHand for an
// id outside 0..5. Codes are 0..52 in any game: a joker's code in a game without the joker counts
// as a deuce of a fifth suit, and a code may stand twice; both are safe and give some row. Pure:
// keeps no state and allocates nothing.
HandRank EvaluateCodes(std::int32_t game, const Card* codes);

// The same over the codes of five card records.
HandRank Evaluate(std::int32_t game, const CardRecord* hand);

#endif
