#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

#include "cli/game_report.h"
#include "cli/hand_report.h"
#include "cli/hand_stream.h"
#include "cli/parse.h"
#include "cli/terminal.h"
#include "cli/text_table.h"

namespace {

// What was typed, not yet understood.
struct Request {
    std::string game;
    std::vector<std::string> cards;
    std::string bet = "5";
    std::optional<std::string> payouts;
    bool json = false;
    bool csv = false;
};

// A game with payouts of its own; stays where it is, since the descriptor points into it.
struct PricedGame {
    Paytable payouts;
    GameDescriptor game;
    std::int32_t bet;
};

bool PriceGame(const Request& request, std::int32_t id, PricedGame& priced, std::string& error) {
    DescribeGame(priced.game, id, priced.payouts);
    if (!ParseBet(request.bet, priced.bet, error)) {
        return false;
    }
    if (!request.payouts) {
        return true;
    }
    std::vector<std::int32_t> payouts;
    if (!ParsePayouts(*request.payouts, priced.game, payouts, error)) {
        return false;
    }
    std::copy(payouts.begin(), payouts.end(),
              priced.bet == MaxBet ? priced.game.fiveCoins : priced.game.oneCoin);
    return true;
}

ExitStatus Refuse(const std::string& error) {
    Complain(error);
    return ExitBadInput;
}

ExitStatus Answer(const std::string& text) {
    if (!WriteOutput(text)) {
        Complain("standard output cannot be written");
        return ExitFailed;
    }
    return ExitDone;
}

ExitStatus AnswerHand(const PricedGame& priced, const HandCodes& cards, bool json) {
    std::array<CardRecord, HandSize> hand{};
    for (std::size_t i = 0; i < hand.size(); ++i) {
        hand[i].code = cards[i];
    }
    const std::int32_t best = FindBestHold(hand.data(), priced.game, priced.bet);
    if (!json) {
        return Answer(FormatHand(priced.game, priced.bet, cards, resultTable, OutputShowsColour()));
    }
    std::string line;
    AppendHandJson(line, priced.game, priced.bet, cards, best, resultTable);
    return Answer(line + "\n");
}

ExitStatus RunHand(const Request& request) {
    std::int32_t id = 0;
    PricedGame priced{};
    std::string error;
    if (!ParseGame(request.game, id, error) || !PriceGame(request, id, priced, error)) {
        return Refuse(error);
    }
    std::string words;
    for (const std::string& word : request.cards) {
        words += (words.empty() ? "" : " ") + word;
    }
    if (words == "-") {
        return AnswerHands(priced.game, priced.bet);
    }
    HandCodes cards{};
    if (!ParseCards(words, priced.game, cards, error)) {
        return Refuse(error);
    }
    return AnswerHand(priced, cards, request.json);
}

ExitStatus RunGames() {
    return Answer(FormatGameList(OutputShowsColour()));
}

void ShowProgress(void* context, const wchar_t* text) {
    const auto& priced = *static_cast<const PricedGame*>(context);
    ShowProgressLine(NarrowText(priced.game.title) + ": " + NarrowText(text));
}

AnalysisResult AnalysePricedGame(PricedGame& priced) {
    const auto analysis = std::make_unique<GameAnalysis>();
    analysis->stop = false;
    analysis->game = priced.game;
    analysis->coins = priced.bet;
    analysis->host = {nullptr, nullptr, ShowProgress, &priced};
    CountAllDeals(*analysis);
    ClearProgressLine();
    return SummarizeAnalysis(*analysis);
}

std::string ReportGame(const Request& request, const GameReport& report, bool first) {
    if (request.json) {
        return (first ? "" : ",") + FormatGameJson(report);
    }
    if (request.csv) {
        return (first ? GameCsvHeader() : "") + FormatGameCsv(report);
    }
    return (first ? "" : "\n") + FormatGameTable(report, OutputShowsColour());
}

// Everything is checked before the first game is counted, and written after the last.
ExitStatus RunGame(const Request& request) {
    const bool all = request.game == "all";
    std::string error;
    std::int32_t id = 0;
    if (!all && !ParseGame(request.game, id, error)) {
        return Refuse(error + ", or all");
    }
    if (all && request.payouts) {
        return Refuse("--payouts with all games: payouts are those of one game");
    }
    std::string out;
    for (std::int32_t end = all ? GameCount : id + 1; id < end; ++id) {
        PricedGame priced{};
        if (!PriceGame(request, id, priced, error)) {
            return Refuse(error);
        }
        const AnalysisResult result = AnalysePricedGame(priced);
        out += ReportGame(request, {priced.game, priced.bet, result}, out.empty());
    }
    if (request.json) {
        out = all ? "[" + out + "]\n" : out + "\n";
    }
    return Answer(out);
}

void AddPricing(CLI::App& verb, Request& request) {
    verb.add_option("--bet", request.bet, "Coins bet, 5 if not given")->type_name("1..5");
    verb.add_option("--payouts", request.payouts,
                    "Payouts of the bet's column, top row first, joined by - or ,")
        ->type_name("LIST");
}

constexpr char AcceptedVerbs[] = ": the verbs are hand, games and game";

constexpr char HandFooter[] =
    "Cards are such as Th Jh Qh Kh As: a rank of 23456789TJQKA and a suit of cdhs, Jo the joker;\n"
    "or codes 0..52, suit * 13 + rank. With - in place of the cards, one hand a line is read from\n"
    "standard input and one JSON object a line is written.";

CLI::App* AddHand(CLI::App& app, Request& request) {
    CLI::App* verb = app.add_subcommand("hand", "The 32 holds of a hand, best first");
    verb->add_option("GAME", request.game, "A number 0..5 or a name")->required()->option_text(" ");
    verb->add_option("CARDS", request.cards, "Five cards, or - for standard input")
        ->required()
        ->option_text(" ");
    AddPricing(*verb, request);
    verb->add_flag("--json", request.json, "Write a JSON object");
    verb->footer(HandFooter);
    return verb;
}

CLI::App* AddGame(CLI::App& app, Request& request) {
    CLI::App* verb = app.add_subcommand("game", "The long-run result of perfect play");
    verb->add_option("GAME", request.game, "A number 0..5, a name, or all")
        ->required()
        ->option_text(" ");
    AddPricing(*verb, request);
    CLI::Option* json = verb->add_flag("--json", request.json, "Write a JSON object");
    verb->add_flag("--csv", request.csv, "Write comma-separated values")->excludes(json);
    return verb;
}

ExitStatus RunVerb(int argc, char** argv) {
    CLI::App app("Video poker with exact strategy: every hold of a hand, every deal of a game.",
                 "tessarin");
    Request request;
    app.set_version_flag("--version", "tessarin " TESSARIN_VERSION);
    app.require_subcommand(0, 1);
    const CLI::App* hand = AddHand(app, request);
    const CLI::App* game = AddGame(app, request);
    app.add_subcommand("games", "The games with their rows and default payouts");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& failure) {
        if (failure.get_exit_code() == 0) {
            return static_cast<ExitStatus>(app.exit(failure));
        }
        const bool verb = !app.get_subcommands().empty();
        return Refuse(failure.what() + std::string(verb ? "" : AcceptedVerbs) +
                      "; try tessarin --help");
    }
    if (app.get_subcommands().empty()) {
        return Refuse(std::string("no verb") + AcceptedVerbs + "; try tessarin --help");
    }
    return hand->parsed() ? RunHand(request) : game->parsed() ? RunGame(request) : RunGames();
}

} // namespace

int main(int argc, char** argv) {
    return RunVerb(argc, argv);
}
