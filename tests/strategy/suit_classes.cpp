#include "tests/strategy/suit_classes.h"

#include <algorithm>

namespace {

using SuitRanks = std::array<std::uint32_t, SuitCount>; // the ranks dealt in each suit, a bit each

SuitRanks RanksBySuit(const Card* cards, std::size_t count) {
    SuitRanks ranks{};
    for (std::size_t i = 0; i < count; ++i) {
        ranks[static_cast<std::size_t>(SuitOf(cards[i]))] |= 1u << RankOf(cards[i]);
    }
    return ranks;
}

// Renaming suits permutes the four rank sets, so the deal with the sets in falling order stands
// for its class, and the class has as many deals as the sets have distinct orders.
std::int32_t Weight(SuitRanks ranks) {
    std::sort(ranks.begin(), ranks.end());
    std::int32_t orders = 0;
    do {
        ++orders;
    } while (std::next_permutation(ranks.begin(), ranks.end()));
    return orders;
}

bool StandsForClass(const SuitRanks& ranks) {
    return std::is_sorted(ranks.rbegin(), ranks.rend());
}

// Appends the classes of the deals that add to the first `count` cards until there are `wanted`.
void AddClasses(SuitClass& deal, std::size_t count, std::size_t wanted,
                std::vector<SuitClass>& classes) {
    if (count == wanted) {
        const SuitRanks ranks = RanksBySuit(deal.cards.data(), wanted);
        if (StandsForClass(ranks)) {
            deal.weight = Weight(ranks);
            classes.push_back(deal);
        }
        return;
    }
    for (Card card = count == 0 ? 0 : deal.cards[count - 1] + 1; card < StandardDeckSize; ++card) {
        deal.cards[count] = card;
        AddClasses(deal, count + 1, wanted, classes);
    }
}

} // namespace

std::vector<SuitClass> NaturalClasses() {
    std::vector<SuitClass> classes;
    SuitClass deal{};
    AddClasses(deal, 0, HandSize, classes);
    return classes;
}

std::vector<SuitClass> JokerClasses() {
    std::vector<SuitClass> classes;
    SuitClass deal{};
    deal.cards.back() = JokerCard;
    AddClasses(deal, 0, HandSize - 1, classes);
    return classes;
}
