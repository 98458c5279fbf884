// Moves of play that many tests make.
#ifndef TESSARIN_TESTS_WINDOW_PLAY_H
#define TESSARIN_TESTS_WINDOW_PLAY_H

#include <cstdint>

#include "core/table.h"
#include "tests/window/harness.h"

// The seeded program without training, so that any hold is drawn to without a question.
RunningProgram StartUntrained(std::uint32_t seed, unsigned pause = 0);

// Taps the cards of the pattern.
void Hold(const RunningProgram& program, HoldPattern pattern);

// Whether the hand on the table pays.
bool IsWinning(const Table& table);

// Has all rows of Jacks or Better pay so much at five coins, from the next start on.
void PayFor(std::uint32_t payout);

// A program in the middle of a long count-up: with 95 credits left, a pat hand of Jacks or Better,
// held whole, pays so many coins, one each `pause`.
RunningProgram StartCountUp(std::uint32_t payout, unsigned pause);

#endif
