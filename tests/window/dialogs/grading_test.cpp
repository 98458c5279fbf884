#include <gmock/gmock.h>

#include "tests/window/dialogs/kept_pictures.h"
#include "tests/window/dialogs/played_hand.h"
#include "training/play_grading.h"
#include "training/session_stats.h"
#include "ui/resource.h"

// The question before a draw that falls short, and what the statistics make of it.

using testing::ElementsAre;

namespace {

constexpr double Any = 1e9;

class Grading : public PlayedHand {
  protected:
    // Opens the first seed whose hand fits and deals it.
    template <typename Wanted>
    void OpenHand(Wanted wanted) {
        Open(FindSeed(wanted));
        Deal();
    }

    // A hand with a hold of such a cost, which is held.
    void OpenHandCosting(double above, double atMost) {
        OpenHand([&](const Table& dealt) {
            table.hand = dealt.hand;
            table.game = dealt.game;
            table.bet = dealt.bet;
            return HasHoldCosting(above, atMost);
        });
        Hold(HoldCosting(above, atMost));
    }

    std::vector<std::wstring> Errors() {
        return ReadStats(program, {StatsMinorErrors, StatsModerateErrors, StatsMajorErrors});
    }

    std::vector<std::wstring> Returns() {
        return ReadStats(program, {StatsBestReturn, StatsYourReturn});
    }
};

std::wstring Sum(double value) {
    return Formatted(L"%1.4f ", value);
}

} // namespace

TEST_F(Grading, AsksNothingOfTheBestHoldAndAddsBothReturns) {
    Open(1);
    Deal();
    Hold(BestHold());
    const double best = BestReturn();
    Draw();
    EXPECT_THAT(Errors(), ElementsAre(L"0 ", L"0 ", L"0 "));
    EXPECT_THAT(Returns(), ElementsAre(Sum(best), Sum(best)));
    CloseProgram(program);
    EXPECT_EQ(RealSetting(L"Returns0"), best);
    EXPECT_EQ(RealSetting(L"Returns1"), best);
    EXPECT_EQ(Setting(L"Hands"), 1U);
}

TEST_F(Grading, TakesATieWithAnotherHoldForNoError) {
    SetSetting(L"Lastgame", DeucesWild);
    HoldPattern other = 0;
    OpenHand([&](const Table& dealt) {
        const auto best =
            static_cast<std::size_t>(FindBestHold(dealt.hand.cards.data(), dealt.game, dealt.bet));
        for (const HoldResult& result : resultTable) {
            if (result.pattern != resultTable[best].pattern &&
                result.expectedReturn == resultTable[best].expectedReturn) {
                other = result.pattern;
                return true;
            }
        }
        return false;
    });
    ASSERT_NE(other, BestHold());
    Hold(other);
    const double best = BestReturn();
    Draw();
    EXPECT_THAT(Errors(), ElementsAre(L"0 ", L"0 ", L"0 "));
    EXPECT_THAT(Returns(), ElementsAre(Sum(best), Sum(best)));
}

TEST_F(Grading, ShowsAMinorErrorInWhiteAndTheDialogsOwnFont) {
    OpenHandCosting(0, 0.02);
    const HWND question = DrawAndBeAsked();
    ExpectQuestion(question, BestReturn(), ReturnOf(held));
    GrabField(question, GradingError, Black, White);
    GrabField(question, GradingCost, White, Black);
    const HFONT dialogFont = MakeDialogFont();
    const HFONT displayFont = MakeDisplayFont();
    EXPECT_TRUE(ShowsInkOfSize(question, GradingError, Black,
                               SizeOf(InkBoxOf(L"Minor Error!", dialogFont))));
    EXPECT_TRUE(ShowsInkOfSize(question, GradingCost, White,
                               SizeOf(InkBoxOf(FieldText(question, GradingCost), displayFont))));
    DeleteObject(dialogFont);
    DeleteObject(displayFont);
    EXPECT_TRUE(LooksAsKept(program, question, L"question-minor"));
    AnswerYes(question);
    EXPECT_THAT(Errors(), ElementsAre(L"1 ", L"0 ", L"0 "));
}

TEST_F(Grading, ShowsAModerateErrorInRedAndTheDisplayFont) {
    OpenHandCosting(0.02, 0.1);
    const HWND question = DrawAndBeAsked();
    ExpectQuestion(question, BestReturn(), ReturnOf(held));
    GrabField(question, GradingError, Black, Red);
    GrabField(question, GradingCost, White, 0x800000);
    const HFONT displayFont = MakeDisplayFont();
    EXPECT_TRUE(ShowsInkOfSize(question, GradingError, Black,
                               SizeOf(InkBoxOf(L"Moderate Error!", displayFont))));
    DeleteObject(displayFont);
    EXPECT_TRUE(LooksAsKept(program, question, L"question-moderate"));
    AnswerYes(question);
    EXPECT_THAT(Errors(), ElementsAre(L"0 ", L"1 ", L"0 "));
}

TEST_F(Grading, ShowsAMajorErrorInRedAndTheDisplayFont) {
    OpenHandCosting(0.1, Any);
    const HWND question = DrawAndBeAsked();
    ExpectQuestion(question, BestReturn(), ReturnOf(held));
    GrabField(question, GradingError, Black, Red);
    const HFONT displayFont = MakeDisplayFont();
    EXPECT_TRUE(ShowsInkOfSize(question, GradingError, Black,
                               SizeOf(InkBoxOf(L"Major Error!!!", displayFont))));
    DeleteObject(displayFont);
    EXPECT_TRUE(LooksAsKept(program, question, L"question-major"));
    AnswerYes(question);
    EXPECT_THAT(Errors(), ElementsAre(L"0 ", L"0 ", L"1 "));
}

TEST_F(Grading, HasItsControlsWhereTheyBelongAndNoAsItsDefault) {
    OpenHandCosting(0, Any);
    const HWND question = DrawAndBeAsked();
    ExpectPlaces(question, IDD_STATISTICAL_ERROR,
                 {{IDC_ANSWER_NO, 111, 7, 46, 14},
                  {IDC_ANSWER_YES, 111, 24, 45, 14},
                  {IDC_GRADING_DETAILS, 111, 43, 45, 14},
                  {GradingError, 6, 7, 95, 17},
                  {GradingCost, 6, 27, 95, 13},
                  {GradingBestReturn, 68, 43, 33, 8},
                  {GradingYourReturn, 68, 53, 34, 8}});
    EXPECT_EQ(FieldText(question, IDC_ANSWER_NO), L"&No");
    EXPECT_EQ(FieldText(question, IDC_ANSWER_YES), L"&Yes");
    EXPECT_EQ(FieldText(question, IDC_GRADING_DETAILS), L"Details...");
    EXPECT_THAT(PlainTexts(question),
                ElementsAre(L"Best Play Return:", L"Your Play Return:", L"Play It Anyway?"));
    EXPECT_EQ(LOWORD(SendMessageW(question, DM_GETDEFID, 0, 0)), IDC_ANSWER_NO);
    EXPECT_EQ(FocusOf(program), GetDlgItem(question, IDC_ANSWER_NO));
    LeaveDialog(question, IDC_ANSWER_NO);
}

// Costs of just these values are made by paytables for one coin, found by a search over hands and
// paytables. In the 53-card deck a hold of one card has 194,580 draws, of which a tenth is a whole
// number. Two hundredths are none of any deck's: no number of draws has 5 as a factor twice, nor
// has the least common multiple of two of them; the nearest cost to 0.02 is more than 2e-9 off,
// where doubles lie 3e-18 apart. So 0.02 is met from both sides, as near as a hand may come.
struct BoundaryCase {
    const char* name;
    GameId game;
    std::uint32_t seed;
    std::vector<std::int32_t> payouts;
    HoldPattern yours;
    double least; // of the cost
    double most;
    const wchar_t* error;
    const wchar_t* cost;
    std::vector<const wchar_t*> errors;
};

class Boundary : public Grading, public testing::WithParamInterface<BoundaryCase> {};

TEST_P(Boundary, ClassesTheCostByStrictlyGreater) {
    const BoundaryCase& boundary = GetParam();
    SetSetting(L"Lastgame", boundary.game);
    SetSetting(L"Lastbet", 1);
    SetPayouts(GameTitle(boundary.game).c_str(), false, boundary.payouts);
    Open(boundary.seed);
    Deal();
    Hold(boundary.yours);
    const double best = BestReturn();
    const double yours = ReturnOf(held);
    ASSERT_GE(best - yours, boundary.least);
    ASSERT_LE(best - yours, boundary.most);
    const HWND question = DrawAndBeAsked();
    ExpectQuestion(question, best, yours);
    EXPECT_EQ(FieldText(question, GradingError), boundary.error);
    EXPECT_EQ(FieldText(question, GradingCost), boundary.cost);
    AnswerYes(question);
    EXPECT_THAT(Errors(), testing::ElementsAreArray(boundary.errors));
}

const BoundaryCase boundaries[] = {
    {"ATenthExactly",
     JokerWild,
     1,
     {0, 8, 0, 0, 0, 3, 0, 0, 1, 1, 0},
     30,
     0.1,
     0.1,
     L"Moderate Error!",
     L"Cost: 0.10 Coins",
     {L"0 ", L"1 ", L"0 "}},
    {"JustAboveATenth",
     JacksOrBetter,
     5,
     {27, 0, 0, 20, 0, 5, 0, 0, 0},
     0,
     0.10000006,
     0.10000007,
     L"Major Error!!!",
     L"Cost: 0.10 Coins",
     {L"0 ", L"0 ", L"1 "}},
    {"JustBelowTwoHundredths",
     JacksOrBetter,
     5,
     {0, 0, 18, 11, 3, 0, 0, 0, 0},
     0,
     0.0199998,
     0.0199999,
     L"Minor Error!",
     L"Cost: 0.02 Coins",
     {L"1 ", L"0 ", L"0 "}},
    {"JustAboveTwoHundredths",
     JacksOrBetter,
     14,
     {0, 0, 0, 21, 0, 2, 2, 2, 0},
     0,
     0.02000001,
     0.02000002,
     L"Moderate Error!",
     L"Cost: 0.02 Coins",
     {L"0 ", L"1 ", L"0 "}},
};

INSTANTIATE_TEST_SUITE_P(Grading, Boundary, testing::ValuesIn(boundaries),
                         [](const auto& of) { return std::string(of.param.name); });

TEST_F(Grading, CountsErrorsAndProceedsWithoutTraining) {
    Open(1);
    Do(program, IDM_NO_TRAINING);
    Deal();
    const HoldPattern major = HoldCosting(0.1, Any);
    Hold(major);
    const double best = BestReturn();
    const double yours = ReturnOf(major);
    Draw();
    EXPECT_THAT(Errors(), ElementsAre(L"0 ", L"0 ", L"1 "));
    EXPECT_THAT(Returns(), ElementsAre(Sum(best), Sum(yours)));
}

TEST_F(Grading, CountsAHandThatIsSentBackOnceWithItsFirstHold) {
    Open(1);
    Deal();
    const HoldPattern first = HoldCosting(0.1, Any);
    const double best = BestReturn();
    const double yours = ReturnOf(first);
    Hold(first);
    EXPECT_THAT(Errors(), ElementsAre(L"0 ", L"0 ", L"0 "));

    LeaveDialog(DrawAndBeAsked(), IDC_ANSWER_NO);
    EXPECT_TRUE(Holding(program));
    EXPECT_THAT(Errors(), ElementsAre(L"0 ", L"0 ", L"1 "));
    EXPECT_THAT(Returns(), ElementsAre(Sum(best), Sum(yours)));

    // The same once more, then another that is no better.
    HWND question = DrawAndBeAsked();
    ExpectQuestion(question, best, yours);
    LeaveDialog(question, IDC_ANSWER_NO);
    HoldPattern second = HoldAll;
    while (second == first || !(ReturnOf(second) < best)) {
        --second;
    }
    Hold(second);
    question = DrawAndBeAsked();
    ExpectQuestion(question, best, ReturnOf(second));
    LeaveDialog(question, IDC_ANSWER_NO);

    // The best goes through; nothing has been added.
    Hold(BestHold());
    Draw();
    EXPECT_THAT(Errors(), ElementsAre(L"0 ", L"0 ", L"1 "));
    EXPECT_THAT(Returns(), ElementsAre(Sum(best), Sum(yours)));
    EXPECT_THAT(ReadStats(program, {StatsHands}), ElementsAre(L"1 "));

    // The next hand counts again.
    Deal();
    const double nextBest = BestReturn();
    Hold(BestHold());
    Draw();
    EXPECT_THAT(Returns(), ElementsAre(Sum(best + nextBest), Sum(yours + nextBest)));
}

TEST_F(Grading, CountsTheNextHandAfterAShortHoldIsPlayedAnyway) {
    Open(2);
    Deal();
    Hold(HoldCosting(0, Any));
    LeaveDialog(DrawAndBeAsked(), IDC_ANSWER_NO);
    AnswerYes(DrawAndBeAsked());
    const std::vector<std::wstring> before = Returns();
    Deal();
    Hold(HoldCosting(0, Any));
    AnswerYes(DrawAndBeAsked());
    EXPECT_NE(Returns(), before);
}

TEST_F(Grading, KeepsItsQuestionBesideTheDetailsOpenedFromIt) {
    Open(1);
    Deal();
    Hold(HoldCosting(0.1, Any));
    const HWND question = DrawAndBeAsked();
    PressButton(question, IDC_GRADING_DETAILS);
    const HWND list = WaitForDetails(program);
    const std::vector<SeenRow> rows = ReadRows(program, list, 2);
    EXPECT_EQ(rows.front().front(), Formatted(L"%05.4f", BestReturn()));
    EXPECT_FALSE(IsWindowEnabled(question));
    LeaveDialog(GetParent(list), IDOK);
    EXPECT_TRUE(IsWindow(question));
    EXPECT_TRUE(IsWindowEnabled(question));
    EXPECT_TRUE(Holding(program));
    ExpectQuestion(question, BestReturn(), ReturnOf(held));
    AnswerYes(question);
}

TEST_F(Grading, TakesNoAnswerBeneathTheDetails) {
    Open(1);
    Deal();
    Hold(HoldCosting(0.1, Any));
    const HWND question = DrawAndBeAsked();
    PressButton(question, IDC_GRADING_DETAILS);
    const HWND details = GetParent(WaitForDetails(program));
    for (const int answer : {IDC_ANSWER_NO, IDC_ANSWER_YES}) {
        SendMessageW(question, WM_COMMAND, static_cast<WPARAM>(answer), 0);
    }
    EXPECT_FALSE(IsWindowEnabled(program.window)) << "play goes on beneath a dialog";
    Do(program, IDC_DEAL_DRAW);
    LeaveDialog(details, IDOK);
    EXPECT_TRUE(IsWindow(question));
    EXPECT_TRUE(IsWindowEnabled(question));
    AnswerYes(question);
    EXPECT_THAT(ReadStats(program, {StatsHands}), ElementsAre(L"1 "));
}

TEST_F(Grading, AnswersTheRealKeyboard) {
    Open(1);
    Deal();
    Hold(HoldCosting(0.1, Any));
    for (const wchar_t* key : {L"Return", L"Escape", L"n"}) {
        const HWND question = DrawAndBeAsked();
        PressKeysIn(question, key);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(question); }));
        Settle(program);
        EXPECT_TRUE(Holding(program));
    }
    const HWND question = DrawAndBeAsked();
    PressKeysIn(question, L"y");
    EXPECT_TRUE(Eventually([&] { return !Holding(program); }));
}

TEST_F(Grading, HoldsTheBestInAutoholdAndAsksOnlyWhoSpoilsIt) {
    Open(1);
    Do(program, IDM_AUTOHOLD);
    for (int hand = 0; hand < 3; ++hand) {
        Deal();
        held = BestHold();
        for (std::size_t i = 0; i < HandSize; ++i) {
            EXPECT_TRUE(ShowsHeld(program, i, ((held >> i) & 1) != 0)) << "card " << i;
        }
        Draw();
    }
    Deal();
    held = BestHold();
    const double best = BestReturn();
    Hold(HoldCosting(0, Any));
    const HWND question = DrawAndBeAsked();
    ExpectQuestion(question, best, ReturnOf(held));
    LeaveDialog(question, IDC_ANSWER_NO);
}

TEST_F(Grading, HoldsTheBestInAutoholdInEveryGame) {
    Open(1);
    Do(program, IDM_AUTOHOLD);
    for (int id = 0; id < GameCount; ++id) {
        SCOPED_TRACE(id);
        Do(program, IDM_FIRST_GAME + id);
        PickGame(table, id);
        Deal();
        held = BestHold();
        for (std::size_t i = 0; i < HandSize; ++i) {
            EXPECT_TRUE(ShowsHeld(program, i, ((held >> i) & 1) != 0)) << "card " << i;
        }
        Draw();
    }
}

TEST_F(Grading, StartsWithWarnWhateverTheModeWas) {
    Open(1);
    Do(program, IDM_NO_TRAINING);
    CloseProgram(program);
    Open(1);
    Deal();
    Hold(HoldCosting(0.1, Any));
    LeaveDialog(DrawAndBeAsked(), IDC_ANSWER_NO);
    CloseProgram(program);
}

TEST_F(Grading, RefusesCommandsPastTheQuestion) {
    Open(1);
    Deal();
    Hold(HoldCosting(0.1, Any));
    const HWND question = DrawAndBeAsked();
    Post(program, IDC_DEAL_DRAW);
    Post(program, IDM_FIRST_GAME + DeucesWild);
    TypeKey(program, L'1');
    Settle(program);
    EXPECT_EQ(ControlText(program, IDC_STATUS), L"JACKS OR BETTER");
    EXPECT_TRUE(IsWindow(question));
    AnswerYes(question);
    EXPECT_THAT(ReadStats(program, {StatsHands}), ElementsAre(L"1 "));
}

TEST_F(Grading, EndsWithTheProgramWithTheQuestionAndDetailsOpen) {
    for (const bool details : {false, true}) {
        DeleteSettings();
        Open(1);
        Deal();
        Hold(HoldCosting(0.1, Any));
        const HWND question = DrawAndBeAsked();
        if (details) {
            PressButton(question, IDC_GRADING_DETAILS);
            WaitForDetails(program);
        }
        CloseProgram(program);
        EXPECT_EQ(Setting(L"Errors2"), 1U);
        EXPECT_EQ(Setting(L"Hands"), 0U);
        EXPECT_EQ(Setting(L"Credits"), 95U);
    }
}
