// How many ways there are to draw pairs, trips and loose cards of different ranks from a set of
// ranks. What matters of a rank is only c, the number of its cards left (0..4), so a set is known
// by four sums over its ranks; to put a rank in or take it out is to add or subtract its terms.
#ifndef TESSARIN_STRATEGY_RANK_CLASSES_H
#define TESSARIN_STRATEGY_RANK_CLASSES_H

#include <array>
#include <cstdint>

#include "strategy/choose.h"

// How many cards, and how many sets of two, three and four cards of one rank, the ranks of a set
// hold. Any sum over the ranks of a function of c that is 0 at 0 is a sum of these four.
struct RankSums {
    std::int32_t cards; // C(c,1)
    std::int32_t pairs; // C(c,2)
    std::int32_t trips; // C(c,3)
    std::int32_t quads; // C(c,4)
};

// The terms of one rank, by c.
inline constexpr std::array<RankSums, 5> RankTerms = [] {
    std::array<RankSums, 5> terms{};
    for (std::size_t c = 0; c < terms.size(); ++c) {
        terms[c] = {SmallChoose[c][1], SmallChoose[c][2], SmallChoose[c][3], SmallChoose[c][4]};
    }
    return terms;
}();

constexpr void AddTerms(RankSums& sums, const RankSums& terms) {
    sums.cards += terms.cards;
    sums.pairs += terms.pairs;
    sums.trips += terms.trips;
    sums.quads += terms.quads;
}

constexpr void TakeTerms(RankSums& sums, const RankSums& terms) {
    sums.cards -= terms.cards;
    sums.pairs -= terms.pairs;
    sums.trips -= terms.trips;
    sums.quads -= terms.quads;
}

// The sums of a set told by its histogram: entry c is the number of its ranks with c cards left.
constexpr RankSums SumOverClasses(const std::int32_t* histogram) {
    return {histogram[1] + 2 * histogram[2] + 3 * histogram[3] + 4 * histogram[4],
            histogram[2] + 3 * histogram[3] + 6 * histogram[4], histogram[3] + 4 * histogram[4],
            histogram[4]};
}

// The sums over the ranks of C(c,2) c, C(c,2) c^2, C(c,2) c^3, C(c,2)^2, C(c,2)^2 c, C(c,3) c,
// C(c,3) c^2 and C(c,3) C(c,2).
constexpr std::int32_t PairCards(const RankSums& of) {
    return 2 * of.pairs + 3 * of.trips;
}
constexpr std::int32_t PairSquares(const RankSums& of) {
    return 4 * of.pairs + 15 * of.trips + 12 * of.quads;
}
constexpr std::int32_t PairCubes(const RankSums& of) {
    return 8 * of.pairs + 57 * of.trips + 108 * of.quads;
}
constexpr std::int32_t PairPairs(const RankSums& of) {
    return of.pairs + 6 * of.trips + 6 * of.quads;
}
constexpr std::int32_t PairPairsCards(const RankSums& of) {
    return 2 * of.pairs + 21 * of.trips + 48 * of.quads;
}
constexpr std::int32_t TripCards(const RankSums& of) {
    return 3 * of.trips + 4 * of.quads;
}
constexpr std::int32_t TripSquares(const RankSums& of) {
    return 9 * of.trips + 28 * of.quads;
}
constexpr std::int32_t TripPairs(const RankSums& of) {
    return 3 * of.trips + 12 * of.quads;
}

static_assert([] {
    bool equal = true;
    for (std::size_t left = 0; left < RankTerms.size(); ++left) {
        const auto c = static_cast<std::int32_t>(left);
        const RankSums& rank = RankTerms[left];
        equal = equal && PairCards(rank) == rank.pairs * c &&
                PairSquares(rank) == rank.pairs * c * c &&
                PairCubes(rank) == rank.pairs * c * c * c &&
                PairPairs(rank) == rank.pairs * rank.pairs &&
                PairPairsCards(rank) == rank.pairs * rank.pairs * c &&
                TripCards(rank) == rank.trips * c && TripSquares(rank) == rank.trips * c * c &&
                TripPairs(rank) == rank.trips * rank.pairs;
    }
    return equal;
}());

// Two loose cards of different ranks: any two but the pairs.
constexpr std::int32_t TwoSingles(const RankSums& all) {
    return all.cards * (all.cards - 1) / 2 - all.pairs;
}

// Three loose cards of different ranks: any three but the trips and the pairs with another card. A
// pair and any other card makes each trips three times, which is two too many.
constexpr std::int32_t ThreeSingles(const RankSums& all) {
    const std::int32_t any = all.cards * (all.cards - 1) * (all.cards - 2) / 6;
    return any - all.pairs * (all.cards - 2) + 2 * all.trips;
}

// A pair of a rank of `of` with one, two or three loose cards of other ranks of `all`, which
// contains `of`: each draw of loose cards less those that meet the rank of the pair.
constexpr std::int32_t PairAndSingle(const RankSums& of, const RankSums& all) {
    return of.pairs * all.cards - PairCards(of);
}
constexpr std::int32_t PairAndTwoSingles(const RankSums& of, const RankSums& all) {
    return of.pairs * TwoSingles(all) - PairCards(of) * all.cards + PairSquares(of);
}
constexpr std::int32_t PairAndThreeSingles(const RankSums& of, const RankSums& all) {
    return of.pairs * ThreeSingles(all) - PairCards(of) * TwoSingles(all) +
           PairSquares(of) * all.cards - PairCubes(of);
}

// Two pairs of different ranks, alone or with a loose card of a third.
constexpr std::int32_t TwoPairs(const RankSums& all) {
    return (all.pairs * all.pairs - PairPairs(all)) / 2;
}
constexpr std::int32_t TwoPairsAndSingle(const RankSums& all) {
    return TwoPairs(all) * all.cards - (all.pairs * PairCards(all) - PairPairsCards(all));
}

// Trips with one or two loose cards of other ranks, or with a pair of another.
constexpr std::int32_t TripsAndSingle(const RankSums& all) {
    return all.trips * all.cards - TripCards(all);
}
constexpr std::int32_t TripsAndTwoSingles(const RankSums& all) {
    return all.trips * TwoSingles(all) - TripCards(all) * all.cards + TripSquares(all);
}
constexpr std::int32_t TripsAndPair(const RankSums& all) {
    return all.trips * all.pairs - TripPairs(all);
}

// Four loose cards of different ranks: any four but those with two or more of one rank.
constexpr std::int32_t FourSingles(const RankSums& all) {
    const std::int32_t any = all.cards * (all.cards - 1) * (all.cards - 2) * (all.cards - 3) / 24;
    return any - PairAndTwoSingles(all, all) - TwoPairs(all) - TripsAndSingle(all) - all.quads;
}

#endif
