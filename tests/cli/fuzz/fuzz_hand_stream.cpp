// Any bytes as standard input of a stream of hands, arriving in pieces of any size. The first three
// bytes are the game, the bet and the size of the pieces. In place of the real streams there are
// these below.

#include <algorithm>
#include <cstdint>
#include <vector>

#include "cli/hand_stream.h"
#include "cli/parse.h"
#include "cli/terminal.h"
#include "strategy/best_hold.h"
#include "tests/cli/fuzz/require.h"

namespace {

std::string_view input;
std::size_t pieceSize;
std::string output;
std::vector<std::string> complaints;

constexpr std::size_t LongestLine = 1000;

std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// The answer's cards, which are codes apart by commas.
void RequireAnswer(std::string_view answer, const GameDescriptor& game, std::int32_t bet,
                   const HandCodes& cards) {
    const std::string start =
        "{\"game\":" + std::to_string(game.id) + ",\"bet\":" + std::to_string(bet) + ",\"cards\":[";
    Require(answer.starts_with(start), "an answer names its game and bet");
    answer.remove_prefix(start.size());
    HandCodes answered{};
    std::string error;
    Require(ParseCards(answer.substr(0, answer.find(']')), game, answered, error) &&
                answered == cards,
            "an answer is to its line");
    Require(std::count(answer.begin(), answer.end(), '{') == HoldCount && answer.ends_with("]}"),
            "an answer is whole");
}

void RequireAnswers(const GameDescriptor& game, std::int32_t bet, ExitStatus status) {
    const std::vector<std::string_view> answers = LinesOf(output);
    std::size_t answered = 0;
    std::size_t refused = 0;
    std::size_t number = 0;
    for (const std::string_view line : LinesOf(input)) {
        ++number;
        HandCodes cards{};
        std::string error;
        if (line.size() <= LongestLine && ParseCards(line, game, cards, error)) {
            Require(answered < answers.size(), "a hand is answered");
            RequireAnswer(answers[answered++], game, bet, cards);
        } else {
            Require(refused < complaints.size(), "a line that is no hand is named");
            const std::string start = "line " + std::to_string(number) + ": ";
            Require(complaints[refused++].starts_with(start), "a line is named by its number");
        }
    }
    Require(answered == answers.size(), "only hands are answered");
    Require(refused == complaints.size(), "only bad lines are named");
    Require(status == (refused > 0 ? ExitBadInput : ExitDone), "the status tells of bad lines");
}

} // namespace

bool OutputShowsColour() {
    return false;
}

long ReadInput(char* bytes, std::size_t size) {
    static std::size_t at = 0;
    if (at == input.size()) {
        at = 0;
        return 0;
    }
    const std::string_view piece = input.substr(at, std::min(size, pieceSize));
    std::copy(piece.begin(), piece.end(), bytes);
    at += piece.size();
    return static_cast<long>(piece.size());
}

bool WriteOutput(std::string_view text) {
    output += text;
    return true;
}

void Complain(std::string_view message) {
    complaints.emplace_back(message);
    RequireMessage(complaints.back());
}

void ShowProgressLine(std::string_view) {}

void ClearProgressLine() {}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t heading = 3;
    if (size < heading) {
        return 0;
    }
    Paytable payouts{};
    GameDescriptor game{};
    DescribeGame(game, data[0] % GameCount, payouts);
    const std::int32_t bet = data[1] % MaxBet + 1;
    pieceSize = data[2] == 0 ? size : data[2];
    input = {reinterpret_cast<const char*>(data) + heading, size - heading};
    output.clear();
    complaints.clear();
    RequireAnswers(game, bet, AnswerHands(game, bet));
    return 0;
}
