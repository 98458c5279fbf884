// The games as they stand, and the results of a game's analysis, for machines and for people.
#ifndef TESSARIN_CLI_GAME_REPORT_H
#define TESSARIN_CLI_GAME_REPORT_H

#include <string>

#include "training/game_analysis.h"

// One analysed game; the descriptor's payouts are those of the analysis.
struct GameReport {
    const GameDescriptor& game;
    std::int32_t bet;
    const AnalysisResult& result;
};

// Every game with its number, name, rows and default payouts.
std::string FormatGameList(bool colour);

// The table of the program's own dialog with the total under it.
std::string FormatGameTable(const GameReport& report, bool colour);

// One JSON object without a line end: numbers in full precision, null for the hands it takes to
// see a row that never occurs.
std::string FormatGameJson(const GameReport& report);

// One line a row, numbers in full precision, an infinite one empty; last a line TOTAL, whose share
// is the game's return. The header line stands apart, since several games may follow it.
std::string GameCsvHeader();
std::string FormatGameCsv(const GameReport& report);

#endif
