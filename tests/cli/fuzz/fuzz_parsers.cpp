// Any text as a game, a bet, payouts and cards. The first byte picks the game that the payouts and
// cards are for.

#include <cstdint>

#include "cli/parse.h"
#include "tests/cli/fuzz/require.h"

namespace {

void TryGame(std::string_view text) {
    std::int32_t id = -7;
    std::string error;
    if (!ParseGame(text, id, error)) {
        Require(id == -7, "a refused game leaves the result alone");
        RequireMessage(error);
        return;
    }
    Require(id >= 0 && id < GameCount, "a game is one of those there are");
    for (const std::string& shown :
         {std::to_string(id), std::string(gameNames[static_cast<std::size_t>(id)])}) {
        std::int32_t again = -7;
        Require(ParseGame(shown, again, error) && again == id, "a game reads back");
    }
}

void TryBet(std::string_view text) {
    std::int32_t bet = -7;
    std::string error;
    if (!ParseBet(text, bet, error)) {
        Require(bet == -7, "a refused bet leaves the result alone");
        RequireMessage(error);
        return;
    }
    Require(bet >= 1 && bet <= MaxBet, "a bet is one to five coins");
    std::int32_t again = -7;
    Require(ParseBet(std::to_string(bet), again, error) && again == bet, "a bet reads back");
}

void TryPayouts(std::string_view text, const GameDescriptor& game) {
    const std::vector<std::int32_t> before = {-7};
    std::vector<std::int32_t> payouts = before;
    std::string error;
    if (!ParsePayouts(text, game, payouts, error)) {
        Require(payouts == before, "refused payouts leave the result alone");
        RequireMessage(error);
        return;
    }
    Require(payouts.size() == static_cast<std::size_t>(game.rowCount), "a row has a payout");
    for (const char* joiner : {"-", ","}) {
        std::string shown;
        for (const std::int32_t payout : payouts) {
            Require(payout >= 0, "no payout is below nothing");
            shown += (shown.empty() ? "" : joiner) + std::to_string(payout);
        }
        std::vector<std::int32_t> again;
        Require(ParsePayouts(shown, game, again, error) && again == payouts, "payouts read back");
    }
}

void TryCards(std::string_view text, const GameDescriptor& game) {
    const HandCodes before = {-7, -7, -7, -7, -7};
    HandCodes cards = before;
    std::string error;
    if (!ParseCards(text, game, cards, error)) {
        Require(cards == before, "a refused hand leaves the result alone");
        RequireMessage(error);
        return;
    }
    std::string codes;
    std::string apart;
    std::string together;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        Require(cards[i] >= 0 && cards[i] < game.deckSize, "a card is of the game's deck");
        for (std::size_t k = 0; k < i; ++k) {
            Require(cards[k] != cards[i], "a hand is five different cards");
        }
        codes += std::to_string(cards[i]) + " ";
        apart += CardName(cards[i]) + ",";
        together += CardName(cards[i]);
    }
    for (const std::string& shown : {codes, apart, together}) {
        HandCodes again = before;
        Require(ParseCards(shown, game, again, error) && again == cards, "a hand reads back");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    Paytable payouts{};
    GameDescriptor game{};
    DescribeGame(game, data[0] % GameCount, payouts);
    TryGame(text);
    TryBet(text);
    TryPayouts(text, game);
    TryCards(text, game);
    return 0;
}
