#include "ui/game_analysis_dialog.h"

#include <windows.h>

#include <commctrl.h>

#include <cwchar>
#include <iterator>

#include "core/game_lock.h"
#include "training/game_analysis.h"
#include "ui/dialog_fields.h"
#include "ui/program.h"
#include "ui/report_list.h"
#include "ui/resource.h"
#include "ui/shell.h"

namespace {

constexpr UINT WM_ANALYSIS_REFRESH = WM_USER + 10;
constexpr DWORD LongestWait = 10000; // milliseconds

const DialogText totalField[] = {
    {IDC_ANALYSIS_TOTAL, {}, ColourCyan, TextGround::Black},
};

GameAnalysis analysis;
HANDLE analysisThread = nullptr;
HWND analysisDialog = nullptr; // the thread posts to it and sets its texts

void (*progressPause)(const wchar_t* progress) = nullptr;

void ShowProgress(void*, const wchar_t* text) {
    SetDlgItemTextW(analysisDialog, IDC_RUN_ANALYSIS, text);
    if (progressPause != nullptr) {
        progressPause(text);
    }
}

DWORD WINAPI GameAnalysisThread(void* game) {
    RunGameAnalysis(analysis, static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(game)));
    PostMessageW(analysisDialog, WM_ANALYSIS_REFRESH, 0, 0);
    SetDlgItemTextW(analysisDialog, IDC_RUN_ANALYSIS, L"Run Analysis");
    return 0;
}

// Waits for the thread while the messages it sends, such as a text to set, are let through. Whether
// it has ended.
bool WaitForThread() {
    const DWORD start = GetTickCount();
    for (;;) {
        const DWORD waited = GetTickCount() - start;
        const DWORD rest = waited < LongestWait ? LongestWait - waited : 0;
        const DWORD event =
            MsgWaitForMultipleObjectsEx(1, &analysisThread, rest, QS_SENDMESSAGE, 0);
        if (event != WAIT_OBJECT_0 + 1) {
            return event == WAIT_OBJECT_0;
        }
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    }
}

// Whether no thread is left. One that outlasts the wait is remembered: no second one may start
// beside it.
bool JoinThread() {
    if (analysisThread != nullptr && WaitForThread()) {
        CloseHandle(analysisThread);
        analysisThread = nullptr;
    }
    return analysisThread == nullptr;
}

// If no thread can be had the run counts as one until the player stops it. Returns 0, and starts
// nothing, while an earlier thread still lives.
int StartGameAnalysis() {
    if (!JoinThread()) {
        return 0;
    }
    const GameDescriptor& game = program.table.game;
    PrepareGameAnalysis(analysis, game, program.table.bet);
    analysis.host = {EnterGameLock, LeaveGameLock, ShowProgress, nullptr};
    DWORD id = 0;
    analysisThread =
        CreateThread(nullptr, 0, GameAnalysisThread,
                     reinterpret_cast<void*>(static_cast<std::intptr_t>(game.id)), 0, &id);
    return 1;
}

HWND ResultList(HWND dialog) {
    return GetDlgItem(dialog, IDC_ANALYSIS_LIST);
}

bool OffersToCancel(HWND dialog) {
    wchar_t text[sizeof "Cancel"] = L"";
    GetDlgItemTextW(dialog, IDOK, text, static_cast<int>(std::size(text)));
    return std::wcscmp(text, L"Cancel") == 0;
}

// The list gets all the room; what is below it goes along downward, the buttons to the right too.
void MoveControls(HWND dialog, const SIZE& more) {
    RECT list;
    GetWindowRect(ResultList(dialog), &list);
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        RECT place;
        GetWindowRect(control, &place);
        const bool isList = control == ResultList(dialog);
        const bool right = !isList && place.left > (list.left + list.right) / 2;
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        const SIZE size = {place.right - place.left + (isList ? more.cx : 0),
                           place.bottom - place.top + (isList ? more.cy : 0)};
        MoveWindow(control, static_cast<int>(place.left + (right ? more.cx : 0)),
                   static_cast<int>(place.top + (isList ? 0 : more.cy)), static_cast<int>(size.cx),
                   static_cast<int>(size.cy), TRUE);
    }
}

// All columns and rows are to be seen, where the screen has the room.
void FitList(HWND dialog) {
    WidenColumns(ResultList(dialog), static_cast<int>(AnalysisColumns().size()));
    MoveControls(dialog, EnlargeForList(dialog, ResultList(dialog)));
}

void Refresh(HWND dialog) {
    if (!GameAnalysisRuns()) {
        SetDlgItemTextW(dialog, IDC_RUN_ANALYSIS, L"Run Analysis");
        // After a run that ended by itself there is nothing left to cancel.
        if (OffersToCancel(dialog)) {
            SetDlgItemTextW(dialog, IDOK, L"Close");
        }
    }
    const HWND list = ResultList(dialog);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    const AnalysisTexts texts = ReadAnalysis(program.table.game, program.table.bet);
    LPARAM index = 0;
    for (const AnalysisRowText& row : texts.rows) {
        const std::wstring cells[] = {row.name,        row.payout,      row.frequency,
                                      row.probability, row.occursEvery, row.returnShare};
        AddRow(list, index++, cells);
    }
    FitList(dialog);
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
    EnableWindow(GetDlgItem(dialog, IDC_RUN_ANALYSIS), TRUE);
    SetDlgItemTextW(dialog, IDC_ANALYSIS_TOTAL, texts.gameReturn.c_str());
}

void Open(HWND dialog) {
    analysisDialog = dialog;
    if (GameAnalysisRuns()) {
        SetDlgItemTextW(dialog, IDC_RUN_ANALYSIS, L"Cancel Run");
    }
    AddColumns(ResultList(dialog), AnalysisColumns(), LVCFMT_RIGHT);
    ShellCentreOver(dialog, program.window);
    PostMessageW(dialog, WM_ANALYSIS_REFRESH, 0, 0);
}

bool Confirm(HWND dialog, const wchar_t* question, const wchar_t* caption) {
    return MessageBoxW(dialog, question, caption, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

void AskAndRun(HWND dialog) {
    if (!GameAnalysisRuns() &&
        Confirm(dialog,
                L"This could take 10 to 30 minutes (depending on the speed of your "
                L"machine).  Are you sure you want to continue?",
                L"Confirm")) {
        if (StartGameAnalysis() != 0) {
            SetDlgItemTextW(dialog, IDOK, L"Cancel");
        }
    }
}

// A run that ends by itself while the question stands has nothing left to stop.
void AskAndStop(HWND dialog) {
    if (!Confirm(dialog, L"Are You Sure You Want To Cancel?", L"Cancel?")) {
        return;
    }
    EndGameAnalysis();
    SetDlgItemTextW(dialog, IDC_RUN_ANALYSIS, L"Run Analysis");
    SetDlgItemTextW(dialog, IDOK, L"Close");
}

INT_PTR CALLBACK GameAnalysisDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    ShellWatchDensity(dialog, message);
    switch (message) {
    case WM_INITDIALOG:
        Open(dialog);
        return TRUE;
    case WM_ANALYSIS_REFRESH:
        Refresh(dialog);
        return TRUE;
    case LayOutMessage:
        FitList(dialog);
        return TRUE;
    case WM_CTLCOLORSTATIC:
        return ColourField(totalField, reinterpret_cast<HDC>(wParam),
                           reinterpret_cast<HWND>(lParam));
    case WM_COMMAND:
        switch (CommandOf(dialog, wParam)) {
        case IDC_RUN_ANALYSIS:
            AskAndRun(dialog);
            return TRUE;
        case IDOK:
        case IDCANCEL:
            if (GameAnalysisRuns()) {
                AskAndStop(dialog);
            } else {
                EndDialog(dialog, 1);
            }
            return TRUE;
        default:
            return FALSE;
        }
    default:
        return FALSE;
    }
}

} // namespace

bool GameAnalysisRuns() {
    return !analysis.stop;
}

void ShowGameAnalysis() {
    DialogBoxParamW(program.instance, MAKEINTRESOURCEW(IDD_GAME_ANALYSIS), program.window,
                    GameAnalysisDialogProc, 0);
}

void StopGameAnalysis() {
    analysis.stop = true;
}

bool EndGameAnalysis() {
    StopGameAnalysis();
    return JoinThread();
}

void SetProgressPause(void (*pause)(const wchar_t* progress)) {
    progressPause = pause;
}
