// The program's one state, owned by the main window and its thread.
#ifndef TESSARIN_UI_PROGRAM_H
#define TESSARIN_UI_PROGRAM_H

#include <windows.h>

#include "core/table.h"
#include "training/session_stats.h"
#include "ui/layout.h"

struct Program {
    HINSTANCE instance;
    HWND window;
    Layout layout;
    Table table;
    SessionStats stats;

    // Live from the registration of the window class to the destruction of the window.
    HBRUSH darkNavy;
    HBRUSH navy;
    HBRUSH yellow;
    HBRUSH darkRed;

    // The rest is of the table's size: made with the window, made anew when its size changes.
    HPEN yellowPen;
    HFONT heldFont;   // 16 design pixels
    HFONT paidFont;   // 13
    HFONT statusFont; // 12
    HFONT panelFont;  // 15

    HBITMAP largePips;
    HBITMAP smallPips;
    HBITMAP ranks;
    HBITMAP wildDeuce;
    HBITMAP cardBack;
    std::array<HBITMAP, HandSize> faces; // of the hand; null shows the card back
};

extern Program program;

// A measure of the table's design in pixels of the window.
inline int Scaled(int designPixels) {
    return ScaledBy(program.layout.scale, designPixels);
}

inline constexpr COLORREF Black = RGB(0, 0, 0);
inline constexpr COLORREF White = RGB(255, 255, 255);
inline constexpr COLORREF Red = RGB(255, 0, 0);
inline constexpr COLORREF DarkRed = RGB(192, 0, 0);
inline constexpr COLORREF Yellow = RGB(255, 255, 0);
inline constexpr COLORREF Navy = RGB(0, 0, 128);
inline constexpr COLORREF DarkNavy = RGB(0, 0, 64);

// A bold sans-serif font whose characters are so many pixels high. The caller deletes it.
HFONT MakeBoldFont(int pixels);

#endif
