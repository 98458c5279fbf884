#include "ui/report_list.h"

#include <commctrl.h>

#include "ui/dialog_fields.h"
#include "ui/program.h"

HWND AddReportList(HWND dialog, int id) {
    const HWND list = CreateWindowExW(
        0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT, 0, 0, 0,
        0, dialog, reinterpret_cast<HMENU>(std::intptr_t{id}), program.instance, nullptr);
    SendMessageW(list, WM_SETFONT, reinterpret_cast<WPARAM>(DialogFont(dialog)), FALSE);
    return list;
}

// The first column of a list view is always left-aligned unless it was not the first when it was
// added: so one is put before it, and taken away again.
void AddColumns(HWND list, std::span<const ListColumn> columns, int alignment) {
    LVCOLUMNW column = {};
    column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT;
    column.fmt = alignment;
    wchar_t none[] = L"";
    column.pszText = none;
    SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
    WPARAM index = 1;
    for (const ListColumn& added : columns) {
        std::wstring header = added.header;
        column.pszText = header.data();
        column.cx = DialogPixels(GetParent(list), added.width);
        SendMessageW(list, LVM_INSERTCOLUMNW, index++, reinterpret_cast<LPARAM>(&column));
    }
    SendMessageW(list, LVM_DELETECOLUMN, 0, 0);
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

namespace {

int TextWidth(HWND list, const wchar_t* text) {
    return static_cast<int>(
        SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text)));
}

int HeaderWidth(HWND list, int column) {
    constexpr int longest = 64;
    wchar_t header[longest] = L"";
    LVCOLUMNW description = {};
    description.mask = LVCF_TEXT;
    description.pszText = header;
    description.cchTextMax = longest;
    SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&description));
    return TextWidth(list, header);
}

} // namespace

// Not every version of the control leaves room for the header's margins when it fits a column, so
// no column gets narrower than its header and two digits.
void FitColumns(HWND list, int columns) {
    const int margin = TextWidth(list, L"00");
    for (int column = 0; column < columns; ++column) {
        const auto index = static_cast<WPARAM>(column);
        SendMessageW(list, LVM_SETCOLUMNWIDTH, index, LVSCW_AUTOSIZE_USEHEADER);
        const int least = HeaderWidth(list, column) + margin;
        if (SendMessageW(list, LVM_GETCOLUMNWIDTH, index, 0) < least) {
            SendMessageW(list, LVM_SETCOLUMNWIDTH, index, least);
        }
    }
}
