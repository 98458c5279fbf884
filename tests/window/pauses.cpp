#include "tests/window/pauses.h"

#include <gtest/gtest.h>

#include <algorithm>

// Opened anew each time: the memory is to go with its program, so that the next one starts over.
std::vector<LONG> PausesAsked() {
    const HANDLE memory = OpenFileMappingW(FILE_MAP_READ, FALSE, SeenPausesName);
    const auto* seen = static_cast<const SeenPauses*>(
        MapViewOfFile(memory, FILE_MAP_READ, 0, 0, sizeof(SeenPauses)));
    if (seen == nullptr) {
        ADD_FAILURE() << "the program does not tell of its pauses";
        return {};
    }
    const LONG asked = seen->count;
    const LONG count = std::min(asked, SeenPausesKept);
    const std::vector<LONG> pauses(seen->milliseconds, seen->milliseconds + count);
    UnmapViewOfFile(seen);
    CloseHandle(memory);
    return pauses;
}

std::vector<LONG> PausesAskedSince(std::size_t first) {
    const std::vector<LONG> pauses = PausesAsked();
    return {pauses.begin() + static_cast<std::ptrdiff_t>(std::min(first, pauses.size())),
            pauses.end()};
}
