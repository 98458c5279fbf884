#include "cli/hand_report.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "cli/text_table.h"
#include "core/cards.h"
#include "training/hand_details.h"

namespace {

// A stream of hands writes three and a half thousand characters for each. A document tree in
// between, or even a string that grows by each piece, would cost several times the search itself:
// the pen writes into room that is sure to suffice.
struct Pen {
    char* at;

    void Write(std::string_view text) { at = std::copy(text.begin(), text.end(), at); }

    template <typename Number>
    void WriteNumber(Number number) {
        at = std::to_chars(at, at + LongestNumber, number).ptr;
    }

    void WriteField(std::string_view opening, std::int32_t number) {
        Write(opening);
        WriteNumber(number);
    }

    static constexpr std::size_t LongestNumber = 32;
};

// A hold has its names and brackets and at most 19 numbers; the rest of an answer is less than one
// hold more.
constexpr std::size_t LongestHold = 100 + 19 * (Pen::LongestNumber + 1);
constexpr std::size_t LongestAnswer = (HoldCount + 1) * LongestHold;
static_assert(MaxRows + 5 <= 19);

void WriteHold(Pen& pen, std::int32_t index, const HoldResult& result, std::size_t rows) {
    pen.WriteField("{\"index\":", index);
    pen.WriteField(",\"mask\":", result.pattern);
    pen.Write(",\"return\":");
    pen.WriteNumber(result.expectedReturn);
    pen.WriteField(",\"total\":", result.counts[rows + 1]);
    pen.WriteField(",\"nothing\":", result.counts[rows]);
    pen.WriteField(",\"counts\":[", result.counts[0]);
    for (std::size_t row = 1; row < rows; ++row) {
        pen.WriteField(",", result.counts[row]);
    }
    pen.Write("]}");
}

std::string HeldCards(const HandCodes& cards, HoldPattern held) {
    std::string text;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        text += i == 0 ? "" : " ";
        text += ((held >> i) & 1) != 0 ? CardName(cards[i]) : "--";
    }
    return text;
}

// The columns of the program's own list, with whole names: a terminal is wider than a handheld.
std::vector<TableColumn> HandColumns(const GameDescriptor& game) {
    std::vector<TableColumn> columns = {{"Hold", true}, {"Return"}, {"Total"}, {"Nothing"}};
    for (std::int32_t row = game.rowCount; row-- > 0;) {
        columns.push_back({NarrowText(game.rowNames[row])});
    }
    return columns;
}

std::vector<TableCell> HandRow(const DetailRow& detail, const std::string& held, bool best) {
    std::vector<TableCell> cells = {{held}, {NarrowText(detail.cells[0])}};
    for (std::size_t i = 2; i < detail.cells.size(); ++i) {
        const bool none = detail.cells[i] == L"0";
        cells.push_back({NarrowText(detail.cells[i]), none ? CellStyle::Faint : CellStyle::Plain});
    }
    if (best) {
        cells[0].style = cells[1].style = CellStyle::Best;
    }
    return cells;
}

} // namespace

void AppendHandJson(std::string& out, const GameDescriptor& game, std::int32_t bet,
                    const HandCodes& cards, std::int32_t best,
                    const std::array<HoldResult, HoldCount>& results) {
    const std::size_t start = out.size();
    out.resize(start + LongestAnswer);
    Pen pen{out.data() + start};
    pen.WriteField("{\"game\":", game.id);
    pen.WriteField(",\"bet\":", bet);
    for (std::size_t i = 0; i < cards.size(); ++i) {
        pen.WriteField(i == 0 ? ",\"cards\":[" : ",", cards[i]);
    }
    pen.WriteField("],\"best\":", best);
    for (std::size_t i = 0; i < results.size(); ++i) {
        pen.Write(i == 0 ? ",\"holds\":[" : ",");
        WriteHold(pen, static_cast<std::int32_t>(i), results[i],
                  static_cast<std::size_t>(game.rowCount));
    }
    pen.Write("]}");
    out.resize(static_cast<std::size_t>(pen.at - out.data()));
}

std::string FormatHand(const GameDescriptor& game, std::int32_t bet, const HandCodes& cards,
                       const std::array<HoldResult, HoldCount>& results, bool colour) {
    std::array<CardRecord, HandSize> hand{};
    for (std::size_t i = 0; i < hand.size(); ++i) {
        hand[i] = MakeCardRecord(cards[i]);
    }
    std::vector<DetailRow> details = DetailRows(hand.data(), game, results);
    SortDetails(details);
    TextTable table{HandColumns(game), {}, 2};
    for (const DetailRow& detail : details) {
        const HoldPattern held = results[static_cast<std::size_t>(detail.index)].pattern;
        const bool best = detail.expectedReturn == details.front().expectedReturn;
        table.rows.push_back(HandRow(detail, HeldCards(cards, held), best));
    }
    const std::string coins = std::to_string(bet) + (bet == 1 ? " coin" : " coins");
    return NarrowText(game.title) + ", " + coins + ": " + HeldCards(cards, HoldAll) + "\n\n" +
           FormatTable(table, colour);
}
