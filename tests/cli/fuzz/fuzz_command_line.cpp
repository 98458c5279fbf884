// Any list of arguments, apart by '|': what is understood is written out as arguments again, and
// a hand is answered in every form. No argument at all, not even the program's name, is the empty
// input.

#include <cstdint>
#include <nlohmann/json.hpp>

#include "cli/command_line.h"
#include "cli/hand_report.h"
#include "strategy/best_hold.h"
#include "tests/cli/fuzz/require.h"

namespace {

using Words = std::vector<std::string>;

bool Parse(const Words& words, Request& request, std::string& error) {
    std::vector<const char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(word.c_str());
    }
    arguments.push_back(nullptr);
    return ParseCommandLine(static_cast<int>(words.size()), arguments.data(), request, error);
}

Words SplitWords(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    Words words = {"tessarin"};
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('|', start), text.size());
        words.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

Words ShowCards(const Request& request) {
    Words words;
    for (const Card card : request.cards) {
        words.push_back(CardName(card));
    }
    return words;
}

// The request as a careful user types it.
Words ShowRequest(const Request& request) {
    constexpr const char* verbs[] = {"--help", "hand", "hand", "game", "games"};
    Words words = {"tessarin", verbs[static_cast<std::size_t>(request.verb)]};
    if (request.verb == Verb::Games) {
        return words;
    }
    words.push_back(request.game == AllGames ? "all" : std::to_string(request.game));
    if (request.verb == Verb::HandStream) {
        words.push_back("-");
    } else if (request.verb == Verb::Hand) {
        const Words cards = ShowCards(request);
        words.insert(words.end(), cards.begin(), cards.end());
    }
    words.push_back("--bet=" + std::to_string(request.bet));
    if (!request.payouts.empty()) {
        std::string list;
        for (const std::int32_t payout : request.payouts) {
            list += (list.empty() ? "" : "-") + std::to_string(payout);
        }
        words.insert(words.end(), {"--payouts", list});
    }
    if (request.form != OutputForm::Text) {
        words.push_back(request.form == OutputForm::Json ? "--json" : "--csv");
    }
    return words;
}

void RequireGood(const Request& request) {
    const bool all = request.game == AllGames && request.verb == Verb::Game;
    Require(all || (request.game >= 0 && request.game < GameCount), "a game is one there is");
    Require(request.bet >= 1 && request.bet <= MaxBet, "a bet is one to five coins");
    Require(request.form != OutputForm::Csv || request.verb == Verb::Game, "only games have CSV");
    Require(!all || request.payouts.empty(), "payouts are those of one game");
}

// Payouts of any size: the sums may wrap, the answer stays whole.
void AnswerHand(const Request& request) {
    Paytable payouts{};
    GameDescriptor game{};
    DescribeGame(game, request.game, payouts);
    std::copy(request.payouts.begin(), request.payouts.end(),
              request.bet == MaxBet ? game.fiveCoins : game.oneCoin);
    std::array<CardRecord, HandSize> hand{};
    for (std::size_t i = 0; i < hand.size(); ++i) {
        hand[i].code = request.cards[i];
    }
    const std::int32_t best = FindBestHold(hand.data(), game, request.bet);
    std::string line;
    AppendHandJson(line, game, request.bet, request.cards, best, resultTable);
    const nlohmann::json answer = nlohmann::json::parse(line);
    Require(answer.at("cards") == request.cards, "the answer is to the cards asked");
    Require(answer.at("holds").size() == HoldCount, "every hold is answered");
    for (const bool colour : {false, true}) {
        const std::string text = FormatHand(game, request.bet, request.cards, resultTable, colour);
        Require(std::count(text.begin(), text.end(), '\n') == HoldCount + 4, "a hold has a line");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Words words = SplitWords({reinterpret_cast<const char*>(data), size});
    Request before;
    before.help = "as it was";
    before.bet = 3;
    Request request = before;
    std::string error;
    if (!Parse(words, request, error)) {
        Require(request == before, "a refused request leaves the result alone");
        RequireMessage(error);
        return 0;
    }
    if (request.verb == Verb::Help) {
        Require(!request.help.empty(), "who asks for help is helped");
        return 0;
    }
    RequireGood(request);
    Request again;
    Require(Parse(ShowRequest(request), again, error) && again == request, "a request reads back");
    if (request.verb == Verb::Hand) {
        AnswerHand(request);
    }
    return 0;
}
