#include "training/deal_classes.h"

#include <cstddef>
#include <span>

#include "strategy/choose.h"

namespace {

// The suits of five cards in order, and the deals that are the same up to the names of the suits:
// 24 over the renamings that leave the hand as it is. The joker has no suit to list.
struct SuitPattern {
    std::array<std::int32_t, HandSize> suits;
    std::int32_t weight;
};

constexpr SuitPattern fourOfAKind[] = {
    {{0, 1, 2, 3, 0}, 4},
};

constexpr SuitPattern fullHouse[] = {
    {{0, 1, 2, 0, 1}, 12},
    {{0, 1, 2, 2, 3}, 12},
};

constexpr SuitPattern threeOfAKind[] = {
    {{0, 1, 2, 0, 0}, 12}, {{0, 1, 2, 3, 3}, 4},  {{0, 1, 2, 0, 1}, 24},
    {{0, 1, 2, 0, 3}, 12}, {{0, 1, 2, 3, 0}, 12},
};

constexpr SuitPattern twoPair[] = {
    {{0, 1, 0, 1, 0}, 12}, {{0, 1, 0, 1, 2}, 12}, {{0, 1, 1, 2, 1}, 24}, {{0, 1, 1, 2, 0}, 24},
    {{0, 1, 1, 2, 2}, 24}, {{0, 1, 2, 3, 0}, 12}, {{0, 1, 2, 3, 2}, 12}, {{0, 1, 1, 2, 3}, 24},
};

constexpr SuitPattern onePair[] = {
    {{0, 1, 0, 0, 0}, 12}, {{0, 1, 2, 2, 2}, 12}, {{0, 1, 0, 0, 1}, 12}, {{0, 1, 0, 1, 0}, 12},
    {{0, 1, 1, 0, 0}, 12}, {{0, 1, 0, 1, 2}, 24}, {{0, 1, 1, 2, 0}, 24}, {{0, 1, 2, 0, 1}, 24},
    {{0, 1, 0, 0, 2}, 24}, {{0, 1, 0, 2, 0}, 24}, {{0, 1, 2, 0, 0}, 24}, {{0, 1, 2, 2, 3}, 12},
    {{0, 1, 2, 3, 2}, 12}, {{0, 1, 3, 2, 2}, 12}, {{0, 1, 0, 2, 2}, 24}, {{0, 1, 2, 0, 2}, 24},
    {{0, 1, 2, 2, 0}, 24}, {{0, 1, 0, 2, 3}, 24}, {{0, 1, 3, 0, 2}, 24}, {{0, 1, 2, 3, 0}, 24},
};

constexpr SuitPattern noPair[] = {
    {{0, 0, 0, 0, 0}, 4},  {{0, 0, 0, 0, 1}, 12}, {{0, 0, 0, 1, 0}, 12}, {{0, 0, 1, 0, 0}, 12},
    {{0, 1, 0, 0, 0}, 12}, {{1, 0, 0, 0, 0}, 12}, {{0, 0, 0, 1, 1}, 12}, {{0, 0, 1, 0, 1}, 12},
    {{0, 0, 1, 1, 0}, 12}, {{0, 1, 0, 0, 1}, 12}, {{0, 1, 0, 1, 0}, 12}, {{0, 1, 1, 0, 0}, 12},
    {{1, 0, 0, 0, 1}, 12}, {{1, 0, 0, 1, 0}, 12}, {{1, 0, 1, 0, 0}, 12}, {{1, 1, 0, 0, 0}, 12},
    {{0, 0, 0, 1, 2}, 24}, {{0, 0, 1, 0, 2}, 24}, {{0, 0, 1, 2, 0}, 24}, {{0, 1, 0, 0, 2}, 24},
    {{0, 1, 0, 2, 0}, 24}, {{0, 1, 2, 0, 0}, 24}, {{1, 0, 0, 0, 2}, 24}, {{1, 0, 0, 2, 0}, 24},
    {{1, 0, 2, 0, 0}, 24}, {{1, 2, 0, 0, 0}, 24}, {{2, 0, 0, 1, 1}, 24}, {{2, 1, 0, 1, 0}, 24},
    {{2, 0, 1, 1, 0}, 24}, {{1, 2, 1, 0, 0}, 24}, {{1, 2, 0, 1, 0}, 24}, {{1, 2, 0, 0, 1}, 24},
    {{0, 0, 1, 1, 2}, 24}, {{0, 1, 0, 1, 2}, 24}, {{0, 1, 1, 0, 2}, 24}, {{0, 1, 1, 2, 0}, 24},
    {{1, 0, 1, 2, 0}, 24}, {{1, 1, 0, 2, 0}, 24}, {{1, 1, 2, 0, 0}, 24}, {{1, 0, 2, 1, 0}, 24},
    {{0, 1, 2, 1, 0}, 24}, {{0, 0, 1, 2, 3}, 24}, {{0, 1, 0, 2, 3}, 24}, {{0, 1, 2, 0, 3}, 24},
    {{0, 1, 2, 3, 0}, 24}, {{1, 0, 0, 2, 3}, 24}, {{1, 0, 2, 0, 3}, 24}, {{1, 0, 2, 3, 0}, 24},
    {{1, 2, 0, 0, 3}, 24}, {{1, 2, 0, 3, 0}, 24}, {{1, 2, 3, 0, 0}, 24},
};

constexpr SuitPattern jokerFourOfAKind[] = {
    {{0, 1, 2, 3}, 1},
};

constexpr SuitPattern jokerThreeOfAKind[] = {
    {{0, 1, 2, 0}, 12},
    {{0, 1, 2, 3}, 4},
};

constexpr SuitPattern jokerTwoPair[] = {
    {{0, 1, 0, 1}, 6},
    {{0, 1, 2, 3}, 6},
    {{0, 1, 1, 2}, 24},
};

// The two singles may change places: ranks rise from the one to the other.
constexpr SuitPattern jokerOnePairLikeSingles[] = {
    {{0, 1, 0, 0}, 12},
    {{0, 1, 2, 2}, 12},
    {{0, 1, 0, 1}, 12},
    {{0, 1, 2, 3}, 12},
};

// One single in a suit of the pair and one not: each of two ranks can be the one.
constexpr SuitPattern jokerOnePairUnlikeSingles[] = {
    {{0, 1, 0, 2}, 24},
};

constexpr SuitPattern jokerFourSingles[] = {
    {{0, 0, 0, 0}, 4},  {{0, 0, 0, 1}, 12}, {{0, 0, 1, 0}, 12}, {{0, 1, 0, 0}, 12},
    {{1, 0, 0, 0}, 12}, {{0, 0, 1, 1}, 12}, {{0, 1, 0, 1}, 12}, {{0, 1, 1, 0}, 12},
    {{0, 0, 1, 2}, 24}, {{0, 1, 0, 2}, 24}, {{0, 1, 2, 0}, 24}, {{1, 0, 0, 2}, 24},
    {{1, 0, 2, 0}, 24}, {{1, 2, 0, 0}, 24}, {{0, 1, 2, 3}, 24},
};

constexpr std::int32_t WeightOf(std::span<const SuitPattern> patterns) {
    std::int32_t weight = 0;
    for (const SuitPattern& pattern : patterns) {
        weight += pattern.weight;
    }
    return weight;
}

constexpr std::int32_t CountOf(std::span<const SuitPattern> patterns) {
    return static_cast<std::int32_t>(patterns.size());
}

// How many rank sets each table is laid over.
constexpr std::int32_t OrderedPairs = 13 * 12;
constexpr std::int32_t OneAndTwo = 13 * Choose(12, 2);
constexpr std::int32_t OneAndThree = 13 * Choose(12, 3);
constexpr std::int32_t OrderedTriples = 13 * 12 * 11;

static_assert(OrderedPairs * (CountOf(fourOfAKind) + CountOf(fullHouse)) == 468);
static_assert(OneAndTwo * CountOf(threeOfAKind) == 4290);
static_assert(OneAndTwo * CountOf(twoPair) == 6864);
static_assert(OneAndThree * CountOf(onePair) == 57200);
static_assert(Choose(13, 5) * CountOf(noPair) == 65637);
static_assert(468 + 4290 + 6864 + 57200 + 65637 == StandardClassCount);

static_assert(OrderedPairs * WeightOf(fourOfAKind) == 624);
static_assert(OrderedPairs * WeightOf(fullHouse) == 3744);
static_assert(OneAndTwo * WeightOf(threeOfAKind) == 54912);
static_assert(OneAndTwo * WeightOf(twoPair) == 123552);
static_assert(OneAndThree * WeightOf(onePair) == 1098240);
static_assert(Choose(13, 5) * WeightOf(noPair) == 1317888);
static_assert(624 + 3744 + 54912 + 123552 + 1098240 + 1317888 == StandardDealCount);
static_assert(Choose(StandardDeckSize, 5) == StandardDealCount);

static_assert(13 * CountOf(jokerFourOfAKind) + OrderedPairs * CountOf(jokerThreeOfAKind) +
                  Choose(13, 2) * CountOf(jokerTwoPair) +
                  OneAndTwo * CountOf(jokerOnePairLikeSingles) +
                  OrderedTriples * CountOf(jokerOnePairUnlikeSingles) +
                  Choose(13, 4) * CountOf(jokerFourSingles) ==
              JokerClassCount);
static_assert(13 * WeightOf(jokerFourOfAKind) == 13);
static_assert(OrderedPairs * WeightOf(jokerThreeOfAKind) == 2496);
static_assert(Choose(13, 2) * WeightOf(jokerTwoPair) == 2808);
static_assert(OneAndTwo * WeightOf(jokerOnePairLikeSingles) +
                  OrderedTriples * WeightOf(jokerOnePairUnlikeSingles) ==
              82368);
static_assert(Choose(13, 4) * WeightOf(jokerFourSingles) == 183040);
static_assert(13 + 2496 + 2808 + 82368 + 183040 == JokerDealCount);
static_assert(Choose(StandardDeckSize, 4) == JokerDealCount);

struct Enumeration {
    DealClassVisitor visit;
    void* context;
    DealBlock block;
};

using Ranks = std::array<std::int32_t, HandSize>;

// Every pattern over one set of ranks, given in the order of the pattern's suits. False once the
// visitor has had enough.
bool VisitPatterns(const Enumeration& all, std::span<const SuitPattern> patterns,
                   const Ranks& ranks) {
    const bool joker = all.block == DealBlock::WithJoker;
    for (const SuitPattern& pattern : patterns) {
        DealClass deal{all.block, {}, pattern.weight};
        for (std::size_t i = 0; i < HandSize; ++i) {
            deal.cards[i] = CardOf(pattern.suits[i], ranks[i]);
        }
        if (joker) {
            deal.cards[HandSize - 1] = JokerCard;
        }
        if (!all.visit(all.context, deal)) {
            return false;
        }
    }
    return true;
}

// The blocks. Ranks rise from 0, the first loop outermost; each returns false once the visitor has
// had enough.

bool VisitFourOfAKindAndFullHouse(const Enumeration& all) {
    for (std::int32_t a = 0; a < 13; ++a) {
        for (std::int32_t b = 0; b < 13; ++b) {
            if (b != a && !(VisitPatterns(all, fourOfAKind, {a, a, a, a, b}) &&
                            VisitPatterns(all, fullHouse, {a, a, a, b, b}))) {
                return false;
            }
        }
    }
    return true;
}

bool VisitThreeOfAKind(const Enumeration& all) {
    for (std::int32_t a = 0; a < 13; ++a) {
        for (std::int32_t b = 0; b < 12; ++b) {
            for (std::int32_t c = b + 1; c < 13; ++c) {
                if (b != a && c != a && !VisitPatterns(all, threeOfAKind, {a, a, a, b, c})) {
                    return false;
                }
            }
        }
    }
    return true;
}

bool VisitTwoPair(const Enumeration& all) {
    for (std::int32_t a = 0; a < 13; ++a) {
        for (std::int32_t b = 0; b < 12; ++b) {
            for (std::int32_t c = b + 1; c < 13; ++c) {
                if (b != a && c != a && !VisitPatterns(all, twoPair, {b, b, c, c, a})) {
                    return false;
                }
            }
        }
    }
    return true;
}

bool VisitOnePairOf(const Enumeration& all, std::int32_t a) {
    for (std::int32_t b = 0; b < 11; ++b) {
        for (std::int32_t c = b + 1; c < 12; ++c) {
            for (std::int32_t d = c + 1; d < 13; ++d) {
                if (b != a && c != a && d != a && !VisitPatterns(all, onePair, {a, a, b, c, d})) {
                    return false;
                }
            }
        }
    }
    return true;
}

bool VisitOnePair(const Enumeration& all) {
    for (std::int32_t a = 0; a < 13; ++a) {
        if (!VisitOnePairOf(all, a)) {
            return false;
        }
    }
    return true;
}

bool VisitNoPairFrom(const Enumeration& all, std::int32_t a, std::int32_t b) {
    for (std::int32_t c = b + 1; c < 11; ++c) {
        for (std::int32_t d = c + 1; d < 12; ++d) {
            for (std::int32_t e = d + 1; e < 13; ++e) {
                if (!VisitPatterns(all, noPair, {a, b, c, d, e})) {
                    return false;
                }
            }
        }
    }
    return true;
}

bool VisitNoPair(const Enumeration& all) {
    for (std::int32_t a = 0; a < 9; ++a) {
        for (std::int32_t b = a + 1; b < 10; ++b) {
            if (!VisitNoPairFrom(all, a, b)) {
                return false;
            }
        }
    }
    return true;
}

// With the joker as fifth card the fifth rank means nothing.

bool VisitJokerFourOfAKind(const Enumeration& all) {
    for (std::int32_t a = 0; a < 13; ++a) {
        if (!VisitPatterns(all, jokerFourOfAKind, {a, a, a, a})) {
            return false;
        }
    }
    return true;
}

bool VisitJokerThreeOfAKind(const Enumeration& all) {
    for (std::int32_t a = 0; a < 13; ++a) {
        for (std::int32_t b = 0; b < 13; ++b) {
            if (b != a && !VisitPatterns(all, jokerThreeOfAKind, {a, a, a, b})) {
                return false;
            }
        }
    }
    return true;
}

bool VisitJokerTwoPair(const Enumeration& all) {
    for (std::int32_t a = 0; a < 12; ++a) {
        for (std::int32_t b = a + 1; b < 13; ++b) {
            if (!VisitPatterns(all, jokerTwoPair, {a, a, b, b})) {
                return false;
            }
        }
    }
    return true;
}

bool VisitJokerOnePairLikeSingles(const Enumeration& all) {
    for (std::int32_t a = 0; a < 13; ++a) {
        for (std::int32_t b = 0; b < 12; ++b) {
            for (std::int32_t c = b + 1; c < 13; ++c) {
                if (b != a && c != a &&
                    !VisitPatterns(all, jokerOnePairLikeSingles, {a, a, b, c})) {
                    return false;
                }
            }
        }
    }
    return true;
}

bool VisitJokerOnePairUnlikeSingles(const Enumeration& all) {
    for (std::int32_t a = 0; a < 13; ++a) {
        for (std::int32_t b = 0; b < 13; ++b) {
            for (std::int32_t c = 0; c < 13; ++c) {
                if (b != a && c != a && c != b &&
                    !VisitPatterns(all, jokerOnePairUnlikeSingles, {a, a, b, c})) {
                    return false;
                }
            }
        }
    }
    return true;
}

bool VisitJokerFourSingles(const Enumeration& all) {
    for (std::int32_t a = 0; a < 10; ++a) {
        for (std::int32_t b = a + 1; b < 11; ++b) {
            for (std::int32_t c = b + 1; c < 12; ++c) {
                for (std::int32_t d = c + 1; d < 13; ++d) {
                    if (!VisitPatterns(all, jokerFourSingles, {a, b, c, d})) {
                        return false;
                    }
                }
            }
        }
    }
    return true;
}

} // namespace

bool EnumerateStandardDeals(DealClassVisitor visit, void* context) {
    return VisitFourOfAKindAndFullHouse({visit, context, DealBlock::FourOfAKindAndFullHouse}) &&
           VisitThreeOfAKind({visit, context, DealBlock::ThreeOfAKind}) &&
           VisitTwoPair({visit, context, DealBlock::TwoPair}) &&
           VisitOnePair({visit, context, DealBlock::OnePair}) &&
           VisitNoPair({visit, context, DealBlock::NoPair});
}

bool EnumerateJokerDeals(DealClassVisitor visit, void* context) {
    const Enumeration all{visit, context, DealBlock::WithJoker};
    return VisitJokerFourOfAKind(all) && VisitJokerThreeOfAKind(all) && VisitJokerTwoPair(all) &&
           VisitJokerOnePairLikeSingles(all) && VisitJokerOnePairUnlikeSingles(all) &&
           VisitJokerFourSingles(all);
}
