#include "ui/main_window.h"

#include <commctrl.h>

#include <cwchar>

#include "core/game_lock.h"
#include "training/session_stats.h"
#include "ui/card_images.h"
#include "ui/check_play.h"
#include "ui/commands.h"
#include "ui/game_analysis_dialog.h"
#include "ui/hand_play.h"
#include "ui/program.h"
#include "ui/resource.h"
#include "ui/shell.h"
#include "ui/table_drawing.h"

Program program;

HFONT MakeBoldFont(int pixels) {
    LOGFONTW font = {};
    font.lfHeight = pixels;
    font.lfWeight = FW_BOLD;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    return CreateFontIndirectW(&font);
}

namespace {

constexpr int NameSize = 80;

Placement placement; // of the table in the client area

struct Control {
    int id;
    const wchar_t* windowClass;
    const wchar_t* text;
    DWORD style;
    Area Layout::*place;
    HFONT Program::*font;
};

constexpr Control controls[] = {
    {IDC_MENU, L"button", L"Menu", 0, &Layout::menuButton, &Program::paidFont},
    {IDC_GAMES, L"button", L"Games", 0, &Layout::gamesButton, &Program::paidFont},
    {IDC_BET_ONE, L"button", L"&Bet 1", 0, &Layout::betButton, &Program::paidFont},
    {IDC_DEAL_DRAW, L"button", L"&Deal", 0, &Layout::dealButton, &Program::paidFont},
    {IDC_STATUS, L"static", L"G A M E   O V E R --- Deal To Play", SS_CENTER | WS_BORDER,
     &Layout::status, &Program::statusFont},
};

void PlaceControls() {
    for (const Control& control : controls) {
        const HWND window = GetDlgItem(program.window, control.id);
        const Area& place = program.layout.*control.place;
        MoveWindow(window, place.left, place.top, Width(place), Height(place), TRUE);
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(program.*control.font), TRUE);
    }
}

void AddControls() {
    for (const Control& control : controls) {
        CreateWindowExW(0, control.windowClass, control.text, WS_CHILD | WS_VISIBLE | control.style,
                        0, 0, 0, 0, program.window,
                        reinterpret_cast<HMENU>(std::intptr_t{control.id}), program.instance,
                        nullptr);
    }
    PlaceControls();
    wchar_t text[16];
    std::swprintf(text, 16, L"Bet %i", program.table.bet);
    SetDlgItemTextW(program.window, IDC_BET_ONE, text);
    SetDlgItemTextW(program.window, IDC_STATUS, program.table.game.title);
}

void MakeBrushes() {
    program.darkNavy = CreateSolidBrush(DarkNavy);
    program.navy = CreateSolidBrush(Navy);
    program.yellow = CreateSolidBrush(Yellow);
    program.darkRed = CreateSolidBrush(DarkRed);
}

void DeleteBrushes() {
    for (HBRUSH* brush : {&program.darkNavy, &program.navy, &program.yellow, &program.darkRed}) {
        DeleteObject(*brush);
        *brush = nullptr;
    }
}

Placement PlacementInClient() {
    RECT client;
    GetClientRect(program.window, &client);
    return FitTable(client.right, client.bottom);
}

// Everything that is of the table's size.
void MakeTableObjects() {
    placement = PlacementInClient();
    program.layout = ComputeLayout(placement);
    program.yellowPen = CreatePen(PS_SOLID, Scaled(1), Yellow);
    program.heldFont = MakeBoldFont(Scaled(16));
    program.paidFont = MakeBoldFont(Scaled(13));
    program.statusFont = MakeBoldFont(Scaled(12));
    program.panelFont = MakeBoldFont(Scaled(15));
    LoadPictures();
}

void DeleteTableObjects() {
    DeletePictures();
    DeleteObject(program.yellowPen);
    for (HFONT* font :
         {&program.heldFont, &program.paidFont, &program.statusFont, &program.panelFont}) {
        DeleteObject(*font);
        *font = nullptr;
    }
}

// A count-up draws with these objects on its own thread, so it is let end first.
void ResizeTable() {
    if (PlacementInClient() == placement) {
        return;
    }
    FinishCountUp();
    DeleteTableObjects();
    MakeTableObjects();
    PlaceControls();
    InvalidateRect(program.window, nullptr, FALSE);
}

void InitCommonControlClasses() {
    INITCOMMONCONTROLSEX classes = {};
    classes.dwSize = sizeof classes;
    classes.dwICC = ICC_LISTVIEW_CLASSES;
    InitCommonControlsEx(&classes);
}

void StartUp() {
    program.stats = LoadSessionStats();
    InitCommonControlClasses();
    CreateGameLock();
    OpenTable(program.table);
    MakeTableObjects();
    AddControls();
}

// The payout that is still being counted reaches the credits before they are written.
void ShutDown() {
    StopGameAnalysis();
    FinishCountUp();
    StoreSessionStats(program.stats);
    StoreTable(program.table);
    ShellStorePlace(program.window);
    DeleteTableObjects();
    DeleteBrushes();
    PostQuitMessage(0);
}

void Paint() {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(program.window, &paint);
    PaintTable(dc, paint.rcPaint);
    EndPaint(program.window, &paint);
}

// A dialog disables the window; what reaches it all the same comes from another program. Beside a
// running analysis that may be play, but never while the player is asked about a hand: it would be
// played twice.
bool Refuses(UINT message, WPARAM wParam) {
    if (message == WM_CHAR || message == WM_LBUTTONDOWN || message == WM_COMMAND) {
        const int command = message == WM_COMMAND ? LOWORD(wParam) : IDC_DEAL_DRAW;
        const bool play = command == IDC_DEAL_DRAW || command == IDC_BET_ONE;
        return !IsWindowEnabled(program.window) &&
               (AskingAboutPlay() || !play || !GameAnalysisRuns());
    }
    return false;
}

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (ShellHandle(window, message, wParam, lParam)) {
        return 0;
    }
    if (Refuses(message, wParam)) {
        return 0;
    }
    switch (message) {
    case WM_CREATE:
        program.window = window;
        StartUp();
        return 0;
    case WM_ERASEBKGND: // painting covers everything
        return 1;
    case WM_PAINT:
        Paint();
        return 0;
    case WM_LBUTTONDOWN:
        DoTap(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
        return 0;
    case WM_CHAR:
        DoKey(static_cast<wchar_t>(wParam));
        return 0;
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED) {
            ResizeTable();
        }
        return 0;
    case WM_SETFOCUS:
        ShellHideInputPanelButton(window);
        return 0;
    case WM_HELP: // F1, in a dialog too, and the handheld's own Help
        ShellOpenHelp();
        return TRUE;
    case WM_COMMAND:
        return DoCommand(LOWORD(wParam)) ? 0 : DefWindowProcW(window, message, wParam, lParam);
    case WM_CLOSE:
        DestroyWindow(window);
        return 0;
    case WM_DESTROY:
        ShutDown();
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

bool RegisterMainWindow(const wchar_t* className) {
    MakeBrushes();
    WNDCLASSW description = {};
    description.style = CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = MainWindowProc;
    description.hInstance = program.instance;
    description.hIcon = LoadIconW(program.instance, MAKEINTRESOURCEW(IDI_PROGRAM));
    description.hbrBackground = program.navy;
    description.lpszClassName = className;
    return RegisterClassW(&description) != 0;
}

bool CreateMainWindow(const wchar_t* className, const wchar_t* title, int show,
                      const ShellWindowFrame& frame) {
    const HWND window =
        CreateWindowExW(0, className, title, frame.style, frame.x, frame.y, frame.width,
                        frame.height, nullptr, nullptr, program.instance, nullptr);
    if (window == nullptr) {
        return false;
    }
    ShellAdoptWindow(window);
    const HICON icon = LoadIconW(program.instance, MAKEINTRESOURCEW(IDI_PROGRAM));
    SendMessageW(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon));
    ShowWindow(window, frame.maximised ? SW_SHOWMAXIMIZED : show);
    UpdateWindow(window);
    return true;
}

int RunMessageLoop() {
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) == 1) {
        // A button that was pressed and left keeps the focus; keys are the table's all the same.
        if (message.message == WM_CHAR && GetParent(message.hwnd) == program.window) {
            message.hwnd = program.window;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

} // namespace

int RunProgram(HINSTANCE instance, HINSTANCE previous, int show) {
    program.instance = instance;
    wchar_t className[NameSize];
    wchar_t title[NameSize];
    LoadStringW(instance, IDS_CLASS_NAME, className, NameSize);
    LoadStringW(instance, IDS_TITLE, title, NameSize);
    const HWND running = FindWindowW(className, nullptr);
    if (running != nullptr) {
        ShellBringToFront(running);
        return 0;
    }
    ShellStart();
    const ShellWindowFrame frame = ShellMainWindowFrame();
    if (previous == nullptr && !RegisterMainWindow(className)) {
        return 0;
    }
    if (!CreateMainWindow(className, title, show, frame)) {
        return 0;
    }
    const int code = RunMessageLoop();
    // Not with the window: a dialog that was open when it went may still have held the lock. A
    // thread that will not end keeps it to the end of the process.
    if (EndGameAnalysis()) {
        DeleteGameLock();
    }
    return code;
}
