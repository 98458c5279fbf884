#include <gmock/gmock.h>

#include "core/game_tables.h"
#include "tests/window/dialogs/analysis_run.h"
#include "tests/window/dialogs/kept_pictures.h"
#include "tests/window/dialogs/played_hand.h"
#include "ui/resource.h"

// The paytable editor, from typed digits to the store.

namespace {

class Editor : public WindowTest {};

constexpr wchar_t EditorTitle[] = L"Change Paytable";
constexpr wchar_t OneCoin[] = L"JACKS OR BETTER\\1";
constexpr wchar_t FiveCoins[] = L"JACKS OR BETTER\\5";
constexpr int Full = 3;    // the row of the full house
constexpr int LastRow = 8; // jacks or better

int OneCoinId(int row) {
    return IDC_FIRST_ONE_COIN + row;
}
int FiveCoinsId(int row) {
    return IDC_FIRST_FIVE_COINS + row;
}

HWND OpenEditor(const RunningProgram& program) {
    return OpenDialog(program, IDM_CHANGE_PAYTABLE, EditorTitle);
}

// Gives the field the focus, all of it selected, as the Tab key does.
void FocusField(const RunningProgram& program, HWND dialog, int id) {
    const HWND field = GetDlgItem(dialog, id);
    PostMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(field), TRUE);
    EXPECT_TRUE(Eventually([&] { return FocusOf(program) == field; })) << id;
}

// Types into a field after emptying it.
void TypeInto(const RunningProgram& program, HWND dialog, int id, const std::wstring& text) {
    FocusField(program, dialog, id);
    const HWND field = GetDlgItem(dialog, id);
    SendMessageW(field, EM_SETSEL, 0, -1);
    if (text.empty()) {
        PostMessageW(field, WM_CHAR, L'\b', 1);
    }
    for (const wchar_t character : text) {
        PostMessageW(field, WM_CHAR, static_cast<WPARAM>(character), 1);
    }
    EXPECT_TRUE(Eventually([&] { return TextOf(field) == text; })) << TextOf(field).size();
}

bool NothingStored() {
    HKEY key = nullptr;
    DWORD values = 0;
    for (const wchar_t* column :
         {L"TessarCE\\JACKS OR BETTER\\1", L"TessarCE\\JACKS OR BETTER\\5"}) {
        if (RegOpenKeyExW(HKEY_CURRENT_USER, column, 0, KEY_READ, &key) == ERROR_SUCCESS) {
            DWORD count = 0;
            RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count,
                             nullptr, nullptr, nullptr, nullptr);
            RegCloseKey(key);
            values += count;
        }
    }
    return values == 0;
}

} // namespace

TEST_F(Editor, FillsTheFiveCoinFieldWhenTheFocusGoes) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenEditor(program);
    TypeInto(program, dialog, OneCoinId(Full), L"3");
    EXPECT_EQ(FieldText(dialog, FiveCoinsId(Full)), L"45");
    FocusField(program, dialog, OneCoinId(Full + 1));
    EXPECT_TRUE(Eventually([&] { return FieldText(dialog, FiveCoinsId(Full)) == L"15"; }));

    // The five-coin field can be overwritten, and carries nothing.
    TypeInto(program, dialog, FiveCoinsId(Full), L"77");
    FocusField(program, dialog, OneCoinId(0));
    FocusField(program, dialog, OneCoinId(1));
    EXPECT_EQ(FieldText(dialog, FiveCoinsId(Full)), L"77");
    EXPECT_EQ(FieldText(dialog, OneCoinId(Full)), L"3");
    LeaveDialog(dialog, IDOK);
    EXPECT_EQ(Setting(L"3", OneCoin), 3U);
    EXPECT_EQ(Setting(L"3", FiveCoins), 77U);
    EXPECT_EQ(Setting(L"2", OneCoin), std::nullopt);
}

TEST_F(Editor, CarriesTheLastEditWhenEnterAccepts) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenEditor(program);
    TypeInto(program, dialog, OneCoinId(Full), L"3");
    PressKeysIn(dialog, L"Return");
    EXPECT_TRUE(Eventually([&] { return !IsWindow(dialog); }));
    Settle(program);
    EXPECT_EQ(Setting(L"3", OneCoin), 3U);
    EXPECT_EQ(Setting(L"3", FiveCoins), 15U);
}

TEST_F(Editor, TakesFieldsThatWereSetWithoutTheFocusAsTheyStand) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenEditor(program);
    const auto set = [&](int id, const wchar_t* text) {
        SendMessageW(GetDlgItem(dialog, id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    };
    set(OneCoinId(Full), L"3");
    set(FiveCoinsId(Full), L"77");
    LeaveDialog(dialog, IDOK);
    EXPECT_EQ(Setting(L"3", OneCoin), 3U);
    EXPECT_EQ(Setting(L"3", FiveCoins), 77U);
}

TEST_F(Editor, CarriesNothingBeforeTheFirstEdit) {
    SetPayouts(L"JACKS OR BETTER", true, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenEditor(program);
    for (const int row : {1, 0, LastRow, 2}) {
        FocusField(program, dialog, OneCoinId(row));
    }
    for (int row = 0; row <= LastRow; ++row) {
        EXPECT_EQ(FieldText(dialog, FiveCoinsId(row)), std::to_wstring(row + 1));
    }
    LeaveDialog(dialog, IDOK);
    for (int row = 0; row <= LastRow; ++row) {
        EXPECT_EQ(Setting(std::to_wstring(row).c_str(), OneCoin), std::nullopt);
        const auto five = static_cast<std::uint32_t>(row + 1);
        EXPECT_EQ(Setting(std::to_wstring(row).c_str(), FiveCoins), five);
    }
}

TEST_F(Editor, TakesEmptyAndLetteredFieldsForZero) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenEditor(program);
    TypeInto(program, dialog, OneCoinId(0), L"");
    TypeInto(program, dialog, FiveCoinsId(1), L"abc");
    TypeInto(program, dialog, FiveCoinsId(2), L"12x");
    LeaveDialog(dialog, IDOK);
    EXPECT_EQ(Setting(L"0", OneCoin), 0U);
    EXPECT_EQ(Setting(L"0", FiveCoins), 0U) << "five times nothing";
    EXPECT_EQ(Setting(L"1", FiveCoins), 0U);
    EXPECT_EQ(Setting(L"1", OneCoin), std::nullopt);
    CloseProgram(program);

    const RunningProgram again = StartProgram();
    const HWND reopened = OpenEditor(again);
    EXPECT_EQ(FieldText(reopened, OneCoinId(0)), L"0");
    EXPECT_EQ(FieldText(reopened, FiveCoinsId(1)), L"0");
    LeaveDialog(reopened, IDCANCEL);
}

TEST_F(Editor, KeepsTheOldPayoutForNumbersThatDoNotFitOrAreNegativeWhenSigned) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenEditor(program);
    TypeInto(program, dialog, FiveCoinsId(0), L"4294967295");
    TypeInto(program, dialog, FiveCoinsId(1), L"2147483648");
    TypeInto(program, dialog, FiveCoinsId(2), L"2147483647");
    TypeInto(program, dialog, FiveCoinsId(3), L"4294967296");
    TypeInto(program, dialog, OneCoinId(4), L"99999999999999999999");
    TypeInto(program, dialog, OneCoinId(5), L"4294967295");
    LeaveDialog(dialog, IDOK);
    EXPECT_EQ(Setting(L"0", FiveCoins), std::nullopt);
    EXPECT_EQ(Setting(L"1", FiveCoins), std::nullopt);
    EXPECT_EQ(Setting(L"2", FiveCoins), 2147483647U);
    EXPECT_EQ(Setting(L"3", FiveCoins), std::nullopt);
    EXPECT_EQ(Setting(L"4", OneCoin), std::nullopt);
    EXPECT_EQ(Setting(L"4", FiveCoins), std::nullopt);
    EXPECT_EQ(Setting(L"5", OneCoin), std::nullopt);
    EXPECT_EQ(Setting(L"5", FiveCoins), std::nullopt);
    const HWND reopened = OpenEditor(program);
    EXPECT_EQ(FieldText(reopened, FiveCoinsId(0)), L"4000");
    EXPECT_EQ(FieldText(reopened, FiveCoinsId(1)), L"250");
    EXPECT_EQ(FieldText(reopened, FiveCoinsId(3)), L"45");
    EXPECT_EQ(FieldText(reopened, OneCoinId(4)), L"6");
    EXPECT_EQ(FieldText(reopened, FiveCoinsId(2)), L"2147483647");
    LeaveDialog(reopened, IDCANCEL);
}

TEST_F(Editor, ChangesNothingOnCancel) {
    const RunningProgram program = StartProgram();
    for (const bool escape : {false, true}) {
        const HWND dialog = OpenEditor(program);
        TypeInto(program, dialog, OneCoinId(Full), L"3");
        TypeInto(program, dialog, FiveCoinsId(0), L"1");
        if (escape) {
            PressKeysIn(dialog, L"Escape");
            EXPECT_TRUE(Eventually([&] { return !IsWindow(dialog); }));
        } else {
            LeaveDialog(dialog, IDCANCEL);
        }
        EXPECT_TRUE(NothingStored());
        const HWND reopened = OpenEditor(program);
        EXPECT_EQ(FieldText(reopened, OneCoinId(Full)), L"9");
        EXPECT_EQ(FieldText(reopened, FiveCoinsId(Full)), L"45");
        EXPECT_EQ(FieldText(reopened, FiveCoinsId(0)), L"4000");
        LeaveDialog(reopened, IDCANCEL);
    }
}

TEST_F(Editor, LeavesNothingStoredAfterTheDefaults) {
    SetPayouts(L"JACKS OR BETTER", false, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    SetPayouts(L"JACKS OR BETTER", true, {9, 8, 7, 6, 5, 4, 3, 2, 1});
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenEditor(program);
    EXPECT_EQ(FieldText(dialog, OneCoinId(LastRow)), L"9");
    EXPECT_EQ(FieldText(dialog, FiveCoinsId(0)), L"9");
    PressButton(dialog, IDC_DEFAULTS);
    EXPECT_TRUE(Eventually([&] { return FieldText(dialog, FiveCoinsId(LastRow)) == L"5"; }));
    EXPECT_EQ(FieldText(dialog, OneCoinId(0)), L"250");
    EXPECT_EQ(FieldText(dialog, FiveCoinsId(0)), L"4000");
    EXPECT_EQ(Setting(L"0", OneCoin), 1U) << "nothing is saved before OK";
    LeaveDialog(dialog, IDOK);
    EXPECT_TRUE(NothingStored());
}

TEST_F(Editor, TakesDefaultsAfterAnEditThatIsNotYetCarried) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenEditor(program);
    TypeInto(program, dialog, OneCoinId(Full), L"3");
    PressButton(dialog, IDC_DEFAULTS);
    EXPECT_TRUE(Eventually([&] { return FieldText(dialog, OneCoinId(Full)) == L"9"; }));
    LeaveDialog(dialog, IDOK);
    EXPECT_TRUE(NothingStored());
}

TEST_F(Editor, ServesPlayDetailsAndAnalysisAtOnce) {
    Table table;
    ForetellStart(table, 1);
    const RunningProgram program = StartSeeded(1, 0);
    const HWND dialog = OpenEditor(program);
    TypeInto(program, dialog, FiveCoinsId(LastRow), L"60");
    TypeInto(program, dialog, FiveCoinsId(0), L"1");
    LeaveDialog(dialog, IDOK);

    LoadGame(table.game, JacksOrBetter);
    EXPECT_TRUE(ShowsRow(program, table.game, LastRow, 5, false));
    EXPECT_TRUE(ShowsRow(program, table.game, 0, 5, false));
    ASSERT_EQ(table.game.fiveCoins[LastRow], 60);

    Do(program, IDC_DEAL_DRAW);
    ForetellDeal(table);
    Post(program, IDM_HAND_DETAILS);
    const HWND list = WaitForDetails(program);
    const std::int32_t best = FindBestHold(table.hand.cards.data(), table.game, table.bet);
    EXPECT_EQ(ReadRows(program, list, 1).front().front(),
              Formatted(L"%05.4f", resultTable[static_cast<std::size_t>(best)].expectedReturn));
    LeaveDialog(GetParent(list), IDOK);

    SetTextSetting(L"Return", L"here", L"JACKS OR BETTER\\1-250-125-45-30-20-15-10-60");
    const HWND analysis = OpenAnalysis(program, 10);
    EXPECT_EQ(FieldText(analysis, IDC_ANALYSIS_TOTAL), L"here");
    LeaveDialog(analysis, IDOK);
}

TEST_F(Editor, PaysByTheEditedPaytable) {
    // A hand that is dealt as jacks or better, and held so.
    Table dealt;
    const std::uint32_t seed = FindSeed([](const Table& table) { return table.rank == 8U; });
    ForetellStart(dealt, seed);
    ForetellDeal(dealt);
    const RunningProgram program = StartSeeded(seed, 0);
    Do(program, IDM_NO_TRAINING);
    const HWND dialog = OpenEditor(program);
    TypeInto(program, dialog, FiveCoinsId(LastRow), L"123");
    LeaveDialog(dialog, IDOK);
    Do(program, IDC_DEAL_DRAW);
    TypeHolds(program, 0, HoldAll);
    Settle(program);
    Do(program, IDC_DEAL_DRAW);
    CloseProgram(program);
    EXPECT_EQ(Setting(L"CoinsOut"), 123U);
    EXPECT_EQ(Setting(L"Credits"), 100U - 5U + 123U);
}

TEST_F(Editor, IsAlsoForTheOtherGames) {
    const RunningProgram program = StartProgram();
    Do(program, IDM_FIRST_GAME + JokerWild);
    const HWND dialog = OpenEditor(program);
    TypeInto(program, dialog, OneCoinId(10), L"2");
    LeaveDialog(dialog, IDOK);
    EXPECT_EQ(Setting(L"10", L"JOKER WILD\\1"), 2U);
    EXPECT_EQ(Setting(L"10", L"JOKER WILD\\5"), 10U);
    EXPECT_TRUE(NothingStored()) << "of Jacks or Better";
}

TEST_F(Editor, GoesDownTheOneCoinColumnThenTheOtherByTab) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenEditor(program);
    std::vector<int> order;
    for (int row = 0; row <= LastRow; ++row) {
        order.push_back(OneCoinId(row));
    }
    for (int row = 0; row <= LastRow; ++row) {
        order.push_back(FiveCoinsId(row));
    }
    order.insert(order.end(), {IDC_DEFAULTS, IDCANCEL, IDOK});
    EXPECT_TRUE(Eventually([&] { return GetDlgCtrlID(FocusOf(program)) == order.front(); }));
    for (std::size_t i = 0; i < order.size(); ++i) {
        const HWND next = GetNextDlgTabItem(dialog, GetDlgItem(dialog, order[i]), FALSE);
        EXPECT_EQ(GetDlgCtrlID(next), order[(i + 1) % order.size()]);
    }
    PressKeysIn(dialog, L"Tab Tab");
    EXPECT_TRUE(Eventually([&] { return GetDlgCtrlID(FocusOf(program)) == OneCoinId(2); }));
    LeaveDialog(dialog, IDCANCEL);
}

TEST_F(Editor, ShowsEveryFieldAndButtonInItsPlace) {
    const RunningProgram program = StartProgram();
    const int s = program.scale;
    for (const GameId game : {JokerWild, DoubleDoubleBonus}) {
        SCOPED_TRACE(game);
        Do(program, IDM_FIRST_GAME + game);
        const HWND dialog = OpenEditor(program);
        RECT client;
        GetClientRect(dialog, &client);
        const int third = static_cast<int>(client.right) / 3;
        const int half = static_cast<int>(client.right) / 2;
        const int quarter = half / 2;
        const auto expectPlace = [&](int id, int left, int top, int width, int height) {
            const RECT place = PlaceIn(dialog, GetDlgItem(dialog, id));
            EXPECT_EQ(place.left, left) << id;
            EXPECT_EQ(place.top, top) << id;
            EXPECT_EQ(place.right - place.left, width) << id;
            EXPECT_EQ(place.bottom - place.top, height) << id;
        };
        const int rows = game == JokerWild ? 11 : 13;
        for (int row = 0; row < rows; ++row) {
            const int top = (18 + 15 * row) * s;
            const int width = quarter - 4 * s;
            expectPlace(OneCoinId(row), half + s, top, width, 15 * s);
            expectPlace(FiveCoinsId(row), half + quarter + s, top, width, 15 * s);
        }
        EXPECT_EQ(GetDlgItem(dialog, OneCoinId(rows)), nullptr);
        if (rows == 13) {
            EXPECT_EQ(PlaceIn(dialog, GetDlgItem(dialog, OneCoinId(12))).top, 198 * s);
        }
        const int top = static_cast<int>(client.bottom) - 25 * s;
        expectPlace(IDC_DEFAULTS, 0, top, third, 24 * s);
        expectPlace(IDCANCEL, third, top, third, 24 * s);
        expectPlace(IDOK, 2 * third, top, third, 24 * s);
        LeaveDialog(dialog, IDCANCEL);
    }
}

TEST_F(Editor, ShowsEveryRowOfEveryGame) {
    const RunningProgram program = StartProgram();
    for (int game = 0; game < GameCount; ++game) {
        SCOPED_TRACE(game);
        Do(program, IDM_FIRST_GAME + game);
        const HWND dialog = OpenEditor(program);
        EXPECT_EQ(FieldText(dialog, IDOK), L"OK");
        EXPECT_EQ(FieldText(dialog, IDC_DEFAULTS), L"Defaults");
        EXPECT_EQ(FieldText(dialog, IDCANCEL), L"Cancel");
        RECT client;
        GetClientRect(dialog, &client);
        RECT screen = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        RECT whole;
        GetWindowRect(dialog, &whole);
        RECT both;
        IntersectRect(&both, &whole, &screen);
        EXPECT_TRUE(EqualRect(&both, &whole)) << "the dialog leaves the screen";
        const RECT buttons = PlaceIn(dialog, GetDlgItem(dialog, IDOK));
        EXPECT_LE(buttons.bottom, client.bottom);
        const int rows = gameTables[static_cast<std::size_t>(game)].rowCount;
        LONG bottom = 0;
        for (int row = 0; row < rows; ++row) {
            const RECT one = PlaceIn(dialog, GetDlgItem(dialog, OneCoinId(row)));
            const RECT five = PlaceIn(dialog, GetDlgItem(dialog, FiveCoinsId(row)));
            EXPECT_GE(one.top, bottom) << "row " << row;
            EXPECT_EQ(one.top, five.top);
            EXPECT_LT(one.right, five.left);
            EXPECT_LE(five.right, client.right);
            EXPECT_GE(one.bottom - one.top, 15 * program.scale);
            bottom = one.bottom;
            EXPECT_TRUE(IsWindowVisible(GetDlgItem(dialog, OneCoinId(row))));
        }
        EXPECT_LE(bottom, buttons.top) << "the rows run into the buttons";
        EXPECT_EQ(GetDlgItem(dialog, OneCoinId(rows)), nullptr);
        if (game == JacksOrBetter || game == DoubleDoubleBonus) {
            EXPECT_TRUE(LooksAsKept(program, dialog, L"editor-" + std::to_wstring(rows)));
        }
        LeaveDialog(dialog, IDCANCEL);
    }
}
