#include "ui/menus.h"

#include <windows.h>

#include "ui/program.h"
#include "ui/resource.h"
#include "ui/shell.h"

namespace {

struct Item {
    int id; // 0 for a separator
    const wchar_t* text;
    bool (*checked)();
};

bool Never() {
    return false;
}
bool SoundOn() {
    return program.table.sound;
}
bool NoDrawOn() {
    return program.table.noDraw;
}
template <TrainingMode mode>
bool Trains() {
    return program.table.training == mode;
}
template <std::int32_t speed>
bool DealsAt() {
    return program.table.dealSpeed == speed;
}

constexpr Item separator = {0, nullptr, Never};

constexpr Item mainItems[] = {
    {IDM_SESSION_STATS, L"Session Stats...", Never},
    {IDM_HAND_DETAILS, L"Hand Details...", Never},
    separator,
    {IDM_HAND_ANALYSIS, L"Hand Analysis...", Never},
    {IDM_GAME_ANALYSIS, L"Game Analysis...", Never},
    separator,
    {IDM_USE_SOUND, L"Use Sound", SoundOn},
    {IDM_NO_DRAW, L"No Draw", NoDrawOn},
    separator,
    {IDM_NO_TRAINING, L"No Training", Trains<TrainingMode::NoTraining>},
    {IDM_WARN, L"Warn", Trains<TrainingMode::Warn>},
    {IDM_AUTOHOLD, L"Autohold", Trains<TrainingMode::Autohold>},
    separator,
    {IDM_CHANGE_PAYTABLE, L"Change Paytable...", Never},
    {IDM_DEAL_SPEED, L"Deal Speed...", Never},
    {IDM_RESET_CREDITS, L"Reset Credits to 100", Never},
    separator,
    {IDM_EXIT, L"Exit Tessarin", Never},
};

constexpr Item speedItems[] = {
    {IDM_SLOW, L"Slow", DealsAt<SlowDeal>},
    {IDM_MEDIUM, L"Medium", DealsAt<MediumDeal>},
    {IDM_FAST, L"Fast", DealsAt<FastDeal>},
};

void Append(HMENU menu, int id, const wchar_t* text, bool checked) {
    const UINT flags = MF_STRING | (checked ? MF_CHECKED : MF_UNCHECKED);
    AppendMenuW(menu, flags, static_cast<UINT_PTR>(id), text);
}

template <std::size_t count>
void AppendAll(HMENU menu, const Item (&items)[count]) {
    for (const Item& item : items) {
        if (item.id == 0) {
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        } else {
            Append(menu, item.id, item.text, item.checked());
        }
    }
}

// One menu at a time: the end of the second would leave the first on the screen.
void OpenAndDestroy(HMENU menu) {
    POINT corner = {program.layout.menuRight, program.layout.menuTop};
    ClientToScreen(program.window, &corner);
    if (!ShellMenuIsOpen()) {
        TrackPopupMenuEx(menu, TPM_RIGHTALIGN | TPM_TOPALIGN, corner.x, corner.y, program.window,
                         nullptr);
    }
    DestroyMenu(menu);
    // The menu's own loop takes the message that ends the program.
    if (!IsWindow(program.window)) {
        PostQuitMessage(0);
    }
}

} // namespace

void OpenMainMenu() {
    const HMENU menu = CreatePopupMenu();
    AppendAll(menu, mainItems);
    OpenAndDestroy(menu);
}

void OpenDealSpeedMenu() {
    const HMENU menu = CreatePopupMenu();
    AppendAll(menu, speedItems);
    OpenAndDestroy(menu);
}

void OpenGamesMenu() {
    const HMENU menu = CreatePopupMenu();
    for (std::int32_t id = 0; id < GameCount; ++id) {
        GameDescriptor game{};
        LoadGame(game, id);
        Append(menu, IDM_FIRST_GAME + id, game.title, id == program.table.game.id);
    }
    OpenAndDestroy(menu);
}
