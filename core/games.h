// The six games: rows, payouts, deck, and what a hand is paid.
#ifndef TESSARIN_CORE_GAMES_H
#define TESSARIN_CORE_GAMES_H

#include "core/types.h"

// A game's payouts by row: the one-coin column and the five-coin column. Rows past the game's row
// count are 0.
struct Paytable {
    std::array<std::int32_t, MaxRows> oneCoin;
    std::array<std::int32_t, MaxRows> fiveCoins;
};

// A write-only tally: every payout is added to the second word, wrapping; the first stays 0.
struct PaidTally {
    std::uint32_t unused;
    std::uint32_t paid;
};

// What is known of one game. The name, payout and tally pointers lead to program-wide tables, one
// set per game, which live as long as the program; a descriptor may be copied freely. The paytable
// editor writes through the two current columns.
struct GameDescriptor {
    GameId id;
    const wchar_t* const* rowNames; // rowCount names, row 0 first
    std::int32_t rowCount;          // the HandRank of "nothing"
    std::int32_t* oneCoin;          // current payouts for one coin, rowCount of them
    std::int32_t* fiveCoins;        // current payouts for five coins
    const std::int32_t* defaultOneCoin;
    const std::int32_t* defaultFiveCoins;
    std::int32_t reserved; // not set
    std::int32_t deckSize; // 52, or 53 for Joker Wild
    PaidTally* tally;
    const wchar_t* title; // upper case; also the menu text and the name of the settings sub-key
};

// Fills the descriptor for the game and reads its current payouts from the settings store, each
// missing one taking its default. Returns 1; for an id outside 0..5 returns 0 and leaves both the
// descriptor and the payouts as they are. Stored payouts are not range-checked.
std::int32_t LoadGame(GameDescriptor& descriptor, std::int32_t id);

// Fills the descriptor with the built-in payouts as current ones in the caller's own table, so
// that a paytable can be tried without touching the program's. Reads no settings. Same results as
// LoadGame.
std::int32_t DescribeGame(GameDescriptor& descriptor, std::int32_t id, Paytable& current);

// Coins won by the row at a bet of 1..5. A bet of exactly 5 pays the five-coin column as it
// stands; any other pays the one-coin value times the bet, so only the maximum bet earns the
// jackpot bonus. The product wraps in 32 bits. Rows at or past the row count (also NoHand) pay 0.
// Counts nothing.
std::int32_t RowPayout(HandRank rank, const GameDescriptor& game, std::int32_t bet);

// RowPayout, and adds the payout to the game's tally when the rank is a row.
std::int32_t LookUpPayout(HandRank rank, const GameDescriptor& game, std::int32_t bet);

// The registry path of a game's stored column: settings key, title, then "1" or "5".
// The buffer takes PaytablePathSize characters.
inline constexpr std::size_t PaytablePathSize = 64;
void FormatPaytablePath(wchar_t (&path)[PaytablePathSize], const wchar_t* title, bool fiveCoins);

// Writes one payout to the store, or removes the stored value where it equals the default.
void StorePayout(const GameDescriptor& game, std::int32_t row, bool fiveCoins);

#endif
