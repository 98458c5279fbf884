#ifndef TESSARIN_TESTS_WINDOW_GDI_OBJECTS_H
#define TESSARIN_TESTS_WINDOW_GDI_OBJECTS_H

#include <windows.h>

// How many GDI objects a process has; -1 if it cannot be told.
int GdiObjectsOf(HANDLE process);

#endif
