// The exact long-run result of perfect play: every deal class of the game searched once, each by
// its weight.
#ifndef TESSARIN_TRAINING_GAME_ANALYSIS_H
#define TESSARIN_TRAINING_GAME_ANALYSIS_H

#include <atomic>
#include <vector>

#include "strategy/best_hold.h"
#include "training/dialog_text.h"

// What a run needs of its surroundings. Where no other thread searches, the two lock calls may be
// null; nobody need listen to the progress either.
struct AnalysisHost {
    void (*enterLock)() = nullptr; // around each search and the reads of its results
    void (*leaveLock)() = nullptr;
    void (*showProgress)(void* context, const wchar_t* text) = nullptr; // "37% Done", without lock
    void* context = nullptr;
};

// One analysis. Between PrepareGameAnalysis and the end of the run only the running thread touches
// anything but the stop flag.
struct GameAnalysis {
    // Set: no analysis is running, or the running one is to stop. Written by both threads.
    std::atomic<bool> stop{true};
    GameDescriptor game{}; // its current payouts are the copy below
    Paytable payouts{};
    std::int32_t coins = MaxBet; // the bet, 1..5
    std::wstring keyPath;        // where the results go
    AnalysisHost host;
    std::array<CardRecord, HandSize> hand{}; // the deal in work; only the codes are set
    std::int32_t totalDeals = 0;
    std::uint32_t onePercent = 0;
    std::uint32_t dealsDone = 0;
    double totalReturn = 0.0;                      // in coins of the bet, summed over the deals
    std::array<double, MaxRows + 2> frequency{};   // by row; then no pay; then all draws
    std::array<double, MaxRows + 2> returnShare{}; // by row, in coins won for each coin bet
};

// The payouts of the bet's column joined by "-", top row first. Bets of 1 to 4 coins share the
// one-coin column, which is not multiplied.
std::wstring BuildPaytableKey(const GameDescriptor& game, std::int32_t coins);

// The store's key for the results of the game with its current payouts at the bet.
std::wstring AnalysisKeyPath(const GameDescriptor& game, std::int32_t coins);

// Readies a run for the game at the bet: key path, coins, stop flag cleared. On the thread that
// starts the run, before it starts.
void PrepareGameAnalysis(GameAnalysis& analysis, const GameDescriptor& game, std::int32_t coins);

// The whole run, after PrepareGameAnalysis: loads the game by its id from the settings store,
// counts, stores the results and sets the stop flag. A stop is heeded before each class of the two
// pair, one pair and no pair deals; a stopped run stores nothing. Returns whether it was finished.
// An id outside 0..5 stores nothing.
bool RunGameAnalysis(GameAnalysis& analysis, std::int32_t id);

// The counting alone, of analysis.game at analysis.coins; neither reads nor writes settings and
// leaves the stop flag as it is. Returns whether it was finished.
bool CountAllDeals(GameAnalysis& analysis);

// Counts the deal in analysis.hand by its weight: searches it under the lock, adds the best hold's
// outcomes, and shows the progress about once a percent.
void AnalyseDealClass(GameAnalysis& analysis, std::int32_t weight);

// A finished run in numbers. The row at the game's row count is that of hands that pay nothing.
struct AnalysisRow {
    double frequency;   // deals of a full cycle that end in the row
    double probability; // of one hand, 0..1
    double occursEvery; // hands on average; infinite if the row never occurs
    double returnShare; // coins won by the row for each coin bet
};

struct AnalysisResult {
    std::vector<AnalysisRow> rows; // row count + 1
    double gameReturn;             // coins won for each coin bet
};

AnalysisResult SummarizeAnalysis(const GameAnalysis& analysis);

// The same as the dialog shows it; what is not known is empty.
struct AnalysisRowText {
    std::wstring name;
    std::wstring payout; // of the bet's column, not multiplied; "0" for "NOTHING"
    std::wstring frequency;
    std::wstring probability;
    std::wstring occursEvery; // "Never" if the row never occurs
    std::wstring returnShare;
};

struct AnalysisTexts {
    std::vector<AnalysisRowText> rows; // row count + 1, the last of them "NOTHING"
    std::wstring gameReturn;
};

// The six columns of the list in the order of AnalysisRowText's fields.
std::vector<ListColumn> AnalysisColumns();

AnalysisTexts FormatAnalysis(const AnalysisResult& result, const GameDescriptor& game,
                             std::int32_t coins);

// Writes the texts of a finished run under the key.
void StoreAnalysis(const std::wstring& keyPath, const AnalysisTexts& texts);

// Names and payouts of the game at the bet, with the stored results of just that paytable. Values
// that are missing or damaged are empty.
AnalysisTexts ReadAnalysis(const GameDescriptor& game, std::int32_t coins);

#endif
