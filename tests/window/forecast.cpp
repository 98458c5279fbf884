#include "tests/window/forecast.h"

#include "core/random.h"

void ForetellStart(Table& table, std::uint32_t seed) {
    SeedRandom(seed);
    OpenTable(table);
}

void ForetellAnew(Table& table, std::uint32_t seed) {
    SeedRandom(seed);
    BuildDeck(table.game.deckSize, table.deck);
}

void ForetellDeal(Table& table) {
    StartDeal(table);
    ClearHolds(table);
    DealFiveCards(table.deck, table.order, table.hand);
    RateDealtHand(table);
}

Settlement ForetellDraw(Table& table, HoldPattern hold) {
    SetHolds(table.hand, hold);
    EndHolding(table);
    DrawReplacementCards(table.deck, table.order, table.hand);
    const Settlement settlement = SettleHand(table);
    PayCoins(table, settlement.payout);
    return settlement;
}

Settlement ForetoldDraw(const Table& table, HoldPattern hold) {
    Table copy;
    copy.bet = table.bet;
    copy.game = table.game;
    copy.deck = table.deck;
    copy.order = table.order;
    copy.hand = table.hand;
    copy.rank = table.rank;
    return ForetellDraw(copy, hold);
}
