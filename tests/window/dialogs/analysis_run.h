// Runs of the game analysis in the program's own dialog.
#ifndef TESSARIN_TESTS_WINDOW_DIALOGS_ANALYSIS_RUN_H
#define TESSARIN_TESTS_WINDOW_DIALOGS_ANALYSIS_RUN_H

#include "tests/window/analysis_gate.h"
#include "tests/window/dialogs/reading.h"

inline constexpr wchar_t AnalysisTitle[] = L"Tessarin Game Analysis";

// Milliseconds that a whole cycle may take on a busy machine.
inline constexpr DWORD CyclePatience = 60000;

// Opens the dialog and waits until its list is filled.
HWND OpenAnalysis(const RunningProgram& program, int rows);

// Presses the run button and answers yes; waits until the run is on, or until it has ended.
void StartRun(const RunningProgram& program, HWND dialog);
bool Idle(HWND dialog); // by the texts of both buttons
void WaitUntilIdle(HWND dialog);

// Presses the close button during a run and returns the question.
HWND AskToStop(const RunningProgram& program, HWND dialog);

std::wstring MessageText(HWND messageBox);

// The gate of a seeded program that runs. Opens when it goes.
class Gate {
  public:
    Gate();
    ~Gate();
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    void CloseAt(int percent);
    void Open();
    void WaitForRun(); // until one stands at the gate

  private:
    HANDLE memory;
    AnalysisGate* gate;
};

#endif
