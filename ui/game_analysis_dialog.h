// The exact return of the current game under perfect play: its dialog and its thread.
#ifndef TESSARIN_UI_GAME_ANALYSIS_DIALOG_H
#define TESSARIN_UI_GAME_ANALYSIS_DIALOG_H

// Modal over the main window. Shows what the store holds for the game, paytable and bet, and runs
// the analysis on request.
void ShowGameAnalysis();

bool GameAnalysisRuns();

// Stops a running analysis and waits for its thread, up to ten seconds, before the window and the
// lock go. Whether no thread is left.
bool EndGameAnalysis();

// Called on the run's thread, without the lock, after each progress text. At first nothing is; a
// test holds a run with it.
void SetProgressPause(void (*pause)(const wchar_t* progress));

#endif
