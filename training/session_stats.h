// The player's running totals: coins, hands, errors and returns, over all runs of the program.
//
// One record serves the program, on the main window's thread and without a lock. All counting
// wraps in 32 bits.
#ifndef TESSARIN_TRAINING_SESSION_STATS_H
#define TESSARIN_TRAINING_SESSION_STATS_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "training/dialog_text.h"

struct SessionStats {
    std::int32_t coinsIn;        // bet on completed hands
    std::int32_t coinsOut;       // won
    std::int32_t hands;          // played
    std::int32_t minorErrors;    // by the classes of play_grading.h
    std::int32_t moderateErrors; //
    std::int32_t majorErrors;    //
    double bestReturn;           // sum over graded hands of the best hold's return, in coins
    double yourReturn;           // and of the return of the hold that was chosen
};

// The stored totals, 0 for each that is missing or damaged, as a return is that is not finite.
SessionStats LoadSessionStats();

// Writes all eight.
void StoreSessionStats(const SessionStats& stats);

// The steps of a hand: it ends, its bet is spent, its win is paid. Coins are 0 or more.
void CountHand(SessionStats& stats);
void CountCoinsIn(SessionStats& stats, std::int32_t coins);
void CountCoinsOut(SessionStats& stats, std::int32_t coins);

// Clears all eight totals; the store keeps the old ones until they are next written.
void ResetSessionStats(SessionStats& stats);

// Control ids of the dialog's fields.
enum StatsFieldId : std::int32_t {
    StatsCoinsIn = 4003,
    StatsCoinsOut = 4004,
    StatsPercentPaid = 4005,
    StatsMinorErrors = 4006,
    StatsModerateErrors = 4007,
    StatsMajorErrors = 4008,
    StatsPercentCorrect = 4009,
    StatsBestReturn = 4010,
    StatsYourReturn = 4011,
    StatsPercentReturn = 4012,
    StatsCost = 4013,
    StatsHands = 4017,
    StatsErrors = 4018,
    StatsResult = 4019,
    StatsNet = 4020,
};

inline constexpr std::size_t StatsFieldCount = 15;

// Every field of the dialog, its text (numbers end in one blank, which keeps them off the field's
// border) and its colours, in the dialog's reading order.
std::array<DialogText, StatsFieldCount> DescribeSessionStats(const SessionStats& stats);

#endif
