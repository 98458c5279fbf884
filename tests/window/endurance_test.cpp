#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/window/gdi_objects.h"
#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/play.h"
#include "tests/window/system_view.h"
#include "ui/resource.h"

// What long play and long waiting cost.

namespace {

class Endurance : public WindowTest {};

// Without those of a drawing that is just going on.
int LastingGdiObjectsOf(HANDLE process) {
    int least = GdiObjectsOf(process);
    for (int look = 0; look < 20; ++look) {
        Sleep(10);
        least = std::min(least, GdiObjectsOf(process));
    }
    return least;
}

// Whether the process comes through the work with as many objects as it had. The system sometimes
// adds a device context to those it keeps ready, and then the work is done again: what is left
// behind by the work itself shows every time.
template <typename Work>
bool LeavesNoGdiObjects(HANDLE process, Work work) {
    for (int attempt = 0; attempt < 3; ++attempt) {
        const int before = LastingGdiObjectsOf(process);
        work();
        if (LastingGdiObjectsOf(process) == before) {
            return true;
        }
    }
    return false;
}

// Without such a system the platform itself tells.
double ProcessorSeconds(const RunningProgram& program, const SystemView& view) {
    if (view.Found()) {
        return view.ProcessorSeconds();
    }
    FILETIME begun;
    FILETIME ended;
    FILETIME kernel;
    FILETIME user;
    GetProcessTimes(program.process, &begun, &ended, &kernel, &user);
    const auto ticks = [](const FILETIME& time) {
        return static_cast<double>((static_cast<std::uint64_t>(time.dwHighDateTime) << 32) |
                                   time.dwLowDateTime);
    };
    return (ticks(kernel) + ticks(user)) * 1e-7;
}

void PlayHands(const RunningProgram& program, int hands) {
    for (int hand = 0; hand < hands; ++hand) {
        SendMessageW(program.window, WM_COMMAND, IDC_DEAL_DRAW, 0);
        SendMessageW(program.window, WM_COMMAND, IDC_DEAL_DRAW, 0);
    }
}

// TESSARIN_HANDS asks for a longer run.
int HandsToPlay() {
    const char* asked = std::getenv("TESSARIN_HANDS");
    return asked != nullptr ? std::atoi(asked) : 250;
}

} // namespace

TEST_F(Endurance, TheProbeCountsGdiObjects) {
    const int before = GdiObjectsOf(GetCurrentProcess());
    std::vector<HBRUSH> brushes;
    for (COLORREF i = 0; i < 50; ++i) {
        brushes.push_back(CreateSolidBrush(i));
    }
    EXPECT_EQ(GdiObjectsOf(GetCurrentProcess()), before + 50);
    for (const HBRUSH brush : brushes) {
        DeleteObject(brush);
    }
    EXPECT_EQ(GdiObjectsOf(GetCurrentProcess()), before);
}

TEST_F(Endurance, TheProbeTellsALeak) {
    std::vector<HBRUSH> brushes;
    EXPECT_FALSE(LeavesNoGdiObjects(GetCurrentProcess(),
                                    [&] { brushes.push_back(CreateSolidBrush(Navy)); }));
    for (const HBRUSH brush : brushes) {
        DeleteObject(brush);
    }
}

TEST_F(Endurance, HandsLeaveNoGdiObjectsBehind) {
    SetSetting(L"Sound", 0);
    SetSetting(L"Credits", 1000000);
    const RunningProgram program = StartUntrained(1);
    PlayHands(program, 20);
    const int hands = HandsToPlay();
    EXPECT_TRUE(LeavesNoGdiObjects(program.process, [&] {
        const ULONGLONG start = GetTickCount64();
        PlayHands(program, hands);
        Do(program, IDC_BET_ONE); // ends the last count-up
        Settle(program);
        std::printf("%d hands in %.1f s, %d GDI objects\n", hands,
                    static_cast<double>(GetTickCount64() - start) / 1000,
                    LastingGdiObjectsOf(program.process));
    }));
    CloseProgram(program);
    EXPECT_GE(Setting(L"Hands"), static_cast<std::uint32_t>(hands + 20));
}

TEST_F(Endurance, EveryGameBetAndMenuLeavesNoGdiObjectsBehind) {
    SetSetting(L"Sound", 0);
    const RunningProgram program = StartUntrained(1);
    const auto round = [&] {
        for (int game = 0; game < GameCount; ++game) {
            Do(program, IDM_FIRST_GAME + game);
            Do(program, IDC_BET_ONE);
            Do(program, IDM_RESET_CREDITS);
            PlayHands(program, 2);
            Do(program, IDC_BET_ONE);
            OpenMenu(program, IDC_GAMES);
            CloseMenu(program);
        }
        Settle(program);
    };
    round();
    round();
    EXPECT_TRUE(LeavesNoGdiObjects(program.process, round));
}

TEST_F(Endurance, WaitingCostsNoProcessorTime) {
    // The program reads no arguments; this one tells it from those that tests beside this one run.
    const std::wstring name = L"tessarin-ce.exe";
    const std::wstring mark =
        std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(GetTickCount64());
    const RunningProgram program = StartAndWait(L"\"" + ProgramFolder() + name + L"\" " + mark);
    const SystemView view({name, mark});
    ASSERT_EQ(view.Found(), SystemView::Exists());
    Settle(program);
    double before = ProcessorSeconds(program, view);
    ASSERT_TRUE(Eventually([&] { // on a busy machine the start goes on for a while
        const double then = before;
        Sleep(300);
        before = ProcessorSeconds(program, view);
        return before == then;
    })) << "the start does not end";
    Sleep(2500);
    const double waited = ProcessorSeconds(program, view) - before;
    EXPECT_LT(waited, 0.011) << "more than one tick of the clock";
    for (int bets = 0; bets < 400; ++bets) {
        Do(program, IDC_BET_ONE);
    }
    const double bet = ProcessorSeconds(program, view) - before - waited;
    EXPECT_GT(bet, 0) << "work is not seen either";
    std::printf("%.2f s of processor time for 2.5 s of waiting, %.2f for 400 bets\n", waited, bet);
}
