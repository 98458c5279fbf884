#include "tests/strategy/engine_signature.h"

#include <bit>

#include "strategy/best_hold.h"
#include "tests/strategy/random_hands.h"

namespace {

constexpr std::int32_t sampleSize = 1000;

struct Hash {
    std::uint64_t value = 14695981039346656037u;

    void Add(std::uint64_t word) {
        for (int byte = 0; byte < 8; ++byte) {
            value = (value ^ (word >> 8 * byte & 0xff)) * 1099511628211u;
        }
    }
};

void AddSearch(Hash& hash, const CardRecords& hand, const GameDescriptor& game,
               std::int32_t coins) {
    hash.Add(static_cast<std::uint64_t>(FindBestHold(hand.data(), game, coins)));
    for (const HoldResult& result : resultTable) {
        for (std::int32_t word = 0; word < game.rowCount + 2; ++word) {
            hash.Add(static_cast<std::uint64_t>(result.counts[static_cast<std::size_t>(word)]));
        }
        hash.Add(static_cast<std::uint64_t>(result.pattern));
        hash.Add(std::bit_cast<std::uint64_t>(result.expectedReturn));
    }
}

} // namespace

std::uint64_t EngineSignature() {
    Hash hash;
    for (std::int32_t id = 0; id < GameCount; ++id) {
        GameDescriptor game;
        Paytable payouts;
        DescribeGame(game, id, payouts);
        HandSource source{static_cast<std::uint64_t>(id)};
        for (std::int32_t i = 0; i < sampleSize; ++i) {
            const CardRecords hand = RecordsOf(source.Deal(game.deckSize));
            AddSearch(hash, hand, game, 1);
            AddSearch(hash, hand, game, MaxBet);
        }
    }
    return hash.value;
}
