#include "core/game_lock.h"

#include <mutex>
#include <optional>

namespace {

std::optional<std::recursive_mutex> gameLock;

} // namespace

void CreateGameLock() {
    gameLock.emplace();
}

void DeleteGameLock() {
    gameLock.reset();
}

void EnterGameLock() {
    gameLock->lock();
}

void LeaveGameLock() {
    gameLock->unlock();
}
