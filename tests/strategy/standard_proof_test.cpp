#include <gtest/gtest.h>

#include <algorithm>

#include "core/evaluate.h"
#include "strategy/standard_draws.h"
#include "tests/strategy/independent_counts.h"
#include "tests/strategy/suit_classes.h"

namespace {

// The categories of the enumerator below quads and above, and then quads by rank and by the worth
// of the fifth card.
enum KickerClass : std::size_t { OtherKicker, CourtKicker, LowKicker, KickerClassCount };

constexpr std::size_t firstQuads = StandardCategoryCount;
constexpr std::size_t categoryCount = firstQuads + RanksPerSuit * KickerClassCount;

constexpr std::size_t QuadsCategory(std::int32_t rank, std::size_t kicker) {
    return firstQuads + static_cast<std::size_t>(rank) * KickerClassCount + kicker;
}

// Ascending codes of a hand of quads: the rank that stands twice is the rank of the four.
std::size_t CategoryOfQuads(const Card* five) {
    std::array<std::int32_t, HandSize> ranks{};
    std::transform(five, five + HandSize, ranks.begin(), RankOf);
    std::sort(ranks.begin(), ranks.end());
    const std::int32_t rank = ranks[1];
    const std::int32_t kicker = ranks[0] == rank ? ranks[4] : ranks[0];
    const bool courts = rank >= RankJack && kicker >= RankJack;
    const bool lows =
        (rank <= RankFour || rank == RankAce) && (kicker <= RankFour || kicker == RankAce);
    return QuadsCategory(rank, courts ? CourtKicker : lows ? LowKicker : OtherKicker);
}

// By the evaluator's rows for jacks or better, row 0 the royal.
std::int32_t StandardCategoryOf(const Card* five) {
    constexpr std::size_t categoryOfRow[] = {Royal,    StraightFlush, Quads,   FullHouse, Flush,
                                             Straight, Trips,         TwoPair, HighPair,  NoPay};
    const std::size_t category = categoryOfRow[EvaluateCodes(JacksOrBetter, five)];
    return static_cast<std::int32_t>(category == Quads ? CategoryOfQuads(five) : category);
}

struct Words {
    StandardOutcomes outcomes{};
    QuadsByRank quadsByRank{};
    KickerQuads courtQuads{};
    KickerQuads lowQuads{};
    bool operator==(const Words&) const = default;
};

// The words of a hold out of the independent counts of its categories.
Words ExpectedWords(const std::int32_t* counts) {
    Words words;
    for (std::size_t category = NoPay; category < Total; ++category) {
        words.outcomes[category] = counts[category];
    }
    for (std::int32_t rank = 0; rank < RanksPerSuit; ++rank) {
        for (std::size_t kicker = 0; kicker < KickerClassCount; ++kicker) {
            words.quadsByRank[static_cast<std::size_t>(rank)] +=
                counts[QuadsCategory(rank, kicker)];
        }
        words.outcomes[Quads] += words.quadsByRank[static_cast<std::size_t>(rank)];
    }
    for (std::size_t category = NoPay; category < Total; ++category) {
        words.outcomes[Total] += words.outcomes[category];
    }
    for (std::int32_t i = 0; i < 4; ++i) {
        const auto at = static_cast<std::size_t>(i);
        words.courtQuads[at] = counts[QuadsCategory(RankJack + i, CourtKicker)];
        words.lowQuads[at] = counts[QuadsCategory(i < 3 ? i : RankAce, LowKicker)];
    }
    return words;
}

Words WordsOf(const StandardDraws& draws, std::size_t hold) {
    return {draws.outcomes[hold], draws.quadsByRank[hold], draws.courtQuads[hold],
            draws.lowQuads[hold]};
}

} // namespace

// Every word of every hold of every deal class, or of every TESSARIN_PROOF_STEP-th.
TEST(StandardProof, EveryCountOfEveryHoldOfEveryClass) {
    const IndependentCounts deck = TallyDeck(StandardDeckSize, categoryCount, StandardCategoryOf);
    const std::vector<SuitClass> classes = NaturalClasses();
    StandardDraws draws{};
    HoldCounts counts;
    std::size_t compared = 0;
    for (std::size_t i = 0; i < classes.size(); i += TESSARIN_PROOF_STEP) {
        draws.cards = classes[i].cards;
        EnumerateStandardDraws(draws, RankJack);
        CountAllHolds(deck, draws.cards.data(), counts);
        for (std::size_t hold = 0; hold < HoldAllIndex; ++hold) {
            const auto pattern = static_cast<std::size_t>(HoldOrder[hold]);
            const Words expected = ExpectedWords(&counts[pattern * categoryCount]);
            ASSERT_TRUE(WordsOf(draws, hold) == expected)
                << "class " << i << " hold " << hold << " outcomes "
                << testing::PrintToString(draws.outcomes[hold]) << " expected "
                << testing::PrintToString(expected.outcomes) << " cards "
                << testing::PrintToString(draws.cards);
            compared += sizeof(Words) / sizeof(std::int32_t);
        }
    }
    std::printf("every %d. class: %zu counts compared\n", TESSARIN_PROOF_STEP, compared);
}
