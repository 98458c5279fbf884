#include <gmock/gmock.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <set>

#include "tests/window/dialogs/analysis_run.h"
#include "tests/window/dialogs/command_line.h"
#include "tests/window/dialogs/kept_pictures.h"
#include "tests/window/dialogs/played_hand.h"
#include "tests/window/play.h"
#include "training/session_stats.h"
#include "ui/resource.h"

// The exact return of a game, run and shown by its dialog and kept in the registry.

namespace {

class Analysis : public WindowTest {};

constexpr wchar_t JacksAtFive[] = L"JACKS OR BETTER\\4000-250-125-45-30-20-15-10-5";
constexpr wchar_t JacksAtOne[] = L"JACKS OR BETTER\\250-50-25-9-6-4-3-2-1";
constexpr int JacksRows = 10; // "NOTHING" among them
constexpr int JacksCells = 6;

struct KnownGame {
    GameId id;
    int rows;
    const wchar_t* key; // at five coins
    const wchar_t* gameReturn;
};

const KnownGame knownGames[] = {
    {JacksOrBetter, 10, JacksAtFive, L"99.5439%"},
    {DeucesWild, 11, L"DEUCES WILD\\4000-1000-125-75-45-25-15-10-10-5", L"100.7620%"},
    {JokerWild, 12, L"JOKER WILD\\4000-1000-500-250-100-35-25-15-10-5-5", L"100.6463%"},
    {DoubleDoubleJackpot, 14,
     L"DOUBLE DOUBLE JACKPOT\\4000-250-1600-800-800-400-250-45-30-25-15-5-5", L"100.3472%"},
    {DoubleBonusPoker, 12, L"DOUBLE BONUS POKER\\4000-250-800-400-250-50-35-25-15-5-5",
     L"100.1725%"},
    {DoubleDoubleBonus, 14, L"DOUBLE DOUBLE BONUS\\4000-250-2000-800-800-400-250-45-30-20-15-5-5",
     L"98.9808%"},
};
static_assert(std::size(knownGames) == GameCount);

std::wstring Value(std::size_t row, const wchar_t* suffix, const std::wstring& key) {
    return TextSetting(std::to_wstring(row) + suffix, key).value_or(L"missing");
}

void ExpectStored(const AnalysisTexts& texts, const std::wstring& key) {
    for (std::size_t row = 0; row < texts.rows.size(); ++row) {
        const AnalysisRowText& text = texts.rows[row];
        EXPECT_EQ(Value(row, L"-1", key), text.occursEvery) << "row " << row;
        EXPECT_EQ(Value(row, L"-2", key), text.returnShare) << "row " << row;
        EXPECT_EQ(Value(row, L"-3", key), text.probability) << "row " << row;
        EXPECT_EQ(Value(row, L"-4", key), text.frequency) << "row " << row;
    }
    EXPECT_EQ(TextSetting(L"Return", key), texts.gameReturn);
}

// What the dialog shows of a key. It may be idle a moment before it has shown the result.
void ExpectShown(const RunningProgram& program, HWND dialog, const std::wstring& key) {
    std::vector<SeenRow> rows;
    EXPECT_TRUE(Eventually([&] {
        rows = ReadRows(program, GetDlgItem(dialog, IDC_ANALYSIS_LIST), JacksCells);
        return !rows.empty() && rows.front()[2] == Value(0, L"-4", key) &&
               rows.back()[2] == Value(rows.size() - 1, L"-4", key);
    }));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(rows[row][2], Value(row, L"-4", key)) << "row " << row;
        EXPECT_EQ(rows[row][3], Value(row, L"-3", key)) << "row " << row;
        EXPECT_EQ(rows[row][4], Value(row, L"-1", key)) << "row " << row;
        EXPECT_EQ(rows[row][5], Value(row, L"-2", key)) << "row " << row;
    }
    EXPECT_EQ(FieldText(dialog, IDC_ANALYSIS_TOTAL), TextSetting(L"Return", key).value_or(L"-"));
}

void ExpectEmpty(const RunningProgram& program, HWND dialog) {
    for (const SeenRow& row :
         ReadRows(program, GetDlgItem(dialog, IDC_ANALYSIS_LIST), JacksCells)) {
        EXPECT_NE(row[0], L"");
        EXPECT_NE(row[1], L"");
        for (std::size_t column = 2; column < row.size(); ++column) {
            EXPECT_EQ(row[column], L"");
        }
    }
    EXPECT_EQ(FieldText(dialog, IDC_ANALYSIS_TOTAL), L"");
}

// Whose first hand, drawn with no card held, is played wrong and wins nothing.
std::uint32_t SeedOfALosingDraw() {
    for (std::uint32_t seed = 1;; ++seed) {
        Table table;
        ForetellStart(table, seed);
        ForetellDeal(table);
        const std::int32_t best = FindBestHold(table.hand.cards.data(), table.game, table.bet);
        if (best != 0 && ForetellDraw(table, 0).payout == 0) {
            return seed;
        }
    }
}

// Values that no run makes, to see whether they stay.
void StoreMarks(const std::wstring& key, std::size_t rows) {
    for (std::size_t row = 0; row < rows; ++row) {
        for (const wchar_t* suffix : {L"-1", L"-2", L"-3", L"-4"}) {
            SetTextSetting(std::to_wstring(row) + suffix, L"mark" + std::to_wstring(row) + suffix,
                           key);
        }
    }
    SetTextSetting(L"Return", L"marked", key);
}

} // namespace

TEST_F(Analysis, HasItsControlsColumnsAndColours) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenAnalysis(program, JacksRows);
    ExpectPlaces(dialog, IDD_GAME_ANALYSIS,
                 {{IDC_ANALYSIS_LIST, 2, 2, 155, 120, GoesAlong::Grows},
                  {IDOK, 103, 137, 51, 13, GoesAlong::RightAndDown},
                  {IDC_RUN_ANALYSIS, 103, 123, 51, 13, GoesAlong::RightAndDown},
                  {IDC_ANALYSIS_TOTAL, 11, 136, 80, 14, GoesAlong::Down}});
    EXPECT_EQ(FieldText(dialog, IDOK), L"&Close");
    EXPECT_EQ(FieldText(dialog, IDC_RUN_ANALYSIS), L"Run Analysis");
    EXPECT_THAT(PlainTexts(dialog), testing::ElementsAre(L"Game Total Return"));
    EXPECT_EQ(LOWORD(SendMessageW(dialog, DM_GETDEFID, 0, 0)), IDOK);
    const HWND list = GetDlgItem(dialog, IDC_ANALYSIS_LIST);
    const std::vector<SeenColumn> columns = ReadColumns(program, list);
    const wchar_t* headers[] = {L"Hand Name", L"Payout",       L"Frequency",
                                L"% Prob.",   L"Occurs Every", L"% of Ret."};
    ASSERT_EQ(columns.size(), std::size(headers));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        EXPECT_EQ(columns[i].header, headers[i]);
        EXPECT_GT(columns[i].width, columns[i].textWidth) << headers[i];
        // The platform left-aligns the first column.
        EXPECT_EQ(columns[i].alignment, i == 0 ? LVCFMT_LEFT : LVCFMT_RIGHT) << headers[i];
    }
    ExpectEmpty(program, dialog);
    LeaveDialog(dialog, IDOK);
}

TEST_F(Analysis, ShowsThePublishedReturnOfEveryGameAndCutsNothing) {
    const RunningProgram program = StartProgram();
    for (const KnownGame& game : knownGames) {
        SCOPED_TRACE(game.id);
        Do(program, IDM_FIRST_GAME + game.id);
        const HWND dialog = OpenAnalysis(program, game.rows);
        ExpectEmpty(program, dialog);
        StartRun(program, dialog);
        WaitUntilIdle(dialog);
        EXPECT_TRUE(Eventually([&] {
            return FieldText(dialog, IDC_ANALYSIS_TOTAL) == game.gameReturn;
        })) << "after the refresh";
        ExpectShown(program, dialog, game.key);
        const HWND list = GetDlgItem(dialog, IDC_ANALYSIS_LIST);
        const std::vector<SeenColumn> columns = ReadColumns(program, list);
        const std::vector<SeenRow> rows = ReadRows(program, list, JacksCells);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            for (const SeenRow& row : rows) {
                EXPECT_GT(columns[i].width, WidthInList(program, list, row[i])) << "column " << i;
            }
        }
        EXPECT_FALSE(Scrolls(list)) << "on a screen that has the room";
        EXPECT_EQ(rows.back()[0], L"NOTHING");
        EXPECT_EQ(rows.back()[1], L"0");
        EXPECT_EQ(rows.back()[5], L"0.00%");
        if (game.id == JacksOrBetter || game.id == DoubleDoubleBonus) {
            GrabField(dialog, IDC_ANALYSIS_TOTAL, Black, 0x00FFFF);
            EXPECT_TRUE(LooksAsKept(program, dialog, L"analysis-" + std::to_wstring(game.rows)));
        }
        LeaveDialog(dialog, IDOK);
    }
}

TEST_F(Analysis, ShowsFrequenciesOfAllDealsAndProbabilitiesOfAHundredPercent) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenAnalysis(program, JacksRows);
    StartRun(program, dialog);
    WaitUntilIdle(dialog);
    Settle(program);
    double deals = 0;
    double percent = 0;
    for (const SeenRow& row :
         ReadRows(program, GetDlgItem(dialog, IDC_ANALYSIS_LIST), JacksCells)) {
        deals += std::stod(row[2]);
        percent += std::stod(row[3]);
    }
    EXPECT_NEAR(deals, 2598960, JacksRows * 0.05) << "but for the rounding of each text";
    EXPECT_NEAR(percent, 100, JacksRows * 0.0005);
    LeaveDialog(dialog, IDOK);
}

// The table of the command line is that of the dialog, text by text.
TEST_F(Analysis, StoresEveryTextUnderThePaytablesKey) {
    const RunningProgram program = StartProgram();
    for (const KnownGame& game : {knownGames[0], knownGames[1], knownGames[2]}) {
        SCOPED_TRACE(game.id);
        Do(program, IDM_FIRST_GAME + game.id);
        const HWND dialog = OpenAnalysis(program, game.rows);
        StartRun(program, dialog);
        const AnalysisTexts texts = CommandLineAnalysis(game.id, MaxBet);
        WaitUntilIdle(dialog);
        ExpectStored(texts, game.key);
        LeaveDialog(dialog, IDOK);
    }
}

TEST_F(Analysis, KeepsOneToFourCoinsUnderOneKeyAndFiveUnderAnother) {
    StoreMarks(JacksAtFive, JacksRows);
    const RunningProgram program = StartProgram();
    HWND dialog = OpenAnalysis(program, JacksRows);
    ExpectShown(program, dialog, JacksAtFive);
    LeaveDialog(dialog, IDOK);

    Do(program, IDC_BET_ONE);
    dialog = OpenAnalysis(program, JacksRows);
    ExpectEmpty(program, dialog);
    StartRun(program, dialog);
    WaitUntilIdle(dialog);
    EXPECT_EQ(ReadRows(program, GetDlgItem(dialog, IDC_ANALYSIS_LIST), 2).front()[1], L"250");
    LeaveDialog(dialog, IDOK);
    ExpectStored(CommandLineAnalysis(JacksOrBetter, 1), JacksAtOne);
    EXPECT_EQ(TextSetting(L"Return", JacksAtFive), L"marked");

    for (int bet = 2; bet <= 4; ++bet) {
        Do(program, IDC_BET_ONE);
        dialog = OpenAnalysis(program, JacksRows);
        ExpectShown(program, dialog, JacksAtOne);
        EXPECT_EQ(ReadRows(program, GetDlgItem(dialog, IDC_ANALYSIS_LIST), 2).front()[1], L"250");
        LeaveDialog(dialog, IDOK);
    }
}

TEST_F(Analysis, ShowsWhatAnEarlierRunOfTheProgramFound) {
    {
        const RunningProgram program = StartProgram();
        const HWND dialog = OpenAnalysis(program, JacksRows);
        StartRun(program, dialog);
        WaitUntilIdle(dialog);
        LeaveDialog(dialog, IDOK);
        CloseProgram(program);
    }
    const RunningProgram program = StartProgram();
    HWND dialog = OpenAnalysis(program, JacksRows);
    ExpectShown(program, dialog, JacksAtFive);
    EXPECT_EQ(FieldText(dialog, IDC_ANALYSIS_TOTAL), L"99.5439%");
    LeaveDialog(dialog, IDOK);

    // Another paytable is another game.
    SetSetting(L"8", 6, L"JACKS OR BETTER\\5");
    Do(program, IDM_FIRST_GAME + JacksOrBetter);
    dialog = OpenAnalysis(program, JacksRows);
    ExpectEmpty(program, dialog);
    LeaveDialog(dialog, IDOK);
}

TEST_F(Analysis, PaysTheRestOfACountUpAtOnce) {
    const RunningProgram program = StartCountUp(1000, 30);
    LeaveDialog(OpenAnalysis(program, JacksRows), IDOK);
    EXPECT_TRUE(ShowsCredits(program, 1095));
}

TEST_F(Analysis, AsksBeforeItRuns) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenAnalysis(program, JacksRows);
    PressButton(dialog, IDC_RUN_ANALYSIS);
    const HWND question = WaitForDialog(program, L"Confirm");
    EXPECT_EQ(MessageText(question), L"This could take 10 to 30 minutes (depending on the speed of "
                                     L"your machine).  Are you sure you want to continue?");
    LeaveDialog(question, IDNO);
    EXPECT_TRUE(Idle(dialog));
    LeaveDialog(dialog, IDCANCEL);
    EXPECT_EQ(TextSetting(L"Return", JacksAtFive), std::nullopt);
}

TEST_F(Analysis, ShowsItsProgressOnTheRunButtonWhichDoesNothingMeanwhile) {
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    Gate gate;
    gate.CloseAt(0);
    StartRun(program, dialog);
    for (const int percent : {0, 1, 2, 9, 10, 50, 99}) {
        gate.CloseAt(percent);
        // A percent that falls between two classes is not shown.
        EXPECT_TRUE(Eventually([&] {
            const std::wstring text = FieldText(dialog, IDC_RUN_ANALYSIS);
            return text == std::to_wstring(percent) + L"% Done" ||
                   text == std::to_wstring(percent + 1) + L"% Done";
        })) << percent;
        EXPECT_EQ(FieldText(dialog, IDOK), L"Cancel");
        PressButton(dialog, IDC_RUN_ANALYSIS);
        Settle(program);
        EXPECT_EQ(FindDialog(program, L"Confirm"), nullptr);
    }
    EXPECT_TRUE(LooksAsKept(program, dialog, L"analysis-running"));
    gate.Open();
    WaitUntilIdle(dialog);
    EXPECT_EQ(FieldText(dialog, IDC_ANALYSIS_TOTAL), L"99.5439%");
}

TEST_F(Analysis, OffersToCloseUntilItRunsAndAgainAfterwards) {
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    EXPECT_EQ(FieldText(dialog, IDOK), L"&Close");
    StartRun(program, dialog);
    WaitUntilIdle(dialog);
    Settle(program); // the refresh that the run sends last
    EXPECT_EQ(FieldText(dialog, IDOK), L"Close");
    {
        Gate gate;
        gate.CloseAt(20);
        StartRun(program, dialog);
        gate.WaitForRun();
        EXPECT_EQ(FieldText(dialog, IDOK), L"Cancel");
        LeaveDialog(AskToStop(program, dialog), IDYES);
    }
    WaitUntilIdle(dialog);
    Settle(program);
    EXPECT_EQ(FieldText(dialog, IDOK), L"Close");
    LeaveDialog(dialog, IDOK);
}

TEST_F(Analysis, AnswersThroughoutARun) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenAnalysis(program, JacksRows);
    StartRun(program, dialog);
    int answers = 0;
    while (!Idle(dialog)) {
        for (const HWND window : {dialog, program.window}) {
            DWORD_PTR answer = 0;
            ASSERT_NE(SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, Patience, &answer),
                      0);
        }
        ++answers;
    }
    EXPECT_GT(answers, 10);
    LeaveDialog(dialog, IDOK);
}

TEST_F(Analysis, GoesOnAfterNoToTheStopQuestion) {
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    Gate gate;
    gate.CloseAt(30);
    StartRun(program, dialog);
    gate.WaitForRun();
    const std::wstring progress = FieldText(dialog, IDC_RUN_ANALYSIS);
    for (const int button : {IDOK, IDCANCEL}) {
        PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
        const HWND question = WaitForDialog(program, L"Cancel?");
        EXPECT_EQ(MessageText(question), L"Are You Sure You Want To Cancel?");
        LeaveDialog(question, IDNO);
        EXPECT_EQ(FieldText(dialog, IDC_RUN_ANALYSIS), progress);
        EXPECT_EQ(FieldText(dialog, IDOK), L"Cancel");
    }
    gate.Open();
    WaitUntilIdle(dialog);
    EXPECT_EQ(FieldText(dialog, IDC_ANALYSIS_TOTAL), L"99.5439%");
}

// A dialog that play opens beside a run belongs to the run's dialog: neither that nor the table can
// be reached past it, and the table not even after it.
TEST_F(Analysis, StandsBehindTheDialogsOfPlay) {
    SetSetting(L"Credits", 5);
    const RunningProgram program = StartSeeded(SeedOfALosingDraw(), 0);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    Gate gate;
    gate.CloseAt(20);
    StartRun(program, dialog);
    gate.WaitForRun();
    Do(program, IDC_DEAL_DRAW);
    const HWND question = OpenDialog(program, IDC_DEAL_DRAW, QuestionTitle);
    EXPECT_FALSE(IsWindowEnabled(dialog));
    EXPECT_FALSE(IsWindowEnabled(program.window));
    LeaveDialog(question, IDC_ANSWER_YES);
    EXPECT_TRUE(Eventually([&] { return !Holding(program); }));
    EXPECT_TRUE(IsWindowEnabled(dialog));
    EXPECT_FALSE(IsWindowEnabled(program.window));

    const HWND money = OpenDialog(program, IDC_DEAL_DRAW, L"Need Money");
    EXPECT_FALSE(IsWindowEnabled(dialog));
    LeaveDialog(money, IDCANCEL);
    EXPECT_TRUE(IsWindowEnabled(dialog));
    EXPECT_FALSE(IsWindowEnabled(program.window));
    gate.Open();
    WaitUntilIdle(dialog);
    LeaveDialog(dialog, IDOK);
    EXPECT_TRUE(IsWindowEnabled(program.window));
}

// The question keeps the lock, with the details opened from it too: no search comes in between.
TEST_F(Analysis, WaitsWhileThePlayerIsAsked) {
    const RunningProgram program = StartSeeded(SeedOfALosingDraw(), 0);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    Gate gate;
    gate.CloseAt(20);
    StartRun(program, dialog);
    gate.WaitForRun();
    Do(program, IDC_DEAL_DRAW);
    const HWND question = OpenDialog(program, IDC_DEAL_DRAW, QuestionTitle);
    gate.Open();
    Sleep(100); // a percent takes less
    const std::wstring progress = FieldText(dialog, IDC_RUN_ANALYSIS);
    PressButton(question, IDC_GRADING_DETAILS);
    const HWND list = WaitForDetails(program);
    Sleep(300);
    EXPECT_EQ(FieldText(dialog, IDC_RUN_ANALYSIS), progress);
    LeaveDialog(GetParent(list), IDOK);
    EXPECT_EQ(FieldText(dialog, IDC_RUN_ANALYSIS), progress);
    LeaveDialog(question, IDC_ANSWER_YES);
    WaitUntilIdle(dialog);
    EXPECT_EQ(TextSetting(L"Return", JacksAtFive), L"99.5439%");
    LeaveDialog(dialog, IDOK);
}

// The run waits for the lock that the question has; the end of the program waits for neither.
TEST_F(Analysis, EndsWithTheProgramThoughThePlayerIsAsked) {
    const RunningProgram program = StartSeeded(SeedOfALosingDraw(), 0);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    Gate gate;
    gate.CloseAt(20);
    StartRun(program, dialog);
    gate.WaitForRun();
    Do(program, IDC_DEAL_DRAW);
    OpenDialog(program, IDC_DEAL_DRAW, QuestionTitle);
    gate.Open();
    constexpr DWORD lessThanTheLongestWait = 9000;
    PostMessageW(program.window, WM_CLOSE, 0, 0);
    EXPECT_EQ(ExitCodeOf(program.process, lessThanTheLongestWait), 0U);
    EXPECT_EQ(TextSetting(L"Return", JacksAtFive), std::nullopt);
}

TEST_F(Analysis, RefusesPlayWhileItStandsIdle) {
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    Do(program, IDC_DEAL_DRAW);
    Do(program, IDC_BET_ONE);
    EXPECT_FALSE(Holding(program));
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 5");
    LeaveDialog(dialog, IDOK);
}

TEST_F(Analysis, TakesAnEndWhileTheStopQuestionStandsForAnEnd) {
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    Gate gate;
    gate.CloseAt(99);
    StartRun(program, dialog);
    gate.WaitForRun();
    const HWND question = AskToStop(program, dialog);
    gate.Open();
    EXPECT_TRUE(Eventually([&] { return TextSetting(L"Return", JacksAtFive).has_value(); }));
    LeaveDialog(question, IDYES);
    WaitUntilIdle(dialog);
    ExpectShown(program, dialog, JacksAtFive);
    EXPECT_EQ(FieldText(dialog, IDC_ANALYSIS_TOTAL), L"99.5439%");
    LeaveDialog(dialog, IDOK);
}

// Of all deals the first block has 0.2%, and the others end at 2.3%, 7.0%, 49.3% and 100%; the
// joker adds its own after 90.6%.
struct StopCase {
    const char* name;
    GameId game;
    int percent;
    bool finishes;
};

class AnalysisStop : public Analysis, public testing::WithParamInterface<StopCase> {};

TEST_P(AnalysisStop, LeavesEarlierResultsUnlessItIsHeededTooLate) {
    const StopCase& stop = GetParam();
    const KnownGame& game = knownGames[stop.game];
    StoreMarks(game.key, static_cast<std::size_t>(game.rows));
    SetSetting(L"Lastgame", stop.game);
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenAnalysis(program, game.rows);
    Gate gate;
    gate.CloseAt(stop.percent);
    StartRun(program, dialog);
    gate.WaitForRun();
    const HWND question = AskToStop(program, dialog);
    LeaveDialog(question, IDYES);
    gate.Open();
    WaitUntilIdle(dialog);
    ExpectShown(program, dialog, game.key);
    EXPECT_EQ(TextSetting(L"Return", game.key), stop.finishes ? game.gameReturn : L"marked");
    EXPECT_EQ(Value(0, L"-1", game.key) == L"mark0-1", !stop.finishes);

    // And it can be run again.
    if (stop.percent == 20) {
        StartRun(program, dialog);
        WaitUntilIdle(dialog);
        EXPECT_EQ(TextSetting(L"Return", game.key), game.gameReturn);
    }
    LeaveDialog(dialog, IDOK);
}

const StopCase stops[] = {
    {"InFourOfAKindAndFullHouse", JacksOrBetter, 0, false},
    {"InThreeOfAKind", JacksOrBetter, 1, false},
    {"InTwoPair", JacksOrBetter, 4, false},
    {"InOnePair", JacksOrBetter, 20, false},
    {"InNoPair", JacksOrBetter, 75, false},
    {"InNoPairBeforeTheJoker", JokerWild, 85, false},
    {"WithTheJoker", JokerWild, 95, true},
};

INSTANTIATE_TEST_SUITE_P(Analysis, AnalysisStop, testing::ValuesIn(stops),
                         [](const auto& of) { return std::string(of.param.name); });

TEST_F(Analysis, EndsWithTheProgramAndStoresNothing) {
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    {
        Gate gate;
        gate.CloseAt(60);
        StartRun(program, dialog);
        gate.WaitForRun();
        PostMessageW(program.window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(dialog); }));
    }
    EXPECT_EQ(ExitCodeOf(program.process), 0U);
    EXPECT_EQ(TextSetting(L"Return", JacksAtFive), std::nullopt);
    EXPECT_EQ(Setting(L"Hands"), 0U);
}

TEST_F(Analysis, RunsBesideHandsThatArePlayed) {
    SetSetting(L"Credits", 1000);
    const RunningProgram program = StartSeeded(1, 0);
    Do(program, IDM_NO_TRAINING);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    Gate gate;
    gate.CloseAt(10);
    StartRun(program, dialog);
    gate.WaitForRun();
    gate.Open();
    constexpr unsigned hands = 20;
    for (unsigned hand = 0; hand < hands; ++hand) {
        Do(program, IDC_DEAL_DRAW);
        TypeKey(program, static_cast<wchar_t>(L'1' + hand % 5));
        Do(program, IDC_DEAL_DRAW);
    }
    WaitUntilIdle(dialog);
    EXPECT_EQ(TextSetting(L"Return", JacksAtFive), L"99.5439%");
    LeaveDialog(dialog, IDOK);
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Hands"), hands);
    EXPECT_EQ(Setting(L"CoinsIn"), hands * 5);
}

TEST_F(Analysis, KeepsItsBetWhenTheTablesChangesAndNothingElseMayChange) {
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenAnalysis(program, JacksRows);
    Gate gate;
    gate.CloseAt(10);
    StartRun(program, dialog);
    gate.WaitForRun();
    Do(program, IDC_BET_ONE);
    Do(program, IDM_FIRST_GAME + DeucesWild);
    Do(program, IDM_CHANGE_PAYTABLE);
    EXPECT_EQ(ControlText(program, IDC_STATUS), L"JACKS OR BETTER");
    EXPECT_EQ(FindDialog(program, L"Change Paytable"), nullptr);
    gate.Open();
    WaitUntilIdle(dialog);
    EXPECT_EQ(TextSetting(L"Return", JacksAtFive), L"99.5439%");
    // What is shown is the table's new bet.
    EXPECT_EQ(ReadRows(program, GetDlgItem(dialog, IDC_ANALYSIS_LIST), 2).front()[1], L"250");
    ExpectEmpty(program, dialog);
    LeaveDialog(dialog, IDOK);
}

TEST_F(Analysis, ShowsDamagedValuesAsEmptyCells) {
    StoreMarks(JacksAtFive, JacksRows);
    const std::wstring key = std::wstring(L"TessarCE\\") + JacksAtFive;
    RegDeleteKeyValueW(HKEY_CURRENT_USER, key.c_str(), L"0-1");
    SetSetting(L"1-2", 7, JacksAtFive);
    SetTextSetting(L"2-3", std::wstring(200, L'9'), JacksAtFive);
    SetTextSetting(L"Return", std::wstring(130, L'8'), JacksAtFive);
    const std::uint8_t bytes[3] = {1, 2, 3};
    RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), L"3-4", REG_BINARY, bytes, sizeof bytes);
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenAnalysis(program, JacksRows);
    const std::vector<SeenRow> rows =
        ReadRows(program, GetDlgItem(dialog, IDC_ANALYSIS_LIST), JacksCells);
    EXPECT_EQ(rows[0][4], L"");
    EXPECT_EQ(rows[1][5], L"");
    EXPECT_EQ(rows[2][3], L"");
    EXPECT_EQ(rows[3][2], L"");
    EXPECT_EQ(FieldText(dialog, IDC_ANALYSIS_TOTAL), L"");
    EXPECT_EQ(rows[0][5], L"mark0-2");
    EXPECT_EQ(rows[1][4], L"mark1-1");
    EXPECT_EQ(rows[2][2], L"mark2-4");
    EXPECT_EQ(rows[3][3], L"mark3-3");
    EXPECT_EQ(rows[9][2], L"mark9-4");
    LeaveDialog(dialog, IDOK);
    CloseProgram(program);
}

// A royal flush that costs a fortune is never drawn to, and never left standing.
TEST_F(Analysis, ShowsNeverForARowThatNeverOccurs) {
    SetSetting(L"Lastbet", 1);
    SetPayouts(L"JACKS OR BETTER", false, {-100000000});
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenAnalysis(program, JacksRows);
    StartRun(program, dialog);
    WaitUntilIdle(dialog);
    const std::wstring key = L"JACKS OR BETTER\\-100000000-50-25-9-6-4-3-2-1";
    EXPECT_EQ(Value(0, L"-1", key), L"Never");
    EXPECT_EQ(Value(0, L"-4", key), L"0.0000000");
    EXPECT_NE(Value(1, L"-1", key), L"Never");
    ExpectShown(program, dialog, key);
    LeaveDialog(dialog, IDOK);
}
