#include "strategy/deuces_draws.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <random>
#include <string>

#include "core/evaluate.h"
#include "strategy/deuces_deck.h"
#include "strategy/deuces_routines.h"
#include "tests/strategy/independent_counts.h"
#include "tests/strategy/suit_classes.h"

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

// The categories of the independent tally: the words of a record, but that five of a kind and four
// deuces are told apart by rank.
constexpr std::int32_t fivesFrom = DeucesTotal;
constexpr std::int32_t fourDeucesFrom = fivesFrom + RanksPerSuit;
constexpr std::int32_t tallyCategories = fourDeucesFrom + RanksPerSuit;

// A paytable row that no finer category divides, to its word.
constexpr std::array<std::int32_t, 11> wordOfRow = {
    DeucesNaturalRoyal,  DeucesFourDeuces,   DeucesWildRoyal, DeucesFiveOfAKind,
    DeucesStraightFlush, DeucesFourOfAKind,  DeucesFullHouse, DeucesFlush,
    DeucesStraight,      DeucesThreeOfAKind, DeucesNoPay};

std::int32_t TallyCategory(const Card* five) {
    const std::int32_t word = wordOfRow[EvaluateCodes(DeucesWild, five)];
    const auto deuces =
        std::count_if(five, five + HandSize, [](Card card) { return RankOf(card) == RankDeuce; });
    // All naturals of these are of one rank, which no deuce's index exceeds.
    const std::int32_t rank = RankOf(*std::max_element(
        five, five + HandSize, [](Card a, Card b) { return RankOf(a) < RankOf(b); }));
    switch (word) {
    case DeucesFiveOfAKind:
        return fivesFrom + rank;
    case DeucesFourDeuces:
        return fourDeucesFrom + rank;
    case DeucesFourOfAKind:
        return deuces == 0 ? DeucesNaturalFourOfAKind : word;
    case DeucesStraightFlush:
        return deuces == 0 ? DeucesNaturalStraightFlush : word;
    default:
        return word;
    }
}

// What the enumerator should write for a hold, from the independent counts of its categories.
struct ExpectedRecord {
    DeucesCounter words;
    std::int32_t fives[RanksPerSuit];
    std::int32_t fourDeuces[RanksPerSuit];
};

ExpectedRecord Expected(const std::int32_t* tally) {
    ExpectedRecord record{};
    std::copy_n(tally, DeucesTotal, record.words);
    std::copy_n(tally + fivesFrom, RanksPerSuit, record.fives);
    std::copy_n(tally + fourDeucesFrom, RanksPerSuit, record.fourDeuces);
    for (std::int32_t rank = 0; rank < RanksPerSuit; ++rank) {
        record.words[DeucesFiveOfAKind] += record.fives[rank];
        record.words[DeucesFourDeuces] += record.fourDeuces[rank];
    }
    for (std::int32_t word = DeucesNoPay; word < DeucesTotal; ++word) {
        record.words[DeucesTotal] += record.words[word];
    }
    return record;
}

std::string Describe(const Card* codes, std::int32_t hold) {
    std::string text;
    for (std::size_t i = 0; i < HandSize; ++i) {
        text += RankLettersNarrow[RankOf(codes[i])];
        text += "cdhs*"[SuitOf(codes[i])];
        text += (HoldOrder[static_cast<std::size_t>(hold)] >> i & 1) != 0 ? "! " : " ";
    }
    return text;
}

// Compares the numbers of a hold one by one; returns how many differ and tells the first few.
struct Comparison {
    std::int64_t compared = 0;
    std::int64_t mismatches = 0;

    void Compare(const Card* codes, std::int32_t hold, const char* what,
                 const std::int32_t* expected, const std::int32_t* counted, std::int32_t size) {
        for (std::int32_t i = 0; i < size; ++i) {
            ++compared;
            if (expected[i] != counted[i] && ++mismatches <= 20) {
                ADD_FAILURE() << Describe(codes, hold) << what << " " << i << ": expected "
                              << expected[i] << ", counted " << counted[i];
            }
        }
    }
};

DeucesWorkArea workArea;

void CountHand(const std::array<Card, HandSize>& cards) {
    std::fill_n(reinterpret_cast<std::int32_t*>(&workArea), sizeof workArea / 4, -77);
    std::copy(cards.begin(), cards.end(), workArea.codes);
    EXPECT_EQ(CountDeucesHolds(&workArea), 1);
}

std::int32_t HoldOfPattern(HoldPattern pattern) {
    return HoldIndex[static_cast<std::size_t>(pattern)];
}

Card Deuce(std::int32_t suit) {
    return CardOf(suit, RankDeuce);
}

std::int32_t SumOf(const std::int32_t* words, std::int32_t count) {
    std::int32_t sum = 0;
    for (std::int32_t i = 0; i < count; ++i) {
        sum += words[i];
    }
    return sum;
}

} // namespace

TEST(DeucesProof, EveryHoldOfEveryDealEqualsTheIndependentCount) {
    const IndependentCounts deck = TallyDeck(StandardDeckSize, tallyCategories, TallyCategory);
    const std::vector<SuitClass> classes = NaturalClasses();
    HoldCounts tally;
    Comparison comparison;
    for (std::size_t at = 0; at < classes.size(); at += TESSARIN_PROOF_STEP) {
        // The positions turn from deal to deal, so that no order of the cards goes untried.
        std::array<Card, HandSize> cards = classes[at].cards;
        std::rotate(cards.begin(), cards.begin() + static_cast<std::ptrdiff_t>(at % HandSize),
                    cards.end());
        CountHand(cards);
        CountAllHolds(deck, cards.data(), tally);
        for (std::int32_t hold = 0; hold < HoldAllIndex; ++hold) {
            const auto pattern =
                static_cast<std::size_t>(HoldOrder[static_cast<std::size_t>(hold)]);
            const ExpectedRecord expected = Expected(&tally[pattern * deck.categories]);
            comparison.Compare(cards.data(), hold, "word", expected.words, workArea.counters[hold],
                               DeucesWordCount);
            comparison.Compare(cards.data(), hold, "fives of rank", expected.fives,
                               workArea.fiveOfAKindByRank[hold], RanksPerSuit);
            comparison.Compare(cards.data(), hold, "four deuces with rank", expected.fourDeuces,
                               workArea.fourDeucesByRank[hold], RanksPerSuit);
        }
    }
    EXPECT_EQ(comparison.mismatches, 0);
    const std::size_t deals = (classes.size() + TESSARIN_PROOF_STEP - 1) / TESSARIN_PROOF_STEP;
    EXPECT_EQ(comparison.compared, static_cast<std::int64_t>(deals * 31 * (14 + 13 + 13)));
}

TEST(DeucesDraws, FourDeucesStayFourDeuces) {
    CountHand({Deuce(0), Deuce(1), Deuce(2), Deuce(3), CardOf(0, RankAce)});
    const std::int32_t hold = HoldOfPattern(0b01111);
    for (std::int32_t word = 0; word < DeucesTotal; ++word) {
        EXPECT_EQ(workArea.counters[hold][word], word == DeucesFourDeuces ? 47 : 0) << word;
    }
    EXPECT_EQ(workArea.counters[hold][DeucesTotal], 47);
    for (std::int32_t rank = 0; rank < RanksPerSuit; ++rank) {
        const std::int32_t left = rank == RankDeuce ? 0 : rank == RankAce ? 3 : 4;
        EXPECT_EQ(workArea.fourDeucesByRank[hold][rank], left);
        EXPECT_EQ(workArea.fiveOfAKindByRank[hold][rank], 0);
    }
}

TEST(DeucesDraws, OneHeldDeuceMeetsTheOthersWithAnyCard) {
    CountHand({Deuce(2), CardOf(0, 3), CardOf(1, 5), CardOf(2, 7), CardOf(3, 9)});
    EXPECT_EQ(workArea.counters[HoldOfPattern(1)][DeucesFourDeuces], 44);
    EXPECT_EQ(workArea.counters[HoldOfPattern(2)][DeucesFourDeuces], 0);
}

TEST(DeucesDraws, FourToARoyalIsMetByItsFifthCardAndByDeuces) {
    CountHand({CardOf(1, 8), CardOf(1, 9), CardOf(1, 10), CardOf(1, 11), CardOf(0, 1)});
    const std::int32_t* words = workArea.counters[HoldOfPattern(0b01111)];
    EXPECT_EQ(words[DeucesNaturalRoyal], 1);
    EXPECT_EQ(words[DeucesWildRoyal], 4);
    EXPECT_EQ(words[DeucesNaturalStraightFlush], 1); // the nine
    EXPECT_EQ(words[DeucesFlush], 6);
    EXPECT_EQ(words[DeucesStraight], 6); // three other nines and aces each
    EXPECT_EQ(words[DeucesNoPay], 47 - 18);
}

TEST(DeucesDraws, AceCountsLowOnlyWithinTheWheel) {
    // Three, five and ace of one suit: with two deuces drawn a straight flush, with a four and a
    // deuce as well.
    CountHand({CardOf(0, 1), CardOf(0, 3), CardOf(0, RankAce), CardOf(1, 7), CardOf(2, 9)});
    const std::int32_t* words = workArea.counters[HoldOfPattern(0b00111)];
    EXPECT_EQ(words[DeucesStraightFlush], 6 + 4);
    EXPECT_EQ(words[DeucesStraight], 4 * 3);
    EXPECT_EQ(words[DeucesWildRoyal], 0);
    // Four, six and ace lie in no run.
    CountHand({CardOf(0, 2), CardOf(1, 4), CardOf(0, RankAce), CardOf(1, 7), CardOf(2, 9)});
    EXPECT_EQ(workArea.counters[HoldOfPattern(0b00111)][DeucesStraight], 0);
}

TEST(DeucesDraws, RecordOfHoldingAllIsOnlyCleared) {
    CountHand({CardOf(0, 8), CardOf(0, 9), CardOf(0, 10), CardOf(0, 11), CardOf(0, 12)});
    EXPECT_EQ(SumOf(workArea.counters[HoldAllIndex], DeucesTotal), 0);
    EXPECT_EQ(workArea.counters[HoldAllIndex][DeucesTotal], 1);
    EXPECT_EQ(SumOf(workArea.fiveOfAKindByRank[HoldAllIndex], RanksPerSuit), 0);
    EXPECT_EQ(SumOf(workArea.fourDeucesByRank[HoldAllIndex], RanksPerSuit), 0);
}

TEST(DeucesDraws, RecordsSumToTheirTotals) {
    constexpr std::array<std::int32_t, HandSize> totals = {1533939, 178365, 16215, 1081, 47};
    const std::vector<SuitClass> classes = NaturalClasses();
    for (std::size_t at = 0; at < classes.size(); at += 101) {
        CountHand(classes[at].cards);
        for (std::int32_t hold = 0; hold < HoldAllIndex; ++hold) {
            const auto pattern =
                static_cast<std::uint32_t>(HoldOrder[static_cast<std::size_t>(hold)]);
            const std::int32_t* words = workArea.counters[hold];
            ASSERT_EQ(words[DeucesTotal], totals[static_cast<std::size_t>(std::popcount(pattern))]);
            ASSERT_EQ(SumOf(words, DeucesTotal), words[DeucesTotal]);
            ASSERT_TRUE(std::all_of(words, words + DeucesTotal, [](auto n) { return n >= 0; }));
            ASSERT_EQ(SumOf(workArea.fiveOfAKindByRank[hold], RanksPerSuit),
                      words[DeucesFiveOfAKind]);
            ASSERT_EQ(SumOf(workArea.fourDeucesByRank[hold], RanksPerSuit),
                      words[DeucesFourDeuces]);
        }
    }
}

TEST(DeucesDraws, ACountLeavesNothingBehind) {
    const std::array<Card, HandSize> hand = {Deuce(0), CardOf(0, 8), CardOf(0, 9), CardOf(0, 11),
                                             CardOf(2, 11)};
    CountHand(hand);
    const DeucesWorkArea first = workArea;
    CountHand({Deuce(0), Deuce(1), Deuce(2), Deuce(3), CardOf(0, 8)});
    CountHand(hand);
    EXPECT_TRUE(std::equal(reinterpret_cast<const std::int32_t*>(&first),
                           reinterpret_cast<const std::int32_t*>(&first + 1),
                           reinterpret_cast<const std::int32_t*>(&workArea)));
}

// The sanitizers watch over these: what is counted for a hand that cannot be dealt is not defined,
// but it stays within the tables and depends on the hand alone.
TEST(DeucesDraws, ImpossibleHandsAreSafe) {
    std::minstd_rand random(20021);
    std::vector<std::array<Card, HandSize>> hands = {
        {Deuce(0), Deuce(1), Deuce(2), Deuce(3), JokerCard},
        {JokerCard, JokerCard, JokerCard, JokerCard, JokerCard},
        {Deuce(1), Deuce(1), Deuce(1), Deuce(1), Deuce(1)},
        {7, 7, 7, 7, 7},
        {12, 12, 12, 12, 11},
    };
    for (int i = 0; i < 20000; ++i) {
        std::array<Card, HandSize> hand;
        const auto span = i % 2 == 0 ? 53u : 9u;
        for (Card& card : hand) {
            card = static_cast<Card>(52 - random() % span);
        }
        hands.push_back(hand);
    }
    for (const auto& hand : hands) {
        CountHand(hand);
        const DeucesWorkArea first = workArea;
        CountHand(hand);
        ASSERT_TRUE(std::equal(reinterpret_cast<const std::int32_t*>(&first),
                               reinterpret_cast<const std::int32_t*>(&first + 1),
                               reinterpret_cast<const std::int32_t*>(&workArea)));
        EXPECT_TRUE(std::equal(hand.begin(), hand.end(), workArea.codes));
    }
}

TEST(DeucesDeck, HoldsWhatIsLeft) {
    const std::array<Card, HandSize> hand = {CardOf(0, RankTen), CardOf(2, RankTen),
                                             CardOf(3, RankAce), Deuce(3), CardOf(3, 4)};
    std::copy(hand.begin(), hand.end(), workArea.codes);
    DeucesDeckState deck{};
    PrepareDeucesDeck(deck, &workArea);
    EXPECT_EQ(deck.workArea, &workArea);
    EXPECT_EQ(deck.countedArea, &workArea);
    EXPECT_EQ(deck.cards, 47);
    EXPECT_EQ(deck.deuces, 3);
    for (std::int32_t rank = 0; rank < RanksPerSuit; ++rank) {
        const auto dealt = std::count_if(hand.begin(), hand.end(),
                                         [&](Card card) { return RankOf(card) == rank; });
        EXPECT_EQ(deck.rankCount[rank], 4 - dealt) << rank;
    }
    EXPECT_THAT(deck.suitCount, ElementsAre(11, 12, 11, 10));
    EXPECT_THAT(deck.royalCount, ElementsAre(4, 5, 4, 4));
    EXPECT_THAT(deck.histogram, ElementsAre(0, 0, 1, 2, 9));
    for (Card card = 0; card < StandardDeckSize; ++card) {
        const bool dealt = std::find(hand.begin(), hand.end(), card) != hand.end();
        EXPECT_EQ(deck.present[SuitOf(card)][RankOf(card)], dealt ? 0 : 1) << card;
    }
    EXPECT_EQ(deck.heldDeuceSuit, -1);
    EXPECT_EQ(deck.scratch.free.cards, 2 + 2 * 3 + 9 * 4);
    EXPECT_EQ(deck.scratch.free.pairs, 1 + 2 * 3 + 9 * 6);
}

namespace {

// A hold as ranks (0 the deuce) and suits, and what it should be classified as.
struct ShapeCase {
    std::vector<Card> held;
    DeucesRoutine routine;
    std::int32_t distinct;
    std::vector<std::int32_t> singles;
    std::vector<std::int32_t> pairs;
    std::int32_t trips;
    std::int32_t suited;
    std::int32_t deuces;
};

constexpr Card D0 = CardOf(0, 0), D1 = CardOf(1, 0), D2 = CardOf(2, 0), D3 = CardOf(3, 0);

// Of rank r in suit 0, 1, 2 and 3.
constexpr Card A(std::int32_t r) {
    return CardOf(0, r);
}
constexpr Card B(std::int32_t r) {
    return CardOf(1, r);
}
constexpr Card C(std::int32_t r) {
    return CardOf(2, r);
}
constexpr Card E(std::int32_t r) {
    return CardOf(3, r);
}

} // namespace

TEST(DeucesDeck, ClassifiesEveryShape) {
    const ShapeCase cases[] = {
        {{}, CountDeucesDrawFive, 0, {}, {}, -1, 1, 0},
        {{D2}, CountOneDeuce, 0, {}, {}, -1, 1, 1},
        {{A(7)}, CountOneSingle, 1, {7}, {}, -1, 1, 0},
        {{D0, D1}, CountTwoDeuces, 0, {}, {}, -1, 1, 2},
        {{D1, A(5)}, CountDeuceAndSingle, 1, {5}, {}, -1, 1, 1},
        {{A(5), B(5)}, CountPair, 1, {}, {5}, -1, 0, 0},
        {{A(5), A(9)}, CountTwoSingles, 2, {5, 9}, {}, -1, 1, 0},
        {{A(5), B(9)}, CountTwoSingles, 2, {5, 9}, {}, -1, 0, 0},
        {{D0, D1, D3}, CountThreeDeuces, 0, {}, {}, -1, 1, 3},
        {{D0, D1, E(1)}, CountTwoDeucesAndSingle, 1, {1}, {}, -1, 1, 2},
        {{D0, A(3), B(3)}, CountDeuceAndPair, 1, {}, {3}, -1, 0, 1},
        {{D0, B(3), B(4)}, CountDeuceAndTwoSingles, 2, {3, 4}, {}, -1, 1, 1},
        {{A(3), B(3), C(3)}, CountTrips, 1, {}, {}, 3, 0, 0},
        {{A(3), B(3), C(4)}, CountPairAndSingle, 2, {4}, {3}, -1, 0, 0},
        {{A(3), B(4), C(4)}, CountPairAndSingle, 2, {3}, {4}, -1, 0, 0},
        {{E(3), E(4), E(12)}, CountThreeSingles, 3, {3, 4, 12}, {}, -1, 1, 0},
        {{E(3), E(4), A(12)}, CountThreeSingles, 3, {3, 4, 12}, {}, -1, 0, 0},
        {{D0, D1, D2, D3}, CountFourDeuces, 0, {}, {}, -1, 1, 4},
        {{D0, D1, D3, A(8)}, CountThreeDeucesAndSingle, 1, {8}, {}, -1, 1, 3},
        {{D0, D1, A(8), B(8)}, CountTwoDeucesAndPair, 1, {}, {8}, -1, 0, 2},
        {{D0, D1, A(8), A(9)}, CountTwoDeucesTwoSingles, 2, {8, 9}, {}, -1, 1, 2},
        {{D0, A(8), B(8), C(8)}, CountDeuceAndTrips, 1, {}, {}, 8, 0, 1},
        {{D0, A(8), B(8), C(9)}, CountDeucePairAndSingle, 2, {9}, {8}, -1, 0, 1},
        {{D0, A(7), B(8), C(8)}, CountDeucePairAndSingle, 2, {7}, {8}, -1, 0, 1},
        {{D3, A(7), A(8), A(9)}, CountDeuceAndThreeSingles, 3, {7, 8, 9}, {}, -1, 1, 1},
        {{A(7), B(7), C(7), E(7)}, CountFourOfAKind, 1, {}, {}, -1, 0, 0},
        {{A(7), B(7), C(7), E(8)}, CountTripsOrTwoPair, 2, {8}, {}, 7, 0, 0},
        {{A(6), B(7), C(7), E(7)}, CountTripsOrTwoPair, 2, {6}, {}, 7, 0, 0},
        {{A(6), B(6), C(7), E(7)}, CountTripsOrTwoPair, 2, {}, {6, 7}, -1, 0, 0},
        {{A(6), B(6), C(7), E(9)}, CountPairAndTwoSingles, 3, {7, 9}, {6}, -1, 0, 0},
        {{A(6), B(7), C(7), E(9)}, CountPairAndTwoSingles, 3, {6, 9}, {7}, -1, 0, 0},
        {{A(6), B(7), C(9), E(9)}, CountPairAndTwoSingles, 3, {6, 7}, {9}, -1, 0, 0},
        {{B(6), B(7), B(9), B(12)}, CountFourSingles, 4, {6, 7, 9, 12}, {}, -1, 1, 0},
        {{B(6), B(7), B(9), A(12)}, CountFourSingles, 4, {6, 7, 9, 12}, {}, -1, 0, 0},
    };
    for (const ShapeCase& expected : cases) {
        SCOPED_TRACE(&expected - cases);
        // The cards that complete the hand are of other ranks than those held, some below them and
        // some above, and the hand stands in falling order.
        std::vector<Card> hand = expected.held;
        for (const Card other : {C(1), E(10), B(11), C(2), A(5), B(4)}) {
            if (hand.size() < HandSize && std::none_of(hand.begin(), hand.end(), [&](Card card) {
                    return RankOf(card) == RankOf(other);
                })) {
                hand.push_back(other);
            }
        }
        ASSERT_EQ(hand.size(), HandSize);
        std::sort(hand.rbegin(), hand.rend());
        std::copy(hand.begin(), hand.end(), workArea.codes);
        DeucesDeckState deck{};
        PrepareDeucesDeck(deck, &workArea);
        DeucesHand sorted{};
        PrepareDeucesHand(sorted, deck);
        std::uint32_t heldPlaces = 0;
        for (std::size_t place = 0; place < HandSize; ++place) {
            const Card card = workArea.codes[static_cast<std::size_t>(sorted.positions[place])];
            if (std::count(expected.held.begin(), expected.held.end(), card) != 0) {
                heldPlaces |= 1u << place;
            }
        }
        EXPECT_EQ(ClassifyHeldCards(deck, sorted, heldPlaces), expected.routine);
        const DeucesHeldShape& held = deck.held;
        EXPECT_EQ(held.count, static_cast<std::int32_t>(expected.held.size()));
        EXPECT_EQ(held.distinct, expected.distinct);
        EXPECT_EQ(held.deuces, expected.deuces);
        EXPECT_EQ(held.suited, expected.suited);
        EXPECT_EQ(held.trips, expected.trips);
        std::vector<std::int32_t> singles = expected.singles;
        singles.resize(4, -1);
        EXPECT_THAT(held.singles, ElementsAreArray(singles));
        std::vector<std::int32_t> pairs = expected.pairs;
        pairs.resize(2, -1);
        EXPECT_THAT(held.pairs, ElementsAreArray(pairs));
        std::vector<Card> heldCards;
        RankSums free = SumOverClasses(deck.histogram);
        for (std::size_t i = 0; i < expected.held.size(); ++i) {
            heldCards.push_back(CardOf(held.suits[i], held.ranks[i]));
            if (held.ranks[i] != RankDeuce && (i == 0 || held.ranks[i] != held.ranks[i - 1])) {
                TakeTerms(free, RankTerms[static_cast<std::size_t>(deck.rankCount[held.ranks[i]])]);
            }
        }
        EXPECT_TRUE(std::is_permutation(heldCards.begin(), heldCards.end(), expected.held.begin(),
                                        expected.held.end()));
        EXPECT_EQ(deck.heldDeuceSuit, expected.deuces > 0 ? held.suits[0] : -1);
        EXPECT_EQ(deck.scratch.free.cards, free.cards);
        EXPECT_EQ(deck.scratch.free.pairs, free.pairs);
        EXPECT_EQ(deck.scratch.free.trips, free.trips);
        EXPECT_EQ(deck.scratch.free.quads, free.quads);
    }
}
