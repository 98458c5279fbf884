#include "tests/window/looks.h"

#include <algorithm>

#include "ui/drawing.h"

namespace {

COLORREF ColourRef(std::uint32_t colour) {
    return RGB((colour >> 16) & 0xFF, (colour >> 8) & 0xFF, colour & 0xFF);
}

Picture PixelsOf(HDC dc, HBITMAP bitmap, int width, int height) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    Picture picture = {width, height,
                       std::vector<std::uint32_t>(static_cast<std::size_t>(width * height))};
    GetDIBits(dc, bitmap, 0, static_cast<UINT>(height), picture.pixels.data(), &info,
              DIB_RGB_COLORS);
    for (std::uint32_t& pixel : picture.pixels) {
        pixel &= 0xFFFFFF;
    }
    return picture;
}

// A bitmap like the window's, drawn into by `draw`.
template <typename Draw>
Picture Painted(HDC like, int width, int height, Draw draw) {
    const HDC dc = CreateCompatibleDC(like);
    const HBITMAP bitmap = CreateCompatibleBitmap(like, width, height);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    draw(dc);
    SelectObject(dc, before);
    const Picture picture = PixelsOf(dc, bitmap, width, height);
    DeleteObject(bitmap);
    DeleteDC(dc);
    return picture;
}

HFONT BoldFont(int pixels) {
    LOGFONTW font = {};
    font.lfHeight = pixels;
    font.lfWeight = FW_BOLD;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    return CreateFontIndirectW(&font);
}

void FillWith(HDC dc, const RECT& rect, std::uint32_t colour) {
    const HBRUSH brush = CreateSolidBrush(ColourRef(colour));
    FillRect(dc, &rect, brush);
    DeleteObject(brush);
}

// Whether the area, less a border of so many pixels, comes to look as expected.
bool Shows(const RunningProgram& program, const Area& area, const Picture& expected, int border) {
    const Area inside = {border, border, expected.width - border, expected.height - border};
    const Picture wanted = Crop(expected, inside);
    return Eventually([&] { return Crop(Grab(program, area), inside) == wanted; }, 3000);
}

} // namespace

Picture Grab(const RunningProgram& program, const Area& area) {
    const HDC window = GetDC(program.window);
    const Picture picture = Painted(window, Width(area), Height(area), [&](HDC dc) {
        BitBlt(dc, 0, 0, Width(area), Height(area), window, area.left, area.top, SRCCOPY);
    });
    ReleaseDC(program.window, window);
    return picture;
}

Picture GrabClient(const RunningProgram& program) {
    return Grab(program, {0, 0, DesignWidth * program.scale, DesignHeight * program.scale});
}

Picture Crop(const Picture& picture, const Area& area) {
    Picture part = {Width(area), Height(area), {}};
    for (int y = area.top; y < area.bottom; ++y) {
        const auto row = picture.pixels.begin() + y * picture.width;
        part.pixels.insert(part.pixels.end(), row + area.left, row + area.right);
    }
    return part;
}

Picture PaintLines(const RunningProgram& program, const Area& area, std::uint32_t ground,
                   const std::vector<Line>& lines, int fontPixels, int insetLeft, int insetRight) {
    const HDC window = GetDC(program.window);
    const int s = program.scale;
    const Picture picture = Painted(window, Width(area), Height(area), [&](HDC dc) {
        const HFONT font = BoldFont(fontPixels * s);
        const HGDIOBJ before = SelectObject(dc, font);
        FillWith(dc, {0, 0, Width(area), Height(area)}, ground);
        const Area place = {insetLeft * s, 0, Width(area) - insetRight * s, Height(area)};
        for (const Line& line : lines) {
            DrawFittedText(dc, line.text.c_str(), place, ColourRef(line.colour), line.alignment);
        }
        SelectObject(dc, before);
        DeleteObject(font);
    });
    ReleaseDC(program.window, window);
    return picture;
}

bool ShowsCredits(const RunningProgram& program, std::int32_t credits) {
    const Area& area = program.layout.credits;
    return Shows(
        program, area,
        PaintLines(program, area, Navy,
                   {{L"Credits", White, DT_LEFT}, {std::to_wstring(credits), White, DT_RIGHT}}, 15),
        0);
}

bool ShowsCoinsIn(const RunningProgram& program, std::int32_t bet) {
    const Area& area = program.layout.coinsIn;
    return Shows(
        program, area,
        PaintLines(program, area, Navy,
                   {{L"Coins In", White, DT_LEFT}, {std::to_wstring(bet), White, DT_RIGHT}}, 15),
        0);
}

bool ShowsPrompt(const RunningProgram& program, const wchar_t* prompt) {
    const Area& area = program.layout.prompt;
    return Shows(program, area, PaintLines(program, area, Navy, {{prompt, Yellow, DT_CENTER}}, 15),
                 0);
}

bool ShowsPaid(const RunningProgram& program, std::int32_t paid) {
    const Area& area = program.layout.paid;
    std::vector<Line> lines;
    if (paid != 0) {
        lines = {{L"Paid", Black, DT_LEFT}, {std::to_wstring(paid), Black, DT_RIGHT}};
    }
    return Shows(program, area, PaintLines(program, area, White, lines, 13, 4, 2), 1);
}

bool ShowsHeld(const RunningProgram& program, std::size_t position, bool held) {
    const Area& area = program.layout.held[position];
    const wchar_t* text = held ? L"HELD" : L"    ";
    return Shows(program, area, PaintLines(program, area, Navy, {{text, White, DT_CENTER}}, 16), 0);
}

// A row reaches a pixel into the next one, and the outline lies over the column's edge: the border
// is left out.
bool ShowsRow(const RunningProgram& program, const GameDescriptor& game, std::int32_t row,
              std::int32_t bet, bool highlighted) {
    const int s = program.scale;
    const int font = game.rowCount < 13 ? 13 : 12;
    const int height = Height(program.layout.names) / s / game.rowCount * s;
    const auto cell = [&](const Area& column) {
        const int top = column.top + row * height;
        return Area{column.left, top, column.right, top + height + s};
    };
    const std::int32_t payout = bet == MaxBet ? game.fiveCoins[row] : game.oneCoin[row] * bet;
    const Area name = cell(program.layout.names);
    const Area paid = cell(program.layout.payouts);
    return Shows(program, name,
                 PaintLines(program, name, highlighted ? DarkRed : DarkNavy,
                            {{game.rowNames[row], Yellow, DT_LEFT}}, font, 4, 4),
                 s) &&
           Shows(program, paid,
                 PaintLines(program, paid, highlighted ? Yellow : DarkRed,
                            {{std::to_wstring(payout), highlighted ? Red : Yellow, DT_CENTER}},
                            font),
                 s);
}
