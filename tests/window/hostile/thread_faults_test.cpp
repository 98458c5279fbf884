#include "tests/window/dialogs/analysis_run.h"
#include "tests/window/forecast.h"
#include "tests/window/hostile/companion.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// No thread can be had.

namespace {

class ThreadFaults : public WindowTest {};

} // namespace

TEST_F(ThreadFaults, AWholeWinReachesTheCreditsAtOnce) {
    PayFor(2000);
    Faults faults;
    faults.Plan(ThreadCalls, Refuse, 0, 1000000);
    Companion companion;
    StartCompanion(companion, FindSeed(IsWinning));
    DealHand(companion);
    DrawHand(companion, HoldAll);
    ASSERT_EQ(companion.table.credits, 2095);
    EXPECT_EQ(faults.Refused(), 1);
    EXPECT_TRUE(ShowsCredits(companion.program, 2095));
    EXPECT_TRUE(ShowsPaid(companion.program, 2000));
    EXPECT_TRUE(ShowsPrompt(companion.program, GameOver));
    DealHand(companion);
    EXPECT_TRUE(ShowsCredits(companion.program, 2090));
    CloseProgram(companion.program);
    EXPECT_EQ(Setting(L"Credits"), 2090U);
    EXPECT_EQ(Setting(L"CoinsOut"), 2000U);
}

TEST_F(ThreadFaults, TheNextWinIsCountedAgain) {
    PayFor(60);
    Faults faults;
    faults.Plan(ThreadCalls, Refuse, 0, 1);
    Companion companion;
    StartCompanion(companion, FindSeed(IsWinning));
    int wins = 0;
    while (wins < 2) {
        DealHand(companion);
        const std::int32_t before = companion.table.credits;
        DrawHand(companion, HoldAll);
        wins += companion.table.credits > before ? 1 : 0;
    }
    EXPECT_TRUE(ShowsCredits(companion.program, companion.table.credits));
    EXPECT_EQ(faults.Refused(), 1);
    EXPECT_EQ(faults.Seen(), 2);
    CloseProgram(companion.program);
    EXPECT_EQ(Setting(L"Credits"), static_cast<std::uint32_t>(companion.table.credits));
}

TEST_F(ThreadFaults, AnAnalysisWithoutAThreadIsStoppedByThePlayer) {
    Faults faults;
    faults.Plan(ThreadCalls, Refuse, 0, 1000000);
    const RunningProgram program = StartFaulty(1);
    const HWND dialog = OpenAnalysis(program, 10);
    StartRun(program, dialog);
    EXPECT_EQ(faults.Refused(), 1);
    EXPECT_EQ(FieldText(dialog, IDOK), L"Cancel");
    faults.End();
    LeaveDialog(AskToStop(program, dialog), IDYES);
    EXPECT_TRUE(Eventually([&] { return FieldText(dialog, IDOK) == L"Close"; }));
    EXPECT_TRUE(Idle(dialog));
    EXPECT_FALSE(SettingsExist()) << "a run that never was has no results";
    // With a thread to be had a run begins.
    Gate gate;
    gate.CloseAt(1);
    StartRun(program, dialog);
    gate.WaitForRun();
    gate.Open();
    LeaveDialog(AskToStop(program, dialog), IDYES);
    EXPECT_TRUE(Eventually([&] { return Idle(dialog); }));
    LeaveDialog(dialog, IDOK);
    CloseProgram(program);
}

TEST_F(ThreadFaults, TheProgramEndsBesideAnAnalysisWithoutAThread) {
    Faults faults;
    faults.Plan(ThreadCalls, Refuse, 0, 1000000);
    const RunningProgram program = StartFaulty(1);
    const HWND dialog = OpenAnalysis(program, 10);
    StartRun(program, dialog);
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Credits"), 100U);
}
