#include "strategy/deuces_runs.h"

#include <bit>

#include "strategy/choose.h"

namespace {

// The ways to draw i = 1..4 cards of different ranks, 16 bits each from the lowest: the
// coefficients of the product of (1 + c x) over the ranks, c the cards left of each. The way to
// draw none is understood. No sum here exceeds 16 bits: ten runs of 4 * 4^4 are 10,240.
using DrawWays = std::uint64_t;

constexpr DrawWays OneCardMore(DrawWays ways) {
    return ways << 16 | 1;
}

constexpr DrawWays WithRank(DrawWays ways, std::int32_t left) {
    return ways + static_cast<DrawWays>(left) * OneCardMore(ways);
}

constexpr std::int32_t WaysToDraw(DrawWays ways, std::int32_t cards) {
    return cards == 0 ? 1 : static_cast<std::int32_t>(ways >> (16 * (cards - 1)) & 0xffff);
}

// The ways to draw from one suit, by which of four neighbouring ranks are left.
constexpr std::array<DrawWays, 16> WaysOfPresent = [] {
    std::array<DrawWays, 16> ways{};
    for (std::size_t present = 1; present < ways.size(); ++present) {
        ways[present] = WithRank(ways[present >> 1], static_cast<std::int32_t>(present & 1));
    }
    return ways;
}();

// Row n, column k: the ways to choose k of the n naturals left of a suit.
constexpr auto SuitChoose = [] {
    std::array<std::array<std::int32_t, HandSize + 1>, RanksPerSuit> ways{};
    for (std::int32_t n = 0; n < RanksPerSuit; ++n) {
        for (std::int32_t k = 0; k <= static_cast<std::int32_t>(HandSize); ++k) {
            ways[static_cast<std::size_t>(n)][static_cast<std::size_t>(k)] = Choose(n, k);
        }
    }
    return ways;
}();

const std::int32_t* ChooseFromSuit(std::int32_t cards) {
    return SuitChoose[static_cast<std::size_t>(cards)].data();
}

DrawWays PresentWays(RankMask places) {
    return WaysOfPresent[places & 0xf];
}

std::int32_t SmallWays(std::int32_t n, std::int32_t k) {
    return SmallChoose[static_cast<std::size_t>(n)][static_cast<std::size_t>(k)];
}

// Places 0..13 are the ranks from the ace below the deuce up to the ace above the king, so that run
// k is places k..k + 4. The deuces' place is empty, since they are no rank of their own.
constexpr std::int32_t PlaceCount = RanksPerSuit + 1;

constexpr RankMask Places(RankMask ranks) {
    return (ranks << 1 | ranks >> RankAce) & ~RankMask{2};
}

struct SearchRuns {
    RankMask present[SuitCount];   // places of the naturals left in each suit
    std::int32_t left[PlaceCount]; // cards left of the rank at each place
    DrawWays straights;            // with no natural held: the cards beside the lowest
    DrawWays straightFlushes;
    std::int32_t royals[HandSize + 1]; // with no natural held, by number of naturals drawn
    std::int32_t flushes[HandSize + 1];
};

SearchRuns searchRuns;

// Scratch words, each by the deuces of the final hand.
constexpr std::int32_t SuitedRuns = 0;
constexpr std::int32_t RunsAndFlushes = 4;
constexpr std::int32_t RunScratchWords = 8;

// The straights are of 3..5 naturals, the lowest of them apart: those of a run that start it, and
// those of ten to ace without the ten.
DrawWays AllStraights(const std::int32_t* left) {
    DrawWays straights = 0;
    DrawWays above = 0;
    for (std::int32_t run = 0; run < RunCount; ++run) {
        above = 0;
        for (std::int32_t place = run + 1; place < run + RunLength; ++place) {
            above = WithRank(above, left[place]);
        }
        straights += static_cast<DrawWays>(left[run]) * above;
    }
    return straights + (above >> 16);
}

// The same over the cards of a suit; ten to ace is left to the royals.
DrawWays AllStraightFlushes(RankMask present) {
    DrawWays straightFlushes = 0;
    for (std::int32_t run = 0; run < RunCount - 1; ++run) {
        if ((present >> run & 1) != 0) {
            straightFlushes += PresentWays(present >> (run + 1));
        }
    }
    return straightFlushes;
}

RankMask HeldPlaces(const DeucesHeldShape& held) {
    RankMask ranks = 0;
    for (std::int32_t i = 0; i < held.distinct; ++i) {
        ranks |= RankBit(held.singles[i]);
    }
    return Places(ranks);
}

} // namespace

void PrepareDeucesRuns(const DeucesDeckState& deck) {
    SearchRuns& runs = searchRuns;
    runs = {};
    runs.left[0] = deck.rankCount[RankAce];
    for (std::int32_t rank = 1; rank < RanksPerSuit; ++rank) {
        runs.left[rank + 1] = deck.rankCount[rank];
    }
    for (std::int32_t suit = 0; suit < SuitCount; ++suit) {
        RankMask ranks = 0;
        for (std::int32_t rank = 1; rank < RanksPerSuit; ++rank) {
            ranks |= static_cast<RankMask>(deck.present[suit][rank]) << rank;
        }
        runs.present[suit] = Places(ranks);
        runs.straightFlushes += AllStraightFlushes(runs.present[suit]);
        const std::int32_t* royals = ChooseFromSuit(deck.royalCount[suit]);
        const std::int32_t* flushes = ChooseFromSuit(deck.suitCount[suit]);
        for (std::size_t cards = 0; cards <= HandSize; ++cards) {
            runs.royals[cards] += royals[cards];
            runs.flushes[cards] += flushes[cards];
        }
    }
    runs.straights = AllStraights(runs.left);
}

RunMask RunsThroughHeld(const DeucesHeldShape& held) {
    RunMask runs = AllRuns;
    for (std::int32_t i = 0; i < held.distinct; ++i) {
        runs &= RunsThrough[static_cast<std::size_t>(held.singles[i])];
    }
    return runs;
}

namespace {

std::int32_t CardsToDraw(const DeucesHeldShape& held) {
    return static_cast<std::int32_t>(HandSize) - held.count;
}

// Adds the draws of m naturals and w deuces by category: of all flushes those that are royals or
// straight flushes are taken out. Three deuces and two suited naturals that are neither are four of
// a kind, which pays more than the flush.
void AddSuited(DeucesDeckState& deck, std::int32_t hold, std::int32_t w, std::int32_t royals,
               std::int32_t straightFlushes, std::int32_t flushes) {
    std::int32_t* counts = deck.countedArea->counters[hold];
    const std::int32_t ways = SmallWays(deck.deuces, w - deck.held.deuces);
    counts[w == 0 ? DeucesNaturalRoyal : DeucesWildRoyal] += ways * royals;
    counts[w == 0 ? DeucesNaturalStraightFlush : DeucesStraightFlush] += ways * straightFlushes;
    deck.scratch[SuitedRuns + w] = royals + straightFlushes;
    if (w < 3) {
        counts[DeucesFlush] += ways * (flushes - royals - straightFlushes);
        deck.scratch[RunsAndFlushes + w] = flushes;
    }
}

void AddStraights(DeucesDeckState& deck, std::int32_t hold, std::int32_t w,
                  std::int32_t straights) {
    const std::int32_t ways = SmallWays(deck.deuces, w - deck.held.deuces);
    const std::int32_t unsuited = straights - deck.scratch[SuitedRuns + w];
    deck.countedArea->counters[hold][DeucesStraight] += ways * unsuited;
    deck.scratch[RunsAndFlushes + w] += unsuited;
}

} // namespace

void CountSuitedDraws(DeucesDeckState& deck, std::int32_t hold, RunMask runs) {
    const DeucesHeldShape& held = deck.held;
    const std::int32_t suit = held.suits[held.deuces];
    const RankMask present = searchRuns.present[suit];
    const RankMask heldPlaces = HeldPlaces(held);
    DrawWays straightFlushes = 0;
    std::int32_t complete = 0;
    for (RunMask left = runs & ~RoyalRun; left != 0; left &= left - 1) {
        const std::int32_t run = std::countr_zero(left);
        const DrawWays above = PresentWays(present >> (run + 1));
        if ((heldPlaces >> run & 1) != 0) {
            straightFlushes += above;
            complete = 1;
        } else if ((present >> run & 1) != 0) {
            straightFlushes += OneCardMore(above);
        }
    }
    const std::int32_t* royals = ChooseFromSuit((runs & RoyalRun) != 0 ? deck.royalCount[suit] : 0);
    const std::int32_t* flushes = ChooseFromSuit(deck.suitCount[suit]);
    const std::int32_t royal = (runs & RoyalRun) != 0 ? 1 : 0;
    std::int32_t w = held.deuces;
    for (std::int32_t m = CardsToDraw(held); m >= 0 && w <= 3; --m, ++w) {
        AddSuited(deck, hold, w, royal * royals[m],
                  m == 0 ? complete : WaysToDraw(straightFlushes, m), flushes[m]);
    }
}

void CountSuitedDrawsOfAnySuit(DeucesDeckState& deck, std::int32_t hold) {
    std::int32_t w = deck.held.deuces;
    for (std::int32_t m = CardsToDraw(deck.held); w <= 3; --m, ++w) {
        AddSuited(deck, hold, w, searchRuns.royals[m],
                  WaysToDraw(searchRuns.straightFlushes, m - 1), searchRuns.flushes[m]);
    }
}

void CountStraightDraws(DeucesDeckState& deck, std::int32_t hold, RunMask runs) {
    const DeucesHeldShape& held = deck.held;
    const RankMask heldPlaces = HeldPlaces(held);
    std::int32_t left[PlaceCount];
    for (std::int32_t place = 0; place < PlaceCount; ++place) {
        left[place] = (heldPlaces >> place & 1) != 0 ? 0 : searchRuns.left[place];
    }
    DrawWays straights = 0;
    for (RunMask some = runs; some != 0; some &= some - 1) {
        const std::int32_t run = std::countr_zero(some);
        DrawWays above = 0;
        for (std::int32_t place = run + 1; place < run + RunLength; ++place) {
            above = WithRank(above, left[place]);
        }
        if (run == RunCount - 1) {
            straights += WithRank(above, left[run]);
        } else if ((heldPlaces >> run & 1) != 0) {
            straights += above;
        } else {
            straights += static_cast<DrawWays>(left[run]) * OneCardMore(above);
        }
    }
    std::int32_t w = held.deuces;
    for (std::int32_t m = CardsToDraw(held); m >= 0 && w <= 2; --m, ++w) {
        AddStraights(deck, hold, w, WaysToDraw(straights, m));
    }
}

void CountStraightDrawsToNothing(DeucesDeckState& deck, std::int32_t hold) {
    std::int32_t w = deck.held.deuces;
    for (std::int32_t m = CardsToDraw(deck.held); w <= 2; --m, ++w) {
        AddStraights(deck, hold, w, WaysToDraw(searchRuns.straights, m - 1));
    }
}

std::int32_t SuitedRunDraws(const DeucesDeckState& deck, std::int32_t finalDeuces) {
    return deck.scratch[SuitedRuns + finalDeuces];
}

std::int32_t RunOrFlushDraws(const DeucesDeckState& deck, std::int32_t finalDeuces) {
    return deck.scratch[RunsAndFlushes + finalDeuces];
}

void ClearRunScratch(DeucesDeckState& deck) {
    for (std::int32_t word = 0; word < RunScratchWords; ++word) {
        deck.scratch[word] = 0;
    }
}
