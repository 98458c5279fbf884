#include "ui/check_play.h"

#include "core/game_lock.h"
#include "strategy/best_hold.h"
#include "training/play_grading.h"
#include "ui/program.h"
#include "ui/statistical_error_dialog.h"

namespace {

// Clear from a check that the player backs out of until one that lets the draw proceed: a hand
// counts once, with its first hold.
bool countThisCheck = true;

bool asking = false;

bool Ask(HWND owner, const Hand& hand, const GameDescriptor& game, const PlayGrade& grade) {
    asking = true;
    const bool anyway = PlayItAnyway(owner, hand, game, grade);
    asking = false;
    return anyway;
}

} // namespace

bool AskingAboutPlay() {
    return asking;
}

// The lock is held across the question, so that the details opened from it show this search.
int CheckPlay(HWND owner, const Hand& hand, const GameDescriptor& game) {
    const GameLockHold lock;
    const std::int32_t best = FindBestHold(hand.cards.data(), game, program.table.bet);
    const PlayGrade grade = GradePlay(resultTable, best, HeldPattern(hand));
    if (countThisCheck) {
        CountGrade(program.stats, grade);
    }
    const bool proceed =
        !NeedsWarning(program.table.training, grade) || Ask(owner, hand, game, grade);
    countThisCheck = proceed;
    return proceed ? 1 : 0;
}
