#include "strategy/standard_draws.h"

#include <algorithm>
#include <bit>

#include "strategy/rank_classes.h"
#include "strategy/rank_runs.h"

namespace {

constexpr std::int32_t unseen = StandardDeckSize - static_cast<std::int32_t>(HandSize);

// What a hold keeps, packed so that one addition and one union take a card in. Sums are over the
// kept ranks, each once, of what is left unseen; no byte carries into the next, as no dealt rank
// has four left.
struct KeptCards {
    std::uint64_t sums;  // a byte each: cards, pairs, trips, and those of the ranks that pay
    std::uint64_t marks; // 16 bits each: ranks, repeated ranks, dealt bits (rank_runs.h), suits

    std::int32_t SumAt(int place) const { return static_cast<std::uint8_t>(sums >> 8 * place); }
    std::uint32_t MarksAt(int place) const {
        return static_cast<std::uint16_t>(marks >> 16 * place);
    }
    std::int32_t Cards() const { return SumAt(0); }
    std::int32_t HighCards() const { return SumAt(3); }
    RankSums All() const { return {SumAt(0), SumAt(1), SumAt(2), 0}; }
    RankSums High() const { return {SumAt(3), SumAt(4), SumAt(5), 0}; }
    RankMask Ranks() const { return MarksAt(0); }
    RankMask Repeated() const { return MarksAt(1); }
    std::uint32_t DealtBits() const { return MarksAt(2); }
    std::uint32_t Suits() const { return MarksAt(3); }
};

// What holds of different ranks lead to as far as ranks alone tell: straights and flushes are still
// in NoPay. It depends only on how many cards are left of the kept ranks and which of them pay, so
// most holds of a size share it: within one hand the numbers of cards and of high cards left tell.
constexpr std::size_t mostHighCards = 3 * 3; // of three ranks, each dealt once
struct RankKinds {
    std::array<std::int8_t, 16> cards; // by high cards: the cards left, or none counted yet
    std::array<StandardOutcomes, mostHighCards + 1> outcomes;
};
constexpr std::int8_t noneCounted = -1;

// The cards not dealt, made ready once a search; the counters only read it. A fifth suit takes a
// stray joker's code.
struct StandardDeck {
    std::array<std::int32_t, HandSize> dealtRanks;
    std::array<std::int32_t, HandSize> dealtSuits;
    std::array<RankMask, JokerSuit + 1> present;       // by suit, the ranks unseen
    std::array<std::int32_t, JokerSuit + 1> suitCount; // cards unseen of each suit
    std::array<std::int32_t, RanksPerSuit> rankCount;  // cards unseen of each rank
    QuadsByRank full;                                  // 1 for a rank with all four cards unseen
    KickerQuads fullCourts;                            // its jacks to ace
    KickerQuads fullLows;                              // its deuce to four, and its ace
    std::int32_t threshold;                            // the lowest pair that pays
    RankSums all;                                      // over all ranks
    RankSums high;                                     // over the ranks whose pairs pay
    std::int32_t courtCards;                           // unseen jacks to aces
    std::int32_t lowCards;                             // unseen aces to fours
    StraightWays straights;
    std::array<KeptCards, HoldCount> kept; // by hold pattern
    std::array<RankKinds, 4> kinds;        // by the number of cards held, 1..3
};

StandardDeck deck;

std::int32_t Left(std::int32_t rank) {
    return deck.rankCount[static_cast<std::size_t>(rank)];
}

const RankSums& TermsOf(std::int32_t rank) {
    return RankTerms[static_cast<std::size_t>(Left(rank))];
}

bool Pays(std::int32_t rank) {
    return rank >= deck.threshold;
}

constexpr RankSums Sum(RankSums sums, const RankSums& terms) {
    AddTerms(sums, terms);
    return sums;
}

constexpr RankSums Less(RankSums sums, const RankSums& terms) {
    TakeTerms(sums, terms);
    return sums;
}

constexpr RankSums FullRanks(std::int32_t ranks) {
    return {4 * ranks, 6 * ranks, 4 * ranks, ranks};
}

// Takes a dealt card out. A card dealt twice leaves its rank short, but never below none.
void TakeCard(std::int32_t suit, std::int32_t rank) {
    const auto atSuit = static_cast<std::size_t>(suit);
    const auto atRank = static_cast<std::size_t>(rank);
    const auto before = static_cast<std::size_t>(deck.rankCount[atRank]);
    const std::size_t after = before - (before > 0 ? 1 : 0);
    deck.present[atSuit] &= ~RankBit(rank);
    --deck.suitCount[atSuit];
    deck.rankCount[atRank] = static_cast<std::int32_t>(after);
    deck.full[atRank] = 0;
    deck.all = Sum(Less(deck.all, RankTerms[before]), RankTerms[after]);
    if (Pays(rank)) {
        deck.high = Sum(Less(deck.high, RankTerms[before]), RankTerms[after]);
    }
}

void PrepareDeck(const Card* dealt, std::int32_t threshold) {
    deck.present.fill(RankBit(RanksPerSuit) - 1);
    deck.suitCount.fill(RanksPerSuit);
    deck.rankCount.fill(SuitCount);
    deck.full.fill(1);
    deck.threshold = threshold;
    deck.all = FullRanks(RanksPerSuit);
    deck.high = FullRanks(RanksPerSuit - threshold);
    for (std::size_t i = 0; i < HandSize; ++i) {
        deck.dealtSuits[i] = SuitOf(dealt[i]);
        deck.dealtRanks[i] = RankOf(dealt[i]);
        TakeCard(deck.dealtSuits[i], deck.dealtRanks[i]);
    }
    deck.courtCards = Left(RankJack) + Left(RankQueen) + Left(RankKing) + Left(RankAce);
    deck.lowCards = Left(RankDeuce) + Left(RankDeuce + 1) + Left(RankFour) + Left(RankAce);
    deck.fullCourts = {deck.full[RankJack], deck.full[RankQueen], deck.full[RankKing],
                       deck.full[RankAce]};
    deck.fullLows = {deck.full[RankDeuce], deck.full[RankDeuce + 1], deck.full[RankFour],
                     deck.full[RankAce]};
    CountStraightWays(deck.straights, deck.dealtRanks, deck.rankCount);
}

// What a hold keeps with one card more, of a rank that may be there already.
KeptCards With(const KeptCards& kept, const KeptCards& card) {
    const RankMask again = kept.Ranks() & card.Ranks();
    return {kept.sums + (again == 0 ? card.sums : 0),
            kept.marks | card.marks | std::uint64_t{again} << 16};
}

// What is kept with a single dealt card.
KeptCards CardAt(std::size_t position) {
    const std::int32_t rank = deck.dealtRanks[position];
    const RankSums& terms = TermsOf(rank);
    const auto sums =
        static_cast<std::uint64_t>(terms.cards | terms.pairs << 8 | terms.trips << 16);
    return {Pays(rank) ? sums << 24 | sums : sums,
            std::uint64_t{RankBit(rank)} | std::uint64_t{deck.straights.dealtBit[position]} << 32 |
                std::uint64_t{1} << (48 + deck.dealtSuits[position])};
}

// Every set of positions is one of the positions before its last, and that last card.
void PrepareHolds() {
    for (RankKinds& kinds : deck.kinds) {
        kinds.cards.fill(noneCounted);
    }
    deck.kept[0] = {};
    for (std::size_t i = 0; i < HandSize; ++i) {
        const KeptCards card = CardAt(i);
        const std::size_t added = std::size_t{1} << i;
        for (std::size_t pattern = 0; pattern < added; ++pattern) {
            deck.kept[pattern + added] = With(deck.kept[pattern], card);
        }
    }
}

constexpr bool IsOne(std::uint32_t set) {
    return (set & (set - 1)) == 0;
}

constexpr std::int32_t LowestRank(RankMask ranks) {
    return std::countr_zero(ranks);
}

// Moves the flushes and suited runs of one suit out of NoPay. A run of which every missing card is
// unseen is one draw, counted as a straight so far, and no plain flush.
void MoveSuited(StandardOutcomes& out, std::int32_t flushes, RunMask runs) {
    const std::int32_t both = CountRuns(runs);
    const std::int32_t royals = (runs & RoyalRun) != 0 ? 1 : 0;
    out[Flush] += flushes - both;
    out[StraightFlush] += both - royals;
    out[Royal] += royals;
    out[Straight] -= both;
    out[NoPay] -= flushes - both;
}

void MoveStraights(StandardOutcomes& out, std::int32_t straights) {
    out[Straight] = straights;
    out[NoPay] -= straights;
}

// The ways to draw the missing cards of a flush from those left of the suit.
constexpr auto flushWays = [] {
    std::array<std::array<std::int32_t, HandSize + 1>, RanksPerSuit + 1> ways{};
    for (std::int32_t left = 0; left <= RanksPerSuit; ++left) {
        for (std::int32_t drawn = 0; drawn <= static_cast<std::int32_t>(HandSize); ++drawn) {
            ways[static_cast<std::size_t>(left)][static_cast<std::size_t>(drawn)] =
                Choose(left, drawn);
        }
    }
    return ways;
}();

std::int32_t FlushWays(std::size_t suit, std::size_t drawn) {
    return flushWays[static_cast<std::size_t>(deck.suitCount[suit])][drawn];
}

// For one to four kept cards of different ranks.
void MoveRunsAndFlushes(StandardOutcomes& out, const KeptCards& kept, std::size_t drawn) {
    MoveStraights(out, deck.straights.ways[kept.DealtBits()]);
    if (!IsOne(kept.Suits())) {
        return;
    }
    const auto suit = static_cast<std::size_t>(std::countr_zero(kept.Suits()));
    RunMask runs = CompleteRuns(deck.present[suit] | kept.Ranks());
    for (RankMask ranks = kept.Ranks(); ranks != 0; ranks &= ranks - 1) {
        runs &= RunsThrough[static_cast<std::size_t>(LowestRank(ranks))];
    }
    MoveSuited(out, FlushWays(suit, drawn), runs);
}

// Four jacks or better with another of them, and four of ace to four with another of these. An
// ace's four has the last word of both records.
constexpr RankMask courtRanks =
    RankBit(RankJack) | RankBit(RankQueen) | RankBit(RankKing) | RankBit(RankAce);
constexpr RankMask lowRanks =
    RankBit(RankDeuce) | RankBit(RankDeuce + 1) | RankBit(RankFour) | RankBit(RankAce);

constexpr bool AreIn(RankMask set, RankMask ranks) {
    return (ranks & ~set) == 0;
}

std::int32_t& CourtQuads(StandardDraws& draws, std::size_t hold, std::int32_t rank) {
    return draws.courtQuads[hold][static_cast<std::size_t>(rank - RankJack)];
}

std::int32_t& LowQuads(StandardDraws& draws, std::size_t hold, std::int32_t rank) {
    return draws.lowQuads[hold][rank == RankAce ? 3 : static_cast<std::size_t>(rank)];
}

// Four of a rank whose every card is held or unseen, with any other unseen card.
void StoreQuadsWithAny(StandardDraws& draws, std::size_t hold, std::int32_t rank) {
    const std::int32_t left = Left(rank);
    draws.quadsByRank[hold][static_cast<std::size_t>(rank)] = unseen - left;
    if (AreIn(courtRanks, RankBit(rank))) {
        CourtQuads(draws, hold, rank) = deck.courtCards - left;
    }
    if (AreIn(lowRanks, RankBit(rank))) {
        LowQuads(draws, hold, rank) = deck.lowCards - left;
    }
}

// Four of a kept rank beside a kept card of another: one way, or none where a card of it is gone.
void StoreQuadsWithKept(StandardDraws& draws, std::size_t hold, std::int32_t rank, RankMask kept,
                        std::int32_t ways) {
    draws.quadsByRank[hold][static_cast<std::size_t>(rank)] = ways;
    if (AreIn(courtRanks, kept)) {
        CourtQuads(draws, hold, rank) = ways;
    }
    if (AreIn(lowRanks, kept)) {
        LowQuads(draws, hold, rank) = ways;
    }
}

// The draws told by rank alone, of which the rest pay nothing.
struct RankDraws {
    std::int32_t highPairs;
    std::int32_t twoPairs;
    std::int32_t trips;
    std::int32_t fullHouses;
    std::int32_t quads;
};

constexpr StandardOutcomes Outcomes(const RankDraws& draws, std::int32_t total) {
    const std::int32_t paid =
        draws.highPairs + draws.twoPairs + draws.trips + draws.fullHouses + draws.quads;
    return {total - paid,
            draws.highPairs,
            draws.twoPairs,
            draws.trips,
            0,
            0,
            draws.fullHouses,
            draws.quads,
            0,
            0,
            total};
}

const KeptCards& KeptBy(std::size_t hold) {
    return deck.kept[static_cast<std::size_t>(HoldOrder[hold])];
}

RankDraws DrawFive() {
    return {PairAndThreeSingles(deck.high, deck.all), TwoPairsAndSingle(deck.all),
            TripsAndTwoSingles(deck.all), TripsAndPair(deck.all),
            // Any of the other unseen cards beside each full rank.
            deck.all.quads * (unseen - 4)};
}

RankDraws DrawFourToOneRank(const KeptCards& kept) {
    const RankSums rank = kept.All();
    const RankSums free = Less(deck.all, rank);
    const RankSums freeHigh = Less(deck.high, kept.High());
    return {// The held rank paired, if it pays, or a free pair, and loose cards.
            kept.HighCards() * ThreeSingles(free) + PairAndTwoSingles(freeHigh, free),
            // The held rank paired and a free pair, or two free pairs.
            rank.cards * PairAndSingle(free, free) + TwoPairs(free),
            // Two more of the held rank and loose cards, or trips of a free rank.
            rank.pairs * TwoSingles(free) + TripsAndSingle(free),
            // Two more of the held rank with a pair, or one with trips.
            rank.pairs * free.pairs + rank.cards * free.trips,
            // Every full rank beside the held card, or the rest of its own rank with any card.
            free.quads + rank.trips * (unseen - 3)};
}

RankDraws DrawThreeToTwoRanks(const KeptCards& kept) {
    const RankSums ranks = kept.All();
    const RankSums free = Less(deck.all, ranks);
    const RankSums freeHigh = Less(deck.high, kept.High());
    return {// A held rank paired that pays, or a free pair, and loose cards.
            kept.HighCards() * TwoSingles(free) + PairAndSingle(freeHigh, free),
            // Both held ranks paired, or one of them and a free pair.
            TwoSingles(ranks) * free.cards + ranks.cards * free.pairs,
            // Two more of one held rank and a loose card, or trips of a free rank.
            ranks.pairs * free.cards + free.trips,
            // Two more of one held rank and one of the other.
            PairAndSingle(ranks, ranks),
            // The rest of one held rank, beside the other held card.
            ranks.trips};
}

RankDraws DrawThreeToPair(const RankSums& pair, bool pays) {
    const RankSums free = Less(deck.all, pair);
    return {pays ? ThreeSingles(free) : 0, PairAndSingle(free, free), pair.cards * TwoSingles(free),
            // A third with a pair, or trips beside the pair.
            pair.cards * free.pairs + free.trips,
            // The other two with any card.
            pair.pairs * (unseen - 2)};
}

RankDraws DrawTwoToThreeRanks(const KeptCards& kept) {
    return {
        // A held rank paired that pays and a loose card, or a free pair.
        kept.HighCards() * (deck.all.cards - kept.Cards()) + (deck.high.pairs - kept.High().pairs),
        // One more of each of two held ranks.
        TwoSingles(kept.All()),
        // Two more of one.
        kept.All().pairs, 0, 0};
}

RankDraws DrawTwoToPairAndOne(const RankSums& pair, const RankSums& single, bool pays) {
    const RankSums free = Less(Less(deck.all, pair), single);
    return {pays ? TwoSingles(free) : 0,
            // The single paired, or a free pair.
            single.cards * free.cards + free.pairs, pair.cards * free.cards,
            // One more of each held rank, or two of the single.
            pair.cards * single.cards + single.pairs,
            // The other two of the pair, beside the single.
            pair.pairs};
}

RankDraws DrawTwoToTrips(const RankSums& trips) {
    const RankSums free = Less(deck.all, trips);
    return {0, 0, TwoSingles(free), free.pairs, trips.cards * (unseen - 1)};
}

RankDraws DrawOneToPair(std::int32_t pairLeft, std::int32_t singlesLeft, bool pays) {
    return {pays ? unseen - pairLeft - singlesLeft : 0, singlesLeft, pairLeft, 0, 0};
}

RankDraws DrawOneToTwoPair(std::int32_t left) {
    return {0, unseen - left, 0, left, 0};
}

RankDraws DrawOneToTripsAndOne(std::int32_t tripsLeft, std::int32_t singleLeft) {
    return {0, 0, unseen - tripsLeft - singleLeft, singleLeft, tripsLeft};
}

constexpr RankDraws drawOneToQuads = {0, 0, 0, 0, unseen};

// The outcomes of a hold of different ranks by its kind, counted where it is met first.
inline const StandardOutcomes& OutcomesOfKind(const KeptCards& kept, std::size_t held,
                                              RankDraws (*draw)(const KeptCards& kept)) {
    RankKinds& kinds = deck.kinds[held];
    const auto high = static_cast<std::size_t>(kept.HighCards());
    if (kinds.cards[high] != kept.Cards()) {
        kinds.cards[high] = static_cast<std::int8_t>(kept.Cards());
        kinds.outcomes[high] =
            Outcomes(draw(kept), Choose(unseen, static_cast<std::int32_t>(HandSize - held)));
    }
    return kinds.outcomes[high];
}

void CountDrawFive(std::size_t hold, StandardDraws& draws, const Card*) {
    StandardOutcomes out = Outcomes(DrawFive(), Choose(unseen, 5));
    MoveStraights(out, deck.straights.ways[0]);
    for (std::size_t suit = 0; suit < SuitCount; ++suit) {
        MoveSuited(out, FlushWays(suit, 5), CompleteRuns(deck.present[suit]));
    }
    draws.outcomes[hold] = out;
    for (std::size_t rank = 0; rank < RanksPerSuit; ++rank) {
        draws.quadsByRank[hold][rank] = deck.full[rank] * (unseen - 4);
    }
    for (std::size_t i = 0; i < KickerQuadsCount; ++i) {
        draws.courtQuads[hold][i] = deck.fullCourts[i] * (deck.courtCards - 4);
        draws.lowQuads[hold][i] = deck.fullLows[i] * (deck.lowCards - 4);
    }
}

void CountDrawFour(std::size_t hold, StandardDraws& draws, const Card*) {
    const KeptCards& kept = KeptBy(hold);
    StandardOutcomes& out = draws.outcomes[hold];
    out = OutcomesOfKind(kept, 1, DrawFourToOneRank);
    MoveRunsAndFlushes(out, kept, 4);
    draws.quadsByRank[hold] = deck.full;
    if (AreIn(courtRanks, kept.Ranks())) {
        draws.courtQuads[hold] = deck.fullCourts;
    }
    if (AreIn(lowRanks, kept.Ranks())) {
        draws.lowQuads[hold] = deck.fullLows;
    }
    if (kept.Cards() == 3) {
        StoreQuadsWithAny(draws, hold, LowestRank(kept.Ranks()));
    }
}

void CountDrawThree(std::size_t hold, StandardDraws& draws, const Card*) {
    const KeptCards& kept = KeptBy(hold);
    StandardOutcomes& out = draws.outcomes[hold];
    const std::int32_t first = LowestRank(kept.Ranks());
    if (kept.Repeated() != 0) {
        out = Outcomes(DrawThreeToPair(TermsOf(first), Pays(first)), Choose(unseen, 3));
        if (kept.Cards() == 2) {
            StoreQuadsWithAny(draws, hold, first);
        }
        return;
    }
    out = OutcomesOfKind(kept, 2, DrawThreeToTwoRanks);
    MoveRunsAndFlushes(out, kept, 3);
    for (const std::int32_t rank : {first, LowestRank(kept.Ranks() & (kept.Ranks() - 1))}) {
        StoreQuadsWithKept(draws, hold, rank, kept.Ranks(), TermsOf(rank).trips);
    }
}

void CountDrawTwo(std::size_t hold, StandardDraws& draws, const Card*) {
    const KeptCards& kept = KeptBy(hold);
    StandardOutcomes& out = draws.outcomes[hold];
    if (kept.Repeated() == 0) {
        out = OutcomesOfKind(kept, 3, DrawTwoToThreeRanks);
        MoveRunsAndFlushes(out, kept, 2);
        return;
    }
    const std::int32_t most = LowestRank(kept.Repeated()); // the rank of the pair or the trips
    if (kept.Repeated() == kept.Ranks()) {
        out = Outcomes(DrawTwoToTrips(TermsOf(most)), Choose(unseen, 2));
        if (kept.Cards() == 1) {
            StoreQuadsWithAny(draws, hold, most);
        }
        return;
    }
    const std::int32_t single = LowestRank(kept.Ranks() ^ kept.Repeated());
    out = Outcomes(DrawTwoToPairAndOne(TermsOf(most), TermsOf(single), Pays(most)),
                   Choose(unseen, 2));
    StoreQuadsWithKept(draws, hold, most, kept.Ranks(), TermsOf(most).pairs);
}

void CountDrawOne(std::size_t hold, StandardDraws& draws, const Card* held) {
    const KeptCards& kept = KeptBy(hold);
    StandardOutcomes& out = draws.outcomes[hold];
    if (kept.Repeated() == 0) {
        out = Outcomes({kept.HighCards(), 0, 0, 0, 0}, unseen);
        MoveRunsAndFlushes(out, kept, 1);
        return;
    }
    const std::int32_t most = LowestRank(kept.Repeated()); // the rank of a pair, trips or quads
    const std::int32_t left = Left(most);
    const auto isMost = [&](Card card) { return RankOf(card) == most; };
    if (IsOne(kept.Ranks())) {
        out = Outcomes(drawOneToQuads, unseen);
        StoreQuadsWithAny(draws, hold, most);
    } else if (kept.Repeated() == kept.Ranks()) {
        out = Outcomes(DrawOneToTwoPair(kept.Cards()), unseen);
    } else if (std::count_if(held, held + 4, isMost) == 3) {
        out = Outcomes(DrawOneToTripsAndOne(left, kept.Cards() - left), unseen);
        StoreQuadsWithKept(draws, hold, most, kept.Ranks(), left);
    } else {
        out = Outcomes(DrawOneToPair(left, kept.Cards() - left, Pays(most)), unseen);
    }
}

// The held cards of each hold, in position order.
constexpr std::array<std::array<std::uint8_t, HandSize>, HoldCount> heldPositions = [] {
    std::array<std::array<std::uint8_t, HandSize>, HoldCount> positions{};
    for (std::size_t hold = 0; hold < HoldCount; ++hold) {
        std::size_t held = 0;
        for (std::size_t position = 0; position < HandSize; ++position) {
            if ((HoldOrder[hold] >> position & 1) != 0) {
                positions[hold][held++] = static_cast<std::uint8_t>(position);
            }
        }
    }
    return positions;
}();

using Counter = void (*)(std::size_t hold, StandardDraws& draws, const Card* held);

inline void CountHolds(std::size_t first, std::size_t end, std::size_t count, Counter counter,
                       StandardDraws& draws) {
    for (std::size_t hold = first; hold < end; ++hold) {
        std::array<Card, HandSize> held;
        for (std::size_t i = 0; i < count; ++i) {
            held[i] = draws.cards[heldPositions[hold][i]];
        }
        // Few holds have any quads; those that do store over the zeros.
        draws.quadsByRank[hold] = {};
        draws.courtQuads[hold] = {};
        draws.lowQuads[hold] = {};
        counter(hold, draws, held.data());
    }
}

} // namespace

void EnumerateStandardDraws(StandardDraws& draws, std::int32_t threshold) {
    PrepareDeck(draws.cards.data(), threshold);
    PrepareHolds();
    CountHolds(0, 1, 0, CountDrawFive, draws);
    CountHolds(1, 6, 1, CountDrawFour, draws);
    CountHolds(6, 16, 2, CountDrawThree, draws);
    CountHolds(16, 26, 3, CountDrawTwo, draws);
    CountHolds(26, 31, 4, CountDrawOne, draws);
}
