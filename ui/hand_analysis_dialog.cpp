#include "ui/hand_analysis_dialog.h"

#include <windows.h>

#include "core/cards.h"
#include "core/game_lock.h"
#include "core/table.h"
#include "strategy/best_hold.h"
#include "ui/card_images.h"
#include "ui/dialog_fields.h"
#include "ui/drawing.h"
#include "ui/hand_details_dialog.h"
#include "ui/program.h"
#include "ui/resource.h"
#include "ui/shell.h"

namespace {

constexpr Card NoCard = -1;

struct Slot {
    Card card;
    bool held;
};

std::array<Slot, HandSize> slots = {
    {{NoCard, false}, {NoCard, false}, {NoCard, false}, {NoCard, false}, {NoCard, false}}};
std::size_t pickedCount = 0; // of the composition in work, 0..4

// What was last composed; the hand on the table until something is.
Hand scratchHand;
bool everComposed = false;

HFONT buttonFont = nullptr; // of the open dialog

constexpr int GridColumns = 7;
constexpr int GridRows = 8;
constexpr int SlotHeight = 38;
constexpr int GridTop = 40;
constexpr int FocusMark = 4; // pixels that a button wants beside its text
constexpr int SuitGap = 2;
constexpr int SuitGaps = SuitGap * (SuitCount - 1);
constexpr COLORREF Blue = RGB(0, 0, 255);
constexpr COLORREF Olive = RGB(128, 128, 0);

bool IsSlot(int id) {
    return id >= IDC_FIRST_SLOT && id < IDC_FIRST_SLOT + static_cast<int>(HandSize);
}

bool IsCardButton(int id) {
    return id >= IDC_FIRST_CARD && id <= IDC_FIRST_CARD + JokerCard;
}

HWND CardButton(HWND dialog, Card card) {
    return GetDlgItem(dialog, IDC_FIRST_CARD + card);
}

void RedrawSlot(HWND dialog, std::size_t slot) {
    InvalidateRect(GetDlgItem(dialog, IDC_FIRST_SLOT + static_cast<int>(slot)), nullptr, TRUE);
}

void EmptySlot(HWND dialog, std::size_t slot) {
    slots[slot] = {NoCard, false};
    RedrawSlot(dialog, slot);
}

bool HasCard(const GameDescriptor& game, Card card) {
    return card < game.deckSize;
}

// Cards picked in an earlier opening stay, unless the game has changed to one without them. So does
// the hand composed last.
void KeepUnfinishedPicks() {
    for (const CardRecord& card : scratchHand.cards) {
        everComposed = everComposed && HasCard(program.table.game, card.code);
    }
    for (std::size_t i = 0; i < pickedCount; ++i) {
        if (!HasCard(program.table.game, slots[i].card)) {
            pickedCount = 0;
        }
    }
    for (std::size_t i = pickedCount; i < HandSize; ++i) {
        slots[i] = {NoCard, false};
    }
}

void AddButton(HWND dialog, int id, const wchar_t* text, DWORD style) {
    CreateWindowExW(0, L"button", text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0, 0, 0,
                    dialog, reinterpret_cast<HMENU>(std::intptr_t{id}), program.instance, nullptr);
}

void AddButtons(HWND dialog) {
    for (int i = 0; i < static_cast<int>(HandSize); ++i) {
        AddButton(dialog, IDC_FIRST_SLOT + i, L"", BS_OWNERDRAW);
    }
    for (Card card = 0; card < program.table.game.deckSize; ++card) {
        AddButton(dialog, IDC_FIRST_CARD + card, L"", BS_OWNERDRAW);
    }
    AddButton(dialog, IDC_INFO, L"Info", 0);
}

// Even rows hold seven cards and odd ones six, so that each suit takes two rows; a small gap parts
// the suits.
struct Grid {
    int columnWidth;
    int rowHeight;

    int Left(int column) const { return column * columnWidth; }
    int Top(int row) const {
        return Scaled(GridTop) + row * rowHeight + Scaled(SuitGap) * (row / 2);
    }
};

Grid GridOf(const RECT& client) {
    return {static_cast<int>(client.right) / GridColumns,
            (static_cast<int>(client.bottom) - Scaled(GridTop + SuitGaps)) / GridRows};
}

void PlaceInGrid(HWND control, const Grid& grid, int column, int top) {
    MoveWindow(control, grid.Left(column), top, grid.columnWidth, grid.rowHeight, TRUE);
}

// The joker stands in the gap at the end of the first odd row.
void PlaceCards(HWND dialog, const Grid& grid) {
    for (Card card = 0; card < program.table.game.deckSize; ++card) {
        const bool joker = card == JokerCard;
        const int rank = joker ? 2 * GridColumns - 1 : RankOf(card);
        const int row = 2 * (joker ? 0 : SuitOf(card)) + rank / GridColumns;
        PlaceInGrid(CardButton(dialog, card), grid, rank % GridColumns, grid.Top(row));
    }
}

int WidthIn(HDC dc, HFONT font, const wchar_t* text) {
    const HGDIOBJ before = SelectObject(dc, font);
    RECT box = {};
    DrawTextW(dc, text, -1, &box, DT_SINGLELINE | DT_CALCRECT);
    SelectObject(dc, before);
    return static_cast<int>(box.right);
}

// As large as the status line's font, unless the mark of the focus would crowd the longer text of
// the two buttons.
void MakeButtonFont(HWND dialog, int width) {
    const HDC dc = GetDC(dialog);
    int height = Scaled(12);
    buttonFont = MakeBoldFont(height);
    while (WidthIn(dc, buttonFont, L"Close") > width - 2 * FocusMark && height > Scaled(9)) {
        DeleteObject(buttonFont);
        buttonFont = MakeBoldFont(--height);
    }
    ReleaseDC(dialog, dc);
}

void PlaceButtons(HWND dialog, const Grid& grid) {
    MakeButtonFont(dialog, grid.columnWidth);
    for (const int id : {IDC_INFO, IDCANCEL}) {
        SendDlgItemMessageW(dialog, id, WM_SETFONT, reinterpret_cast<WPARAM>(buttonFont), TRUE);
    }
    PlaceInGrid(GetDlgItem(dialog, IDCANCEL), grid, GridColumns - 1, grid.Top(GridRows - 1));
    PlaceInGrid(GetDlgItem(dialog, IDC_INFO), grid, GridColumns - 1,
                5 * (grid.rowHeight + Scaled(8)) + Scaled(6));
}

void LayOut(HWND dialog) {
    // The rows are an eighth of the main window's height below the slots; the gaps come on top.
    const RECT window = ShellPlaceOf(program.window);
    ShellCoverMainWindow(dialog, program.window, 0,
                         static_cast<int>(window.bottom - window.top) + Scaled(SuitGaps));
    RECT client;
    GetClientRect(dialog, &client);
    const int slotWidth = static_cast<int>(client.right) / static_cast<int>(HandSize);
    for (int i = 0; i < static_cast<int>(HandSize); ++i) {
        MoveWindow(GetDlgItem(dialog, IDC_FIRST_SLOT + i), i * slotWidth, Scaled(1), slotWidth,
                   Scaled(SlotHeight), TRUE);
    }
    const HFONT before = buttonFont;
    const Grid grid = GridOf(client);
    PlaceCards(dialog, grid);
    PlaceButtons(dialog, grid);
    DeleteObject(before);
    InvalidateRect(dialog, nullptr, TRUE);
}

void Open(HWND dialog) {
    KeepUnfinishedPicks();
    AddButtons(dialog);
    LayOut(dialog);
    for (std::size_t i = 0; i < pickedCount; ++i) {
        EnableWindow(CardButton(dialog, slots[i].card), FALSE);
    }
}

// The five picked cards become the scratch hand, and its best hold is marked.
void FinishComposition(HWND dialog) {
    scratchHand = program.table.hand;
    for (std::size_t i = 0; i < HandSize; ++i) {
        scratchHand.cards[i] = MakeCardRecord(slots[i].card);
    }
    everComposed = true;
    pickedCount = 0;
    {
        const GameLockHold lock;
        const std::int32_t best =
            FindBestHold(scratchHand.cards.data(), program.table.game, program.table.bet);
        SetHolds(scratchHand, resultTable[static_cast<std::size_t>(best)].pattern);
    }
    for (std::size_t i = 0; i < HandSize; ++i) {
        slots[i].held = scratchHand.held[i] != 0;
        RedrawSlot(dialog, i);
        EnableWindow(CardButton(dialog, slots[i].card), TRUE);
    }
}

bool IsPicked(Card card) {
    for (const Slot& slot : slots) {
        if (slot.card == card) {
            return true;
        }
    }
    return false;
}

// A button that is disabled loses the keyboard to nobody; the next one takes it.
void DisableCard(HWND dialog, Card card) {
    const HWND button = CardButton(dialog, card);
    if (GetFocus() == button) {
        SendMessageW(dialog, WM_NEXTDLGCTL, 0, FALSE);
    }
    EnableWindow(button, FALSE);
}

void Pick(HWND dialog, Card card) {
    if (pickedCount == 0) {
        for (std::size_t i = 0; i < HandSize; ++i) {
            EmptySlot(dialog, i);
        }
    }
    if (IsPicked(card)) {
        return;
    }
    slots[pickedCount] = {card, false};
    RedrawSlot(dialog, pickedCount);
    DisableCard(dialog, card);
    if (++pickedCount == HandSize) {
        FinishComposition(dialog);
    }
}

void ShowInfo(HWND dialog) {
    if (!everComposed) {
        scratchHand = program.table.hand;
    }
    SearchAndShowHandDetails(dialog, scratchHand, program.table.game);
}

void DrawHoldMark(HDC dc, const Area& button) {
    const Area mark = {button.left + Scaled(4), button.top + Scaled(2), button.right - Scaled(4),
                       button.top + Scaled(16)};
    const RECT rect = RectOf(mark);
    FillRect(dc, &rect, program.navy);
    DrawFittedText(dc, L"HOLD", mark, White, DT_CENTER);
}

void DrawCardText(HDC dc, const Area& area, Card card) {
    if (card == JokerCard) {
        DrawFittedText(dc, L"Jok", area, Blue, DT_CENTER);
        return;
    }
    const std::int32_t suit = SuitOf(card);
    const int middle = (area.left + area.right) / 2;
    const wchar_t letter[] = {RankLetters[RankOf(card)], L'\0'};
    DrawFittedText(dc, letter, {area.left, area.top, middle, area.bottom},
                   IsRed(suit) ? DarkRed : Black, DT_CENTER);
    const int pip = Scaled(SmallPipSize);
    DrawSmallPip(dc, middle + (area.right - middle - pip) / 2, area.top + (Height(area) - pip) / 2,
                 suit);
}

void DrawWildMark(HDC dc, const Area& button) {
    const HGDIOBJ before = SelectObject(dc, program.statusFont);
    DrawFittedText(dc, L"W", {button.left, button.bottom - Scaled(12), button.right, button.bottom},
                   Olive, DT_CENTER);
    SelectObject(dc, before);
}

bool IsWildDeuce(Card card) {
    return program.table.game.id == DeucesWild && card != JokerCard && RankOf(card) == RankDeuce;
}

// The hold mark takes the top of a slot, and the card moves down.
void DrawCard(HDC dc, const Area& button, Card card, bool held) {
    const int lower = held ? Scaled(10) : 0;
    if (held) {
        DrawHoldMark(dc, button);
    }
    DrawCardText(dc, {button.left, button.top + lower, button.right, button.bottom + lower}, card);
    if (IsWildDeuce(card)) {
        DrawWildMark(dc, button);
    }
}

void DrawGround(HDC dc, const Area& area, bool pressed) {
    const HGDIOBJ brushBefore =
        SelectObject(dc, GetStockObject(pressed ? LTGRAY_BRUSH : WHITE_BRUSH));
    RoundRect(dc, area.left, area.top, area.right, area.bottom, Scaled(6), Scaled(6));
    SelectObject(dc, brushBefore);
}

void DrawButton(const DRAWITEMSTRUCT& item) {
    const int id = static_cast<int>(item.CtlID);
    const bool isSlot = IsSlot(id);
    const auto slot = static_cast<std::size_t>(isSlot ? id - IDC_FIRST_SLOT : 0);
    const Card card = isSlot ? slots[slot].card : id - IDC_FIRST_CARD;
    const Area area = {item.rcItem.left, item.rcItem.top, item.rcItem.right, item.rcItem.bottom};
    OffScreen screen = BeginOffScreen(item.hDC, area);
    FillRect(screen.dc, &item.rcItem, GetSysColorBrush(COLOR_BTNFACE));
    const HGDIOBJ fontBefore = SelectObject(screen.dc, program.panelFont);
    DrawGround(screen.dc, area, (item.itemState & ODS_SELECTED) != 0);
    if (card != NoCard && (item.itemState & ODS_DISABLED) == 0) {
        DrawCard(screen.dc, area, card, isSlot && slots[slot].held);
    }
    SelectObject(screen.dc, fontBefore);
    EndOffScreen(screen);
}

INT_PTR CALLBACK HandAnalysisProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    ShellWatchDensity(dialog, message);
    switch (message) {
    case WM_INITDIALOG:
        Open(dialog);
        return TRUE;
    case LayOutMessage:
        LayOut(dialog);
        return TRUE;
    case WM_DRAWITEM: {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if ((item.itemAction & (ODA_DRAWENTIRE | ODA_SELECT)) != 0) {
            DrawButton(item);
        }
        return TRUE;
    }
    case WM_COMMAND: {
        const int id = CommandOf(dialog, wParam);
        if (IsCardButton(id)) {
            Pick(dialog, id - IDC_FIRST_CARD);
        } else if (id == IDC_INFO) {
            ShowInfo(dialog);
        } else if (id == IDCANCEL) {
            EndDialog(dialog, IDCANCEL);
        }
        return TRUE;
    }
    default:
        return FALSE;
    }
}

} // namespace

void ShowHandAnalysis() {
    DialogBoxParamW(program.instance, MAKEINTRESOURCEW(IDD_HAND_ANALYSIS), program.window,
                    HandAnalysisProc, 0);
    DeleteObject(buttonFont);
    buttonFont = nullptr;
}
