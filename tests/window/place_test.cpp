#include <algorithm>
#include <string>

#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "ui/resource.h"

// Where the window stands on the screen, and the table in the window.

namespace {

constexpr const wchar_t* placeNames[] = {L"WindowLeft", L"WindowTop", L"WindowWidth",
                                         L"WindowHeight"};

class WindowPlace : public WindowTest {};

RECT PlaceOf(const RunningProgram& program) {
    RECT place;
    GetWindowRect(program.window, &place);
    return place;
}

RECT WorkArea() {
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    return work;
}

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

SIZE ClientOf(const RunningProgram& program) {
    RECT client;
    GetClientRect(program.window, &client);
    return {client.right, client.bottom};
}

SIZE FrameOf(const RunningProgram& program) {
    const SIZE whole = SizeOf(PlaceOf(program));
    const SIZE client = ClientOf(program);
    return {whole.cx - client.cx, whole.cy - client.cy};
}

std::string Words(const RECT& rect) {
    return std::to_string(rect.left) + " " + std::to_string(rect.top) + " " +
           std::to_string(rect.right) + " " + std::to_string(rect.bottom);
}

void StorePlace(LONG left, LONG top, LONG width, LONG height) {
    const LONG values[] = {left, top, width, height};
    for (std::size_t i = 0; i < std::size(values); ++i) {
        SetSetting(placeNames[i], static_cast<std::uint32_t>(values[i]));
    }
}

// A start with that place stored.
RECT PlaceAfter(LONG left, LONG top, LONG width, LONG height) {
    StorePlace(left, top, width, height);
    const RunningProgram program = StartProgram();
    const RECT place = PlaceOf(program);
    CloseProgram(program);
    return place;
}

SIZE DefaultSize() {
    const RunningProgram program = StartProgram();
    const SIZE size = SizeOf(PlaceOf(program));
    CloseProgram(program);
    DeleteSettings();
    return size;
}

void Move(const RunningProgram& program, const RECT& place) {
    const SIZE size = SizeOf(place);
    SetWindowPos(program.window, nullptr, place.left, place.top, size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    Settle(program);
}

void SendCommand(const RunningProgram& program, WPARAM command) {
    SendMessageW(program.window, WM_SYSCOMMAND, command, 0);
    Settle(program);
}

// Waits until the window is as large as the work area, less or more a frame.
bool FillsScreen(const RunningProgram& program) {
    const SIZE work = SizeOf(WorkArea());
    return Eventually([&] {
        const SIZE client = ClientOf(program);
        return IsZoomed(program.window) && client.cx >= work.cx - FrameOf(program).cx &&
               client.cy >= work.cy - FrameOf(program).cy;
    });
}

void ExpectPlace(const RunningProgram& program, const RECT& expected) {
    RECT place = {};
    EXPECT_TRUE(Eventually(
        [&] {
            place = PlaceOf(program);
            return EqualRect(&place, &expected) != FALSE;
        },
        3000))
        << Words(place) << " is not " << Words(expected);
}

struct PlacedControl {
    int id;
    Area Layout::*place;
};

constexpr PlacedControl placedControls[] = {
    {IDC_MENU, &Layout::menuButton},   {IDC_GAMES, &Layout::gamesButton},
    {IDC_BET_ONE, &Layout::betButton}, {IDC_DEAL_DRAW, &Layout::dealButton},
    {IDC_STATUS, &Layout::status},
};

void ExpectControls(const RunningProgram& program, const Layout& layout) {
    for (const PlacedControl& control : placedControls) {
        const Area& place = layout.*control.place;
        const RECT expected = {place.left, place.top, place.right, place.bottom};
        RECT seen;
        GetWindowRect(Control(program, control.id), &seen);
        MapWindowPoints(nullptr, program.window, reinterpret_cast<POINT*>(&seen), 2);
        EXPECT_TRUE(EqualRect(&seen, &expected))
            << control.id << ": " << Words(seen) << " is not " << Words(expected);
    }
}

// What is not of the navy that is behind everything, of the whole client area.
RECT DrawnPart(const Picture& picture) {
    RECT drawn = {picture.width, picture.height, 0, 0};
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (picture.At(x, y) != Navy) {
                drawn = {std::min<LONG>(drawn.left, x), std::min<LONG>(drawn.top, y),
                         std::max<LONG>(drawn.right, x + 1), std::max<LONG>(drawn.bottom, y + 1)};
            }
        }
    }
    return drawn;
}

// The table as large as the client area allows and in its middle, by its controls and by what is
// drawn: its cards reach from edge to edge, but for a design pixel on the left.
void ExpectTableInTheMiddle(const RunningProgram& program) {
    const SIZE client = ClientOf(program);
    const double scale = std::min({static_cast<double>(client.cx) / DesignWidth,
                                   static_cast<double>(client.cy) / DesignHeight, 4.0});
    const double left = (client.cx - DesignWidth * scale) / 2;
    const double top = (client.cy - DesignHeight * scale) / 2;
    ExpectControls(program, ComputeLayout(FitTable(client.cx, client.cy)));
    const Area whole = {0, 0, client.cx, client.cy};
    RECT drawn = {};
    const auto isAbout = [](double a, double b) { return a > b - 1.5 && a < b + 1.5; };
    EXPECT_TRUE(Eventually([&] {
        drawn = DrawnPart(Grab(program, whole));
        return isAbout(drawn.left, left + scale) &&
               isAbout(drawn.right, left + DesignWidth * scale) && isAbout(drawn.top, top) &&
               drawn.bottom < top + DesignHeight * scale + 1 &&
               drawn.bottom > top + (DesignHeight - 30) * scale;
    })) << Words(drawn)
        << " in " << client.cx << " by " << client.cy;
}

// Sends the news of another density as the system does: the rectangle is in the program's own
// memory.
void SendDensity(const RunningProgram& program, UINT density, const RECT& suggested) {
    const HANDLE process =
        OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_WRITE, FALSE, program.processId);
    void* memory = VirtualAllocEx(process, nullptr, sizeof suggested, MEM_COMMIT | MEM_RESERVE,
                                  PAGE_READWRITE);
    ASSERT_TRUE(WriteProcessMemory(process, memory, &suggested, sizeof suggested, nullptr));
    SendMessageW(program.window, WM_DPICHANGED, MAKEWPARAM(density, density),
                 reinterpret_cast<LPARAM>(memory));
    VirtualFreeEx(process, memory, 0, MEM_RELEASE);
    CloseHandle(process);
    Settle(program);
}

} // namespace

TEST_F(WindowPlace, AndSizeComeBack) {
    RunningProgram program = StartProgram();
    const RECT place = {37, 41, 537, 701};
    Move(program, place);
    ExpectPlace(program, place);
    CloseProgram(program);
    program = StartProgram();
    ExpectPlace(program, place);
    EXPECT_FALSE(IsZoomed(program.window));
}

TEST_F(WindowPlace, MaximisedComesBackMaximisedAndRestoresToTheSizeBefore) {
    RunningProgram program = StartProgram();
    const RECT place = {37, 41, 537, 541};
    Move(program, place);
    SendCommand(program, SC_MAXIMIZE);
    EXPECT_TRUE(FillsScreen(program));
    CloseProgram(program);
    program = StartProgram();
    EXPECT_TRUE(FillsScreen(program));
    SendCommand(program, SC_RESTORE);
    EXPECT_FALSE(IsZoomed(program.window));
    ExpectPlace(program, place);
}

TEST_F(WindowPlace, MaximisedAndThenMinimisedComesBackMaximised) {
    RunningProgram program = StartProgram();
    const RECT place = {37, 41, 537, 541};
    Move(program, place);
    SendCommand(program, SC_MAXIMIZE);
    SendCommand(program, SC_MINIMIZE);
    CloseProgram(program);
    program = StartProgram();
    EXPECT_TRUE(FillsScreen(program));
    SendCommand(program, SC_RESTORE);
    ExpectPlace(program, place);
}

TEST_F(WindowPlace, OffEveryScreenGivesTheDefault) {
    const SIZE usual = DefaultSize();
    const RECT work = WorkArea();
    for (const POINT& corner : {POINT{work.right, 100}, POINT{100, work.bottom}, POINT{-600, 100},
                                POINT{100, -600}, POINT{32767, 32767}, POINT{-32767, -32767}}) {
        const RECT place = PlaceAfter(corner.x, corner.y, 500, 540);
        EXPECT_EQ(SizeOf(place).cx, usual.cx) << corner.x << " " << corner.y;
        EXPECT_EQ(SizeOf(place).cy, usual.cy) << corner.x << " " << corner.y;
        RECT both;
        EXPECT_TRUE(IntersectRect(&both, &place, &work));
    }
}

TEST_F(WindowPlace, PartlyOffTheScreenIsBroughtInside) {
    const RECT work = WorkArea();
    struct Round {
        POINT stored;
        POINT expected;
    };
    for (const Round& round :
         {Round{{work.right - 40, 60}, {work.right - 500, 60}},
          Round{{60, work.bottom - 10}, {60, work.bottom - 540}}, Round{{-460, 60}, {0, 60}},
          Round{{-460, -5}, {0, 0}},
          Round{{work.right - 40, work.bottom - 10}, {work.right - 500, work.bottom - 540}}}) {
        const RECT place = PlaceAfter(round.stored.x, round.stored.y, 500, 540);
        const RECT expected = {round.expected.x, round.expected.y, round.expected.x + 500,
                               round.expected.y + 540};
        EXPECT_TRUE(EqualRect(&place, &expected)) << Words(place) << " is not " << Words(expected);
    }
}

TEST_F(WindowPlace, TooLargeForTheScreenIsMadeAsLargeAsIt) {
    const RECT work = WorkArea();
    RECT place = PlaceAfter(-100, -10, 3000, 2500);
    EXPECT_TRUE(EqualRect(&place, &work)) << Words(place);
    place = PlaceAfter(300, 200, 500, 2500);
    const RECT high = {300, work.top, 800, work.bottom};
    EXPECT_TRUE(EqualRect(&place, &high)) << Words(place);
}

TEST_F(WindowPlace, RestoresInsideTheScreenThatItWasMaximisedOn) {
    SetSetting(L"WindowMaximised", 1);
    StorePlace(WorkArea().right - 40, 60, 500, 3000);
    const RunningProgram program = StartProgram();
    EXPECT_TRUE(FillsScreen(program));
    SendCommand(program, SC_RESTORE);
    const RECT work = WorkArea();
    ExpectPlace(program, {work.right - 500, work.top, work.right, work.bottom});
}

TEST_F(WindowPlace, IsNeverSmallerThanTheTable) {
    const RunningProgram program = StartProgram();
    const SIZE frame = FrameOf(program);
    CloseProgram(program);
    const RECT place = PlaceAfter(50, 60, DesignWidth, DesignHeight);
    EXPECT_EQ(SizeOf(place).cx, DesignWidth + frame.cx);
    EXPECT_EQ(SizeOf(place).cy, DesignHeight + frame.cy);
}

TEST_F(WindowPlace, NonsenseGivesTheDefault) {
    const SIZE usual = DefaultSize();
    const LONG nonsense[][4] = {
        {100, 100, 0, 0},
        {100, 100, -500, -540},
        {100, 100, 500, 40},
        {100, 100, 40, 540},
        {100, 100, 2147483647, 540},
        {100, 100, 500, 2147483647},
        {2147483647, 100, 500, 540},
        {100, -2147483647 - 1, 500, 540},
    };
    for (const auto& values : nonsense) {
        const SIZE size = SizeOf(PlaceAfter(values[0], values[1], values[2], values[3]));
        EXPECT_EQ(size.cx, usual.cx) << values[0] << " " << values[2];
        EXPECT_EQ(size.cy, usual.cy) << values[1] << " " << values[3];
    }
    SetSetting(L"WindowMaximised", 77);
    StorePlace(100, 110, 500, 540);
    const RunningProgram program = StartProgram();
    EXPECT_FALSE(IsZoomed(program.window));
    ExpectPlace(program, {100, 110, 600, 650});
}

TEST_F(WindowPlace, FollowsTheDensityOfAnotherScreen) {
    const RunningProgram program = StartSeeded(1, 0);
    const RECT suggested = {20, 30, 620, 760};
    const SIZE before = ClientOf(program);
    SendDensity(program, 144, suggested);
    ExpectPlace(program, suggested);
    const SIZE client = ClientOf(program);
    EXPECT_TRUE(client.cx != before.cx && client.cy != before.cy);
    ExpectTableInTheMiddle(program);
}

TEST_F(WindowPlace, BetweenScalesTheTableIsInTheMiddle) {
    const RunningProgram program = StartSeeded(1, 0);
    const SIZE frame = FrameOf(program);
    for (const SIZE& client : {SIZE{300, 400}, SIZE{700, 431}, SIZE{500, 500}}) {
        Move(program, {10, 10, 10 + client.cx + frame.cx, 10 + client.cy + frame.cy});
        EXPECT_EQ(ClientOf(program).cx, client.cx);
        EXPECT_EQ(ClientOf(program).cy, client.cy);
        ExpectTableInTheMiddle(program);
    }
}

TEST_F(WindowPlace, MaximisedTheTableIsInTheMiddle) {
    const RunningProgram program = StartSeeded(1, 0);
    SendCommand(program, SC_MAXIMIZE);
    EXPECT_TRUE(FillsScreen(program));
    ExpectTableInTheMiddle(program);
    SendCommand(program, SC_RESTORE);
    ExpectTableInTheMiddle(program);
}
