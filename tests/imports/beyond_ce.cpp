// Drawing of a kind that Windows CE 3.0 has no call for, next to one that it has.
#include <windows.h>

void DrawBeyondCe(HDC dc);

void DrawBeyondCe(HDC dc) {
    MoveToEx(dc, 0, 0, nullptr);
    TextOutW(dc, 0, 0, L"A", 1);
    Rectangle(dc, 0, 0, 1, 1);
}
