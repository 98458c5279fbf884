// What buttons, keys, taps and menu items do.
#ifndef TESSARIN_UI_COMMANDS_H
#define TESSARIN_UI_COMMANDS_H

#include <windows.h>

// Carries the command out and returns true; false if it is none of the program's.
bool DoCommand(int id);

// A character typed: posts the command it stands for, or turns a hold over.
void DoKey(wchar_t character);

// A tap at a place of the client area, in pixels.
void DoTap(int x, int y);

#endif
