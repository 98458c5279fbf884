#include "training/session_stats.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

#include "tests/training/stored_settings.h"

namespace {

constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();

DialogText Field(const SessionStats& stats, std::int32_t id) {
    for (const DialogText& field : DescribeSessionStats(stats)) {
        if (field.id == id) {
            return field;
        }
    }
    ADD_FAILURE() << "no field " << id;
    return {};
}

std::wstring Text(const SessionStats& stats, std::int32_t id) {
    return Field(stats, id).text;
}

TextColour Colour(const SessionStats& stats, std::int32_t id) {
    return Field(stats, id).colour;
}

struct StoredStats : testing::Test {
    void SetUp() override { RemoveStats(); }
    void TearDown() override { RemoveStats(); }
};

} // namespace

TEST(SessionStatsFields, AreFifteenDifferentControls) {
    std::set<std::int32_t> ids;
    for (const DialogText& field : DescribeSessionStats({})) {
        ids.insert(field.id);
    }
    EXPECT_EQ(ids, (std::set<std::int32_t>{4003, 4004, 4005, 4006, 4007, 4008, 4009, 4010, 4011,
                                           4012, 4013, 4017, 4018, 4019, 4020}));
}

TEST(SessionStatsFields, FreshTotals) {
    const SessionStats fresh{};
    for (const std::int32_t id : {4020, 4017, 4003, 4004, 4006, 4007, 4008, 4018, 4013}) {
        EXPECT_EQ(Text(fresh, id), L"0 ") << id;
    }
    EXPECT_EQ(Text(fresh, 4005), L"100.00% ");
    EXPECT_EQ(Text(fresh, 4009), L"N/A ");
    EXPECT_EQ(Text(fresh, 4010), L"0.0000 ");
    EXPECT_EQ(Text(fresh, 4011), L"0.0000 ");
    EXPECT_EQ(Text(fresh, 4012), L"100.00% ");
    EXPECT_EQ(Text(fresh, 4019), L"YOU WIN:");
    EXPECT_EQ(Colour(fresh, 4019), 0x00008000U);
    EXPECT_EQ(Colour(fresh, 4020), 0x0000FF00U);
}

TEST(SessionStatsFields, ColoursAndGroundsThatNeverChange) {
    const SessionStats fresh{};
    for (const std::int32_t id : {4012, 4013, 4010, 4011, 4003, 4004, 4005, 4009}) {
        EXPECT_EQ(Colour(fresh, id), 0x00FFFF00U) << id;
    }
    EXPECT_EQ(Colour(fresh, 4017), 0x00FFFFFFU);
    for (const DialogText& field : DescribeSessionStats(fresh)) {
        const TextGround ground = field.id == 4019 ? TextGround::LightGrey : TextGround::Black;
        EXPECT_EQ(field.ground, ground) << field.id;
    }
}

TEST(SessionStatsFields, ALossShowsItsMagnitudeAfterABlank) {
    SessionStats stats{};
    stats.coinsIn = 100;
    stats.coinsOut = 85;
    EXPECT_EQ(Text(stats, 4019), L"YOU LOST:");
    EXPECT_EQ(Colour(stats, 4019), 0x00000080U);
    EXPECT_EQ(Text(stats, 4020), L" 15 ");
    EXPECT_EQ(Colour(stats, 4020), 0x000000FFU);
    EXPECT_EQ(Text(stats, 4003), L"100 ");
    EXPECT_EQ(Text(stats, 4004), L"85 ");
    EXPECT_EQ(Text(stats, 4005), L"85.00% ");
}

TEST(SessionStatsFields, AWinAndABreakEvenAreWins) {
    SessionStats stats{};
    stats.coinsIn = 100;
    stats.coinsOut = 4000;
    EXPECT_EQ(Text(stats, 4019), L"YOU WIN:");
    EXPECT_EQ(Text(stats, 4020), L"3900 ");
    EXPECT_EQ(Text(stats, 4005), L"4000.00% ");
    stats.coinsOut = 100;
    EXPECT_EQ(Text(stats, 4019), L"YOU WIN:");
    EXPECT_EQ(Text(stats, 4020), L"0 ");
}

TEST(SessionStatsFields, ErrorsAreSummedAndColouredEach) {
    SessionStats stats{};
    stats.hands = 10;
    stats.minorErrors = 1;
    stats.majorErrors = 1;
    EXPECT_EQ(Text(stats, 4018), L"2 ");
    EXPECT_EQ(Text(stats, 4009), L"80.00% ");
    EXPECT_EQ(Colour(stats, 4018), 0x000000FFU);
    EXPECT_EQ(Colour(stats, 4006), 0x000000FFU);
    EXPECT_EQ(Colour(stats, 4007), 0x00FFFF00U);
    EXPECT_EQ(Colour(stats, 4008), 0x000000FFU);
    stats.moderateErrors = 3;
    EXPECT_EQ(Colour(stats, 4007), 0x000000FFU);
    EXPECT_EQ(Text(stats, 4006), L"1 ");
    EXPECT_EQ(Text(stats, 4007), L"3 ");
    EXPECT_EQ(Text(stats, 4008), L"1 ");
    EXPECT_EQ(Text(stats, 4018), L"5 ");
}

TEST(SessionStatsFields, ReturnsAndTheirCost) {
    SessionStats stats{};
    stats.bestReturn = 12.5;
    stats.yourReturn = 12.0;
    EXPECT_EQ(Text(stats, 4010), L"12.5000 ");
    EXPECT_EQ(Text(stats, 4011), L"12.0000 ");
    EXPECT_EQ(Text(stats, 4012), L"96.00% ");
    EXPECT_EQ(Text(stats, 4013), L"0.50 ");
    stats.bestReturn = -1.0;
    EXPECT_EQ(Text(stats, 4012), L"100.00% ");
    EXPECT_EQ(Text(stats, 4013), L"0 ");
}

// Figures at which single and double precision round to different hundredths.
TEST(SessionStatsFields, PrecisionIsSingleForCountsAndDoubleForReturns) {
    SessionStats stats{};
    stats.coinsIn = 2113;
    stats.coinsOut = 2343;
    EXPECT_EQ(Text(stats, 4005), L"110.89% ");
    stats.bestReturn = 2113.0;
    stats.yourReturn = 2343.0;
    EXPECT_EQ(Text(stats, 4012), L"110.88% ");
    stats.hands = 1291;
    stats.minorErrors = 246;
    EXPECT_EQ(Text(stats, 4009), L"80.94% "); // 80.95% in double precision
}

TEST(SessionStatsFields, WrappedTotalsStayDefined) {
    SessionStats stats{};
    stats.coinsIn = 1;
    stats.coinsOut = Lowest;
    EXPECT_EQ(Text(stats, 4020), L"2147483647 ");
    EXPECT_EQ(Text(stats, 4019), L"YOU WIN:");
    stats.coinsIn = 0;
    EXPECT_EQ(Text(stats, 4020), L" 2147483648 ");
    EXPECT_EQ(Text(stats, 4019), L"YOU LOST:");
    stats.minorErrors = Highest;
    stats.majorErrors = 1;
    EXPECT_EQ(Text(stats, 4018), L"-2147483648 ");
}

TEST(SessionStatsFields, AnyStoredDoubleFits) {
    SessionStats stats{};
    stats.bestReturn = std::numeric_limits<double>::max();
    stats.yourReturn = -std::numeric_limits<double>::max();
    EXPECT_EQ(Text(stats, 4010).size(), 309U + 6);
    EXPECT_EQ(Text(stats, 4011).size(), 310U + 6);
    EXPECT_EQ(Text(stats, 4013), L"inf ");
    stats.bestReturn = std::nan("");
    EXPECT_EQ(Text(stats, 4012), L"100.00% ");
    EXPECT_EQ(Text(stats, 4013), L"0 ");
}

TEST(SessionStatsCounting, CountsHandsAndCoinsAndWraps) {
    SessionStats stats{};
    CountHand(stats);
    CountCoinsIn(stats, 5);
    CountCoinsOut(stats, 4000);
    CountHand(stats);
    EXPECT_EQ(stats.hands, 2);
    EXPECT_EQ(stats.coinsIn, 5);
    EXPECT_EQ(stats.coinsOut, 4000);
    stats.hands = stats.coinsIn = stats.coinsOut = Highest;
    CountHand(stats);
    CountCoinsIn(stats, 1);
    CountCoinsOut(stats, 2);
    EXPECT_EQ(stats.hands, Lowest);
    EXPECT_EQ(stats.coinsIn, Lowest);
    EXPECT_EQ(stats.coinsOut, Lowest + 1);
}

TEST_F(StoredStats, MissingTotalsAreZero) {
    const SessionStats stats = LoadSessionStats();
    EXPECT_EQ(stats.coinsIn, 0);
    EXPECT_EQ(stats.coinsOut, 0);
    EXPECT_EQ(stats.hands, 0);
    EXPECT_EQ(stats.minorErrors, 0);
    EXPECT_EQ(stats.moderateErrors, 0);
    EXPECT_EQ(stats.majorErrors, 0);
    EXPECT_EQ(stats.bestReturn, 0.0);
    EXPECT_EQ(stats.yourReturn, 0.0);
}

TEST_F(StoredStats, EachTotalHasItsOwnValue) {
    StoreSessionStats({1, -2, 3, 4, 5, 6, 7.25, -8.5});
    const auto integer = [](const wchar_t* name) {
        return ReadInteger(SettingsRoot::CurrentUser, L"TessarCE", name, -99);
    };
    EXPECT_EQ(integer(L"CoinsIn"), 1);
    EXPECT_EQ(integer(L"CoinsOut"), -2);
    EXPECT_EQ(integer(L"Hands"), 3);
    EXPECT_EQ(integer(L"Errors0"), 4);
    EXPECT_EQ(integer(L"Errors1"), 5);
    EXPECT_EQ(integer(L"Errors2"), 6);
    EXPECT_EQ(ReadDouble(SettingsRoot::CurrentUser, L"TessarCE", L"Returns0", 0.0), 7.25);
    EXPECT_EQ(ReadDouble(SettingsRoot::CurrentUser, L"TessarCE", L"Returns1", 0.0), -8.5);
    const SessionStats again = LoadSessionStats();
    EXPECT_EQ(again.coinsIn, 1);
    EXPECT_EQ(again.coinsOut, -2);
    EXPECT_EQ(again.hands, 3);
    EXPECT_EQ(again.minorErrors, 4);
    EXPECT_EQ(again.moderateErrors, 5);
    EXPECT_EQ(again.majorErrors, 6);
    EXPECT_EQ(again.bestReturn, 7.25);
    EXPECT_EQ(again.yourReturn, -8.5);
}

TEST_F(StoredStats, DamagedTotalsAreZero) {
    StoreSessionStats({1, 2, 3, 4, 5, 6, 7.0, 8.0});
    WriteDouble(SettingsRoot::CurrentUser, SettingsKey, L"Hands", 1.0, 0);
    WriteInteger(SettingsRoot::CurrentUser, SettingsKey, L"Returns1", 9, 0);
    const SessionStats stats = LoadSessionStats();
    EXPECT_EQ(stats.hands, 0);
    EXPECT_EQ(stats.yourReturn, 0.0);
    EXPECT_EQ(stats.coinsOut, 2);
}

TEST_F(StoredStats, ReturnsThatAreNotFiniteAreZero) {
    using Limits = std::numeric_limits<double>;
    for (const double odd : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
        WriteDouble(SettingsRoot::CurrentUser, SettingsKey, L"Returns0", odd, 0);
        WriteDouble(SettingsRoot::CurrentUser, SettingsKey, L"Returns1", Limits::max(), 0);
        EXPECT_EQ(LoadSessionStats().bestReturn, 0.0) << odd;
        EXPECT_EQ(LoadSessionStats().yourReturn, Limits::max());
    }
}

TEST_F(StoredStats, AResetIsKeptInMemoryUntilStored) {
    SessionStats stats{1, 2, 3, 4, 5, 6, 7.0, 8.0};
    StoreSessionStats(stats);
    ResetSessionStats(stats);
    EXPECT_EQ(Text(stats, 4017), L"0 ");
    EXPECT_EQ(Text(stats, 4009), L"N/A ");
    EXPECT_EQ(Text(stats, 4012), L"100.00% ");
    EXPECT_EQ(stats.coinsIn | stats.coinsOut | stats.hands, 0);
    EXPECT_EQ(stats.minorErrors | stats.moderateErrors | stats.majorErrors, 0);
    EXPECT_EQ(LoadSessionStats().hands, 3);
    StoreSessionStats(stats);
    EXPECT_EQ(LoadSessionStats().hands, 0);
    EXPECT_EQ(LoadSessionStats().bestReturn, 0.0);
}
