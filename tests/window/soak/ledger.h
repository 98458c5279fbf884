// An account of its own beside the program's: reads the journal of the windows, foretells every
// card, and keeps the credits and the statistics as the rules say they must come out.
#ifndef TESSARIN_TESTS_WINDOW_SOAK_LEDGER_H
#define TESSARIN_TESTS_WINDOW_SOAK_LEDGER_H

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/table.h"
#include "tests/window/soak/journal.h"
#include "training/session_stats.h"
#include "ui/layout.h"

// A key that means nothing to the program, counted as a sign that what was before it has come by.
inline constexpr wchar_t SignKey = L'9';

// How far a Deal/Draw command that is being carried out has come.
enum class Stage { Nothing, MayDeal, Buying, MustAsk, Asked };

// A command of the main window, from its delivery to its return; others may come in between, beside
// a menu or a dialog.
struct Running {
    LONG id = 0;
    Stage stage = Stage::Nothing;
    std::vector<std::wstring> dealTexts; // that the Deal button must be given before the return
    bool mayStop = false; // a drill that goes on only while the credits cover the bet
    std::wstring betText;
    std::wstring statusText;
};

struct OpenDialog {
    DialogKind kind;
    LONG answer; // the last button; 0 for none
};

// Coins by where they came from and went to, in 32 bits that wrap.
struct Coins {
    std::int32_t bought = 0;
    std::int32_t staked = 0;   // taken at deals
    std::int32_t paid = 0;     // counted up
    std::int32_t reset = 0;    // given or taken by resets of the credits
    std::int32_t unplayed = 0; // staked on hands that were never drawn
    std::int32_t unstaked =
        0; // bets counted as coins in that no deal took: a drill's, or bets raised later
    std::int32_t unpaid = 0; // wins below zero, counted as coins out only
};

struct Ledger {
    Table table; // cards, holds, bet, game and options; its credits are not kept
    SessionStats stats{};
    Coins coins;
    std::int32_t startingCredits = 0;
    std::int32_t credits = 0;
    std::int32_t stake = 0; // that the hand in hold took
    // Coins of a count-up that a reset of the credits may have left to come; 0 as a rule.
    std::int64_t unsure = 0;
    std::int64_t counting = 0; // the payout that may still be counted
    std::int32_t coinsIn = 0;  // of this run
    std::int32_t coinsOut = 0;

    bool countCheck = true; // the next check of a play counts
    bool facesUp = false;
    bool gone = false; // the window
    std::vector<Running> running;
    std::vector<OpenDialog> dialogs;
    std::array<Paytable, GameCount> payouts{};
    Layout layout{};

    std::int64_t hands = 0;
    std::int64_t deals = 0;
    std::int64_t questions = 0;
    std::int64_t purchases = 0;
    std::int64_t resets = 0;
    std::int64_t texts = 0; // in all the dialogs that were opened
    std::int64_t signs = 0;
    LONG mark = 0; // the last one that came by
    std::vector<std::string> faults;
};

// As the program opens its table now, after the seed; reads the same settings.
void OpenLedger(Ledger& ledger, std::uint32_t seed);

void Enter(Ledger& ledger, const JournalEntry& entry);

// The credits as the window shows them at rest: exactly the account's, or more by no more than
// what was unsure, which then is not any more.
void SeeCredits(Ledger& ledger, std::int32_t shown);

// Compares the account with what the ended program stored.
void SeeStore(Ledger& ledger);

// Whether the credits are the sum of all that moved them, and the moves those of the statistics.
bool Balances(const Ledger& ledger);

#endif
