// Hands at random, the same on every platform.
#ifndef TESSARIN_TESTS_STRATEGY_RANDOM_HANDS_H
#define TESSARIN_TESTS_STRATEGY_RANDOM_HANDS_H

#include <array>
#include <cstdint>
#include <utility>

#include "core/cards.h"

using CardRecords = std::array<CardRecord, HandSize>;

// A 64-bit linear congruential generator, read from its better half.
struct HandSource {
    std::uint64_t state;

    // 0..limit - 1.
    std::int32_t Next(std::int32_t limit) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::int32_t>((state >> 33) % static_cast<std::uint64_t>(limit));
    }

    // Five different cards of the deck.
    std::array<Card, HandSize> Deal(std::int32_t deckSize) {
        std::array<Card, JokerDeckSize> deck;
        for (std::size_t i = 0; i < deck.size(); ++i) {
            deck[i] = static_cast<Card>(i);
        }
        std::array<Card, HandSize> cards;
        for (std::size_t i = 0; i < HandSize; ++i) {
            const auto from = static_cast<std::int32_t>(i);
            std::swap(deck[i], deck[static_cast<std::size_t>(from + Next(deckSize - from))]);
            cards[i] = deck[i];
        }
        return cards;
    }
};

inline CardRecords RecordsOf(const std::array<Card, HandSize>& cards) {
    CardRecords records;
    for (std::size_t i = 0; i < HandSize; ++i) {
        records[i] = MakeCardRecord(cards[i]);
    }
    return records;
}

#endif
