// The program: one top-level window, its start and its end.
#ifndef TESSARIN_UI_MAIN_WINDOW_H
#define TESSARIN_UI_MAIN_WINDOW_H

#include <windows.h>

// Runs the program until its window is destroyed and returns its exit code. A second copy brings
// the first to the front and returns at once.
int RunProgram(HINSTANCE instance, HINSTANCE previous, int show);

#endif
