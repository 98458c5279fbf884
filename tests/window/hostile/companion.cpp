#include "tests/window/hostile/companion.h"

#include "core/wrap.h"
#include "strategy/best_hold.h"
#include "tests/window/forecast.h"
#include "training/play_grading.h"
#include "ui/resource.h"

void StartCompanion(Companion& companion, std::uint32_t seed) {
    ForetellStart(companion.table, seed);
    companion.stats = LoadSessionStats();
    companion.program = StartFaulty(seed);
    Do(companion.program, IDM_NO_TRAINING);
}

void DealHand(Companion& companion) {
    if (!CanDeal(companion.table)) {
        Do(companion.program, IDM_RESET_CREDITS);
        ResetCredits(companion.table);
    }
    Do(companion.program, IDC_DEAL_DRAW);
    ForetellDeal(companion.table);
}

// A payout below zero, which an odd paytable may hold, is counted but not taken from the credits.
void CountDraw(Table& table, SessionStats& stats, HoldPattern hold) {
    const std::int32_t best = FindBestHold(table.hand.cards.data(), table.game, table.bet);
    CountGrade(stats, GradePlay(resultTable, best, hold));
    CountHand(stats);
    if (table.noDraw) {
        table.inDraw = false;
        return;
    }
    const Settlement hand = ForetellDraw(table, hold);
    CountCoinsIn(stats, table.bet);
    CountCoinsOut(stats, hand.payout);
    if (hand.payout < 0) {
        PayCoins(table, WrapSubtract(0, hand.payout));
    }
}

void DrawHand(Companion& companion, HoldPattern hold) {
    for (int i = 0; i < static_cast<int>(HandSize); ++i) {
        if ((hold >> i) & 1) {
            TypeKey(companion.program, static_cast<wchar_t>(L'1' + i));
        }
    }
    Settle(companion.program);
    Do(companion.program, IDC_DEAL_DRAW);
    CountDraw(companion.table, companion.stats, hold);
}

void RaiseTheBet(Companion& companion) {
    Do(companion.program, IDC_BET_ONE);
    BetOne(companion.table);
}

void ChangeTheGame(Companion& companion, std::int32_t id) {
    Do(companion.program, IDM_FIRST_GAME + id);
    PickGame(companion.table, id);
}

void MakeAnyMove(Companion& companion, std::mt19937& random) {
    if (companion.table.inDraw) {
        DrawHand(companion, random() % HoldCount);
    } else if (OneIn(random, 6)) {
        RaiseTheBet(companion);
    } else if (OneIn(random, 6)) {
        ChangeTheGame(companion, Between(random, 0, GameCount - 1));
    } else {
        DealHand(companion);
    }
}
