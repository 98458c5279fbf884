#include "ui/commands.h"

#include "ui/game_analysis_dialog.h"
#include "ui/hand_analysis_dialog.h"
#include "ui/hand_details_dialog.h"
#include "ui/hand_play.h"
#include "ui/menus.h"
#include "ui/paytable_editor.h"
#include "ui/program.h"
#include "ui/resource.h"
#include "ui/session_stats_dialog.h"
#include "ui/shell.h"
#include "ui/sounds.h"

namespace {

void Post(int command) {
    PostMessageW(program.window, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void Train(TrainingMode mode) {
    HurryCountUp();
    program.table.training = mode;
}

// A count-up's sound plays on and on, so silence means stopping it too; one that starts meanwhile
// sees the option off.
void TurnSound() {
    program.table.sound = !program.table.sound;
    StopCountSound();
}

// A count-up holds the lock that the search needs; a long one would keep the player waiting.
void ShowTableDetails() {
    HurryCountUp();
    SearchAndShowHandDetails(program.window, program.table.hand, program.table.game);
}

void Exit() {
    HurryCountUp();
    SendMessageW(program.window, WM_CLOSE, 0, 0);
}

} // namespace

bool DoCommand(int id) {
    switch (id) {
    case IDC_DEAL_DRAW:
        DealOrDraw();
        break;
    case IDC_BET_ONE:
        RaiseBet();
        break;
    case IDC_MENU:
        OpenMainMenu();
        break;
    case IDM_SESSION_STATS:
        ShowSessionStats();
        break;
    case IDM_HAND_DETAILS:
        ShowTableDetails();
        break;
    case IDM_HAND_ANALYSIS:
        HurryCountUp();
        ShowHandAnalysis();
        break;
    case IDM_GAME_ANALYSIS:
        HurryCountUp();
        ShowGameAnalysis();
        break;
    case IDM_CHANGE_PAYTABLE:
        EditPaytable();
        break;
    case IDC_GAMES:
        HurryCountUp();
        OpenGamesMenu();
        break;
    case IDM_NO_TRAINING:
        Train(TrainingMode::NoTraining);
        break;
    case IDM_WARN:
        Train(TrainingMode::Warn);
        break;
    case IDM_AUTOHOLD:
        Train(TrainingMode::Autohold);
        break;
    case IDM_NO_DRAW:
        program.table.noDraw = !program.table.noDraw;
        break;
    case IDM_USE_SOUND:
        TurnSound();
        break;
    case IDM_RESET_CREDITS:
        RestoreCredits();
        break;
    case IDM_DEAL_SPEED:
        OpenDealSpeedMenu();
        break;
    case IDM_SLOW:
        program.table.dealSpeed = SlowDeal;
        break;
    case IDM_MEDIUM:
        program.table.dealSpeed = MediumDeal;
        break;
    case IDM_FAST:
        program.table.dealSpeed = FastDeal;
        break;
    case IDM_HELP:
        ShellOpenHelp();
        break;
    case IDM_EXIT:
    case IDM_CLOSE:
        Exit();
        return true; // there is no window left to give the focus to
    default:
        if (id < IDM_FIRST_GAME || id > IDM_LAST_GAME) {
            return false;
        }
        ChangeGame(id - IDM_FIRST_GAME);
        break;
    }
    SetFocus(program.window);
    return true;
}

void DoKey(wchar_t character) {
    const char key = static_cast<char>(character & 0xFF);
    const bool holding = program.table.inDraw;
    if (key >= '1' && key <= '5') {
        TurnHold(static_cast<std::size_t>(key - '1')); // does nothing unless holding
        return;
    }
    switch (key) {
    case '\r':
        Post(IDC_DEAL_DRAW);
        break;
    case 'x':
    case 'X':
        Post(IDM_EXIT);
        break;
    case 'b':
    case 'B':
        if (!holding) {
            Post(IDC_BET_ONE);
        }
        break;
    case 'g':
    case 'G':
        if (!holding) {
            Post(IDC_GAMES);
        }
        break;
    case 'm':
    case 'M':
        if (!holding) {
            Post(IDC_MENU);
        }
        break;
    default:
        break;
    }
}

void DoTap(int x, int y) {
    if (Contains(program.layout.prompt, x, y)) {
        Post(IDC_DEAL_DRAW);
        return;
    }
    for (std::size_t i = 0; i < HandSize; ++i) {
        if (Contains(program.layout.cards[i], x, y)) {
            TurnHold(i);
            return;
        }
    }
}
