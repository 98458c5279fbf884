// Puts itself between the program and the calls that a fault plan may name, by the import table of
// the running executable. Without a plan nothing is changed.
#include <windows.h>

#include <cstring>
#include <type_traits>
#include <vector>

#include "tests/window/hostile/fault_plan.h"

namespace {

FaultPlan* plan = nullptr;
std::vector<HGDIOBJ> usedUp;
CRITICAL_SECTION usedUpLock;

// By the call itself, past its hook.
void UseUpGdiObjects() {
    const auto make = reinterpret_cast<decltype(&CreateSolidBrush)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"gdi32"), "CreateSolidBrush")));
    EnterCriticalSection(&usedUpLock);
    while (const HBRUSH brush = make(RGB(1, 2, 3))) {
        usedUp.push_back(brush);
    }
    for (LONG i = 0; i < plan->spare && !usedUp.empty(); ++i) {
        DeleteObject(usedUp.back());
        usedUp.pop_back();
    }
    plan->exhausted = static_cast<LONG>(usedUp.size());
    LeaveCriticalSection(&usedUpLock);
}

void GiveBackGdiObjects() {
    EnterCriticalSection(&usedUpLock);
    for (const HGDIOBJ object : usedUp) {
        DeleteObject(object);
    }
    usedUp.clear();
    plan->exhausted = 0;
    LeaveCriticalSection(&usedUpLock);
}

// The fault ends when the test says so, even if the program draws nothing any more.
DWORD WINAPI WatchPlan(void*) {
    for (;;) {
        if (plan->calls == NoCalls && plan->exhausted != 0) {
            GiveBackGdiObjects();
        }
        Sleep(2);
    }
}

// Whether this call of the group goes wrong.
bool GoesWrong(LONG calls) {
    if (plan->calls != calls) {
        return false;
    }
    const LONG index = InterlockedIncrement(&plan->seen) - 1;
    const LONG last = plan->first + plan->count;
    if (plan->kind == Exhaust && index == plan->first) {
        UseUpGdiObjects();
    }
    if (plan->kind == Exhaust && index == last) {
        GiveBackGdiObjects();
    }
    if (index < plan->first || index >= last) {
        return false;
    }
    if (plan->kind == Die) {
        TerminateProcess(GetCurrentProcess(), DiedAsPlanned);
    }
    InterlockedIncrement(&plan->refused);
    return plan->kind == Refuse;
}

struct Hook {
    const char* name;
    LONG calls;
    void* replacement;
    void* original;
};
extern Hook hooks[];

// What the call returns when it fails: a code of error, or nothing.
template <typename Result>
Result Failure() {
    if constexpr (std::is_same_v<Result, LSTATUS>) {
        return ERROR_ACCESS_DENIED;
    } else if constexpr (std::is_same_v<Result, INT_PTR>) {
        return -1;
    } else {
        return {};
    }
}

template <int index, typename Result, typename... Arguments>
Result WINAPI CallOrFail(Arguments... arguments) {
    if (GoesWrong(hooks[index].calls)) {
        SetLastError(ERROR_NO_SYSTEM_RESOURCES);
        return Failure<Result>();
    }
    using Call = Result(WINAPI*)(Arguments...);
    return reinterpret_cast<Call>(hooks[index].original)(arguments...);
}

template <int index, typename Result, typename... Arguments>
void* InPlaceOf(Result(WINAPI*)(Arguments...)) {
    return reinterpret_cast<void*>(CallOrFail<index, Result, Arguments...>);
}

Hook hooks[] = {
    {"CreateCompatibleDC", DrawingCalls, InPlaceOf<0>(CreateCompatibleDC), nullptr},
    {"CreateCompatibleBitmap", DrawingCalls, InPlaceOf<1>(CreateCompatibleBitmap), nullptr},
    {"CreateDIBSection", DrawingCalls, InPlaceOf<2>(CreateDIBSection), nullptr},
    {"CreateSolidBrush", DrawingCalls, InPlaceOf<3>(CreateSolidBrush), nullptr},
    {"CreatePen", DrawingCalls, InPlaceOf<4>(CreatePen), nullptr},
    {"CreateFontIndirectW", DrawingCalls, InPlaceOf<5>(CreateFontIndirectW), nullptr},
    {"LoadBitmapW", DrawingCalls, InPlaceOf<6>(LoadBitmapW), nullptr},
    {"GetDC", DrawingCalls, InPlaceOf<7>(GetDC), nullptr},
    {"CreateThread", ThreadCalls, InPlaceOf<8>(CreateThread), nullptr},
    {"RegOpenKeyExW", ReadingCalls, InPlaceOf<9>(RegOpenKeyExW), nullptr},
    {"RegQueryValueExW", ReadingCalls, InPlaceOf<10>(RegQueryValueExW), nullptr},
    {"RegCreateKeyExW", WritingCalls, InPlaceOf<11>(RegCreateKeyExW), nullptr},
    {"RegSetValueExW", WritingCalls, InPlaceOf<12>(RegSetValueExW), nullptr},
    {"RegDeleteValueW", WritingCalls, InPlaceOf<13>(RegDeleteValueW), nullptr},
    {"CreateWindowExW", WindowCalls, InPlaceOf<14>(CreateWindowExW), nullptr},
    {"CreatePopupMenu", WindowCalls, InPlaceOf<15>(CreatePopupMenu), nullptr},
    {"DialogBoxParamW", WindowCalls, InPlaceOf<16>(DialogBoxParamW), nullptr},
};

const char* base = nullptr; // of the executable in memory

template <typename Type>
Type* At(DWORD offset) {
    return reinterpret_cast<Type*>(const_cast<char*>(base) + offset);
}

void ReplaceImport(IMAGE_THUNK_DATA& name, IMAGE_THUNK_DATA& address) {
    if (IMAGE_SNAP_BY_ORDINAL(name.u1.Ordinal)) {
        return;
    }
    const auto* import = At<IMAGE_IMPORT_BY_NAME>(static_cast<DWORD>(name.u1.AddressOfData));
    for (Hook& hook : hooks) {
        if (std::strcmp(reinterpret_cast<const char*>(import->Name), hook.name) == 0) {
            DWORD before = 0;
            VirtualProtect(&address, sizeof address, PAGE_READWRITE, &before);
            hook.original = reinterpret_cast<void*>(address.u1.Function);
            address.u1.Function = reinterpret_cast<ULONGLONG>(hook.replacement);
            VirtualProtect(&address, sizeof address, before, &before);
        }
    }
}

void ReplaceImports() {
    base = reinterpret_cast<const char*>(GetModuleHandleW(nullptr));
    const auto* dos = At<IMAGE_DOS_HEADER>(0);
    const auto* headers = At<IMAGE_NT_HEADERS>(static_cast<DWORD>(dos->e_lfanew));
    const IMAGE_DATA_DIRECTORY& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(directory.VirtualAddress);
    for (; library->Name != 0; ++library) {
        auto* name = At<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
        auto* address = At<IMAGE_THUNK_DATA>(library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++address) {
            ReplaceImport(*name, *address);
        }
    }
}

bool FollowPlan() {
    const HANDLE memory = OpenFileMappingW(FILE_MAP_WRITE, FALSE, FaultPlanName);
    if (memory == nullptr) {
        return false;
    }
    plan = static_cast<FaultPlan*>(MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, sizeof(FaultPlan)));
    InitializeCriticalSection(&usedUpLock);
    CloseHandle(CreateThread(nullptr, 0, WatchPlan, nullptr, 0, nullptr));
    ReplaceImports();
    return true;
}

// Before the program's own entry.
[[maybe_unused]] const bool follows = FollowPlan();

} // namespace
