#include "training/hand_details.h"

#include <gtest/gtest.h>

#include "core/cards.h"

namespace {

GameDescriptor Describe(std::int32_t id, Paytable& payouts) {
    GameDescriptor game{};
    EXPECT_EQ(DescribeGame(game, id, payouts), 1);
    return game;
}

std::array<CardRecord, HandSize> MakeHand(const std::array<Card, HandSize>& codes) {
    std::array<CardRecord, HandSize> hand{};
    for (std::size_t i = 0; i < HandSize; ++i) {
        hand[i] = MakeCardRecord(codes[i]);
    }
    return hand;
}

// 2c Tc Td Th Kd
constexpr std::array<Card, HandSize> threeTens = {0, 8, 21, 34, 24};

std::vector<std::wstring> Headers(std::int32_t id) {
    Paytable payouts{};
    std::vector<std::wstring> headers;
    for (const ListColumn& column : DetailColumns(Describe(id, payouts))) {
        headers.push_back(column.header);
    }
    return headers;
}

} // namespace

TEST(DetailColumns, RunFromTheLowestRowToTheTop) {
    EXPECT_EQ(Headers(JacksOrBetter),
              (std::vector<std::wstring>{L"Return", L"Hold", L"Total", L"Nada", L"Jac", L"Two",
                                         L"3 o", L"Str", L"Flu", L"Ful", L"4 o", L"Str", L"Roy"}));
    EXPECT_EQ(Headers(DeucesWild).back(), L"ROY");
    EXPECT_EQ(Headers(DeucesWild)[4], L"3 O");
    constexpr std::size_t sizes[] = {13, 14, 15, 17, 15, 17};
    static_assert(std::size(sizes) == GameCount);
    for (std::int32_t id = 0; id < GameCount; ++id) {
        EXPECT_EQ(Headers(id).size(), sizes[id]);
    }
}

TEST(DetailColumns, HaveTheirFirstWidths) {
    Paytable payouts{};
    std::vector<std::int32_t> widths;
    for (const ListColumn& column : DetailColumns(Describe(DoubleDoubleBonus, payouts))) {
        widths.push_back(column.width);
    }
    EXPECT_EQ(widths, (std::vector<std::int32_t>{50, 56, 56, 56, 54, 46, 46, 44, 40, 40, 40, 40, 30,
                                                 30, 30, 30, 30}));
}

TEST(HoldText, ShowsHeldRanksAndTheJoker) {
    const auto tens = MakeHand(threeTens);
    EXPECT_EQ(HoldText(tens.data(), 0), L"_____ ");
    EXPECT_EQ(HoldText(tens.data(), 2 + 4 + 8), L"_TTT_ ");
    EXPECT_EQ(HoldText(tens.data(), HoldAll), L"2TTTK ");
    const auto joker = MakeHand({12, 11, 10, 9, JokerCard});
    EXPECT_EQ(HoldText(joker.data(), HoldAll), L"AKQJW ");
    EXPECT_EQ(HoldText(joker.data(), 16), L"____W ");
}

TEST(HoldText, TheHandBeforeTheFirstDealIsSafe) {
    // As the table is opened: codes only, rank values still 0.
    std::array<CardRecord, HandSize> hand{};
    for (std::size_t i = 0; i < HandSize; ++i) {
        hand[i].code = JokerCard - static_cast<Card>(i);
    }
    EXPECT_EQ(HoldText(hand.data(), HoldAll), L"WAKQJ ");
}

TEST(DetailRows, ShowReturnHoldTotalNoPayAndRowsFromTheLowest) {
    Paytable payouts{};
    const GameDescriptor game = Describe(JacksOrBetter, payouts);
    const auto hand = MakeHand(threeTens);
    std::array<HoldResult, HoldCount> results{};
    for (std::size_t i = 0; i < results.size(); ++i) {
        results[i].pattern = HoldOrder[i];
        results[i].expectedReturn = static_cast<double>(i) / 3.0;
        for (std::size_t row = 0; row < 9; ++row) {
            results[i].counts[row] = static_cast<std::int32_t>(100 * i + row);
        }
        results[i].counts[9] = -7;
        results[i].counts[10] = 1533939;
    }
    const std::vector<DetailRow> rows = DetailRows(hand.data(), game, results);
    ASSERT_EQ(rows.size(), 32U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].index, static_cast<std::int32_t>(i));
        EXPECT_EQ(rows[i].cells[1], HoldText(hand.data(), HoldOrder[i]));
    }
    EXPECT_EQ(rows[31].cells, (std::vector<std::wstring>{
                                  L"10.3333", L"2TTTK ", L"1533939", L"-7", L"3108", L"3107",
                                  L"3106", L"3105", L"3104", L"3103", L"3102", L"3101", L"3100"}));
    EXPECT_EQ(rows[1].cells[0], L"0.3333");
}

TEST(DetailRows, ResultsOfNoSearchAreSafe) {
    Paytable payouts{};
    const GameDescriptor game = Describe(DoubleDoubleJackpot, payouts);
    const std::array<CardRecord, HandSize> hand{};
    const std::array<HoldResult, HoldCount> results{};
    const std::vector<DetailRow> rows = DetailRows(hand.data(), game, results);
    ASSERT_EQ(rows.size(), 32U);
    EXPECT_EQ(rows[0].cells.size(), 17U);
    EXPECT_EQ(rows[0].cells[0], L"0.0000");
}

TEST(DetailOrder, IsBestFirstAndNeverEqual) {
    DetailRow low{0, 1.0, {}};
    DetailRow high{1, 2.0, {}};
    EXPECT_EQ(CompareDetails(high, low), -1);
    EXPECT_EQ(CompareDetails(low, high), 1);
    EXPECT_EQ(CompareDetails(low, low), 1);
    std::vector<DetailRow> rows = {{0, 1.0, {}}, {1, 3.0, {}}, {2, 1.0, {}}, {3, 7.5, {}}};
    SortDetails(rows);
    EXPECT_EQ(rows[0].index, 3);
    EXPECT_EQ(rows[1].index, 1);
    EXPECT_EQ(rows[2].expectedReturn, 1.0);
    EXPECT_EQ(rows[3].expectedReturn, 1.0);
}
