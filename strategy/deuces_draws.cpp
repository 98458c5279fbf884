#include "strategy/deuces_draws.h"

#include <algorithm>

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

void ClearHold(DeucesWorkArea& area, std::int32_t hold) {
    std::fill_n(area.counters[hold], DeucesTotal, 0);
    area.counters[hold][DeucesTotal] = 1;
    std::fill_n(area.fiveOfAKindByRank[hold], RanksPerSuit, 0);
    std::fill_n(area.fourDeucesByRank[hold], RanksPerSuit, 0);
}

} // namespace

std::int32_t CountDeucesHolds(DeucesWorkArea* workArea) {
    DeucesHand hand;
    PrepareDeucesDeck(deckState, workArea);
    PrepareDeucesHand(hand, deckState);
    PrepareDeucesRuns(deckState, hand);
    std::uint32_t heldPlaces[HoldCount];
    FindHeldPlaces(hand, heldPlaces);
    for (std::int32_t hold = 0; hold < HoldCount; ++hold) {
        ClearHold(*workArea, hold);
        if (hold != HoldAllIndex) {
            const HoldPattern pattern = HoldOrder[static_cast<std::size_t>(hold)];
            ClassifyHeldCards(deckState, hand, heldPlaces[pattern])(deckState, hold);
        }
    }
    return 1;
}
