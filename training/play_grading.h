// Grading of the player's hold against the best one.
//
// A check of a play runs, on the main window's thread: take the game lock, FindBestHold, GradePlay,
// CountGrade while the count flag is set, ask where NeedsWarning says so, set the count flag to
// whether the draw proceeds, let go of the lock. The count flag starts set; a play that is sent
// back is therefore counted once, with its first hold.
#ifndef TESSARIN_TRAINING_PLAY_GRADING_H
#define TESSARIN_TRAINING_PLAY_GRADING_H

#include "core/table.h"
#include "strategy/best_hold.h"
#include "training/session_stats.h"

enum class PlayError { None, Minor, Moderate, Major };

// In coins of the current bet, whatever the bet: a cost above each is an error of that class, any
// smaller cost above 0 a minor error.
inline constexpr double ModerateCost = 0.02;
inline constexpr double MajorCost = 0.1;

// A cost above this is worth a warning. A value of its own: a player who is not to be warned of
// trifles needs only this one raised.
inline constexpr double WarningCost = 0.0;

struct PlayGrade {
    double bestReturn; // in coins of the bet
    double yourReturn;
    double cost; // best - yours where yours is strictly lower, else 0
    PlayError error;
};

// None for a cost of 0 or less.
PlayError ClassifyCost(double cost);

// The grade of two returns.
PlayGrade GradeReturns(double bestReturn, double yourReturn);

// The grade of a hold, read from the results of a search; best is the index FindBestHold gave.
// Only the low five bits of the pattern count.
PlayGrade GradePlay(const std::array<HoldResult, HoldCount>& results, std::int32_t best,
                    HoldPattern held);

// Adds the grade's two returns and its error to the totals.
void CountGrade(SessionStats& stats, const PlayGrade& grade);

// Whether the player is asked before this play goes ahead.
bool NeedsWarning(TrainingMode mode, const PlayGrade& grade);

// Control ids of the "Statistical Error!" dialog's own texts.
enum GradingFieldId : std::int32_t {
    GradingError = 2101,
    GradingBestReturn = 2102,
    GradingYourReturn = 2103,
    GradingCost = 2104,
};

inline constexpr std::size_t GradingFieldCount = 4;

struct GradingTexts {
    std::array<DialogText, GradingFieldCount> fields; // by rising id
    bool errorInDisplayFont; // a minor error keeps the dialog's font; the cost never keeps it
};

GradingTexts DescribeGrade(const PlayGrade& grade);

#endif
