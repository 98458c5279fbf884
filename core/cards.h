// The deck, its shuffle, and where the cards of a hand come from.
#ifndef TESSARIN_CORE_CARDS_H
#define TESSARIN_CORE_CARDS_H

#include "core/types.h"

// Records 1..deck size; record 0 is never used.
using Deck = std::array<CardRecord, JokerDeckSize + 1>;

// A permutation of the deck positions 1..deck size: entries 0..4 are dealt, entry 5 onward replace
// discards in turn.
using DealOrder = std::array<std::int32_t, JokerDeckSize>;

// Writes min(pool, count) distinct numbers of 1..pool to positions, in random order, and returns
// 1. At least one number is always written, so positions has room for one even when count is 0 or
// less. The pool is 1 or more.
std::int32_t DrawDistinctPositions(std::int32_t pool, std::int32_t count, std::int32_t* positions);

// Lays the cards 0..size - 1 out at random deck positions (size 52, or 53 with the joker) and
// returns 1; the records' reserved words stay as they are. Seeds the generator from the clock if
// nothing has seeded it yet.
std::int32_t BuildDeck(std::int32_t size, Deck& deck);

// The card record of a code, as the deck holds it, with 0 in its reserved word.
CardRecord MakeCardRecord(Card code);

// Puts entry `position` (0..4) of the order into the hand at that position.
void DealCard(const Deck& deck, const DealOrder& order, Hand& hand, std::size_t position);

// Deals entries 0..4 to positions 0..4.
void DealFiveCards(const Deck& deck, const DealOrder& order, Hand& hand);

// Puts entry 5 + taken of the order into the hand, `taken` being the number of discards replaced
// so far in this draw (0..4).
void ReplaceCard(const Deck& deck, const DealOrder& order, Hand& hand, std::size_t position,
                 std::size_t taken);

// Replaces every position that is not held, left to right, from entry 5 on.
void DrawReplacementCards(const Deck& deck, const DealOrder& order, Hand& hand);

#endif
