#include "tests/window/soak/fidget.h"

#include <commctrl.h>

#include <algorithm>

#include "core/types.h"
#include "tests/window/soak/journal.h"
#include "ui/resource.h"

namespace {

constexpr wchar_t MenuClass[] = L"#32768";
constexpr wchar_t DialogClass[] = L"#32770";
constexpr DWORD RestPatience = 20000;
constexpr long MostOnTheirWay = 3;

struct Search {
    DWORD process;
    const wchar_t* windowClass;
    HWND found;
};

bool IsClass(HWND window, const wchar_t* name) {
    wchar_t own[32] = L"";
    GetClassNameW(window, own, 32);
    return std::wstring(own) == name;
}

// The foremost menu, or the foremost dialog that takes input.
BOOL CALLBACK MatchTop(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == search.process && IsWindowVisible(window) && IsWindowEnabled(window) &&
        IsClass(window, search.windowClass)) {
        search.found = window;
        return FALSE;
    }
    return TRUE;
}

bool Has(HWND dialog, int id) {
    return GetDlgItem(dialog, id) != nullptr;
}

std::wstring At(POINT point) {
    return std::to_wstring(point.x) + L" " + std::to_wstring(point.y);
}

// Where the pointer can go; a window may begin outside the screen.
std::wstring OnScreen(POINT point) {
    return At({std::max(0L, point.x), std::max(0L, point.y)});
}

// Real input takes longer than any other: more than a little of it would come long after the play
// that it was meant for, and into what is looked at in peace.
void GiveRealInput(const std::wstring& arguments) {
    Eventually([] { return RealInputsOnTheirWay() < MostOnTheirWay; });
    RunXdotool(arguments);
}

constexpr int commands[] = {
    IDC_DEAL_DRAW,
    IDC_BET_ONE,
    IDC_MENU,
    IDC_GAMES,
    IDM_HAND_ANALYSIS,
    IDM_GAME_ANALYSIS,
    IDM_NO_TRAINING,
    IDM_WARN,
    IDM_AUTOHOLD,
    IDM_NO_DRAW,
    IDM_NO_DRAW,
    IDM_USE_SOUND,
    IDM_DEAL_SPEED,
    IDM_SLOW,
    IDM_MEDIUM,
    IDM_FAST,
    IDM_RESET_CREDITS,
    IDM_CHANGE_PAYTABLE,
    IDM_SESSION_STATS,
    IDM_HAND_DETAILS,
    IDM_FIRST_GAME,
    10001,
    10002,
    10003,
    10004,
    10005,
    10006,
    10007,
    0,
    503,
    IDM_HELP,
    65535,
};

// Wine takes the very last numbers of 32 bits for overflow.
constexpr const wchar_t* purchases[] = {
    L"100",         L"100", L"1000", L"500",        L"20",          L"5000",
    L"0",           L"-5",  L"-300", L"2147483646", L"-2147483647", L"4294967",
    L"99999999999", L"",    L"12a",  L"  7",        L"abc",         L"+40",
};

constexpr const wchar_t* payouts[] = {
    L"0",  L"1",   L"1",   L"2",    L"5",          L"9",          L"25",
    L"50", L"250", L"800", L"4000", L"2147483647", L"2147483648", L"99999999999999",
    L"",   L"7x",  L"-3",
};

constexpr WPARAM dialogKeys[] = {VK_RETURN, VK_ESCAPE, VK_TAB,  VK_TAB,  VK_F2,  VK_DOWN,
                                 VK_UP,     VK_RIGHT,  VK_NEXT, VK_HOME, VK_END, VK_F6};

constexpr wchar_t tableKeys[] = {L'1',  L'2',  L'3',  L'4', L'5',    L'1', L'2', L'3', L'4',
                                 L'5',  L'b',  L'B',  L'g', L'G',    L'm', L'M', L'q', L'\r',
                                 L'\r', L'\r', L'\t', L' ', L'\x1B', L'0', L'6', 0x131};

constexpr const wchar_t* realKeys[] = {L"Return",
                                       L"1 3 Return",
                                       L"b",
                                       L"g",
                                       L"m",
                                       L"2 4",
                                       L"Escape",
                                       L"Down Down Return",
                                       L"Right",
                                       L"Tab",
                                       L"space",
                                       L"Return Return",
                                       L"5 5 5",
                                       L"m Down Return",
                                       L"g Down Return",
                                       L"F1"};

} // namespace

Fidget::Fidget(const RunningProgram& running, std::uint32_t seed)
    : program(running), random(seed), markMessage(RegisterWindowMessageW(MarkMessage)),
      tapMessage(RegisterWindowMessageW(TapMessage)) {}

std::uint32_t Fidget::Below(std::uint32_t end) {
    return static_cast<std::uint32_t>(random() % end);
}

bool Fidget::OneIn(std::uint32_t times) {
    return Below(times) == 0;
}

template <typename Value, std::size_t count>
Value Fidget::OneOf(const Value (&values)[count]) {
    return values[Below(static_cast<std::uint32_t>(count))];
}

void Fidget::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    PostMessageW(window, message, wParam, lParam);
}

LONG Fidget::LeaveMark() {
    Send(program.window, markMessage, static_cast<WPARAM>(++mark), 0);
    return mark;
}

void Fidget::Command(int id) {
    ++inputs;
    Send(program.window, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void Fidget::Key(HWND window, WPARAM key) {
    ++inputs;
    Send(window, WM_KEYDOWN, key, 1);
    Send(window, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void Fidget::Type(HWND field, const std::wstring& text) {
    ++inputs;
    Send(field, EM_SETSEL, 0, -1);
    Send(field, WM_CHAR, L'\b', 1);
    for (const wchar_t letter : text) {
        Send(field, WM_CHAR, letter, 1);
    }
}

void Fidget::TapAt(HWND window, int x, int y) {
    ++inputs;
    Send(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    Send(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

void Fidget::TapControl(HWND control) {
    RECT client = {};
    GetClientRect(control, &client);
    if (IsWindowEnabled(control)) {
        TapAt(control, static_cast<int>(client.right) / 2, static_cast<int>(client.bottom) / 2);
    }
}

void Fidget::Press(HWND dialog, int id) {
    ++inputs;
    Send(dialog, tapMessage, static_cast<WPARAM>(id), 0);
}

void Fidget::XdoKeys(const std::wstring& keys) {
    ++inputs;
    const HWND top = Top();
    RECT place = {};
    GetWindowRect(top != nullptr ? top : program.window, &place);
    GiveRealInput(L"mousemove " + OnScreen({(place.left + place.right) / 2, place.bottom - 4}) +
                  L" key " + keys);
}

void Fidget::XdoClick(HWND window) {
    ++inputs;
    RECT place = {};
    GetWindowRect(window, &place);
    const LONG width = place.right > place.left ? place.right - place.left : 1;
    const LONG height = place.bottom > place.top ? place.bottom - place.top : 1;
    // Not on the title bar, whose buttons would end the program.
    const LONG title = window == program.window ? 32 : 0;
    POINT point = {place.left + static_cast<LONG>(Below(static_cast<std::uint32_t>(width))),
                   place.top + title +
                       static_cast<LONG>(Below(static_cast<std::uint32_t>(height)))};
    GiveRealInput(L"mousemove " + OnScreen(point) + L" click 1");
}

// The lower right corner of the frame, or the title, drawn to another place.
void Fidget::XdoDrag() {
    ++inputs;
    RECT place = {};
    GetWindowRect(program.window, &place);
    const bool corner = OneIn(2);
    const POINT from = corner ? POINT{place.right - 2, place.bottom - 2}
                              : POINT{(place.left + place.right) / 2, place.top + 12};
    const POINT to = {static_cast<LONG>(100 + Below(1000)), static_cast<LONG>(60 + Below(800))};
    GiveRealInput(L"mousemove " + OnScreen(from) + L" mousedown 1 mousemove " + OnScreen(to) +
                  L" mouseup 1");
}

void Fidget::PlayHand() {
    Command(IDC_DEAL_DRAW);
    for (std::uint32_t holds = Below(4); holds > 0; --holds) {
        ++inputs;
        TypeKey(program, static_cast<wchar_t>(L'1' + static_cast<int>(Below(5))));
    }
    Command(IDC_DEAL_DRAW);
}

void Fidget::TapTable() {
    RECT client = {};
    GetClientRect(program.window, &client);
    const auto width = static_cast<std::uint32_t>(client.right) + 40;
    const auto height = static_cast<std::uint32_t>(client.bottom) + 40;
    if (OneIn(3)) {
        const Area& card = program.layout.cards[Below(HandSize)];
        TapAt(program.window, card.left + 5, card.top + 5);
    } else if (OneIn(3)) {
        constexpr int buttons[] = {IDC_MENU,      IDC_GAMES,     IDC_BET_ONE,
                                   IDC_DEAL_DRAW, IDC_DEAL_DRAW, IDC_DEAL_DRAW};
        TapControl(Control(program, OneOf(buttons)));
    } else {
        TapAt(program.window, static_cast<int>(Below(width)) - 20,
              static_cast<int>(Below(height)) - 20);
    }
}

void Fidget::TypeAtTable() {
    ++inputs;
    TypeKey(program, OneOf(tableKeys));
}

// The viewer of the help is a process of its own and takes its time, so it is asked for less.
void Fidget::AnyCommand() {
    const int id = OneOf(commands);
    if (id != IDM_HELP || OneIn(4)) {
        Command(id);
    }
}

void Fidget::ChangeSize() {
    ++inputs;
    constexpr WPARAM states[] = {SC_MAXIMIZE, SC_MINIMIZE, SC_RESTORE, SC_RESTORE};
    if (OneIn(3)) {
        Send(program.window, WM_SYSCOMMAND, OneOf(states), 0);
        return;
    }
    if (OneIn(4)) {
        XdoDrag();
        return;
    }
    constexpr int widths[] = {1, 240, 256, 300, 352, 480, 511, 640, 720, 777, 960, 1100, 4000};
    constexpr int heights[] = {1, 294, 300, 350, 431, 588, 600, 700, 777, 882, 950, 4000};
    SetWindowPos(program.window, nullptr, static_cast<int>(Below(600)),
                 static_cast<int>(Below(400)), OneOf(widths), OneOf(heights),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
}

void Fidget::ActOnTable() {
    const std::uint32_t choice = Below(100);
    if (choice < 42) {
        PlayHand();
    } else if (choice < 58) {
        TapTable();
    } else if (choice < 72) {
        TypeAtTable();
    } else if (choice < 88) {
        AnyCommand();
    } else if (choice < 92) {
        ChangeSize();
    } else if (choice < 96) {
        XdoClick(program.window);
    } else {
        XdoKeys(OneOf(realKeys));
    }
}

void Fidget::ActInMenu(HWND menu) {
    const std::uint32_t choice = Below(10);
    if (choice < 4) {
        // One further in the main menu stands the item that ends the program.
        for (std::uint32_t down = Below(13); down > 0; --down) {
            Key(program.window, VK_DOWN);
        }
        Key(program.window, OneIn(3) ? VK_RETURN : VK_ESCAPE);
    } else if (choice < 6) {
        XdoClick(menu);
    } else if (choice < 8) {
        Key(program.window, VK_ESCAPE);
    } else {
        AnyCommand();
    }
}

void Fidget::ActInMessageBox(HWND dialog) {
    constexpr int answers[] = {IDYES, IDYES, IDNO, IDOK, IDCANCEL};
    const int id = OneOf(answers);
    if (Has(dialog, id)) {
        Press(dialog, id);
    } else {
        Key(GetDlgItem(dialog, IDYES), VK_RETURN);
    }
}

void Fidget::ActInEditor(HWND dialog) {
    const std::uint32_t choice = Below(20);
    if (choice < 13) {
        const int first = OneIn(2) ? IDC_FIRST_ONE_COIN : IDC_FIRST_FIVE_COINS;
        const HWND field = GetDlgItem(dialog, first + static_cast<int>(Below(14)));
        if (field != nullptr) {
            Press(dialog, GetDlgCtrlID(field));
            Type(field, OneOf(payouts));
        }
    } else if (choice < 15) {
        Press(dialog, IDC_DEFAULTS);
    } else if (choice < 18) {
        Press(dialog, OneIn(2) ? IDOK : IDCANCEL);
    } else {
        XdoKeys(OneIn(2) ? L"Tab 4 2 Tab" : L"Return");
    }
}

void Fidget::ActInHandAnalysis(HWND dialog) {
    const std::uint32_t choice = Below(20);
    if (choice < 15) {
        Press(dialog, IDC_FIRST_CARD + static_cast<int>(Below(JokerDeckSize)));
    } else if (choice < 17) {
        Press(dialog, IDC_INFO);
    } else if (choice < 18) {
        Press(dialog, IDC_FIRST_SLOT + static_cast<int>(Below(HandSize)));
    } else {
        Press(dialog, IDCANCEL);
    }
}

void Fidget::ActInList(HWND dialog, int id) {
    const HWND list = GetDlgItem(dialog, id);
    if (OneIn(2)) {
        Key(list, OneOf(dialogKeys));
    } else if (OneIn(2)) {
        XdoClick(list);
    } else {
        ++inputs;
        Send(list, WM_VSCROLL, OneIn(2) ? SB_PAGEDOWN : SB_LINEUP, 0);
    }
}

void Fidget::ActIn(HWND dialog) {
    const std::uint32_t choice = Below(12);
    if (choice == 0) {
        const HWND focus = FocusOf(program);
        Key(focus != nullptr ? focus : dialog, OneOf(dialogKeys));
    } else if (choice == 1) {
        XdoClick(dialog);
    } else if (choice == 2) {
        OneIn(3) ? Close(dialog) : AnyCommand();
    } else if (Has(dialog, IDC_GRADING_DETAILS)) {
        constexpr int answers[] = {IDC_ANSWER_YES, IDC_ANSWER_YES, IDC_ANSWER_NO,
                                   IDC_GRADING_DETAILS};
        Press(dialog, OneOf(answers));
    } else if (Has(dialog, IDC_PURCHASE)) {
        Type(GetDlgItem(dialog, IDC_PURCHASE), OneIn(2) ? purchases[2] : OneOf(purchases));
        Press(dialog, OneIn(6) ? IDCANCEL : IDOK);
    } else if (Has(dialog, IDC_RESET_STATS)) {
        Press(dialog, OneIn(3) ? IDC_RESET_STATS : IDOK);
    } else if (Has(dialog, IDC_RUN_ANALYSIS)) {
        constexpr int buttons[] = {IDC_RUN_ANALYSIS, IDOK, IDOK, IDCANCEL};
        OneIn(3) ? ActInList(dialog, IDC_ANALYSIS_LIST) : Press(dialog, OneOf(buttons));
    } else if (Has(dialog, IDC_DEFAULTS)) {
        ActInEditor(dialog);
    } else if (Has(dialog, IDC_FIRST_SLOT)) {
        ActInHandAnalysis(dialog);
    } else if (Has(dialog, IDC_DETAILS_LIST)) {
        OneIn(3) ? ActInList(dialog, IDC_DETAILS_LIST) : Press(dialog, IDOK);
    } else {
        ActInMessageBox(dialog);
    }
}

std::wstring Fidget::DescribeTop() const {
    const HWND top = Top();
    wchar_t name[32] = L"";
    GetClassNameW(top, name, 32);
    RECT place = {};
    GetWindowRect(top, &place);
    return top == nullptr ? L"nothing over a window that takes no input"
                          : name + (L" '" + TextOf(top)) + L"' at " + At({place.left, place.top}) +
                                L" to " + At({place.right, place.bottom});
}

HWND Fidget::Foremost(const wchar_t* windowClass) const {
    Search search = {program.processId, windowClass, nullptr};
    EnumWindows(MatchTop, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// A menu lies before every dialog, but a dialog that a command opened beside it is the one that
// takes the keys.
HWND Fidget::Top() const {
    const HWND dialog = Foremost(DialogClass);
    return dialog != nullptr ? dialog : Foremost(MenuClass);
}

// As the close box in the title does.
void Fidget::Close(HWND dialog) {
    Press(dialog, 0);
}

void Fidget::Act() {
    const HWND top = Top();
    if (top == nullptr) {
        ActOnTable();
    } else if (IsClass(top, MenuClass)) {
        ActInMenu(top);
    } else {
        ActIn(top);
    }
}

bool Fidget::ComeToRest() {
    return Eventually(
        [&] {
            const HWND top = Top();
            if (top == nullptr) {
                return IsWindowEnabled(program.window) != FALSE || !IsWindow(program.window);
            }
            if (IsClass(top, MenuClass)) {
                Key(program.window, VK_ESCAPE);
            } else if (Has(top, IDC_GRADING_DETAILS)) {
                Press(top, IDC_ANSWER_YES);
            } else if (Has(top, IDYES)) {
                Press(top, TextOf(top) == L"Cancel?" ? IDYES : IDNO);
            } else {
                Press(top, Has(top, IDCANCEL) ? IDCANCEL : IDOK);
            }
            Sleep(100);
            return false;
        },
        RestPatience);
}

void Fidget::Leave() {
    ++inputs;
    const bool enabled = IsWindowEnabled(program.window) != FALSE;
    switch (enabled ? Below(5) : 4) {
    case 0:
        Send(program.window, WM_CHAR, L'x', 1);
        break;
    case 1:
        Send(program.window, WM_COMMAND, IDM_EXIT, 0);
        break;
    case 2:
        Send(program.window, WM_COMMAND, IDM_CLOSE, 0);
        break;
    case 3:
        Send(program.window, WM_SYSCOMMAND, SC_CLOSE, 0);
        break;
    default:
        Send(program.window, WM_CLOSE, 0, 0);
        break;
    }
}
