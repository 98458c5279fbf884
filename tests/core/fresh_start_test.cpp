// What happens once in a process, in a process of its own: nothing has seeded the generator yet.
#include <gtest/gtest.h>

#include <chrono>

#include "core/cards.h"
#include "core/random.h"

namespace {

std::uint32_t TickCount() {
    using namespace std::chrono;
    const auto sinceStart = steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(duration_cast<milliseconds>(sinceStart).count());
}

bool SameDeck(const Deck& a, const Deck& b) {
    for (std::size_t place = 1; place <= JokerDeckSize; ++place) {
        if (a[place].code != b[place].code) {
            return false;
        }
    }
    return true;
}

} // namespace

TEST(FreshStart, TheFirstDeckBuiltSeedsFromTheTickCountAndTheSecondGoesOnFromThere) {
    const std::uint32_t earliest = TickCount();
    Deck first{};
    BuildDeck(JokerDeckSize, first);
    const std::uint32_t latest = TickCount();
    Deck second{};
    BuildDeck(JokerDeckSize, second);
    bool found = false;
    for (std::uint32_t ticks = earliest; ticks <= latest && !found; ++ticks) {
        Deck expectedFirst{};
        Deck expectedSecond{};
        SeedRandom(ticks);
        BuildDeck(JokerDeckSize, expectedFirst);
        BuildDeck(JokerDeckSize, expectedSecond);
        found = SameDeck(first, expectedFirst) && SameDeck(second, expectedSecond);
    }
    EXPECT_TRUE(found);
}
