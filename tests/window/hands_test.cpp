#include <algorithm>
#include <string>

#include "strategy/best_hold.h"
#include "tests/window/forecast.h"
#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// Whole hands through the window, every card of them foretold from the seed.

namespace {

class Hands : public WindowTest {};

constexpr wchar_t NeedMoney[] = L"Need Money";

// Has all the messages that are posted there before the program takes the first of them.
template <typename Work>
void PostTogether(const RunningProgram& program, Work post) {
    const HANDLE thread = OpenThread(THREAD_SUSPEND_RESUME, FALSE, program.thread);
    SuspendThread(thread);
    post();
    ResumeThread(thread);
    CloseHandle(thread);
}

} // namespace

TEST_F(Hands, OfEveryGameGoAsTheirSeedSays) {
    for (std::uint32_t id = 0; id < GameCount; ++id) {
        SCOPED_TRACE(id);
        DeleteSettings();
        SetSetting(L"Lastgame", id);
        SetSetting(L"Sound", 0);
        const std::uint32_t seed = 2026 + id;
        Table table;
        ForetellStart(table, seed);
        const RunningProgram program = StartUntrained(seed);
        for (std::size_t i = 0; i < HandSize; ++i) {
            EXPECT_TRUE(ShowsBack(program, i));
        }
        std::uint32_t won = 0;
        for (HoldPattern hold : {0, 31, 21}) {
            ForetellDeal(table);
            Do(program, IDC_DEAL_DRAW);
            ExpectTable(program, table);
            Hold(program, hold);
            SetHolds(table.hand, hold);
            ExpectTable(program, table);
            const Settlement hand = ForetellDraw(table, hold);
            won += static_cast<std::uint32_t>(hand.payout);
            Do(program, IDC_DEAL_DRAW);
            ExpectTable(program, table);
            EXPECT_TRUE(ShowsPaid(program, hand.payout));
        }
        CloseProgram(program);
        EXPECT_EQ(Setting(L"CoinsIn"), 15U);
        EXPECT_EQ(Setting(L"CoinsOut"), won);
        EXPECT_EQ(Setting(L"Hands"), 3U);
        EXPECT_EQ(Setting(L"Credits"), 100 - 15 + won);
        EXPECT_EQ(Setting(L"Lastgame"), id);
    }
}

TEST_F(Hands, DeuceAndJokerHaveFacesOfTheirOwn) {
    const auto has = [](const Table& table, auto is) {
        return std::any_of(table.hand.cards.begin(), table.hand.cards.end(),
                           [&](const CardRecord& card) { return is(card.code); });
    };
    const auto hasDeuce = [&](const Table& table) {
        return has(table, [](Card card) { return card != JokerCard && RankOf(card) == RankDeuce; });
    };
    for (const GameId id : {DeucesWild, JacksOrBetter}) {
        SetSetting(L"Lastgame", id);
        const std::uint32_t seed = FindSeed(hasDeuce);
        Table table;
        ForetellStart(table, seed);
        ForetellDeal(table);
        const RunningProgram program = StartUntrained(seed);
        Do(program, IDC_DEAL_DRAW);
        ExpectTable(program, table);
        CloseProgram(program);
    }
    SetSetting(L"Lastgame", JokerWild);
    const std::uint32_t seed = FindSeed([&](const Table& table) {
        return has(table, [](Card card) { return card == JokerCard; });
    });
    Table table;
    ForetellStart(table, seed);
    ForetellDeal(table);
    const RunningProgram program = StartUntrained(seed);
    Do(program, IDC_DEAL_DRAW);
    ExpectTable(program, table);
}

TEST_F(Hands, ShortCreditsAskForMoneyBeforeTheDeal) {
    SetSetting(L"Credits", 3);
    const RunningProgram program = StartUntrained(1);
    Post(program, IDC_DEAL_DRAW);
    const HWND dialog = WaitForDialog(program, NeedMoney);
    const HWND field = GetDlgItem(dialog, IDC_PURCHASE);
    EXPECT_EQ(TextOf(field), L"100");
    LeaveDialog(dialog, IDOK);
    Settle(program);
    EXPECT_FALSE(Holding(program)) << "the player must press Deal again";
    EXPECT_TRUE(ShowsCredits(program, 103));
    EXPECT_EQ(FocusOf(program), program.window);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(Holding(program));
    EXPECT_TRUE(ShowsCredits(program, 98));
}

TEST_F(Hands, CreditsThatJustCoverTheBetDeal) {
    SetSetting(L"Credits", 5);
    const RunningProgram program = StartUntrained(1);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(Holding(program));
    EXPECT_TRUE(ShowsCredits(program, 0));
}

TEST_F(Hands, CancelBuysNothing) {
    SetSetting(L"Credits", 3);
    SetSetting(L"DefBuy", 40);
    const RunningProgram program = StartUntrained(1);
    Post(program, IDC_DEAL_DRAW);
    const HWND dialog = WaitForDialog(program, NeedMoney);
    SetWindowTextW(GetDlgItem(dialog, IDC_PURCHASE), L"77");
    SendMessageW(GetDlgItem(dialog, IDC_PURCHASE), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"77"));
    LeaveDialog(dialog, IDCANCEL);
    EXPECT_TRUE(ShowsCredits(program, 3));
    CloseProgram(program);
    EXPECT_EQ(Setting(L"DefBuy"), 40U);
    EXPECT_EQ(Setting(L"Credits"), 3U);
}

TEST_F(Hands, PurchasesAreTakenAsTypedAndOfferedAgain) {
    struct Purchase {
        const wchar_t* typed;
        std::int32_t amount;
    };
    SetSetting(L"Credits", 3);
    const RunningProgram program = StartUntrained(1);
    std::int32_t credits = 3;
    std::wstring offered = L"100";
    for (const Purchase& purchase : {Purchase{L"-10", -10}, Purchase{L"0", 0}, Purchase{L"", 0},
                                     Purchase{L"2", 2}, Purchase{L"250", 250}}) {
        SCOPED_TRACE(purchase.amount);
        Post(program, IDC_DEAL_DRAW);
        const HWND dialog = WaitForDialog(program, NeedMoney);
        const HWND field = GetDlgItem(dialog, IDC_PURCHASE);
        EXPECT_EQ(TextOf(field), offered);
        SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(purchase.typed));
        LeaveDialog(dialog, IDOK);
        credits += purchase.amount;
        offered = std::to_wstring(purchase.amount);
        EXPECT_TRUE(ShowsCredits(program, credits));
    }
    CloseProgram(program);
    EXPECT_EQ(Setting(L"DefBuy"), 250U);
    EXPECT_EQ(Setting(L"Credits"), 245U);
}

TEST_F(Hands, MoneyIsTypedOnTheRealKeyboard) {
    SetSetting(L"Credits", 0);
    const RunningProgram program = StartUntrained(1);
    PressKeys(program, L"Return");
    WaitForDialog(program, NeedMoney);
    PressKeys(program, L"6 4 Return");
    EXPECT_TRUE(Eventually([&] { return FindDialog(program, NeedMoney) == nullptr; }));
    EXPECT_TRUE(ShowsCredits(program, 64));
    EXPECT_FALSE(Holding(program));
}

TEST_F(Hands, NoDrawDealsAgainAtOnceForNothing) {
    SetSetting(L"NoDraw", 1);
    Table table;
    ForetellStart(table, 5);
    const RunningProgram program = StartUntrained(5);
    ForetellDeal(table);
    Do(program, IDC_DEAL_DRAW);
    ExpectTable(program, table);
    EXPECT_TRUE(ShowsCredits(program, 100));
    for (int hand = 0; hand < 3; ++hand) {
        Do(program, IDC_DEAL_DRAW);
        Settle(program);
        ForetellDeal(table); // the same order of cards: nothing was drawn
        ExpectTable(program, table);
        EXPECT_TRUE(ShowsCredits(program, 100));
    }
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Hands"), 3U);
    EXPECT_EQ(Setting(L"CoinsIn"), 0U);
    EXPECT_EQ(Setting(L"CoinsOut"), 0U);
    EXPECT_EQ(Setting(L"Credits"), 100U);
}

// The command by which it deals again meets a dialog that another command has opened.
TEST_F(Hands, ADrillThatCannotDealAgainSaysSo) {
    SetSetting(L"NoDraw", 1);
    const RunningProgram program = StartUntrained(1);
    Do(program, IDC_DEAL_DRAW);
    PostTogether(program, [&] {
        Post(program, IDC_DEAL_DRAW);
        Post(program, IDM_SESSION_STATS);
    });
    const HWND dialog = WaitForDialog(program, L"Current Session Analysis");
    EXPECT_TRUE(Eventually([&] { return ControlText(program, IDC_DEAL_DRAW) == L"Deal"; }));
    LeaveDialog(dialog, IDOK);
    EXPECT_TRUE(IsWindowEnabled(Control(program, IDC_BET_ONE)));
    EXPECT_TRUE(ShowsPrompt(program, GameOver));
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(Holding(program));
}

// A hand is played while the window is moved, within the deal before it; the command by which the
// drill deals again comes when that deal throws its taps away.
TEST_F(Hands, ADrillThatLosesItsDealToAMoveSaysSo) {
    SetSetting(L"NoDraw", 1);
    const RunningProgram program = StartUntrained(1, 20);
    Post(program, IDC_DEAL_DRAW);
    PostMessageW(program.window, WM_SYSCOMMAND, SC_MOVE, 0);
    ASSERT_TRUE(Eventually([&] { return Holding(program) && IsGrabbed(program); }));
    PostTogether(program, [&] { // the move ends before the drill's own command
        Post(program, IDC_DEAL_DRAW);
        PostMessageW(program.window, WM_KEYDOWN, VK_ESCAPE, 1);
    });
    EXPECT_TRUE(Eventually([&] { return ControlText(program, IDC_DEAL_DRAW) == L"Deal"; }));
    EXPECT_TRUE(Eventually([&] { return IsWindowEnabled(Control(program, IDC_BET_ONE)); }));
    EXPECT_TRUE(ShowsPrompt(program, GameOver));
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(Holding(program));
}

TEST_F(Hands, BetGoesFromFiveToOne) {
    const RunningProgram program = StartUntrained(1);
    for (const int bet : {1, 2, 3, 4, 5, 1}) {
        Do(program, IDC_BET_ONE);
        EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet " + std::to_wstring(bet));
        EXPECT_TRUE(ShowsCoinsIn(program, bet));
    }
}

TEST_F(Hands, APatHandHighlightsItsRow) {
    const std::uint32_t seed =
        FindSeed([](const Table& table) { return table.rank == 6; }); // three of a kind
    Table table;
    ForetellStart(table, seed);
    ForetellDeal(table);
    const RunningProgram program = StartUntrained(seed);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsRow(program, table.game, 6, 5, true));
    EXPECT_TRUE(ShowsRow(program, table.game, 5, 5, false));
    EXPECT_TRUE(ShowsRow(program, table.game, 7, 5, false));
    EXPECT_TRUE(ShowsPaid(program, 0)) << "nothing is paid before the draw";
}

TEST_F(Hands, ADrawMovesTheHighlight) {
    SetSetting(L"Sound", 0);
    const std::uint32_t seed = FindSeed([](const Table& table) {
        const Settlement hand = ForetoldDraw(table, 0);
        return IsWinning(table) && hand.payout > 0 && hand.after != hand.before;
    });
    Table table;
    ForetellStart(table, seed);
    ForetellDeal(table);
    const RunningProgram program = StartUntrained(seed);
    Do(program, IDC_DEAL_DRAW);
    ExpectTable(program, table);
    ForetellDraw(table, 0);
    Do(program, IDC_DEAL_DRAW);
    ExpectTable(program, table);
}

TEST_F(Hands, TapsAndKeysDuringTheDealAreThrownAway) {
    const RunningProgram program = StartUntrained(1, 80);
    Post(program, IDC_DEAL_DRAW);
    ASSERT_TRUE(ShowsCredits(program, 95)); // the cards are about to move
    for (int round = 0; round < 3; ++round) {
        for (const Area& card : program.layout.cards) {
            TapMiddle(program, card);
        }
        TypeKey(program, L'1');
        TypeKey(program, L'\r');
        TypeKey(program, L'x');
        Post(program, IDC_DEAL_DRAW);
        TapMiddle(program, program.layout.prompt);
        PostMessageW(Control(program, IDC_BET_ONE), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
        PostMessageW(Control(program, IDC_BET_ONE), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
        PressKeys(program, L"2 Return");
    }
    // Asked of the system: the program would answer only after the deal.
    EXPECT_TRUE(IsWindowEnabled(Control(program, IDC_BET_ONE))) << "too late: the deal was over";
    EXPECT_TRUE(Eventually([&] { return Holding(program); }));
    Settle(program);
    EXPECT_TRUE(Holding(program));
    for (std::size_t i = 0; i < HandSize; ++i) {
        EXPECT_TRUE(ShowsHeld(program, i, false));
    }
    EXPECT_TRUE(ShowsCredits(program, 95));
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 5");
}

TEST_F(Hands, TheWindowIsLetGoDuringTheDeal) {
    const RunningProgram program = StartUntrained(1, 100);
    GrabTitle(program);
    Post(program, IDC_DEAL_DRAW);
    ASSERT_TRUE(ShowsCredits(program, 95)); // the cards are about to move
    LetGo();
    EXPECT_TRUE(Eventually([&] { return Holding(program); }));
    EXPECT_TRUE(Eventually([&] { return !IsGrabbed(program); })) << "it goes with the pointer";
}

// Moving the window has a message loop of its own, which plays on: what it meets must be a hand
// that is dealt to the end.
TEST_F(Hands, TheDealIsCompleteBeforeAMoveOfTheWindowBegins) {
    const RunningProgram program = StartUntrained(1, 20);
    Post(program, IDC_DEAL_DRAW);
    PostMessageW(program.window, WM_SYSCOMMAND, SC_MOVE, 0);
    EXPECT_TRUE(Eventually([&] { return Holding(program); }, 5000));
    Post(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(Eventually([&] { return !Holding(program); }, 5000));
    PostMessageW(program.window, WM_KEYDOWN, VK_ESCAPE, 1);
    Settle(program);
    EXPECT_FALSE(Holding(program));
    EXPECT_TRUE(IsWindowEnabled(Control(program, IDC_BET_ONE)));
}

TEST_F(Hands, ClosingDuringTheDealEndsTheProgram) {
    const RunningProgram program = StartUntrained(1, 60);
    Post(program, IDC_DEAL_DRAW);
    ASSERT_TRUE(ShowsCredits(program, 95));
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Credits"), 95U);
    EXPECT_EQ(Setting(L"Hands"), 0U);
}

TEST_F(Hands, AWinIsCountedUpToTheLastCoin) {
    PayFor(40);
    const std::uint32_t seed = FindSeed(IsWinning);
    const RunningProgram program = StartUntrained(seed, 5);
    Do(program, IDC_DEAL_DRAW);
    Hold(program, HoldAll);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsPaid(program, 40));
    EXPECT_TRUE(ShowsCredits(program, 135));
    EXPECT_TRUE(ShowsPrompt(program, GameOver));
}

TEST_F(Hands, DealDuringALongCountUpPaysAllBeforeTheBetIsTaken) {
    const RunningProgram program = StartCountUp(1000, 30);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsCredits(program, 100 - 5 + 1000 - 5));
    EXPECT_TRUE(Holding(program));
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Credits"), 1090U);
    EXPECT_EQ(Setting(L"CoinsOut"), 1000U);
}

TEST_F(Hands, ACommandDuringACountUpPaysTheRestAtOnce) {
    for (const int command : {IDC_BET_ONE, IDM_NO_TRAINING, IDM_WARN, IDM_AUTOHOLD}) {
        SCOPED_TRACE(command);
        const RunningProgram program = StartCountUp(1000, 30);
        EXPECT_FALSE(Holding(program));
        Do(program, command);
        EXPECT_TRUE(ShowsCredits(program, 1095));
        EXPECT_TRUE(ShowsPaid(program, 1000));
        CloseProgram(program);
        DeleteSettings();
    }
}

TEST_F(Hands, OpeningTheGamesDuringACountUpPaysTheRestAtOnce) {
    const RunningProgram program = StartCountUp(1000, 30);
    OpenMenu(program, IDC_GAMES);
    CloseMenu(program);
    EXPECT_TRUE(ShowsCredits(program, 1095));
}

TEST_F(Hands, ChangeOfGameWhileHoldingLosesTheBetAndNothingElse) {
    const RunningProgram program = StartUntrained(1);
    Do(program, IDC_DEAL_DRAW);
    Hold(program, 5);
    Do(program, IDM_FIRST_GAME + DoubleBonusPoker);
    EXPECT_EQ(ControlText(program, IDC_STATUS), L"DOUBLE BONUS POKER");
    EXPECT_EQ(ControlText(program, IDC_DEAL_DRAW), L"Deal");
    EXPECT_TRUE(IsWindowEnabled(Control(program, IDC_BET_ONE)));
    EXPECT_TRUE(ShowsPrompt(program, GameOver));
    EXPECT_TRUE(ShowsCredits(program, 95));
    for (std::size_t i = 0; i < HandSize; ++i) {
        EXPECT_TRUE(ShowsBack(program, i));
        EXPECT_TRUE(ShowsHeld(program, i, false));
    }
    GameDescriptor game{};
    LoadGame(game, DoubleBonusPoker);
    for (std::int32_t row = 0; row < game.rowCount; ++row) {
        EXPECT_TRUE(ShowsRow(program, game, row, 5, false));
    }
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Credits"), 95U);
    EXPECT_EQ(Setting(L"Hands"), 0U);
    EXPECT_EQ(Setting(L"CoinsIn"), 0U);
}

TEST_F(Hands, AutoholdHoldsTheBestCards) {
    Table table;
    ForetellStart(table, 11);
    const RunningProgram program = StartSeeded(11, 0);
    Do(program, IDM_AUTOHOLD);
    for (int hand = 0; hand < 3; ++hand) {
        ForetellDeal(table);
        const std::int32_t best = FindBestHold(table.hand.cards.data(), table.game, table.bet);
        const HoldPattern pattern = resultTable[static_cast<std::size_t>(best)].pattern;
        SetHolds(table.hand, pattern);
        Do(program, IDC_DEAL_DRAW);
        ExpectTable(program, table);
        ForetellDraw(table, pattern);
        Do(program, IDC_DEAL_DRAW);
        ExpectTable(program, table);
    }
}
