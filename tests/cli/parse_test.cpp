#include "cli/parse.h"

#include <gtest/gtest.h>

#include "core/random.h"

namespace {

struct TestGame {
    Paytable payouts{};
    GameDescriptor game{};
    explicit TestGame(std::int32_t id) { DescribeGame(game, id, payouts); }
};

constexpr HandCodes royalOfHearts = {34, 35, 36, 37, 51};

HandCodes Cards(const char* text, std::int32_t id = JokerWild) {
    const TestGame game(id);
    HandCodes cards{};
    std::string error;
    EXPECT_TRUE(ParseCards(text, game.game, cards, error)) << text << ": " << error;
    return cards;
}

std::string CardsError(const std::string& text, std::int32_t id = JacksOrBetter) {
    const TestGame game(id);
    HandCodes cards = {1, 2, 3, 4, 5};
    std::string error;
    EXPECT_FALSE(ParseCards(text, game.game, cards, error)) << text;
    EXPECT_EQ(cards, (HandCodes{1, 2, 3, 4, 5})) << "a refused hand leaves the result alone";
    return error;
}

std::string PayoutsError(const char* text, std::int32_t id) {
    const TestGame game(id);
    std::vector<std::int32_t> payouts;
    std::string error;
    EXPECT_FALSE(ParsePayouts(text, game.game, payouts, error)) << text;
    EXPECT_TRUE(payouts.empty());
    return error;
}

bool Holds(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(ParseGame, TakesNumbersAndNames) {
    constexpr const char* names[] = {"jacks-or-better",    "deuces-wild",
                                     "joker-wild",         "double-double-jackpot",
                                     "double-bonus-poker", "double-double-bonus"};
    static_assert(std::size(names) == GameCount);
    for (std::int32_t i = 0; i < GameCount; ++i) {
        std::int32_t id = -1;
        std::string error;
        EXPECT_TRUE(ParseGame(std::to_string(i), id, error));
        EXPECT_EQ(id, i);
        id = -1;
        EXPECT_TRUE(ParseGame(names[i], id, error));
        EXPECT_EQ(id, i);
    }
}

TEST(ParseGame, NamesWhatIsAccepted) {
    const std::string first = std::to_string(GameCount);
    const std::string accepted = "0.." + std::to_string(GameCount - 1);
    for (const char* text :
         {first.c_str(), "-1", "", "jacks", "4294967296", "0x1", " 1", "1 ", "+1"}) {
        std::int32_t id = 77;
        std::string error;
        EXPECT_FALSE(ParseGame(text, id, error)) << text;
        EXPECT_EQ(id, 77);
        EXPECT_TRUE(Holds(error, accepted.c_str())) << error;
        EXPECT_TRUE(Holds(error, "double-double-bonus")) << error;
    }
}

TEST(ParseBet, TakesOneToFive) {
    for (std::int32_t i = 1; i <= 5; ++i) {
        std::int32_t bet = 0;
        std::string error;
        EXPECT_TRUE(ParseBet(std::to_string(i), bet, error));
        EXPECT_EQ(bet, i);
    }
    for (const char* text : {"0", "6", "-1", "", "five", "1.5", "99999999999999999999"}) {
        std::int32_t bet = 77;
        std::string error;
        EXPECT_FALSE(ParseBet(text, bet, error)) << text;
        EXPECT_EQ(bet, 77);
        EXPECT_TRUE(Holds(error, "1..5")) << error;
    }
}

TEST(ParsePayouts, TakesBothJoiners) {
    const TestGame game(JacksOrBetter);
    std::vector<std::int32_t> payouts;
    std::string error;
    const std::vector<std::int32_t> expected = {2147483647, 50, 25, 9, 6, 4, 3, 2, 0};
    EXPECT_TRUE(ParsePayouts("2147483647-50-25-9-6-4-3-2-0", game.game, payouts, error)) << error;
    EXPECT_EQ(payouts, expected);
    payouts.clear();
    EXPECT_TRUE(ParsePayouts("2147483647,50,25,9-6,4,3,2,0", game.game, payouts, error)) << error;
    EXPECT_EQ(payouts, expected);
}

TEST(ParsePayouts, NamesWhatIsWrong) {
    EXPECT_TRUE(Holds(PayoutsError("1-2-3", DeucesWild), "3 payouts"));
    EXPECT_TRUE(Holds(PayoutsError("1-2-3", DeucesWild), "10 numbers"));
    EXPECT_TRUE(Holds(PayoutsError("1-2-3-4-5-6-7-8-9-10", JacksOrBetter), "9 numbers"));
    EXPECT_TRUE(Holds(PayoutsError("7", JacksOrBetter), "1 payout:"));
    EXPECT_TRUE(Holds(PayoutsError("1-2-3-4-x-6-7-8-9", JacksOrBetter), "'x'"));
    EXPECT_TRUE(Holds(PayoutsError("1-2-3-4-2147483648-6-7-8-9", JacksOrBetter), "'2147483648'"));
    EXPECT_TRUE(Holds(PayoutsError("1-2-3-4--5-6-7-8-9", JacksOrBetter), "''"));
    EXPECT_TRUE(Holds(PayoutsError("1-2-3-4-5-6-7-8-9-", JacksOrBetter), "''"));
    EXPECT_TRUE(Holds(PayoutsError("", JacksOrBetter), "top row first"));
    EXPECT_TRUE(Holds(PayoutsError("1 2 3 4 5 6 7 8 9", JacksOrBetter), "joined by"));
}

TEST(ParseCards, TakesNamesCodesAndMixtures) {
    EXPECT_EQ(Cards("Th Jh Qh Kh As"), royalOfHearts);
    EXPECT_EQ(Cards("ThJhQhKhAs"), royalOfHearts);
    EXPECT_EQ(Cards("  th,JH\tqh , kH  aS \r"), royalOfHearts);
    EXPECT_EQ(Cards("34 35 36 37 51"), royalOfHearts);
    EXPECT_EQ(Cards("34 Jh 36 KhAs"), royalOfHearts);
    EXPECT_EQ(Cards("2c 2d 2h 2s Jo"), (HandCodes{0, 13, 26, 39, 52}));
    EXPECT_EQ(Cards("joJc3d4h9s"), (HandCodes{52, 9, 14, 28, 46}));
    EXPECT_EQ(Cards("0 1 2 3 52"), (HandCodes{0, 1, 2, 3, 52}));
}

TEST(ParseCards, EveryCardReadsBackFromItsName) {
    for (Card card = 0; card < JokerDeckSize; ++card) {
        std::string text = CardName(card);
        HandCodes expected = {card, 0, 0, 0, 0};
        for (std::size_t i = 1; i < HandSize; ++i) {
            expected[i] = (card + static_cast<Card>(i)) % JokerDeckSize;
            text += ' ';
            text += CardName(expected[i]);
        }
        EXPECT_EQ(Cards(text.c_str()), expected);
    }
}

TEST(ParseCards, NamesWhatIsWrong) {
    EXPECT_TRUE(Holds(CardsError("Th Jh Qh Kh"), "4 cards"));
    EXPECT_TRUE(Holds(CardsError("Th Jh Qh Kh As 2c"), "6 cards"));
    EXPECT_TRUE(Holds(CardsError("Th"), "1 card:"));
    EXPECT_TRUE(Holds(CardsError(""), "0 cards"));
    EXPECT_TRUE(Holds(CardsError("Th Jh Qh Kh Th"), "Th stands twice"));
    EXPECT_TRUE(Holds(CardsError("Th Jh Qh Kh 34"), "Th stands twice"));
    EXPECT_TRUE(Holds(CardsError("Th Jh Qh Kh Jo"), "joker-wild"));
    EXPECT_TRUE(Holds(CardsError("Th Jh Qh Kh 52"), "joker-wild"));
    EXPECT_TRUE(Holds(CardsError("Jo Jo 2c 3c 4c", JokerWild), "Jo stands twice"));
    for (const char* word : {"1h", "10h", "Tx", "T", "Thh", "53", "-1", "99999999999", "T h"}) {
        const std::string error = CardsError(std::string("2c 3c 4c 5c ") + word, JokerWild);
        EXPECT_TRUE(Holds(error, "no card '")) << error;
        EXPECT_TRUE(Holds(error, "23456789TJQKA")) << error;
    }
}

TEST(ParseCards, MessagesAreOneCleanLine) {
    const std::string error = CardsError("\x1b[31m\n" + std::string(5000, 'x') + '\0');
    EXPECT_LT(error.size(), 250U);
    for (const char c : error) {
        EXPECT_TRUE(c >= ' ' && c <= '~');
    }
}

// Random bytes, and random words near to good ones: whatever is taken is a dealable hand, whatever
// is refused has its one line.
TEST(ParseCards, NoBytesDoHarm) {
    constexpr const char* words[] = {"Th", "2c", "As", "9d", " Jo", " 12 ", " 51", " ", ",", "x"};
    SeedRandom(20);
    int taken = 0;
    for (int trial = 0; trial < 100000; ++trial) {
        std::string text;
        for (std::int32_t length = 4 + NextRandom() % 6; length > 0; --length) {
            const std::int32_t r = NextRandom();
            text += trial % 2 == 0 ? std::string(1, static_cast<char>(r))
                                   : words[static_cast<std::size_t>(r) % std::size(words)];
        }
        const TestGame game(trial % GameCount);
        HandCodes cards{};
        std::vector<std::int32_t> payouts;
        std::string error;
        if (ParseCards(text, game.game, cards, error)) {
            ++taken;
            for (std::size_t i = 0; i < HandSize; ++i) {
                ASSERT_TRUE(cards[i] >= 0 && cards[i] < game.game.deckSize);
                for (std::size_t k = 0; k < i; ++k) {
                    ASSERT_NE(cards[i], cards[k]);
                }
            }
        } else {
            ASSERT_FALSE(error.empty());
            ASSERT_EQ(error.find('\n'), std::string::npos);
        }
        if (ParsePayouts(text, game.game, payouts, error)) {
            ASSERT_EQ(payouts.size(), static_cast<std::size_t>(game.game.rowCount));
        }
    }
    EXPECT_GT(taken, 20);
}
