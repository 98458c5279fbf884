#include "cli/command_line.h"

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;

bool Parse(const Words& words, Request& request, std::string& error) {
    std::vector<const char*> arguments = {"tessarin"};
    for (const std::string& word : words) {
        arguments.push_back(word.c_str());
    }
    arguments.push_back(nullptr);
    return ParseCommandLine(static_cast<int>(words.size()) + 1, arguments.data(), request, error);
}

Request Understood(const Words& words) {
    Request request;
    std::string error;
    EXPECT_TRUE(Parse(words, request, error)) << error;
    return request;
}

std::string Refusal(const Words& words) {
    Request before;
    before.help = "as it was";
    before.bet = 2;
    Request request = before;
    std::string error;
    EXPECT_FALSE(Parse(words, request, error));
    EXPECT_EQ(request, before) << "a refused request leaves the result alone";
    return error;
}

} // namespace

TEST(CommandLine, UnderstandsEveryVerb) {
    const Request hand = Understood({"hand", "2", "2c", "2d", "7h", "9s", "Jo"});
    EXPECT_EQ(hand.verb, Verb::Hand);
    EXPECT_EQ(hand.game, JokerWild);
    EXPECT_EQ(hand.bet, 5);
    EXPECT_TRUE(hand.payouts.empty());
    EXPECT_EQ(hand.cards, (HandCodes{0, 13, 31, 46, 52}));
    EXPECT_EQ(hand.form, OutputForm::Text);
    EXPECT_EQ(Understood({"hand", "1", "-", "--bet=4"}).verb, Verb::HandStream);
    EXPECT_EQ(Understood({"games"}).verb, Verb::Games);
    const Request game = Understood(
        {"game", "jacks-or-better", "--payouts", "800-50-25-8-5-4-3-2-1", "--bet", "1", "--csv"});
    EXPECT_EQ(game.verb, Verb::Game);
    EXPECT_EQ(game.payouts, (std::vector<std::int32_t>{800, 50, 25, 8, 5, 4, 3, 2, 1}));
    EXPECT_EQ(game.bet, 1);
    EXPECT_EQ(game.form, OutputForm::Csv);
    EXPECT_EQ(Understood({"game", "all", "--json"}).game, AllGames);
}

TEST(CommandLine, HelpIsAnAnswer) {
    EXPECT_EQ(Understood({"--version"}).help, "tessarin " TESSARIN_VERSION "\n");
    for (const Words& words : {Words{"--help"}, Words{"-h"}, Words{"hand", "--help"}}) {
        const Request request = Understood(words);
        EXPECT_EQ(request.verb, Verb::Help);
        EXPECT_NE(request.help.find("Usage: tessarin"), std::string::npos);
    }
}

// Arguments are quoted by the parser of options, too, and may hold anything.
TEST(CommandLine, MessagesAreOneCleanLine) {
    const std::string rude = "\x1b[31m\n\r\xff" + std::string(5000, 'x');
    for (const Words& words :
         {Words{rude}, Words{"--" + rude}, Words{"hand", "0", "--bet", rude, "Th Jh Qh Kh As"},
          Words{"hand", rude, "Th Jh Qh Kh As"}, Words{"hand", "0", rude},
          Words{"game", "0", "--payouts", rude}, Words{"game", "0", "--json=" + rude},
          Words{"games", rude, rude}}) {
        const std::string error = Refusal(words);
        EXPECT_FALSE(error.empty());
        EXPECT_LT(error.size(), 300U);
        for (const char c : error) {
            EXPECT_TRUE(c >= ' ' && c <= '~') << error;
        }
    }
}

TEST(CommandLine, NoArgumentsAtAllAreRefused) {
    const char* const none[] = {nullptr};
    Request request;
    std::string error;
    EXPECT_FALSE(ParseCommandLine(0, none, request, error));
    EXPECT_NE(error.find("no verb"), std::string::npos);
    EXPECT_NE(Refusal({}).find("hand, games and game"), std::string::npos);
}

TEST(CommandLine, PayoutsAreThoseOfOneGame) {
    EXPECT_NE(Refusal({"game", "all", "--payouts", "1-2-3"}).find("--payouts"), std::string::npos);
    EXPECT_NE(Refusal({"game", "0", "--payouts", "1-2-3"}).find("3 payouts"), std::string::npos);
}

TEST(GameNames, CanBeTypedAndToldApart) {
    for (std::int32_t id = 0; id < GameCount; ++id) {
        const char* name = gameNames[static_cast<std::size_t>(id)];
        ASSERT_NE(name, nullptr);
        EXPECT_EQ(std::string(name).find_first_not_of("abcdefghijklmnopqrstuvwxyz-"),
                  std::string::npos)
            << name;
        std::int32_t read = -1;
        std::string error;
        EXPECT_TRUE(ParseGame(name, read, error));
        EXPECT_EQ(read, id);
    }
}
