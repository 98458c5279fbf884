#include "cli/game_report.h"

#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "cli/parse.h"
#include "cli/text_table.h"
#include "core/game_tables.h"

namespace {

using Json = nlohmann::ordered_json;

// The payout the analysis shows: the bet's column as it stands, nothing for the last row.
std::int32_t ShownPayout(const GameReport& report, std::size_t row) {
    if (row >= static_cast<std::size_t>(report.game.rowCount)) {
        return 0;
    }
    return report.bet == MaxBet ? report.game.fiveCoins[row] : report.game.oneCoin[row];
}

std::string RowName(const GameReport& report, std::size_t row) {
    const bool pays = row < static_cast<std::size_t>(report.game.rowCount);
    return pays ? NarrowText(report.game.rowNames[row]) : "NOTHING";
}

Json NumberOrNull(double number) {
    return std::isfinite(number) ? Json(number) : Json(nullptr);
}

std::string ShortestNumber(double number) {
    if (!std::isfinite(number)) {
        return "";
    }
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

// Some row names hold a comma; none holds a quotation mark.
std::string CsvText(const std::string& text) {
    return text.find(',') == std::string::npos ? text : '"' + text + '"';
}

std::string CsvLine(const GameReport& report, const std::string& name, const std::string& payout,
                    const AnalysisRow& row) {
    return std::to_string(report.game.id) + ',' + std::to_string(report.bet) + ',' + CsvText(name) +
           ',' + payout + ',' + ShortestNumber(row.frequency) + ',' +
           ShortestNumber(row.probability) + ',' + ShortestNumber(row.occursEvery) + ',' +
           ShortestNumber(row.returnShare) + '\n';
}

} // namespace

std::string FormatGameList(bool colour) {
    std::string out;
    for (std::size_t id = 0; id < gameTables.size(); ++id) {
        const GameTable& game = gameTables[id];
        TextTable table{{{NarrowText(game.title), true}, {"1 coin"}, {"5 coins"}}, {}};
        for (std::size_t row = 0; row < static_cast<std::size_t>(game.rowCount); ++row) {
            table.rows.push_back({{NarrowText(game.rowNames[row])},
                                  {std::to_string(game.payouts.oneCoin[row])},
                                  {std::to_string(game.payouts.fiveCoins[row])}});
        }
        out += id == 0 ? "" : "\n";
        out += std::to_string(id) + "  " + gameNames[id] + "  (" + std::to_string(game.deckSize) +
               " cards, " + std::to_string(game.rowCount) + " rows)\n\n";
        out += FormatTable(table, colour);
    }
    return out;
}

std::string FormatGameTable(const GameReport& report, bool colour) {
    const AnalysisTexts texts = FormatAnalysis(report.result, report.game, report.bet);
    TextTable table;
    for (const ListColumn& column : AnalysisColumns()) {
        table.columns.push_back({NarrowText(column.header), table.columns.empty()});
    }
    for (const AnalysisRowText& row : texts.rows) {
        table.rows.push_back({{NarrowText(row.name)},
                              {NarrowText(row.payout)},
                              {NarrowText(row.frequency)},
                              {NarrowText(row.probability)},
                              {NarrowText(row.occursEvery)},
                              {NarrowText(row.returnShare)}});
    }
    const std::string coins = std::to_string(report.bet) + (report.bet == 1 ? " coin" : " coins");
    return NarrowText(report.game.title) + ", " + coins + "\n\n" + FormatTable(table, colour) +
           "\nGame Total Return  " +
           StyledText(NarrowText(texts.gameReturn), CellStyle::Best, colour) + "\n";
}

std::string FormatGameJson(const GameReport& report) {
    Json payouts = Json::array();
    Json rows = Json::array();
    for (std::size_t i = 0; i < report.result.rows.size(); ++i) {
        const AnalysisRow& row = report.result.rows[i];
        rows.push_back({{"name", RowName(report, i)},
                        {"payout", ShownPayout(report, i)},
                        {"frequency", row.frequency},
                        {"probability", row.probability},
                        {"occursEvery", NumberOrNull(row.occursEvery)},
                        {"returnShare", row.returnShare}});
        if (i < static_cast<std::size_t>(report.game.rowCount)) {
            payouts.push_back(ShownPayout(report, i));
        }
    }
    const Json document = {{"game", static_cast<std::int32_t>(report.game.id)},
                           {"bet", report.bet},
                           {"payouts", payouts},
                           {"return", report.result.gameReturn},
                           {"rows", rows}};
    return document.dump();
}

std::string GameCsvHeader() {
    return "game,bet,name,payout,frequency,probability,occursEvery,returnShare\n";
}

std::string FormatGameCsv(const GameReport& report) {
    std::string out;
    double deals = 0.0;
    for (std::size_t i = 0; i < report.result.rows.size(); ++i) {
        const AnalysisRow& row = report.result.rows[i];
        deals += row.frequency;
        out += CsvLine(report, RowName(report, i), std::to_string(ShownPayout(report, i)), row);
    }
    return out + CsvLine(report, "TOTAL", "", {deals, 1.0, 1.0, report.result.gameReturn});
}
