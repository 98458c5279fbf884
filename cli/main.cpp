#include <algorithm>
#include <memory>

#include "cli/command_line.h"
#include "cli/game_report.h"
#include "cli/hand_report.h"
#include "cli/hand_stream.h"
#include "cli/terminal.h"
#include "cli/text_table.h"

namespace {

// A game with the payouts asked for; stays where it is, since the descriptor points into it.
struct PricedGame {
    Paytable payouts;
    GameDescriptor game;
    std::int32_t bet;
};

void PriceGame(const Request& request, std::int32_t id, PricedGame& priced) {
    DescribeGame(priced.game, id, priced.payouts);
    priced.bet = request.bet;
    std::copy(request.payouts.begin(), request.payouts.end(),
              priced.bet == MaxBet ? priced.game.fiveCoins : priced.game.oneCoin);
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
    PricedGame priced{};
    PriceGame(request, request.game, priced);
    return AnswerHand(priced, request.cards, request.form == OutputForm::Json);
}

ExitStatus RunHandStream(const Request& request) {
    PricedGame priced{};
    PriceGame(request, request.game, priced);
    return AnswerHands(priced.game, priced.bet);
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

// What stands before the first report, between two and after the last.
struct Frame {
    std::string opening;
    const char* separator;
    const char* closing;
};

Frame FrameOf(OutputForm form, bool all) {
    switch (form) {
    case OutputForm::Json:
        return {all ? "[" : "", ",", all ? "]\n" : "\n"};
    case OutputForm::Csv:
        return {GameCsvHeader(), "", ""};
    case OutputForm::Text:
        break;
    }
    return {"", "\n", ""};
}

std::string ReportGame(OutputForm form, const GameReport& report) {
    switch (form) {
    case OutputForm::Json:
        return FormatGameJson(report);
    case OutputForm::Csv:
        return FormatGameCsv(report);
    case OutputForm::Text:
        break;
    }
    return FormatGameTable(report, OutputShowsColour());
}

// Nothing is written before the last game has been counted.
ExitStatus RunGame(const Request& request) {
    const bool all = request.game == AllGames;
    const std::int32_t first = all ? 0 : request.game;
    const std::int32_t end = all ? GameCount : first + 1;
    const Frame frame = FrameOf(request.form, all);
    std::string out = frame.opening;
    for (std::int32_t id = first; id < end; ++id) {
        PricedGame priced{};
        PriceGame(request, id, priced);
        const AnalysisResult result = AnalysePricedGame(priced);
        out += id == first ? "" : frame.separator;
        out += ReportGame(request.form, {priced.game, priced.bet, result});
    }
    out += frame.closing;
    return Answer(out);
}

ExitStatus RunRequest(const Request& request) {
    switch (request.verb) {
    case Verb::Hand:
        return RunHand(request);
    case Verb::HandStream:
        return RunHandStream(request);
    case Verb::Game:
        return RunGame(request);
    case Verb::Games:
        return RunGames();
    case Verb::Help:
        break;
    }
    return Answer(request.help);
}

} // namespace

int main(int argc, char** argv) {
    Request request;
    std::string error;
    if (!ParseCommandLine(argc, argv, request, error)) {
        Complain(error);
        return ExitBadInput;
    }
    return RunRequest(request);
}
