// Where the seeded program's game analysis waits: at a percent of its progress, for as long as the
// test wants.
#ifndef TESSARIN_TESTS_WINDOW_ANALYSIS_GATE_H
#define TESSARIN_TESTS_WINDOW_ANALYSIS_GATE_H

#include <windows.h>

inline constexpr wchar_t AnalysisGateName[] = L"TessarinAnalysisGate"; // of the shared memory

// Zero filled at first.
struct AnalysisGate {
    volatile LONG closed; // 1: no run gets past the percent
    volatile LONG percent;
    volatile LONG waiting; // 1 while a run stands at the gate
};

#endif
