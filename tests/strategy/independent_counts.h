// Outcome counts by another road than the engine's: no closed form, no reasoning about ranks and
// suits. Every five-card hand of the deck is put into a category once, every set of up to four
// cards tallies the categories of the five-card hands that contain it, and the draws to a hold are
// those hands that contain the hold, less those that contain a discard, by inclusion and exclusion.
#ifndef TESSARIN_TESTS_STRATEGY_INDEPENDENT_COUNTS_H
#define TESSARIN_TESTS_STRATEGY_INDEPENDENT_COUNTS_H

#include <array>
#include <cstdint>
#include <vector>

#include "core/types.h"

// The category of five cards in ascending order, 0..categories - 1. At most 256 categories.
using CategoryOf = std::int32_t (*)(const Card* five);

struct IndependentCounts {
    std::int32_t deckSize;
    std::size_t categories;
    std::vector<std::uint8_t> handCategory;         // of each five-card hand, by SubsetIndex
    std::array<std::vector<std::int32_t>, 5> tally; // [k]: `categories` words a set of k cards
};

// The place of a set of k (0..5) ascending cards among all sets of k cards; the deck's size does
// not enter.
std::size_t SubsetIndex(const Card* ascending, std::size_t k);

// Builds the tables of the deck of cards 0..deckSize - 1. The largest holds
// Choose(deckSize, 4) * categories words.
IndependentCounts TallyDeck(std::int32_t deckSize, std::size_t categories, CategoryOf categoryOf);

// Room for the counts of all 32 holds of a hand: `categories` words a hold pattern, so the count of
// pattern p ending in category c stands at p * categories + c.
using HoldCounts = std::vector<std::int32_t>;

// Counts every hold of five distinct cards in any order; bit i of a pattern holds hand[i]. Pattern
// 31 has a single 1, at the hand's own category. `counts` is resized as needed.
void CountAllHolds(const IndependentCounts& deck, const Card* hand, HoldCounts& counts);

#endif
