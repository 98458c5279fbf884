#include <algorithm>
#include <vector>

#include "tests/window/forecast.h"
#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/pauses.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// How play takes its time: the pauses of deal, draw and count-up, and what hurries them.

namespace {

class Pace : public WindowTest {};

using Pauses = std::vector<LONG>;

// Those asked for while the work is done and until there are so many.
template <typename Work>
Pauses PausesOf(std::size_t count, Work work) {
    const std::size_t before = PausesAsked().size();
    work();
    EXPECT_TRUE(Eventually([&] { return PausesAskedSince(before).size() >= count; }));
    return PausesAskedSince(before);
}

bool CountsOn(std::size_t coins) {
    const std::size_t before = PausesAsked().size();
    return Eventually([&] { return PausesAsked().size() >= before + coins; }, 2000);
}

bool StandsStill() {
    std::size_t before = PausesAsked().size();
    return Eventually([&] {
        Sleep(100);
        const std::size_t seen = PausesAsked().size();
        const bool still = seen == before;
        before = seen;
        return still;
    });
}

constexpr std::uint32_t LongPayout = 3000;
constexpr unsigned CoinPause = 10; // half a minute of it

} // namespace

TEST_F(Pace, EveryCardAndCoinPausesAsTheDealSpeedSays) {
    SetSetting(L"Sound", 0);
    constexpr HoldPattern hold = 5;
    const std::uint32_t seed =
        FindSeed([](const Table& table) { return ForetoldDraw(table, hold).payout > 0; });
    Table table;
    ForetellStart(table, seed);
    const RunningProgram program = StartUntrained(seed);
    const auto deal = [&] { Do(program, IDC_DEAL_DRAW); };
    for (const auto& [command, speed] :
         {std::pair{IDM_SLOW, 200}, {IDM_MEDIUM, 100}, {IDM_FAST, 50}}) {
        SCOPED_TRACE(speed);
        Do(program, command);
        ForetellDeal(table);
        EXPECT_EQ(PausesOf(6, deal), Pauses(6, speed)) << "the backs, and five cards";
        Hold(program, hold);
        const auto coins = static_cast<std::size_t>(ForetellDraw(table, hold).payout);
        Pauses expected(3, speed);
        expected.insert(expected.end(), coins, speed / 2);
        EXPECT_EQ(PausesOf(expected.size(), deal), expected) << "three cards, and each coin";
    }
}

TEST_F(Pace, TheStoredSpeedIsThePaceFromTheStart) {
    for (const std::uint32_t speed : {200U, 50U}) {
        SetSetting(L"Speed", speed);
        const RunningProgram program = StartUntrained(1);
        EXPECT_EQ(PausesOf(6, [&] { Do(program, IDC_DEAL_DRAW); }),
                  Pauses(6, static_cast<LONG>(speed)));
        CloseProgram(program);
    }
}

TEST_F(Pace, ADealTakesItsPausesForReal) {
    SetSetting(L"Sound", 0);
    SetSetting(L"Speed", 50);
    const RunningProgram program = StartSeeded(1);
    const ULONGLONG start = GetTickCount64();
    Do(program, IDC_DEAL_DRAW);
    EXPECT_GE(GetTickCount64() - start, 6 * 50U - 20U);
}

TEST_F(Pace, ACountUpLeavesThePromptUntilItsLastCoin) {
    SetSetting(L"Sound", 0);
    const RunningProgram program = StartCountUp(LongPayout, CoinPause);
    EXPECT_TRUE(ShowsPrompt(program, HoldAndDraw));
    EXPECT_EQ(ControlText(program, IDC_DEAL_DRAW), L"Deal");
    EXPECT_TRUE(IsWindowEnabled(Control(program, IDC_BET_ONE)));
    TypeKey(program, L'2');
    Settle(program);
    EXPECT_TRUE(ShowsHeld(program, 1, true)) << "there is nothing to let go of any more";
    EXPECT_TRUE(CountsOn(2)) << "a key that does nothing hurried the coins";
    Do(program, IDC_BET_ONE);
    EXPECT_TRUE(ShowsPrompt(program, GameOver));
    EXPECT_TRUE(ShowsPaid(program, LongPayout));
    EXPECT_TRUE(ShowsCredits(program, 95 + static_cast<std::int32_t>(LongPayout)));
}

TEST_F(Pace, ACountUpGoesOnBesideCommandsThatDoNotPlay) {
    SetSetting(L"Sound", 0);
    const RunningProgram program = StartCountUp(LongPayout, CoinPause);
    for (const int command :
         {IDM_NO_DRAW, IDM_USE_SOUND, IDM_USE_SOUND, IDM_RESET_CREDITS, IDM_MEDIUM, 503, 10006}) {
        Do(program, command);
        EXPECT_TRUE(CountsOn(3)) << "command " << command;
    }
    for (const int command : {IDC_MENU, IDM_DEAL_SPEED}) {
        OpenMenu(program, command);
        EXPECT_TRUE(CountsOn(3)) << "menu of command " << command;
        CloseMenu(program);
    }
    EXPECT_LT(PausesAsked().size(), LongPayout) << "the count-up was too short for this test";
}

TEST_F(Pace, ACountUpTakesUpAnotherSpeedAtOnce) {
    SetSetting(L"Sound", 0);
    const RunningProgram program = StartCountUp(LongPayout, CoinPause);
    ASSERT_TRUE(CountsOn(2));
    EXPECT_EQ(PausesAsked().back(), 50);
    Do(program, IDM_SLOW);
    ASSERT_TRUE(CountsOn(2));
    EXPECT_EQ(PausesAsked().back(), 100);
    Do(program, IDM_FAST);
    ASSERT_TRUE(CountsOn(2));
    EXPECT_EQ(PausesAsked().back(), 25);
}

TEST_F(Pace, ADialogOfTheEngineEndsACountUp) {
    SetSetting(L"Sound", 0);
    for (const int command : {IDM_HAND_ANALYSIS, IDM_GAME_ANALYSIS, IDM_HAND_DETAILS}) {
        SCOPED_TRACE(command);
        const RunningProgram program = StartCountUp(LongPayout, CoinPause);
        ASSERT_TRUE(CountsOn(1));
        Post(program, command);
        HWND dialog = nullptr;
        ASSERT_TRUE(Eventually([&] {
            dialog = GetLastActivePopup(program.window);
            return dialog != program.window && IsWindowVisible(dialog);
        })) << "no dialog";
        EXPECT_TRUE(StandsStill());
        EXPECT_LT(PausesAsked().size(), LongPayout);
        LeaveDialog(dialog, IDCANCEL);
        EXPECT_TRUE(ShowsCredits(program, 95 + static_cast<std::int32_t>(LongPayout)));
        CloseProgram(program);
        DeleteSettings();
        SetSetting(L"Sound", 0);
    }
}
