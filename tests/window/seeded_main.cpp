// The program with its cards foretold: tessarin-seeded SEED [PAUSE]. The seed decides every card of
// the run. With PAUSE every pause of the game lasts that many milliseconds; 0 is no pause at all.
#include <windows.h>

#include <cstdlib>
#include <cwchar>

#include "core/random.h"
#include "tests/window/analysis_gate.h"
#include "tests/window/pauses.h"
#include "tests/window/seen_menu.h"
#include "tests/window/soak/journal.h"
#include "ui/game_analysis_dialog.h"
#include "ui/hand_play.h"
#include "ui/main_window.h"

namespace {

DWORD pauseLength = 0;
SeenPauses* seenPauses = nullptr;
SeenMenu* seenMenu = nullptr;
HWND menuAtRest = nullptr;

constexpr UINT GetMenuOfPopup = 0x01E1; // MN_GETHMENU

AnalysisGate* analysisGate = nullptr;

// Only one thread plays at a time.
void Pause(std::uint32_t milliseconds) {
    if (seenPauses->count < SeenPausesKept) {
        seenPauses->milliseconds[seenPauses->count] = static_cast<LONG>(milliseconds);
    }
    InterlockedIncrement(&seenPauses->count);
    if (pauseLength > 0) {
        Sleep(pauseLength);
    }
}

void* ShareMemory(const wchar_t* name, DWORD size) {
    const HANDLE memory =
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size, name);
    return MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, size);
}

void WaitAtGate(const wchar_t* progress) {
    const LONG percent = std::wcstol(progress, nullptr, 10);
    while (analysisGate->closed != 0 && percent >= analysisGate->percent) {
        analysisGate->waiting = 1;
        Sleep(1);
    }
    analysisGate->waiting = 0;
}

void GateAnalysis() {
    analysisGate = static_cast<AnalysisGate*>(ShareMemory(AnalysisGateName, sizeof(AnalysisGate)));
    SetProgressPause(WaitAtGate);
}

void WriteDownItem(HMENU menu, UINT position, SeenMenuItem& seen) {
    MENUITEMINFOW item = {};
    item.cbSize = sizeof item;
    item.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE | MIIM_STRING;
    item.dwTypeData = seen.text;
    item.cch = SeenMenuText;
    GetMenuItemInfoW(menu, position, TRUE, &item);
    seen.separator = (item.fType & MFT_SEPARATOR) != 0;
    seen.id = seen.separator ? 0 : item.wID;
    seen.checked = (item.fState & MFS_CHECKED) != 0;
    seen.enabled = (item.fState & MFS_DISABLED) == 0;
    GetMenuItemRect(nullptr, menu, position, &seen.place);
}

void WriteDownMenu(HWND popup) {
    const auto menu = reinterpret_cast<HMENU>(SendMessageW(popup, GetMenuOfPopup, 0, 0));
    const int count = GetMenuItemCount(menu);
    seenMenu->count = count < SeenMenuItems ? count : SeenMenuItems;
    for (int i = 0; i < seenMenu->count; ++i) {
        WriteDownItem(menu, static_cast<UINT>(i), seenMenu->items[i]);
    }
    InterlockedIncrement(&seenMenu->shown);
}

// A menu that waits for its user tells its owner so; the first time, it is written down.
LRESULT CALLBACK SeeMessage(int code, WPARAM wParam, LPARAM lParam) {
    const auto* message = reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && message->message == WM_INITMENUPOPUP) {
        menuAtRest = nullptr;
    }
    if (code == HC_ACTION && message->message == WM_ENTERIDLE && message->wParam == MSGF_MENU) {
        const auto popup = reinterpret_cast<HWND>(message->lParam);
        if (popup != menuAtRest) {
            menuAtRest = popup;
            WriteDownMenu(popup);
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void WatchMenus() {
    seenMenu = static_cast<SeenMenu*>(ShareMemory(SeenMenuName, sizeof(SeenMenu)));
    SetWindowsHookExW(WH_CALLWNDPROC, SeeMessage, nullptr, GetCurrentThreadId());
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE previous, LPWSTR arguments, int show) {
    wchar_t* rest = nullptr;
    SeedRandom(static_cast<std::uint32_t>(std::wcstoul(arguments, &rest, 10)));
    if (*rest != L'\0') {
        pauseLength = static_cast<DWORD>(std::wcstoul(rest, nullptr, 10));
        seenPauses = static_cast<SeenPauses*>(ShareMemory(SeenPausesName, sizeof(SeenPauses)));
        SetPause(Pause);
    }
    WatchMenus();
    KeepJournal();
    GateAnalysis();
    return RunProgram(instance, previous, show);
}
