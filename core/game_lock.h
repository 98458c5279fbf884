// The one lock of the program. It keeps a deal, a payout count-up and the searches, each with what
// is read of the engine's result table after it, apart. Recursive: the thread that holds it may
// take it again.
#ifndef TESSARIN_CORE_GAME_LOCK_H
#define TESSARIN_CORE_GAME_LOCK_H

// Once each, before the first and after the last use, by the thread that owns the main window.
void CreateGameLock();
void DeleteGameLock();

void EnterGameLock();
void LeaveGameLock();

// Holds the lock for the length of a block.
struct GameLockHold {
    GameLockHold() { EnterGameLock(); }
    ~GameLockHold() { LeaveGameLock(); }
    GameLockHold(const GameLockHold&) = delete;
    GameLockHold& operator=(const GameLockHold&) = delete;
};

#endif
