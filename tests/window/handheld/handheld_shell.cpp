#include "tests/window/handheld/shell_calls.h"

namespace {

// Lives as long as the process.
ShellCalls& Calls() {
    static const HANDLE memory = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE,
                                                    0, sizeof(ShellCalls), ShellCallsName);
    static auto* const calls =
        static_cast<ShellCalls*>(MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, sizeof(ShellCalls)));
    return *calls;
}

} // namespace

extern "C" {

BOOL WINAPI FullScreen(HWND window, DWORD state);
BOOL WINAPI InitDialog(const ShellDialog* dialog);

BOOL WINAPI FullScreen(HWND window, DWORD state) {
    ShellCalls& calls = Calls();
    if (calls.states < ShellCallsKept) {
        calls.state[calls.states] = state;
        calls.window[calls.states] = window;
    }
    InterlockedIncrement(&calls.states);
    return TRUE;
}

BOOL WINAPI InitDialog(const ShellDialog* dialog) {
    ShellCalls& calls = Calls();
    if (calls.dialogs < ShellCallsKept) {
        calls.dialog[calls.dialogs] = *dialog;
    }
    InterlockedIncrement(&calls.dialogs);
    return TRUE;
}
}
