// All deals, grouped into classes: one hand and the number of deals that are the same hand up to a
// renaming of the four suits.
#ifndef TESSARIN_TRAINING_DEAL_CLASSES_H
#define TESSARIN_TRAINING_DEAL_CLASSES_H

#include "core/types.h"

// The parts of the enumeration, in its order.
enum class DealBlock {
    FourOfAKindAndFullHouse,
    ThreeOfAKind,
    TwoPair,
    OnePair,
    NoPair,
    WithJoker,
};

struct DealClass {
    DealBlock block;
    std::array<Card, HandSize> cards; // the joker, if any, in the fifth position
    std::int32_t weight;              // 1..24 deals
};

// Classes and deals of the 52-card deck, and of the deals with the joker that the 53-card deck
// adds.
inline constexpr std::int32_t StandardClassCount = 134459;
inline constexpr std::int32_t StandardDealCount = 2598960;
inline constexpr std::int32_t JokerClassCount = 16432;
inline constexpr std::int32_t JokerDealCount = 270725;

// Called for each class in turn with the caller's context; false ends the enumeration.
using DealClassVisitor = bool (*)(void* context, const DealClass& deal);

// The classes without and those with the joker. Each returns whether it came to its end.
bool EnumerateStandardDeals(DealClassVisitor visit, void* context);
bool EnumerateJokerDeals(DealClassVisitor visit, void* context);

#endif
