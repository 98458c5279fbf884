#include "strategy/deuces_deck.h"

#include "strategy/deuces_routines.h"

namespace {

constexpr DeucesDeckState FullDeck = [] {
    DeucesDeckState deck{};
    deck.cards = StandardDeckSize - static_cast<std::int32_t>(HandSize);
    for (std::int32_t& count : deck.rankCount) {
        count = SuitCount;
    }
    for (std::int32_t suit = 0; suit < SuitCount; ++suit) {
        deck.suitCount[suit] = RanksPerSuit - 1;
        deck.royalCount[suit] = RanksPerSuit - RankTen;
        for (std::int32_t& present : deck.present[suit]) {
            present = 1;
        }
    }
    deck.deuces = SuitCount;
    deck.histogram[SuitCount] = RanksPerSuit - 1;
    deck.heldDeuceSuit = -1;
    return deck;
}();

// A card that is not there, a joker or one dealt twice, takes nothing out.
void TakeCard(DeucesDeckState& deck, Card card) {
    const std::int32_t suit = SuitOf(card);
    const std::int32_t rank = RankOf(card);
    if (suit >= SuitCount || deck.present[suit][rank] == 0) {
        return;
    }
    deck.present[suit][rank] = 0;
    if (rank == RankDeuce) {
        --deck.deuces;
    } else {
        --deck.suitCount[suit];
        --deck.histogram[deck.rankCount[rank]];
        ++deck.histogram[deck.rankCount[rank] - 1];
    }
    --deck.rankCount[rank];
    if (rank >= RankTen) {
        --deck.royalCount[suit];
    }
}

// How the sorted naturals of a hold repeat: places among them of the singles, the pairs and the
// trips; place `None` is empty.
struct Repeats {
    std::int32_t distinct;
    std::int32_t singles[4];
    std::int32_t pairs[2];
    std::int32_t trips;
};

constexpr std::int32_t None = 4;

// By a one and then a bit for each two neighbours, the first pair of neighbours lowest: 1 when they
// are of one rank. Four of a rank are neither single, pair nor trips.
constexpr Repeats RepeatsByTies[16] = {
    {0, {None, None, None, None}, {None, None}, None}, // no natural
    {1, {0, None, None, None}, {None, None}, None},    // a
    {2, {0, 1, None, None}, {None, None}, None},       // a b
    {1, {None, None, None, None}, {0, None}, None},    // a a
    {3, {0, 1, 2, None}, {None, None}, None},          // a b c
    {2, {2, None, None, None}, {0, None}, None},       // a a b
    {2, {0, None, None, None}, {1, None}, None},       // b a a
    {1, {None, None, None, None}, {None, None}, 0},    // a a a
    {4, {0, 1, 2, 3}, {None, None}, None},             // a b c d
    {3, {2, 3, None, None}, {0, None}, None},          // a a b c
    {3, {0, 3, None, None}, {1, None}, None},          // b a a c
    {2, {3, None, None, None}, {None, None}, 0},       // a a a b
    {3, {0, 1, None, None}, {2, None}, None},          // b c a a
    {2, {None, None, None, None}, {0, 2}, None},       // a a b b
    {2, {0, None, None, None}, {None, None}, 1},       // b a a a
    {1, {None, None, None, None}, {None, None}, None}, // a a a a
};

// By deuces held and ties as above. A hold has four cards at most, so the rows shorten.
constexpr DeucesRoutine RoutineByShape[5][16] = {
    {CountDeucesDrawFive, CountOneSingle, CountTwoSingles, CountPair, CountThreeSingles,
     CountPairAndSingle, CountPairAndSingle, CountTrips, CountFourSingles, CountPairAndTwoSingles,
     CountPairAndTwoSingles, CountTripsOrTwoPair, CountPairAndTwoSingles, CountTripsOrTwoPair,
     CountTripsOrTwoPair, CountFourOfAKind},
    {CountOneDeuce, CountDeuceAndSingle, CountDeuceAndTwoSingles, CountDeuceAndPair,
     CountDeuceAndThreeSingles, CountDeucePairAndSingle, CountDeucePairAndSingle,
     CountDeuceAndTrips},
    {CountTwoDeuces, CountTwoDeucesAndSingle, CountTwoDeucesTwoSingles, CountTwoDeucesAndPair},
    {CountThreeDeuces, CountThreeDeucesAndSingle},
    {CountFourDeuces},
};

} // namespace

void PrepareDeucesDeck(DeucesDeckState& deck, DeucesWorkArea* workArea) {
    deck = FullDeck;
    deck.workArea = workArea;
    deck.countedArea = workArea;
    for (const Card card : workArea->codes) {
        TakeCard(deck, card);
    }
}

DeucesRoutine ClassifyHeldCards(DeucesDeckState& deck) {
    DeucesHeldShape& held = deck.held;
    std::int32_t deuces = 0;
    while (deuces < held.count && held.ranks[deuces] == RankDeuce) {
        ++deuces;
    }
    std::int32_t ranks[None + 1];
    std::uint32_t ties = deuces < held.count ? 1 : 0;
    held.suited = 1;
    for (std::int32_t i = deuces; i < held.count; ++i) {
        ranks[i - deuces] = held.ranks[i];
    }
    for (std::int32_t i = held.count - 1; i > deuces; --i) {
        ties = ties << 1 | (held.ranks[i] == held.ranks[i - 1] ? 1 : 0);
        held.suited &= held.suits[i] == held.suits[i - 1] ? 1 : 0;
    }
    ranks[None] = -1;

    const Repeats& repeats = RepeatsByTies[ties];
    held.distinct = repeats.distinct;
    for (std::int32_t i = 0; i < 4; ++i) {
        held.singles[i] = ranks[repeats.singles[i]];
    }
    held.pairs[0] = ranks[repeats.pairs[0]];
    held.pairs[1] = ranks[repeats.pairs[1]];
    held.trips = ranks[repeats.trips];
    held.deuces = deuces;
    deck.heldDeuceSuit = deuces > 0 ? held.suits[0] : -1;
    return RoutineByShape[deuces][ties];
}
