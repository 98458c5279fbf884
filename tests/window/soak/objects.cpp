#include "tests/window/soak/objects.h"

#include <psapi.h>
#include <tlhelp32.h>
#include <winternl.h>

#include <algorithm>
#include <map>
#include <vector>

#include "tests/window/gdi_objects.h"
#include "tests/window/soak/journal.h"

namespace {

struct WindowCount {
    DWORD process;
    std::map<std::wstring, int> byClass;
};

BOOL CALLBACK CountWindow(HWND window, LPARAM parameter) {
    auto& count = *reinterpret_cast<WindowCount*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == count.process) {
        wchar_t name[64] = L"";
        GetClassNameW(window, name, 64);
        ++count.byClass[name];
        if ((GetWindowLongW(window, GWL_STYLE) & WS_CHILD) == 0) {
            EnumChildWindows(window, CountWindow, parameter);
        }
    }
    return TRUE;
}

// What the program answers by its journal.
DWORD_PTR Ask(const RunningProgram& program, const wchar_t* message) {
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(program.window, RegisterWindowMessageW(message), 0, 0, SMTO_NORMAL,
                        Patience, &answer);
    return answer;
}

// Windows by their classes, hidden ones and those of the system too.
std::map<std::wstring, int> WindowsOf(const RunningProgram& program) {
    WindowCount count = {program.processId, {}};
    EnumWindows(CountWindow, reinterpret_cast<LPARAM>(&count));
    HWND quiet = nullptr;
    while ((quiet = FindWindowExW(HWND_MESSAGE, quiet, nullptr, nullptr)) != nullptr) {
        CountWindow(quiet, reinterpret_cast<LPARAM>(&count));
    }
    return count.byClass;
}

int UserObjectsOf(const RunningProgram& program) {
    const DWORD known = GetGuiResources(program.process, GR_USEROBJECTS);
    if (known != 0) {
        return static_cast<int>(known);
    }
    int count = static_cast<int>(Ask(program, CountMessage));
    for (const auto& [name, windows] : WindowsOf(program)) {
        count += windows;
    }
    return count;
}

int ThreadsOf(DWORD process) {
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 thread = {};
    thread.dwSize = sizeof thread;
    int count = 0;
    for (BOOL more = Thread32First(all, &thread); more; more = Thread32Next(all, &thread)) {
        count += thread.th32OwnerProcessID == process ? 1 : 0;
    }
    CloseHandle(all);
    return count;
}

struct SystemHandle {
    void* object;
    ULONG_PTR process;
    ULONG_PTR value;
    ULONG access;
    USHORT backTrace;
    USHORT type;
    ULONG attributes;
    ULONG reserved;
};

struct SystemHandles {
    ULONG_PTR count;
    ULONG_PTR reserved;
    SystemHandle handles[1];
};

constexpr int SystemExtendedHandles = 64; // not among the header's classes
using QuerySystem = NTSTATUS(WINAPI*)(int, void*, ULONG, ULONG*);
constexpr NTSTATUS TooSmall = static_cast<NTSTATUS>(0xC0000004);

int HandlesOf(DWORD process) {
    const auto query = reinterpret_cast<QuerySystem>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"ntdll"), "NtQuerySystemInformation")));
    std::vector<char> buffer(1 << 18);
    NTSTATUS status = TooSmall;
    while ((status = query(SystemExtendedHandles, buffer.data(), static_cast<ULONG>(buffer.size()),
                           nullptr)) == TooSmall) {
        buffer.resize(buffer.size() * 2);
    }
    if (status != 0) {
        return -1;
    }
    const auto& all = *reinterpret_cast<const SystemHandles*>(buffer.data());
    int count = 0;
    for (ULONG_PTR i = 0; i < all.count; ++i) {
        count += all.handles[i].process == process ? 1 : 0;
    }
    return count;
}

Objects Least(const Objects& a, const Objects& b) {
    return {std::min(a.gdi, b.gdi),
            std::min(a.user, b.user),
            std::min(a.threads, b.threads),
            std::min(a.handles, b.handles),
            std::min(a.heapBytes, b.heapBytes),
            std::min(a.privateBytes, b.privateBytes)};
}

} // namespace

Objects CountObjects(const RunningProgram& program, const SystemView& view) {
    long long bytes = view.PrivateBytes();
    if (bytes < 0) {
        PROCESS_MEMORY_COUNTERS_EX memory = {};
        GetProcessMemoryInfo(program.process, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory),
                             sizeof memory);
        bytes = static_cast<long long>(memory.PrivateUsage);
    }
    return {GdiObjectsOf(program.process),
            UserObjectsOf(program),
            ThreadsOf(program.processId),
            HandlesOf(program.processId),
            static_cast<long long>(Ask(program, HeapMessage)),
            bytes};
}

Objects CountLastingObjects(const RunningProgram& program, const SystemView& view) {
    Objects least = CountObjects(program, view);
    for (int look = 0; look < 8; ++look) {
        Sleep(120);
        least = Least(least, CountObjects(program, view));
    }
    return least;
}

std::wstring DescribeUserObjects(const RunningProgram& program) {
    std::wstring text = std::to_wstring(Ask(program, CountMessage)) + L" menus and icons";
    for (const auto& [name, windows] : WindowsOf(program)) {
        text += L", " + std::to_wstring(windows) + L" " + name;
    }
    return text;
}
