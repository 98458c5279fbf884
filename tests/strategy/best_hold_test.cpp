#include "strategy/best_hold.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <vector>

#include "core/evaluate.h"
#include "strategy/choose.h"
#include "tests/strategy/engine_signature.h"
#include "tests/strategy/independent_counts.h"
#include "tests/strategy/random_hands.h"
#include "tests/strategy/suit_classes.h"

namespace {

using ResultTable = std::array<HoldResult, HoldCount>;

// A game with payouts of its own.
struct TestGame {
    GameDescriptor game{};
    Paytable payouts{};

    explicit TestGame(std::int32_t id) { DescribeGame(game, id, payouts); }
    TestGame(const TestGame&) = delete;
    TestGame& operator=(const TestGame&) = delete;
};

std::size_t RowsOf(const GameDescriptor& game) {
    return static_cast<std::size_t>(game.rowCount);
}

bool SameResult(const HoldResult& a, const HoldResult& b, std::size_t rows) {
    return std::equal(a.counts.begin(), a.counts.begin() + static_cast<std::ptrdiff_t>(rows) + 2,
                      b.counts.begin()) &&
           a.pattern == b.pattern && a.expectedReturn == b.expectedReturn;
}

bool SameTable(const ResultTable& a, const ResultTable& b, std::size_t rows) {
    return std::equal(a.begin(), a.end(), b.begin(), [&](const HoldResult& x, const HoldResult& y) {
        return SameResult(x, y, rows);
    });
}

std::int32_t FirstHighest(const ResultTable& table) {
    const auto best =
        std::max_element(table.begin(), table.end(), [](const HoldResult& a, const HoldResult& b) {
            return a.expectedReturn < b.expectedReturn;
        });
    return static_cast<std::int32_t>(best - table.begin());
}

// Coins a draw in the row is worth.
std::int32_t PayOf(const GameDescriptor& game, std::size_t row, std::int32_t coins) {
    if (coins == MaxBet) {
        return game.fiveCoins[row];
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(game.oneCoin[row]) *
                                     static_cast<std::uint32_t>(coins));
}

// The return of the record's own counts: a 64-bit sum cut to 32 bits, over the total.
double ReturnOfCounts(const HoldResult& result, const GameDescriptor& game, std::int32_t coins) {
    std::uint64_t sum = 0;
    for (std::size_t row = 0; row < RowsOf(game); ++row) {
        sum += static_cast<std::uint64_t>(static_cast<std::int64_t>(result.counts[row])) *
               static_cast<std::uint64_t>(std::int64_t{PayOf(game, row, coins)});
    }
    const auto wrapped = static_cast<std::int32_t>(static_cast<std::uint32_t>(sum));
    return static_cast<double>(wrapped) / result.counts[RowsOf(game) + 1];
}

template <std::int32_t id>
std::int32_t RowOf(const Card* five) {
    return static_cast<std::int32_t>(EvaluateCodes(id, five));
}
constexpr CategoryOf rowOf[] = {RowOf<0>, RowOf<1>, RowOf<2>, RowOf<3>, RowOf<4>, RowOf<5>};
static_assert(std::size(rowOf) == GameCount);

// Instrumented builds try fewer hands, as they prove fewer classes.
constexpr int ThinOut(int hands) {
    return TESSARIN_PROOF_STEP == 1 ? hands : hands / 10;
}

class EachGame : public testing::TestWithParam<std::int32_t> {};

INSTANTIATE_TEST_SUITE_P(Games, EachGame, testing::Range(0, GameCount));

} // namespace

// Rows, totals, returns and choice of every deal class, or of every TESSARIN_PROOF_STEP-th, against
// the evaluator's own rows counted by the independent method.
TEST_P(EachGame, TableOfEveryClassEqualsIndependentCounts) {
    const TestGame test(GetParam());
    const GameDescriptor& game = test.game;
    const std::size_t rows = RowsOf(game);
    const IndependentCounts deck = TallyDeck(game.deckSize, rows + 1, rowOf[game.id]);
    std::vector<SuitClass> classes = NaturalClasses();
    if (game.deckSize == JokerDeckSize) {
        const std::vector<SuitClass> jokers = JokerClasses();
        classes.insert(classes.end(), jokers.begin(), jokers.end());
    }
    HoldCounts counts;
    for (std::size_t i = 0; i < classes.size(); i += TESSARIN_PROOF_STEP) {
        const CardRecords hand = RecordsOf(classes[i].cards);
        const std::int32_t best = FindBestHold(hand.data(), game, MaxBet);
        CountAllHolds(deck, classes[i].cards.data(), counts);
        for (std::size_t hold = 0; hold < HoldCount; ++hold) {
            const HoldResult& result = resultTable[hold];
            const std::int32_t* expected =
                &counts[static_cast<std::size_t>(HoldOrder[hold]) * (rows + 1)];
            ASSERT_TRUE(std::equal(expected, expected + rows + 1, result.counts.begin()))
                << "class " << i << " hold " << hold;
            ASSERT_EQ(result.counts[rows + 1], std::accumulate(expected, expected + rows + 1, 0));
            ASSERT_EQ(result.pattern, HoldOrder[hold]);
            ASSERT_EQ(result.expectedReturn, ReturnOfCounts(result, game, MaxBet));
        }
        ASSERT_EQ(best, FirstHighest(resultTable)) << "class " << i;
    }
}

TEST_P(EachGame, CountsTheSameWhereverTheCardsStandAndWhateverTheSuits) {
    const TestGame test(GetParam());
    const GameDescriptor& game = test.game;
    HandSource source{11};
    for (int i = 0; i < ThinOut(20000); ++i) {
        const std::array<Card, HandSize> cards = source.Deal(game.deckSize);
        FindBestHold(RecordsOf(cards).data(), game, 3);
        const ResultTable first = resultTable;

        std::array<std::int32_t, SuitCount> suits = {0, 1, 2, 3};
        std::array<std::size_t, HandSize> from = {0, 1, 2, 3, 4};
        for (std::int32_t at = 0; at < SuitCount; ++at) {
            std::swap(suits[static_cast<std::size_t>(at)],
                      suits[static_cast<std::size_t>(at + source.Next(SuitCount - at))]);
        }
        for (std::int32_t at = 0; at < 5; ++at) {
            std::swap(from[static_cast<std::size_t>(at)],
                      from[static_cast<std::size_t>(at + source.Next(5 - at))]);
        }
        std::array<Card, HandSize> moved{};
        for (std::size_t at = 0; at < HandSize; ++at) {
            const Card card = cards[from[at]];
            moved[at] = card == JokerCard
                            ? card
                            : CardOf(suits[static_cast<std::size_t>(SuitOf(card))], RankOf(card));
        }
        FindBestHold(RecordsOf(moved).data(), game, 3);
        for (std::size_t hold = 0; hold < HoldCount; ++hold) {
            HoldPattern pattern = 0;
            for (std::size_t at = 0; at < HandSize; ++at) {
                pattern |= (HoldOrder[hold] >> at & 1) << from[at];
            }
            HoldResult expected =
                first[static_cast<std::size_t>(HoldIndex[static_cast<std::size_t>(pattern)])];
            expected.pattern = HoldOrder[hold];
            ASSERT_TRUE(SameResult(resultTable[hold], expected, RowsOf(game)))
                << "hand " << i << " hold " << hold;
        }
    }
}

TEST_P(EachGame, HoldingAllIsTheHandItself) {
    const TestGame test(GetParam());
    const GameDescriptor& game = test.game;
    HandSource source{12};
    for (int i = 0; i < 2000; ++i) {
        const CardRecords hand = RecordsOf(source.Deal(game.deckSize));
        for (std::int32_t coins = 1; coins <= MaxBet; ++coins) {
            FindBestHold(hand.data(), game, coins);
            HoldResult expected{{}, HoldAll, 0.0};
            const HandRank rank = Evaluate(game.id, hand.data());
            expected.counts[rank] = 1;
            expected.counts[RowsOf(game) + 1] = 1;
            if (rank < RowsOf(game)) {
                expected.expectedReturn = PayOf(game, rank, coins);
            }
            const HoldResult& result = resultTable[HoldAllIndex];
            ASSERT_EQ(result.counts, expected.counts);
            ASSERT_TRUE(SameResult(result, expected, RowsOf(game)));
        }
    }
}

TEST_P(EachGame, WeighsByTheColumnOfTheBetAndWrapsInThirtyTwoBits) {
    TestGame test(GetParam());
    const GameDescriptor& game = test.game;
    HandSource source{13};
    for (int i = 0; i < 2000; ++i) {
        const CardRecords hand = RecordsOf(source.Deal(game.deckSize));
        for (std::size_t row = 0; row < RowsOf(game); ++row) {
            constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
            test.payouts.oneCoin[row] = source.Next(3) == 0 ? most : source.Next(most);
            test.payouts.fiveCoins[row] = source.Next(3) == 0 ? most : source.Next(most);
        }
        for (std::int32_t coins = 1; coins <= MaxBet; ++coins) {
            const std::int32_t best = FindBestHold(hand.data(), game, coins);
            for (std::size_t hold = 0; hold < HoldAllIndex; ++hold) {
                ASSERT_EQ(resultTable[hold].expectedReturn,
                          ReturnOfCounts(resultTable[hold], game, coins));
            }
            // Returns of -1 and below, which only a wrapped sum has, are never chosen.
            const std::int32_t highest = FirstHighest(resultTable);
            const double value = resultTable[static_cast<std::size_t>(highest)].expectedReturn;
            ASSERT_EQ(best, value > -1.0 ? highest : 0);
        }
    }
}

TEST_P(EachGame, GivesEqualReturnsToTheEarlierHold) {
    TestGame test(GetParam());
    test.payouts = {};
    HandSource source{14};
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(FindBestHold(RecordsOf(source.Deal(52)).data(), test.game, MaxBet), 0);
    }
}

TEST_P(EachGame, SearchesAnyCodesWithinTheTables) {
    const TestGame test(GetParam());
    HandSource source{15};
    const auto search = [&](const std::array<Card, HandSize>& cards) {
        const std::int32_t best = FindBestHold(RecordsOf(cards).data(), test.game, 4);
        EXPECT_GE(best, 0);
        EXPECT_LT(best, HoldCount);
        for (std::size_t hold = 0; hold < HoldAllIndex; ++hold) {
            EXPECT_EQ(resultTable[hold].pattern, HoldOrder[hold]);
        }
    };
    for (Card card = 0; card <= JokerCard; ++card) {
        search({card, card, card, card, card});
        search({card, JokerCard, card, JokerCard, card});
        search({0, card, 26, card, 13});
        search({39, 13, card, 26, 0});
    }
    // Few codes to draw from, so that most hands have some twice, and some the joker's.
    for (int i = 0; i < ThinOut(20000); ++i) {
        std::array<Card, HandSize> cards{};
        const std::int32_t spread = 1 + source.Next(JokerDeckSize);
        for (Card& card : cards) {
            card = JokerCard - source.Next(spread);
        }
        search(cards);
    }
}

TEST(BestHold, TakesTheEarlierOfTwoPairsThatAreWorthTheSame) {
    TestGame test(JacksOrBetter);
    test.payouts = {};
    test.payouts.oneCoin[2] = 25; // only four of a kind pays
    // Positions 0, 3 hold deuces and 1, 2 treys.
    const CardRecords hand =
        RecordsOf({CardOf(0, 0), CardOf(0, 1), CardOf(1, 1), CardOf(1, 0), CardOf(2, 7)});
    const std::int32_t best = FindBestHold(hand.data(), test.game, 1);
    EXPECT_EQ(HoldOrder[static_cast<std::size_t>(best)], 0b01001);
    EXPECT_EQ(resultTable[static_cast<std::size_t>(best)].expectedReturn,
              resultTable[static_cast<std::size_t>(HoldIndex[0b00110])].expectedReturn);
}

TEST(BestHold, KeepsADealtRoyalFlush) {
    const TestGame test(JacksOrBetter);
    const CardRecords hand = RecordsOf({8, 9, 10, 11, 12});
    EXPECT_EQ(FindBestHold(hand.data(), test.game, MaxBet), HoldAllIndex);
    EXPECT_EQ(resultTable[HoldAllIndex].expectedReturn, 4000.0);
    EXPECT_EQ(FindBestHold(hand.data(), test.game, 4), HoldAllIndex);
    EXPECT_EQ(resultTable[HoldAllIndex].expectedReturn, 1000.0);
}

TEST(BestHold, LeavesAllButRecord31AloneForAnUnknownGame) {
    TestGame test(JacksOrBetter);
    const CardRecords hand = RecordsOf({8, 9, 10, 11, 25});
    const std::int32_t best = FindBestHold(hand.data(), test.game, 1);
    for (const std::int32_t id : {-1, GameCount, 99}) {
        ResultTable expected = resultTable;
        expected[HoldAllIndex].counts.fill(0);
        test.game.id = static_cast<GameId>(id);
        EXPECT_EQ(FindBestHold(hand.data(), test.game, 1), best);
        EXPECT_TRUE(SameTable(resultTable, expected, 28));
    }
}

TEST(BestHold, FrontsCountNothingForAGameThatIsNotTheirs) {
    const TestGame joker(JokerWild);
    const TestGame jacks(JacksOrBetter);
    const CardRecords hand = RecordsOf({8, 9, 10, 11, 25});
    resultTable = {};
    ScoreStandardHolds(hand.data(), joker.game, 1);
    ScoreDeucesHolds(hand.data(), joker.game, 1);
    ScoreJokerHolds(hand.data(), jacks.game, 1);
    for (std::size_t hold = 0; hold < HoldAllIndex; ++hold) {
        EXPECT_TRUE(SameResult(resultTable[hold], HoldResult{}, 28));
    }
}

// Any change of a count, a return or a choice shows here, in every build and on every platform.
TEST(BestHold, SignsAsProved) {
    EXPECT_EQ(EngineSignature(), ProvedSignature);
}

// A search that left anything behind would show in the next, of whatever game.
TEST(BestHold, LeavesNothingBehind) {
    struct Search {
        std::int32_t id;
        CardRecords hand;
        std::int32_t coins;
        std::int32_t best;
        ResultTable table;
    };
    std::vector<Search> searches;
    HandSource source{16};
    for (int i = 0; i < 3000; ++i) {
        const std::int32_t id = i % GameCount;
        const TestGame test(id);
        Search search{
            id, RecordsOf(source.Deal(test.game.deckSize)), 1 + source.Next(MaxBet), 0, {}};
        search.best = FindBestHold(search.hand.data(), test.game, search.coins);
        search.table = resultTable;
        searches.push_back(search);
    }
    for (int i = 0; i < 12000; ++i) {
        const Search& search = searches[static_cast<std::size_t>(source.Next(3000))];
        const TestGame test(search.id);
        ASSERT_EQ(FindBestHold(search.hand.data(), test.game, search.coins), search.best);
        ASSERT_TRUE(SameTable(resultTable, search.table, RowsOf(test.game)));
    }
}
