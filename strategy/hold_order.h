// The fixed order in which the 32 holds are counted, stored, compared and listed.
#ifndef TESSARIN_STRATEGY_HOLD_ORDER_H
#define TESSARIN_STRATEGY_HOLD_ORDER_H

#include "core/types.h"

inline constexpr std::int32_t HoldCount = 32;
inline constexpr std::int32_t HoldAllIndex = 31;

// Index to mask. The order settles ties (the earlier hold wins), so it never changes: fewer cards
// held first; pairs by their positions, singles and triples by rising mask, four-card holds by the
// position discarded.
inline constexpr std::array<HoldPattern, HoldCount> HoldOrder = {
    0,                                      // draw five
    1,  2,  4,  8,  16,                     // hold one
    3,  5,  9,  17, 6,  10, 18, 12, 20, 24, // hold two
    7,  11, 13, 14, 19, 21, 22, 25, 26, 28, // hold three
    30, 29, 27, 23, 15,                     // hold four
    31,                                     // hold all
};

// Mask to index, the inverse of HoldOrder.
inline constexpr std::array<std::int32_t, HoldCount> HoldIndex = [] {
    std::array<std::int32_t, HoldCount> index{};
    for (std::int32_t i = 0; i < HoldCount; ++i) {
        index[static_cast<std::size_t>(HoldOrder[static_cast<std::size_t>(i)])] = i;
    }
    return index;
}();

#endif
