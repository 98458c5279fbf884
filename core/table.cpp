#include "core/table.h"

#include "core/evaluate.h"
#include "core/wrap.h"
#include "settings/settings.h"

namespace {

std::int32_t ReadOption(const wchar_t* name, std::int32_t fallback) {
    return ReadInteger(SettingsRoot::CurrentUser, SettingsKey, name, fallback);
}

void WriteOption(const wchar_t* name, std::int32_t value) {
    WriteInteger(SettingsRoot::CurrentUser, SettingsKey, name, value, 0);
}

std::int32_t DealSpeedOr(std::int32_t stored, std::int32_t fallback) {
    return stored == SlowDeal || stored == MediumDeal || stored == FastDeal ? stored : fallback;
}

void LoadGameAndDeck(Table& table, std::int32_t id) {
    LoadGame(table.game, id);
    BuildDeck(table.game.deckSize, table.deck);
}

bool IsRow(const Table& table, HandRank rank) {
    return rank < static_cast<HandRank>(table.game.rowCount);
}

} // namespace

void OpenTable(Table& table) {
    // Five different codes, never shown, so that a search made before the first deal has a hand.
    for (std::size_t i = 0; i < HandSize; ++i) {
        table.hand.cards[i] = {JokerCard - static_cast<Card>(i), 0, 0, 0};
    }
    table.noDraw = ReadOption(L"NoDraw", 0) != 0;
    table.dealSpeed = DealSpeedOr(ReadOption(L"Speed", MediumDeal), MediumDeal);
    table.sound = ReadOption(L"Sound", 1) != 0;
    table.defaultPurchase = ReadOption(L"DefBuy", 100);
    table.credits = ReadOption(L"Credits", StartingCredits);
    const std::int32_t bet = ReadOption(L"Lastbet", MaxBet);
    table.bet = bet >= 1 && bet <= MaxBet ? bet : MaxBet;
    const std::int32_t game = ReadOption(L"Lastgame", JacksOrBetter);
    LoadGameAndDeck(table, game >= 0 && game < GameCount ? game : JacksOrBetter);
}

void StoreTable(const Table& table) {
    WriteOption(L"NoDraw", table.noDraw ? 1 : 0);
    WriteOption(L"Speed", table.dealSpeed);
    WriteOption(L"Sound", table.sound ? 1 : 0);
    WriteOption(L"Credits", table.credits);
    WriteOption(L"DefBuy", table.defaultPurchase);
    WriteOption(L"Lastbet", table.bet);
    WriteOption(L"Lastgame", table.game.id);
}

bool CanDeal(const Table& table) {
    return WrapSubtract(table.credits, table.bet) >= 0;
}

void StartDeal(Table& table) {
    table.inDraw = true;
    table.rank = NoHand;
    DrawDistinctPositions(table.game.deckSize, table.game.deckSize, table.order.data());
    if (!table.noDraw) {
        table.credits = WrapSubtract(table.credits, table.bet);
    }
}

void ClearHolds(Table& table) {
    table.rank = NoHand;
    table.hand.held.fill(0);
}

void DealPosition(Table& table, std::size_t position) {
    DealCard(table.deck, table.order, table.hand, position);
}

bool RateDealtHand(Table& table) {
    table.rank = Evaluate(table.game.id, table.hand.cards.data());
    return IsRow(table, table.rank);
}

bool ToggleHold(Table& table, std::size_t position) {
    if (!table.inDraw || position >= HandSize) {
        return false;
    }
    table.hand.held[position] = 1 - table.hand.held[position];
    return true;
}

HoldPattern HeldPattern(const Hand& hand) {
    HoldPattern pattern = 0;
    for (std::size_t i = 0; i < HandSize; ++i) {
        pattern |= hand.held[i] << i;
    }
    return pattern;
}

void SetHolds(Hand& hand, HoldPattern pattern) {
    for (std::size_t i = 0; i < HandSize; ++i) {
        hand.held[i] = (pattern >> i) & 1;
    }
}

void EndHolding(Table& table) {
    table.inDraw = false;
}

void ReplacePosition(Table& table, std::size_t position, std::size_t taken) {
    ReplaceCard(table.deck, table.order, table.hand, position, taken);
}

Settlement SettleHand(Table& table) {
    const HandRank before = table.rank;
    table.rank = Evaluate(table.game.id, table.hand.cards.data());
    return {before, table.rank, LookUpPayout(table.rank, table.game, table.bet)};
}

// In one step, so that a reset between reading and writing is not lost; an atomic sum wraps.
void PayCoins(Table& table, std::int32_t coins) {
    table.credits += coins;
}

void BetOne(Table& table) {
    table.bet = table.bet >= MaxBet ? 1 : table.bet + 1;
}

bool PickGame(Table& table, std::int32_t id) {
    if (id < 0 || id >= GameCount) {
        return false;
    }
    LoadGameAndDeck(table, id);
    ClearHolds(table);
    for (CardRecord& card : table.hand.cards) {
        card.rankValue = 0;
    }
    table.inDraw = false;
    return true;
}

void BuyCredits(Table& table, std::int32_t amount) {
    table.defaultPurchase = amount;
    PayCoins(table, amount);
}

void ResetCredits(Table& table) {
    table.credits = StartingCredits;
}
