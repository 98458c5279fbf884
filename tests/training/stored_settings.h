// What the tests of this folder share: the settings store as they find and leave it, the same over
// memory and over the registry.
#ifndef TESSARIN_TESTS_TRAINING_STORED_SETTINGS_H
#define TESSARIN_TESTS_TRAINING_STORED_SETTINGS_H

#include "core/games.h"
#include "settings/settings.h"

// The eight names of the session totals.
inline constexpr const wchar_t* statsNames[] = {L"CoinsIn", L"CoinsOut", L"Hands",    L"Errors0",
                                                L"Errors1", L"Errors2",  L"Returns0", L"Returns1"};

inline void RemoveStats() {
    for (const wchar_t* name : statsNames) {
        WriteInteger(SettingsRoot::CurrentUser, SettingsKey, name, 0, 1);
    }
}

// Puts the default payouts back.
inline void RemovePayouts(std::int32_t id) {
    GameDescriptor game{};
    LoadGame(game, id);
    for (std::int32_t row = 0; row < game.rowCount; ++row) {
        game.oneCoin[row] = game.defaultOneCoin[row];
        game.fiveCoins[row] = game.defaultFiveCoins[row];
        StorePayout(game, row, false);
        StorePayout(game, row, true);
    }
}

#endif
