#include "cli/command_line.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <optional>
#include <sstream>

namespace {

// What was typed, not yet understood.
struct TypedWords {
    std::string game;
    std::vector<std::string> cards;
    std::string bet = std::to_string(MaxBet);
    std::optional<std::string> payouts;
    bool json = false;
    bool csv = false;
};

constexpr char AcceptedVerbs[] = ": the verbs are hand, games and game";
constexpr char Advice[] = "; try tessarin --help";

const std::string gameNumbers = "A number 0.." + std::to_string(GameCount - 1);

constexpr char HandFooter[] =
    "Cards are such as Th Jh Qh Kh As: a rank of 23456789TJQKA and a suit of cdhs, Jo the joker;\n"
    "or codes 0..52, suit * 13 + rank. With - in place of the cards, one hand a line is read from\n"
    "standard input and one JSON object a line is written.";

void AddPricing(CLI::App& verb, TypedWords& typed) {
    verb.add_option("--bet", typed.bet, "Coins bet, 5 if not given")->type_name("1..5");
    verb.add_option("--payouts", typed.payouts,
                    "Payouts of the bet's column, top row first, joined by - or ,")
        ->type_name("LIST");
}

CLI::App* AddHand(CLI::App& app, TypedWords& typed) {
    CLI::App* verb = app.add_subcommand("hand", "The 32 holds of a hand, best first");
    verb->add_option("GAME", typed.game, gameNumbers + " or a name")->required()->option_text(" ");
    verb->add_option("CARDS", typed.cards, "Five cards, or - for standard input")
        ->required()
        ->option_text(" ");
    AddPricing(*verb, typed);
    verb->add_flag("--json", typed.json, "Write a JSON object");
    verb->footer(HandFooter);
    return verb;
}

CLI::App* AddGame(CLI::App& app, TypedWords& typed) {
    CLI::App* verb = app.add_subcommand("game", "The long-run result of perfect play");
    verb->add_option("GAME", typed.game, gameNumbers + ", a name, or all")
        ->required()
        ->option_text(" ");
    AddPricing(*verb, typed);
    CLI::Option* json = verb->add_flag("--json", typed.json, "Write a JSON object");
    verb->add_flag("--csv", typed.csv, "Write comma-separated values")->excludes(json);
    return verb;
}

// The bet and the payouts, for the request's game; any game's payouts are no payouts of all.
bool ParsePricing(const TypedWords& typed, Request& request, std::string& error) {
    if (!ParseBet(typed.bet, request.bet, error)) {
        return false;
    }
    if (!typed.payouts) {
        return true;
    }
    if (request.game == AllGames) {
        error = "--payouts with all games: payouts are those of one game";
        return false;
    }
    Paytable payouts{};
    GameDescriptor game{};
    DescribeGame(game, request.game, payouts);
    return ParsePayouts(*typed.payouts, game, request.payouts, error);
}

bool ParseHand(const TypedWords& typed, Request& request, std::string& error) {
    if (!ParseGame(typed.game, request.game, error) || !ParsePricing(typed, request, error)) {
        return false;
    }
    request.form = typed.json ? OutputForm::Json : OutputForm::Text;
    std::string words;
    for (const std::string& word : typed.cards) {
        words += (words.empty() ? "" : " ") + word;
    }
    if (words == "-") {
        request.verb = Verb::HandStream;
        return true;
    }
    request.verb = Verb::Hand;
    Paytable payouts{};
    GameDescriptor game{};
    DescribeGame(game, request.game, payouts);
    return ParseCards(words, game, request.cards, error);
}

bool ParseGameVerb(const TypedWords& typed, Request& request, std::string& error) {
    request.verb = Verb::Game;
    request.form = typed.json ? OutputForm::Json : typed.csv ? OutputForm::Csv : OutputForm::Text;
    if (typed.game == "all") {
        request.game = AllGames;
    } else if (!ParseGame(typed.game, request.game, error)) {
        error += ", or all";
        return false;
    }
    return ParsePricing(typed, request, error);
}

// The verb that was typed and what it was asked.
struct TypedLine {
    CLI::App app{"Video poker with exact strategy: every hold of a hand, every deal of a game.",
                 "tessarin"};
    TypedWords words{};
    const CLI::App* hand = nullptr;
    const CLI::App* game = nullptr;
    const CLI::App* games = nullptr;
};

void DescribeVerbs(TypedLine& line) {
    line.app.set_version_flag("--version", "tessarin " TESSARIN_VERSION);
    line.app.require_subcommand(0, 1);
    line.hand = AddHand(line.app, line.words);
    line.game = AddGame(line.app, line.words);
    line.games = line.app.add_subcommand("games", "The games with their rows and default payouts");
    line.app.get_formatter()->label("SUBCOMMAND", "VERB");
    for (CLI::App* verb : line.app.get_subcommands({})) {
        verb->group("Verbs");
    }
}

bool ParseVerb(const TypedLine& line, Request& request, std::string& error) {
    if (line.hand->parsed()) {
        return ParseHand(line.words, request, error);
    }
    if (line.game->parsed()) {
        return ParseGameVerb(line.words, request, error);
    }
    if (line.games->parsed()) {
        request.verb = Verb::Games;
        return true;
    }
    error = std::string("no verb") + AcceptedVerbs + Advice;
    return false;
}

// Asking for help ends the parsing as a failure would, with a code of its own.
bool ParseWords(TypedLine& line, std::vector<std::string>& words, Request& request,
                std::string& error) {
    try {
        line.app.parse(words);
    } catch (const CLI::ParseError& failure) {
        if (failure.get_exit_code() == 0) {
            std::ostringstream help;
            line.app.exit(failure, help, help);
            request.help = help.str();
            return true;
        }
        const bool verb = !line.app.get_subcommands().empty();
        error = PrintableText(failure.what()) + (verb ? "" : AcceptedVerbs) + Advice;
        return false;
    }
    return ParseVerb(line, request, error);
}

} // namespace

bool ParseCommandLine(int argc, const char* const* argv, Request& request, std::string& error) {
    // The parser takes the words off the end.
    std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    std::reverse(words.begin(), words.end());
    TypedLine line;
    DescribeVerbs(line);
    Request understood;
    if (!ParseWords(line, words, understood, error)) {
        return false;
    }
    request = understood;
    return true;
}
