// Which calls of the system go wrong in tessarin-faulty, the seeded program with faults. The test
// shares the plan with it before it starts, and changes it as it likes while it runs.
#ifndef TESSARIN_TESTS_WINDOW_HOSTILE_FAULT_PLAN_H
#define TESSARIN_TESTS_WINDOW_HOSTILE_FAULT_PLAN_H

#include <windows.h>

inline constexpr wchar_t FaultPlanName[] = L"TessarinFaultPlan"; // of the shared memory

// Groups of calls. A plan is for one of them.
enum FaultyCalls : LONG {
    NoCalls,
    DrawingCalls, // those that make a GDI object or hand out a device context
    ThreadCalls,  // CreateThread
    ReadingCalls, // of the registry: open a key, query a value
    WritingCalls, // of the registry: create a key, set a value, delete one
    WindowCalls,  // create a window, a menu or a dialog
};

enum FaultKind : LONG {
    Refuse,  // the call fails
    Exhaust, // all GDI objects the process may have are used up before the call
    Die,     // the process ends before the call
};

// Zero filled at first.
struct FaultPlan {
    volatile LONG calls;
    volatile LONG kind;
    volatile LONG first;     // the calls of the group before it succeed
    volatile LONG count;     // so many are refused; the objects used up come back with the next one
    volatile LONG spare;     // objects left over when all are used up
    volatile LONG seen;      // calls of the group since the plan was made
    volatile LONG refused;   // and how many of them went wrong
    volatile LONG exhausted; // objects used up at present
};

inline constexpr UINT DiedAsPlanned = 77; // exit code

#endif
