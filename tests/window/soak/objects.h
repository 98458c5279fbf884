// What a running program holds of the system's objects and of memory.
#ifndef TESSARIN_TESTS_WINDOW_SOAK_OBJECTS_H
#define TESSARIN_TESTS_WINDOW_SOAK_OBJECTS_H

#include <string>

#include "tests/window/harness.h"
#include "tests/window/system_view.h"

struct Objects {
    int gdi;
    int user; // windows, menus and icons
    int threads;
    int handles;
    long long heapBytes;    // in use
    long long privateBytes; // also what the system keeps for it and what is free again
};

// Of a program that keeps a journal.
Objects CountObjects(const RunningProgram& program, const SystemView& view);

// Without those of drawing that just goes on, and of threads that just end: the least of each that
// several looks in about a second see.
Objects CountLastingObjects(const RunningProgram& program, const SystemView& view);

// The user objects by their kinds.
std::wstring DescribeUserObjects(const RunningProgram& program);

#endif
