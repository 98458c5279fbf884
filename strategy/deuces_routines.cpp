#include "strategy/deuces_routines.h"

#include "strategy/choose.h"
#include "strategy/deuces_runs.h"
#include "strategy/rank_classes.h"

// A final hand is w deuces and 5 - w naturals, and whether it is five, four or three of a kind or a
// full house is told by how the ranks of the naturals repeat. So the draws to a hold are counted
// apart for each w that can come of it: the ways to draw the deuces that are missing, times the
// ways to draw the naturals. Where only w differs, shapes share a count and those with more deuces
// leave out its first steps.

namespace {

// The draws of one hold by category.
struct Draws {
    std::int32_t threeOfAKind = 0;
    std::int32_t straight = 0;
    std::int32_t flush = 0;
    std::int32_t fullHouse = 0;
    std::int32_t fourOfAKind = 0;
    std::int32_t naturalFourOfAKind = 0;
    std::int32_t straightFlush = 0;
    std::int32_t naturalStraightFlush = 0;
    std::int32_t fiveOfAKind = 0;
    std::int32_t wildRoyal = 0;
    std::int32_t fourDeuces = 0;
    std::int32_t naturalRoyal = 0;
};

std::int32_t Ways(std::int32_t n, std::int32_t k) {
    return SmallChoose[static_cast<std::size_t>(n)][static_cast<std::size_t>(k)];
}

std::int32_t Left(const DeucesDeckState& deck, std::int32_t rank) {
    return deck.rankCount[rank];
}

// Adds the runs and flushes that come of drawing so many naturals and, in so many ways, the deuces
// that make w; returns the draws of naturals that make one. With three deuces, four of a kind is
// more than a flush or a straight.
inline std::int32_t AddRuns(Draws& draws, std::int32_t w, std::int32_t ways, const RunDraws& runs) {
    (w == 0 ? draws.naturalRoyal : draws.wildRoyal) += ways * runs.royals;
    (w == 0 ? draws.naturalStraightFlush : draws.straightFlush) += ways * runs.straightFlushes;
    if (w == 3) {
        return runs.royals + runs.straightFlushes;
    }
    draws.flush += ways * runs.flushes;
    draws.straight += ways * runs.straights;
    return runs.royals + runs.straightFlushes + runs.flushes + runs.straights;
}

inline std::int32_t AddHeldRuns(Draws& draws, std::int32_t w, std::int32_t ways,
                                const HeldRuns& runs, std::int32_t naturals) {
    if (runs.suited) {
        return AddRuns(draws, w, ways, DrawRuns(runs, naturals));
    }
    const std::int32_t straights = w == 3 ? 0 : WaysToDraw(runs.straights, naturals);
    draws.straight += ways * straights;
    return straights;
}

constexpr std::int32_t TotalDraws[HandSize] = {Choose(47, 5), Choose(47, 4), Choose(47, 3),
                                               Choose(47, 2), Choose(47, 1)};

// What is left over pays nothing.
inline void Finish(DeucesDeckState& deck, std::int32_t hold, const Draws& draws,
                   std::int32_t held) {
    const std::int32_t total = TotalDraws[held];
    std::int32_t* words = deck.countedArea->counters[hold];
    words[DeucesNoPay] = total - draws.threeOfAKind - draws.straight - draws.flush -
                         draws.fullHouse - draws.fourOfAKind - draws.naturalFourOfAKind -
                         draws.straightFlush - draws.naturalStraightFlush - draws.fiveOfAKind -
                         draws.wildRoyal - draws.fourDeuces - draws.naturalRoyal;
    words[DeucesThreeOfAKind] = draws.threeOfAKind;
    words[DeucesStraight] = draws.straight;
    words[DeucesFlush] = draws.flush;
    words[DeucesFullHouse] = draws.fullHouse;
    words[DeucesFourOfAKind] = draws.fourOfAKind;
    words[DeucesNaturalFourOfAKind] = draws.naturalFourOfAKind;
    words[DeucesStraightFlush] = draws.straightFlush;
    words[DeucesNaturalStraightFlush] = draws.naturalStraightFlush;
    words[DeucesFiveOfAKind] = draws.fiveOfAKind;
    words[DeucesWildRoyal] = draws.wildRoyal;
    words[DeucesFourDeuces] = draws.fourDeuces;
    words[DeucesNaturalRoyal] = draws.naturalRoyal;
    words[DeucesTotal] = total;
}

// Fives of every rank, 5 - w naturals of it and w deuces, and all four deuces with any natural. Of
// each rank only the number of its cards left matters.
void CountFivesAndFourDeuces(DeucesDeckState& deck, std::int32_t hold, Draws& draws,
                             std::int32_t heldDeuces) {
    std::int32_t fives[5] = {};
    for (std::int32_t w = heldDeuces > 1 ? heldDeuces : 1; w <= 3; ++w) {
        for (std::int32_t left = 5 - w; left <= 4; ++left) {
            fives[left] += Ways(deck.deuces, w - heldDeuces) * Ways(left, 5 - w);
        }
    }
    const std::int32_t fourDeuces = Ways(deck.deuces, 4 - heldDeuces);
    for (std::int32_t rank = 1; rank < RanksPerSuit; ++rank) {
        const std::int32_t left = Left(deck, rank);
        deck.countedArea->fiveOfAKindByRank[hold][rank] = fives[left];
        deck.countedArea->fourDeucesByRank[hold][rank] = fourDeuces * left;
    }
    for (std::int32_t left = 2; left <= 4; ++left) {
        draws.fiveOfAKind += deck.histogram[left] * fives[left];
    }
    draws.fourDeuces += fourDeuces * deck.scratch.free.cards;
}

// No natural held: 5 - w drawn.
inline void CountToNothing(DeucesDeckState& deck, std::int32_t hold, std::int32_t heldDeuces) {
    const RankSums free = deck.scratch.free;
    const std::int32_t deuces = deck.deuces;
    Draws draws;
    CountFivesAndFourDeuces(deck, hold, draws, heldDeuces);
    if (heldDeuces == 0) {
        AddRuns(draws, 0, 1, DrawRunsToNothing(5));
        // Four of a rank and a card of another.
        draws.naturalFourOfAKind += free.quads * (free.cards - 4);
        draws.fullHouse += TripsAndPair(free);
        draws.threeOfAKind += TripsAndTwoSingles(free);
    }
    if (heldDeuces <= 1) {
        const std::int32_t ways = Ways(deuces, 1 - heldDeuces);
        AddRuns(draws, 1, ways, DrawRunsToNothing(4));
        draws.fourOfAKind += ways * TripsAndSingle(free);
        draws.fullHouse += ways * TwoPairs(free);
        draws.threeOfAKind += ways * PairAndTwoSingles(free, free);
    }
    if (heldDeuces <= 2) {
        const std::int32_t ways = Ways(deuces, 2 - heldDeuces);
        const std::int32_t better = AddRuns(draws, 2, ways, DrawRunsToNothing(3));
        draws.fourOfAKind += ways * PairAndSingle(free, free);
        // Three ranks, less the runs and flushes.
        draws.threeOfAKind += ways * (ThreeSingles(free) - better);
    }
    const std::int32_t ways = Ways(deuces, 3 - heldDeuces);
    const std::int32_t better = AddRuns(draws, 3, ways, DrawRunsToNothing(2));
    // Two ranks, less the straight flushes and royals.
    draws.fourOfAKind += ways * (TwoSingles(free) - better);
    Finish(deck, hold, draws, heldDeuces);
}

// One rank held, a left of it: 4 - w naturals drawn.
inline void CountToSingle(DeucesDeckState& deck, std::int32_t hold, std::int32_t heldDeuces) {
    const HeldRuns runs = RunsOfHeld(deck);
    const RankSums free = deck.scratch.free;
    const std::int32_t deuces = deck.deuces;
    const std::int32_t rank = deck.held.singles[0];
    const std::int32_t a = Left(deck, rank);
    Draws draws;
    if (heldDeuces == 0) {
        AddHeldRuns(draws, 0, 1, runs, 4);
        // Three more of a and a loose card, or four of another rank.
        draws.naturalFourOfAKind += Ways(a, 3) * free.cards + free.quads;
        // Two more of a and a pair, or one more and trips.
        draws.fullHouse += Ways(a, 2) * free.pairs + a * free.trips;
        // Two more of a and two loose cards, or trips and a loose card.
        draws.threeOfAKind += Ways(a, 2) * TwoSingles(free) + TripsAndSingle(free);
    }
    if (heldDeuces <= 1) {
        const std::int32_t ways = Ways(deuces, 1 - heldDeuces);
        AddHeldRuns(draws, 1, ways, runs, 3);
        draws.fiveOfAKind += ways * Ways(a, 3);
        // Two more of a and a loose card, or trips beside a.
        draws.fourOfAKind += ways * (Ways(a, 2) * free.cards + free.trips);
        // One more of a and a pair.
        draws.fullHouse += ways * a * free.pairs;
        // One more of a and two loose cards, or a pair and a loose card.
        draws.threeOfAKind += ways * (a * TwoSingles(free) + PairAndSingle(free, free));
    }
    if (heldDeuces <= 2) {
        const std::int32_t ways = Ways(deuces, 2 - heldDeuces);
        const std::int32_t better = AddHeldRuns(draws, 2, ways, runs, 2);
        draws.fiveOfAKind += ways * Ways(a, 2);
        // One more of a and a loose card, or a pair beside a.
        draws.fourOfAKind += ways * (a * free.cards + free.pairs);
        // Two loose cards, less the runs and flushes.
        draws.threeOfAKind += ways * (TwoSingles(free) - better);
    }
    const std::int32_t ways = Ways(deuces, 3 - heldDeuces);
    const std::int32_t better = AddHeldRuns(draws, 3, ways, runs, 1);
    draws.fiveOfAKind += ways * a;
    // A loose card, less those that make a straight flush or royal.
    draws.fourOfAKind += ways * (free.cards - better);
    draws.fourDeuces += Ways(deuces, 4 - heldDeuces);
    deck.countedArea->fiveOfAKindByRank[hold][rank] = draws.fiveOfAKind;
    deck.countedArea->fourDeucesByRank[hold][rank] = draws.fourDeuces;
    Finish(deck, hold, draws, heldDeuces + 1);
}

// Two ranks held, a and b left of them: 3 - w naturals drawn.
inline void CountToTwoSingles(DeucesDeckState& deck, std::int32_t hold, std::int32_t heldDeuces) {
    const HeldRuns runs = RunsOfHeld(deck);
    const RankSums free = deck.scratch.free;
    const std::int32_t deuces = deck.deuces;
    const std::int32_t a = Left(deck, deck.held.singles[0]);
    const std::int32_t b = Left(deck, deck.held.singles[1]);
    const std::int32_t twoOfOne = Ways(a, 2) + Ways(b, 2);
    Draws draws;
    if (heldDeuces == 0) {
        AddHeldRuns(draws, 0, 1, runs, 3);
        // Three more of one.
        draws.naturalFourOfAKind += Ways(a, 3) + Ways(b, 3);
        // Two more of one and one more of the other.
        draws.fullHouse += Ways(a, 2) * b + a * Ways(b, 2);
        // Two more of one and a loose card, or trips beside both.
        draws.threeOfAKind += twoOfOne * free.cards + free.trips;
    }
    if (heldDeuces <= 1) {
        const std::int32_t ways = Ways(deuces, 1 - heldDeuces);
        AddHeldRuns(draws, 1, ways, runs, 2);
        draws.fourOfAKind += ways * twoOfOne;
        // One more of each.
        draws.fullHouse += ways * a * b;
        // One more of one and a loose card, or a pair beside both.
        draws.threeOfAKind += ways * ((a + b) * free.cards + free.pairs);
    }
    const std::int32_t ways = Ways(deuces, 2 - heldDeuces);
    const std::int32_t better = AddHeldRuns(draws, 2, ways, runs, 1);
    // One more of either.
    draws.fourOfAKind += ways * (a + b);
    // A loose card, less the runs and flushes.
    draws.threeOfAKind += ways * (free.cards - better);
    // Three deuces: the only draw, unless it makes a straight flush or royal.
    const std::int32_t lastWays = Ways(deuces, 3 - heldDeuces);
    draws.fourOfAKind += lastWays * (1 - AddHeldRuns(draws, 3, lastWays, runs, 0));
    Finish(deck, hold, draws, heldDeuces + 2);
}

// Three ranks held, a, b and c left of them: 2 - w naturals drawn.
inline void CountToThreeSingles(DeucesDeckState& deck, std::int32_t hold, std::int32_t heldDeuces) {
    const HeldRuns runs = RunsOfHeld(deck);
    const std::int32_t deuces = deck.deuces;
    const std::int32_t a = Left(deck, deck.held.singles[0]);
    const std::int32_t b = Left(deck, deck.held.singles[1]);
    const std::int32_t c = Left(deck, deck.held.singles[2]);
    Draws draws;
    if (heldDeuces == 0) {
        AddHeldRuns(draws, 0, 1, runs, 2);
        // Two more of one.
        draws.threeOfAKind += Ways(a, 2) + Ways(b, 2) + Ways(c, 2);
    }
    const std::int32_t ways = Ways(deuces, 1 - heldDeuces);
    AddHeldRuns(draws, 1, ways, runs, 1);
    // One more of one.
    draws.threeOfAKind += ways * (a + b + c);
    // Two deuces: the only draw, unless it makes a run or flush.
    const std::int32_t lastWays = Ways(deuces, 2 - heldDeuces);
    draws.threeOfAKind += lastWays * (1 - AddHeldRuns(draws, 2, lastWays, runs, 0));
    Finish(deck, hold, draws, heldDeuces + 3);
}

// Hands that come of five of a kind of one held rank alone.
void SetFives(DeucesDeckState& deck, std::int32_t hold, std::int32_t rank, Draws& draws,
              std::int32_t fives) {
    draws.fiveOfAKind = fives;
    deck.countedArea->fiveOfAKindByRank[hold][rank] = fives;
}

} // namespace

void CountDeucesDrawFive(DeucesDeckState& deck, std::int32_t hold) {
    CountToNothing(deck, hold, 0);
}

void CountOneDeuce(DeucesDeckState& deck, std::int32_t hold) {
    CountToNothing(deck, hold, 1);
}

void CountOneSingle(DeucesDeckState& deck, std::int32_t hold) {
    CountToSingle(deck, hold, 0);
}

void CountTwoDeuces(DeucesDeckState& deck, std::int32_t hold) {
    CountToNothing(deck, hold, 2);
}

void CountDeuceAndSingle(DeucesDeckState& deck, std::int32_t hold) {
    CountToSingle(deck, hold, 1);
}

void CountPair(DeucesDeckState& deck, std::int32_t hold) {
    const RankSums free = deck.scratch.free;
    const std::int32_t rank = deck.held.pairs[0];
    const std::int32_t a = Left(deck, rank);
    const std::int32_t deuces = deck.deuces;
    Draws draws;
    // Three of the cards of a and the deuces that are left, of which a has two at most.
    SetFives(deck, hold, rank, draws, Ways(a, 2) * deuces + a * Ways(deuces, 2) + Ways(deuces, 3));
    // Two of them and a loose card.
    draws.naturalFourOfAKind = Ways(a, 2) * free.cards;
    draws.fourOfAKind = (a * deuces + Ways(deuces, 2)) * free.cards;
    // One of them and a pair, or trips beside the held pair.
    draws.fullHouse = (a + deuces) * free.pairs + free.trips;
    // One of them and two loose cards.
    draws.threeOfAKind = (a + deuces) * TwoSingles(free);
    Finish(deck, hold, draws, 2);
}

void CountTwoSingles(DeucesDeckState& deck, std::int32_t hold) {
    CountToTwoSingles(deck, hold, 0);
}

void CountThreeDeuces(DeucesDeckState& deck, std::int32_t hold) {
    CountToNothing(deck, hold, 3);
}

void CountTwoDeucesAndSingle(DeucesDeckState& deck, std::int32_t hold) {
    CountToSingle(deck, hold, 2);
}

void CountDeuceAndPair(DeucesDeckState& deck, std::int32_t hold) {
    const RankSums free = deck.scratch.free;
    const std::int32_t rank = deck.held.pairs[0];
    const std::int32_t a = Left(deck, rank);
    const std::int32_t deuces = deck.deuces;
    Draws draws;
    // Two of the cards of a and the deuces that are left.
    SetFives(deck, hold, rank, draws, Ways(a, 2) + a * deuces + Ways(deuces, 2));
    // One of them and a loose card.
    draws.fourOfAKind = (a + deuces) * free.cards;
    // A pair beside the trips.
    draws.fullHouse = free.pairs;
    // Two loose cards.
    draws.threeOfAKind = TwoSingles(free);
    Finish(deck, hold, draws, 3);
}

void CountDeuceAndTwoSingles(DeucesDeckState& deck, std::int32_t hold) {
    CountToTwoSingles(deck, hold, 1);
}

void CountTrips(DeucesDeckState& deck, std::int32_t hold) {
    const RankSums free = deck.scratch.free;
    const std::int32_t rank = deck.held.trips;
    const std::int32_t a = Left(deck, rank);
    const std::int32_t deuces = deck.deuces;
    Draws draws;
    // The last of a and a deuce, or two deuces.
    SetFives(deck, hold, rank, draws, a * deuces + Ways(deuces, 2));
    // One of them and a loose card.
    draws.naturalFourOfAKind = a * free.cards;
    draws.fourOfAKind = deuces * free.cards;
    // A pair.
    draws.fullHouse = free.pairs;
    // Two loose cards.
    draws.threeOfAKind = TwoSingles(free);
    Finish(deck, hold, draws, 3);
}

void CountPairAndSingle(DeucesDeckState& deck, std::int32_t hold) {
    const std::int32_t a = Left(deck, deck.held.pairs[0]);
    const std::int32_t b = Left(deck, deck.held.singles[0]);
    const std::int32_t deuces = deck.deuces;
    Draws draws;
    // Two of the cards of a and the deuces that are left.
    draws.naturalFourOfAKind = Ways(a, 2);
    draws.fourOfAKind = a * deuces + Ways(deuces, 2);
    // One of them and one more of b, or two more of b.
    draws.fullHouse = (a + deuces) * b + Ways(b, 2);
    // One of them and a loose card.
    draws.threeOfAKind = (a + deuces) * deck.scratch.free.cards;
    Finish(deck, hold, draws, 3);
}

void CountThreeSingles(DeucesDeckState& deck, std::int32_t hold) {
    CountToThreeSingles(deck, hold, 0);
}

void CountFourDeuces(DeucesDeckState& deck, std::int32_t hold) {
    Draws draws;
    draws.fourDeuces = deck.cards;
    for (std::int32_t rank = 1; rank < RanksPerSuit; ++rank) {
        deck.countedArea->fourDeucesByRank[hold][rank] = Left(deck, rank);
    }
    Finish(deck, hold, draws, 4);
}

void CountThreeDeucesAndSingle(DeucesDeckState& deck, std::int32_t hold) {
    CountToSingle(deck, hold, 3);
}

void CountTwoDeucesAndPair(DeucesDeckState& deck, std::int32_t hold) {
    const std::int32_t rank = deck.held.pairs[0];
    const std::int32_t fives = Left(deck, rank) + deck.deuces;
    Draws draws;
    SetFives(deck, hold, rank, draws, fives);
    // Any other card leaves four of a kind.
    draws.fourOfAKind = deck.cards - fives;
    Finish(deck, hold, draws, 4);
}

void CountTwoDeucesTwoSingles(DeucesDeckState& deck, std::int32_t hold) {
    CountToTwoSingles(deck, hold, 2);
}

void CountDeuceAndTrips(DeucesDeckState& deck, std::int32_t hold) {
    const std::int32_t rank = deck.held.trips;
    const std::int32_t fives = Left(deck, rank) + deck.deuces;
    Draws draws;
    SetFives(deck, hold, rank, draws, fives);
    // Any other card leaves four of a kind.
    draws.fourOfAKind = deck.cards - fives;
    Finish(deck, hold, draws, 4);
}

void CountDeucePairAndSingle(DeucesDeckState& deck, std::int32_t hold) {
    const std::int32_t fours = Left(deck, deck.held.pairs[0]) + deck.deuces;
    const std::int32_t b = Left(deck, deck.held.singles[0]);
    Draws draws;
    draws.fourOfAKind = fours;
    draws.fullHouse = b;
    // Any other card leaves the trips.
    draws.threeOfAKind = deck.cards - fours - b;
    Finish(deck, hold, draws, 4);
}

void CountDeuceAndThreeSingles(DeucesDeckState& deck, std::int32_t hold) {
    CountToThreeSingles(deck, hold, 1);
}

void CountFourOfAKind(DeucesDeckState& deck, std::int32_t hold) {
    Draws draws;
    SetFives(deck, hold, deck.held.ranks[0], draws, deck.deuces);
    // Any other card leaves the four.
    draws.naturalFourOfAKind = deck.cards - deck.deuces;
    Finish(deck, hold, draws, 4);
}

void CountTripsOrTwoPair(DeucesDeckState& deck, std::int32_t hold) {
    Draws draws;
    if (deck.held.trips < 0) {
        // A third of either pair; everything else pays nothing.
        draws.fullHouse =
            Left(deck, deck.held.pairs[0]) + Left(deck, deck.held.pairs[1]) + deck.deuces;
    } else {
        const std::int32_t a = Left(deck, deck.held.trips);
        const std::int32_t b = Left(deck, deck.held.singles[0]);
        draws.naturalFourOfAKind = a;
        draws.fourOfAKind = deck.deuces;
        draws.fullHouse = b;
        // Any other card leaves the trips.
        draws.threeOfAKind = deck.cards - a - b - deck.deuces;
    }
    Finish(deck, hold, draws, 4);
}

void CountPairAndTwoSingles(DeucesDeckState& deck, std::int32_t hold) {
    Draws draws;
    // A third of the pair; a card that pairs a single makes two pair, which pays nothing.
    draws.threeOfAKind = Left(deck, deck.held.pairs[0]) + deck.deuces;
    Finish(deck, hold, draws, 4);
}

void CountFourSingles(DeucesDeckState& deck, std::int32_t hold) {
    const HeldRuns runs = RunsOfHeld(deck);
    Draws draws;
    AddHeldRuns(draws, 0, 1, runs, 1);
    AddHeldRuns(draws, 1, deck.deuces, runs, 0);
    Finish(deck, hold, draws, 4);
}
