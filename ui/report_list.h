// The report-style list view of two dialogs.
#ifndef TESSARIN_UI_REPORT_LIST_H
#define TESSARIN_UI_REPORT_LIST_H

#include <windows.h>

#include <span>
#include <string>

#include "training/dialog_text.h"

// A new empty list as a child of the dialog, in the dialog's font.
HWND AddReportList(HWND dialog, int id);

// Columns in order, of the widths given for a 96-dpi screen or wider where the header needs it. All
// but the first are aligned as LVCFMT_ says; the first is left-aligned.
void AddColumns(HWND list, std::span<const ListColumn> columns, int alignment);

// A row at the end, its cells one a column; data is its item data.
void AddRow(HWND list, LPARAM data, std::span<const std::wstring> cells);

// Every column becomes as wide as its header and contents need.
void FitColumns(HWND list, int columns);

// Columns whose contents need it become wider; none becomes narrower.
void WidenColumns(HWND list, int columns);

// Makes the dialog larger by what the list lacks to show all its columns and rows, as far as the
// screen has the room; returns what the dialog grew by. Its controls stay as they are.
SIZE EnlargeForList(HWND dialog, HWND list);

#endif
