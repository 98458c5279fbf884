#include "strategy/joker_draws.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "core/evaluate.h"
#include "strategy/choose.h"
#include "tests/strategy/independent_counts.h"
#include "tests/strategy/random_hands.h"
#include "tests/strategy/suit_classes.h"

namespace {

constexpr std::size_t classCount = JokerTotal;
constexpr std::int32_t rowOfHighPair = 10;

// The threshold that the categories below are judged by.
std::int32_t categoryThreshold = JokerPairThreshold;

// The highest rank of which the hand has two or more, the joker pairing any.
std::int32_t HighestPairedRank(const Card* five) {
    std::array<std::int32_t, RanksPerSuit> count{};
    const bool joker = std::find(five, five + HandSize, JokerCard) != five + HandSize;
    for (std::size_t i = 0; i < HandSize; ++i) {
        if (five[i] != JokerCard) {
            ++count[static_cast<std::size_t>(RankOf(five[i]))];
        }
    }
    for (std::int32_t rank = RankAce; rank >= 0; --rank) {
        if (count[static_cast<std::size_t>(rank)] + (joker ? 1 : 0) >= 2 &&
            count[static_cast<std::size_t>(rank)] > 0) {
            return rank;
        }
    }
    return -1;
}

// The evaluator's row, but for one pair, which pays from the threshold on.
std::int32_t CategoryOfHand(const Card* five) {
    const auto row = static_cast<std::int32_t>(EvaluateCodes(JokerWild, five));
    if (row < rowOfHighPair) {
        return 11 - row;
    }
    return HighestPairedRank(five) >= categoryThreshold ? JokerHighPair : JokerNoPay;
}

// At the threshold of the game, the evaluator's word alone.
std::int32_t CategoryOfRow(const Card* five) {
    return 11 - static_cast<std::int32_t>(EvaluateCodes(JokerWild, five));
}

const IndependentCounts& JokerDeck() {
    static const IndependentCounts deck = TallyDeck(JokerDeckSize, classCount, CategoryOfRow);
    return deck;
}

JokerWorkArea CountDraws(const std::array<Card, HandSize>& cards,
                         std::int32_t threshold = JokerPairThreshold) {
    JokerWorkArea area{};
    area.cards = cards;
    area.pairThreshold = threshold;
    EXPECT_EQ(CountJokerDraws(area), 1);
    return area;
}

// Words that differ, of thirteen in each of 31 records.
std::int64_t Mismatches(const IndependentCounts& deck, const JokerWorkArea& area,
                        HoldCounts& counts) {
    std::int64_t mismatches = 0;
    CountAllHolds(deck, area.cards.data(), counts);
    for (std::size_t hold = 0; hold < HoldAllIndex; ++hold) {
        const std::int32_t* expected =
            &counts[static_cast<std::size_t>(HoldOrder[hold]) * classCount];
        const JokerCountRecord& record = area.records[hold];
        std::int32_t total = 0;
        for (std::size_t word = 0; word < classCount; ++word) {
            mismatches += record[word] != expected[word];
            total += expected[word];
        }
        mismatches += record[JokerTotal] != total;
    }
    return mismatches;
}

void ExpectEqualCounts(const IndependentCounts& deck, const std::vector<SuitClass>& classes,
                       std::size_t step, std::int32_t threshold = JokerPairThreshold) {
    HoldCounts counts;
    JokerWorkArea area{};
    area.pairThreshold = threshold;
    std::int64_t compared = 0;
    std::int64_t mismatches = 0;
    for (std::size_t i = 0; i < classes.size(); i += step) {
        area.cards = classes[i].cards;
        CountJokerDraws(area);
        mismatches += Mismatches(deck, area, counts);
        compared += HoldAllIndex * static_cast<std::int64_t>(JokerRecordSize);
    }
    EXPECT_EQ(mismatches, 0) << "of " << compared << " at threshold " << threshold;
    ::testing::Test::RecordProperty("compared", std::to_string(compared));
}

const JokerCountRecord& RecordOf(const JokerWorkArea& area, HoldPattern pattern) {
    return area.records[static_cast<std::size_t>(HoldIndex[static_cast<std::size_t>(pattern)])];
}

std::int32_t HeldCards(HoldPattern pattern) {
    std::int32_t held = 0;
    for (; pattern != 0; pattern &= pattern - 1) {
        ++held;
    }
    return held;
}

void ExpectTotals(const JokerWorkArea& area) {
    for (HoldPattern pattern = 0; pattern < HoldAll; ++pattern) {
        const JokerCountRecord& record = RecordOf(area, pattern);
        std::int32_t sum = 0;
        for (std::size_t word = 0; word < classCount; ++word) {
            sum += record[word];
        }
        EXPECT_EQ(record[JokerTotal], Choose(48, 5 - HeldCards(pattern))) << pattern;
        EXPECT_EQ(sum, record[JokerTotal]) << pattern;
    }
}

constexpr Card Clubs(std::int32_t rank) {
    return CardOf(0, rank);
}
constexpr Card Hearts(std::int32_t rank) {
    return CardOf(2, rank);
}

constexpr std::array<Card, HandSize> naturalRoyal = {
    Clubs(RankTen), Clubs(RankJack), Clubs(RankQueen), Clubs(RankKing), Clubs(RankAce)};
constexpr std::array<Card, HandSize> fourSevens = {CardOf(0, 5), CardOf(1, 5), CardOf(2, 5),
                                                   CardOf(3, 5), Clubs(RankKing)};

} // namespace

TEST(JokerProof, EveryHoldOfEveryNaturalDealIsExact) {
    ExpectEqualCounts(JokerDeck(), NaturalClasses(), TESSARIN_PROOF_STEP);
}

TEST(JokerProof, EveryHoldOfEveryDealWithTheJokerIsExact) {
    ExpectEqualCounts(JokerDeck(), JokerClasses(), TESSARIN_PROOF_STEP);
}

// The pair threshold is read from the work area: the same holds at the other thresholds that the
// header vouches for.
TEST(JokerProof, OtherThresholdsAreExact) {
    const std::vector<SuitClass> natural = NaturalClasses();
    const std::vector<SuitClass> withJoker = JokerClasses();
    // The instrumented builds take long to build a table.
    const std::vector<std::int32_t> thresholds =
        TESSARIN_PROOF_STEP == 1 ? std::vector<std::int32_t>{5, 10, RankAce, RanksPerSuit}
                                 : std::vector<std::int32_t>{RankAce};
    for (const std::int32_t threshold : thresholds) {
        categoryThreshold = threshold;
        const IndependentCounts deck = TallyDeck(JokerDeckSize, classCount, CategoryOfHand);
        ExpectEqualCounts(deck, natural, 31 * TESSARIN_PROOF_STEP, threshold);
        ExpectEqualCounts(deck, withJoker, 7 * TESSARIN_PROOF_STEP, threshold);
    }
    categoryThreshold = JokerPairThreshold;
}

TEST(JokerDraws, EveryPatternSumsToItsTotal) {
    ExpectTotals(CountDraws(fourSevens));
    ExpectTotals(CountDraws(naturalRoyal));
    ExpectTotals(CountDraws({JokerCard, Clubs(3), Hearts(3), Clubs(9), Hearts(RankAce)}));
    const JokerWorkArea area = CountDraws(naturalRoyal);
    EXPECT_EQ(RecordOf(area, 0)[JokerTotal], 1712304);
    EXPECT_EQ(RecordOf(area, 1)[JokerTotal], 194580);
    EXPECT_EQ(RecordOf(area, 3)[JokerTotal], 17296);
    EXPECT_EQ(RecordOf(area, 7)[JokerTotal], 1128);
    EXPECT_EQ(RecordOf(area, 15)[JokerTotal], 48);
}

TEST(JokerDraws, FourRoyalCardsAreCompletedByTheFifthOrTheJoker) {
    // The fifth card of this royal is discarded, so that only the joker completes it.
    const JokerWorkArea dealt = CountDraws(naturalRoyal);
    for (const HoldPattern four : {30, 29, 27, 23, 15}) {
        EXPECT_EQ(RecordOf(dealt, four)[JokerNaturalRoyal], 0);
        EXPECT_EQ(RecordOf(dealt, four)[JokerWildRoyal], 1);
    }
    auto cards = naturalRoyal;
    cards[2] = Hearts(0);
    const JokerWorkArea missing = CountDraws(cards);
    EXPECT_EQ(RecordOf(missing, 27)[JokerNaturalRoyal], 1);
    EXPECT_EQ(RecordOf(missing, 27)[JokerWildRoyal], 1);
    cards[2] = JokerCard;
    const JokerWorkArea jokerGone = CountDraws(cards);
    EXPECT_EQ(RecordOf(jokerGone, 27)[JokerNaturalRoyal], 1);
    EXPECT_EQ(RecordOf(jokerGone, 27)[JokerWildRoyal], 0);
}

TEST(JokerDraws, FourOfAKindBecomesFiveByTheJokerAlone) {
    const JokerWorkArea area = CountDraws(fourSevens);
    EXPECT_EQ(RecordOf(area, 15)[JokerFiveOfAKind], 1);
    EXPECT_EQ(RecordOf(area, 15)[JokerQuads], 47);
}

TEST(JokerDraws, JokerAndTripsBecomeFiveByTheOneCardLeft) {
    const JokerWorkArea left =
        CountDraws({JokerCard, CardOf(0, 5), CardOf(1, 5), CardOf(2, 5), Clubs(9)});
    EXPECT_EQ(RecordOf(left, 15)[JokerFiveOfAKind], 1);
    EXPECT_EQ(RecordOf(left, 15)[JokerQuads], 47);
    const JokerWorkArea dealt =
        CountDraws({JokerCard, CardOf(0, 5), CardOf(1, 5), CardOf(2, 5), CardOf(3, 5)});
    EXPECT_EQ(RecordOf(dealt, 15)[JokerFiveOfAKind], 0);
    EXPECT_EQ(RecordOf(dealt, 15)[JokerQuads], 48);
}

TEST(JokerDraws, TripsBecomeFiveByTheLastCardAndTheJoker) {
    const JokerWorkArea both =
        CountDraws({CardOf(0, 5), CardOf(1, 5), CardOf(2, 5), Clubs(9), Hearts(0)});
    EXPECT_EQ(RecordOf(both, 7)[JokerFiveOfAKind], 1);
    EXPECT_EQ(RecordOf(CountDraws(fourSevens), 7)[JokerFiveOfAKind], 0);
    const JokerWorkArea jokerGone =
        CountDraws({CardOf(0, 5), CardOf(1, 5), CardOf(2, 5), JokerCard, Hearts(0)});
    EXPECT_EQ(RecordOf(jokerGone, 7)[JokerFiveOfAKind], 0);
}

TEST(JokerDraws, NothingWildIsDrawnOnceTheJokerIsDiscarded) {
    const JokerWorkArea area =
        CountDraws({JokerCard, Clubs(1), Hearts(4), Clubs(9), Hearts(RankKing)});
    for (HoldPattern pattern = 0; pattern < HoldAll; pattern += 2) {
        EXPECT_EQ(RecordOf(area, pattern)[JokerFiveOfAKind], 0) << pattern;
        EXPECT_EQ(RecordOf(area, pattern)[JokerWildRoyal], 0) << pattern;
    }
}

TEST(JokerDraws, HoldAllIsClearedAndNoMore) {
    JokerWorkArea area{};
    area.cards = naturalRoyal;
    area.pairThreshold = JokerPairThreshold;
    for (JokerCountRecord& record : area.records) {
        record.fill(-7);
    }
    CountJokerDraws(area);
    const JokerCountRecord& all = area.records[HoldAllIndex];
    EXPECT_TRUE(std::all_of(all.begin(), all.begin() + classCount,
                            [](std::int32_t word) { return word == 0; }));
    EXPECT_EQ(all[JokerTotal], -7);
    EXPECT_EQ(area.cards, naturalRoyal);
    EXPECT_EQ(area.pairThreshold, JokerPairThreshold);
}

TEST(JokerDraws, OneCountLeavesNothingBehindForTheNext) {
    const auto first = CountDraws(naturalRoyal).records;
    CountDraws({JokerCard, JokerCard, Clubs(0), Clubs(0), Clubs(0)}, 0);
    CountDraws(fourSevens, 13);
    EXPECT_EQ(CountDraws(naturalRoyal).records, first);
}

TEST(JokerDraws, PositionsAndSuitsDoNotMatter) {
    HandSource source{20260};
    std::array<std::size_t, HandSize> place = {0, 1, 2, 3, 4};
    std::array<std::int32_t, SuitCount + 1> suit = {0, 1, 2, 3, JokerSuit};
    for (int hand = 0; hand < 20000 / TESSARIN_PROOF_STEP; ++hand) {
        std::swap(place[0], place[static_cast<std::size_t>(source.Next(HandSize))]);
        std::swap(place[4], place[static_cast<std::size_t>(source.Next(HandSize))]);
        std::swap(suit[0], suit[static_cast<std::size_t>(source.Next(SuitCount))]);
        const std::array<Card, HandSize> cards = source.Deal(JokerDeckSize);
        std::array<Card, HandSize> moved;
        for (std::size_t i = 0; i < HandSize; ++i) {
            moved[place[i]] =
                CardOf(suit[static_cast<std::size_t>(SuitOf(cards[i]))], RankOf(cards[i]));
        }
        const JokerWorkArea area = CountDraws(cards);
        const JokerWorkArea movedArea = CountDraws(moved);
        for (HoldPattern pattern = 0; pattern < HoldAll; ++pattern) {
            HoldPattern movedPattern = 0;
            for (std::size_t i = 0; i < HandSize; ++i) {
                movedPattern |= (pattern >> i & 1) << place[i];
            }
            ASSERT_EQ(RecordOf(area, pattern), RecordOf(movedArea, movedPattern));
        }
    }
}

// Cards that no deal has: codes that stand twice or more, and several jokers. The sanitizers see
// that no table is left; the sums still come out.
TEST(JokerDraws, ImpossibleHandsDoNoHarm) {
    HandSource source{53};
    for (int hand = 0; hand < 20000; ++hand) {
        // Few codes, so that most hands have duplicates.
        const std::array<Card, 4> codes = {source.Next(JokerDeckSize), source.Next(JokerDeckSize),
                                           JokerCard, CardOf(source.Next(SuitCount), RankAce)};
        std::array<Card, HandSize> cards;
        for (Card& card : cards) {
            card = codes[static_cast<std::size_t>(source.Next(codes.size()))];
        }
        ExpectTotals(CountDraws(cards, source.Next(RanksPerSuit + 1)));
    }
    for (Card card = 0; card <= JokerCard; ++card) {
        for (std::int32_t threshold = 0; threshold <= RanksPerSuit; ++threshold) {
            ExpectTotals(CountDraws({card, card, card, card, card}, threshold));
        }
    }
}

// From one rank on, any pair pays; past the ace, none does.
TEST(JokerDraws, ThresholdZeroPaysAnyPairAndThirteenNone) {
    const std::array<Card, HandSize> cards = {Clubs(0), Hearts(0), Clubs(5), Hearts(7), Clubs(9)};
    EXPECT_EQ(RecordOf(CountDraws(cards, 13), 3)[JokerHighPair], 0);
    EXPECT_EQ(RecordOf(CountDraws(cards, 1), 3)[JokerHighPair], 0);
    EXPECT_GT(RecordOf(CountDraws(cards, 0), 3)[JokerHighPair], 0);
}
