#include "ui/dialog_fields.h"

namespace {

struct Ground {
    COLORREF colour;
    int brush; // of the stock
};

Ground GroundOf(TextGround ground) {
    switch (ground) {
    case TextGround::White:
        return {RGB(255, 255, 255), WHITE_BRUSH};
    case TextGround::LightGrey:
        return {RGB(192, 192, 192), LTGRAY_BRUSH};
    case TextGround::Black:
    case TextGround::Dialog:
        break;
    }
    return {RGB(0, 0, 0), BLACK_BRUSH};
}

} // namespace

void SetFieldTexts(HWND dialog, std::span<const DialogText> fields) {
    for (const DialogText& field : fields) {
        SetDlgItemTextW(dialog, field.id, field.text.c_str());
    }
}

INT_PTR ColourField(std::span<const DialogText> fields, HDC dc, HWND control) {
    const int id = GetDlgCtrlID(control);
    for (const DialogText& field : fields) {
        if (field.id == id && field.ground != TextGround::Dialog) {
            const Ground ground = GroundOf(field.ground);
            SetTextColor(dc, field.colour);
            SetBkMode(dc, OPAQUE);
            SetBkColor(dc, ground.colour);
            return reinterpret_cast<INT_PTR>(GetStockObject(ground.brush));
        }
    }
    return 0;
}

int CommandOf(HWND dialog, WPARAM wParam) {
    return IsWindowEnabled(dialog) ? LOWORD(wParam) : 0;
}

HFONT DialogFont(HWND dialog) {
    return reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
}

int DialogPixels(HWND dialog, int pixels) {
    constexpr int usualUnits = 100;
    constexpr int usualHeight = 163; // of 100 dialog units in 8-point MS Sans Serif at 96 dpi
    RECT units = {0, 0, usualUnits, usualUnits};
    MapDialogRect(dialog, &units);
    const int height = static_cast<int>(units.bottom);
    return height > usualHeight ? (pixels * height + usualHeight / 2) / usualHeight : pixels;
}
