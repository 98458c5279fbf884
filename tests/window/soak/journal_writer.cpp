#include <cwchar>
#include <iterator>
#include <string>

#include "core/games.h"
#include "tests/window/soak/journal.h"
#include "ui/check_play.h"
#include "ui/game_analysis_dialog.h"
#include "ui/program.h"
#include "ui/resource.h"

namespace {

constexpr wchar_t OldProcedure[] = L"TessarinJournalProcedure";
constexpr wchar_t KindProperty[] = L"TessarinJournalKind";
constexpr wchar_t DialogClass[] = L"#32770";
constexpr wchar_t MainClass[] = L"vrTessarinCE";

Journal* journal = nullptr;
UINT markMessage = 0;
UINT tapMessage = 0;
UINT countMessage = 0;
UINT heapMessage = 0;

void Write(const JournalEntry& entry) {
    const LONG number = journal->written;
    journal->entries[number % JournalSize] = entry;
    InterlockedExchange(&journal->written, number + 1);
}

void WriteNumber(Told told, LONG number) {
    JournalEntry entry{};
    entry.told = told;
    entry.number = number;
    Write(entry);
}

bool IsClass(HWND window, const wchar_t* name) {
    wchar_t own[32] = L"";
    GetClassNameW(window, own, 32);
    return std::wcscmp(own, name) == 0;
}

void WriteSize(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    JournalEntry entry{};
    entry.told = Told::Resized;
    entry.width = client.right;
    entry.height = client.bottom;
    Write(entry);
}

// What the main window is given, with what decides whether it is let in.
void WriteInput(Told told, LONG number, HWND window, LPARAM place) {
    JournalEntry entry{};
    entry.told = told;
    entry.number = number;
    entry.x = static_cast<short>(LOWORD(place));
    entry.y = static_cast<short>(HIWORD(place));
    entry.enabled = IsWindowEnabled(window) != FALSE;
    entry.asking = AskingAboutPlay();
    entry.analysisRuns = GameAnalysisRuns();
    Write(entry);
}

bool Has(HWND dialog, int id) {
    return dialog != nullptr && GetDlgItem(dialog, id) != nullptr;
}

DialogKind KindOf(HWND dialog) {
    if (Has(dialog, IDC_PURCHASE)) {
        return DialogKind::NeedMoney;
    }
    if (Has(dialog, IDC_GRADING_DETAILS)) {
        return DialogKind::Question;
    }
    if (Has(dialog, IDC_RESET_STATS)) {
        return DialogKind::Stats;
    }
    const HWND owner = GetWindow(dialog, GW_OWNER);
    return Has(owner, IDC_RESET_STATS) ? DialogKind::ConfirmReset : DialogKind::Other;
}

LONG CountTexts(HWND dialog) {
    LONG count = 0;
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        count += IsClass(control, L"Static") ? 1 : 0;
    }
    return count;
}

void WriteDialog(Told told, HWND dialog, LONG number) {
    JournalEntry entry{};
    entry.told = told;
    entry.number = number;
    entry.enabled = IsWindowEnabled(dialog) != FALSE;
    entry.dialog =
        static_cast<DialogKind>(reinterpret_cast<std::intptr_t>(GetPropW(dialog, KindProperty)));
    if (entry.dialog == DialogKind::NeedMoney) {
        GetDlgItemTextW(dialog, IDC_PURCHASE, entry.text, JournalText);
    }
    Write(entry);
}

// The store is read, not the program's own table.
void WritePayouts() {
    const GameDescriptor& game = program.table.game;
    for (std::int32_t row = 0; row < game.rowCount; ++row) {
        JournalEntry entry{};
        entry.told = Told::Payouts;
        entry.number = row;
        for (const bool five : {false, true}) {
            wchar_t path[PaytablePathSize];
            FormatPaytablePath(path, game.title, five);
            DWORD size = sizeof(LONG);
            LONG& value = five ? entry.y : entry.x;
            const std::wstring name = std::to_wstring(row);
            entry.stored[five] =
                RegGetValueW(HKEY_CURRENT_USER, path, name.c_str(), RRF_RT_REG_DWORD, nullptr,
                             &value, &size) == ERROR_SUCCESS;
        }
        Write(entry);
    }
}

// Handles of menus and icons are numbered like those of windows, and the number finds them.
LRESULT CountMenusAndIcons() {
    LRESULT count = 0;
    for (UINT_PTR number = 0x20; number < 0x10000; number += 2) {
        count += IsMenu(reinterpret_cast<HMENU>(number)) ? 1 : 0;
        ICONINFO icon = {};
        if (GetIconInfo(reinterpret_cast<HICON>(number), &icon)) {
            DeleteObject(icon.hbmColor);
            DeleteObject(icon.hbmMask);
            ++count;
        }
    }
    return count;
}

LRESULT CountHeapBytes() {
    HANDLE heaps[16];
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(std::size(heaps)), heaps);
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count && i < std::size(heaps); ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heaps[i], &entry)) {
            bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
        }
        HeapUnlock(heaps[i]);
    }
    return static_cast<LRESULT>(bytes);
}

LRESULT PassOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto procedure = reinterpret_cast<WNDPROC>(GetPropW(window, OldProcedure));
    if (message == WM_NCDESTROY) {
        RemovePropW(window, OldProcedure);
        RemovePropW(window, KindProperty);
    }
    return CallWindowProcW(procedure, window, message, wParam, lParam);
}

LRESULT CALLBACK SeeMain(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == markMessage) {
        WriteNumber(Told::Mark, static_cast<LONG>(wParam));
        return 0;
    }
    if (message == countMessage) {
        return CountMenusAndIcons();
    }
    if (message == heapMessage) {
        return CountHeapBytes();
    }
    switch (message) {
    case WM_COMMAND: {
        WriteInput(Told::Command, LOWORD(wParam), window, 0);
        const LRESULT result = PassOn(window, message, wParam, lParam);
        WriteNumber(Told::CommandDone, LOWORD(wParam));
        return result;
    }
    case WM_CHAR:
        WriteInput(Told::Key, static_cast<LONG>(wParam), window, 0);
        break;
    case WM_LBUTTONDOWN:
        WriteInput(Told::Tap, 0, window, lParam);
        break;
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED) {
            WriteSize(window);
        }
        break;
    case WM_DESTROY:
        WriteNumber(Told::MainGone, 0);
        break;
    default:
        break;
    }
    return PassOn(window, message, wParam, lParam);
}

void TapIn(HWND dialog, int id) {
    const HWND control = GetDlgItem(dialog, id);
    if (!IsWindowEnabled(dialog)) {
        return;
    }
    if (id == 0) {
        SendMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    } else if (control != nullptr && IsWindowEnabled(control)) {
        SendMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        SendMessageW(control, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    }
}

LRESULT CALLBACK SeeDialog(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        WriteDialog(Told::DialogClosed, window, 0);
    }
    if (message == tapMessage) {
        TapIn(window, static_cast<int>(wParam));
        return 0;
    }
    if (message != WM_COMMAND) {
        return PassOn(window, message, wParam, lParam);
    }
    const bool accepts = LOWORD(wParam) == IDOK && Has(window, IDC_DEFAULTS);
    WriteDialog(Told::DialogCommand, window, LOWORD(wParam));
    const LRESULT result = PassOn(window, message, wParam, lParam);
    if (accepts) {
        WritePayouts();
    }
    return result;
}

void Adopt(HWND window, WNDPROC procedure) {
    const LONG_PTR old =
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    SetPropW(window, OldProcedure, reinterpret_cast<HANDLE>(old));
}

void WriteText(HWND control, const wchar_t* text) {
    const int id = GetDlgCtrlID(control);
    if (GetParent(control) != program.window || GetPropW(program.window, OldProcedure) == nullptr ||
        (id != IDC_DEAL_DRAW && id != IDC_BET_ONE && id != IDC_STATUS)) {
        return;
    }
    JournalEntry entry{};
    entry.told = id == IDC_DEAL_DRAW ? Told::DealText
                 : id == IDC_BET_ONE ? Told::BetText
                                     : Told::StatusText;
    std::wcsncpy(entry.text, text, JournalText - 1);
    Write(entry);
}

LRESULT CALLBACK SeeSent(int code, WPARAM wParam, LPARAM lParam) {
    const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && sent.message == WM_SHOWWINDOW && IsClass(sent.hwnd, MainClass) &&
        GetPropW(sent.hwnd, OldProcedure) == nullptr) {
        Adopt(sent.hwnd, SeeMain);
        WriteSize(sent.hwnd);
    }
    if (code == HC_ACTION && sent.message == WM_INITDIALOG && IsClass(sent.hwnd, DialogClass)) {
        Adopt(sent.hwnd, SeeDialog);
        SetPropW(sent.hwnd, KindProperty,
                 reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(KindOf(sent.hwnd))));
        WriteDialog(Told::DialogOpened, sent.hwnd, CountTexts(sent.hwnd));
    }
    if (code == HC_ACTION && sent.message == WM_SETTEXT && sent.lParam != 0) {
        WriteText(sent.hwnd, reinterpret_cast<const wchar_t*>(sent.lParam));
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

void KeepJournal() {
    const HANDLE memory = OpenFileMappingW(FILE_MAP_WRITE, FALSE, JournalName);
    if (memory == nullptr) {
        return;
    }
    journal = static_cast<Journal*>(MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, sizeof(Journal)));
    markMessage = RegisterWindowMessageW(MarkMessage);
    tapMessage = RegisterWindowMessageW(TapMessage);
    countMessage = RegisterWindowMessageW(CountMessage);
    heapMessage = RegisterWindowMessageW(HeapMessage);
    SetWindowsHookExW(WH_CALLWNDPROC, SeeSent, nullptr, GetCurrentThreadId());
}
