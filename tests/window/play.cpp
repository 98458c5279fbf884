#include "tests/window/play.h"

#include <string>

#include "tests/window/forecast.h"
#include "ui/resource.h"

RunningProgram StartUntrained(std::uint32_t seed, unsigned pause) {
    const RunningProgram program = StartSeeded(seed, pause);
    Do(program, IDM_NO_TRAINING);
    return program;
}

void Hold(const RunningProgram& program, HoldPattern pattern) {
    for (std::size_t i = 0; i < HandSize; ++i) {
        if ((pattern >> i) & 1) {
            TapMiddle(program, program.layout.cards[i]);
        }
    }
    Settle(program);
}

bool IsWinning(const Table& table) {
    return table.rank < static_cast<HandRank>(table.game.rowCount);
}

void PayFor(std::uint32_t payout) {
    for (int row = 0; row < 9; ++row) {
        SetSetting(std::to_wstring(row).c_str(), payout, L"JACKS OR BETTER\\5");
    }
}

RunningProgram StartCountUp(std::uint32_t payout, unsigned pause) {
    PayFor(payout);
    const RunningProgram program = StartUntrained(FindSeed(IsWinning), pause);
    Do(program, IDC_DEAL_DRAW);
    Hold(program, HoldAll);
    Do(program, IDC_DEAL_DRAW);
    return program;
}
