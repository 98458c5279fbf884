#include <cstdio>

#include "strategy/best_hold.h"
#include "tests/window/dialogs/analysis_run.h"
#include "tests/window/forecast.h"
#include "tests/window/hostile/companion.h"
#include "tests/window/hostile/filling.h"
#include "training/game_analysis.h"
#include "training/play_grading.h"
#include "ui/resource.h"

// The settings filled by chance: the program starts, shows what it made of them, plays a hand, ends
// well, and writes values that are whole, in their range and right. What is not its own it leaves
// alone.

namespace {

class Fillings : public WindowTest {};

struct Visit {
    RunningProgram program;
    Table table; // as the test understands the settings
    SessionStats stats;
    TrainingMode training;
    StoredTree expected; // what is to be stored beside the program's own values
};

void ExpectStats(const Visit& visit) {
    const HWND dialog = OpenDialog(visit.program, IDM_SESSION_STATS, L"Current Session Analysis");
    for (const DialogText& field : DescribeSessionStats(visit.stats)) {
        constexpr std::size_t most = 259; // that the harness reads
        EXPECT_EQ(FieldText(dialog, field.id), field.text.substr(0, most)) << field.id;
    }
    LeaveDialog(dialog, IDOK);
}

void ExpectAnalysis(const Visit& visit) {
    const GameDescriptor& game = visit.table.game;
    const HWND dialog = OpenAnalysis(visit.program, game.rowCount + 1);
    const std::vector<SeenRow> rows = ReadRows(visit.program, ListOf(dialog, IDC_ANALYSIS_LIST), 6);
    const std::wstring path =
        std::wstring(game.title) + L"\\" + BuildPaytableKey(game, visit.table.bet);
    const auto stored = [&](const std::wstring& name) {
        return TextOf(FindValue(visit.expected, path, name));
    };
    const auto cell = [&](const std::wstring& name) {
        constexpr std::size_t most = 39; // that ReadRows reads
        return stored(name).substr(0, most);
    };
    const std::int32_t* payouts = visit.table.bet == 5 ? game.fiveCoins : game.oneCoin;
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(game.rowCount) + 1);
    for (std::int32_t row = 0; row <= game.rowCount; ++row) {
        const bool pays = row < game.rowCount;
        const std::wstring name = std::to_wstring(row);
        const SeenRow expected = {pays ? game.rowNames[row] : L"NOTHING",
                                  std::to_wstring(pays ? payouts[row] : 0),
                                  cell(name + L"-4"),
                                  cell(name + L"-3"),
                                  cell(name + L"-1"),
                                  cell(name + L"-2")};
        EXPECT_EQ(rows[static_cast<std::size_t>(row)], expected) << row;
    }
    EXPECT_EQ(FieldText(dialog, IDC_ANALYSIS_TOTAL), stored(L"Return"));
    LeaveDialog(dialog, IDOK);
}

// A negative payout is nothing that the editor takes. The system reads its field either as a number
// that is out of range, and the payout stays, or as no number, which counts as 0.
void AcceptColumn(Visit& visit, bool fiveCoins) {
    GameDescriptor& game = visit.table.game;
    std::int32_t* payouts = fiveCoins ? game.fiveCoins : game.oneCoin;
    const std::int32_t* usual = fiveCoins ? game.defaultFiveCoins : game.defaultOneCoin;
    const StoredTree now = ReadTree();
    const StoredValue none = NumberValue(0);
    StoredKey& key = visit.expected[FoldedName(PaytablePath(game, fiveCoins))];
    for (std::int32_t row = 0; row < game.rowCount; ++row) {
        const std::wstring name = std::to_wstring(row);
        const StoredValue* stored = FindValue(now, PaytablePath(game, fiveCoins), name);
        if (payouts[row] < 0 && stored != nullptr && *stored == none) {
            payouts[row] = 0;
        }
        if (payouts[row] == usual[row]) {
            key.erase(name);
        } else {
            key[name] = NumberValue(payouts[row]);
        }
    }
}

void ExpectPaytable(Visit& visit, bool accept) {
    const GameDescriptor& game = visit.table.game;
    const HWND dialog = OpenDialog(visit.program, IDM_CHANGE_PAYTABLE, L"Change Paytable");
    for (std::int32_t row = 0; row < game.rowCount; ++row) {
        EXPECT_EQ(FieldText(dialog, IDC_FIRST_ONE_COIN + row), std::to_wstring(game.oneCoin[row]));
        EXPECT_EQ(FieldText(dialog, IDC_FIRST_FIVE_COINS + row),
                  std::to_wstring(game.fiveCoins[row]));
    }
    LeaveDialog(dialog, accept ? IDOK : IDCANCEL);
    if (accept) {
        AcceptColumn(visit, false);
        AcceptColumn(visit, true);
    }
}

void BuyOrReset(Visit& visit, std::mt19937& random) {
    Post(visit.program, IDC_DEAL_DRAW);
    const HWND dialog = WaitForDialog(visit.program, L"Need Money");
    EXPECT_EQ(FieldText(dialog, IDC_PURCHASE), std::to_wstring(visit.table.defaultPurchase));
    if (OneIn(random, 2)) {
        const int amount = Between(random, -10, 2000);
        SetDlgItemTextW(dialog, IDC_PURCHASE, std::to_wstring(amount).c_str());
        LeaveDialog(dialog, IDOK);
        BuyCredits(visit.table, amount);
    } else {
        LeaveDialog(dialog, IDCANCEL);
    }
    if (!CanDeal(visit.table)) {
        Do(visit.program, IDM_RESET_CREDITS);
        ResetCredits(visit.table);
    }
}

void PlayAHand(Visit& visit, std::mt19937& random) {
    if (!CanDeal(visit.table)) {
        BuyOrReset(visit, random);
    }
    Do(visit.program, IDC_DEAL_DRAW);
    ASSERT_TRUE(Holding(visit.program)) << "no hand is dealt";
    ForetellDeal(visit.table);
    const HoldPattern hold = random() % HoldCount;
    for (int i = 0; i < static_cast<int>(HandSize); ++i) {
        if ((hold >> i) & 1) {
            TypeKey(visit.program, static_cast<wchar_t>(L'1' + i));
        }
    }
    const std::int32_t best =
        FindBestHold(visit.table.hand.cards.data(), visit.table.game, visit.table.bet);
    Post(visit.program, IDC_DEAL_DRAW);
    if (NeedsWarning(visit.training, GradePlay(resultTable, best, hold))) {
        LeaveDialog(WaitForDialog(visit.program, L"Statistical Error!"), IDC_ANSWER_YES);
    }
    Settle(visit.program);
    EXPECT_EQ(Holding(visit.program), visit.table.noDraw);
    CountDraw(visit.table, visit.stats, hold);
}

bool IsOnAScreen(const StoredTree& tree) {
    LONG place[5] = {};
    for (std::size_t i = 0; i < 5; ++i) {
        const StoredValue* value = FindValue(tree, L"", PlaceNames[i]);
        if (value == nullptr || value->type != REG_DWORD || value->bytes.size() != 4) {
            return false;
        }
        std::copy(value->bytes.begin(), value->bytes.end(), reinterpret_cast<char*>(&place[i]));
    }
    const RECT window = {place[0], place[1], place[0] + place[2], place[1] + place[3]};
    return place[2] >= DesignWidth && place[3] >= DesignHeight && place[2] <= 32767 &&
           place[3] <= 32767 && (place[4] == 0 || place[4] == 1) &&
           MonitorFromRect(&window, MONITOR_DEFAULTTONULL) != nullptr;
}

void ExpectStored(Visit& visit) {
    StoredTree after = ReadTree();
    EXPECT_TRUE(IsOnAScreen(after)) << "no place for a window";
    for (const auto& [name, value] : ValuesOf(visit.table, visit.stats)) {
        const StoredValue* stored = FindValue(after, L"", name);
        ASSERT_NE(stored, nullptr) << Readable(name);
        EXPECT_EQ(*stored, value) << Readable(name) << ": " << Readable(*stored) << " instead of "
                                  << Readable(value);
        visit.expected[L""][FoldedName(name)] = *stored;
    }
    for (const wchar_t* name : PlaceNames) {
        after[L""].erase(FoldedName(name));
        visit.expected[L""].erase(FoldedName(name));
    }
    EXPECT_EQ(DifferencesOf(visit.expected, after), "") << "what is not its own has changed";
}

} // namespace

// Every filling has a seed of its own, so that one can be repeated alone.
TEST_F(Fillings, OfEveryKindAreStartedWithAndPlayedWith) {
    const std::uint32_t firstSeed = HostileSeed("fillings");
    const int fillings = Repetitions("TESSARIN_FILLINGS", 6);
    int values = 0;
    int filled = 0;
    for (; filled < fillings && !HasFailure(); ++filled) {
        const std::uint32_t seed = firstSeed + static_cast<std::uint32_t>(filled);
        TellProgress(filled, fillings);
        SCOPED_TRACE("TESSARIN_HOSTILE_SEED=" + std::to_string(seed) + " TESSARIN_FILLINGS=1");
        std::mt19937 random(seed);
        DeleteSettings();
        FillSettings(random);
        Visit visit;
        visit.expected = ReadTree();
        for (const auto& [path, key] : visit.expected) {
            values += static_cast<int>(key.size());
        }
        Understand(visit.expected, visit.table, visit.stats);
        ForetellAnew(visit.table, seed);
        visit.program = StartSeeded(seed, 0);
        visit.training = OneIn(random, 2) ? TrainingMode::Warn : TrainingMode::NoTraining;
        Do(visit.program, visit.training == TrainingMode::Warn ? IDM_WARN : IDM_NO_TRAINING);
        if (OneIn(random, 3)) {
            ExpectStats(visit);
        }
        if (OneIn(random, 3)) {
            ExpectPaytable(visit, OneIn(random, 2));
        }
        if (OneIn(random, 3)) {
            ExpectAnalysis(visit);
        }
        PlayAHand(visit, random);
        CloseProgram(visit.program);
        ExpectStored(visit);
    }
    std::printf("%d fillings of %d values\n", filled, values);
}
