// Every five-card hand of the deck in every game: as many in each row as combinatorics says, and
// the same row as a second evaluator gives. Builds without optimisation take one hand in a
// hundred for the second check and leave the count to the others.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/evaluate.h"
#include "core/game_tables.h"
#include "tests/core/reference_evaluator.h"

namespace {

#ifdef NDEBUG
constexpr std::uint32_t Stride = 1;
#else
constexpr std::uint32_t Stride = 101;
#endif

constexpr std::int64_t C(std::int64_t n, std::int64_t k) {
    std::int64_t ways = 1;
    for (std::int64_t i = 0; i < k; ++i) {
        ways = ways * (n - i) / (i + 1);
    }
    return k > n ? 0 : ways;
}

// How many sets of k different ranks lie within some straight. Ranks stand at 2..14; `bottom` is
// the lowest that is natural (2, or 3 where deuces are wild). First by their lowest rank, which
// leaves at most four ranks above it, then those in which the ace stands below a five.
constexpr std::int64_t StraightSets(std::int64_t bottom, std::int64_t k) {
    std::int64_t sets = 0;
    for (std::int64_t lowest = bottom; lowest <= 14; ++lowest) {
        sets += C(lowest <= 10 ? 4 : 14 - lowest, k - 1);
    }
    return sets + C(6 - bottom, k - 1);
}
static_assert(StraightSets(2, 5) == 10);

// A row: how many of the deck's hands are dealt in it, by formula and by figure.
struct Row {
    std::int64_t formula;
    std::int64_t figure;
};

using Rows = std::vector<Row>;

// The hands that games without wild cards share.
constexpr std::int64_t Royals = 4;
constexpr std::int64_t StraightFlushes = StraightSets(2, 5) * 4 - Royals;
constexpr std::int64_t QuadsOfOneRank = 48;
constexpr std::int64_t FullHouses = 13 * C(4, 3) * 12 * C(4, 2);
constexpr std::int64_t Flushes = 4 * (C(13, 5) - StraightSets(2, 5));
constexpr std::int64_t Straights = StraightSets(2, 5) * (4 * 4 * 4 * 4 * 4 - 4);
constexpr std::int64_t Trips = 13 * C(4, 3) * C(12, 2) * 4 * 4;
constexpr std::int64_t TwoPairs = C(13, 2) * C(4, 2) * C(4, 2) * 44;
constexpr std::int64_t PairsOfOneRank = C(4, 2) * C(12, 3) * 4 * 4 * 4;
constexpr std::int64_t NoPairs = (C(13, 5) - StraightSets(2, 5)) * (4 * 4 * 4 * 4 * 4 - 4);

const Rows jacksOrBetter = {
    {Royals, 4},                             // royal flush
    {StraightFlushes, 36},                   // straight flush
    {13 * QuadsOfOneRank, 624},              // four of a kind
    {FullHouses, 3744},                      // full house
    {Flushes, 5108},                         // flush
    {Straights, 10200},                      // straight
    {Trips, 54912},                          // three of a kind
    {TwoPairs, 123552},                      // two pair
    {4 * PairsOfOneRank, 337920},            // jacks or better
    {NoPairs + 9 * PairsOfOneRank, 2062860}, // nothing
};

// Deuces: w of them in C(4, w) ways, with 5 - w naturals of twelve ranks.
const Rows deucesWild = {
    {4, 4},                                                // natural royal
    {48, 48},                                              // four deuces
    {4 * (4 * C(5, 4) + 6 * C(5, 3) + 4 * C(5, 2)), 480},  // wild royal
    {12 * (4 * C(4, 4) + 6 * C(4, 3) + 4 * C(4, 2)), 624}, // five of a kind
    {4 * ((StraightSets(3, 5) - 1) + 4 * (StraightSets(3, 4) - 5) + 6 * (StraightSets(3, 3) - 10) +
          4 * (StraightSets(3, 2) - 10)),
     2068}, // straight flush
    {12 * 44 + 4 * 12 * C(4, 3) * 44 + 6 * 12 * C(4, 2) * 44 +
         4 * (C(12, 2) * 16 - StraightSets(3, 2) * 4),
     31552},                                                     // four of a kind
    {12 * C(4, 3) * 11 * C(4, 2) + 4 * C(12, 2) * 6 * 6, 12672}, // full house
    {4 * ((C(12, 5) - StraightSets(3, 5)) + 4 * (C(12, 4) - StraightSets(3, 4)) +
          6 * (C(12, 3) - StraightSets(3, 3))),
     14472}, // flush
    {StraightSets(3, 5) * (1024 - 4) + 4 * StraightSets(3, 4) * (256 - 4) +
         6 * StraightSets(3, 3) * (64 - 4),
     62232}, // straight
    {12 * C(4, 3) * C(11, 2) * 16 + 4 * 12 * C(4, 2) * C(11, 2) * 16 +
         6 * (C(12, 3) - StraightSets(3, 3)) * (64 - 4),
     355080}, // three of a kind
    {C(12, 2) * 36 * 40 + 12 * 6 * C(11, 3) * 64 + (C(12, 5) - StraightSets(3, 5)) * (1024 - 4) +
         4 * (C(12, 4) - StraightSets(3, 4)) * (256 - 4),
     2119728}, // nothing
};

// Of the four-rank sets within a straight, those below the king: from two to queen, or ace to five
// without its ace, which is among them.
constexpr std::int64_t LowStraightSets = [] {
    std::int64_t sets = 0;
    for (std::int64_t lowest = 2; lowest <= 12; ++lowest) {
        sets += C(lowest <= 8 ? 4 : 12 - lowest, 3);
    }
    return sets;
}();
constexpr std::int64_t HighSets =
    C(13, 4) - C(11, 4) - (StraightSets(2, 4) - LowStraightSets); // king or ace, no straight
constexpr std::int64_t LowSets = C(11, 4) - LowStraightSets;

// The hands of the plain deck, and those of the joker with four naturals.
const Rows jokerWild = {
    {Royals, 4},                                                    // natural royal
    {13, 13},                                                       // five of a kind
    {4 * C(5, 4), 20},                                              // royal with joker
    {StraightFlushes + 4 * (StraightSets(2, 4) - 5), 180},          // straight flush
    {13 * QuadsOfOneRank + 13 * C(4, 3) * 48, 3120},                // four of a kind
    {FullHouses + C(13, 2) * 6 * 6, 6552},                          // full house
    {Flushes + 4 * (C(13, 4) - StraightSets(2, 4)), 7804},          // flush
    {Straights + StraightSets(2, 4) * (256 - 4), 20532},            // straight
    {Trips + 13 * C(4, 2) * C(12, 2) * 16, 137280},                 // three of a kind
    {TwoPairs, 123552},                                             // two pair
    {2 * PairsOfOneRank + HighSets * (256 - 4), 262956},            // kings or better
    {NoPairs + 11 * PairsOfOneRank + LowSets * (256 - 4), 2307672}, // nothing
};

const Rows doubleDoubleJackpot = {
    {Royals, 4},                             // royal flush
    {StraightFlushes, 36},                   // straight flush
    {12, 12},                                // four aces with a jack, queen or king
    {QuadsOfOneRank - 12, 36},               // four aces
    {3 * 12, 36},                            // four jacks to kings with a jack to an ace
    {3 * (QuadsOfOneRank - 12), 108},        // four jacks to kings
    {9 * QuadsOfOneRank, 432},               // four deuces to tens
    {FullHouses, 3744},                      // full house
    {Flushes, 5108},                         // flush
    {Straights, 10200},                      // straight
    {Trips, 54912},                          // three of a kind
    {TwoPairs, 123552},                      // two pair
    {4 * PairsOfOneRank, 337920},            // jacks or better
    {NoPairs + 9 * PairsOfOneRank, 2062860}, // nothing
};

const Rows doubleBonusPoker = {
    {Royals, 4},                             // royal flush
    {StraightFlushes, 36},                   // straight flush
    {QuadsOfOneRank, 48},                    // four aces
    {3 * QuadsOfOneRank, 144},               // four deuces, threes or fours
    {9 * QuadsOfOneRank, 432},               // four fives to kings
    {FullHouses, 3744},                      // full house
    {Flushes, 5108},                         // flush
    {Straights, 10200},                      // straight
    {Trips, 54912},                          // three of a kind
    {TwoPairs, 123552},                      // two pair
    {4 * PairsOfOneRank, 337920},            // jacks or better
    {NoPairs + 9 * PairsOfOneRank, 2062860}, // nothing
};

const Rows doubleDoubleBonus = {
    {Royals, 4},                             // royal flush
    {StraightFlushes, 36},                   // straight flush
    {12, 12},                                // four aces with a deuce, three or four
    {3 * 12, 36},                            // four deuces to fours with an ace to a four
    {QuadsOfOneRank - 12, 36},               // four aces
    {3 * (QuadsOfOneRank - 12), 108},        // four deuces to fours
    {9 * QuadsOfOneRank, 432},               // four fives to kings
    {FullHouses, 3744},                      // full house
    {Flushes, 5108},                         // flush
    {Straights, 10200},                      // straight
    {Trips, 54912},                          // three of a kind
    {TwoPairs, 123552},                      // two pair
    {4 * PairsOfOneRank, 337920},            // jacks or better
    {NoPairs + 9 * PairsOfOneRank, 2062860}, // nothing
};

const Rows& RowsOf(GameId game) {
    static const Rows* const all[] = {&jacksOrBetter,       &deucesWild,       &jokerWild,
                                      &doubleDoubleJackpot, &doubleBonusPoker, &doubleDoubleBonus};
    static_assert(std::size(all) == GameCount);
    return *all[game];
}

const GameTable& TableOf(GameId game) {
    return gameTables[static_cast<std::size_t>(game)];
}

// Calls visit(cards) for every set of `count` of the codes first..last, ascending.
template <typename Visit>
void ForEachSet(std::size_t count, Card first, Card last, Visit visit) {
    std::array<Card, HandSize> cards{};
    const auto place = [&](const auto& self, std::size_t at, Card from) -> void {
        if (at == count) {
            visit(cards);
            return;
        }
        for (Card card = from; card <= last; ++card) {
            cards[at] = card;
            self(self, at + 1, card + 1);
        }
    };
    place(place, 0, first);
}

// Counts a disagreement instead of stopping at each: one hand of the first is enough to go by.
struct Agreement {
    GameId game;
    std::uint32_t seen = 0;
    std::uint32_t checked = 0;
    std::uint32_t differing = 0;
    std::array<Card, HandSize> first{};

    void Check(const std::array<Card, HandSize>& hand, HandRank expected) {
        ++checked;
        if (EvaluateCodes(game, hand.data()) != expected && differing++ == 0) {
            first = hand;
        }
    }
    bool Due() { return seen++ % Stride == 0; }
    void Expect(std::int64_t hands) const {
        EXPECT_EQ(seen, hands);
        EXPECT_GE(checked, hands / Stride);
        EXPECT_EQ(differing, 0U) << "the first is " << first[0] << ' ' << first[1] << ' '
                                 << first[2] << ' ' << first[3] << ' ' << first[4];
    }
};

std::string NameOf(const testing::TestParamInfo<GameId>& game) {
    static const char* const names[] = {"JacksOrBetter",    "DeucesWild",
                                        "JokerWild",        "DoubleDoubleJackpot",
                                        "DoubleBonusPoker", "DoubleDoubleBonus"};
    static_assert(std::size(names) == GameCount);
    return names[game.param];
}

std::vector<GameId> AllGames() {
    std::vector<GameId> games;
    for (std::int32_t id = 0; id < GameCount; ++id) {
        games.push_back(static_cast<GameId>(id));
    }
    return games;
}

class EveryHand : public testing::TestWithParam<GameId> {};

} // namespace

TEST_P(EveryHand, FormulasAndFiguresAreTheSameAndMakeUpTheDeck) {
    const Rows& rows = RowsOf(GetParam());
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(TableOf(GetParam()).rowCount) + 1);
    std::int64_t sum = 0;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(rows[row].formula, rows[row].figure) << "row " << row;
        sum += rows[row].figure;
    }
    EXPECT_EQ(sum, C(TableOf(GetParam()).deckSize, 5));
}

#ifdef NDEBUG
TEST_P(EveryHand, FallsIntoItsRowAsOftenAsPublished) {
    const GameId game = GetParam();
    const Rows& rows = RowsOf(game);
    std::vector<std::int64_t> counts(rows.size());
    ForEachSet(5, 0, TableOf(game).deckSize - 1, [&](const std::array<Card, HandSize>& hand) {
        ++counts.at(EvaluateCodes(game, hand.data()));
    });
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(counts[row], rows[row].figure) << "row " << row;
    }
}
#endif

TEST_P(EveryHand, WithoutAWildCardHasTheRowOfTheSecondEvaluator) {
    const GameId game = GetParam();
    Agreement agreement{game};
    const auto hasDeuce = [](const std::array<Card, HandSize>& hand) {
        return RankOf(hand[0]) == 0 || RankOf(hand[1]) == 0 || RankOf(hand[2]) == 0 ||
               RankOf(hand[3]) == 0 || RankOf(hand[4]) == 0;
    };
    ForEachSet(5, 0, 51, [&](const std::array<Card, HandSize>& hand) {
        if (game == DeucesWild && hasDeuce(hand)) {
            return;
        }
        if (agreement.Due()) {
            agreement.Check(hand, NaturalRow(game, hand.data()));
        }
    });
    agreement.Expect(game == DeucesWild ? C(48, 5) : C(52, 5));
}

TEST(EveryHandOfDeucesWild, WithDeucesHasTheBestRowTheyCanMake) {
    Agreement agreement{DeucesWild};
    std::vector<Card> naturalCards;
    for (Card card = 0; card < StandardDeckSize; ++card) {
        if (RankOf(card) != RankDeuce) {
            naturalCards.push_back(card);
        }
    }
    std::int64_t hands = 0;
    for (std::size_t deuces = 1; deuces <= 4; ++deuces) {
        const std::size_t naturals = HandSize - deuces;
        hands +=
            C(4, static_cast<std::int64_t>(deuces)) * C(48, static_cast<std::int64_t>(naturals));
        ForEachSet(naturals, 0, 47, [&](std::array<Card, HandSize> hand) {
            for (std::size_t i = 0; i < naturals; ++i) {
                hand[i] = naturalCards[static_cast<std::size_t>(hand[i])];
            }
            // Which deuces they are makes no difference to what they stand for.
            HandRank best = NoHand;
            ForEachSet(deuces, 0, 3, [&](const std::array<Card, HandSize>& suits) {
                for (std::size_t i = 0; i < deuces; ++i) {
                    hand[naturals + i] = CardOf(suits[i], RankDeuce);
                }
                if (!agreement.Due()) {
                    return;
                }
                if (best == NoHand) {
                    best = BestWildRow(DeucesWild, hand.data(), naturals);
                }
                agreement.Check(hand, best);
            });
        });
    }
    agreement.Expect(hands);
    EXPECT_EQ(hands + C(48, 5), C(52, 5));
}

TEST(EveryHandOfJokerWild, WithTheJokerHasTheBestRowItCanMake) {
    Agreement agreement{JokerWild};
    ForEachSet(4, 0, 51, [&](std::array<Card, HandSize> hand) {
        hand[4] = JokerCard;
        if (agreement.Due()) {
            agreement.Check(hand, BestWildRow(JokerWild, hand.data(), 4));
        }
    });
    agreement.Expect(C(52, 4));
}

INSTANTIATE_TEST_SUITE_P(Games, EveryHand, testing::ValuesIn(AllGames()), NameOf);
