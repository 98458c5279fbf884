#include "strategy/standard_draws.h"

#include <algorithm>
#include <bit>

#include "strategy/rank_classes.h"
#include "strategy/rank_runs.h"

namespace {

constexpr std::int32_t unseen = StandardDeckSize - static_cast<std::int32_t>(HandSize);

// The cards not dealt, made ready once a search. A fifth suit takes a stray joker's code.
struct StandardDeck {
    std::array<RankMask, JokerSuit + 1> present;       // by suit, the ranks unseen
    std::array<std::int32_t, JokerSuit + 1> suitCount; // cards unseen of each suit
    std::array<std::int32_t, RanksPerSuit> rankCount;  // cards unseen of each rank
    std::int32_t threshold;                            // the lowest pair that pays
    RankSums all;                                      // over all ranks
    RankSums high;                                     // over the ranks whose pairs pay
    QuadsByRank full;                                  // 1 for a rank with all four cards unseen
    StraightWays straights;
};

StandardDeck deck;

std::int32_t Left(std::int32_t rank) {
    return deck.rankCount[static_cast<std::size_t>(rank)];
}

std::int32_t Ways(std::int32_t left, std::size_t taken) {
    return SmallChoose[static_cast<std::size_t>(left)][taken];
}

bool Pays(std::int32_t rank) {
    return rank >= deck.threshold;
}

// Cards dealt twice leave a rank or a suit short, but never below none.
void PrepareDeck(const Card* dealt, std::int32_t threshold) {
    constexpr RankMask allRanks = (RankMask{1} << RanksPerSuit) - 1;
    deck.present.fill(allRanks);
    deck.suitCount.fill(RanksPerSuit);
    deck.rankCount.fill(SuitCount);
    deck.threshold = threshold;
    for (std::size_t i = 0; i < HandSize; ++i) {
        const auto suit = static_cast<std::size_t>(SuitOf(dealt[i]));
        const auto rank = static_cast<std::size_t>(RankOf(dealt[i]));
        deck.present[suit] &= ~(RankMask{1} << rank);
        --deck.suitCount[suit];
        deck.rankCount[rank] = std::max(deck.rankCount[rank] - 1, 0);
    }
    deck.all = {};
    deck.high = {};
    for (std::size_t rank = 0; rank < RanksPerSuit; ++rank) {
        const std::int32_t left = deck.rankCount[rank];
        const RankSums& terms = RankTerms[static_cast<std::size_t>(left)];
        AddTerms(deck.all, terms);
        if (Pays(static_cast<std::int32_t>(rank))) {
            AddTerms(deck.high, terms);
        }
        deck.full[rank] = Ways(left, 4);
    }
    CountStraightWays(deck.straights, dealt, deck.rankCount);
}

// The ranks of which no card is held, all and those that pay.
struct FreeRanks {
    RankSums all = deck.all;
    RankSums high = deck.high;

    void Take(std::int32_t rank) {
        const RankSums& terms = RankTerms[static_cast<std::size_t>(Left(rank))];
        TakeTerms(all, terms);
        if (Pays(rank)) {
            TakeTerms(high, terms);
        }
    }
};

// The suited runs of one suit, of which every missing card is unseen.
void AddSuitedRuns(StandardOutcomes& out, RunMask runs) {
    const std::int32_t royals = (runs & RoyalRun) != 0 ? 1 : 0;
    out[Royal] += royals;
    out[StraightFlush] += CountRuns(runs) - royals;
}

// Straights, flushes and what is both, for one to four held cards of different ranks.
void CountRunsAndFlushes(StandardOutcomes& out, const Card* held, std::size_t count) {
    const std::int32_t suit = SuitOf(held[0]);
    bool suited = true;
    RankMask ranks = 0;
    RunMask runs = AllRuns;
    std::uint32_t kept = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto rank = static_cast<std::size_t>(RankOf(held[i]));
        suited &= SuitOf(held[i]) == suit;
        ranks |= RankMask{1} << rank;
        runs &= RunsThrough[rank];
        kept |= deck.straights.dealtBit[rank];
    }
    out[Straight] = deck.straights.ways[kept];
    if (suited) {
        const auto at = static_cast<std::size_t>(suit);
        AddSuitedRuns(out, CompleteRuns(deck.present[at] | ranks) & runs);
        const std::int32_t both = out[StraightFlush] + out[Royal];
        out[Straight] -= both;
        out[Flush] = Choose(deck.suitCount[at], static_cast<std::int32_t>(HandSize - count)) - both;
    }
}

// Four jacks or better with another of them, and four of ace to four with another of these. An
// ace's four has the last word of both records.
constexpr std::int32_t courtRanks[KickerQuadsCount] = {RankJack, RankQueen, RankKing, RankAce};
constexpr std::int32_t lowRanks[KickerQuadsCount] = {RankDeuce, 1, RankFour, RankAce};

template <std::size_t n>
std::size_t Find(const std::int32_t (&ranks)[n], std::int32_t rank) {
    return static_cast<std::size_t>(std::find(ranks, ranks + n, rank) - ranks);
}

// The fifth cards among the named ranks that are unseen and not of the rank itself.
std::int32_t KickersLeft(const std::int32_t (&ranks)[KickerQuadsCount], std::int32_t rank) {
    std::int32_t left = -Left(rank);
    for (const std::int32_t kicker : ranks) {
        left += Left(kicker);
    }
    return left;
}

// The four of a rank whose every card is held or unseen, with any other unseen card.
void AddQuadsWithAny(std::size_t hold, StandardDraws& draws, std::int32_t rank) {
    const std::int32_t ways = unseen - Left(rank);
    draws.outcomes[hold][Quads] += ways;
    draws.quadsByRank[hold][static_cast<std::size_t>(rank)] = ways;
    const std::size_t court = Find(courtRanks, rank);
    if (court < KickerQuadsCount) {
        draws.courtQuads[hold][court] = KickersLeft(courtRanks, rank);
    }
    const std::size_t low = Find(lowRanks, rank);
    if (low < KickerQuadsCount) {
        draws.lowQuads[hold][low] = KickersLeft(lowRanks, rank);
    }
}

// The four of a rank whose every card is held or unseen, with a held card of another rank.
void AddQuadsWithHeld(std::size_t hold, StandardDraws& draws, std::int32_t rank,
                      std::int32_t kicker) {
    draws.outcomes[hold][Quads] += 1;
    draws.quadsByRank[hold][static_cast<std::size_t>(rank)] = 1;
    const std::size_t court = Find(courtRanks, rank);
    if (court < KickerQuadsCount && Find(courtRanks, kicker) < KickerQuadsCount) {
        draws.courtQuads[hold][court] = 1;
    }
    const std::size_t low = Find(lowRanks, rank);
    if (low < KickerQuadsCount && Find(lowRanks, kicker) < KickerQuadsCount) {
        draws.lowQuads[hold][low] = 1;
    }
}

// What is left over pays nothing.
void Close(StandardOutcomes& out, std::int32_t total) {
    std::int32_t paid = 0;
    for (std::size_t category = HighPair; category < Total; ++category) {
        paid += out[category];
    }
    out[NoPay] = total - paid;
    out[Total] = total;
}

// The held ranks, those held at least twice and so on.
struct HeldRanks {
    RankMask any = 0;
    RankMask twice = 0;
    RankMask thrice = 0;
    RankMask fourTimes = 0;
};

HeldRanks GatherRanks(const Card* held, std::size_t count) {
    HeldRanks ranks;
    for (std::size_t i = 0; i < count; ++i) {
        const RankMask bit = RankBit(RankOf(held[i]));
        ranks.fourTimes |= ranks.thrice & bit;
        ranks.thrice |= ranks.twice & bit;
        ranks.twice |= ranks.any & bit;
        ranks.any |= bit;
    }
    return ranks;
}

std::int32_t LowestRank(RankMask ranks) {
    return std::countr_zero(ranks);
}

void DrawThreeToPair(std::size_t hold, StandardDraws& draws, std::int32_t rank) {
    StandardOutcomes& out = draws.outcomes[hold];
    FreeRanks free;
    free.Take(rank);
    const std::int32_t left = Left(rank);
    if (left == 2) {
        AddQuadsWithAny(hold, draws, rank);
    }
    // A third with a pair, or trips beside the pair.
    out[FullHouse] = left * free.all.pairs + free.all.trips;
    // A third with two loose cards.
    out[Trips] = left * TwoSingles(free.all);
    out[TwoPair] = PairAndSingle(free.all, free.all);
    out[HighPair] = Pays(rank) ? ThreeSingles(free.all) : 0;
}

void DrawThreeToTwoRanks(std::size_t hold, StandardDraws& draws, const Card* held) {
    StandardOutcomes& out = draws.outcomes[hold];
    const std::int32_t r = RankOf(held[0]);
    const std::int32_t s = RankOf(held[1]);
    FreeRanks free;
    free.Take(r);
    free.Take(s);
    const std::int32_t leftR = Left(r);
    const std::int32_t leftS = Left(s);
    if (leftR == 3) {
        AddQuadsWithHeld(hold, draws, r, s);
    }
    if (leftS == 3) {
        AddQuadsWithHeld(hold, draws, s, r);
    }
    const std::int32_t pairs = Ways(leftR, 2) + Ways(leftS, 2);
    // Two of one held rank and one of the other.
    out[FullHouse] = Ways(leftR, 2) * leftS + leftR * Ways(leftS, 2);
    // Two of one held rank with a loose card, or trips of a free rank.
    out[Trips] = pairs * free.all.cards + free.all.trips;
    // Both held ranks paired, or one of them and a free one.
    out[TwoPair] = leftR * leftS * free.all.cards + (leftR + leftS) * free.all.pairs;
    // One held rank that pays, or a free one, and loose cards.
    out[HighPair] = ((Pays(r) ? leftR : 0) + (Pays(s) ? leftS : 0)) * TwoSingles(free.all) +
                    PairAndSingle(free.high, free.all);
    CountRunsAndFlushes(out, held, 2);
}

void DrawTwoToTrips(std::size_t hold, StandardDraws& draws, std::int32_t rank) {
    StandardOutcomes& out = draws.outcomes[hold];
    FreeRanks free;
    free.Take(rank);
    if (Left(rank) == 1) {
        AddQuadsWithAny(hold, draws, rank);
    }
    out[FullHouse] = free.all.pairs;
    out[Trips] = TwoSingles(free.all);
}

void DrawTwoToPairAndOne(std::size_t hold, StandardDraws& draws, std::int32_t pair,
                         std::int32_t single) {
    StandardOutcomes& out = draws.outcomes[hold];
    FreeRanks free;
    free.Take(pair);
    free.Take(single);
    const std::int32_t leftPair = Left(pair);
    const std::int32_t leftSingle = Left(single);
    if (leftPair == 2) {
        AddQuadsWithHeld(hold, draws, pair, single);
    }
    // One of each held rank, or two of the single.
    out[FullHouse] = leftPair * leftSingle + Ways(leftSingle, 2);
    out[Trips] = leftPair * free.all.cards;
    // The single paired, or a free pair.
    out[TwoPair] = leftSingle * free.all.cards + free.all.pairs;
    out[HighPair] = Pays(pair) ? TwoSingles(free.all) : 0;
}

void DrawTwoToThreeRanks(std::size_t hold, StandardDraws& draws, const Card* held) {
    StandardOutcomes& out = draws.outcomes[hold];
    FreeRanks free;
    std::int32_t trips = 0;
    std::int32_t sum = 0;
    std::int32_t twoPairs = 0;
    std::int32_t high = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        const std::int32_t rank = RankOf(held[i]);
        const std::int32_t left = Left(rank);
        free.Take(rank);
        trips += Ways(left, 2);
        twoPairs += sum * left;
        sum += left;
        high += Pays(rank) ? left : 0;
    }
    out[Trips] = trips;
    // One of each of two held ranks.
    out[TwoPair] = twoPairs;
    // One held rank that pays and a loose card, or a free pair.
    out[HighPair] = high * free.all.cards + free.high.pairs;
    CountRunsAndFlushes(out, held, 3);
}

void DrawOneToTripsAndOne(std::size_t hold, StandardDraws& draws, std::int32_t trips,
                          std::int32_t single) {
    StandardOutcomes& out = draws.outcomes[hold];
    if (Left(trips) == 1) {
        AddQuadsWithHeld(hold, draws, trips, single);
    }
    out[FullHouse] = Left(single);
    out[Trips] = unseen - Left(trips) - Left(single);
}

void DrawOneToTwoPair(StandardOutcomes& out, RankMask pairs) {
    out[FullHouse] = Left(LowestRank(pairs)) + Left(LowestRank(pairs & (pairs - 1)));
    out[TwoPair] = unseen - out[FullHouse];
}

void DrawOneToPair(StandardOutcomes& out, std::int32_t pair, RankMask singles) {
    out[Trips] = Left(pair);
    out[TwoPair] = Left(LowestRank(singles)) + Left(LowestRank(singles & (singles - 1)));
    out[HighPair] = Pays(pair) ? unseen - out[Trips] - out[TwoPair] : 0;
}

void DrawOneToFourRanks(StandardOutcomes& out, const Card* held) {
    for (std::size_t i = 0; i < 4; ++i) {
        const std::int32_t rank = RankOf(held[i]);
        out[HighPair] += Pays(rank) ? Left(rank) : 0;
    }
    CountRunsAndFlushes(out, held, 4);
}

} // namespace

void CountDrawFive(std::size_t hold, StandardDraws& draws, const Card*) {
    StandardOutcomes& out = draws.outcomes[hold];
    out = {};
    for (std::int32_t rank = 0; rank < RanksPerSuit; ++rank) {
        if (Left(rank) == 4) {
            AddQuadsWithAny(hold, draws, rank);
        }
    }
    for (std::size_t suit = 0; suit < SuitCount; ++suit) {
        AddSuitedRuns(out, CompleteRuns(deck.present[suit]));
        out[Flush] += Choose(deck.suitCount[suit], 5);
    }
    const std::int32_t both = out[StraightFlush] + out[Royal];
    out[Flush] -= both;
    out[Straight] = deck.straights.ways[0] - both;
    out[FullHouse] = TripsAndPair(deck.all);
    out[Trips] = TripsAndTwoSingles(deck.all);
    out[TwoPair] = TwoPairsAndSingle(deck.all);
    out[HighPair] = PairAndThreeSingles(deck.high, deck.all);
    Close(out, Choose(unseen, 5));
}

void CountDrawFour(std::size_t hold, StandardDraws& draws, const Card* held) {
    StandardOutcomes& out = draws.outcomes[hold];
    out = {};
    const std::int32_t rank = RankOf(held[0]);
    const std::int32_t left = Left(rank);
    // Every full rank with the held card beside it.
    draws.quadsByRank[hold] = deck.full;
    for (const std::int32_t full : deck.full) {
        out[Quads] += full;
    }
    if (Find(courtRanks, rank) < KickerQuadsCount) {
        for (std::size_t i = 0; i < KickerQuadsCount; ++i) {
            draws.courtQuads[hold][i] = deck.full[static_cast<std::size_t>(courtRanks[i])];
        }
    }
    if (Find(lowRanks, rank) < KickerQuadsCount) {
        for (std::size_t i = 0; i < KickerQuadsCount; ++i) {
            draws.lowQuads[hold][i] = deck.full[static_cast<std::size_t>(lowRanks[i])];
        }
    }
    if (left == 3) {
        AddQuadsWithAny(hold, draws, rank);
    }
    FreeRanks free;
    free.Take(rank);
    // Two more of the held rank with a pair, or one with trips.
    out[FullHouse] = Ways(left, 2) * free.all.pairs + left * free.all.trips;
    // Two more of the held rank with loose cards, or trips of a free rank.
    out[Trips] = Ways(left, 2) * TwoSingles(free.all) + TripsAndSingle(free.all);
    // The held rank paired and a free pair, or two free pairs.
    out[TwoPair] = left * PairAndSingle(free.all, free.all) + TwoPairs(free.all);
    out[HighPair] =
        (Pays(rank) ? left * ThreeSingles(free.all) : 0) + PairAndTwoSingles(free.high, free.all);
    CountRunsAndFlushes(out, held, 1);
    Close(out, Choose(unseen, 4));
}

void CountDrawThree(std::size_t hold, StandardDraws& draws, const Card* held) {
    StandardOutcomes& out = draws.outcomes[hold];
    out = {};
    if (RankOf(held[0]) == RankOf(held[1])) {
        DrawThreeToPair(hold, draws, RankOf(held[0]));
    } else {
        DrawThreeToTwoRanks(hold, draws, held);
    }
    Close(out, Choose(unseen, 3));
}

void CountDrawTwo(std::size_t hold, StandardDraws& draws, const Card* held) {
    StandardOutcomes& out = draws.outcomes[hold];
    out = {};
    const HeldRanks ranks = GatherRanks(held, 3);
    if (ranks.thrice != 0) {
        DrawTwoToTrips(hold, draws, LowestRank(ranks.thrice));
    } else if (ranks.twice != 0) {
        DrawTwoToPairAndOne(hold, draws, LowestRank(ranks.twice),
                            LowestRank(ranks.any ^ ranks.twice));
    } else {
        DrawTwoToThreeRanks(hold, draws, held);
    }
    Close(out, Choose(unseen, 2));
}

void CountDrawOne(std::size_t hold, StandardDraws& draws, const Card* held) {
    StandardOutcomes& out = draws.outcomes[hold];
    out = {};
    const HeldRanks ranks = GatherRanks(held, 4);
    if (ranks.fourTimes != 0) {
        AddQuadsWithAny(hold, draws, LowestRank(ranks.fourTimes));
    } else if (ranks.thrice != 0) {
        DrawOneToTripsAndOne(hold, draws, LowestRank(ranks.thrice),
                             LowestRank(ranks.any ^ ranks.thrice));
    } else if (ranks.twice == ranks.any) {
        DrawOneToTwoPair(out, ranks.any);
    } else if (ranks.twice != 0) {
        DrawOneToPair(out, LowestRank(ranks.twice), ranks.any ^ ranks.twice);
    } else {
        DrawOneToFourRanks(out, held);
    }
    Close(out, Choose(unseen, 1));
}

void EnumerateStandardDraws(StandardDraws& draws, std::int32_t threshold) {
    PrepareDeck(draws.cards.data(), threshold);
    draws.quadsByRank = {};
    draws.courtQuads = {};
    draws.lowQuads = {};
    for (std::size_t hold = 0; hold < HoldAllIndex; ++hold) {
        std::array<Card, HandSize> held;
        std::size_t count = 0;
        for (std::size_t position = 0; position < HandSize; ++position) {
            if ((HoldOrder[hold] >> position & 1) != 0) {
                held[count++] = draws.cards[position];
            }
        }
        constexpr decltype(&CountDrawFive) counters[] = {
            CountDrawFive, CountDrawFour, CountDrawThree, CountDrawTwo, CountDrawOne};
        counters[count](hold, draws, held.data());
    }
}
