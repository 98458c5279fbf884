// The exact return of the current game under perfect play: its dialog and its thread.
#ifndef TESSARIN_UI_GAME_ANALYSIS_DIALOG_H
#define TESSARIN_UI_GAME_ANALYSIS_DIALOG_H

// Modal over the main window. Shows what the store holds for the game, paytable and bet, and runs
// the analysis on request.
void ShowGameAnalysis();

bool GameAnalysisRuns();

// Asks a running analysis to stop.
void StopGameAnalysis();

// The same, and waits for its thread, up to ten seconds, before the lock goes. Not while the caller
// holds the lock, which the thread may be waiting for. Whether no thread is left.
bool EndGameAnalysis();

// Called on the run's thread, without the lock, after each progress text. At first nothing is; a
// test holds a run with it.
void SetProgressPause(void (*pause)(const wchar_t* progress));

#endif
