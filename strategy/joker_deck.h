// What a Joker Wild count is made from: the deck that is left, and the holds of the hand.
#ifndef TESSARIN_STRATEGY_JOKER_DECK_H
#define TESSARIN_STRATEGY_JOKER_DECK_H

#include "strategy/joker_draws.h"
#include "strategy/rank_classes.h"
#include "strategy/rank_runs.h"

// The held cards, and the ranks that are not held. Of a held rank only matters how many of its
// cards are left to draw. "High" is what pays as a pair.
//
// Every field but the last two is a sum over the held cards, so that a hold is a hold of one card
// fewer plus what the card adds; aligned, because that sum is then a few vector additions.
struct alignas(16) HeldSummary {
    RankSums others;          // the ranks not held
    RankSums highOthers;      // the high ones of them
    RankSums singles;         // the ranks held once
    RankSums pairs;           // the ranks held twice
    std::int32_t trips;       // cards left of the rank held three times
    std::int32_t pairCount;   // ranks held twice
    std::int32_t highSingles; // cards left of the high ranks held once
    std::int32_t highPairs;   // high ranks held twice
    std::int32_t highHeld;    // high ranks held
    std::int32_t heldCount;   // 0..4
    std::int32_t jokerHeld;   // 1 or 0
    std::int32_t alike;       // cards held beyond the first of their rank
    std::uint32_t shape;      // ShapeOf
    std::uint32_t kind;       // equal for holds that only runs and suits tell apart, 0..31
    RankMask ranks;           // the ranks held
    std::uint32_t rankSet;    // the same as a set of the dealt ranks, see DealtRanks
    HoldPattern pattern;
    std::uint32_t suits; // a bit for every suit held, the joker apart
    std::int32_t suit;   // one of them
};

// Tells shapes apart: whether the joker is held, and how many ranks once, twice, three and four
// times.
constexpr std::uint32_t ShapeOf(std::int32_t joker, std::int32_t singles, std::int32_t pairs,
                                std::int32_t trips, std::int32_t quads) {
    return static_cast<std::uint32_t>(singles + 5 * pairs + 15 * trips + 30 * quads + 60 * joker);
}
inline constexpr std::size_t JokerShapeCount = 120;

// Ways to draw a class of hands, three counts side by side so that one sum or product serves all:
// from bit 0 the natural hands, from bit 16 those with the joker, from bit 32 those of the latter
// without a high rank. Each stays below 2^15. Where one class contains another, each count does, so
// that a difference does not borrow.
using JokerWays = std::uint64_t;

constexpr JokerWays MakeWays(std::uint32_t natural, std::uint32_t wild, std::uint32_t lowWild) {
    return natural | JokerWays{wild} << 16 | JokerWays{lowWild} << 32;
}
constexpr std::int32_t NaturalWays(JokerWays ways) {
    return static_cast<std::int32_t>(ways & 0xffff);
}
constexpr std::int32_t WildWays(JokerWays ways) {
    return static_cast<std::int32_t>(ways >> 16 & 0xffff);
}
constexpr std::int32_t LowWildWays(JokerWays ways) {
    return static_cast<std::int32_t>(ways >> 32);
}

// What one rank of a straight multiplies its ways by: the cards left of the rank, or the joker in
// its place. The product over a run counts the natural straights in its low half and those with one
// joker in its high half; what has two jokers falls off the word.
inline constexpr std::uint32_t JokerFactor = std::uint32_t{1} << 16;

// The dealt ranks, each once, as a set of up to five.
struct DealtRanks {
    // A bit for each, 0 for a rank not dealt. Ranks stand as runs take them, the ace before the
    // deuce as well as after the king, so that run k is the five from k on.
    std::array<std::uint32_t, RanksPerSuit + 1> bit;
    // By set: the product over its ranks, each its cards left plus JokerFactor.
    std::array<std::uint32_t, std::size_t{1} << HandSize> ways;
};

// All that a search prepares; no hold changes it.
struct JokerDeckState {
    // The deck without the dealt cards, held or not.
    std::int32_t pairThreshold;
    std::array<std::int32_t, RanksPerSuit> rankLeft;
    std::array<std::int32_t, SuitCount> suitLeft;
    std::array<std::int32_t, SuitCount> lowSuitLeft; // those of them below the threshold
    std::array<std::int32_t, SuitCount> royalLeft;   // tens to aces
    std::int32_t jokersLeft;                         // 1, or 0 once dealt
    std::array<RankMask, SuitCount> available;
    RankMask lowRanks; // below the threshold
    RankMask dealtRanks;
    RankSums ranks;
    RankSums highRanks;
    DealtRanks dealt;
    std::array<JokerWays, std::size_t{1} << HandSize> straights; // by the set of ranks held
    std::array<JokerWays, 2> countedWays; // masks of what can come, without and with the joker held

    // The hand in order of rank, the joker first: for each card what it adds to a hold, by how many
    // of its rank are held before it, and the cards before it that are of its rank.
    std::array<std::array<HeldSummary, 4>, HandSize> steps;
    std::array<std::uint32_t, HandSize> sameRank;

    std::array<HeldSummary, HoldCount> holds;              // by the set of those cards
    std::array<JokerCountRecord, HoldCount> countsByRanks; // by kind
};

extern JokerDeckState jokerDeck;

// Prepares the deck, the steps and the hold of nothing for the hand and threshold of the area.
void InitJokerDeck(JokerDeckState& deck, const JokerWorkArea& area);

// Fills the hold of a set of the sorted cards, 1..30, from the hold without its last card, which
// has been filled before.
void SummarizeHeld(HeldSummary& held, std::uint32_t cards, std::size_t last);

#endif
