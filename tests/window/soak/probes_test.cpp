#include <algorithm>
#include <thread>
#include <vector>

#include "tests/window/soak/ledger.h"
#include "tests/window/soak/objects.h"
#include "tests/window/soak/pulse.h"

// What watches the player's program notices what it is there for.

namespace {

class Probes : public WindowTest {};

RunningProgram ThisProgram() {
    RunningProgram program{};
    program.process = GetCurrentProcess();
    program.processId = GetCurrentProcessId();
    return program;
}

const SystemView& NoView() {
    static const SystemView view({L"a-program-that-does-not-run.exe"});
    return view;
}

constexpr UINT WM_BLOCK = WM_APP;

LRESULT CALLBACK BlockProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_BLOCK) {
        Sleep(static_cast<DWORD>(wParam));
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

TEST_F(Probes, TheLedgerTellsACoinThatWentAstray) {
    Ledger ledger;
    OpenLedger(ledger, 1);
    SeeCredits(ledger, ledger.credits);
    EXPECT_TRUE(ledger.faults.empty());
    EXPECT_TRUE(Balances(ledger));
    SeeCredits(ledger, ledger.credits + 1);
    EXPECT_EQ(ledger.faults.size(), 1U);
    ledger.credits -= 1;
    EXPECT_FALSE(Balances(ledger));
}

TEST_F(Probes, TheLedgerTellsAStoreThatDiffers) {
    Ledger ledger;
    OpenLedger(ledger, 1);
    SetSetting(L"Credits", static_cast<std::uint32_t>(ledger.credits));
    SetSetting(L"Hands", 1);
    SeeStore(ledger);
    const auto tells = [&](const char* text) {
        return std::any_of(ledger.faults.begin(), ledger.faults.end(),
                           [&](const std::string& fault) { return fault.rfind(text, 0) == 0; });
    };
    EXPECT_TRUE(tells("stored Hands is 1, not 0"));
    EXPECT_TRUE(tells("stored CoinsIn")) << "there is none";
}

TEST_F(Probes, ObjectsAreCounted) {
    const Objects before = CountObjects(ThisProgram(), NoView());
    std::vector<HBRUSH> brushes;
    for (int i = 0; i < 50; ++i) {
        brushes.push_back(CreateSolidBrush(static_cast<COLORREF>(i)));
    }
    const HWND window = CreateWindowExW(0, L"static", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                        nullptr, nullptr);
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::thread waiting([&] { WaitForSingleObject(event, INFINITE); });
    const Objects after = CountObjects(ThisProgram(), NoView());
    SetEvent(event);
    waiting.join();
    CloseHandle(event);
    DestroyWindow(window);
    for (const HBRUSH brush : brushes) {
        DeleteObject(brush);
    }
    EXPECT_GE(after.gdi, before.gdi + 50);
    EXPECT_GE(after.user, before.user + 1);
    EXPECT_GE(after.threads, before.threads + 1);
    EXPECT_GE(after.handles, before.handles + 2);
}

TEST_F(Probes, ThePulseFeelsASilence) {
    WNDCLASSW blocking = {};
    blocking.lpfnWndProc = BlockProcedure;
    blocking.lpszClassName = L"TessarinBlocking";
    RegisterClassW(&blocking);
    const HWND window = CreateWindowExW(0, blocking.lpszClassName, L"", WS_POPUP, 0, 0, 1, 1,
                                        nullptr, nullptr, nullptr, nullptr);
    Pulse pulse(window, NoView());
    PostMessageW(window, WM_BLOCK, 2600, 0);
    MSG message;
    const ULONGLONG end = GetTickCount64() + 3000;
    while (GetTickCount64() < end) {
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
        Sleep(1);
    }
    DestroyWindow(window);
    pulse.Stop();
    EXPECT_GT(pulse.LongestByClock(), 2000);
    EXPECT_GT(pulse.LongestOfItsOwn(), LongestSilence * 0.9) << "a busy machine excuses a little";
}
