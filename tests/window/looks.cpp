#include "tests/window/looks.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "ui/drawing.h"
#include "ui/resource.h"

namespace {

COLORREF ColourRef(std::uint32_t colour) {
    return RGB((colour >> 16) & 0xFF, (colour >> 8) & 0xFF, colour & 0xFF);
}

HFONT BoldFont(int pixels, BYTE smoothing) {
    LOGFONTW font = {};
    font.lfHeight = pixels;
    font.lfWeight = FW_BOLD;
    font.lfQuality = smoothing;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    return CreateFontIndirectW(&font);
}

void FillWith(HDC dc, const RECT& rect, std::uint32_t colour) {
    const HBRUSH brush = CreateSolidBrush(ColourRef(colour));
    FillRect(dc, &rect, brush);
    DeleteObject(brush);
}

// The pictures of the program, at the scale; each design pixel is so many pixels.
struct Pictures {
    HMODULE program;
    int scale;

    HBITMAP Load(int id) const {
        return LoadBitmapW(program, MAKEINTRESOURCEW(id + PICTURE_SCALE_STEP * (scale - 1)));
    }
};

// Copies a cell of a picture to a place on the card; all in design pixels.
void CopyCell(HDC card, const Pictures& pictures, int id, POINT cell, SIZE size, POINT place) {
    const int s = pictures.scale;
    const HBITMAP picture = pictures.Load(id);
    const HDC source = CreateCompatibleDC(card);
    const HGDIOBJ before = SelectObject(source, picture);
    BitBlt(card, place.x * s, place.y * s, size.cx * s, size.cy * s, source, cell.x * s, cell.y * s,
           SRCCOPY);
    SelectObject(source, before);
    DeleteDC(source);
    DeleteObject(picture);
}

void DrawFace(HDC dc, const Pictures& pictures, GameId game, Card card) {
    if (card == JokerCard) {
        CopyCell(dc, pictures, IDB_JOKER, {0, 0}, {43, 70}, {0, 0});
        return;
    }
    const LONG suit = SuitOf(card);
    const LONG rank = RankOf(card);
    if (game == DeucesWild && rank == RankDeuce) {
        CopyCell(dc, pictures, IDB_WILD_DEUCE, {0, 0}, {43, 71}, {1, 1});
    } else {
        CopyCell(dc, pictures, IDB_LARGE_PIPS, {25 * suit, 0}, {25, 25}, {12, 44});
    }
    CopyCell(dc, pictures, IDB_SMALL_PIPS, {15 * suit, 0}, {15, 15}, {2, 22});
    if (rank >= RankJack) {
        CopyCell(dc, pictures, IDB_PICTURES, {25 * (rank - RankJack), 0}, {25, 27}, {18, 3});
    }
    const bool red = suit == 1 || suit == 2;
    CopyCell(dc, pictures, IDB_RANKS, {17 * rank, red ? 17 : 0}, {17, 17}, {1, 3});
}

Area ImageOf(const RunningProgram& program, std::size_t position) {
    const Area& card = program.layout.cards[position];
    const Scale& scale = program.layout.scale;
    const int left = card.left + ScaledBy(scale, 2);
    const int top = card.top + ScaledBy(scale, 2);
    return {left, top, left + ScaledBy(scale, CardImageWidth),
            top + ScaledBy(scale, CardImageHeight)};
}

// The mean of a picture's channel over a part that may begin and end within pixels.
double MeanOver(const Picture& picture, double left, double top, double right, double bottom,
                int shift) {
    const auto covered = [](int pixel, double from, double end) {
        return std::min(end, pixel + 1.0) - std::max(from, static_cast<double>(pixel));
    };
    double sum = 0;
    for (int y = static_cast<int>(top); y < std::min<double>(bottom, picture.height); ++y) {
        for (int x = static_cast<int>(left); x < std::min<double>(right, picture.width); ++x) {
            sum += covered(x, left, right) * covered(y, top, bottom) *
                   ((picture.At(x, y) >> shift) & 0xFF);
        }
    }
    return sum / ((right - left) * (bottom - top));
}

Picture Reduced(const Picture& picture, int width, int height) {
    Picture reduced = {width, height, {}};
    const double across = static_cast<double>(picture.width) / width;
    const double down = static_cast<double>(picture.height) / height;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint32_t pixel = 0;
            for (const int shift : {0, 8, 16}) {
                const double mean = MeanOver(picture, x * across, y * down, (x + 1) * across,
                                             (y + 1) * down, shift);
                pixel |= static_cast<std::uint32_t>(mean + 0.5) << shift;
            }
            reduced.pixels.push_back(pixel);
        }
    }
    return reduced;
}

// Of two pictures of one size, to one step of each colour.
bool AreAlike(const Picture& a, const Picture& b) {
    return std::equal(a.pixels.begin(), a.pixels.end(), b.pixels.begin(), b.pixels.end(),
                      [](std::uint32_t one, std::uint32_t other) {
                          const auto apart = [&](int shift) {
                              return std::abs(static_cast<int>((one >> shift) & 0xFF) -
                                              static_cast<int>((other >> shift) & 0xFF));
                          };
                          return apart(0) <= 1 && apart(8) <= 1 && apart(16) <= 1;
                      });
}

// Whether the area, less a border of so many pixels, comes to look as expected. What lies below the
// client area does not count: the prompt band ends two design pixels beneath it.
bool Shows(const RunningProgram& program, const Area& area, const Picture& expected, int border) {
    const int below = area.bottom - DesignHeight * program.scale;
    const int end = expected.height - std::max(border, below);
    const Area inside = {border, border, expected.width - border, end};
    const Picture wanted = Crop(expected, inside);
    return Eventually([&] { return Crop(Grab(program, area), inside) == wanted; }, 3000);
}

// A ground of the area's size with what `draw` draws into its inner place, in the bold font.
template <typename Draw>
Picture PaintWith(const RunningProgram& program, const Area& area, std::uint32_t ground,
                  int fontPixels, int insetLeft, int insetRight, BYTE smoothing, Draw draw) {
    const HDC window = GetDC(program.window);
    const int s = program.scale;
    const Picture picture = Painted(window, Width(area), Height(area), [&](HDC dc) {
        const HFONT font = BoldFont(fontPixels * s, smoothing);
        const HGDIOBJ before = SelectObject(dc, font);
        FillWith(dc, {0, 0, Width(area), Height(area)}, ground);
        draw(dc, {insetLeft * s, 0, Width(area) - insetRight * s, Height(area)});
        SelectObject(dc, before);
        DeleteObject(font);
    });
    ReleaseDC(program.window, window);
    return picture;
}

} // namespace

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

Picture GrabStill(const RunningProgram& program) {
    Picture last;
    EXPECT_TRUE(Eventually([&] {
        Picture now = GrabClient(program);
        const bool still = now == last;
        last = std::move(now);
        Sleep(60);
        return still;
    })) << "the window does not come to rest";
    return last;
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
                   const std::vector<Line>& lines, int fontPixels, int insetLeft, int insetRight,
                   BYTE smoothing) {
    const auto draw = [&](HDC dc, const Area& place) {
        for (const Line& line : lines) {
            DrawFittedText(dc, line.text.c_str(), place, ColourRef(line.colour), line.alignment);
        }
    };
    return PaintWith(program, area, ground, fontPixels, insetLeft, insetRight, smoothing, draw);
}

Picture PaintPair(const RunningProgram& program, const Area& area, std::uint32_t ground,
                  const Labelled& pair, int fontPixels, int insetLeft, int insetRight) {
    const auto draw = [&](HDC dc, const Area& place) {
        DrawFittedPair(dc, pair.label, std::to_wstring(pair.number).c_str(), place,
                       ColourRef(pair.colour));
    };
    return PaintWith(program, area, ground, fontPixels, insetLeft, insetRight, DEFAULT_QUALITY,
                     draw);
}

bool ShowsCredits(const RunningProgram& program, std::int32_t credits) {
    const Area& area = program.layout.credits;
    return Shows(program, area, PaintPair(program, area, Navy, {L"Credits", credits, White}, 15),
                 0);
}

bool ShowsCoinsIn(const RunningProgram& program, std::int32_t bet) {
    const Area& area = program.layout.coinsIn;
    return Shows(program, area, PaintPair(program, area, Navy, {L"Coins In", bet, White}, 15), 0);
}

bool ShowsPrompt(const RunningProgram& program, const wchar_t* prompt) {
    const Area& area = program.layout.prompt;
    return Shows(program, area, PaintLines(program, area, Navy, {{prompt, Yellow, DT_CENTER}}, 15),
                 0);
}

// The status line's end lies over the box's left edge.
bool ShowsPaid(const RunningProgram& program, std::int32_t paid) {
    const Area& area = program.layout.paid;
    const Picture box = paid == 0
                            ? PaintLines(program, area, White, {}, 13)
                            : PaintPair(program, area, White, {L"Paid", paid, Black}, 13, 4, 2);
    return Shows(program, area, box, 2 * program.scale);
}

// A paytable that fills its columns ends on the label's first line.
bool ShowsHeld(const RunningProgram& program, std::size_t position, bool held) {
    const Area& area = program.layout.held[position];
    const wchar_t* text = held ? L"HELD" : L"    ";
    return Shows(program, area, PaintLines(program, area, Navy, {{text, White, DT_CENTER}}, 16),
                 program.scale);
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

bool ShowsCard(const RunningProgram& program, GameId game, std::size_t position, Card card) {
    const HMODULE file = LoadLibraryExW((ProgramFolder() + L"tessarin-ce.exe").c_str(), nullptr,
                                        LOAD_LIBRARY_AS_DATAFILE);
    const Area image = ImageOf(program, position);
    const int art = PictureScale(program.layout.scale);
    const int width = CardImageWidth * art;
    const int height = CardImageHeight * art;
    const HDC window = GetDC(program.window);
    const Picture face = Painted(window, width, height, [&](HDC dc) {
        FillWith(dc, {0, 0, width, height}, White);
        DrawFace(dc, {file, art}, game, card);
    });
    ReleaseDC(program.window, window);
    FreeLibrary(file);
    if (width == Width(image) && height == Height(image)) {
        return Shows(program, image, face, 0);
    }
    const Picture wanted = Reduced(face, Width(image), Height(image));
    return Eventually([&] { return AreAlike(Grab(program, image), wanted); }, 3000);
}

// The back has a fine pattern: no white third of a line anywhere, as every face has.
bool ShowsBack(const RunningProgram& program, std::size_t position) {
    const Area image = ImageOf(program, position);
    return Eventually(
        [&] {
            const Picture picture = Grab(program, image);
            const auto white = std::count(picture.pixels.begin(), picture.pixels.end(), White);
            return white * 4 < Width(image) * Height(image);
        },
        3000);
}

void ExpectTable(const RunningProgram& program, const Table& table) {
    for (std::size_t i = 0; i < HandSize; ++i) {
        EXPECT_TRUE(ShowsCard(program, table.game.id, i, table.hand.cards[i].code)) << "card " << i;
        const bool held = table.hand.held[i] != 0;
        EXPECT_TRUE(ShowsHeld(program, i, held)) << "label " << i << (held ? " held" : " not held");
    }
    for (std::int32_t row = 0; row < table.game.rowCount; ++row) {
        EXPECT_TRUE(
            ShowsRow(program, table.game, row, table.bet, table.rank == static_cast<HandRank>(row)))
            << "row " << row;
    }
    EXPECT_TRUE(ShowsCoinsIn(program, table.bet));
    EXPECT_TRUE(ShowsCredits(program, table.credits)) << table.credits;
    EXPECT_TRUE(ShowsPrompt(program, table.inDraw ? HoldAndDraw : GameOver));
    EXPECT_EQ(Holding(program), table.inDraw);
    EXPECT_EQ(IsWindowEnabled(Control(program, IDC_BET_ONE)) != FALSE, !table.inDraw);
}
