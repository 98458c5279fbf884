// One search of the best hold, averaged over all deal classes of the game's deck, in an order that
// the processor cannot foresee.
#include <benchmark/benchmark.h>

#include <cinttypes>
#include <cstdio>

#include "bench/game_name.h"
#include "strategy/best_hold.h"
#include "tests/strategy/engine_signature.h"
#include "tests/strategy/random_hands.h"
#include "tests/strategy/suit_classes.h"

namespace {

std::vector<CardRecords> ShuffledHands(bool withJoker) {
    std::vector<CardRecords> hands;
    for (const SuitClass& deal : NaturalClasses()) {
        hands.push_back(RecordsOf(deal.cards));
    }
    if (withJoker) {
        for (const SuitClass& deal : JokerClasses()) {
            hands.push_back(RecordsOf(deal.cards));
        }
    }
    HandSource source{1};
    for (std::size_t i = hands.size(); i > 1; --i) {
        std::swap(hands[i - 1],
                  hands[static_cast<std::size_t>(source.Next(static_cast<std::int32_t>(i)))]);
    }
    return hands;
}

void Search(benchmark::State& state, std::int32_t id) {
    GameDescriptor game;
    Paytable payouts;
    DescribeGame(game, id, payouts);
    const std::vector<CardRecords> hands = ShuffledHands(game.deckSize == JokerDeckSize);
    for (auto _ : state) {
        for (const CardRecords& hand : hands) {
            benchmark::DoNotOptimize(FindBestHold(hand.data(), game, MaxBet));
        }
    }
    const double searches = static_cast<double>(hands.size());
    state.counters["search"] = benchmark::Counter(
        searches, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

} // namespace

int main(int argc, char** argv) {
    for (std::int32_t id = 0; id < GameCount; ++id) {
        benchmark::RegisterBenchmark(NameOf(id).c_str(), Search, id)->Unit(benchmark::kMillisecond);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::printf("engine signature %016" PRIx64 "\n", EngineSignature());
    return 0;
}
