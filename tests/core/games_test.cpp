#include "core/games.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "core/game_tables.h"
#include "core/wrap.h"
#include "settings/settings.h"
#include "tests/settings/store_probe.h"

namespace {

constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Least = std::numeric_limits<std::int32_t>::min();

struct ExpectedRow {
    const wchar_t* name;
    std::int32_t oneCoin;
    std::int32_t fiveCoins;
};

struct ExpectedGame {
    const wchar_t* title;
    std::int32_t deckSize;
    std::vector<ExpectedRow> rows;
};

const std::vector<ExpectedGame> expectedGames = {
    {L"JACKS OR BETTER",
     52,
     {{L"Royal Flush", 250, 4000},
      {L"Straight Flush", 50, 250},
      {L"4 of a Kind", 25, 125},
      {L"Full House", 9, 45},
      {L"Flush", 6, 30},
      {L"Straight", 4, 20},
      {L"3 of a Kind", 3, 15},
      {L"Two Pair", 2, 10},
      {L"Jacks or Better", 1, 5}}},
    {L"DEUCES WILD",
     52,
     {{L"ROYAL FLUSH", 300, 4000},
      {L"4 DEUCES", 200, 1000},
      {L"ROYAL FLUSH W/2", 25, 125},
      {L"5 OF A KIND", 15, 75},
      {L"STRAIGHT FLUSH", 9, 45},
      {L"4 OF A KIND", 5, 25},
      {L"FULL HOUSE", 3, 15},
      {L"FLUSH", 2, 10},
      {L"STRAIGHT", 2, 10},
      {L"3 OF A KIND", 1, 5}}},
    {L"JOKER WILD",
     53,
     {{L"ROYAL FLUSH", 400, 4000},
      {L"5 OF A KIND", 200, 1000},
      {L"ROYAL WITH JOKER", 100, 500},
      {L"STRAIGHT FLUSH", 50, 250},
      {L"4 OF A KIND", 20, 100},
      {L"FULL HOUSE", 7, 35},
      {L"FLUSH", 5, 25},
      {L"STRAIGHT", 3, 15},
      {L"3 OF A KIND", 2, 10},
      {L"2 PAIR", 1, 5},
      {L"KINGS OR BETTER", 1, 5}}},
    {L"DOUBLE DOUBLE JACKPOT",
     52,
     {{L"Royal Flush", 250, 4000},
      {L"Straight Flush", 50, 250},
      {L"4 Aces w KQJ", 320, 1600},
      {L"4 Aces", 160, 800},
      {L"4 KQJ w AKQJ", 160, 800},
      {L"4 KQJ", 80, 400},
      {L"4 2-10", 50, 250},
      {L"Full House", 9, 45},
      {L"Flush", 6, 30},
      {L"Straight", 5, 25},
      {L"3 of a Kind", 3, 15},
      {L"Two Pair", 1, 5},
      {L"Jacks or Better", 1, 5}}},
    {L"DOUBLE BONUS POKER",
     52,
     {{L"Royal Flush", 250, 4000},
      {L"Straight Flush", 50, 250},
      {L"4 Aces", 160, 800},
      {L"4 2s,3s,4s", 80, 400},
      {L"4 5-K", 50, 250},
      {L"Full House", 10, 50},
      {L"Flush", 7, 35},
      {L"Straight", 5, 25},
      {L"3 of a Kind", 3, 15},
      {L"Two Pair", 1, 5},
      {L"Jacks or Better", 1, 5}}},
    {L"DOUBLE DOUBLE BONUS",
     52,
     {{L"ROYAL FLUSH", 250, 4000},
      {L"STRAIGHT FLUSH", 50, 250},
      {L"4 ACES w 2,3,or 4", 400, 2000},
      {L"4 2,3,or4 w A-4", 160, 800},
      {L"4 ACES", 160, 800},
      {L"4 2,3,or4", 80, 400},
      {L"4 5-K", 50, 250},
      {L"FULL HOUSE", 9, 45},
      {L"FLUSH", 6, 30},
      {L"STRAIGHT", 4, 20},
      {L"3 OF A KIND", 3, 15},
      {L"TWO PAIR", 1, 5},
      {L"JACKS OR BETTER", 1, 5}}},
};

std::wstring PathOf(const wchar_t* title, bool fiveCoins) {
    wchar_t path[PaytablePathSize];
    FormatPaytablePath(path, title, fiveCoins);
    return path;
}

void Store(std::int32_t id, bool fiveCoins, std::int32_t row, std::int32_t payout) {
    const ExpectedGame& game = expectedGames[static_cast<std::size_t>(id)];
    WriteInteger(SettingsRoot::CurrentUser, PathOf(game.title, fiveCoins).c_str(),
                 std::to_wstring(row).c_str(), payout, 0);
}

GameDescriptor Load(std::int32_t id) {
    GameDescriptor game{};
    EXPECT_EQ(LoadGame(game, id), 1);
    return game;
}

void ExpectFactsOf(const GameDescriptor& game, std::int32_t id) {
    const ExpectedGame& expected = expectedGames[static_cast<std::size_t>(id)];
    EXPECT_EQ(game.id, id);
    EXPECT_STREQ(game.title, expected.title);
    EXPECT_EQ(game.deckSize, expected.deckSize);
    ASSERT_EQ(game.rowCount, static_cast<std::int32_t>(expected.rows.size()));
    for (std::size_t row = 0; row < expected.rows.size(); ++row) {
        EXPECT_STREQ(game.rowNames[row], expected.rows[row].name);
        EXPECT_EQ(game.defaultOneCoin[row], expected.rows[row].oneCoin);
        EXPECT_EQ(game.defaultFiveCoins[row], expected.rows[row].fiveCoins);
    }
}

void ExpectDefaultPayouts(const GameDescriptor& game) {
    for (std::int32_t row = 0; row < game.rowCount; ++row) {
        EXPECT_EQ(game.oneCoin[row], game.defaultOneCoin[row]);
        EXPECT_EQ(game.fiveCoins[row], game.defaultFiveCoins[row]);
    }
}

class Games : public testing::Test {
  protected:
    void SetUp() override { EmptyStore(); }
    // The current payouts live on; later tests find the defaults.
    void TearDown() override {
        EmptyStore();
        for (std::int32_t id = 0; id < GameCount; ++id) {
            Load(id);
        }
    }
};

} // namespace

TEST_F(Games, HaveTheirTitlesRowsDecksAndDefaultPayouts) {
    ASSERT_EQ(static_cast<std::int32_t>(expectedGames.size()), GameCount);
    for (std::int32_t id = 0; id < GameCount; ++id) {
        ExpectFactsOf(Load(id), id);
    }
}

TEST_F(Games, ShowTheirDefaultsWhenNothingIsStored) {
    for (std::int32_t id = 0; id < GameCount; ++id) {
        ExpectDefaultPayouts(Load(id));
    }
}

TEST_F(Games, RowsPastTheLastPayNothingInTheTables) {
    for (const GameTable& table : gameTables) {
        for (auto row = static_cast<std::size_t>(table.rowCount); row < MaxRows; ++row) {
            EXPECT_EQ(table.rowNames[row], nullptr);
            EXPECT_EQ(table.payouts.oneCoin[row], 0);
            EXPECT_EQ(table.payouts.fiveCoins[row], 0);
        }
    }
}

TEST_F(Games, ThatDoNotExistAreRefusedAndLeaveTheDescriptorUntouched) {
    GameDescriptor game;
    std::memset(static_cast<void*>(&game), 0x3C, sizeof game);
    GameDescriptor before;
    std::memcpy(static_cast<void*>(&before), &game, sizeof game);
    Paytable current;
    current.oneCoin.fill(-5);
    for (const std::int32_t id : {GameCount, GameCount + 1, -1, 99, Most, Least}) {
        EXPECT_EQ(LoadGame(game, id), 0);
        EXPECT_EQ(DescribeGame(game, id, current), 0);
        EXPECT_EQ(std::memcmp(&game, &before, sizeof game), 0);
        EXPECT_EQ(current.oneCoin[0], -5);
    }
}

TEST_F(Games, TakeStoredPayoutsRowByRowAndColumnByColumn) {
    for (std::int32_t id = 0; id < GameCount; ++id) {
        const std::int32_t last = Load(id).rowCount - 1;
        Store(id, false, 0, 1000 + id);
        Store(id, true, last, 2000 + id);
        const GameDescriptor game = Load(id);
        EXPECT_EQ(game.oneCoin[0], 1000 + id);
        EXPECT_EQ(game.fiveCoins[0], game.defaultFiveCoins[0]);
        EXPECT_EQ(game.oneCoin[last], game.defaultOneCoin[last]);
        EXPECT_EQ(game.fiveCoins[last], 2000 + id);
        for (std::int32_t row = 1; row < last; ++row) {
            EXPECT_EQ(game.oneCoin[row], game.defaultOneCoin[row]);
            EXPECT_EQ(game.fiveCoins[row], game.defaultFiveCoins[row]);
        }
    }
}

TEST_F(Games, TakeStoredPayoutsAsTheyAreWithoutARangeCheck) {
    Store(JacksOrBetter, false, 3, Least);
    Store(JacksOrBetter, true, 3, -1);
    const GameDescriptor game = Load(JacksOrBetter);
    EXPECT_EQ(game.oneCoin[3], Least);
    EXPECT_EQ(game.fiveCoins[3], -1);
}

TEST_F(Games, TakeTheDefaultForAStoredPayoutOfAnotherLength) {
    PutRaw(PathOf(L"DEUCES WILD", false), L"4", {RawType::Binary, {1, 2, 3}});
    PutRaw(PathOf(L"DEUCES WILD", true), L"4", {RawType::Binary, {1, 2, 3, 4, 5, 6, 7, 8}});
    ExpectDefaultPayouts(Load(DeucesWild));
}

TEST_F(Games, ReturnToTheDefaultsWhenTheStoreIsEmptied) {
    Store(DoubleBonusPoker, true, 10, 7777);
    EXPECT_EQ(Load(DoubleBonusPoker).fiveCoins[10], 7777);
    EmptyStore();
    ExpectDefaultPayouts(Load(DoubleBonusPoker));
}

TEST_F(Games, ShareOneCurrentPaytableAmongTheirDescriptors) {
    const GameDescriptor first = Load(DoubleDoubleBonus);
    const GameDescriptor second = Load(DoubleDoubleBonus);
    first.oneCoin[5] = 81;
    EXPECT_EQ(second.oneCoin[5], 81);
    EXPECT_NE(Load(DoubleDoubleJackpot).oneCoin, first.oneCoin);
}

TEST_F(Games, AreDescribedInATableOfTheCallersOwn) {
    Store(JokerWild, false, 0, 4321);
    const GameDescriptor loaded = Load(JokerWild);
    GameDescriptor described{};
    Paytable mine;
    mine.fiveCoins.fill(-1);
    EXPECT_EQ(DescribeGame(described, JokerWild, mine), 1);
    ExpectFactsOf(described, JokerWild);
    ExpectDefaultPayouts(described);
    EXPECT_EQ(described.oneCoin, mine.oneCoin.data());
    EXPECT_EQ(mine.fiveCoins[11], 0);
    EXPECT_EQ(loaded.oneCoin[0], 4321) << "the program's own table stays";
}

TEST_F(Games, PayOnlyAFiveCoinBetFromTheFiveCoinColumn) {
    const GameDescriptor game = Load(JacksOrBetter);
    EXPECT_EQ(LookUpPayout(0, game, 1), 250);
    EXPECT_EQ(LookUpPayout(0, game, 4), 1000);
    EXPECT_EQ(LookUpPayout(0, game, 5), 4000);
    for (std::int32_t id = 0; id < GameCount; ++id) {
        const GameDescriptor each = Load(id);
        for (std::int32_t row = 0; row < each.rowCount; ++row) {
            const auto rank = static_cast<HandRank>(row);
            for (std::int32_t bet = 1; bet <= 4; ++bet) {
                EXPECT_EQ(RowPayout(rank, each, bet), each.defaultOneCoin[row] * bet);
            }
            EXPECT_EQ(RowPayout(rank, each, 5), each.defaultFiveCoins[row]);
        }
    }
}

TEST_F(Games, PayNothingForARankThatIsNoRowAndTallyNothing) {
    for (std::int32_t id = 0; id < GameCount; ++id) {
        const GameDescriptor game = Load(id);
        const PaidTally before = *game.tally;
        for (std::int32_t bet = 1; bet <= 5; ++bet) {
            EXPECT_EQ(LookUpPayout(static_cast<HandRank>(game.rowCount), game, bet), 0);
            EXPECT_EQ(LookUpPayout(NoHand, game, bet), 0);
            EXPECT_EQ(LookUpPayout(0xFFFFFFFF, game, bet), 0);
        }
        EXPECT_EQ(game.tally->paid, before.paid);
    }
}

TEST_F(Games, TallyEveryPayoutInTheSecondWordOfTheirOwnTally) {
    const GameDescriptor game = Load(DoubleDoubleJackpot);
    const GameDescriptor other = Load(JacksOrBetter);
    const std::uint32_t before = game.tally->paid;
    const std::uint32_t otherBefore = other.tally->paid;
    LookUpPayout(2, game, 5);
    LookUpPayout(12, game, 3);
    EXPECT_EQ(game.tally->paid - before, 1603U);
    EXPECT_EQ(game.tally->unused, 0U);
    EXPECT_EQ(other.tally->paid, otherBefore);
    RowPayout(0, game, 5);
    EXPECT_EQ(game.tally->paid - before, 1603U) << "asking is not paying";
}

TEST_F(Games, WrapAPayoutThatDoesNotFitAWord) {
    Store(DeucesWild, false, 0, Most);
    Store(DeucesWild, false, 1, Least);
    const GameDescriptor game = Load(DeucesWild);
    EXPECT_EQ(LookUpPayout(0, game, 2), -2);
    EXPECT_EQ(LookUpPayout(0, game, 4), -4);
    EXPECT_EQ(LookUpPayout(1, game, 2), 0);
    EXPECT_EQ(LookUpPayout(1, game, 3), Least);
}

TEST_F(Games, KeepPaytablesUnderTheirTitles) {
    EXPECT_EQ(PathOf(L"JACKS OR BETTER", false), L"TessarCE\\JACKS OR BETTER\\1");
    EXPECT_EQ(PathOf(L"DOUBLE DOUBLE JACKPOT", true), L"TessarCE\\DOUBLE DOUBLE JACKPOT\\5");
}

TEST_F(Games, StoreAPayoutOnlyWhereItDiffersFromItsDefault) {
    const GameDescriptor game = Load(DoubleDoubleBonus);
    game.oneCoin[12] = 2;
    game.fiveCoins[12] = 11;
    StorePayout(game, 12, false);
    StorePayout(game, 12, true);
    StorePayout(game, 0, true);
    EXPECT_EQ(FindRaw(PathOf(game.title, false), L"12"),
              (RawValue{RawType::DoubleWord, {2, 0, 0, 0}}));
    EXPECT_EQ(FindRaw(PathOf(game.title, true), L"12"),
              (RawValue{RawType::DoubleWord, {11, 0, 0, 0}}));
    EXPECT_EQ(FindRaw(PathOf(game.title, true), L"0"), std::nullopt);
    game.oneCoin[12] = 1;
    StorePayout(game, 12, false);
    EXPECT_EQ(FindRaw(PathOf(game.title, false), L"12"), std::nullopt);
    EXPECT_EQ(Load(DoubleDoubleBonus).fiveCoins[12], 11);
}
