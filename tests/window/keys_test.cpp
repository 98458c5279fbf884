#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// Keys and taps, in and out of the draw phase, as messages and from the real keyboard and pointer.

namespace {

class Keys : public WindowTest {};
class Taps : public WindowTest {};

bool NoneHeld(const RunningProgram& program) {
    bool none = true;
    for (std::size_t i = 0; i < HandSize; ++i) {
        none = none && ShowsHeld(program, i, false);
    }
    return none;
}

} // namespace

TEST_F(Keys, DigitsTurnHoldsWhileHoldingAndNothingElse) {
    const RunningProgram program = StartUntrained(1);
    Do(program, IDC_DEAL_DRAW);
    ASSERT_TRUE(NoneHeld(program));
    for (std::size_t i = 0; i < HandSize; ++i) {
        TypeKey(program, static_cast<wchar_t>(L'1' + i));
        for (std::size_t j = 0; j < HandSize; ++j) {
            EXPECT_TRUE(ShowsHeld(program, j, j <= i)) << "key " << i + 1 << ", card " << j;
        }
    }
    TypeKey(program, L'3');
    EXPECT_TRUE(ShowsHeld(program, 2, false));
    TypeKey(program, L'0');
    TypeKey(program, L'6');
    Settle(program);
    EXPECT_TRUE(ShowsHeld(program, 0, true));
    EXPECT_TRUE(ShowsHeld(program, 2, false));
    EXPECT_TRUE(Holding(program));
}

TEST_F(Keys, DigitsDoNothingOutsideTheDrawPhase) {
    const RunningProgram program = StartUntrained(1);
    for (const wchar_t key : {L'1', L'2', L'3', L'4', L'5'}) {
        TypeKey(program, key);
    }
    Settle(program);
    EXPECT_TRUE(NoneHeld(program));
    EXPECT_FALSE(Holding(program));

    Do(program, IDC_DEAL_DRAW);
    Do(program, IDC_DEAL_DRAW);
    ASSERT_FALSE(Holding(program));
    TypeKey(program, L'1');
    Settle(program);
    EXPECT_TRUE(NoneHeld(program));
}

TEST_F(Keys, BRaisesTheBetOnlyBetweenHands) {
    const RunningProgram program = StartUntrained(1);
    TypeKey(program, L'b');
    Settle(program);
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 1");
    TypeKey(program, L'B');
    Settle(program);
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 2");
    Do(program, IDC_DEAL_DRAW);
    TypeKey(program, L'b');
    TypeKey(program, L'B');
    Settle(program);
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 2");
}

TEST_F(Keys, EnterDealsAndDraws) {
    const RunningProgram program = StartUntrained(1);
    TypeKey(program, L'\r');
    Settle(program);
    EXPECT_TRUE(Holding(program));
    TypeKey(program, L'\r');
    Settle(program);
    EXPECT_FALSE(Holding(program));
}

TEST_F(Keys, GAndMOpenTheirMenusOnlyBetweenHands) {
    const RunningProgram program = StartUntrained(1);
    LONG shown = 0;
    for (const wchar_t key : {L'g', L'G', L'm', L'M'}) {
        TypeKey(program, key);
        const SeenMenu menu = WaitForMenu(program, shown);
        shown = menu.shown;
        const bool games = key == L'g' || key == L'G';
        EXPECT_EQ(menu.items[0].id, static_cast<UINT>(games ? IDM_FIRST_GAME : IDM_SESSION_STATS));
        CloseMenu(program);
    }
    Do(program, IDC_DEAL_DRAW);
    for (const wchar_t key : {L'g', L'G', L'm', L'M'}) {
        TypeKey(program, key);
        Settle(program);
        EXPECT_FALSE(MenuIsOpen(program));
    }
    EXPECT_TRUE(Holding(program));
}

TEST_F(Keys, XLeavesFromBothPhases) {
    for (const wchar_t key : {L'x', L'X'}) {
        for (const bool holding : {false, true}) {
            const RunningProgram program = StartUntrained(1);
            if (holding) {
                Do(program, IDC_DEAL_DRAW);
            }
            TypeKey(program, key);
            EXPECT_EQ(ExitCodeOf(program.process), 0U);
        }
    }
}

TEST_F(Keys, OtherKeysDoNothing) {
    const RunningProgram program = StartUntrained(1);
    for (const wchar_t key : {L'a', L'z', L' ', L'\x1b', L'\t', L'9', L'\n', L'\b'}) {
        TypeKey(program, key);
    }
    Settle(program);
    EXPECT_FALSE(Holding(program));
    EXPECT_FALSE(MenuIsOpen(program));
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 5");
    EXPECT_TRUE(ShowsCredits(program, 100));
}

TEST_F(Keys, OnlyTheLowByteOfACharacterCounts) {
    const RunningProgram program = StartUntrained(1);
    TypeKey(program, static_cast<wchar_t>(0x0400 + L'b'));
    Settle(program);
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 1");
    TypeKey(program, static_cast<wchar_t>(0xFF00 + L'\r'));
    Settle(program);
    EXPECT_TRUE(Holding(program));
    TypeKey(program, static_cast<wchar_t>(0x0100 + L'3'));
    EXPECT_TRUE(ShowsHeld(program, 2, true));
}

TEST_F(Keys, TheRealKeyboardPlaysAHand) {
    const RunningProgram program = StartUntrained(1);
    PressKeys(program, L"b");
    EXPECT_TRUE(Eventually([&] { return ControlText(program, IDC_BET_ONE) == L"Bet 1"; }));
    PressKeys(program, L"Return");
    EXPECT_TRUE(Eventually([&] { return Holding(program); }));
    PressKeys(program, L"2 4 b");
    EXPECT_TRUE(ShowsHeld(program, 1, true));
    EXPECT_TRUE(ShowsHeld(program, 3, true));
    PressKeys(program, L"4");
    EXPECT_TRUE(ShowsHeld(program, 3, false));
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 1") << "b counts while holding";
    PressKeys(program, L"Return");
    EXPECT_TRUE(Eventually([&] { return !Holding(program); }));
    PressKeys(program, L"shift+b");
    EXPECT_TRUE(Eventually([&] { return ControlText(program, IDC_BET_ONE) == L"Bet 2"; }));
    PressKeys(program, L"x");
    EXPECT_EQ(ExitCodeOf(program.process), 0U);
}

TEST_F(Taps, OnACardTurnItsHoldWhileHolding) {
    const RunningProgram program = StartUntrained(1);
    Do(program, IDC_DEAL_DRAW);
    for (std::size_t i = 0; i < HandSize; ++i) {
        const Area& card = program.layout.cards[i];
        Tap(program, card.left, card.top);
        EXPECT_TRUE(ShowsHeld(program, i, true));
        Tap(program, card.right - 1, card.bottom - 1);
        EXPECT_TRUE(ShowsHeld(program, i, false));
    }
}

TEST_F(Taps, OnACardDoNothingBetweenHands) {
    const RunningProgram program = StartUntrained(1);
    for (const Area& card : program.layout.cards) {
        TapMiddle(program, card);
    }
    Settle(program);
    EXPECT_TRUE(NoneHeld(program));
    EXPECT_FALSE(Holding(program));
}

TEST_F(Taps, OnThePromptBandDealAndDraw) {
    const RunningProgram program = StartUntrained(1);
    const Area& band = program.layout.prompt;
    Tap(program, band.left, band.top);
    Settle(program);
    EXPECT_TRUE(Holding(program));
    Tap(program, band.right - 1, band.bottom - 1);
    Settle(program);
    EXPECT_FALSE(Holding(program));
}

TEST_F(Taps, BesideCardsAndBandDoNothing) {
    const RunningProgram program = StartUntrained(1);
    const Layout& layout = program.layout;
    const POINT beside[] = {
        {layout.prompt.left - 1, layout.prompt.top},
        {layout.prompt.right, layout.prompt.top},
        {layout.prompt.left, layout.prompt.top - 1},
        {layout.prompt.left, layout.prompt.bottom},
        {layout.cards[0].left - 1, layout.cards[0].top},
        {layout.cards[0].right, layout.cards[0].top}, // between two cards
        {layout.cards[2].left, layout.cards[2].top - 1},
        {layout.cards[2].left, layout.cards[2].bottom},
        {layout.held[3].left, layout.held[3].top},
        {layout.names.left, layout.names.top},
        {layout.payouts.left, layout.payouts.top},
        {layout.credits.left, layout.credits.top},
        {layout.paid.left, layout.paid.top},
        {-20, -20},
    };
    const auto tapAll = [&] {
        for (const POINT& point : beside) {
            Tap(program, static_cast<int>(point.x), static_cast<int>(point.y));
        }
        Settle(program);
    };
    tapAll();
    EXPECT_FALSE(Holding(program));
    Do(program, IDC_DEAL_DRAW);
    tapAll();
    EXPECT_TRUE(Holding(program));
    EXPECT_TRUE(NoneHeld(program));
}

TEST_F(Taps, WithTheRealPointerPlayAHand) {
    const RunningProgram program = StartUntrained(1);
    const auto press = [&](const Area& area) {
        PressPointer(program, (area.left + area.right) / 2, (area.top + area.bottom) / 2);
    };
    press(program.layout.betButton);
    EXPECT_TRUE(Eventually([&] { return ControlText(program, IDC_BET_ONE) == L"Bet 1"; }));
    press(program.layout.prompt);
    EXPECT_TRUE(Eventually([&] { return Holding(program); }));
    press(program.layout.cards[1]);
    EXPECT_TRUE(ShowsHeld(program, 1, true));
    press(program.layout.cards[4]);
    EXPECT_TRUE(ShowsHeld(program, 4, true));
    press(program.layout.dealButton);
    EXPECT_TRUE(Eventually([&] { return !Holding(program); }));
    EXPECT_EQ(FocusOf(program), program.window);
    press(program.layout.dealButton);
    EXPECT_TRUE(Eventually([&] { return Holding(program); }));
}
