// Small tools for drawing: areas as rectangles, off-screen drawing, text that fits.
#ifndef TESSARIN_UI_DRAWING_H
#define TESSARIN_UI_DRAWING_H

#include <windows.h>

#include "ui/layout.h"

RECT RectOf(const Area& area);

// Something could not be drawn, or made for drawing, because the system is out of objects: the
// main window makes its own anew and draws everything again a little later, and so on until nothing
// is amiss. From any thread.
void DrawAgainLater();
inline constexpr UINT WM_DRAW_AGAIN = WM_APP; // posted to the main window, once until it begins
void BeginDrawingAgain();                     // what fails from here on asks anew

// Drawing into a memory copy of one area; what is drawn shows in one go at the end, so nothing
// flickers. Where no copy can be had it is drawn on the target itself. Coordinates stay those of
// the target.
struct OffScreen {
    HDC target;
    HDC dc; // draw into this one; the target if there is no copy
    HBITMAP bitmap;
    HGDIOBJ before;
    Area area;
};
OffScreen BeginOffScreen(HDC target, const Area& area);
void EndOffScreen(OffScreen& screen);

// One line in the area with the font selected in dc, in the colour and with the DT_ alignment
// given, on whatever is there. A text wider than its place is set in a narrower cut of the font.
void DrawFittedText(HDC dc, const wchar_t* text, const Area& area, COLORREF colour, UINT alignment);

// The same with a label at the left and a number at the right; both in the narrower cut where they
// would meet otherwise.
void DrawFittedPair(HDC dc, const wchar_t* label, const wchar_t* number, const Area& area,
                    COLORREF colour);

// Copies a part of a bitmap, unscaled. Without a bitmap nothing is copied, now.
void CopyPicture(HDC dc, int x, int y, int width, int height, HBITMAP source, int sourceX,
                 int sourceY);

#endif
