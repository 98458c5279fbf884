#include "ui/hand_play.h"

#include <windows.h>

#include "core/game_lock.h"
#include "strategy/best_hold.h"
#include "training/dialog_text.h"
#include "ui/card_images.h"
#include "ui/check_play.h"
#include "ui/drawing.h"
#include "ui/need_money_dialog.h"
#include "ui/program.h"
#include "ui/resource.h"
#include "ui/sounds.h"
#include "ui/table_drawing.h"

namespace {

// Waits as a message loop does, though for no message: Wine brings what is drawn to the screen
// then, and would keep it back during a mere sleep.
void Wait(std::uint32_t milliseconds) {
    MsgWaitForMultipleObjectsEx(0, nullptr, milliseconds, 0, 0);
}

void (*pause)(std::uint32_t milliseconds) = Wait;

HANDLE countUpThread = nullptr;

void PauseDeal() {
    pause(static_cast<std::uint32_t>(program.table.dealSpeed));
}

void FocusTable() {
    SetFocus(program.window);
}

void SetControlText(int id, const wchar_t* text) {
    SetWindowTextW(GetDlgItem(program.window, id), text);
}

void EnableBet(bool enable) {
    EnableWindow(GetDlgItem(program.window, IDC_BET_ONE), enable);
}

// Paints all but the cards and their labels, so that credits and prompt change before the cards
// move.
void RepaintAroundCards() {
    InvalidateRect(program.window, nullptr, FALSE);
    for (std::size_t i = 0; i < HandSize; ++i) {
        const RECT card = RectOf(program.layout.cards[i]);
        const RECT held = RectOf(program.layout.held[i]);
        ValidateRect(program.window, &card);
        ValidateRect(program.window, &held);
    }
    UpdateWindow(program.window);
}

void TurnCardUp(std::size_t position) {
    ShowFace(position);
    PauseDeal();
    ShowCard(position);
    PlayCardSound();
}

void AnimateDeal() {
    ClearHolds(program.table);
    for (std::size_t i = 0; i < HandSize; ++i) {
        InvalidateArea(program.layout.held[i]);
        ShowBack(i);
        ShowCard(i);
    }
    UpdateWindow(program.window);
    PauseDeal();
    for (std::size_t i = 0; i < HandSize; ++i) {
        DealPosition(program.table, i);
        TurnCardUp(i);
    }
}

void AnimateDraw() {
    const Hand& hand = program.table.hand;
    for (std::size_t i = 0; i < HandSize; ++i) {
        if (hand.held[i] == 0) {
            ShowBack(i);
            ShowCard(i);
        }
    }
    std::size_t taken = 0;
    for (std::size_t i = 0; i < HandSize; ++i) {
        if (hand.held[i] == 0) {
            ReplacePosition(program.table, i, taken++);
            TurnCardUp(i);
        }
    }
}

void HoldBest() {
    const GameLockHold lock;
    Table& table = program.table;
    const std::int32_t best = FindBestHold(table.hand.cards.data(), table.game, table.bet);
    SetHolds(table.hand, resultTable[static_cast<std::size_t>(best)].pattern);
    for (std::size_t i = 0; i < HandSize; ++i) {
        if (table.hand.held[i] != 0) {
            ShowHeldLabel(i);
        }
    }
}

bool IsTapOrKey(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
           (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || message == WM_COMMAND;
}

// Taps and keys given while the cards were moving are thrown away on purpose; whatever else waits,
// a repaint or the end of the session, gets its turn. A pointer that moves or sizes the window is
// the system's own, which waits for its release.
void DiscardInput() {
    if (GetCapture() == program.window) {
        return;
    }
    MSG message;
    while (PeekMessageW(&message, program.window, 0, 0, PM_REMOVE)) {
        if (!IsTapOrKey(message.message)) {
            DispatchMessageW(&message);
        } else if (message.message == WM_COMMAND && LOWORD(message.wParam) == IDC_DEAL_DRAW) {
            RefuseDealOrDraw();
        }
    }
}

// The buttons and the prompt between two hands.
void ShowGameOver() {
    SetControlText(IDC_DEAL_DRAW, L"Deal");
    EnableBet(true);
    InvalidateArea(program.layout.prompt);
}

void Deal() {
    Table& table = program.table;
    FinishCountUp();
    if (!CanDeal(table)) {
        AskForMoney();
        return;
    }
    EnterGameLock();
    StartDeal(table);
    LeaveGameLock();
    RepaintAroundCards();
    AnimateDeal();
    if (table.training == TrainingMode::Autohold) {
        HoldBest();
    }
    const bool pays = RateDealtHand(table);
    ShowPaytableRow(table.rank);
    SetControlText(IDC_DEAL_DRAW, L"DRAW");
    EnableBet(false);
    if (pays) {
        PlayPatHandSound();
    }
    // With the hand complete: a press on the title bar has its turn here too, and while it moves
    // the window, play goes on.
    DiscardInput();
    FocusTable();
}

void PauseCoin() {
    pause(static_cast<std::uint32_t>(program.table.dealSpeed) / 2);
}

// Coins arrive one by one, and all at once as soon as the stop flag is set. The prompt follows with
// the last one.
void CountCoins(std::int32_t payout) {
    const GameLockHold lock;
    StartCountSound();
    for (std::int32_t step = 0; step < payout; ++step) {
        if (program.table.stop) {
            PayCoins(program.table, payout - step);
            ShowCreditsPanel(payout, false);
            break;
        }
        PayCoins(program.table, 1);
        ShowCreditsPanel(step + 1, false);
        PauseCoin();
    }
    InvalidateArea(program.layout.prompt);
    StopCountSound();
}

DWORD WINAPI CountUpThread(void* payout) {
    CountCoins(static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(payout)));
    return 0;
}

// Without a thread the payout is counted at once; nothing that was won is lost.
void StartCountUp(std::int32_t payout) {
    FinishCountUp();
    program.table.stop = false;
    countUpThread = CreateThread(nullptr, 0, CountUpThread,
                                 reinterpret_cast<void*>(std::intptr_t{payout}), 0, nullptr);
    if (countUpThread == nullptr) {
        program.table.stop = true;
        CountCoins(payout);
    }
}

void Draw() {
    Table& table = program.table;
    HurryCountUp();
    Sleep(0);
    if (!CheckPlay(program.window, table.hand, table.game)) {
        return;
    }
    EndHolding(table);
    CountHand(program.stats);
    if (table.noDraw) {
        if (!CanDeal(table)) {
            ShowGameOver();
        }
        PostMessageW(program.window, WM_COMMAND, IDC_DEAL_DRAW, 0);
        return;
    }
    AnimateDraw();
    CountCoinsIn(program.stats, table.bet);
    SetControlText(IDC_DEAL_DRAW, L"Deal");
    const Settlement hand = SettleHand(table);
    CountCoinsOut(program.stats, hand.payout);
    if (hand.before != hand.after) {
        ShowPaytableRow(hand.before);
    }
    ShowPaytableRow(hand.after);
    EnableBet(true);
    if (hand.payout > 0) {
        StartCountUp(hand.payout);
    } else {
        ShowCreditsPanel(0, true);
    }
    FocusTable();
}

} // namespace

void DealOrDraw() {
    if (program.table.inDraw) {
        Draw();
    } else {
        Deal();
    }
}

void RefuseDealOrDraw() {
    if (!program.table.inDraw) {
        ShowGameOver();
    }
}

void ShowBet() {
    SetControlText(IDC_BET_ONE, FormatInteger(L"Bet %i", program.table.bet).c_str());
}

void RaiseBet() {
    HurryCountUp();
    BetOne(program.table);
    ShowBet();
    InvalidateBet();
}

void TurnHold(std::size_t position) {
    if (ToggleHold(program.table, position)) {
        ShowHeldLabel(position);
    }
}

void ChangeGame(std::int32_t id) {
    if (!PickGame(program.table, id)) {
        return;
    }
    ResetHandImages();
    SetControlText(IDC_STATUS, program.table.game.title);
    SetControlText(IDC_DEAL_DRAW, L"Deal");
    EnableBet(true);
    InvalidateRect(program.window, nullptr, TRUE);
}

void RestoreCredits() {
    ResetCredits(program.table);
    InvalidateRect(program.window, nullptr, TRUE);
}

void HurryCountUp() {
    program.table.stop = true;
}

void FinishCountUp() {
    HurryCountUp();
    if (countUpThread != nullptr) {
        WaitForSingleObject(countUpThread, INFINITE);
        CloseHandle(countUpThread);
        countUpThread = nullptr;
    }
}

void SetPause(void (*other)(std::uint32_t milliseconds)) {
    pause = other;
}
