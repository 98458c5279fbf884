#include "ui/shell.h"

#include "ui/layout.h"

namespace {

constexpr int MaxScale = 4; // the largest set of pictures

// The handheld shell's calls, by ordinal; absent on a desktop.
using InitDialogCall = BOOL(WINAPI*)(void*);
using FullScreenCall = BOOL(WINAPI*)(HWND, DWORD);
constexpr WORD InitDialogOrdinal = 56;
constexpr WORD FullScreenOrdinal = 65;
constexpr DWORD ShowInputPanelButtonState = 4;
constexpr DWORD HideInputPanelButtonState = 8;

InitDialogCall initDialog = nullptr;
FullScreenCall fullScreen = nullptr;

template <typename Call>
Call CallByOrdinal(HMODULE library, WORD ordinal) {
    return reinterpret_cast<Call>(
        reinterpret_cast<void*>(GetProcAddress(library, MAKEINTRESOURCEA(ordinal))));
}

void SetFullScreenState(HWND window, DWORD state) {
    if (fullScreen != nullptr) {
        fullScreen(window, state);
    }
}

RECT WorkAreaOf(HWND window) {
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    return info.rcWork;
}

// Moves a window of the given size to a place as close as may be to (x, y) and wholly on the
// screen.
void PlaceOnScreen(HWND window, HWND beside, int x, int y, int width, int height) {
    const RECT work = WorkAreaOf(beside);
    x = x + width > work.right ? work.right - width : x;
    y = y + height > work.bottom ? work.bottom - height : y;
    x = x < work.left ? work.left : x;
    y = y < work.top ? work.top : y;
    MoveWindow(window, x, y, width, height, TRUE);
}

} // namespace

void ShellStart() {
    const HMODULE library = LoadLibraryW(L"aygshell.dll");
    if (library != nullptr) {
        initDialog = CallByOrdinal<InitDialogCall>(library, InitDialogOrdinal);
        fullScreen = CallByOrdinal<FullScreenCall>(library, FullScreenOrdinal);
    }
}

ShellWindowFrame ShellMainWindowFrame() {
    constexpr DWORD style = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN | WS_VISIBLE;
    RECT frame = {0, 0, 0, 0};
    AdjustWindowRectEx(&frame, style, FALSE, 0);
    const int frameWidth = frame.right - frame.left;
    const int frameHeight = frame.bottom - frame.top;
    RECT work = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const int scale = StartingScale(work.right - work.left, work.bottom - work.top, frameWidth,
                                    frameHeight, MaxScale);
    return {style,
            CW_USEDEFAULT,
            CW_USEDEFAULT,
            DesignWidth * scale + frameWidth,
            DesignHeight * scale + frameHeight,
            scale};
}

// The window class has no cursor, which suits a pen; a mouse needs its arrow.
void ShellAdoptWindow(HWND window) {
    SetClassLongPtrW(window, GCLP_HCURSOR,
                     reinterpret_cast<LONG_PTR>(LoadCursorW(nullptr, IDC_ARROW)));
}

void ShellBringToFront(HWND window) {
    if (IsIconic(window)) {
        ShowWindow(window, SW_RESTORE);
    }
    SetForegroundWindow(GetLastActivePopup(window));
}

bool ShellSessionEnds(UINT message, WPARAM wParam) {
    return message == WM_ENDSESSION && wParam != FALSE;
}

void ShellHideInputPanelButton(HWND window) {
    SetFullScreenState(window, HideInputPanelButtonState);
}

void ShellShowInputPanelButton(HWND window) {
    SetFullScreenState(window, ShowInputPanelButtonState);
}

void ShellFillScreen(HWND dialog) {
    if (initDialog == nullptr) {
        return;
    }
    struct {
        DWORD mask;
        HWND dialog;
        DWORD flags;
    } request = {1, dialog, 3};
    initDialog(&request);
}

void ShellCoverMainWindow(HWND dialog, HWND mainWindow, int clientWidth, int clientHeight) {
    RECT cover;
    GetWindowRect(mainWindow, &cover);
    RECT frame = {0, 0, clientWidth, clientHeight};
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongW(dialog, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(dialog, GWL_EXSTYLE)));
    const int width = cover.right - cover.left;
    const int height = cover.bottom - cover.top;
    const int neededWidth = frame.right - frame.left;
    const int neededHeight = frame.bottom - frame.top;
    PlaceOnScreen(dialog, mainWindow, cover.left, cover.top,
                  neededWidth > width ? neededWidth : width,
                  neededHeight > height ? neededHeight : height);
}

void ShellCentreOver(HWND dialog, HWND mainWindow) {
    RECT cover;
    RECT own;
    GetWindowRect(mainWindow, &cover);
    GetWindowRect(dialog, &own);
    const int width = own.right - own.left;
    const int height = own.bottom - own.top;
    PlaceOnScreen(dialog, mainWindow, (cover.left + cover.right - width) / 2,
                  (cover.top + cover.bottom - height) / 2, width, height);
}

void ShellProgramFile(const wchar_t* name, wchar_t (&path)[MAX_PATH]) {
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    DWORD folder = length < MAX_PATH ? length : 0;
    while (folder > 0 && path[folder - 1] != L'\\') {
        --folder;
    }
    if (folder + static_cast<DWORD>(lstrlenW(name)) >= MAX_PATH) {
        folder = 0;
    }
    lstrcpyW(path + folder, name);
}

void ShellOpenHelp() {
    wchar_t arguments[] = L"Tessarin CE.htc";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (CreateProcessW(L"PegHelp.exe", arguments, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
}
