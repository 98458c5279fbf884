// The list of all 32 holds of a hand with their returns and outcomes.
#ifndef TESSARIN_TRAINING_HAND_DETAILS_H
#define TESSARIN_TRAINING_HAND_DETAILS_H

#include <vector>

#include "strategy/best_hold.h"
#include "training/dialog_text.h"

// Columns before those of the paying rows: return, hold, total, no pay.
inline constexpr std::size_t LeadingDetailColumns = 4;

struct DetailRow {
    std::int32_t index;              // of the hold in hold order
    double expectedReturn;           // what the rows are sorted by
    std::vector<std::wstring> cells; // one a column
};

// Row count + 4 columns with their widths before they are fitted. Paying rows run from the lowest
// to the top one, their names cut to three characters so that all fit the handheld.
std::vector<ListColumn> DetailColumns(const GameDescriptor& game);

// Five characters, one a position: the rank letter of a held card, W for the joker, _ for a
// discard; then a blank. Only the codes of the five cards are read (0..52).
std::wstring HoldText(const CardRecord* hand, HoldPattern held);

// The 32 holds in hold order. The results are those of the last search of the hand in the game; a
// caller that shares the result table with other threads holds the game lock or passes a copy.
std::vector<DetailRow> DetailRows(const CardRecord* hand, const GameDescriptor& game,
                                  const std::array<HoldResult, HoldCount>& results);

// The sort rule of the list: -1 if a's return is strictly greater, otherwise 1, never 0. Rows of
// equal return have no order of their own.
std::int32_t CompareDetails(const DetailRow& a, const DetailRow& b);

// Best return first.
void SortDetails(std::vector<DetailRow>& rows);

#endif
