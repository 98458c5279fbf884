#include <gmock/gmock.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cwchar>
#include <set>

#include "strategy/best_hold.h"
#include "strategy/choose.h"
#include "tests/window/dialogs/kept_pictures.h"
#include "tests/window/dialogs/reading.h"
#include "tests/window/forecast.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// The list of all 32 holds.

namespace {

class Details : public WindowTest {};

constexpr int ReturnColumn = 0;
constexpr int HoldColumn = 1;
constexpr int TotalColumn = 2;
constexpr int NadaColumn = 3;

struct GameColumns {
    GameId game;
    std::vector<std::wstring> headers;
};

const GameColumns gameColumns[] = {
    {JacksOrBetter,
     {L"Return", L"Hold", L"Total", L"Nada", L"Jac", L"Two", L"3 o", L"Str", L"Flu", L"Ful", L"4 o",
      L"Str", L"Roy"}},
    {DeucesWild,
     {L"Return", L"Hold", L"Total", L"Nada", L"3 O", L"STR", L"FLU", L"FUL", L"4 O", L"STR", L"5 O",
      L"ROY", L"4 D", L"ROY"}},
    {JokerWild,
     {L"Return", L"Hold", L"Total", L"Nada", L"KIN", L"2 P", L"3 O", L"STR", L"FLU", L"FUL", L"4 O",
      L"STR", L"ROY", L"5 O", L"ROY"}},
    {DoubleDoubleJackpot,
     {L"Return", L"Hold", L"Total", L"Nada", L"Jac", L"Two", L"3 o", L"Str", L"Flu", L"Ful", L"4 2",
      L"4 K", L"4 K", L"4 A", L"4 A", L"Str", L"Roy"}},
    {DoubleBonusPoker,
     {L"Return", L"Hold", L"Total", L"Nada", L"Jac", L"Two", L"3 o", L"Str", L"Flu", L"Ful", L"4 5",
      L"4 2", L"4 A", L"Str", L"Roy"}},
    {DoubleDoubleBonus,
     {L"Return", L"Hold", L"Total", L"Nada", L"JAC", L"TWO", L"3 O", L"STR", L"FLU", L"FUL", L"4 5",
      L"4 2", L"4 A", L"4 2", L"4 A", L"STR", L"ROY"}},
};

// The different texts of a column that have the most characters.
std::set<std::wstring> LongestTexts(const std::vector<SeenRow>& rows, std::size_t column) {
    std::set<std::wstring> texts;
    for (const SeenRow& row : rows) {
        const std::wstring& text = row[column];
        if (!texts.empty() && text.size() > texts.begin()->size()) {
            texts.clear();
        }
        if (texts.empty() || text.size() == texts.begin()->size()) {
            texts.insert(text);
        }
    }
    return texts;
}

} // namespace

TEST_F(Details, HaveTheColumnsOfEachGameAndCutNone) {
    const RunningProgram program = StartSeeded(1, 0);
    for (const GameColumns& expected : gameColumns) {
        SCOPED_TRACE(expected.game);
        Do(program, IDM_FIRST_GAME + expected.game);
        Do(program, IDC_DEAL_DRAW);
        const HWND dialog = OpenDialogWith(program, IDM_HAND_DETAILS, IDC_DETAILS_LIST);
        const HWND list = WaitForDetails(program);
        const std::vector<SeenColumn> columns = ReadColumns(program, list);
        std::vector<std::wstring> headers;
        for (const SeenColumn& column : columns) {
            headers.push_back(column.header);
        }
        EXPECT_EQ(headers, expected.headers);
        const std::vector<SeenRow> rows = ReadRows(program, list, static_cast<int>(columns.size()));
        for (std::size_t i = 0; i < columns.size(); ++i) {
            // The platform left-aligns the first column.
            EXPECT_EQ(columns[i].alignment, i == 0 ? LVCFMT_LEFT : LVCFMT_CENTER);
            int widest = columns[i].textWidth;
            for (const std::wstring& text : LongestTexts(rows, i)) {
                widest = std::max(widest, WidthInList(program, list, text));
            }
            EXPECT_GT(columns[i].width, widest) << "column " << i;
        }
        EXPECT_FALSE(Scrolls(list)) << "on a screen that has the room";
        if (expected.game == JacksOrBetter || expected.game == DoubleDoubleBonus) {
            EXPECT_TRUE(
                LooksAsKept(program, dialog, L"details-" + std::to_wstring(columns.size())));
        }
        LeaveDialog(dialog, IDOK);
    }
}

namespace {

std::int32_t DrawsOf(const GameDescriptor& game, HoldPattern held) {
    int cards = 0;
    for (int i = 0; i < static_cast<int>(HandSize); ++i) {
        cards += held >> i & 1;
    }
    return Choose(game.deckSize - static_cast<std::int32_t>(HandSize),
                  static_cast<std::int32_t>(HandSize) - cards);
}

// All cells of the list against a search of our own; rows of equal return in any order.
void ExpectDetails(const RunningProgram& program, HWND list, const CardRecord* hand,
                   const GameDescriptor& game, std::int32_t bet) {
    FindBestHold(hand, game, bet);
    const int columns = game.rowCount + 4;
    const std::vector<SeenRow> rows = ReadRows(program, list, columns);
    const std::vector<int> data = ReadRowData(program, list);
    ASSERT_EQ(rows.size(), 32U);
    std::array<bool, 32> seen{};
    double above = 1e300;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const auto index = static_cast<std::size_t>(data[row]);
        ASSERT_LT(index, 32U);
        EXPECT_FALSE(seen[index]);
        seen[index] = true;
        const HoldResult& result = resultTable[index];
        EXPECT_LE(result.expectedReturn, above) << "row " << row << " is out of order";
        above = result.expectedReturn;

        wchar_t text[64];
        std::swprintf(text, 64, L"%05.4f", result.expectedReturn);
        EXPECT_EQ(rows[row][ReturnColumn], text);
        std::wstring letters;
        for (std::size_t i = 0; i < HandSize; ++i) {
            const Card card = hand[i].code;
            letters += (result.pattern >> i & 1) == 0 ? L'_'
                       : SuitOf(card) == JokerSuit    ? L'W'
                                                      : RankLetters[RankOf(card)];
        }
        EXPECT_EQ(rows[row][HoldColumn], letters + L" ");
        EXPECT_EQ(rows[row][TotalColumn], std::to_wstring(DrawsOf(game, result.pattern)));
        const auto rowCount = static_cast<std::size_t>(game.rowCount);
        EXPECT_EQ(rows[row][NadaColumn], std::to_wstring(result.counts[rowCount]));
        for (std::size_t rank = 0; rank < rowCount; ++rank) {
            EXPECT_EQ(rows[row][rowCount + 3 - rank], std::to_wstring(result.counts[rank]));
        }
    }
}

} // namespace

TEST_F(Details, CoverTheWindowWithTheCloseButtonBelow) {
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenDialogWith(program, IDM_HAND_DETAILS, IDC_DETAILS_LIST);
    WaitForDetails(program);
    RECT whole;
    RECT main;
    GetWindowRect(dialog, &whole);
    GetWindowRect(program.window, &main);
    RECT both;
    UnionRect(&both, &whole, &main);
    EXPECT_TRUE(EqualRect(&whole, &both)) << "the dialog does not cover the window";
    RECT client;
    GetClientRect(dialog, &client);
    const RECT list = PlaceIn(dialog, ListOf(dialog, IDC_DETAILS_LIST));
    const RECT wantedList = {0, 0, client.right, client.bottom - 26};
    EXPECT_TRUE(EqualRect(&list, &wantedList));
    const RECT close = PlaceIn(dialog, GetDlgItem(dialog, IDOK));
    const RECT wantedClose = {1, client.bottom - 24, client.right - 1, client.bottom - 2};
    EXPECT_TRUE(EqualRect(&close, &wantedClose));
    EXPECT_EQ(FieldText(dialog, IDOK), L"&Close");
    LeaveDialog(dialog, IDOK);
}

// The widest list on the narrowest window.
TEST_F(Details, HaveAllColumnsAndRowsWithinReachInTheDialogsFont) {
    SetSetting(L"Lastgame", DoubleDoubleBonus);
    const RunningProgram program = StartSeeded(1, 0);
    Do(program, IDC_DEAL_DRAW);
    const HWND dialog = OpenDialogWith(program, IDM_HAND_DETAILS, IDC_DETAILS_LIST);
    const HWND list = WaitForDetails(program);
    EXPECT_EQ(SendMessageW(list, WM_GETFONT, 0, 0), SendMessageW(dialog, WM_GETFONT, 0, 0));
    int width = 0;
    for (const SeenColumn& column : ReadColumns(program, list)) {
        width += column.width;
    }
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    RECT client;
    GetClientRect(list, &client);
    SendMessageW(list, LVM_SCROLL, static_cast<WPARAM>(width), 0);
    EXPECT_LE(PlaceIn(list, header).left + width, client.right) << "the last column stays outside";
    SendMessageW(list, LVM_ENSUREVISIBLE, 31, FALSE);
    const LRESULT top = SendMessageW(list, LVM_GETTOPINDEX, 0, 0);
    EXPECT_GT(top + SendMessageW(list, LVM_GETCOUNTPERPAGE, 0, 0), 31) << "the last row does";
    LeaveDialog(dialog, IDOK);
}

// The count-up has the lock and would keep it for half a minute.
TEST_F(Details, OpenAtOnceDuringALongCountUp) {
    const RunningProgram program = StartCountUp(1000, 30);
    Post(program, IDM_HAND_DETAILS);
    LeaveDialog(GetParent(WaitForDetails(program)), IDOK);
    EXPECT_TRUE(ShowsCredits(program, 1095));
}

TEST_F(Details, CloseByTheRealKeyboardAndByCancel) {
    const RunningProgram program = StartSeeded(1, 0);
    for (const wchar_t* key : {L"Escape", L"Return"}) {
        const HWND dialog = OpenDialogWith(program, IDM_HAND_DETAILS, IDC_DETAILS_LIST);
        WaitForDetails(program);
        PressKeysIn(dialog, key);
        EXPECT_TRUE(Eventually([&] { return !IsWindow(dialog); })) << "key";
    }
    LeaveDialog(OpenDialogWith(program, IDM_HAND_DETAILS, IDC_DETAILS_LIST), IDCANCEL);
}

TEST_F(Details, ListAllHoldsBestFirst) {
    for (int id = 0; id < GameCount; ++id) {
        SCOPED_TRACE(id);
        SetSetting(L"Lastgame", static_cast<std::uint32_t>(id));
        Table table;
        ForetellStart(table, 3);
        const RunningProgram program = StartSeeded(3, 0);
        Do(program, IDC_DEAL_DRAW);
        ForetellDeal(table);
        Post(program, IDM_HAND_DETAILS);
        ExpectDetails(program, WaitForDetails(program), table.hand.cards.data(), table.game,
                      table.bet);
        CloseProgram(program);
    }
}

TEST_F(Details, ShowOneDrawForHoldingAll) {
    // A dealt flush, row 4 of nine, whose column is the fifth from the left of them.
    Table table;
    const std::uint32_t seed = FindSeed([](const Table& dealt) { return dealt.rank == 4U; });
    ForetellStart(table, seed);
    const RunningProgram program = StartSeeded(seed, 0);
    Do(program, IDC_DEAL_DRAW);
    Post(program, IDM_HAND_DETAILS);
    const HWND list = WaitForDetails(program);
    const SeenRow best = ReadRows(program, list, 13).front();
    EXPECT_EQ(best[ReturnColumn], L"30.0000");
    EXPECT_EQ(best[TotalColumn], L"1");
    for (std::size_t column = NadaColumn; column < best.size(); ++column) {
        EXPECT_EQ(best[column], column == 8 ? L"1" : L"0") << column;
    }
    LeaveDialog(GetParent(list), IDOK);
}

TEST_F(Details, ShowOneDrawThatPaysNothingForHoldingAllOfNothing) {
    const std::uint32_t seed = FindSeed([](const Table& dealt) { return dealt.rank == 9U; });
    const RunningProgram program = StartSeeded(seed, 0);
    Do(program, IDC_DEAL_DRAW);
    Post(program, IDM_HAND_DETAILS);
    const HWND list = WaitForDetails(program);
    int holdingAll = 0;
    for (const SeenRow& row : ReadRows(program, list, 13)) {
        if (row[HoldColumn].find(L'_') == std::wstring::npos) {
            ++holdingAll;
            EXPECT_EQ(row[ReturnColumn], L"0.0000");
            EXPECT_EQ(row[TotalColumn], L"1");
            EXPECT_EQ(row[NadaColumn], L"1");
            EXPECT_EQ(std::count(row.begin() + NadaColumn + 1, row.end(), L"0"), 9);
        }
    }
    EXPECT_EQ(holdingAll, 1);
    LeaveDialog(GetParent(list), IDOK);
}

TEST_F(Details, ShowAWForTheJokerAndTotalsOfItsDeck) {
    SetSetting(L"Lastgame", JokerWild);
    Table table;
    const std::uint32_t seed = FindSeed([](const Table& dealt) {
        return std::any_of(dealt.hand.cards.begin(), dealt.hand.cards.end(),
                           [](const CardRecord& card) { return card.code == JokerCard; });
    });
    ForetellStart(table, seed);
    const RunningProgram program = StartSeeded(seed, 0);
    Do(program, IDC_DEAL_DRAW);
    ForetellDeal(table);
    Post(program, IDM_HAND_DETAILS);
    const HWND list = WaitForDetails(program);
    int withJoker = 0;
    for (const SeenRow& row : ReadRows(program, list, 3)) {
        withJoker += row[HoldColumn].find(L'W') != std::wstring::npos ? 1 : 0;
        if (row[HoldColumn] == L"_____ ") {
            EXPECT_EQ(row[TotalColumn], L"1712304");
        }
    }
    EXPECT_EQ(withJoker, 16);
    ExpectDetails(program, list, table.hand.cards.data(), table.game, table.bet);
    LeaveDialog(GetParent(list), IDOK);
}

TEST_F(Details, OpenBeforeAnyHandAndAfterEveryChangeOfGame) {
    Table table;
    ForetellStart(table, 1);
    const RunningProgram program = StartSeeded(1, 0);
    for (int id = 0; id < GameCount; ++id) {
        SCOPED_TRACE(id);
        if (id != JacksOrBetter) {
            Do(program, IDM_FIRST_GAME + id);
            PickGame(table, id);
        }
        Post(program, IDM_HAND_DETAILS);
        const HWND list = WaitForDetails(program);
        const std::vector<SeenRow> rows = ReadRows(program, list, 2);
        const auto best =
            static_cast<std::size_t>(FindBestHold(table.hand.cards.data(), table.game, table.bet));
        EXPECT_EQ(rows.front()[0], FormatReal(L"%05.4f", resultTable[best].expectedReturn));
        LeaveDialog(GetParent(list), IDOK);

        // And after a hand that the change of game took away.
        Do(program, IDC_DEAL_DRAW);
        ForetellDeal(table);
        Do(program, IDM_FIRST_GAME + id);
        PickGame(table, id);
        Post(program, IDM_HAND_DETAILS);
        LeaveDialog(GetParent(WaitForDetails(program)), IDOK);
    }
    CloseProgram(program);
}
