#include "core/cards.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

#include "core/random.h"

namespace {

constexpr std::int32_t Untouched = -77;

// The numbers drawn, and a check that nothing was written past them.
std::vector<std::int32_t> Draw(std::int32_t pool, std::int32_t count) {
    std::array<std::int32_t, 80> positions;
    positions.fill(Untouched);
    EXPECT_EQ(DrawDistinctPositions(pool, count, positions.data()), 1);
    const auto end = std::find(positions.begin(), positions.end(), Untouched);
    EXPECT_TRUE(std::all_of(end, positions.end(), [](auto p) { return p == Untouched; }));
    return {positions.begin(), end};
}

// A deck in which position p holds card p - 1, and an order that deals it from the top.
struct KnownDeck {
    Deck deck{};
    DealOrder order{};
    KnownDeck() {
        for (std::size_t i = 0; i < StandardDeckSize; ++i) {
            deck[i + 1] = MakeCardRecord(static_cast<Card>(i));
            order[i] = static_cast<std::int32_t>(i + 1);
        }
    }
};

std::vector<Card> CodesOf(const Hand& hand) {
    std::vector<Card> codes;
    for (const CardRecord& card : hand.cards) {
        codes.push_back(card.code);
    }
    return codes;
}

} // namespace

TEST(Cards, CodesCountRanksWithinSuits) {
    EXPECT_EQ(CardOf(0, RankDeuce), 0);
    EXPECT_EQ(CardOf(3, RankAce), 51);
    EXPECT_EQ(SuitOf(51), 3);
    EXPECT_EQ(RankOf(51), RankAce);
    EXPECT_EQ(SuitOf(JokerCard), JokerSuit);
    EXPECT_EQ(RankOf(JokerCard), 0);
    for (Card card = 0; card < StandardDeckSize; ++card) {
        EXPECT_EQ(CardOf(SuitOf(card), RankOf(card)), card);
    }
}

TEST(Cards, RankLettersFollowTheRankIndex) {
    EXPECT_EQ(std::wstring(RankLetters), L"23456789TJQKA");
    EXPECT_EQ(std::string(RankLettersNarrow), "23456789TJQKA");
    EXPECT_EQ(RankLetters[RankTen], L'T');
    EXPECT_EQ(RankLettersNarrow[RankAce], 'A');
}

TEST(Cards, ARecordCarriesRankValueAndSuit) {
    const CardRecord deuce = MakeCardRecord(13);
    EXPECT_EQ(deuce.code, 13);
    EXPECT_EQ(deuce.rankValue, 2);
    EXPECT_EQ(deuce.suit, 1);
    const CardRecord ace = MakeCardRecord(51);
    EXPECT_EQ(ace.rankValue, 14);
    EXPECT_EQ(ace.suit, 3);
    const CardRecord joker = MakeCardRecord(JokerCard);
    EXPECT_EQ(joker.code, 52);
    EXPECT_EQ(joker.rankValue, 2);
    EXPECT_EQ(joker.suit, 4);
}

TEST(Shuffle, OfTheWholePoolIsAPermutation) {
    SeedRandom(11);
    for (const std::int32_t pool : {1, 2, 52, 53}) {
        for (int round = 0; round < 200; ++round) {
            std::vector<std::int32_t> drawn = Draw(pool, pool);
            ASSERT_EQ(drawn.size(), static_cast<std::size_t>(pool));
            std::sort(drawn.begin(), drawn.end());
            for (std::size_t i = 0; i < drawn.size(); ++i) {
                ASSERT_EQ(drawn[i], static_cast<std::int32_t>(i) + 1);
            }
        }
    }
}

TEST(Shuffle, StopsAfterAsManyAsAreAskedFor) {
    SeedRandom(12);
    for (const std::int32_t count : {1, 5, 10, 51}) {
        const std::vector<std::int32_t> drawn = Draw(52, count);
        EXPECT_EQ(drawn.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(std::set<std::int32_t>(drawn.begin(), drawn.end()).size(), drawn.size());
        EXPECT_GE(*std::min_element(drawn.begin(), drawn.end()), 1);
        EXPECT_LE(*std::max_element(drawn.begin(), drawn.end()), 52);
    }
}

TEST(Shuffle, WritesOneNumberWhenNoneOrFewerAreAskedFor) {
    SeedRandom(13);
    for (const std::int32_t count : {0, -1, -1000000}) {
        EXPECT_EQ(Draw(52, count).size(), 1U);
    }
}

TEST(Shuffle, GivesThePoolWhenMoreThanItAreAskedFor) {
    SeedRandom(14);
    EXPECT_EQ(Draw(5, 60).size(), 5U);
}

TEST(Shuffle, TakesEachNumberFromTheGeneratorAndDrawsAgainWhenItIsTaken) {
    SeedRandom(15);
    std::vector<std::int32_t> expected;
    while (expected.size() < 52) {
        const std::int32_t position = NextRandom() % 52 + 1;
        if (std::find(expected.begin(), expected.end(), position) == expected.end()) {
            expected.push_back(position);
        }
    }
    SeedRandom(15);
    EXPECT_EQ(Draw(52, 52), expected);
}

TEST(BuildDeck, PlacesEveryCardOnceAndNeverUsesRecordZero) {
    SeedRandom(16);
    for (const std::int32_t size : {52, 53}) {
        Deck deck{};
        deck.fill({Untouched, Untouched, Untouched, Untouched});
        EXPECT_EQ(BuildDeck(size, deck), 1);
        EXPECT_EQ(deck[0].code, Untouched);
        EXPECT_EQ(deck[0].reserved, Untouched);
        std::set<Card> codes;
        for (std::int32_t place = 1; place <= size; ++place) {
            const CardRecord& card = deck[static_cast<std::size_t>(place)];
            codes.insert(card.code);
            EXPECT_EQ(card.suit, card.code / 13);
            EXPECT_EQ(card.rankValue, card.code == 52 ? 2 : card.code % 13 + 2);
            EXPECT_EQ(card.reserved, Untouched) << "the builder does not set it";
        }
        for (auto place = static_cast<std::size_t>(size) + 1; place < deck.size(); ++place) {
            EXPECT_EQ(deck[place].code, Untouched);
        }
        EXPECT_EQ(codes.size(), static_cast<std::size_t>(size));
        EXPECT_EQ(*codes.begin(), 0);
        EXPECT_EQ(*codes.rbegin(), size - 1);
    }
}

TEST(BuildDeck, HoldsTheJokerOnlyInADeckOfFiftyThree) {
    SeedRandom(17);
    std::set<std::size_t> jokerPlaces;
    for (int round = 0; round < 2000; ++round) {
        Deck deck{};
        BuildDeck(JokerDeckSize, deck);
        for (std::size_t place = 1; place <= JokerDeckSize; ++place) {
            if (deck[place].suit == JokerSuit) {
                EXPECT_EQ(deck[place].code, JokerCard);
                jokerPlaces.insert(place);
            }
        }
        BuildDeck(StandardDeckSize, deck);
        for (std::size_t place = 1; place <= StandardDeckSize; ++place) {
            ASSERT_NE(deck[place].suit, JokerSuit);
        }
    }
    EXPECT_EQ(jokerPlaces.size(), 53U) << "the joker comes to every place";
}

TEST(BuildDeck, PutsEachCardWhereTheShuffleSays) {
    SeedRandom(18);
    const std::vector<std::int32_t> places = Draw(53, 53);
    SeedRandom(18);
    Deck deck{};
    BuildDeck(53, deck);
    for (std::size_t i = 0; i < places.size(); ++i) {
        EXPECT_EQ(deck[static_cast<std::size_t>(places[i])].code, static_cast<Card>(i));
    }
}

TEST(BuildDeck, GoesOnWithTheSameSequenceTheSecondTime) {
    SeedRandom(19);
    Deck first{};
    Deck second{};
    BuildDeck(52, first);
    BuildDeck(52, second);
    SeedRandom(19);
    Draw(52, 52);
    const std::vector<std::int32_t> places = Draw(52, 52);
    EXPECT_EQ(second[static_cast<std::size_t>(places[0])].code, 0);
    bool differ = false;
    for (std::size_t place = 1; place <= 52; ++place) {
        differ = differ || first[place].code != second[place].code;
    }
    EXPECT_TRUE(differ);
}

TEST(Deal, CopiesTheFirstFiveOfTheOrderWhole) {
    KnownDeck known;
    known.order[2] = 40;
    known.deck[40].reserved = 1234;
    Hand hand{};
    hand.held = {1, 0, 1, 0, 1};
    DealFiveCards(known.deck, known.order, hand);
    EXPECT_EQ(CodesOf(hand), (std::vector<Card>{0, 1, 39, 3, 4}));
    EXPECT_EQ(hand.cards[2].suit, 3);
    EXPECT_EQ(hand.cards[2].rankValue, 2);
    EXPECT_EQ(hand.cards[2].reserved, 1234);
    EXPECT_EQ(hand.held, (std::array<std::int32_t, 5>{1, 0, 1, 0, 1}));
}

TEST(Deal, OneCardLeavesTheOthersAlone) {
    const KnownDeck known;
    Hand hand{};
    DealCard(known.deck, known.order, hand, 3);
    EXPECT_EQ(CodesOf(hand), (std::vector<Card>{0, 0, 0, 3, 0}));
    EXPECT_EQ(hand.cards[2].rankValue, 0);
}

TEST(Draw, ReplacesDiscardsFromTheLeftBySixthCardOnward) {
    const KnownDeck known;
    Hand hand{};
    DealFiveCards(known.deck, known.order, hand);
    hand.held = {0, 1, 0, 1, 0};
    DrawReplacementCards(known.deck, known.order, hand);
    EXPECT_EQ(CodesOf(hand), (std::vector<Card>{5, 1, 6, 3, 7}));
}

TEST(Draw, TakesNoCardWhenAllAreHeldAndFiveWhenNoneIs) {
    const KnownDeck known;
    Hand hand{};
    DealFiveCards(known.deck, known.order, hand);
    hand.held.fill(1);
    DrawReplacementCards(known.deck, known.order, hand);
    EXPECT_EQ(CodesOf(hand), (std::vector<Card>{0, 1, 2, 3, 4}));
    hand.held.fill(0);
    DrawReplacementCards(known.deck, known.order, hand);
    EXPECT_EQ(CodesOf(hand), (std::vector<Card>{5, 6, 7, 8, 9}));
}

TEST(Draw, NeverBringsADealtCardBack) {
    SeedRandom(20);
    for (int round = 0; round < 3000; ++round) {
        Deck deck{};
        DealOrder order{};
        Hand hand{};
        BuildDeck(53, deck);
        DrawDistinctPositions(53, 53, order.data());
        DealFiveCards(deck, order, hand);
        std::vector<Card> seen = CodesOf(hand);
        for (std::size_t i = 0; i < 5; ++i) {
            hand.held[i] = round >> i & 1;
        }
        DrawReplacementCards(deck, order, hand);
        for (std::size_t i = 0; i < 5; ++i) {
            if (hand.held[i] == 0) {
                seen.push_back(hand.cards[i].code);
            }
        }
        ASSERT_EQ(std::set<Card>(seen.begin(), seen.end()).size(), seen.size());
    }
}
