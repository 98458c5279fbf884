#include "tests/window/forecast.h"
#include "tests/window/hostile/companion.h"
#include "tests/window/looks.h"
#include "ui/resource.h"

// No window, menu or dialog can be had.

namespace {

class WindowFaults : public WindowTest {};

constexpr wchar_t Question[] = L"Statistical Error!";

// To hold nothing of a hand that pays is an error.
bool Pays(const Table& table) {
    return table.rank < static_cast<HandRank>(table.game.rowCount);
}

} // namespace

TEST_F(WindowFaults, WithoutAMainWindowTheProgramEnds) {
    Faults faults;
    faults.Plan(WindowCalls, Refuse, 0, 1);
    const PROCESS_INFORMATION process = StartProcess(FaultyCommand(1));
    EXPECT_EQ(ExitCodeOf(process.hProcess), 0U);
    EXPECT_EQ(faults.Refused(), 1);
    EXPECT_FALSE(SettingsExist());
}

TEST_F(WindowFaults, PlayGoesOnWithoutDialogsAndMenus) {
    Faults faults;
    Companion companion;
    StartCompanion(companion, 7);
    faults.Plan(WindowCalls, Refuse, 0, 1000000);
    DealHand(companion);
    for (const int command :
         {static_cast<int>(IDC_MENU), IDC_GAMES, IDM_DEAL_SPEED, IDM_SESSION_STATS,
          IDM_HAND_DETAILS, IDM_HAND_ANALYSIS, IDM_GAME_ANALYSIS, IDM_CHANGE_PAYTABLE}) {
        Do(companion.program, command);
        EXPECT_EQ(GetLastActivePopup(companion.program.window), companion.program.window);
    }
    EXPECT_GE(faults.Refused(), 8);
    DrawHand(companion, HoldAll);
    DealHand(companion);
    faults.End();
    ExpectTable(companion.program, companion.table);
    CloseProgram(companion.program);
    EXPECT_EQ(Setting(L"Credits"), static_cast<std::uint32_t>(companion.table.credits));
    EXPECT_EQ(Setting(L"Hands"), 1U);
}

// A question that cannot be asked is not answered with yes: the hand waits, and is asked about
// again at the next draw. It counts once.
TEST_F(WindowFaults, AnErrorWaitsForItsQuestion) {
    Faults faults;
    Companion companion;
    StartCompanion(companion, FindSeed(Pays));
    Do(companion.program, IDM_WARN);
    DealHand(companion);
    faults.Plan(WindowCalls, Refuse, 0, 1000000);
    Do(companion.program, IDC_DEAL_DRAW);
    EXPECT_TRUE(Holding(companion.program));
    EXPECT_EQ(faults.Refused(), 1);
    faults.End();
    Post(companion.program, IDC_DEAL_DRAW);
    LeaveDialog(WaitForDialog(companion.program, Question), IDC_ANSWER_YES);
    Settle(companion.program);
    CountDraw(companion.table, companion.stats, 0);
    ExpectTable(companion.program, companion.table);
    CloseProgram(companion.program);
    EXPECT_EQ(Setting(L"Credits"), static_cast<std::uint32_t>(companion.table.credits));
    EXPECT_EQ(Setting(L"Errors2"), 1U);
}

TEST_F(WindowFaults, WithoutMoneyAndItsQuestionNoHandIsDealt) {
    SetSetting(L"Credits", 2);
    Faults faults;
    const RunningProgram program = StartFaulty(1);
    faults.Plan(WindowCalls, Refuse, 0, 1000000);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_FALSE(Holding(program));
    EXPECT_EQ(faults.Refused(), 1);
    faults.End();
    Post(program, IDC_DEAL_DRAW);
    LeaveDialog(WaitForDialog(program, L"Need Money"), IDOK);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(Holding(program));
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Credits"), 97U);
}
