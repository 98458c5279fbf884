#include "ui/session_stats_dialog.h"

#include <windows.h>

#include "training/session_stats.h"
#include "ui/dialog_fields.h"
#include "ui/program.h"
#include "ui/resource.h"
#include "ui/shell.h"

namespace {

std::array<DialogText, StatsFieldCount> fields;

void Fill(HWND dialog) {
    fields = DescribeSessionStats(program.stats);
    SetFieldTexts(dialog, fields);
}

void AskForReset(HWND dialog) {
    if (MessageBoxW(dialog, L"Are You Sure You Want To Reset The Stats?", L"Confirm",
                    MB_YESNO | MB_ICONQUESTION) != IDYES) {
        return;
    }
    ResetSessionStats(program.stats);
    Fill(dialog);
    InvalidateRect(dialog, nullptr, TRUE);
}

INT_PTR CALLBACK SessionStatsProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        Fill(dialog);
        ShellCentreOver(dialog, program.window);
        return TRUE;
    case WM_CTLCOLORSTATIC:
        return ColourField(fields, reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
    case WM_COMMAND:
        switch (CommandOf(dialog, wParam)) {
        case IDOK:
            EndDialog(dialog, 1);
            return TRUE;
        case IDCANCEL:
            EndDialog(dialog, 0);
            return TRUE;
        case IDC_RESET_STATS:
            AskForReset(dialog);
            return TRUE;
        default:
            return FALSE;
        }
    default:
        return FALSE;
    }
}

} // namespace

void ShowSessionStats() {
    DialogBoxParamW(program.instance, MAKEINTRESOURCEW(IDD_SESSION_STATS), program.window,
                    SessionStatsProc, 0);
}
