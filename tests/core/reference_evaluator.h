// A second opinion on every hand: natural hands told apart by sums of packed counts, and a wild
// card by trying every card in its place and keeping the best row.
#ifndef TESSARIN_TESTS_CORE_REFERENCE_EVALUATOR_H
#define TESSARIN_TESTS_CORE_REFERENCE_EVALUATOR_H

#include "core/types.h"

// The row of a hand without wild cards: in Joker Wild no joker, in Deuces Wild no deuce. Five codes
// of 0..51.
HandRank NaturalRow(GameId game, const Card* codes);

// The best row that `count` natural cards (0..4) reach with 5 - count wild cards, each of which may
// be any card, also one that is there already. Deuces Wild and Joker Wild only.
HandRank BestWildRow(GameId game, const Card* naturals, std::size_t count);

// The row of any hand of the game's own deck.
HandRank ReferenceRow(GameId game, const Card* codes);

#endif
