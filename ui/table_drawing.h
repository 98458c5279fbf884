// Drawing the table. Everything is drawn at the program's scale with its fonts and brushes.
#ifndef TESSARIN_UI_TABLE_DRAWING_H
#define TESSARIN_UI_TABLE_DRAWING_H

#include <windows.h>

#include "core/types.h"
#include "ui/layout.h"

// The whole table into dc, the part of it that needs painting.
void PaintTable(HDC dc, const RECT& part);

// One card's outline and face, or its back; straight to the window in the second form.
void DrawCard(HDC dc, std::size_t position);
void ShowCard(std::size_t position);

// "HELD", or nothing, straight to the window.
void ShowHeldLabel(std::size_t position);

// Row 0 redraws every row, any other just itself; the row on table.rank is highlighted. Straight
// to the window. Nothing for a row the game does not have.
void ShowPaytableRow(HandRank row);

// Straight to the window: the credits and the "Paid" box, empty when paid is 0; when full, bet and
// prompt line as well. From the count-up's thread only under the game lock.
void ShowCreditsPanel(std::int32_t paid, bool full);

// Marks what a change of bet changes as in need of painting.
void InvalidateBet();
void InvalidateArea(const Area& area);

#endif
