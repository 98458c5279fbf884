#include "ui/paytable_editor.h"

#include <windows.h>

#include "core/wrap.h"
#include "ui/dialog_fields.h"
#include "ui/drawing.h"
#include "ui/program.h"
#include "ui/resource.h"
#include "ui/shell.h"

namespace {

// The one-coin field edited last and not yet carried into its five-coin field; -1 for none. At
// first no field at all.
std::int32_t pendingRow = 0;

HFONT editorFont = nullptr; // of the open dialog

constexpr int HeaderTop = 2;
constexpr int FirstRowTop = 18;
constexpr int RowHeight = 15;
constexpr int TextHeight = 13;
constexpr int LeastWidth = 220;
constexpr int ButtonHeight = 24;
constexpr int ButtonsAboveBottom = 25;
constexpr int CoinsPerMaxBet = 5;

const GameDescriptor& Game() {
    return program.table.game;
}

// A measure of the handheld's: as large as on the table, but no smaller than the screen's density
// asks for.
int Pixels(HWND dialog, int designPixels) {
    const int onTable = Scaled(designPixels);
    const int onScreen = DialogPixels(dialog, designPixels);
    return onTable > onScreen ? onTable : onScreen;
}

// The columns of the dialog: names up to half, then a quarter for each payout.
struct Columns {
    int bottom;
    int third;
    int half;
    int quarter;
};

Columns ColumnsOf(HWND dialog) {
    RECT client;
    GetClientRect(dialog, &client);
    const int width = static_cast<int>(client.right);
    return {static_cast<int>(client.bottom), width / 3, width / 2, width / 2 / 2};
}

int RowTop(HWND dialog, std::int32_t row) {
    return Pixels(dialog, FirstRowTop + RowHeight * row);
}

void SetNumber(HWND dialog, int id, std::int32_t number) {
    SetDlgItemTextW(dialog, id, FormatInteger(L"%i", number).c_str());
}

bool IsAllDigits(const wchar_t* text) {
    const wchar_t* end = text;
    while (*end >= L'0' && *end <= L'9') {
        ++end;
    }
    return end != text && *end == L'\0';
}

// A field reads as an unsigned number, which is then taken as a signed one; what is no number reads
// as 0. A number that does not even fit 32 bits is as little a payout as a negative one.
std::int32_t ReadNumber(HWND dialog, int id) {
    BOOL isNumber = FALSE;
    const UINT number = GetDlgItemInt(dialog, id, &isNumber, FALSE);
    constexpr int longest = 64;
    wchar_t text[longest] = L"";
    GetDlgItemTextW(dialog, id, text, longest);
    return !isNumber && IsAllDigits(text) ? -1 : static_cast<std::int32_t>(number);
}

// Each control goes behind those before it, which makes the order of creation that of the Tab key.
void PutLast(HWND control) {
    SetWindowPos(control, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void AddControl(HWND dialog, const wchar_t* windowClass, const wchar_t* text, DWORD style, int id) {
    const HWND control = CreateWindowExW(
        0, windowClass, text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0, 0, 0, dialog,
        reinterpret_cast<HMENU>(std::intptr_t{id}), program.instance, nullptr);
    PutLast(control);
}

void AddFields(HWND dialog, int firstId, const std::int32_t* payouts) {
    for (std::int32_t row = 0; row < Game().rowCount; ++row) {
        AddControl(dialog, L"edit", FormatInteger(L"%i", payouts[row]).c_str(),
                   WS_BORDER | ES_AUTOHSCROLL, firstId + row);
    }
}

void AddControls(HWND dialog) {
    AddFields(dialog, IDC_FIRST_ONE_COIN, Game().oneCoin);
    AddFields(dialog, IDC_FIRST_FIVE_COINS, Game().fiveCoins);
    AddControl(dialog, L"button", L"Defaults", 0, IDC_DEFAULTS);
    AddControl(dialog, L"button", L"Cancel", 0, IDCANCEL);
    const HWND ok = GetDlgItem(dialog, IDOK);
    SetWindowTextW(ok, L"OK");
    PutLast(ok);
}

// The dialog's own face, growing with the rows.
void MakeEditorFont(HWND dialog) {
    LOGFONTW font = {};
    GetObjectW(DialogFont(dialog), sizeof font, &font);
    font.lfHeight = Pixels(dialog, TextHeight);
    editorFont = CreateFontIndirectW(&font);
    if (editorFont == nullptr) {
        DrawAgainLater();
    }
}

int NeededHeight(HWND dialog) {
    return Pixels(dialog, FirstRowTop + RowHeight * Game().rowCount + ButtonsAboveBottom + 1);
}

void PlaceControl(HWND dialog, int id, const RECT& place) {
    const HWND control = GetDlgItem(dialog, id);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(editorFont), FALSE);
    MoveWindow(control, static_cast<int>(place.left), static_cast<int>(place.top),
               static_cast<int>(place.right - place.left),
               static_cast<int>(place.bottom - place.top), TRUE);
}

void PlaceFields(HWND dialog, int firstId, LONG left, LONG width) {
    for (std::int32_t row = 0; row < Game().rowCount; ++row) {
        const LONG top = RowTop(dialog, row);
        PlaceControl(dialog, firstId + row,
                     {left, top, left + width, top + Pixels(dialog, RowHeight)});
    }
}

void PlaceControls(HWND dialog) {
    const Columns columns = ColumnsOf(dialog);
    const int one = Pixels(dialog, 1);
    const int width = columns.quarter - Pixels(dialog, 4);
    PlaceFields(dialog, IDC_FIRST_ONE_COIN, columns.half + one, width);
    PlaceFields(dialog, IDC_FIRST_FIVE_COINS, columns.half + columns.quarter + one, width);

    const LONG top = columns.bottom - Pixels(dialog, ButtonsAboveBottom);
    const LONG end = top + Pixels(dialog, ButtonHeight);
    const LONG third = columns.third;
    PlaceControl(dialog, IDC_DEFAULTS, {0, top, third, end});
    PlaceControl(dialog, IDCANCEL, {third, top, 2 * third, end});
    PlaceControl(dialog, IDOK, {2 * third, top, 3 * third, end});
}

void LayOut(HWND dialog) {
    const HFONT before = editorFont;
    ShellCoverMainWindow(dialog, program.window, Pixels(dialog, LeastWidth), NeededHeight(dialog));
    MakeEditorFont(dialog);
    PlaceControls(dialog);
    DeleteObject(before);
    InvalidateRect(dialog, nullptr, TRUE);
}

void Open(HWND dialog) {
    SetWindowTextW(dialog, L"Change Paytable");
    ShellFillScreen(dialog);
    ShellShowInputPanelButton(program.window);
    AddControls(dialog);
    LayOut(dialog);
    SetFocus(GetDlgItem(dialog, IDC_FIRST_ONE_COIN));
}

void DrawTexts(HWND dialog, HDC dc) {
    const Columns columns = ColumnsOf(dialog);
    const HGDIOBJ before = SelectObject(dc, editorFont);
    const COLORREF colour = GetSysColor(COLOR_BTNTEXT);
    const int top = Pixels(dialog, HeaderTop);
    const int end = RowTop(dialog, 0);
    const int half = columns.half;
    const int quarter = columns.quarter;
    DrawFittedText(dc, L"HANDS", {0, top, half, end}, colour, DT_CENTER);
    DrawFittedText(dc, L"1 COIN", {half, top, half + quarter, end}, colour, DT_CENTER);
    DrawFittedText(dc, L"5 COINS", {half + quarter, top, half + 2 * quarter, end}, colour,
                   DT_CENTER);
    for (std::int32_t row = 0; row < Game().rowCount; ++row) {
        const Area place = {Pixels(dialog, 2), RowTop(dialog, row), half, RowTop(dialog, row + 1)};
        DrawFittedText(dc, Game().rowNames[row], place, colour, DT_LEFT);
    }
    SelectObject(dc, before);
}

void Paint(HWND dialog) {
    PAINTSTRUCT paint = {};
    const HDC dc = BeginPaint(dialog, &paint);
    if (dc == nullptr) {
        ValidateRect(dialog, nullptr);
        DrawAgainLater();
        return;
    }
    DrawTexts(dialog, dc);
    EndPaint(dialog, &paint);
}

void CarryPendingRow(HWND dialog) {
    if (pendingRow < 0) {
        return;
    }
    const int offset = IDC_FIRST_FIVE_COINS - IDC_FIRST_ONE_COIN;
    const std::int32_t payout = ReadNumber(dialog, pendingRow);
    if (payout >= 0) {
        SetNumber(dialog, pendingRow + offset, WrapMultiply(payout, CoinsPerMaxBet));
    }
    pendingRow = -1;
}

// What is written into the one-coin fields here is nobody's edit, so none is pending after it.
void FillDefaults(HWND dialog) {
    for (std::int32_t row = 0; row < Game().rowCount; ++row) {
        SetNumber(dialog, IDC_FIRST_ONE_COIN + row, Game().defaultOneCoin[row]);
        SetNumber(dialog, IDC_FIRST_FIVE_COINS + row, Game().defaultFiveCoins[row]);
    }
    pendingRow = -1;
}

void TakePayout(HWND dialog, int id, std::int32_t& payout) {
    const std::int32_t number = ReadNumber(dialog, id);
    if (number >= 0) {
        payout = number;
    }
}

// Enter leaves the focus in the field just edited, so its five-coin value is still to be carried.
// Fields that were set without ever having the focus are taken as they stand.
void Accept(HWND dialog) {
    if (GetDlgCtrlID(GetFocus()) == pendingRow) {
        CarryPendingRow(dialog);
    }
    for (std::int32_t row = 0; row < Game().rowCount; ++row) {
        TakePayout(dialog, IDC_FIRST_ONE_COIN + row, Game().oneCoin[row]);
        TakePayout(dialog, IDC_FIRST_FIVE_COINS + row, Game().fiveCoins[row]);
        StorePayout(Game(), row, false);
        StorePayout(Game(), row, true);
    }
    InvalidateRect(program.window, nullptr, TRUE);
    EndDialog(dialog, 1);
}

// The range reaches one past the last field, where there is none to notify.
bool IsOneCoinField(int id) {
    return id >= IDC_FIRST_ONE_COIN && id <= IDC_FIRST_ONE_COIN + Game().rowCount;
}

INT_PTR DoEditorCommand(HWND dialog, int id, int notification) {
    if (IsOneCoinField(id)) {
        if (notification == EN_CHANGE) {
            pendingRow = id;
        } else if (notification == EN_KILLFOCUS) {
            CarryPendingRow(dialog);
        }
        return TRUE;
    }
    switch (id) {
    case IDC_DEFAULTS:
        FillDefaults(dialog);
        return TRUE;
    case IDOK:
        Accept(dialog);
        return TRUE;
    case IDCANCEL:
        EndDialog(dialog, 1);
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK PaytableEditorProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    ShellWatchDensity(dialog, message);
    switch (message) {
    case WM_INITDIALOG:
        Open(dialog);
        return FALSE; // the focus is set
    case WM_PAINT:
        Paint(dialog);
        return TRUE;
    case LayOutMessage:
        LayOut(dialog);
        return TRUE;
    case WM_COMMAND:
        return DoEditorCommand(dialog, LOWORD(wParam), HIWORD(wParam));
    default:
        return FALSE;
    }
}

} // namespace

void EditPaytable() {
    ShellShowInputPanelButton(program.window);
    DialogBoxParamW(program.instance, MAKEINTRESOURCEW(IDD_WHOLE_SCREEN), program.window,
                    PaytableEditorProc, 0);
    DeleteObject(editorFont);
    editorFont = nullptr;
}
