#include "ui/hand_details_dialog.h"

#include <commctrl.h>

#include "core/game_lock.h"
#include "training/hand_details.h"
#include "ui/dialog_fields.h"
#include "ui/program.h"
#include "ui/report_list.h"
#include "ui/resource.h"
#include "ui/shell.h"

namespace {

const Hand* designatedHand = nullptr;

// Of the open dialog.
Hand shownHand;
const GameDescriptor* shownGame = nullptr;

constexpr UINT FillMessage = WM_USER + 10;

HWND ListOf(HWND dialog) {
    return GetDlgItem(dialog, IDC_DETAILS_LIST);
}

void PlaceControls(HWND dialog) {
    RECT client;
    GetClientRect(dialog, &client);
    const int width = static_cast<int>(client.right);
    const int height = static_cast<int>(client.bottom);
    const int below = DialogPixels(dialog, 26);
    const int inset = below - DialogPixels(dialog, 24);
    MoveWindow(ListOf(dialog), 0, 0, width, height - below, TRUE);
    MoveWindow(GetDlgItem(dialog, IDOK), 1, height - below + inset, width - 2,
               DialogPixels(dialog, 22), TRUE);
}

void Open(HWND dialog, const GameDescriptor* game) {
    const HWND list = AddReportList(dialog, IDC_DETAILS_LIST);
    ShellCoverMainWindow(dialog, program.window, 0, 0);
    PlaceControls(dialog);
    shownHand = *designatedHand;
    shownGame = game;
    AddColumns(list, DetailColumns(*game), LVCFMT_CENTER);
    PostMessageW(dialog, FillMessage, 0, 0);
}

int CALLBACK CompareRows(LPARAM a, LPARAM b, LPARAM rowsData) {
    const auto& rows = *reinterpret_cast<const std::vector<DetailRow>*>(rowsData);
    return CompareDetails(rows[static_cast<std::size_t>(a)], rows[static_cast<std::size_t>(b)]);
}

std::vector<DetailRow> ReadRows() {
    const GameLockHold lock;
    return DetailRows(shownHand.cards.data(), *shownGame, resultTable);
}

// The list shows as much as the screen allows.
void Enlarge(HWND dialog) {
    FitColumns(ListOf(dialog), static_cast<int>(DetailColumns(*shownGame).size()));
    EnlargeForList(dialog, ListOf(dialog));
    PlaceControls(dialog);
}

void Fill(HWND dialog) {
    const HWND list = ListOf(dialog);
    const std::vector<DetailRow> rows = ReadRows();
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    for (const DetailRow& row : rows) {
        AddRow(list, row.index, row.cells);
    }
    SendMessageW(list, LVM_SORTITEMS, reinterpret_cast<WPARAM>(&rows),
                 reinterpret_cast<LPARAM>(CompareRows));
    Enlarge(dialog);
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
}

void LayOut(HWND dialog) {
    ShellCoverMainWindow(dialog, program.window, 0, 0);
    PlaceControls(dialog);
    SendMessageW(ListOf(dialog), WM_SETFONT, reinterpret_cast<WPARAM>(DialogFont(dialog)), TRUE);
    Enlarge(dialog);
}

INT_PTR CALLBACK HandDetailsDialog(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    ShellWatchDensity(dialog, message);
    switch (message) {
    case WM_INITDIALOG:
        Open(dialog, reinterpret_cast<const GameDescriptor*>(lParam));
        return TRUE;
    case FillMessage:
        Fill(dialog);
        return TRUE;
    case LayOutMessage:
        LayOut(dialog);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
            EndDialog(dialog, 1);
            return TRUE;
        }
        return FALSE;
    default:
        return FALSE;
    }
}

} // namespace

void ShowHandDetails(HWND owner, const Hand& hand, const GameDescriptor& game) {
    designatedHand = &hand;
    DialogBoxParamW(program.instance, MAKEINTRESOURCEW(IDD_WHOLE_SCREEN), owner, HandDetailsDialog,
                    reinterpret_cast<LPARAM>(&game));
}

void SearchAndShowHandDetails(HWND owner, const Hand& hand, const GameDescriptor& game) {
    EnterGameLock();
    FindBestHold(hand.cards.data(), game, program.table.bet);
    LeaveGameLock();
    ShowHandDetails(owner, hand, game);
}
