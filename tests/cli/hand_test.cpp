#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include <algorithm>
#include <sstream>

#include "cli/parse.h"
#include "cli/text_table.h"
#include "core/cards.h"
#include "core/random.h"
#include "strategy/best_hold.h"
#include "tests/cli/run_program.h"
#include "training/hand_details.h"

namespace {

using Json = nlohmann::json;

const Arguments royalDraw = {"Th", "Jh", "Qh", "Kh", "As"};

Arguments Join(Arguments first, const Arguments& rest) {
    first.insert(first.end(), rest.begin(), rest.end());
    return first;
}

struct TestGame {
    Paytable payouts{};
    GameDescriptor game{};
    explicit TestGame(std::int32_t id) { DescribeGame(game, id, payouts); }
};

std::int32_t Search(const HandCodes& cards, const GameDescriptor& game, std::int32_t bet) {
    std::array<CardRecord, HandSize> hand{};
    for (std::size_t i = 0; i < HandSize; ++i) {
        hand[i] = MakeCardRecord(cards[i]);
    }
    return FindBestHold(hand.data(), game, bet);
}

// Every word of the document against a search of our own.
void ExpectAnswer(const Json& answer, const HandCodes& cards, const GameDescriptor& game,
                  std::int32_t bet) {
    const std::int32_t best = Search(cards, game, bet);
    const auto rows = static_cast<std::size_t>(game.rowCount);
    EXPECT_EQ(answer.size(), 5U);
    EXPECT_EQ(answer.at("game"), static_cast<std::int32_t>(game.id));
    EXPECT_EQ(answer.at("bet"), bet);
    EXPECT_EQ(answer.at("cards"), Json(cards));
    EXPECT_EQ(answer.at("best"), best);
    ASSERT_EQ(answer.at("holds").size(), 32U);
    for (std::size_t i = 0; i < 32; ++i) {
        const Json& hold = answer.at("holds")[i];
        const HoldResult& result = resultTable[i];
        EXPECT_EQ(hold.size(), 6U);
        EXPECT_EQ(hold.at("index"), i);
        EXPECT_EQ(hold.at("mask"), HoldOrder[i]);
        EXPECT_EQ(hold.at("return").get<double>(), result.expectedReturn);
        EXPECT_EQ(hold.at("total"), result.counts[rows + 1]);
        EXPECT_EQ(hold.at("nothing"), result.counts[rows]);
        ASSERT_EQ(hold.at("counts").size(), rows);
        for (std::size_t row = 0; row < rows; ++row) {
            EXPECT_EQ(hold.at("counts")[row], result.counts[row]);
        }
    }
}

HandCodes RandomHand(std::int32_t deckSize) {
    HandCodes cards{};
    for (std::size_t i = 0; i < cards.size();) {
        cards[i] = NextRandom() % deckSize;
        const auto end = cards.begin() + static_cast<std::ptrdiff_t>(i);
        i += std::find(cards.begin(), end, cards[i]) == end ? 1 : 0;
    }
    return cards;
}

std::string LineOf(const HandCodes& cards) {
    std::string line;
    for (const Card card : cards) {
        line += CardName(card) + " ";
    }
    return line + "\n";
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

void ExpectRefusal(const Arguments& arguments, const std::vector<std::string>& named) {
    const ProgramRun run = RunProgram(arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(Lines(run.err).size(), 1U) << run.err;
    EXPECT_EQ(run.err.rfind("tessarin: ", 0), 0U) << run.err;
    for (const std::string& word : named) {
        EXPECT_NE(run.err.find(word), std::string::npos) << run.err << " names no " << word;
    }
}

} // namespace

TEST(HandVerb, TheJsonIsTheSearch) {
    const ProgramRun run = RunProgram(Join({"hand", "0", "--json"}, royalDraw));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    ExpectAnswer(Json::parse(run.out), {34, 35, 36, 37, 51}, TestGame(0).game, 5);
    EXPECT_EQ(run.out.rfind("{\"game\":0,\"bet\":5,\"cards\":[34,35,36,37,51],\"best\":", 0), 0U);
    EXPECT_NE(run.out.find("\"holds\":[{\"index\":0,\"mask\":0,\"return\":"), std::string::npos);
}

TEST(HandVerb, CardsInOneArgumentOrFiveOrAsCodes) {
    const ProgramRun five = RunProgram(Join({"hand", "0", "--json"}, royalDraw));
    EXPECT_EQ(RunProgram({"hand", "0", "Th Jh Qh Kh As", "--json"}).out, five.out);
    EXPECT_EQ(RunProgram({"hand", "--json", "jacks-or-better", "34", "35", "36", "37", "51"}).out,
              five.out);
    EXPECT_EQ(RunProgram({"hand", "--bet", "5", "0", "ThJhQhKhAs", "--json"}).out, five.out);
}

TEST(HandVerb, EveryGameAndBet) {
    for (std::int32_t id = 0; id < GameCount; ++id) {
        const TestGame game(id);
        for (std::int32_t bet = 1; bet <= 5; ++bet) {
            const HandCodes cards = {0, 9, 22, 48, id == JokerWild ? JokerCard : 12};
            const ProgramRun run =
                RunProgram({"hand", gameNames[static_cast<std::size_t>(id)], LineOf(cards),
                            "--json", "--bet=" + std::to_string(bet)});
            EXPECT_EQ(run.status, 0) << run.err;
            ExpectAnswer(Json::parse(run.out), cards, game.game, bet);
        }
    }
}

TEST(HandVerb, PayoutsAreTheColumnOfTheBet) {
    TestGame game(0);
    const std::array<std::int32_t, 9> column = {1000, 900, 800, 700, 600, 500, 400, 300, 200};
    for (const std::int32_t bet : {3, 5}) {
        std::copy(column.begin(), column.end(),
                  bet == 5 ? game.payouts.fiveCoins.begin() : game.payouts.oneCoin.begin());
        for (const char* list :
             {"1000-900-800-700-600-500-400-300-200", "1000,900,800,700,600,500,400,300,200"}) {
            const ProgramRun run = RunProgram({"hand", "0", "2c 2d 7h 9s Ks", "--json", "--payouts",
                                               list, "--bet", std::to_string(bet)});
            ExpectAnswer(Json::parse(run.out), {0, 13, 31, 46, 50}, game.game, bet);
        }
    }
}

TEST(HandVerb, TheTextListsTheHoldsBestFirstInColumns) {
    const ProgramRun run = RunProgram(Join({"hand", "0"}, royalDraw));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out.find('\x1b'), std::string::npos) << "no colour where no terminal is";
    const std::vector<std::string> lines = Lines(run.out);
    ASSERT_EQ(lines.size(), 2U + 2U + 32U);
    EXPECT_EQ(lines[0], "JACKS OR BETTER, 5 coins: Th Jh Qh Kh As");
    for (const std::string& line : lines) {
        EXPECT_TRUE(line.empty() || line.back() != ' ');
    }

    const TestGame game(0);
    Search({34, 35, 36, 37, 51}, game.game, 5);
    std::array<CardRecord, HandSize> hand{};
    std::vector<DetailRow> rows = DetailRows(hand.data(), game.game, resultTable);
    SortDetails(rows);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string& line = lines[i + 4];
        EXPECT_EQ(line.size(), lines[4].size()) << "columns are aligned to the right";
        // Return and counts, in the order of the program's own list.
        std::istringstream words(line.substr(14));
        for (std::size_t cell = 0; cell < rows[i].cells.size(); ++cell) {
            if (cell == 1) {
                continue;
            }
            std::string word;
            words >> word;
            EXPECT_EQ(std::wstring(word.begin(), word.end()), rows[i].cells[cell]);
        }
    }
    EXPECT_EQ(lines[4].substr(0, 14), "Th Jh Qh Kh --");
}

TEST(HandVerb, ColourOnATerminalOnly) {
    const ProgramRun run = RunOnTerminal({"hand", "0", "Th Jh Qh Kh As"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("\x1b[1;32mTh Jh Qh Kh --\x1b[0m"), std::string::npos) << run.out;
    const ProgramRun json = RunOnTerminal({"hand", "0", "Th Jh Qh Kh As", "--json"});
    EXPECT_EQ(json.out.find('\x1b'), std::string::npos);
}

TEST(HandVerb, BadInputIsNamedAndNothingIsAnswered) {
    const std::string none = std::to_string(GameCount);
    ExpectRefusal({"hand", none, "Th Jh Qh Kh As"}, {"'" + none + "'", "0..", "jacks-or-better"});
    ExpectRefusal({"hand", "poker", "Th Jh Qh Kh As"}, {"'poker'", "deuces-wild"});
    ExpectRefusal({"hand", "0", "Th Jh Qh Kh"}, {"4 cards", "five"});
    ExpectRefusal({"hand", "0", "Th", "Jh", "Qh", "Kh", "As", "2c"}, {"6 cards", "five"});
    ExpectRefusal({"hand", "0", "Th Jh Qh Kh Kh"}, {"Kh", "twice"});
    ExpectRefusal({"hand", "0", "Th Jh Qh Kh Jo"}, {"joker"});
    ExpectRefusal({"hand", "0", "Th Jh Qh Kh Zz"}, {"'Zz'", "23456789TJQKA", "cdhs"});
    ExpectRefusal({"hand", "0", "0", "1", "2", "3", "53"}, {"'53'", "0..52"});
    ExpectRefusal({"hand", "0", "0", "1", "2", "3", "-4"}, {"'-4'"});
    ExpectRefusal({"hand", "0", "Th Jh Qh Kh As", "--payouts", "1-2-3"}, {"3 payouts", "9"});
    ExpectRefusal({"hand", "0", "Th Jh Qh Kh As", "--payouts", ""}, {"''", "9"});
    ExpectRefusal({"hand", "0", "Th Jh Qh Kh As", "--bet", "6"}, {"'6'", "1..5"});
    ExpectRefusal({"hand", "0", "Th Jh Qh Kh As", "--bet", "0", "--json"}, {"'0'", "1..5"});
    ExpectRefusal({"hand", "0", "Th Jh Qh Kh As", "--colour"}, {"--colour"});
    ExpectRefusal({"hand", "0", "Th Jh Qh Kh As", "--bet"}, {"--bet"});
    ExpectRefusal({"hand", "0"}, {"CARDS"});
    ExpectRefusal({"hand"}, {"GAME"});
    ExpectRefusal({}, {"verb", "hand, games and game"});
    ExpectRefusal({"deal"}, {"deal", "hand, games and game"});
    ExpectRefusal({"--\x1b[31m\n--deal"}, {"--?[31m?--deal"});
    ExpectRefusal({"--deal"}, {"--deal", "hand, games and game"});
    ExpectRefusal({"games", "0"}, {"0"});
    ExpectRefusal({"hand", "0", "-", "--bet", "9"}, {"'9'", "1..5"});
}

TEST(HandStream, AnswersEveryHandInOrder) {
    SeedRandom(31);
    for (std::int32_t id = 0; id < GameCount; ++id) {
        const TestGame game(id);
        std::vector<HandCodes> hands;
        std::string input;
        for (int i = 0; i < 50; ++i) {
            hands.push_back(RandomHand(game.game.deckSize));
            input += LineOf(hands.back());
        }
        const ProgramRun run = RunProgram({"hand", std::to_string(id), "-", "--bet", "4"}, input);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.err, "");
        const std::vector<std::string> lines = Lines(run.out);
        ASSERT_EQ(lines.size(), hands.size());
        for (std::size_t i = 0; i < hands.size(); ++i) {
            ExpectAnswer(Json::parse(lines[i]), hands[i], game.game, 4);
        }
    }
}

TEST(HandStream, OneLineIsTheAnswerOfTheSingleForm) {
    EXPECT_EQ(RunProgram({"hand", "1", "-"}, "2c 2d 7h 9s Ks").out,
              RunProgram({"hand", "1", "2c 2d 7h 9s Ks", "--json"}).out);
    EXPECT_EQ(RunProgram({"hand", "1", "-", "--json"}, "2c2d7h9sKs\r\n").out,
              RunProgram({"hand", "1", "2c 2d 7h 9s Ks", "--json"}).out);
}

TEST(HandStream, BadLinesAreNamedByNumberAndTheOthersAnswered) {
    const std::string good = "Th Jh Qh Kh As\n";
    const ProgramRun run = RunProgram(
        {"hand", "0", "-"}, good + "Th Jh\n" + good + "\n" + std::string(100000, 'T') + "\n" +
                                std::string("\0\xff\n", 3) + good + "2c 2c 3c 4c 5c");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(Lines(run.out).size(), 3U);
    const std::vector<std::string> errors = Lines(run.err);
    ASSERT_EQ(errors.size(), 5U) << run.err;
    const char* starts[] = {"tessarin: line 2: 2 cards", "tessarin: line 4: 0 cards",
                            "tessarin: line 5: more than", "tessarin: line 6: no card '",
                            "tessarin: line 8: the card 2c"};
    for (std::size_t i = 0; i < errors.size(); ++i) {
        EXPECT_EQ(errors[i].rfind(starts[i], 0), 0U) << errors[i];
    }
}

TEST(HandStream, AnswersBeforeItWaitsForMore) {
    const ProgramRun run =
        Converse({"hand", "2", "-"}, {"2c 2d 7h 9s Jo\n", "Th Jh Qh Kh As\n", "0 1 2 3 4\n"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(Lines(run.out).size(), 3U);
}

TEST(HandStream, NoHandsNoAnswers) {
    const ProgramRun run = RunProgram({"hand", "0", "-"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "");
}

TEST(HandStream, AFailedWriteIsReported) {
    if (access("/dev/full", W_OK) != 0) {
        GTEST_SKIP() << "no device that is always full";
    }
    // One hand, and so many that the first write comes before all are answered.
    for (const int hands : {1, 60}) {
        SCOPED_TRACE(hands);
        std::string input;
        for (int i = 0; i < hands; ++i) {
            input += "Th Jh Qh Kh As\n";
        }
        const ProgramRun run = RunProgramInto("/dev/full", {"hand", "0", "-"}, input);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err, "tessarin: standard output cannot be written\n");
    }
    EXPECT_EQ(RunProgramInto("/dev/full", {"games"}).status, 1);
}

TEST(Help, IsGivenForEveryVerb) {
    const ProgramRun help = RunProgram({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    for (const char* verb : {"hand", "game", "games"}) {
        EXPECT_NE(help.out.find(verb), std::string::npos);
        const ProgramRun run = RunProgram({verb, "--help"});
        EXPECT_EQ(run.status, 0);
        EXPECT_NE(run.out.find(verb), std::string::npos);
    }
    EXPECT_NE(RunProgram({"hand", "--help"}).out.find("--payouts"), std::string::npos);
    const ProgramRun version = RunProgram({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, "tessarin " TESSARIN_VERSION "\n");
}

TEST(GamesVerb, ListsGamesRowsAndDefaultPayouts) {
    const ProgramRun run = RunProgram({"games"});
    EXPECT_EQ(run.status, 0);
    for (std::int32_t id = 0; id < GameCount; ++id) {
        const TestGame game(id);
        std::string heading = std::to_string(id);
        heading += "  ";
        heading += gameNames[static_cast<std::size_t>(id)];
        heading += "  (";
        std::size_t at = run.out.find(heading);
        ASSERT_NE(at, std::string::npos);
        for (std::int32_t row = 0; row < game.game.rowCount; ++row) {
            const std::string name = NarrowText(game.game.rowNames[row]);
            std::string start = "\n";
            start += name;
            start += "  ";
            at = run.out.find(start, at);
            ASSERT_NE(at, std::string::npos) << id << " " << row;
            std::istringstream line(run.out.substr(at + 1 + name.size()));
            std::int32_t one = 0;
            std::int32_t five = 0;
            line >> one >> five;
            EXPECT_EQ(one, game.game.oneCoin[row]);
            EXPECT_EQ(five, game.game.fiveCoins[row]);
        }
    }
}
