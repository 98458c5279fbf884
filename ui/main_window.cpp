#include "ui/main_window.h"

#include <commctrl.h>

#include "core/game_lock.h"
#include "training/session_stats.h"
#include "ui/card_images.h"
#include "ui/check_play.h"
#include "ui/commands.h"
#include "ui/drawing.h"
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
    const HFONT made = CreateFontIndirectW(&font);
    if (made == nullptr) {
        DrawAgainLater();
    }
    return made;
}

namespace {

constexpr int NameSize = 80;

Placement placement; // of the table in the client area

constexpr UINT_PTR DrawingAgainTimer = 1;
bool drawingAgainPlanned = false;

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
    ShowBet();
    SetDlgItemTextW(program.window, IDC_STATUS, program.table.game.title);
}

void MakeBrush(HBRUSH& brush, COLORREF colour) {
    if (brush == nullptr) {
        brush = CreateSolidBrush(colour);
    }
    if (brush == nullptr) {
        DrawAgainLater();
    }
}

// Those that are missing.
void MakeBrushes() {
    MakeBrush(program.darkNavy, DarkNavy);
    MakeBrush(program.navy, Navy);
    MakeBrush(program.yellow, Yellow);
    MakeBrush(program.darkRed, DarkRed);
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

void MakeFont(HFONT& font, int designPixels) {
    if (font == nullptr) {
        font = MakeBoldFont(Scaled(designPixels));
    }
}

// Pen and fonts, where they are missing.
void MakePenAndFonts() {
    if (program.yellowPen == nullptr) {
        program.yellowPen = CreatePen(PS_SOLID, Scaled(1), Yellow);
    }
    if (program.yellowPen == nullptr) {
        DrawAgainLater();
    }
    MakeFont(program.heldFont, 16);
    MakeFont(program.paidFont, 13);
    MakeFont(program.statusFont, 12);
    MakeFont(program.panelFont, 15);
}

// Everything that is of the table's size.
void MakeTableObjects() {
    placement = PlacementInClient();
    program.layout = ComputeLayout(placement);
    MakePenAndFonts();
    LoadPictures();
}

void DeleteTableObjects() {
    DeletePictures();
    DeleteObject(program.yellowPen);
    program.yellowPen = nullptr;
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
    ShellLayOutDialogs(program.window);
}

// Asked again and again, the timer keeps its first time.
void PlanDrawingAgain() {
    constexpr UINT moment = 250; // milliseconds
    if (!drawingAgainPlanned) {
        drawingAgainPlanned = SetTimer(program.window, DrawingAgainTimer, moment, nullptr) != 0;
    }
    if (!drawingAgainPlanned) {
        BeginDrawingAgain();
    }
}

void InvalidateWithControls(HWND window) {
    InvalidateRect(window, nullptr, TRUE);
    for (HWND control = GetWindow(window, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        InvalidateRect(control, nullptr, TRUE);
    }
}

// What is missing is made; pictures are all made anew, since one that is there may lack a part.
// Dialogs draw with the table's objects too.
void DrawAgain() {
    KillTimer(program.window, DrawingAgainTimer);
    drawingAgainPlanned = false;
    BeginDrawingAgain();
    FinishCountUp();
    MakeBrushes();
    MakePenAndFonts();
    DeletePictures();
    LoadPictures();
    PlaceControls();
    ShellLayOutDialogs(program.window); // they make their fonts anew
    HWND window = ShellDialogOwner(program.window);
    for (; window != nullptr; window = GetWindow(window, GW_OWNER)) {
        InvalidateWithControls(window);
    }
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
    MakeBrushes();
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
    PAINTSTRUCT paint = {};
    const HDC dc = BeginPaint(program.window, &paint);
    if (dc == nullptr) {
        ValidateRect(program.window, nullptr);
        DrawAgainLater();
        return;
    }
    PaintTable(dc, paint.rcPaint);
    EndPaint(program.window, &paint);
}

// A dialog disables the window; what reaches it all the same comes from another program, or was
// posted before the dialog opened. Beside a running analysis that may be play, but never while the
// player is asked about a hand: it would be played twice, and the question holds the lock that a
// count-up needs.
bool Refuses(UINT message, WPARAM wParam) {
    if (message == WM_CHAR || message == WM_LBUTTONDOWN || message == WM_COMMAND) {
        const int command = message == WM_COMMAND ? LOWORD(wParam) : IDC_DEAL_DRAW;
        const bool play = command == IDC_DEAL_DRAW || command == IDC_BET_ONE;
        return AskingAboutPlay() ||
               (!IsWindowEnabled(program.window) && (!play || !GameAnalysisRuns()));
    }
    return false;
}

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (ShellHandle(window, message, wParam, lParam)) {
        return 0;
    }
    if (Refuses(message, wParam)) {
        if (message == WM_COMMAND && LOWORD(wParam) == IDC_DEAL_DRAW) {
            RefuseDealOrDraw();
        }
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
    case WM_DRAW_AGAIN:
        PlanDrawingAgain();
        return 0;
    case WM_TIMER:
        DrawAgain();
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

// A loop of the system's own, of a menu or of a frame that is being moved, may take the message
// that ends the program, so it ends with its window.
int RunMessageLoop() {
    MSG message = {};
    while (IsWindow(program.window) && GetMessageW(&message, nullptr, 0, 0) == 1) {
        // A button that was pressed and left keeps the focus; keys are the table's all the same.
        if (message.message == WM_CHAR && GetParent(message.hwnd) == program.window) {
            message.hwnd = program.window;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return message.message == WM_QUIT ? static_cast<int>(message.wParam) : 0;
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
