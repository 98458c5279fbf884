#include "ui/shell.h"

#include <shellapi.h>

#include "settings/settings.h"
#include "ui/layout.h"
#include "ui/program.h"

namespace {

constexpr DWORD WindowStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE;

// The handheld shell's calls, by ordinal; absent on a desktop.
using InitDialogCall = BOOL(WINAPI*)(void*);
using FullScreenCall = BOOL(WINAPI*)(HWND, DWORD);
constexpr WORD InitDialogOrdinal = 56;
constexpr WORD FullScreenOrdinal = 65;
constexpr DWORD ShowInputPanelButtonState = 4;
constexpr DWORD HideInputPanelButtonState = 8;

// What newer desktops know of windows on screens of different densities.
using WindowDensityCall = UINT(WINAPI*)(HWND);
using AdjustForDensityCall = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);

InitDialogCall initDialog = nullptr;
FullScreenCall fullScreen = nullptr;
WindowDensityCall windowDensity = nullptr;
AdjustForDensityCall adjustForDensity = nullptr;

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

MONITORINFO InfoOf(HMONITOR screen) {
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    GetMonitorInfoW(screen, &info);
    return info;
}

MONITORINFO ScreenOf(HWND window) {
    return InfoOf(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST));
}

// The place as close as may be to (x, y) that is wholly in the work area; of what is larger than
// that, the left and the top are.
POINT PlaceInside(const RECT& work, int x, int y, int width, int height) {
    x = x + width > work.right ? static_cast<int>(work.right) - width : x;
    y = y + height > work.bottom ? static_cast<int>(work.bottom) - height : y;
    return {x < work.left ? work.left : x, y < work.top ? work.top : y};
}

template <typename Call>
Call CallByName(const wchar_t* library, const char* name) {
    return reinterpret_cast<Call>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}

// What a frame of the style adds to a client area, on the screen where the window is; without a
// window, on the one that the system is set up for.
SIZE BorderSize(HWND window, DWORD style, DWORD extendedStyle) {
    RECT frame = {0, 0, 0, 0};
    if (window != nullptr && windowDensity != nullptr && adjustForDensity != nullptr) {
        adjustForDensity(&frame, style, FALSE, extendedStyle, windowDensity(window));
    } else {
        AdjustWindowRectEx(&frame, style, FALSE, extendedStyle);
    }
    return {frame.right - frame.left, frame.bottom - frame.top};
}

SIZE BorderOf(HWND window) {
    return BorderSize(window, static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)),
                      static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)));
}

LONG ReadPlaceValue(const wchar_t* name) {
    return ReadInteger(SettingsRoot::CurrentUser, SettingsKey, name, 0);
}

void WritePlaceValue(const wchar_t* name, LONG value) {
    WriteInteger(SettingsRoot::CurrentUser, SettingsKey, name, value, 0);
}

// A stored measure as far as there is room, but no less than the table and its frame take.
LONG WithinRoom(LONG stored, LONG room, LONG least) {
    const LONG within = stored < room ? stored : room;
    return within > least ? within : least;
}

// The stored place, if it is large enough for the table and its title bar can be reached on some
// screen, and brought wholly inside that screen: since it was stored, the screen may have become
// another.
bool ReadPlace(ShellWindowFrame& frame) {
    constexpr LONG largest = 32767; // of a window's coordinates
    const LONG left = ReadPlaceValue(L"WindowLeft");
    const LONG top = ReadPlaceValue(L"WindowTop");
    const LONG width = ReadPlaceValue(L"WindowWidth");
    const LONG height = ReadPlaceValue(L"WindowHeight");
    if (width < DesignWidth || height < DesignHeight || width > largest || height > largest ||
        left < -largest || left > largest || top < -largest || top > largest) {
        return false;
    }
    const RECT titleBar = {left, top, left + width, top + GetSystemMetrics(SM_CYCAPTION)};
    const HMONITOR screen = MonitorFromRect(&titleBar, MONITOR_DEFAULTTONULL);
    if (screen == nullptr) {
        return false;
    }
    const RECT work = InfoOf(screen).rcWork;
    const SIZE border = BorderSize(nullptr, WindowStyle, 0);
    frame.width =
        static_cast<int>(WithinRoom(width, work.right - work.left, DesignWidth + border.cx));
    frame.height =
        static_cast<int>(WithinRoom(height, work.bottom - work.top, DesignHeight + border.cy));
    const POINT place =
        PlaceInside(work, static_cast<int>(left), static_cast<int>(top), frame.width, frame.height);
    frame.x = static_cast<int>(place.x);
    frame.y = static_cast<int>(place.y);
    frame.maximised = ReadPlaceValue(L"WindowMaximised") == 1;
    return true;
}

// Whether a window is maximised, or was before it was minimised.
bool IsMaximised(HWND window, const WINDOWPLACEMENT& placement) {
    return IsZoomed(window) ||
           (IsIconic(window) && (placement.flags & WPF_RESTORETOMAXIMIZED) != 0);
}

// Where a window is, or would be if it were neither minimised nor maximised.
RECT NormalPlace(HWND window, const WINDOWPLACEMENT& placement) {
    RECT place = placement.rcNormalPosition;
    if (IsIconic(window) || IsZoomed(window)) {
        // Such a window's normal place counts from the work area's corner.
        const MONITORINFO screen = ScreenOf(window);
        OffsetRect(&place, static_cast<int>(screen.rcWork.left - screen.rcMonitor.left),
                   static_cast<int>(screen.rcWork.top - screen.rcMonitor.top));
    } else {
        GetWindowRect(window, &place);
    }
    return place;
}

// Moves a window of the given size to a place as close as may be to (x, y) and wholly on the
// screen.
void PlaceOnScreen(HWND window, HWND beside, int x, int y, int width, int height) {
    const POINT place = PlaceInside(ScreenOf(beside).rcWork, x, y, width, height);
    MoveWindow(window, static_cast<int>(place.x), static_cast<int>(place.y), width, height, TRUE);
}

// Where the help lies, for a player whose system shows no pages by itself.
void TellOfHelpPage(const wchar_t* page) {
    static bool telling = false; // F1 in the box itself asks for the help again
    if (telling) {
        return;
    }
    wchar_t text[MAX_PATH + 80] =
        L"The help did not open. You can open its page in a web browser:\n";
    lstrcatW(text, page);
    telling = true;
    MessageBoxW(ShellDialogOwner(program.window), text, L"Help", MB_OK | MB_ICONINFORMATION);
    telling = false;
}

} // namespace

void ShellStart() {
    const HMODULE library = LoadLibraryW(L"aygshell.dll");
    if (library != nullptr) {
        initDialog = CallByOrdinal<InitDialogCall>(library, InitDialogOrdinal);
        fullScreen = CallByOrdinal<FullScreenCall>(library, FullScreenOrdinal);
    }
    windowDensity = CallByName<WindowDensityCall>(L"user32", "GetDpiForWindow");
    adjustForDensity = CallByName<AdjustForDensityCall>(L"user32", "AdjustWindowRectExForDpi");
}

ShellWindowFrame ShellMainWindowFrame() {
    ShellWindowFrame frame = {WindowStyle, CW_USEDEFAULT, CW_USEDEFAULT, 0, 0, false};
    if (ReadPlace(frame)) {
        return frame;
    }
    RECT work = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const SIZE border = BorderSize(nullptr, WindowStyle, 0);
    const int scale = StartingScale(work.right - work.left, work.bottom - work.top,
                                    static_cast<int>(border.cx), static_cast<int>(border.cy));
    frame.width = DesignWidth * scale + static_cast<int>(border.cx);
    frame.height = DesignHeight * scale + static_cast<int>(border.cy);
    return frame;
}

void ShellStorePlace(HWND window) {
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    if (!GetWindowPlacement(window, &placement)) {
        return;
    }
    const RECT place = NormalPlace(window, placement);
    WritePlaceValue(L"WindowLeft", place.left);
    WritePlaceValue(L"WindowTop", place.top);
    WritePlaceValue(L"WindowWidth", place.right - place.left);
    WritePlaceValue(L"WindowHeight", place.bottom - place.top);
    WritePlaceValue(L"WindowMaximised", IsMaximised(window, placement) ? 1 : 0);
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

bool ShellHandle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_ENDSESSION:
        if (wParam != FALSE) {
            DestroyWindow(window);
        }
        return true;
    case WM_GETMINMAXINFO: {
        const SIZE border = BorderSize(window, WindowStyle, 0);
        POINT& least = reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize;
        least = {DesignWidth + border.cx, DesignHeight + border.cy};
        return true;
    }
    case WM_DPICHANGED: {
        const RECT& place = *reinterpret_cast<const RECT*>(lParam);
        SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
        return true;
    }
    default:
        return false;
    }
}

void ShellHideInputPanelButton(HWND window) {
    SetFullScreenState(window, HideInputPanelButtonState);
}

void ShellShowInputPanelButton(HWND window) {
    SetFullScreenState(window, ShowInputPanelButtonState);
}

bool ShellMenuIsOpen() {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & GUI_INMENUMODE) != 0;
}

void ShellFinishDrawing() {
    GdiFlush();
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

void ShellLayOutDialogs(HWND mainWindow) {
    HWND dialog = GetLastActivePopup(mainWindow);
    while (dialog != nullptr && dialog != mainWindow) {
        SendMessageW(dialog, LayOutMessage, 0, 0);
        dialog = GetWindow(dialog, GW_OWNER);
    }
}

void ShellWatchDensity(HWND dialog, UINT message) {
    if (message == WM_DPICHANGED) {
        PostMessageW(dialog, LayOutMessage, 0, 0);
    }
}

RECT ShellPlaceOf(HWND mainWindow) {
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    if (!GetWindowPlacement(mainWindow, &placement)) {
        return {0, 0, 0, 0};
    }
    // A maximised window's frame hangs over the edges of what it fills.
    return IsMaximised(mainWindow, placement) ? ScreenOf(mainWindow).rcWork
                                              : NormalPlace(mainWindow, placement);
}

void ShellCoverMainWindow(HWND dialog, HWND mainWindow, int clientWidth, int clientHeight) {
    const RECT cover = ShellPlaceOf(mainWindow);
    const SIZE border = BorderOf(dialog);
    const RECT work = ScreenOf(mainWindow).rcWork;
    const auto size = [](LONG covered, LONG needed, LONG room) {
        const LONG wanted = needed > covered ? needed : covered;
        return static_cast<int>(wanted < room ? wanted : room);
    };
    const int width =
        size(cover.right - cover.left, clientWidth + border.cx, work.right - work.left);
    const int height =
        size(cover.bottom - cover.top, clientHeight + border.cy, work.bottom - work.top);
    PlaceOnScreen(dialog, mainWindow, static_cast<int>(cover.left), static_cast<int>(cover.top),
                  width, height);
}

SIZE ShellEnlarge(HWND dialog, int width, int height) {
    if (initDialog != nullptr) {
        return {0, 0};
    }
    RECT own;
    GetWindowRect(dialog, &own);
    const RECT work = ScreenOf(dialog).rcWork;
    const SIZE before = {own.right - own.left, own.bottom - own.top};
    const SIZE room = {work.right - work.left - before.cx, work.bottom - work.top - before.cy};
    const auto within = [](LONG wanted, LONG most) {
        return wanted < 0 || most < 0 ? 0 : wanted < most ? wanted : most;
    };
    const SIZE more = {within(width, room.cx), within(height, room.cy)};
    if (more.cx > 0 || more.cy > 0) {
        PlaceOnScreen(dialog, dialog, static_cast<int>(own.left - more.cx / 2),
                      static_cast<int>(own.top - more.cy / 2),
                      static_cast<int>(before.cx + more.cx), static_cast<int>(before.cy + more.cy));
    }
    return more;
}

HWND ShellDialogOwner(HWND mainWindow) {
    return IsWindowEnabled(mainWindow) ? mainWindow : GetLastActivePopup(mainWindow);
}

void ShellCentreOver(HWND dialog, HWND mainWindow) {
    const RECT cover = ShellPlaceOf(mainWindow);
    RECT own;
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
    wchar_t folder[MAX_PATH];
    ShellProgramFile(L"", folder);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    // In the program's folder, so that the bare name finds the page from any working folder.
    if (CreateProcessW(L"PegHelp.exe", arguments, nullptr, nullptr, FALSE, 0, nullptr,
                       folder[0] != L'\0' ? folder : nullptr, &startup, &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return;
    }
    // A desktop takes .htc for a component of a page, not for a page; the same under the name that
    // it shows in the web browser lies beside it.
    wchar_t page[MAX_PATH];
    ShellProgramFile(L"Tessarin CE.html", page);
    constexpr INT_PTR lastError = 32; // what is larger is a success
    const HINSTANCE shown = ShellExecuteW(nullptr, L"open", page, nullptr, nullptr, SW_SHOWNORMAL);
    if (reinterpret_cast<INT_PTR>(shown) <= lastError) {
        TellOfHelpPage(page);
    }
}
