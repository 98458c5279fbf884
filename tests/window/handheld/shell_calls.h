// What the program asks of the handheld's shell, as the stand-in for it writes down.
#ifndef TESSARIN_TESTS_WINDOW_HANDHELD_SHELL_CALLS_H
#define TESSARIN_TESTS_WINDOW_HANDHELD_SHELL_CALLS_H

#include <windows.h>

inline constexpr wchar_t ShellCallsName[] = L"TessarinShellCalls"; // of the shared memory
inline constexpr LONG ShellCallsKept = 64;

// The shell's record of a dialog to be initialised.
struct ShellDialog {
    DWORD mask;
    HWND dialog;
    DWORD flags;
};

// Zero filled at first; calls past those kept are counted only.
struct ShellCalls {
    LONG states; // of the full-screen call
    DWORD state[ShellCallsKept];
    HWND window[ShellCallsKept];
    LONG dialogs; // of the dialog call
    ShellDialog dialog[ShellCallsKept];
};

#endif
