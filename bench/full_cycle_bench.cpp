// The exact return of each game: every deal class searched once, weights applied. The same cycle by
// the independent method, its tables built and every class evaluated, tells how much the closed
// forms bring.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <ctime>

#include "bench/game_name.h"
#include "core/evaluate.h"
#include "strategy/best_hold.h"
#include "tests/strategy/engine_signature.h"
#include "tests/strategy/independent_counts.h"
#include "tests/strategy/random_hands.h"
#include "tests/strategy/suit_classes.h"

namespace {

struct Cycle {
    GameDescriptor game;
    Paytable payouts;
    std::vector<SuitClass> classes;
    double deals = 0;
};

Cycle cycles[GameCount];

void PrepareCycle(std::int32_t id) {
    Cycle& cycle = cycles[id];
    DescribeGame(cycle.game, id, cycle.payouts);
    cycle.classes = NaturalClasses();
    if (cycle.game.deckSize == JokerDeckSize) {
        const std::vector<SuitClass> jokers = JokerClasses();
        cycle.classes.insert(cycle.classes.end(), jokers.begin(), jokers.end());
    }
    for (const SuitClass& deal : cycle.classes) {
        cycle.deals += deal.weight;
    }
}

// Both methods give the return in parts of the five coins bet.
double ClosedFormCycle(const Cycle& cycle) {
    double sum = 0;
    for (const SuitClass& deal : cycle.classes) {
        const CardRecords hand = RecordsOf(deal.cards);
        const std::int32_t best = FindBestHold(hand.data(), cycle.game, MaxBet);
        sum += deal.weight * resultTable[static_cast<std::size_t>(best)].expectedReturn;
    }
    return sum / cycle.deals / MaxBet;
}

// The game of the cycle under way: a category is told from the cards alone.
std::int32_t cycleGame = 0;

std::int32_t RowOf(const Card* five) {
    return static_cast<std::int32_t>(EvaluateCodes(cycleGame, five));
}

double BestReturn(const HoldCounts& counts, std::size_t categories, const double* pay) {
    double best = -1;
    for (std::size_t pattern = 0; pattern < counts.size() / categories; ++pattern) {
        double won = 0;
        double total = 0;
        for (std::size_t row = 0; row < categories; ++row) {
            const double draws = counts[pattern * categories + row];
            won += draws * pay[row];
            total += draws;
        }
        best = std::max(best, won / total);
    }
    return best;
}

double IndependentCycle(const Cycle& cycle) {
    // One category for nothing beside the rows.
    const auto categories = static_cast<std::size_t>(cycle.game.rowCount) + 1;
    cycleGame = cycle.game.id;
    const IndependentCounts deck = TallyDeck(cycle.game.deckSize, categories, RowOf);
    std::array<double, MaxRows + 1> pay{};
    std::copy_n(cycle.game.fiveCoins, cycle.game.rowCount, pay.begin());
    HoldCounts counts;
    double sum = 0;
    for (const SuitClass& deal : cycle.classes) {
        CountAllHolds(deck, deal.cards.data(), counts);
        sum += deal.weight * BestReturn(counts, categories, pay.data());
    }
    return sum / cycle.deals / MaxBet;
}

struct Outcome {
    double seconds = 1e9; // of processor time, the shortest run
    double gameReturn = 0;
};

void Run(benchmark::State& state, double (*method)(const Cycle&), std::int32_t id,
         Outcome* outcome) {
    for (auto _ : state) {
        const std::clock_t start = std::clock();
        outcome->gameReturn = method(cycles[id]);
        const double taken = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        outcome->seconds = std::min(outcome->seconds, taken);
    }
    state.counters["return"] = outcome->gameReturn;
}

} // namespace

int main(int argc, char** argv) {
    Outcome closed[GameCount];
    Outcome independent[GameCount];
    for (std::int32_t id = 0; id < GameCount; ++id) {
        PrepareCycle(id);
        const std::string name = NameOf(id);
        benchmark::RegisterBenchmark((name + "/closed forms").c_str(), Run, ClosedFormCycle, id,
                                     &closed[id])
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((name + "/independent").c_str(), Run, IndependentCycle, id,
                                     &independent[id])
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::printf("\n%-22s %12s %12s %6s %9s  shortest runs; return\n", "", "closed ms", "indep. ms",
                "ratio", "ns/search");
    for (std::int32_t id = 0; id < GameCount; ++id) {
        if (closed[id].gameReturn == 0 || independent[id].gameReturn == 0) {
            continue; // it was filtered out
        }
        std::printf("%-22s %12.1f %12.1f %6.2f %9.0f  %.6f%% %.6f%%\n", NameOf(id).c_str(),
                    closed[id].seconds * 1e3, independent[id].seconds * 1e3,
                    independent[id].seconds / closed[id].seconds,
                    closed[id].seconds * 1e9 / static_cast<double>(cycles[id].classes.size()),
                    closed[id].gameReturn * 100, independent[id].gameReturn * 100);
    }
    std::printf("engine signature %016" PRIx64 "\n", EngineSignature());
    return 0;
}
