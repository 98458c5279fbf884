#include "tests/strategy/independent_counts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/strategy/suit_classes.h"

namespace {

constexpr std::int32_t smallDeck = 14;
constexpr std::size_t smallCategories = 7;

// Any rule will do that no arithmetic on sets could know.
std::int32_t CardSumCategory(const Card* five) {
    return (five[0] * 5 + five[1] * 3 + five[2] * five[3] + five[4]) % 7;
}

// Deals every draw to every hold: a five-card hand is a draw to the one hold it has in common with
// the dealt cards.
HoldCounts DealAndCount(const std::array<Card, HandSize>& dealt) {
    HoldCounts counts(32 * smallCategories, 0);
    std::array<Card, HandSize> final{};
    const auto deal = [&](const auto& self, std::size_t cards, Card from) -> void {
        if (cards < HandSize) {
            for (Card card = from; card < smallDeck; ++card) {
                final[cards] = card;
                self(self, cards + 1, card + 1);
            }
            return;
        }
        std::size_t pattern = 0;
        for (std::size_t i = 0; i < HandSize; ++i) {
            if (std::find(final.begin(), final.end(), dealt[i]) != final.end()) {
                pattern |= std::size_t{1} << i;
            }
        }
        ++counts[pattern * smallCategories +
                 static_cast<std::size_t>(CardSumCategory(final.data()))];
    };
    deal(deal, 0, 0);
    return counts;
}

std::int64_t TotalWeight(const std::vector<SuitClass>& classes) {
    std::int64_t total = 0;
    for (const SuitClass& deal : classes) {
        total += deal.weight;
    }
    return total;
}

} // namespace

TEST(IndependentCounts, EqualTheDrawsDealtOneByOne) {
    const IndependentCounts deck = TallyDeck(smallDeck, smallCategories, CardSumCategory);
    const std::array<Card, HandSize> hands[] = {
        {0, 1, 2, 3, 4}, {13, 2, 9, 0, 5}, {7, 12, 3, 11, 8}};
    HoldCounts counts;
    for (const auto& hand : hands) {
        CountAllHolds(deck, hand.data(), counts);
        EXPECT_EQ(counts, DealAndCount(hand));
    }
}

TEST(IndependentCounts, IndexesSetsWithoutGap) {
    std::set<std::size_t> seen;
    for (Card a = 0; a < 10; ++a) {
        for (Card b = a + 1; b < 10; ++b) {
            for (Card c = b + 1; c < 10; ++c) {
                const std::array<Card, 3> cards = {a, b, c};
                seen.insert(SubsetIndex(cards.data(), cards.size()));
            }
        }
    }
    EXPECT_EQ(seen.size(), 120u);
    EXPECT_EQ(*seen.rbegin(), 119u);
}

TEST(SuitClasses, CoverEveryNaturalDealOnce) {
    const std::vector<SuitClass> classes = NaturalClasses();
    EXPECT_EQ(classes.size(), 134459u);
    EXPECT_EQ(TotalWeight(classes), 2598960);
}

TEST(SuitClasses, CoverEveryJokerDealOnce) {
    const std::vector<SuitClass> classes = JokerClasses();
    EXPECT_EQ(classes.size(), 16432u);
    EXPECT_EQ(TotalWeight(classes), 270725);
    EXPECT_TRUE(std::all_of(classes.begin(), classes.end(),
                            [](const SuitClass& deal) { return deal.cards.back() == JokerCard; }));
}
