#include "cli/game_report.h"

#include <gtest/gtest.h>

#include <limits>

// Perfect play of these games reaches every row, so the row that never occurs is made up.
TEST(GameReport, ARowThatNeverOccursTakesNoNumberOfHands) {
    Paytable payouts{};
    GameDescriptor game{};
    DescribeGame(game, JacksOrBetter, payouts);
    AnalysisResult result;
    result.gameReturn = 0.5;
    result.rows.assign(static_cast<std::size_t>(game.rowCount) + 1, {8.0, 0.25, 4.0, 0.125});
    result.rows[0] = {0.0, 0.0, std::numeric_limits<double>::infinity(), 0.0};
    const GameReport report{game, 5, result};

    const std::string json = FormatGameJson(report);
    EXPECT_NE(json.find("{\"name\":\"Royal Flush\",\"payout\":4000,\"frequency\":0.0,"
                        "\"probability\":0.0,\"occursEvery\":null,\"returnShare\":0.0},"),
              std::string::npos)
        << json;
    EXPECT_EQ(json.find("inf"), std::string::npos);
    EXPECT_EQ(FormatGameCsv(report).rfind("0,5,Royal Flush,4000,0,0,,0\n", 0), 0U)
        << FormatGameCsv(report);
}
