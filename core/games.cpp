#include "core/games.h"

#include <cwchar>

#include "core/game_tables.h"
#include "core/wrap.h"
#include "settings/settings.h"

namespace {

std::array<Paytable, GameCount> currentPayouts;
std::array<PaidTally, GameCount> paidTallies;

constexpr std::size_t RowNameSize = 16;

void FormatRowName(wchar_t (&name)[RowNameSize], std::int32_t row) {
    std::swprintf(name, RowNameSize, L"%i", row);
}

// Fills every field; the payouts in `current` stay as they are.
void Describe(GameDescriptor& descriptor, std::int32_t id, Paytable& current) {
    const auto index = static_cast<std::size_t>(id);
    const GameTable& table = gameTables[index];
    descriptor.id = static_cast<GameId>(id);
    descriptor.rowNames = table.rowNames.data();
    descriptor.rowCount = table.rowCount;
    descriptor.oneCoin = current.oneCoin.data();
    descriptor.fiveCoins = current.fiveCoins.data();
    descriptor.defaultOneCoin = table.payouts.oneCoin.data();
    descriptor.defaultFiveCoins = table.payouts.fiveCoins.data();
    descriptor.deckSize = table.deckSize;
    descriptor.tally = &paidTallies[index];
    descriptor.title = table.title;
}

bool IsGame(std::int32_t id) {
    return id >= 0 && id < GameCount;
}

} // namespace

void FormatPaytablePath(wchar_t (&path)[PaytablePathSize], const wchar_t* title, bool fiveCoins) {
    std::swprintf(path, PaytablePathSize, L"%ls\\%ls\\%d", SettingsKey, title, fiveCoins ? 5 : 1);
}

std::int32_t DescribeGame(GameDescriptor& descriptor, std::int32_t id, Paytable& current) {
    if (!IsGame(id)) {
        return 0;
    }
    current = gameTables[static_cast<std::size_t>(id)].payouts;
    Describe(descriptor, id, current);
    return 1;
}

std::int32_t LoadGame(GameDescriptor& descriptor, std::int32_t id) {
    if (!IsGame(id)) {
        return 0;
    }
    // Each payout changes in one step from its old value to the stored one, never by way of the
    // default: the game analysis may be reading the same tables.
    Describe(descriptor, id, currentPayouts[static_cast<std::size_t>(id)]);
    wchar_t onePath[PaytablePathSize];
    wchar_t fivePath[PaytablePathSize];
    FormatPaytablePath(onePath, descriptor.title, false);
    FormatPaytablePath(fivePath, descriptor.title, true);
    for (std::int32_t row = 0; row < descriptor.rowCount; ++row) {
        wchar_t name[RowNameSize];
        FormatRowName(name, row);
        descriptor.oneCoin[row] =
            ReadInteger(SettingsRoot::CurrentUser, onePath, name, descriptor.defaultOneCoin[row]);
        descriptor.fiveCoins[row] = ReadInteger(SettingsRoot::CurrentUser, fivePath, name,
                                                descriptor.defaultFiveCoins[row]);
    }
    return 1;
}

std::int32_t RowPayout(HandRank rank, const GameDescriptor& game, std::int32_t bet) {
    if (rank >= static_cast<HandRank>(game.rowCount)) {
        return 0;
    }
    return bet == MaxBet ? game.fiveCoins[rank] : WrapMultiply(game.oneCoin[rank], bet);
}

std::int32_t LookUpPayout(HandRank rank, const GameDescriptor& game, std::int32_t bet) {
    const std::int32_t payout = RowPayout(rank, game, bet);
    game.tally->paid += static_cast<std::uint32_t>(payout);
    return payout;
}

void StorePayout(const GameDescriptor& game, std::int32_t row, bool fiveCoins) {
    const std::int32_t payout = fiveCoins ? game.fiveCoins[row] : game.oneCoin[row];
    const std::int32_t usual = fiveCoins ? game.defaultFiveCoins[row] : game.defaultOneCoin[row];
    wchar_t path[PaytablePathSize];
    wchar_t name[RowNameSize];
    FormatPaytablePath(path, game.title, fiveCoins);
    FormatRowName(name, row);
    WriteInteger(SettingsRoot::CurrentUser, path, name, payout, payout == usual ? 1 : 0);
}
