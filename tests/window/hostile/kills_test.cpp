#include <cstdio>

#include "tests/window/dialogs/reading.h"
#include "tests/window/hostile/companion.h"
#include "ui/resource.h"

// The program is killed at a random moment: what was stored before is whole, and of what it was
// storing everything is either as it was or as it was to become.

namespace {

class Kills : public WindowTest {};

struct Tally {
    int inPlay = 0;
    int beforeStoring = 0;
    int whileStoring = 0;
    int afterStoring = 0;
    int inPaytable = 0;
};

// A busy wait; Sleep knows only whole milliseconds.
void WaitMicroseconds(int microseconds) {
    LARGE_INTEGER frequency;
    LARGE_INTEGER start;
    LARGE_INTEGER now;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    do {
        QueryPerformanceCounter(&now);
    } while ((now.QuadPart - start.QuadPart) * 1000000 / frequency.QuadPart < microseconds);
}

void Kill(const RunningProgram& program) {
    TerminateProcess(program.process, DiedAsPlanned);
    ASSERT_TRUE(ExitCodeOf(program.process).has_value());
}

// Values were stored in their order: the first so many are new, the others as they were. Returns
// how many are new, as far as that shows. What else is in the tree is as it was, but for the
// window's place, which may be any.
int ExpectPrefix(const StoredTree& before, StoredTree after, const std::wstring& path,
                 const OwnValues& values) {
    int stored = 0;
    bool ended = false;
    StoredTree rest = before;
    for (const auto& [name, value] : values) {
        const StoredValue* then = FindValue(before, path, name);
        const StoredValue* now = FindValue(after, path, name);
        const bool isOld =
            (now == nullptr) == (then == nullptr) && (now == nullptr || *now == *then);
        const bool isNew = now != nullptr && *now == value;
        EXPECT_TRUE(isOld || isNew)
            << Readable(name) << " is neither as it was nor as it was to be: "
            << (now != nullptr ? Readable(*now) : "missing");
        EXPECT_TRUE(isOld || !ended) << Readable(name) << " is new, one before it is not";
        ended = ended || !isNew;
        stored += isNew && !isOld ? 1 : 0;
        rest[FoldedName(path)].erase(FoldedName(name));
        after[FoldedName(path)].erase(FoldedName(name));
    }
    for (const wchar_t* name : PlaceNames) {
        const StoredValue* place = FindValue(after, L"", name);
        if (place != nullptr) {
            EXPECT_EQ(place->type, static_cast<DWORD>(REG_DWORD)) << Readable(name);
            EXPECT_EQ(place->bytes.size(), 4U) << Readable(name);
        }
        rest[L""].erase(FoldedName(name));
        after[L""].erase(FoldedName(name));
    }
    EXPECT_EQ(DifferencesOf(rest, after), "") << "something else has changed";
    return stored;
}

void PlaySome(Companion& companion, std::mt19937& random) {
    for (int moves = Between(random, 1, 8); moves > 0; --moves) {
        MakeAnyMove(companion, random);
    }
}

// Before the window is asked to close nothing is stored.
void KillInPlay(Companion& companion, std::mt19937& random, const StoredTree& before,
                Tally& tally) {
    for (int posted = Between(random, 1, 6); posted > 0; --posted) {
        Post(companion.program, IDC_DEAL_DRAW);
    }
    WaitMicroseconds(Between(random, 0, 20000));
    Kill(companion.program);
    EXPECT_EQ(ReadTree(), before);
    ++tally.inPlay;
}

void KillAtTheEnd(Companion& companion, std::mt19937& random, const StoredTree& before, bool inside,
                  Faults& faults, Tally& tally) {
    if (inside) {
        faults.Plan(WritingCalls, Die, Between(random, 0, 45), 1);
    }
    PostMessageW(companion.program.window, WM_CLOSE, 0, 0);
    if (inside) {
        const std::optional<DWORD> code = ExitCodeOf(companion.program.process);
        EXPECT_TRUE(code == DiedAsPlanned || code == 0U);
    } else {
        WaitMicroseconds(Between(random, 0, 12000));
        Kill(companion.program);
    }
    const OwnValues values = ValuesOf(companion.table, companion.stats);
    const StoredTree after = ReadTree();
    ExpectPrefix(before, after, L"", values);
    const StoredValue* first = FindValue(after, L"", values.front().first);
    const StoredValue* last = FindValue(after, L"", PlaceNames[4]);
    const bool any = first != nullptr && *first == values.front().second;
    const bool all = last != nullptr;
    ++(all ? tally.afterStoring : any ? tally.whileStoring : tally.beforeStoring);
}

void KillInPaytable(Companion& companion, std::mt19937& random, const StoredTree& before,
                    Faults& faults, Tally& tally) {
    const HWND dialog = OpenDialog(companion.program, IDM_CHANGE_PAYTABLE, L"Change Paytable");
    const GameDescriptor& game = companion.table.game;
    OwnValues five;
    for (int row = 0; row < game.rowCount; ++row) {
        const int payout = Between(random, 1, 9) * 1000 + 7 + row; // no default
        five.emplace_back(std::to_wstring(row), NumberValue(payout));
        SendMessageW(GetDlgItem(dialog, IDC_FIRST_FIVE_COINS + row), WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(std::to_wstring(payout).c_str()));
    }
    if (OneIn(random, 2)) {
        faults.Plan(WritingCalls, Die, Between(random, 0, 4 * game.rowCount), 1);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        ExitCodeOf(companion.program.process, 300);
    } else {
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        WaitMicroseconds(Between(random, 0, 6000));
    }
    Kill(companion.program);
    ExpectPrefix(before, ReadTree(), PaytablePath(game, true), five);
    ++tally.inPaytable;
}

} // namespace

TEST_F(Kills, LeaveWhatIsStoredWhole) {
    std::mt19937 random(HostileSeed("kills"));
    SetSetting(L"Credits", 1000);
    SetSetting(L"Sound", 0);
    Faults faults;
    Tally tally;
    const int kills = Repetitions("TESSARIN_KILLS", 4);
    for (int i = 0; i < kills && !HasFailure(); ++i) {
        TellProgress(i, kills);
        SCOPED_TRACE("kill " + std::to_string(i));
        // The window's place of the last run would hide whether this one comes to store it.
        for (const wchar_t* name : PlaceNames) {
            RegDeleteKeyValueW(HKEY_CURRENT_USER, L"TessarCE", name);
        }
        const StoredTree before = ReadTree();
        Companion companion;
        StartCompanion(companion, random());
        PlaySome(companion, random);
        switch (i % 4) {
        case 0:
            KillInPlay(companion, random, before, tally);
            break;
        case 1:
            KillInPaytable(companion, random, before, faults, tally);
            break;
        default:
            KillAtTheEnd(companion, random, before, i % 4 == 2, faults, tally);
            break;
        }
        faults.End();
    }
    std::printf(
        "%d in play, %d in the paytable editor; at the end %d before, %d while and %d after "
        "storing\n",
        tally.inPlay, tally.inPaytable, tally.beforeStoring, tally.whileStoring,
        tally.afterStoring);
}
