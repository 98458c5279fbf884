#include "core/evaluate.h"

#include <algorithm>
#include <initializer_list>

namespace {

// What a hand is made of. A wild card counts once in every rank and once in every suit.
struct Tally {
    std::array<std::int32_t, RanksPerSuit> rankCount{};
    std::array<std::int32_t, JokerSuit + 1> suitCount{}; // the fifth only for a stray joker's code
    std::array<std::int32_t, HandSize> sorted{};         // rank indices ascending, wild cards last
    std::int32_t wild = 0;
    std::int32_t pairs = 0;     // ranks seen exactly twice
    std::int32_t pairRank = -1; // the highest of them
    std::int32_t trips = 0;     // ranks seen exactly three times
    std::int32_t quadRank = -1; // the rank seen exactly four times
    bool fiveOfAKind = false;
    bool straight = false;
    bool flush = false;

    bool Quads() const { return quadRank >= 0; }
    std::int32_t Count(std::int32_t rank) const {
        return rankCount[static_cast<std::size_t>(rank)];
    }
    std::int32_t Lowest() const { return sorted.front(); }
    std::int32_t Highest() const { return sorted.back(); }
};

constexpr std::int32_t WildRank = 99; // sorts after every natural rank

bool NoneWild(Card) {
    return false;
}
bool DeuceWild(Card card) {
    return RankOf(card) == RankDeuce;
}
bool IsJoker(Card card) {
    return SuitOf(card) == JokerSuit;
}

// Whether the first `tested` sorted naturals make a straight, with `allowance` wild cards to fill
// the gaps between them. A pair always breaks it.
bool RunsOn(const Tally& tally, std::int32_t tested, std::int32_t allowance) {
    for (std::int32_t i = 1; i < tested; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const std::int32_t gap = tally.sorted[at] - tally.sorted[at - 1];
        if (gap == 0 || gap > allowance + 1) {
            return false;
        }
        allowance -= gap - 1;
    }
    return true;
}

// The ace may stand below the lowest natural, if the wild cards reach down to it: they are spent on
// the ranks below that natural first.
bool IsStraight(const Tally& tally) {
    const std::int32_t naturals = static_cast<std::int32_t>(HandSize) - tally.wild;
    if (naturals <= 1) {
        return true;
    }
    const std::int32_t lowest = tally.Lowest();
    const std::int32_t highest = tally.sorted[static_cast<std::size_t>(naturals - 1)];
    if (highest == RankAce && tally.wild >= lowest) {
        return RunsOn(tally, naturals - 1, tally.wild - lowest);
    }
    return RunsOn(tally, naturals, tally.wild);
}

Tally TallyHand(const Card* codes, bool (*isWild)(Card)) {
    Tally tally;
    for (std::size_t i = 0; i < HandSize; ++i) {
        const Card card = codes[i];
        if (isWild(card)) {
            ++tally.wild;
            tally.sorted[i] = WildRank;
            continue;
        }
        ++tally.rankCount[static_cast<std::size_t>(RankOf(card))];
        ++tally.suitCount[static_cast<std::size_t>(SuitOf(card))];
        tally.sorted[i] = RankOf(card);
    }
    std::sort(tally.sorted.begin(), tally.sorted.end());
    for (std::int32_t& count : tally.rankCount) {
        count += tally.wild;
    }
    for (std::int32_t& count : tally.suitCount) {
        count += tally.wild;
        tally.flush = tally.flush || count == static_cast<std::int32_t>(HandSize);
    }
    for (std::int32_t rank = 0; rank < RanksPerSuit; ++rank) {
        const std::int32_t count = tally.Count(rank);
        if (count == 2) {
            ++tally.pairs;
            tally.pairRank = rank;
        } else if (count == 3) {
            ++tally.trips;
        } else if (count == 4) {
            tally.quadRank = rank;
        } else if (count == 5) {
            tally.fiveOfAKind = true;
        }
    }
    tally.straight = IsStraight(tally);
    return tally;
}

// The rows below four of a kind are the same list in every game without wild cards, from the full
// house down; `fullHouse` is where the list starts in the game's paytable.
HandRank StandardRowsBelowQuads(const Tally& tally, HandRank fullHouse) {
    if (tally.trips == 1 && tally.pairs == 1) {
        return fullHouse;
    }
    if (tally.flush) {
        return fullHouse + 1;
    }
    if (tally.straight) {
        return fullHouse + 2;
    }
    if (tally.trips == 1) {
        return fullHouse + 3;
    }
    if (tally.pairs == 2) {
        return fullHouse + 4;
    }
    if (tally.pairs == 1 && tally.pairRank >= RankJack) {
        return fullHouse + 5;
    }
    return fullHouse + 6;
}

// Without wild cards a straight from the ten always ends at the ace.
HandRank StraightFlushRow(const Tally& tally) {
    return tally.Lowest() == RankTen ? 0 : 1;
}

bool AnyOnce(const Tally& tally, std::initializer_list<std::int32_t> ranks) {
    return std::any_of(ranks.begin(), ranks.end(),
                       [&](std::int32_t rank) { return tally.Count(rank) == 1; });
}

HandRank EvaluateJacksOrBetter(const Card* codes) {
    const Tally tally = TallyHand(codes, NoneWild);
    if (tally.straight && tally.flush) {
        return StraightFlushRow(tally);
    }
    return tally.Quads() ? 2 : StandardRowsBelowQuads(tally, 3);
}

HandRank EvaluateDoubleBonusPoker(const Card* codes) {
    const Tally tally = TallyHand(codes, NoneWild);
    if (tally.straight && tally.flush) {
        return StraightFlushRow(tally);
    }
    if (tally.Quads()) {
        if (tally.quadRank == RankAce) {
            return 2;
        }
        return tally.quadRank <= RankFour ? 3 : 4;
    }
    return StandardRowsBelowQuads(tally, 5);
}

HandRank EvaluateDoubleDoubleBonus(const Card* codes) {
    const Tally tally = TallyHand(codes, NoneWild);
    if (tally.straight && tally.flush) {
        return StraightFlushRow(tally);
    }
    if (tally.Quads()) {
        if (tally.quadRank == RankAce) {
            return AnyOnce(tally, {0, 1, 2}) ? 2 : 4;
        }
        if (tally.quadRank <= RankFour) {
            return AnyOnce(tally, {RankAce, 0, 1, 2}) ? 3 : 5;
        }
        return 6;
    }
    return StandardRowsBelowQuads(tally, 7);
}

HandRank EvaluateDoubleDoubleJackpot(const Card* codes) {
    const Tally tally = TallyHand(codes, NoneWild);
    if (tally.straight && tally.flush) {
        return StraightFlushRow(tally);
    }
    if (tally.Quads()) {
        if (tally.quadRank == RankAce) {
            return AnyOnce(tally, {RankJack, RankQueen, RankKing}) ? 2 : 3;
        }
        if (tally.quadRank >= RankJack) {
            return AnyOnce(tally, {RankJack, RankQueen, RankKing, RankAce}) ? 4 : 5;
        }
        return 6;
    }
    return StandardRowsBelowQuads(tally, 7);
}

HandRank EvaluateDeucesWild(const Card* codes) {
    const Tally tally = TallyHand(codes, DeuceWild);
    const bool straightFlush = tally.straight && tally.flush;
    if (straightFlush && tally.Lowest() == RankTen && tally.Highest() == RankAce) {
        return 0;
    }
    if (tally.wild == 4) {
        return 1;
    }
    if (straightFlush) {
        return tally.Lowest() >= RankTen ? 2 : 4;
    }
    if (tally.fiveOfAKind) {
        return 3;
    }
    if (tally.Quads()) {
        return 5;
    }
    // A deuce and two pairs make two ranks of three, two deuces and three loose cards make three:
    // only a tally of exactly two is a full house.
    if (tally.trips > 0 && (tally.pairs == 1 || tally.trips == 2)) {
        return 6;
    }
    if (tally.flush) {
        return 7;
    }
    if (tally.straight) {
        return 8;
    }
    return tally.trips > 0 ? 9 : 10;
}

HandRank EvaluateJokerWild(const Card* codes) {
    const Tally tally = TallyHand(codes, IsJoker);
    const bool straightFlush = tally.straight && tally.flush;
    if (straightFlush && tally.Lowest() == RankTen && tally.Highest() == RankAce) {
        return 0;
    }
    if (tally.fiveOfAKind) {
        return 1;
    }
    if (straightFlush) {
        return tally.Lowest() >= RankTen ? 2 : 3;
    }
    if (tally.Quads()) {
        return 4;
    }
    if (tally.trips > 0 && (tally.pairs == 1 || tally.trips == 2)) {
        return 5;
    }
    if (tally.flush) {
        return 6;
    }
    if (tally.straight) {
        return 7;
    }
    if (tally.trips > 0) {
        return 8;
    }
    if (tally.pairs == 2) {
        return 9;
    }
    // With the joker every loose card is a pair, so the highest of them is the pair that counts.
    return tally.pairs > 0 && tally.pairRank >= RankKing ? 10 : 11;
}

} // namespace

HandRank EvaluateCodes(std::int32_t game, const Card* codes) {
    switch (game) {
    case JacksOrBetter:
        return EvaluateJacksOrBetter(codes);
    case DeucesWild:
        return EvaluateDeucesWild(codes);
    case JokerWild:
        return EvaluateJokerWild(codes);
    case DoubleDoubleJackpot:
        return EvaluateDoubleDoubleJackpot(codes);
    case DoubleBonusPoker:
        return EvaluateDoubleBonusPoker(codes);
    case DoubleDoubleBonus:
        return EvaluateDoubleDoubleBonus(codes);
    default:
        return NoHand;
    }
}

HandRank Evaluate(std::int32_t game, const CardRecord* hand) {
    std::array<Card, HandSize> codes;
    for (std::size_t i = 0; i < HandSize; ++i) {
        codes[i] = hand[i].code;
    }
    return EvaluateCodes(game, codes.data());
}
