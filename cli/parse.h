// What is typed on the command line, turned into games, bets, payouts and cards.
//
// Each parser returns whether the text was good. If it was not, `error` holds one line that names
// what was wrong and what is accepted, and the result is left alone. Any bytes are safe: what a
// message quotes is cut short and cleared of control characters.
#ifndef TESSARIN_CLI_PARSE_H
#define TESSARIN_CLI_PARSE_H

#include <string>
#include <string_view>
#include <vector>

#include "core/games.h"

using HandCodes = std::array<Card, HandSize>;

// The names of the games as typed, by GameId: lower case, no two the same, none a number.
extern const std::array<const char*, GameCount> gameNames;

// A number 0..5 or a name of gameNames.
bool ParseGame(std::string_view text, std::int32_t& id, std::string& error);

// 1..5.
bool ParseBet(std::string_view text, std::int32_t& bet, std::string& error);

// As many payouts of 0..2147483647 as the game has rows, top row first, joined by "-" or ",".
bool ParsePayouts(std::string_view text, const GameDescriptor& game,
                  std::vector<std::int32_t>& payouts, std::string& error);

// Five different cards of the game's deck, apart by blanks or commas or not at all: a rank of
// "23456789TJQKA" and a suit of "cdhs" each, "Jo" for the joker, either case; or bare codes,
// which must stand apart.
bool ParseCards(std::string_view text, const GameDescriptor& game, HandCodes& cards,
                std::string& error);

// The text fit for a message: no more of it than a line holds, whatever is no printable ASCII
// character as '?'.
std::string PrintableText(std::string_view text);

// A card as a player writes it: "Th", "Jo". Codes are 0..52.
std::string CardName(Card card);

#endif
