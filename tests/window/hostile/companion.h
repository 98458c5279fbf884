// A program and what the test knows of its play: every move is made in both.
#ifndef TESSARIN_TESTS_WINDOW_HOSTILE_COMPANION_H
#define TESSARIN_TESTS_WINDOW_HOSTILE_COMPANION_H

#include "tests/window/hostile/faulty_program.h"
#include "tests/window/hostile/stored_tree.h"

struct Companion {
    RunningProgram program;
    Table table;
    SessionStats stats;
};

// The program with faults, without training, with the settings as they stand.
void StartCompanion(Companion& companion, std::uint32_t seed);

// Each waits until the program has made the move.
void DealHand(Companion& companion); // buys what is missing by resetting the credits
void DrawHand(Companion& companion, HoldPattern hold);
void RaiseTheBet(Companion& companion);
void ChangeTheGame(Companion& companion, std::int32_t id);

// A move that fits the state of play.
void MakeAnyMove(Companion& companion, std::mt19937& random);

// What a draw with the hold adds to the statistics, the payout included.
void CountDraw(Table& table, SessionStats& stats, HoldPattern hold);

#endif
