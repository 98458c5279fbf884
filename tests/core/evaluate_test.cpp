#include "core/evaluate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>

#include "core/game_tables.h"
#include "tests/core/reference_evaluator.h"

namespace {

using Codes = std::array<Card, HandSize>;

// Reads "Ts Jc 2d", with "Jo" for the joker.
Codes Parse(const std::string& text) {
    static const std::string suits = "cdhs";
    static const std::string ranks = RankLettersNarrow;
    Codes codes{};
    for (std::size_t i = 0; i < HandSize; ++i) {
        const std::string card = text.substr(i * 3, 2);
        codes[i] = card == "Jo" ? JokerCard
                                : CardOf(static_cast<std::int32_t>(suits.find(card[1])),
                                         static_cast<std::int32_t>(ranks.find(card[0])));
    }
    return codes;
}

// The row of the hand, the same in whichever order its cards lie.
HandRank Row(GameId game, const std::string& text) {
    Codes codes = Parse(text);
    const HandRank row = EvaluateCodes(game, codes.data());
    std::sort(codes.begin(), codes.end());
    do {
        EXPECT_EQ(EvaluateCodes(game, codes.data()), row) << text;
    } while (std::next_permutation(codes.begin(), codes.end()));
    return row;
}

HandRank RowCount(std::int32_t game) {
    return static_cast<HandRank>(gameTables[static_cast<std::size_t>(game)].rowCount);
}

constexpr std::array<GameId, GameCount> allGames = [] {
    std::array<GameId, GameCount> games{};
    for (std::int32_t id = 0; id < GameCount; ++id) {
        games[static_cast<std::size_t>(id)] = static_cast<GameId>(id);
    }
    return games;
}();

} // namespace

TEST(Evaluate, AnUnknownGameHasNoRow) {
    const Codes codes = Parse("Ts Js Qs Ks As");
    for (const std::int32_t game :
         {GameCount, GameCount + 1, -1, 99, std::numeric_limits<std::int32_t>::max(),
          std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(EvaluateCodes(game, codes.data()), NoHand);
    }
}

TEST(Evaluate, ReadsOnlyTheCodesOfTheCardRecords) {
    CardRecord hand[HandSize];
    const Codes codes = Parse("7c 7d 7h 7s Ac");
    for (std::size_t i = 0; i < HandSize; ++i) {
        hand[i] = {codes[i], -1, 99, 1234};
    }
    EXPECT_EQ(Evaluate(JacksOrBetter, hand), 2U);
    EXPECT_EQ(Evaluate(DoubleDoubleBonus, hand), 6U);
    EXPECT_EQ(Evaluate(GameCount, hand), NoHand);
}

TEST(Evaluate, TwoToFiveWithAnAceIsAStraightInEveryGame) {
    EXPECT_EQ(Row(JacksOrBetter, "2c 3d 4h 5s Ac"), 5U);
    EXPECT_EQ(Row(DeucesWild, "2c 3d 4h 5s Ac"), 8U);
    EXPECT_EQ(Row(JokerWild, "2c 3d 4h 5s Ac"), 7U);
    EXPECT_EQ(Row(DoubleDoubleJackpot, "2c 3d 4h 5s Ac"), 9U);
    EXPECT_EQ(Row(DoubleBonusPoker, "2c 3d 4h 5s Ac"), 7U);
    EXPECT_EQ(Row(DoubleDoubleBonus, "2c 3d 4h 5s Ac"), 9U);
}

TEST(Evaluate, TenToAceSuitedIsTheRoyalInEveryGame) {
    for (const GameId game : allGames) {
        EXPECT_EQ(Row(game, "Th Jh Qh Kh Ah"), 0U);
    }
}

TEST(Evaluate, AceToFiveSuitedIsAStraightFlushAndNeverARoyal) {
    EXPECT_EQ(Row(JacksOrBetter, "Ad 2d 3d 4d 5d"), 1U);
    EXPECT_EQ(Row(DeucesWild, "Ad 2d 3d 4d 5d"), 4U);
    EXPECT_EQ(Row(JokerWild, "Ad 2d 3d 4d 5d"), 3U);
    EXPECT_EQ(Row(DoubleDoubleJackpot, "Ad 2d 3d 4d 5d"), 1U);
    EXPECT_EQ(Row(DoubleBonusPoker, "Ad 2d 3d 4d 5d"), 1U);
    EXPECT_EQ(Row(DoubleDoubleBonus, "Ad 2d 3d 4d 5d"), 1U);
}

TEST(Evaluate, AStraightDoesNotGoRoundTheAce) {
    EXPECT_EQ(Row(JacksOrBetter, "Qc Kd Ah 2s 3c"), 9U);
    EXPECT_EQ(Row(JokerWild, "Jc Qd Kh As 2c"), 11U);
}

TEST(JacksOrBetterHands, PayAPairFromJacksUp) {
    EXPECT_EQ(Row(JacksOrBetter, "Tc Td 2h 5s 9c"), 9U);
    EXPECT_EQ(Row(JacksOrBetter, "Jc Jd 2h 5s 9c"), 8U);
    EXPECT_EQ(Row(JacksOrBetter, "Ac Ad 2h 5s 9c"), 8U);
}

TEST(JacksOrBetterHands, FallIntoEachRow) {
    EXPECT_EQ(Row(JacksOrBetter, "9h Th Jh Qh Kh"), 1U);
    EXPECT_EQ(Row(JacksOrBetter, "2c 2d 2h 2s Ac"), 2U);
    EXPECT_EQ(Row(JacksOrBetter, "2c 2d 2h Ks Kc"), 3U);
    EXPECT_EQ(Row(JacksOrBetter, "2h 5h 9h Jh Kh"), 4U);
    EXPECT_EQ(Row(JacksOrBetter, "2c 2d 2h Qs Kc"), 6U);
    EXPECT_EQ(Row(JacksOrBetter, "2c 2d 3h 3s Kc"), 7U);
    EXPECT_EQ(Row(JacksOrBetter, "2c 3d 4h 5s 7c"), 9U);
}

TEST(DoubleBonusHands, TellFourOfAKindByRank) {
    EXPECT_EQ(Row(DoubleBonusPoker, "Ac Ad Ah As Kc"), 2U);
    EXPECT_EQ(Row(DoubleBonusPoker, "2c 2d 2h 2s Kc"), 3U);
    EXPECT_EQ(Row(DoubleBonusPoker, "4c 4d 4h 4s Kc"), 3U);
    EXPECT_EQ(Row(DoubleBonusPoker, "5c 5d 5h 5s Kc"), 4U);
    EXPECT_EQ(Row(DoubleBonusPoker, "Kc Kd Kh Ks Ac"), 4U);
}

TEST(DoubleDoubleBonusHands, TellFourOfAKindByRankAndKicker) {
    EXPECT_EQ(Row(DoubleDoubleBonus, "Ac Ad Ah As 3c"), 2U);
    EXPECT_EQ(Row(DoubleDoubleBonus, "Ac Ad Ah As 4c"), 2U);
    EXPECT_EQ(Row(DoubleDoubleBonus, "Ac Ad Ah As 5c"), 4U);
    EXPECT_EQ(Row(DoubleDoubleBonus, "Ac Ad Ah As Kc"), 4U);
    EXPECT_EQ(Row(DoubleDoubleBonus, "4c 4d 4h 4s Ac"), 3U);
    EXPECT_EQ(Row(DoubleDoubleBonus, "2c 2d 2h 2s 3c"), 3U);
    EXPECT_EQ(Row(DoubleDoubleBonus, "4c 4d 4h 4s Kc"), 5U);
    EXPECT_EQ(Row(DoubleDoubleBonus, "7c 7d 7h 7s 2c"), 6U);
}

TEST(DoubleDoubleJackpotHands, TellFourOfAKindByRankAndKicker) {
    EXPECT_EQ(Row(DoubleDoubleJackpot, "Ac Ad Ah As Qc"), 2U);
    EXPECT_EQ(Row(DoubleDoubleJackpot, "Ac Ad Ah As Tc"), 3U);
    EXPECT_EQ(Row(DoubleDoubleJackpot, "Kc Kd Kh Ks Ac"), 4U);
    EXPECT_EQ(Row(DoubleDoubleJackpot, "Jc Jd Jh Js Qc"), 4U);
    EXPECT_EQ(Row(DoubleDoubleJackpot, "Kc Kd Kh Ks 5c"), 5U);
    EXPECT_EQ(Row(DoubleDoubleJackpot, "Tc Td Th Ts Ac"), 6U);
    EXPECT_EQ(Row(DoubleDoubleJackpot, "2c 2d 2h 2s Kc"), 6U);
}

TEST(DeucesWildHands, FourDeucesComeBeforeWhatTheyCouldStandFor) {
    for (Card fifth = 0; fifth < StandardDeckSize; ++fifth) {
        if (RankOf(fifth) != RankDeuce) {
            const Codes codes = {0, 13, 26, 39, fifth};
            EXPECT_EQ(EvaluateCodes(DeucesWild, codes.data()), 1U) << fifth;
        }
    }
}

TEST(DeucesWildHands, FallIntoEachRow) {
    EXPECT_EQ(Row(DeucesWild, "2c 2d 2h Ks As"), 2U);
    EXPECT_EQ(Row(DeucesWild, "2c 2d 2h Ts As"), 2U);
    EXPECT_EQ(Row(DeucesWild, "2c 2d 2h 9s 9c"), 3U);
    EXPECT_EQ(Row(DeucesWild, "2c 2d 2h 3s As"), 4U);
    EXPECT_EQ(Row(DeucesWild, "2c 2d 2h 9s Ks"), 4U);
    EXPECT_EQ(Row(DeucesWild, "2c 2d 5h 5s Kc"), 5U);
    EXPECT_EQ(Row(DeucesWild, "2c 2d 2h 8s Ks"), 5U);
    EXPECT_EQ(Row(DeucesWild, "2c 5d 5h Ks Kc"), 6U);
    EXPECT_EQ(Row(DeucesWild, "2c 2d 3s 8s Ks"), 7U);
    EXPECT_EQ(Row(DeucesWild, "2c 2d 5h 8s Kc"), 9U);
    EXPECT_EQ(Row(DeucesWild, "2c 5d 5h 8s Kc"), 9U);
}

TEST(DeucesWildHands, PairsNeverPay) {
    EXPECT_EQ(Row(DeucesWild, "Ac Ad 5h 8s Kc"), 10U);
    EXPECT_EQ(Row(DeucesWild, "Ac Ad Kh Ks 3c"), 10U);
    EXPECT_EQ(Row(DeucesWild, "2c Ad Kh 8s 3c"), 10U);
}

TEST(DeucesWildHands, LetTheAceStandLowWhereDeucesReachDownToIt) {
    EXPECT_EQ(Row(DeucesWild, "3c 4d 5h As 2c"), 8U);
    EXPECT_EQ(Row(DeucesWild, "3s 4s 5s As 2c"), 4U);
    EXPECT_EQ(Row(DeucesWild, "4c 5d As 2c 2d"), 8U);
    EXPECT_EQ(Row(DeucesWild, "4c 6d As 2c 2d"), 9U);
    EXPECT_EQ(Row(DeucesWild, "5s As 2c 2d 2h"), 4U);
    EXPECT_EQ(Row(DeucesWild, "6s As 2c 2d 2h"), 5U);
}

TEST(JokerWildHands, PairTheJokerWithTheHighestCard) {
    EXPECT_EQ(Row(JokerWild, "Jo Kc 9d 7h 4s"), 10U);
    EXPECT_EQ(Row(JokerWild, "Jo Ac 9d 7h 4s"), 10U);
    EXPECT_EQ(Row(JokerWild, "Jo Qc 9d 7h 4s"), 11U);
}

TEST(JokerWildHands, FallIntoEachRow) {
    EXPECT_EQ(Row(JokerWild, "Jo Qc Qd Qh Qs"), 1U);
    EXPECT_EQ(Row(JokerWild, "Jo Jc Qc Kc Ac"), 2U);
    EXPECT_EQ(Row(JokerWild, "Jo Tc Jc Qc Kc"), 2U);
    EXPECT_EQ(Row(JokerWild, "Jo 9c Tc Jc Qc"), 3U);
    EXPECT_EQ(Row(JokerWild, "Jo Qc Qd Qh 3s"), 4U);
    EXPECT_EQ(Row(JokerWild, "Qc Qd Qh Qs 3s"), 4U);
    EXPECT_EQ(Row(JokerWild, "Jo Qc Qd 3h 3s"), 5U);
    EXPECT_EQ(Row(JokerWild, "Qc Qd Qh 3h 3s"), 5U);
    EXPECT_EQ(Row(JokerWild, "Jo 2c 5c 9c Kc"), 6U);
    EXPECT_EQ(Row(JokerWild, "Jo 5c 6d 8h 9s"), 7U);
    EXPECT_EQ(Row(JokerWild, "Jo 5c 5d 8h 9s"), 8U);
    EXPECT_EQ(Row(JokerWild, "5c 5d 8h 8s 9s"), 9U);
    EXPECT_EQ(Row(JokerWild, "Kc Kd 8h 7s 9s"), 10U);
    EXPECT_EQ(Row(JokerWild, "Qc Qd 8h 7s 9s"), 11U);
}

TEST(JokerWildHands, LetTheAceStandLow) {
    EXPECT_EQ(Row(JokerWild, "Jo Ac 2d 3h 4s"), 7U);
    EXPECT_EQ(Row(JokerWild, "Jo Ac 3d 4h 5s"), 7U);
    EXPECT_EQ(Row(JokerWild, "Jo Ac 2c 3c 5c"), 3U);
    EXPECT_EQ(Row(JokerWild, "Jo Ac 3d 4h 6s"), 10U);
}

// A joker may stay on the table after a change of game, and codes may repeat: the row is always
// one of the game's, and the sanitizers see every table it takes to find it.
TEST(Evaluate, AnyFiveCodesAreSafeInEveryGame) {
    std::mt19937 generator(8);
    std::uniform_int_distribution<Card> anyCode(0, JokerCard);
    for (int round = 0; round < 60000; ++round) {
        Codes codes;
        for (Card& code : codes) {
            code = anyCode(generator);
        }
        for (const GameId game : allGames) {
            ASSERT_LE(EvaluateCodes(game, codes.data()), RowCount(game));
        }
    }
}

// Every way to lay cards of these few codes, jokers and copies among them.
TEST(Evaluate, JokersAndCopiesOfOneCardAreSafeInEveryGame) {
    constexpr Card few[] = {0, 8, 12, 13, 26, 39, 51, 52};
    Codes codes;
    for (std::size_t choice = 0; choice < 32768; ++choice) {
        for (std::size_t i = 0; i < HandSize; ++i) {
            codes[i] = few[choice >> 3 * i & 7];
        }
        for (const GameId game : allGames) {
            ASSERT_LE(EvaluateCodes(game, codes.data()), RowCount(game));
        }
    }
}

#ifdef NDEBUG
TEST(Evaluate, EveryMultisetOfFiveCodesHasARowInEveryGame) {
    Codes c;
    std::int64_t sets = 0;
    for (c[0] = 0; c[0] <= 52; ++c[0])
        for (c[1] = c[0]; c[1] <= 52; ++c[1])
            for (c[2] = c[1]; c[2] <= 52; ++c[2])
                for (c[3] = c[2]; c[3] <= 52; ++c[3])
                    for (c[4] = c[3]; c[4] <= 52; ++c[4]) {
                        ++sets;
                        for (const GameId game : allGames) {
                            ASSERT_LE(EvaluateCodes(game, c.data()), RowCount(game));
                        }
                    }
    EXPECT_EQ(sets, 4187106);
}
#endif

// The second evaluator has to be right by itself before it is worth asking.
TEST(ReferenceEvaluator, KnowsHandsThatAreKnown) {
    const auto reference = [](GameId game, const std::string& text) {
        return ReferenceRow(game, Parse(text).data());
    };
    EXPECT_EQ(reference(JacksOrBetter, "Jc Jd 2h 5s 9c"), 8U);
    EXPECT_EQ(reference(JacksOrBetter, "Tc Td 2h 5s 9c"), 9U);
    EXPECT_EQ(reference(DeucesWild, "2c 2d 2h 2s 9c"), 1U);
    EXPECT_EQ(reference(DeucesWild, "4c 6d As 2c 2d"), 9U);
    EXPECT_EQ(reference(DeucesWild, "2c 5d 5h Ks Kc"), 6U);
    EXPECT_EQ(reference(JokerWild, "Jo Qc 9d 7h 4s"), 11U);
    EXPECT_EQ(reference(JokerWild, "Jo Qc Qd Qh Qs"), 1U);
    EXPECT_EQ(reference(DoubleDoubleBonus, "4c 4d 4h 4s Kc"), 5U);
    EXPECT_EQ(reference(DoubleDoubleJackpot, "Kc Kd Kh Ks Ac"), 4U);
}
