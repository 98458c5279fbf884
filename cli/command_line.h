// The program's arguments, understood.
#ifndef TESSARIN_CLI_COMMAND_LINE_H
#define TESSARIN_CLI_COMMAND_LINE_H

#include <string>
#include <vector>

#include "cli/parse.h"

enum class Verb { Help, Hand, HandStream, Game, Games };
enum class OutputForm { Text, Json, Csv };

inline constexpr std::int32_t AllGames = -1;

struct Request {
    Verb verb = Verb::Help;
    std::string help{};                  // what Help answers: the help text or the version
    std::int32_t game = 0;               // 0..5; of Game also AllGames
    std::int32_t bet = MaxBet;           // 1..5
    std::vector<std::int32_t> payouts{}; // the bet's column; empty for the game's own
    HandCodes cards{};                   // of Hand: dealable in the game
    OutputForm form = OutputForm::Text;  // Csv of Game only; of no meaning to HandStream
    bool operator==(const Request&) const = default;
};

// The arguments as main is given them; argc may be 0. Whatever is asked of a verb is understood
// here, so that what is bad is named before any work begins. If something was, the result is false,
// `error` one line of printable characters, and the request is left alone.
bool ParseCommandLine(int argc, const char* const* argv, Request& request, std::string& error);

#endif
