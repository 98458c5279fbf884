// One hand's 32 holds, for machines and for people.
#ifndef TESSARIN_CLI_HAND_REPORT_H
#define TESSARIN_CLI_HAND_REPORT_H

#include <string>

#include "cli/parse.h"
#include "strategy/best_hold.h"

// One JSON object without a line end: game, bet, cards, the index of the best hold and the holds in
// hold order, returns in the fewest digits that read back as the same double.
void AppendHandJson(std::string& out, const GameDescriptor& game, std::int32_t bet,
                    const HandCodes& cards, std::int32_t best,
                    const std::array<HoldResult, HoldCount>& results);

// A table of the holds, best first.
std::string FormatHand(const GameDescriptor& game, std::int32_t bet, const HandCodes& cards,
                       const std::array<HoldResult, HoldCount>& results, bool colour);

#endif
