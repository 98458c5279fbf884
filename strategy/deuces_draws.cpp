#include "strategy/deuces_draws.h"

#include <cstring>

#include "strategy/deuces_deck.h"
#include "strategy/deuces_runs.h"

namespace {

DeucesDeckState deckState;

// The places in the sorted hand of the cards that each pattern holds.
void FindHeldPlaces(const DeucesHand& hand, std::uint32_t* heldPlaces) {
    std::uint32_t placeOf[HandSize];
    for (std::size_t place = 0; place < HandSize; ++place) {
        placeOf[hand.positions[place]] = 1u << place;
    }
    heldPlaces[0] = 0;
    std::size_t patterns = 1;
    for (const std::uint32_t place : placeOf) {
        for (std::size_t pattern = 0; pattern < patterns; ++pattern) {
            heldPlaces[patterns + pattern] = heldPlaces[pattern] | place;
        }
        patterns *= 2;
    }
}

} // namespace

std::int32_t CountDeucesHolds(DeucesWorkArea* workArea) {
    DeucesHand hand;
    PrepareDeucesDeck(deckState, workArea);
    PrepareDeucesHand(hand, deckState);
    PrepareDeucesRuns(deckState, hand);
    std::uint32_t heldPlaces[HoldCount];
    FindHeldPlaces(hand, heldPlaces);
    std::memset(workArea->counters[HoldAllIndex], 0, sizeof workArea->counters[HoldAllIndex]);
    std::memset(workArea->fiveOfAKindByRank, 0, sizeof workArea->fiveOfAKindByRank);
    std::memset(workArea->fourDeucesByRank, 0, sizeof workArea->fourDeucesByRank);
    workArea->counters[HoldAllIndex][DeucesTotal] = 1;
    for (std::int32_t hold = 0; hold < HoldAllIndex; ++hold) {
        const HoldPattern pattern = HoldOrder[static_cast<std::size_t>(hold)];
        ClassifyHeldCards(deckState, hand, heldPlaces[pattern])(deckState, hold);
    }
    return 1;
}
