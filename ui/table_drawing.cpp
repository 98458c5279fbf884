#include "ui/table_drawing.h"

#include "training/dialog_text.h"
#include "ui/drawing.h"
#include "ui/program.h"

namespace {

constexpr std::int32_t SmallFontRows = 13; // a paytable this long needs the smaller font

void Fill(HDC dc, const Area& area, HBRUSH brush) {
    const RECT rect = RectOf(area);
    FillRect(dc, &rect, brush);
}

Area Inset(const Area& area, int left, int right) {
    return {area.left + Scaled(left), area.top, area.right - Scaled(right), area.bottom};
}

bool Overlaps(const RECT& part, const Area& area) {
    return area.left < part.right && part.left < area.right && area.top < part.bottom &&
           part.top < area.bottom;
}

// The outline's pen is as wide as the scale; it stands wholly inside the area.
void DrawCardOutline(HDC dc, const Area& card) {
    const int s = Scaled(1);
    const HPEN pen = CreatePen(PS_SOLID, s, Black);
    if (pen == nullptr) {
        DrawAgainLater();
    }
    const HGDIOBJ penBefore = SelectObject(dc, pen);
    const HGDIOBJ brushBefore = SelectObject(dc, GetStockObject(WHITE_BRUSH));
    const int inset = s / 2;
    const int end = (s - 1) / 2;
    RoundRect(dc, card.left + inset, card.top + inset, card.right - end, card.bottom - end,
              Scaled(7), Scaled(8));
    SelectObject(dc, brushBefore);
    SelectObject(dc, penBefore);
    DeleteObject(pen);
}

void DrawHeldLabel(HDC dc, std::size_t position) {
    const Area& area = program.layout.held[position];
    Fill(dc, area, program.navy);
    const HGDIOBJ fontBefore = SelectObject(dc, program.heldFont);
    DrawFittedText(dc, program.table.hand.held[position] != 0 ? L"HELD" : L"    ", area, White,
                   DT_CENTER);
    SelectObject(dc, fontBefore);
}

// The place of one row in one of the two columns; it reaches a pixel into the next row.
Area RowCell(const Area& column, std::int32_t row) {
    const std::int32_t height = program.layout.paytableHeight / program.table.game.rowCount;
    const std::int32_t top = row * height;
    return {column.left, column.top + Scaled(top), column.right,
            column.top + Scaled(top + height + 1)};
}

bool IsHighlighted(std::int32_t row) {
    return program.table.rank == static_cast<HandRank>(row);
}

void DrawRowGround(HDC dc, std::int32_t row) {
    const bool highlighted = IsHighlighted(row);
    Fill(dc, RowCell(program.layout.names, row), highlighted ? program.darkRed : program.darkNavy);
    Fill(dc, RowCell(program.layout.payouts, row), highlighted ? program.yellow : program.darkRed);
}

void DrawRowText(HDC dc, std::int32_t row) {
    const Table& table = program.table;
    const Area name = RowCell(program.layout.names, row);
    DrawFittedText(dc, table.game.rowNames[row], Inset(name, 4, 4), Yellow, DT_LEFT);
    const std::wstring payout =
        FormatInteger(L"%i", RowPayout(static_cast<HandRank>(row), table.game, table.bet));
    DrawFittedText(dc, payout.c_str(), RowCell(program.layout.payouts, row),
                   IsHighlighted(row) ? Red : Yellow, DT_CENTER);
}

// The outline lies on the first and last pixels of the column's used height; a wide pen stays
// inside its left and right edges.
void OutlineColumn(HDC dc, const Area& column) {
    const Area lastRow = RowCell(column, program.table.game.rowCount - 1);
    const int s = Scaled(1);
    const int half = s / 2;
    const int left = column.left + half;
    const int top = column.top + half;
    const int right = column.right - s + half;
    const int bottom = lastRow.bottom - s + half;
    const POINT corners[] = {
        {left, top}, {right, top}, {right, bottom}, {left, bottom}, {left, top}};
    const HGDIOBJ penBefore = SelectObject(dc, program.yellowPen);
    Polyline(dc, corners, 5);
    SelectObject(dc, penBefore);
}

void OutlinePaytable(HDC dc) {
    OutlineColumn(dc, program.layout.names);
    OutlineColumn(dc, program.layout.payouts);
}

// All grounds come before all texts: in a long paytable the tails of a row's letters hang into the
// next row.
void DrawPaytable(HDC dc) {
    const std::int32_t rows = program.table.game.rowCount;
    const bool small = rows >= SmallFontRows;
    const HGDIOBJ fontBefore = SelectObject(dc, small ? program.statusFont : program.paidFont);
    for (std::int32_t row = 0; row < rows; ++row) {
        DrawRowGround(dc, row);
    }
    for (std::int32_t row = 0; row < rows; ++row) {
        DrawRowText(dc, row);
    }
    SelectObject(dc, fontBefore);
    OutlinePaytable(dc);
}

void DrawLabelled(HDC dc, const Area& area, const wchar_t* label, std::int32_t number,
                  COLORREF colour) {
    DrawFittedPair(dc, label, FormatInteger(L"%i", number).c_str(), area, colour);
}

void DrawCoinsIn(HDC dc) {
    Fill(dc, program.layout.coinsIn, program.navy);
    DrawLabelled(dc, program.layout.coinsIn, L"Coins In", program.table.bet, White);
}

void DrawCredits(HDC dc) {
    Fill(dc, program.layout.credits, program.navy);
    DrawLabelled(dc, program.layout.credits, L"Credits", program.table.credits, White);
}

void DrawPrompt(HDC dc) {
    Fill(dc, program.layout.prompt, program.navy);
    DrawFittedText(dc, program.table.inDraw ? L"HOLD AND DRAW CARDS" : L"  G A M E  O V E R  ",
                   program.layout.prompt, Yellow, DT_CENTER);
}

void DrawPaid(HDC dc, std::int32_t paid) {
    const Area& area = program.layout.paid;
    Rectangle(dc, area.left, area.top, area.right, area.bottom);
    if (paid != 0) {
        const HGDIOBJ fontBefore = SelectObject(dc, program.paidFont);
        DrawLabelled(dc, Inset(area, 4, 2), L"Paid", paid, Black);
        SelectObject(dc, fontBefore);
    }
}

void DrawCreditsPanel(HDC dc, std::int32_t paid, bool full) {
    const HGDIOBJ fontBefore = SelectObject(dc, program.panelFont);
    if (full) {
        DrawCoinsIn(dc);
        DrawPrompt(dc);
    }
    DrawCredits(dc);
    DrawPaid(dc, paid);
    SelectObject(dc, fontBefore);
}

HDC WindowDc() {
    const HDC window = GetDC(program.window);
    if (window == nullptr) {
        DrawAgainLater();
    }
    return window;
}

// Draws one area off screen and shows it.
template <typename Draw>
void ShowArea(const Area& area, Draw draw) {
    const HDC window = WindowDc();
    OffScreen screen = BeginOffScreen(window, area);
    draw(screen.dc);
    EndOffScreen(screen);
    ReleaseDC(program.window, window);
}

} // namespace

void DrawCard(HDC dc, std::size_t position) {
    const Area& card = program.layout.cards[position];
    DrawCardOutline(dc, card);
    const HBITMAP face = program.faces[position];
    CopyPicture(dc, card.left + Scaled(2), card.top + Scaled(2), Scaled(CardImageWidth),
                Scaled(CardImageHeight), face != nullptr ? face : program.cardBack, 0, 0);
}

void PaintTable(HDC dc, const RECT& part) {
    const Area whole = {part.left, part.top, part.right, part.bottom};
    OffScreen screen = BeginOffScreen(dc, whole);
    Fill(screen.dc, whole, program.navy);
    for (std::size_t i = 0; i < HandSize; ++i) {
        if (Overlaps(part, program.layout.cards[i])) {
            DrawCard(screen.dc, i);
        }
        if (Overlaps(part, program.layout.held[i])) {
            DrawHeldLabel(screen.dc, i);
        }
    }
    DrawPaytable(screen.dc);
    DrawCreditsPanel(screen.dc, 0, true);
    EndOffScreen(screen);
}

void ShowCard(std::size_t position) {
    ShowArea(program.layout.cards[position], [&](HDC dc) {
        Fill(dc, program.layout.cards[position], program.navy);
        DrawCard(dc, position);
    });
}

// A paytable that fills its columns has its lower edge on the label's first line; between two
// scales the last row's ground may reach a pixel into it as well.
void ShowHeldLabel(std::size_t position) {
    ShowArea(program.layout.held[position], [&](HDC dc) {
        DrawHeldLabel(dc, position);
        DrawRowGround(dc, program.table.game.rowCount - 1);
        OutlinePaytable(dc);
    });
}

void ShowPaytableRow(HandRank row) {
    const std::int32_t rows = program.table.game.rowCount;
    if (row >= static_cast<HandRank>(rows)) {
        return;
    }
    const auto first = static_cast<std::int32_t>(row);
    const std::int32_t last = first == 0 ? rows - 1 : first;
    const Area from = RowCell(program.layout.names, first);
    const Area to = RowCell(program.layout.payouts, last);
    const Area rowArea = {from.left, from.top, to.right, to.bottom};
    ShowArea(rowArea, [&](HDC dc) {
        Fill(dc, rowArea, program.navy);
        DrawPaytable(dc);
    });
}

void ShowCreditsPanel(std::int32_t paid, bool full) {
    const HDC window = WindowDc();
    const Area parts[] = {program.layout.credits, program.layout.paid, program.layout.coinsIn,
                          program.layout.prompt};
    const std::size_t shown = full ? 4 : 2;
    for (std::size_t i = 0; i < shown; ++i) {
        OffScreen screen = BeginOffScreen(window, parts[i]);
        Fill(screen.dc, parts[i], program.navy);
        DrawCreditsPanel(screen.dc, paid, full);
        EndOffScreen(screen);
    }
    ReleaseDC(program.window, window);
}

void InvalidateArea(const Area& area) {
    const RECT rect = RectOf(area);
    InvalidateRect(program.window, &rect, TRUE);
}

void InvalidateBet() {
    InvalidateArea(program.layout.names);
    InvalidateArea(program.layout.payouts);
    InvalidateArea(program.layout.coinsIn);
}
