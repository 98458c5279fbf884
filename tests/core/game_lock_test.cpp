#include "core/game_lock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

TEST(GameLock, LetsItsHolderInAgainAndOthersOnlyAfterTheLastLeave) {
    CreateGameLock();
    std::atomic<bool> inside{false};
    EnterGameLock();
    EnterGameLock();
    std::thread other([&] {
        const GameLockHold hold;
        inside = true;
    });
    LeaveGameLock();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_FALSE(inside);
    LeaveGameLock();
    other.join();
    EXPECT_TRUE(inside);
    DeleteGameLock();
}

TEST(GameLock, KeepsCountsOfManyThreadsWhole) {
    CreateGameLock();
    std::int64_t count = 0;
    const auto countUp = [&] {
        for (int i = 0; i < 20000; ++i) {
            const GameLockHold hold;
            ++count;
        }
    };
    std::thread first(countUp);
    std::thread second(countUp);
    first.join();
    second.join();
    EXPECT_EQ(count, 40000);
    DeleteGameLock();
}

TEST(GameLock, CanBeMadeAnewAfterItIsDeleted) {
    for (int round = 0; round < 2; ++round) {
        CreateGameLock();
        bool entered = false;
        std::thread([&] {
            const GameLockHold hold;
            entered = true;
        }).join();
        EXPECT_TRUE(entered);
        DeleteGameLock();
    }
}
