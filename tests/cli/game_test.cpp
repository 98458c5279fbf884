#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <cmath>
#include <csignal>
#include <memory>
#include <sstream>

#include "cli/parse.h"
#include "cli/text_table.h"
#include "tests/cli/run_program.h"
#include "training/game_analysis.h"

namespace {

using Json = nlohmann::json;

// As the library's own tests: what takes several full cycles is left to the release build.
constexpr bool everyCycle = TESSARIN_EVERY_CYCLE;

// An analysis made here, by the same library but not by the program.
struct OwnAnalysis {
    GameAnalysis analysis;
    AnalysisResult result;

    OwnAnalysis(std::int32_t id, std::int32_t bet, const std::vector<std::int32_t>& payouts = {}) {
        DescribeGame(analysis.game, id, analysis.payouts);
        std::copy(payouts.begin(), payouts.end(),
                  bet == MaxBet ? analysis.game.fiveCoins : analysis.game.oneCoin);
        analysis.coins = bet;
        analysis.stop = false;
        EXPECT_TRUE(CountAllDeals(analysis));
        result = SummarizeAnalysis(analysis);
    }

    std::int32_t Payout(std::size_t row) const {
        if (row == static_cast<std::size_t>(analysis.game.rowCount)) {
            return 0;
        }
        return analysis.coins == MaxBet ? analysis.game.fiveCoins[row] : analysis.game.oneCoin[row];
    }

    std::string Name(std::size_t row) const {
        const bool pays = row < static_cast<std::size_t>(analysis.game.rowCount);
        return pays ? NarrowText(analysis.game.rowNames[row]) : "NOTHING";
    }
};

void ExpectAnswer(const Json& answer, const OwnAnalysis& own) {
    EXPECT_EQ(answer.size(), 5U);
    EXPECT_EQ(answer.at("game"), static_cast<std::int32_t>(own.analysis.game.id));
    EXPECT_EQ(answer.at("bet"), own.analysis.coins);
    EXPECT_EQ(answer.at("return").get<double>(), own.result.gameReturn);
    const std::size_t rows = own.result.rows.size();
    ASSERT_EQ(answer.at("rows").size(), rows);
    ASSERT_EQ(answer.at("payouts").size(), rows - 1);
    for (std::size_t row = 0; row < rows; ++row) {
        const Json& shown = answer.at("rows")[row];
        EXPECT_EQ(shown.size(), 6U);
        EXPECT_EQ(shown.at("name"), own.Name(row));
        EXPECT_EQ(shown.at("payout"), own.Payout(row));
        EXPECT_EQ(shown.at("frequency").get<double>(), own.result.rows[row].frequency);
        EXPECT_EQ(shown.at("probability").get<double>(), own.result.rows[row].probability);
        EXPECT_EQ(shown.at("occursEvery").get<double>(), own.result.rows[row].occursEvery);
        EXPECT_EQ(shown.at("returnShare").get<double>(), own.result.rows[row].returnShare);
        if (row + 1 < rows) {
            EXPECT_EQ(answer.at("payouts")[row], own.Payout(row));
        }
    }
}

void ExpectRefusal(const Arguments& arguments, const std::vector<std::string>& named) {
    const ProgramRun run = RunProgram(arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    for (const std::string& word : named) {
        EXPECT_NE(run.err.find(word), std::string::npos) << run.err << " names no " << word;
    }
}

// What a terminal shows after these bytes, as far as carriage returns and blanks go.
std::string LastLineShown(const std::string& bytes) {
    std::string line;
    std::size_t column = 0;
    for (const char c : bytes) {
        if (c == '\n') {
            line.clear();
            column = 0;
        } else if (c == '\r') {
            column = 0;
        } else {
            line.resize(std::max(line.size(), column + 1), ' ');
            line[column++] = c;
        }
    }
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

} // namespace

TEST(GameVerb, TheJsonIsTheAnalysis) {
    const OwnAnalysis own(DeucesWild, 3);
    const ProgramRun run = RunProgram({"game", "deuces-wild", "--json", "--bet", "3"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "") << "no progress where no terminal is";
    ExpectAnswer(Json::parse(run.out), own);
    EXPECT_EQ(run.out.rfind(
                  "{\"game\":1,\"bet\":3,\"payouts\":[300,200,25,15,9,5,3,2,2,1],\"return\":", 0),
              0U);
}

TEST(GameVerb, PayoutsAreTheColumnOfTheBet) {
    if (!everyCycle) {
        GTEST_SKIP() << "left to the release build";
    }
    const OwnAnalysis own(JacksOrBetter, 5, {4000, 250, 125, 40, 25, 20, 15, 10, 5});
    const ProgramRun run =
        RunProgram({"game", "0", "--json", "--payouts", "4000-250-125-40-25-20-15-10-5"});
    ExpectAnswer(Json::parse(run.out), own);
}

TEST(GameVerb, TheTextIsTheDialogsTable) {
    if (!everyCycle) {
        GTEST_SKIP() << "left to the release build";
    }
    const OwnAnalysis own(DoubleDoubleBonus, 5);
    const ProgramRun run = RunProgram({"game", "double-double-bonus"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    std::istringstream lines(run.out);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, "DOUBLE DOUBLE BONUS, 5 coins");
    std::getline(lines, line);
    std::getline(lines, line);
    for (const ListColumn& column : AnalysisColumns()) {
        EXPECT_NE(line.find(NarrowText(column.header)), std::string::npos);
    }
    const AnalysisTexts texts = FormatAnalysis(own.result, own.analysis.game, 5);
    for (const AnalysisRowText& row : texts.rows) {
        std::getline(lines, line);
        const std::string name = NarrowText(row.name);
        EXPECT_EQ(line.rfind(name + " ", 0), 0U) << line;
        std::istringstream words(line.substr(name.size()));
        for (const std::wstring* expected :
             {&row.payout, &row.frequency, &row.probability, &row.occursEvery, &row.returnShare}) {
            std::string word;
            words >> word;
            EXPECT_EQ(word, NarrowText(*expected));
        }
    }
    std::getline(lines, line);
    EXPECT_EQ(line, "");
    std::getline(lines, line);
    EXPECT_EQ(line, "Game Total Return  98.9808%");
    EXPECT_FALSE(std::getline(lines, line));
}

TEST(GameVerb, CsvHasALineARowAndATotal) {
    if (!everyCycle) {
        GTEST_SKIP() << "left to the release build";
    }
    const OwnAnalysis own(DoubleDoubleBonus, 1);
    const ProgramRun run = RunProgram({"game", "5", "--csv", "--bet", "1"});
    EXPECT_EQ(run.status, 0);
    std::istringstream lines(run.out);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, "game,bet,name,payout,frequency,probability,occursEvery,returnShare");
    for (std::size_t row = 0; row < own.result.rows.size(); ++row) {
        std::getline(lines, line);
        const std::string name = own.Name(row);
        const std::string shown = name.find(',') == std::string::npos ? name : '"' + name + '"';
        const std::string start = "5,1," + shown + "," + std::to_string(own.Payout(row)) + ",";
        ASSERT_EQ(line.rfind(start, 0), 0U) << line;
        std::istringstream numbers(line.substr(start.size()));
        const AnalysisRow& expected = own.result.rows[row];
        for (const double value : {expected.frequency, expected.probability, expected.occursEvery,
                                   expected.returnShare}) {
            std::string number;
            std::getline(numbers, number, ',');
            EXPECT_EQ(std::stod(number), value);
        }
    }
    std::getline(lines, line);
    EXPECT_EQ(line.rfind("5,1,TOTAL,,", 0), 0U) << line;
    EXPECT_EQ(std::stod(line.substr(line.rfind(',') + 1)), own.result.gameReturn);
    EXPECT_FALSE(std::getline(lines, line));
}

TEST(GameVerb, AllIsEveryGameInTurn) {
    if (!everyCycle) {
        GTEST_SKIP() << "left to the release build";
    }
    const ProgramRun json = RunProgram({"game", "all", "--json"});
    EXPECT_EQ(json.status, 0);
    const Json games = Json::parse(json.out);
    ASSERT_EQ(games.size(), static_cast<std::size_t>(GameCount));
    for (std::int32_t id = 0; id < GameCount; ++id) {
        const Json& answer = games[static_cast<std::size_t>(id)];
        EXPECT_EQ(answer.at("game"), id);
        EXPECT_EQ(answer, Json::parse(RunProgram({"game", std::to_string(id), "--json"}).out));
    }
}

TEST(GameVerb, BadInputIsNamedAndNothingIsAnswered) {
    ExpectRefusal({"game"}, {"GAME"});
    const std::string none = std::to_string(GameCount);
    ExpectRefusal({"game", none}, {"'" + none + "'", "0..", "jacks-or-better", "all"});
    ExpectRefusal({"game", "0", "--bet", "7"}, {"'7'", "1..5"});
    ExpectRefusal({"game", "all", "--bet", "7"}, {"'7'", "1..5"});
    ExpectRefusal({"game", "1", "--payouts", "1-2-3"}, {"3 payouts", "10"});
    ExpectRefusal({"game", "1", "--payouts", "1-2-3-4-5-6-7-8-9-2147483648"}, {"'2147483648'"});
    ExpectRefusal({"game", "all", "--payouts", "1-2-3"}, {"--payouts", "all"});
    ExpectRefusal({"game", "0", "--json", "--csv"}, {"--json", "--csv"});
    ExpectRefusal({"game", "0", "1"}, {"1"});
}

TEST(GameVerb, ProgressOnATerminalIsClearedAtTheEnd) {
    const ProgramRun run = RunOnTerminal({"game", "0", "--csv"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("\rJACKS OR BETTER: 1% Done"), std::string::npos);
    const std::size_t answer = run.out.find("game,bet,");
    ASSERT_NE(answer, std::string::npos);
    EXPECT_EQ(LastLineShown(run.out.substr(0, answer)), "");
    EXPECT_EQ(run.out[answer - 1], '\r') << "the answer begins at the left";
}

TEST(GameVerb, AnInterruptLeavesTheTerminalClean) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const ProgramRun run = RunOnTerminal({"game", "all"}, signal, "% Done");
        EXPECT_EQ(run.status, 128 + signal);
        EXPECT_EQ(LastLineShown(run.out), "");
        EXPECT_EQ(run.out.find("Game Total"), std::string::npos);
    }
}
