// What a Deuces Wild count is made from: the deck that is left, and the shape of the held cards.
#ifndef TESSARIN_STRATEGY_DEUCES_DECK_H
#define TESSARIN_STRATEGY_DEUCES_DECK_H

#include "strategy/deuces_draws.h"

inline constexpr std::int32_t DeucesScratchWords = 52;

// The held cards, sorted. Ranks that are not there are -1.
struct DeucesHeldShape {
    std::int32_t ranks[HandSize]; // the first `count`, ascending, deuces first
    std::int32_t suits[HandSize]; // beside them
    std::int32_t count;
    std::int32_t distinct;   // natural ranks held
    std::int32_t singles[4]; // natural ranks held once, ascending
    std::int32_t pairs[2];   // natural ranks held twice, ascending
    std::int32_t trips;      // the natural rank held three times
    std::int32_t suited;     // 1 when no two naturals are of different suits
    std::int32_t deuces;
};

// The deck without the five dealt cards, held or not: a discard cannot come back.
struct DeucesDeckState {
    DeucesWorkArea* workArea;
    std::int32_t cards;                            // 47
    std::int32_t rankCount[RanksPerSuit];          // cards left of each rank
    std::int32_t suitCount[SuitCount];             // naturals left of each suit
    std::int32_t deuces;                           // deuces left
    std::int32_t histogram[5];                     // natural ranks with 0..4 cards left
    std::int32_t present[SuitCount][RanksPerSuit]; // 1 while the card is left
    std::int32_t royalCount[SuitCount];            // tens to aces left of each suit
    DeucesWorkArea* countedArea;                   // where the counting routines write
    std::int32_t heldDeuceSuit;                    // -1 when no deuce is held
    DeucesHeldShape held;                          // of the hold being counted
    std::int32_t scratch[DeucesScratchWords];      // partial sums of one hold
};

// Sets the deck up for the work area's hand, with nothing held and the scratch cleared.
void PrepareDeucesDeck(DeucesDeckState& deck, DeucesWorkArea* workArea);

// Counts the draws of one hold; the shape is set and the held ranks are out of the histogram.
using DeucesRoutine = void (*)(DeucesDeckState& deck, std::int32_t hold);

// Fills the rest of the shape from its ranks, suits and count (0..4 cards, ranks ascending) and the
// suit of the held deuce, and returns the routine that counts the draws to that shape.
DeucesRoutine ClassifyHeldCards(DeucesDeckState& deck);

#endif
