#include "ui/drawing.h"

#include <atomic>
#include <cwchar>
#include <span>

#include "ui/program.h"

namespace {

std::atomic<bool> drawingAgainAsked{false};

} // namespace

// Before there is a window there is nobody to ask; it makes what is missing when it comes.
void DrawAgainLater() {
    if (program.window != nullptr && !drawingAgainAsked.exchange(true) &&
        !PostMessageW(program.window, WM_DRAW_AGAIN, 0, 0)) {
        drawingAgainAsked = false;
    }
}

void BeginDrawingAgain() {
    drawingAgainAsked = false;
}

RECT RectOf(const Area& area) {
    return {area.left, area.top, area.right, area.bottom};
}

OffScreen BeginOffScreen(HDC target, const Area& area) {
    OffScreen screen{};
    screen.target = target;
    screen.area = area;
    screen.dc = CreateCompatibleDC(target);
    screen.bitmap = CreateCompatibleBitmap(target, Width(area), Height(area));
    if (screen.dc == nullptr || screen.bitmap == nullptr) {
        DeleteObject(screen.bitmap);
        DeleteDC(screen.dc);
        screen.dc = target;
        return screen;
    }
    screen.before = SelectObject(screen.dc, screen.bitmap);
    SetViewportOrgEx(screen.dc, -area.left, -area.top, nullptr);
    return screen;
}

void EndOffScreen(OffScreen& screen) {
    if (screen.dc == screen.target) {
        return;
    }
    const Area& area = screen.area;
    BitBlt(screen.target, area.left, area.top, Width(area), Height(area), screen.dc, area.left,
           area.top, SRCCOPY);
    SelectObject(screen.dc, screen.before);
    DeleteObject(screen.bitmap);
    DeleteDC(screen.dc);
}

namespace {

int TextWidth(HDC dc, const wchar_t* text) {
    SIZE extent = {};
    int fit = 0;
    GetTextExtentExPointW(dc, text, static_cast<int>(std::wcslen(text)), 0, &fit, nullptr, &extent);
    return static_cast<int>(extent.cx);
}

struct Piece {
    const wchar_t* text;
    UINT alignment;
};

// Of the pieces side by side, with a blank between two.
int NeededWidth(HDC dc, std::span<const Piece> pieces) {
    int needed = static_cast<int>(pieces.size() - 1) * TextWidth(dc, L" ");
    for (const Piece& piece : pieces) {
        needed += TextWidth(dc, piece.text);
    }
    return needed;
}

// Selects a cut of the selected font, of the same height, in which the pieces fit, and returns it;
// null if they fit already or no cut can be had. Cuts come in whole pixels of a mean character,
// which is not every text's, so the first may be too wide still.
HFONT SelectNarrowed(HDC dc, std::span<const Piece> pieces, int available) {
    const int needed = NeededWidth(dc, pieces);
    if (needed <= available) {
        return nullptr;
    }
    LOGFONTW description = {};
    TEXTMETRICW metrics = {};
    GetObjectW(GetCurrentObject(dc, OBJ_FONT), sizeof description, &description);
    GetTextMetricsW(dc, &metrics);
    const LONG estimate = metrics.tmAveCharWidth * available / needed;
    LONG width = estimate > 1 ? estimate : 1;
    HFONT narrowed = nullptr;
    do {
        description.lfWidth = width--;
        const HFONT narrower = CreateFontIndirectW(&description);
        if (narrower == nullptr) {
            DrawAgainLater();
            break;
        }
        SelectObject(dc, narrower);
        DeleteObject(narrowed);
        narrowed = narrower;
    } while (width > 0 && NeededWidth(dc, pieces) > available);
    return narrowed;
}

void DrawPieces(HDC dc, std::span<const Piece> pieces, const Area& area, COLORREF colour) {
    RECT box = RectOf(area);
    const COLORREF colourBefore = SetTextColor(dc, colour);
    const int modeBefore = SetBkMode(dc, TRANSPARENT);
    const HGDIOBJ fontBefore = GetCurrentObject(dc, OBJ_FONT);
    const HFONT narrowed = SelectNarrowed(dc, pieces, Width(area));
    for (const Piece& piece : pieces) {
        DrawTextW(dc, piece.text, -1, &box,
                  piece.alignment | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    }
    if (narrowed != nullptr) {
        SelectObject(dc, fontBefore);
        DeleteObject(narrowed);
    }
    SetBkMode(dc, modeBefore);
    SetTextColor(dc, colourBefore);
}

} // namespace

void DrawFittedText(HDC dc, const wchar_t* text, const Area& area, COLORREF colour,
                    UINT alignment) {
    const Piece pieces[] = {{text, alignment}};
    DrawPieces(dc, pieces, area, colour);
}

void DrawFittedPair(HDC dc, const wchar_t* label, const wchar_t* number, const Area& area,
                    COLORREF colour) {
    const Piece pieces[] = {{label, DT_LEFT}, {number, DT_RIGHT}};
    DrawPieces(dc, pieces, area, colour);
}

void CopyPicture(HDC dc, int x, int y, int width, int height, HBITMAP source, int sourceX,
                 int sourceY) {
    const HDC memory = CreateCompatibleDC(dc);
    const HGDIOBJ before = memory != nullptr ? SelectObject(memory, source) : nullptr;
    if (before == nullptr) {
        DrawAgainLater();
        DeleteDC(memory);
        return;
    }
    BitBlt(dc, x, y, width, height, memory, sourceX, sourceY, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
}
