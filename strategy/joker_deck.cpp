#include "strategy/joker_deck.h"

#include <algorithm>

JokerDeckState jokerDeck;

namespace {

constexpr std::int32_t JokerRank = -1; // before every rank
constexpr RankMask AllRanks = (RankMask{1} << RanksPerSuit) - 1;

constexpr std::size_t At(std::int32_t index) {
    return static_cast<std::size_t>(index);
}

constexpr RankSums RanksUndealt(std::int32_t ranks) {
    const RankSums& full = RankTerms[SuitCount];
    return {ranks * full.cards, ranks * full.pairs, ranks * full.trips, ranks * full.quads};
}

void DealOneOf(RankSums& sums, std::int32_t leftBefore) {
    TakeTerms(sums, RankTerms[At(leftBefore)]);
    AddTerms(sums, RankTerms[At(leftBefore - 1)]);
}

// Takes an ordinary card out of the deck; a code that stands twice, once.
void DealCard(JokerDeckState& deck, std::int32_t rank, std::size_t suit) {
    if ((deck.available[suit] & RankBit(rank)) == 0) {
        return;
    }
    const bool high = rank >= deck.pairThreshold;
    const std::int32_t left = deck.rankLeft[At(rank)]--;
    DealOneOf(deck.ranks, left);
    if (high) {
        DealOneOf(deck.highRanks, left);
    }
    deck.available[suit] ^= RankBit(rank);
    deck.dealtRanks |= RankBit(rank);
    --deck.suitLeft[suit];
    deck.lowSuitLeft[suit] -= high ? 0 : 1;
    deck.royalLeft[suit] -= rank >= RankTen ? 1 : 0;
}

// A card of the hand in one number, the rank above the suit above the position.
using CardKey = std::int32_t;
using SortedHand = std::array<CardKey, HandSize>;

constexpr CardKey KeyOf(std::int32_t rank, std::int32_t suit, std::size_t position) {
    return rank * 64 + suit * 8 + static_cast<std::int32_t>(position);
}
constexpr std::int32_t KeyRank(CardKey key) {
    return key >> 6;
}
constexpr std::int32_t KeySuit(CardKey key) {
    return key >> 3 & 7;
}
constexpr std::int32_t KeyPosition(CardKey key) {
    return key & 7;
}

// Sorted once, the hand gives every hold in order: equal ranks together, the joker first.
void SortHeld(SortedHand& hand) {
    for (std::size_t i = 0; i + 1 < hand.size(); ++i) {
        for (std::size_t j = i + 1; j < hand.size(); ++j) {
            const CardKey lower = std::min(hand[i], hand[j]);
            hand[j] = std::max(hand[i], hand[j]);
            hand[i] = lower;
        }
    }
}

SortedHand DealHand(JokerDeckState& deck, const JokerWorkArea& area) {
    SortedHand hand;
    for (std::size_t i = 0; i < hand.size(); ++i) {
        const std::int32_t suit = SuitOf(area.cards[i]);
        if (suit == JokerSuit) {
            deck.jokersLeft = 0;
            hand[i] = KeyOf(JokerRank, suit, i);
        } else {
            const std::int32_t rank = RankOf(area.cards[i]);
            DealCard(deck, rank, At(suit));
            hand[i] = KeyOf(rank, suit, i);
        }
    }
    SortHeld(hand);
    return hand;
}

void CollectDealtRanks(JokerDeckState& deck, const SortedHand& hand) {
    DealtRanks& dealt = deck.dealt;
    dealt.bit.fill(0);
    dealt.ways[0] = 1;
    std::uint32_t sets = 1;
    for (const CardKey card : hand) {
        const std::int32_t rank = KeyRank(card);
        if (rank == JokerRank || dealt.bit[At(rank + 1)] != 0) {
            continue;
        }
        const auto left = static_cast<std::uint32_t>(deck.rankLeft[At(rank)]);
        for (std::uint32_t set = 0; set < sets; ++set) {
            dealt.ways[sets + set] = dealt.ways[set] * (left + JokerFactor);
        }
        dealt.bit[At(rank + 1)] = sets;
        sets *= 2;
    }
    dealt.bit[0] = dealt.bit[RankAce + 1];
}

// What a card adds to the kind of a hold, by how many of its rank are held before it.
using KindWeights = std::array<std::uint32_t, HandSize>;

// Dealt ranks are of one sort if equally many of their cards are dealt and both or neither are
// high, the joker being a sort of its own: which of them is held only matters to runs. So a kind of
// hold says, of each sort, how many ranks are held once or more, twice or more and so on. These are
// the digits of a number, each with a radix of its own; there are never more than 32 such numbers.
std::array<KindWeights, HandSize> WeighKinds(const SortedHand& hand, std::int32_t threshold) {
    constexpr std::size_t sorts = 3 * (HandSize + 1);
    std::array<std::size_t, HandSize> sortOf;
    std::array<std::uint32_t, sorts> ranksOfSort{};
    for (std::size_t first = 0; first < hand.size();) {
        const std::int32_t rank = KeyRank(hand[first]);
        std::size_t end = first + 1;
        while (end < hand.size() && KeyRank(hand[end]) == rank) {
            ++end;
        }
        const std::size_t worth = rank == JokerRank ? 2 : rank >= threshold ? 1 : 0;
        const std::size_t sort = 3 * (end - first) + worth;
        ++ranksOfSort[sort];
        for (; first < end; ++first) {
            sortOf[first] = sort;
        }
    }
    std::array<KindWeights, sorts> weightsOfSort{};
    std::array<KindWeights, HandSize> weights;
    std::uint32_t weight = 1;
    for (std::size_t card = 0; card < hand.size(); ++card) {
        const std::size_t sort = sortOf[card];
        KindWeights& ofSort = weightsOfSort[sort];
        if (ofSort[0] == 0) {
            for (std::size_t digit = 0; digit < sort / 3; ++digit) {
                ofSort[digit] = weight;
                weight *= ranksOfSort[sort] + 1;
            }
        }
        weights[card] = ofSort;
    }
    return weights;
}

// Takes a rank now held out of those not held.
void RemoveHeldRanks(HeldSummary& step, const RankSums& terms, bool high) {
    TakeTerms(step.others, terms);
    if (high) {
        TakeTerms(step.highOthers, terms);
    }
}

// The joker adds nothing to the ranks. A second one, which no deal has, adds nothing to the shape.
void PrepareJokerSteps(std::array<HeldSummary, 4>& steps, HeldSummary any,
                       const KindWeights& weights) {
    any.jokerHeld = 1;
    steps.fill(any);
    steps[0].shape = ShapeOf(1, 0, 0, 0, 0);
    for (std::size_t held = 0; held < steps.size(); ++held) {
        steps[held].kind = weights[held];
    }
}

// The rank of a card moves from the ranks not held to the singles, and with every further card on
// to the pairs, the trips and the quads.
void PrepareSteps(JokerDeckState& deck, std::size_t card, CardKey key, const KindWeights& weights) {
    const std::int32_t rank = KeyRank(key);
    auto& steps = deck.steps[card];
    HeldSummary any{};
    any.heldCount = 1;
    any.pattern = 1 << KeyPosition(key);
    if (rank == JokerRank) {
        PrepareJokerSteps(steps, any, weights);
        return;
    }
    any.suit = KeySuit(key);
    any.suits = std::uint32_t{1} << any.suit;
    const std::int32_t left = deck.rankLeft[At(rank)];
    const RankSums& terms = RankTerms[At(left)];
    const std::int32_t high = rank >= deck.pairThreshold ? 1 : 0;

    HeldSummary& first = steps[0];
    first = any;
    RemoveHeldRanks(first, terms, high != 0);
    first.singles = terms;
    first.highSingles = high * left;
    first.highHeld = high;
    first.ranks = RankBit(rank);
    first.rankSet = deck.dealt.bit[At(rank + 1)];
    first.shape = ShapeOf(0, 1, 0, 0, 0);
    first.kind = weights[0];
    if (deck.sameRank[card] == 0) {
        return;
    }
    any.alike = 1;

    HeldSummary& second = steps[1];
    second = any;
    TakeTerms(second.singles, terms);
    second.pairs = terms;
    second.pairCount = 1;
    second.highSingles = -high * left;
    second.highPairs = high;
    second.shape = ShapeOf(0, -1, 1, 0, 0);
    second.kind = weights[1];

    HeldSummary& third = steps[2];
    third = any;
    TakeTerms(third.pairs, terms);
    third.pairCount = -1;
    third.highPairs = -high;
    third.trips = left;
    third.shape = ShapeOf(0, 0, -1, 1, 0);
    third.kind = weights[2];

    HeldSummary& fourth = steps[3];
    fourth = any;
    fourth.trips = -left;
    fourth.shape = ShapeOf(0, 0, 0, -1, 1);
    fourth.kind = weights[3];
}

constexpr RankSums Sum(const RankSums& a, const RankSums& b) {
    return {a.cards + b.cards, a.pairs + b.pairs, a.trips + b.trips, a.quads + b.quads};
}

constexpr HeldSummary Sum(const HeldSummary& a, const HeldSummary& b) {
    return {Sum(a.others, b.others),
            Sum(a.highOthers, b.highOthers),
            Sum(a.singles, b.singles),
            Sum(a.pairs, b.pairs),
            a.trips + b.trips,
            a.pairCount + b.pairCount,
            a.highSingles + b.highSingles,
            a.highPairs + b.highPairs,
            a.highHeld + b.highHeld,
            a.heldCount + b.heldCount,
            a.jokerHeld + b.jokerHeld,
            a.alike + b.alike,
            a.shape + b.shape,
            a.kind + b.kind,
            a.ranks + b.ranks,
            a.rankSet + b.rankSet,
            a.pattern + b.pattern,
            a.suits | b.suits,
            b.suit};
}

constexpr auto CardsInSet = [] {
    std::array<std::uint8_t, std::size_t{1} << HandSize> count{};
    for (std::size_t set = 1; set < count.size(); ++set) {
        count[set] = static_cast<std::uint8_t>(count[set / 2] + set % 2);
    }
    return count;
}();

} // namespace

void InitJokerDeck(JokerDeckState& deck, const JokerWorkArea& area) {
    const std::int32_t threshold = area.pairThreshold;
    deck.pairThreshold = threshold;
    deck.rankLeft.fill(SuitCount);
    deck.suitLeft.fill(RanksPerSuit);
    deck.lowSuitLeft.fill(threshold);
    deck.royalLeft.fill(RunLength);
    deck.jokersLeft = 1;
    deck.available.fill(AllRanks);
    deck.lowRanks = RankBit(threshold) - 1;
    deck.dealtRanks = 0;
    deck.ranks = RanksUndealt(RanksPerSuit);
    deck.highRanks = RanksUndealt(RanksPerSuit - threshold);
    const SortedHand hand = DealHand(deck, area);

    constexpr JokerWays natural = MakeWays(0xffff, 0, 0);
    constexpr JokerWays wild = MakeWays(0, 0xffff, 0xffff);
    deck.countedWays = {deck.jokersLeft != 0 ? natural | wild : natural, wild};
    CollectDealtRanks(deck, hand);
    const auto weights = WeighKinds(hand, threshold);
    for (std::size_t card = 0; card < hand.size(); ++card) {
        const bool same = card > 0 && KeyRank(hand[card]) == KeyRank(hand[card - 1]);
        deck.sameRank[card] = same ? deck.sameRank[card - 1] | std::uint32_t{1} << (card - 1) : 0;
        PrepareSteps(deck, card, hand[card], weights[card]);
    }
    deck.holds[0] = {};
    deck.holds[0].others = deck.ranks;
    deck.holds[0].highOthers = deck.highRanks;
}

void SummarizeHeld(HeldSummary& held, std::uint32_t cards, std::size_t last) {
    const std::uint32_t fewer = cards ^ std::uint32_t{1} << last;
    const std::size_t same = CardsInSet[fewer & jokerDeck.sameRank[last]];
    held = Sum(jokerDeck.holds[fewer], jokerDeck.steps[last][same]);
}
