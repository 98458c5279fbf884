// What a running program holds of the system's objects and of memory.
#ifndef TESSARIN_TESTS_WINDOW_SOAK_OBJECTS_H
#define TESSARIN_TESTS_WINDOW_SOAK_OBJECTS_H

#include <string>
#include <vector>

#include "tests/window/harness.h"

struct Objects {
    int gdi;
    int user; // windows, menus and icons
    int threads;
    int handles;
    long long heapBytes;    // in use
    long long privateBytes; // also what the system keeps for it and what is free again
};

// The system's own id of the process and its threads' waiting, beneath Wine; 0 where there is none.
class SystemView {
  public:
    // The program was started with this command line, which no other running program has.
    explicit SystemView(const std::wstring& commandLine);
    // Milliseconds that the program's threads stood ready to run while the processors were taken.
    double WaitedForProcessor() const;
    // Memory that is the program's alone and has been written to; -1 if it cannot be told.
    long long PrivateBytes() const;
    double ProcessorSeconds() const;

  private:
    std::wstring folder;
};

// Of a program that keeps a journal.
Objects CountObjects(const RunningProgram& program, const SystemView& view);

// Without those of drawing that just goes on, and of threads that just end: the least of each that
// several looks in about a second see.
Objects CountLastingObjects(const RunningProgram& program, const SystemView& view);

// The user objects by their kinds.
std::wstring DescribeUserObjects(const RunningProgram& program);

#endif
