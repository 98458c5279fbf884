#include <cstdio>

#include "settings/settings.h"
#include "tests/window/dialogs/analysis_run.h"
#include "tests/window/hostile/companion.h"
#include "training/game_analysis.h"
#include "ui/resource.h"

// The program is killed at a random moment: what was stored before is whole, and of what it was
// storing everything is either as it was or as it was to become.

namespace {

class Kills : public WindowTest {};

struct Tally {
    int atTheStart = 0;
    int inPlay = 0;
    int beforeStoring = 0;
    int whileStoring = 0;
    int afterStoring = 0;
    int inPaytable = 0;
    int beforeResults = 0;
    int withSomeResults = 0;
    int withAllResults = 0;
    int overResults = 0; // of the same paytable
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

void Kill(HANDLE process) {
    TerminateProcess(process, DiedAsPlanned);
    ASSERT_TRUE(ExitCodeOf(process).has_value());
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

void KillAtTheStart(std::mt19937& random, const StoredTree& before, Tally& tally) {
    const HANDLE process = StartProcess(FaultyCommand(random())).hProcess;
    Sleep(static_cast<DWORD>(Between(random, 0, 400)));
    Kill(process);
    EXPECT_EQ(ReadTree(), before);
    ++tally.atTheStart;
}

// Before the window is asked to close nothing is stored.
void KillInPlay(Companion& companion, std::mt19937& random, const StoredTree& before,
                Tally& tally) {
    for (int posted = Between(random, 1, 6); posted > 0; --posted) {
        Post(companion.program, IDC_DEAL_DRAW);
    }
    WaitMicroseconds(Between(random, 0, 20000));
    Kill(companion.program.process);
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
        Kill(companion.program.process);
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
    Kill(companion.program.process);
    ExpectPrefix(before, ReadTree(), PaytablePath(game, true), five);
    ++tally.inPaytable;
}

// The results of the game at its bet are stored at the end of their run, and of a run that is
// repeated they are the same.
void KillInAnalysis(Companion& companion, std::mt19937& random, const StoredTree& before,
                    Faults& faults, Tally& tally) {
    const GameDescriptor& game = companion.table.game;
    const HANDLE process = companion.program.process;
    const bool inside = OneIn(random, 2);
    const HWND dialog = OpenAnalysis(companion.program, game.rowCount + 1);
    if (inside) {
        faults.Plan(WritingCalls, Die, Between(random, 0, 4 * game.rowCount), 1);
    }
    PressButton(dialog, IDC_RUN_ANALYSIS);
    LeaveDialog(WaitForDialog(companion.program, L"Confirm"), IDYES);
    if (inside) {
        EXPECT_EQ(ExitCodeOf(process, CyclePatience), std::optional<DWORD>(DiedAsPlanned));
    } else {
        Sleep(static_cast<DWORD>(Between(random, 0, 600)));
        Kill(process);
    }
    StoredTree after = ReadTree();

    GameAnalysis again;
    PrepareGameAnalysis(again, game, companion.table.bet);
    ASSERT_TRUE(RunGameAnalysis(again, game.id));
    const std::wstring path =
        FoldedName(again.keyPath.substr(std::wstring(SettingsKey).size() + 1));
    StoredKey results = ReadTree()[path];
    for (const auto& [name, value] : after[path]) {
        EXPECT_EQ(Readable(value), Readable(results[name])) << Readable(name);
    }
    const std::size_t stored = after[path].size();
    ++(before.count(path) != 0   ? tally.overResults
       : stored == 0             ? tally.beforeResults
       : stored < results.size() ? tally.withSomeResults
                                 : tally.withAllResults);
    for (const auto& [name, value] : before.count(path) != 0 ? before.at(path) : StoredKey()) {
        EXPECT_EQ(after[path].count(name), 1U) << Readable(name) << " is gone";
    }
    StoredTree rest = before;
    rest.erase(path);
    after.erase(path);
    EXPECT_EQ(DifferencesOf(rest, after), "") << "something else has changed";
    if (OneIn(random, 2)) {
        RegDeleteTreeW(HKEY_CURRENT_USER, again.keyPath.c_str());
    }
}

} // namespace

TEST_F(Kills, LeaveWhatIsStoredWhole) {
    std::mt19937 random(HostileSeed("kills"));
    SetSetting(L"Credits", 1000);
    SetSetting(L"Sound", 0);
    Faults faults;
    Tally tally;
    const int kills = Repetitions("TESSARIN_KILLS", 6);
    for (int i = 0; i < kills && !HasFailure(); ++i) {
        TellProgress(i, kills);
        SCOPED_TRACE("kill " + std::to_string(i));
        // The window's place of the last run would hide whether this one comes to store it.
        for (const wchar_t* name : PlaceNames) {
            RegDeleteKeyValueW(HKEY_CURRENT_USER, L"TessarCE", name);
        }
        const StoredTree before = ReadTree();
        const int moment = i % 6;
        if (moment == 0) {
            KillAtTheStart(random, before, tally);
            continue;
        }
        Companion companion;
        StartCompanion(companion, random());
        PlaySome(companion, random);
        switch (moment) {
        case 1:
            KillInPlay(companion, random, before, tally);
            break;
        case 2:
            KillInPaytable(companion, random, before, faults, tally);
            break;
        case 3:
            KillInAnalysis(companion, random, before, faults, tally);
            break;
        default:
            KillAtTheEnd(companion, random, before, moment == 4, faults, tally);
            break;
        }
        faults.End();
    }
    std::printf("%d in play, %d at the start, %d in the paytable editor; in the analysis %d "
                "before, %d while and %d after storing, %d over older results; at the end %d "
                "before, %d while and %d after storing\n",
                tally.inPlay, tally.atTheStart, tally.inPaytable, tally.beforeResults,
                tally.withSomeResults, tally.withAllResults, tally.overResults, tally.beforeStoring,
                tally.whileStoring, tally.afterStoring);
}
