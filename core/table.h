// The state of play and its moves. A move changes the table and says what happened; pauses,
// drawing, sound, questions and the lock belong to the caller.
//
// Where other threads are about, the caller holds the game lock for the moves that say so.
#ifndef TESSARIN_CORE_TABLE_H
#define TESSARIN_CORE_TABLE_H

#include <atomic>

#include "core/cards.h"
#include "core/games.h"

// What the trainer does at a draw; not stored, every start begins with Warn.
enum class TrainingMode : std::int32_t { NoTraining = 0, Warn = 1, Autohold = 2 };

// Milliseconds between two cards.
inline constexpr std::int32_t SlowDeal = 200;
inline constexpr std::int32_t MediumDeal = 100;
inline constexpr std::int32_t FastDeal = 50;

inline constexpr std::int32_t StartingCredits = 100;

struct Table {
    // In coins; below zero only after a negative purchase. Atomic, because the window paints and
    // may reset the credits while a count-up adds to them.
    std::atomic<std::int32_t> credits{StartingCredits};
    std::int32_t bet = MaxBet; // 1..5
    GameDescriptor game{};
    Deck deck{};
    DealOrder order{};
    Hand hand{};
    HandRank rank = NoHand; // the row highlighted in the paytable
    bool inDraw = false;    // between deal and draw
    // Set by almost every command: a running payout count-up adds the rest at once. Written by the
    // main thread and read by the count-up's without the lock.
    std::atomic<bool> stop{true};
    std::int32_t defaultPurchase = 100; // offered when credits are short
    bool noDraw = false;                // drill: hands cost nothing and are not drawn
    TrainingMode training = TrainingMode::Warn;
    // SlowDeal, MediumDeal or FastDeal. Atomic: a count-up follows it while it runs.
    std::atomic<std::int32_t> dealSpeed{MediumDeal};
    std::atomic<bool> sound{true}; // a count-up asks for it on its own thread
};

// Presets the hand, reads options, credits, bet and last game from the settings store, loads the
// game and builds its deck. What is missing or out of range takes its default.
void OpenTable(Table& table);

// Writes what OpenTable reads.
void StoreTable(const Table& table);

// Whether the credits cover the bet.
bool CanDeal(const Table& table);

// A new deal order is drawn, the bet is taken (not in a drill), and no row is highlighted. Under
// the game lock; only when CanDeal.
void StartDeal(Table& table);

// Lets go of every hold: the first step of showing a new hand.
void ClearHolds(Table& table);

// The card of one position arrives, 0..4 in turn.
void DealPosition(Table& table, std::size_t position);

// The dealt hand's row becomes the one highlighted; returns whether it pays.
bool RateDealtHand(Table& table);

// Turns the hold of a position 0..4 over. Does nothing, and returns false, outside the draw phase.
bool ToggleHold(Table& table, std::size_t position);

// The holds on the table as a pattern, and the other way round.
HoldPattern HeldPattern(const Hand& hand);
void SetHolds(Hand& hand, HoldPattern pattern);

// The draw phase ends. In a drill the hand ends with it: nothing is drawn or paid.
void EndHolding(Table& table);

// One position's replacement arrives; taken counts those of this draw before it.
void ReplacePosition(Table& table, std::size_t position, std::size_t taken);

struct Settlement {
    HandRank before;     // the row highlighted until now
    HandRank after;      // the final hand's
    std::int32_t payout; // in coins; not yet added to the credits
};

// Rates and prices the final hand.
Settlement SettleHand(Table& table);

// Adds coins won to the credits; they wrap in 32 bits.
void PayCoins(Table& table, std::int32_t coins);

// One coin more, and from 5 back to 1.
void BetOne(Table& table);

// Loads the game, builds its deck and clears the hand; a hand waiting for its draw is abandoned
// and its bet stays spent. For an id outside 0..5 returns false and changes nothing.
bool PickGame(Table& table, std::int32_t id);

// The amount is taken as typed, zero and negative ones too, and is offered the next time.
void BuyCredits(Table& table, std::int32_t amount);

void ResetCredits(Table& table);

#endif
