#include "training/hand_details.h"

#include <algorithm>

namespace {

constexpr std::size_t HeaderLength = 3;

// Widths of the paying rows' columns; every further one takes the last.
constexpr std::array<std::int32_t, 8> rowWidths = {54, 46, 46, 44, 40, 40, 40, 40};
constexpr std::int32_t furtherWidth = 30;

constexpr wchar_t CountFormat[] = L"%i";

wchar_t HeldLetter(Card card) {
    return SuitOf(card) == JokerSuit ? L'W' : RankLetters[RankOf(card)];
}

DetailRow DescribeHold(const CardRecord* hand, const GameDescriptor& game, std::int32_t index,
                       const HoldResult& result) {
    const auto rows = static_cast<std::size_t>(game.rowCount);
    DetailRow row{index, result.expectedReturn, {}};
    row.cells = {
        FormatReal(L"%05.4f", result.expectedReturn),
        HoldText(hand, result.pattern),
        FormatInteger(CountFormat, result.counts[rows + 1]),
        FormatInteger(CountFormat, result.counts[rows]),
    };
    for (std::size_t rank = rows; rank-- > 0;) {
        row.cells.push_back(FormatInteger(CountFormat, result.counts[rank]));
    }
    return row;
}

} // namespace

std::vector<ListColumn> DetailColumns(const GameDescriptor& game) {
    std::vector<ListColumn> columns = {
        {L"Return", 50}, {L"Hold", 56}, {L"Total", 56}, {L"Nada", 56}};
    const auto rows = static_cast<std::size_t>(game.rowCount);
    for (std::size_t i = 0; i < rows; ++i) {
        const std::wstring name = game.rowNames[rows - 1 - i];
        columns.push_back(
            {name.substr(0, HeaderLength), i < rowWidths.size() ? rowWidths[i] : furtherWidth});
    }
    return columns;
}

std::wstring HoldText(const CardRecord* hand, HoldPattern held) {
    std::wstring text;
    for (std::size_t i = 0; i < HandSize; ++i) {
        const bool isHeld = ((held >> i) & 1) != 0;
        text.push_back(isHeld ? HeldLetter(hand[i].code) : L'_');
    }
    text.push_back(L' ');
    return text;
}

std::vector<DetailRow> DetailRows(const CardRecord* hand, const GameDescriptor& game,
                                  const std::array<HoldResult, HoldCount>& results) {
    std::vector<DetailRow> rows;
    rows.reserve(HoldCount);
    for (std::int32_t index = 0; index < HoldCount; ++index) {
        rows.push_back(DescribeHold(hand, game, index, results[static_cast<std::size_t>(index)]));
    }
    return rows;
}

std::int32_t CompareDetails(const DetailRow& a, const DetailRow& b) {
    return a.expectedReturn > b.expectedReturn ? -1 : 1;
}

// Stable, so that a list looks the same each time it is opened.
void SortDetails(std::vector<DetailRow>& rows) {
    std::stable_sort(rows.begin(), rows.end(), [](const DetailRow& a, const DetailRow& b) {
        return CompareDetails(a, b) < 0;
    });
}
