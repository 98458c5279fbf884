// The constant facts of the six games: titles, row names, decks and default payouts.
#ifndef TESSARIN_CORE_GAME_TABLES_H
#define TESSARIN_CORE_GAME_TABLES_H

#include "core/games.h"

struct GameTable {
    const wchar_t* title;
    std::int32_t deckSize;
    std::int32_t rowCount;
    std::array<const wchar_t*, MaxRows> rowNames; // rowCount of them, row 0 first
    Paytable payouts;
};

// By GameId. Row names are shown as written: three games shout and three do not, on purpose.
extern const std::array<GameTable, GameCount> gameTables;

#endif
