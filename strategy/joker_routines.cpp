#include "strategy/joker_routines.h"

#include "strategy/choose.h"

namespace {

constexpr std::size_t At(std::int32_t index) {
    return static_cast<std::size_t>(index);
}

// Sets beside the ways of a class those with the joker that need no high rank: what is left of the
// ways with the high ranks out of the deck.
constexpr JokerWays SplitHighRanks(JokerWays ways, JokerWays withoutHigh) {
    return ways + ((withoutHigh & MakeWays(0, 0xffff, 0)) << 16);
}

// The top of a run, and the highest rank in it, which is the wheel's ace.
constexpr std::int32_t RunTop(std::int32_t run) {
    return run + RunLength - 2;
}
constexpr std::int32_t HighestOfRun(std::int32_t run) {
    return run == 0 ? RankAce : RunTop(run);
}

// Four ranks that the joker completes may lie in two neighbouring runs. They count in the lower,
// where the joker is not below them: in the upper it would stand for its top. Only 2-3-4-5 counts
// in the upper of its two, so that the wheel's fours are those with the ace and a run without high
// ranks has all fours without them.
constexpr std::int32_t NoRank = -1;
constexpr std::int32_t NeverJoker(std::int32_t run) {
    return run == 0 ? RankAce : run == 1 ? NoRank : RunTop(run);
}

// By the run and the ranks of it that are dealt, a bit for each from its lowest on: the product
// over the others, of which four cards are left.
constexpr auto WaysUndealt = [] {
    std::array<std::array<std::uint32_t, std::size_t{1} << RunLength>, RunCount> ways{};
    for (std::int32_t run = 0; run < RunCount; ++run) {
        for (std::uint32_t dealt = 0; dealt < std::uint32_t{1} << RunLength; ++dealt) {
            std::uint32_t product = 1;
            for (std::int32_t i = 0; i < RunLength; ++i) {
                const std::int32_t rank = run == 0 && i == 0 ? RankAce : run + i - 1;
                if ((dealt >> i & 1) == 0) {
                    product *= SuitCount + (rank == NeverJoker(run) ? 0 : JokerFactor);
                }
            }
            ways[At(run)][dealt] = product;
        }
    }
    return ways;
}();

// The dealt ranks of a run, a bit for each from its lowest on.
constexpr std::uint32_t DealtOfRun(RankMask dealt, std::int32_t run) {
    return (dealt << 1 | dealt >> RankAce) >> run & 0x1f;
}

// Adds the straights in one run: of its dealt ranks every set may be held and the rest drawn.
void CountStraightsInRun(JokerDeckState& deck, std::int32_t run) {
    const std::uint32_t* bit = &deck.dealt.bit[At(run)];
    const std::uint32_t all = bit[0] | bit[1] | bit[2] | bit[3] | bit[4];
    const std::uint32_t undealt = WaysUndealt[At(run)][DealtOfRun(deck.dealtRanks, run)];
    const bool low = HighestOfRun(run) < deck.pairThreshold;
    const auto add = [&](std::uint32_t held, JokerWays ways) {
        deck.straights[held] += SplitHighRanks(ways, low ? ways : 0);
    };
    // Drawn, this rank multiplies the ways by its cards alone.
    const std::int32_t never = NeverJoker(run);
    const std::uint32_t neverBit = never == NoRank ? 0 : deck.dealt.bit[At(never + 1)];
    const auto neverLeft = neverBit == 0 ? 0 : static_cast<std::uint32_t>(deck.rankLeft[At(never)]);
    const std::uint32_t free = all & ~neverBit;
    for (std::uint32_t drawn = free;; drawn = (drawn - 1) & free) {
        const std::uint32_t ways = undealt * deck.dealt.ways[drawn];
        add(all ^ drawn, ways);
        if (neverBit != 0) {
            const std::uint32_t drawnToo = ways * neverLeft;
            add(all ^ drawn ^ neverBit, drawnToo);
        }
        if (drawn == 0) {
            return;
        }
    }
}

// Row n, column k: the ways to draw k + 1 of the n cards left of a suit, or k and the joker.
constexpr auto SuitDraws = [] {
    std::array<std::array<JokerWays, HandSize>, RanksPerSuit + 1> ways{};
    for (std::int32_t n = 0; n <= RanksPerSuit; ++n) {
        for (std::int32_t k = 0; k < static_cast<std::int32_t>(HandSize); ++k) {
            ways[At(n)][At(k)] = MakeWays(static_cast<std::uint32_t>(Choose(n, k + 1)),
                                          static_cast<std::uint32_t>(Choose(n, k)), 0);
        }
    }
    return ways;
}();

// By the ranks left of a suit its straight flushes, royals too: the natural ones, and in steps of
// WildRuns the fours that the joker completes. Each counts at its highest rank with what there is
// of the four ranks below; at the ace, which is highest and lowest, the ones above the deuce count
// as well.
constexpr std::uint32_t WildRuns = 256;
constexpr auto SuitRuns = [] {
    std::array<std::uint32_t, 16> below{};
    below[0xf] = 1 + 4 * WildRuns;
    below[0x7] = below[0xb] = below[0xd] = below[0xe] = WildRuns;
    std::array<std::uint16_t, std::size_t{1} << RanksPerSuit> runs{};
    std::size_t top = 0;
    for (std::size_t set = 1; set < runs.size(); ++set) {
        top += set >> (top + 1);
        const std::size_t rest = set ^ std::size_t{1} << top;
        const std::uint32_t wheel = top == RankAce ? below[set & 0xf] : 0;
        runs[set] = static_cast<std::uint16_t>(runs[rest] + below[set << 4 >> top & 0xf] + wheel);
    }
    return runs;
}();

// Those of them that have all held ranks: for each held card, the ones with it put back less the
// ones without it.
std::uint32_t SuitRunsWith(RankMask left, RankMask held) {
    if (held == 0) {
        return SuitRuns[left];
    }
    const RankMask rest = held & (held - 1);
    return SuitRunsWith(left | (held ^ rest), rest) - SuitRunsWith(left, rest);
}

JokerWays SuitRunWays(RankMask left, RankMask held) {
    // Nearly always nothing or one card is held, and no recursion needed.
    const bool several = (held & (held - 1)) != 0;
    const std::uint32_t without = held == 0 ? 0 : SuitRuns[left];
    const std::uint32_t runs = several ? SuitRunsWith(left, held) : SuitRuns[left | held] - without;
    return MakeWays(runs % WildRuns, runs / WildRuns, 0);
}

// The hands of one suit that a hold may become. Straight flushes are flushes, royals are straight
// flushes.
struct SuitedWays {
    JokerWays flushes;
    JokerWays straightFlushes;
    JokerWays royals;
};

JokerWays CountFlushes(const JokerDeckState& deck, std::size_t suit, std::size_t draw,
                       const HeldSummary& held) {
    const JokerWays any = SuitDraws[At(deck.suitLeft[suit])][draw];
    const JokerWays low = SuitDraws[At(deck.lowSuitLeft[suit])][draw];
    return SplitHighRanks(any, held.highHeld != 0 ? 0 : low);
}

JokerWays CountStraightFlushes(const JokerDeckState& deck, std::size_t suit,
                               const HeldSummary& held) {
    const RankMask left = deck.available[suit];
    const JokerWays any = SuitRunWays(left, held.ranks);
    return held.highHeld != 0 ? any
                              : SplitHighRanks(any, SuitRunWays(left & deck.lowRanks, held.ranks));
}

inline void AddSuit(SuitedWays& ways, const JokerDeckState& deck, std::size_t suit,
                    std::size_t draw, const HeldSummary& held) {
    constexpr RankMask royalRanks = RunRanks[RunCount - 1];
    ways.flushes += CountFlushes(deck, suit, draw, held);
    if (deck.straights[held.rankSet] == 0) {
        return;
    }
    ways.straightFlushes += CountStraightFlushes(deck, suit, held);
    if ((held.ranks & ~royalRanks) == 0) {
        ways.royals += SuitDraws[At(deck.royalLeft[suit])][draw];
    }
}

// All suits while no ordinary card is held, else the one suit held.
SuitedWays CountSuited(const JokerDeckState& deck, const HeldSummary& held) {
    const std::size_t draw = HandSize - 1 - At(held.heldCount - held.jokerHeld);
    SuitedWays ways{};
    if (held.suits != 0) {
        AddSuit(ways, deck, At(held.suit), draw, held);
        return ways;
    }
    for (std::size_t suit = 0; suit < SuitCount; ++suit) {
        AddSuit(ways, deck, suit, draw, held);
    }
    return ways;
}

} // namespace

void CountStraights(JokerDeckState& deck) {
    deck.straights.fill(0);
    for (std::int32_t run = 0; run < RunCount; ++run) {
        CountStraightsInRun(deck, run);
    }
}

void AddSuitedHands(const JokerDeckState& deck, JokerCountRecord& record, const HeldSummary& held) {
    const JokerWays counted = deck.countedWays[held.jokerHeld != 0];
    const SuitedWays ways = CountSuited(deck, held);
    const JokerWays royals = ways.royals & counted;
    const JokerWays straightFlushes = ways.straightFlushes & counted;
    const JokerWays otherFlushes = (ways.flushes & counted) - straightFlushes;
    const JokerWays straights = deck.straights[held.rankSet] & counted;
    record[JokerNaturalRoyal] += NaturalWays(royals);
    record[JokerWildRoyal] += WildWays(royals);
    record[JokerStraightFlush] += Hands(straightFlushes - royals);
    record[JokerFlush] += Hands(otherFlushes);
    record[JokerStraight] += Hands(straights - straightFlushes);
    CorrectKingsOrBetter(record, straights + otherFlushes);
}
