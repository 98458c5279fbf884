// The pauses that the seeded program asks for, when it is started with a pause of its own: how long
// play would wait is told without waiting so long.
#ifndef TESSARIN_TESTS_WINDOW_PAUSES_H
#define TESSARIN_TESTS_WINDOW_PAUSES_H

#include <windows.h>

#include <cstddef>
#include <vector>

inline constexpr wchar_t SeenPausesName[] = L"TessarinSeenPauses"; // of the shared memory
inline constexpr LONG SeenPausesKept = 4096;

// Zero filled at first. Pauses past those kept are counted only.
struct SeenPauses {
    volatile LONG count;
    LONG milliseconds[SeenPausesKept];
};

// Those the running program has asked for since its start, in milliseconds.
std::vector<LONG> PausesAsked();

// The same from the given one on.
std::vector<LONG> PausesAskedSince(std::size_t first);

#endif
