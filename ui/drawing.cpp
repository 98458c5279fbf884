#include "ui/drawing.h"

#include <cwchar>

RECT RectOf(const Area& area) {
    return {area.left, area.top, area.right, area.bottom};
}

OffScreen BeginOffScreen(HDC target, const Area& area) {
    OffScreen screen{};
    screen.target = target;
    screen.area = area;
    screen.dc = CreateCompatibleDC(target);
    screen.bitmap = CreateCompatibleBitmap(target, Width(area), Height(area));
    screen.before = SelectObject(screen.dc, screen.bitmap);
    SetViewportOrgEx(screen.dc, -area.left, -area.top, nullptr);
    return screen;
}

void EndOffScreen(OffScreen& screen) {
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

// The selected font at the same height, narrowed in the ratio given.
HFONT NarrowedFont(HDC dc, int available, int needed) {
    LOGFONTW description = {};
    TEXTMETRICW metrics = {};
    GetObjectW(GetCurrentObject(dc, OBJ_FONT), sizeof description, &description);
    GetTextMetricsW(dc, &metrics);
    const LONG width = metrics.tmAveCharWidth * available / needed;
    description.lfWidth = width > 1 ? width : 1;
    return CreateFontIndirectW(&description);
}

} // namespace

void DrawFittedText(HDC dc, const wchar_t* text, const Area& area, COLORREF colour,
                    UINT alignment) {
    RECT box = RectOf(area);
    const COLORREF colourBefore = SetTextColor(dc, colour);
    const int modeBefore = SetBkMode(dc, TRANSPARENT);
    const int needed = TextWidth(dc, text);
    HFONT narrowed = nullptr;
    HGDIOBJ fontBefore = nullptr;
    if (needed > Width(area)) {
        narrowed = NarrowedFont(dc, Width(area), needed);
        fontBefore = SelectObject(dc, narrowed);
    }
    DrawTextW(dc, text, -1, &box, alignment | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    if (narrowed != nullptr) {
        SelectObject(dc, fontBefore);
        DeleteObject(narrowed);
    }
    SetBkMode(dc, modeBefore);
    SetTextColor(dc, colourBefore);
}

void CopyPicture(HDC dc, int x, int y, int width, int height, HBITMAP source, int sourceX,
                 int sourceY) {
    const HDC memory = CreateCompatibleDC(dc);
    const HGDIOBJ before = SelectObject(memory, source);
    BitBlt(dc, x, y, width, height, memory, sourceX, sourceY, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
}
