// How many ways there are to draw pairs, trips and loose cards of different ranks from a set of
// ranks. What matters of a rank is only c, the number of its cards left (0..4), so a set is known
// by a few sums over its ranks; to put a rank in or take it out is to add or subtract its terms.
#ifndef TESSARIN_STRATEGY_RANK_CLASSES_H
#define TESSARIN_STRATEGY_RANK_CLASSES_H

#include <array>
#include <cstdint>

#include "strategy/choose.h"

// Sums over the ranks of a set. A pair is one of the C(c,2) of its rank, trips one of the C(c,3).
struct RankSums {
    std::int32_t cards;          // c
    std::int32_t squares;        // c^2
    std::int32_t cubes;          // c^3
    std::int32_t pairs;          // C(c,2)
    std::int32_t pairCards;      // C(c,2) c
    std::int32_t pairSquares;    // C(c,2) c^2
    std::int32_t pairCubes;      // C(c,2) c^3
    std::int32_t pairPairs;      // C(c,2)^2
    std::int32_t pairPairsCards; // C(c,2)^2 c
    std::int32_t trips;          // C(c,3)
    std::int32_t tripCards;      // C(c,3) c
    std::int32_t tripSquares;    // C(c,3) c^2
    std::int32_t tripPairs;      // C(c,3) C(c,2)
};

// The terms of one rank, by c.
inline constexpr std::array<RankSums, 5> RankTerms = [] {
    std::array<RankSums, 5> terms{};
    for (std::size_t left = 0; left < terms.size(); ++left) {
        const auto c = static_cast<std::int32_t>(left);
        const std::int32_t pairs = SmallChoose[left][2];
        const std::int32_t trips = SmallChoose[left][3];
        terms[left] = {c,
                       c * c,
                       c * c * c,
                       pairs,
                       pairs * c,
                       pairs * c * c,
                       pairs * c * c * c,
                       pairs * pairs,
                       pairs * pairs * c,
                       trips,
                       trips * c,
                       trips * c * c,
                       trips * pairs};
    }
    return terms;
}();

constexpr void AddTerms(RankSums& sums, const RankSums& terms) {
    sums.cards += terms.cards;
    sums.squares += terms.squares;
    sums.cubes += terms.cubes;
    sums.pairs += terms.pairs;
    sums.pairCards += terms.pairCards;
    sums.pairSquares += terms.pairSquares;
    sums.pairCubes += terms.pairCubes;
    sums.pairPairs += terms.pairPairs;
    sums.pairPairsCards += terms.pairPairsCards;
    sums.trips += terms.trips;
    sums.tripCards += terms.tripCards;
    sums.tripSquares += terms.tripSquares;
    sums.tripPairs += terms.tripPairs;
}

constexpr void TakeTerms(RankSums& sums, const RankSums& terms) {
    sums.cards -= terms.cards;
    sums.squares -= terms.squares;
    sums.cubes -= terms.cubes;
    sums.pairs -= terms.pairs;
    sums.pairCards -= terms.pairCards;
    sums.pairSquares -= terms.pairSquares;
    sums.pairCubes -= terms.pairCubes;
    sums.pairPairs -= terms.pairPairs;
    sums.pairPairsCards -= terms.pairPairsCards;
    sums.trips -= terms.trips;
    sums.tripCards -= terms.tripCards;
    sums.tripSquares -= terms.tripSquares;
    sums.tripPairs -= terms.tripPairs;
}

// Two loose cards of different ranks.
constexpr std::int32_t TwoSingles(const RankSums& all) {
    return (all.cards * all.cards - all.squares) / 2;
}

// Three loose cards of different ranks: Newton's third elementary sum.
constexpr std::int32_t ThreeSingles(const RankSums& all) {
    const std::int32_t c = all.cards;
    return (c * c * c - 3 * c * all.squares + 2 * all.cubes) / 6;
}

// A pair of a rank of `of` with one, two or three loose cards of other ranks of `all`, which
// contains `of`: each draw of loose cards less those that meet the rank of the pair.
constexpr std::int32_t PairAndSingle(const RankSums& of, const RankSums& all) {
    return of.pairs * all.cards - of.pairCards;
}
constexpr std::int32_t PairAndTwoSingles(const RankSums& of, const RankSums& all) {
    return of.pairs * TwoSingles(all) - of.pairCards * all.cards + of.pairSquares;
}
constexpr std::int32_t PairAndThreeSingles(const RankSums& of, const RankSums& all) {
    return of.pairs * ThreeSingles(all) - of.pairCards * TwoSingles(all) +
           of.pairSquares * all.cards - of.pairCubes;
}

// Two pairs of different ranks, alone or with a loose card of a third.
constexpr std::int32_t TwoPairs(const RankSums& all) {
    return (all.pairs * all.pairs - all.pairPairs) / 2;
}
constexpr std::int32_t TwoPairsAndSingle(const RankSums& all) {
    return TwoPairs(all) * all.cards - (all.pairs * all.pairCards - all.pairPairsCards);
}

// Trips with one or two loose cards of other ranks, or with a pair of another.
constexpr std::int32_t TripsAndSingle(const RankSums& all) {
    return all.trips * all.cards - all.tripCards;
}
constexpr std::int32_t TripsAndTwoSingles(const RankSums& all) {
    return all.trips * TwoSingles(all) - all.tripCards * all.cards + all.tripSquares;
}
constexpr std::int32_t TripsAndPair(const RankSums& all) {
    return all.trips * all.pairs - all.tripPairs;
}

#endif
