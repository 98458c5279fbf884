#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

#include "tests/window/soak/fidget.h"
#include "tests/window/soak/ledger.h"
#include "tests/window/soak/pulse.h"
#include "ui/resource.h"

// After the grounds of texts, whose names are colours here.
#include "tests/window/looks.h"

// A player who tries everything, watched the whole time: the program lives, answers, keeps its
// accounts and gives back what it takes. TESSARIN_SOAK_SECONDS in the environment sets for how
// long, TESSARIN_SOAK_SEED repeats a run.

namespace {

constexpr int HomeScale = 2;
constexpr double ShortestSession = 8;   // seconds worth a start
constexpr double Warming = 24;          // seconds until the first count of objects, or
constexpr double ShortWarming = 0.4;    // this part of a short session
constexpr double BetweenCounts = 60;    // seconds from one count of objects to the next
constexpr double LongRun = 600;         // seconds in which some session has a second count
constexpr double BetweenLooks = 6;      // seconds from one look at the table to the next
constexpr LONG MarksAhead = 3;          // of the fidget before the program
constexpr std::int64_t MostLate = 5000; // coins worth reading from the panel
constexpr int LeaveTimes = 3;           // what comes while the cards move is thrown away
constexpr int KeptGdiObjects = 330;
constexpr int KeptCursors = 8;
constexpr int KeptHeap = 64 * 1024;       // bytes
constexpr int LostByText = 24;            // bytes, by Wine 8's common controls for each Static
constexpr int KeptMemory = 8192 * 1024;   // bytes; the largest window's picture is five of these
constexpr DWORD LongestWayOfInput = 5000; // milliseconds
constexpr DWORD RealInputPatience = 60000;
constexpr int SignTimes = 3;
constexpr wchar_t StatsTitle[] = L"Current Session Analysis";

std::uint32_t NumberFrom(const char* variable, std::uint32_t otherwise) {
    const char* text = std::getenv(variable);
    return text != nullptr ? static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10))
                           : otherwise;
}

double Seconds() {
    return static_cast<double>(GetTickCount64()) / 1000;
}

std::string DescribeState(const RunningProgram& program) {
    RECT place = {};
    GetWindowRect(program.window, &place);
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(program.thread, &info);
    char text[160];
    std::snprintf(text, sizeof text, "at %ld, %ld, %ld x %ld%s%s, flags %lx", place.left, place.top,
                  place.right - place.left, place.bottom - place.top,
                  IsIconic(program.window) ? ", minimised" : "",
                  IsZoomed(program.window) ? ", maximised" : "", info.flags);
    return text;
}

// The journal's memory, made before the program that writes it.
class JournalMemory {
  public:
    JournalMemory()
        : memory(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                    sizeof(Journal), JournalName)),
          journal(
              static_cast<Journal*>(MapViewOfFile(memory, FILE_MAP_WRITE, 0, 0, sizeof(Journal)))) {
    }
    ~JournalMemory() {
        UnmapViewOfFile(journal);
        CloseHandle(memory);
    }
    JournalMemory(const JournalMemory&) = delete;
    JournalMemory& operator=(const JournalMemory&) = delete;

    // Enters what has come since the last time.
    void ReadInto(Ledger& ledger) {
        const LONG written = journal->written;
        ASSERT_LT(written - read, JournalSize) << "the journal was overwritten unread";
        for (; read < written; ++read) {
            const std::size_t faults = ledger.faults.size();
            Enter(ledger, journal->entries[read % JournalSize]);
            if (ledger.faults.size() > faults && !shown) {
                shown = true;
                ShowLast();
            }
        }
    }

    // The entries up to the one just read, for whoever has to explain it.
    void ShowLast() const {
        for (LONG number = std::max(0L, read - 40); number <= read; ++number) {
            const JournalEntry& entry = journal->entries[number % JournalSize];
            std::printf("  %ld: %ld %ld at %ld, %ld in %ld x %ld, dialog %ld%s%s%s '%ls'\n", number,
                        static_cast<long>(entry.told), entry.number, entry.x, entry.y, entry.width,
                        entry.height, static_cast<long>(entry.dialog),
                        entry.enabled ? " enabled" : "", entry.asking ? " asking" : "",
                        entry.analysisRuns ? " running" : "", entry.text);
        }
    }

  private:
    bool shown = false;
    HANDLE memory;
    Journal* journal;
    LONG read = 0;
};

// The windows' working folder, with a help viewer that shows nothing.
class QuietHelp {
  public:
    QuietHelp() {
        GetCurrentDirectoryW(MAX_PATH, before);
        wchar_t temporary[MAX_PATH];
        GetTempPathW(MAX_PATH, temporary);
        folder = std::wstring(temporary) + L"Tessarin soak";
        CreateDirectoryW(folder.c_str(), nullptr);
        EXPECT_TRUE(CopyFileW((ProgramFolder() + L"help-viewer-stand-in.exe").c_str(),
                              (folder + L"\\PegHelp.exe").c_str(), FALSE))
            << "no viewer to stand in";
        SetCurrentDirectoryW(folder.c_str());
    }
    ~QuietHelp() { SetCurrentDirectoryW(before); }
    QuietHelp(const QuietHelp&) = delete;
    QuietHelp& operator=(const QuietHelp&) = delete;

  private:
    wchar_t before[MAX_PATH];
    std::wstring folder;
};

void Print(const char* when, const Objects& objects) {
    std::printf("  %-6s %d GDI, %d user, %d threads, %d handles, %lld kB in use, %lld kB "
                "private\n",
                when, objects.gdi, objects.user, objects.threads, objects.handles,
                objects.heapBytes / 1024, objects.privateBytes / 1024);
}

class Soak : public WindowTest {
  protected:
    // One run of the program, from its start to its end.
    void PlaySession(std::uint32_t seed, double seconds);

    long inputs = 0;
    std::int64_t hands = 0;
    int sessions = 0;
    int compared = 0; // sessions whose objects were counted more than once

  private:
    void Start(std::uint32_t seed);
    bool Alive() const { return WaitForSingleObject(program.process, 0) == WAIT_TIMEOUT; }
    void Read() { journal->ReadInto(ledger); }
    void CatchUp(LONG mark);
    void FidgetUntil(double end);
    void AwaitRealInput();
    void Rest();
    void GoHome();
    void LookAtTable();
    void LookAtStats();
    void ReadCredits();
    void OpenEverything();
    Objects Measure();
    void Look();
    void CountAgain();
    void End();
    void Report(std::uint32_t seed, double seconds) const;

    RunningProgram program{};
    std::unique_ptr<JournalMemory> journal;
    std::unique_ptr<SystemView> view;
    std::unique_ptr<Pulse> pulse;
    std::unique_ptr<Fidget> fidget;
    Ledger ledger;
    int looks = 0;
    double nextCount = 0;
    std::int64_t textsBefore = 0;
    std::wstring userObjects;
    std::optional<Objects> before; // none where the session ended too soon
    std::optional<Objects> after;
};

void Soak::Start(std::uint32_t seed) {
    journal.reset();
    journal = std::make_unique<JournalMemory>();
    OpenLedger(ledger, seed);
    program = StartSeeded(seed, 0);
    view = std::make_unique<SystemView>(
        std::vector<std::wstring>{L"tessarin-seeded.exe", std::to_wstring(seed), L"0"});
    ASSERT_EQ(view->Found(), SystemView::Exists());
    pulse = std::make_unique<Pulse>(program.window, *view);
    GoHome();
    RECT client = {};
    GetClientRect(program.window, &client);
    program.scale = HomeScale;
    program.layout = ComputeLayout(FitTable(client.right, client.bottom));
    fidget = std::make_unique<Fidget>(program, seed);
}

void Soak::CatchUp(LONG mark) {
    const bool caught = Eventually([&] {
        Read();
        return ledger.mark >= mark || !Alive();
    });
    EXPECT_TRUE(caught) << "the program does not take its messages: " << fidget->DescribeTop();
    if (!caught) {
        journal->ShowLast();
    }
}

void Soak::FidgetUntil(double end) {
    while (Seconds() < end && Alive() && !HasFailure()) {
        fidget->Act();
        CatchUp(fidget->LeaveMark() - MarksAhead);
        for (const std::string& fault : ledger.faults) {
            ADD_FAILURE() << fault;
        }
        ledger.faults.clear();
    }
}

// Real input is still on its way for a while after it was given. A key that nothing else presses
// comes after all of it; a window that is being sized takes no keys.
void Soak::AwaitRealInput() {
    EXPECT_TRUE(Eventually([&] { return RealInputsOnTheirWay() == 0; }, RealInputPatience))
        << "real input is not carried out";
    Eventually([&] { return !IsGrabbed(program); }, LongestWayOfInput);
    if (!fidget->ComeToRest() || !Alive()) {
        return;
    }
    const std::int64_t signs = ledger.signs;
    const auto hasCome = [&] {
        Read();
        return ledger.signs > signs || !Alive();
    };
    for (int times = 0; times < SignTimes && !hasCome(); ++times) {
        GoHome(); // where the pointer reaches the window; a late drag moves it away
        PressKeys(program, std::wstring(1, SignKey));
        Eventually(hasCome, LongestWayOfInput);
    }
}

// What still comes may open something again.
void Soak::Rest() {
    AwaitRealInput();
    for (int quiet = 0; quiet < 3 && Alive(); ++quiet) {
        ASSERT_TRUE(fidget->ComeToRest()) << "does not close: " << fidget->DescribeTop();
        CatchUp(fidget->LeaveMark());
        Sleep(150);
    }
    if (!Alive()) {
        return;
    }
    GoHome();
    for (int coin = 0; coin < MaxBet; ++coin) {
        Post(program, IDC_BET_ONE); // ends a count-up, and comes back to the bet
    }
    CatchUp(fidget->LeaveMark());
}

// Changes of the window's place that were given before may still come after this one. A window that
// goes with the pointer although nothing is pressed, because a menu took the release, is let go.
void Soak::GoHome() {
    RECT frame = {0, 0, DesignWidth * HomeScale, DesignHeight * HomeScale};
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongW(program.window, GWL_STYLE)), FALSE,
                       0);
    EXPECT_TRUE(Eventually([&] {
        if (RealInputsOnTheirWay() == 0 && IsGrabbed(program)) {
            LetGo();
        }
        if (IsIconic(program.window) || IsZoomed(program.window)) {
            SendMessageW(program.window, WM_SYSCOMMAND, SC_RESTORE, 0);
        }
        SetWindowPos(program.window, nullptr, 40, 40, frame.right - frame.left,
                     frame.bottom - frame.top, SWP_NOZORDER | SWP_NOACTIVATE);
        Sleep(20);
        RECT client = {};
        GetClientRect(program.window, &client);
        return !Alive() || (!IsZoomed(program.window) && client.right == DesignWidth * HomeScale &&
                            client.bottom == DesignHeight * HomeScale);
    })) << "the window does not take its size: "
        << DescribeState(program);
}

// What a reset left of a count-up was still paid: the panel says how much.
void Soak::ReadCredits() {
    const auto most = static_cast<std::int32_t>(std::min(ledger.unsure, MostLate));
    if (most > 0) {
        const Area& area = program.layout.credits;
        GrabStill(program);
        const Picture shown = Grab(program, area);
        for (std::int32_t late = 0; late <= most; ++late) {
            const std::int32_t credits = ledger.credits + late;
            if (PaintLines(
                    program, area, Navy,
                    {{L"Credits", White, DT_LEFT}, {std::to_wstring(credits), White, DT_RIGHT}},
                    15) == shown) {
                SeeCredits(ledger, credits);
                break;
            }
        }
    }
    if (ledger.unsure == 0) {
        EXPECT_TRUE(ShowsCredits(program, ledger.credits)) << ledger.credits;
        ledger.counting = 0;
    }
}

void Soak::LookAtTable() {
    ReadCredits();
    Table& table = ledger.table;
    if (ledger.unsure == 0 && ledger.facesUp) {
        table.credits = ledger.credits;
        ExpectTable(program, table);
    }
    ++looks;
}

void Soak::LookAtStats() {
    Post(program, IDM_SESSION_STATS);
    const HWND dialog = WaitForDialog(program, StatsTitle);
    for (const DialogText& field : DescribeSessionStats(ledger.stats)) {
        EXPECT_EQ(TextOf(GetDlgItem(dialog, field.id)), field.text) << "field " << field.id;
    }
    LeaveDialog(dialog, IDOK);
}

// Everything that opens is opened once, so that what the system keeps ready for the next time is
// there whatever was tried before.
void Soak::OpenEverything() {
    constexpr int commands[] = {IDM_SESSION_STATS,   IDM_HAND_DETAILS, IDM_HAND_ANALYSIS,
                                IDM_GAME_ANALYSIS,   IDC_MENU,         IDC_GAMES,
                                IDM_CHANGE_PAYTABLE, IDM_DEAL_SPEED};
    for (const int command : commands) {
        Post(program, command);
        CatchUp(fidget->LeaveMark());
        Sleep(100);
        EXPECT_TRUE(fidget->ComeToRest()) << "does not close: " << command;
    }
    SendMessageW(program.window, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    CatchUp(fidget->LeaveMark());
    GoHome();
}

// At rest, and always in the same state.
Objects Soak::Measure() {
    Post(program, IDM_FIRST_GAME);
    OpenEverything();
    CatchUp(fidget->LeaveMark());
    userObjects += DescribeUserObjects(program) + L"\n";
    return CountLastingObjects(program, *view);
}

// What is lost at each hand or dialog is lost many times in the shortest run. The room left is the
// system's own: it keeps device contexts ready, each with a region and a bitmap, cursors and icons
// once they were shown, a thread with its handles for the next sound, and memory that was freed.
// Wine's common controls never free what they allocate for a text in a dialog.
void Soak::CountAgain() {
    compared += after ? 0 : 1;
    after = Measure();
    EXPECT_LE(after->gdi, std::max(before->gdi, KeptGdiObjects));
    EXPECT_LE(after->user, before->user + KeptCursors) << userObjects;
    EXPECT_LE(after->threads, before->threads + 2);
    EXPECT_LE(after->handles, before->handles + 16);
    EXPECT_LE(after->heapBytes,
              before->heapBytes + KeptHeap + LostByText * (ledger.texts - textsBefore));
    EXPECT_LE(after->privateBytes, before->privateBytes + KeptMemory);
}

// The player may have chosen the end already.
void Soak::End() {
    std::optional<DWORD> code;
    if (Alive()) {
        CatchUp(fidget->LeaveMark());
    } else {
        code = ExitCodeOf(program.process);
    }
    for (int times = 0; times < LeaveTimes && !code; ++times) {
        fidget->Leave();
        code = ExitCodeOf(program.process);
    }
    EXPECT_EQ(code, 0U) << "the program does not end as it should: " << fidget->DescribeTop();
    if (!code) {
        journal->ShowLast();
    }
    pulse->Stop();
    Read();
    SeeStore(ledger);
    for (const std::string& fault : ledger.faults) {
        ADD_FAILURE() << fault;
    }
    EXPECT_TRUE(Balances(ledger)) << "the account does not add up";
    EXPECT_LE(pulse->LongestOfItsOwn(), LongestSilence) << "milliseconds without an answer";
}

void Soak::Report(std::uint32_t seed, double seconds) const {
    const Coins& coins = ledger.coins;
    std::printf("seed %u, %.0f s: %ld inputs, %lld hands, %lld deals, %lld questions, %lld "
                "purchases, %lld resets, %d looks\n",
                seed, seconds, fidget->Inputs(), static_cast<long long>(ledger.hands),
                static_cast<long long>(ledger.deals), static_cast<long long>(ledger.questions),
                static_cast<long long>(ledger.purchases), static_cast<long long>(ledger.resets),
                looks);
    std::printf("  silence %.0f ms by the clock, %.0f of its own, %ld beats, %.1f s of processor\n",
                pulse->LongestByClock(), pulse->LongestOfItsOwn(), pulse->Beats(),
                view->ProcessorSeconds());
    if (before && after) {
        Print("before", *before);
        Print("after", *after);
    } else {
        std::printf("  ended before its objects could be compared\n");
    }
    std::printf("  credits %d = %d + bought %d + reset %d - in %d (unstaked %d, unplayed %d, held "
                "%d) + out %d (unpaid %d)\n",
                ledger.credits, ledger.startingCredits, coins.bought, coins.reset, ledger.coinsIn,
                coins.unstaked, coins.unplayed, ledger.stake, ledger.coinsOut, coins.unpaid);
    std::fflush(stdout);
}

void Soak::Look() {
    Rest();
    if (!Alive() || HasFailure()) {
        return;
    }
    if (Seconds() >= nextCount) {
        if (before) {
            CountAgain();
        } else {
            before = Measure();
            textsBefore = ledger.texts;
        }
        nextCount = Seconds() + BetweenCounts;
    }
    LookAtTable();
    LookAtStats();
    if (HasFailure()) {
        journal->ShowLast();
    }
}

void Soak::PlaySession(std::uint32_t seed, double seconds) {
    ledger.~Ledger();
    new (&ledger) Ledger;
    looks = 0;
    userObjects.clear();
    before.reset();
    after.reset();
    Start(seed);
    const double start = Seconds();
    const double end = start + seconds;
    nextCount = start + std::min(Warming, ShortWarming * seconds);
    while (Seconds() < end && Alive() && !HasFailure()) {
        FidgetUntil(std::min(end, Seconds() + BetweenLooks));
        if (Alive() && !HasFailure()) {
            Look();
        }
    }
    if (Alive() && before && !HasFailure()) {
        CountAgain();
        FidgetUntil(Seconds() + 1);
    }
    Report(seed, Seconds() - start);
    End();
    ++sessions;
    inputs += fidget->Inputs();
    hands += ledger.hands;
}

} // namespace

TEST_F(Soak, EndsAsItBegan) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const QuietHelp quiet;
    const double seconds = NumberFrom("TESSARIN_SOAK_SECONDS", 60);
    const std::uint32_t seed =
        NumberFrom("TESSARIN_SOAK_SEED", static_cast<std::uint32_t>(GetTickCount64() % 1000000));
    std::printf("seed %u, %.0f s\n", seed, seconds);
    const double end = Seconds() + seconds;
    for (std::uint32_t session = 0; end - Seconds() > ShortestSession && !HasFailure(); ++session) {
        PlaySession(seed + session, end - Seconds());
    }
    std::printf("seed %u: %ld inputs, %lld hands, %d sessions, objects compared in %d\n", seed,
                inputs, static_cast<long long>(hands), sessions, compared);
    EXPECT_GT(hands, 0);
    EXPECT_TRUE(seconds < LongRun || compared > 0);
}
