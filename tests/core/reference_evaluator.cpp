#include "tests/core/reference_evaluator.h"

#include <algorithm>
#include <bit>

namespace {

// Four bits a rank and four bits a suit: hands are sums of cards.
struct Packed {
    std::uint64_t ranks = 0;
    std::uint32_t suits = 0;
};

constexpr Packed operator+(Packed a, Packed b) {
    return {a.ranks + b.ranks, a.suits + b.suits};
}

constexpr std::array<Packed, StandardDeckSize> packedCards = [] {
    std::array<Packed, StandardDeckSize> cards{};
    for (std::size_t code = 0; code < cards.size(); ++code) {
        cards[code] = {std::uint64_t{1} << code % 13 * 4, std::uint32_t{1} << code / 13 * 4};
    }
    return cards;
}();

constexpr Packed Pack(Card card) {
    return packedCards[static_cast<std::size_t>(card)];
}

constexpr std::uint64_t EachRank = 0x1111111111111;
constexpr std::uint64_t FiveInARow = 0x11111;
constexpr std::uint64_t AceToFive = 0x1000000001111;
constexpr std::uint64_t TenToAce = FiveInARow << 4 * RankTen;

// What five definite cards are, the best first.
enum class Shape {
    FiveOfAKind,
    Royal,
    StraightFlush,
    Quads,
    FullHouse,
    Flush,
    Straight,
    Trips,
    TwoPair,
    Pair,
    Nothing,
};

// The shape, and the ranks that paytables ask for: that of four of a kind or of the higher pair,
// and that of the card beside four of a kind.
struct Seen {
    Shape shape;
    std::int32_t rank = -1;
    std::int32_t kicker = -1;
};

// The one bit that stands for a rank, as the rank.
std::int32_t RankOfBit(std::uint64_t bits) {
    return (63 - std::countl_zero(bits)) / 4;
}

Seen Look(Packed hand) {
    const std::uint64_t fours = hand.ranks >> 2 & EachRank; // ranks of four or five
    const std::uint64_t twos = hand.ranks >> 1 & EachRank;  // of two or three
    const std::uint64_t odd = hand.ranks & EachRank;        // of one, three or five
    if (fours != 0) {
        if ((fours & odd) != 0) {
            return {Shape::FiveOfAKind};
        }
        return {Shape::Quads, RankOfBit(fours), RankOfBit(odd)};
    }
    if (twos == 0) {
        const bool flush = (hand.suits >> 2 & hand.suits & 0x1111) != 0;
        const bool straight =
            hand.ranks == AceToFive || hand.ranks == FiveInARow << std::countr_zero(hand.ranks);
        if (straight && flush) {
            return {hand.ranks == TenToAce ? Shape::Royal : Shape::StraightFlush};
        }
        return {flush ? Shape::Flush : straight ? Shape::Straight : Shape::Nothing};
    }
    const bool trips = (twos & odd) != 0;
    const bool two = std::popcount(twos) == 2;
    // Only copies of one card can make a flush with a pair in it; they come of wild cards.
    const bool flush = (hand.suits >> 2 & hand.suits & 0x1111) != 0;
    if (trips && two) {
        return {Shape::FullHouse};
    }
    if (flush) {
        return {Shape::Flush};
    }
    if (trips) {
        return {Shape::Trips};
    }
    return {two ? Shape::TwoPair : Shape::Pair, RankOfBit(twos)};
}

// Rows from the full house down, which the four games without wild cards list alike.
HandRank RowBelowQuads(const Seen& seen, HandRank fullHouse) {
    if (seen.shape == Shape::Pair) {
        return seen.rank >= RankJack ? fullHouse + 5 : fullHouse + 6;
    }
    const int below = static_cast<int>(seen.shape) - static_cast<int>(Shape::FullHouse);
    return fullHouse + static_cast<HandRank>(std::min(below, 6));
}

bool In(std::int32_t rank, std::int32_t low, std::int32_t high) {
    return rank >= low && rank <= high;
}

HandRank QuadsRow(GameId game, const Seen& seen) {
    const bool aces = seen.rank == RankAce;
    const bool twoToFour = In(seen.rank, RankDeuce, RankFour);
    const bool jackToKing = In(seen.rank, RankJack, RankKing);
    switch (game) {
    case DoubleBonusPoker:
        return aces ? 2 : twoToFour ? 3 : 4;
    case DoubleDoubleBonus: {
        const bool low = In(seen.kicker, RankDeuce, RankFour);
        if (aces) {
            return low ? 2 : 4;
        }
        if (twoToFour) {
            return low || seen.kicker == RankAce ? 3 : 5;
        }
        return 6;
    }
    case DoubleDoubleJackpot: {
        const bool court = In(seen.kicker, RankJack, RankKing);
        if (aces) {
            return court ? 2 : 3;
        }
        if (jackToKing) {
            return court || seen.kicker == RankAce ? 4 : 5;
        }
        return 6;
    }
    default:
        return 2;
    }
}

HandRank PlainRow(GameId game, const Seen& seen) {
    if (seen.shape == Shape::Royal) {
        return 0;
    }
    if (seen.shape == Shape::StraightFlush) {
        return 1;
    }
    if (seen.shape == Shape::Quads) {
        return QuadsRow(game, seen);
    }
    const HandRank fullHouse = game == JacksOrBetter ? 3 : game == DoubleBonusPoker ? 5 : 7;
    return RowBelowQuads(seen, fullHouse);
}

// By shape. A royal with a wild card in it has a row of its own.
HandRank DeucesRow(const Seen& seen, bool wild) {
    static constexpr HandRank rows[] = {3, 0, 4, 5, 6, 7, 8, 9, 10, 10, 10};
    return wild && seen.shape == Shape::Royal ? 2 : rows[static_cast<std::size_t>(seen.shape)];
}

HandRank JokerRow(const Seen& seen, bool wild) {
    static constexpr HandRank rows[] = {1, 0, 3, 4, 5, 6, 7, 8, 9, 11, 11};
    if (wild && seen.shape == Shape::Royal) {
        return 2;
    }
    if (seen.shape == Shape::Pair && seen.rank >= RankKing) {
        return 10;
    }
    return rows[static_cast<std::size_t>(seen.shape)];
}

HandRank RowOf(GameId game, Packed hand, bool wild) {
    const Seen seen = Look(hand);
    switch (game) {
    case DeucesWild:
        return DeucesRow(seen, wild);
    case JokerWild:
        return JokerRow(seen, wild);
    default:
        return PlainRow(game, seen);
    }
}

// The order of the wild cards does not matter, so each is tried from the one before on.
HandRank BestOf(GameId game, Packed hand, std::size_t missing, std::size_t from) {
    if (missing == 0) {
        return RowOf(game, hand, true);
    }
    HandRank best = NoHand;
    for (std::size_t code = from; code < packedCards.size(); ++code) {
        best = std::min(best, BestOf(game, hand + packedCards[code], missing - 1, code));
    }
    return best;
}

bool IsWild(GameId game, Card card) {
    return game == JokerWild ? card == JokerCard : game == DeucesWild && RankOf(card) == RankDeuce;
}

} // namespace

HandRank NaturalRow(GameId game, const Card* codes) {
    Packed hand;
    for (std::size_t i = 0; i < HandSize; ++i) {
        hand = hand + Pack(codes[i]);
    }
    return RowOf(game, hand, false);
}

HandRank BestWildRow(GameId game, const Card* naturals, std::size_t count) {
    Packed hand;
    for (std::size_t i = 0; i < count; ++i) {
        hand = hand + Pack(naturals[i]);
    }
    const HandRank best = BestOf(game, hand, HandSize - count, 0);
    // Four deuces are a row by themselves, whatever else they could stand for.
    return game == DeucesWild && count == 1 ? std::min<HandRank>(best, 1) : best;
}

HandRank ReferenceRow(GameId game, const Card* codes) {
    std::array<Card, HandSize> naturals{};
    std::size_t count = 0;
    for (std::size_t i = 0; i < HandSize; ++i) {
        if (!IsWild(game, codes[i])) {
            naturals[count++] = codes[i];
        }
    }
    return count == HandSize ? NaturalRow(game, codes) : BestWildRow(game, naturals.data(), count);
}
