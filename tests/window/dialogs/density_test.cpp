#include "tests/window/dialogs/reading.h"
#include "ui/resource.h"

// Dialogs whose window, or the density of whose screen, changes under them.

namespace {

class Density : public WindowTest {};

struct CoveringDialog {
    int command;
    int control; // one that the dialog has
    int close;
};

const CoveringDialog coveringDialogs[] = {
    {IDM_HAND_ANALYSIS, IDC_FIRST_SLOT, IDCANCEL},
    {IDM_HAND_DETAILS, IDC_DETAILS_LIST, IDOK},
    {IDM_CHANGE_PAYTABLE, IDC_DEFAULTS, IDCANCEL},
};

// Those and one that stands over the window's middle.
const CoveringDialog placedDialogs[] = {
    coveringDialogs[0],
    coveringDialogs[1],
    coveringDialogs[2],
    {IDM_SESSION_STATS, IDC_RESET_STATS, IDOK},
};

RECT PlaceOf(HWND window) {
    RECT place;
    GetWindowRect(window, &place);
    return place;
}

SIZE SizeOfWindow(HWND window) {
    const RECT place = PlaceOf(window);
    return {place.right - place.left, place.bottom - place.top};
}

void Resize(HWND window, LONG width, LONG height) {
    SetWindowPos(window, nullptr, 0, 0, static_cast<int>(width), static_cast<int>(height),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// One and a half times the design, which the table fills to the edges.
void MakeTableBetweenScales(const RunningProgram& program) {
    RECT client;
    GetClientRect(program.window, &client);
    const SIZE size = SizeOfWindow(program.window);
    Resize(program.window, size.cx - client.right + DesignWidth * 3 / 2,
           size.cy - client.bottom + DesignHeight * 3 / 2);
    Settle(program);
}

bool Covers(const RunningProgram& program, HWND dialog) {
    const RECT main = PlaceOf(program.window);
    const RECT own = PlaceOf(dialog);
    RECT both;
    UnionRect(&both, &main, &own);
    return EqualRect(&both, &own);
}

int CountDifferences(const Picture& a, const Picture& b) {
    if (a.width != b.width || a.height != b.height) {
        return a.width * a.height;
    }
    int different = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i) {
        different += a.pixels[i] != b.pixels[i] ? 1 : 0;
    }
    return different;
}

HWND Open(const RunningProgram& program, const CoveringDialog& what) {
    const HWND dialog = OpenDialogWith(program, what.command, what.control);
    if (what.control == IDC_DETAILS_LIST) {
        WaitForDetails(program); // it grows for them
    }
    Settle(program);
    return dialog;
}

void ExpectDialogsWhereTheWindowWas(const RunningProgram& program, bool maximised) {
    for (const CoveringDialog& what : placedDialogs) {
        SCOPED_TRACE(what.command);
        SCOPED_TRACE(maximised);
        HWND dialog = Open(program, what);
        const RECT expected = PlaceOf(dialog);
        LeaveDialog(dialog, what.close);
        SendMessageW(program.window, WM_SYSCOMMAND, SC_MINIMIZE, 0);
        ASSERT_TRUE(IsIconic(program.window));
        dialog = Open(program, what);
        const RECT place = PlaceOf(dialog);
        EXPECT_TRUE(EqualRect(&place, &expected))
            << place.left << ' ' << place.top << ' ' << place.right << ' ' << place.bottom;
        LeaveDialog(dialog, what.close);
        SendMessageW(program.window, WM_SYSCOMMAND, SC_RESTORE, 0);
        Settle(program);
        EXPECT_EQ(IsZoomed(program.window) != FALSE, maximised);
    }
}

} // namespace

// The caret of a field, which blinks, may make a difference.
TEST_F(Density, OpenDialogsFollowTheTableAsIfTheyWereOpenedAnew) {
    for (const CoveringDialog& what : coveringDialogs) {
        SCOPED_TRACE(what.command);
        const RunningProgram program = StartSeeded(1, 0);
        Do(program, IDC_DEAL_DRAW);
        HWND dialog = Open(program, what);
        MakeTableBetweenScales(program);
        EXPECT_TRUE(Covers(program, dialog));
        const HWND kept = dialog;
        Picture followed;
        EXPECT_TRUE(Eventually([&] {
            const Picture before = followed;
            followed = GrabWindow(kept);
            Sleep(100);
            return before == followed;
        }));
        LeaveDialog(dialog, what.close);
        dialog = Open(program, what);
        EXPECT_TRUE(Eventually([&] {
            return CountDifferences(followed, GrabWindow(dialog)) <= 40;
        })) << CountDifferences(followed, GrabWindow(dialog));
        LeaveDialog(dialog, what.close);
        CloseProgram(program);
    }
}

TEST_F(Density, ADialogCoversTheWindowAgainWhenItsScreenHasAnotherDensity) {
    const RunningProgram program = StartSeeded(1, 0);
    for (const CoveringDialog& what : coveringDialogs) {
        SCOPED_TRACE(what.command);
        const HWND dialog = Open(program, what);
        const SIZE before = SizeOfWindow(dialog);
        Resize(dialog, before.cx / 2, before.cy / 2);
        EXPECT_FALSE(Covers(program, dialog));
        PostMessageW(dialog, WM_DPICHANGED, MAKEWPARAM(96, 96), 0);
        EXPECT_TRUE(Eventually([&] {
            const SIZE now = SizeOfWindow(dialog);
            return Covers(program, dialog) && now.cx == before.cx && now.cy == before.cy;
        }));
        LeaveDialog(dialog, what.close);
    }
}

TEST_F(Density, WhatWasTypedInThePaytableStays) {
    const RunningProgram program = StartProgram();
    const HWND dialog = OpenDialogWith(program, IDM_CHANGE_PAYTABLE, IDC_DEFAULTS);
    SetDlgItemTextW(dialog, IDC_FIRST_ONE_COIN + 3, L"77");
    MakeTableBetweenScales(program);
    EXPECT_TRUE(Covers(program, dialog));
    EXPECT_EQ(FieldText(dialog, IDC_FIRST_ONE_COIN + 3), L"77");
    LeaveDialog(dialog, IDCANCEL);
}

// Also where it was maximised, and is to be again.
TEST_F(Density, ADialogOfAMinimisedWindowOpensWhereTheWindowWas) {
    const RunningProgram program = StartSeeded(1, 0);
    for (const bool maximised : {false, true}) {
        if (maximised) {
            SendMessageW(program.window, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
            Settle(program);
        }
        ExpectDialogsWhereTheWindowWas(program, maximised);
    }
}

TEST_F(Density, OverAMaximisedWindowEveryDialogIsWhollyOnTheScreen) {
    const RunningProgram program = StartSeeded(1, 0);
    SendMessageW(program.window, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    Settle(program);
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    for (const CoveringDialog& what : placedDialogs) {
        SCOPED_TRACE(what.command);
        const HWND dialog = Open(program, what);
        const RECT place = PlaceOf(dialog);
        RECT seen;
        IntersectRect(&seen, &place, &work);
        EXPECT_TRUE(EqualRect(&seen, &place))
            << place.left << ' ' << place.top << ' ' << place.right << ' ' << place.bottom;
        LeaveDialog(dialog, what.close);
    }
}
