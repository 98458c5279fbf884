#include "core/table.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "core/random.h"
#include "settings/settings.h"
#include "tests/settings/store_probe.h"

namespace {

constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Least = std::numeric_limits<std::int32_t>::min();

// Suits are 0..3, so a card is its rank and a suit.
constexpr Card Of(std::int32_t rank, std::int32_t suit) {
    return CardOf(suit, rank);
}

void StoreOption(const wchar_t* name, std::int32_t value) {
    WriteInteger(SettingsRoot::CurrentUser, L"TessarCE", name, value, 0);
}

std::int32_t StoredOption(const wchar_t* name) {
    return ReadInteger(SettingsRoot::CurrentUser, L"TessarCE", name, -999);
}

// Puts the given codes at the head of the deal order: five to be dealt, the rest to be drawn.
void StackDeck(Table& table, const std::vector<Card>& codes) {
    for (std::size_t i = 0; i < codes.size(); ++i) {
        table.deck[i + 1] = MakeCardRecord(codes[i]);
        table.order[i] = static_cast<std::int32_t>(i + 1);
    }
}

void ShowDealtCards(Table& table) {
    ClearHolds(table);
    for (std::size_t position = 0; position < HandSize; ++position) {
        DealPosition(table, position);
    }
}

void DealStacked(Table& table, const std::vector<Card>& codes) {
    StartDeal(table);
    StackDeck(table, codes);
    ShowDealtCards(table);
    RateDealtHand(table);
}

void DrawDiscards(Table& table) {
    std::size_t taken = 0;
    for (std::size_t position = 0; position < HandSize; ++position) {
        if (table.hand.held[position] == 0) {
            ReplacePosition(table, position, taken++);
        }
    }
}

std::vector<Card> CodesOf(const Table& table) {
    std::vector<Card> codes;
    for (const CardRecord& card : table.hand.cards) {
        codes.push_back(card.code);
    }
    return codes;
}

bool HoldsNothing(const Table& table) {
    return HeldPattern(table.hand) == 0;
}

// Two jacks and three cards of nothing; the draw brings a third jack and two more of nothing.
const std::vector<Card> jacksThenThree = {
    Of(RankJack, 0), Of(RankJack, 1), Of(0, 2), Of(3, 3),
    Of(5, 0),        Of(RankJack, 2), Of(7, 1), Of(1, 3),
};
const std::vector<Card> royal = {
    Of(RankTen, 1), Of(RankJack, 1), Of(RankQueen, 1), Of(RankKing, 1), Of(RankAce, 1),
};
const std::vector<Card> nothing = {
    Of(0, 0), Of(2, 1), Of(4, 2), Of(6, 3), Of(8, 0), // 2 4 6 8 T
};

class TableOfPlay : public testing::Test {
  protected:
    void SetUp() override {
        EmptyStore();
        SeedRandom(1);
        OpenTable(table);
    }
    void TearDown() override { EmptyStore(); }
    Table table;
};

} // namespace

// Opening and storing.

TEST_F(TableOfPlay, AFreshOneHasAHundredCreditsBetFiveJacksMediumSpeedAndSound) {
    EXPECT_EQ(table.credits, 100);
    EXPECT_EQ(table.bet, 5);
    EXPECT_EQ(table.game.id, JacksOrBetter);
    EXPECT_EQ(table.rank, NoHand);
    EXPECT_FALSE(table.inDraw);
    EXPECT_TRUE(table.stop);
    EXPECT_EQ(table.defaultPurchase, 100);
    EXPECT_FALSE(table.noDraw);
    EXPECT_EQ(table.training, TrainingMode::Warn);
    EXPECT_EQ(table.dealSpeed, 100);
    EXPECT_TRUE(table.sound);
    EXPECT_TRUE(HoldsNothing(table));
}

TEST_F(TableOfPlay, OpensWithFiveDifferentCodesOnTheTableThatAreNoCards) {
    EXPECT_EQ(CodesOf(table), (std::vector<Card>{52, 51, 50, 49, 48}));
    for (const CardRecord& card : table.hand.cards) {
        EXPECT_EQ(card.rankValue, 0);
    }
}

TEST_F(TableOfPlay, OpensWithTheDeckOfItsGame) {
    for (std::int32_t id = 0; id < GameCount; ++id) {
        StoreOption(L"Lastgame", id);
        Table opened;
        OpenTable(opened);
        EXPECT_EQ(opened.game.id, id);
        std::set<Card> codes;
        for (std::int32_t place = 1; place <= opened.game.deckSize; ++place) {
            codes.insert(opened.deck[static_cast<std::size_t>(place)].code);
        }
        EXPECT_EQ(static_cast<std::int32_t>(codes.size()), id == JokerWild ? 53 : 52);
        EXPECT_EQ(codes.count(JokerCard), id == JokerWild ? 1U : 0U);
    }
}

TEST_F(TableOfPlay, TakesABetOutsideOneToFiveAsFive) {
    const std::map<std::int32_t, std::int32_t> bets = {
        {0, 5}, {9, 5}, {6, 5}, {-1, 5}, {Most, 5}, {Least, 5}, {1, 1}, {4, 4}, {5, 5}};
    for (const auto& [stored, expected] : bets) {
        StoreOption(L"Lastbet", stored);
        Table opened;
        OpenTable(opened);
        EXPECT_EQ(opened.bet, expected) << stored;
    }
}

TEST_F(TableOfPlay, TakesAGameThatDoesNotExistAsJacksOrBetter) {
    for (const std::int32_t stored : {GameCount + 1, GameCount, -1, Most, Least}) {
        StoreOption(L"Lastgame", stored);
        Table opened;
        OpenTable(opened);
        EXPECT_EQ(opened.game.id, JacksOrBetter) << stored;
        EXPECT_STREQ(opened.game.title, L"JACKS OR BETTER");
    }
}

TEST_F(TableOfPlay, TakesASpeedThatIsNoneOfTheThreeAsMedium) {
    const std::map<std::int32_t, std::int32_t> speeds = {
        {73, 100}, {0, 100}, {-50, 100}, {Most, 100}, {200, 200}, {100, 100}, {50, 50}};
    for (const auto& [stored, expected] : speeds) {
        StoreOption(L"Speed", stored);
        Table opened;
        OpenTable(opened);
        EXPECT_EQ(opened.dealSpeed, expected) << stored;
    }
}

TEST_F(TableOfPlay, TakesAnySwitchOtherThanZeroAsOn) {
    for (const std::int32_t stored : {2, 1, -1, Least}) {
        StoreOption(L"Sound", stored);
        StoreOption(L"NoDraw", stored);
        Table opened;
        OpenTable(opened);
        EXPECT_TRUE(opened.sound) << stored;
        EXPECT_TRUE(opened.noDraw) << stored;
        StoreTable(opened);
        EXPECT_EQ(StoredOption(L"Sound"), 1);
        EXPECT_EQ(StoredOption(L"NoDraw"), 1);
    }
    StoreOption(L"Sound", 0);
    Table opened;
    OpenTable(opened);
    EXPECT_FALSE(opened.sound);
}

TEST_F(TableOfPlay, ComesBackAsItWasStored) {
    table.credits = -37;
    table.bet = 3;
    table.defaultPurchase = 250;
    table.noDraw = true;
    table.dealSpeed = FastDeal;
    table.sound = false;
    table.training = TrainingMode::Autohold;
    ASSERT_TRUE(PickGame(table, DoubleBonusPoker));
    StoreTable(table);
    Table opened;
    OpenTable(opened);
    EXPECT_EQ(opened.credits, -37);
    EXPECT_EQ(opened.bet, 3);
    EXPECT_EQ(opened.defaultPurchase, 250);
    EXPECT_TRUE(opened.noDraw);
    EXPECT_EQ(opened.dealSpeed, FastDeal);
    EXPECT_FALSE(opened.sound);
    EXPECT_EQ(opened.game.id, DoubleBonusPoker);
    EXPECT_EQ(opened.training, TrainingMode::Warn) << "the training mode is not stored";
}

TEST_F(TableOfPlay, StoresEachOptionAsADoubleWordUnderItsName) {
    table.credits = 12;
    table.bet = 2;
    table.defaultPurchase = 34;
    table.dealSpeed = SlowDeal;
    StoreTable(table);
    const std::map<std::wstring, std::uint8_t> expected = {
        {L"NoDraw", 0},   {L"Speed", 200}, {L"Sound", 1},   {L"DefBuy", 34},
        {L"Credits", 12}, {L"Lastbet", 2}, {L"Lastgame", 0}};
    for (const auto& [name, low] : expected) {
        EXPECT_EQ(FindRaw(L"TessarCE", name), (RawValue{RawType::DoubleWord, {low, 0, 0, 0}}));
    }
}

TEST_F(TableOfPlay, OpensWithEveryDefaultAfterTheStoreIsDeleted) {
    table.credits = 5;
    table.bet = 1;
    table.sound = false;
    PickGame(table, JokerWild);
    table.game.fiveCoins[0] = 4700;
    StorePayout(table.game, 0, true);
    StoreTable(table);
    EmptyStore();
    Table opened;
    OpenTable(opened);
    EXPECT_EQ(opened.credits, 100);
    EXPECT_EQ(opened.bet, 5);
    EXPECT_TRUE(opened.sound);
    EXPECT_EQ(opened.game.id, JacksOrBetter);
    ASSERT_TRUE(PickGame(opened, JokerWild));
    EXPECT_EQ(opened.game.fiveCoins[0], 4000);
}

// The deal.

TEST_F(TableOfPlay, DealsOnlyWhatTheCreditsCover) {
    table.credits = 3;
    EXPECT_FALSE(CanDeal(table));
    BuyCredits(table, 100);
    EXPECT_EQ(table.credits, 103);
    ASSERT_TRUE(CanDeal(table));
    StartDeal(table);
    EXPECT_EQ(table.credits, 98);
    table.credits = 5;
    EXPECT_TRUE(CanDeal(table)) << "the last coins may be bet";
    table.bet = 1;
    table.credits = 0;
    EXPECT_FALSE(CanDeal(table));
    table.credits = -100;
    EXPECT_FALSE(CanDeal(table));
}

TEST_F(TableOfPlay, StartsADealWithTheBetTakenANewOrderAndNoRow) {
    table.rank = 3;
    StartDeal(table);
    EXPECT_TRUE(table.inDraw);
    EXPECT_EQ(table.rank, NoHand);
    EXPECT_EQ(table.credits, 95);
    const DealOrder first = table.order;
    std::set<std::int32_t> positions(first.begin(), first.begin() + StandardDeckSize);
    EXPECT_EQ(positions.size(), 52U);
    EXPECT_EQ(*positions.begin(), 1);
    EXPECT_EQ(*positions.rbegin(), 52);
    StartDeal(table);
    EXPECT_NE(table.order, first);
}

TEST_F(TableOfPlay, KeepsTheDeckAsItIsBetweenHands) {
    const Deck before = table.deck;
    StartDeal(table);
    ShowDealtCards(table);
    for (std::size_t place = 1; place <= StandardDeckSize; ++place) {
        EXPECT_EQ(table.deck[place].code, before[place].code);
    }
    for (std::size_t i = 0; i < HandSize; ++i) {
        EXPECT_EQ(table.hand.cards[i].code, before[static_cast<std::size_t>(table.order[i])].code);
    }
}

TEST_F(TableOfPlay, LetsGoOfEveryHoldForANewHand) {
    table.hand.held.fill(1);
    table.rank = 2;
    ClearHolds(table);
    EXPECT_TRUE(HoldsNothing(table));
    EXPECT_EQ(table.rank, NoHand);
}

TEST_F(TableOfPlay, APatHandHighlightsItsRow) {
    StartDeal(table);
    StackDeck(table, royal);
    ShowDealtCards(table);
    EXPECT_TRUE(RateDealtHand(table));
    EXPECT_EQ(table.rank, 0U);
    EXPECT_EQ(table.credits, 95) << "a dealt hand is not paid";
    StackDeck(table, nothing);
    ShowDealtCards(table);
    EXPECT_FALSE(RateDealtHand(table));
    EXPECT_EQ(table.rank, 9U);
}

// Holding.

TEST_F(TableOfPlay, HoldsOnlyBetweenDealAndDraw) {
    EXPECT_FALSE(ToggleHold(table, 0));
    EXPECT_TRUE(HoldsNothing(table));
    DealStacked(table, jacksThenThree);
    EXPECT_TRUE(ToggleHold(table, 0));
    EXPECT_TRUE(ToggleHold(table, 4));
    EXPECT_EQ(HeldPattern(table.hand), 17);
    EXPECT_TRUE(ToggleHold(table, 0));
    EXPECT_EQ(HeldPattern(table.hand), 16);
    EndHolding(table);
    EXPECT_FALSE(ToggleHold(table, 1));
    EXPECT_EQ(HeldPattern(table.hand), 16);
}

TEST_F(TableOfPlay, HoldsOnlyItsFivePositions) {
    DealStacked(table, jacksThenThree);
    EXPECT_FALSE(ToggleHold(table, 5));
    EXPECT_FALSE(ToggleHold(table, static_cast<std::size_t>(-1)));
    EXPECT_TRUE(HoldsNothing(table));
}

TEST_F(TableOfPlay, PatternAndHeldFlagsAreOneThing) {
    for (HoldPattern pattern = 0; pattern <= HoldAll; ++pattern) {
        SetHolds(table.hand, pattern);
        for (std::size_t i = 0; i < HandSize; ++i) {
            EXPECT_EQ(table.hand.held[i], pattern >> i & 1);
        }
        EXPECT_EQ(HeldPattern(table.hand), pattern);
    }
}

// The draw.

TEST_F(TableOfPlay, DrawsRatesAndPricesAHand) {
    DealStacked(table, jacksThenThree);
    EXPECT_EQ(table.rank, 8U);
    ToggleHold(table, 0);
    ToggleHold(table, 1);
    EndHolding(table);
    DrawDiscards(table);
    EXPECT_EQ(CodesOf(table),
              (std::vector<Card>{jacksThenThree[0], jacksThenThree[1], jacksThenThree[5],
                                 jacksThenThree[6], jacksThenThree[7]}));
    const Settlement settled = SettleHand(table);
    EXPECT_EQ(settled.before, 8U);
    EXPECT_EQ(settled.after, 6U);
    EXPECT_EQ(settled.payout, 15);
    EXPECT_EQ(table.rank, 6U);
    EXPECT_FALSE(table.inDraw);
    EXPECT_EQ(table.credits, 95) << "coins come one by one, not with the settlement";
    PayCoins(table, settled.payout);
    EXPECT_EQ(table.credits, 110);
}

TEST_F(TableOfPlay, ALostHandPaysNothing) {
    DealStacked(table, nothing);
    SetHolds(table.hand, HoldAll);
    EndHolding(table);
    DrawDiscards(table);
    const Settlement settled = SettleHand(table);
    EXPECT_EQ(settled.before, 9U);
    EXPECT_EQ(settled.after, 9U);
    EXPECT_EQ(settled.payout, 0);
    EXPECT_EQ(table.credits, 95);
}

TEST_F(TableOfPlay, ARoyalPaysAThousandAtFourCoinsAndFourThousandAtFive) {
    for (const auto& [bet, payout] : std::map<std::int32_t, std::int32_t>{{4, 1000}, {5, 4000}}) {
        table.bet = bet;
        DealStacked(table, royal);
        SetHolds(table.hand, HoldAll);
        EndHolding(table);
        EXPECT_EQ(SettleHand(table).payout, payout);
    }
}

TEST_F(TableOfPlay, SettlesByTheRowsOfItsGame) {
    PickGame(table, DeucesWild);
    DealStacked(table, {0, 13, 26, 39, 5});
    SetHolds(table.hand, HoldAll);
    EndHolding(table);
    const Settlement settled = SettleHand(table);
    EXPECT_EQ(settled.after, 1U);
    EXPECT_EQ(settled.payout, 1000);
}

TEST_F(TableOfPlay, ADrillCostsNoCredits) {
    table.noDraw = true;
    for (int hand = 0; hand < 5; ++hand) {
        ASSERT_TRUE(CanDeal(table));
        StartDeal(table);
        ShowDealtCards(table);
        RateDealtHand(table);
        EXPECT_EQ(table.credits, 100);
        EXPECT_TRUE(table.inDraw);
        EndHolding(table);
        EXPECT_FALSE(table.inDraw);
        EXPECT_EQ(table.credits, 100);
    }
}

TEST_F(TableOfPlay, ADrillStillAsksForCreditsThatCoverTheBet) {
    table.noDraw = true;
    table.credits = 4;
    EXPECT_FALSE(CanDeal(table));
}

// Bet, purchase and reset.

TEST_F(TableOfPlay, BetsOneMoreAndFromFiveBackToOne) {
    for (const std::int32_t expected : {1, 2, 3, 4, 5, 1}) {
        BetOne(table);
        EXPECT_EQ(table.bet, expected);
    }
    EXPECT_EQ(table.credits, 100) << "the bet is taken at the deal";
}

TEST_F(TableOfPlay, BetsWithoutRegardToTheCredits) {
    table.credits = 0;
    table.bet = 2;
    BetOne(table);
    EXPECT_EQ(table.bet, 3);
}

TEST_F(TableOfPlay, BuysTheAmountAsTypedAndOffersItNextTime) {
    for (const std::int32_t amount : {250, 0, -400}) {
        const std::int32_t before = table.credits;
        BuyCredits(table, amount);
        EXPECT_EQ(table.credits, before + amount);
        EXPECT_EQ(table.defaultPurchase, amount);
    }
    EXPECT_EQ(table.credits, -50);
}

TEST_F(TableOfPlay, CreditsWrapAtTheEndsOfTheirWord) {
    table.credits = Most;
    PayCoins(table, 1);
    EXPECT_EQ(table.credits, Least);
    BuyCredits(table, -1);
    EXPECT_EQ(table.credits, Most);
    BuyCredits(table, Most);
    EXPECT_EQ(table.credits, -2);
    table.credits = Least;
    EXPECT_TRUE(CanDeal(table)) << "five less than the least is more than nothing";
    StartDeal(table);
    EXPECT_EQ(table.credits, Most - 4);
}

TEST_F(TableOfPlay, ResetsTheCreditsEvenDuringAHand) {
    table.credits = 77777;
    DealStacked(table, jacksThenThree);
    ResetCredits(table);
    EXPECT_EQ(table.credits, 100);
    EXPECT_TRUE(table.inDraw);
    EXPECT_EQ(table.defaultPurchase, 100);
}

// Picking a game.

TEST_F(TableOfPlay, AbandonsAHandWhenTheGameIsChangedWhileHolding) {
    DealStacked(table, jacksThenThree);
    ToggleHold(table, 1);
    ASSERT_TRUE(PickGame(table, JokerWild));
    EXPECT_EQ(table.credits, 95) << "the bet stays spent";
    EXPECT_FALSE(table.inDraw);
    EXPECT_EQ(table.rank, NoHand);
    EXPECT_TRUE(HoldsNothing(table));
    EXPECT_EQ(table.game.id, JokerWild);
    EXPECT_EQ(table.bet, 5);
    for (const CardRecord& card : table.hand.cards) {
        EXPECT_EQ(card.rankValue, 0);
    }
    EXPECT_FALSE(ToggleHold(table, 1));
}

TEST_F(TableOfPlay, BuildsTheDeckOfThePickedGame) {
    PickGame(table, JokerWild);
    std::set<Card> codes;
    for (std::size_t place = 1; place <= JokerDeckSize; ++place) {
        codes.insert(table.deck[place].code);
    }
    EXPECT_EQ(codes.size(), 53U);
    StartDeal(table);
    EXPECT_EQ(std::set<std::int32_t>(table.order.begin(), table.order.end()).size(), 53U);
    PickGame(table, JacksOrBetter);
    StartDeal(table);
    for (std::size_t i = 0; i < StandardDeckSize; ++i) {
        EXPECT_NE(table.deck[static_cast<std::size_t>(table.order[i])].code, JokerCard);
    }
}

TEST_F(TableOfPlay, PicksNoGameThatDoesNotExist) {
    DealStacked(table, jacksThenThree);
    ToggleHold(table, 2);
    for (const std::int32_t id : {GameCount, -1, Most, Least}) {
        EXPECT_FALSE(PickGame(table, id));
    }
    EXPECT_EQ(table.game.id, JacksOrBetter);
    EXPECT_TRUE(table.inDraw);
    EXPECT_EQ(HeldPattern(table.hand), 4);
    EXPECT_EQ(table.rank, 8U);
}

TEST_F(TableOfPlay, AJokerLeftOnTheTableIsHarmlessInEveryGame) {
    for (std::int32_t id = 0; id < GameCount; ++id) {
        PickGame(table, JokerWild);
        DealStacked(table, {JokerCard, 1, 2, 3, 4});
        PickGame(table, id);
        RateDealtHand(table);
        EXPECT_LE(table.rank, static_cast<HandRank>(table.game.rowCount));
    }
}

// Every move from every state.

TEST_F(TableOfPlay, MovesThroughItsStatesAsTheRulesSay) {
    EXPECT_FALSE(table.inDraw);
    DealStacked(table, jacksThenThree);
    EXPECT_TRUE(table.inDraw);
    BetOne(table);
    ResetCredits(table);
    BuyCredits(table, 10);
    ToggleHold(table, 0);
    EXPECT_TRUE(table.inDraw) << "only the draw and a change of game end it";
    EndHolding(table);
    EXPECT_FALSE(table.inDraw);
    DrawDiscards(table);
    SettleHand(table);
    EXPECT_FALSE(table.inDraw);
    StartDeal(table);
    EXPECT_TRUE(table.inDraw);
    PickGame(table, DeucesWild);
    EXPECT_FALSE(table.inDraw);
}

TEST_F(TableOfPlay, TheSameSeedPlaysTheSameHands) {
    const auto playTen = [] {
        SeedRandom(31);
        Table played;
        OpenTable(played);
        std::vector<Card> seen;
        for (int hand = 0; hand < 10; ++hand) {
            StartDeal(played);
            ShowDealtCards(played);
            EndHolding(played);
            DrawDiscards(played);
            const std::vector<Card> codes = CodesOf(played);
            seen.insert(seen.end(), codes.begin(), codes.end());
        }
        return seen;
    };
    EXPECT_EQ(playTen(), playTen());
}
