#include "strategy/deuces_deck.h"

#include <bit>

#include "strategy/deuces_routines.h"

namespace {

constexpr DeucesDeckState FullDeck = [] {
    DeucesDeckState deck{};
    deck.cards = StandardDeckSize - static_cast<std::int32_t>(HandSize);
    for (std::int32_t& count : deck.rankCount) {
        count = SuitCount;
    }
    for (std::int32_t suit = 0; suit < SuitCount; ++suit) {
        deck.suitCount[suit] = RanksPerSuit - 1;
        deck.royalCount[suit] = RanksPerSuit - RankTen;
        for (std::int32_t& present : deck.present[suit]) {
            present = 1;
        }
    }
    deck.deuces = SuitCount;
    deck.histogram[SuitCount] = RanksPerSuit - 1;
    deck.heldDeuceSuit = -1;
    deck.held = {{}, {}, 0, 0, {-1, -1, -1, -1}, {-1, -1}, -1, 1, 0};
    return deck;
}();

// A card that is not there, a joker or one dealt twice, takes nothing out.
void TakeCard(DeucesDeckState& deck, Card card) {
    const std::int32_t suit = SuitOf(card);
    const std::int32_t rank = RankOf(card);
    if (suit >= SuitCount || deck.present[suit][rank] == 0) {
        return;
    }
    deck.present[suit][rank] = 0;
    if (rank == RankDeuce) {
        --deck.deuces;
    } else {
        --deck.suitCount[suit];
        --deck.histogram[deck.rankCount[rank]];
        ++deck.histogram[deck.rankCount[rank] - 1];
    }
    --deck.rankCount[rank];
    if (rank >= RankTen) {
        --deck.royalCount[suit];
    }
}

// By deuces held, naturals held and how many ranks these are of, which tells every shape but three
// and one from two and two: those share a routine.
constexpr DeucesRoutine RoutineByShape[5][5][5] = {
    {
        {CountDeucesDrawFive},
        {nullptr, CountOneSingle},
        {nullptr, CountPair, CountTwoSingles},
        {nullptr, CountTrips, CountPairAndSingle, CountThreeSingles},
        {nullptr, CountFourOfAKind, CountTripsOrTwoPair, CountPairAndTwoSingles, CountFourSingles},
    },
    {
        {CountOneDeuce},
        {nullptr, CountDeuceAndSingle},
        {nullptr, CountDeuceAndPair, CountDeuceAndTwoSingles},
        {nullptr, CountDeuceAndTrips, CountDeucePairAndSingle, CountDeuceAndThreeSingles},
    },
    {
        {CountTwoDeuces},
        {nullptr, CountTwoDeucesAndSingle},
        {nullptr, CountTwoDeucesAndPair, CountTwoDeucesTwoSingles},
    },
    {
        {CountThreeDeuces},
        {nullptr, CountThreeDeucesAndSingle},
    },
    {
        {CountFourDeuces},
    },
};

// The same in one row, so that a byte tells the routine.
constexpr std::size_t RoutineIndex(std::size_t deuces, std::size_t naturals, std::size_t distinct) {
    return (deuces * 5 + naturals) * 5 + distinct;
}
constexpr std::array<DeucesRoutine, 125> Routines = [] {
    std::array<DeucesRoutine, 125> routines{};
    for (std::size_t deuces = 0; deuces < 5; ++deuces) {
        for (std::size_t naturals = 0; naturals < 5; ++naturals) {
            for (std::size_t distinct = 0; distinct < 5; ++distinct) {
                routines[RoutineIndex(deuces, naturals, distinct)] =
                    RoutineByShape[deuces][naturals][distinct];
            }
        }
    }
    return routines;
}();

constexpr std::uint8_t Absent = HandSize;

// What a hold is made of, by places of the sorted hand.
struct ShapeOfPlaces {
    std::uint8_t routine = 0;
    std::uint8_t count = 0;
    std::uint8_t deuces = 0;
    std::uint8_t distinct = 0;
    std::uint8_t heldRanks = 0;
    std::uint8_t firstNatural = Absent;
    std::uint8_t held[4] = {Absent, Absent, Absent, Absent};
    std::uint8_t singles[4] = {Absent, Absent, Absent, Absent};
    std::uint8_t pairs[2] = {Absent, Absent};
    std::uint8_t trips = Absent;
};

// The shape depends on which cards of the sorted hand tie, and on which are held.
constexpr ShapeOfPlaces FindShape(std::uint32_t ties, std::uint32_t heldPlaces) {
    ShapeOfPlaces shape;
    const auto naturals = static_cast<std::int32_t>(std::bit_width(ties));
    const std::int32_t deuces = static_cast<std::int32_t>(HandSize) - naturals;
    std::uint8_t ranks = 0; // met so far, held or not
    std::uint8_t times = 0; // the current rank is held
    std::size_t singles = 0;
    std::size_t pairs = 0;
    for (std::int32_t place = 0; place < static_cast<std::int32_t>(HandSize); ++place) {
        const bool natural = place >= deuces;
        const bool tied = place > deuces && (ties >> (place - deuces - 1) & 1) != 0;
        if (natural && !tied) {
            ++ranks;
            times = 0;
        }
        if ((heldPlaces >> place & 1) == 0 || shape.count == 4) {
            continue;
        }
        const auto at = static_cast<std::uint8_t>(place);
        shape.held[shape.count++] = at;
        if (!natural) {
            ++shape.deuces;
            continue;
        }
        ++times;
        shape.firstNatural = shape.firstNatural == Absent ? at : shape.firstNatural;
        if (times == 1) {
            ++shape.distinct;
            shape.heldRanks = static_cast<std::uint8_t>(shape.heldRanks | 1u << (ranks - 1));
            shape.singles[singles++] = at;
        } else if (times == 2) {
            shape.singles[--singles] = Absent;
            shape.pairs[pairs++] = at;
        } else if (times == 3) {
            shape.pairs[--pairs] = Absent;
            shape.trips = at;
        } else {
            shape.trips = Absent;
        }
    }
    const auto index =
        RoutineIndex(shape.deuces, shape.count - std::size_t{shape.deuces}, shape.distinct);
    shape.routine = static_cast<std::uint8_t>(index);
    return shape;
}

void SortCards(DeucesHand& hand, const Card* codes) {
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(HandSize); ++i) {
        const std::int32_t rank = RankOf(codes[i]);
        std::int32_t at = i;
        for (; at > 0 && hand.ranks[at - 1] > rank; --at) {
            hand.ranks[at] = hand.ranks[at - 1];
            hand.suits[at] = hand.suits[at - 1];
            hand.positions[at] = hand.positions[at - 1];
        }
        hand.ranks[at] = rank;
        hand.suits[at] = SuitOf(codes[i]);
        hand.positions[at] = i;
    }
    hand.ranks[Absent] = -1;
    hand.suits[Absent] = -1;
}

constexpr auto Shapes = [] {
    std::array<std::array<ShapeOfPlaces, HoldCount>, HoldCount> shapes{};
    for (std::uint32_t ties = 0; ties < HoldCount; ++ties) {
        for (std::uint32_t held = 0; held < HoldCount; ++held) {
            shapes[ties][held] = FindShape(ties, held);
        }
    }
    return shapes;
}();

} // namespace

void PrepareDeucesDeck(DeucesDeckState& deck, DeucesWorkArea* workArea) {
    deck = FullDeck;
    deck.workArea = workArea;
    deck.countedArea = workArea;
    for (const Card card : workArea->codes) {
        TakeCard(deck, card);
    }
    deck.scratch.free = SumOverClasses(deck.histogram);
}

void PrepareDeucesHand(DeucesHand& hand, const DeucesDeckState& deck) {
    hand = {};
    SortCards(hand, deck.workArea->codes);
    hand.free[0] = deck.scratch.free;
    std::size_t sets = 1;
    for (std::size_t place = 0; place < HandSize; ++place) {
        const std::int32_t rank = hand.ranks[place];
        if (rank == RankDeuce) {
            continue;
        }
        for (std::size_t other = 0; other < place; ++other) {
            if (hand.ranks[other] != RankDeuce && hand.suits[other] != hand.suits[place]) {
                hand.otherSuits[place] |= 1u << other;
                hand.otherSuits[other] |= 1u << place;
            }
        }
        if (place > 0 && hand.ranks[place - 1] == rank) {
            continue;
        }
        hand.naturalRanks[hand.distinct++] = rank;
        for (std::size_t set = 0; set < sets; ++set) {
            hand.free[sets + set] = hand.free[set];
            TakeTerms(hand.free[sets + set],
                      RankTerms[static_cast<std::size_t>(deck.rankCount[rank])]);
        }
        sets *= 2;
    }
    for (std::size_t place = HandSize; place-- > 0 && hand.ranks[place] != RankDeuce;) {
        const bool tied = hand.ranks[place] == hand.ranks[place + 1];
        hand.ties = hand.ties == 0 ? 1 : hand.ties << 1 | (tied ? 1u : 0u);
    }
}

DeucesRoutine ClassifyHeldCards(DeucesDeckState& deck, const DeucesHand& hand,
                                std::uint32_t heldPlaces) {
    const ShapeOfPlaces& shape = Shapes[hand.ties][heldPlaces];
    DeucesHeldShape& held = deck.held;
    for (std::size_t i = 0; i < 4; ++i) {
        held.ranks[i] = hand.ranks[shape.held[i]];
        held.suits[i] = hand.suits[shape.held[i]];
        held.singles[i] = hand.ranks[shape.singles[i]];
    }
    held.pairs[0] = hand.ranks[shape.pairs[0]];
    held.pairs[1] = hand.ranks[shape.pairs[1]];
    held.trips = hand.ranks[shape.trips];
    held.count = shape.count;
    held.distinct = shape.distinct;
    held.deuces = shape.deuces;
    held.suited = (heldPlaces & hand.otherSuits[shape.firstNatural]) == 0 ? 1 : 0;
    deck.heldDeuceSuit = shape.deuces > 0 ? held.suits[0] : -1;
    deck.scratch.heldRanks = shape.heldRanks;
    deck.scratch.free = hand.free[shape.heldRanks];
    return Routines[shape.routine];
}
