// What a seed has in store: the hands the seeded program will deal, and the seeds that deal a hand
// wanted.
#ifndef TESSARIN_TESTS_WINDOW_FORECAST_H
#define TESSARIN_TESTS_WINDOW_FORECAST_H

#include <cstdint>

#include "core/table.h"

// The table as the program opens it now, after the seed. Reads the same settings.
void ForetellStart(Table& table, std::uint32_t seed);

// The same for another seed, with the settings the table has.
void ForetellAnew(Table& table, std::uint32_t seed);

// The next deal, and its draw with the holds of the pattern. Credits follow, the whole payout
// included.
void ForetellDeal(Table& table);
Settlement ForetellDraw(Table& table, HoldPattern hold);

// How the draw would end; the table stays as it is.
Settlement ForetoldDraw(const Table& table, HoldPattern hold);

// The first seed whose first hand fits, as the settings now stand; wanted takes the table after
// the deal.
template <typename Wanted>
std::uint32_t FindSeed(Wanted wanted) {
    Table table;
    std::uint32_t seed = 1;
    ForetellStart(table, seed);
    ForetellDeal(table);
    while (!wanted(table)) {
        ForetellAnew(table, ++seed);
        ForetellDeal(table);
    }
    return seed;
}

#endif
