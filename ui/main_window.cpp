#include "ui/main_window.h"

#include <commctrl.h>

#include <cwchar>

#include "core/game_lock.h"
#include "training/session_stats.h"
#include "ui/card_images.h"
#include "ui/commands.h"
#include "ui/drawing.h"
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
constexpr int BoldestPanelFont = 15;

HWND AddControl(const wchar_t* windowClass, const wchar_t* text, DWORD style, const Area& area,
                int id, HFONT font) {
    const HWND control =
        CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE | style, area.left, area.top,
                        Width(area), Height(area), program.window,
                        reinterpret_cast<HMENU>(std::intptr_t{id}), program.instance, nullptr);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    return control;
}

void AddControls() {
    const Layout& layout = program.layout;
    const HFONT font = program.paidFont;
    AddControl(L"button", L"Menu", 0, layout.menuButton, IDC_MENU, font);
    AddControl(L"button", L"Games", 0, layout.gamesButton, IDC_GAMES, font);
    const HWND bet = AddControl(L"button", L"&Bet 1", 0, layout.betButton, IDC_BET_ONE, font);
    AddControl(L"button", L"&Deal", 0, layout.dealButton, IDC_DEAL_DRAW, font);
    const HWND status =
        AddControl(L"static", L"G A M E   O V E R --- Deal To Play", SS_CENTER | WS_BORDER,
                   layout.status, IDC_STATUS, program.statusFont);
    wchar_t text[16];
    std::swprintf(text, 16, L"Bet %i", program.table.bet);
    SetWindowTextW(bet, text);
    SetWindowTextW(status, program.table.game.title);
}

void MakeFonts() {
    const int s = program.scale;
    program.heldFont = MakeBoldFont(16 * s);
    program.paidFont = MakeBoldFont(13 * s);
    program.statusFont = MakeBoldFont(12 * s);
    program.panelFont = MakeBoldFont(BoldestPanelFont * s);
}

void MakeBrushes() {
    program.darkNavy = CreateSolidBrush(DarkNavy);
    program.navy = CreateSolidBrush(Navy);
    program.yellow = CreateSolidBrush(Yellow);
    program.darkRed = CreateSolidBrush(DarkRed);
    program.yellowPen = CreatePen(PS_SOLID, program.scale, Yellow);
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
    MakeFonts();
    RECT client;
    GetClientRect(program.window, &client);
    program.layout = ComputeLayout(client.bottom, program.scale);
    LoadPictures();
    AddControls();
}

void DeleteDrawingObjects() {
    DeletePictures();
    for (const HGDIOBJ object :
         {static_cast<HGDIOBJ>(program.heldFont), static_cast<HGDIOBJ>(program.paidFont),
          static_cast<HGDIOBJ>(program.statusFont), static_cast<HGDIOBJ>(program.panelFont),
          static_cast<HGDIOBJ>(program.darkNavy), static_cast<HGDIOBJ>(program.navy),
          static_cast<HGDIOBJ>(program.yellow), static_cast<HGDIOBJ>(program.darkRed),
          static_cast<HGDIOBJ>(program.yellowPen)}) {
        DeleteObject(object);
    }
}

// The payout that is still being counted reaches the credits before they are written.
void ShutDown() {
    FinishCountUp();
    StoreSessionStats(program.stats);
    StoreTable(program.table);
    DeleteDrawingObjects();
    PostQuitMessage(0);
}

void Paint() {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(program.window, &paint);
    PaintTable(dc, paint.rcPaint);
    EndPaint(program.window, &paint);
}

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (ShellSessionEnds(message, wParam)) {
        DestroyWindow(window);
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
    case WM_SETFOCUS:
        ShellHideInputPanelButton(window);
        return 0;
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
    ShowWindow(window, show);
    UpdateWindow(window);
    return true;
}

int RunMessageLoop() {
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) == 1) {
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
    program.scale = frame.scale;
    if (previous == nullptr && !RegisterMainWindow(className)) {
        return 0;
    }
    if (!CreateMainWindow(className, title, show, frame)) {
        return 0;
    }
    const int code = RunMessageLoop();
    // Not with the window: a dialog that was open when it went may still have held the lock.
    DeleteGameLock();
    return code;
}
