// What the table looks like from outside: pixels of the window, and what should stand there, drawn
// anew from the measures and colours of the design.
#ifndef TESSARIN_TESTS_WINDOW_LOOKS_H
#define TESSARIN_TESTS_WINDOW_LOOKS_H

#include <cstdint>
#include <string>
#include <vector>

#include "core/table.h"
#include "tests/window/harness.h"

// Rows from the top, a pixel being 0x00RRGGBB.
struct Picture {
    int width;
    int height;
    std::vector<std::uint32_t> pixels;

    std::uint32_t At(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
    bool operator==(const Picture&) const = default;
};

inline constexpr std::uint32_t White = 0xFFFFFF;
inline constexpr std::uint32_t Black = 0x000000;
inline constexpr std::uint32_t Red = 0xFF0000;
inline constexpr std::uint32_t DarkRed = 0xC00000;
inline constexpr std::uint32_t Yellow = 0xFFFF00;
inline constexpr std::uint32_t Navy = 0x000080;
inline constexpr std::uint32_t DarkNavy = 0x000040;

// The pixels of a bitmap that is selected nowhere.
Picture PixelsOf(HDC dc, HBITMAP bitmap, int width, int height);

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

// A part of the client area as it stands on the screen, or all of it.
Picture Grab(const RunningProgram& program, const Area& area);
Picture GrabClient(const RunningProgram& program);
// The client area as soon as it stands still.
Picture GrabStill(const RunningProgram& program);
Picture Crop(const Picture& picture, const Area& area);

// One line of text on a ground.
struct Line {
    std::wstring text;
    std::uint32_t colour;
    UINT alignment; // DT_
};
// The lines on one ground of the area's size, in the bold font of so many design pixels, kept
// from the left and right edges by so many design pixels, smoothed as GDI's font qualities say.
Picture PaintLines(const RunningProgram& program, const Area& area, std::uint32_t ground,
                   const std::vector<Line>& lines, int fontPixels, int insetLeft = 0,
                   int insetRight = 0, BYTE smoothing = DEFAULT_QUALITY);

// A label at the left and a number at the right.
struct Labelled {
    const wchar_t* label;
    std::int32_t number;
    std::uint32_t colour;
};
Picture PaintPair(const RunningProgram& program, const Area& area, std::uint32_t ground,
                  const Labelled& pair, int fontPixels, int insetLeft = 0, int insetRight = 0);

// Whether the part of the table comes to look like this. "Paid" 0 is an empty box.
bool ShowsCredits(const RunningProgram& program, std::int32_t credits);
bool ShowsCoinsIn(const RunningProgram& program, std::int32_t bet);
bool ShowsPrompt(const RunningProgram& program, const wchar_t* prompt);
bool ShowsPaid(const RunningProgram& program, std::int32_t paid);
bool ShowsHeld(const RunningProgram& program, std::size_t position, bool held);
bool ShowsRow(const RunningProgram& program, const GameDescriptor& game, std::int32_t row,
              std::int32_t bet, bool highlighted);

// The card's face, put together from the program's pictures and, at a scale that has none, reduced
// from larger ones, to one step of a colour; and its back.
bool ShowsCard(const RunningProgram& program, GameId game, std::size_t position, Card card);
bool ShowsBack(const RunningProgram& program, std::size_t position);

// All of a table between its moves: the cards, their holds, the highlighted row among the others,
// the credits and the prompt line.
void ExpectTable(const RunningProgram& program, const Table& table);

inline constexpr wchar_t GameOver[] = L"  G A M E  O V E R  ";
inline constexpr wchar_t HoldAndDraw[] = L"HOLD AND DRAW CARDS";

#endif
