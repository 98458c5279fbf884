#include "tests/window/gdi_objects.h"

#include <winternl.h>

#include <vector>

namespace {

// How the system keeps a process's GDI objects: a table, found from the process's environment
// block, of entries whose type is 0 while they are free.
constexpr std::size_t GdiTableInBlock = 0xF8;
constexpr std::size_t GdiEntries = 0x10000;
constexpr std::size_t GdiEntrySize = 24;
constexpr std::size_t TypeInGdiEntry = 14;

} // namespace

int GdiObjectsOf(HANDLE process) {
    PROCESS_BASIC_INFORMATION basic = {};
    NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr);
    const auto* block = reinterpret_cast<const char*>(basic.PebBaseAddress);
    const void* table = nullptr;
    ReadProcessMemory(process, block + GdiTableInBlock, &table, sizeof table, nullptr);
    std::vector<char> entries(GdiEntries * GdiEntrySize);
    if (!ReadProcessMemory(process, table, entries.data(), entries.size(), nullptr)) {
        return -1;
    }
    int count = 0;
    for (std::size_t i = 0; i < GdiEntries; ++i) {
        count += entries[i * GdiEntrySize + TypeInGdiEntry] != 0 ? 1 : 0;
    }
    return count;
}
