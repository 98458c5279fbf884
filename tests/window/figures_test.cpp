#include <algorithm>
#include <cstdio>
#include <vector>

#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// Measures, printed on demand: run with --gtest_also_run_disabled_tests --gtest_filter=Figures.*

namespace {

class Figures : public WindowTest {};

double Milliseconds() {
    LARGE_INTEGER frequency;
    LARGE_INTEGER count;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// From the start of the process until its window shows its navy, which both programs do at the
// same place of the screen.
double FirstPaint(const std::wstring& program, const wchar_t* windowClass) {
    const double begun = Milliseconds();
    const PROCESS_INFORMATION process = StartProcess(ProgramFolder() + program);
    HWND window = nullptr;
    EXPECT_TRUE(Eventually([&] {
        window = FindWindowW(windowClass, nullptr);
        if (window == nullptr) {
            return false;
        }
        RECT client;
        GetClientRect(window, &client);
        const HDC dc = GetDC(window);
        const COLORREF pixel = GetPixel(dc, client.right - 20, client.bottom - 3);
        ReleaseDC(window, dc);
        return pixel == RGB(0, 0, 128);
    }));
    const double painted = Milliseconds() - begun;
    PostMessageW(window, WM_CLOSE, 0, 0);
    ExitCodeOf(process.hProcess);
    return painted;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

TEST_F(Figures, DISABLED_FirstPaintAgainstAnEmptyWindow) {
    std::vector<double> program;
    std::vector<double> empty;
    for (int run = 0; run < 10; ++run) {
        DeleteSettings();
        empty.push_back(FirstPaint(L"empty-window.exe", L"TessarinEmptyWindow"));
        program.push_back(FirstPaint(L"tessarin-ce.exe", L"vrTessarinCE"));
    }
    std::printf("first paint: %.0f ms, empty window %.0f ms, ratio %.2f (medians of 10)\n",
                Median(program), Median(empty), Median(program) / Median(empty));
}

TEST_F(Figures, DISABLED_HandsAtFastSpeedAgainstTheirPauses) {
    SetSetting(L"Sound", 0);
    SetSetting(L"Speed", 50);
    const RunningProgram program = StartSeeded(1);
    Do(program, IDM_NO_TRAINING);
    constexpr int hands = 15;
    const double begun = Milliseconds();
    for (int hand = 0; hand < hands; ++hand) {
        Do(program, IDC_DEAL_DRAW);
        Do(program, IDC_DEAL_DRAW);
    }
    const double each = (Milliseconds() - begun) / hands;
    constexpr double pauses = 50 * 6 + 50 * 5; // the backs and five cards, five replaced
    std::printf("a hand takes %.0f ms, its pauses %.0f ms: %.2f hands a second of %.2f possible\n",
                each, pauses, 1000 / each, 1000 / pauses);
}
