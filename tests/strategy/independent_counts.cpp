#include "tests/strategy/independent_counts.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::size_t PatternCount = 32;

// pascal[n][k], by addition alone.
constexpr auto pascal = [] {
    std::array<std::array<std::uint32_t, HandSize + 1>, JokerDeckSize + 1> rows{};
    for (std::size_t n = 0; n < rows.size(); ++n) {
        rows[n][0] = 1;
        for (std::size_t k = 1; n > 0 && k <= HandSize; ++k) {
            rows[n][k] = rows[n - 1][k - 1] + rows[n - 1][k];
        }
    }
    return rows;
}();

std::uint32_t Ways(std::size_t n, std::size_t k) {
    return pascal[n][k];
}

// What card `card` adds to the index of a set in which it is the place-th smallest.
std::size_t IndexTerm(Card card, std::size_t place) {
    return Ways(static_cast<std::size_t>(card), place + 1);
}

// Steps to the set of the next higher index.
void NextSubset(Card* cards, std::size_t k) {
    std::size_t i = 0;
    while (i + 1 < k && cards[i] + 1 == cards[i + 1]) {
        cards[i] = static_cast<Card>(i);
        ++i;
    }
    ++cards[i];
}

// The index of a set of k cards with the one at `left` out.
std::size_t IndexWithout(const Card* cards, std::size_t k, std::size_t left) {
    std::size_t index = 0;
    for (std::size_t i = 0; i < k; ++i) {
        if (i != left) {
            index += IndexTerm(cards[i], i < left ? i : i - 1);
        }
    }
    return index;
}

std::array<Card, HandSize> FirstSubset() {
    std::array<Card, HandSize> cards;
    std::iota(cards.begin(), cards.end(), 0);
    return cards;
}

void ClassifyHands(IndependentCounts& deck, CategoryOf categoryOf) {
    const std::size_t hands = Ways(static_cast<std::size_t>(deck.deckSize), HandSize);
    deck.handCategory.resize(hands);
    auto cards = FirstSubset();
    for (std::size_t hand = 0; hand < hands; ++hand, NextSubset(cards.data(), HandSize)) {
        deck.handCategory[hand] = static_cast<std::uint8_t>(categoryOf(cards.data()));
    }
}

// Every hand adds one to each of its five sets of four.
void TallyFours(IndependentCounts& deck) {
    auto cards = FirstSubset();
    for (const std::uint8_t category : deck.handCategory) {
        for (std::size_t left = 0; left < HandSize; ++left) {
            const std::size_t four = IndexWithout(cards.data(), HandSize, left);
            ++deck.tally[4][four * deck.categories + category];
        }
        NextSubset(cards.data(), HandSize);
    }
}

// Every set of k + 1 cards adds its tally to its sets of k. A hand that contains a set of k is met
// once for each of its 5 - k other cards.
void TallyFromLarger(IndependentCounts& deck, std::size_t k) {
    const std::vector<std::int32_t>& larger = deck.tally[k + 1];
    std::vector<std::int32_t>& smaller = deck.tally[k];
    auto cards = FirstSubset();
    for (std::size_t at = 0; at < larger.size(); at += deck.categories) {
        for (std::size_t left = 0; left <= k; ++left) {
            const std::size_t to = IndexWithout(cards.data(), k + 1, left) * deck.categories;
            std::transform(&larger[at], &larger[at] + deck.categories, &smaller[to], &smaller[to],
                           std::plus<>{});
        }
        NextSubset(cards.data(), k + 1);
    }
    const auto times = static_cast<std::int32_t>(HandSize - k);
    for (std::int32_t& count : smaller) {
        count /= times;
    }
}

struct SortedHand {
    std::array<Card, HandSize> cards;
    std::array<std::size_t, HandSize> position; // where each stands in the hand as given
};

SortedHand Sort(const Card* hand) {
    SortedHand sorted{};
    std::iota(sorted.position.begin(), sorted.position.end(), std::size_t{0});
    std::sort(sorted.position.begin(), sorted.position.end(),
              [&](std::size_t a, std::size_t b) { return hand[a] < hand[b]; });
    for (std::size_t i = 0; i < HandSize; ++i) {
        sorted.cards[i] = hand[sorted.position[i]];
    }
    return sorted;
}

// The tally of every subset of the hand, by pattern.
void GatherSubsets(const IndependentCounts& deck, const SortedHand& hand, std::int32_t* counts) {
    for (std::size_t chosen = 0; chosen < PatternCount; ++chosen) {
        std::size_t pattern = 0;
        std::size_t index = 0;
        std::size_t k = 0;
        for (std::size_t i = 0; i < HandSize; ++i) {
            if ((chosen >> i & 1) != 0) {
                pattern |= std::size_t{1} << hand.position[i];
                index += IndexTerm(hand.cards[i], k++);
            }
        }
        std::int32_t* to = counts + pattern * deck.categories;
        if (k == HandSize) {
            std::fill_n(to, deck.categories, 0);
            to[deck.handCategory[index]] = 1;
        } else {
            std::copy_n(&deck.tally[k][index * deck.categories], deck.categories, to);
        }
    }
}

} // namespace

std::size_t SubsetIndex(const Card* ascending, std::size_t k) {
    std::size_t index = 0;
    for (std::size_t i = 0; i < k; ++i) {
        index += IndexTerm(ascending[i], i);
    }
    return index;
}

IndependentCounts TallyDeck(std::int32_t deckSize, std::size_t categories, CategoryOf categoryOf) {
    IndependentCounts deck{deckSize, categories, {}, {}};
    ClassifyHands(deck, categoryOf);
    for (std::size_t k = 0; k < HandSize; ++k) {
        deck.tally[k].assign(Ways(static_cast<std::size_t>(deckSize), k) * categories, 0);
    }
    TallyFours(deck);
    for (std::size_t k = HandSize - 1; k-- > 0;) {
        TallyFromLarger(deck, k);
    }
    return deck;
}

// Inclusion and exclusion, one position after the other: of the hands that contain a set, those
// without the card at that position are all less those that contain it too.
void CountAllHolds(const IndependentCounts& deck, const Card* hand, HoldCounts& counts) {
    counts.resize(PatternCount * deck.categories);
    GatherSubsets(deck, Sort(hand), counts.data());
    for (std::size_t bit = 1; bit < PatternCount; bit <<= 1) {
        for (std::size_t pattern = 0; pattern < PatternCount; ++pattern) {
            if ((pattern & bit) == 0) {
                std::int32_t* held = counts.data() + pattern * deck.categories;
                const std::int32_t* also = held + bit * deck.categories;
                std::transform(held, held + deck.categories, also, held, std::minus<>{});
            }
        }
    }
}
