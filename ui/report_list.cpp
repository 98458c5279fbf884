#include "ui/report_list.h"

#include <commctrl.h>

#include "ui/dialog_fields.h"
#include "ui/program.h"
#include "ui/shell.h"

namespace {

int TextWidth(HWND list, const wchar_t* text) {
    return static_cast<int>(
        SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text)));
}

// What a column needs to show its header whole: the control's own fitting does not always leave
// room for the header's margins.
int HeaderWidth(HWND list, int column) {
    constexpr int longest = 64;
    wchar_t header[longest] = L"";
    LVCOLUMNW description = {};
    description.mask = LVCF_TEXT;
    description.pszText = header;
    description.cchTextMax = longest;
    SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&description));
    return TextWidth(list, header) + TextWidth(list, L"00");
}

void SetWidth(HWND list, int column, int width) {
    SendMessageW(list, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), width);
}

int WidthOf(HWND list, int column) {
    return static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
}

// The control leaves so many pixels between two cells on any screen, which is little on a dense
// one.
int MissingMargin(HWND list) {
    constexpr int margin = 6;
    return DialogPixels(GetParent(list), margin) - margin;
}

void WidenToHeader(HWND list, int column) {
    const int least = HeaderWidth(list, column);
    if (WidthOf(list, column) < least) {
        SetWidth(list, column, least);
    }
}

// How many more pixels the list needs to show all of its columns and rows without scrolling;
// less than 0 where it has some to spare.
SIZE MissingRoom(HWND list) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const auto rows = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    const auto columns = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    RECT row = {LVIR_BOUNDS, 0, 0, 0};
    SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    RECT head;
    GetWindowRect(header, &head);
    RECT needed = {0, 0, 0, head.bottom - head.top + rows * (row.bottom - row.top)};
    for (int column = 0; column < columns; ++column) {
        needed.right += WidthOf(list, column);
    }
    AdjustWindowRectEx(&needed, static_cast<DWORD>(GetWindowLongW(list, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(list, GWL_EXSTYLE)));
    RECT own;
    GetWindowRect(list, &own);
    return {needed.right - needed.left - (own.right - own.left),
            needed.bottom - needed.top - (own.bottom - own.top)};
}

} // namespace

HWND AddReportList(HWND dialog, int id) {
    const HWND list = CreateWindowExW(
        0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT, 0, 0, 0,
        0, dialog, reinterpret_cast<HMENU>(std::intptr_t{id}), program.instance, nullptr);
    SendMessageW(list, WM_SETFONT, reinterpret_cast<WPARAM>(DialogFont(dialog)), FALSE);
    return list;
}

// The platform left-aligns the first column whatever it is told; asked for that, it does so in the
// header as well.
void AddColumns(HWND list, std::span<const ListColumn> columns, int alignment) {
    LVCOLUMNW column = {};
    column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT;
    column.fmt = LVCFMT_LEFT;
    int index = 0;
    for (const ListColumn& added : columns) {
        std::wstring header = added.header;
        column.pszText = header.data();
        column.cx = DialogPixels(GetParent(list), added.width);
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&column));
        WidenToHeader(list, index++);
        column.fmt = alignment;
    }
}

void AddRow(HWND list, LPARAM data, std::span<const std::wstring> cells) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    item.lParam = data;
    for (const std::wstring& cell : cells) {
        std::wstring text = cell;
        item.pszText = text.data();
        SendMessageW(list, item.iSubItem == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                     reinterpret_cast<LPARAM>(&item));
        item.mask = LVIF_TEXT;
        ++item.iSubItem;
    }
}

void FitColumns(HWND list, int columns) {
    for (int column = 0; column < columns; ++column) {
        SetWidth(list, column, LVSCW_AUTOSIZE_USEHEADER);
        SetWidth(list, column, WidthOf(list, column) + MissingMargin(list));
        WidenToHeader(list, column);
    }
}

void WidenColumns(HWND list, int columns) {
    for (int column = 0; column < columns; ++column) {
        const int before = WidthOf(list, column);
        SetWidth(list, column, LVSCW_AUTOSIZE);
        if (WidthOf(list, column) < before) {
            SetWidth(list, column, before);
        }
    }
}

SIZE EnlargeForList(HWND dialog, HWND list) {
    const SIZE room = MissingRoom(list);
    const SIZE higher = ShellEnlarge(dialog, 0, static_cast<int>(room.cy));
    const int bar = higher.cy < room.cy ? GetSystemMetrics(SM_CXVSCROLL) : 0;
    const SIZE wider = ShellEnlarge(dialog, static_cast<int>(room.cx) + bar, 0);
    return {wider.cx, higher.cy};
}
