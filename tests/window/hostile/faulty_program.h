// The program with faults, from outside.
#ifndef TESSARIN_TESTS_WINDOW_HOSTILE_FAULTY_PROGRAM_H
#define TESSARIN_TESTS_WINDOW_HOSTILE_FAULTY_PROGRAM_H

#include <random>

#include "tests/window/harness.h"
#include "tests/window/hostile/fault_plan.h"

// The plan shared with every tessarin-faulty that starts while this lives.
class Faults {
  public:
    Faults();
    ~Faults();
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;

    // The group's calls first .. first + count - 1, counted from now.
    void Plan(FaultyCalls calls, FaultKind kind, LONG first, LONG count, LONG spare = 0);
    // Everything succeeds again; waits until objects that were used up are back.
    void End();
    LONG Seen() const { return plan->seen; }
    LONG Refused() const { return plan->refused; }

  private:
    HANDLE memory;
    FaultPlan* plan;
};

// The seeded program without pauses, with faults.
std::wstring FaultyCommand(std::uint32_t seed);
RunningProgram StartFaulty(std::uint32_t seed);

// How often to do what a long run does more often: the variable's number, or the usual one.
int Repetitions(const char* variable, int usual);

// In a long run, tells from time to time how far it is.
void TellProgress(int done, int all);

// Numbers for one test, from a seed that is printed; TESSARIN_HOSTILE_SEED repeats a run.
std::uint32_t HostileSeed(const char* what);

// Whole numbers from low to high, both included.
int Between(std::mt19937& random, int low, int high);
bool OneIn(std::mt19937& random, int number);

#endif
