// What a Deuces Wild count is made from: the deck that is left, and the shape of the held cards.
#ifndef TESSARIN_STRATEGY_DEUCES_DECK_H
#define TESSARIN_STRATEGY_DEUCES_DECK_H

#include "strategy/deuces_draws.h"
#include "strategy/rank_classes.h"

// The held cards in rank order, deuces first. Ranks that are not there are -1.
struct DeucesHeldShape {
    std::int32_t ranks[HandSize]; // the first `count`
    std::int32_t suits[HandSize]; // beside them
    std::int32_t count;
    std::int32_t distinct;   // natural ranks held
    std::int32_t singles[4]; // natural ranks held once, ascending
    std::int32_t pairs[2];   // natural ranks held twice, ascending
    std::int32_t trips;      // the natural rank held three times, not four
    std::int32_t suited;     // 1 when no two naturals are of different suits
    std::int32_t deuces;
};

// Partial sums of the hold being counted, in a room of 52 words.
struct DeucesScratch {
    RankSums free;           // over the natural ranks that are not held
    std::uint32_t heldRanks; // the set of dealt natural ranks that are held
    std::int32_t unused[47];
};
static_assert(sizeof(DeucesScratch) == 52 * sizeof(std::int32_t));

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
    std::int32_t heldDeuceSuit;                    // of the first deuce held, -1 when there is none
    DeucesHeldShape held;
    DeucesScratch scratch;
};

inline constexpr std::size_t DealtSets = std::size_t{1} << HandSize;

// The dealt hand in rank order, so that the held cards of every hold come sorted. Its natural ranks
// are numbered upwards; a set of them has a bit for each number.
struct DeucesHand {
    std::int32_t ranks[HandSize + 1]; // -1 after the last, for what a shape has not
    std::int32_t suits[HandSize + 1];
    std::int32_t positions[HandSize];       // where each card stands in the hand as dealt
    std::uint32_t otherSuits[HandSize + 1]; // the places of the naturals that differ in suit
    std::uint32_t
        ties; // of the naturals: a one, above a bit for each two neighbours, 1 if of a rank
    std::int32_t distinct;               // natural ranks
    std::int32_t naturalRanks[HandSize]; // by number
    RankSums free[DealtSets];            // over the natural ranks but a set of the dealt ones
};

// Sets the deck up for the work area's hand, with nothing held.
void PrepareDeucesDeck(DeucesDeckState& deck, DeucesWorkArea* workArea);

// Sorts the hand of the prepared deck.
void PrepareDeucesHand(DeucesHand& hand, const DeucesDeckState& deck);

// Counts the draws of one hold, whose cards are held in the deck.
using DeucesRoutine = void (*)(DeucesDeckState& deck, std::int32_t hold);

// Holds the cards at these places of the sorted hand, four at most, and returns the routine for
// their shape. Of the deck this sets the shape, the suit of the held deuce and the scratch.
DeucesRoutine ClassifyHeldCards(DeucesDeckState& deck, const DeucesHand& hand,
                                std::uint32_t heldPlaces);

#endif
