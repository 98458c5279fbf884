// All deals of a deck up to a renaming of the suits, for tests that try every one.
#ifndef TESSARIN_TESTS_STRATEGY_SUIT_CLASSES_H
#define TESSARIN_TESTS_STRATEGY_SUIT_CLASSES_H

#include <array>
#include <cstdint>
#include <vector>

#include "core/types.h"

struct SuitClass {
    std::array<Card, HandSize> cards; // one deal of the class, cards ascending
    std::int32_t weight;              // deals in the class
};

// The 134,459 classes of five natural cards; their weights add up to 2,598,960.
std::vector<SuitClass> NaturalClasses();

// The 16,432 classes of four natural cards and the joker, which stands last; 270,725 deals.
std::vector<SuitClass> JokerClasses();

#endif
