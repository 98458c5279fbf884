#include <algorithm>
#include <cstdio>

#include "tests/window/dialogs/reading.h"
#include "tests/window/hostile/companion.h"
#include "tests/window/looks.h"
#include "ui/resource.h"

// Out of GDI objects at some call: play goes on, and when there are objects again the window comes
// to look as it should.

namespace {

class DrawingFaults : public WindowTest {};

constexpr wchar_t DialogClass[] = L"#32770";

bool ShowsHand(const Companion& companion) {
    const Table& table = companion.table;
    bool all = true;
    for (std::size_t i = 0; i < HandSize && all; ++i) {
        const CardRecord& card = table.hand.cards[i];
        all = card.rankValue == 0 ? ShowsBack(companion.program, i)
                                  : ShowsCard(companion.program, table.game.id, i, card.code);
        all = all && ShowsHeld(companion.program, i, table.hand.held[i] != 0);
    }
    return all;
}

bool ShowsPaytable(const Companion& companion) {
    const Table& table = companion.table;
    bool all = true;
    for (std::int32_t row = 0; row < table.game.rowCount && all; ++row) {
        all = ShowsRow(companion.program, table.game, row, table.bet,
                       table.rank == static_cast<HandRank>(row));
    }
    return all;
}

void ExpectWholeWindow(const Companion& companion) {
    const Table& table = companion.table;
    ASSERT_TRUE(ShowsHand(companion));
    ASSERT_TRUE(ShowsPaytable(companion));
    ASSERT_TRUE(ShowsCoinsIn(companion.program, table.bet));
    ASSERT_TRUE(ShowsCredits(companion.program, table.credits)) << table.credits;
    ASSERT_TRUE(ShowsPrompt(companion.program, table.inDraw ? HoldAndDraw : GameOver));
}

void ExpectOwnValues(const Companion& companion) {
    const StoredTree tree = ReadTree();
    for (const auto& [name, value] : ValuesOf(companion.table, companion.stats)) {
        const StoredValue* stored = FindValue(tree, L"", name);
        ASSERT_NE(stored, nullptr) << Readable(name);
        EXPECT_EQ(*stored, value) << Readable(name) << ": " << Readable(*stored);
    }
}

HWND AnyDialog(const RunningProgram& program) {
    HWND dialog = nullptr;
    while ((dialog = FindWindowExW(nullptr, dialog, DialogClass, nullptr)) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(dialog, &process);
        if (process == program.processId) {
            return dialog;
        }
    }
    return nullptr;
}

void LeaveAnyDialog(const RunningProgram& program) {
    const HWND dialog = AnyDialog(program);
    if (dialog != nullptr) {
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        ASSERT_TRUE(Eventually([&] { return !IsWindow(dialog); })) << "the dialog stays";
    }
}

// A dialog that cannot be had is none: the program goes on without it.
void OpenSomeDialog(const Companion& companion, std::mt19937& random) {
    constexpr int commands[] = {IDM_SESSION_STATS, IDM_HAND_DETAILS, IDM_HAND_ANALYSIS,
                                IDM_GAME_ANALYSIS, IDM_CHANGE_PAYTABLE};
    Post(companion.program, commands[Between(random, 0, 4)]);
    Settle(companion.program);
    Sleep(20); // for its drawing
}

void OpenSomeMenu(const Companion& companion, std::mt19937& random) {
    constexpr int commands[] = {IDC_MENU, IDC_GAMES, IDM_DEAL_SPEED};
    Post(companion.program, commands[Between(random, 0, 2)]);
    Settle(companion.program);
    if (MenuIsOpen(companion.program)) {
        CloseMenu(companion.program);
    }
}

// Between two whole scales, so that everything is made anew.
void ResizeWindow(Companion& companion) {
    RunningProgram& program = companion.program;
    const int scale = program.scale == 1 ? 2 : 1;
    RECT window;
    RECT client;
    GetWindowRect(program.window, &window);
    GetClientRect(program.window, &client);
    SetWindowPos(program.window, nullptr, 0, 0,
                 window.right - window.left - client.right + DesignWidth * scale,
                 window.bottom - window.top - client.bottom + DesignHeight * scale,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    Settle(program);
    GetClientRect(program.window, &client);
    program.scale = scale;
    program.layout = ComputeLayout(FitTable(client.right, client.bottom));
}

void DoSomething(Companion& companion, std::mt19937& random) {
    switch (Between(random, 0, 9)) {
    case 0:
        OpenSomeDialog(companion, random);
        break;
    case 1:
        OpenSomeMenu(companion, random);
        break;
    case 2:
        ResizeWindow(companion);
        break;
    case 3:
        RedrawWindow(companion.program.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
        Settle(companion.program);
        break;
    default:
        MakeAnyMove(companion, random);
        break;
    }
}

// By the first and the last black card of the hand analysis, whose right halves are their pips'.
bool ShowsPips(HWND dialog) {
    for (const int card : {0, 51}) {
        RECT half = PlaceIn(dialog, GetDlgItem(dialog, IDC_FIRST_CARD + card));
        const LONG inset = (half.right - half.left) / 8;
        half.left = (half.left + half.right) / 2;
        half = {half.left, half.top + inset, half.right - inset, half.bottom - inset};
        const Picture picture = GrabPart(dialog, half);
        if (std::ranges::count_if(picture.pixels,
                                  [](std::uint32_t pixel) { return (pixel & 0xFF) < 0x40; }) < 20) {
            return false;
        }
    }
    return true;
}

struct FaultPoint {
    FaultKind kind;
    LONG first;
    LONG count;
    LONG spare;
};

// Mostly a few calls one after another; sometimes all of them, or all objects used up.
FaultPoint SomePoint(std::mt19937& random) {
    const LONG first = Between(random, 0, (1 << Between(random, 1, 7)) - 1);
    const LONG count = OneIn(random, 3) ? 100000 : Between(random, 1, 20);
    if (OneIn(random, 4)) {
        return {Exhaust, first, count, Between(random, 0, 12)};
    }
    return {Refuse, first, count, 0};
}

std::string NameOf(const FaultPoint& point, int index) {
    return "point " + std::to_string(index) + (point.kind == Exhaust ? ", used up" : ", refused") +
           ", first " + std::to_string(point.first) + ", count " + std::to_string(point.count) +
           ", spare " + std::to_string(point.spare);
}

void PlanAt(Faults& faults, const FaultPoint& point) {
    faults.Plan(DrawingCalls, point.kind, point.first, point.count, point.spare);
}

} // namespace

TEST_F(DrawingFaults, AnyCallInPlay) {
    std::mt19937 random(HostileSeed("drawing faults in play"));
    SetSetting(L"Sound", 0);
    SetSetting(L"Credits", 10000);
    Faults faults;
    Companion companion;
    StartCompanion(companion, random());
    int reached = 0;
    const int points = Repetitions("TESSARIN_FAULTS", 6);
    for (int i = 0; i < points && !HasFatalFailure(); ++i) {
        const FaultPoint point = SomePoint(random);
        TellProgress(i, points);
        SCOPED_TRACE(NameOf(point, i));
        PlanAt(faults, point);
        DoSomething(companion, random);
        reached += faults.Refused() > 0 ? 1 : 0;
        faults.End();
        LeaveAnyDialog(companion.program);
        ExpectWholeWindow(companion);
    }
    CloseProgram(companion.program);
    ExpectOwnValues(companion);
    std::printf("%d faults in play, %d of them met a call\n", points, reached);
}

TEST_F(DrawingFaults, AnyCallAtTheStart) {
    std::mt19937 random(HostileSeed("drawing faults at the start"));
    SetSetting(L"Sound", 0);
    SetSetting(L"Credits", 10000);
    Faults faults;
    int reached = 0;
    const int points = Repetitions("TESSARIN_FAULTS", 2);
    for (int i = 0; i < points && !HasFatalFailure(); ++i) {
        const FaultPoint point = SomePoint(random);
        TellProgress(i, points);
        SCOPED_TRACE(NameOf(point, i));
        PlanAt(faults, point);
        Companion companion;
        StartCompanion(companion, random());
        DealHand(companion);
        reached += faults.Refused() > 0 ? 1 : 0;
        faults.End();
        ExpectWholeWindow(companion);
        DrawHand(companion, HoldAll);
        CloseProgram(companion.program);
        ExpectOwnValues(companion);
    }
    std::printf("%d faults at the start, %d of them met a call\n", points, reached);
}

// The dialog whose drawing is the program's own.
TEST_F(DrawingFaults, AnOpenHandAnalysisIsDrawnAgain) {
    Faults faults;
    const RunningProgram program = StartFaulty(1);
    HWND dialog = OpenDialogWith(program, IDM_HAND_ANALYSIS, IDC_FIRST_CARD);
    Picture last;
    ASSERT_TRUE(Eventually([&] {
        Picture now = GrabWindow(dialog);
        const bool still = now == last;
        last = std::move(now);
        Sleep(50);
        return still && ShowsPips(dialog);
    }));
    LeaveDialog(dialog, IDCANCEL);
    faults.Plan(DrawingCalls, Refuse, 0, 1000000000);
    dialog = OpenDialogWith(program, IDM_HAND_ANALYSIS, IDC_FIRST_CARD);
    EXPECT_TRUE(Eventually([&] { return faults.Refused() > 2 * 52; })) << "two for each card";
    EXPECT_FALSE(ShowsPips(dialog));
    faults.End();
    EXPECT_TRUE(Eventually([&] { return GrabWindow(dialog) == last; }));
    LeaveDialog(dialog, IDCANCEL);
    CloseProgram(program);
}

TEST_F(DrawingFaults, AProgramThatCanDrawNothingPlaysAndPays) {
    SetSetting(L"Sound", 0);
    for (int row = 0; row < 9; ++row) {
        SetSetting(std::to_wstring(row).c_str(), 30, L"JACKS OR BETTER\\5");
    }
    Faults faults;
    faults.Plan(DrawingCalls, Refuse, 0, 1000000000);
    Companion companion;
    StartCompanion(companion, 1);
    for (int hand = 0; hand < 10; ++hand) {
        DealHand(companion);
        DrawHand(companion, HoldAll);
    }
    EXPECT_GT(companion.stats.coinsOut, 0) << "some hand must have won";
    CloseProgram(companion.program);
    ExpectOwnValues(companion);
    EXPECT_GT(faults.Refused(), 100);
}
