#include "strategy/deuces_routines.h"

#include "strategy/choose.h"
#include "strategy/deuces_runs.h"
#include "strategy/rank_classes.h"

// A final hand is w deuces and 5 - w naturals, and whether it is five, four or three of a kind or a
// full house is told by how the ranks of the naturals repeat. So the draws to a hold are counted
// apart for each w that can come of it: the ways to draw the deuces that are missing, times the
// ways to draw the naturals. One step below counts the naturals for one set of ranks held and one
// w; a shape that holds more deuces leaves out the first steps. Naturals of different ranks may be
// runs and flushes, which are counted first.

namespace {

std::int32_t Ways(std::int32_t n, std::int32_t k) {
    return SmallChoose[static_cast<std::size_t>(n)][static_cast<std::size_t>(k)];
}

// The deck and what is written for one hold.
struct Count {
    DeucesDeckState& deck;
    std::int32_t hold;
    std::int32_t* words;
    std::int32_t* fives;
    std::int32_t* fourDeuces;

    std::int32_t Left(std::int32_t rank) const { return deck.rankCount[rank]; }
    // The ways to draw the deuces that bring the hold to w.
    std::int32_t DeuceWays(std::int32_t w) const { return Ways(deck.deuces, w - deck.held.deuces); }
};

Count CountOf(DeucesDeckState& deck, std::int32_t hold) {
    DeucesWorkArea& area = *deck.countedArea;
    return {deck, hold, area.counters[hold], area.fiveOfAKindByRank[hold],
            area.fourDeucesByRank[hold]};
}

RankSums FreeRanks(const DeucesDeckState& deck) {
    return SumOverClasses(deck.histogram);
}

void AddFives(const Count& to, std::int32_t rank, std::int32_t draws) {
    to.words[DeucesFiveOfAKind] += draws;
    to.fives[rank] += draws;
}

void AddFourDeuces(const Count& to, std::int32_t rank, std::int32_t draws) {
    to.words[DeucesFourDeuces] += draws;
    to.fourDeuces[rank] += draws;
}

// Runs and flushes with the held singles, if they can be: every draw of one is to naturals that
// differ in rank.
void CountRunsAndFlushes(const Count& to) {
    DeucesDeckState& deck = to.deck;
    const RunMask runs = RunsThroughHeld(deck.held);
    if (deck.held.suited != 0) {
        CountSuitedDraws(deck, to.hold, runs);
    }
    if (runs != 0) {
        CountStraightDraws(deck, to.hold, runs);
    }
}

void CountRunsAndFlushesToNothing(const Count& to) {
    CountSuitedDrawsOfAnySuit(to.deck, to.hold);
    CountStraightDrawsToNothing(to.deck, to.hold);
}

// No natural held, 5 - w drawn.

void NothingNoDeuce(const Count& to, const RankSums& free) {
    // Four of a rank and a card of another.
    to.words[DeucesNaturalFourOfAKind] += to.deck.histogram[4] * (free.cards - 4);
    to.words[DeucesFullHouse] += TripsAndPair(free);
    to.words[DeucesThreeOfAKind] += TripsAndTwoSingles(free);
}

void NothingOneDeuce(const Count& to, const RankSums& free) {
    const std::int32_t ways = to.DeuceWays(1);
    to.words[DeucesFourOfAKind] += ways * TripsAndSingle(free);
    to.words[DeucesFullHouse] += ways * TwoPairs(free);
    to.words[DeucesThreeOfAKind] += ways * PairAndTwoSingles(free, free);
}

void NothingTwoDeuces(const Count& to, const RankSums& free) {
    const std::int32_t ways = to.DeuceWays(2);
    to.words[DeucesFourOfAKind] += ways * PairAndSingle(free, free);
    // Three ranks, less the runs and flushes.
    to.words[DeucesThreeOfAKind] += ways * (ThreeSingles(free) - RunOrFlushDraws(to.deck, 2));
}

void NothingThreeDeuces(const Count& to, const RankSums& free) {
    // Two ranks, less the straight flushes and royals.
    to.words[DeucesFourOfAKind] +=
        to.DeuceWays(3) * (TwoSingles(free) - SuitedRunDraws(to.deck, 3));
}

// Fives of every rank, 5 - w naturals of it and w deuces, and all four deuces with any natural. Of
// each rank only the number of its cards left matters.
void NothingFivesAndFourDeuces(const Count& to, const RankSums& free) {
    std::int32_t fives[5] = {};
    for (std::int32_t w = 1; w <= 3; ++w) {
        if (w >= to.deck.held.deuces) {
            for (std::int32_t left = 5 - w; left <= 4; ++left) {
                fives[left] += to.DeuceWays(w) * Ways(left, 5 - w);
            }
        }
    }
    const std::int32_t fourDeuces = to.DeuceWays(4);
    for (std::int32_t rank = 1; rank < RanksPerSuit; ++rank) {
        to.fives[rank] = fives[to.Left(rank)];
        to.fourDeuces[rank] = fourDeuces * to.Left(rank);
    }
    for (std::int32_t left = 2; left <= 4; ++left) {
        to.words[DeucesFiveOfAKind] += to.deck.histogram[left] * fives[left];
    }
    to.words[DeucesFourDeuces] += fourDeuces * free.cards;
}

// One rank a held, a left of it; 4 - w naturals drawn.

void SingleNoDeuce(const Count& to, const RankSums& free) {
    const std::int32_t a = to.Left(to.deck.held.singles[0]);
    // Three more of a and a loose card, or four of another rank.
    to.words[DeucesNaturalFourOfAKind] += Ways(a, 3) * free.cards + to.deck.histogram[4];
    // Two more of a and a pair, or one more and trips.
    to.words[DeucesFullHouse] += Ways(a, 2) * free.pairs + a * free.trips;
    // Two more of a and two loose cards, or trips and a loose card.
    to.words[DeucesThreeOfAKind] += Ways(a, 2) * TwoSingles(free) + TripsAndSingle(free);
}

void SingleOneDeuce(const Count& to, const RankSums& free) {
    const std::int32_t ways = to.DeuceWays(1);
    const std::int32_t rank = to.deck.held.singles[0];
    const std::int32_t a = to.Left(rank);
    AddFives(to, rank, ways * Ways(a, 3));
    // Two more of a and a loose card, or trips beside a.
    to.words[DeucesFourOfAKind] += ways * (Ways(a, 2) * free.cards + free.trips);
    // One more of a and a pair.
    to.words[DeucesFullHouse] += ways * a * free.pairs;
    // One more of a and two loose cards, or a pair and a loose card.
    to.words[DeucesThreeOfAKind] += ways * (a * TwoSingles(free) + PairAndSingle(free, free));
}

void SingleTwoDeuces(const Count& to, const RankSums& free) {
    const std::int32_t ways = to.DeuceWays(2);
    const std::int32_t rank = to.deck.held.singles[0];
    const std::int32_t a = to.Left(rank);
    AddFives(to, rank, ways * Ways(a, 2));
    // One more of a and a loose card, or a pair beside a.
    to.words[DeucesFourOfAKind] += ways * (a * free.cards + free.pairs);
    // Two loose cards, less the runs and flushes.
    to.words[DeucesThreeOfAKind] += ways * (TwoSingles(free) - RunOrFlushDraws(to.deck, 2));
}

void SingleThreeDeuces(const Count& to, const RankSums& free) {
    const std::int32_t ways = to.DeuceWays(3);
    const std::int32_t rank = to.deck.held.singles[0];
    AddFives(to, rank, ways * to.Left(rank));
    // A loose card, less those that make a straight flush or royal.
    to.words[DeucesFourOfAKind] += ways * (free.cards - SuitedRunDraws(to.deck, 3));
}

void SingleFourDeuces(const Count& to) {
    AddFourDeuces(to, to.deck.held.singles[0], to.DeuceWays(4));
}

// Two ranks a and b held, 3 - w naturals drawn.

void TwoSinglesNoDeuce(const Count& to, const RankSums& free) {
    const std::int32_t a = to.Left(to.deck.held.singles[0]);
    const std::int32_t b = to.Left(to.deck.held.singles[1]);
    // Three more of one.
    to.words[DeucesNaturalFourOfAKind] += Ways(a, 3) + Ways(b, 3);
    // Two more of one and one more of the other.
    to.words[DeucesFullHouse] += Ways(a, 2) * b + a * Ways(b, 2);
    // Two more of one and a loose card, or trips beside both.
    to.words[DeucesThreeOfAKind] += (Ways(a, 2) + Ways(b, 2)) * free.cards + free.trips;
}

void TwoSinglesOneDeuce(const Count& to, const RankSums& free) {
    const std::int32_t ways = to.DeuceWays(1);
    const std::int32_t a = to.Left(to.deck.held.singles[0]);
    const std::int32_t b = to.Left(to.deck.held.singles[1]);
    // Two more of one.
    to.words[DeucesFourOfAKind] += ways * (Ways(a, 2) + Ways(b, 2));
    // One more of each.
    to.words[DeucesFullHouse] += ways * a * b;
    // One more of one and a loose card, or a pair beside both.
    to.words[DeucesThreeOfAKind] += ways * ((a + b) * free.cards + free.pairs);
}

void TwoSinglesTwoDeuces(const Count& to, const RankSums& free) {
    const std::int32_t ways = to.DeuceWays(2);
    const std::int32_t a = to.Left(to.deck.held.singles[0]);
    const std::int32_t b = to.Left(to.deck.held.singles[1]);
    // One more of either.
    to.words[DeucesFourOfAKind] += ways * (a + b);
    // A loose card, less the runs and flushes.
    to.words[DeucesThreeOfAKind] += ways * (free.cards - RunOrFlushDraws(to.deck, 2));
}

void TwoSinglesThreeDeuces(const Count& to) {
    // The only draw, unless it makes a straight flush or royal.
    to.words[DeucesFourOfAKind] += to.DeuceWays(3) * (1 - SuitedRunDraws(to.deck, 3));
}

// Three ranks a, b and c held, 2 - w naturals drawn.

void ThreeSinglesNoDeuce(const Count& to) {
    // Two more of one.
    for (std::int32_t i = 0; i < 3; ++i) {
        to.words[DeucesThreeOfAKind] += Ways(to.Left(to.deck.held.singles[i]), 2);
    }
}

void ThreeSinglesOneDeuce(const Count& to) {
    // One more of one.
    for (std::int32_t i = 0; i < 3; ++i) {
        to.words[DeucesThreeOfAKind] += to.DeuceWays(1) * to.Left(to.deck.held.singles[i]);
    }
}

void ThreeSinglesTwoDeuces(const Count& to) {
    // The only draw, unless it makes a run or flush.
    to.words[DeucesThreeOfAKind] += to.DeuceWays(2) * (1 - RunOrFlushDraws(to.deck, 2));
}

// A pair or trips of a held, with or without deuces: no run and no flush can come of it, so the
// drawn cards that count are more of a, deuces, and pairs or trips among the free ranks.

} // namespace

void CountDeucesDrawFive(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    CountRunsAndFlushesToNothing(to);
    NothingFivesAndFourDeuces(to, free);
    NothingNoDeuce(to, free);
    NothingOneDeuce(to, free);
    NothingTwoDeuces(to, free);
    NothingThreeDeuces(to, free);
}

void CountOneDeuce(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    CountRunsAndFlushesToNothing(to);
    NothingFivesAndFourDeuces(to, free);
    NothingOneDeuce(to, free);
    NothingTwoDeuces(to, free);
    NothingThreeDeuces(to, free);
}

void CountOneSingle(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    CountRunsAndFlushes(to);
    SingleNoDeuce(to, free);
    SingleOneDeuce(to, free);
    SingleTwoDeuces(to, free);
    SingleThreeDeuces(to, free);
    SingleFourDeuces(to);
}

void CountTwoDeuces(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    CountRunsAndFlushesToNothing(to);
    NothingFivesAndFourDeuces(to, free);
    NothingTwoDeuces(to, free);
    NothingThreeDeuces(to, free);
}

void CountDeuceAndSingle(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    CountRunsAndFlushes(to);
    SingleOneDeuce(to, free);
    SingleTwoDeuces(to, free);
    SingleThreeDeuces(to, free);
    SingleFourDeuces(to);
}

void CountPair(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    const std::int32_t rank = deck.held.pairs[0];
    const std::int32_t a = to.Left(rank);
    const std::int32_t D = deck.deuces;
    // Both cards of a that are left and a deuce, or fewer of a and more deuces.
    AddFives(to, rank, Ways(a, 2) * D + a * Ways(D, 2) + Ways(D, 3));
    // Two more of a, or a deuce for one or both, and a loose card.
    to.words[DeucesNaturalFourOfAKind] += Ways(a, 2) * free.cards;
    to.words[DeucesFourOfAKind] += (a * D + Ways(D, 2)) * free.cards;
    // Trips of a and a pair, or trips beside the pair.
    to.words[DeucesFullHouse] += (a + D) * free.pairs + free.trips;
    // Trips of a and two loose cards.
    to.words[DeucesThreeOfAKind] += (a + D) * TwoSingles(free);
}

void CountTwoSingles(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    CountRunsAndFlushes(to);
    TwoSinglesNoDeuce(to, free);
    TwoSinglesOneDeuce(to, free);
    TwoSinglesTwoDeuces(to, free);
    TwoSinglesThreeDeuces(to);
}

void CountThreeDeuces(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    CountRunsAndFlushesToNothing(to);
    NothingFivesAndFourDeuces(to, free);
    NothingThreeDeuces(to, free);
}

void CountTwoDeucesAndSingle(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    CountRunsAndFlushes(to);
    SingleTwoDeuces(to, free);
    SingleThreeDeuces(to, free);
    SingleFourDeuces(to);
}

void CountDeuceAndPair(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    const std::int32_t rank = deck.held.pairs[0];
    const std::int32_t a = to.Left(rank);
    const std::int32_t D = deck.deuces;
    // Two of the cards of a and the deuces that are left.
    AddFives(to, rank, Ways(a, 2) + a * D + Ways(D, 2));
    // One of them and a loose card.
    to.words[DeucesFourOfAKind] += (a + D) * free.cards;
    // A pair beside the trips.
    to.words[DeucesFullHouse] += free.pairs;
    // Two loose cards.
    to.words[DeucesThreeOfAKind] += TwoSingles(free);
}

void CountDeuceAndTwoSingles(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    CountRunsAndFlushes(to);
    TwoSinglesOneDeuce(to, free);
    TwoSinglesTwoDeuces(to, free);
    TwoSinglesThreeDeuces(to);
}

void CountTrips(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    const std::int32_t rank = deck.held.trips;
    const std::int32_t a = to.Left(rank);
    const std::int32_t D = deck.deuces;
    // The last of a and a deuce, or two deuces.
    AddFives(to, rank, a * D + Ways(D, 2));
    // One of them and a loose card.
    to.words[DeucesNaturalFourOfAKind] += a * free.cards;
    to.words[DeucesFourOfAKind] += D * free.cards;
    to.words[DeucesFullHouse] += free.pairs;
    // Two loose cards.
    to.words[DeucesThreeOfAKind] += TwoSingles(free);
}

void CountPairAndSingle(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    const std::int32_t a = to.Left(deck.held.pairs[0]);
    const std::int32_t b = to.Left(deck.held.singles[0]);
    const std::int32_t D = deck.deuces;
    // Two more of a, or a deuce for one or both.
    to.words[DeucesNaturalFourOfAKind] += Ways(a, 2);
    to.words[DeucesFourOfAKind] += a * D + Ways(D, 2);
    // A third of a and a second of b, or two more of b.
    to.words[DeucesFullHouse] += (a + D) * b + Ways(b, 2);
    // A third of a and a loose card.
    to.words[DeucesThreeOfAKind] += (a + D) * free.cards;
}

void CountThreeSingles(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    CountRunsAndFlushes(to);
    ThreeSinglesNoDeuce(to);
    ThreeSinglesOneDeuce(to);
    ThreeSinglesTwoDeuces(to);
}

void CountFourDeuces(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    to.words[DeucesFourDeuces] = deck.cards;
    for (std::int32_t rank = 1; rank < RanksPerSuit; ++rank) {
        to.fourDeuces[rank] = to.Left(rank);
    }
}

void CountThreeDeucesAndSingle(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    CountRunsAndFlushes(to);
    SingleThreeDeuces(to, FreeRanks(deck));
    SingleFourDeuces(to);
}

void CountTwoDeucesAndPair(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const std::int32_t rank = deck.held.pairs[0];
    const std::int32_t fives = to.Left(rank) + deck.deuces;
    AddFives(to, rank, fives);
    // Any other card leaves four of a kind.
    to.words[DeucesFourOfAKind] += deck.cards - fives;
}

void CountTwoDeucesTwoSingles(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const RankSums free = FreeRanks(deck);
    CountRunsAndFlushes(to);
    TwoSinglesTwoDeuces(to, free);
    TwoSinglesThreeDeuces(to);
}

void CountDeuceAndTrips(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const std::int32_t rank = deck.held.trips;
    const std::int32_t fives = to.Left(rank) + deck.deuces;
    AddFives(to, rank, fives);
    // Any other card leaves four of a kind.
    to.words[DeucesFourOfAKind] += deck.cards - fives;
}

void CountDeucePairAndSingle(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    const std::int32_t fours = to.Left(deck.held.pairs[0]) + deck.deuces;
    const std::int32_t b = to.Left(deck.held.singles[0]);
    to.words[DeucesFourOfAKind] += fours;
    to.words[DeucesFullHouse] += b;
    // Any other card leaves the trips.
    to.words[DeucesThreeOfAKind] += deck.cards - fours - b;
}

void CountDeuceAndThreeSingles(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    CountRunsAndFlushes(to);
    ThreeSinglesOneDeuce(to);
    ThreeSinglesTwoDeuces(to);
}

void CountFourOfAKind(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    AddFives(to, deck.held.ranks[0], deck.deuces);
    // Any other card leaves the four.
    to.words[DeucesNaturalFourOfAKind] += deck.cards - deck.deuces;
}

void CountTripsOrTwoPair(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    if (deck.held.pairs[0] >= 0) {
        // A third of either pair; everything else pays nothing.
        to.words[DeucesFullHouse] +=
            to.Left(deck.held.pairs[0]) + to.Left(deck.held.pairs[1]) + deck.deuces;
        return;
    }
    const std::int32_t a = to.Left(deck.held.trips);
    const std::int32_t b = to.Left(deck.held.singles[0]);
    to.words[DeucesNaturalFourOfAKind] += a;
    to.words[DeucesFourOfAKind] += deck.deuces;
    to.words[DeucesFullHouse] += b;
    // Any other card leaves the trips.
    to.words[DeucesThreeOfAKind] += deck.cards - a - b - deck.deuces;
}

void CountPairAndTwoSingles(DeucesDeckState& deck, std::int32_t hold) {
    const Count to = CountOf(deck, hold);
    // A third of the pair; a card that pairs a single makes two pair, which pays nothing.
    to.words[DeucesThreeOfAKind] += to.Left(deck.held.pairs[0]) + deck.deuces;
}

void CountFourSingles(DeucesDeckState& deck, std::int32_t hold) {
    CountRunsAndFlushes(CountOf(deck, hold));
}
