// The worked examples of docs/how-the-engine-counts.md, number by number against the engine.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "strategy/best_hold.h"

namespace {

using Cells = std::vector<std::string>;

struct Example {
    std::int32_t game;
    std::array<Card, HandSize> cards;
    HoldPattern hold;
};

enum Suit : std::int32_t { Spades = 0, Hearts = 1, Diamonds = 2, Clubs = 3 };
constexpr std::int32_t RankFive = 3;
constexpr std::int32_t RankNine = 7;

constexpr std::array<Card, HandSize> Jacks = {CardOf(Spades, RankKing), CardOf(Spades, RankQueen),
                                              CardOf(Spades, RankJack), CardOf(Hearts, RankJack),
                                              CardOf(Diamonds, RankFour)};
constexpr HoldPattern Pair = 0b01100;
constexpr HoldPattern ThreeSpades = 0b00111;

// In the order of the page's tables.
constexpr std::array<Example, 4> Examples = {{
    {JacksOrBetter, Jacks, Pair},
    {JacksOrBetter, Jacks, ThreeSpades},
    {DeucesWild,
     {CardOf(Spades, RankDeuce), CardOf(Hearts, RankDeuce), CardOf(Diamonds, RankDeuce),
      CardOf(Clubs, RankNine), CardOf(Hearts, RankFive)},
     0b00111},
    {JokerWild,
     {JokerCard, CardOf(Spades, RankKing), CardOf(Hearts, RankKing), CardOf(Diamonds, RankNine),
      CardOf(Clubs, RankFive)},
     0b00111},
}};

struct Game {
    GameDescriptor descriptor{};
    Paytable payouts{};
    explicit Game(std::int32_t id) { DescribeGame(descriptor, id, payouts); }
};

std::string Page() {
    std::ifstream file(TESSARIN_DOCS "/how-the-engine-counts.md");
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

// Without the breaks of its lines.
std::string FlowingText() {
    std::string text = Page();
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

Cells SplitRow(const std::string& line) {
    Cells cells;
    std::stringstream rest(line.substr(1));
    for (std::string cell; std::getline(rest, cell, '|');) {
        const std::size_t first = cell.find_first_not_of(' ');
        const std::size_t last = cell.find_last_not_of(' ');
        cells.push_back(first == std::string::npos ? "" : cell.substr(first, last - first + 1));
    }
    return cells;
}

// The tables of counts, without their two lines of headers.
std::vector<std::vector<Cells>> CountTables() {
    std::vector<std::vector<Cells>> tables;
    std::stringstream page(Page());
    bool inTable = false;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("| row |", 0) == 0) {
            tables.emplace_back();
            inTable = true;
            std::getline(page, line);
        } else if (inTable && line.rfind("|", 0) == 0) {
            tables.back().push_back(SplitRow(line));
        } else {
            inTable = false;
        }
    }
    return tables;
}

std::int32_t Number(const std::string& text) {
    std::string digits = text;
    digits.erase(std::remove(digits.begin(), digits.end(), ','), digits.end());
    return std::stoi(digits);
}

std::string WithCommas(std::int32_t number) {
    std::string text = std::to_string(number);
    for (int at = static_cast<int>(text.size()) - 3; at > 0; at -= 3) {
        text.insert(static_cast<std::size_t>(at), 1, ',');
    }
    return text;
}

std::string FourPlaces(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4f", value);
    return text;
}

HoldResult Search(const Example& example, const GameDescriptor& game, std::int32_t coins) {
    std::array<CardRecord, HandSize> hand{};
    for (std::size_t i = 0; i < HandSize; ++i) {
        hand[i].code = example.cards[i];
    }
    FindBestHold(hand.data(), game, coins);
    return *std::find_if(resultTable.begin(), resultTable.end(),
                         [&](const HoldResult& result) { return result.pattern == example.hold; });
}

// The row's number by its name on the page; one past the last for "nothing".
std::size_t RowNamed(const std::string& name, const GameDescriptor& game) {
    const auto rows = static_cast<std::size_t>(game.rowCount);
    for (std::size_t row = 0; row < rows; ++row) {
        if (std::wstring(game.rowNames[row]) == std::wstring(name.begin(), name.end())) {
            return row;
        }
    }
    EXPECT_EQ(name, "nothing");
    return rows;
}

class WorkedExample : public testing::TestWithParam<std::size_t> {
  protected:
    const Example& example = Examples[GetParam()];
    const Game game{example.game};
    const HoldResult result = Search(example, game.descriptor, MaxBet);
    const std::size_t rows = static_cast<std::size_t>(game.descriptor.rowCount);
};

TEST_P(WorkedExample, TableSaysWhatTheEngineCounts) {
    const auto tables = CountTables();
    ASSERT_EQ(tables.size(), Examples.size());
    std::vector<bool> shown(rows + 1);
    std::int32_t sum = 0;
    for (const Cells& cells : tables[GetParam()]) {
        ASSERT_EQ(cells.size(), 4U);
        if (cells[0] == "all") {
            EXPECT_EQ(Number(cells[1]), result.counts[rows + 1]);
            EXPECT_EQ(Number(cells[3]), sum);
            continue;
        }
        const std::size_t row = RowNamed(cells[0], game.descriptor);
        const std::int32_t pays = RowPayout(static_cast<HandRank>(row), game.descriptor, MaxBet);
        EXPECT_EQ(Number(cells[1]), result.counts[row]) << cells[0];
        EXPECT_EQ(Number(cells[2]), pays) << cells[0];
        EXPECT_EQ(Number(cells[3]), result.counts[row] * pays) << cells[0];
        shown[row] = true;
        sum += result.counts[row] * pays;
    }
    for (std::size_t row = 0; row <= rows; ++row) {
        EXPECT_TRUE(shown[row] || result.counts[row] == 0) << "row " << row << " is not shown";
    }
}

TEST_P(WorkedExample, TextGivesTheReturnOfTheTable) {
    std::int32_t sum = 0;
    for (std::size_t row = 0; row < rows; ++row) {
        sum += result.counts[row] * RowPayout(static_cast<HandRank>(row), game.descriptor, MaxBet);
    }
    const std::string division = WithCommas(sum) + " / " + WithCommas(result.counts[rows + 1]) +
                                 " = " + FourPlaces(result.expectedReturn) + " coins";
    EXPECT_NE(FlowingText().find(division), std::string::npos) << division;
}

INSTANTIATE_TEST_SUITE_P(Page, WorkedExample, testing::Range<std::size_t>(0, Examples.size()));

TEST(WorkedAnswer, GivesBothBetsAndTheCost) {
    const Game game(JacksOrBetter);
    const double pair = Search(Examples[0], game.descriptor, MaxBet).expectedReturn;
    const double spades = Search(Examples[1], game.descriptor, MaxBet).expectedReturn;
    const double pairAtOne = Search(Examples[0], game.descriptor, 1).expectedReturn;
    const double spadesAtOne = Search(Examples[1], game.descriptor, 1).expectedReturn;
    const std::string text = FlowingText();
    for (const std::string& sentence :
         {"The pair is worth " + FourPlaces(pair) + " coins and the three spades " +
              FourPlaces(spades) + ": keep the jacks.",
          "gives away " + FourPlaces(pair - spades) + " coins on average",
          "the pair is worth " + FourPlaces(pairAtOne) + " coins and the three spades only " +
              FourPlaces(spadesAtOne)}) {
        EXPECT_NE(text.find(sentence), std::string::npos) << sentence;
    }
}

TEST(WorkedAnswer, ThePairIsTheBestOfAllHolds) {
    const Game game(JacksOrBetter);
    const double pair = Search(Examples[0], game.descriptor, MaxBet).expectedReturn;
    for (const HoldResult& other : resultTable) {
        if (other.pattern != Pair) {
            EXPECT_LT(other.expectedReturn, pair) << "hold " << other.pattern;
        }
    }
}

} // namespace
