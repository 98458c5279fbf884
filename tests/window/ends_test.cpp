#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// How the program ends, and how a second start finds the first.

namespace {

class Ends : public WindowTest {};
class SecondStart : public WindowTest {};

bool InFront(HWND window) {
    return Eventually([&] { return GetForegroundWindow() == window; });
}

// Puts another program's window in front.
void CoverWithAnotherWindow() {
    StartProcess(ProgramFolder() + L"empty-window.exe");
    HWND other = nullptr;
    ASSERT_TRUE(Eventually([&] {
        other = FindWindowW(L"TessarinEmptyWindow", nullptr);
        return other != nullptr;
    }));
    SetForegroundWindow(other);
    ASSERT_TRUE(InFront(other));
}

// A second copy of the program ends at once, well.
void StartAgain() {
    const PROCESS_INFORMATION second = StartProcess(ProgramFolder() + L"tessarin-ce.exe");
    EXPECT_EQ(ExitCodeOf(second.hProcess), 0U);
}

void EndSession(const RunningProgram& program) {
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(program.window, WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, Patience, &answer);
}

} // namespace

TEST_F(Ends, WithAWholeWinWhicheverWayItIsClosedDuringTheCountUp) {
    const struct {
        const char* name;
        void (*close)(const RunningProgram&);
    } ways[] = {
        {"WM_CLOSE", [](const RunningProgram& p) { PostMessageW(p.window, WM_CLOSE, 0, 0); }},
        {"box",
         [](const RunningProgram& p) { PostMessageW(p.window, WM_SYSCOMMAND, SC_CLOSE, 0); }},
        {"x", [](const RunningProgram& p) { TypeKey(p, L'x'); }},
        {"Exit", [](const RunningProgram& p) { Post(p, IDM_EXIT); }},
        {"1000", [](const RunningProgram& p) { Post(p, IDM_CLOSE); }},
        {"log-off", EndSession},
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(way.name);
        DeleteSettings();
        const RunningProgram program = StartCountUp(2000, 25); // fifty seconds of it
        way.close(program);
        EXPECT_EQ(ExitCodeOf(program.process), 0U);
        EXPECT_EQ(Setting(L"Credits"), 2095U);
        EXPECT_EQ(Setting(L"CoinsOut"), 2000U);
        EXPECT_EQ(Setting(L"CoinsIn"), 5U);
        EXPECT_EQ(Setting(L"Hands"), 1U);
    }
}

TEST_F(Ends, NotWhenTheSessionGoesOn) {
    const RunningProgram program = StartProgram();
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(program.window, WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL, Patience, &answer);
    EXPECT_TRUE(answer) << "the program must not hold up a log-off";
    SendMessageTimeoutW(program.window, WM_ENDSESSION, FALSE, 0, SMTO_NORMAL, Patience, &answer);
    Settle(program);
    EXPECT_EQ(WaitForSingleObject(program.process, 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(Ends, WithTheSessionWhileADialogIsOpen) {
    SetSetting(L"Credits", 2);
    const RunningProgram program = StartUntrained(1);
    Post(program, IDC_DEAL_DRAW);
    WaitForDialog(program, L"Need Money");
    EndSession(program);
    EXPECT_EQ(ExitCodeOf(program.process), 0U);
    EXPECT_EQ(Setting(L"Credits"), 2U);
    EXPECT_EQ(Setting(L"Lastbet"), 5U);
}

TEST_F(Ends, WithTheSessionWhileAMenuIsOpen) {
    const RunningProgram program = StartUntrained(1);
    OpenMenu(program, IDC_MENU);
    EndSession(program);
    EXPECT_EQ(ExitCodeOf(program.process), 0U);
    EXPECT_EQ(Setting(L"Lastbet"), 5U);
}

// Moving has a message loop of the system's own.
TEST_F(Ends, WhileTheWindowIsHeldByItsTitle) {
    const RunningProgram program = StartUntrained(1);
    GrabTitle(program);
    Post(program, IDM_EXIT);
    EXPECT_EQ(ExitCodeOf(program.process), 0U);
    EXPECT_EQ(Setting(L"Lastbet"), 5U);
    LetGo();
}

TEST_F(Ends, InTheMiddleOfAHandWithTheBetSpent) {
    const RunningProgram program = StartUntrained(1);
    Do(program, IDC_DEAL_DRAW);
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Credits"), 95U);
    EXPECT_EQ(Setting(L"Hands"), 0U);
    EXPECT_EQ(Setting(L"CoinsIn"), 0U);
}

TEST_F(SecondStart, BringsTheFirstToTheFront) {
    const RunningProgram program = StartProgram();
    CoverWithAnotherWindow();
    StartAgain();
    EXPECT_TRUE(InFront(program.window));
    Settle(program);
}

TEST_F(SecondStart, RestoresAMinimisedWindow) {
    const RunningProgram program = StartProgram();
    PostMessageW(program.window, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    ASSERT_TRUE(Eventually([&] { return IsIconic(program.window) != FALSE; }));
    CoverWithAnotherWindow();
    StartAgain();
    EXPECT_TRUE(Eventually([&] { return IsIconic(program.window) == FALSE; }));
    EXPECT_TRUE(InFront(program.window));
}

TEST_F(SecondStart, BringsAnOpenDialogToTheFront) {
    SetSetting(L"Credits", 2);
    const RunningProgram program = StartProgram();
    Post(program, IDC_DEAL_DRAW);
    const HWND dialog = WaitForDialog(program, L"Need Money");
    CoverWithAnotherWindow();
    StartAgain();
    EXPECT_TRUE(InFront(dialog));
    LeaveDialog(dialog, IDCANCEL);
    CloseProgram(program);
}

TEST_F(SecondStart, LeavesTheFirstAlone) {
    const RunningProgram program = StartUntrained(1);
    Do(program, IDC_DEAL_DRAW);
    Hold(program, 3);
    StartAgain();
    EXPECT_FALSE(SettingsExist()) << "the second copy wrote settings";
    EXPECT_TRUE(Holding(program));
    EXPECT_TRUE(ShowsHeld(program, 0, true));
    EXPECT_TRUE(ShowsHeld(program, 1, true));
    EXPECT_TRUE(ShowsCredits(program, 95));
}
