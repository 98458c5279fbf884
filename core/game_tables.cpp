#include "core/game_tables.h"

#include <cstddef>

namespace {

// Names and payouts stand side by side, one row a line, and are told apart below.
struct Row {
    const wchar_t* name;
    std::int32_t oneCoin;
    std::int32_t fiveCoins;
};

constexpr Row jacksOrBetter[] = {
    {L"Royal Flush", 250, 4000}, {L"Straight Flush", 50, 250},
    {L"4 of a Kind", 25, 125},   {L"Full House", 9, 45},
    {L"Flush", 6, 30},           {L"Straight", 4, 20},
    {L"3 of a Kind", 3, 15},     {L"Two Pair", 2, 10},
    {L"Jacks or Better", 1, 5},
};

constexpr Row deucesWild[] = {
    {L"ROYAL FLUSH", 300, 4000}, {L"4 DEUCES", 200, 1000},   {L"ROYAL FLUSH W/2", 25, 125},
    {L"5 OF A KIND", 15, 75},    {L"STRAIGHT FLUSH", 9, 45}, {L"4 OF A KIND", 5, 25},
    {L"FULL HOUSE", 3, 15},      {L"FLUSH", 2, 10},          {L"STRAIGHT", 2, 10},
    {L"3 OF A KIND", 1, 5},
};

constexpr Row jokerWild[] = {
    {L"ROYAL FLUSH", 400, 4000},
    {L"5 OF A KIND", 200, 1000},
    {L"ROYAL WITH JOKER", 100, 500},
    {L"STRAIGHT FLUSH", 50, 250},
    {L"4 OF A KIND", 20, 100},
    {L"FULL HOUSE", 7, 35},
    {L"FLUSH", 5, 25},
    {L"STRAIGHT", 3, 15},
    {L"3 OF A KIND", 2, 10},
    {L"2 PAIR", 1, 5},
    {L"KINGS OR BETTER", 1, 5},
};

constexpr Row doubleDoubleJackpot[] = {
    {L"Royal Flush", 250, 4000}, {L"Straight Flush", 50, 250}, {L"4 Aces w KQJ", 320, 1600},
    {L"4 Aces", 160, 800},       {L"4 KQJ w AKQJ", 160, 800},  {L"4 KQJ", 80, 400},
    {L"4 2-10", 50, 250},        {L"Full House", 9, 45},       {L"Flush", 6, 30},
    {L"Straight", 5, 25},        {L"3 of a Kind", 3, 15},      {L"Two Pair", 1, 5},
    {L"Jacks or Better", 1, 5},
};

constexpr Row doubleBonusPoker[] = {
    {L"Royal Flush", 250, 4000}, {L"Straight Flush", 50, 250}, {L"4 Aces", 160, 800},
    {L"4 2s,3s,4s", 80, 400},    {L"4 5-K", 50, 250},          {L"Full House", 10, 50},
    {L"Flush", 7, 35},           {L"Straight", 5, 25},         {L"3 of a Kind", 3, 15},
    {L"Two Pair", 1, 5},         {L"Jacks or Better", 1, 5},
};

constexpr Row doubleDoubleBonus[] = {
    {L"ROYAL FLUSH", 250, 4000},
    {L"STRAIGHT FLUSH", 50, 250},
    {L"4 ACES w 2,3,or 4", 400, 2000},
    {L"4 2,3,or4 w A-4", 160, 800},
    {L"4 ACES", 160, 800},
    {L"4 2,3,or4", 80, 400},
    {L"4 5-K", 50, 250},
    {L"FULL HOUSE", 9, 45},
    {L"FLUSH", 6, 30},
    {L"STRAIGHT", 4, 20},
    {L"3 OF A KIND", 3, 15},
    {L"TWO PAIR", 1, 5},
    {L"JACKS OR BETTER", 1, 5},
};

template <std::size_t rows>
constexpr GameTable TableOf(const wchar_t* title, std::int32_t deckSize,
                            const Row (&source)[rows]) {
    static_assert(rows <= MaxRows);
    GameTable table{title, deckSize, static_cast<std::int32_t>(rows), {}, {}};
    for (std::size_t row = 0; row < rows; ++row) {
        table.rowNames[row] = source[row].name;
        table.payouts.oneCoin[row] = source[row].oneCoin;
        table.payouts.fiveCoins[row] = source[row].fiveCoins;
    }
    return table;
}

} // namespace

// In the order of GameId.
constinit const std::array<GameTable, GameCount> gameTables = {
    TableOf(L"JACKS OR BETTER", StandardDeckSize, jacksOrBetter),
    TableOf(L"DEUCES WILD", StandardDeckSize, deucesWild),
    TableOf(L"JOKER WILD", JokerDeckSize, jokerWild),
    TableOf(L"DOUBLE DOUBLE JACKPOT", StandardDeckSize, doubleDoubleJackpot),
    TableOf(L"DOUBLE BONUS POKER", StandardDeckSize, doubleBonusPoker),
    TableOf(L"DOUBLE DOUBLE BONUS", StandardDeckSize, doubleDoubleBonus),
};
