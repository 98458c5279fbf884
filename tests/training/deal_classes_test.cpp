#include "training/deal_classes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "strategy/choose.h"

namespace {

std::vector<DealClass> AllClasses(bool (*enumerate)(DealClassVisitor, void*)) {
    std::vector<DealClass> classes;
    const bool finished = enumerate(
        [](void* context, const DealClass& deal) {
            static_cast<std::vector<DealClass>*>(context)->push_back(deal);
            return true;
        },
        &classes);
    EXPECT_TRUE(finished);
    return classes;
}

// The place of a set of cards among all sets of that size.
std::size_t PlaceOf(std::array<Card, HandSize> cards) {
    std::sort(cards.begin(), cards.end());
    std::int32_t place = 0;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        place += Choose(cards[i], static_cast<std::int32_t>(i) + 1);
    }
    return static_cast<std::size_t>(place);
}

// The different deals that renaming the suits makes of one.
std::vector<std::size_t> RenamedDeals(const DealClass& deal) {
    std::vector<std::size_t> places;
    std::array<std::int32_t, SuitCount> names = {0, 1, 2, 3};
    do {
        std::array<Card, HandSize> cards = deal.cards;
        for (Card& card : cards) {
            if (card != JokerCard) {
                card = CardOf(names[static_cast<std::size_t>(SuitOf(card))], RankOf(card));
            }
        }
        const std::size_t place = PlaceOf(cards);
        if (std::find(places.begin(), places.end(), place) == places.end()) {
            places.push_back(place);
        }
    } while (std::next_permutation(names.begin(), names.end()));
    return places;
}

// Every deal stands in exactly one class, and a class weighs as many deals as it has.
void ExpectPartition(const std::vector<DealClass>& classes, std::size_t deals) {
    std::vector<bool> seen(static_cast<std::size_t>(Choose(JokerDeckSize, 5)), false);
    std::size_t covered = 0;
    for (const DealClass& deal : classes) {
        const std::vector<std::size_t> places = RenamedDeals(deal);
        ASSERT_EQ(places.size(), static_cast<std::size_t>(deal.weight));
        for (const std::size_t place : places) {
            ASSERT_FALSE(seen[place]);
            seen[place] = true;
        }
        covered += places.size();
    }
    EXPECT_EQ(covered, deals);
}

std::size_t CountIn(const std::vector<DealClass>& classes, DealBlock block) {
    return static_cast<std::size_t>(
        std::count_if(classes.begin(), classes.end(),
                      [block](const DealClass& deal) { return deal.block == block; }));
}

using Cards = std::array<Card, HandSize>;

} // namespace

TEST(DealClasses, StandOnceForEveryDealOfTheStandardDeck) {
    const std::vector<DealClass> classes = AllClasses(EnumerateStandardDeals);
    EXPECT_EQ(classes.size(), 134459U);
    ExpectPartition(classes, 2598960);
}

TEST(DealClasses, StandOnceForEveryDealWithTheJoker) {
    const std::vector<DealClass> classes = AllClasses(EnumerateJokerDeals);
    EXPECT_EQ(classes.size(), 16432U);
    for (const DealClass& deal : classes) {
        ASSERT_EQ(deal.cards[4], JokerCard);
        ASSERT_EQ(deal.block, DealBlock::WithJoker);
    }
    ExpectPartition(classes, 270725);
}

TEST(DealClasses, ComeBlockByBlock) {
    const std::vector<DealClass> classes = AllClasses(EnumerateStandardDeals);
    EXPECT_TRUE(
        std::is_sorted(classes.begin(), classes.end(),
                       [](const DealClass& a, const DealClass& b) { return a.block < b.block; }));
    EXPECT_EQ(CountIn(classes, DealBlock::FourOfAKindAndFullHouse), 468U);
    EXPECT_EQ(CountIn(classes, DealBlock::ThreeOfAKind), 4290U);
    EXPECT_EQ(CountIn(classes, DealBlock::TwoPair), 6864U);
    EXPECT_EQ(CountIn(classes, DealBlock::OnePair), 57200U);
    EXPECT_EQ(CountIn(classes, DealBlock::NoPair), 65637U);
}

TEST(DealClasses, ComeInTheOrderOfTheirRanksAndPatterns) {
    const std::vector<DealClass> classes = AllClasses(EnumerateStandardDeals);
    // Four deuces and a three; deuces full of threes twice; then fours.
    EXPECT_EQ(classes[0].cards, (Cards{0, 13, 26, 39, 1}));
    EXPECT_EQ(classes[1].cards, (Cards{0, 13, 26, 1, 14}));
    EXPECT_EQ(classes[2].cards, (Cards{0, 13, 26, 27, 40}));
    EXPECT_EQ(classes[3].cards, (Cards{0, 13, 26, 39, 2}));
    EXPECT_EQ(classes[467].cards, (Cards{12, 25, 38, 37, 50}));
    // Three deuces, a three and a four.
    EXPECT_EQ(classes[468].cards, (Cards{0, 13, 26, 1, 2}));
    EXPECT_EQ(classes[469].cards, (Cards{0, 13, 26, 40, 41}));
    EXPECT_EQ(classes[472].cards, (Cards{0, 13, 26, 40, 2}));
    EXPECT_EQ(classes[473].cards, (Cards{0, 13, 26, 1, 3}));
    // A single deuce with threes and fours.
    EXPECT_EQ(classes[4758].cards, (Cards{1, 14, 2, 15, 0}));
    EXPECT_EQ(classes[4765].cards, (Cards{1, 14, 15, 28, 39}));
    // A pair of deuces with a three, a four and a five.
    EXPECT_EQ(classes[11622].cards, (Cards{0, 13, 1, 2, 3}));
    EXPECT_EQ(classes[11641].cards, (Cards{0, 13, 27, 41, 3}));
    EXPECT_EQ(classes[68822].cards, (Cards{0, 1, 2, 3, 4}));
    EXPECT_EQ(classes[68823].cards, (Cards{0, 1, 2, 3, 17}));
    EXPECT_EQ(classes[134458].cards, (Cards{21, 35, 49, 11, 12}));
    const std::vector<DealClass> jokers = AllClasses(EnumerateJokerDeals);
    EXPECT_EQ(jokers[0].cards, (Cards{0, 13, 26, 39, 52}));
    EXPECT_EQ(jokers[13].cards, (Cards{0, 13, 26, 1, 52}));
    EXPECT_EQ(jokers[14].cards, (Cards{0, 13, 26, 40, 52}));
    EXPECT_EQ(jokers[16431].cards, (Cards{9, 23, 37, 51, 52}));
}

TEST(DealClasses, EndWhereTheVisitorSaysSo) {
    for (const int wanted : {1, 100, 468, 469, 4759, 20000, 68823, 134459}) {
        int left = wanted;
        const bool finished = EnumerateStandardDeals(
            [](void* context, const DealClass&) { return --*static_cast<int*>(context) > 0; },
            &left);
        EXPECT_FALSE(finished);
        EXPECT_EQ(left, 0) << wanted;
    }
    for (const int wanted : {1, 14, 326, 600, 4000, 5707, 16432}) {
        int left = wanted;
        const bool finished = EnumerateJokerDeals(
            [](void* context, const DealClass&) { return --*static_cast<int*>(context) > 0; },
            &left);
        EXPECT_FALSE(finished);
        EXPECT_EQ(left, 0) << wanted;
    }
}
