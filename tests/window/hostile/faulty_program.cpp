#include "tests/window/hostile/faulty_program.h"

#include <cstdio>
#include <cstdlib>

namespace {

// As the harness has it for the programs it knows.
void ManageFaultyWindowsWithoutManager() {
    if (GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr) {
        RegSetKeyValueW(HKEY_CURRENT_USER,
                        L"Software\\Wine\\AppDefaults\\tessarin-faulty.exe\\X11 Driver", L"Managed",
                        REG_SZ, L"N", sizeof L"N");
    }
}

} // namespace

Faults::Faults()
    : memory(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(FaultPlan),
                                FaultPlanName)),
      plan(
          static_cast<FaultPlan*>(MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, sizeof(FaultPlan)))) {
    EXPECT_NE(plan, nullptr);
    ManageFaultyWindowsWithoutManager();
}

Faults::~Faults() {
    plan->calls = NoCalls;
    UnmapViewOfFile(plan);
    CloseHandle(memory);
}

// The group comes last: with it the plan is in force.
void Faults::Plan(FaultyCalls calls, FaultKind kind, LONG first, LONG count, LONG spare) {
    plan->calls = NoCalls;
    plan->kind = kind;
    plan->first = first;
    plan->count = count;
    plan->spare = spare;
    plan->seen = 0;
    plan->refused = 0;
    InterlockedExchange(&plan->calls, calls);
}

void Faults::End() {
    InterlockedExchange(&plan->calls, NoCalls);
    EXPECT_TRUE(Eventually([&] { return plan->exhausted == 0; }));
}

std::wstring FaultyCommand(std::uint32_t seed) {
    return ProgramFolder() + L"tessarin-faulty.exe " + std::to_wstring(seed) + L" 0";
}

RunningProgram StartFaulty(std::uint32_t seed) {
    return StartAndWait(FaultyCommand(seed));
}

int Repetitions(const char* variable, int usual) {
    const char* asked = std::getenv(variable);
    return asked != nullptr ? std::atoi(asked) : usual;
}

void TellProgress(int done, int all) {
    constexpr int often = 50;
    if (done > 0 && done % often == 0) {
        std::printf("%d of %d\n", done, all);
        std::fflush(stdout);
    }
}

std::uint32_t HostileSeed(const char* what) {
    const char* asked = std::getenv("TESSARIN_HOSTILE_SEED");
    const std::uint32_t seed = asked != nullptr
                                   ? static_cast<std::uint32_t>(std::strtoul(asked, nullptr, 10))
                                   : std::random_device()();
    std::printf("%s: TESSARIN_HOSTILE_SEED=%u\n", what, seed);
    std::fflush(stdout);
    return seed;
}

int Between(std::mt19937& random, int low, int high) {
    return low + static_cast<int>(random() % static_cast<std::uint32_t>(high - low + 1));
}

bool OneIn(std::mt19937& random, int number) {
    return Between(random, 1, number) == 1;
}
