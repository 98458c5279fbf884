#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <cstdio>

#include "core/game_tables.h"
#include "tests/window/dialogs/analysis_run.h"
#include "tests/window/dialogs/played_hand.h"
#include "ui/resource.h"

// Times, which are printed and not judged: run with --gtest_also_run_disabled_tests.

namespace {

class Measure : public PlayedHand {};

constexpr int Times = 11;

double Median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

// Milliseconds from the post to the moment when it is so, without a pause in between.
template <typename Begin, typename Done>
double Timed(Begin begin, Done done) {
    const LONGLONG start = Now();
    begin();
    while (!done()) {
    }
    return MillisecondsBetween(start, Now());
}

// One more than the paytable's: the last is for nothing.
int AnalysisRowsOf(int game) {
    return gameTables[static_cast<std::size_t>(game)].rowCount + 1;
}

struct PeakMemory {
    double workingSet; // in MB
    double committed;
};

PeakMemory PeakMemoryOf(HANDLE process) {
    PROCESS_MEMORY_COUNTERS counters = {};
    EXPECT_TRUE(GetProcessMemoryInfo(process, &counters, sizeof counters));
    constexpr double megabyte = 1 << 20;
    return {static_cast<double>(counters.PeakWorkingSetSize) / megabyte,
            static_cast<double>(counters.PeakPagefileUsage) / megabyte};
}

} // namespace

TEST_F(Measure, DISABLED_Dialogs) {
    SetSetting(L"Credits", 0);
    Open(1);
    std::vector<double> plain;
    for (int i = 0; i < Times; ++i) {
        HWND dialog = nullptr;
        plain.push_back(Timed([&] { Post(program, IDC_DEAL_DRAW); },
                              [&] {
                                  dialog = FindDialog(program, L"Need Money");
                                  return dialog != nullptr;
                              }));
        LeaveDialog(dialog, IDCANCEL);
    }
    std::printf("Need Money, the plainest dialog: %.1f ms\n", Median(plain));
    CloseProgram(program);

    DeleteSettings();
    for (int game = 0; game < GameCount; ++game) {
        SetSetting(L"Lastgame", static_cast<std::uint32_t>(game));
        Open(1);
        Deal();
        Hold(HoldCosting(0.1, 1e9));
        std::vector<double> question;
        std::vector<double> details;
        for (int i = 0; i < Times; ++i) {
            HWND dialog = nullptr;
            const Area& prompt = program.layout.prompt;
            question.push_back(
                Timed([&] { Tap(program, (prompt.left + prompt.right) / 2, prompt.top + 4); },
                      [&] {
                          dialog = FindDialog(program, QuestionTitle);
                          return dialog != nullptr;
                      }));
            LeaveDialog(dialog, IDC_ANSWER_NO);
            HWND list = nullptr;
            details.push_back(Timed([&] { Post(program, IDM_HAND_DETAILS); },
                                    [&] {
                                        dialog = FindDialogWith(program, IDC_DETAILS_LIST);
                                        list = dialog != nullptr
                                                   ? GetDlgItem(dialog, IDC_DETAILS_LIST)
                                                   : nullptr;
                                        return list != nullptr && CountRows(list) == 32;
                                    }));
            LeaveDialog(dialog, IDOK);
        }
        std::printf("game %d: tap to question %.1f ms, command to filled details %.1f ms\n", game,
                    Median(question), Median(details));
        CloseProgram(program);
    }
}

TEST_F(Measure, DISABLED_Analysis) {
    for (int game = 0; game < GameCount; ++game) {
        SetSetting(L"Lastgame", static_cast<std::uint32_t>(game));
        program = StartProgram();
        const HWND dialog = OpenAnalysis(program, AnalysisRowsOf(game));
        const PeakMemory before = PeakMemoryOf(program.process);
        PressButton(dialog, IDC_RUN_ANALYSIS);
        const HWND confirm = WaitForDialog(program, L"Confirm");
        const double seconds = Timed([&] { PostMessageW(confirm, WM_COMMAND, IDYES, 0); },
                                     [&] {
                                         Sleep(1);
                                         return !FieldText(dialog, IDC_ANALYSIS_TOTAL).empty();
                                     }) /
                               1000;
        const PeakMemory after = PeakMemoryOf(program.process);
        std::printf("game %d: %.2f s, %ls; peak memory %.1f MB, %.1f MB before the run "
                    "(committed %.1f MB, %.1f MB)\n",
                    game, seconds, FieldText(dialog, IDC_ANALYSIS_TOTAL).c_str(), after.workingSet,
                    before.workingSet, after.committed, before.committed);
        LeaveDialog(dialog, IDOK);
        CloseProgram(program);
    }
    DeleteSettings();
    program = StartProgram();
    Do(program, IDM_FIRST_GAME + GameCount - 1);
    const HWND dialog = OpenAnalysis(program, AnalysisRowsOf(GameCount - 1));
    std::vector<double> answers;
    for (int i = 0; i < Times; ++i) {
        PressButton(dialog, IDC_RUN_ANALYSIS);
        const HWND confirm = WaitForDialog(program, L"Confirm");
        answers.push_back(
            Timed([&] { PostMessageW(confirm, WM_COMMAND, IDNO, 0); },
                  [&] { return !IsWindow(confirm) && IsWindowEnabled(dialog) && Idle(dialog); }));
    }
    std::printf("a question answered with nothing to do: %.1f ms\n", Median(answers));
    std::vector<double> stops;
    for (int i = 0; i < Times; ++i) {
        StartRun(program, dialog);
        const HWND question = AskToStop(program, dialog);
        stops.push_back(Timed([&] { PostMessageW(question, WM_COMMAND, IDYES, 0); },
                              [&] {
                                  Sleep(1);
                                  return Idle(dialog);
                              }));
    }
    std::sort(stops.begin(), stops.end());
    std::printf("stop to idle: median %.1f ms, longest %.1f ms\n", Median(stops), stops.back());
}
