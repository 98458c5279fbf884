#include "strategy/joker_draws.h"

#include <algorithm>

#include "strategy/choose.h"
#include "strategy/joker_deck.h"
#include "strategy/joker_routines.h"

// A hand is five ordinary cards, or four and the joker. A hold without the joker counts its draws
// of the first sort and, if the joker is left, adds those of the second, which are the draws to the
// same cards held with the joker.
//
// Every draw is some cards of held ranks and some of others. The shape counters add up the ways of
// each class by which are which. They count what ranks alone decide, as if there were no straights
// and flushes; those are added hold by hold, since nothing else depends on which ranks and suits
// are held.

namespace {

constexpr std::size_t At(std::int32_t index) {
    return static_cast<std::size_t>(index);
}

constexpr auto DrawTotal = [] {
    std::array<std::int32_t, HandSize> totals{};
    for (std::int32_t held = 0; held < static_cast<std::int32_t>(HandSize); ++held) {
        totals[At(held)] = Choose(JokerDeckSize - 5, 5 - held);
    }
    return totals;
}();

RankSums LowOthers(const HeldSummary& held) {
    RankSums low = held.others;
    TakeTerms(low, held.highOthers);
    return low;
}

// Two pair without the joker, by the number of cards to draw. A pair not held is made of one card
// of a single or two of another rank; a fifth card is of neither pair's rank.
void CountTwoPair(std::int32_t draw, JokerCountRecord& record, const HeldSummary& held) {
    const RankSums& others = held.others;
    const RankSums& singles = held.singles;
    const bool paired = held.pairCount == 1;
    switch (draw) {
    case 1: // two pairs held, or a pair and two singles
        record[JokerTwoPair] += held.pairCount == 2 ? others.cards : singles.cards;
        break;
    case 2: // a pair and a single, or three singles
        record[JokerTwoPair] +=
            paired ? singles.cards * others.cards + others.pairs : TwoSingles(singles);
        break;
    case 3: // a pair, or two singles
        record[JokerTwoPair] +=
            paired ? PairAndSingle(others, others)
                   : TwoSingles(singles) * others.cards + singles.cards * others.pairs;
        break;
    case 4: // a single
        record[JokerTwoPair] += singles.cards * PairAndSingle(others, others) + TwoPairs(others);
        break;
    default: // nothing
        record[JokerTwoPair] += TwoPairsAndSingle(others);
    }
}

// With the joker held. It makes five of four alike, four of three, a full house of two pairs and
// three of one pair; where all ranks differ it pairs the highest, so that what pays is any hand but
// those of low ranks only.

// Four to draw.
void CountJokerAlone(JokerCountRecord& record, const HeldSummary& held) {
    const RankSums& others = held.others;
    record[JokerFiveOfAKind] += others.quads;
    record[JokerQuads] += TripsAndSingle(others);
    record[JokerFullHouse] += TwoPairs(others);
    record[JokerTrips] += PairAndTwoSingles(others, others);
    record[JokerHighPair] += FourSingles(others) - FourSingles(LowOthers(held));
}

// Three to draw.
void CountJokerSingle(JokerCountRecord& record, const HeldSummary& held) {
    const RankSums& others = held.others;
    const RankSums& single = held.singles;
    const std::int32_t low = held.highHeld != 0 ? 0 : ThreeSingles(LowOthers(held));
    record[JokerFiveOfAKind] += single.trips;
    record[JokerQuads] += single.pairs * others.cards + others.trips;
    record[JokerFullHouse] += single.cards * others.pairs;
    record[JokerTrips] += single.cards * TwoSingles(others) + PairAndSingle(others, others);
    record[JokerHighPair] += ThreeSingles(others) - low;
}

// Two to draw.
void CountJokerPair(JokerCountRecord& record, const HeldSummary& held) {
    const RankSums& others = held.others;
    record[JokerFiveOfAKind] += held.pairs.pairs;
    record[JokerQuads] += held.pairs.cards * others.cards;
    record[JokerFullHouse] += others.pairs;
    record[JokerTrips] += TwoSingles(others);
}

// Two to draw.
void CountJokerTwoSingles(JokerCountRecord& record, const HeldSummary& held) {
    const RankSums& others = held.others;
    const RankSums& singles = held.singles;
    const std::int32_t low = held.highHeld != 0 ? 0 : TwoSingles(LowOthers(held));
    record[JokerQuads] += singles.pairs;
    record[JokerFullHouse] += TwoSingles(singles);
    record[JokerTrips] += singles.cards * others.cards + others.pairs;
    record[JokerHighPair] += TwoSingles(others) - low;
}

// One to draw: the last of the rank makes five.
void CountJokerTrips(JokerCountRecord& record, const HeldSummary& held) {
    record[JokerFiveOfAKind] += held.trips;
    record[JokerQuads] += held.others.cards;
}

// One to draw.
void CountJokerPairSingle(JokerCountRecord& record, const HeldSummary& held) {
    record[JokerQuads] += held.pairs.cards;
    record[JokerFullHouse] += held.singles.cards;
    record[JokerTrips] += held.others.cards;
}

// One to draw.
void CountJokerThreeSingles(JokerCountRecord& record, const HeldSummary& held) {
    record[JokerTrips] += held.singles.cards;
    record[JokerHighPair] += held.highHeld != 0 ? held.others.cards : held.highOthers.cards;
}

// Without the joker held. One pair pays by its own rank: a single paired, a pair held, or a pair
// drawn, and every other card of a rank of its own.

void CountDiscardAll(JokerCountRecord& record, const HeldSummary& held) {
    const RankSums& others = held.others;
    record[JokerQuads] += others.quads * (others.cards - 4);
    record[JokerFullHouse] += TripsAndPair(others);
    record[JokerTrips] += TripsAndTwoSingles(others);
    record[JokerHighPair] += PairAndThreeSingles(held.highOthers, others);
    CountTwoPair(5, record, held);
    if (jokerDeck.jokersLeft != 0) {
        CountJokerAlone(record, held);
    }
}

// An ordinary card, four to draw; or the joker.
void CountHoldOne(JokerCountRecord& record, const HeldSummary& held) {
    if (held.jokerHeld != 0) {
        CountJokerAlone(record, held);
        return;
    }
    const RankSums& others = held.others;
    const RankSums& single = held.singles;
    record[JokerQuads] += single.trips * others.cards + others.quads;
    record[JokerFullHouse] += single.pairs * others.pairs + single.cards * others.trips;
    record[JokerTrips] += single.pairs * TwoSingles(others) + TripsAndSingle(others);
    record[JokerHighPair] +=
        held.highSingles * ThreeSingles(others) + PairAndTwoSingles(held.highOthers, others);
    CountTwoPair(4, record, held);
    if (jokerDeck.jokersLeft != 0) {
        CountJokerSingle(record, held);
    }
}

// Three to draw.
void CountPair(JokerCountRecord& record, const HeldSummary& held) {
    const RankSums& others = held.others;
    const RankSums& pair = held.pairs;
    record[JokerQuads] += pair.pairs * others.cards;
    record[JokerFullHouse] += pair.cards * others.pairs + others.trips;
    record[JokerTrips] += pair.cards * TwoSingles(others);
    record[JokerHighPair] += held.highPairs * ThreeSingles(others);
    CountTwoPair(3, record, held);
    if (jokerDeck.jokersLeft != 0) {
        CountJokerPair(record, held);
    }
}

// Three to draw.
void CountTwoSingles(JokerCountRecord& record, const HeldSummary& held) {
    const RankSums& others = held.others;
    const RankSums& singles = held.singles;
    record[JokerQuads] += singles.trips;
    record[JokerFullHouse] += PairAndSingle(singles, singles);
    record[JokerTrips] += singles.pairs * others.cards + others.trips;
    record[JokerHighPair] +=
        held.highSingles * TwoSingles(others) + PairAndSingle(held.highOthers, others);
    CountTwoPair(3, record, held);
    if (jokerDeck.jokersLeft != 0) {
        CountJokerTwoSingles(record, held);
    }
}

// Two to draw.
void CountTrips(JokerCountRecord& record, const HeldSummary& held) {
    const RankSums& others = held.others;
    record[JokerQuads] += held.trips * others.cards;
    record[JokerFullHouse] += others.pairs;
    record[JokerTrips] += TwoSingles(others);
    if (jokerDeck.jokersLeft != 0) {
        CountJokerTrips(record, held);
    }
}

// Two to draw.
void CountPairSingle(JokerCountRecord& record, const HeldSummary& held) {
    const RankSums& others = held.others;
    record[JokerQuads] += held.pairs.pairs;
    record[JokerFullHouse] += held.pairs.cards * held.singles.cards + held.singles.pairs;
    record[JokerTrips] += held.pairs.cards * others.cards;
    record[JokerHighPair] += held.highPairs * TwoSingles(others);
    CountTwoPair(2, record, held);
    if (jokerDeck.jokersLeft != 0) {
        CountJokerPairSingle(record, held);
    }
}

// Two to draw.
void CountThreeSingles(JokerCountRecord& record, const HeldSummary& held) {
    record[JokerTrips] += held.singles.pairs;
    record[JokerHighPair] += held.highSingles * held.others.cards + held.highOthers.pairs;
    CountTwoPair(2, record, held);
    if (jokerDeck.jokersLeft != 0) {
        CountJokerThreeSingles(record, held);
    }
}

// One to draw: the joker makes five, any other card leaves four.
void CountQuads(JokerCountRecord& record, const HeldSummary& held) {
    record[JokerFiveOfAKind] += jokerDeck.jokersLeft;
    record[JokerQuads] += held.others.cards;
}

// One to draw to four cards of two ranks.
void CountTripsOrTwoPair(JokerCountRecord& record, const HeldSummary& held) {
    const std::int32_t joker = jokerDeck.jokersLeft;
    if (held.pairCount == 2) {
        record[JokerFullHouse] += held.pairs.cards + joker;
        CountTwoPair(1, record, held);
        return;
    }
    record[JokerQuads] += held.trips + joker;
    record[JokerFullHouse] += held.singles.cards;
    record[JokerTrips] += held.others.cards;
}

// One to draw.
void CountPairTwoSingles(JokerCountRecord& record, const HeldSummary& held) {
    record[JokerTrips] += held.pairs.cards + jokerDeck.jokersLeft;
    record[JokerHighPair] += held.highPairs * held.others.cards;
    CountTwoPair(1, record, held);
}

// One to draw.
void CountFourSingles(JokerCountRecord& record, const HeldSummary& held) {
    record[JokerHighPair] += held.highSingles;
    record[JokerHighPair] += held.highHeld != 0 ? jokerDeck.jokersLeft : 0;
}

using ShapeCounter = void (*)(JokerCountRecord& record, const HeldSummary& held);

// By ShapeOf: the joker; ranks held once, twice, three and four times. The joker alone is the shape
// of several jokers, which no deal has.
constexpr auto ShapeCounters = [] {
    std::array<ShapeCounter, JokerShapeCount> counters{};
    counters[ShapeOf(0, 0, 1, 0, 0)] = CountPair;
    counters[ShapeOf(0, 2, 0, 0, 0)] = CountTwoSingles;
    counters[ShapeOf(0, 0, 0, 1, 0)] = CountTrips;
    counters[ShapeOf(0, 1, 1, 0, 0)] = CountPairSingle;
    counters[ShapeOf(0, 3, 0, 0, 0)] = CountThreeSingles;
    counters[ShapeOf(0, 0, 0, 0, 1)] = CountQuads;
    counters[ShapeOf(0, 1, 0, 1, 0)] = CountTripsOrTwoPair;
    counters[ShapeOf(0, 0, 2, 0, 0)] = CountTripsOrTwoPair;
    counters[ShapeOf(0, 2, 1, 0, 0)] = CountPairTwoSingles;
    counters[ShapeOf(0, 4, 0, 0, 0)] = CountFourSingles;
    counters[ShapeOf(1, 0, 0, 0, 0)] = CountJokerAlone;
    counters[ShapeOf(1, 1, 0, 0, 0)] = CountJokerSingle;
    counters[ShapeOf(1, 0, 1, 0, 0)] = CountJokerPair;
    counters[ShapeOf(1, 2, 0, 0, 0)] = CountJokerTwoSingles;
    counters[ShapeOf(1, 0, 0, 1, 0)] = CountJokerTrips;
    counters[ShapeOf(1, 1, 1, 0, 0)] = CountJokerPairSingle;
    counters[ShapeOf(1, 3, 0, 0, 0)] = CountJokerThreeSingles;
    return counters;
}();

void CountHoldSeveral(JokerCountRecord& record, const HeldSummary& held) {
    ShapeCounters[held.shape](record, held);
}

void FinishCountRecord(JokerCountRecord& record, const HeldSummary& held) {
    std::int32_t paid = 0;
    for (std::size_t word = JokerHighPair; word < JokerTotal; ++word) {
        paid += record[word];
    }
    record[JokerTotal] = DrawTotal[At(held.heldCount)];
    record[JokerNoPay] = record[JokerTotal] - paid;
}

void CountByRanks(JokerCountRecord& record, const HeldSummary& held) {
    record.fill(0);
    switch (held.heldCount) {
    case 0:
        CountDiscardAll(record, held);
        break;
    case 1:
        CountHoldOne(record, held);
        break;
    default:
        CountHoldSeveral(record, held);
    }
    FinishCountRecord(record, held);
}

// Summarizes every hold and counts by ranks one of each kind.
void CountKindsOfHolds(JokerDeckState& deck) {
    std::uint32_t counted = 0;
    std::size_t last = 0;
    for (std::uint32_t cards = 0; cards < HoldAll; ++cards) {
        if (cards != 0) {
            last += cards >> (last + 1);
            SummarizeHeld(deck.holds[cards], cards, last);
        }
        const HeldSummary& held = deck.holds[cards];
        if ((counted >> held.kind & 1) == 0) {
            counted |= std::uint32_t{1} << held.kind;
            CountByRanks(deck.countsByRanks[held.kind], held);
        }
    }
}

} // namespace

std::int32_t CountJokerDraws(JokerWorkArea& area) {
    JokerDeckState& deck = jokerDeck;
    InitJokerDeck(deck, area);
    CountStraights(deck);
    CountKindsOfHolds(deck);
    for (std::uint32_t cards = 0; cards < HoldAll; ++cards) {
        const HeldSummary& held = deck.holds[cards];
        JokerCountRecord& record = area.records[At(HoldIndex[At(held.pattern)])];
        record = deck.countsByRanks[held.kind];
        if (held.alike == 0) {
            CountRunsAndFlushes(deck, record, held);
        }
    }
    std::fill_n(area.records[HoldAllIndex].begin(), JokerTotal, 0);
    return 1;
}
