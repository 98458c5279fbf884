#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "core/game_tables.h"
#include "tests/window/forecast.h"
#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "ui/resource.h"

namespace {

class Menus : public WindowTest {};

struct Item {
    UINT id; // 0 for a separator
    const wchar_t* text;
};

const std::vector<Item> mainItems = {
    {IDM_SESSION_STATS, L"Session Stats..."},
    {IDM_HAND_DETAILS, L"Hand Details..."},
    {0, L""},
    {IDM_HAND_ANALYSIS, L"Hand Analysis..."},
    {IDM_GAME_ANALYSIS, L"Game Analysis..."},
    {0, L""},
    {IDM_USE_SOUND, L"Use Sound"},
    {IDM_NO_DRAW, L"No Draw"},
    {0, L""},
    {IDM_NO_TRAINING, L"No Training"},
    {IDM_WARN, L"Warn"},
    {IDM_AUTOHOLD, L"Autohold"},
    {0, L""},
    {IDM_CHANGE_PAYTABLE, L"Change Paytable..."},
    {IDM_DEAL_SPEED, L"Deal Speed..."},
    {IDM_RESET_CREDITS, L"Reset Credits to 100"},
    {0, L""},
    {IDM_EXIT, L"Exit Tessarin"},
};

const std::vector<Item> speedItems = {
    {501, L"Slow"},
    {502, L"Medium"},
    {504, L"Fast"},
};

std::vector<Item> GameItems() {
    std::vector<Item> items;
    for (const GameTable& game : gameTables) {
        items.push_back({IDM_FIRST_GAME + static_cast<UINT>(items.size()), game.title});
    }
    return items;
}

void ExpectItems(const SeenMenu& menu, const std::vector<Item>& expected) {
    ASSERT_EQ(menu.count, static_cast<int>(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const SeenMenuItem& item = menu.items[i];
        SCOPED_TRACE(i);
        EXPECT_EQ(item.separator, expected[i].id == 0);
        EXPECT_EQ(item.id, expected[i].id);
        EXPECT_STREQ(item.text, expected[i].text);
        EXPECT_TRUE(item.enabled || item.separator);
    }
}

std::vector<UINT> Checked(const SeenMenu& menu) {
    std::vector<UINT> ids;
    for (int i = 0; i < menu.count; ++i) {
        if (menu.items[i].checked) {
            ids.push_back(menu.items[i].id);
        }
    }
    return ids;
}

std::vector<UINT> CheckedIn(const RunningProgram& program, int command) {
    const std::vector<UINT> checked = Checked(OpenMenu(program, command));
    CloseMenu(program);
    return checked;
}

// Chooses an item of the open menu with the real pointer.
void PressItem(const RunningProgram& program, const SeenMenu& menu, UINT id) {
    for (int i = 0; i < menu.count; ++i) {
        if (menu.items[i].id == id) {
            const RECT& place = menu.items[i].place;
            POINT middle = {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
            ScreenToClient(program.window, &middle);
            PressPointer(program, static_cast<int>(middle.x), static_cast<int>(middle.y));
            return;
        }
    }
    FAIL() << "no item " << id;
}

RECT PlaceOfMenu() {
    RECT place = {};
    GetWindowRect(FindWindowW(L"#32768", nullptr), &place);
    return place;
}

} // namespace

TEST_F(Menus, MainMenuHasItsItemsInOrder) {
    const RunningProgram program = StartSeeded(1, 0);
    ExpectItems(OpenMenu(program, IDC_MENU), mainItems);
}

TEST_F(Menus, DealSpeedMenuHasItsItemsInOrder) {
    const RunningProgram program = StartSeeded(1, 0);
    ExpectItems(OpenMenu(program, IDM_DEAL_SPEED), speedItems);
}

TEST_F(Menus, GamesMenuHasEveryTitleInOrder) {
    const RunningProgram program = StartSeeded(1, 0);
    ExpectItems(OpenMenu(program, IDC_GAMES), GameItems());
}

TEST_F(Menus, EndAtTheLeftEdgeOfTheButtonColumn) {
    const RunningProgram program = StartSeeded(1, 0);
    for (const int command : {IDC_MENU, IDC_GAMES, IDM_DEAL_SPEED}) {
        OpenMenu(program, command);
        POINT corner = {192 * program.scale, 15 * program.scale};
        ClientToScreen(program.window, &corner);
        const RECT place = PlaceOfMenu();
        EXPECT_EQ(place.right, corner.x);
        EXPECT_EQ(place.top, corner.y);
        CloseMenu(program);
    }
}

TEST_F(Menus, OpenFromTheirButtonsAndTakeARealTap) {
    const RunningProgram program = StartSeeded(1, 0);
    const auto press = [&](const Area& area) {
        PressPointer(program, (area.left + area.right) / 2, (area.top + area.bottom) / 2);
    };
    press(program.layout.gamesButton);
    const SeenMenu games = WaitForMenu(program, 0);
    PressItem(program, games, 10003);
    EXPECT_TRUE(
        Eventually([&] { return ControlText(program, IDC_STATUS) == L"DOUBLE DOUBLE JACKPOT"; }));
    EXPECT_TRUE(Eventually([&] { return FocusOf(program) == program.window; }));

    press(program.layout.menuButton);
    const SeenMenu main = WaitForMenu(program, games.shown);
    PressItem(program, main, IDM_DEAL_SPEED);
    const SeenMenu speeds = WaitForMenu(program, main.shown);
    ExpectItems(speeds, speedItems);
    PressItem(program, speeds, IDM_SLOW);
    EXPECT_TRUE(Eventually([&] { return !MenuIsOpen(program); }));
    EXPECT_EQ(CheckedIn(program, IDM_DEAL_SPEED), std::vector<UINT>{IDM_SLOW});
}

TEST_F(Menus, TakeRealKeys) {
    const RunningProgram program = StartSeeded(1, 0);
    PressKeys(program, L"m");
    const SeenMenu menu = WaitForMenu(program, 0);
    PressKeys(program, L"Up Return"); // the last item: Exit
    ASSERT_EQ(menu.items[menu.count - 1].id, static_cast<UINT>(IDM_EXIT));
    EXPECT_EQ(ExitCodeOf(program.process), 0U);
}

TEST_F(Menus, SoundAndNoDrawAreCheckedWhileOn) {
    const RunningProgram program = StartSeeded(1, 0);
    using Ids = std::vector<UINT>;
    EXPECT_EQ(CheckedIn(program, IDC_MENU), (Ids{IDM_USE_SOUND, IDM_WARN}));
    Do(program, IDM_USE_SOUND);
    EXPECT_EQ(CheckedIn(program, IDC_MENU), (Ids{IDM_WARN}));
    Do(program, IDM_NO_DRAW);
    EXPECT_EQ(CheckedIn(program, IDC_MENU), (Ids{IDM_NO_DRAW, IDM_WARN}));
    Do(program, IDM_USE_SOUND);
    Do(program, IDM_NO_DRAW);
    EXPECT_EQ(CheckedIn(program, IDC_MENU), (Ids{IDM_USE_SOUND, IDM_WARN}));
}

TEST_F(Menus, OneTrainingModeIsChecked) {
    SetSetting(L"Sound", 0);
    const RunningProgram program = StartSeeded(1, 0);
    for (const UINT mode : {IDM_NO_TRAINING, IDM_AUTOHOLD, IDM_WARN}) {
        Do(program, static_cast<int>(mode));
        EXPECT_EQ(CheckedIn(program, IDC_MENU), std::vector<UINT>{mode});
    }
}

TEST_F(Menus, TheCurrentSpeedIsChecked) {
    const RunningProgram program = StartSeeded(1, 0);
    EXPECT_EQ(CheckedIn(program, IDM_DEAL_SPEED), std::vector<UINT>{IDM_MEDIUM});
    for (const UINT speed : {IDM_SLOW, IDM_FAST, IDM_MEDIUM}) {
        Do(program, static_cast<int>(speed));
        EXPECT_EQ(CheckedIn(program, IDM_DEAL_SPEED), std::vector<UINT>{speed});
    }
}

TEST_F(Menus, TheCurrentGameIsChecked) {
    const RunningProgram program = StartSeeded(1, 0);
    std::vector<Item> games = GameItems();
    std::reverse(games.begin(), games.end());
    for (const Item& game : games) {
        Do(program, static_cast<int>(game.id));
        EXPECT_EQ(CheckedIn(program, IDC_GAMES), std::vector<UINT>{game.id});
        EXPECT_EQ(ControlText(program, IDC_STATUS), game.text);
        EXPECT_EQ(FocusOf(program), program.window);
    }
}

TEST_F(Menus, AGameThatDoesNotExistChangesNothing) {
    const RunningProgram program = StartSeeded(1, 0);
    Do(program, 10002);
    for (const int id : {IDM_FIRST_GAME + GameCount, IDM_LAST_GAME + 1, 9999, 503, 0}) {
        Do(program, id);
        EXPECT_EQ(ControlText(program, IDC_STATUS), L"JOKER WILD");
        EXPECT_TRUE(ShowsCredits(program, 100));
    }
}

TEST_F(Menus, ResetCreditsAtAnyTime) {
    SetSetting(L"Credits", 7);
    const RunningProgram program = StartSeeded(1, 0);
    Do(program, IDM_NO_TRAINING);
    EXPECT_TRUE(ShowsCredits(program, 7));
    Do(program, IDM_RESET_CREDITS);
    EXPECT_TRUE(ShowsCredits(program, 100));
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsCredits(program, 95));
    Do(program, IDM_RESET_CREDITS);
    EXPECT_TRUE(ShowsCredits(program, 100));
    EXPECT_TRUE(Holding(program));
}

TEST_F(Menus, OpeningTheGamesReadsThePaytablesAnew) {
    const RunningProgram program = StartSeeded(1, 0);
    GameDescriptor game{};
    LoadGame(game, JacksOrBetter);
    EXPECT_TRUE(ShowsRow(program, game, 0, 5, false));
    SetSetting(L"0", 4321, L"JACKS OR BETTER\\5");
    OpenMenu(program, IDC_GAMES);
    CloseMenu(program);
    LoadGame(game, JacksOrBetter);
    ASSERT_EQ(game.fiveCoins[0], 4321);
    for (int i = 0; i < 5; ++i) {
        Do(program, IDC_BET_ONE);
    }
    EXPECT_TRUE(ShowsRow(program, game, 0, 5, false));
}

// A menu opened while the window's own is open would leave that one on the screen.
TEST_F(Menus, DoNotOpenOverTheMenuOfTheWindowItself) {
    const RunningProgram program = StartSeeded(1, 0);
    PostMessageW(program.window, WM_SYSCOMMAND, SC_KEYMENU, L' ');
    ASSERT_TRUE(Eventually([&] { return MenuIsOpen(program); }));
    for (const int menu : {IDC_MENU, IDC_GAMES, IDM_DEAL_SPEED}) {
        Post(program, menu);
        Settle(program);
    }
    Sleep(200); // for a menu that should not open
    CloseMenu(program);
    CloseMenu(program); // and leaves the title, where it began
    EXPECT_GT(OpenMenu(program, IDC_GAMES).count, 0);
    CloseMenu(program);
}

TEST_F(Menus, EveryCommandGivesTheFocusBack) {
    const RunningProgram program = StartSeeded(1, 0);
    for (const int command : {IDM_NO_TRAINING, IDM_WARN, IDM_AUTOHOLD, IDM_NO_TRAINING, IDM_NO_DRAW,
                              IDM_NO_DRAW, IDM_USE_SOUND, IDM_RESET_CREDITS, IDM_SLOW, IDM_MEDIUM,
                              IDM_FAST, IDC_BET_ONE, IDC_DEAL_DRAW, IDC_DEAL_DRAW, 10001}) {
        // As a press of a button leaves it.
        SendMessageW(Control(program, IDC_GAMES), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
        SendMessageW(Control(program, IDC_GAMES), WM_CANCELMODE, 0, 0);
        SendMessageW(Control(program, IDC_GAMES), WM_CAPTURECHANGED, 0, 0);
        ASSERT_NE(FocusOf(program), program.window);
        Do(program, command);
        EXPECT_EQ(FocusOf(program), program.window) << "command " << command;
    }
}
