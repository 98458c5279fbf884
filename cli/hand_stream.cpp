#include "cli/hand_stream.h"

#include <string>
#include <string_view>

#include "cli/hand_report.h"
#include "cli/parse.h"
#include "cli/terminal.h"
#include "strategy/best_hold.h"

namespace {

constexpr std::size_t ReadSize = 1 << 16;
constexpr std::size_t WriteSize = 1 << 16;

// Far more than five cards and their blanks take; the rest of a longer line is not kept.
constexpr std::size_t LongestLine = 1000;

struct HandStream {
    const GameDescriptor& game;
    std::int32_t bet;
    std::string answers;         // not yet written
    std::string line;            // begun, its end not yet read
    bool lineTooLong = false;    // more of it was read than is kept
    std::int64_t lineNumber = 0; // of the last line answered
    ExitStatus status = ExitDone;
};

void FlushAnswers(HandStream& stream) {
    if (!WriteOutput(stream.answers)) {
        stream.status = ExitFailed;
    }
    stream.answers.clear();
}

bool ParseLine(const HandStream& stream, HandCodes& cards, std::string& error) {
    if (stream.lineTooLong) {
        error = "more than " + std::to_string(LongestLine) +
                " characters: a hand is five different cards";
        return false;
    }
    return ParseCards(stream.line, stream.game, cards, error);
}

void AnswerLine(HandStream& stream) {
    ++stream.lineNumber;
    HandCodes cards{};
    std::string error;
    if (ParseLine(stream, cards, error)) {
        std::array<CardRecord, HandSize> hand{};
        for (std::size_t i = 0; i < hand.size(); ++i) {
            hand[i].code = cards[i];
        }
        const std::int32_t best = FindBestHold(hand.data(), stream.game, stream.bet);
        AppendHandJson(stream.answers, stream.game, stream.bet, cards, best, resultTable);
        stream.answers += '\n';
    } else {
        Complain("line " + std::to_string(stream.lineNumber) + ": " + error);
        stream.status = ExitBadInput;
    }
    stream.line.clear();
    stream.lineTooLong = false;
    if (stream.answers.size() >= WriteSize) {
        FlushAnswers(stream);
    }
}

void KeepLine(HandStream& stream, std::string_view text) {
    stream.lineTooLong = stream.lineTooLong || stream.line.size() + text.size() > LongestLine;
    stream.line.append(text.substr(0, stream.lineTooLong ? 0 : text.size()));
}

void TakeBytes(HandStream& stream, std::string_view bytes) {
    for (std::size_t end = bytes.find('\n');
         end != std::string_view::npos && stream.status != ExitFailed; end = bytes.find('\n')) {
        KeepLine(stream, bytes.substr(0, end));
        AnswerLine(stream);
        bytes.remove_prefix(end + 1);
    }
    KeepLine(stream, bytes);
}

} // namespace

ExitStatus AnswerHands(const GameDescriptor& game, std::int32_t bet) {
    HandStream stream{game, bet, {}, {}};
    static char bytes[ReadSize];
    long got = 0;
    while (stream.status != ExitFailed && (got = ReadInput(bytes, sizeof bytes)) > 0) {
        TakeBytes(stream, {bytes, static_cast<std::size_t>(got)});
        FlushAnswers(stream);
    }
    if (got < 0) {
        Complain("standard input cannot be read");
        return ExitFailed;
    }
    // The last line may lack its end. After a failed write what is left is no line.
    if (stream.status != ExitFailed && (!stream.line.empty() || stream.lineTooLong)) {
        AnswerLine(stream);
        FlushAnswers(stream);
    }
    if (stream.status == ExitFailed) {
        Complain("standard output cannot be written");
    }
    return stream.status;
}
