#include "strategy/deuces_draws.h"

#include <cstring>

#include "strategy/choose.h"
#include "strategy/deuces_deck.h"
#include "strategy/deuces_runs.h"

namespace {

DeucesDeckState deckState;

// The hand in rank order, so that the held cards of every hold come sorted.
struct SortedHand {
    std::int32_t ranks[HandSize];
    std::int32_t suits[HandSize];
    std::int32_t positions[HandSize];
};

SortedHand SortHand(const Card* codes) {
    SortedHand hand{};
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(HandSize); ++i) {
        std::int32_t at = i;
        for (; at > 0 && hand.ranks[at - 1] > RankOf(codes[i]); --at) {
            hand.ranks[at] = hand.ranks[at - 1];
            hand.suits[at] = hand.suits[at - 1];
            hand.positions[at] = hand.positions[at - 1];
        }
        hand.ranks[at] = RankOf(codes[i]);
        hand.suits[at] = SuitOf(codes[i]);
        hand.positions[at] = i;
    }
    return hand;
}

void GatherHeldCards(DeucesHeldShape& held, const SortedHand& hand, HoldPattern pattern) {
    held.count = 0;
    for (std::size_t i = 0; i < HandSize; ++i) {
        held.ranks[held.count] = hand.ranks[i];
        held.suits[held.count] = hand.suits[i];
        held.count += pattern >> hand.positions[i] & 1;
    }
}

// A drawn card of a held rank makes other hands than one of a free rank.
void TakeHeldRanks(DeucesDeckState& deck) {
    const DeucesHeldShape& held = deck.held;
    for (std::int32_t i = held.deuces; i < held.count; ++i) {
        if (i == held.deuces || held.ranks[i] != held.ranks[i - 1]) {
            --deck.histogram[deck.rankCount[held.ranks[i]]];
        }
    }
}

constexpr std::int32_t TotalDraws[HandSize] = {Choose(47, 5), Choose(47, 4), Choose(47, 3),
                                               Choose(47, 2), Choose(47, 1)};

void Finish(std::int32_t* words, std::int32_t held) {
    std::int32_t paid = 0;
    for (std::int32_t word = DeucesThreeOfAKind; word < DeucesTotal; ++word) {
        paid += words[word];
    }
    words[DeucesTotal] = TotalDraws[held];
    words[DeucesNoPay] = TotalDraws[held] - paid;
}

} // namespace

std::int32_t CountDeucesHolds(DeucesWorkArea* workArea) {
    DeucesDeckState& deck = deckState;
    PrepareDeucesDeck(deck, workArea);
    PrepareDeucesRuns(deck);
    const SortedHand hand = SortHand(workArea->codes);
    std::memset(workArea->counters, 0, sizeof workArea->counters);
    std::memset(workArea->fiveOfAKindByRank, 0, sizeof workArea->fiveOfAKindByRank);
    std::memset(workArea->fourDeucesByRank, 0, sizeof workArea->fourDeucesByRank);
    workArea->counters[HoldAllIndex][DeucesTotal] = 1;

    std::int32_t histogram[5];
    std::memcpy(histogram, deck.histogram, sizeof histogram);
    for (std::int32_t hold = 0; hold < HoldAllIndex; ++hold) {
        GatherHeldCards(deck.held, hand, HoldOrder[static_cast<std::size_t>(hold)]);
        std::memcpy(deck.histogram, histogram, sizeof histogram);
        ClearRunScratch(deck);
        const DeucesRoutine count = ClassifyHeldCards(deck);
        TakeHeldRanks(deck);
        count(deck, hold);
        Finish(workArea->counters[hold], deck.held.count);
    }
    return 1;
}
