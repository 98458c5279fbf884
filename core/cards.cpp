#include "core/cards.h"

#include <algorithm>
#include <vector>

#include "core/random.h"

// Rejection sampling over a plain remainder: the small bias of the remainder and the redraws near
// the end are accepted for a method that is plainly a draw without replacement.
std::int32_t DrawDistinctPositions(std::int32_t pool, std::int32_t count, std::int32_t* positions) {
    std::vector<std::int32_t> drawn(static_cast<std::size_t>(pool), 0);
    const std::int32_t wanted = std::min(pool, count);
    std::int32_t written = 0;
    do {
        const std::int32_t r = NextRandom() % pool;
        std::int32_t& flag = drawn[static_cast<std::size_t>(r)];
        if (flag == 0) {
            flag = 1;
            positions[written++] = r + 1;
        }
    } while (written < wanted);
    return 1;
}

CardRecord MakeCardRecord(Card code) {
    const std::int32_t suit = SuitOf(code);
    const std::int32_t rankValue = suit == JokerSuit ? 2 : RankOf(code) + 2;
    return {code, rankValue, suit, 0};
}

std::int32_t BuildDeck(std::int32_t size, Deck& deck) {
    SeedRandomOnce();
    DealOrder places{};
    DrawDistinctPositions(size, size, places.data());
    for (Card code = 0; code < size; ++code) {
        const auto place = static_cast<std::size_t>(places[static_cast<std::size_t>(code)]);
        CardRecord& record = deck[place];
        const std::int32_t reserved = record.reserved;
        record = MakeCardRecord(code);
        record.reserved = reserved;
    }
    return 1;
}

void DealCard(const Deck& deck, const DealOrder& order, Hand& hand, std::size_t position) {
    hand.cards[position] = deck[static_cast<std::size_t>(order[position])];
}

void DealFiveCards(const Deck& deck, const DealOrder& order, Hand& hand) {
    for (std::size_t position = 0; position < HandSize; ++position) {
        DealCard(deck, order, hand, position);
    }
}

void ReplaceCard(const Deck& deck, const DealOrder& order, Hand& hand, std::size_t position,
                 std::size_t taken) {
    hand.cards[position] = deck[static_cast<std::size_t>(order[HandSize + taken])];
}

void DrawReplacementCards(const Deck& deck, const DealOrder& order, Hand& hand) {
    std::size_t taken = 0;
    for (std::size_t position = 0; position < HandSize; ++position) {
        if (hand.held[position] == 0) {
            ReplaceCard(deck, order, hand, position, taken++);
        }
    }
}
